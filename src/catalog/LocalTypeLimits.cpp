#include "LocalTypeLimits.h"

#include "Conversions.h"
#include "modString.h"

#include <array>

namespace
{

constexpr std::int32_t LargestLength = 65535;
constexpr std::int32_t LargestScale = 32;

std::int32_t orElse(std::int32_t number, std::int32_t otherwise)
{
    return number != 0 ? number : otherwise;
}

LocalTypeLimits::Range fixedAt(std::int32_t number)
{
    return {number, number, number, false};
}

LocalTypeLimits::Range lengthOf(const QString& wrapped)
{
    const std::int32_t preset = NumberAttr(";DEFAULT_LENGTH=", wrapped);
    if (preset == 0)
        return fixedAt(NumberAttr(";LENGTH=", wrapped));
    return {preset, orElse(NumberAttr(";MIN_LENGTH=", wrapped), 1),
            orElse(NumberAttr(";MAX_LENGTH=", wrapped), LargestLength), true};
}

LocalTypeLimits::Range precisionOf(const QString& wrapped, const LocalTypeLimits::Range& length, int stringPosition)
{
    const std::int32_t marker = NumberAttr(";DEFAULT_PRECISION=", wrapped);
    if (marker == 0)
        return fixedAt(orElse(NumberAttr(";PRECISION=", wrapped), length.preset));

    const bool packed = wrapped.startsWith(";PACKED");
    LocalTypeLimits::Range range{marker, length.minimum, length.maximum, true};
    if (wrapped.startsWith(";BINARY")) {
        const bool string = QStringView(wrapped).mid(stringPosition - 1, 7) == u"STRING;";
        if (wrapped.contains(";INTEGER;"))
            range.preset = orElse(decimalDigits(length.preset, wrapped.contains(";UNSIGNED;")), marker);
        else if (string)
            range.preset = 2 * length.preset;
        range.editable = !string;
    } else {
        range.preset = packed ? 2 * length.preset : length.preset;
    }
    if (packed) {
        // Two digits a byte; the half byte of the sign can carry one more.
        range.minimum = 2 * length.preset;
        range.maximum = range.minimum + 1;
    }
    return range;
}

LocalTypeLimits::Range scaleOf(const QString& wrapped)
{
    if (modString::ExtractAttr(";DEFAULT_SCALE=", wrapped).isEmpty())
        return fixedAt(NumberAttr(";SCALE=", wrapped));
    return {NumberAttr(";DEFAULT_SCALE=", wrapped), orElse(NumberAttr(";MIN_SCALE=", wrapped), -LargestScale),
            orElse(NumberAttr(";MAX_SCALE=", wrapped), LargestScale), true};
}

} // namespace

LocalTypeLimits LocalTypeLimits::of(const QString& wrapped, int stringPosition)
{
    LocalTypeLimits limits;
    limits.Length = lengthOf(wrapped);
    limits.Precision = precisionOf(wrapped, limits.Length, stringPosition);
    limits.Scale = scaleOf(wrapped);

    limits.Format = modString::ExtractAttr(";DEFAULT_FORMAT=", wrapped);
    if (limits.Format.isEmpty())
        limits.Format = modString::ExtractAttr(";FORMAT=", wrapped);
    else
        limits.FormatEditable = !wrapped.contains(";LENGTH=");
    return limits;
}

std::int32_t NumberAttr(const QString& key, const QString& attributes)
{
    return conversions::ToLong(conversions::Val('0' + modString::ExtractAttr(key, attributes)));
}

std::int32_t decimalDigits(std::int32_t bytes, bool isUnsigned)
{
    static constexpr std::array<std::int32_t, 8> unsignedDigits{3, 5, 8, 10, 13, 15, 17, 20};
    static constexpr std::array<std::int32_t, 8> signedDigits{3, 5, 7, 10, 12, 15, 17, 19};
    if (bytes < 1 || bytes > 8)
        return 0;
    return (isUnsigned ? unsignedDigits : signedDigits)[static_cast<std::size_t>(bytes - 1)];
}
