#include "frmDBCopy.h"

#include "Database.h"
#include "Insertions.h"
#include "Recordset.h"
#include "mdiMain.h"
#include "modDatabase.h"

#include <QLabel>

using namespace Qt::StringLiterals;
using insertions::bareOrNull;
using insertions::quoted;
using insertions::text;
using modDatabase::SQLQuote;

namespace
{

constexpr auto formName = "frmDBCopy";

}

frmDBCopy::frmDBCopy() : CopyDialog(formName, tr("Copy Database"))
{
    m_label = addOriginal(u"lblDB"_s, tr("Original Database:"));
    addName(u"txtDB"_s, tr("New Database:"));
}

void frmDBCopy::Display(dao::Database& db, const QString& database)
{
    present<frmDBCopy>(formName, db, [&](frmDBCopy& form) {
        form.m_original = database;
        form.m_label->setText(database);
    });
}

CopyDialog::NameRules frmDBCopy::rules() const
{
    return {.unique = u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME='?'"_s,
            .original = m_original,
            .missing = u"You have not entered a Database name.\n"
                       "Do you want me to find a unique name for this Database?"_s,
            .select =
                [](const QString& name) {
                    return u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME = '%1'"_s.arg(SQLQuote(name));
                },
            .column = u"DATABASE_NAME"_s,
            .taken =
                [](const QString& name) {
                    return u"A Database called '%1' already exists in this datasource.\n"
                           "Do you want me to find a unique name for this database?"_s.arg(name);
                }};
}

CopyDialog::Collection frmDBCopy::collection() const
{
    return {u"DSN=%1:DB=%1:"_s.arg(datasource()), u"frmDatabases"_s, {datasource()}};
}

void frmDBCopy::copy(const QString& database)
{
    const QString ofOriginal = u"WHERE DATABASE_NAME = '%1'"_s.arg(SQLQuote(m_original));
    mdiMain::instance().Status(u"Copying Database..."_s);
    execute(insertions::database(*open(u"SELECT * FROM TW_DB "_s + ofOriginal), database));
    copyRows(u"SELECT * FROM TW_TABLE "_s + ofOriginal, {u"Copying Table '%1' ..."_s, u"TABLE_NAME"_s},
             [&](const auto& row) { return insertions::table(row, database, text(row, u"TABLE_NAME"_s), bareOrNull); });
    copyRows(u"SELECT * FROM TW_COLUMN "_s + ofOriginal, ofColumns(), [&](const auto& row) {
        return insertions::column(row, database, text(row, u"TABLE_NAME"_s), bareOrNull);
    });
    copyRows(u"SELECT * FROM TW_DBPRV "_s + ofOriginal,
             {u"Copying Database Privileges for User '%1..."_s, u"USER_NAME"_s}, [&](const auto& row) {
                 return u"INSERT INTO TW_DBPRV "
                        "(USER_NAME, DATABASE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, "
                        "SECURITY_LEVEL, REMARKS) "
                        "VALUES ( '%1', '%2', %3, %4, %5, %6, '%7', '%8')"_s.arg(
                            quoted(row, u"USER_NAME"_s), SQLQuote(database), bareOrNull(row, u"ALLOW_SELECT"_s),
                            bareOrNull(row, u"ALLOW_INSERT"_s), bareOrNull(row, u"ALLOW_UPDATE"_s),
                            bareOrNull(row, u"ALLOW_DELETE"_s), quoted(row, u"SECURITY_LEVEL"_s),
                            quoted(row, u"REMARKS"_s));
             });
    copyRows(u"SELECT * FROM TW_TBLPRV "_s + ofOriginal, ofTablePrivileges(),
             [&](const auto& row) { return insertions::tablePrivilege(row, database, text(row, u"TABLE_NAME"_s)); });
}
