#include "ErrorReport.h"

#include <QLocale>
#include <QSysInfo>
#include <QVersionNumber>

#include <array>

namespace
{

constexpr int LabelWidth = 14;

QString labelled(const char* label, const QString& value)
{
    return QString::fromUtf8(label).leftJustified(LabelWidth) + '\t' + value;
}

QString longDateAndTime(const QDateTime& now)
{
    const QLocale locale;
    return locale.toString(now.date(), QLocale::LongFormat) + ' ' +
           locale.toString(now, locale.timeFormat(QLocale::LongFormat));
}

} // namespace

QString ErrorReport::text(const QDateTime& now) const
{
    QString report;
    report += labelled("Application:", application) + '\n';
    report += labelled("Version:", version) + "\n\n";
    report += labelled("Sys Info:", systemInfo) + "\n\n";
    report += labelled("Error No:", number) + '\n';
    report += labelled("Description:", description) + '\n';
    report += labelled("Additional:", additional) + "\n\n";
    report += labelled("Trapped In:", trappedIn) + '\n';

    const char* label = "Call Stack:";
    for (const QString& routine : callStack) {
        report += labelled(label, routine) + '\n';
        label = "";
    }
    if (callStack.isEmpty())
        report += labelled(label, QStringLiteral("Empty"));

    report += "\n\n" + labelled("Date:", longDateAndTime(now)) + "\n\n";
    return report + "Comments:\n";
}

QString systemInformation(int platform, int major, int minor, int build, const QString& servicePack)
{
    static constexpr std::array<const char*, 3> platforms{"Win32s", "Windows 95", "Windows NT"};
    const bool known = platform >= 0 && platform < static_cast<int>(platforms.size());
    const QString name = QString::fromUtf8(known ? platforms[static_cast<std::size_t>(platform)] : "Unkown OpSys");
    return QStringLiteral("%1 v%2.%3.%4 ").arg(name).arg(major).arg(minor).arg(build) + servicePack;
}

QString systemInformation()
{
    static const QString information = [] {
        constexpr int WindowsNT = 2;
        constexpr int Beyond = -1;
        const QVersionNumber kernel = QVersionNumber::fromString(QSysInfo::kernelVersion());
        const int platform = QSysInfo::kernelType() == QLatin1String("winnt") ? WindowsNT : Beyond;
        return systemInformation(platform, kernel.majorVersion(), kernel.minorVersion(), kernel.microVersion(),
                                 QSysInfo::prettyProductName());
    }();
    return information;
}
