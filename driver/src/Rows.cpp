#include "Rows.h"

#include "ByRights.h"
#include "Cells.h"
#include "Lower.h"
#include "StatementTable.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace tarnwick::rows
{
namespace
{

struct Binding {
    SQLSMALLINT type;
    SQLPOINTER target;
    SQLLEN capacity;
    SQLLEN* length;
};

/// What a statement has been told about reading its rows.
struct Reader {
    std::map<SQLUSMALLINT, Binding> bindings;
    SQLULEN blockRows = 1;    ///< SQL_ATTR_ROW_ARRAY_SIZE
    SQLULEN extendedRows = 1; ///< SQL_ROWSET_SIZE
    SQLULEN bindType = SQL_BIND_BY_COLUMN;
    SQLULEN* bindOffset = nullptr; ///< SQL_ATTR_ROW_BIND_OFFSET_PTR
    SQLUSMALLINT* status = nullptr;
    SQLULEN* fetched = nullptr;
    bool forwardOnly = false; ///< kept from the library below, which could not go back to a row of its block then

    SQLLEN first = 0;   ///< number of the block's first row; 0 before the first block
    SQLLEN inBlock = 0; ///< rows that the block holds; 0 while rows are read one by one
    bool moved = false; ///< the library below no longer stands on the block's last row
    bool onRow = false; ///< but on the row of the block whose cells are asked for
};

StatementTable<Reader>& Readers()
{
    static StatementTable<Reader> readers;
    return readers;
}

/// Where a fetch is to put what it tells besides the cells.
struct Block {
    SQLULEN rows;
    SQLUSMALLINT* status;
    SQLULEN* fetched;
};

/// The room that a row of a column takes in an array of its own.
SQLULEN StrideOf(SQLSMALLINT type, SQLLEN capacity)
{
    switch (type) {
    case SQL_C_CHAR:
    case SQL_C_WCHAR:
    case SQL_C_BINARY:
        return static_cast<SQLULEN>(capacity);
    default:
        return static_cast<SQLULEN>(cells::SizeOf(type));
    }
}

template <typename Pointer>
Pointer Moved(Pointer pointer, SQLULEN bytes)
{
    return pointer ? reinterpret_cast<Pointer>(reinterpret_cast<char*>(pointer) + bytes) : nullptr;
}

/// The records of cells that could not be delivered, or not whole, told when their block is there.
struct Failures {
    std::vector<diagnostics::Record> errors;
    std::vector<diagnostics::Record> warnings;
};

/// Nobody reads more; and each is copied several times on its way to the client.
constexpr std::size_t mostErrors = 100;
constexpr std::size_t mostWarnings = 20;

/// Those who read one record only read of an error where there is one.
void Tell(SQLHSTMT statement, Failures& failures)
{
    if (failures.errors.empty() && failures.warnings.empty())
        return;
    failures.errors.insert(failures.errors.end(), failures.warnings.begin(), failures.warnings.end());
    diagnostics::Tell(SQL_HANDLE_STMT, statement, std::move(failures.errors));
}

/// Puts the cells of the current row into their places in row `index` of the bound arrays. A cell that cannot be
/// delivered does not keep the others from it.
SQLRETURN DeliverRow(SQLHSTMT statement, const Reader& reader, SQLULEN index, Failures& failures)
{
    const SQLULEN offset = reader.bindOffset ? *reader.bindOffset : 0;
    const bool byColumn = reader.bindType == SQL_BIND_BY_COLUMN;
    SQLRETURN result = SQL_SUCCESS;
    for (const auto& [column, binding] : reader.bindings) {
        const SQLSMALLINT type = binding.type == SQL_C_DEFAULT ? cells::DefaultTypeOf(statement, column) : binding.type;
        const SQLULEN valueStride = byColumn ? StrideOf(type, binding.capacity) : reader.bindType;
        const SQLULEN lengthStride = byColumn ? sizeof(SQLLEN) : reader.bindType;
        const auto target = Moved(static_cast<char*>(binding.target), offset + index * valueStride);
        const auto length = Moved(binding.length, offset + index * lengthStride);
        const SQLRETURN answer = cells::Read(statement, column, type, target, binding.capacity, length);
        if (answer == SQL_SUCCESS)
            continue;
        auto& records = answer == SQL_ERROR ? failures.errors : failures.warnings;
        if (records.size() < (answer == SQL_ERROR ? mostErrors : mostWarnings))
            records.push_back(diagnostics::Last(SQL_HANDLE_STMT, statement, static_cast<SQLLEN>(index) + 1, column));
        if (answer == SQL_ERROR || (answer == SQL_SUCCESS_WITH_INFO && result == SQL_SUCCESS))
            result = answer;
    }
    return result;
}

SQLUSMALLINT StatusOf(SQLRETURN answer)
{
    return answer == SQL_SUCCESS             ? SQL_ROW_SUCCESS
           : answer == SQL_SUCCESS_WITH_INFO ? SQL_ROW_SUCCESS_WITH_INFO
                                             : SQL_ROW_ERROR;
}

SQLLEN RowsOfResult(SQLHSTMT statement)
{
    SQLLEN rows = 0;
    lower.SQLGetDiagField(SQL_HANDLE_STMT, statement, 0, SQL_DIAG_CURSOR_ROW_COUNT, &rows, 0, nullptr);
    return rows;
}

/// The first row of the block that a scroll leads to: 0 before the first row, beyond the last row behind it
/// (SQLFetchScroll, "Positioning the Cursor").
SQLLEN FirstRowOf(const Reader& reader, const Block& block, SQLSMALLINT orientation, SQLLEN offset, SQLLEN last)
{
    const auto size = static_cast<SQLLEN>(block.rows);
    const SQLLEN here = reader.first;
    switch (orientation) {
    case SQL_FETCH_FIRST:
        return 1;
    case SQL_FETCH_LAST:
        return std::max<SQLLEN>(1, last - size + 1);
    case SQL_FETCH_PRIOR:
        if (here > last)
            return std::max<SQLLEN>(1, last - size + 1);
        return here <= 1 ? 0 : std::max<SQLLEN>(1, here - size);
    case SQL_FETCH_ABSOLUTE:
        if (offset < 0)
            return last + offset + 1 >= 1 ? last + offset + 1 : -offset <= size ? 1 : 0;
        return offset;
    case SQL_FETCH_RELATIVE:
        if (here + offset >= 1)
            return here + offset;
        return here > 1 && -offset <= size ? 1 : 0;
    default:
        return here + reader.inBlock;
    }
}

SQLRETURN FetchSingle(SQLHSTMT statement, Reader& reader, const Block& block, SQLSMALLINT orientation, SQLLEN offset)
{
    SQLRETURN answer = orientation == SQL_FETCH_NEXT ? lower.SQLFetch(statement)
                                                     : lower.SQLFetchScroll(statement, orientation, offset);
    const bool found = SQL_SUCCEEDED(answer);
    reader.inBlock = 0;
    Failures failures;
    if (found)
        answer = DeliverRow(statement, reader, 0, failures);
    if (block.fetched)
        *block.fetched = found ? 1 : 0;
    if (block.status)
        block.status[0] = found ? StatusOf(answer) : SQL_ROW_NOROW;
    Tell(statement, failures);
    return answer;
}

/// Steps to the first row of a block.
SQLRETURN StepToBlock(SQLHSTMT statement, Reader& reader, const Block& block, SQLSMALLINT orientation, SQLLEN offset)
{
    const SQLLEN end = reader.first + reader.inBlock;
    const bool moved = std::exchange(reader.moved, false);
    if (orientation == SQL_FETCH_NEXT) {
        reader.first = std::max<SQLLEN>(end, 1);
        return moved ? lower.SQLFetchScroll(statement, SQL_FETCH_ABSOLUTE, reader.first) : lower.SQLFetch(statement);
    }
    const SQLLEN last = RowsOfResult(statement);
    reader.first = std::clamp<SQLLEN>(FirstRowOf(reader, block, orientation, offset, last), 0, last + 1);
    // Behind the last row as in front of the first one the library below has to be sent there, too.
    return lower.SQLFetchScroll(statement, SQL_FETCH_ABSOLUTE, reader.first);
}

SQLRETURN FetchMany(SQLHSTMT statement, Reader& reader, const Block& block, SQLSMALLINT orientation, SQLLEN offset)
{
    SQLRETURN step = StepToBlock(statement, reader, block, orientation, offset);
    reader.inBlock = 0;
    SQLRETURN result = SQL_SUCCESS;
    Failures failures;
    while (SQL_SUCCEEDED(step)) {
        const auto index = static_cast<SQLULEN>(reader.inBlock++);
        const SQLRETURN answer = DeliverRow(statement, reader, index, failures);
        if (block.status)
            block.status[index] = StatusOf(answer);
        if (answer != SQL_SUCCESS)
            result = SQL_SUCCESS_WITH_INFO;
        if (index + 1 == block.rows)
            break;
        step = lower.SQLFetch(statement);
    }
    if (!SQL_SUCCEEDED(step) && step != SQL_NO_DATA)
        return step;
    Tell(statement, failures);
    // A short block leaves the library below behind the last row.
    reader.moved = step == SQL_NO_DATA;
    if (block.status)
        std::fill(block.status + reader.inBlock, block.status + block.rows, static_cast<SQLUSMALLINT>(SQL_ROW_NOROW));
    if (block.fetched)
        *block.fetched = static_cast<SQLULEN>(reader.inBlock);
    return reader.inBlock == 0 ? static_cast<SQLRETURN>(SQL_NO_DATA) : result;
}

SQLRETURN FetchBlock(SQLHSTMT statement, Reader& reader, const Block& block, SQLSMALLINT orientation, SQLLEN offset)
{
    cells::Leave(statement);
    if (reader.forwardOnly && orientation != SQL_FETCH_NEXT)
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "HY106",
                                  "A forward-only cursor goes to the next row only.");
    reader.onRow = false;
    return block.rows > 1 ? FetchMany(statement, reader, block, orientation, offset)
                          : FetchSingle(statement, reader, block, orientation, offset);
}

/// Goes to a row of the block, counted from 1.
SQLRETURN GoToRow(SQLHSTMT statement, Reader& reader, SQLSETPOSIROW row)
{
    reader.moved = true;
    reader.onRow = true;
    return lower.SQLFetchScroll(statement, SQL_FETCH_ABSOLUTE, reader.first + static_cast<SQLLEN>(row) - 1);
}

/// Binds the columns in the library below for the time of an operation that reads them there.
class LentBindings
{
public:
    LentBindings(SQLHSTMT statement, const Reader& reader) : m_statement(statement)
    {
        const auto set = [&](SQLINTEGER attribute, auto value) {
            lower.SQLSetStmtAttr(statement, attribute, reinterpret_cast<SQLPOINTER>(value), 0);
        };
        set(SQL_ATTR_ROW_BIND_TYPE, reader.bindType);
        set(SQL_ATTR_ROW_BIND_OFFSET_PTR, reader.bindOffset);
        set(SQL_ATTR_ROW_STATUS_PTR, reader.status);
        set(SQL_ATTR_ROW_ARRAY_SIZE, reader.blockRows);
        for (const auto& [column, binding] : reader.bindings)
            if (!SQL_SUCCEEDED(lower.SQLBindCol(statement, column, binding.type, binding.target, binding.capacity,
                                                binding.length)))
                m_refused = column;
    }
    ~LentBindings()
    {
        lower.SQLFreeStmt(m_statement, SQL_UNBIND);
        lower.SQLSetStmtAttr(m_statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(SQLULEN{1}), 0);
        lower.SQLSetStmtAttr(m_statement, SQL_ATTR_ROW_STATUS_PTR, nullptr, 0);
        lower.SQLSetStmtAttr(m_statement, SQL_ATTR_ROW_BIND_OFFSET_PTR, nullptr, 0);
    }
    LentBindings(const LentBindings&) = delete;
    LentBindings& operator=(const LentBindings&) = delete;

    /// A column that is bound in a C type of which the library below knows nothing; 0 for none.
    SQLUSMALLINT Refused() const { return m_refused; }

private:
    SQLHSTMT m_statement;
    SQLUSMALLINT m_refused = 0;
};

/// Lets the library below change rows through the bound columns.
template <typename Call>
SQLRETURN ChangeRows(SQLHSTMT statement, const Reader& reader, Call call)
{
    const LentBindings lent(statement, reader);
    if (lent.Refused() > 0)
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "HYC00",
                                  "Column " + std::to_string(lent.Refused()) +
                                      ": rows cannot be changed through the C type in which it is bound.");
    return RunByRights(statement, call);
}

} // namespace

SQLRETURN GetCell(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
                  SQLLEN* length)
{
    Reader* const reader = Readers().Find(statement);
    if (reader && reader->inBlock > 0 && !reader->onRow) {
        const SQLRETURN answer = GoToRow(statement, *reader, 1);
        if (!SQL_SUCCEEDED(answer))
            return answer;
    }
    const bool readBefore = reader && reader->inBlock == 0 && !reader->bindings.empty();
    return cells::Get(statement, column, type, target, capacity, length,
                      readBefore ? reader->bindings.rbegin()->first : 0);
}

SQLRETURN BindColumn(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
                     SQLLEN* length)
{
    Reader& reader = Readers().Ensure(statement);
    if (target || length)
        reader.bindings[column] = {type, target, capacity, length};
    else
        reader.bindings.erase(column);
    return SQL_SUCCESS;
}

SQLRETURN Fetch(SQLHSTMT statement, SQLSMALLINT orientation, SQLLEN offset)
{
    if (Reader* reader = Readers().Find(statement))
        return FetchBlock(statement, *reader, {reader->blockRows, reader->status, reader->fetched}, orientation,
                          offset);
    cells::Leave(statement);
    return orientation == SQL_FETCH_NEXT ? lower.SQLFetch(statement)
                                         : lower.SQLFetchScroll(statement, orientation, offset);
}

SQLRETURN ExtendedFetch(SQLHSTMT statement, SQLUSMALLINT orientation, SQLLEN offset, SQLULEN* fetched,
                        SQLUSMALLINT* status)
{
    Reader& reader = Readers().Ensure(statement);
    return FetchBlock(statement, reader, {reader.extendedRows, status, fetched}, static_cast<SQLSMALLINT>(orientation),
                      offset);
}

SQLRETURN SetPosition(SQLHSTMT statement, SQLSETPOSIROW row, SQLUSMALLINT operation, SQLUSMALLINT lock)
{
    Reader* const reader = Readers().Find(statement);
    const bool inBlock = reader && reader->inBlock > 0;
    cells::Leave(statement);
    if (operation == SQL_POSITION) {
        const SQLSETPOSIROW rows = inBlock ? static_cast<SQLSETPOSIROW>(reader->inBlock) : 1;
        if (row < 1 || row > rows)
            return diagnostics::Raise(SQL_HANDLE_STMT, statement, "HY107", "The row is not in the block.");
        if (!inBlock)
            return lower.SQLFetchScroll(statement, SQL_FETCH_RELATIVE, 0);
        return GoToRow(statement, *reader, row);
    }
    if (!reader)
        return RunByRights(statement, [&] { return lower.SQLSetPos(statement, row, operation, lock); });
    if (inBlock)
        GoToRow(statement, *reader, 1);
    return ChangeRows(statement, *reader, [&] { return lower.SQLSetPos(statement, row, operation, lock); });
}

SQLRETURN BulkOperation(SQLHSTMT statement, SQLSMALLINT operation)
{
    const Reader* reader = Readers().Find(statement);
    if (!reader)
        return RunByRights(statement, [&] { return lower.SQLBulkOperations(statement, operation); });
    return ChangeRows(statement, *reader, [&] { return lower.SQLBulkOperations(statement, operation); });
}

SQLRETURN SetAttribute(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER length)
{
    const auto number = reinterpret_cast<SQLULEN>(value);
    switch (attribute) {
    case SQL_ATTR_ROW_ARRAY_SIZE:
    case SQL_ROWSET_SIZE:
        if (number < 1)
            return diagnostics::Raise(SQL_HANDLE_STMT, statement, "HY024", "A block holds at least one row.");
        (attribute == SQL_ROWSET_SIZE ? Readers().Ensure(statement).extendedRows
                                      : Readers().Ensure(statement).blockRows) = number;
        return SQL_SUCCESS;
    case SQL_ATTR_CURSOR_TYPE:
        Readers().Ensure(statement).forwardOnly = number == SQL_CURSOR_FORWARD_ONLY;
        return number == SQL_CURSOR_FORWARD_ONLY ? SQLRETURN{SQL_SUCCESS}
                                                 : lower.SQLSetStmtAttr(statement, attribute, value, length);
    case SQL_ATTR_CURSOR_SCROLLABLE:
        Readers().Ensure(statement).forwardOnly = number == SQL_NONSCROLLABLE;
        return SQL_SUCCESS;
    case SQL_ATTR_ROW_BIND_TYPE:
        Readers().Ensure(statement).bindType = number;
        return SQL_SUCCESS;
    case SQL_ATTR_ROW_BIND_OFFSET_PTR:
        Readers().Ensure(statement).bindOffset = static_cast<SQLULEN*>(value);
        return SQL_SUCCESS;
    case SQL_ATTR_ROW_STATUS_PTR:
        Readers().Ensure(statement).status = static_cast<SQLUSMALLINT*>(value);
        return SQL_SUCCESS;
    case SQL_ATTR_ROWS_FETCHED_PTR:
        Readers().Ensure(statement).fetched = static_cast<SQLULEN*>(value);
        return SQL_SUCCESS;
    default:
        return lower.SQLSetStmtAttr(statement, attribute, value, length);
    }
}

SQLRETURN GetAttribute(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER capacity,
                       SQLINTEGER* length)
{
    const Reader* reader = Readers().Find(statement);
    if (reader && value) {
        switch (attribute) {
        case SQL_ATTR_ROW_ARRAY_SIZE:
            *static_cast<SQLULEN*>(value) = reader->blockRows;
            return SQL_SUCCESS;
        case SQL_ROWSET_SIZE:
            *static_cast<SQLULEN*>(value) = reader->extendedRows;
            return SQL_SUCCESS;
        case SQL_ATTR_CURSOR_SCROLLABLE:
            *static_cast<SQLULEN*>(value) = reader->forwardOnly ? SQL_NONSCROLLABLE : SQL_SCROLLABLE;
            return SQL_SUCCESS;
        case SQL_ATTR_CURSOR_TYPE:
            if (!reader->forwardOnly)
                break;
            *static_cast<SQLULEN*>(value) = SQL_CURSOR_FORWARD_ONLY;
            return SQL_SUCCESS;
        case SQL_ATTR_ROW_BIND_TYPE:
            *static_cast<SQLULEN*>(value) = reader->bindType;
            return SQL_SUCCESS;
        case SQL_ATTR_ROW_BIND_OFFSET_PTR:
            *static_cast<SQLULEN**>(value) = reader->bindOffset;
            return SQL_SUCCESS;
        case SQL_ATTR_ROW_STATUS_PTR:
            *static_cast<SQLUSMALLINT**>(value) = reader->status;
            return SQL_SUCCESS;
        case SQL_ATTR_ROWS_FETCHED_PTR:
            *static_cast<SQLULEN**>(value) = reader->fetched;
            return SQL_SUCCESS;
        default:
            break;
        }
    }
    return lower.SQLGetStmtAttr(statement, attribute, value, capacity, length);
}

void Close(SQLHSTMT statement)
{
    cells::Close(statement);
    if (Reader* reader = Readers().Find(statement)) {
        reader->first = 0;
        reader->inBlock = 0;
        reader->moved = false;
    }
}

void Unbind(SQLHSTMT statement)
{
    if (Reader* reader = Readers().Find(statement))
        reader->bindings.clear();
}

void Forget(SQLHSTMT statement)
{
    cells::Forget(statement);
    Readers().Erase(statement);
}

} // namespace tarnwick::rows
