#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>

/// Conversions between text and numbers that hold everywhere in the program. Digits are ASCII digits only.
namespace conversions
{

/// The leading number of a text, exponent included; 0 where none stands. Blanks, tabs and line breaks are left out
/// wherever they stand. Raises 6 for a number beyond the range of a double.
double Val(QStringView text);

/// True for a sign, digits with at most one point, and an exponent, of which only a digit before the exponent must be
/// there, with blanks or tabs around them and nothing else.
bool IsNumeric(QStringView text);

/// The number rounded half to even as a 16-bit integer. Raises 6 out of range, 13 where the text is no number.
std::int16_t ToInteger(QStringView text);
std::int16_t ToInteger(double number);

/// The same as a 32-bit integer.
std::int32_t ToLong(QStringView text);
std::int32_t ToLong(double number);

} // namespace conversions
