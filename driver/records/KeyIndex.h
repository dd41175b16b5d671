#pragma once

#include "FieldDecoder.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

struct sqlite3_value;

namespace tarnwick::records
{

/// Where the records with a value in one column stand. Joins look their records up here: read from its beginning for
/// each record of another table, a table of a hundred thousand records would keep a client for hours.
///
/// What is found are records that may have the value. Values that differ can share a key, and a record whose field
/// could not be read is found by every key, so that whoever looks at its field meets the error there.
class KeyIndex
{
public:
    /// The place of a record as `RecordCursor::Seek` takes it.
    struct Place {
        std::uint64_t position;
        std::uint64_t number;
    };
    using Key = std::uint64_t;

    /// A record that has the key, or nothing for a field that could not be read. Records with nulls are left out: a
    /// null equals nothing.
    void Add(std::optional<Key> key, Place place);

    /// To be called behind the last `Add`.
    void Sort();

    /// The records in their order in the file.
    std::vector<Place> Find(Key key) const;

    std::size_t Size() const { return m_entries.size() + m_unread.size(); }

    /// The key of a decoded value that is not null.
    static Key KeyOf(Shown shown, const Value& value);

    /// The key of what a column of that form is compared with; nothing if the comparison is not of one kind of value
    /// with the same kind, and so is SQLite's to make.
    static std::optional<Key> KeyOf(Shown shown, sqlite3_value* value);

    /// The collation under which columns of that form are compared by their keys; null for any.
    static const char* CollationOf(Shown shown);

private:
    struct Entry {
        Key key;
        Place place;
    };

    std::vector<Entry> m_entries;
    std::vector<Place> m_unread;
};

} // namespace tarnwick::records
