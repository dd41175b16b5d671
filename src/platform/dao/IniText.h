#pragma once

#include <QByteArray>
#include <QList>

#include <utility>
#include <vector>

namespace dao
{

/// The text of an ini file as unixODBC reads it, changed a line at a time: sections, entries, comments and blank lines
/// that a change does not name stay as they are, byte for byte. Names of sections and keys match whatever their ASCII
/// case. A line that starts with ';' or '#' is a comment.
class IniText
{
public:
    using Entries = std::vector<std::pair<QByteArray, QByteArray>>;

    explicit IniText(const QByteArray& text);

    QByteArray text() const;
    bool hasSection(const QByteArray& section) const { return findSection(section) >= 0; }

    /// Gives the first section of that name these entries and no others; makes it at the end if there is none. Entries
    /// that it has already keep their place.
    void setEntries(const QByteArray& section, const Entries& entries);
    void setEntry(const QByteArray& section, const QByteArray& key, const QByteArray& value);
    void removeEntry(const QByteArray& section, const QByteArray& key);
    /// Removes every section of that name up to its last entry; comments behind it stay, as they speak for what
    /// follows.
    void removeSection(const QByteArray& section);
    void renameSection(const QByteArray& section, const QByteArray& newName);

private:
    qsizetype findSection(const QByteArray& section, qsizetype from = 0) const;
    /// One behind the last entry of the section whose header stands at that line.
    qsizetype endOfEntries(qsizetype header) const;
    qsizetype findEntry(qsizetype header, const QByteArray& key) const;
    QByteArray line(const QByteArray& key, const QByteArray& value) const { return key + '=' + value + m_lineEnd; }

    /// The lines with their ends.
    QList<QByteArray> m_lines;
    QByteArray m_lineEnd;
};

} // namespace dao
