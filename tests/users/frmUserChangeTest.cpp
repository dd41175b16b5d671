#include "UserPaneFixture.h"

#include "frmTWErr.h"

#include <QTimer>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace userpane;

namespace
{

const QString cannotDelete = u"You cannot delete the ADMIN User!"_s;
const QString readUsersLevel = u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s;
const QString readDatabasesLevel =
    u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME <> 'TW' ORDER BY DATABASE_NAME ASC"_s;

QStringList readPrivileges(const QString& user)
{
    return {u"SELECT DATABASE_NAME FROM TW_DBPRV WHERE USER_NAME = '%1'"_s.arg(user),
            u"SELECT DATABASE_NAME, TABLE_NAME FROM TW_TBLPRV WHERE USER_NAME = '%1'"_s.arg(user)};
}

} // namespace

// Changing -----------------------------------------------------------------------------------------------------------

TEST_F(UserPane, OkAtOnceLeavesThePasswordAndWritesTheRemarks)
{
    open(user(u"CLERK"_s));
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{updateRemarks(u"CLERK"_s, u"at the desk"_s), readUser(u"CLERK"_s)}));
    EXPECT_EQ(users(), (QStringList{storedBoss, storedClerk}));
    EXPECT_EQ(shownPane(), (QStringList{u"frmUser"_s, u"CLERK - User Properties"_s, displayState, {}}));
}

TEST_F(UserPane, AChangeIsOneStatement)
{
    open(user(u"CLERK"_s));
    statements.clear();
    pastePassword(u"USER_PASSWORD"_s, u"O'HARA %1 \"пароль\" 鍵 🚀"_s);
    write(u"REMARKS"_s, u"Don't; \"100%2\""_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{updatePassword(u"CLERK"_s, u"O''HARA %1 \"пароль\" 鍵 🚀"_s, u"Don''t; \"100%2\""_s),
                                   readUser(u"CLERK"_s)}));
    EXPECT_EQ(users(), (QStringList{storedBoss, u"CLERK|O'HARA %1 \"пароль\" 鍵 🚀|Don't; \"100%2\""_s}));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{filler, filler}));
    EXPECT_EQ(selectedKey(), key(user(u"CLERK"_s)));
    EXPECT_EQ(state(), displayState);
}

TEST_F(UserPane, UndoReadsTheUserAnew)
{
    open(user(u"CLERK"_s));
    change(u"UPDATE TW_USER SET REMARKS = 'moved' WHERE USER_NAME = 'CLERK'"_s);
    write(u"USER_NAME"_s, u"x"_s);
    writePassword(u"USER_PASSWORD"_s, u"abc"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(), QStringList{readUser(u"CLERK"_s)});
    EXPECT_EQ(texts(shownColumns), (QStringList{u"CLERK"_s, u"moved"_s}));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{filler, filler}));
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    // What was undone is no change of the name.
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateRemarks(u"CLERK"_s, u"moved"_s)});
}

TEST_F(UserPane, CancelShowsTheUserAsItIs)
{
    open(user(u"CLERK"_s));
    write(u"USER_NAME"_s, u"x"_s);
    writePassword(u"USER_PASSWORD"_s, u"abc"_s);
    hit(Qt::Key_Escape);
    EXPECT_EQ(texts(shownColumns), (QStringList{u"CLERK"_s, u"at the desk"_s}));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{filler, filler}));
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

// Renaming -----------------------------------------------------------------------------------------------------------

TEST_F(UserPane, ARenameIsCarriedToAllPrivilegesAndBlanksThePassword)
{
    begin(ofDatabase(u"SALES"_s, u"CLERK"_s));
    begin(ofDatabase(u"DEPOT"_s, u"CLERK"_s));
    begin(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s));
    open(user(u"CLERK"_s));
    statements.clear();
    write(u"USER_NAME"_s, u"teller"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(
        sent(),
        (QStringList{nameIsTaken(u"TELLER"_s), nameIsTaken(u"CLERK"_s),
                     u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s, insertUser(u"TELLER"_s, {}, u"at the desk"_s),
                     u"SELECT DATABASE_NAME FROM TW_DBPRV WHERE USER_NAME = 'CLERK'"_s} +
         carried(u"CLERK"_s, u"TELLER"_s, u"DEPOT"_s, u"SHELF"_s,
                 u"'TIGER', 'DARK-SECRET', 01, 00, 00, 01, 'TABLE', 'stores'"_s, u"00, 00, 00, 01, ''"_s) +
         carried(u"CLERK"_s, u"TELLER"_s, u"SALES"_s, u"ORDERS"_s,
                 u"'SCOTT', 'DEEP-SECRET', 01, 00, 01, 00, 'DATABASE', 'sells'"_s,
                 u"01, 01, 00, 00, 'takes orders'"_s) +
         QStringList{updateRemarks(u"CLERK"_s, u"at the desk"_s)} + readPrivileges(u"TELLER"_s) +
         QStringList{readUser(u"TELLER"_s)}));
    EXPECT_EQ(users(), (QStringList{storedBoss, u"TELLER||at the desk"_s}));
    EXPECT_EQ(databasePrivileges(),
              (QStringList{clerkOnDepot, clerkOnSales}.replaceInStrings(u"CLERK"_s, u"TELLER"_s)));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}.replaceInStrings(u"CLERK"_s, u"TELLER"_s)));

    EXPECT_EQ(shownPane(), (QStringList{u"frmUser"_s, u"TELLER - User Properties"_s, displayState, {}}));
    EXPECT_EQ(selectedKey(), key(user(u"TELLER"_s)));
    EXPECT_EQ(line(node(key(user(u"TELLER"_s)))), u"us \"TELLER\" User"_s);
    EXPECT_FALSE(find(key(user(u"CLERK"_s))));
    // The user stands under the new name wherever the tree shows it.
    for (const QStringList& level :
         {ofDatabase(u"SALES"_s), ofDatabase(u"DEPOT"_s), ofTable(u"SALES"_s, u"ORDERS"_s)}) {
        SCOPED_TRACE(key(level).toStdString());
        EXPECT_EQ(children(key(level)), QStringList{u"TELLER"_s});
        EXPECT_FALSE(wholeTree().join('\n'_L1).contains("CLERK"_L1));
    }
    EXPECT_EQ(line(node(key(ofDatabase(u"SALES"_s, u"TELLER"_s)))), u"dbprv \"TELLER\" User"_s);
    EXPECT_EQ(line(node(key(ofTable(u"SALES"_s, u"ORDERS"_s, u"TELLER"_s)))), u"tblprv \"TELLER\" User"_s);
}

TEST_F(UserPane, WhatElseIsEnteredWithANewNameFindsNoRowUnderTheOldOne)
{
    open(user(u"BOSS"_s));
    statements.clear();
    write(u"USER_NAME"_s, u"chief"_s);
    writePassword(u"USER_PASSWORD"_s, u"new"_s);
    write(u"REMARKS"_s, u"since May"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(),
              (QStringList{u"DELETE FROM TW_USER WHERE USER_NAME = 'BOSS'"_s, insertUser(u"CHIEF"_s, {}, {}),
                           updatePassword(u"BOSS"_s, u"NEW"_s, u"since May"_s)}));
    EXPECT_EQ(users(), (QStringList{u"CHIEF||"_s, storedClerk}));
    EXPECT_EQ(texts(shownColumns), (QStringList{u"CHIEF"_s, u""_s}));
}

TEST_F(UserPane, YesToANewPasswordWritesNothingYet)
{
    open(user(u"BOSS"_s));
    write(u"USER_NAME"_s, u"chief"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::Yes);
    press(u"OK"_s);
    EXPECT_EQ(focus(), u"USER_PASSWORD"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(shownPane(), (QStringList{u"frmUser"_s, u"BOSS - Edit User Properties"_s,
                                        u"User Edit: Up1 OK Cancel Undo"_s, u"USER_NAME USER_PASSWORD REMARKS"_s}));
    EXPECT_TRUE(find(key(user(u"BOSS"_s))));
}

TEST_F(UserPane, ANameTypedAsItWasIsNotAskedAboutButCarriedAndLosesThePassword)
{
    open(user(u"BOSS"_s));
    statements.clear();
    write(u"USER_NAME"_s, u"boss"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{nameIsTaken(u"BOSS"_s), u"DELETE FROM TW_USER WHERE USER_NAME = 'BOSS'"_s,
                                   insertUser(u"BOSS"_s, {}, {}),
                                   u"SELECT DATABASE_NAME FROM TW_DBPRV WHERE USER_NAME = 'BOSS'"_s,
                                   updateRemarks(u"BOSS"_s, {}), readUser(u"BOSS"_s)}));
    EXPECT_EQ(users(), (QStringList{u"BOSS||"_s, storedClerk}));
}

TEST_F(UserPane, TableRightsWithoutRightsOnTheDatabaseStayUnderTheOldName)
{
    change(u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES'"_s);
    begin(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s));
    open(user(u"CLERK"_s));
    write(u"USER_NAME"_s, u"teller"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(tablePrivileges(), (QStringList{u"DEPOT|SHELF|TELLER|0|0|0|1|"_s, clerkOnOrders}));
    EXPECT_TRUE(find(key(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s))));
}

TEST_F(UserPane, ATableOnWhichOnlyAnotherUserHasRightsIsReportedAndTheRestIsCarried)
{
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME) "
           "VALUES ('SALES', 'BILLS', 'TABLE', 'EMPTY')"_s);
    change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'BILLS', 'BOSS')"_s);
    open(user(u"CLERK"_s));
    write(u"USER_NAME"_s, u"teller"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"3021"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modUpdate.UpdateDatabase"_s);
    EXPECT_EQ(tablePrivileges(), (QStringList{u"DEPOT|SHELF|TELLER|0|0|0|1|"_s, u"SALES|BILLS|BOSS|0|0|0|0|"_s,
                                              u"SALES|ORDERS|TELLER|1|1|0|0|takes orders"_s}));
    EXPECT_EQ(paneTitle(), u"TELLER - User Properties"_s);
}

TEST_F(UserPane, AnApostropheIsDoubledInStatementsAndSingleInTheKeys)
{
    begin(ofDatabase(u"SALES"_s, u"CLERK"_s));
    open(user(u"CLERK"_s));
    paste(u"USER_NAME"_s, u"O'HARA"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(selectedKey(), key(user(u"O'HARA"_s)));
    EXPECT_TRUE(find(key(ofDatabase(u"SALES"_s, u"O'HARA"_s))));
    EXPECT_EQ(paneTitle(), u"O'HARA - User Properties"_s);
    statements.clear();
    press(u"User Edit"_s);
    pastePassword(u"USER_PASSWORD"_s, u"'"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{readUser(u"O''HARA"_s), updatePassword(u"O''HARA"_s, u"''"_s, u"at the desk"_s),
                                   readUser(u"O''HARA"_s)}));
    EXPECT_EQ(password(u"O'HARA"_s), u"'"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    statements.clear();
    press(u"User Delete"_s);
    EXPECT_EQ(statements.writes(), deleteUser(u"O''HARA"_s));
    EXPECT_EQ(databasePrivileges(), QStringList());
}

// The administrator --------------------------------------------------------------------------------------------------

TEST_F(UserPane, TheAdministratorIsEditedLikeAnyOther)
{
    open(user(u"ADMIN"_s));
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    statements.clear();
    writePassword(u"USER_PASSWORD"_s, u"root"_s);
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updatePassword(u"ADMIN"_s, u"ROOT"_s, u"x"_s)});
    EXPECT_EQ(password(u"ADMIN"_s), u"ROOT"_s);
}

TEST_F(UserPane, TheAdministratorKeepsItsNameWhateverElseIsWrong)
{
    open(user(u"ADMIN"_s));
    statements.clear();
    for (const char* name : {"", "root", "clerk"}) {
        SCOPED_TRACE(name);
        write(u"USER_NAME"_s, QLatin1String(name));
        expectRefused(u"You cannot change the name of the ADMIN user."_s, u"USER_NAME"_s);
    }
    paste(u"USER_NAME"_s, u"Admin"_s);
    expectRefused(u"You cannot change the name of the ADMIN user."_s, u"USER_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
}

TEST_F(UserPane, TheAdministratorCannotBeDeletedFromTheMenu)
{
    const QStringList before = wholeCatalog();
    begin(user(u"ADMIN"_s));
    boxes.expectInform(u"You cannot delete User 'ADMIN'"_s);
    choose(key(user(u"ADMIN"_s)), u"mnu_UserDelete"_s);
    boxes.verify();
    EXPECT_EQ(shownPane(), (QStringList{u"frmUser"_s, u"ADMIN - Delete User"_s, u"User Delete: Up1 OK Cancel"_s, {}}));
    boxes.expectInform(cannotDelete);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_TRUE(find(key(user(u"ADMIN"_s))));
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
}

TEST_F(UserPane, TheAdministratorCannotBeDeletedFromTheToolBar)
{
    open(user(u"ADMIN"_s));
    press(u"Cancel"_s);
    statements.clear();
    boxes.expectInform(cannotDelete);
    press(u"User Delete"_s);
    EXPECT_EQ(shownPane(), (QStringList{u"frmUser"_s, u"ADMIN - User Properties"_s, displayState, {}}));
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(UserPane, OnlyTheAdministratorsExactNameIsProtected)
{
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('Admin')"_s);
    begin(user(u"Admin"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    choose(key(user(u"Admin"_s)), u"mnu_UserDelete"_s);
    EXPECT_EQ(users(), (QStringList{storedBoss, storedClerk}));
}

// Deleting -----------------------------------------------------------------------------------------------------------

TEST_F(UserPane, AUserGoesWithAllPrivileges)
{
    begin(ofDatabase(u"SALES"_s, u"CLERK"_s));
    begin(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s));
    begin(user(u"CLERK"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes, [&] {
        EXPECT_EQ(shownPane(),
                  (QStringList{u"frmUser"_s, u"CLERK - Delete User"_s, u"User Delete: Up1 OK Cancel"_s, {}}));
        EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{filler, filler}));
    });
    choose(key(user(u"CLERK"_s)), u"mnu_UserDelete"_s);
    EXPECT_EQ(statements.writes(), deleteUser(u"CLERK"_s));
    EXPECT_EQ(users(), QStringList{storedBoss});
    EXPECT_EQ(databasePrivileges(), QStringList());
    EXPECT_EQ(tablePrivileges(), QStringList());
    EXPECT_EQ(wholeCatalog().filter(u"CLERK"_s), QStringList());
    EXPECT_EQ(currentPane(), u"frmUsers"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"ADMIN"_s, u"BOSS"_s}));
    // Users and databases have been read anew.
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BOSS"_s}));
    EXPECT_TRUE(node(key({u"DB"_s})).Expanded());
    EXPECT_EQ(lines(key({u"DB"_s})), (QStringList{u"db \"DEPOT\" DB +"_s, u"db \"SALES\" DB +"_s}));
    EXPECT_FALSE(wholeTree().join('\n'_L1).contains("CLERK"_L1));
    EXPECT_EQ(statements.statements().mid(statements.statements().indexOf(deleteUser(u"CLERK"_s).front())),
              deleteUser(u"CLERK"_s) +
                  (QStringList{readUsersLevel, readDatabasesLevel,
                               u"SELECT USER_NAME, USER_PASSWORD, REMARKS FROM TW_USER ORDER BY USER_NAME ASC"_s}));
}

TEST_F(UserPane, DeletingAUserReadsTheDatabasesAlsoWhereTheyWereClosed)
{
    open(user(u"CLERK"_s));
    press(u"Cancel"_s);
    ASSERT_FALSE(node(key({u"DB"_s})).Expanded());
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    statements.clear();
    press(u"User Delete"_s);
    EXPECT_EQ(statements.statements().filter(readDatabasesLevel).size(), 1);
    EXPECT_TRUE(node(key({u"DB"_s})).Expanded());
    EXPECT_EQ(children(key({u"DB"_s})), (QStringList{u"DEPOT"_s, u"SALES"_s}));
}

TEST_F(UserPane, ADeleteEndsWhereItBeganWhateverShowsWhileTheTreeIsRead)
{
    const QString other = datasource + u"other"_s;
    world.addDatasource(other);
    open(user(u"CLERK"_s));
    press(u"Cancel"_s);
    clickExpander(key({u"DB"_s}));
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('LATE')"_s);
    QStringList routines;
    boxes.expectAsk(mayDelete, boxes::Answer::Yes, [&] {
        QTimer::singleShot(0, window.get(), [&] {
            routines = frmTWErr::CallStack();
            window->PaneDisplay(u"frmUser"_s, {other, u"ADMIN"_s});
        });
    });
    press(u"User Delete"_s);
    EXPECT_TRUE(routines.contains(u"frmUser.tbr_ButtonClick"_s));
    EXPECT_EQ(currentPane(), u"frmUsers"_s);
    EXPECT_EQ(paneTitle(), datasource + u" - Users"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"ADMIN"_s, u"BOSS"_s}));
    EXPECT_EQ(children(key({u"DB"_s})), (QStringList{u"DEPOT"_s, u"LATE"_s, u"SALES"_s}));
}

TEST_F(UserPane, ADeleteThatIsNotWantedWaitsForCancel)
{
    open(user(u"CLERK"_s));
    press(u"Cancel"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    press(u"User Delete"_s);
    EXPECT_EQ(shownPane(), (QStringList{u"frmUser"_s, u"CLERK - Delete User"_s, u"User Delete: Up1 OK Cancel"_s, {}}));
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(shownPane(), (QStringList{u"frmUser"_s, u"CLERK - User Properties"_s, displayState, {}}));
    EXPECT_EQ(statements.writes(), QStringList());
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(UserPane, AUserThatSomeoneHasDeletedIsNotMadeAnew)
{
    open(user(u"CLERK"_s));
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s);
    writePassword(u"USER_PASSWORD"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(texts(shownColumns), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(users(), QStringList{storedBoss});
    press(u"User Edit"_s);
    expectRefused(noName, u"USER_NAME"_s);
}

TEST_F(UserPane, ARenameOfAUserThatSomeoneHasDeletedIsReported)
{
    open(user(u"CLERK"_s));
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s);
    write(u"USER_NAME"_s, u"x"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"3021"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateUser"_s);
    EXPECT_EQ(users(), QStringList{storedBoss});
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
}

TEST_F(UserPane, DeletingAUserThatSomeoneHasDeletedStillTakesThePrivileges)
{
    open(user(u"CLERK"_s));
    press(u"Cancel"_s);
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    press(u"User Delete"_s);
    EXPECT_EQ(databasePrivileges() + tablePrivileges(), QStringList());
    EXPECT_FALSE(find(key(user(u"CLERK"_s))));
    EXPECT_EQ(currentPane(), u"frmUsers"_s);
}

TEST_F(UserPane, ANameThatSomeoneHasTakenMeanwhileIsTheDriversToRefuse)
{
    beginToAdd();
    write(u"USER_NAME"_s, u"late"_s);
    writePassword(u"USER_PASSWORD"_s, u"x"_s);
    meanwhile(u"INSERT INTO TW_USER"_s, [&] { change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('LATE')"_s); });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmUser.tbr_ButtonClick"_s);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(users(), (QStringList{storedBoss, storedClerk, u"LATE||"_s}));
    expectRefused(isTaken(u"LATE"_s), u"USER_NAME"_s);
}

TEST_F(UserPane, AFailureBetweenTheDeletesLeavesThePrivileges)
{
    begin(user(u"CLERK"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    statements.failAt(4);
    errors.expect(Press::Ignore);
    choose(key(user(u"CLERK"_s)), u"mnu_UserDelete"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmUser.tbr_ButtonClick"_s);
    EXPECT_EQ(users(), QStringList{storedBoss});
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
    EXPECT_TRUE(find(key(user(u"CLERK"_s))));
    EXPECT_EQ(state(), u"User Delete: Up1 OK Cancel"_s);
    // "OK" takes the rest.
    press(u"OK"_s);
    EXPECT_EQ(databasePrivileges() + tablePrivileges(), QStringList());
    EXPECT_FALSE(find(key(user(u"CLERK"_s))));
}

TEST_F(UserPane, MissingPrivilegesAreOneBoxAndLeaveThePaneInItsState)
{
    open(user(u"CLERK"_s));
    writePassword(u"USER_PASSWORD"_s, u"abc"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{u"ABC"_s, u"ABC"_s}));
    EXPECT_EQ(errors.shown().size(), 0u);
    press(u"OK"_s);
    EXPECT_EQ(password(u"CLERK"_s), u"ABC"_s);
}
