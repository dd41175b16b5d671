#pragma once

#include "RecordFormat.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// Walks through the records of a file's content. Empty slots and deleted records are passed over, but count: the
/// number of a record is its place in the file, from 1.
class RecordCursor
{
public:
    RecordCursor(const RecordFormat& format, std::string_view content);

    enum class Step { Record, End, Short, Corrupt };

    /// Goes to the next record, or the first. `Short` is a record that the content ends in; what is known to be an
    /// empty slot or a deleted record is none. `Corrupt` is one whose length cannot be: nobody knows where the next one
    /// begins. `Reason` tells more of both; they are the last step.
    Step Next();

    /// Whether there may be no record where one is short: it is a slot without a length of which only zero bytes are
    /// there, as of an empty one, or the content ends before its first record.
    bool MayBeEmpty() const { return m_mayBeEmpty; }

    /// Goes to a record whose place `Next` gave once, or, in other content than that, to what is at or behind that
    /// place.
    Step Seek(std::uint64_t position, std::uint64_t number);

    /// The record without its head; of a short one, what there is of it.
    std::string_view Bytes() const { return m_bytes; }
    std::uint64_t Number() const { return m_number; }
    /// Where the record begins in the content, its head included.
    std::uint64_t Position() const { return m_position; }
    const std::string& Reason() const { return m_reason; }

private:
    Step NextFixed();
    Step NextLine();
    Step NextCounted();
    Step NextSlot();
    Step Corrupt(std::string reason);
    Step CorruptSlot(std::size_t length);
    Step CutBeforeTheFirst();
    Step CutShort(std::size_t wanted, std::size_t head = 0);
    Step CutSlotShort(std::size_t wanted);
    std::size_t ReadCount(std::size_t position) const;
    std::size_t Left() const { return m_content.size() - m_next; }

    const RecordFormat& m_format;
    std::string_view m_content;
    char m_newline;
    std::size_t m_next;
    std::uint64_t m_position = 0;
    std::uint64_t m_number = 0;
    std::string_view m_bytes;
    bool m_mayBeEmpty = false;
    std::string m_reason;
};

} // namespace tarnwick::records
