#pragma once

#include "Odbc.h"
#include "Recordset.h"
#include "RowStore.h"

#include <memory>
#include <optional>
#include <vector>

namespace dao
{

class Connection;

/// The result of one SELECT: its columns, and the rows read so far, all of which are kept. It holds a statement handle
/// until the last row has been read.
///
/// Columns are bound as wide characters; a cell that does not fit is got again whole. Where the driver can't get what
/// is bound, every cell is got by itself. A failure while a row is read leaves the place in that row, so that the next
/// attempt goes on there.
class Result
{
public:
    Result(std::shared_ptr<Connection> connection, odbc::StatementHandle statement, int columns);
    ~Result();
    Result(const Result&) = delete;
    Result& operator=(const Result&) = delete;

    /// The columns by name, type and size.
    const std::vector<Field>& fields() const { return m_fields; }
    const RowStore& rows() const { return m_rows; }
    /// True when all rows are there.
    bool finished() const { return !m_statement; }

    /// Reads up to `count` further rows. Raises 3146 if not even one can be read; a failure behind the first one is
    /// kept for the next call.
    void read(std::size_t count);
    /// Reads all further rows. A failure is kept for the next `read`.
    void complete();
    /// Gives the statement handle back; rows not read yet are lost.
    void end();
    /// True when the connection closed under it.
    bool ended() const { return m_ended; }

private:
    struct Column {
        std::size_t textOffset = 0;
        /// Bytes of the buffer, terminator included.
        SQLLEN textBytes = 0;
        std::size_t lengthOffset = 0;
    };

    void describe(SQLUSMALLINT number);
    void planBuffer();
    void bind();
    void unbind();
    void readRows(std::size_t count);
    void fetchBlock();
    void readRow();
    bool readCell();
    bool getCell();
    void keepFailure();
    void finish();

    std::shared_ptr<Connection> m_connection;
    odbc::StatementHandle m_statement;
    std::vector<Field> m_fields;
    RowStore m_rows;
    bool m_ended = false;

    /// Bound rows lie one behind the other, each `m_rowBytes` long.
    std::vector<Column> m_columns;
    std::vector<char> m_buffer;
    std::size_t m_rowBytes = 0;
    std::size_t m_blockRows = 1;
    std::vector<SQLUSMALLINT> m_status;
    SQLULEN m_fetched = 0;

    /// The place of reading: the row of the block, whether it has been begun, its column, and what was got of that
    /// cell.
    std::size_t m_blockRow = 0;
    bool m_rowBegun = false;
    std::size_t m_column = 0;
    std::vector<char16_t> m_text;
    std::size_t m_textUsed = 0;
    std::optional<std::vector<Error>> m_failure;
    std::vector<Error> m_blockRecords;
};

} // namespace dao
