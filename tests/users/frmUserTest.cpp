#include "UserPaneFixture.h"

#include "Settings.h"
#include "ToolBar.h"

#include <QApplication>
#include <QPushButton>

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using namespace userpane;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(UserPane, AClickOpensAUserForChange)
{
    open(user(u"CLERK"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readUser(u"CLERK"_s)}));
    EXPECT_EQ(currentPane(), u"frmUser"_s);
    EXPECT_EQ(paneTitle(), u"CLERK - Edit User Properties"_s);
    EXPECT_EQ(texts(shownColumns), (QStringList{u"CLERK"_s, u"at the desk"_s}));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{filler, filler}));
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), (QStringList{u"USER_NAME"_s, u"USER_PASSWORD"_s, u"REMARKS"_s}));
    EXPECT_TRUE(control(u"txtConfirm"_s).isEnabled());
    EXPECT_EQ(focus(), u"USER_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Update"_s);
    EXPECT_TRUE(control(u"cmdAction"_s).isEnabled());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(UserPane, TheColumnsAreAskedForOnce)
{
    open(user(u"CLERK"_s));
    open(user(u"BOSS"_s));
    EXPECT_EQ(statements.statements(), QStringList{readUser(u"BOSS"_s)});
}

TEST_F(UserPane, WithTheOptionOffAClickOnlyShows)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(user(u"CLERK"_s));
    EXPECT_EQ(paneTitle(), u"CLERK - User Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    EXPECT_FALSE(control(u"txtConfirm"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdAction"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdCancel"_s).isEnabled());
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{filler, filler}));
    press(u"User Edit"_s);
    EXPECT_EQ(paneTitle(), u"CLERK - Edit User Properties"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(paneTitle(), u"CLERK - User Properties"_s);
    EXPECT_FALSE(control(u"txtConfirm"_s).isEnabled());
}

TEST_F(UserPane, TellsWhatEachPropertyIs)
{
    open(user(u"CLERK"_s));
    const std::vector<std::tuple<const char*, const char*, const char*, const char*>> rows{
        {"txtProperty_USER_NAME", "&User Name:", "User Name", ""},
        {"txtProperty_USER_PASSWORD", "&Password:", "Password", ""},
        {"txtConfirm", "&Confirm Password:", "Confirm Password", ""},
        {"txtProperty_REMARKS", "Re&marks:", "Remarks", "Any notes you wish to make about this User"},
    };
    for (const auto& [name, text, spoken, toolTip] : rows) {
        SCOPED_TRACE(name);
        const QWidget& found = control(QLatin1String(name));
        EXPECT_EQ(prompt(found), QLatin1String(text));
        EXPECT_EQ(found.accessibleName(), QLatin1String(spoken));
        EXPECT_EQ(found.toolTip(), QLatin1String(toolTip));
    }
    for (const char* name : {"txtProperty_USER_PASSWORD", "txtConfirm"})
        EXPECT_EQ(box(QLatin1String(name)).echoMode(), QLineEdit::Password);
    EXPECT_EQ(window->toolBar(u"tbrUser"_s).Button(u"Up1"_s).ToolTipText(), u"Up to User collection"_s);
}

TEST_F(UserPane, TheTabKeyWalksFromTopToBottom)
{
    open(user(u"CLERK"_s));
    EXPECT_EQ(walked(5), (QStringList{u"USER_NAME"_s, u"USER_PASSWORD"_s, u"txtConfirm"_s, u"REMARKS"_s, u"cmdAction"_s,
                                      u"cmdCancel"_s}));
}

TEST_F(UserPane, NullsShowAsEmptyTexts)
{
    change(u"UPDATE TW_USER SET USER_PASSWORD = NULL, REMARKS = NULL WHERE USER_NAME = 'CLERK'"_s);
    open(user(u"BOSS"_s));
    open(user(u"CLERK"_s));
    EXPECT_EQ(texts(shownColumns), (QStringList{u"CLERK"_s, u""_s}));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{filler, filler}));
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateRemarks(u"CLERK"_s, {})});
}

TEST_F(UserPane, AUserThatIsGoneShowsNoValues)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(user(u"BOSS"_s));
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s);
    click(key(user(u"CLERK"_s)));
    EXPECT_EQ(paneTitle(), u"CLERK - User Properties"_s);
    EXPECT_EQ(texts(shownColumns), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(state(), displayState);
}

TEST_F(UserPane, AnotherClickDropsWhatWasEntered)
{
    open(user(u"CLERK"_s));
    write(u"REMARKS"_s, u"x"_s);
    writePassword(u"USER_PASSWORD"_s, u"new"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
    click(key(user(u"CLERK"_s)));
    EXPECT_EQ(texts(shownColumns), (QStringList{u"CLERK"_s, u"at the desk"_s}));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{filler, filler}));
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(UserPane, UpShowsTheUsersAndSelectsTheirNode)
{
    record({{u"frmUsers"_s, 1}});
    open(user(u"CLERK"_s));
    statements.clear();
    press(u"Up1"_s);
    EXPECT_EQ(takeShown(), QStringList{"frmUsers "_L1 + datasource});
    EXPECT_EQ(selectedKey(), key({u"US"_s}));
    EXPECT_TRUE(window->tvwExplorer().hasFocus());
    EXPECT_EQ(statements.statements(), QStringList());
}

// Passwords in their boxes -------------------------------------------------------------------------------------------

TEST_F(UserPane, WhatIsTypedIntoThePasswordReplacesTheFiller)
{
    open(user(u"CLERK"_s));
    hit(Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(box(u"txtProperty_USER_PASSWORD"_s).selectedText().size(), filler.size());
    QTest::keyClicks(window->focusWidget(), u"x7"_s);
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{u"X7"_s, filler}));
}

TEST_F(UserPane, AClickIntoThePasswordSelectsTheFillerToo)
{
    open(user(u"CLERK"_s));
    QTest::mouseClick(&entry(u"USER_PASSWORD"_s), Qt::LeftButton);
    QCoreApplication::processEvents();
    QTest::keyClicks(window->focusWidget(), u"x7"_s);
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s).front(), u"X7"_s);
}

TEST_F(UserPane, TheCursorOfTheConfirmationStandsBehindTheFiller)
{
    open(user(u"CLERK"_s));
    EXPECT_EQ(box(u"txtConfirm"_s).cursorPosition(), filler.size());
    EXPECT_FALSE(box(u"txtConfirm"_s).hasSelectedText());
}

TEST_F(UserPane, TheKeysOfAPasswordAreThoseOfANameButForTheBlank)
{
    open(user(u"CLERK"_s));
    writePassword(u"USER_PASSWORD"_s, u"a b.c'd-e_1%"_s);
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{u"ABCD-E_1"_s, u"ABCD-E_1"_s}));
    write(u"USER_NAME"_s, u"a b.c'd-e_1%"_s);
    EXPECT_EQ(text(u"USER_NAME"_s), u"A_BCD-E_1"_s);
    write(u"REMARKS"_s, u"a b.c'd-e_1%"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"a b.c'd-e_1%"_s);
}

TEST_F(UserPane, TextsEndAtTheWidthOfTheirColumn)
{
    open(user(u"CLERK"_s));
    writePassword(u"USER_PASSWORD"_s, QString(40, 'p'_L1));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{QString(32, 'P'_L1), QString(32, 'P'_L1)}));
    pastePassword(u"USER_PASSWORD"_s, QString(32, 'q'_L1) + u"rest"_s);
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{QString(32, 'q'_L1), QString(32, 'q'_L1)}));
    pastePassword(u"USER_PASSWORD"_s, QString(31, 'q'_L1) + u"🚀"_s);
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{QString(31, 'q'_L1), QString(31, 'q'_L1)}));
    write(u"USER_NAME"_s, QString(40, 'n'_L1));
    EXPECT_EQ(text(u"USER_NAME"_s), QString(32, 'N'_L1));
    paste(u"REMARKS"_s, QString(300, 'r'_L1));
    EXPECT_EQ(text(u"REMARKS"_s), QString(254, 'r'_L1));
}

// Adding -------------------------------------------------------------------------------------------------------------

TEST_F(UserPane, AddBeginsWithAnEmptyForm)
{
    open(user(u"CLERK"_s));
    command({u"US"_s}, u"mnu_UserAddNew"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(paneTitle(), "Add New User to "_L1 + datasource);
    EXPECT_EQ(texts(shownColumns), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), (QStringList{u"USER_NAME"_s, u"USER_PASSWORD"_s, u"REMARKS"_s}));
    EXPECT_TRUE(control(u"txtConfirm"_s).isEnabled());
    EXPECT_EQ(focus(), u"USER_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Add"_s);
}

TEST_F(UserPane, ThreeUsersAreAddedOneBehindTheOther)
{
    beginToAdd();
    statements.clear();
    write(u"USER_NAME"_s, u"a"_s);
    writePassword(u"USER_PASSWORD"_s, u"one-1"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(), (QStringList{nameIsTaken(u"A"_s), insertUser(u"A"_s, u"ONE-1"_s, {})}));
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel"_s);
    EXPECT_EQ(texts(shownColumns), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(focus(), u"USER_NAME"_s);
    EXPECT_EQ(selectedKey(), key(user(u"A"_s)));

    write(u"USER_NAME"_s, u"b c"_s);
    pastePassword(u"USER_PASSWORD"_s, u"it's 100%1; \"ключ\" 鍵 🚀"_s);
    write(u"REMARKS"_s, u"it's 100%1; \"fine\""_s);
    clickButton(u"cmdAction"_s);
    write(u"USER_NAME"_s, u"d"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    hit(Qt::Key_Return);

    EXPECT_EQ(users(), (QStringList{u"A|ONE-1|"_s, u"BOSS|TOP-SECRET|"_s,
                                    u"B_C|it's 100%1; \"ключ\" 鍵 🚀|it's 100%1; \"fine\""_s, storedClerk, u"D||"_s}));
    EXPECT_EQ(statements.writes(),
              (QStringList{insertUser(u"A"_s, u"ONE-1"_s, {}),
                           insertUser(u"B_C"_s, u"it''s 100%1; \"ключ\" 鍵 🚀"_s, u"it''s 100%1; \"fine\""_s),
                           insertUser(u"D"_s, {}, {})}));
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s, u"A"_s, u"B_C"_s, u"D"_s}));
    EXPECT_EQ(line(node(key(user(u"B_C"_s)))), u"us \"B_C\" User"_s);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(currentPane(), u"frmUsers"_s);
}

TEST_F(UserPane, AddingBelowAClosedCollectionOpensIt)
{
    begin({u"US"_s});
    choose(key({u"US"_s}), u"mnu_UserAddNew"_s);
    write(u"USER_NAME"_s, u"new"_s);
    writePassword(u"USER_PASSWORD"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s, u"NEW"_s}));
    EXPECT_EQ(selectedKey(), key(user(u"NEW"_s)));
}

TEST_F(UserPane, CancelOfAnAddShowsTheCollection)
{
    record({{u"frmUsers"_s, 1}});
    open(user(u"CLERK"_s));
    press(u"Cancel"_s);
    press(u"User Add"_s);
    EXPECT_EQ(takeShown(), QStringList());
    write(u"USER_NAME"_s, u"x"_s);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(takeShown(), QStringList{"frmUsers "_L1 + datasource});
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(UserPane, UndoOfAnAddEmptiesTheFormAndBothPasswords)
{
    beginToAdd();
    write(u"USER_NAME"_s, u"x"_s);
    writePassword(u"USER_PASSWORD"_s, u"abc"_s);
    write(u"REMARKS"_s, u"y"_s);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
    press(u"Undo"_s);
    EXPECT_EQ(texts(shownColumns), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel"_s);
    expectRefused(noName, u"USER_NAME"_s);
}

// Validation ---------------------------------------------------------------------------------------------------------

TEST_F(UserPane, RefusesAMissingNameFirst)
{
    beginToAdd();
    const QStringList tree = wholeTree();
    statements.clear();
    write(u"USER_PASSWORD"_s, u"x"_s);
    expectRefused(noName, u"USER_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
}

TEST_F(UserPane, RefusesANameThatIsTakenBeforeItLooksAtThePassword)
{
    beginToAdd();
    statements.clear();
    write(u"USER_NAME"_s, u"clerk"_s);
    write(u"USER_PASSWORD"_s, u"x"_s);
    expectRefused(isTaken(u"CLERK"_s), u"USER_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{nameIsTaken(u"CLERK"_s)});
    click(key(user(u"BOSS"_s)));
    write(u"USER_NAME"_s, u"clerk"_s);
    expectRefused(isTaken(u"CLERK"_s), u"USER_NAME"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(UserPane, ANewUserWithoutAPasswordIsAskedFor)
{
    beginToAdd();
    statements.clear();
    write(u"USER_NAME"_s, u"new"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::Yes);
    press(u"OK"_s);
    EXPECT_EQ(focus(), u"USER_PASSWORD"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
    write(u"USER_PASSWORD"_s, u"abc"_s);
    expectRefused(noMatch, u"USER_PASSWORD"_s);
    confirm(u"abd"_s);
    expectRefused(noMatch, u"USER_PASSWORD"_s);
    confirm(u"abc"_s);
    press(u"OK"_s);
    EXPECT_EQ(password(u"NEW"_s), u"ABC"_s);
}

TEST_F(UserPane, APasswordOfBlanksIsNone)
{
    beginToAdd();
    write(u"USER_NAME"_s, u"new"_s);
    paste(u"USER_PASSWORD"_s, u"   "_s);
    confirm(u"x"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{insertUser(u"NEW"_s, {}, {})});
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{u""_s, u""_s}));
    click(key(user(u"CLERK"_s)));
    pastePassword(u"USER_PASSWORD"_s, u"   "_s);
    confirm(u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes().back(), updateRemarks(u"CLERK"_s, u"at the desk"_s));
}

TEST_F(UserPane, ThePasswordIsComparedAsItStands)
{
    open(user(u"CLERK"_s));
    paste(u"USER_PASSWORD"_s, u"Secret"_s);
    confirm(u"secret"_s);
    expectRefused(noMatch, u"USER_PASSWORD"_s);
    pastePassword(u"USER_PASSWORD"_s, u" Secret "_s);
    press(u"OK"_s);
    EXPECT_EQ(password(u"CLERK"_s), u" Secret "_s);
}

TEST_F(UserPane, WhatIsTypedNextToTheFillerMustBeConfirmed)
{
    open(user(u"CLERK"_s));
    QTest::mouseClick(&entry(u"USER_PASSWORD"_s), Qt::LeftButton);
    QCoreApplication::processEvents();
    QTest::keyClicks(window->focusWidget(), u"x"_s);
    expectRefused(noMatch, u"USER_PASSWORD"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}
