#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QString>
#include <QStringView>

/// A text file that is written from its beginning, in the place of whatever it held, in the system's 8-bit code page.
/// What has been written when it fails stays in the file. A new file is its owner's alone to read.
class TextWriter
{
public:
    /// Opens the file and empties it. Raises 53, 61, 75 or 76. A step (see Step.h).
    explicit TextWriter(const QString& path);
    /// Writes what is left, as far as that can be done.
    ~TextWriter();
    TextWriter(const TextWriter&) = delete;
    TextWriter& operator=(const TextWriter&) = delete;

    void append(QStringView text);
    void append(QLatin1StringView text) { m_pending.append(text.data(), text.size()); }
    void append(char character) { m_pending.append(character); }

    /// Sends what has been appended to the disk once there is much of it. Raises 61 for a full disk, 75 for what else
    /// the system refuses. A step: Retry writes what is missing.
    void flushWhenFull();
    /// Sends the rest and closes the file. Raises as above.
    void close();

private:
    void flush();
    int send();

    int m_file = -1;
    QByteArray m_pending;
};
