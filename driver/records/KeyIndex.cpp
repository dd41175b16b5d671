#include "KeyIndex.h"

#include "DecimalText.h"

#include <sqlite3.h>

#include <algorithm>
#include <functional>

namespace tarnwick::records
{
namespace
{

using Key = KeyIndex::Key;

/// Integers and floating point numbers of the same value are equal. Large integers share keys.
Key OfNumber(double number)
{
    return std::hash<double>()(number);
}

Key OfText(std::string_view text)
{
    return std::hash<std::string_view>()(text);
}

Key OfDecimal(std::string_view text)
{
    return std::hash<std::string>()(PlainDecimal(text));
}

bool IsNumber(Shown shown)
{
    return shown == Shown::Integer || shown == Shown::Real || shown == Shown::Bit;
}

} // namespace

void KeyIndex::Add(std::optional<Key> key, Place place)
{
    if (key)
        m_entries.push_back({*key, place});
    else
        m_unread.push_back(place);
}

void KeyIndex::Sort()
{
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) { return a.key < b.key; });
}

std::vector<KeyIndex::Place> KeyIndex::Find(Key key) const
{
    std::vector<Place> places = m_unread;
    for (auto entry = std::lower_bound(m_entries.begin(), m_entries.end(), key,
                                       [](const Entry&e, Key wanted) { return e.key < wanted; });
         entry != m_entries.end() && entry->key == key; ++entry)
        places.push_back(entry->place);
    std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.number < b.number; });
    return places;
}

KeyIndex::Key KeyIndex::KeyOf(Shown shown, const Value& value)
{
    switch (value.kind) {
    case Value::Kind::Integer:
        return OfNumber(static_cast<double>(value.integer));
    case Value::Kind::Real:
        return OfNumber(value.real);
    default:
        return shown == Shown::Decimal ? OfDecimal(value.text) : OfText(value.text);
    }
}

std::optional<KeyIndex::Key> KeyIndex::KeyOf(Shown shown, sqlite3_value* value)
{
    const int type = IsNumber(shown) ? sqlite3_value_numeric_type(value) : sqlite3_value_type(value);
    if (IsNumber(shown))
        return type == SQLITE_INTEGER || type == SQLITE_FLOAT ? std::optional(OfNumber(sqlite3_value_double(value)))
                                                              : std::nullopt;
    if (type != (shown == Shown::Bytes ? SQLITE_BLOB : SQLITE_TEXT))
        return std::nullopt;
    const auto* const bytes =
        static_cast<const char*>(shown == Shown::Bytes ? sqlite3_value_blob(value) : sqlite3_value_text(value));
    const std::string_view text(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    return shown == Shown::Decimal ? OfDecimal(text) : OfText(text);
}

const char* KeyIndex::CollationOf(Shown shown)
{
    if (IsNumber(shown) || shown == Shown::Bytes)
        return nullptr;
    return shown == Shown::Decimal ? "TARNWICK_DECIMAL" : "BINARY";
}

} // namespace tarnwick::records
