#include "Conversions.h"

#include "RuntimeError.h"

#include <QVarLengthArray>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace
{

using Characters = QVarLengthArray<char, 64>;

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

bool isLeftOut(QChar c)
{
    return isBlank(c) || c == u'\n' || c == u'\r';
}

/// Walks over a text and copies what belongs to a number; the blanks that Val leaves out are never seen.
class Scanner
{
public:
    explicit Scanner(QStringView text) : m_text(text) { skip(); }

    QChar peek() const { return m_at < m_text.size() ? m_text[m_at] : QChar(); }

    void take()
    {
        m_taken.append(static_cast<char>(m_text[m_at].unicode()));
        pass();
    }

    void pass()
    {
        ++m_at;
        skip();
    }

    int takeDigits()
    {
        int count = 0;
        for (; isDigit(peek()); ++count)
            take();
        return count;
    }

    Characters& taken() { return m_taken; }

private:
    void skip()
    {
        while (m_at < m_text.size() && isLeftOut(m_text[m_at]))
            ++m_at;
    }

    QStringView m_text;
    qsizetype m_at = 0;
    Characters m_taken;
};

/// The characters of the leading number, in the form that std::from_chars reads; empty where no number stands.
Characters leadingNumber(QStringView text)
{
    Scanner scanner(text);
    if (scanner.peek() == u'-')
        scanner.take();
    else if (scanner.peek() == u'+')
        scanner.pass();

    int digits = scanner.takeDigits();
    if (scanner.peek() == u'.') {
        scanner.take();
        digits += scanner.takeDigits();
    }
    if (digits == 0)
        return {};

    if (scanner.peek() == u'e' || scanner.peek() == u'E') {
        const auto mantissa = scanner.taken().size();
        scanner.take();
        if (scanner.peek() == u'-' || scanner.peek() == u'+')
            scanner.take();
        if (scanner.takeDigits() == 0)
            scanner.taken().resize(mantissa);
    }
    return scanner.taken();
}

/// Whether a number that no double holds is too large, and not too small, for one. It is neither zero nor in between,
/// so the place of its first digit tells.
bool isTooLarge(std::string_view number)
{
    const auto mark = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, mark);
    const auto first = static_cast<std::int64_t>(mantissa.find_first_of("123456789"));
    const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
    if (mark == std::string_view::npos)
        return first < point;

    std::string_view digits = number.substr(mark + 1);
    const bool negative = digits.front() == '-';
    if (negative || digits.front() == '+')
        digits.remove_prefix(1);
    std::int64_t exponent = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec != std::errc())
        return !negative;
    return point - first + (negative ? -exponent : exponent) > 0;
}

template <class Integer>
Integer toInteger(double number)
{
    const double rounded = std::nearbyint(number);
    // Written so that a NaN fails as well.
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max()))
        throw RuntimeError(ErrorNumber::Overflow);
    return static_cast<Integer>(rounded);
}

template <class Integer>
Integer toInteger(QStringView text)
{
    if (!conversions::IsNumeric(text))
        throw RuntimeError(ErrorNumber::TypeMismatch);
    return toInteger<Integer>(conversions::Val(text));
}

} // namespace

double conversions::Val(QStringView text)
{
    const Characters number = leadingNumber(text);
    if (number.isEmpty())
        return 0;

    double value = 0;
    const auto result = std::from_chars(number.cbegin(), number.cend(), value);
    if (result.ec == std::errc::result_out_of_range) {
        if (isTooLarge({number.cbegin(), static_cast<std::size_t>(number.size())}))
            throw RuntimeError(ErrorNumber::Overflow);
        value = 0;
    }
    return value;
}

bool conversions::IsNumeric(QStringView text)
{
    qsizetype at = 0;
    qsizetype end = text.size();
    while (at < end && isBlank(text[at]))
        ++at;
    while (end > at && isBlank(text[end - 1]))
        --end;

    const auto isAt = [&](QChar c) { return at < end && text[at] == c; };
    const auto passDigits = [&] {
        const auto start = at;
        while (at < end && isDigit(text[at]))
            ++at;
        return at - start;
    };
    const auto passSign = [&] {
        if (isAt(u'-') || isAt(u'+'))
            ++at;
    };

    passSign();
    auto digits = passDigits();
    if (isAt(u'.')) {
        ++at;
        digits += passDigits();
    }
    if (digits == 0)
        return false;
    if (isAt(u'e') || isAt(u'E')) {
        ++at;
        passSign();
        if (passDigits() == 0)
            return false;
    }
    return at == end;
}

std::int16_t conversions::ToInteger(QStringView text)
{
    return toInteger<std::int16_t>(text);
}

std::int16_t conversions::ToInteger(double number)
{
    return toInteger<std::int16_t>(number);
}

std::int32_t conversions::ToLong(QStringView text)
{
    return toInteger<std::int32_t>(text);
}

std::int32_t conversions::ToLong(double number)
{
    return toInteger<std::int32_t>(number);
}
