#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>

/// Conversions between text and numbers that hold everywhere in the program. Digits are ASCII digits only.
namespace conversions {

/// The leading number of a text, exponent included, blanks left out; 0 where none stands.
double Val(QStringView text);

/// True for optional blanks, a sign, digits with at most one point and an exponent, and nothing else.
bool IsNumeric(QStringView text);

/// The number rounded half to even as a 16-bit integer. Raises 6 out of range, 13 where the text is no number.
std::int16_t ToInteger(QStringView text);
std::int16_t ToInteger(double number);

/// The same as a 32-bit integer.
std::int32_t ToLong(QStringView text);
std::int32_t ToLong(double number);

} // namespace conversions
