#pragma once

#include <stdexcept>
#include <string>

namespace tarnwick
{

/// Why a data source cannot be opened, in words for the person who set it up.
class ConnectError : public std::runtime_error
{
public:
    explicit ConnectError(const std::string& reason, int native = 0) : std::runtime_error(reason), m_native(native) {}

    /// SQLite's result code, or 0 if the failure is not SQLite's.
    int Native() const { return m_native; }

private:
    int m_native;
};

} // namespace tarnwick
