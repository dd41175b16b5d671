#include "IniText.h"

#include <algorithm>

namespace dao
{

namespace
{

enum class Kind { Blank, Comment, Header, Entry };

Kind kindOf(const QByteArray& line)
{
    const QByteArray text = line.trimmed();
    if (text.isEmpty())
        return Kind::Blank;
    if (text.startsWith('#') || text.startsWith(';'))
        return Kind::Comment;
    return text.startsWith('[') ? Kind::Header : Kind::Entry;
}

QByteArray sectionOf(const QByteArray& header)
{
    const QByteArray text = header.trimmed().mid(1);
    const qsizetype end = text.indexOf(']');
    return (end < 0 ? text : text.left(end)).trimmed();
}

QByteArray keyOf(const QByteArray& line)
{
    return line.left(line.indexOf('=')).trimmed();
}

QByteArray valueOf(const QByteArray& line)
{
    const qsizetype equals = line.indexOf('=');
    return equals < 0 ? QByteArray() : line.mid(equals + 1).trimmed();
}

bool isSame(const QByteArray& one, const QByteArray& other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

} // namespace

IniText::IniText(const QByteArray& text) : m_lineEnd(text.contains("\r\n") ? "\r\n" : "\n")
{
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype end = text.indexOf('\n', start);
        const qsizetype next = end < 0 ? text.size() : end + 1;
        m_lines.append(text.mid(start, next - start));
        start = next;
    }
}

QByteArray IniText::text() const
{
    return m_lines.join();
}

void IniText::setEntries(const QByteArray& section, const Entries& entries)
{
    if (const qsizetype header = findSection(section); header >= 0) {
        for (qsizetype at = endOfEntries(header) - 1; at > header; --at) {
            const bool isGone = std::none_of(entries.begin(), entries.end(), [&](const auto& entry) {
                return isSame(entry.first, keyOf(m_lines[at]));
            });
            if (kindOf(m_lines[at]) == Kind::Entry && isGone)
                m_lines.removeAt(at);
        }
    }
    for (const auto& [key, value] : entries)
        setEntry(section, key, value);
}

void IniText::setEntry(const QByteArray& section, const QByteArray& key, const QByteArray& value)
{
    if (!m_lines.isEmpty() && !m_lines.last().endsWith('\n'))
        m_lines.last().append(m_lineEnd);
    qsizetype header = findSection(section);
    if (header < 0) {
        if (!m_lines.isEmpty() && kindOf(m_lines.last()) != Kind::Blank)
            m_lines.append(m_lineEnd);
        header = m_lines.size();
        m_lines.append('[' + section + ']' + m_lineEnd);
    }
    const qsizetype entry = findEntry(header, key);
    if (entry < 0)
        m_lines.insert(endOfEntries(header), line(key, value));
    else if (valueOf(m_lines[entry]) != value)
        m_lines[entry] = line(key, value);
}

void IniText::removeEntry(const QByteArray& section, const QByteArray& key)
{
    const qsizetype header = findSection(section);
    if (header < 0)
        return;
    for (qsizetype entry = findEntry(header, key); entry >= 0; entry = findEntry(header, key))
        m_lines.removeAt(entry);
}

void IniText::removeSection(const QByteArray& section)
{
    for (qsizetype header = findSection(section); header >= 0; header = findSection(section, header)) {
        qsizetype end = endOfEntries(header);
        while (end < m_lines.size() && kindOf(m_lines[end]) == Kind::Blank)
            ++end;
        m_lines.remove(header, end - header);
    }
}

void IniText::renameSection(const QByteArray& section, const QByteArray& newName)
{
    const qsizetype header = findSection(section);
    if (header >= 0)
        m_lines[header] = '[' + newName + ']' + m_lineEnd;
}

qsizetype IniText::findSection(const QByteArray& section, qsizetype from) const
{
    for (qsizetype at = from; at < m_lines.size(); ++at)
        if (kindOf(m_lines[at]) == Kind::Header && isSame(sectionOf(m_lines[at]), section))
            return at;
    return -1;
}

qsizetype IniText::endOfEntries(qsizetype header) const
{
    qsizetype end = header + 1;
    for (qsizetype at = end; at < m_lines.size() && kindOf(m_lines[at]) != Kind::Header; ++at)
        if (kindOf(m_lines[at]) == Kind::Entry)
            end = at + 1;
    return end;
}

qsizetype IniText::findEntry(qsizetype header, const QByteArray& key) const
{
    const qsizetype end = endOfEntries(header);
    for (qsizetype at = header + 1; at < end; ++at)
        if (kindOf(m_lines[at]) == Kind::Entry && isSame(keyOf(m_lines[at]), key))
            return at;
    return -1;
}

} // namespace dao
