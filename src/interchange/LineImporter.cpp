#include "LineImporter.h"

#include "CConnections.h"
#include "Conversions.h"
#include "CsvDefaults.h"
#include "Findings.h"
#include "Recordset.h"
#include "Routine.h"
#include "modDatabase.h"

#include <QStringList>

#include <array>

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

QString listed(const QStringList& values)
{
    return values.join(", "_L1);
}

QString buildSelect(const QString& columns, const QString& table, const QString& criterion)
{
    return "SELECT "_L1 + columns + " FROM "_L1 + table + " WHERE "_L1 + criterion;
}

} // namespace

void LineImporter::ImportLine(int line, QStringView text)
{
    Statements sql;
    Routine routine("frmCSVValidate.ImportLine", "frmCSVImport.Import");
    routine.additional([&] {
        // A line that lacks a column fails before there is a statement of it.
        if (sql.insert.isEmpty())
            return "Line "_L1 + QString::number(line);
        return sql.insert + u'\n' + sql.select + u'\n' + sql.remove + u'\n';
    });
    routine.run([&] {
        if (text.isEmpty())
            return;
        scanLine(text, m_columns);
        sql = build(line, m_columns[1].toString().toUpper());
        if (!sql.insert.isEmpty())
            m_connection.db()->Execute(sql.insert);
    });
}

LineImporter::Statements LineImporter::build(int line, const QString& id)
{
    const Assumption assumed = fillIn(id, m_columns, m_connection.LOCDTs());
    if (id == "COLUMN"_L1 && !assumed.warning.isEmpty())
        m_findings.AddWarning(line, assumed.type, assumed.warning);

    static constexpr std::array<Kind, 8> kinds{{
        {"FILE", &LineImporter::buildFile},
        {"FIELD", &LineImporter::buildField},
        {"DB", &LineImporter::buildDatabase},
        {"TABLE", &LineImporter::buildTable},
        {"COLUMN", &LineImporter::buildColumn},
        {"USER", &LineImporter::buildUser},
        {"DBPRV", &LineImporter::buildDatabasePrivilege},
        {"TBLPRV", &LineImporter::buildTablePrivilege},
    }};
    const Kind* kind = kindOf(kinds, id);
    return kind ? (this->*kind->read)() : Statements();
}

LineImporter::Statements LineImporter::buildFile()
{
    const QString key = "FILE_NAME = "_L1 + upper(2);
    return {"INSERT INTO TW_FILE "
            "(FILE_NAME, FILE_ORGANISATION, RECORD_TYPE, RECORD_SIZE) "
            "VALUES ("_L1 +
                listed({upper(2), upper(3), upper(4), bare(5)}) + ")"_L1,
            buildSelect(u"FILE_NAME"_s, u"TW_FILE"_s, key), BuildDelete(u"TW_FILE"_s, key)};
}

LineImporter::Statements LineImporter::buildField()
{
    clsCount& number = m_fieldNumbers[m_columns[2].toString().toUpper()];
    ++number.Value;
    const QString key = "FILE_NAME = "_L1 + upper(2) + " AND FIELD_NAME = "_L1 + upper(3);
    return {"INSERT INTO TW_FIELD "
            "(FILE_NAME, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE, ENCRYPTED, FORMAT, "
            "FIELD_NUMBER, DEFAULT_VALUE)"
            "VALUES ("_L1 +
                listed({upper(2), upper(3), upper(4), bare(5), bare(6), bare(7), bare(8), bare(9), upper(10),
                        QString::number(number.Value), text(11)}) +
                ") "_L1,
            buildSelect(u"FILE_NAME, FIELD_NAME"_s, u"TW_FIELD"_s, key), BuildDelete(u"TW_FIELD"_s, key)};
}

LineImporter::Statements LineImporter::buildDatabase()
{
    const QString key = "DATABASE_NAME = "_L1 + upper(2);
    return {"INSERT INTO TW_DB "
            "(DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, DISPLAY_NAME) "
            "VALUES ("_L1 +
                listed({upper(2), text(3), upper(4), text(5), text(6)}) + ")"_L1,
            buildSelect(u"DATABASE_NAME"_s, u"TW_DB"_s, key), BuildDelete(u"TW_DB"_s, key)};
}

LineImporter::Statements LineImporter::buildTable()
{
    const QString key = "DATABASE_NAME = "_L1 + upper(2) + " AND TABLE_NAME = "_L1 + upper(3);
    return {"INSERT INTO TW_TABLE "
            "(DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, CRITERIA, DISPLAY_NAME) "
            "VALUES ("_L1 +
                listed({upper(2), upper(3), upper(4), upper(5), text(6), text(7), text(8)}) + ")"_L1,
            buildSelect(u"DATABASE_NAME, TABLE_NAME"_s, u"TW_TABLE"_s, key), BuildDelete(u"TW_TABLE"_s, key)};
}

LineImporter::Statements LineImporter::buildColumn()
{
    const QString key =
        "DATABASE_NAME = "_L1 + upper(2) + " AND TABLE_NAME = "_L1 + upper(3) + " AND COLUMN_NAME = "_L1 + upper(4);
    const QString number = columnNumber();
    return {"INSERT INTO TW_COLUMN "
            "(DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, UPDATABLE, VISIBLE, "
            "DEFAULT_VALUE, COLUMN_NUMBER, DISPLAY_NAME, PRECISION, NULLABLE, CASE_SENSITIVE, SEARCHABLE, "
            "UNSIGNED_ATTRIBUTE, MONEY, AUTO_INCREMENT, RADIX, COLUMN_TYPE) "
            "VALUES ("_L1 +
                listed({upper(2), upper(3), upper(4), upper(5), upper(6), bare(7), bare(8), bare(9), text(10), number,
                        text(11), typeAttributes(), bare(12)}) +
                ")"_L1,
            buildSelect(u"DATABASE_NAME, TABLE_NAME, COLUMN_NAME"_s, u"TW_COLUMN"_s, key),
            BuildDelete(u"TW_COLUMN"_s, key)};
}

LineImporter::Statements LineImporter::buildUser()
{
    const QString key = "USER_NAME = "_L1 + upper(2);
    return {"INSERT INTO TW_USER "
            "(USER_NAME, USER_PASSWORD) "
            "VALUES ("_L1 +
                listed({upper(2), upper(3)}) + ") "_L1,
            buildSelect(u"USER_NAME"_s, u"TW_USER"_s, key), BuildDelete(u"TW_USER"_s, key)};
}

LineImporter::Statements LineImporter::buildDatabasePrivilege()
{
    const QString key = "USER_NAME = "_L1 + upper(2) + " AND DATABASE_NAME = "_L1 + upper(3);
    return {"INSERT INTO TW_DBPRV "
            "(USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, ALLOW_INSERT, "
            "ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL) "
            "VALUES ("_L1 +
                listed({upper(2), upper(3), upper(4), text(5), bare(6), bare(7), bare(8), bare(9), upper(10)}) + ")"_L1,
            buildSelect(u"USER_NAME, DATABASE_NAME"_s, u"TW_DBPRV"_s, key), BuildDelete(u"TW_DBPRV"_s, key)};
}

LineImporter::Statements LineImporter::buildTablePrivilege()
{
    const QString key =
        "USER_NAME = "_L1 + upper(2) + " AND DATABASE_NAME = "_L1 + upper(3) + " AND TABLE_NAME = "_L1 + upper(4);
    return {"INSERT INTO TW_TBLPRV "
            "(USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE) "
            "VALUES ("_L1 +
                listed({upper(2), upper(3), upper(4), bare(5), bare(6), bare(7), bare(8)}) + ")"_L1,
            buildSelect(u"USER_NAME, DATABASE_NAME, TABLE_NAME"_s, u"TW_TBLPRV"_s, key),
            BuildDelete(u"TW_TBLPRV"_s, key)};
}

/// Ordinary columns count up, special ones are all the first.
QString LineImporter::columnNumber()
{
    clsCount& last = m_columnNumbers[m_columns[2].toString().toUpper() + u'_' + m_columns[3].toString().toUpper()];
    if (conversions::Val(m_columns[12]) != 0)
        return u"1"_s;
    return QString::number(++last.Value);
}

QString LineImporter::typeAttributes() const
{
    const auto type = m_connection.db()->OpenRecordset(
        "SELECT PRECISION, NULLABLE, CASE_SENSITIVE, SEARCHABLE, UNSIGNED_ATTRIBUTE, MONEY, AUTO_INCREMENT, RADIX "
        "FROM TW_SQLDT "
        "WHERE SQL_TYPE_NAME = "_L1 +
        upper(6));
    QStringList attributes;
    for (const dao::Field& attribute : type->Fields())
        attributes.append(u'0' + attribute.Value().Text());
    return listed(attributes);
}

QString LineImporter::text(int column) const
{
    return u'\'' + SQLQuote(m_columns[column].toString()) + u'\'';
}

QString LineImporter::upper(int column) const
{
    return u'\'' + SQLQuote(m_columns[column].toString().toUpper()) + u'\'';
}

/// Only a number stands in a statement without quotes: anything else could be a statement of its own. What stands there
/// in its place is not told, for a quote within a line moves columns, and it may be a password.
QString LineImporter::bare(int column) const
{
    const QString value = m_columns[column].toString();
    if (!conversions::IsNumeric(value))
        throw RuntimeError(ErrorNumber::TypeMismatch, RuntimeError::usualDescription(ErrorNumber::TypeMismatch) +
                                                          ": the line has no number in column "_L1 +
                                                          QString::number(column));
    return value;
}
