#include "modString.h"

#include "Routine.h"

QString modString::Pluralise(const QString& word, long count)
{
    if (count == 1)
        return word;
    if (word.startsWith(u'y'))
        return word.left(word.size() - 1) + "ies";
    return word + 's';
}

QString modString::StripNull(const QString& text)
{
    return text.left(text.indexOf(QChar(u'\0')));
}

QString modString::Trim(const QString& text)
{
    return Trim(QStringView(text)).toString();
}

QStringView modString::Trim(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

QString modString::TrimAll(const QString& text)
{
    const auto strippable = [](QChar character) { return character <= u' ' || character >= QChar(129); };
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && strippable(text[begin]))
        ++begin;
    while (end > begin && strippable(text[end - 1]))
        --end;
    return text.mid(begin, end - begin);
}

QString modString::ExtractAttr(const QString& key, const QString& attributes)
{
    Routine routine("frmField.ExtractAttr");
    const qsizetype found = attributes.indexOf(key);
    if (found < 0)
        return {};
    const qsizetype begin = found + key.size();
    const qsizetype semicolon = attributes.indexOf(u';', begin);
    const QString value = attributes.mid(begin, semicolon < 0 ? -1 : semicolon - begin);
    return value.startsWith(u'=') ? value.mid(1) : value;
}
