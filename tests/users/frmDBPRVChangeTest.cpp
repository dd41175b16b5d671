#include "DatabasePrivilegeFixture.h"

#include "Settings.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace databaseprivileges;

// Changing -----------------------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegePane, OkAtOnceLeavesThePassword)
{
    open(clerk());
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{updateRow(asItWas, u"CLERK"_s), readRow(u"CLERK"_s)}));
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
    EXPECT_EQ(shownPane(), (QStringList{u"frmDBPRV"_s, u"CLERK - User Database Privileges"_s, displayState, {}}));
    EXPECT_EQ(selectedKey(), key(clerk()));
}

TEST_F(DatabasePrivilegePane, OtherRemarksLeaveThePassword)
{
    open(clerk());
    const QString password =
        u"SELECT DATABASE_PASSWORD FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = 'CLERK'"_s;
    const QStringList before = stored(password);
    ASSERT_NE(before, QStringList{QString()});
    write(u"REMARKS"_s, u"buys"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored(password), before);
    EXPECT_EQ(stored(u"SELECT REMARKS FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = 'CLERK'"_s),
              QStringList{u"buys"_s});
}

TEST_F(DatabasePrivilegePane, AChangeIsOneStatement)
{
    open(clerk());
    statements.clear();
    write(u"DATABASE_USERNAME"_s, u"tiger-2"_s);
    pastePassword(secret, u"d'or"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    tick(u"ALLOW_SELECT"_s);
    tick(u"ALLOW_DELETE"_s);
    write(u"REMARKS"_s, u"100%1 'fine'"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{updateRow(u"DATABASE_USERNAME = 'TIGER-2', DATABASE_PASSWORD = 'd''or', "
                                             "ALLOW_SELECT = 00, ALLOW_INSERT = 00, ALLOW_UPDATE = 01, "
                                             "ALLOW_DELETE = 01, SECURITY_LEVEL = 'TABLE', "
                                             "REMARKS = '100%1 ''fine'''"_s,
                                             u"CLERK"_s),
                                   readRow(u"CLERK"_s)}));
    EXPECT_EQ(databasePrivileges(),
              (QStringList{clerkOnDepot, u"SALES|CLERK|TIGER-2|d'or|0|0|1|1|TABLE|100%1 'fine'"_s}));
    EXPECT_EQ(ticked(), (QStringList{u"ALLOW_UPDATE"_s, u"ALLOW_DELETE"_s}));
    EXPECT_EQ(passwords(secret), (QStringList{filler, filler}));
}

TEST_F(DatabasePrivilegePane, AnotherUserTakesTheRightsOverWithTheStoredPassword)
{
    open(clerk());
    statements.clear();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{userIsTaken(u"BOSS"_s)} +
                       carried(u"CLERK"_s, u"BOSS"_s, u"SALES"_s, u"ORDERS"_s,
                               u"'SCOTT', 'DEEP-SECRET', 01, 00, 01, 00, 'DATABASE', 'sells'"_s,
                               u"01, 01, 00, 00, 'takes orders'"_s) +
                       QStringList{updateRow(asItWas, u"BOSS"_s), readRow(u"BOSS"_s)}));
    EXPECT_EQ(databasePrivileges(),
              (QStringList{clerkOnDepot, u"SALES|BOSS|SCOTT|DEEP-SECRET|1|0|1|0|DATABASE|sells"_s}));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, u"SALES|ORDERS|BOSS|1|1|0|0|takes orders"_s}));
    EXPECT_EQ(shownPane(), (QStringList{u"frmDBPRV"_s, u"BOSS - User Database Privileges"_s, displayState, {}}));
    EXPECT_EQ(lines(key(ofDatabase(u"SALES"_s))), QStringList{u"dbprv \"BOSS\" User"_s});
    EXPECT_EQ(selectedKey(), key(ofDatabase(u"SALES"_s, u"BOSS"_s)));
}

TEST_F(DatabasePrivilegePane, AnotherUserGetsTheNewPassword)
{
    open(clerk());
    pick(u"USER_NAME"_s, u"BOSS"_s);
    writePassword(secret, u"fresh"_s);
    press(u"OK"_s);
    EXPECT_EQ(databasePrivileges().value(1), u"SALES|BOSS|SCOTT|FRESH|1|0|1|0|DATABASE|sells"_s);
}

TEST_F(DatabasePrivilegePane, AUserWhoIsPutBackIsCarriedAllTheSame)
{
    open(clerk());
    statements.clear();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    pick(u"USER_NAME"_s, u"CLERK"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes().front(),
              u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = 'CLERK' "_s);
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}));
}

TEST_F(DatabasePrivilegePane, UndoReadsTheRightsAnew)
{
    open(clerk());
    pick(u"USER_NAME"_s, u"BOSS"_s);
    tick(u"ALLOW_DELETE"_s);
    writePassword(secret, u"x"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(sent(), QStringList{readRow(u"CLERK"_s)});
    EXPECT_EQ(ticked(), (QStringList{u"ALLOW_SELECT"_s, u"ALLOW_UPDATE"_s}));
    EXPECT_EQ(list(u"USER_NAME"_s).currentText(), u"CLERK"_s);
    EXPECT_EQ(passwords(secret), (QStringList{filler, filler}));
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateRow(asItWas, u"CLERK"_s)});
}

TEST_F(DatabasePrivilegePane, ApostrophesInTheKeyAreDoubled)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('D''OR')"_s);
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('O''HARA')"_s);
    const QString ofHara = u" WHERE DATABASE_NAME = 'D''OR' AND USER_NAME = 'O''HARA'"_s;
    command(ofDatabase(u"D'OR"_s), u"mnu_DBPRVAddNew"_s);
    statements.clear();
    pick(u"USER_NAME"_s, u"O'HARA"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    writePassword(secret, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().front(),
              u"SELECT USER_NAME FROM TW_DBPRV WHERE USER_NAME = 'O''HARA' AND DATABASE_NAME = 'D''OR'"_s);
    EXPECT_EQ(databasePrivileges().value(0), u"D'OR|O'HARA||X|0|0|0|0|TABLE|"_s);
    statements.clear();
    click(key(ofDatabase(u"D'OR"_s, u"O'HARA"_s)));
    EXPECT_EQ(statements.statements().front(), u"SELECT * FROM TW_DBPRV"_s + ofHara);
    EXPECT_EQ(paneTitle(), u"O'HARA - Edit User Privileges"_s);
    tick(u"ALLOW_SELECT"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(),
              QStringList{u"UPDATE TW_DBPRV SET DATABASE_USERNAME = '', ALLOW_SELECT = 01, ALLOW_INSERT = 00, "
                          "ALLOW_UPDATE = 00, ALLOW_DELETE = 00, SECURITY_LEVEL = 'TABLE', REMARKS = ''"_s +
                          ofHara});
    press(u"User Edit"_s);
    pick(u"USER_NAME"_s, u"BOSS"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(databasePrivileges().value(0), u"D'OR|BOSS||X|1|0|0|0|TABLE|"_s);
    EXPECT_EQ(selectedKey(), key(ofDatabase(u"D'OR"_s, u"BOSS"_s)));
    boxes.expectAsk(mayDeletePrivileges, boxes::Answer::Yes);
    press(u"User Delete"_s);
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
}

TEST_F(DatabasePrivilegePane, IgnoreOfTheUpdateBehindAnotherUserKeepsTheCarriedRowAndThePanesState)
{
    open(clerk());
    pick(u"USER_NAME"_s, u"BOSS"_s);
    write(u"REMARKS"_s, u"moved"_s);
    statements.clear();
    // Whether the user is taken, seven statements that carry the rights, and the update.
    statements.failAt(9);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_TRUE(statements.statements().back().startsWith("UPDATE TW_DBPRV"_L1));
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmDBPRV.tbr_ButtonClick"_s);
    EXPECT_EQ(databasePrivileges(),
              (QStringList{clerkOnDepot, u"SALES|BOSS|SCOTT|DEEP-SECRET|1|0|1|0|DATABASE|sells"_s}));
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"moved"_s);
    EXPECT_TRUE(find(key(clerk())));
    press(u"Cancel"_s);
    EXPECT_EQ(paneTitle(), u"BOSS - User Database Privileges"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"sells"_s);
}

TEST_F(DatabasePrivilegePane, ASecondClickWhileTheTreeFollowsAnAddAddsNothing)
{
    command(ofDatabase(u"SALES"_s), u"mnu_DBPRVAddNew"_s);
    pick(u"USER_NAME"_s, u"BOSS"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    writePassword(secret, u"x"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmDBPRV.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes(), QStringList{insertRow(u"'BOSS', '', 'X', 'TABLE', 0, 0, 0, 0, ''"_s)});
    EXPECT_EQ(children(key(ofDatabase(u"SALES"_s))), (QStringList{u"BOSS"_s, u"CLERK"_s}));
}

// Deleting -----------------------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegePane, DeletingTheRightsLeavesTheUserAndTheRightsOnTables)
{
    begin(clerk());
    boxes.expectAsk(mayDeletePrivileges, boxes::Answer::Yes, [&] {
        EXPECT_EQ(
            shownPane(),
            (QStringList{u"frmDBPRV"_s, u"CLERK - Delete User Privileges"_s, u"User Delete: Up1 OK Cancel"_s, {}}));
    });
    choose(key(clerk()), u"mnu_DBPRVDelete"_s);
    EXPECT_EQ(statements.writes(), QStringList{deleteRow(u"CLERK"_s)});
    EXPECT_EQ(databasePrivileges(), QStringList{clerkOnDepot});
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}));
    EXPECT_EQ(users(), (QStringList{storedBoss, storedClerk}));
    EXPECT_FALSE(find(key(clerk())));
    EXPECT_EQ(currentPane(), u"frmDBPRVs"_s);
    EXPECT_EQ(gridNames(), QStringList());
}

TEST_F(DatabasePrivilegePane, ADeleteThatIsNotWantedWaitsForCancel)
{
    open(clerk());
    press(u"Cancel"_s);
    boxes.expectAsk(mayDeletePrivileges, boxes::Answer::No);
    press(u"User Delete"_s);
    EXPECT_EQ(state(), u"User Delete: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DatabasePrivilegePane, TheAdministratorsRightsOnTheCatalogAreLikeAnyOther)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    open(ofDatabase(u"TW"_s, u"ADMIN"_s));
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(open().join(' '_L1), allOpen);
    press(u"Cancel"_s);
    boxes.expectAsk(mayDeletePrivileges, boxes::Answer::No);
    press(u"User Delete"_s);
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegePane, RightsThatSomeoneHasGivenMeanwhileAreTheDriversToRefuse)
{
    beginToAdd();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    writePassword(secret, u"x"_s);
    meanwhile(u"INSERT INTO TW_DBPRV"_s,
              [&] { change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('BOSS', 'SALES')"_s); });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmDBPRV.tbr_ButtonClick"_s);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(passwords(secret), (QStringList{u"X"_s, u"X"_s}));
    expectRefused(u"User 'BOSS' already has Database Privileges set for this Database."_s, u"USER_NAME"_s);
}

TEST_F(DatabasePrivilegePane, RightsOfAUserWhoWasDeletedWithThemAreNotMadeAnew)
{
    open(clerk());
    for (const char* table : {"TW_USER", "TW_DBPRV", "TW_TBLPRV"})
        change(u"DELETE FROM %1 WHERE USER_NAME = 'CLERK'"_s.arg(QLatin1String(table)));
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(texts(columns).join(QString()), QString());
    EXPECT_EQ(databasePrivileges(), QStringList());
    EXPECT_EQ(state(), displayState);
}

TEST_F(DatabasePrivilegePane, MissingPrivilegesAreOneBoxAndLeaveThePaneInItsState)
{
    open(clerk());
    write(u"REMARKS"_s, u"x"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
}
