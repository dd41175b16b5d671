#include "TextWriter.h"

#include "RuntimeError.h"
#include "Step.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr qsizetype fullAt = 65536;

int openForWriting(const QByteArray& path)
{
    // Without O_NONBLOCK a pipe that nobody reads would be waited for; what is written later may well wait.
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0600);
    if (file < 0)
        throw RuntimeError::fromErrno(errno);
    ::fcntl(file, F_SETFL, ::fcntl(file, F_GETFL) & ~O_NONBLOCK);
    return file;
}

} // namespace

TextWriter::TextWriter(const QString& path)
{
    m_pending.reserve(2 * fullAt);
    m_file = step([name = QFile::encodeName(path)] { return openForWriting(name); });
}

TextWriter::~TextWriter()
{
    if (m_file < 0)
        return;
    send();
    ::close(m_file);
}

void TextWriter::append(QStringView text)
{
    const qsizetype former = m_pending.size();
    m_pending.resize(former + text.size());
    char* bytes = m_pending.data() + former;
    const char16_t* characters = text.utf16();
    char16_t all = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        all |= characters[i];
        bytes[i] = static_cast<char>(characters[i]);
    }
    if (all < 0x80)
        return;
    m_pending.resize(former);
    m_pending.append(text.toLocal8Bit());
}

void TextWriter::flushWhenFull()
{
    if (m_pending.size() >= fullAt)
        flush();
}

void TextWriter::close()
{
    flush();
    const int file = std::exchange(m_file, -1);
    if (::close(file) != 0)
        throw RuntimeError::fromErrno(errno);
}

void TextWriter::flush()
{
    step([this] {
        if (const int code = send())
            throw RuntimeError::fromErrno(code);
    });
}

/// Writes what is pending. Zero, or the error number; what could not be written stays pending.
int TextWriter::send()
{
    qsizetype done = 0;
    int code = 0;
    while (done < m_pending.size() && code == 0) {
        const ssize_t count =
            ::write(m_file, m_pending.constData() + done, static_cast<std::size_t>(m_pending.size() - done));
        if (count > 0)
            done += count;
        else if (count == 0)
            code = EIO;
        else if (errno != EINTR)
            code = errno;
    }
    m_pending.remove(0, done);
    return code;
}
