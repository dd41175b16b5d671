#include "frmDateFormat.h"

#include "Routine.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace
{

QString digits(int number, int width)
{
    return u"%1"_s.arg(number, width, 10, QLatin1Char('0'));
}

const FormatBuilder::Language language{
    .tokens =
        {
            {u"YYYY"_s, [](const QDateTime& moment) { return digits(moment.date().year(), 4); }},
            {u"MMM"_s, [](const QDateTime& moment) { return QLocale().toString(moment.date(), u"MMM"); }},
            {u"YY"_s, [](const QDateTime& moment) { return digits(moment.date().year() % 100, 2); }},
            {u"MM"_s, [](const QDateTime& moment) { return digits(moment.date().month(), 2); }},
            {u"DD"_s, [](const QDateTime& moment) { return digits(moment.date().day(), 2); }},
        },
    .buttons =
        {
            {u"Year (98)"_s, u"YY"_s},
            {u"Year (1998)"_s, u"YYYY"_s},
            {u"Month (01)"_s, u"MM"_s},
            {u"Month (Jan)"_s, u"MMM"_s},
            {u"Day"_s, u"DD"_s},
        },
};

} // namespace

frmDateFormat::frmDateFormat()
    : FormatBuilder(language, {.form = u"frmDateFormat"_s,
                               .title = tr("Date Format"),
                               .group = tr("Date"),
                               .cmdComp = "frmDateFormat.cmdComp_Click",
                               .cmdDelete = "frmDateFormat.cmdDelete_Click"})
{
}

QString frmDateFormat::GetFormat(const QString& current)
{
    QString built = current;
    Routine routine("frmDateFormat.GetFormat");
    routine.run([&] { built = get<frmDateFormat>(u"frmDateFormat"_s).build(current); });
    return built;
}

QString frmDateFormat::MakeExample(const QString& format, const QDateTime& moment)
{
    return makeExample(language, format, moment);
}
