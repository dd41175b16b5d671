#pragma once

#include <sql.h>
#include <sqlucode.h>

#include <optional>
#include <string>
#include <string_view>

/// Text as it crosses the ODBC border. Inside the driver, and below it, all text is UTF-8; wide text is UTF-16 in
/// `SQLWCHAR` units, so a character beyond the basic plane is a pair of them.
namespace tarnwick
{

static_assert(sizeof(SQLWCHAR) == 2, "wide ODBC text is UTF-16");

/// The text behind a narrow ODBC argument. `length` counts bytes or is `SQL_NTS`; a null pointer gives an empty text.
std::string_view NarrowArgument(const SQLCHAR* text, SQLINTEGER length);

/// The text behind a wide ODBC argument as UTF-8. `length` counts `SQLWCHAR` units or is `SQL_NTS`; a null pointer
/// gives an empty text. Nothing comes back for a surrogate without its other half, which is no character.
std::optional<std::string> WideArgument(const SQLWCHAR* text, SQLINTEGER length);

/// UTF-8 to UTF-16. A byte that belongs to no character becomes U+FFFD.
std::u16string ToUtf16(std::string_view utf8);

/// The same into a buffer of `room` units, without a terminator; gives the units of the whole text, which may be more
/// than were written. A pair may be cut in two at the end, for readers that go on where they stopped.
std::size_t FillUtf16(std::string_view utf8, SQLWCHAR* buffer, std::size_t room);

/// Whether every byte belongs to a well-formed UTF-8 character.
bool IsUtf8(std::string_view text);

/// How much of a text fits a caller's buffer.
enum class Fit { Whole, Cut };

/// Copies a text with its terminator into a caller's buffer of `capacity` bytes; `length` receives the bytes of the
/// whole text. Null pointers are left alone. A character is never cut in two.
Fit PutNarrow(std::string_view text, void* buffer, SQLINTEGER capacity, SQLINTEGER* length);

/// The same in UTF-16: `capacity` and `length` count `SQLWCHAR` units, terminator excluded from `length`.
Fit PutWide(std::string_view text, void* buffer, SQLINTEGER capacity, SQLINTEGER* length);

/// One of the two, for a function whose caller's text is of either width.
using PutText = Fit (*)(std::string_view text, void* buffer, SQLINTEGER capacity, SQLINTEGER* length);

/// ASCII comparison without regard to case, as ODBC keys and SQL keywords are compared.
bool EqualIgnoringCase(std::string_view left, std::string_view right);

/// Whether a text begins so, by the same comparison.
bool StartsWithIgnoringCase(std::string_view text, std::string_view beginning);

/// The text with its ASCII letters in upper case.
std::string InUpperCase(std::string_view text);

/// A name as SQL writes any: in quotes, those inside doubled.
std::string QuotedName(std::string_view name);

/// Appends a byte as two hexadecimal digits.
void AppendHexadecimal(char byte, std::string& text);

} // namespace tarnwick
