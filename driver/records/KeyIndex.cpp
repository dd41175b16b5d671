#include "KeyIndex.h"

#include "DecimalText.h"

#include <sqlite3.h>

#include <algorithm>
#include <bit>
#include <charconv>
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

/// The key of a number that texts are compared with, of which neighbours share some. A text that SQLite takes for equal
/// differs by half a unit of the fifteenth digit at most, and so has this key or the one next to it.
Key OfNearNumber(double number)
{
    constexpr int sharedBits = 6;
    return std::bit_cast<std::uint64_t>(number + 0.0) >> sharedBits;
}

bool IsNumber(Shown shown)
{
    return shown == Shown::Integer || shown == Shown::Real || shown == Shown::Bit;
}

} // namespace

void KeyIndex::Add(const Value& value, Place place)
{
    switch (value.kind) {
    case Value::Kind::Null:
        break;
    case Value::Kind::Integer:
        m_entries.push_back({OfNumber(static_cast<double>(value.integer)), place});
        break;
    case Value::Kind::Real:
        m_entries.push_back({OfNumber(value.real), place});
        break;
    case Value::Kind::Text:
    case Value::Kind::Bytes:
        if (m_by == By::Number)
            AddNumber(value.text, place);
        else
            m_entries.push_back({m_shown == Shown::Decimal ? OfDecimal(value.text) : OfText(value.text), place});
        break;
    }
}

/// What follows a number in its text is SQLite's to judge, and so is one beyond what a floating point number holds.
void KeyIndex::AddNumber(std::string_view text, Place place)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double number = 0;
    const std::errc error = std::from_chars(text.data(), text.data() + text.size(), number).ec;
    if (error == std::errc())
        m_entries.push_back({OfNearNumber(number), place});
    else if (error == std::errc::result_out_of_range)
        AddUnread(place);
}

void KeyIndex::AddUnread(Place place)
{
    m_unread.push_back(place);
}

void KeyIndex::Sort()
{
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) { return a.key < b.key; });
}

std::vector<KeyIndex::Place> KeyIndex::Find(const Wanted& wanted) const
{
    std::vector<Place> places = m_unread;
    for (auto entry = std::lower_bound(m_entries.begin(), m_entries.end(), wanted.least,
                                       [](const Entry&e, Key least) { return e.key < least; });
         entry != m_entries.end() && entry->key <= wanted.most; ++entry)
        places.push_back(entry->place);
    std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.number < b.number; });
    return places;
}

KeyIndex::Wanted KeyIndex::WantedBy(Shown shown, sqlite3_value* value)
{
    const auto equal = [](Key key) { return Wanted{By::Value, key, key}; };
    const int type = IsNumber(shown) ? sqlite3_value_numeric_type(value) : sqlite3_value_type(value);
    if (type == SQLITE_INTEGER || type == SQLITE_FLOAT) {
        const double number = sqlite3_value_double(value);
        if (IsNumber(shown))
            return equal(OfNumber(number));
        const Key near = OfNearNumber(number);
        return {By::Number, near > 0 ? near - 1 : near, near + 1};
    }
    // Texts, numbers and bytes never equal one another, whatever their keys.
    const auto* const bytes =
        static_cast<const char*>(type == SQLITE_BLOB ? sqlite3_value_blob(value) : sqlite3_value_text(value));
    const std::string_view text(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    return equal(shown == Shown::Decimal ? OfDecimal(text) : OfText(text));
}

const char* KeyIndex::CollationOf(Shown shown)
{
    if (IsNumber(shown) || shown == Shown::Bytes)
        return nullptr;
    return shown == Shown::Decimal ? "TARNWICK_DECIMAL" : "BINARY";
}

} // namespace tarnwick::records
