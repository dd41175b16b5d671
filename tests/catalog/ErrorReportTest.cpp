#include "ErrorReport.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QRegularExpression>

#include <random>

namespace
{

const QDateTime moment{QDate(2003, 3, 14), QTime(15, 9, 26), Qt::UTC};

/// The user's locale for as long as it lives.
class UserLocale
{
public:
    explicit UserLocale(const QLocale& locale) { QLocale::setDefault(locale); }
    ~UserLocale() { QLocale::setDefault(m_former); }
    UserLocale(const UserLocale&) = delete;
    UserLocale& operator=(const UserLocale&) = delete;

private:
    QLocale m_former;
};

ErrorReport someReport()
{
    return {"Tarnwick Quorvane",
            "1.2.3",
            "Windows NT v5.0.2195 Service Pack 4",
            "13",
            "Type mismatch",
            "None",
            "frmFile.Display, line 7",
            {"frmFile.Display", "mdiMain.PaneDisplay", "mdiMain.Main"}};
}

TEST(ErrorReport, StandsLineByLineBehindLabelsOfFourteenCharacters)
{
    const UserLocale locale(QLocale::c());
    EXPECT_EQ(someReport().text(moment).toStdString(), "Application:  \tTarnwick Quorvane\n"
                                                       "Version:      \t1.2.3\n"
                                                       "\n"
                                                       "Sys Info:     \tWindows NT v5.0.2195 Service Pack 4\n"
                                                       "\n"
                                                       "Error No:     \t13\n"
                                                       "Description:  \tType mismatch\n"
                                                       "Additional:   \tNone\n"
                                                       "\n"
                                                       "Trapped In:   \tfrmFile.Display, line 7\n"
                                                       "Call Stack:   \tfrmFile.Display\n"
                                                       "              \tmdiMain.PaneDisplay\n"
                                                       "              \tmdiMain.Main\n"
                                                       "\n\n"
                                                       "Date:         \tFriday, 14 March 2003 15:09:26 UTC\n"
                                                       "\n"
                                                       "Comments:\n");
}

TEST(ErrorReport, AnEmptyCallStackIsCalledEmpty)
{
    ErrorReport report = someReport();
    report.callStack.clear();
    EXPECT_TRUE(report.text(moment).contains("\nCall Stack:   \tEmpty\n\nDate:         \t"));
}

TEST(ErrorReport, DateAndTimeStandInTheLongFormsOfTheUsersLocale)
{
    const UserLocale locale(QLocale(QLocale::German, QLocale::Germany));
    const QString text = someReport().text(moment);
    EXPECT_TRUE(text.contains("\tFreitag, 14. März 2003 15:09:26 UTC")) << text.toStdString();
}

TEST(ErrorReport, SystemInformationNamesThePlatformsThatReportANumber)
{
    EXPECT_EQ(systemInformation(0, 3, 1, 103, ""), "Win32s v3.1.103 ");
    EXPECT_EQ(systemInformation(1, 4, 10, 2222, "A"), "Windows 95 v4.10.2222 A");
    EXPECT_EQ(systemInformation(2, 5, 0, 2195, "Service Pack 4"), "Windows NT v5.0.2195 Service Pack 4");
    EXPECT_EQ(systemInformation(3, 6, 1, 0, "x"), "Unkown OpSys v6.1.0 x");
    EXPECT_EQ(systemInformation(-1, 6, 1, 0, "%1"), "Unkown OpSys v6.1.0 %1");
}

TEST(ErrorReport, ThisSystemHasAVersion)
{
    EXPECT_TRUE(
        QRegularExpression("^(Unkown OpSys|Windows NT) v\\d+\\.\\d+\\.\\d+ .").match(systemInformation()).hasMatch())
        << systemInformation().toStdString();
}

/// Takes a report apart again by its labels. Works for values without line breaks.
ErrorReport parsed(const QString& text)
{
    const QStringList lines = text.split('\n');
    const auto valueOf = [&](const QString& label) {
        for (const QString& line : lines)
            if (line.startsWith(label))
                return line.section('\t', 1);
        return QString();
    };
    ErrorReport report{valueOf("Application:"), valueOf("Version:"),    valueOf("Sys Info:"),   valueOf("Error No:"),
                       valueOf("Description:"), valueOf("Additional:"), valueOf("Trapped In:"), {}};
    bool inStack = false;
    for (const QString& line : lines) {
        if (line.startsWith("Call Stack:"))
            inStack = true;
        if (inStack && line.isEmpty())
            break;
        if (inStack)
            report.callStack.append(line.section('\t', 1));
    }
    return report;
}

TEST(ErrorReport, KeepsEveryValueOfRandomReports)
{
    std::mt19937 random(11);
    const auto value = [&] {
        QString text = "v";
        for (auto count = random() % 30; count > 0; --count)
            text += QChar(static_cast<ushort>(32 + random() % 300));
        return text;
    };
    for (int round = 0; round < 500; ++round) {
        ErrorReport report{value(), value(), value(), value(), value(), value(), value(), {}};
        for (auto depth = 1 + random() % 40; depth > 0; --depth)
            report.callStack.append(value());
        const ErrorReport back = parsed(report.text(moment));
        ASSERT_EQ(back.application, report.application);
        ASSERT_EQ(back.version, report.version);
        ASSERT_EQ(back.systemInfo, report.systemInfo);
        ASSERT_EQ(back.number, report.number);
        ASSERT_EQ(back.description, report.description);
        ASSERT_EQ(back.additional, report.additional);
        ASSERT_EQ(back.trappedIn, report.trappedIn);
        ASSERT_EQ(back.callStack, report.callStack);
    }
}

} // namespace
