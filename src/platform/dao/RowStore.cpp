#include "RowStore.h"

#include "RuntimeError.h"

#include <algorithm>
#include <cstring>

namespace dao
{

void RowStore::beginRow()
{
    m_used = 0;
    m_cell = 0;
    reserve(headerLength());
    m_used = headerLength();
}

void RowStore::append(const char16_t* text, std::size_t length)
{
    reserve(length);
    if (length > 0)
        std::memcpy(m_row + m_used, text, length * sizeof(char16_t));
    m_used += length;
    setEnd(static_cast<std::uint32_t>(m_used - headerLength()));
}

void RowStore::appendNull()
{
    setEnd(static_cast<std::uint32_t>(m_used - headerLength()) | nullBit);
}

void RowStore::endRow()
{
    m_rows.push_back(m_row);
    m_row += m_used;
    m_used = 0;
}

QStringView RowStore::cell(std::size_t row, std::size_t column, bool& isNull) const
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
    return QStringView(start + headerLength() + begin, static_cast<qsizetype>(end - begin));
}

void RowStore::reserve(std::size_t characters)
{
    if (m_used + characters <= static_cast<std::size_t>(m_slabEnd - m_row))
        return;
    const std::size_t needed = m_used + characters;
    if (needed >= nullBit)
        throw RuntimeError(ErrorNumber::Overflow);
    constexpr std::size_t largestSlab = 512 * 1024;
    const std::size_t size = std::max(m_nextSlab, needed + needed / 4);
    m_nextSlab = std::min(2 * m_nextSlab, largestSlab);

    std::unique_ptr<char16_t[]> slab(new char16_t[size]);
    if (m_used > 0)
        std::memcpy(slab.get(), m_row, m_used * sizeof(char16_t));
    m_row = slab.get();
    m_slabEnd = m_row + size;
    m_slabs.push_back(std::move(slab));
}

void RowStore::setEnd(std::uint32_t end)
{
    std::memcpy(m_row + 2 * m_cell, &end, sizeof end);
    ++m_cell;
}

} // namespace dao
