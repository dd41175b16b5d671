#include "DataSource.h"

#include "ConnectError.h"
#include "Text.h"

#include <odbcinst.h>

#include <array>
#include <charconv>

namespace tarnwick
{
namespace
{

constexpr long defaultTimeout = 10000;

std::string FromIniFile(const std::string& section, const char* key)
{
    if (section.empty())
        return {};
    std::array<char, 4096> value{};
    const int length =
        SQLGetPrivateProfileString(section.c_str(), key, "", value.data(), static_cast<int>(value.size()), "odbc.ini");
    return length > 0 ? std::string(value.data()) : std::string();
}

long ReadTimeout(const std::string& text)
{
    if (text.empty())
        return defaultTimeout;
    long milliseconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), milliseconds);
    if (error != std::errc() || end != text.data() + text.size() || milliseconds < 0)
        throw ConnectError("The key Timeout must be a number of milliseconds.");
    return milliseconds;
}

bool ReadBadFields(const std::string& text)
{
    if (text.empty() || EqualIgnoringCase(text, "Error"))
        return false;
    if (!EqualIgnoringCase(text, "Null"))
        throw ConnectError("The key BadFields must be Error or Null.");
    return true;
}

} // namespace

std::string DataSource::Value(const ConnectString& text, const std::string& name, const std::string& key)
{
    const auto given = text.Value(key);
    return given ? *given : FromIniFile(name, key.c_str());
}

DataSource DataSource::Read(const ConnectString& text)
{
    DataSource source;
    source.name = text.Value("DSN").value_or("");
    const auto value = [&](const char* key) { return Value(text, source.name, key); };
    source.catalog = value("Catalog");
    source.statementLog = value("StatementLog");
    source.timeout = ReadTimeout(value("Timeout"));
    source.defaultDatabase = value("DefaultDatabase");
    source.user = value("UID");
    source.badFieldsAreNull = ReadBadFields(value("BadFields"));
    return source;
}

} // namespace tarnwick
