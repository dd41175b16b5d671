#pragma once

#include "FieldDecoder.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
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

    /// What a column is looked up by: its values, or, if they are texts, the numbers in them.
    enum class By { Value, Number };

    /// What a column is compared with; the keys of what may be equal to it lie between two.
    struct Wanted {
        By by;
        Key least;
        Key most;
    };

    KeyIndex(Shown shown, By by) : m_shown(shown), m_by(by) {}

    /// A record with a value in the column. Nulls, and texts that are no number where one is looked up, are left out:
    /// they equal nothing.
    void Add(const Value& value, Place place);

    /// A record whose field could not be read.
    void AddUnread(Place place);

    /// To be called behind the last `Add`.
    void Sort();

    /// The records in their order in the file.
    std::vector<Place> Find(const Wanted& wanted) const;

    std::size_t Size() const { return m_entries.size() + m_unread.size(); }

    /// What a column of that form is compared with.
    static Wanted WantedBy(Shown shown, sqlite3_value* value);

    /// The collation under which columns of that form are compared by their keys; null for any.
    static const char* CollationOf(Shown shown);

private:
    struct Entry {
        Key key;
        Place place;
    };

    void AddNumber(std::string_view text, Place place);

    Shown m_shown;
    By m_by;
    std::vector<Entry> m_entries;
    std::vector<Place> m_unread;
};

} // namespace tarnwick::records
