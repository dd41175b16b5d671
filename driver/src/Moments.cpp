#include "Moments.h"

#include <cstring>
#include <ctime>
#include <optional>

namespace tarnwick::moments
{
namespace
{

struct Moment {
    std::optional<SQL_DATE_STRUCT> date;
    std::optional<SQL_TIME_STRUCT> time;
    SQLUINTEGER billionths = 0; ///< of a second
    bool isFiner = false;       ///< than billionths
};

/// Reads a text from its beginning to its end.
class Reader
{
public:
    explicit Reader(std::string_view text) : m_text(text) { SkipBlanks(); }

    bool IsAtEnd() const { return m_text.empty(); }

    bool Skip(char c)
    {
        const bool found = m_text.starts_with(c);
        m_text.remove_prefix(found ? 1 : 0);
        return found;
    }

    void SkipBlanks()
    {
        while (!m_text.empty() && (m_text.front() == ' ' || (m_text.front() >= '\t' && m_text.front() <= '\r')))
            m_text.remove_prefix(1);
    }

    std::size_t DigitsAhead() const
    {
        std::size_t count = 0;
        while (count < m_text.size() && m_text[count] >= '0' && m_text[count] <= '9')
            ++count;
        return count;
    }

    /// A number of so many digits.
    std::optional<unsigned> Number(std::size_t digits)
    {
        if (DigitsAhead() < digits)
            return std::nullopt;
        unsigned number = 0;
        for (std::size_t i = 0; i < digits; ++i)
            number = number * 10 + static_cast<unsigned>(m_text[i] - '0');
        m_text.remove_prefix(digits);
        return number;
    }

private:
    std::string_view m_text;
};

unsigned DaysOf(unsigned month, unsigned year)
{
    const bool isLeap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    if (month == 2)
        return isLeap ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

std::optional<SQL_DATE_STRUCT> ReadDate(Reader& text)
{
    const auto year = text.Number(4);
    const char separator = text.Skip('-') ? '-' : text.Skip('/') ? '/' : '\0';
    const auto month = text.Number(2);
    if (separator != '\0' && !text.Skip(separator))
        return std::nullopt;
    const auto day = text.Number(2);
    if (!year || !month || !day || *month < 1 || *month > 12 || *day < 1 || *day > DaysOf(*month, *year))
        return std::nullopt;
    return SQL_DATE_STRUCT{static_cast<SQLSMALLINT>(*year), static_cast<SQLUSMALLINT>(*month),
                           static_cast<SQLUSMALLINT>(*day)};
}

/// With what follows the seconds.
bool ReadTime(Reader& text, Moment& moment)
{
    const auto hour = text.Number(2);
    const bool hasColons = text.Skip(':');
    const auto minute = text.Number(2);
    const bool hasSeconds = !hasColons || text.Skip(':');
    const auto second = hasSeconds ? text.Number(2) : std::optional(0u);
    // A minute may have a leap second.
    if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 60)
        return false;
    moment.time = SQL_TIME_STRUCT{static_cast<SQLUSMALLINT>(*hour), static_cast<SQLUSMALLINT>(*minute),
                                  static_cast<SQLUSMALLINT>(*second)};
    if (!hasSeconds || !text.Skip('.'))
        return true;
    for (SQLUINTEGER unit = 100000000; text.DigitsAhead() > 0; unit /= 10) {
        const unsigned digit = *text.Number(1);
        moment.billionths += digit * unit;
        moment.isFiner = moment.isFiner || (unit == 0 && digit > 0);
    }
    return true;
}

std::optional<Moment> Read(std::string_view content)
{
    Reader text(content);
    Moment moment;
    const std::size_t digits = text.DigitsAhead();
    if (digits == 4 || digits == 8 || digits == 14) {
        moment.date = ReadDate(text);
        if (!moment.date)
            return std::nullopt;
        if (!text.Skip('T'))
            text.SkipBlanks();
    }
    if (!moment.date && digits != 2)
        return std::nullopt;
    if ((!moment.date || !text.IsAtEnd()) && !ReadTime(text, moment))
        return std::nullopt;
    text.SkipBlanks();
    return text.IsAtEnd() ? std::optional(moment) : std::nullopt;
}

SQL_DATE_STRUCT Today()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    return {static_cast<SQLSMALLINT>(parts.tm_year + 1900), static_cast<SQLUSMALLINT>(parts.tm_mon + 1),
            static_cast<SQLUSMALLINT>(parts.tm_mday)};
}

template <typename Structure>
void Give(const Structure& value, void* place)
{
    if (place)
        std::memcpy(place, &value, sizeof value);
}

} // namespace

SQLLEN SizeOf(SQLSMALLINT type)
{
    switch (type) {
    case SQL_C_DATE:
    case SQL_C_TYPE_DATE:
        return sizeof(SQL_DATE_STRUCT);
    case SQL_C_TIME:
    case SQL_C_TYPE_TIME:
        return sizeof(SQL_TIME_STRUCT);
    case SQL_C_TIMESTAMP:
    case SQL_C_TYPE_TIMESTAMP:
        return sizeof(SQL_TIMESTAMP_STRUCT);
    default:
        return 0;
    }
}

Outcome Put(std::string_view text, SQLSMALLINT type, void* place)
{
    const std::optional<Moment> moment = Read(text);
    if (!moment)
        return Outcome::NoMoment;
    const SQL_TIME_STRUCT time = moment->time.value_or(SQL_TIME_STRUCT{});
    const bool hasFraction = moment->billionths > 0 || moment->isFiner;
    switch (type) {
    case SQL_C_DATE:
    case SQL_C_TYPE_DATE:
        if (!moment->date)
            return Outcome::NoMoment;
        Give(*moment->date, place);
        return hasFraction || time.hour > 0 || time.minute > 0 || time.second > 0 ? Outcome::Cut : Outcome::Whole;
    case SQL_C_TIME:
    case SQL_C_TYPE_TIME:
        if (!moment->time)
            return Outcome::NoMoment;
        Give(time, place);
        return hasFraction ? Outcome::Cut : Outcome::Whole;
    default: {
        const SQL_DATE_STRUCT date = moment->date ? *moment->date : Today();
        Give(SQL_TIMESTAMP_STRUCT{date.year, date.month, date.day, time.hour, time.minute, time.second,
                                  moment->billionths},
             place);
        return moment->isFiner ? Outcome::Cut : Outcome::Whole;
    }
    }
}

} // namespace tarnwick::moments
