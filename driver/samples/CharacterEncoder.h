#pragma once

#include "CodePage.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace tarnwick::samples
{

/// Writes text in the characters of a data file: UTF-8, UTF-16, or any code page with a byte for each character, which
/// is asked what its bytes mean.
class CharacterEncoder
{
public:
    /// `page` may be null for UTF-16, low byte first.
    explicit CharacterEncoder(const std::shared_ptr<const records::CodePage>& page);

    /// Throws EncodingError for a character that the page does not have.
    std::string Encode(std::string_view utf8) const;

private:
    enum class Way { Utf8, Utf16, Table };

    Way m_way;
    std::map<std::string, char, std::less<>> m_table;
};

} // namespace tarnwick::samples
