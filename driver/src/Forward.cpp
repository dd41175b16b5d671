// The part of the ODBC interface that needs nothing added: each function hands its arguments to the library below.
// Handles are that library's own, so a call costs one indirect jump.

#include "ByRights.h"
#include "Lower.h"

#include <sqlucode.h>

using namespace tarnwick;

#define FORWARD(name, parameters, arguments)                                                                           \
    SQLRETURN SQL_API name parameters                                                                                  \
    {                                                                                                                  \
        return lower.name arguments;                                                                                   \
    }

/// The same for catalog functions.
#define ANSWER(name, parameters, arguments)                                                                            \
    SQLRETURN SQL_API name parameters                                                                                  \
    {                                                                                                                  \
        return AnswerAnew(s, [&] { return lower.name arguments; });                                                    \
    }

// clang-format off

// Results
FORWARD(SQLNumResultCols, (SQLHSTMT s, SQLSMALLINT* columns), (s, columns))
FORWARD(SQLRowCount, (SQLHSTMT s, SQLLEN* rows), (s, rows))

// Execution
FORWARD(SQLCancel, (SQLHSTMT s), (s))
FORWARD(SQLNumParams, (SQLHSTMT s, SQLSMALLINT* parameters), (s, parameters))
FORWARD(SQLDescribeParam,
        (SQLHSTMT s, SQLUSMALLINT number, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits, SQLSMALLINT* nullable),
        (s, number, type, size, digits, nullable))
FORWARD(SQLBindParam,
        (SQLHSTMT s, SQLUSMALLINT number, SQLSMALLINT valueType, SQLSMALLINT type, SQLULEN size, SQLSMALLINT digits,
         SQLPOINTER value, SQLLEN* length),
        (s, number, valueType, type, size, digits, value, length))
FORWARD(SQLBindParameter,
        (SQLHSTMT s, SQLUSMALLINT number, SQLSMALLINT direction, SQLSMALLINT valueType, SQLSMALLINT type, SQLULEN size,
         SQLSMALLINT digits, SQLPOINTER value, SQLLEN capacity, SQLLEN* length),
        (s, number, direction, valueType, type, size, digits, value, capacity, length))
FORWARD(SQLPutData, (SQLHSTMT s, SQLPOINTER value, SQLLEN length), (s, value, length))
FORWARD(SQLEndTran, (SQLSMALLINT type, SQLHANDLE handle, SQLSMALLINT completion), (type, handle, completion))

// Cursors
FORWARD(SQLGetCursorName,
        (SQLHSTMT s, SQLCHAR* name, SQLSMALLINT capacity, SQLSMALLINT* length), (s, name, capacity, length))
FORWARD(SQLSetCursorName, (SQLHSTMT s, SQLCHAR* name, SQLSMALLINT length), (s, name, length))

// Catalog functions with narrow names
ANSWER(SQLPrimaryKeys,
        (SQLHSTMT s, SQLCHAR* catalog, SQLSMALLINT catalogLength, SQLCHAR* schema, SQLSMALLINT schemaLength,
         SQLCHAR* table, SQLSMALLINT tableLength),
        (s, catalog, catalogLength, schema, schemaLength, table, tableLength))
ANSWER(SQLForeignKeys,
        (SQLHSTMT s, SQLCHAR* pkCatalog, SQLSMALLINT pkCatalogLength, SQLCHAR* pkSchema, SQLSMALLINT pkSchemaLength,
         SQLCHAR* pkTable, SQLSMALLINT pkTableLength, SQLCHAR* fkCatalog, SQLSMALLINT fkCatalogLength,
         SQLCHAR* fkSchema, SQLSMALLINT fkSchemaLength, SQLCHAR* fkTable, SQLSMALLINT fkTableLength),
        (s, pkCatalog, pkCatalogLength, pkSchema, pkSchemaLength, pkTable, pkTableLength, fkCatalog, fkCatalogLength,
         fkSchema, fkSchemaLength, fkTable, fkTableLength))
ANSWER(SQLStatistics,
        (SQLHSTMT s, SQLCHAR* catalog, SQLSMALLINT catalogLength, SQLCHAR* schema, SQLSMALLINT schemaLength,
         SQLCHAR* table, SQLSMALLINT tableLength, SQLUSMALLINT unique, SQLUSMALLINT accuracy),
        (s, catalog, catalogLength, schema, schemaLength, table, tableLength, unique, accuracy))
ANSWER(SQLSpecialColumns,
        (SQLHSTMT s, SQLUSMALLINT kind, SQLCHAR* catalog, SQLSMALLINT catalogLength, SQLCHAR* schema,
         SQLSMALLINT schemaLength, SQLCHAR* table, SQLSMALLINT tableLength, SQLUSMALLINT scope, SQLUSMALLINT nullable),
        (s, kind, catalog, catalogLength, schema, schemaLength, table, tableLength, scope, nullable))
ANSWER(SQLProcedures,
        (SQLHSTMT s, SQLCHAR* catalog, SQLSMALLINT catalogLength, SQLCHAR* schema, SQLSMALLINT schemaLength,
         SQLCHAR* procedure, SQLSMALLINT procedureLength),
        (s, catalog, catalogLength, schema, schemaLength, procedure, procedureLength))
ANSWER(SQLProcedureColumns,
        (SQLHSTMT s, SQLCHAR* catalog, SQLSMALLINT catalogLength, SQLCHAR* schema, SQLSMALLINT schemaLength,
         SQLCHAR* procedure, SQLSMALLINT procedureLength, SQLCHAR* column, SQLSMALLINT columnLength),
        (s, catalog, catalogLength, schema, schemaLength, procedure, procedureLength, column, columnLength))

// clang-format on
