#include "DateFormat.h"

#include "Text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <iterator>
#include <optional>

namespace tarnwick::records
{
namespace
{

/// A day without a year may be any of those that some year has.
constexpr int leapYear = 4;

/// The first year that two digits can mean.
constexpr int firstShortYear = 1950;

constexpr const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::optional<int> Digits(std::string_view text)
{
    int number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

std::optional<int> MonthNamed(std::string_view text)
{
    const auto* const found = std::find_if(std::begin(months), std::end(months),
                                           [&](const char* name) { return EqualIgnoringCase(name, text); });
    if (found == std::end(months))
        return std::nullopt;
    return static_cast<int>(found - std::begin(months)) + 1;
}

bool IsLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

bool Moment::IsReal() const
{
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    return year >= 1 && year <= 9999 && date.ok() && hour >= 0 && hour < 24 && minute >= 0 && minute < 60 &&
           second >= 0 && second < 60;
}

Moment Moment::FromUnixSeconds(std::int64_t seconds)
{
    using namespace std::chrono;
    const sys_seconds point{std::chrono::seconds(seconds)};
    const auto midnight = floor<days>(point);
    const year_month_day date(midnight);
    const hh_mm_ss time(point - midnight);
    Moment moment;
    moment.year = static_cast<int>(date.year());
    moment.month = static_cast<int>(static_cast<unsigned>(date.month()));
    moment.day = static_cast<int>(static_cast<unsigned>(date.day()));
    moment.hour = static_cast<int>(time.hours().count());
    moment.minute = static_cast<int>(time.minutes().count());
    moment.second = static_cast<int>(time.seconds().count());
    return moment;
}

void Write(const Moment& moment, MomentPart part, std::string& text)
{
    std::array<char, 96> buffer;
    text.clear();
    const auto add = [&](int length) { text.append(buffer.data(), static_cast<std::size_t>(length)); };
    if (part != MomentPart::Time)
        add(std::snprintf(buffer.data(), buffer.size(), "%04d-%02d-%02d", moment.year, moment.month, moment.day));
    if (part == MomentPart::Date)
        return;
    if (part == MomentPart::Timestamp)
        text += ' ';
    add(std::snprintf(buffer.data(), buffer.size(), "%02d:%02d:%02d", moment.hour, moment.minute, moment.second));
    if (part == MomentPart::Timestamp && moment.hundredths > 0)
        add(std::snprintf(buffer.data(), buffer.size(), ".%02d", moment.hundredths));
}

DateFormat::DateFormat(std::string_view format)
{
    struct Token {
        std::string_view text;
        Part part;
    };
    // The longest token of those that begin alike comes first.
    constexpr Token tokens[] = {{"YYYY", Part::Year4}, {"MMM", Part::MonthName}, {"YY", Part::Year2},
                                {"MM", Part::Month},   {"DD", Part::Day},        {"hh", Part::Hour},
                                {"mm", Part::Minute},  {"ss", Part::Second},     {"cc", Part::Hundredths}};
    while (!format.empty()) {
        const auto* const token = std::find_if(std::begin(tokens), std::end(tokens), [&](const Token& candidate) {
            return format.substr(0, candidate.text.size()) == candidate.text;
        });
        const bool known = token != std::end(tokens);
        m_pieces.push_back({known ? token->part : Part::Literal, known ? token->text.size() : 1, format.front()});
        const Part part = m_pieces.back().part;
        m_hasYear = m_hasYear || part == Part::Year4 || part == Part::Year2;
        m_countsFromOne = m_countsFromOne || part == Part::Year4 || part == Part::MonthName || part == Part::Month ||
                          part == Part::Day;
        m_hasTime =
            m_hasTime || part == Part::Hour || part == Part::Minute || part == Part::Second || part == Part::Hundredths;
        format.remove_prefix(m_pieces.back().width);
    }
}

bool DateFormat::IsEmpty(std::string_view text) const
{
    if (text.find_first_not_of(std::string_view(" \0", 2)) == std::string_view::npos)
        return true;
    return m_hasYear && m_countsFromOne && text.find_first_of("123456789") == std::string_view::npos &&
           text.find('0') != std::string_view::npos && std::none_of(text.begin(), text.end(), IsLetter);
}

bool DateFormat::ReadPiece(const Piece& piece, std::string_view text, Moment& moment)
{
    if (piece.part == Part::Literal)
        return text.front() == piece.literal;
    const auto number = piece.part == Part::MonthName ? MonthNamed(text) : Digits(text);
    if (!number)
        return false;
    switch (piece.part) {
    case Part::Year4:
        moment.year = *number;
        break;
    case Part::Year2:
        moment.year = firstShortYear / 100 * 100 + *number + (*number < firstShortYear % 100 ? 100 : 0);
        break;
    case Part::MonthName:
    case Part::Month:
        moment.month = *number;
        break;
    case Part::Day:
        moment.day = *number;
        break;
    case Part::Hour:
        moment.hour = *number;
        break;
    case Part::Minute:
        moment.minute = *number;
        break;
    case Part::Second:
        moment.second = *number;
        break;
    case Part::Hundredths:
        moment.hundredths = *number;
        break;
    case Part::Literal:
        break;
    }
    return true;
}

DateFormat::Reading DateFormat::Read(std::string_view text, Moment& moment) const
{
    if (IsEmpty(text))
        return Reading::Empty;
    moment = {};
    if (!m_hasYear)
        moment.year = leapYear;
    for (const Piece& piece : m_pieces) {
        // Values come without the blanks at their end.
        if (text.empty() && piece.part == Part::Literal && piece.literal == ' ')
            continue;
        if (text.size() < piece.width || !ReadPiece(piece, text.substr(0, piece.width), moment))
            return Reading::Wrong;
        text.remove_prefix(piece.width);
    }
    const bool isWhole = text.find_first_not_of(std::string_view(" \0", 2)) == std::string_view::npos;
    return isWhole && !m_pieces.empty() && moment.IsReal() ? Reading::Moment : Reading::Wrong;
}

} // namespace tarnwick::records
