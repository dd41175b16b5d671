#include "Diagnostics.h"
#include "Lower.h"
#include "Resources.h"
#include "Text.h"

#include <sqlucode.h>

#include <array>

using namespace tarnwick;

namespace
{

/// A name or pattern given to a catalog function: wide text turned into the narrow text of the library below. A null
/// pointer means "any" and stays one.
class Name
{
public:
    Name(const SQLWCHAR* text, SQLSMALLINT length) : m_given(text != nullptr), m_text(WideArgument(text, length)) {}

    SQLCHAR* Data() { return m_given && m_text ? reinterpret_cast<SQLCHAR*>(m_text->data()) : nullptr; }
    bool IsWellFormed() const { return m_text.has_value(); }

private:
    bool m_given;
    std::optional<std::string> m_text;
};

SQLRETURN RefuseName(SQLHSTMT statement)
{
    return diagnostics::Raise(SQL_HANDLE_STMT, statement, "22018", "A name is not well-formed UTF-16.");
}

template <typename... Names>
bool AreWellFormed(const Names&... names)
{
    return (names.IsWellFormed() && ...);
}

SQLRETURN RunOwn(SQLHSTMT statement, std::string text)
{
    diagnostics::Clear(SQL_HANDLE_STMT, statement);
    return lower.SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS);
}

/// " AND <column> LIKE '<pattern>'"; nothing for a pattern that was not given.
std::string Matching(const char* column, const SQLCHAR* pattern, SQLSMALLINT length)
{
    if (!pattern)
        return {};
    std::string condition = std::string(" AND ") + column + " LIKE '";
    for (const char c : NarrowArgument(pattern, length)) {
        condition += c;
        if (c == '\'')
            condition += c;
    }
    return condition + "' ESCAPE '\\'";
}

/// SQLColumns answered from the catalog itself: the library below reports other types and sizes here than it does for
/// the columns of a result.
SQLRETURN Columns(SQLHSTMT statement, const SQLCHAR* table, SQLSMALLINT tableLength, const SQLCHAR* column,
                  SQLSMALLINT columnLength)
{
    return RunOwn(statement, resources::odbcColumns + Matching("t.name", table, tableLength) +
                                 Matching("c.name", column, columnLength) + " ORDER BY t.name, c.cid");
}

/// SQLGetTypeInfo answered from TW_SQLDT, the types that the catalog knows. ODBC 2 clients ask for the date types under
/// their older codes.
SQLRETURN TypeInfo(SQLHSTMT statement, SQLSMALLINT type)
{
    if (type == SQL_DATE || type == SQL_TIME || type == SQL_TIMESTAMP)
        type = static_cast<SQLSMALLINT>(type - SQL_DATE + SQL_TYPE_DATE);
    const std::string condition =
        type == SQL_ALL_TYPES ? std::string() : " WHERE SQL_DATA_TYPE = " + std::to_string(type);
    return RunOwn(statement, resources::odbcTypeInfo + condition + " ORDER BY 2, 1");
}

} // namespace

SQLRETURN SQL_API SQLColumns(SQLHSTMT statement, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLCHAR* table,
                             SQLSMALLINT tableLength, SQLCHAR* column, SQLSMALLINT columnLength)
{
    return Columns(statement, table, tableLength, column, columnLength);
}

SQLRETURN SQL_API SQLColumnsW(SQLHSTMT statement, SQLWCHAR*, SQLSMALLINT, SQLWCHAR*, SQLSMALLINT, SQLWCHAR* table,
                              SQLSMALLINT tableLength, SQLWCHAR* column, SQLSMALLINT columnLength)
{
    Name tableName(table, tableLength);
    Name columnName(column, columnLength);
    if (!AreWellFormed(tableName, columnName))
        return RefuseName(statement);
    return Columns(statement, tableName.Data(), SQL_NTS, columnName.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLGetTypeInfo(SQLHSTMT statement, SQLSMALLINT type)
{
    return TypeInfo(statement, type);
}

SQLRETURN SQL_API SQLGetTypeInfoW(SQLHSTMT statement, SQLSMALLINT type)
{
    return TypeInfo(statement, type);
}

SQLRETURN SQL_API SQLTablesW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength, SQLWCHAR* schema,
                             SQLSMALLINT schemaLength, SQLWCHAR* table, SQLSMALLINT tableLength, SQLWCHAR* types,
                             SQLSMALLINT typesLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength), d(types, typesLength);
    if (!AreWellFormed(a, b, c, d))
        return RefuseName(statement);
    return lower.SQLTables(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, d.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLPrimaryKeysW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength, SQLWCHAR* schema,
                                  SQLSMALLINT schemaLength, SQLWCHAR* table, SQLSMALLINT tableLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return lower.SQLPrimaryKeys(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLForeignKeysW(SQLHSTMT statement, SQLWCHAR* pkCatalog, SQLSMALLINT pkCatalogLength,
                                  SQLWCHAR* pkSchema, SQLSMALLINT pkSchemaLength, SQLWCHAR* pkTable,
                                  SQLSMALLINT pkTableLength, SQLWCHAR* fkCatalog, SQLSMALLINT fkCatalogLength,
                                  SQLWCHAR* fkSchema, SQLSMALLINT fkSchemaLength, SQLWCHAR* fkTable,
                                  SQLSMALLINT fkTableLength)
{
    Name a(pkCatalog, pkCatalogLength), b(pkSchema, pkSchemaLength), c(pkTable, pkTableLength);
    Name d(fkCatalog, fkCatalogLength), e(fkSchema, fkSchemaLength), f(fkTable, fkTableLength);
    if (!AreWellFormed(a, b, c, d, e, f))
        return RefuseName(statement);
    return lower.SQLForeignKeys(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, d.Data(), SQL_NTS,
                                e.Data(), SQL_NTS, f.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLStatisticsW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength, SQLWCHAR* schema,
                                 SQLSMALLINT schemaLength, SQLWCHAR* table, SQLSMALLINT tableLength,
                                 SQLUSMALLINT unique, SQLUSMALLINT accuracy)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return lower.SQLStatistics(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, unique, accuracy);
}

SQLRETURN SQL_API SQLSpecialColumnsW(SQLHSTMT statement, SQLUSMALLINT kind, SQLWCHAR* catalog,
                                     SQLSMALLINT catalogLength, SQLWCHAR* schema, SQLSMALLINT schemaLength,
                                     SQLWCHAR* table, SQLSMALLINT tableLength, SQLUSMALLINT scope,
                                     SQLUSMALLINT nullable)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return lower.SQLSpecialColumns(statement, kind, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, scope,
                                   nullable);
}

SQLRETURN SQL_API SQLTablePrivilegesW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength,
                                      SQLWCHAR* schema, SQLSMALLINT schemaLength, SQLWCHAR* table,
                                      SQLSMALLINT tableLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return lower.SQLTablePrivileges(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLColumnPrivilegesW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength,
                                       SQLWCHAR* schema, SQLSMALLINT schemaLength, SQLWCHAR* table,
                                       SQLSMALLINT tableLength, SQLWCHAR* column, SQLSMALLINT columnLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength), d(column, columnLength);
    if (!AreWellFormed(a, b, c, d))
        return RefuseName(statement);
    return lower.SQLColumnPrivileges(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, d.Data(),
                                     SQL_NTS);
}

SQLRETURN SQL_API SQLProceduresW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength, SQLWCHAR* schema,
                                 SQLSMALLINT schemaLength, SQLWCHAR* procedure, SQLSMALLINT procedureLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(procedure, procedureLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return lower.SQLProcedures(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLProcedureColumnsW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength,
                                       SQLWCHAR* schema, SQLSMALLINT schemaLength, SQLWCHAR* procedure,
                                       SQLSMALLINT procedureLength, SQLWCHAR* column, SQLSMALLINT columnLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(procedure, procedureLength), d(column, columnLength);
    if (!AreWellFormed(a, b, c, d))
        return RefuseName(statement);
    return lower.SQLProcedureColumns(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, d.Data(),
                                     SQL_NTS);
}
