#pragma once

#include <QStringView>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace dao
{

/// The rows of a result, kept packed: a row is a table of where its cells end and then their texts one behind the
/// other, and rows lie one behind the other in slabs. A cell is a view into its slab and stays valid as long as the
/// store.
class RowStore
{
public:
    explicit RowStore(std::size_t columns) : m_columns(columns) {}

    /// Rows are built cell by cell: beginRow, then `append` or `appendNull` for every column, then endRow. A row that
    /// is begun again before its end is dropped.
    void beginRow();
    void append(const char16_t* text, std::size_t length);
    void appendNull();
    void endRow();

    std::size_t rows() const { return m_rows.size(); }

    /// The text of a cell; an empty view for a null. Row and column must be there.
    QStringView cell(std::size_t row, std::size_t column, bool& isNull) const
    {
        const char16_t* start = m_rows[row];
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
        if (column > 0)
            std::memcpy(&begin, start + 2 * (column - 1), sizeof begin);
        std::memcpy(&end, start + 2 * column, sizeof end);
        isNull = (end & nullBit) != 0;
        begin &= ~nullBit;
        end &= ~nullBit;
        return {start + headerLength() + begin, static_cast<qsizetype>(end - begin)};
    }

private:
    static constexpr std::uint32_t nullBit = 0x80000000U;

    std::size_t headerLength() const { return 2 * m_columns; }
    void reserve(std::size_t characters);
    void setEnd(std::uint32_t end);

    std::size_t m_columns;
    struct Free {
        void operator()(char16_t* slab) const { std::free(slab); }
    };

    std::vector<std::unique_ptr<char16_t[], Free>> m_slabs;
    std::vector<const char16_t*> m_rows;
    std::size_t m_nextSlab = 2048;
    /// The row under construction: its start, what it holds so far, and the end of its slab.
    char16_t* m_row = nullptr;
    char16_t* m_slabEnd = nullptr;
    std::size_t m_used = 0;
    std::size_t m_cell = 0;
};

} // namespace dao
