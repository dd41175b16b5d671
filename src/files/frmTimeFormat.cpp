#include "frmTimeFormat.h"

#include "Routine.h"

using namespace Qt::StringLiterals;

namespace
{

QString digits(int number)
{
    return u"%1"_s.arg(number, 2, 10, QLatin1Char('0'));
}

const FormatBuilder::Language language{
    .tokens =
        {
            {u"hh"_s, [](const QDateTime& moment) { return digits(moment.time().hour()); }},
            {u"mm"_s, [](const QDateTime& moment) { return digits(moment.time().minute()); }},
            {u"ss"_s, [](const QDateTime& moment) { return digits(moment.time().second()); }},
            {u"cc"_s, [](const QDateTime&) { return u"00"_s; }},
        },
    .buttons =
        {
            {u"Hours"_s, u"hh"_s},
            {u"Minutes"_s, u"mm"_s},
            {u"Seconds"_s, u"ss"_s},
        },
};

} // namespace

frmTimeFormat::frmTimeFormat()
    : FormatBuilder(language, {.form = u"frmTimeFormat"_s,
                               .title = tr("Time Format"),
                               .group = tr("Time"),
                               .cmdComp = "frmTimeFormat.cmdComp_Click",
                               .cmdDelete = "frmTimeFormat.cmdDelete_Click"})
{
}

QString frmTimeFormat::GetFormat(const QString& current)
{
    QString built = current;
    Routine routine("frmTimeFormat.GetFormat");
    routine.run([&] { built = get<frmTimeFormat>(u"frmTimeFormat"_s).build(current); });
    return built;
}

QString frmTimeFormat::MakeExample(const QString& format, const QDateTime& moment)
{
    return makeExample(language, format, moment);
}
