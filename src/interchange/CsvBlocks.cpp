#include "CsvBlocks.h"

#include "Recordset.h"
#include "ReservedFiles.h"
#include "TextWriter.h"

#include <QByteArray>

const std::array<CsvBlock, 8>& csvBlocks()
{
    static const QByteArray files = QByteArray("SELECT FILE_NAME, FILE_ORGANISATION, RECORD_TYPE, RECORD_SIZE "
                                               "FROM TW_FILE WHERE ") +
                                    reservedfiles::userFiles;
    static const QByteArray fields =
        QByteArray("SELECT FILE_NAME, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE, ENCRYPTED, "
                   "FORMAT, DEFAULT_VALUE "
                   "FROM TW_FIELD WHERE ") +
        reservedfiles::userFiles + ' ';
    static const std::array<CsvBlock, 8> blocks{{
        {"FILE", "Writing File Definitions", files.constData()},
        {"FIELD", "Writing Field Definitions", fields.constData()},
        {"DB", "Writing Database Definitions",
         "SELECT DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, DISPLAY_NAME "
         "FROM TW_DB "
         "WHERE DATABASE_NAME <>'TW'"},
        {"TABLE", "Writing Table Definitions",
         "SELECT DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, CRITERIA, DISPLAY_NAME "
         "FROM TW_TABLE "
         "WHERE DATABASE_NAME <>'TW'"},
        {"COLUMN", "Writing Column Definitions",
         "SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, UPDATABLE, VISIBLE, "
         "DEFAULT_VALUE, DISPLAY_NAME, COLUMN_TYPE "
         "FROM TW_COLUMN "
         "WHERE DATABASE_NAME <>'TW' "},
        {"USER", "Writing User Definitions",
         "SELECT USER_NAME, USER_PASSWORD "
         "FROM TW_USER "
         "WHERE USER_NAME <>'ADMIN'"},
        {"DBPRV", "Writing Database Privileges Definitions",
         "SELECT USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, ALLOW_INSERT, "
         "ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL "
         "FROM TW_DBPRV "
         "WHERE DATABASE_NAME <>'TW'"},
        {"TBLPRV", "Writing Table Privileges Definitions",
         "SELECT USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE "
         "FROM TW_TBLPRV "
         "WHERE DATABASE_NAME <>'TW'"},
    }};
    return blocks;
}

void appendCsvLine(TextWriter& file, const char* id, const dao::Recordset& row)
{
    file.append('"');
    file.append(QLatin1StringView(id));
    file.append('"');
    int column = 0;
    for (const dao::Field& field : row.Fields()) {
        const QStringView value = row.View(column++);
        const bool quoted = field.Type == dao::dbChar || field.Type == dao::dbText;
        file.append(',');
        if (quoted)
            file.append('"');
        file.append(value);
        if (quoted)
            file.append('"');
    }
    file.append(QLatin1StringView("\r\n"));
}
