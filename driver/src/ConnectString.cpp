#include "ConnectString.h"

#include "Text.h"

#include <algorithm>

namespace tarnwick
{
namespace
{

std::string_view Trim(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

/// Takes a braced value off the front of `rest`, up to its closing brace.
std::string TakeBraced(std::string_view& rest)
{
    std::string value;
    std::size_t i = 1;
    for (; i < rest.size(); ++i) {
        if (rest[i] == '}') {
            if (i + 1 >= rest.size() || rest[i + 1] != '}')
                break;
            ++i;
        }
        value += rest[i];
    }
    rest.remove_prefix(std::min(i + 1, rest.size()));
    return value;
}

} // namespace

ConnectString::ConnectString(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t mark = text.find_first_of("=;");
        if (mark == std::string_view::npos)
            return;
        const std::string_view key = Trim(text.substr(0, mark));
        const bool hasValue = text[mark] == '=';
        text.remove_prefix(mark + 1);
        if (!hasValue)
            continue;
        text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
        const bool braced = !text.empty() && text.front() == '{';
        std::string value;
        if (braced)
            value = TakeBraced(text);
        const std::size_t end = std::min(text.find(';'), text.size());
        if (!braced)
            value = Trim(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        m_attributes.emplace_back(key, std::move(value));
    }
}

std::optional<std::string> ConnectString::Value(std::string_view key) const
{
    const auto found = std::find_if(m_attributes.begin(), m_attributes.end(),
                                    [&](const auto& attribute) { return EqualIgnoringCase(attribute.first, key); });
    if (found == m_attributes.end())
        return std::nullopt;
    return found->second;
}

} // namespace tarnwick
