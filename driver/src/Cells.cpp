#include "Cells.h"

#include "Diagnostics.h"
#include "Lower.h"
#include "StatementTable.h"
#include "Text.h"

#include <algorithm>
#include <array>
#include <cstring>
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
    bool hasRest = false;     ///< `text` goes on for the column read last
    std::u16string text;
    std::size_t given = 0;
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

SQLRETURN GiveNull(SQLHSTMT statement, SQLLEN* length)
{
    if (!length)
        return diagnostics::Raise(SQL_HANDLE_STMT, statement, "22002", "A null was read without a place for its mark.");
    *length = SQL_NULL_DATA;
    return SQL_SUCCESS;
}

/// Reads a cell as wide text. What does not fit is kept in `rest`, if that is asked for.
SQLRETURN ReadWide(SQLHSTMT statement, SQLUSMALLINT column, SQLPOINTER target, SQLLEN capacity, SQLLEN* length,
                   std::u16string* rest)
{
    NarrowText cell;
    const SQLRETURN answer = ReadNarrow(statement, column, cell);
    if (!SQL_SUCCEEDED(answer))
        return answer;
    if (cell.isNull)
        return GiveNull(statement, length);
    const auto room = target && capacity >= unit ? static_cast<std::size_t>(capacity / unit) - 1 : 0;
    auto* const wide = static_cast<SQLWCHAR*>(target);
    const std::size_t units = FillUtf16(cell.text, wide, room);
    std::size_t given = std::min(units, room);
    // Nobody asks for the rest of a bound cell: half of a pair would be the end of its text.
    const bool endsInHalf = given > 0 && units > room && (wide[given - 1] & 0xFC00) == 0xD800;
    if (!rest && endsInHalf)
        --given;
    if (target && capacity >= unit)
        wide[given] = 0;
    if (length)
        *length = static_cast<SQLLEN>(units) * unit;
    if (units <= room && target && capacity >= unit)
        return SQL_SUCCESS;
    if (rest)
        *rest = ToUtf16(cell.text).substr(std::min(units, room));
    return diagnostics::WarnOfCutText(SQL_HANDLE_STMT, statement);
}

/// Gives the next piece of a wide text.
SQLRETURN GoOn(SQLHSTMT statement, Reading& reading, SQLPOINTER target, SQLLEN capacity, SQLLEN* length)
{
    const std::size_t left = reading.text.size() - reading.given;
    const auto room = target && capacity >= unit ? static_cast<std::size_t>(capacity / unit) - 1 : 0;
    const std::size_t now = std::min(left, room);
    if (length)
        *length = static_cast<SQLLEN>(left) * unit;
    if (target && capacity >= unit) {
        auto* const wide = static_cast<SQLWCHAR*>(target);
        std::memcpy(wide, reading.text.data() + reading.given, now * sizeof(SQLWCHAR));
        wide[now] = 0;
        reading.given += now;
        if (now == left) {
            reading.hasRest = false;
            return SQL_SUCCESS;
        }
    }
    return diagnostics::WarnOfCutText(SQL_HANDLE_STMT, statement);
}

} // namespace

SQLRETURN Read(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
               SQLLEN* length)
{
    if (type == SQL_C_WCHAR)
        return ReadWide(statement, column, target, capacity, length, nullptr);
    return lower.SQLGetData(statement, column, type, target, capacity, length);
}

SQLRETURN Get(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target, SQLLEN capacity,
              SQLLEN* length, SQLUSMALLINT highestRead)
{
    Reading& reading = Readings().Ensure(statement);
    if (reading.column != column) {
        if (reading.column == 0)
            reading.highest = highestRead;
        // The library below gives nothing of a cell that it has given before, until its row is reached anew.
        if (column <= reading.highest) {
            lower.SQLFetchScroll(statement, SQL_FETCH_RELATIVE, 0);
            reading.highest = 0;
        }
        reading.column = column;
        reading.highest = std::max(reading.highest, column);
        reading.hasRest = false;
    }
    if (type != SQL_C_WCHAR)
        return lower.SQLGetData(statement, column, type, target, capacity, length);
    if (reading.hasRest)
        return GoOn(statement, reading, target, capacity, length);
    const SQLRETURN answer = ReadWide(statement, column, target, capacity, length, &reading.text);
    reading.hasRest = answer == SQL_SUCCESS_WITH_INFO;
    reading.given = 0;
    return answer;
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
