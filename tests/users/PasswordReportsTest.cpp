#include "PasswordsFixture.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace passwordsearch;

namespace
{

/// Failing statements of the panes and grids, and what is told of them.
class PasswordReports : public Passwords
{
protected:
    /// Reads the form through, prints and mails its report, and answers Ignore.
    void expectReport()
    {
        errors.expect([this](QWidget& form) {
            EXPECT_EQ(leaks(true), QStringList());
            for (const int report : {0, 2})
                ScriptedErrorForm::pressReport(form, report);
            ScriptedErrorForm::press(form, Press::Ignore);
        });
    }
    /// The next statement that begins so fails as a statement does that the driver refuses.
    void failNextWrite()
    {
        statements.clear();
        statements.failAt(1);
    }
    void expectReportsWithoutPasswords()
    {
        errors.verify();
        ASSERT_EQ(outside.printed.size(), 1u);
        for (const QString& report : {outside.printed.front().body, std::exchange(outside.clipboard, {})}) {
            EXPECT_TRUE(report.contains("Trapped In"_L1)) << report.toStdString();
            EXPECT_FALSE(report.contains(sign, Qt::CaseInsensitive)) << report.toStdString();
        }
        outside.printed.clear();
    }
    void expectReported(const QString& routine)
    {
        expectReportsWithoutPasswords();
        ASSERT_FALSE(errors.shown().empty());
        const ScriptedErrorForm::Shown& shown = errors.shown().back();
        EXPECT_EQ(shown.trappedIn, routine);
        EXPECT_EQ(shown.additional, u"None"_s);
        EXPECT_TRUE(statements.statements().back().contains(sign)) << "no statement with a password has failed";
    }
    /// A driver that really refuses to write says what it likes.
    void refuseWrites() const
    {
        for (const char* table : {"TW_USER", "TW_DBPRV"}) {
            for (const char* event : {"INSERT", "UPDATE"})
                change(u"CREATE TRIGGER REFUSE_%1_%2 BEFORE %2 ON %1 BEGIN SELECT RAISE(ABORT, 'refused'); END"_s.arg(
                    QLatin1String(table), QLatin1String(event)));
        }
    }
};

} // namespace

TEST_F(PasswordReports, NoTypedPasswordShowsInTheReportOfAPanesOwnStatement)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        const QString routine =
            place.column == u"USER_PASSWORD"_s ? u"frmUser.tbr_ButtonClick"_s : u"frmDBPRV.tbr_ButtonClick"_s;
        open(place.node);
        writePassword(place.column, u"qzx7-typed"_s);
        failNextWrite();
        expectReport();
        press(u"OK"_s);
        expectReported(routine);
        // Nothing is lost: a second try writes it.
        press(u"OK"_s);
        EXPECT_EQ(state(), displayState);
    }
}

TEST_F(PasswordReports, NoTypedPasswordShowsInTheReportOfARefusedAdd)
{
    refuseWrites();
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        const bool isUser = place.column == u"USER_PASSWORD"_s;
        command(gridOf(place), place.addItem);
        if (isUser) {
            write(u"USER_NAME"_s, u"new"_s);
        } else {
            pick(u"USER_NAME"_s, u"BOSS"_s);
            pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
        }
        writePassword(place.column, u"qzx7-'typed"_s);
        expectReport();
        press(u"OK"_s);
        expectReported(isUser ? u"frmUser.tbr_ButtonClick"_s : u"frmDBPRV.tbr_ButtonClick"_s);
        EXPECT_TRUE(errors.shown().back().description.contains("refused"_L1));
        EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
        press(u"Cancel"_s);
        EXPECT_EQ(leaks(), QStringList());
    }
}

TEST_F(PasswordReports, NoTypedPasswordShowsInTheReportOfAGridsStatement)
{
    refuseWrites();
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        const QString routine = place.column == u"USER_PASSWORD"_s ? u"frmUsers.LeaveCell"_s : u"frmDBPRVs.LeaveCell"_s;
        open(gridOf(place));
        clickCell(clerksRow(), place.heading);
        typeIntoCell(u"qzx7-typed"_s);
        expectReport();
        leaveRow();
        expectReported(routine);
        click(key(gridOf(place)));
        EXPECT_EQ(leaks(), QStringList());
    }
}

TEST_F(PasswordReports, NoStoredPasswordShowsInTheReportOfARowThatCannotBeRead)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        for (const QStringList& steps : {place.node, gridOf(place)}) {
            // The columns are described once.
            open(steps);
            statements.clear();
            // The grid of rights reads the users to choose from first.
            statements.failAt(steps == gridOf(places()[1]) ? 2 : 1);
            expectReport();
            click(key(steps));
            expectReportsWithoutPasswords();
            EXPECT_EQ(leaks(), QStringList());
        }
    }
}
