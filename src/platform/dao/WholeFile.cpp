#include "WholeFile.h"

#include "RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace dao::wholeFile
{

namespace
{

[[noreturn]] void fail(const QString& path, int code)
{
    const RuntimeError error = RuntimeError::fromErrno(code);
    throw RuntimeError(error.number(),
                       QStringLiteral("The file '%1' can't be written: %2.").arg(path, qt_error_string(code)));
}

QString followed(const QString& path)
{
    QString target = path;
    for (int links = 0; QFileInfo(target).isSymLink() && links < 40; ++links)
        target = QFileInfo(target).symLinkTarget();
    return target;
}

class Descriptor
{
public:
    explicit Descriptor(const QString& path) : m_number(::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC))
    {
    }
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return m_number; }

private:
    int m_number;
};

/// Zero, or the error number.
int overwrite(int file, const QByteArray& bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t written =
            ::pwrite(file, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done), done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return written < 0 ? errno : EIO;
        done += written;
    }
    if (::ftruncate(file, bytes.size()) != 0 || ::fsync(file) != 0)
        return errno;
    return 0;
}

void writeInPlace(const QString& path, const QByteArray& bytes, int reason)
{
    const std::optional<QByteArray> former = read(path);
    const Descriptor file(path);
    if (!former || file.number() < 0)
        fail(path, reason);
    if (const int code = bytes.isEmpty() ? 0 : ::posix_fallocate(file.number(), 0, bytes.size())) {
        if (::ftruncate(file.number(), former->size()) != 0)
            fail(path, errno);
        fail(path, code);
    }
    if (const int code = overwrite(file.number(), bytes)) {
        overwrite(file.number(), *former);
        fail(path, code);
    }
}

} // namespace

std::optional<QByteArray> read(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return std::nullopt;
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           QStringLiteral("The file '%1' can't be read: %2.")
                               .arg(path, info.isFile() ? file.errorString() : QStringLiteral("it is no file")));
    return file.readAll();
}

void write(const QString& path, const QByteArray& bytes)
{
    const QString target = followed(path);
    const QFileInfo info(target);
    if (info.exists() && !info.isFile())
        fail(target, info.isDir() ? EISDIR : ENODEV);
    if (info.exists() && !info.isWritable())
        fail(target, EACCES);
    if (!info.absoluteDir().exists())
        throw RuntimeError(ErrorNumber::PathNotFound,
                           QStringLiteral("The file '%1' can't be written: its folder is not there.").arg(target));

    // Unbuffered, since a buffer that can't be flushed at the end goes unnoticed there.
    QSaveFile copy(target);
    errno = 0;
    if (copy.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        errno = 0;
        if (copy.write(bytes) != bytes.size()) {
            const int reason = errno != 0 ? errno : EIO;
            copy.cancelWriting();
            fail(target, reason);
        }
        if (copy.commit())
            return;
    }
    const int reason = errno != 0 ? errno : EACCES;
    if (!info.exists())
        fail(target, reason);
    writeInPlace(target, bytes, reason);
}

void restore(const QString& path, const std::optional<QByteArray>& former)
{
    if (former)
        write(path, *former);
    else
        QFile::remove(followed(path));
}

} // namespace dao::wholeFile
