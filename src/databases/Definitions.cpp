#include "Definitions.h"

#include "CConnections.h"
#include "DBEngine.h"
#include "Recordset.h"
#include "ReservedFiles.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace definitions
{

bool isCatalogDatabase(const QString& database)
{
    return database == "TW"_L1;
}

bool isDisplayName(const QString& displayName, const QString& name)
{
    return displayName.isEmpty() || displayName.toUpper() == name.toUpper();
}

bool isReservedColumn(const QString& column)
{
    return "'RFA'INDEX_NUMBER'INDEX_NAME'INDEX_COLUMNS'TABLE_ORDER'ROWID'RELATIVE_NUMBER'RELATIVE_INDEX'"_L1.contains(
        QString('\''_L1 + column + '\''_L1));
}

bool isCharacterType(const QString& sqlTypeName)
{
    return sqlTypeName.contains("CHAR"_L1);
}

QString drivers()
{
    return u"SELECT DRIVER_NAME FROM TW_DRIVER WHERE DRIVER_NAME <> '' AND DRIVER_NAME <> 'SYSTEM' "
           "ORDER BY DRIVER_NAME ASC"_s;
}

QString isUserFile()
{
    return QLatin1StringView(reservedfiles::userFiles);
}

const QStringList& searches()
{
    static const QStringList names{u"Unsearchable"_s, u"LIKE only"_s, u"All except LIKE"_s, u"Searchable"_s};
    return names;
}

QStringList sqlTypeNames(CConnection& connection)
{
    QStringList names;
    for (const CSQLDT& type : connection.SQLDTs())
        names.append(type.SQL_TYPE_NAME);
    return names;
}

QString ofTable(const QString& database, const QString& table)
{
    return "DATABASE_NAME = '"_L1 + SQLQuote(database) + "' AND TABLE_NAME = '"_L1 + SQLQuote(table) + '\''_L1;
}

QString defaultDatabase(const QString& datasource)
{
    return dao::DBEngine::GetPrivateProfileString(datasource, u"DefaultDatabase"_s, {});
}

QString joinedName(const QString& database, const QString& table)
{
    return database + '_'_L1 + table;
}

QString nameInSql(const QString& defaultDatabase, const QString& database, const QString& table)
{
    return defaultDatabase.isEmpty() ? joinedName(database, table) : table;
}

bool holdsPasswords(const QString& name)
{
    return name.compare("TW_USER"_L1, Qt::CaseInsensitive) == 0 ||
           name.compare("TW_DBPRV"_L1, Qt::CaseInsensitive) == 0;
}

QString quotedText(const QString& text)
{
    return '\''_L1 + SQLQuote(text) + '\''_L1;
}

QString fieldsOfTable(dao::Database& db, const QString& database, const QString& table)
{
    const auto file = db.OpenRecordset("SELECT FILE_NAME FROM TW_TABLE WHERE "_L1 + ofTable(database, table));
    return "SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '"_L1 +
           (file->Eof() ? QString() : SQLQuote(file->Fields().Item(0).Value())) + '\''_L1;
}

QString nextColumnNumber(dao::Database& db, const QString& database, const QString& table)
{
    const auto numbers = db.OpenRecordset("SELECT COLUMN_NUMBER FROM TW_COLUMN WHERE "_L1 + ofTable(database, table) +
                                          " ORDER BY COLUMN_NUMBER DESC"_L1);
    if (numbers->Eof())
        return u"1"_s;
    const dao::Value highest = numbers->Fields().Item(0).Value();
    return QString::number((highest.IsNull() ? 0 : highest.Long()) + qint64{1});
}

QString countColumns(dao::Database& db, const QString& database, const QString& table)
{
    const auto count =
        db.OpenRecordset("SELECT COUNT(*) AS COLUMN_COUNT FROM TW_COLUMN WHERE "_L1 + ofTable(database, table));
    return count->Eof() ? u"0"_s : count->Fields().Item(u"COLUMN_COUNT"_s).Value().Text();
}

} // namespace definitions
