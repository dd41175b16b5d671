#include "RecordCursor.h"

#include <algorithm>

namespace tarnwick::records
{
namespace
{

using Kind = RecordFormat::Kind;

/// The bits of a record descriptor word's third byte in which pieces of a record differ from a whole one.
constexpr char spannedBits = 3;

bool IsZero(std::string_view bytes)
{
    return bytes.find_first_not_of('\0') == std::string_view::npos;
}

} // namespace

RecordCursor::RecordCursor(const RecordFormat& format, std::string_view content)
    : m_format(format), m_content(content), m_newline(format.page->Newline()),
      m_next(std::min(format.skip, content.size()))
{
}

RecordCursor::Step RecordCursor::Next()
{
    if (m_format.skip > m_content.size())
        return CutBeforeTheFirst();
    switch (m_format.kind) {
    case Kind::Fixed:
        return NextFixed();
    case Kind::Lines:
        return NextLine();
    case Kind::Counted:
        return NextCounted();
    case Kind::Slots:
        return NextSlot();
    }
    return Step::End;
}

RecordCursor::Step RecordCursor::Seek(std::uint64_t position, std::uint64_t number)
{
    m_next = std::min<std::size_t>(position, m_content.size());
    m_number = number - 1;
    return Next();
}

RecordCursor::Step RecordCursor::Corrupt(std::string reason)
{
    m_bytes = {};
    m_reason = std::move(reason);
    m_next = m_content.size();
    return Step::Corrupt;
}

RecordCursor::Step RecordCursor::CutBeforeTheFirst()
{
    m_bytes = {};
    if (m_content.empty() || m_number > 0)
        return Step::End;
    ++m_number;
    m_position = m_next;
    m_mayBeEmpty = true;
    m_reason = "the file ends inside the " + std::to_string(m_format.skip) +
               " bytes before it: " + std::to_string(m_content.size()) + " are there";
    return Step::Short;
}

RecordCursor::Step RecordCursor::CutShort(std::size_t wanted, std::size_t head)
{
    m_bytes = m_content.substr(std::min(m_next + head, m_content.size()));
    if (m_format.HasFixedSize())
        m_bytes = m_bytes.substr(0, m_format.recordSize);
    m_reason = "the file ends inside the record: " + std::to_string(Left()) + " bytes of " + std::to_string(wanted) +
               " are there";
    m_next = m_content.size();
    return Step::Short;
}

/// A slot whose length is there may hold all of its record, or none.
RecordCursor::Step RecordCursor::CutSlotShort(std::size_t wanted)
{
    std::size_t length = m_format.recordSize;
    if (m_format.countBytes > 0 && Left() >= m_format.countBytes) {
        length = ReadCount(m_next);
        if (length > m_format.recordSize)
            return CorruptSlot(length);
    }
    if (length == 0) {
        m_bytes = {};
        m_next = m_content.size();
        return Step::End;
    }
    CutShort(wanted, m_format.countBytes);
    m_bytes = m_bytes.substr(0, length);
    m_mayBeEmpty = m_format.countBytes == 0 && IsZero(m_bytes);
    return Step::Short;
}

RecordCursor::Step RecordCursor::CorruptSlot(std::size_t length)
{
    return Corrupt("its length is " + std::to_string(length) + ", and its slot has room for " +
                   std::to_string(m_format.recordSize));
}

std::size_t RecordCursor::ReadCount(std::size_t position) const
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < m_format.countBytes; ++i) {
        const std::size_t place = m_format.countHighByteFirst ? i : m_format.countBytes - 1 - i;
        count = count << 8 | static_cast<unsigned char>(m_content[position + place]);
    }
    return count;
}

RecordCursor::Step RecordCursor::NextFixed()
{
    const std::size_t size = m_format.recordSize + (m_format.hasDeletionByte ? 1 : 0);
    while (Left() > 0) {
        ++m_number;
        m_position = m_next;
        if (Left() < size)
            return CutShort(size);
        m_bytes = m_content.substr(m_next, m_format.recordSize);
        m_next += size;
        if (!m_format.hasDeletionByte || m_content[m_next - 1] != '\0')
            return Step::Record;
    }
    return Step::End;
}

RecordCursor::Step RecordCursor::NextLine()
{
    if (Left() == 0)
        return Step::End;
    ++m_number;
    m_position = m_next;
    const std::size_t found = m_content.find(m_newline, m_next);
    const std::size_t end = found == std::string_view::npos ? m_content.size() : found;
    m_bytes = m_content.substr(m_next, end - m_next);
    m_next = std::min(m_content.size(), end + 1);
    if (m_newline == '\n' && m_bytes.ends_with('\r'))
        m_bytes.remove_suffix(1);
    return Step::Record;
}

RecordCursor::Step RecordCursor::NextCounted()
{
    const std::size_t head = m_format.countBytes + m_format.fillerBytes;
    while (Left() > 0) {
        ++m_number;
        m_position = m_next;
        if (Left() < head)
            return CutShort(head, head);
        std::size_t size = ReadCount(m_next);
        const std::string_view filler = m_content.substr(m_next + m_format.countBytes, m_format.fillerBytes);
        if (m_format.countsItself && (filler.front() & spannedBits) != 0)
            return Corrupt("it is a piece of a spanned record");
        if (m_format.countsItself && size < head)
            return Corrupt("its length is " + std::to_string(size) + ", which is less than the length's own bytes");
        size -= m_format.countsItself ? head : 0;
        if (Left() - head < size && m_format.recordSize > 0 && size > m_format.recordSize)
            return Corrupt("its length is " + std::to_string(size) + ", which is more than the " +
                           std::to_string(m_format.recordSize) + " bytes of a record and than the rest of the file");
        const bool isDeleted = m_format.fillerMarksDeleted && !IsZero(filler);
        if (Left() - head < size && isDeleted)
            break;
        if (Left() - head < size)
            return CutShort(head + size, head);
        m_bytes = m_content.substr(m_next + head, size);
        m_next += head + size;
        if (!isDeleted)
            return Step::Record;
    }
    m_bytes = {};
    m_next = m_content.size();
    return Step::End;
}

RecordCursor::Step RecordCursor::NextSlot()
{
    const std::size_t size = m_format.countBytes + m_format.recordSize;
    while (Left() > 0) {
        ++m_number;
        m_position = m_next;
        if (Left() < size)
            return CutSlotShort(size);
        m_bytes = m_content.substr(m_next + m_format.countBytes, m_format.recordSize);
        const std::size_t length = m_format.countBytes > 0 ? ReadCount(m_next) : m_format.recordSize;
        if (length > m_format.recordSize)
            return CorruptSlot(length);
        m_next += size;
        if (m_format.countBytes > 0 ? length > 0 : !IsZero(m_bytes)) {
            m_bytes = m_bytes.substr(0, length);
            return Step::Record;
        }
    }
    return Step::End;
}

} // namespace tarnwick::records
