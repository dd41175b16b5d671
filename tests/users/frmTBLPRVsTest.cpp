#include "UsersGridFixture.h"

#include "Settings.h"
#include "ToolBar.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace usersgrid;

namespace
{

const QString clerk = u"CLERK|Yes|Yes|No|No|takes orders"_s;
const QString blank = u"|No|No|No|No|"_s;
const QString readUsers = u"SELECT USER_NAME FROM TW_USER"_s;
const QString ofOrders = u"WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"_s;
const QString selectRows = u"SELECT USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, REMARKS "
                           "FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' "
                           "ORDER BY USER_NAME ASC"_s;
const QString noUser = u"User Name Cannot be blank."_s;

QString userIsTaken(const QString& user)
{
    return u"SELECT USER_NAME FROM TW_TBLPRV %1 AND USER_NAME = '%2'"_s.arg(ofOrders, user);
}

/// There is no apostrophe in front of the user.
QString malformedDelete(const QString& user)
{
    return u"DELETE FROM TW_TBLPRV %1 AND USER_NAME = %2'"_s.arg(ofOrders, user);
}

QString insertRow(const QString& values)
{
    return u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
           "ALLOW_DELETE, REMARKS) VALUES ('SALES', 'ORDERS', %1)"_s.arg(values);
}

QString updateRow(const QString& assignments, const QString& user)
{
    return u"UPDATE TW_TBLPRV SET %1 %2 AND USER_NAME = '%3'"_s.arg(assignments, ofOrders, user);
}

QString isThere(const QString& user)
{
    return u"This Table already has privileges set for User '%1'"_s.arg(user);
}

class TablePrivilegesGrid : public UsersGridTest
{
protected:
    static QStringList orders() { return ofTable(u"SALES"_s, u"ORDERS"_s); }
    void openRights() { open(orders()); }
    QStringList nodes() const { return children(key(orders())); }
};

} // namespace

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(TablePrivilegesGrid, ShowsTheRightsAndARowForOthers)
{
    openRights();
    EXPECT_EQ(paneTitle(), u"SALES.ORDERS - User Privileges"_s);
    EXPECT_EQ(headings(), (QStringList{u"User Name"_s, u"Allow Select"_s, u"Allow Insert"_s, u"Allow Update"_s,
                                       u"Allow Delete"_s, u"Remarks"_s}));
    EXPECT_EQ(rows(), (QStringList{clerk, blank}));
    EXPECT_EQ(current(), u"0 User Name"_s);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(TablePrivilegesGrid, ReadsTheUsersTheColumnsOnceAndTheRows)
{
    start();
    expandTo(key(orders().first(4)));
    statements.clear();
    click(key(orders()));
    EXPECT_EQ(statements.statements(), (QStringList{readUsers, u"SELECT * FROM TW_TBLPRV "_s, selectRows}));
    statements.clear();
    click(key(orders()));
    EXPECT_EQ(statements.statements(), (QStringList{readUsers, selectRows}));
}

TEST_F(TablePrivilegesGrid, NullsShowAsEmptyTextsAndNo)
{
    change(u"UPDATE TW_TBLPRV SET ALLOW_SELECT = NULL, ALLOW_INSERT = NULL, ALLOW_UPDATE = NULL, ALLOW_DELETE = NULL, "
           "REMARKS = NULL"_s);
    openRights();
    EXPECT_EQ(rows(), (QStringList{u"CLERK|No|No|No|No|"_s, blank}));
}

TEST_F(TablePrivilegesGrid, UpShowsTheTable)
{
    record(u"frmTable"_s, 3);
    openRights();
    EXPECT_EQ(window->toolBar(u"tbrTBLPRVs"_s).Button(u"Up1"_s).ToolTipText(), u"Up to Table 'ORDERS'"_s);
    takeShown();
    window->toolBar(u"tbrTBLPRVs"_s).Button(u"Up1"_s).press();
    EXPECT_EQ(takeShown(), QStringList{"frmTable "_L1 + datasource + u"/SALES/ORDERS"_s});
    EXPECT_EQ(selectedKey(), key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s}));
    EXPECT_TRUE(window->tvwExplorer().hasFocus());
}

TEST_F(TablePrivilegesGrid, TheListsOfferUsersAndAnswers)
{
    openRights();
    click(u"CLERK"_s, u"User Name"_s);
    hit(Qt::Key_Return);
    QStringList users = offered();
    users.sort();
    EXPECT_EQ(users, (QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s}));
    hit(Qt::Key_Escape);
    for (const char* heading : {"Allow Select", "Allow Insert", "Allow Update", "Allow Delete"}) {
        SCOPED_TRACE(heading);
        click(u"CLERK"_s, QLatin1String(heading));
        hit(Qt::Key_Return);
        EXPECT_EQ(offered(), (QStringList{u"No"_s, u"Yes"_s}));
        hit(Qt::Key_Escape);
    }
    leave();
    EXPECT_EQ(sent(), QStringList());
}

// Changing and adding ------------------------------------------------------------------------------------------------

TEST_F(TablePrivilegesGrid, AChangedRowIsUpdatedWhole)
{
    openRights();
    change(u"CLERK"_s, u"Allow Select"_s, u"n"_s);
    change(u"CLERK"_s, u"Allow Delete"_s, u"y"_s);
    pasteInto(u"CLERK"_s, u"Remarks"_s, u"it's %1 ключ 🚀"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRow(u"ALLOW_SELECT = 0, ALLOW_INSERT = 1, ALLOW_UPDATE = 0, ALLOW_DELETE = 1, "
                                            "REMARKS = 'it''s %1 ключ 🚀'"_s,
                                            u"CLERK"_s)});
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, u"SALES|ORDERS|CLERK|0|1|0|1|it's %1 ключ 🚀"_s}));
    EXPECT_EQ(selectedKey(), key(orders()));
}

TEST_F(TablePrivilegesGrid, AUserWithoutRightsOnTheDatabaseCanStillBeGivenThem)
{
    openRights();
    change(blankRow(), u"User Name"_s, u"b"_s);
    change(blankRow(), u"Allow Update"_s, u"y"_s);
    change(blankRow(), u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(), (QStringList{userIsTaken(u"BOSS"_s), insertRow(u"'BOSS', 0, 0, 1, 0, 'x'"_s)}));
    EXPECT_EQ(rows(), (QStringList{clerk, u"BOSS|No|No|Yes|No|x"_s, blank}));
    EXPECT_EQ(nodes(), (QStringList{u"BOSS"_s, u"CLERK"_s}));
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));

    // From now on the row goes by its user.
    statements.clear();
    change(u"BOSS"_s, u"Remarks"_s, u"y"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRow(u"ALLOW_SELECT = 0, ALLOW_INSERT = 0, ALLOW_UPDATE = 1, "
                                            "ALLOW_DELETE = 0, REMARKS = 'y'"_s,
                                            u"BOSS"_s)});
}

TEST_F(TablePrivilegesGrid, OfUsersThatDifferInCaseTheChosenOneGetsTheRights)
{
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('Boss')"_s);
    openRights();
    for (const QString& user : {u"Boss"_s, u"BOSS"_s}) {
        chooseFromList(blankRow(), u"User Name"_s, user);
        leave();
    }
    EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_TBLPRV "_s + ofOrders + u" ORDER BY USER_NAME"_s),
              (QStringList{u"BOSS"_s, u"Boss"_s, u"CLERK"_s}));
}

TEST_F(TablePrivilegesGrid, TheUserOfARowCannotBeChanged)
{
    openRights();
    change(u"CLERK"_s, u"User Name"_s, u"b"_s);
    errors.expect(Press::Ignore);
    leave();
    EXPECT_EQ(sent(), (QStringList{userIsTaken(u"BOSS"_s), malformedDelete(u"CLERK"_s)}));
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmTBLPRVs.LeaveCell"_s);
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}));
    EXPECT_EQ(current(), u"0 User Name"_s);
    EXPECT_EQ(cell(0, u"User Name"_s), u"BOSS"_s);

    // Under its old user the row can still be changed.
    change(0, u"User Name"_s, u"c"_s);
    change(0, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(stored(u"SELECT USER_NAME, REMARKS FROM TW_TBLPRV WHERE TABLE_NAME = 'ORDERS'"_s),
              QStringList{u"CLERK|x"_s});
    change(u"UPDATE TW_TBLPRV SET REMARKS = 'takes orders' WHERE TABLE_NAME = 'ORDERS'"_s);
    reopen(orders());
    change(u"CLERK"_s, u"User Name"_s, u"b"_s);
    errors.expect(Press::Ignore);
    leave();

    // It stays so however often it is tried, and the node shows the row as it is.
    errors.expect(Press::Retry).expect(Press::Ignore);
    leave();
    reopen(orders());
    EXPECT_EQ(rows(), (QStringList{clerk, blank}));
    expandTo(key(orders()));
    EXPECT_EQ(nodes(), QStringList{u"CLERK"_s});
}

TEST_F(TablePrivilegesGrid, AnApostropheInTheUserDoesNotMendTheDelete)
{
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('O''HARA')"_s);
    change(u"UPDATE TW_TBLPRV SET USER_NAME = 'O''HARA' WHERE DATABASE_NAME = 'SALES'"_s);
    openRights();
    change(u"O'HARA"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_TRUE(sent().front().endsWith("AND USER_NAME = 'O''HARA'"_L1));
    statements.clear();
    change(u"O'HARA"_s, u"User Name"_s, u"b"_s);
    errors.expect(Press::Ignore);
    leave();
    EXPECT_EQ(sent().back(), malformedDelete(u"O''HARA"_s));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, u"SALES|ORDERS|O'HARA|1|1|0|0|x"_s}));
}

TEST_F(TablePrivilegesGrid, ARowWithoutAUserCannotBeGivenOne)
{
    change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', '')"_s);
    openRights();
    EXPECT_EQ(rows(), (QStringList{u"|No|No|No|No|"_s, clerk, blank}));
    change(0, u"User Name"_s, u"b"_s);
    errors.expect(Press::Ignore);
    leave();
    EXPECT_EQ(sent(), (QStringList{userIsTaken(u"BOSS"_s), malformedDelete({})}));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, u"SALES|ORDERS||0|0|0|0|"_s, clerkOnOrders}));
}

TEST_F(TablePrivilegesGrid, AUserWhoseNameEndsTheStatementBeforeTheApostropheCannotBeChangedEither)
{
    for (const char* user : {"USER_NAME--", "1--", "1/*", "USER_NAME;", "(SELECT USER_NAME AS [\"]);"}) {
        SCOPED_TRACE(user);
        change(u"DELETE FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES'"_s);
        for (const QString& name : {QString(QLatin1String(user)), u"CLERK"_s, u"1"_s})
            change(
                u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', '%1')"_s.arg(
                    name));
        const QStringList before = tablePrivileges();
        openRights();
        // By a condition of its own the statement would remove the rights of others.
        change(QLatin1String(user), u"User Name"_s, u"b"_s);
        errors.expect(Press::Retry).expect(Press::Ignore);
        leave();
        errors.verify();
        EXPECT_EQ(errors.shown().back().number, u"5"_s);
        EXPECT_EQ(errors.shown().back().description,
                  u"The rights of user '%1' cannot be given to another one"_s.arg(QLatin1String(user)));
        EXPECT_EQ(errors.shown().back().trappedIn, u"frmTBLPRVs.LeaveCell"_s);
        EXPECT_EQ(statements.writes(), QStringList());
        EXPECT_EQ(tablePrivileges(), before);
        EXPECT_EQ(current(), QString::number(rowOf(u"BOSS"_s)) + u" User Name"_s);
        hit(Qt::Key_Escape);

        // What else the row holds can be changed.
        reopen(orders());
        change(QLatin1String(user), u"Remarks"_s, u"x"_s);
        leave();
        EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_TBLPRV WHERE REMARKS = 'x'"_s), QStringList{QLatin1String(user)});
    }
}

TEST_F(TablePrivilegesGrid, ApostrophesInOwnersAreDoubled)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('D''OR')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('D''OR', 'T''X')"_s);
    open(ofTable(u"D'OR"_s, u"T'X"_s));
    EXPECT_EQ(paneTitle(), u"D'OR.T'X - User Privileges"_s);
    change(blankRow(), u"User Name"_s, u"b"_s);
    leave();
    change(u"BOSS"_s, u"Allow Select"_s, u"y"_s);
    leave();
    EXPECT_EQ(tablePrivileges().value(0), u"D'OR|T'X|BOSS|1|0|0|0|"_s);
}

TEST_F(TablePrivilegesGrid, ABlankRowThatIsLeftAsItWasAddsNothing)
{
    openRights();
    change(blankRow(), u"Allow Select"_s, u"y"_s);
    hit(Qt::Key_Return);
    change(blankRow(), u"Allow Select"_s, u"n"_s);
    leave();
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(rows(), (QStringList{clerk, blank}));
}

// Validation ---------------------------------------------------------------------------------------------------------

TEST_F(TablePrivilegesGrid, AMissingUserIsRefused)
{
    openRights();
    change(blankRow(), u"Remarks"_s, u"x"_s);
    expectRefused(noUser, u"1 User Name"_s);
    EXPECT_EQ(sent(), QStringList());
    write(u"b"_s);
    leave();
    EXPECT_EQ(tablePrivileges().value(1), u"SALES|ORDERS|BOSS|0|0|0|0|x"_s);
}

TEST_F(TablePrivilegesGrid, RightsThatAreThereAlreadyAreRefused)
{
    openRights();
    change(blankRow(), u"User Name"_s, u"c"_s);
    expectRefused(isThere(u"CLERK"_s), u"1 User Name"_s);
    EXPECT_EQ(sent(), QStringList{userIsTaken(u"CLERK"_s)});
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}));
}

TEST_F(TablePrivilegesGrid, AChangedUserIsCheckedBeforeTheStatementThatFails)
{
    change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', 'BOSS')"_s);
    openRights();
    change(u"CLERK"_s, u"User Name"_s, u"b"_s);
    expectRefused(isThere(u"BOSS"_s), u"1 User Name"_s);
    EXPECT_EQ(sent(), QStringList{userIsTaken(u"BOSS"_s)});
    change(1, u"User Name"_s, {});
    expectRefused(noUser, u"1 User Name"_s);
    EXPECT_EQ(sent(), QStringList{userIsTaken(u"BOSS"_s)});
}

// What others do, and failures ---------------------------------------------------------------------------------------

TEST_F(TablePrivilegesGrid, RightsThatSomeoneHasTakenAwayAreNotMadeAnew)
{
    openRights();
    change(u"DELETE FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES'"_s);
    change(u"CLERK"_s, u"Allow Delete"_s, u"y"_s);
    leave();
    EXPECT_EQ(tablePrivileges(), QStringList{clerkOnShelf});
    EXPECT_EQ(nodes(), QStringList());
}

TEST_F(TablePrivilegesGrid, MissingPrivilegesAreOneBoxAndKeepTheRow)
{
    openRights();
    change(u"CLERK"_s, u"Allow Delete"_s, u"y"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    leave();
    EXPECT_EQ(current(), u"0 Allow Delete"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    leave();
    EXPECT_EQ(tablePrivileges().value(1), u"SALES|ORDERS|CLERK|1|1|0|1|takes orders"_s);
}
