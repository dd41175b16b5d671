#include "FieldDecoder.h"
#include "Resources.h"

#include <gtest/gtest.h>

#include <sqlite3.h>

#include <cstdio>
#include <random>
#include <set>

using namespace tarnwick::records;
using namespace std::string_literals;

namespace
{

/// The rows of TW_LOCDT in a new catalog.
class LocalTypes
{
public:
    struct Row {
        std::string name;
        std::string sqlType;
        std::string attributes;
    };

    static const std::vector<Row>& All()
    {
        static const std::vector<Row> rows = Read();
        return rows;
    }

    static const Row& Named(const std::string& name)
    {
        for (const Row& row : All())
            if (row.name == name)
                return row;
        throw std::runtime_error("no storage type " + name);
    }

private:
    static std::vector<Row> Read()
    {
        std::vector<Row> rows;
        sqlite3* engine = nullptr;
        sqlite3_open(":memory:", &engine);
        sqlite3_exec(engine, tarnwick::resources::tables, nullptr, nullptr, nullptr);
        sqlite3_exec(engine, tarnwick::resources::localTypes, nullptr, nullptr, nullptr);
        const auto add = [](void* target, int, char** cells, char**) {
            static_cast<std::vector<Row>*>(target)->push_back({cells[0], cells[1], cells[2]});
            return 0;
        };
        sqlite3_exec(engine, "SELECT LOCAL_TYPE_NAME, SQL_TYPE_NAME, ATTRIBUTES FROM TW_LOCDT", add, &rows, nullptr);
        sqlite3_close(engine);
        return rows;
    }
};

Field MakeField(const std::string& typeName, std::size_t length, int scale = 0, const std::string& format = "")
{
    const LocalTypes::Row& row = LocalTypes::Named(typeName);
    Field field;
    field.name = "F";
    field.typeName = typeName;
    field.type = StorageType::Read(row.name, row.sqlType, row.attributes);
    field.length = length;
    field.scale = scale;
    field.format = format;
    return field;
}

/// A value as text: `~` for null, `!` and the reason for bytes that are no value.
std::string Shows(const Field& field, Shown shown, const std::string& bytes, const char* page = "ISO-8859-1")
{
    const FieldDecoder decoder(field, shown, CodePage::Find(page));
    Value value;
    std::string room;
    if (const char* reason = decoder.Decode(bytes, value, room))
        return std::string("!") + reason;
    char text[64];
    switch (value.kind) {
    case Value::Kind::Null:
        return "~";
    case Value::Kind::Integer:
        return std::to_string(value.integer);
    case Value::Kind::Real:
        std::snprintf(text, sizeof text, "%.17g", value.real);
        return text;
    case Value::Kind::Text:
    case Value::Kind::Bytes:
        return std::string(value.text);
    }
    return "?";
}

bool LiesIn(const std::string& whole, std::string_view part)
{
    const std::less_equal<const char*> isUpTo;
    return part.empty() ||
           (isUpTo(whole.data(), part.data()) && isUpTo(part.data() + part.size(), whole.data() + whole.size()));
}

struct NumberCase {
    const char* type;
    std::string bytes;
    int scale;
    const char* decimal; ///< as exact digits; begins with ! where the bytes are none
    const char* page = "ISO-8859-1";
};

const NumberCase numbers[] = {
    {"NUMERIC", "00042", 0, "42"},
    {"NUMERIC", "   42", 0, "42"},
    {"NUMERIC", "-0042", 2, "-0.42"},
    {"NUMERIC", "+0042", 0, "42"},
    {"NUMERIC", " 12.5", 3, "12.5"},
    {"NUMERIC", "42   ", 0, "42"},
    {"NUMERIC", "     ", 0, "~"},
    {"NUMERIC", "4 2  ", 0, "!a character is no digit"},
    {"NUMERIC", "    -", 0, "!it has no digits"},
    {"NUMERIC", "1.2.3", 0, "!a character is no digit"},
    {"NUMERIC", "12345678901234.567", 0, "12345678901234.567"},
    {"NUMERIC", "123456789012345.678", 0, "123456789012345.678"},
    {"NUMERIC", "1234567890123456.789", 0, "1234567890123456.789"},
    {"NUMERIC", "123456789012345678.90", 0, "123456789012345678.90"},
    {"NUMERIC", "-12345678901234567890.5", 0, "-12345678901234567890.5"},
    {"ZONED-U", "12345678901234567", 0, "12345678901234567"},
    {"ZONED-U", "123456789012345678", 0, "123456789012345678"},
    {"ZONED-U", "1234567890123456789", 0, "1234567890123456789"},
    {"ZONED", "12345", 2, "123.45"},
    {"ZONED", "1234{", 0, "12340"},
    {"ZONED", "1234E", 0, "12345"},
    {"ZONED", "1234}", 0, "-12340"},
    {"ZONED", "1234N", 2, "-123.45"},
    {"ZONED", "1234u", 0, "-12345"},
    {"ZONED", "12N45", 0, "!a character is no digit"},
    {"ZONED", "\xF1\xF2\xC3", 0, "123", "EBCDIC-037"},
    {"ZONED", "\xF1\xF2\xD3", 1, "-12.3", "EBCDIC-1047"},
    {"ZONED", "\x40\x40\x40", 0, "~", "EBCDIC-037"},
    {"ZONED", "\xF1\xA2", 0, "12", "EBCDIC-037"},
    {"ZONED", "\xF1\xE2", 0, "12", "EBCDIC-037"},
    {"ZONED", "\xF1\xB2", 0, "-12", "EBCDIC-037"},
    {"ZONED", "\xF1\xC2\xF3", 0, "!a character is no digit", "EBCDIC-037"},
    {"ZONED", "\xF1\x92\xF3", 0, "!a character is no digit", "EBCDIC-037"},
    {"ZONED", "\xF1\x92", 0, "!a character is no digit", "EBCDIC-037"},
    {"ZONED-LO", "\xD1\xF2\xF3", 0, "-123", "EBCDIC-037"},
    {"ZONED-LO", "\xC1\xF2", 1, "1.2", "EBCDIC-037"},
    {"ZONED-RO", "\xF1\xD2", 0, "-12", "EBCDIC-037"},
    {"ZONED-LS", "\x60\xF1\xF2", 0, "-12", "EBCDIC-037"},
    {"ZONED-LS", "\x4E\xF1\xF2", 0, "12", "EBCDIC-037"},
    {"ZONED-U", "\xF0\xF7", 0, "7", "EBCDIC-037"},
    {"ZONED-NUM", "\xF1\xD0", 0, "-10", "EBCDIC-1047"},
    {"NUMERIC", "\x40\x60\xF1\x4B\xF5", 0, "-1.5", "EBCDIC-037"},
    {"NUMERIC", "\xF4\xF2\x40", 0, "42", "EBCDIC-037"},
    {"ZONED-NUM", "1234p", 0, "-12340"},
    {"ZONED-NUM", "1234y", 0, "-12349"},
    {"ZONED-S", "1234-", 2, "-12.34"},
    {"ZONED-S", "1234+", 0, "1234"},
    {"ZONED-S", "12345", 0, "!it does not end in a sign"},
    {"ZONED-S", "\xF1\xF2\x60", 0, "-12", "EBCDIC-037"},
    {"ZONED-LS", "-1234", 0, "-1234"},
    {"ZONED-LS", "+1234", 3, "1.234"},
    {"ZONED-LS", "12345", 0, "!it does not begin with a sign"},
    {"ZONED-LO", "J2345", 0, "-12345"},
    {"ZONED-LO", "{2345", 0, "2345"},
    {"ZONED-LO", "1234J", 0, "!a character is no digit"},
    {"ZONED-RO", "1234R", 0, "-12349"},
    {"ZONED-RO", "1234I", 1, "1234.9"},
    {"ZONED-U", "00007", 0, "7"},
    {"ZONED-U", "0000G", 0, "!a character is no digit"},
    {"ZONED-U", "1234567890123456789012345678901", 2, "12345678901234567890123456789.01"},
    {"ZONED-U", "123456789012345678", -2, "12345678901234567800"},
    {"PACKED", "\x12\x34\x5C", 2, "123.45"},
    {"PACKED", "\x12\x34\x5D", 0, "-12345"},
    {"PACKED", "\x00\x00\x0D"s, 2, "0.00"},
    {"PACKED", "\x12\x34\x5F", 0, "12345"},
    {"PACKED", "\x7B", 0, "-7"},
    {"PACKED", "\x12\x3A\x5C", 0, "!a half byte is no digit"},
    {"PACKED", "\x12\x34\x56", 0, "!the last half byte is no sign"},
    {"PACKED", "\x12\x34\x56\x78\x90\x12\x34\x56\x78\x90\x12\x34\x56\x78\x90\x1D", 4,
     "-123456789012345678901234567.8901"},
    {"PACKED", "\x99\x99\x99\x99\x99\x99\x99\x99\x99\x9C", 0, "9999999999999999999"},
    {"PACKED-U", "\x01\x2F", 0, "12"},
    {"PACKED-U", "\x01\x2D", 0, "!it is negative, and its type has no sign"},
    {"PACKED-NS", "\x12\x34", 1, "123.4"},
    {"PACKED-NS", "\x12\x3C", 0, "!a half byte is no digit"},
    {"INTEGER-1", "\xFF", 0, "-1"},
    {"INTEGER-1", "\x80", 0, "-128"},
    {"INTEGER-2", "\x01\x02", 0, "513"},
    {"INTEGER-2-BE", "\x01\x02", 0, "258"},
    {"INTEGER-2-BE", "\xFF\xFE", 2, "-0.02"},
    {"INTEGER-3", "\xFE\xFF\xFF", 0, "-2"},
    {"INTEGER-4", "\x15\xCD\x5B\x07", 4, "12345.6789"},
    {"INTEGER-3", "\x01\x02\x03", 0, "197121"},
    {"INTEGER-3-BE", "\x01\x02\x03", 0, "66051"},
    {"INTEGER-4-BE", "\xFF\xFF\xFF\x85", 0, "-123"},
    {"INTEGER-5", "\x01\x00\x00\x00\x01"s, 0, "4294967297"},
    {"INTEGER-6", "\x00\x00\x00\x00\x00\x80"s, 0, "-140737488355328"},
    {"INTEGER-6-BE", "\x00\x01\x00\x00\x00\x00"s, 3, "4294967.296"},
    {"INTEGER-7", "\xFF\xFF\xFF\xFF\xFF\xFF\x7F", 0, "36028797018963967"},
    {"INTEGER-7-BE", "\x80\x00\x00\x00\x00\x00\x00"s, 0, "-36028797018963968"},
    {"INTEGER-5-BE", "\xFF\xFF\xFF\xFF\x00"s, 0, "-256"},
    {"INTEGER-8", "\x00\x00\x00\x00\x00\x00\x00\x80"s, 0, "-9223372036854775808"},
    {"INTEGER-8-BE", "\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 0, "9223372036854775807"},
    {"INTEGER-2", "\x00\x80"s, 0, "-32768"},
    {"INTEGER-2", "\xFF\x7F", 0, "32767"},
    {"INTEGER-3", "\x00\x00\x80"s, 0, "-8388608"},
    {"INTEGER-3", "\xFF\xFF\x7F", 0, "8388607"},
    {"INTEGER-4", "\x00\x00\x00\x80"s, 0, "-2147483648"},
    {"INTEGER-4", "\xFF\xFF\xFF\x7F", 0, "2147483647"},
    {"INTEGER-5", "\x00\x00\x00\x00\x80"s, 0, "-549755813888"},
    {"INTEGER-5", "\xFF\xFF\xFF\xFF\x7F", 0, "549755813887"},
    {"INTEGER-6", "\xFF\xFF\xFF\xFF\xFF\x7F", 0, "140737488355327"},
    {"INTEGER-7", "\x00\x00\x00\x00\x00\x00\x80"s, 0, "-36028797018963968"},
    {"INTEGER-2-BE", "\x80\x00"s, 0, "-32768"},
    {"INTEGER-2-BE", "\x7F\xFF", 0, "32767"},
    {"INTEGER-3-BE", "\x80\x00\x00"s, 0, "-8388608"},
    {"INTEGER-3-BE", "\x7F\xFF\xFF", 0, "8388607"},
    {"INTEGER-4-BE", "\x80\x00\x00\x00"s, 0, "-2147483648"},
    {"INTEGER-4-BE", "\x7F\xFF\xFF\xFF", 0, "2147483647"},
    {"INTEGER-5-BE", "\x80\x00\x00\x00\x00"s, 0, "-549755813888"},
    {"INTEGER-5-BE", "\x7F\xFF\xFF\xFF\xFF", 0, "549755813887"},
    {"INTEGER-6-BE", "\x80\x00\x00\x00\x00\x00"s, 0, "-140737488355328"},
    {"INTEGER-6-BE", "\x7F\xFF\xFF\xFF\xFF\xFF", 0, "140737488355327"},
    {"UNSIGNED-1", "\xFF", 0, "255"},
    {"UNSIGNED-2", "\xFF\xFF", 0, "65535"},
    {"UNSIGNED-2-BE", "\xFF\x00"s, 1, "6528.0"},
    {"UNSIGNED-3", "\x00\x00\xFF"s, 0, "16711680"},
    {"UNSIGNED-4", "\xFF\xFF\xFF\xFF", 0, "4294967295"},
    {"UNSIGNED-4-BE", "\x80\x00\x00\x00"s, 0, "2147483648"},
    {"UNSIGNED-5", "\x00\x00\x00\x00\xFF"s, 0, "1095216660480"},
    {"UNSIGNED-5-BE", "\xFF\x00\x00\x00\x00"s, 0, "1095216660480"},
    {"UNSIGNED-6", "\xFF\xFF\xFF\xFF\xFF\xFF", 0, "281474976710655"},
    {"UNSIGNED-6-BE", "\x00\x00\x00\x00\x01\x00"s, 0, "256"},
    {"UNSIGNED-7", "\x00\x00\x00\x00\x00\x00\x80"s, 0, "36028797018963968"},
    {"UNSIGNED-7-BE", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 2, "720575940379279.35"},
    {"UNSIGNED-3-BE", "\x01\x00\x00"s, 0, "65536"},
    {"UNSIGNED-8", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 0, "18446744073709551615"},
    {"UNSIGNED-8-BE", "\x80\x00\x00\x00\x00\x00\x00\x00"s, 2, "92233720368547758.08"},
};

struct RealCase {
    const char* type;
    std::string bytes;
    const char* real;
};

const RealCase reals[] = {
    {"FLOAT-4", "\xCD\xCC\xCC\x3D", "0.10000000000000001"},
    {"FLOAT-4-BE", "\xC1\x48\x00\x00"s, "-12.5"},
    {"FLOAT-4", "\x00\x00\x80\x7F"s, "!they are no floating point number"},
    {"FLOAT-8", "\x9A\x99\x99\x99\x99\x99\xB9\x3F", "0.10000000000000001"},
    {"FLOAT-8-BE", "\x40\x09\x21\xFB\x54\x44\x2D\x18", "3.1415926535897931"},
    {"FLOAT-8-BE", "\x7F\xF8\x00\x00\x00\x00\x00\x00"s, "!they are no floating point number"},
    {"F-FLOAT", "\x80\x40\x00\x00"s, "1"},
    {"F-FLOAT", "\x48\xC2\x00\x00"s, "-12.5"},
    {"F-FLOAT", "\x00\x00\x00\x00"s, "0"},
    {"F-FLOAT", "\x00\x80\x00\x00"s, "!they are no floating point number"},
    {"D-FLOAT", "\x80\x40\x00\x00\x00\x00\x00\x00"s, "1"},
    {"D-FLOAT", "\x49\x41\xDA\x0F\x21\xA2\xC2\x68", "3.1415926535897931"},
    {"G-FLOAT", "\x10\x40\x00\x00\x00\x00\x00\x00"s, "1"},
    {"G-FLOAT", "\x18\xC0\x00\x00\x00\x00\x00\x00"s, "-1.5"},
    {"FLOAT-4", "\x00\x00\x00\x80"s, "0"},
    {"FLOAT-4", "\x01\x00\x00\x00"s, "9.9999999999999998e-46"},
    {"FLOAT-8-BE", "\x80\x00\x00\x00\x00\x00\x00\x00"s, "0"},
    {"F-FLOAT", "\xFF\x7F\xFF\xFF", "1.7014117e+38"},
    {"F-FLOAT", "\x80\x00\x00\x00"s, "2.9387360000000002e-39"},
    {"D-FLOAT", "\xFF\x7F\xFF\xFF\xFF\xFF\xFF\xFF", "1.7014118346046923e+38"},
    {"D-FLOAT", "\x80\x00\x00\x00\x00\x00\x00\x00"s, "2.9387358770557188e-39"},
    {"G-FLOAT", "\xFF\x7F\xFF\xFF\xFF\xFF\xFF\xFF", "8.9884656743115785e+307"},
    {"G-FLOAT", "\x10\x00\x00\x00\x00\x00\x00\x00"s, "5.5626846462680035e-309"},
    {"HEX-FLOAT-4", "\x80\x00\x00\x00"s, "0"},
    {"HEX-FLOAT-4", "\x7F\xFF\xFF\xFF", "7.2370051459731155e+75"},
    {"HEX-FLOAT-4", "\x00\x10\x00\x00"s, "5.3976053469340279e-79"},
    {"HEX-FLOAT-8", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", "-7.2370055773322622e+75"},
    {"HEX-FLOAT-8", "\x00\x00\x00\x00\x00\x00\x00\x01"s, "1.1985091468012028e-94"},
    {"HEX-FLOAT-4", "\x41\x10\x00\x00"s, "1"},
    {"HEX-FLOAT-4", "\xC2\x76\xA0\x00"s, "-118.625"},
    {"HEX-FLOAT-8", "\x40\x19\x99\x99\x99\x99\x99\x9A", "0.10000000000000001"},
};

struct TextCase {
    const char* type;
    std::string bytes;
    const char* format;
    Shown shown;
    const char* text;
    const char* page = "ISO-8859-1";
};

const TextCase texts[] = {
    {"STRING", "Harry   ", "", Shown::Text, "Harry"},
    {"STRING", "        ", "", Shown::Text, ""},
    {"STRING", "J\xFCrgen", "", Shown::Text, "Jürgen"},
    {"STRING", "J\xC3\xBCrgen", "", Shown::Text, "Jürgen", "UTF-8"},
    {"STRING", "J\xFCrgen", "", Shown::Text, "!they are no characters of the file's code page", "UTF-8"},
    {"STRING", "J\xFCrgen", "", Shown::Text, "!they are no characters of the file's code page", "ASCII"},
    {"STRING", "\xC8\x81\x99\x99\xA8\x40\x40", "", Shown::Text, "Harry", "EBCDIC-037"},
    {"STRING", "\xAD\xBD", "", Shown::Text, "[]", "EBCDIC-1047"},
    {"STRING", "\xBA\xBB", "", Shown::Text, "[]", "EBCDIC-037"},
    {"STRING", "\x93\xFA\x96\x7B", "", Shown::Text, "日本", "SHIFT-JIS"},
    {"STRING", " 12.50 ", "", Shown::Real, "12.5"},
    {"STRING", "  -7", "", Shown::Integer, "-7"},
    {"STRING", "seven", "", Shown::Integer, "!a character is no digit"},
    {"STRING", "    ", "", Shown::Integer, "~"},
    {"STRING-COUNTED",
     "\x03\x00"
     "abcdef"s,
     "", Shown::Text, "abc"},
    {"STRING-COUNTED",
     "\x09\x00"
     "abcdef"s,
     "", Shown::Text, "!the count is beyond the field's end"},
    {"STRING-ZERO", "abc\0def"s, "", Shown::Text, "abc"},
    {"STRING-ZERO", "abcdef", "", Shown::Text, "abcdef"},
    {"STRING-EBCDIC", "\xC8\x81\x40", "", Shown::Text, "Ha"},
    {"STRING-UTF16", "\x3D\xD8\x00\xDE \x00"s, "", Shown::Text, "\U0001F600"},
    {"STRING-UTF16", "\x3D\xD8 \x00"s, "", Shown::Text, "!they are no characters of the file's code page"},
    {"HEXADECIMAL", "\x0A\xFF", "", Shown::Text, "0AFF"},
    {"BINARY-STRING", "\x0A\xFF", "", Shown::Bytes, "\x0A\xFF"},
    {"BOOLEAN", "\0"s, "", Shown::Bit, "0"},
    {"BOOLEAN", "Y", "", Shown::Bit, "1"},
    {"BOOLEAN", "\0\x01"s, "", Shown::Bit, "1"},
    {"STRING", "J\xFCrg  ", "", Shown::Bytes, "J\xFCrg  "},
    {"STRING-EBCDIC", "\xC8\x40", "", Shown::Bytes, "\xC8\x40"},
    {"STRING-COUNTED", "\x02\x00\xFC\xFD."s, "", Shown::Bytes, "\xFC\xFD"},
    {"STRING-ZERO", "\xFC\0."s, "", Shown::Bytes, "\xFC"},
    {"PACKED", "\x1C", "", Shown::Bytes, "\x1C"},
    {"STRING", "123456789012345678901.5", "", Shown::Decimal, "123456789012345678901.5"},
    {"FLOAT-4-BE", "\x3F\xC0\x00\x00"s, "", Shown::Integer, "!it has digits behind the point, and its column has none"},
    {"FLOAT-4-BE", "\x7F\x00\x00\x00"s, "", Shown::Integer, "!the number is too large for its column"},
    {"FLOAT-4-BE", "\xC0\x00\x00\x00"s, "", Shown::Integer, "-2"},
    {"DATE", "1998-12-31", "", Shown::Date, "1998-12-31"},
    {"DATE", "31.12.1998", "DD.MM.YYYY", Shown::Date, "1998-12-31"},
    {"DATE", "31-Dec-98", "DD-MMM-YY", Shown::Date, "1998-12-31"},
    {"DATE", "311249", "DDMMYY", Shown::Date, "2049-12-31"},
    {"DATE", "311250", "DDMMYY", Shown::Date, "1950-12-31"},
    {"DATE", "1998-12-31 ", "YYYY-MM-DD ", Shown::Date, "1998-12-31"},
    {"DATE", "1998 12 ", "YYYY MM ", Shown::Date, "1998-12-01"},
    {"DATE", "1998 12x", "YYYY MM ", Shown::Date,
     "!they do not follow the field's format, or there is no such day or time"},
    {"DATE", "          ", "YYYY-MM-DD", Shown::Date, "~"},
    {"DATE", "0000-00-00", "YYYY-MM-DD", Shown::Date, "~"},
    {"DATE", "1999-02-29", "YYYY-MM-DD", Shown::Date,
     "!they do not follow the field's format, or there is no such day or time"},
    {"DATE", "1999/02/28", "YYYY-MM-DD", Shown::Date,
     "!they do not follow the field's format, or there is no such day or time"},
    {"DATE", "\xF1\xF9\xF9\xF8\x60\xF1\xF2\x60\xF3\xF1", "", Shown::Date, "1998-12-31", "EBCDIC-037"},
    {"DATE-YYYYMMDD", "20000229", "", Shown::Date, "2000-02-29"},
    {"DATE-YYYYMMDD", "00000000", "", Shown::Date, "~"},
    {"DATE-YYMMDD", "000101", "", Shown::Date, "2000-01-01"},
    {"TIME", "23:59:59", "", Shown::Time, "23:59:59"},
    {"TIME", "23.59", "hh.mm", Shown::Time, "23:59:00"},
    {"TIME", "00:00:00", "", Shown::Time, "00:00:00"},
    {"TIME", "24:00:00", "", Shown::Time, "!they do not follow the field's format, or there is no such day or time"},
    {"TIME", "12595907", "hhmmsscc", Shown::Time, "12:59:59"},
    {"TIME-HHMMSS", "070809", "", Shown::Time, "07:08:09"},
    {"TIMESTAMP", "1998-12-31 23:59:58", "", Shown::Timestamp, "1998-12-31 23:59:58"},
    {"TIMESTAMP-8", "\x00\x40\xEB\x4B\x67\x95\x7C\x00"s, "", Shown::Timestamp, "1970-01-01 00:00:00"},
    {"TIMESTAMP-8", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", "", Shown::Timestamp, "!it is a span of time and no moment"},
    {"SECONDS-4", "\x80\x51\x01\x00"s, "", Shown::Timestamp, "1970-01-02 00:00:00"},
    {"SECONDS-4", "\xFF\xFF\xFF\xFF", "", Shown::Timestamp, "1969-12-31 23:59:59"},
    {"SECONDS-4", "\xFF\xFF\xFF\xFF\x00"s, "", Shown::Timestamp, "2106-02-07 06:28:15"},
    {"SECONDS-4", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F", "", Shown::Timestamp,
     "!it is beyond the years that a date can show"},
    {"SECONDS-4", std::string(9, '\0'), "", Shown::Timestamp, "!the number is too large for its column"},
    {"TIMESTAMP-8", "\x01", "", Shown::Timestamp, "!the field is not of 8 bytes"},
    {"STRING-COUNTED", "\x05\x00\x31\x32   "s, "", Shown::Integer, "12"},
    {"STRING-ZERO", " 12.5  \0x"s, "", Shown::Real, "12.5"},
    {"DATE", std::string(10, '\0'), "", Shown::Date, "~"},
    {"DATE", std::string(10, '\0'), "", Shown::Date, "~", "EBCDIC-037"},
    {"DATE", "", "", Shown::Date, "~"},
    {"DATE", std::string(10, '\xFF'), "", Shown::Date,
     "!they do not follow the field's format, or there is no such day or time"},
    {"DATE-YYYYMMDD", std::string(8, '9'), "", Shown::Date,
     "!they do not follow the field's format, or there is no such day or time"},
    {"DATE", "02/29", "MM/DD", Shown::Date, "!the field's format has no year"},
    {"DATE", "02/29", "MM/DD", Shown::Text, "02/29"},
    {"DATE", "02/29 12:30", "MM/DD hh:mm", Shown::Time, "12:30:00"},
    {"DATE", "02/30 12:30", "MM/DD hh:mm", Shown::Time,
     "!they do not follow the field's format, or there is no such day or time"},
    {"DATE", "1998-12-31", "", Shown::Time, "!the field's format has no time"},
    {"TIME", "23:59:59", "", Shown::Date, "!the field's format has no year"},
    {"TIME", "23:59:59", "", Shown::Timestamp, "!the field's format has no year"},
    {"TIMESTAMP", "1998-12-31 23:59:58", "", Shown::Date, "1998-12-31"},
    {"TIMESTAMP", "1998-12-31 23:59:58", "", Shown::Time, "23:59:58"},
    {"TIMESTAMP", "1998123123595907", "YYYYMMDDhhmmsscc", Shown::Timestamp, "1998-12-31 23:59:59.07"},
    {"TIMESTAMP-8", "\x80\x8F\xFD\x4B\x67\x95\x7C\x00"s, "", Shown::Timestamp, "1970-01-01 00:00:00.12"},
    {"TIMESTAMP-8", std::string(8, '\0'), "", Shown::Timestamp, "1858-11-17 00:00:00"},
    {"SECONDS-4", std::string(4, '\0'), "", Shown::Timestamp, "1970-01-01 00:00:00"},
    {"STRING", "1998", "", Shown::Date, "!the field has no format"},
    {"BINARY-STRING", "1998", "", Shown::Integer, "!bytes are no number and no date"},
    {"SECONDS-4", std::string(4, '\0'), "", Shown::Integer, "!a date is no number"},
    {"FLOAT-4", std::string(4, '\0'), "YYYY", Shown::Date, "!a floating point number is no date and no bit"},
    {"FLOAT-8-BE", "\x3F\xB9\x99\x99\x99\x99\x99\x9A", "", Shown::Text, "0.1"},
    {"ZONED-U", "19981231", "YYYYMMDD", Shown::Date, "1998-12-31"},
    {"PACKED", "\x00\x10\x20\x3C"s, "YYMMDD", Shown::Date, "2001-02-03"},
    {"PACKED", "\x01\x99\x90\x10\x1D", "YYYYMMDD", Shown::Date, "!it is negative, and no date is"},
    {"PACKED", "\x00\x00\x0D"s, "YYYYMMDD", Shown::Date, "~"},
};

} // namespace

TEST(FieldDecoder, NumbersOfEveryTypeComeWithTheirSignAndScale)
{
    for (const NumberCase& number : numbers) {
        const Field field = MakeField(number.type, number.bytes.size(), number.scale);
        EXPECT_EQ(Shows(field, Shown::Decimal, number.bytes, number.page), number.decimal)
            << number.type << " " << number.decimal;
    }
}

TEST(FieldDecoder, AFormThatCannotHoldANumberRefusesIt)
{
    const Field large = MakeField("UNSIGNED-8", 8);
    EXPECT_EQ(Shows(large, Shown::Integer, std::string(8, '\xFF')), "!the number is too large for its column");
    const Field least = MakeField("INTEGER-8-BE", 8);
    EXPECT_EQ(Shows(least, Shown::Integer, "\x80\0\0\0\0\0\0\0"s), "-9223372036854775808");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 4, 2), Shown::Integer, "1200"), "12");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 4, 2), Shown::Integer, "1250"),
              "!it has digits behind the point, and its column has none");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 18, -3), Shown::Integer, "999999999999999999"),
              "!the number is too large for its column");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 4, -3), Shown::Integer, "0012"), "12000");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 38, -1), Shown::Integer, "68056473384187692692674921486353642292"),
              "!the number is too large for its column")
        << "ten times this is 0 in 128 bits, and a little more";
    EXPECT_EQ(Shows(MakeField("ZONED-U", 8, 2, "YYYYMMDD"), Shown::Date, "19990101"),
              "!it has a scale, and no date has");
}

TEST(FieldDecoder, AColumnsLimitsHoldForItsNumbers)
{
    const auto shows = [](const char* type, const std::string& bytes, IntegerLimits limits) {
        const FieldDecoder decoder(MakeField(type, bytes.size()), Shown::Integer, CodePage::Utf8(), limits);
        Value value;
        std::string room;
        const char* const reason = decoder.Decode(bytes, value, room);
        return reason ? std::string(reason) : std::to_string(value.integer);
    };
    EXPECT_EQ(shows("NUMERIC", "  -128", {-128, 127}), "-128");
    EXPECT_EQ(shows("NUMERIC", "  -129", {-128, 127}), "the number is too large for its column");
    EXPECT_EQ(shows("NUMERIC", "   128", {-128, 127}), "the number is too large for its column");
    EXPECT_EQ(shows("FLOAT-4-BE", "\x43\x00\x00\x00"s, {-128, 127}), "the number is too large for its column");
    EXPECT_EQ(shows("FLOAT-4-BE", "\x42\xFE\x00\x00"s, {-128, 127}), "127");
}

TEST(FieldDecoder, AFloatingPointNumberIsTheNearestToTheDecimal)
{
    EXPECT_EQ(Shows(MakeField("PACKED", 8, 2), Shown::Real, "\x01\x23\x45\x67\x89\x01\x23\x4D"), "-123456789012.34");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 1, 1), Shown::Real, "1"), "0.10000000000000001");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 31, 30), Shown::Real, "1000000000000000000000000000001"), "1");
    EXPECT_EQ(Shows(MakeField("ZONED-U", 3, -30), Shown::Real, "001"), "1e+30");
}

TEST(FieldDecoder, FloatingPointNumbersOfEveryMachineAreRead)
{
    for (const RealCase& number : reals)
        EXPECT_EQ(Shows(MakeField(number.type, number.bytes.size()), Shown::Real, number.bytes), number.real)
            << number.type;
}

TEST(FieldDecoder, TextsDatesAndBytesComeAsTheirColumnsShowThem)
{
    for (const TextCase& text : texts) {
        const Field field = MakeField(text.type, text.bytes.size(), 0, text.format);
        EXPECT_EQ(Shows(field, text.shown, text.bytes, text.page), text.text) << text.type << " " << text.text;
    }
}

TEST(FieldDecoder, PlainTextIsNotCopied)
{
    const std::string bytes = "Harry     ";
    const FieldDecoder decoder(MakeField("STRING", bytes.size()), Shown::Text, CodePage::Utf8());
    Value value;
    std::string room;
    ASSERT_EQ(decoder.Decode(bytes, value, room), nullptr);
    EXPECT_EQ(value.text.data(), bytes.data());
}

TEST(FieldDecoder, ASignInAPlaceOfItsOwnIsNoDigit)
{
    const std::pair<const char*, std::size_t> digits[] = {{"ZONED", 16},    {"ZONED-U", 16}, {"NUMERIC", 16},
                                                          {"ZONED-LO", 16}, {"ZONED-S", 15}, {"ZONED-LS", 15}};
    for (const auto& [type, count] : digits)
        EXPECT_EQ(DigitsOf(MakeField(type, 16)), count) << type;
}

TEST(FieldDecoder, WhatNoBytesCanBeIsKnownBeforeAnyAreRead)
{
    const auto problem = [](const Field& field, Shown shown) {
        const char* const text = FieldDecoder(field, shown, CodePage::Utf8()).Problem();
        return std::string(text ? text : "none");
    };
    EXPECT_EQ(problem(MakeField("TIME", 8), Shown::Date), "the field's format has no year");
    EXPECT_EQ(problem(MakeField("STRING", 8), Shown::Date), "the field has no format");
    EXPECT_EQ(problem(MakeField("TIME", 8), Shown::Time), "none");
    EXPECT_EQ(problem(MakeField("FLOAT-4", 4), Shown::Bytes), "none");
    EXPECT_EQ(problem(MakeField("ZONED", 4), Shown::Text), "none");
    Field unknown = MakeField("ZONED", 4);
    unknown.type.kind = StorageType::Kind::Unknown;
    for (const Shown shown : {Shown::Text, Shown::Bytes})
        EXPECT_EQ(problem(unknown, shown), "the storage type is not known");
}

TEST(FieldDecoder, AnEncryptedFieldIsRefused)
{
    Field field = MakeField("STRING", 4);
    field.isEncrypted = true;
    EXPECT_EQ(Shows(field, Shown::Text, "abcd"), "!the field is encrypted, and there is no key to read it");
}

TEST(FieldDecoder, EveryTypeOfTheCatalogIsHeldToKnownBytes)
{
    std::set<std::string> held;
    for (const NumberCase& number : numbers)
        held.insert(number.type);
    for (const RealCase& number : reals)
        held.insert(number.type);
    for (const TextCase& text : texts)
        held.insert(text.type);
    for (const LocalTypes::Row& row : LocalTypes::All())
        EXPECT_EQ(held.count(row.name), 1u) << row.name;
}

TEST(FieldDecoder, EveryTypeOfTheCatalogIsKnown)
{
    EXPECT_GE(LocalTypes::All().size(), 60u);
    for (const LocalTypes::Row& row : LocalTypes::All())
        EXPECT_NE(StorageType::Read(row.name, row.sqlType, row.attributes).kind, StorageType::Kind::Unknown)
            << row.name;
    const StorageType unknown = StorageType::Read("X", "VARCHAR", "SOMETHING;LENGTH=4");
    EXPECT_EQ(unknown.kind, StorageType::Kind::Unknown);
}

TEST(FieldDecoder, RandomBytesAreAValueOrARefusalInEveryForm)
{
    std::mt19937 random(20181031);
    std::string room;
    for (const LocalTypes::Row& row : LocalTypes::All())
        for (const Shown shown : {Shown::Integer, Shown::Real, Shown::Decimal, Shown::Text, Shown::Bytes, Shown::Bit,
                                  Shown::Date, Shown::Time, Shown::Timestamp})
            for (const char* page : {"UTF-8", "EBCDIC-1047", "SHIFT-JIS"}) {
                const int scale = static_cast<int>(random() % 70) - 32;
                const FieldDecoder decoder(MakeField(row.name, 1, scale, random() % 2 == 0 ? "YYYYMMDD" : ""), shown,
                                           CodePage::Find(page));
                for (int i = 0; i < 60; ++i) {
                    std::string bytes(random() % 45, '\0');
                    for (char& byte : bytes)
                        byte = static_cast<char>(random() % 3 == 0 ? '0' + random() % 10 : random());
                    Value value;
                    const char* const reason = decoder.Decode(bytes, value, room);
                    EXPECT_TRUE(reason || LiesIn(bytes, value.text) || LiesIn(room, value.text));
                }
            }
}
