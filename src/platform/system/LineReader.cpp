#include "LineReader.h"

#include "RuntimeError.h"
#include "Step.h"

#include <QFile>
#include <QStringConverter>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr std::size_t blockSize = 65536;
// A device's image is often one line of nulls as large as the device.
constexpr std::size_t mostOfALine = 1024 * blockSize;
constexpr char utf8Mark[] = "\xEF\xBB\xBF";

int openForReading(const QByteArray& path)
{
    // Without O_NONBLOCK a pipe that nobody writes to would be waited for.
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        throw RuntimeError::fromErrno(errno);
    struct stat found = {};
    if (::fstat(file, &found) == 0 && S_ISREG(found.st_mode))
        return file;
    const int code = S_ISDIR(found.st_mode) ? EISDIR : EINVAL;
    ::close(file);
    throw RuntimeError::fromErrno(code);
}

/// Where a character stands from `from` on, or the end.
std::size_t find(const std::vector<char>& buffer, std::size_t from, std::size_t end, char character)
{
    const void* found = std::memchr(buffer.data() + from, character, end - from);
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - buffer.data()) : end;
}

} // namespace

LineReader::LineReader(const QString& path) : m_buffer(blockSize)
{
    m_file = step([name = QFile::encodeName(path)] { return openForReading(name); });
}

LineReader::~LineReader()
{
    ::close(m_file);
}

bool LineReader::next()
{
    m_decoded = false;
    while (!findEnd())
        fill();
    return m_line != m_begin;
}

/// Finds the line at the beginning of the buffer and passes it, or tells that more must be read. At the end of the file
/// the line begins where it ends.
bool LineReader::findEnd()
{
    if (m_atStart && (m_atEnd || m_end - m_begin >= 3)) {
        m_atStart = false;
        if (m_end - m_begin >= 3 && std::memcmp(m_buffer.data() + m_begin, utf8Mark, 3) == 0)
            m_begin += 3;
    }
    if (m_atStart)
        return false;
    if (m_feed < m_begin || m_feed == m_end)
        m_feed = find(m_buffer, std::max(m_feed, m_begin), m_end, '\n');
    if (m_return < m_begin || m_return == m_end)
        m_return = find(m_buffer, std::max(m_return, m_begin), m_end, '\r');

    const std::size_t end = std::min(m_feed, m_return);
    // A carriage return at the end of the buffer may be one half of a line's end.
    if (!m_atEnd && (end == m_end || (end == m_return && end + 1 == m_end)))
        return false;
    m_line = m_begin;
    m_lineSize = end - m_begin;
    const bool hasBoth = end == m_return && end + 1 < m_end && m_buffer[end + 1] == '\n';
    m_begin = std::min(m_end, end + (hasBoth ? 2 : 1));
    return true;
}

void LineReader::fill()
{
    if (m_begin > 0) {
        std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
        m_feed -= std::min(m_feed, m_begin);
        m_return -= std::min(m_return, m_begin);
        m_end -= m_begin;
        m_begin = 0;
    }
    if (m_end == m_buffer.size()) {
        if (m_buffer.size() >= mostOfALine)
            throw RuntimeError(ErrorNumber::PathFileAccess,
                               RuntimeError::usualDescription(ErrorNumber::PathFileAccess) +
                                   ": a line of the file has no end");
        m_buffer.resize(2 * m_buffer.size());
    }
    const bool feedFound = m_feed < m_end;
    const bool returnFound = m_return < m_end;
    const auto got = step([this] {
        for (;;) {
            const ssize_t count = ::read(m_file, m_buffer.data() + m_end, m_buffer.size() - m_end);
            if (count >= 0)
                return static_cast<std::size_t>(count);
            if (errno != EINTR)
                throw RuntimeError::fromErrno(errno);
        }
    });
    m_atEnd = got == 0;
    const std::size_t looked = m_end;
    m_end += got;
    if (!feedFound)
        m_feed = find(m_buffer, looked, m_end, '\n');
    if (!returnFound)
        m_return = find(m_buffer, looked, m_end, '\r');
}

QStringView LineReader::text()
{
    if (m_decoded)
        return m_text;
    m_decoded = true;
    const char* bytes = m_buffer.data() + m_line;
    m_text.resize(static_cast<qsizetype>(m_lineSize));
    auto* characters = reinterpret_cast<char16_t*>(m_text.data());
    unsigned char all = 0;
    for (std::size_t i = 0; i < m_lineSize; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        all |= byte;
        characters[i] = byte;
    }
    if (all < 0x80)
        return m_text;

    QStringDecoder decoder(QStringConverter::System, QStringConverter::Flag::Stateless);
    QString decoded = decoder.decode(QByteArrayView(bytes, static_cast<qsizetype>(m_lineSize)));
    if (!decoder.hasError())
        m_text = std::move(decoded);
    return m_text;
}
