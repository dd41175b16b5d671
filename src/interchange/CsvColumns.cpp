#include "CsvColumns.h"

#include "RuntimeError.h"
#include "modString.h"

#include <algorithm>

namespace
{

QStringView withoutQuotes(QStringView text)
{
    if (text.startsWith(u'"'))
        text = text.sliced(1);
    if (text.endsWith(u'"'))
        text.chop(1);
    return text;
}

/// Whether a column ends the quotes that it begins: a comma within quotes cuts a value in two.
bool closesQuotes(QStringView column)
{
    return column.count(u'"') % 2 == 0;
}

bool isRaised(QStringView text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c.unicode() < 0x80 && !(c >= u'a' && c <= u'z'); });
}

} // namespace

void CsvColumns::clear()
{
    m_columns.clear();
    m_own.clear();
}

QStringView CsvColumns::operator[](int number) const
{
    if (number < 1 || number > count())
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange,
                           RuntimeError::usualDescription(ErrorNumber::SubscriptOutOfRange) +
                               QStringLiteral(": the line has no column %1").arg(number));
    return m_columns[static_cast<std::size_t>(number - 1)];
}

QStringView CsvColumns::keep(QString text)
{
    return m_own.emplace_back(std::move(text));
}

void CsvColumns::append(QString column)
{
    m_columns.push_back(keep(std::move(column)));
}

void CsvColumns::set(int number, QString text)
{
    if (number > count())
        setCount(number);
    m_columns[static_cast<std::size_t>(number - 1)] = keep(std::move(text));
}

void CsvColumns::raise(int number)
{
    if (number > count())
        return;
    QStringView& column = m_columns[static_cast<std::size_t>(number - 1)];
    if (!isRaised(column))
        column = keep(column.toString().toUpper());
}

void splitLine(QStringView line, CsvColumns& columns)
{
    columns.clear();
    for (;;) {
        const qsizetype comma = line.indexOf(u',');
        columns.append(withoutQuotes(modString::Trim(comma < 0 ? line : line.first(comma))));
        if (comma < 0 || columns.count() == CsvColumns::most)
            return;
        line = line.sliced(comma + 1);
    }
}

void scanLine(QStringView line, CsvColumns& columns)
{
    columns.clear();
    while (!line.isEmpty() && columns.count() < CsvColumns::most) {
        const qsizetype end = line.indexOf(line.startsWith(u'"') ? u'"' : u',', 1);
        columns.append(NoQuotes(end < 0 ? line : line.first(end)));
        line = end < 0 ? QStringView() : line.sliced(end + 1);
        if (line.startsWith(u','))
            line = line.sliced(1);
    }
}

QString NoQuotes(QStringView text)
{
    const QString inner = modString::TrimAll(text.toString());
    return modString::TrimAll(withoutQuotes(inner).toString());
}

QString maskedLine(QStringView line)
{
    CsvColumns columns;
    splitLine(line, columns);
    const QString id = NoQuotes(columns[1]).toUpper();
    const bool isUser = id == QLatin1StringView("USER");
    if (!isUser && id != QLatin1StringView("DBPRV"))
        return line.toString();

    const int password = isUser ? 3 : 5;
    const int whole = isUser ? 3 : 10;
    // With columns missing the password may stand as much further to the front, but not in the place of the user.
    const int from = std::max(isUser ? 2 : 3, password - std::max(0, whole - columns.count()));
    if (columns.count() < from)
        return line.toString();
    qsizetype begin = 0;
    bool isWhole = columns.count() == whole;
    for (int number = 1; number < from; ++number) {
        const qsizetype end = line.indexOf(u',', begin);
        isWhole = isWhole && closesQuotes(line.sliced(begin, end - begin));
        begin = end + 1;
    }
    QString shown = line.first(begin).toString() + QStringLiteral("**********");
    const qsizetype end = line.indexOf(u',', begin);
    if (end >= 0 && isWhole && closesQuotes(line.sliced(begin, end - begin)))
        shown.append(line.sliced(end));
    return shown;
}
