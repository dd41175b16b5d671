#include "RowStore.h"

#include "RuntimeError.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <sys/mman.h>

namespace dao
{

namespace
{

constexpr std::size_t hugePage = 2 * 1024 * 1024;

/// Large slabs lie on huge pages where the system has them: for a result of many rows, getting its memory page by page
/// would cost as much as a fifth of reading it.
char16_t* allocate(std::size_t characters)
{
    std::size_t bytes = characters * sizeof(char16_t);
    const bool large = bytes >= hugePage;
    if (large)
        bytes = (bytes + hugePage - 1) / hugePage * hugePage;
    void* memory = large ? std::aligned_alloc(hugePage, bytes) : std::malloc(bytes);
    if (!memory)
        throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
    if (large)
        madvise(memory, bytes, MADV_HUGEPAGE);
#endif
    return static_cast<char16_t*>(memory);
}

} // namespace

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

void RowStore::reserve(std::size_t characters)
{
    if (m_used + characters <= static_cast<std::size_t>(m_slabEnd - m_row))
        return;
    const std::size_t needed = m_used + characters;
    if (needed >= nullBit)
        throw RuntimeError(ErrorNumber::Overflow);
    const std::size_t size = std::max(m_nextSlab, needed + needed / 4);
    m_nextSlab = std::min(2 * m_nextSlab, hugePage / sizeof(char16_t));

    std::unique_ptr<char16_t[], Free> slab(allocate(size));
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
