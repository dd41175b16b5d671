#include "TablePrivilegeFixture.h"

#include "Settings.h"
#include "ToolBar.h"

#include <QPushButton>

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using namespace tableprivileges;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(TablePrivilegePane, AClickOpensTheRightsForChange)
{
    open(clerk());
    EXPECT_EQ(statements.statements(), (QStringList{describePrivileges, readRow(u"CLERK"_s), readUsers}));
    EXPECT_EQ(shownPane(), (QStringList{u"frmTBLPRV"_s, u"CLERK - Edit User Privileges"_s,
                                        u"User Edit: Up1 OK Cancel"_s, u"USER_NAME REMARKS"_s}));
    EXPECT_EQ(texts(columns),
              (QStringList{u"SALES"_s, u"ORDERS"_s, u"CLERK"_s, u"1"_s, u"1"_s, u"0"_s, u"0"_s, u"takes orders"_s}));
    EXPECT_EQ(ticked(), (QStringList{u"ALLOW_SELECT"_s, u"ALLOW_INSERT"_s}));
    EXPECT_EQ(list(u"USER_NAME"_s).currentText(), u"CLERK"_s);
    EXPECT_EQ(items(u"USER_NAME"_s), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s}));
    EXPECT_FALSE(control(u"txtProperty_DATABASE_NAME"_s).isEnabled());
    EXPECT_FALSE(control(u"txtProperty_TABLE_NAME"_s).isEnabled());
    EXPECT_EQ(focus(), u"USER_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Update"_s);
}

TEST_F(TablePrivilegePane, WithTheOptionOffAClickOnlyShows)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(clerk());
    EXPECT_EQ(statements.statements(), (QStringList{describePrivileges, readRow(u"CLERK"_s)}));
    EXPECT_EQ(shownPane(), (QStringList{u"frmTBLPRV"_s, u"CLERK - User Table Privileges"_s, displayState, {}}));
    EXPECT_FALSE(control(u"chkProperty_ALLOW_SELECT"_s).isEnabled());
    press(u"User Edit"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
}

TEST_F(TablePrivilegePane, TellsWhatEachPropertyIs)
{
    open(clerk());
    const std::vector<std::tuple<const char*, const char*, const char*, const char*>> rows{
        {"txtProperty_DATABASE_NAME", "Database Name:", "Database Name", ""},
        {"txtProperty_TABLE_NAME", "Table Name:", "Table Name", ""},
        {"cboDropdown_USER_NAME", "User &Name:", "User Name", "Select a user from the dropdown list"},
        {"chkProperty_ALLOW_SELECT", "S&ELECT", "SELECT", "Can the user view this Table?"},
        {"chkProperty_ALLOW_INSERT", "&INSERT", "INSERT", "Can the user add records to this Table?"},
        {"chkProperty_ALLOW_UPDATE", "UP&DATE", "UPDATE", "Can the user change existing data in this Table?"},
        {"chkProperty_ALLOW_DELETE", "DELE&TE", "DELETE", "Can the user remove records from this Table?"},
        {"txtProperty_REMARKS", "Re&marks:", "Remarks", "Any notes you wish to make about this Users Table Privileges"},
    };
    for (const auto& [name, text, spoken, toolTip] : rows) {
        SCOPED_TRACE(name);
        const QWidget& found = control(QLatin1String(name));
        EXPECT_TRUE(found.isVisible());
        EXPECT_EQ(prompt(found), QLatin1String(text));
        EXPECT_EQ(found.accessibleName(), QLatin1String(spoken));
        EXPECT_EQ(found.toolTip(), QLatin1String(toolTip));
    }
    // There is neither a password nor a level.
    EXPECT_FALSE(window->currentPane()->findChild<QWidget*>(u"txtConfirm"_s));
    EXPECT_FALSE(window->currentPane()->findChild<QWidget*>(u"cboDropdown_SECURITY_LEVEL"_s));
}

TEST_F(TablePrivilegePane, TheTabKeyWalksFromTopToBottom)
{
    open(clerk());
    EXPECT_EQ(walked(7), (QStringList{u"USER_NAME"_s, u"ALLOW_SELECT"_s, u"ALLOW_INSERT"_s, u"ALLOW_UPDATE"_s,
                                      u"ALLOW_DELETE"_s, u"REMARKS"_s, u"cmdAction"_s, u"cmdCancel"_s}));
}

TEST_F(TablePrivilegePane, NullsShowAsEmptyTextsAndUntickedFlags)
{
    change(u"UPDATE TW_TBLPRV SET ALLOW_SELECT = NULL, ALLOW_INSERT = NULL, ALLOW_UPDATE = NULL, ALLOW_DELETE = NULL, "
           "REMARKS = NULL WHERE DATABASE_NAME = 'SALES'"_s);
    begin(clerk());
    open(ofTable(u"DEPOT"_s, u"SHELF"_s, u"CLERK"_s));
    click(key(clerk()));
    EXPECT_EQ(texts(columns).join('|'_L1), u"SALES|ORDERS|CLERK|||||"_s);
    EXPECT_EQ(ticked(), QStringList());
    press(u"OK"_s);
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, u"SALES|ORDERS|CLERK|0|0|0|0|"_s}));
}

TEST_F(TablePrivilegePane, AFlagBeyondZeroAndOneIsUntickedAndStays)
{
    change(u"UPDATE TW_TBLPRV SET ALLOW_SELECT = 2 WHERE DATABASE_NAME = 'SALES'"_s);
    open(clerk());
    EXPECT_EQ(ticked(), QStringList{u"ALLOW_INSERT"_s});
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT ALLOW_SELECT FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES'"_s), QStringList{u"2"_s});
}

TEST_F(TablePrivilegePane, AUserWhoIsGoneStaysInTheRow)
{
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s);
    open(clerk());
    EXPECT_EQ(list(u"USER_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(text(u"USER_NAME"_s), u"CLERK"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateRow(asItWas, u"CLERK"_s)});
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}));
}

TEST_F(TablePrivilegePane, RightsThatAreGoneShowNoValues)
{
    begin(clerk());
    change(u"DELETE FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES'"_s);
    click(key(clerk()));
    EXPECT_EQ(texts(columns).join(QString()), QString());
    expectRefused(noUser, u"USER_NAME"_s);
}

TEST_F(TablePrivilegePane, UpShowsTheRightsAndSelectsTheirNode)
{
    record({{u"frmTBLPRVs"_s, 3}});
    open(clerk());
    statements.clear();
    press(u"Up1"_s);
    EXPECT_EQ(takeShown(), QStringList{"frmTBLPRVs "_L1 + datasource + u"/SALES/ORDERS"_s});
    EXPECT_EQ(selectedKey(), key(ofTable(u"SALES"_s, u"ORDERS"_s)));
    EXPECT_TRUE(window->tvwExplorer().hasFocus());
    EXPECT_EQ(statements.statements(), QStringList());
}

// Adding -------------------------------------------------------------------------------------------------------------

TEST_F(TablePrivilegePane, AddBeginsWithTheTableAndNothingElse)
{
    open(clerk());
    command(ofTable(u"SALES"_s, u"ORDERS"_s), u"mnu_TBLPRVAddNew"_s);
    EXPECT_EQ(statements.statements(), QStringList{readUsers});
    EXPECT_EQ(shownPane(), (QStringList{u"frmTBLPRV"_s, u"Add New User Privilege to ORDERS"_s,
                                        u"User Add: Up1 OK Cancel"_s, u"USER_NAME REMARKS"_s}));
    EXPECT_EQ(texts(columns).join('|'_L1), u"SALES|ORDERS||||||"_s);
    EXPECT_EQ(ticked(), QStringList());
    EXPECT_EQ(list(u"USER_NAME"_s).currentIndex(), -1);
    EXPECT_FALSE(control(u"txtProperty_DATABASE_NAME"_s).isEnabled());
    EXPECT_FALSE(control(u"txtProperty_TABLE_NAME"_s).isEnabled());
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Add"_s);
}

TEST_F(TablePrivilegePane, AUserWithoutRightsOnTheDatabaseCanStillBeGivenThem)
{
    beginToAdd();
    statements.clear();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    tick(u"ALLOW_SELECT"_s);
    tick(u"ALLOW_DELETE"_s);
    write(u"REMARKS"_s, u"it's %1 fine"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().first(2),
              (QStringList{userIsTaken(u"BOSS"_s), insertRow(u"'BOSS', 01, 0, 0, 01, 'it''s %1 fine'"_s)}));
    EXPECT_EQ(texts(columns).join('|'_L1), u"SALES|ORDERS||||||"_s);
    EXPECT_EQ(ticked(), QStringList());
    EXPECT_EQ(focus(), u"USER_NAME"_s);
    EXPECT_EQ(selectedKey(), key(ofTable(u"SALES"_s, u"ORDERS"_s, u"BOSS"_s)));
    pick(u"USER_NAME"_s, u"ADMIN"_s);
    clickButton(u"cmdAction"_s);
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, u"SALES|ORDERS|ADMIN|0|0|0|0|"_s,
                                              u"SALES|ORDERS|BOSS|1|0|0|1|it's %1 fine"_s, clerkOnOrders}));
    EXPECT_EQ(lines(key(ofTable(u"SALES"_s, u"ORDERS"_s))),
              (QStringList{u"tblprv \"CLERK\" User"_s, u"tblprv \"BOSS\" User"_s, u"tblprv \"ADMIN\" User"_s}));
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
    press(u"Cancel"_s);
    EXPECT_EQ(currentPane(), u"frmTBLPRVs"_s);
}

TEST_F(TablePrivilegePane, UndoOfAnAddKeepsTheTable)
{
    beginToAdd();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    tick(u"ALLOW_SELECT"_s);
    press(u"Undo"_s);
    EXPECT_EQ(texts(columns).join('|'_L1), u"SALES|ORDERS||||||"_s);
    EXPECT_EQ(ticked(), QStringList());
    EXPECT_EQ(list(u"USER_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel"_s);
    pick(u"USER_NAME"_s, u"BOSS"_s);
    press(u"OK"_s);
    EXPECT_EQ(tablePrivileges().value(1), u"SALES|ORDERS|BOSS|0|0|0|0|"_s);
}

TEST_F(TablePrivilegePane, CancelOfAnAddShowsTheCollection)
{
    record({{u"frmTBLPRVs"_s, 3}});
    beginToAdd();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    hit(Qt::Key_Escape);
    EXPECT_EQ(takeShown(), QStringList{"frmTBLPRVs "_L1 + datasource + u"/SALES/ORDERS"_s});
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(TablePrivilegePane, RefusesAMissingUserAndOneWhoIsThereAlready)
{
    beginToAdd();
    const QStringList tree = wholeTree();
    statements.clear();
    expectRefused(noUser, u"USER_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    pick(u"USER_NAME"_s, u"CLERK"_s);
    expectRefused(isThere(u"CLERK"_s), u"USER_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{userIsTaken(u"CLERK"_s)});
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
}

TEST_F(TablePrivilegePane, ApostrophesInOwnersAreDoubled)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('D''OR')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('D''OR', 'T''X')"_s);
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('O''HARA')"_s);
    command(ofTable(u"D'OR"_s, u"T'X"_s), u"mnu_TBLPRVAddNew"_s);
    pick(u"USER_NAME"_s, u"O'HARA"_s);
    press(u"OK"_s);
    EXPECT_EQ(tablePrivileges().value(0), u"D'OR|T'X|O'HARA|0|0|0|0|"_s);
    click(key(ofTable(u"D'OR"_s, u"T'X"_s, u"O'HARA"_s)));
    statements.clear();
    tick(u"ALLOW_SELECT"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(),
              QStringList{u"UPDATE TW_TBLPRV SET ALLOW_SELECT = 01, ALLOW_INSERT = 00, ALLOW_UPDATE = 00, "
                          "ALLOW_DELETE = 00, REMARKS = '' WHERE DATABASE_NAME = 'D''OR' AND TABLE_NAME = 'T''X' "
                          "AND USER_NAME = 'O''HARA'"_s});
    boxes.expectAsk(mayDeletePrivileges, boxes::Answer::Yes);
    press(u"User Delete"_s);
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}));
}

// Changing -----------------------------------------------------------------------------------------------------------

TEST_F(TablePrivilegePane, AChangeIsOneStatement)
{
    open(clerk());
    statements.clear();
    tick(u"ALLOW_SELECT"_s);
    tick(u"ALLOW_DELETE"_s);
    write(u"REMARKS"_s, u"100%1 'fine'"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{updateRow(u"ALLOW_SELECT = 00, ALLOW_INSERT = 01, ALLOW_UPDATE = 00, "
                                             "ALLOW_DELETE = 01, REMARKS = '100%1 ''fine'''"_s,
                                             u"CLERK"_s),
                                   readRow(u"CLERK"_s)}));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, u"SALES|ORDERS|CLERK|0|1|0|1|100%1 'fine'"_s}));
    EXPECT_EQ(shownPane(), (QStringList{u"frmTBLPRV"_s, u"CLERK - User Table Privileges"_s, displayState, {}}));
    EXPECT_EQ(selectedKey(), key(clerk()));
}

TEST_F(TablePrivilegePane, AnotherUserTakesTheRightsOverBeforeTheyAreUpdated)
{
    open(clerk());
    statements.clear();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    tick(u"ALLOW_UPDATE"_s);
    press(u"OK"_s);
    EXPECT_EQ(
        sent(),
        (QStringList{userIsTaken(u"BOSS"_s)} +
         carried(u"CLERK"_s, u"BOSS"_s, u"SALES"_s, u"ORDERS"_s, {}, u"01, 01, 00, 00, 'takes orders'"_s).sliced(4) +
         QStringList{updateRow(u"ALLOW_SELECT = 01, ALLOW_INSERT = 01, ALLOW_UPDATE = 01, "
                               "ALLOW_DELETE = 00, REMARKS = 'takes orders'"_s,
                               u"BOSS"_s),
                     readRow(u"BOSS"_s)}));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, u"SALES|ORDERS|BOSS|1|1|1|0|takes orders"_s}));
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
    EXPECT_EQ(shownPane(), (QStringList{u"frmTBLPRV"_s, u"BOSS - User Table Privileges"_s, displayState, {}}));
    EXPECT_EQ(lines(key(ofTable(u"SALES"_s, u"ORDERS"_s))), QStringList{u"tblprv \"BOSS\" User"_s});
    EXPECT_EQ(selectedKey(), key(ofTable(u"SALES"_s, u"ORDERS"_s, u"BOSS"_s)));
}

TEST_F(TablePrivilegePane, AUserWhoIsPutBackIsCarriedAllTheSame)
{
    open(clerk());
    statements.clear();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    pick(u"USER_NAME"_s, u"CLERK"_s);
    press(u"OK"_s);
    EXPECT_EQ(
        sent(),
        (carried(u"CLERK"_s, u"CLERK"_s, u"SALES"_s, u"ORDERS"_s, {}, u"01, 01, 00, 00, 'takes orders'"_s).sliced(4) +
         QStringList{updateRow(asItWas, u"CLERK"_s), readRow(u"CLERK"_s)}));
    EXPECT_EQ(tablePrivileges(), (QStringList{clerkOnShelf, clerkOnOrders}));
    EXPECT_EQ(lines(key(ofTable(u"SALES"_s, u"ORDERS"_s))), QStringList{u"tblprv \"CLERK\" User"_s});
}

TEST_F(TablePrivilegePane, RightsAreNotGivenToAUserWhoHasThem)
{
    change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', 'BOSS')"_s);
    open(clerk());
    pick(u"USER_NAME"_s, u"BOSS"_s);
    expectRefused(isThere(u"BOSS"_s), u"USER_NAME"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(TablePrivilegePane, UndoReadsTheRightsAnew)
{
    open(clerk());
    pick(u"USER_NAME"_s, u"BOSS"_s);
    tick(u"ALLOW_DELETE"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(sent(), QStringList{readRow(u"CLERK"_s)});
    EXPECT_EQ(ticked(), (QStringList{u"ALLOW_SELECT"_s, u"ALLOW_INSERT"_s}));
    EXPECT_EQ(list(u"USER_NAME"_s).currentText(), u"CLERK"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateRow(asItWas, u"CLERK"_s)});
}

TEST_F(TablePrivilegePane, RemarksEndAtTheWidthOfTheirColumn)
{
    open(clerk());
    paste(u"REMARKS"_s, QString(300, 'r'_L1));
    EXPECT_EQ(text(u"REMARKS"_s), QString(254, 'r'_L1));
}

// Deleting -----------------------------------------------------------------------------------------------------------

TEST_F(TablePrivilegePane, DeletingTheRightsLeavesThoseOnTheDatabase)
{
    begin(clerk());
    boxes.expectAsk(mayDeletePrivileges, boxes::Answer::Yes, [&] {
        EXPECT_EQ(
            shownPane(),
            (QStringList{u"frmTBLPRV"_s, u"CLERK - Delete User Privileges"_s, u"User Delete: Up1 OK Cancel"_s, {}}));
    });
    choose(key(clerk()), u"mnu_TBLPRVDelete"_s);
    EXPECT_EQ(statements.writes(), QStringList{u"DELETE FROM TW_TBLPRV "_s + ofRow(u"CLERK"_s)});
    EXPECT_EQ(tablePrivileges(), QStringList{clerkOnShelf});
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
    EXPECT_FALSE(find(key(clerk())));
    EXPECT_EQ(currentPane(), u"frmTBLPRVs"_s);
    EXPECT_EQ(gridNames(), QStringList());
}

TEST_F(TablePrivilegePane, ADeleteThatIsNotWantedWaitsForCancel)
{
    open(clerk());
    press(u"Cancel"_s);
    boxes.expectAsk(mayDeletePrivileges, boxes::Answer::No);
    press(u"User Delete"_s);
    EXPECT_EQ(state(), u"User Delete: Up1 OK Cancel"_s);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(TablePrivilegePane, TheCatalogsOwnTablesHaveNoMenuForTheirRights)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    begin(ofTable(u"TW"_s, u"FILE"_s, u"ADMIN"_s));
    EXPECT_EQ(menuOf(key(ofTable(u"TW"_s, u"FILE"_s))), QStringList());
    EXPECT_EQ(menuOf(key(ofTable(u"TW"_s, u"FILE"_s, u"ADMIN"_s))), QStringList());
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(TablePrivilegePane, RightsThatSomeoneHasGivenMeanwhileAreTheDriversToRefuse)
{
    beginToAdd();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    meanwhile(u"INSERT INTO TW_TBLPRV"_s, [&] {
        change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', 'BOSS')"_s);
    });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmTBLPRV.tbr_ButtonClick"_s);
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"USER_NAME"_s), u"BOSS"_s);
    expectRefused(isThere(u"BOSS"_s), u"USER_NAME"_s);
}

TEST_F(TablePrivilegePane, AnotherUserForRightsThatAreGoneIsReported)
{
    open(clerk());
    change(u"DELETE FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES'"_s);
    pick(u"USER_NAME"_s, u"BOSS"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"3021"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateDatabase"_s);
    EXPECT_EQ(tablePrivileges(), QStringList{clerkOnShelf});
}

TEST_F(TablePrivilegePane, MissingPrivilegesAreOneBoxAndLeaveThePaneInItsState)
{
    open(clerk());
    tick(u"ALLOW_DELETE"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(ticked(), (QStringList{u"ALLOW_SELECT"_s, u"ALLOW_INSERT"_s, u"ALLOW_DELETE"_s}));
    EXPECT_EQ(errors.shown().size(), 0u);
}
