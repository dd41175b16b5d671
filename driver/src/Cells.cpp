#include "Cells.h"

#include "Diagnostics.h"
#include "Lower.h"
#include "Moments.h"
#include "Numbers.h"
#include "ResultColumn.h"
#include "StatementTable.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <vector>

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
    std::vector<SQLSMALLINT>
        defaults; ///< the C types of the result's columns by themselves; 0 where none was asked for
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

/// Takes what the library below has left of a text of so many bytes, behind those that it gave.
SQLRETURN Complete(SQLHSTMT statement, SQLUSMALLINT column, std::string_view given, SQLLEN bytes, NarrowText& cell)
{
    const auto whole = static_cast<std::size_t>(bytes);
    SQLRETURN answer = SQL_SUCCESS;
    cell.longText.reserve(whole + 1);
    cell.longText = given;
    if (given.size() < whole) {
        cell.longText.resize(whole + 1);
        SQLLEN left = 0;
        answer = lower.SQLGetData(statement, column, SQL_C_CHAR, cell.longText.data() + given.size(),
                                  static_cast<SQLLEN>(cell.longText.size() - given.size()), &left);
    }
    cell.text = std::string_view(cell.longText.data(), whole);
    return SQL_SUCCEEDED(answer) ? SQLRETURN{SQL_SUCCESS} : answer;
}

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
    return Complete(statement, column, {cell.room.data(), capacity - 1}, bytes, cell);
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

/// Gives the text of a cell that has just been read. What does not fit is kept in `reading`, if there is one.
SQLRETURN GiveNarrow(SQLHSTMT statement, const NarrowText& cell, SQLPOINTER target, SQLLEN capacity, SQLLEN* length,
                     Reading* reading)
{
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

/// Ends a text that its buffer cut in front of a character of which only the first bytes are there.
void DropPartOfCharacter(char* text, std::size_t size)
{
    constexpr std::size_t mostBytes = 4;
    const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(text[place]); };
    for (std::size_t found = 1; found < mostBytes && found <= size; ++found) {
        const unsigned char first = byte(size - found);
        if (first < 0x80)
            return;
        if (first < 0xC0)
            continue;
        const std::size_t needed = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        if (needed > found)
            text[size - found] = 0;
        return;
    }
}

/// Reads a cell as narrow text into room that is too small to tell by its beginning whether it holds bytes.
SQLRETURN ReadIntoLittle(SQLHSTMT statement, SQLUSMALLINT column, SQLPOINTER target, SQLLEN capacity, SQLLEN* length,
                         Reading* reading)
{
    if (!IsBinaryColumn(statement, column)) {
        const SQLRETURN answer = lower.SQLGetData(statement, column, SQL_C_CHAR, target, capacity, length);
        if (!reading && answer == SQL_SUCCESS_WITH_INFO && target && capacity > 0)
            DropPartOfCharacter(static_cast<char*>(target), static_cast<std::size_t>(capacity) - 1);
        const bool isCut = answer == SQL_SUCCESS && target && capacity == 0 && !(length && *length == SQL_NULL_DATA);
        return isCut ? diagnostics::WarnOfCutText(SQL_HANDLE_STMT, statement) : answer;
    }
    NarrowText cell;
    const SQLRETURN answer = ReadNarrow(statement, column, cell);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    if (cell.isNull)
        return GiveNull(statement, length);
    TakeDigitsOfBytes(statement, column, cell);
    return GiveNarrow(statement, cell, target, capacity, length, reading);
}

/// Reads a cell as narrow text from its beginning, straight from the library below unless it holds bytes. What does not
/// fit of these is kept in `reading`, if there is one.
SQLRETURN ReadCharacters(SQLHSTMT statement, SQLUSMALLINT column, SQLPOINTER target, SQLLEN capacity, SQLLEN* length,
                         Reading* reading)
{
    if (!target || capacity <= 2)
        return ReadIntoLittle(statement, column, target, capacity, length, reading);
    auto* const text = static_cast<char*>(target);
    SQLLEN ownLength = 0;
    SQLLEN* const bytes = length ? length : &ownLength;
    const SQLRETURN answer = lower.SQLGetData(statement, column, SQL_C_CHAR, target, capacity, bytes);
    if ((answer == SQL_SUCCESS && text[0] != 'X') || !SQL_SUCCEEDED(answer) || *bytes == SQL_NULL_DATA)
        return answer;
    const auto got = static_cast<std::size_t>(std::min(*bytes, capacity - 1));
    if (text[0] != 'X' || text[1] != '\'' || !IsBinaryColumn(statement, column)) {
        if (!reading && answer == SQL_SUCCESS_WITH_INFO)
            DropPartOfCharacter(text, got);
        return answer;
    }
    NarrowText cell;
    const SQLRETURN completed = Complete(statement, column, {text, got}, *bytes, cell);
    if (!SQL_SUCCEEDED(completed))
        return completed;
    TakeDigitsOfBytes(statement, column, cell);
    return GiveNarrow(statement, cell, target, capacity, length, reading);
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

/// Reads a cell as a number or a moment of `size` bytes.
SQLRETURN ReadValue(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN size,
                    SQLLEN* length)
{
    NarrowText cell;
    SQLRETURN answer = ReadNarrow(statement, column, cell);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    if (cell.isNull && !length)
        return GiveNull(statement, length);
    // A number or date that nobody entered may stand as an empty text in an untyped column.
    if (cell.isNull || numbers::IsBlank(cell.text)) {
        if (target)
            std::memset(target, 0, static_cast<std::size_t>(size));
        if (length)
            *length = type == SQL_C_BIT && !cell.isNull ? size : SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    answer = numbers::SizeOf(type) > 0 ? PutNumber(statement, column, type, cell.text, target)
                                       : PutMoment(statement, column, type, cell.text, target);
    if (length && SQL_SUCCEEDED(answer))
        *length = size;
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
    case SQL_C_BINARY:
        return lower.SQLGetData(statement, column, type, target, capacity, length);
    default:
        break;
    }
    const SQLLEN size = SizeOf(type);
    if (size == 0)
        return Refuse(statement, column, "07006", "it cannot be read as the C type that is asked for.");
    if (reading)
        reading->isWhole = true;
    return ReadValue(statement, column, type, target, size, length);
}

} // namespace

SQLLEN SizeOf(SQLSMALLINT type)
{
    return std::max(numbers::SizeOf(type), moments::SizeOf(type));
}

SQLSMALLINT DefaultTypeOf(SQLHSTMT statement, SQLUSMALLINT column)
{
    std::vector<SQLSMALLINT>& known = Readings().Ensure(statement).defaults;
    if (known.size() <= column)
        known.resize(column + std::size_t{1});
    if (known[column] == 0)
        known[column] = DefaultType(statement, column);
    return known[column];
}

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
    // Column 0 is the row's bookmark.
    if (column == 0)
        return lower.SQLGetData(statement, column, type, target, capacity, length);
    if (type == SQL_C_DEFAULT)
        type = DefaultTypeOf(statement, column);
    Reading& reading = Readings().Ensure(statement);
    // A number, date or time is that of the whole text, whatever has been given of it.
    const bool isFirst = reading.column != column || reading.isWhole || SizeOf(type) > 0;
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

void Close(SQLHSTMT statement)
{
    if (Reading* reading = Readings().Find(statement)) {
        reading->column = 0;
        reading->defaults.clear();
    }
}

void Forget(SQLHSTMT statement)
{
    Readings().Erase(statement);
}

} // namespace tarnwick::cells
