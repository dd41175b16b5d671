#include "RecordWriter.h"

#include "FieldEncoder.h"

namespace tarnwick::samples
{

using Kind = records::RecordFormat::Kind;

RecordWriter::RecordWriter(const records::RecordFormat& format) : m_format(format), m_content(format.skip, '\0') {}

void RecordWriter::Add(std::string_view record)
{
    if (record.size() > m_format.recordSize)
        throw EncodingError("the record has " + std::to_string(record.size()) + " bytes, and the file's have " +
                            std::to_string(m_format.recordSize) + " at most");
    switch (m_format.kind) {
    case Kind::Fixed:
        m_content += record;
        m_content.append(m_format.recordSize - record.size(), '\0');
        if (m_format.hasDeletionByte)
            m_content += '\n';
        return;
    case Kind::Lines:
        return AddLine(record);
    case Kind::Counted:
        return AddCounted(record, false);
    case Kind::Slots:
        return AddSlot(record);
    }
}

void RecordWriter::AddEmpty()
{
    if (m_format.kind == Kind::Slots)
        m_content.append(m_format.countBytes + m_format.recordSize, '\0');
    else if (m_format.hasDeletionByte)
        m_content.append(m_format.recordSize + 1, '\0');
    else if (m_format.fillerMarksDeleted)
        AddCounted(std::string(m_format.recordSize, '\0'), true);
    else
        throw EncodingError("a record is missing, and a file of this organisation has no gaps");
}

void RecordWriter::AddLine(std::string_view record)
{
    const char newline = m_format.page->IsEbcdic() ? '\x15' : '\n';
    if (record.find(newline) != std::string_view::npos || record.ends_with('\r'))
        throw EncodingError("the record holds the character that ends a line");
    m_content += record;
    m_content += newline;
}

void RecordWriter::AppendCount(std::size_t count)
{
    for (std::size_t i = 0; i < m_format.countBytes; ++i) {
        const std::size_t place = m_format.countHighByteFirst ? m_format.countBytes - 1 - i : i;
        m_content += static_cast<char>(count >> (8 * place) & 0xFF);
    }
}

void RecordWriter::AddCounted(std::string_view record, bool isDeleted)
{
    const std::size_t head = m_format.countBytes + m_format.fillerBytes;
    const std::size_t count = record.size() + (m_format.countsItself ? head : 0);
    if (m_format.countBytes < 4 && count > 0xFFFF)
        throw EncodingError("the record is longer than its count can say");
    AppendCount(count);
    m_content.append(m_format.fillerBytes, isDeleted ? '\1' : '\0');
    m_content += record;
}

void RecordWriter::AddSlot(std::string_view record)
{
    if (m_format.countBytes > 0 ? record.empty() : record.find_first_not_of('\0') == std::string_view::npos)
        throw EncodingError("the record reads as an empty slot");
    AppendCount(record.size());
    m_content += record;
    m_content.append(m_format.recordSize - record.size(), '\0');
}

} // namespace tarnwick::samples
