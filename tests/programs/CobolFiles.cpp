#include "CobolFiles.h"

#include "Command.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <sstream>
#include <stdexcept>

namespace cobol
{
namespace
{

const std::vector<Field> oneOfEach = {
    {"ID-NO", "ZONED-U", 4},         {"ZONE-SIGNED", "ZONED", 7, 2}, {"LEAD-SEP", "ZONED-LS", 6},
    {"TRAIL-SEP", "ZONED-S", 6},     {"LEAD-OVER", "ZONED-LO", 5},   {"BIN-2", "INTEGER-2-BE", 2},
    {"BIN-4", "INTEGER-4-BE", 4, 2}, {"BIN-8", "INTEGER-8-BE", 8},   {"BIN-U4", "UNSIGNED-4-BE", 4},
    {"NATIVE-2", "UNSIGNED-2", 2},   {"NATIVE-4", "INTEGER-4", 4},   {"NATIVE-8", "INTEGER-8", 8},
    {"PACK-SIGNED", "PACKED", 5, 2}, {"PACK-PLAIN", "PACKED-U", 3},  {"PACK-WIDE", "PACKED", 10, 2},
    {"REAL-4", "FLOAT-4", 4},        {"REAL-4-FAR", "FLOAT-4", 4},   {"REAL-8", "FLOAT-8", 8},
    {"REAL-8-FAR", "FLOAT-8", 8},    {"PHRASE", "STRING", 12},       {"THE-DAY", "DATE-YYYYMMDD", 8},
};

std::string WithoutBlanks(std::string text)
{
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

/// Floating point numbers in the digits that survive a way through text: programs and clients print more or fewer
/// behind them.
std::string RoundedReal(const std::string& cell, const char* format)
{
    std::size_t length = 0;
    const double value = std::stod(cell, &length);
    if (length != cell.size())
        throw std::runtime_error("'" + cell + "' is no number");
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

/// A number without the zeros that end its fraction, and the point before them.
std::string WithoutEndingZeros(std::string number)
{
    if (number.find('.') == std::string::npos)
        return number;
    number.erase(number.find_last_not_of('0') + 1);
    if (number.back() == '.')
        number.pop_back();
    return number;
}

/// A printed number, whose sign may stand in front of it or behind it.
std::string PlainNumber(const std::string& cell)
{
    std::string digits = cell;
    std::string sign;
    if (!digits.empty() && (digits.front() == '+' || digits.front() == '-')) {
        sign = digits.front();
        digits.erase(0, 1);
    } else if (!digits.empty() && (digits.back() == '+' || digits.back() == '-')) {
        sign = digits.back();
        digits.pop_back();
    }
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::string whole = digits.substr(0, point);
    const std::string fraction = point < digits.size() ? digits.substr(point + 1) : "0";
    const auto isNumber = [](const std::string& part) {
        return !part.empty() && part.find_first_not_of("0123456789") == std::string::npos;
    };
    if (!isNumber(whole) || !isNumber(fraction))
        throw std::runtime_error("'" + cell + "' is no number");
    digits.erase(0, std::min(whole.find_first_not_of('0'), whole.size() - 1));
    const std::string number = WithoutEndingZeros(digits);
    return sign == "-" && number != "0" ? "-" + number : number;
}

bool IsReal(const Field& field)
{
    return field.type.starts_with("FLOAT");
}

bool IsText(const Field& field)
{
    return field.type.starts_with("STRING") || field.type.starts_with("DATE");
}

std::string PlainReal(const std::string& cell, const Field& field)
{
    return RoundedReal(cell, field.type == "FLOAT-4" ? "%.7g" : "%.15g");
}

std::string PrintedCell(const std::string& cell, const Field& field)
{
    if (IsReal(field))
        return PlainReal(cell, field);
    return IsText(field) ? WithoutBlanks(cell) : PlainNumber(cell);
}

/// Of exact numbers, clients show as many digits behind the point as they like.
std::string ShownCell(const std::string& cell, const Field& field)
{
    if (IsReal(field))
        return PlainReal(cell, field);
    return IsText(field) ? cell : WithoutEndingZeros(cell);
}

template <typename MakeCell>
Rows ForEachCell(const Rows& rows, const File& file, MakeCell makeCell)
{
    const std::vector<Field> columns = file.Columns();
    Rows made;
    for (const auto& row : rows) {
        if (row.size() != columns.size())
            throw std::runtime_error("A row of " + file.name + " has " + std::to_string(row.size()) + " cells");
        auto& cells = made.emplace_back();
        for (std::size_t i = 0; i < columns.size(); ++i)
            cells.push_back(makeCell(row[i], columns[i]));
    }
    return made;
}

std::string Run(const std::string& name, const std::string& folder, const std::vector<std::string>& options)
{
    const std::string program = folder + "/" + name;
    std::vector<std::string> words = {"cobc", "-x", "-free", "-o", program, COBOL_SOURCES "/" + name + ".cob"};
    words.insert(words.end(), options.begin(), options.end());
    const CommandOutput compiled = RunCommand(words, "");
    if (compiled.exitCode != 0)
        throw std::runtime_error("cobc of the package gnucobol3 is needed. " + compiled.text);
    const CommandOutput ran = RunCommand({"env", "COB_FILE_PATH=" + folder, program}, "");
    if (ran.exitCode != 0)
        throw std::runtime_error(name + " fails. " + ran.text);
    return ran.text;
}

} // namespace

const File sequential = {"SEQ", "SEQUENTIAL", "FIXED", "", oneOfEach};
const File relative = {"REL", "RELATIVE", "FIXED", "SLOT-8", oneOfEach};
const File lines = {"LIN",
                    "SEQUENTIAL",
                    "VARIABLE",
                    "",
                    {{"PLAIN", "ZONED-U", 4},
                     {"ZONE", "ZONED", 7, 2},
                     {"LEAD-SEP", "ZONED-LS", 6},
                     {"TRAIL-SEP", "ZONED-S", 5},
                     {"LEAD-OVER", "ZONED-LO", 5},
                     {"WORDS", "STRING", 20}}};
const File varying = {
    "VAR", "SEQUENTIAL", "VARIABLE", "COUNTED-COBOL", {{"NO", "ZONED-U", 4}, {"WORDS", "STRING", 20}}};
const File others = {"OTH",
                     "SEQUENTIAL",
                     "FIXED",
                     "",
                     {
                         {"PLAIN-PACK", "PACKED-NS", 4}, {"B1", "INTEGER-1", 1},       {"B2", "INTEGER-2-BE", 2},
                         {"B3", "INTEGER-3-BE", 3},      {"B4", "INTEGER-4-BE", 4},    {"B5", "INTEGER-5-BE", 5},
                         {"B6", "INTEGER-6-BE", 6},      {"B7", "INTEGER-7-BE", 7},    {"B8", "INTEGER-8-BE", 8},
                         {"U1", "UNSIGNED-1", 1},        {"U2", "UNSIGNED-2-BE", 2},   {"U3", "UNSIGNED-3-BE", 3},
                         {"U4", "UNSIGNED-4-BE", 4},     {"U5", "UNSIGNED-5-BE", 5},   {"U6", "UNSIGNED-6-BE", 6},
                         {"U7", "UNSIGNED-7-BE", 7},     {"U8", "UNSIGNED-8-BE", 8},   {"N1", "INTEGER-1", 1},
                         {"N3", "INTEGER-3", 3},         {"N5", "INTEGER-5", 5},       {"N6", "INTEGER-6", 6},
                         {"N7", "UNSIGNED-7", 7},        {"C-CHAR", "INTEGER-1", 1},   {"C-SHORT", "UNSIGNED-2", 2},
                         {"C-LONG", "INTEGER-4", 4},     {"C-DOUBLE", "INTEGER-8", 8}, {"OVER-TRAIL", "ZONED-RO", 5, 1},
                         {"OVER-LEAD", "ZONED-LO", 5},   {"EDITED", "NUMERIC", 9, 2},  {"ENDED", "STRING-ZERO", 8},
                     }};

std::string File::DataFile() const
{
    std::string file = name + ".dat";
    std::transform(file.begin(), file.end(), file.begin(), [](unsigned char c) { return std::tolower(c); });
    return file;
}

std::vector<Field> File::Columns() const
{
    std::vector<Field> columns = fields;
    for (Field& column : columns)
        std::replace(column.name.begin(), column.name.end(), '-', '_');
    if (organisation == "RELATIVE")
        columns.insert(columns.begin(), {"RELATIVE_NUMBER", "INTEGER-4"});
    return columns;
}

std::vector<std::string> Definition(const File& file)
{
    std::vector<std::string> statements;
    int offset = 0;
    int number = 0;
    for (const Field& field : file.fields) {
        const std::string length = std::to_string(field.length);
        statements.push_back("INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, "
                             "LENGTH, PRECISION, SCALE) VALUES ('" +
                             file.name + "', " + std::to_string(++number) + ", '" + field.name + "', '" + field.type +
                             "', " + std::to_string(offset) + ", " + length + ", " + length + ", " +
                             std::to_string(field.scale) + ")");
        offset += field.length;
    }
    statements.push_back("INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE) "
                         "VALUES ('" +
                         file.name + "', '" + file.openString + "', " + std::to_string(offset) + ", '" +
                         file.organisation + "', '" + file.recordType + "')");
    return statements;
}

std::string SlotNumber(const std::string& database, const std::string& table)
{
    return "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_TYPE, COLUMN_NAME, SQL_TYPE_NAME, "
           "PRECISION, FIELD_NAME, VISIBLE) VALUES ('" +
           database + "', '" + table + "', 0, 7, 'RELATIVE_NUMBER', 'INTEGER', 10, '', 1)";
}

std::string SelectAll(const File& file, const std::string& sqlName)
{
    std::string columns;
    for (const Field& column : file.Columns())
        columns += (columns.empty() ? "" : ", ") + column.name;
    return "SELECT " + columns + " FROM " + sqlName;
}

std::string RunUsages(const std::string& folder)
{
    return Run("usages", folder, {});
}

std::string RunOthers(const std::string& folder)
{
    return Run("others", folder, {"-fbinary-size=1--8", "-fsign=EBCDIC"});
}

Rows Printed(const std::string& output, const File& file)
{
    std::istringstream printed(output);
    std::string text;
    for (std::string line; std::getline(printed, line);)
        if (line.starts_with(file.name + " "))
            text += line.substr(file.name.size() + 1) + "\n";
    return ForEachCell(Cells(text), file, PrintedCell);
}

Rows Shown(const Rows& cells, const File& file)
{
    return ForEachCell(cells, file, ShownCell);
}

Rows Cells(const std::string& text)
{
    Rows rows;
    std::istringstream all(text);
    for (std::string line; std::getline(all, line);) {
        auto& row = rows.emplace_back();
        // With a mark behind it, a last cell that is empty counts as one too.
        std::istringstream cells(line + "|");
        for (std::string cell; std::getline(cells, cell, '|');)
            row.push_back(cell);
    }
    return rows;
}

} // namespace cobol
