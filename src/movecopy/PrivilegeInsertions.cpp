#include "PrivilegeInsertions.h"

#include "Insertions.h"
#include "Recordset.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using insertions::bareOrNull;
using insertions::quoted;
using modDatabase::SQLQuote;

QString tablePrivilegeStatus(const dao::Recordset& row)
{
    return u"Copying Table Privileges for User '%1..."_s.arg(row.Fields().Item(u"USER_NAME"_s).Value().Text());
}

QString tablePrivilege(const dao::Recordset& row, const QString& database, const QString& table)
{
    return u"INSERT INTO TW_TBLPRV"
           "(DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, REMARKS) "
           "VALUES ( '%1', '%2', '%3', %4, %5, %6, %7, '%8')"_s.arg(
               SQLQuote(database), SQLQuote(table), quoted(row, u"USER_NAME"_s), bareOrNull(row, u"ALLOW_SELECT"_s),
               bareOrNull(row, u"ALLOW_INSERT"_s), bareOrNull(row, u"ALLOW_UPDATE"_s),
               bareOrNull(row, u"ALLOW_DELETE"_s), quoted(row, u"REMARKS"_s));
}
