#include "ByRights.h"
#include "Diagnostics.h"
#include "Lower.h"
#include "OwnStatement.h"
#include "RecordTables.h"
#include "Registry.h"
#include "Resources.h"
#include "Text.h"
#include "Things.h"
#include "Tokenizer.h"

#include <sqlucode.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

using namespace tarnwick;
using things::Literal;
using things::Matching;

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

/// Answers a catalog function by the statement whose text `make` gives. The catalog is read for it only once it is sure
/// that it may be.
template <typename Make>
SQLRETURN RunOwn(SQLHSTMT statement, Make make)
{
    return AnswerAnew(statement, [&] {
        try {
            std::string text = make();
            const records::OwnStatement own;
            return lower.SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS);
        } catch (const records::RecordError& error) {
            return diagnostics::Raise(SQL_HANDLE_STMT, statement, "HY000", error.what());
        }
    });
}

/// A list of table types as SQLTables takes it, `TABLE,VIEW` or `'TABLE', 'VIEW'`, as a condition.
std::string OfTypes(const SQLCHAR* types, SQLSMALLINT length)
{
    std::string listed = types ? std::string(NarrowArgument(types, length)) : std::string();
    if (listed.empty() || listed == "%")
        return {};
    std::string condition;
    for (const Token& token : Tokenize(listed)) {
        if (token.kind != Token::Kind::Word && token.kind != Token::Kind::String)
            continue;
        const bool quoted = token.kind == Token::Kind::String;
        condition += (condition.empty() ? "" : ", ") +
                     Literal(quoted ? token.text.substr(1, token.text.size() - 2) : token.text);
    }
    return " AND t.type COLLATE NOCASE IN (" + condition + ")";
}

/// SQLTables. The lists of all catalogs, schemas and types, which an empty name of a table asks for, are the library's
/// below.
SQLRETURN Tables(SQLHSTMT statement, SQLCHAR* catalog, SQLSMALLINT catalogLength, SQLCHAR* schema,
                 SQLSMALLINT schemaLength, SQLCHAR* table, SQLSMALLINT tableLength, SQLCHAR* types,
                 SQLSMALLINT typesLength)
{
    if (table && NarrowArgument(table, tableLength).empty())
        return AnswerAnew(statement, [&] {
            return lower.SQLTables(statement, catalog, catalogLength, schema, schemaLength, table, tableLength, types,
                                   typesLength);
        });
    return RunOwn(statement, [&] {
        return things::Listed(statement, table, tableLength) +
               "SELECT NULL AS TABLE_CAT, NULL AS TABLE_SCHEM, t.name AS TABLE_NAME, upper(t.type) AS TABLE_TYPE, "
               "t.remarks AS REMARKS FROM THING t WHERE 1" +
               Matching("t.name", table, tableLength) + OfTypes(types, typesLength) + " ORDER BY 4, 3";
    });
}

/// SQLColumns answered from the catalog itself: the library below reports other types and sizes here than it does for
/// the columns of a result, and knows nothing of tables over records.
SQLRETURN Columns(SQLHSTMT statement, const SQLCHAR* table, SQLSMALLINT tableLength, const SQLCHAR* column,
                  SQLSMALLINT columnLength)
{
    return RunOwn(statement, [&] {
        return things::Described(statement, table, tableLength) + resources::odbcColumns +
               Matching("t.name", table, tableLength) + Matching("c.name", column, columnLength) +
               " ORDER BY t.name, c.cid";
    });
}

/// SQLTablePrivileges answered from the rights to which the connection's statements are held. All of them are granted
/// in the catalog, by its administrator.
SQLRETURN TablePrivileges(SQLHSTMT statement, const SQLCHAR* table, SQLSMALLINT tableLength)
{
    return RunOwn(statement, [&] {
        return things::Granted(statement, table, tableLength) +
               "SELECT NULL AS TABLE_CAT, NULL AS TABLE_SCHEM, g.name AS TABLE_NAME, 'ADMIN' AS GRANTOR, "
               "g.user AS GRANTEE, g.privilege AS PRIVILEGE, 'NO' AS IS_GRANTABLE FROM GRANTED g ORDER BY 3, 6";
    });
}

/// SQLColumnPrivileges: those to its table, less the one that is about whole rows. The name of the table is no pattern.
SQLRETURN ColumnPrivileges(SQLHSTMT statement, const SQLCHAR* table, SQLSMALLINT tableLength, const SQLCHAR* column,
                           SQLSMALLINT columnLength)
{
    if (!table)
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "HY009", "The name of the table is missing.");
    std::string name;
    for (const char c : NarrowArgument(table, tableLength))
        name += c == '_' || c == '%' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    const auto* const pattern = reinterpret_cast<const SQLCHAR*>(name.c_str());
    return RunOwn(statement, [&] {
        const std::string granted = things::Granted(statement, pattern, SQL_NTS);
        const std::string described = things::Described(statement, pattern, SQL_NTS).substr(std::strlen("WITH "));
        return granted.substr(0, granted.size() - 1) + ", " + described +
               "SELECT NULL AS TABLE_CAT, NULL AS TABLE_SCHEM, g.name AS TABLE_NAME, c.name AS COLUMN_NAME, "
               "'ADMIN' AS GRANTOR, g.user AS GRANTEE, g.privilege AS PRIVILEGE, 'NO' AS IS_GRANTABLE "
               "FROM GRANTED g JOIN THING t ON t.name = g.name JOIN pragma_table_info(t.name) c "
               "WHERE g.privilege <> 'DELETE'" +
               Matching("c.name", column, columnLength) + " ORDER BY 3, c.cid, 7";
    });
}

/// SQLGetTypeInfo answered from TW_SQLDT, the types that the catalog knows. ODBC 2 clients ask for the date types under
/// their older codes.
SQLRETURN TypeInfo(SQLHSTMT statement, SQLSMALLINT type)
{
    if (type == SQL_DATE || type == SQL_TIME || type == SQL_TIMESTAMP)
        type = static_cast<SQLSMALLINT>(type - SQL_DATE + SQL_TYPE_DATE);
    const std::string condition =
        type == SQL_ALL_TYPES ? std::string() : " WHERE SQL_DATA_TYPE = " + std::to_string(type);
    return RunOwn(statement, [&] { return resources::odbcTypeInfo + condition + " ORDER BY 2, 1"; });
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

SQLRETURN SQL_API SQLTables(SQLHSTMT statement, SQLCHAR* catalog, SQLSMALLINT catalogLength, SQLCHAR* schema,
                            SQLSMALLINT schemaLength, SQLCHAR* table, SQLSMALLINT tableLength, SQLCHAR* types,
                            SQLSMALLINT typesLength)
{
    return Tables(statement, catalog, catalogLength, schema, schemaLength, table, tableLength, types, typesLength);
}

SQLRETURN SQL_API SQLTablesW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength, SQLWCHAR* schema,
                             SQLSMALLINT schemaLength, SQLWCHAR* table, SQLSMALLINT tableLength, SQLWCHAR* types,
                             SQLSMALLINT typesLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength), d(types, typesLength);
    if (!AreWellFormed(a, b, c, d))
        return RefuseName(statement);
    return Tables(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, d.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLPrimaryKeysW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength, SQLWCHAR* schema,
                                  SQLSMALLINT schemaLength, SQLWCHAR* table, SQLSMALLINT tableLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return SQLPrimaryKeys(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS);
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
    return SQLForeignKeys(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, d.Data(), SQL_NTS,
                          e.Data(), SQL_NTS, f.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLStatisticsW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength, SQLWCHAR* schema,
                                 SQLSMALLINT schemaLength, SQLWCHAR* table, SQLSMALLINT tableLength,
                                 SQLUSMALLINT unique, SQLUSMALLINT accuracy)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return SQLStatistics(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, unique, accuracy);
}

SQLRETURN SQL_API SQLSpecialColumnsW(SQLHSTMT statement, SQLUSMALLINT kind, SQLWCHAR* catalog,
                                     SQLSMALLINT catalogLength, SQLWCHAR* schema, SQLSMALLINT schemaLength,
                                     SQLWCHAR* table, SQLSMALLINT tableLength, SQLUSMALLINT scope,
                                     SQLUSMALLINT nullable)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return SQLSpecialColumns(statement, kind, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, scope, nullable);
}

SQLRETURN SQL_API SQLTablePrivilegesW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength,
                                      SQLWCHAR* schema, SQLSMALLINT schemaLength, SQLWCHAR* table,
                                      SQLSMALLINT tableLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return TablePrivileges(statement, c.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLTablePrivileges(SQLHSTMT statement, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLCHAR* table,
                                     SQLSMALLINT tableLength)
{
    return TablePrivileges(statement, table, tableLength);
}

SQLRETURN SQL_API SQLColumnPrivileges(SQLHSTMT statement, SQLCHAR*, SQLSMALLINT, SQLCHAR*, SQLSMALLINT, SQLCHAR* table,
                                      SQLSMALLINT tableLength, SQLCHAR* column, SQLSMALLINT columnLength)
{
    return ColumnPrivileges(statement, table, tableLength, column, columnLength);
}

SQLRETURN SQL_API SQLColumnPrivilegesW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength,
                                       SQLWCHAR* schema, SQLSMALLINT schemaLength, SQLWCHAR* table,
                                       SQLSMALLINT tableLength, SQLWCHAR* column, SQLSMALLINT columnLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(table, tableLength), d(column, columnLength);
    if (!AreWellFormed(a, b, c, d))
        return RefuseName(statement);
    return ColumnPrivileges(statement, c.Data(), SQL_NTS, d.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLProceduresW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength, SQLWCHAR* schema,
                                 SQLSMALLINT schemaLength, SQLWCHAR* procedure, SQLSMALLINT procedureLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(procedure, procedureLength);
    if (!AreWellFormed(a, b, c))
        return RefuseName(statement);
    return SQLProcedures(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS);
}

SQLRETURN SQL_API SQLProcedureColumnsW(SQLHSTMT statement, SQLWCHAR* catalog, SQLSMALLINT catalogLength,
                                       SQLWCHAR* schema, SQLSMALLINT schemaLength, SQLWCHAR* procedure,
                                       SQLSMALLINT procedureLength, SQLWCHAR* column, SQLSMALLINT columnLength)
{
    Name a(catalog, catalogLength), b(schema, schemaLength), c(procedure, procedureLength), d(column, columnLength);
    if (!AreWellFormed(a, b, c, d))
        return RefuseName(statement);
    return SQLProcedureColumns(statement, a.Data(), SQL_NTS, b.Data(), SQL_NTS, c.Data(), SQL_NTS, d.Data(), SQL_NTS);
}
