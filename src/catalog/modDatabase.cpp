#include "modDatabase.h"

#include <QStringView>

#include <array>

namespace
{

/// The text without the blanks at its ends; other white space stays.
QStringView trimBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.mid(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

/// Control characters and those beyond the seven-bit set become blanks, and each run of blanks becomes one.
QString foldBlanks(const QString& text)
{
    QString folded;
    folded.reserve(text.size());
    bool afterBlank = false;
    for (const QChar character : text) {
        const bool lineEnd = character == u'\r' || character == u'\n';
        const bool blank = !lineEnd && (character <= u' ' || character >= QChar(129));
        if (!blank)
            folded.append(character);
        else if (!afterBlank)
            folded.append(u' ');
        afterBlank = blank;
    }
    return folded;
}

struct Replacement {
    QStringView found;
    QStringView by;
};

/// The layout of a statement, in the order in which the replacements are made. Clauses are found between blanks, so one
/// that an earlier replacement has pushed behind a tab is left alone, but for VALUES.
constexpr std::array<Replacement, 15> layout{{
    {u")", u")\n\t"},
    {u"( ", u"("},
    {u"(", u"(\n\t"},
    {u", ", u","},
    {u",", u",\n\t"},
    {u" SELECT ", u"\nSELECT\n\t"},
    {u" FROM ", u"\nFROM\n\t"},
    {u" WHERE ", u"\nWHERE\n\t"},
    {u" ORDER BY ", u"\nORDER BY \n\t"},
    {u" INSERT INTO ", u"INSERT INTO \n\t"},
    {u"\t VALUES ", u"\nVALUES "},
    {u" UPDATE ", u"UPDATE \n\t"},
    {u" SET ", u"\nSET\n\t"},
    {u" AND ", u"\n\tAND "},
    {u" OR ", u"\n\tOR "},
}};

QString replaceAll(const QString& text, const Replacement& replacement)
{
    const QStringView view(text);
    qsizetype found = view.indexOf(replacement.found);
    if (found < 0)
        return text;
    QString result;
    result.reserve(text.size() + text.size() / 4);
    qsizetype done = 0;
    while (found >= 0) {
        result.append(view.mid(done, found - done)).append(replacement.by);
        done = found + replacement.found.size();
        found = view.indexOf(replacement.found, done);
    }
    return result.append(view.mid(done));
}

} // namespace

QString modDatabase::SQLQuote(const QString& text)
{
    return QString(text).replace(u'\'', QStringLiteral("''"));
}

QString modDatabase::SQLQuote(const dao::Value& value)
{
    return SQLQuote(value.Text());
}

QString modDatabase::FormatSQL(const QString& text)
{
    QString formatted = foldBlanks(u' ' + trimBlanks(text).toString() + u' ');
    for (const Replacement& replacement : layout)
        formatted = replaceAll(formatted, replacement);
    return trimBlanks(formatted).toString();
}

QString modDatabase::FormatSQL(const dao::Value& value)
{
    return FormatSQL(value.Text());
}
