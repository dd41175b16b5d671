#pragma once

#include <string>
#include <string_view>

namespace tarnwick
{

/// A file that receives every statement of a connection as it arrives, before anything is changed in it: one line
/// each, with backslash, carriage return and newline written `\\`, `\r` and `\n`. Lines are appended in one write, so
/// several connections and processes can share a file.
class StatementLog
{
public:
    /// Opens the file for appending, readable by its owner alone since statements carry passwords.
    /// Throws ConnectError if it cannot.
    explicit StatementLog(const std::string& path);
    ~StatementLog();
    StatementLog(const StatementLog&) = delete;
    StatementLog& operator=(const StatementLog&) = delete;

    /// False if the line could not be written whole.
    bool Write(std::string_view statement) const;

private:
    int m_file;
};

} // namespace tarnwick
