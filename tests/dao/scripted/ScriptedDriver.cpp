/// An ODBC driver whose "statements" say what it shall answer, so that a test can have any answer of a driver through
/// the real driver manager: several diagnostic records, a lost connection, cursors that end at a commit, cells of any
/// type.
///
/// Connect string: `Reply=` `fail` (two records), `cancel` or `warn`; `Activities=` the number of active statements
/// that it allows; `GetData=` the number that it reports for SQL_GETDATA_EXTENSIONS; `Preserve=1` for cursors that
/// survive a commit; `Static=1` for static cursors, whose rows are those of the execution; `Narrow=1` to answer native
/// statements like a driver without wide entry points.
///
/// A statement is lines of words. The first word says what it is:
///   FAIL, WARN       each further line "state|native|message" is a diagnostic record
///   NOTHING          no row matched
///   COUNTED          one row was changed
///   BATCH            a count, and then a second result that fails
///   BUMP             adds one to the connection's counter and commits, which closes cursors that do not survive it
///   LOSE             fails, as everything does from then on: the connection is lost
///   RESULT           further lines: "COLUMN name type size", "ROW cell|cell", "COUNTER n" for n rows with the counter,
///                    "BREAK" for one fetch that fails, "BAD" for a row with an error of its own
/// In a cell, \uXXXX is a UTF-16 unit, <null> a null, <long n> n units of text, <late text> a text of which the first
/// attempt to get it fails.

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{

struct Record {
    std::string state;
    SQLINTEGER native = 0;
    std::u16string message;
};

struct Object {
    virtual ~Object() = default;
    std::vector<Record> records;
};

struct Environment : Object {
};

struct Statement;

struct Connection : Object {
    std::map<std::string, std::string> attributes;
    std::set<Statement*> statements;
    bool lost = false;
    int counter = 0;

    int number(const std::string& key, int otherwise) const
    {
        const auto found = attributes.find(key);
        return found == attributes.end() ? otherwise : std::stoi(found->second);
    }
};

struct Cell {
    bool null = false;
    bool counter = false;
    bool failsOnce = false;
    std::u16string text;
};

struct Row {
    bool breaks = false;
    bool bad = false;
    std::vector<Cell> cells;
};

struct Column {
    std::u16string name;
    SQLSMALLINT type = SQL_VARCHAR;
    SQLULEN size = 0;
};

struct Binding {
    SQLPOINTER target = nullptr;
    SQLLEN room = 0;
    SQLLEN* length = nullptr;
};

struct Statement : Object {
    explicit Statement(Connection& connection) : connection(connection) { connection.statements.insert(this); }
    ~Statement() override { connection.statements.erase(this); }

    Connection& connection;
    std::vector<Column> columns;
    std::vector<Row> rows;
    bool open = false;
    bool failsNext = false;
    std::size_t next = 0;
    std::size_t block = 0;
    std::size_t current = 0;
    std::map<std::pair<std::size_t, SQLUSMALLINT>, std::size_t> got;
    std::map<SQLUSMALLINT, Binding> bindings;
    SQLULEN arraySize = 1;
    SQLULEN bindType = SQL_BIND_BY_COLUMN;
    SQLULEN cursorType = SQL_CURSOR_FORWARD_ONLY;
    SQLULEN* fetched = nullptr;
    SQLUSMALLINT* status = nullptr;
};

std::string narrowed(const SQLWCHAR* text, SQLINTEGER length)
{
    std::string result;
    for (SQLINTEGER at = 0; length == SQL_NTS ? text[at] != 0 : at < length; ++at)
        result += static_cast<char>(text[at] < 0x80 ? text[at] : '?');
    return result;
}

std::u16string widened(const std::string& text)
{
    std::u16string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.compare(at, 2, "\\u") == 0 && at + 6 <= text.size()) {
            result += static_cast<char16_t>(std::stoul(text.substr(at + 2, 4), nullptr, 16));
            at += 5;
        } else {
            result += static_cast<unsigned char>(text[at]);
        }
    }
    return result;
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

Record record(const std::string& line)
{
    const std::vector<std::string> parts = split(line, '|');
    Record result{parts.at(0), std::stoi(parts.at(1)), widened(parts.size() > 2 ? parts.at(2) : "")};
    if (result.message == u"<long>")
        result.message = std::u16string(3000, u'm') + u"end";
    return result;
}

SQLRETURN refuse(Object* object, std::vector<Record> records)
{
    object->records = std::move(records);
    return SQL_ERROR;
}

SQLRETURN lost(Object* object)
{
    return refuse(object,
                  {record("08S01|5001|[Scripted]The server went away"), record("HY000|5002|[Scripted]Broken pipe")});
}

Cell cell(const std::string& text)
{
    Cell result;
    if (text == "<null>")
        result.null = true;
    else if (text.rfind("<long ", 0) == 0)
        for (std::size_t length = std::stoul(text.substr(6)), at = 0; at < length; ++at)
            result.text += static_cast<char16_t>(u'a' + at % 26);
    else if (text.rfind("<late ", 0) == 0) {
        result.failsOnce = true;
        result.text = widened(text.substr(6, text.size() - 7));
    } else
        result.text = widened(text);
    return result;
}

std::u16string counterText(const Connection& connection)
{
    return widened(std::to_string(connection.counter));
}

void readResult(Statement& statement, const std::vector<std::string>& lines)
{
    for (const std::string& line : lines) {
        const std::string word = line.substr(0, line.find(' '));
        const std::string rest = line.size() > word.size() ? line.substr(word.size() + 1) : "";
        Row row;
        if (word == "COLUMN") {
            const std::vector<std::string> parts = split(rest, ' ');
            statement.columns.push_back({widened(parts.at(0)), static_cast<SQLSMALLINT>(std::stoi(parts.at(1))),
                                         static_cast<SQLULEN>(std::stoul(parts.at(2)))});
        } else if (word == "COUNTER") {
            Cell counter;
            counter.counter = statement.cursorType != SQL_CURSOR_STATIC;
            counter.text = counterText(statement.connection);
            row.cells.push_back(counter);
            statement.rows.insert(statement.rows.end(), std::stoul(rest), row);
        } else {
            row.breaks = word == "BREAK";
            row.bad = word == "BAD";
            for (const std::string& text : split(rest, '|'))
                row.cells.push_back(cell(text));
            statement.rows.push_back(row);
        }
    }
    statement.open = true;
}

void commit(Connection& connection)
{
    if (connection.number("Preserve", 0) == 1)
        return;
    for (Statement* statement : connection.statements)
        statement->open = false;
}

SQLRETURN execute(Statement& statement, const std::string& text)
{
    statement.records.clear();
    statement.columns.clear();
    statement.rows.clear();
    statement.got.clear();
    statement.open = statement.failsNext = false;
    statement.next = 0;
    Connection& connection = statement.connection;

    std::vector<std::string> lines = split(text, '\n');
    const std::string kind = lines.empty() ? "" : lines.front();
    if (!lines.empty())
        lines.erase(lines.begin());
    if (connection.lost || kind == "LOSE") {
        connection.lost = true;
        return lost(&statement);
    }
    const int activities = connection.number("Activities", 0);
    const auto active = std::count_if(connection.statements.begin(), connection.statements.end(),
                                      [](const Statement* other) { return other->open; });
    if (activities > 0 && active >= activities)
        return refuse(&statement, {record("HY000|77|[Scripted]The connection is busy with another statement")});

    if (kind == "FAIL" || kind == "WARN") {
        std::vector<Record> records;
        for (const std::string& line : lines)
            records.push_back(record(line));
        statement.records = records;
        return kind == "FAIL" ? SQL_ERROR : SQL_SUCCESS_WITH_INFO;
    }
    if (kind == "NOTHING")
        return SQL_NO_DATA;
    if (kind == "BUMP") {
        ++connection.counter;
        commit(connection);
    } else if (kind == "BATCH") {
        statement.failsNext = true;
    } else if (kind == "RESULT") {
        readResult(statement, lines);
    } else if (kind != "COUNTED") {
        return refuse(&statement, {record("42000|1|[Scripted]Syntax error")});
    }
    return SQL_SUCCESS;
}

/// Puts a text into a buffer; true when it had to be cut.
bool put(const std::u16string& text, SQLPOINTER target, SQLLEN room, SQLLEN* length)
{
    if (length)
        *length = static_cast<SQLLEN>(text.size() * sizeof(char16_t));
    const std::size_t fits = room < 2 ? 0 : static_cast<std::size_t>(room) / sizeof(char16_t) - 1;
    const std::size_t copied = std::min(fits, text.size());
    if (target && room >= 2) {
        std::memcpy(target, text.data(), copied * sizeof(char16_t));
        const char16_t end = 0;
        std::memcpy(static_cast<char*>(target) + copied * sizeof(char16_t), &end, sizeof end);
    }
    return copied < text.size();
}

SQLRETURN putShort(const std::u16string& text, SQLWCHAR* target, SQLSMALLINT units, SQLSMALLINT* length)
{
    SQLLEN bytes = 0;
    const bool cut = put(text, target, static_cast<SQLLEN>(units) * 2, &bytes);
    if (length)
        *length = static_cast<SQLSMALLINT>(bytes / 2);
    return cut ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

std::u16string shown(const Statement& statement, const Cell& cell)
{
    return cell.counter ? counterText(statement.connection) : cell.text;
}

bool fillRow(Statement& statement, std::size_t offset, const Row& row)
{
    bool cut = false;
    for (const auto& [number, binding] : statement.bindings) {
        const Cell& cell = row.cells.at(number - 1U);
        const std::size_t textStep =
            statement.bindType == SQL_BIND_BY_COLUMN ? static_cast<std::size_t>(binding.room) : statement.bindType;
        const std::size_t lengthStep = statement.bindType == SQL_BIND_BY_COLUMN ? sizeof(SQLLEN) : statement.bindType;
        auto* length = reinterpret_cast<SQLLEN*>(reinterpret_cast<char*>(binding.length) + offset * lengthStep);
        if (cell.null)
            *length = SQL_NULL_DATA;
        else
            cut = put(shown(statement, cell), static_cast<char*>(binding.target) + offset * textStep, binding.room,
                      length) ||
                  cut;
    }
    return cut;
}

template <class T>
T& as(SQLHANDLE handle)
{
    return *static_cast<T*>(static_cast<Object*>(handle));
}

} // namespace

extern "C" {

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* handle)
{
    Object* object = nullptr;
    if (type == SQL_HANDLE_ENV)
        object = new Environment;
    else if (type == SQL_HANDLE_DBC)
        object = new Connection;
    else if (type == SQL_HANDLE_STMT)
        object = new Statement(as<Connection>(parent));
    else
        return SQL_ERROR;
    *handle = object;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle)
{
    const std::unique_ptr<Object> object(static_cast<Object*>(handle));
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER)
{
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER, SQLINTEGER)
{
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT length, SQLWCHAR*, SQLSMALLINT,
                                    SQLSMALLINT*, SQLUSMALLINT)
{
    Connection& connection = as<Connection>(handle);
    for (const std::string& part : split(narrowed(text, length), ';')) {
        const std::size_t equals = part.find('=');
        if (equals != std::string::npos)
            connection.attributes[part.substr(0, equals)] = part.substr(equals + 1);
    }
    const std::string reply = connection.attributes["Reply"];
    if (reply == "cancel")
        return SQL_NO_DATA;
    if (reply == "fail")
        return refuse(&connection,
                      {record("28000|18456|[Scripted]Login failed"), record("08001|17|[Scripted]No such server")});
    if (reply == "warn") {
        connection.records = {record("01000|5701|[Scripted]Changed database context")};
        return SQL_SUCCESS_WITH_INFO;
    }
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDisconnect(SQLHDBC)
{
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLEndTran(SQLSMALLINT, SQLHANDLE, SQLSMALLINT)
{
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetFunctions(SQLHDBC, SQLUSMALLINT function, SQLUSMALLINT* supported)
{
    const std::set<SQLUSMALLINT> known{
        SQL_API_SQLALLOCHANDLE, SQL_API_SQLFREEHANDLE,    SQL_API_SQLDRIVERCONNECT, SQL_API_SQLDISCONNECT,
        SQL_API_SQLEXECDIRECT,  SQL_API_SQLNUMRESULTCOLS, SQL_API_SQLDESCRIBECOL,   SQL_API_SQLBINDCOL,
        SQL_API_SQLFETCH,       SQL_API_SQLGETDATA,       SQL_API_SQLSETPOS,        SQL_API_SQLFREESTMT,
        SQL_API_SQLMORERESULTS, SQL_API_SQLGETDIAGREC,    SQL_API_SQLGETINFO,       SQL_API_SQLSETSTMTATTR,
        SQL_API_SQLGETSTMTATTR, SQL_API_SQLNATIVESQL,     SQL_API_SQLCANCEL,        SQL_API_SQLGETFUNCTIONS,
        SQL_API_SQLENDTRAN,     SQL_API_SQLSETCONNECTATTR};
    if (function == SQL_API_ODBC3_ALL_FUNCTIONS) {
        std::fill_n(supported, SQL_API_ODBC3_ALL_FUNCTIONS_SIZE, SQLUSMALLINT{0});
        for (const SQLUSMALLINT one : known)
            supported[one >> 4] = static_cast<SQLUSMALLINT>(supported[one >> 4] | (1 << (one & 0xF)));
    } else if (function == SQL_API_ALL_FUNCTIONS) {
        for (SQLUSMALLINT one = 0; one < 100; ++one)
            supported[one] = known.count(one) ? SQL_TRUE : SQL_FALSE;
    } else {
        *supported = known.count(function) ? SQL_TRUE : SQL_FALSE;
    }
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetInfoW(SQLHDBC handle, SQLUSMALLINT what, SQLPOINTER value, SQLSMALLINT room,
                              SQLSMALLINT* length)
{
    const Connection& connection = as<Connection>(handle);
    const auto small = [&](int number) {
        *static_cast<SQLUSMALLINT*>(value) = static_cast<SQLUSMALLINT>(number);
        return SQL_SUCCESS;
    };
    switch (what) {
    case SQL_MAX_CONCURRENT_ACTIVITIES:
        return small(connection.number("Activities", 0));
    case SQL_CURSOR_COMMIT_BEHAVIOR:
    case SQL_CURSOR_ROLLBACK_BEHAVIOR:
        return small(connection.number("Preserve", 0) == 1 ? SQL_CB_PRESERVE : SQL_CB_CLOSE);
    case SQL_GETDATA_EXTENSIONS:
        *static_cast<SQLUINTEGER*>(value) = static_cast<SQLUINTEGER>(connection.number("GetData", 0));
        return SQL_SUCCESS;
    case SQL_DRIVER_ODBC_VER:
        return putShort(u"03.52", static_cast<SQLWCHAR*>(value), static_cast<SQLSMALLINT>(room / 2), length);
    default:
        return SQL_ERROR;
    }
}

SQLRETURN SQL_API SQLNativeSqlW(SQLHDBC handle, SQLWCHAR* text, SQLINTEGER length, SQLWCHAR* answer, SQLINTEGER room,
                                SQLINTEGER* answered)
{
    std::u16string echo(reinterpret_cast<char16_t*>(text), static_cast<std::size_t>(length));
    if (as<Connection>(handle).number("Narrow", 0) == 1)
        echo = u"'?'";
    SQLLEN bytes = 0;
    put(echo, answer, static_cast<SQLLEN>(room) * 2, &bytes);
    if (answered)
        *answered = static_cast<SQLINTEGER>(bytes / 2);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT number, SQLWCHAR* state, SQLINTEGER* native,
                                 SQLWCHAR* text, SQLSMALLINT room, SQLSMALLINT* length)
{
    const Object& object = as<Object>(handle);
    if (number < 1 || static_cast<std::size_t>(number) > object.records.size())
        return SQL_NO_DATA;
    const Record& record = object.records[static_cast<std::size_t>(number) - 1];
    if (state)
        put(widened(record.state), state, 12, nullptr);
    if (native)
        *native = record.native;
    return putShort(record.message, text, room, length);
}

SQLRETURN SQL_API SQLGetDiagFieldW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT, SQLSMALLINT field, SQLPOINTER value,
                                   SQLSMALLINT, SQLSMALLINT*)
{
    if (field != SQL_DIAG_NUMBER)
        return SQL_NO_DATA;
    *static_cast<SQLINTEGER*>(value) = static_cast<SQLINTEGER>(as<Object>(handle).records.size());
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER)
{
    Statement& statement = as<Statement>(handle);
    const auto number = reinterpret_cast<SQLULEN>(value);
    switch (attribute) {
    case SQL_ATTR_CURSOR_TYPE:
        if (number == SQL_CURSOR_STATIC && statement.connection.number("Static", 0) != 1) {
            statement.records = {record("01S02|0|[Scripted]Option value changed")};
            return SQL_SUCCESS_WITH_INFO;
        }
        statement.cursorType = number;
        return SQL_SUCCESS;
    case SQL_ATTR_ROW_ARRAY_SIZE:
        statement.arraySize = number;
        return SQL_SUCCESS;
    case SQL_ATTR_ROW_BIND_TYPE:
        statement.bindType = number;
        return SQL_SUCCESS;
    case SQL_ATTR_ROWS_FETCHED_PTR:
        statement.fetched = static_cast<SQLULEN*>(value);
        return SQL_SUCCESS;
    case SQL_ATTR_ROW_STATUS_PTR:
        statement.status = static_cast<SQLUSMALLINT*>(value);
        return SQL_SUCCESS;
    default:
        return SQL_SUCCESS;
    }
}

SQLRETURN SQL_API SQLGetStmtAttrW(SQLHSTMT handle, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER, SQLINTEGER*)
{
    *static_cast<SQLULEN*>(value) = attribute == SQL_ATTR_CURSOR_TYPE ? as<Statement>(handle).cursorType : 0;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length)
{
    return execute(as<Statement>(handle), narrowed(text, length));
}

SQLRETURN SQL_API SQLMoreResults(SQLHSTMT handle)
{
    Statement& statement = as<Statement>(handle);
    statement.records.clear();
    statement.open = false;
    if (!statement.failsNext)
        return SQL_NO_DATA;
    statement.failsNext = false;
    return refuse(&statement, {record("23000|2627|[Scripted]The second statement failed")});
}

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* count)
{
    *count = static_cast<SQLSMALLINT>(as<Statement>(handle).columns.size());
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDescribeColW(SQLHSTMT handle, SQLUSMALLINT number, SQLWCHAR* name, SQLSMALLINT room,
                                  SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                                  SQLSMALLINT* nullable)
{
    const Column& column = as<Statement>(handle).columns.at(number - 1U);
    *type = column.type;
    *size = column.size;
    *digits = 0;
    *nullable = SQL_NULLABLE;
    return putShort(column.name, name, room, length);
}

SQLRETURN SQL_API SQLBindCol(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER target, SQLLEN room,
                             SQLLEN* length)
{
    Statement& statement = as<Statement>(handle);
    if (type != SQL_C_WCHAR)
        return refuse(&statement, {record("HYC00|0|[Scripted]Only wide characters")});
    statement.bindings[number] = {target, room, length};
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT handle)
{
    Statement& statement = as<Statement>(handle);
    statement.records.clear();
    if (statement.connection.lost)
        return lost(&statement);
    if (!statement.open)
        return refuse(&statement, {record("24000|0|[Scripted]The cursor was closed")});
    statement.block = statement.current = statement.next;
    statement.got.clear();
    SQLULEN filled = 0;
    SQLRETURN result = SQL_SUCCESS;
    for (; filled < statement.arraySize && statement.next < statement.rows.size(); ++filled, ++statement.next) {
        Row& row = statement.rows[statement.next];
        if (row.breaks) {
            if (filled > 0)
                break;
            statement.rows.erase(statement.rows.begin() + static_cast<std::ptrdiff_t>(statement.next));
            return refuse(&statement, {record("40001|1205|[Scripted]Deadlock")});
        }
        if (row.bad) {
            statement.records.insert(statement.records.begin(),
                                     record("22018|245|[Scripted]The row can't be converted"));
            result = SQL_SUCCESS_WITH_INFO;
        } else if (fillRow(statement, filled, row)) {
            statement.records.push_back(record("01004|0|[Scripted]Right truncated"));
            result = SQL_SUCCESS_WITH_INFO;
        }
        if (statement.status)
            statement.status[filled] = row.bad ? SQL_ROW_ERROR : SQL_ROW_SUCCESS;
    }
    if (statement.fetched)
        *statement.fetched = filled;
    return filled == 0 ? SQL_NO_DATA : result;
}

SQLRETURN SQL_API SQLSetPos(SQLHSTMT handle, SQLSETPOSIROW row, SQLUSMALLINT, SQLUSMALLINT)
{
    Statement& statement = as<Statement>(handle);
    statement.current = statement.block + row - 1;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT, SQLPOINTER target, SQLLEN room,
                             SQLLEN* length)
{
    Statement& statement = as<Statement>(handle);
    statement.records.clear();
    Cell& cell = statement.rows.at(statement.current).cells.at(number - 1U);
    if (cell.failsOnce) {
        cell.failsOnce = false;
        return refuse(&statement, {record("HY000|9|[Scripted]The page is locked")});
    }
    if (cell.null) {
        *length = SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    const std::u16string text = shown(statement, cell);
    const auto place = std::make_pair(statement.current, number);
    const bool again = statement.got.count(place) > 0;
    std::size_t& start = statement.got[place];
    if (again && start >= text.size())
        return SQL_NO_DATA;
    const bool cut = put(text.substr(start), target, room, length);
    start += cut ? static_cast<std::size_t>(room) / 2 - 1 : text.size() - start;
    if (!cut)
        return SQL_SUCCESS;
    if (statement.connection.number("NoTotal", 0) == 1)
        *length = SQL_NO_TOTAL;
    statement.records = {record("01004|0|[Scripted]Right truncated")};
    return SQL_SUCCESS_WITH_INFO;
}

SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT handle, SQLUSMALLINT option)
{
    Statement& statement = as<Statement>(handle);
    if (option == SQL_UNBIND)
        statement.bindings.clear();
    else if (option == SQL_CLOSE)
        statement.open = false;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLCancel(SQLHSTMT)
{
    return SQL_SUCCESS;
}

} // extern "C"
