#include "Cells.h"

#include "Describe.h"
#include "Diagnostics.h"
#include "Lower.h"
#include "Moments.h"
#include "Numbers.h"
#include "StatementTable.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace tarnwick::cells
{
namespace
{

constexpr auto unit = static_cast<SQLLEN>(sizeof(SQLWCHAR));

/// How far SQLGetData has come in a row.
struct Reading {
    SQLUSMALLINT column = 0;  ///< read last; 0 for none
    SQLUSMALLINT highest = 0; ///< no column behind this one has been touched
    bool isWhole = false;     ///< the column read last has been given as a value, which may be asked for again
    SQLSMALLINT restType = 0; ///< the type in which the column read last goes on; 0 for none
    std::u16string wideRest;
    std::string narrowRest;
    std::size_t given = 0; ///< units of the rest
};

StatementTable<Reading>& Readings()
{
    static StatementTable<Reading> readings;
    return readings;
}

/// A cell's whole text in UTF-8: in the room that a caller lends if it fits there, else in a string.
struct NarrowText {
    std::array<char, 1024> room;
    std::string longText;
    std::string_view text;
    bool isNull = false;
    bool isBytes = false; ///< the text is two digits for each
};

SQLRETURN ReadNarrow(SQLHSTMT statement, SQLUSMALLINT column, NarrowText& cell)
{
    constexpr auto capacity = static_cast<SQLLEN>(std::tuple_size_v<decltype(cell.room)>);
    SQLLEN bytes = 0;
    const SQLRETURN answer = lower.SQLGetData(statement, column, SQL_C_CHAR, cell.room.data(), capacity, &bytes);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    cell.isNull = bytes == SQL_NULL_DATA;
    if (cell.isNull)
        return SQL_SUCCESS;
    if (bytes < capacity) {
        cell.text = std::string_view(cell.room.data(), static_cast<std::size_t>(bytes));
        return SQL_SUCCESS;
    }
    constexpr std::size_t got = capacity - 1;
    cell.longText.assign(cell.room.data(), got);
    cell.longText.resize(static_cast<std::size_t>(bytes) + 1);
    SQLLEN left = 0;
    const SQLRETURN rest = lower.SQLGetData(statement, column, SQL_C_CHAR, cell.longText.data() + got,
                                            static_cast<SQLLEN>(cell.longText.size() - got), &left);
    cell.text = std::string_view(cell.longText.data(), static_cast<std::size_t>(bytes));
    return SQL_SUCCEEDED(rest) ? SQLRETURN{SQL_SUCCESS} : rest;
}

/// The library below writes the bytes of a binary column as SQL does: `X'00FF'`. To clients they are their digits
/// alone.
bool LooksLikeBytes(std::string_view text)
{
    return text.size() >= 3 && text.size() % 2 == 1 && text.starts_with("X'") && text.ends_with('\'') &&
           text.find_first_not_of("0123456789ABCDEF", 2) == text.size() - 1;
}

void TakeDigitsOfBytes(SQLHSTMT statement, SQLUSMALLINT column, NarrowText& cell)
{
    cell.isBytes = LooksLikeBytes(cell.text) && IsBinaryColumn(statement, column);
    if (cell.isBytes)
        cell.text = cell.text.substr(2, cell.text.size() - 3);
}

SQLRETURN GiveNull(SQLHSTMT statement, SQLLEN* length)
{
    if (!length)
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "22002", "A null was read without a place for its mark.");
    *length = SQL_NULL_DATA;
    return SQL_SUCCESS;
}

/// Reads a cell as wide text. What does not fit is kept in `reading`, if there is one.
SQLRETURN ReadWide(SQLHSTMT statement, SQLUSMALLINT column, SQLPOINTER target, SQLLEN capacity, SQLLEN* length,
                   Reading* reading)
{
    NarrowText cell;
    const SQLRETURN answer = ReadNarrow(statement, column, cell);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    if (cell.isNull)
        return GiveNull(statement, length);
    TakeDigitsOfBytes(statement, column, cell);
    const auto room = target && capacity >= unit ? static_cast<std::size_t>(capacity / unit) - 1 : 0;
    auto* const wide = static_cast<SQLWCHAR*>(target);
    const std::size_t units = FillUtf16(cell.text, wide, room);
    std::size_t given = std::min(units, room);
    // Nobody asks for the rest of a bound cell: half of a pair, or of a byte, would be the end of its text.
    const bool endsInHalf =
        given > 0 && units > room && (cell.isBytes ? given % 2 == 1 : (wide[given - 1] & 0xFC00) == 0xD800);
    if (!reading && endsInHalf)
        --given;
    if (target && capacity >= unit)
        wide[given] = 0;
    if (length)
        *length = static_cast<SQLLEN>(units) * unit;
    if (units <= room && target && capacity >= unit)
        return SQL_SUCCESS;
    if (reading) {
        reading->wideRest = ToUtf16(cell.text).substr(std::min(units, room));
        reading->given = 0;
        reading->restType = SQL_C_WCHAR;
    }
    return diagnostics::WarnOfCutText(SQL_HANDLE_STMT, statement);
}

/// Gives the next piece of a text whose first `given` units have been given.
template <typename Unit>
SQLRETURN GivePiece(SQLHSTMT statement, std::basic_string_view<Unit> text, std::size_t& given, SQLPOINTER target,
                    SQLLEN capacity, SQLLEN* length)
{
    constexpr auto size = static_cast<SQLLEN>(sizeof(Unit));
    const std::size_t left = text.size() - given;
    if (length)
        *length = static_cast<SQLLEN>(left) * size;
    if (target && capacity >= size) {
        const std::size_t now = std::min(left, static_cast<std::size_t>(capacity / size) - 1);
        auto* const units = static_cast<Unit*>(target);
        std::copy_n(text.data() + given, now, units);
        units[now] = 0;
        given += now;
        if (now == left)
            return SQL_SUCCESS;
    }
    return diagnostics::WarnOfCutText(SQL_HANDLE_STMT, statement);
}

/// Takes what is left of a cell in the library below, behind what has been got.
SQLRETURN AppendRest(SQLHSTMT statement, SQLUSMALLINT column, std::string& text)
{
    SQLRETURN answer = SQL_SUCCESS_WITH_INFO;
    while (answer == SQL_SUCCESS_WITH_INFO) {
        std::array<char, 1024> piece{};
        SQLLEN left = 0;
        answer = lower.SQLGetData(statement, column, SQL_C_CHAR, piece.data(), piece.size(), &left);
        if (SQL_SUCCEEDED(answer))
            text += piece.data();
    }
    return answer == SQL_NO_DATA ? SQLRETURN{SQL_SUCCESS} : answer;
}

/// Reads a cell as narrow text from its beginning, straight from the library below unless it holds bytes. What does not
/// fit of these is kept in `reading`, if there is one.
SQLRETURN ReadCharacters(SQLHSTMT statement, SQLUSMALLINT column, SQLPOINTER target, SQLLEN capacity, SQLLEN* length,
                         Reading* reading)
{
    const auto* const begin = static_cast<const char*>(target);
    NarrowText cell;
    if (begin && capacity > 2) {
        const SQLRETURN answer = lower.SQLGetData(statement, column, SQL_C_CHAR, target, capacity, length);
        if (!SQL_SUCCEEDED(answer) || begin[0] != 'X' || begin[1] != '\'' || (length && *length == SQL_NULL_DATA) ||
            !IsBinaryColumn(statement, column))
            return answer;
        cell.longText = begin;
        if (answer == SQL_SUCCESS_WITH_INFO) {
            const SQLRETURN left = AppendRest(statement, column, cell.longText);
            if (!SQL_SUCCEEDED(left))
                return left;
        }
        cell.text = cell.longText;
    } else {
        // The beginning alone would not tell.
        if (!IsBinaryColumn(statement, column))
            return lower.SQLGetData(statement, column, SQL_C_CHAR, target, capacity, length);
        const SQLRETURN answer = ReadNarrow(statement, column, cell);
        if (!SQL_SUCCEEDED(answer))
            return answer;
        if (cell.isNull)
            return GiveNull(statement, length);
    }
    TakeDigitsOfBytes(statement, column, cell);
    std::size_t given = 0;
    // Nobody asks for the rest of a bound cell: half of a byte would be the end of it.
    const bool endsInHalf = !reading && cell.isBytes && capacity > 0 && capacity % 2 == 0 &&
                            static_cast<SQLLEN>(cell.text.size()) >= capacity;
    const SQLLEN room = endsInHalf ? capacity - 1 : capacity;
    const SQLRETURN answer = GivePiece(statement, cell.text, given, target, room, length);
    if (reading && answer == SQL_SUCCESS_WITH_INFO) {
        reading->narrowRest = cell.text.substr(given);
        reading->given = 0;
        reading->restType = SQL_C_CHAR;
    }
    return answer;
}

SQLRETURN Refuse(SQLHSTMT statement, SQLUSMALLINT column, const char* state, const char* reason)
{
    return diagnostics::Raise(SQL_HANDLE_STMT, statement, state, "Column " + std::to_string(column) + ": " + reason);
}

SQLRETURN WarnOfLoss(SQLHSTMT statement, SQLUSMALLINT column, const char* loss)
{
    return diagnostics::Warn(SQL_HANDLE_STMT, statement, "01S07", "Column " + std::to_string(column) + ": " + loss);
}

SQLRETURN PutNumber(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, std::string_view text, SQLPOINTER target)
{
    switch (numbers::Put(text, type, target)) {
    case numbers::Outcome::Whole:
        return SQL_SUCCESS;
    case numbers::Outcome::Cut:
        return WarnOfLoss(statement, column, "digits behind the point were left out.");
    case numbers::Outcome::TooLarge:
        return Refuse(statement, column, "22003", "the number does not fit into its place.");
    default:
        return Refuse(statement, column, "22018", "the text is no number.");
    }
}

SQLRETURN PutMoment(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, std::string_view text, SQLPOINTER target)
{
    switch (moments::Put(text, type, target)) {
    case moments::Outcome::Whole:
        return SQL_SUCCESS;
    case moments::Outcome::Cut:
        return WarnOfLoss(statement, column, "a part of the time was left out.");
    default:
        return Refuse(statement, column, "22018", "the text has no such date or time.");
    }
}

bool IsBlank(std::string_view text)
{
    return text.find_first_not_of(" \t\n\v\f\r") == std::string_view::npos;
}

/// Reads a cell as a number or a moment of `size` bytes.
SQLRETURN ReadValue(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN size,
                    SQLLEN* length)
{
    NarrowText cell;
    SQLRETURN answer = ReadNarrow(statement, column, cell);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    if (cell.isNull || IsBlank(cell.text)) {
        if (target)
            std::memset(target, 0, static_cast<std::size_t>(size));
        // A number or date that nobody entered may stand as an empty text in an untyped column.
        if (cell.isNull)
            return GiveNull(statement, length);
        if (length)
            *length = type == SQL_C_BIT ? size : SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    answer = numbers::SizeOf(type) > 0 ? PutNumber(statement, column, type, cell.text, target)
                                       : PutMoment(statement, column, type, cell.text, target);
    if (length && SQL_SUCCEEDED(answer))
        *length = size;
    return answer;
}

/// Reads a cell as a floating point number. The library below marks a text that is none as null.
SQLRETURN ReadFloat(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN* length,
                    Reading* reading)
{
    double value = 0;
    SQLLEN bytes = 0;
    const bool isNarrow = type == SQL_C_FLOAT;
    const SQLRETURN answer =
        lower.SQLGetData(statement, column, SQL_C_DOUBLE, isNarrow ? &value : target, sizeof value, &bytes);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    if (bytes == SQL_NULL_DATA) {
        NarrowText cell;
        if (reading)
            reading->isWhole = true;
        if (SQL_SUCCEEDED(ReadNarrow(statement, column, cell)) && !cell.isNull && !IsBlank(cell.text))
            return Refuse(statement, column, "22018", "the text is no number.");
    }
    if (isNarrow && bytes != SQL_NULL_DATA) {
        if (std::isfinite(value) && std::abs(value) > static_cast<double>(std::numeric_limits<float>::max()))
            return Refuse(statement, column, "22003", "the number does not fit into its place.");
        bytes = sizeof(float);
    }
    if (isNarrow && target) {
        const auto single = static_cast<float>(value);
        std::memcpy(target, &single, sizeof single);
    }
    if (length)
        *length = bytes;
    return answer;
}

/// Reads a cell from its beginning. What does not fit of a text is kept in `reading`, if there is one.
SQLRETURN ReadFirst(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
                    SQLLEN* length, Reading* reading)
{
    switch (type) {
    case SQL_C_CHAR:
        return ReadCharacters(statement, column, target, capacity, length, reading);
    case SQL_C_WCHAR:
        return ReadWide(statement, column, target, capacity, length, reading);
    case SQL_C_DOUBLE:
    case SQL_C_FLOAT:
        return ReadFloat(statement, column, type, target, length, reading);
    case SQL_C_BINARY:
        return lower.SQLGetData(statement, column, type, target, capacity, length);
    default:
        break;
    }
    const SQLLEN size = std::max(numbers::SizeOf(type), moments::SizeOf(type));
    if (size == 0)
        return Refuse(statement, column, "07006", "it cannot be read as the C type that is asked for.");
    if (reading)
        reading->isWhole = true;
    return ReadValue(statement, column, type, target, size, length);
}

} // namespace

SQLRETURN Read(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
               SQLLEN* length)
{
    // Column 0 is the row's bookmark.
    if (column == 0)
        return lower.SQLGetData(statement, column, type, target, capacity, length);
    return ReadFirst(statement, column, type, target, capacity, length, nullptr);
}

SQLRETURN Get(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
              SQLLEN* length, SQLUSMALLINT highestRead)
{
    Reading& reading = Readings().Ensure(statement);
    const bool isFirst = reading.column != column || reading.isWhole;
    if (isFirst) {
        if (reading.column == 0)
            reading.highest = highestRead;
        // The library below gives nothing of a cell that it has given before, until its row is reached anew.
        if (column <= reading.highest) {
            lower.SQLFetchScroll(statement, SQL_FETCH_RELATIVE, 0);
            reading.highest = 0;
        }
        reading.column = column;
        reading.highest = std::max(reading.highest, column);
        reading.restType = 0;
        reading.isWhole = false;
    }
    if (column == 0)
        return lower.SQLGetData(statement, column, type, target, capacity, length);
    if (type == SQL_C_DEFAULT)
        type = DefaultType(statement, column);
    if (reading.restType == type) {
        const SQLRETURN answer =
            type == SQL_C_WCHAR
                ? GivePiece<char16_t>(statement, reading.wideRest, reading.given, target, capacity, length)
                : GivePiece<char>(statement, reading.narrowRest, reading.given, target, capacity, length);
        if (answer == SQL_SUCCESS)
            reading.restType = 0;
        return answer;
    }
    if (type == SQL_C_CHAR && !isFirst)
        return lower.SQLGetData(statement, column, type, target, capacity, length);
    return ReadFirst(statement, column, type, target, capacity, length, &reading);
}

void Leave(SQLHSTMT statement)
{
    if (Reading* reading = Readings().Find(statement))
        reading->column = 0;
}

void Forget(SQLHSTMT statement)
{
    Readings().Erase(statement);
}

} // namespace tarnwick::cells
