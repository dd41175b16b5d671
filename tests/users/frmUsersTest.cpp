#include "UsersGridFixture.h"

#include "ToolBar.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace usersgrid;

namespace
{

const QString admin = u"ADMIN||Administrator of this catalog"_s;
const QString boss = u"BOSS|**********|"_s;
const QString clerk = u"CLERK|**********|at the desk"_s;
const QString selectAll = u"SELECT USER_NAME, USER_PASSWORD, REMARKS FROM TW_USER ORDER BY USER_NAME ASC"_s;

QString nameIsTakenInGrid(const QString& name)
{
    return u"SELECT USER_NAME FROM TW_USER WHERE USER_NAME = '%1'"_s.arg(name);
}

class UsersGrid : public UsersGridTest
{
protected:
    void openUsers() { open({u"US"_s}); }
    QStringList nodes() const { return children(key({u"US"_s})); }
};

} // namespace

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(UsersGrid, ShowsTheUsersAndWhetherTheyHaveAPassword)
{
    openUsers();
    EXPECT_EQ(paneTitle(), datasource + u" - Users"_s);
    EXPECT_EQ(headings(), (QStringList{u"User Name"_s, u"User Password"_s, u"Remarks"_s}));
    EXPECT_EQ(rows(), (QStringList{admin, boss, clerk, u"||"_s}));
    EXPECT_EQ(current(), u"0 User Name"_s);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_TRUE(grid().verticalHeader()->isVisible());
    EXPECT_EQ(grid().model()->headerData(blankRow(), Qt::Vertical).toString(), u"*"_s);
    EXPECT_EQ(grid().model()->headerData(0, Qt::Vertical).toString(), QString());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(UsersGrid, ReadsTheColumnsOnceAndTheRows)
{
    start();
    expandTo(key());
    statements.clear();
    click(key({u"US"_s}));
    EXPECT_EQ(sent(), (QStringList{describe, selectAll}));
    statements.clear();
    click(key({u"US"_s}));
    EXPECT_EQ(sent(), QStringList{selectAll});
}

TEST_F(UsersGrid, NullsShowAsEmptyTexts)
{
    change(u"UPDATE TW_USER SET USER_PASSWORD = NULL, REMARKS = NULL"_s);
    openUsers();
    EXPECT_EQ(rows(), (QStringList{u"ADMIN||"_s, u"BOSS||"_s, u"CLERK||"_s, u"||"_s}));
    change(u"BOSS"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRemarks(u"BOSS"_s, u"x"_s)});
    EXPECT_EQ(password(u"BOSS"_s), u"<null>"_s);
}

TEST_F(UsersGrid, UpLeadsNowhere)
{
    openUsers();
    window->toolBar(u"tbrUsers"_s).Button(u"Up1"_s).press();
    EXPECT_EQ(currentPane(), u"frmUsers"_s);
    EXPECT_EQ(window->toolBar(u"tbrUsers"_s).Button(u"Up1"_s).ToolTipText(), u"No where to go!"_s);
    EXPECT_EQ(sent(), QStringList());
}

// The administrator --------------------------------------------------------------------------------------------------

TEST_F(UsersGrid, TheNameOfTheAdministratorCannotBeEntered)
{
    openUsers();
    click(u"ADMIN"_s, u"User Name"_s);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Delete, Qt::Key_F2, Qt::Key_X}) {
        hit(key);
        EXPECT_EQ(editor(), nullptr) << key;
    }
    QApplication::clipboard()->setText(u"root"_s);
    hit(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(editor(), nullptr);
    doubleClick(0, u"User Name"_s);
    EXPECT_EQ(editor(), nullptr);
    change(u"ADMIN"_s, u"User Password"_s, u"root"_s);
    change(u"ADMIN"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updatePassword(u"ADMIN"_s, u"ROOT"_s, u"x"_s)});
    EXPECT_EQ(rows().front(), u"ADMIN|**********|x"_s);
    change(u"BOSS"_s, u"User Name"_s, u"admin2"_s);
    EXPECT_NE(editor(), nullptr);
}

// Passwords ----------------------------------------------------------------------------------------------------------

TEST_F(UsersGrid, ATypedPasswordShowsAsAsterisksAndIsWritten)
{
    openUsers();
    change(u"ADMIN"_s, u"User Password"_s, u"s e c"_s);
    auto* entry = qobject_cast<QLineEdit*>(editor());
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->echoMode(), QLineEdit::Password);
    EXPECT_EQ(entry->text(), u"SEC"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(cell(u"ADMIN"_s, u"User Password"_s), mask);
    EXPECT_EQ(sent(), QStringList());
    leave();
    EXPECT_EQ(sent(), QStringList{updatePassword(u"ADMIN"_s, u"SEC"_s, u"Administrator of this catalog"_s)});
    EXPECT_EQ(password(u"ADMIN"_s), u"SEC"_s);
}

TEST_F(UsersGrid, OtherCellsShowWhatIsTypedIntoThem)
{
    openUsers();
    change(u"BOSS"_s, u"User Password"_s, u"x"_s);
    hit(Qt::Key_Tab);
    write(u"y"_s);
    EXPECT_EQ(qobject_cast<QLineEdit*>(editor())->echoMode(), QLineEdit::Normal);
    EXPECT_EQ(editorText(), u"y"_s);
}

TEST_F(UsersGrid, WithoutATypedPasswordOnlyTheRemarksAreWritten)
{
    openUsers();
    change(u"CLERK"_s, u"Remarks"_s, u"It's 100%1 O'Hara"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRemarks(u"CLERK"_s, u"It''s 100%1 O''Hara"_s)});
    EXPECT_EQ(users(), (QStringList{storedBoss, u"CLERK|OLD-SECRET|It's 100%1 O'Hara"_s}));
}

TEST_F(UsersGrid, APasswordOfAnyScriptIsWrittenAsItIs)
{
    openUsers();
    pasteInto(u"CLERK"_s, u"User Password"_s, u"O'HARA %1 \"ключ\" 鍵 🚀"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updatePassword(u"CLERK"_s, u"O''HARA %1 \"ключ\" 鍵 🚀"_s, u"at the desk"_s)});
    EXPECT_EQ(password(u"CLERK"_s), u"O'HARA %1 \"ключ\" 鍵 🚀"_s);
}

TEST_F(UsersGrid, APasswordOfAsterisksIsAPassword)
{
    openUsers();
    pasteInto(u"CLERK"_s, u"User Password"_s, mask);
    leave();
    EXPECT_EQ(password(u"CLERK"_s), mask);
}

TEST_F(UsersGrid, APasswordOfBlanksIsNone)
{
    openUsers();
    pasteInto(u"ADMIN"_s, u"User Password"_s, u"    "_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(cell(0, u"User Password"_s), QString());
    pasteInto(u"CLERK"_s, u"User Password"_s, u"    "_s);
    leave();
    pasteInto(blankRow(), u"User Name"_s, u"NEW"_s);
    pasteInto(blankRow(), u"User Password"_s, u"    "_s);
    leave();
    EXPECT_EQ(sent(), (QStringList{updateRemarks(u"ADMIN"_s, u"Administrator of this catalog"_s),
                                   updateRemarks(u"CLERK"_s, u"at the desk"_s), nameIsTakenInGrid(u"NEW"_s),
                                   insertUser(u"NEW"_s, {}, {})}));
    EXPECT_EQ(rows(), (QStringList{admin, boss, clerk, u"NEW||"_s, u"||"_s}));
    EXPECT_EQ(users(), (QStringList{storedBoss, storedClerk, u"NEW||"_s}));
}

TEST_F(UsersGrid, APasswordThatIsTakenBackIsNotWritten)
{
    openUsers();
    change(u"CLERK"_s, u"User Password"_s, u"x"_s);
    hit(Qt::Key_Return);
    click(u"CLERK"_s, u"User Password"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(editorText(), u"X"_s);
    hit(Qt::Key_Backspace);
    leave();
    EXPECT_EQ(statements.writes(), QStringList{updateRemarks(u"CLERK"_s, u"at the desk"_s)});
    EXPECT_EQ(password(u"CLERK"_s), u"OLD-SECRET"_s);
    EXPECT_EQ(cell(u"CLERK"_s, u"User Password"_s), mask);
}

TEST_F(UsersGrid, TheCellOfAStoredPasswordOpensEmptyAndIsNotTouchedByBeingEntered)
{
    openUsers();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F2}) {
        click(u"CLERK"_s, u"User Password"_s);
        hit(key);
        EXPECT_EQ(editorText(), QString());
        hit(Qt::Key_Escape);
        EXPECT_EQ(cell(u"CLERK"_s, u"User Password"_s), mask);
    }
    click(u"CLERK"_s, u"User Password"_s);
    hit(Qt::Key_Delete);
    leave();
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(rows(), (QStringList{admin, boss, clerk, u"||"_s}));
}

TEST_F(UsersGrid, TextsEndAtTheWidthOfTheirColumn)
{
    openUsers();
    change(u"BOSS"_s, u"User Password"_s, QString(40, 'p'_L1));
    EXPECT_EQ(editorText(), QString(32, 'P'_L1));
    hit(Qt::Key_Escape);
    for (const auto& [heading, width] :
         {std::pair("User Name", 32), std::pair("User Password", 32), std::pair("Remarks", 254)}) {
        SCOPED_TRACE(heading);
        pasteInto(u"BOSS"_s, QLatin1String(heading), QString(300, 'p'_L1));
        EXPECT_EQ(editorText(), QString(width, 'p'_L1));
        hit(Qt::Key_Escape);
    }
    leave();
    EXPECT_EQ(sent(), QStringList());
}

// Adding -------------------------------------------------------------------------------------------------------------

TEST_F(UsersGrid, ANewUserIsInsertedWithoutAWarning)
{
    openUsers();
    change(blankRow(), u"User Name"_s, u"b c"_s);
    hit(Qt::Key_Tab);
    write(u"secret"_s);
    hit(Qt::Key_Tab);
    write(u"it's"_s);
    leave();
    change(blankRow(), u"User Name"_s, u"d"_s);
    leave();
    EXPECT_EQ(sent(), (QStringList{nameIsTakenInGrid(u"B_C"_s), insertUser(u"B_C"_s, u"SECRET"_s, u"it''s"_s),
                                   nameIsTakenInGrid(u"D"_s), insertUser(u"D"_s, {}, {})}));
    EXPECT_EQ(rows(), (QStringList{admin, boss, clerk, u"B_C|**********|it's"_s, u"D||"_s, u"||"_s}));
    EXPECT_EQ(nodes(), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"B_C"_s, u"CLERK"_s, u"D"_s}));
    EXPECT_EQ(selectedKey(), key({u"US"_s}));
    EXPECT_TRUE(grid().hasFocus());

    // From now on the row goes by its name.
    statements.clear();
    change(u"D"_s, u"User Password"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updatePassword(u"D"_s, u"X"_s, {})});
}

TEST_F(UsersGrid, ThreeUsersAreAddedOneBelowTheOther)
{
    openUsers();
    click(blankRow(), u"User Name"_s);
    for (const char* name : {"x", "y", "z"}) {
        write(QLatin1String(name));
        hit(Qt::Key_Tab);
        write(QLatin1String(name));
        hit(Qt::Key_Down);
        EXPECT_EQ(current(), QString::number(blankRow()) + u" User Password"_s);
        EXPECT_EQ(rows().last(), u"||"_s);
        click(blankRow(), u"User Name"_s);
    }
    EXPECT_EQ(users(), (QStringList{storedBoss, storedClerk, u"X|X|"_s, u"Y|Y|"_s, u"Z|Z|"_s}));
}

TEST_F(UsersGrid, APasswordOfTheRowAboveIsNotTheNextOnes)
{
    openUsers();
    change(blankRow(), u"User Name"_s, u"x"_s);
    change(blankRow(), u"User Password"_s, u"first"_s);
    leave();
    change(blankRow(), u"User Name"_s, u"y"_s);
    leave();
    EXPECT_EQ(password(u"Y"_s), QString());
    change(u"CLERK"_s, u"User Password"_s, u"second"_s);
    click(u"BOSS"_s, u"Remarks"_s);
    change(u"BOSS"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(password(u"BOSS"_s), u"TOP-SECRET"_s);
}

TEST_F(UsersGrid, ABlankRowThatIsLeftAsItWasAddsNothing)
{
    openUsers();
    change(blankRow(), u"User Name"_s, u"x"_s);
    hit(Qt::Key_Return);
    change(blankRow(), u"User Name"_s, {});
    leave();
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(rows().last(), u"||"_s);
}

// Renaming -----------------------------------------------------------------------------------------------------------

TEST_F(UsersGrid, ARenamedUserLosesThePasswordAndLeavesTheRightsUnderTheOldName)
{
    openUsers();
    change(u"CLERK"_s, u"User Name"_s, u"teller"_s);
    boxes.expectInform(warning);
    leave();
    EXPECT_EQ(sent(), (QStringList{nameIsTakenInGrid(u"TELLER"_s), u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s,
                                   insertUser(u"TELLER"_s, {}, u"at the desk"_s)}));
    EXPECT_EQ(users(), (QStringList{storedBoss, u"TELLER||at the desk"_s}));
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}));
    EXPECT_EQ(nodes(), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"TELLER"_s}));
    // The cell tells that there is no password any more.
    EXPECT_EQ(rows(), (QStringList{admin, boss, u"TELLER||at the desk"_s, u"||"_s}));
}

TEST_F(UsersGrid, ARenamedUserWithATypedPasswordGetsThat)
{
    openUsers();
    change(u"CLERK"_s, u"User Name"_s, u"teller"_s);
    change(2, u"User Password"_s, u"fresh"_s);
    leave();
    EXPECT_EQ(statements.writes(), (QStringList{u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s,
                                                insertUser(u"TELLER"_s, u"FRESH"_s, u"at the desk"_s)}));
    EXPECT_EQ(cell(u"TELLER"_s, u"User Password"_s), mask);
}

TEST_F(UsersGrid, ANameThatIsPutBackIsNoOtherName)
{
    openUsers();
    change(u"CLERK"_s, u"User Name"_s, u"teller"_s);
    hit(Qt::Key_Return);
    change(2, u"User Name"_s, u"clerk"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRemarks(u"CLERK"_s, u"at the desk"_s)});
}

TEST_F(UsersGrid, AnApostropheInANameIsDoubled)
{
    openUsers();
    pasteInto(u"BOSS"_s, u"User Name"_s, u"O'HARA"_s);
    boxes.expectInform(warning);
    leave();
    change(u"O'HARA"_s, u"User Password"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(), (QStringList{nameIsTakenInGrid(u"O''HARA"_s), u"DELETE FROM TW_USER WHERE USER_NAME = 'BOSS'"_s,
                                   insertUser(u"O''HARA"_s, {}, {}), updatePassword(u"O''HARA"_s, u"X"_s, {})}));
    change(u"O'HARA"_s, u"User Name"_s, u"boss"_s);
    boxes.expectInform(warning);
    leave();
    EXPECT_EQ(users(), (QStringList{u"BOSS||"_s, storedClerk}));
}

// Validation ---------------------------------------------------------------------------------------------------------

TEST_F(UsersGrid, ABlankNameIsRefused)
{
    openUsers();
    change(u"CLERK"_s, u"User Name"_s, {});
    expectRefused(u"User Name cannot be blank"_s, u"2 User Name"_s);
    write(u"clerk"_s);
    leave();
    change(blankRow(), u"User Password"_s, u"x"_s);
    expectRefused(u"User Name cannot be blank"_s, u"3 User Name"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateRemarks(u"CLERK"_s, u"at the desk"_s)});
}

TEST_F(UsersGrid, ANameOfBlanksIsBlank)
{
    openUsers();
    pasteInto(u"CLERK"_s, u"User Name"_s, u"   "_s);
    expectRefused(u"User Name cannot be blank"_s, u"2 User Name"_s);
    hit(Qt::Key_Escape);
    reopen({u"US"_s});
    pasteInto(blankRow(), u"User Name"_s, u"   "_s);
    expectRefused(u"User Name cannot be blank"_s, u"3 User Name"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(UsersGrid, ANameThatIsTakenIsRefusedWithoutAWarning)
{
    const QString taken = u"This Datasource already contains a User called 'BOSS'"_s;
    openUsers();
    change(u"CLERK"_s, u"User Name"_s, u"boss"_s);
    expectRefused(taken, u"2 User Name"_s);
    EXPECT_EQ(sent(), QStringList{nameIsTakenInGrid(u"BOSS"_s)});
    hit(Qt::Key_Escape);
    change(2, u"User Name"_s, u"clerk"_s);
    leave();
    change(blankRow(), u"User Name"_s, u"boss"_s);
    expectRefused(taken, u"3 User Name"_s);
    EXPECT_EQ(users(), (QStringList{storedBoss, storedClerk}));
    // What has been typed besides is still there when the name is mended.
    write(u"2"_s);
    change(3, u"User Password"_s, u"x"_s);
    leave();
    EXPECT_EQ(password(u"BOSS2"_s), u"X"_s);
}

// What others do, and failures ---------------------------------------------------------------------------------------

TEST_F(UsersGrid, AUserThatSomeoneHasDeletedIsNotMadeAnew)
{
    openUsers();
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s);
    change(u"CLERK"_s, u"User Password"_s, u"x"_s);
    leave();
    EXPECT_EQ(users(), QStringList{storedBoss});
    EXPECT_EQ(nodes(), (QStringList{u"ADMIN"_s, u"BOSS"_s}));
}

TEST_F(UsersGrid, MissingPrivilegesAreOneBoxAndKeepTheRowAndItsPassword)
{
    openUsers();
    change(u"CLERK"_s, u"User Password"_s, u"fresh"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    leave();
    EXPECT_EQ(current(), u"2 User Password"_s);
    EXPECT_EQ(cell(u"CLERK"_s, u"User Password"_s), mask);
    EXPECT_EQ(errors.shown().size(), 0u);
    leave();
    EXPECT_EQ(password(u"CLERK"_s), u"FRESH"_s);
}

TEST_F(UsersGrid, AFailureBetweenDeleteAndInsertLosesNothingThatWasEntered)
{
    openUsers();
    change(u"CLERK"_s, u"User Name"_s, u"teller"_s);
    change(2, u"User Password"_s, u"fresh"_s);
    statements.clear();
    statements.failAt(3);
    errors.expect(Press::Ignore);
    leave();
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmUsers.LeaveCell"_s);
    EXPECT_EQ(users(), QStringList{storedBoss});
    EXPECT_EQ(rows()[2], u"TELLER|**********|at the desk"_s);
    leave();
    EXPECT_EQ(users(), (QStringList{storedBoss, u"TELLER|FRESH|at the desk"_s}));
}

TEST_F(UsersGrid, ANameThatIsPutBackBehindAFailureKeepsThePassword)
{
    openUsers();
    const QStringList before = users();
    change(u"CLERK"_s, u"User Name"_s, u"teller"_s);
    statements.clear();
    statements.failAt(2);
    boxes.expectInform(warning);
    errors.expect(Press::Ignore);
    leave();
    EXPECT_EQ(users(), before);
    change(u"TELLER"_s, u"User Name"_s, u"clerk"_s);
    statements.clear();
    leave();
    EXPECT_EQ(statements.writes(),
              QStringList{u"UPDATE TW_USER SET REMARKS = 'at the desk' WHERE USER_NAME = 'CLERK'"_s});
    EXPECT_EQ(users(), before);
}

TEST_F(UsersGrid, BlanksInTheNewRowAreNoEntry)
{
    openUsers();
    pasteInto(blankRow(), u"User Password"_s, u"   "_s);
    statements.clear();
    leave();
    EXPECT_EQ(sent(), QStringList());
}
