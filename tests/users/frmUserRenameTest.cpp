#include "UserPaneFixture.h"

#include "frmTWErr.h"

#include <QTimer>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace userpane;

namespace
{

/// CLERK is renamed to TELLER, of whom nodes still stand in the tree although somebody has removed the rows.
class UserPaneOfStaleNodes : public UserPane
{
protected:
    void SetUp() override
    {
        UserPane::SetUp();
        for (const char* columns :
             {"TW_USER (USER_NAME) VALUES ('TELLER')", "TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('TELLER', 'SALES')",
              "TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) "
              "VALUES ('SALES', 'ORDERS', 'TELLER')"})
            change("INSERT INTO "_L1 + QLatin1String(columns));
        begin(ofDatabase(u"SALES"_s, u"CLERK"_s));
        begin(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s));
        open(user(u"CLERK"_s));
        for (const QString& statement : deleteUser(u"TELLER"_s))
            change(statement);
        for (const QStringList& level : levels())
            ASSERT_EQ(children(key(level)).filter(u"TELLER"_s).size(), 1) << key(level).toStdString();
        write(u"USER_NAME"_s, u"teller"_s);
        statements.clear();
    }

    static std::vector<QStringList> levels()
    {
        return {{u"US"_s}, ofDatabase(u"SALES"_s), ofTable(u"SALES"_s, u"ORDERS"_s)};
    }
};

} // namespace

// Nodes that still stand ---------------------------------------------------------------------------------------------

TEST_F(UserPaneOfStaleNodes, RenamingToANameWhoseNodesStillStandReadsThoseLevelsAnew)
{
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"TELLER"_s}));
    EXPECT_EQ(children(key(ofDatabase(u"SALES"_s))), QStringList{u"TELLER"_s});
    EXPECT_EQ(children(key(ofTable(u"SALES"_s, u"ORDERS"_s))), QStringList{u"TELLER"_s});
    EXPECT_EQ(selectedKey(), key(user(u"TELLER"_s)));
    EXPECT_EQ(shownPane(), (QStringList{u"frmUser"_s, u"TELLER - User Properties"_s, displayState, {}}));
}

TEST_F(UserPaneOfStaleNodes, ARenameEndsWhereItBeganWhateverShowsWhileALevelIsReadAnew)
{
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    QStringList routines;
    QTimer::singleShot(0, window.get(), [&] {
        routines = frmTWErr::CallStack();
        window->PaneDisplay(u"frmUser"_s, {datasource, u"BOSS"_s});
    });
    press(u"OK"_s);
    EXPECT_TRUE(routines.contains(u"frmUser.tbr_ButtonClick"_s));
    EXPECT_EQ(shownPane(), (QStringList{u"frmUser"_s, u"TELLER - User Properties"_s, displayState, {}}));
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"TELLER"_s}));
    EXPECT_EQ(children(key(ofDatabase(u"SALES"_s))), QStringList{u"TELLER"_s});
    EXPECT_EQ(children(key(ofTable(u"SALES"_s, u"ORDERS"_s))), QStringList{u"TELLER"_s});
}

TEST_F(UserPane, AnAddEndsWhereItBeganWhateverShowsWhileTheTreeFollows)
{
    const QString other = datasource + u"other"_s;
    world.addDatasource(other);
    beginToAdd();
    write(u"USER_NAME"_s, u"new"_s);
    writePassword(u"USER_PASSWORD"_s, u"x"_s);
    QStringList routines;
    QTimer::singleShot(0, window.get(), [&] {
        routines = frmTWErr::CallStack();
        window->PaneDisplay(u"frmUser"_s, {other, u"ADMIN"_s});
    });
    press(u"OK"_s);
    EXPECT_TRUE(routines.contains(u"frmUser.tbr_ButtonClick"_s));
    EXPECT_EQ(paneTitle(), u"Add New User to "_s + datasource);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel"_s);
    EXPECT_EQ(selectedKey(), key(user(u"NEW"_s)));
}

TEST_F(UserPaneOfStaleNodes, ARefreshWhileALevelIsReadAnewLeavesNothingToGoOnWith)
{
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    QStringList before;
    QTimer::singleShot(0, window.get(), [&] {
        before = statements.statements();
        window->FetchTreeviewRoot();
    });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    errors.verify();
    EXPECT_EQ(errors.shown().back().number, u"91"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmUser.tbr_ButtonClick"_s);
    // The tree was being read behind the last statement of the pane, which sends no other one without a connection.
    EXPECT_TRUE(before.contains(updateRemarks(u"CLERK"_s, u"at the desk"_s)));
    EXPECT_EQ(statements.statements(), before);
    EXPECT_EQ(users(), (QStringList{storedBoss, u"TELLER||at the desk"_s}));
    EXPECT_EQ(rootTexts(), QStringList{datasource});
}

TEST_F(UserPaneOfStaleNodes, ARefreshWhileALevelOfRightsIsReadAnewLeavesNothingToGoOnWith)
{
    // The users' own level is in order; the first that is read anew is that of a database.
    click(key({u"US"_s}));
    clickExpander(key({u"US"_s}));
    clickExpander(key({u"US"_s}));
    ASSERT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s}));
    click(key(user(u"CLERK"_s)));
    write(u"USER_NAME"_s, u"teller"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    QStringList before;
    QTimer::singleShot(0, window.get(), [&] {
        before = statements.statements();
        window->FetchTreeviewRoot();
    });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    errors.verify();
    EXPECT_EQ(errors.shown().back().number, u"91"_s);
    EXPECT_FALSE(before.filter(u"SELECT DATABASE_NAME FROM TW_DBPRV WHERE USER_NAME = 'TELLER'"_s).isEmpty());
    EXPECT_EQ(statements.statements(), before);
    EXPECT_EQ(databasePrivileges(),
              (QStringList{clerkOnDepot, clerkOnSales}.replaceInStrings(u"CLERK"_s, u"TELLER"_s)));
}

// Failures and second clicks -----------------------------------------------------------------------------------------

TEST_F(UserPane, IgnoreOfTheUpdateBehindARenameKeepsTheNewNameAndThePanesState)
{
    open(user(u"CLERK"_s));
    write(u"USER_NAME"_s, u"teller"_s);
    write(u"REMARKS"_s, u"moved"_s);
    statements.clear();
    // What carries the user are 19 statements behind the question whether the name is free.
    statements.failAt(20);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().back(), updateRemarks(u"CLERK"_s, u"moved"_s));
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmUser.tbr_ButtonClick"_s);
    EXPECT_EQ(users(), (QStringList{storedBoss, u"TELLER||at the desk"_s}));
    EXPECT_EQ(databasePrivileges(),
              (QStringList{clerkOnDepot, clerkOnSales}.replaceInStrings(u"CLERK"_s, u"TELLER"_s)));
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(texts(shownColumns), (QStringList{u"TELLER"_s, u"moved"_s}));
    EXPECT_TRUE(find(key(user(u"CLERK"_s))));

    // What was entered can't be stored over what is there by now; the row shows as it is.
    expectRefused(isTaken(u"TELLER"_s), u"USER_NAME"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(texts(shownColumns), (QStringList{u"TELLER"_s, u"at the desk"_s}));
    EXPECT_EQ(state(), displayState);
}

TEST_F(UserPane, ASecondClickWhileTheTreeFollowsAnAddAddsNothing)
{
    begin({u"US"_s});
    choose(key({u"US"_s}), u"mnu_UserAddNew"_s);
    write(u"USER_NAME"_s, u"twice"_s);
    writePassword(u"USER_PASSWORD"_s, u"x"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmUser.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes(), QStringList{insertUser(u"TWICE"_s, u"X"_s, {})});
    EXPECT_EQ(children(key({u"US"_s})).count(u"TWICE"_s), 1);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel"_s);
}

TEST_F(UserPaneOfStaleNodes, ASecondClickWhileTheTreeFollowsARenameRenamesNothing)
{
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    EXPECT_TRUE(pressOkTwice().contains(u"frmUser.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes().filter(u"INSERT INTO TW_USER "_s).size(), 1);
    EXPECT_EQ(statements.writes().filter(u"UPDATE TW_USER "_s).size(), 1);
    EXPECT_EQ(state(), displayState);
}
