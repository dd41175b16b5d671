#include "LineValidator.h"

#include "CConnections.h"
#include "Conversions.h"
#include "CsvDefaults.h"
#include "Findings.h"
#include "Recordset.h"
#include "ReservedRows.h"
#include "RuntimeError.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using Origin = CatalogNames::Origin;

namespace
{

/// The text between two others, most often in apostrophes.
QString named(const char* before, QStringView name, const char* behind)
{
    return QLatin1StringView(before) + name.toString() + QLatin1StringView(behind);
}

/// The number of a text of one to nine digits, or -1 for any other.
int fewDigits(QStringView text)
{
    if (text.isEmpty() || text.size() > 9)
        return -1;
    int number = 0;
    for (const QChar digit : text) {
        if (digit < u'0' || digit > u'9')
            return -1;
        number = 10 * number + digit.unicode() - u'0';
    }
    return number;
}

/// A text to look for, without a copy: it must not outlive what it views.
QString sought(QStringView text)
{
    return QString::fromRawData(text.data(), text.size());
}

template <class Entry>
bool KeyExists(QStringView key, const QHash<QString, Entry>& set)
{
    return set.contains(sought(key));
}

/// Where a key came from, in the words of the messages; null if it is not there.
const char* origin(const CatalogNames::Set& set, QStringView key)
{
    const auto found = set.constFind(sought(key));
    if (found == set.constEnd())
        return nullptr;
    return *found == Origin::Catalog ? "Catalog" : "CSV";
}

} // namespace

bool IsValidNumeric(QStringView value, double low, double high)
{
    // Nearly all are a few digits.
    if (const int number = fewDigits(value); number >= 0)
        return low <= number && number <= high;
    if (!conversions::IsNumeric(value))
        return false;
    try {
        const double number = conversions::Val(value);
        return low <= number && number <= high;
    } catch (const RuntimeError&) {
        // No number of the machine is as large.
        return false;
    }
}

void LineValidator::validate(int line, QStringView text)
{
    if (text.isEmpty())
        return;
    m_line = line;
    splitLine(text, m_columns);
    const QStringView written = col(1);
    m_columns.raise(1);
    m_id = col(1);
    const Assumption assumed = fillIn(m_id, m_columns, m_connection.LOCDTs());
    if (!assumed.warning.isEmpty())
        warn(assumed.warning, assumed.type);

    static constexpr std::array<Kind, 8> kinds{{
        {"FILE", &LineValidator::validateFile},
        {"FIELD", &LineValidator::validateField},
        {"DB", &LineValidator::validateDatabase},
        {"TABLE", &LineValidator::validateTable},
        {"COLUMN", &LineValidator::validateColumn},
        {"USER", &LineValidator::validateUser},
        {"DBPRV", &LineValidator::validateDatabasePrivilege},
        {"TBLPRV", &LineValidator::validateTablePrivilege},
    }};
    if (const Kind* kind = kindOf(kinds, m_id))
        (this->*kind->read)();
    else
        error(named("Unknow line ID '", written, "'"), u"?"_s);
}

void LineValidator::validateFile()
{
    raise({2, 3, 4});
    if (fewerThan(4, "Insufficient information to describe a File"))
        return;
    const QString file = col(2).toString();
    if (const char* where = origin(m_names.files, file))
        return error(named("'", file, "' already defined in ") + QLatin1StringView(where) + " (Col 2)"_L1);
    if (notOneOf(3, {"INDEXED", "RELATIVE", "SEQUENTIAL"}))
        return error(named("Invalid File Organisation '", col(3), "' (Col 3)"));
    if (notOneOf(4, {"FIXED", "VARIABLE"}))
        return error(named("Invalid Record Type '", col(4), "' (Col 4)"));
    if (outside(5, 65535, "Invalid Record Size '", "' (Col 5)"))
        return;
    m_names.files.insert(file, Origin::Csv);
    passed();
}

void LineValidator::validateField()
{
    raise({2, 3, 4});
    if (fewerThan(11, "Insufficient information to describe a Field"))
        return;
    if (!KeyExists(col(2), m_names.files))
        return error(named("File '", col(2), "' is not defined (Col 2)"));
    const QStringView key = m_key.joined({col(2), col(3)});
    if (const char* where = origin(m_names.fields, key))
        return error(named("'", col(2), ".") + col(3).toString() + "' is already defined in "_L1 +
                     QLatin1StringView(where) + " (Col 3)"_L1);
    if (!IsValidLOCDT(col(4)))
        return error(named("Invalid Local Type Name '", col(4), "' (Col 4)"));
    if (outside(5, 65535, "Invalid Offset '", "' (Col 5)") || outside(6, 65535, "Invalid Length '", "' (Col 6)") ||
        outside(7, 65535, "Invalid Precision '", "' (Col 7)") || outside(8, 65535, "Invalid Scale '", "' (Col 8)") ||
        outside(9, 1, "Invalid Encrypted Flag '", "' (Col 9)"))
        return;
    m_names.fields.insert(key.toString(), Origin::Csv);
    passed();
}

void LineValidator::validateDatabase()
{
    raise({2, 4});
    if (fewerThan(6, "Insufficient information to describe a Database"))
        return;
    const QString database = col(2).toString();
    if (const char* where = origin(m_names.databases, database))
        return error(named("'", database, "' is already defined in ") + QLatin1StringView(where) + " (Col 2)"_L1);
    if (!IsValidDriverName(col(4).toString()))
        return error(named("Invalid Driver Name '", col(4), "' (Col 4)"));
    if (!col(6).isEmpty() && col(6).toString().toUpper() != database)
        return error(u"Display Name must match Database Name"_s);
    m_names.databases.insert(database, Origin::Csv);
    passed();
}

void LineValidator::validateTable()
{
    raise({2, 3, 4, 5});
    if (fewerThan(8, "Insufficient information to describe a Table"))
        return;
    if (!KeyExists(col(2), m_names.databases))
        return error(named("Database '", col(2), "' does not exist (Col 2)"));
    if (col(4).isEmpty())
        return warn(u"Table Type not set (Col 4)"_s);
    if (!KeyExists(col(5), m_names.files))
        return error(named("File '", col(5), "' is not defined (Col 5)"));
    const QStringView key = m_key.joined({col(2), col(3)});
    if (const char* where = origin(m_names.tables, key)) {
        error(named("'", col(2), "_") + col(3).toString() + "' is already defined in "_L1 + QLatin1StringView(where) +
              " (Col 3)"_L1);
    } else {
        m_names.tables.insert(key.toString(), Origin::Csv);
        passed();
    }
    // The first table of a name decides for all databases, be it there already or not.
    const QString table = col(3).toString();
    if (!KeyExists(table, m_names.tableFiles))
        m_names.tableFiles.insert(table, col(5).toString());
}

void LineValidator::validateColumn()
{
    raise({2, 3, 4, 5, 6});
    if (fewerThan(12, "Insufficient information to describe a Column"))
        return;
    if (!KeyExists(col(2), m_names.databases))
        return error(named("Database '", col(2), "' does not exist (Col 2)"));
    if (!KeyExists(m_key.joined({col(2), col(3)}), m_names.tables))
        return error(named("Table '", col(3), "' does not exist (Col 3)"));
    const auto file = m_names.tableFiles.constFind(sought(col(3)));
    if (file == m_names.tableFiles.constEnd())
        return error(named("Reference to ", col(3), " has not been defined in catalog"));
    if (!KeyExists(m_key.joined({*file, col(5)}), m_names.fields))
        return error(named("Field '", col(5), "' does not exist (Col 5)"));
    if (!IsValidSQLDT(col(6)))
        return error(named("SQL Type Name Invalid '", col(6), "' (Col 6)"));
    if (outside(7, 65535, "Invalid Length '", "' (Col 7)") || outside(8, 1, "Invalid Updatable flag '", "' (Col 8)") ||
        outside(9, 1, "Invalid Visible flag '", "' (Col 9)") || outside(12, 8, "Invalid Column Type '", "' (Col 12)") ||
        !validateColumnType())
        return;

    // Columns of the file enter no set, so each line is compared with the catalog alone.
    bool clashes = false;
    if (KeyExists(m_key.apart({col(2), col(3), col(4)}), m_names.columnNames)) {
        error(named("'", col(2), "' is already defined in Catalog (Col 2)"));
        clashes = true;
    }
    if (KeyExists(m_key.apart({col(2), col(3), col(5)}), m_names.mappedFields)) {
        error(named("'", col(5), "' is already mapped in Catalog (Col 5)"));
        clashes = true;
    }
    if (!clashes)
        passed();
}

/// A special column bears the name of its type, and one of type 8 refers to a column of the catalog.
bool LineValidator::validateColumnType()
{
    static constexpr std::array names{"RFA",         "INDEX_NUMBER", "INDEX_NAME",     "INDEX_COLUMNS",
                                      "TABLE_ORDER", "ROWID",        "RELATIVE_NUMBER"};
    const double type = conversions::Val(col(12));
    for (std::size_t i = 0; i < names.size(); ++i) {
        const QLatin1StringView name(names[i]);
        if (type == static_cast<double>(i + 1) && col(4) != name) {
            error("Invalid Column Name - Column Type indicates "_L1 + name);
            return false;
        }
    }
    if (type != 8)
        return true;
    const QString column = col(11).toString().toUpper();
    if (KeyExists(m_key.apart({col(2), col(3), column}), m_names.columnNames))
        return true;
    error(named("Column '", column, "' undefined (Col 11)"));
    return false;
}

void LineValidator::validateUser()
{
    raise({2, 3});
    if (notExactly(3, "Insufficient information to describe a User"))
        return;
    const QString user = col(2).toString();
    if (reservedrows::isAdministrator(user))
        return error(u"ADMIN cannot be imported"_s);
    if (const char* where = origin(m_names.users, user))
        return error(named("'", user, "' is already defined in ") + QLatin1StringView(where) + " (Col 2)"_L1);
    if (col(3).isEmpty())
        warn(u"Password is blank"_s);
    m_names.users.insert(user, Origin::Csv);
    passed();
}

void LineValidator::validateDatabasePrivilege()
{
    raise({2, 3, 4, 5, 10});
    if (notExactly(10, "Insufficient information to describe a Database Privilege"))
        return;
    if (!KeyExists(col(2), m_names.users))
        return error(named("User '", col(2), "' does not exist (Col 2)"));
    const auto found = m_names.databasePrivileges.constFind(sought(m_key.joined({col(2), col(3)})));
    if (found != m_names.databasePrivileges.constEnd()) {
        const QString clash =
            named("'User '", col(2), "', Database '") + col(3).toString() + "' privileges already defined in "_L1;
        if (*found == Origin::Catalog)
            return error(clash + "Catalog (Col 2)"_L1);
        return error(clash + "CSV (Col 2)"_L1, u"TABLE"_s);
    }
    if (col(5).isEmpty())
        warn(u"Database Password is blank"_s);
    if (outside(6, 1, "Invalid Allow Select flag (Col 6)") || outside(7, 1, "Invalid Allow Insert flag (Col 7)") ||
        outside(8, 1, "Invalid Allow Update flag (Col 8)") || outside(9, 1, "Invalid Allow Delete flag (Col 9)"))
        return;
    if (notOneOf(10, {"DATABASE", "TABLE"}))
        return error(u"Invalid Security Level (Col 10)"_s);
    passed();
}

void LineValidator::validateTablePrivilege()
{
    raise({2, 3, 4});
    if (notExactly(8, "Insufficient information to describe a Table Privilege"))
        return;
    if (!KeyExists(col(2), m_names.users))
        return error(named("User '", col(2), "' does not exist (Col 2)"));
    if (!KeyExists(col(3), m_names.databases))
        return error(named("Database '", col(3), "' does not exist (Col 3)"));
    if (!KeyExists(m_key.joined({col(3), col(4)}), m_names.tables))
        return error(named("Table '", col(3), "_") + col(4).toString() + "' does not exist (Col 4)"_L1);
    // The last flag is the right to delete, whatever it is called.
    if (outside(5, 1, "Invalid Allow Select flag (Col 5)") || outside(6, 1, "Invalid Allow Insert flag (Col 6)") ||
        outside(7, 1, "Invalid Allow Update flag (Col 7)") || outside(8, 1, "Invalid Allow Select flag (Col 8)"))
        return;
    const QStringView key = m_key.joined({col(2), col(3), col(4)});
    if (const char* where = origin(m_names.tablePrivileges, key))
        return error(named("'User '", col(2), "', Table '") + col(3).toString() + col(4).toString() +
                     "' privileges already defined in "_L1 + QLatin1StringView(where) + " (Col 2)"_L1);
    m_names.tablePrivileges.insert(key.toString(), Origin::Csv);
    passed();
}

void LineValidator::raise(std::initializer_list<int> columns)
{
    for (const int column : columns)
        m_columns.raise(column);
}

bool LineValidator::fewerThan(int columns, const char* description)
{
    if (m_columns.count() >= columns)
        return false;
    error(QLatin1StringView(description));
    return true;
}

bool LineValidator::notExactly(int columns, const char* description)
{
    if (m_columns.count() == columns)
        return false;
    error(QLatin1StringView(description));
    return true;
}

bool LineValidator::notOneOf(int column, std::initializer_list<const char*> names) const
{
    const QStringView value = col(column);
    return std::none_of(names.begin(), names.end(), [&](const char* name) { return value == QLatin1StringView(name); });
}

bool LineValidator::outside(int column, int high, const char* before, const char* behind)
{
    if (IsValidNumeric(col(column), 0, high))
        return false;
    error(behind ? named(before, col(column), behind) : QString(QLatin1StringView(before)));
    return true;
}

bool LineValidator::IsValidLOCDT(QStringView name) const
{
    return m_connection.LOCDTs().find(sought(name)) != nullptr;
}

bool LineValidator::IsValidSQLDT(QStringView name) const
{
    return m_connection.SQLDTs().find(sought(name)) != nullptr;
}

bool LineValidator::IsValidDriverName(const QString& name) const
{
    // Behind an apostrophe a semicolon would begin a statement of its own, which could write.
    if (name.contains(u'\'') && name.contains(u';'))
        return false;
    const auto rows =
        m_connection.db()->OpenRecordset("SELECT DRIVER_NAME FROM TW_DRIVER WHERE DRIVER_NAME = '"_L1 + name + u'\'');
    return !rows->Eof();
}

void LineValidator::error(const QString& description, const QString& type)
{
    m_findings.AddError(m_line, type.isEmpty() ? m_id.toString() : type, description);
}

void LineValidator::warn(const QString& description, const QString& type)
{
    m_findings.AddWarning(m_line, type.isEmpty() ? m_id.toString() : type, description);
}

void LineValidator::passed()
{
    m_findings.AddPassed(m_line, {}, {});
}
