#include "StorageType.h"

#include "Text.h"

namespace tarnwick::records
{
namespace
{

/// The items of an `ATTRIBUTES` text.
class Attributes
{
public:
    explicit Attributes(std::string_view text) : m_text(text) {}

    bool Has(std::string_view word) const
    {
        return Find([&](std::string_view item) { return EqualIgnoringCase(item, word); }).has_value();
    }

    std::string Value(std::string_view key) const
    {
        const auto item = Find([&](std::string_view text) {
            return text.size() > key.size() && text[key.size()] == '=' &&
                   EqualIgnoringCase(text.substr(0, key.size()), key);
        });
        return item ? std::string(item->substr(key.size() + 1)) : std::string();
    }

private:
    template <typename Test>
    std::optional<std::string_view> Find(Test test) const
    {
        for (std::string_view rest = m_text; !rest.empty();) {
            const std::string_view item = rest.substr(0, rest.find(';'));
            if (test(item))
                return item;
            rest.remove_prefix(item.size() == rest.size() ? rest.size() : item.size() + 1);
        }
        return std::nullopt;
    }

    std::string_view m_text;
};

using Kind = StorageType::Kind;
using Sign = StorageType::Sign;

bool IsMoment(std::string_view sqlType)
{
    return EqualIgnoringCase(sqlType, "DATE") || EqualIgnoringCase(sqlType, "TIME") ||
           EqualIgnoringCase(sqlType, "TIMESTAMP");
}

Kind TextKind(const Attributes& attributes, std::string_view sqlType)
{
    if (IsMoment(sqlType))
        return Kind::Moment;
    if (attributes.Has("COUNTED"))
        return Kind::CountedText;
    return attributes.Has("ZERO") ? Kind::ZeroText : Kind::Text;
}

Kind BinaryKind(const Attributes& attributes, std::string_view name, std::string_view sqlType)
{
    if (attributes.Has("INTEGER"))
        return Kind::Integer;
    if (attributes.Has("STRING"))
        return EqualIgnoringCase(name, "HEXADECIMAL") ? Kind::Hexadecimal : Kind::Bytes;
    if (EqualIgnoringCase(sqlType, "BIT"))
        return Kind::Boolean;
    if (!EqualIgnoringCase(sqlType, "TIMESTAMP"))
        return Kind::Unknown;
    if (attributes.Value("LENGTH") == "8")
        return Kind::VmsTime;
    return attributes.Value("LENGTH") == "4" ? Kind::UnixTime : Kind::Unknown;
}

Kind FloatKind(const Attributes& attributes)
{
    if (attributes.Has("IEEE"))
        return Kind::IeeeFloat;
    if (attributes.Has("VAX_F"))
        return Kind::VaxF;
    if (attributes.Has("VAX_D"))
        return Kind::VaxD;
    if (attributes.Has("VAX_G"))
        return Kind::VaxG;
    return attributes.Has("BASE16") ? Kind::Base16Float : Kind::Unknown;
}

Sign ZonedSign(const Attributes& attributes)
{
    if (attributes.Has("NOSIGN"))
        return Sign::None;
    const bool separate = attributes.Has("SEPARATE");
    if (attributes.Has("LEADING"))
        return separate ? Sign::LeadingSeparate : Sign::LeadingZone;
    if (attributes.Has("TRAILING"))
        return separate ? Sign::TrailingSeparate : Sign::TrailingZone;
    return Sign::InFront;
}

} // namespace

StorageType StorageType::Read(std::string_view name, std::string_view sqlType, std::string_view text)
{
    const Attributes attributes(text);
    StorageType type;
    type.isUnsigned = attributes.Has("UNSIGNED");
    type.highByteFirst = attributes.Has("BIG_ENDIAN");
    type.ebcdic = attributes.Has("EBCDIC");
    type.utf16 = attributes.Has("UTF16");
    type.format = attributes.Value("FORMAT");
    if (type.format.empty())
        type.format = attributes.Value("DEFAULT_FORMAT");
    if (attributes.Has("CHARACTER")) {
        type.kind = TextKind(attributes, sqlType);
    } else if (attributes.Has("ZONED")) {
        type.kind = Kind::Digits;
        type.sign = ZonedSign(attributes);
    } else if (attributes.Has("PACKED")) {
        type.kind = Kind::Packed;
        type.lastNibbleFree = !attributes.Has("FULL");
        type.sign = attributes.Has("SIGN") ? Sign::LastNibble : Sign::None;
    } else if (attributes.Has("FLOAT")) {
        type.kind = FloatKind(attributes);
    } else if (attributes.Has("BINARY")) {
        type.kind = BinaryKind(attributes, name, sqlType);
    }
    return type;
}

} // namespace tarnwick::records
