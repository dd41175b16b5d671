#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick::records
{

/// A day and a time of the day.
struct Moment {
    int year = 1;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int hundredths = 0;

    /// Whether there is such a day, in the Gregorian calendar, and such a time.
    bool IsReal() const;

    /// `seconds` behind the midnight that began 1 January 1970.
    static Moment FromUnixSeconds(std::int64_t seconds);
};

/// What an SQL type shows of a moment.
enum class MomentPart { Date, Time, Timestamp };

/// `YYYY-MM-DD`, `hh:mm:ss` or both; behind both, hundredths of a second where they are not zero.
void Write(const Moment& moment, MomentPart part, std::string& text);

/// The format of a date or time that is kept as text: `YYYY` and `YY` the year, `MM` and `MMM` (Jan) the month, `DD`
/// the day, `hh`, `mm`, `ss` and `cc` (hundredths) the time, each of a fixed width; any other character stands for
/// itself. Years of two digits are those from 1950 to 2049.
class DateFormat
{
public:
    explicit DateFormat(std::string_view format);

    /// Whether it says of which year a day is, and anything of a time.
    bool HasYear() const { return m_hasYear; }
    bool HasTime() const { return m_hasTime; }

    enum class Reading { Moment, Empty, Wrong };

    /// Reads a text. `Empty` is a text of only blanks or zero bytes and, if the format has a year, one whose digits are
    /// all zero: there is no such day, unless the year has two digits and stands for its first day.
    Reading Read(std::string_view text, Moment& moment) const;

private:
    enum class Part { Literal, Year4, Year2, MonthName, Month, Day, Hour, Minute, Second, Hundredths };
    struct Piece {
        Part part;
        std::size_t width;
        char literal;
    };

    bool IsEmpty(std::string_view text) const;
    static bool ReadPiece(const Piece& piece, std::string_view text, Moment& moment);

    std::vector<Piece> m_pieces;
    bool m_hasYear = false;
    bool m_countsFromOne = false; ///< some part of its dates is never zero
    bool m_hasTime = false;
};

} // namespace tarnwick::records
