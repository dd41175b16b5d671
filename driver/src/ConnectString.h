#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnwick
{

/// The attributes of an ODBC connect string, `KEY=value;KEY={value with ; in it};...`. Keys compare without regard to
/// case, the first of two equal keys counts, and a brace inside a braced value is doubled, as SQLDriverConnect has it.
class ConnectString
{
public:
    explicit ConnectString(std::string_view text);

    /// The value of a key without its braces; nothing if the key is not there.
    std::optional<std::string> Value(std::string_view key) const;

private:
    std::vector<std::pair<std::string, std::string>> m_attributes;
};

} // namespace tarnwick
