#pragma once

#include <QString>
#include <QStringView>

#include <vector>

/// The lines of a text file, one at a time, each ended by CR, LF or both; the last one needs no end. Lines are read in
/// the system's 8-bit code page, and a line that is none of its texts with a character for each byte (Latin-1), so that
/// no byte is lost. The mark that some editors put in front of UTF-8 is no part of the first line. The file is read as
/// it goes, whatever its size; only one line must fit into memory, and none may reach 64 MiB: what goes on for as long
/// without an end is no text.
class LineReader
{
public:
    /// Raises 53 where there is no such file, 75 for what can't be read or is no file (a device could be read without
    /// an end), 76 for a path through a file. A step (see Step.h).
    explicit LineReader(const QString& path);
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    /// On to the next line; false behind the last one. A step as well, which raises 75 when reading fails. A line that
    /// is too long raises 75 outside of it, since it would do so again.
    bool next();
    /// The current line, valid until the next move.
    QStringView text();

private:
    bool findEnd();
    void fill();

    int m_file = -1;
    std::vector<char> m_buffer;
    /// What is in the buffer and not yet passed.
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    bool m_atStart = true;
    bool m_atEnd = false;
    /// Where the next line feed and carriage return stand, or the end of what has been looked through for them.
    std::size_t m_feed = 0;
    std::size_t m_return = 0;
    std::size_t m_line = 0;
    std::size_t m_lineSize = 0;
    QString m_text;
    bool m_decoded = false;
};
