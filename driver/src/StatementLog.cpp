#include "StatementLog.h"

#include "ConnectError.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace tarnwick
{

StatementLog::StatementLog(const std::string& path)
    : m_file(::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600))
{
    if (m_file < 0)
        throw ConnectError("Cannot open the statement log '" + path + "': " + std::strerror(errno));
}

StatementLog::~StatementLog()
{
    ::close(m_file);
}

bool StatementLog::Write(std::string_view statement) const
{
    std::string line;
    line.reserve(statement.size() + 1);
    for (const char c : statement) {
        switch (c) {
        case '\\':
            line += "\\\\";
            break;
        case '\n':
            line += "\\n";
            break;
        case '\r':
            line += "\\r";
            break;
        default:
            line += c;
        }
    }
    line += '\n';
    ssize_t written = 0;
    do
        written = ::write(m_file, line.data(), line.size());
    while (written < 0 && errno == EINTR);
    return written == static_cast<ssize_t>(line.size());
}

} // namespace tarnwick
