#pragma once

#include "RecordFormat.h"

#include <string>
#include <string_view>

namespace tarnwick::samples
{

/// Strings records together to a data file's content: the counterpart of `records::RecordCursor`.
class RecordWriter
{
public:
    explicit RecordWriter(const records::RecordFormat& format);

    /// Adds a record. Throws EncodingError for one that a reader would take for something else.
    void Add(std::string_view record);

    /// Adds what is left where a record is not there: an empty slot, or a deleted record of an indexed file. Throws
    /// EncodingError for a file whose records all stand one behind the other.
    void AddEmpty();

    const std::string& Content() const { return m_content; }

private:
    void AddLine(std::string_view record);
    void AddCounted(std::string_view record, bool isDeleted);
    void AddSlot(std::string_view record);
    void AppendCount(std::size_t count);

    records::RecordFormat m_format;
    std::string m_content;
};

} // namespace tarnwick::samples
