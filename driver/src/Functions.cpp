// Which functions of the ODBC interface there are. The driver manager calls only what is told here, so it must be what
// this library exports, and not what the library below does.

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <iterator>

namespace
{

/// Every exported function, as the manager numbers it: a wide one has its narrow one's number.
constexpr SQLUSMALLINT functions[] = {
    // Handles and connections
    SQL_API_SQLALLOCHANDLE,
    SQL_API_SQLFREEHANDLE,
    SQL_API_SQLFREESTMT,
    SQL_API_SQLCONNECT,
    SQL_API_SQLDRIVERCONNECT,
    SQL_API_SQLDISCONNECT,
    SQL_API_SQLSETENVATTR,
    SQL_API_SQLGETENVATTR,
    SQL_API_SQLSETCONNECTATTR,
    SQL_API_SQLGETCONNECTATTR,
    SQL_API_SQLSETSTMTATTR,
    SQL_API_SQLGETSTMTATTR,
    // What the driver is and what went wrong
    SQL_API_SQLGETINFO,
    SQL_API_SQLGETFUNCTIONS,
    SQL_API_SQLGETDIAGREC,
    SQL_API_SQLGETDIAGFIELD,
    // Statements
    SQL_API_SQLPREPARE,
    SQL_API_SQLEXECUTE,
    SQL_API_SQLEXECDIRECT,
    SQL_API_SQLNATIVESQL,
    SQL_API_SQLNUMPARAMS,
    SQL_API_SQLDESCRIBEPARAM,
    SQL_API_SQLBINDPARAM,
    SQL_API_SQLBINDPARAMETER,
    SQL_API_SQLPARAMDATA,
    SQL_API_SQLPUTDATA,
    SQL_API_SQLCANCEL,
    SQL_API_SQLENDTRAN,
    // Results
    SQL_API_SQLROWCOUNT,
    SQL_API_SQLNUMRESULTCOLS,
    SQL_API_SQLDESCRIBECOL,
    SQL_API_SQLCOLATTRIBUTE,
    SQL_API_SQLBINDCOL,
    SQL_API_SQLFETCH,
    SQL_API_SQLFETCHSCROLL,
    SQL_API_SQLEXTENDEDFETCH,
    SQL_API_SQLGETDATA,
    SQL_API_SQLSETPOS,
    SQL_API_SQLBULKOPERATIONS,
    SQL_API_SQLMORERESULTS,
    SQL_API_SQLCLOSECURSOR,
    SQL_API_SQLGETCURSORNAME,
    SQL_API_SQLSETCURSORNAME,
    // Catalog functions
    SQL_API_SQLTABLES,
    SQL_API_SQLCOLUMNS,
    SQL_API_SQLTABLEPRIVILEGES,
    SQL_API_SQLCOLUMNPRIVILEGES,
    SQL_API_SQLPRIMARYKEYS,
    SQL_API_SQLFOREIGNKEYS,
    SQL_API_SQLSTATISTICS,
    SQL_API_SQLSPECIALCOLUMNS,
    SQL_API_SQLPROCEDURES,
    SQL_API_SQLPROCEDURECOLUMNS,
    SQL_API_SQLGETTYPEINFO,
};

/// The array of SQL_API_ALL_FUNCTIONS has a place for each function of ODBC 2.
constexpr SQLUSMALLINT oldFunctions = 100;

} // namespace

SQLRETURN SQL_API SQLGetFunctions(SQLHDBC, SQLUSMALLINT asked, SQLUSMALLINT* supported)
{
    switch (asked) {
    case SQL_API_ODBC3_ALL_FUNCTIONS:
        std::fill_n(supported, SQL_API_ODBC3_ALL_FUNCTIONS_SIZE, SQLUSMALLINT{0});
        for (const unsigned function : functions)
            supported[function >> 4] = static_cast<SQLUSMALLINT>(supported[function >> 4] | 1u << (function & 15u));
        return SQL_SUCCESS;
    case SQL_API_ALL_FUNCTIONS:
        std::fill_n(supported, oldFunctions, SQLUSMALLINT{SQL_FALSE});
        for (const SQLUSMALLINT function : functions)
            if (function < oldFunctions)
                supported[function] = SQL_TRUE;
        return SQL_SUCCESS;
    default:
        *supported = static_cast<SQLUSMALLINT>(std::count(std::begin(functions), std::end(functions), asked));
        return SQL_SUCCESS;
    }
}
