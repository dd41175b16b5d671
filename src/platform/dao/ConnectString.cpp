#include "ConnectString.h"

namespace dao::connectString
{

namespace
{

/// The end of a value that starts at `from`: its semicolon or the end of the text.
qsizetype endOfValue(QStringView text, qsizetype from)
{
    if (from < text.size() && text[from] == u'{') {
        qsizetype brace = from + 1;
        while ((brace = text.indexOf(u'}', brace)) >= 0 && brace + 1 < text.size() && text[brace + 1] == u'}')
            brace += 2;
        if (brace >= 0)
            from = brace;
    }
    const qsizetype semicolon = text.indexOf(u';', from);
    return semicolon < 0 ? text.size() : semicolon;
}

QString unbraced(QStringView text)
{
    text = text.trimmed();
    if (text.size() < 2 || !text.startsWith(u'{') || !text.endsWith(u'}'))
        return text.toString();
    return text.sliced(1, text.size() - 2).toString().replace(QStringLiteral("}}"), QStringLiteral("}"));
}

} // namespace

QString withoutPrefix(const QString& connect)
{
    static const QString prefix = QStringLiteral("ODBC;");
    return connect.startsWith(prefix, Qt::CaseInsensitive) ? connect.sliced(prefix.size()) : connect;
}

QString value(const QString& connect, QStringView keyword)
{
    const QStringView text(connect);
    qsizetype position = 0;
    while (position < text.size()) {
        const qsizetype equals = text.indexOf(u'=', position);
        if (equals < 0)
            break;
        const qsizetype semicolon = text.indexOf(u';', position);
        if (semicolon >= 0 && semicolon < equals) {
            position = semicolon + 1;
            continue;
        }
        const qsizetype end = endOfValue(text, equals + 1);
        if (text.sliced(position, equals - position).trimmed().compare(keyword, Qt::CaseInsensitive) == 0)
            return unbraced(text.sliced(equals + 1, end - equals - 1));
        position = end + 1;
    }
    return {};
}

QString datasource(const QString& connect)
{
    const QString name = value(connect, u"DSN");
    return name.isEmpty() ? value(connect, u"FILEDSN") : name;
}

} // namespace dao::connectString
