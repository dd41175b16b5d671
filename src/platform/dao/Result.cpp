#include "Result.h"

#include "ColumnTypes.h"
#include "Connection.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace dao
{

namespace
{

constexpr SQLLEN unit = sizeof(char16_t);

/// A buffer that takes any number or date and all but long texts of a column. Bytes come as two digits each.
SQLLEN textBytesFor(const Field& field)
{
    const bool binary = field.Type == dbBinary || field.Type == dbVarBinary || field.Type == dbLongBinary;
    const SQLLEN characters = std::min<SQLLEN>(field.Size, 256) * (binary ? 2 : 1);
    return std::clamp<SQLLEN>(characters + 4, 40, 256) * unit;
}

bool setAttribute(SQLHSTMT statement, SQLINTEGER attribute, std::size_t value)
{
    return SQL_SUCCEEDED(SQLSetStmtAttr(statement, attribute, reinterpret_cast<SQLPOINTER>(value), 0));
}

bool setAttribute(SQLHSTMT statement, SQLINTEGER attribute, void* value)
{
    return SQL_SUCCEEDED(SQLSetStmtAttr(statement, attribute, value, 0));
}

} // namespace

Result::Result(std::shared_ptr<Connection> connection, odbc::StatementHandle statement, int columns)
    : m_connection(std::move(connection)), m_statement(std::move(statement)), m_rows(static_cast<std::size_t>(columns))
{
    for (int number = 1; number <= columns; ++number)
        describe(static_cast<SQLUSMALLINT>(number));
    if (m_connection->bindsColumns()) {
        planBuffer();
        bind();
    }
    m_connection->enlist(this);
}

Result::~Result()
{
    end();
    m_connection->forget(this);
}

void Result::describe(SQLUSMALLINT number)
{
    const bool wide = m_connection->encoding() == odbc::Encoding::Wide;
    std::vector<SQLWCHAR> name(wide ? 256 : 0);
    std::vector<SQLCHAR> narrowName(wide ? 0 : 1024);
    SQLSMALLINT length = 0, type = SQL_VARCHAR, digits = 0, nullable = 0;
    SQLULEN size = 0;
    const auto ask = [&](auto function, auto& buffer) {
        SQLRETURN result = SQL_SUCCESS;
        do {
            if (static_cast<std::size_t>(length) >= buffer.size())
                buffer.resize(static_cast<std::size_t>(length) + 1);
            result = function(m_statement.get(), number, buffer.data(), static_cast<SQLSMALLINT>(buffer.size()),
                              &length, &type, &size, &digits, &nullable);
        } while (SQL_SUCCEEDED(result) && static_cast<std::size_t>(length) >= buffer.size() &&
                 length < std::numeric_limits<SQLSMALLINT>::max());
        return result;
    };
    const SQLRETURN result = wide ? ask(SQLDescribeColW, name) : ask(SQLDescribeCol, narrowName);
    if (!SQL_SUCCEEDED(result))
        odbc::fail(odbc::diagnostics(SQL_HANDLE_STMT, m_statement.get(), m_connection->encoding()));

    Field field;
    field.Name = wide ? odbc::fromWide(name.data(), length) : odbc::fromNarrow(narrowName.data(), length);
    field.Type = dataTypeOf(type);
    field.Size = static_cast<long>(size);
    m_fields.push_back(std::move(field));
}

void Result::planBuffer()
{
    std::size_t offset = m_fields.size() * sizeof(SQLLEN);
    for (std::size_t index = 0; index < m_fields.size(); ++index) {
        Column column;
        column.lengthOffset = index * sizeof(SQLLEN);
        column.textOffset = offset;
        column.textBytes = textBytesFor(m_fields[index]);
        offset += static_cast<std::size_t>(column.textBytes);
        m_columns.push_back(column);
    }
    m_rowBytes = (offset + sizeof(SQLLEN) - 1) / sizeof(SQLLEN) * sizeof(SQLLEN);
    constexpr std::size_t blockBytes = 64 * 1024;
    m_blockRows = std::clamp<std::size_t>(blockBytes / m_rowBytes, 1, m_connection->blockLimit());
    m_status.resize(m_blockRows);
    m_buffer.resize(m_rowBytes * m_blockRows);
}

void Result::bind()
{
    SQLHSTMT statement = m_statement.get();
    bool bound = m_blockRows == 1 || (setAttribute(statement, SQL_ATTR_ROW_BIND_TYPE, m_rowBytes) &&
                                      setAttribute(statement, SQL_ATTR_ROW_ARRAY_SIZE, m_blockRows) &&
                                      setAttribute(statement, SQL_ATTR_ROW_STATUS_PTR, m_status.data()) &&
                                      setAttribute(statement, SQL_ATTR_ROWS_FETCHED_PTR, &m_fetched));
    SQLUSMALLINT number = 0;
    for (const Column& column : m_columns) {
        bound = bound && SQL_SUCCEEDED(SQLBindCol(statement, ++number, SQL_C_WCHAR, m_buffer.data() + column.textOffset,
                                                  column.textBytes,
                                                  reinterpret_cast<SQLLEN*>(m_buffer.data() + column.lengthOffset)));
    }
    if (!bound) {
        std::vector<Error> records = odbc::diagnostics(SQL_HANDLE_STMT, statement, m_connection->encoding());
        unbind();
        odbc::fail(std::move(records));
    }
}

void Result::unbind()
{
    if (m_blockRows == 1)
        return;
    SQLHSTMT statement = m_statement.get();
    setAttribute(statement, SQL_ATTR_ROW_BIND_TYPE, std::size_t{SQL_BIND_BY_COLUMN});
    setAttribute(statement, SQL_ATTR_ROW_ARRAY_SIZE, std::size_t{1});
    setAttribute(statement, SQL_ATTR_ROW_STATUS_PTR, nullptr);
    setAttribute(statement, SQL_ATTR_ROWS_FETCHED_PTR, nullptr);
}

void Result::read(std::size_t count)
{
    const std::size_t before = m_rows.rows();
    if (!m_failure)
        readRows(count);
    if (m_failure && m_rows.rows() == before) {
        std::vector<Error> records = std::move(*m_failure);
        m_failure.reset();
        odbc::fail(std::move(records));
    }
}

void Result::complete()
{
    if (!m_failure)
        readRows(std::numeric_limits<std::size_t>::max());
}

void Result::end()
{
    m_ended = true;
    finish();
}

void Result::finish()
{
    if (!m_statement)
        return;
    unbind();
    m_connection->giveBack(std::move(m_statement));
}

void Result::readRows(std::size_t count)
{
    for (; count > 0 && m_statement && !m_failure; --count) {
        if (m_blockRow >= m_fetched)
            fetchBlock();
        if (m_statement && !m_failure)
            readRow();
    }
}

void Result::fetchBlock()
{
    m_fetched = 0;
    m_blockRow = 0;
    const SQLRETURN result = SQLFetch(m_statement.get());
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) {
        m_fetched = 0;
        return keepFailure();
    }
    if (m_blockRows == 1)
        m_fetched = result == SQL_NO_DATA ? 0 : 1;
    if (result == SQL_NO_DATA || m_fetched == 0) {
        m_fetched = 0;
        return finish();
    }
    if (result == SQL_SUCCESS_WITH_INFO && m_blockRows > 1)
        // Texts that were cut for their rows of the buffer are no part of another row's failure.
        m_blockRecords =
            odbc::diagnostics(SQL_HANDLE_STMT, m_statement.get(), m_connection->encoding(), odbc::Warnings::LeftOut);
}

void Result::readRow()
{
    if (m_blockRows > 1 && m_status[m_blockRow] == SQL_ROW_ERROR) {
        m_failure = m_blockRecords;
        return;
    }
    if (!m_rowBegun) {
        m_rows.beginRow();
        m_rowBegun = true;
        m_column = 0;
    }
    for (; m_column < m_fields.size(); ++m_column) {
        if (!readCell())
            return keepFailure();
    }
    m_rows.endRow();
    m_rowBegun = false;
    ++m_blockRow;
}

bool Result::readCell()
{
    if (m_columns.empty())
        return getCell();
    const Column& column = m_columns[m_column];
    const char* row = m_buffer.data() + m_blockRow * m_rowBytes;
    SQLLEN length = 0;
    std::memcpy(&length, row + column.lengthOffset, sizeof length);
    if (length == SQL_NULL_DATA)
        m_rows.appendNull();
    else if (length >= 0 && length <= column.textBytes - unit)
        m_rows.append(reinterpret_cast<const char16_t*>(row + column.textOffset),
                      static_cast<std::size_t>(length / unit));
    else
        return getCell();
    return true;
}

bool Result::getCell()
{
    SQLHSTMT statement = m_statement.get();
    if (m_textUsed == 0 && m_blockRows > 1 &&
        !SQL_SUCCEEDED(SQLSetPos(statement, m_blockRow + 1, SQL_POSITION, SQL_LOCK_NO_CHANGE)))
        return false;
    if (m_text.empty())
        m_text.resize(1024);

    for (;;) {
        const std::size_t room = m_text.size() - m_textUsed;
        SQLLEN left = 0;
        const SQLRETURN result = SQLGetData(statement, static_cast<SQLUSMALLINT>(m_column + 1), SQL_C_WCHAR,
                                            m_text.data() + m_textUsed, static_cast<SQLLEN>(room) * unit, &left);
        if (result == SQL_NO_DATA)
            break;
        if (!SQL_SUCCEEDED(result))
            return false;
        if (left == SQL_NULL_DATA) {
            m_rows.appendNull();
            return true;
        }
        const bool whole = left >= 0 && static_cast<std::size_t>(left / unit) < room;
        if (whole) {
            m_textUsed += static_cast<std::size_t>(left / unit);
            break;
        }
        // All but the terminator's place is filled; the driver may know how much there was before this piece.
        m_textUsed += room - 1;
        const std::size_t known = left > 0 ? static_cast<std::size_t>(left / unit) - (room - 1) + 1 : 0;
        m_text.resize(m_textUsed + std::max(known, m_text.size()));
    }
    m_rows.append(m_text.data(), m_textUsed);
    m_textUsed = 0;
    return true;
}

void Result::keepFailure()
{
    m_failure = odbc::diagnostics(SQL_HANDLE_STMT, m_statement.get(), m_connection->encoding());
}

} // namespace dao
