#include "UsersGridFixture.h"

#include "Settings.h"
#include "ToolBar.h"

#include <QLineEdit>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace usersgrid;

namespace
{

const QString clerk = u"CLERK|SCOTT|**********|DATABASE|Yes|No|Yes|No|sells"_s;
const QString blank = u"||||No|No|No|No|"_s;
const QString readUsers = u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s;
const QString noUser = u"Please select a User Name from the drop down list"_s;

QString selectRows(const QString& database)
{
    return u"SELECT USER_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_INSERT, "
           "ALLOW_UPDATE, ALLOW_DELETE, REMARKS FROM TW_DBPRV WHERE DATABASE_NAME = '%1' ORDER BY USER_NAME ASC"_s.arg(
               database);
}

QString ofUser(const QString& user)
{
    return u"WHERE DATABASE_NAME = 'SALES' AND USER_NAME = '%1'"_s.arg(user);
}

QString userIsTaken(const QString& user)
{
    return u"SELECT USER_NAME FROM TW_DBPRV "_s + ofUser(user);
}

QString insertRow(const QString& user, const QString& values)
{
    return u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
           "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS ) VALUES ('%1', 'SALES', %2)"_s.arg(
               user, values);
}

QString updateRow(const QString& assignments, const QString& user)
{
    return u"UPDATE TW_DBPRV SET "_s + assignments + ' '_L1 + ofUser(user);
}

QString isThere(const QString& user)
{
    return u"The User Name '%1' already has privileges set for this Database."_s.arg(user);
}

class DatabasePrivilegesGrid : public UsersGridTest
{
protected:
    void openRights() { open(ofDatabase(u"SALES"_s)); }
    QStringList nodes() const { return children(key(ofDatabase(u"SALES"_s))); }
};

} // namespace

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegesGrid, ShowsTheRightsAndARowForOthers)
{
    openRights();
    EXPECT_EQ(paneTitle(), u"SALES - Database Privileges"_s);
    EXPECT_EQ(headings(),
              (QStringList{u"User Name"_s, u"Database Username"_s, u"Database Password"_s, u"Security Level"_s,
                           u"Allow Select"_s, u"Allow Insert"_s, u"Allow Update"_s, u"Allow Delete"_s, u"Remarks"_s}));
    EXPECT_EQ(rows(), (QStringList{clerk, blank}));
    EXPECT_EQ(current(), u"0 User Name"_s);
    EXPECT_EQ(grid().model()->headerData(blankRow(), Qt::Vertical).toString(), u"*"_s);
}

TEST_F(DatabasePrivilegesGrid, ReadsTheUsersTheColumnsOnceAndTheRows)
{
    start();
    expandTo(key(ofDatabase(u"SALES"_s).first(2)));
    statements.clear();
    click(key(ofDatabase(u"SALES"_s)));
    EXPECT_EQ(statements.statements(), (QStringList{readUsers, u"SELECT * FROM TW_DBPRV "_s, selectRows(u"SALES"_s)}));
    statements.clear();
    click(key(ofDatabase(u"SALES"_s)));
    EXPECT_EQ(statements.statements(), (QStringList{readUsers, selectRows(u"SALES"_s)}));
}

TEST_F(DatabasePrivilegesGrid, NullsShowAsEmptyTextsAndNo)
{
    change(u"UPDATE TW_DBPRV SET DATABASE_USERNAME = NULL, DATABASE_PASSWORD = NULL, ALLOW_SELECT = NULL, "
           "ALLOW_INSERT = NULL, ALLOW_UPDATE = NULL, ALLOW_DELETE = NULL, SECURITY_LEVEL = NULL, REMARKS = NULL"_s);
    openRights();
    EXPECT_EQ(rows(), (QStringList{u"CLERK||||No|No|No|No|"_s, blank}));
}

TEST_F(DatabasePrivilegesGrid, UpShowsTheDatabase)
{
    record(u"frmDatabase"_s, 2);
    openRights();
    EXPECT_EQ(window->toolBar(u"tbrDBPRVs"_s).Button(u"Up1"_s).ToolTipText(), u"Up to Database 'SALES'"_s);
    takeShown();
    window->toolBar(u"tbrDBPRVs"_s).Button(u"Up1"_s).press();
    EXPECT_EQ(takeShown(), QStringList{"frmDatabase "_L1 + datasource + u"/SALES"_s});
    EXPECT_EQ(selectedKey(), key({u"DB"_s, u"db=SALES"_s}));
    EXPECT_TRUE(window->tvwExplorer().hasFocus());
}

TEST_F(DatabasePrivilegesGrid, AnApostropheInTheDatabaseIsDoubled)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('D''OR')"_s);
    open(ofDatabase(u"D'OR"_s));
    EXPECT_EQ(paneTitle(), u"D'OR - Database Privileges"_s);
    EXPECT_EQ(window->toolBar(u"tbrDBPRVs"_s).Button(u"Up1"_s).ToolTipText(), u"Up to Database 'D'OR'"_s);
    change(blankRow(), u"User Name"_s, u"boss"_s);
    leave();
    change(u"BOSS"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(databasePrivileges().value(0), u"D'OR|BOSS|||0|0|0|0||x"_s);
    change(u"BOSS"_s, u"User Name"_s, u"clerk"_s);
    boxes.expectInform(warning);
    leave();
    EXPECT_EQ(databasePrivileges().value(0), u"D'OR|CLERK|||0|0|0|0||x"_s);
}

TEST_F(DatabasePrivilegesGrid, TheListsOfferUsersLevelsAndAnswers)
{
    openRights();
    for (const auto& [heading, items] : {std::pair(u"User Name"_s, QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s}),
                                         std::pair(u"Security Level"_s, QStringList{u"DATABASE"_s, u"TABLE"_s}),
                                         std::pair(u"Allow Select"_s, QStringList{u"No"_s, u"Yes"_s}),
                                         std::pair(u"Allow Delete"_s, QStringList{u"No"_s, u"Yes"_s})}) {
        SCOPED_TRACE(heading.toStdString());
        click(u"CLERK"_s, heading);
        hit(Qt::Key_Return);
        EXPECT_EQ(offered(), items);
        hit(Qt::Key_Escape);
    }
    leave();
    EXPECT_EQ(sent(), QStringList());
}

// Changing -----------------------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegesGrid, AChangeWithoutAPasswordLeavesThePasswordAndTheLevel)
{
    openRights();
    change(u"CLERK"_s, u"Database Username"_s, u"tiger 2"_s);
    change(u"CLERK"_s, u"Security Level"_s, u"t"_s);
    change(u"CLERK"_s, u"Allow Select"_s, u"n"_s);
    change(u"CLERK"_s, u"Allow Delete"_s, u"y"_s);
    change(u"CLERK"_s, u"Remarks"_s, u"it's %1"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRow(u"DATABASE_USERNAME = 'TIGER_2', ALLOW_SELECT = 0, ALLOW_INSERT = 0, "
                                            "ALLOW_UPDATE = 1, ALLOW_DELETE = 1, REMARKS = 'it''s %1'"_s,
                                            u"CLERK"_s)});
    EXPECT_EQ(databasePrivileges(),
              (QStringList{clerkOnDepot, u"SALES|CLERK|TIGER_2|DEEP-SECRET|0|0|1|1|DATABASE|it's %1"_s}));
    // Until the rows are read again the cell shows what has been chosen.
    EXPECT_EQ(cell(0, u"Security Level"_s), u"TABLE"_s);
    reopen(ofDatabase(u"SALES"_s));
    EXPECT_EQ(cell(0, u"Security Level"_s), u"DATABASE"_s);
}

TEST_F(DatabasePrivilegesGrid, ATypedPasswordShowsAsAsterisksAndIsWritten)
{
    openRights();
    pasteInto(u"CLERK"_s, u"Database Password"_s, u"d'or %1 ключ 🚀"_s);
    EXPECT_EQ(qobject_cast<QLineEdit*>(editor())->echoMode(), QLineEdit::Password);
    hit(Qt::Key_Return);
    EXPECT_EQ(cell(0, u"Database Password"_s), mask);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRow(u"DATABASE_USERNAME = 'SCOTT', DATABASE_PASSWORD = 'd''or %1 ключ 🚀', "
                                            "ALLOW_SELECT = 1, ALLOW_INSERT = 0, ALLOW_UPDATE = 1, ALLOW_DELETE = 0, "
                                            "REMARKS = 'sells'"_s,
                                            u"CLERK"_s)});
    EXPECT_EQ(databasePrivileges().value(1), u"SALES|CLERK|SCOTT|d'or %1 ключ 🚀|1|0|1|0|DATABASE|sells"_s);
}

TEST_F(DatabasePrivilegesGrid, APasswordOfBlanksIsNone)
{
    openRights();
    pasteInto(u"CLERK"_s, u"Database Password"_s, u"   "_s);
    leave();
    EXPECT_FALSE(statements.writes().join(QString()).contains("DATABASE_PASSWORD"_L1));
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
    EXPECT_EQ(cell(0, u"Database Password"_s), mask);
}

TEST_F(DatabasePrivilegesGrid, TextsEndAtTheWidthOfTheirColumn)
{
    openRights();
    for (const auto& [heading, width] :
         {std::pair("Database Username", 32), std::pair("Database Password", 32), std::pair("Remarks", 254)}) {
        SCOPED_TRACE(heading);
        pasteInto(u"CLERK"_s, QLatin1String(heading), QString(300, 'p'_L1));
        EXPECT_EQ(editorText(), QString(width, 'p'_L1));
        hit(Qt::Key_Escape);
    }
}

TEST_F(DatabasePrivilegesGrid, AnotherUserTakesTheRowWithoutItsPassword)
{
    openRights();
    change(u"CLERK"_s, u"User Name"_s, u"b"_s);
    boxes.expectInform(warning);
    leave();
    EXPECT_EQ(sent(), (QStringList{userIsTaken(u"BOSS"_s), u"DELETE FROM TW_DBPRV "_s + ofUser(u"CLERK"_s),
                                   insertRow(u"BOSS"_s, u"'SCOTT', '', 1, 0, 1, 0, 'DATABASE', 'sells'"_s)}));
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, u"SALES|BOSS|SCOTT||1|0|1|0|DATABASE|sells"_s}));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}));
    EXPECT_EQ(nodes(), QStringList{u"BOSS"_s});
    EXPECT_EQ(rows(), (QStringList{u"BOSS|SCOTT||DATABASE|Yes|No|Yes|No|sells"_s, blank}));
}

TEST_F(DatabasePrivilegesGrid, AnotherUserWithATypedPasswordGetsThatAndTheChosenLevel)
{
    openRights();
    change(u"CLERK"_s, u"User Name"_s, u"b"_s);
    change(0, u"Database Password"_s, u"fresh"_s);
    change(0, u"Security Level"_s, u"t"_s);
    leave();
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, u"SALES|BOSS|SCOTT|FRESH|1|0|1|0|TABLE|sells"_s}));
    EXPECT_EQ(cell(0, u"Database Password"_s), mask);
}

TEST_F(DatabasePrivilegesGrid, ARowOfAnEmptyUserIsReplacedAndNotDoubled)
{
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME) VALUES ('', 'SALES', 'TIGER')"_s);
    openRights();
    change(0, u"User Name"_s, u"b"_s);
    boxes.expectInform(warning);
    leave();
    EXPECT_EQ(statements.writes(), (QStringList{u"DELETE FROM TW_DBPRV "_s + ofUser({}),
                                                insertRow(u"BOSS"_s, u"'TIGER', '', 0, 0, 0, 0, '', ''"_s)}));
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, u"SALES|BOSS|TIGER||0|0|0|0||"_s, clerkOnSales}));
}

TEST_F(DatabasePrivilegesGrid, AUserWhoIsGoneStaysInTheRow)
{
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s);
    openRights();
    click(0, u"User Name"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(offered(), (QStringList{u"ADMIN"_s, u"BOSS"_s}));
    hit(Qt::Key_Return);
    change(0, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(databasePrivileges().value(1), u"SALES|CLERK|SCOTT|DEEP-SECRET|1|0|1|0|DATABASE|x"_s);
}

// Adding -------------------------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegesGrid, ANewRowIsInsertedWithoutAWarning)
{
    openRights();
    change(blankRow(), u"User Name"_s, u"b"_s);
    change(blankRow(), u"Database Password"_s, u"secret"_s);
    change(blankRow(), u"Security Level"_s, u"t"_s);
    change(blankRow(), u"Allow Insert"_s, u"y"_s);
    leave();
    change(blankRow(), u"User Name"_s, u"a"_s);
    leave();
    EXPECT_EQ(sent(),
              (QStringList{userIsTaken(u"BOSS"_s), insertRow(u"BOSS"_s, u"'', 'SECRET', 0, 1, 0, 0, 'TABLE', ''"_s),
                           userIsTaken(u"ADMIN"_s), insertRow(u"ADMIN"_s, u"'', '', 0, 0, 0, 0, '', ''"_s)}));
    EXPECT_EQ(rows(),
              (QStringList{clerk, u"BOSS||**********|TABLE|No|Yes|No|No|"_s, u"ADMIN||||No|No|No|No|"_s, blank}));
    EXPECT_EQ(nodes(), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s}));
}

TEST_F(DatabasePrivilegesGrid, OfUsersThatDifferInCaseTheChosenOneGetsTheRights)
{
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('Boss')"_s);
    openRights();
    for (const QString& user : {u"Boss"_s, u"BOSS"_s}) {
        chooseFromList(blankRow(), u"User Name"_s, user);
        leave();
    }
    EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' ORDER BY USER_NAME"_s),
              (QStringList{u"BOSS"_s, u"Boss"_s, u"CLERK"_s}));
}

TEST_F(DatabasePrivilegesGrid, ABlankRowThatIsLeftAsItWasAddsNothing)
{
    openRights();
    click(blankRow(), u"Allow Select"_s);
    hit(Qt::Key_Return);
    hit(Qt::Key_Return);
    change(blankRow(), u"Allow Select"_s, u"y"_s);
    hit(Qt::Key_Return);
    change(blankRow(), u"Allow Select"_s, u"n"_s);
    leave();
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(rows(), (QStringList{clerk, blank}));
}

// Validation ---------------------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegesGrid, AMissingUserIsRefused)
{
    openRights();
    change(blankRow(), u"Remarks"_s, u"x"_s);
    expectRefused(noUser, u"1 User Name"_s);
    EXPECT_EQ(sent(), QStringList());
    write(u"b"_s);
    leave();
    EXPECT_EQ(databasePrivileges().value(1), u"SALES|BOSS|||0|0|0|0||x"_s);
    change(u"CLERK"_s, u"User Name"_s, {});
    expectRefused(noUser, u"0 User Name"_s);
}

TEST_F(DatabasePrivilegesGrid, RightsThatAreThereAlreadyAreRefused)
{
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('BOSS', 'SALES')"_s);
    openRights();
    change(blankRow(), u"User Name"_s, u"c"_s);
    expectRefused(isThere(u"CLERK"_s), u"2 User Name"_s);
    EXPECT_EQ(sent(), QStringList{userIsTaken(u"CLERK"_s)});
    hit(Qt::Key_Escape);
    reopen(ofDatabase(u"SALES"_s));
    change(u"CLERK"_s, u"User Name"_s, u"b"_s);
    expectRefused(isThere(u"BOSS"_s), u"1 User Name"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

// What others do, and failures ---------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegesGrid, RightsOfAUserWhoWasDeletedAreNotMadeAnew)
{
    openRights();
    for (const char* table : {"TW_USER", "TW_DBPRV", "TW_TBLPRV"})
        change(u"DELETE FROM %1 WHERE USER_NAME = 'CLERK'"_s.arg(QLatin1String(table)));
    change(u"CLERK"_s, u"Allow Delete"_s, u"y"_s);
    leave();
    EXPECT_EQ(databasePrivileges(), QStringList());
    EXPECT_EQ(nodes(), QStringList());
}

TEST_F(DatabasePrivilegesGrid, MissingPrivilegesAreOneBoxAndKeepTheRow)
{
    openRights();
    change(u"CLERK"_s, u"Remarks"_s, u"x"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    leave();
    EXPECT_EQ(current(), u"0 Remarks"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    leave();
    EXPECT_EQ(databasePrivileges().value(1), u"SALES|CLERK|SCOTT|DEEP-SECRET|1|0|1|0|DATABASE|x"_s);
}
