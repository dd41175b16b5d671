#include "Insertions.h"

#include "Recordset.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace
{

dao::Value value(const dao::Recordset& row, const QString& column)
{
    return row.Fields().Item(column).Value();
}

} // namespace

QString insertions::text(const dao::Recordset& row, const QString& column)
{
    return value(row, column).Text();
}

QString insertions::quoted(const dao::Recordset& row, const QString& column)
{
    return SQLQuote(value(row, column));
}

QString insertions::bareOrNull(const dao::Recordset& row, const QString& column)
{
    const dao::Value number = value(row, column);
    return number.IsNull() ? u"NULL"_s : number.Text();
}

QString insertions::field(const dao::Recordset& row, const QString& file, Number number)
{
    return u"INSERT INTO TW_FIELD "
           "(FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE, ENCRYPTED, "
           "FORMAT, DEFAULT_VALUE, REMARKS) "
           "VALUES ('%1', %2, '%3', '%4', %5, %6, %7, %8, %9, '%10', '%11', '%12')"_s.arg(
               SQLQuote(file), number(row, u"FIELD_NUMBER"_s), quoted(row, u"FIELD_NAME"_s),
               quoted(row, u"LOCAL_TYPE_NAME"_s), number(row, u"OFFSET"_s), number(row, u"LENGTH"_s),
               number(row, u"PRECISION"_s), number(row, u"SCALE"_s), number(row, u"ENCRYPTED"_s),
               quoted(row, u"FORMAT"_s), quoted(row, u"DEFAULT_VALUE"_s), quoted(row, u"REMARKS"_s));
}

QString insertions::database(const dao::Recordset& row, const QString& name)
{
    return u"INSERT INTO TW_DB "
           "(DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, CONNECT_STRING, REMARKS, DISPLAY_NAME) "
           "VALUES ('%1', '%2', '%3', '%4', '%5', '%6', '%7')"_s.arg(
               SQLQuote(name), quoted(row, u"DEFAULT_DIRECTORY"_s), quoted(row, u"DRIVER_NAME"_s),
               quoted(row, u"SETUP_PROCEDURE"_s), quoted(row, u"CONNECT_STRING"_s), quoted(row, u"REMARKS"_s),
               quoted(row, u"DISPLAY_NAME"_s));
}

QString insertions::table(const dao::Recordset& row, const QString& database, const QString& name, Number number)
{
    return u"INSERT INTO TW_TABLE "
           "(DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, NUMBER_COLUMNS, CRITERIA, REMARKS, "
           "DISPLAY_NAME) "
           "VALUES ('%1', '%2', '%3', '%4', '%5', %6, '%7', '%8', '%9')"_s.arg(
               SQLQuote(database), SQLQuote(name), quoted(row, u"TABLE_TYPE"_s), quoted(row, u"FILE_NAME"_s),
               quoted(row, u"FILE_SPECIFICATION"_s), number(row, u"NUMBER_COLUMNS"_s), quoted(row, u"CRITERIA"_s),
               quoted(row, u"REMARKS"_s), quoted(row, u"DISPLAY_NAME"_s));
}

QString insertions::column(const dao::Recordset& row, const QString& database, const QString& table, Number number)
{
    return u"INSERT INTO TW_COLUMN "
           "(DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, PRECISION, "
           "SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, CASE_SENSITIVE, "
           "SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, COLUMN_TYPE, DISPLAY_NAME) "
           "VALUES ('%1', '%2', %3, '%4', '%5', '%6', %7, %8, %9, %10, %11, %12, %13, %14, %15, %16, %17, %18, "
           "'%19', '%20', %21, %22, '%23')"_s.arg(
               SQLQuote(database), SQLQuote(table), number(row, u"COLUMN_NUMBER"_s), quoted(row, u"COLUMN_NAME"_s),
               quoted(row, u"FIELD_NAME"_s), quoted(row, u"SQL_TYPE_NAME"_s), number(row, u"LENGTH"_s),
               number(row, u"PRECISION"_s), number(row, u"SCALE"_s), number(row, u"NULLABLE"_s),
               number(row, u"UNSIGNED_ATTRIBUTE"_s), number(row, u"UPDATABLE"_s), number(row, u"VISIBLE"_s),
               number(row, u"MONEY"_s), number(row, u"AUTO_INCREMENT"_s), number(row, u"CASE_SENSITIVE"_s),
               number(row, u"SEARCHABLE"_s), number(row, u"RADIX"_s), quoted(row, u"DEFAULT_VALUE"_s),
               quoted(row, u"REMARKS"_s), number(row, u"SETFILEPARAMETER"_s), number(row, u"COLUMN_TYPE"_s),
               quoted(row, u"DISPLAY_NAME"_s));
}

QString insertions::tablePrivilege(const dao::Recordset& row, const QString& database, const QString& table)
{
    return u"INSERT INTO TW_TBLPRV"
           "(DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, REMARKS) "
           "VALUES ( '%1', '%2', '%3', %4, %5, %6, %7, '%8')"_s.arg(
               SQLQuote(database), SQLQuote(table), quoted(row, u"USER_NAME"_s), bareOrNull(row, u"ALLOW_SELECT"_s),
               bareOrNull(row, u"ALLOW_INSERT"_s), bareOrNull(row, u"ALLOW_UPDATE"_s),
               bareOrNull(row, u"ALLOW_DELETE"_s), quoted(row, u"REMARKS"_s));
}
