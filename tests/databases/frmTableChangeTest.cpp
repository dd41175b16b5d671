#include "TablePaneFixture.h"

#include "Settings.h"
#include "ToolBar.h"

#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace tablepane;

// Changing -----------------------------------------------------------------------------------------------------------

TEST_F(TablePane, AChangeIsOneStatementAndChangesNoColumn)
{
    const QStringList before = wholeCatalog();
    open(table(u"ITEMS"_s));
    statements.clear();
    write(u"DISPLAY_NAME"_s, u"iTEMs"_s);
    pick(u"FILE_NAME"_s, u"PAYROLL"_s);
    write(u"FILE_SPECIFICATION"_s, u"disk:it's 100%"_s);
    write(u"NUMBER_COLUMNS"_s, u"7"_s);
    write(u"REMARKS"_s, u"Don't; \"100%\""_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{updateTable(u"ITEMS"_s, u"iTEMs"_s, u"TABLE"_s, u"PAYROLL"_s, u"disk:it''s 100%"_s,
                                               u"7"_s, u"CODE <> ''x''"_s, u"Don''t; \"100%\""_s),
                                   readTable(u"ITEMS"_s)}));
    EXPECT_EQ(paneTitle(), u"ITEMS - Table Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(selectedKey(), key(table(u"ITEMS"_s)));
    EXPECT_EQ(tables().first(), u"ITEMS|iTEMs|TABLE|PAYROLL|disk:it's 100%|7|CODE <> 'x'|Don't; \"100%\""_s);
    EXPECT_EQ(texts(tableColumns), (QStringList{u"SALES"_s} + tables().first().split('|'_L1)));
    // Columns stay mapped to the fields of the former file.
    EXPECT_EQ(wholeCatalog().filter(u"TW_COLUMN"_s), before.filter(u"TW_COLUMN"_s));
}

TEST_F(TablePane, ARenameIsCarriedToColumnsAndPrivileges)
{
    const QStringList before = wholeCatalog();
    begin(table(u"ITEMS"_s) + QStringList{u"CO"_s, u"co=ARTICLE"_s});
    click(key(table(u"ITEMS"_s)));
    statements.clear();
    write(u"TABLE_NAME"_s, u"wares"_s);
    write(u"DISPLAY_NAME"_s, u"Wares"_s);
    press(u"OK"_s);
    EXPECT_EQ(
        sent(),
        (QStringList{
            nameIsTaken(u"WARES"_s), readTable(u"ITEMS"_s).trimmed(),
            "DELETE FROM TW_TABLE WHERE "_L1 + ofTable(u"ITEMS"_s),
            insertTable(u"WARES"_s, u"'TABLE', 'EMPTY', 'items.dat', 02, 'CODE <> ''x''', 'old one', 'WARES'"_s),
            "SELECT COLUMN_TYPE, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME FROM TW_COLUMN WHERE "_L1 + ofTable(u"ITEMS"_s),
            "SELECT * FROM TW_COLUMN WHERE "_L1 + ofTable(u"ITEMS"_s) + " AND COLUMN_NAME = 'ARTICLE'"_L1,
            "DELETE FROM TW_COLUMN WHERE "_L1 + ofTable(u"ITEMS"_s) + " AND COLUMN_NAME = 'ARTICLE'"_L1,
            u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, "
            "LENGTH, PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, "
            "CASE_SENSITIVE, SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, COLUMN_TYPE, DISPLAY_NAME) "
            "VALUES ('SALES', 'WARES', 01, 'ARTICLE', 'CODE', '', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, "
            "'')"_s,
            "SELECT USER_NAME FROM TW_TBLPRV WHERE "_L1 + ofTable(u"ITEMS"_s),
            "SELECT * FROM TW_TBLPRV WHERE USER_NAME = 'CLERK' AND "_L1 + ofTable(u"ITEMS"_s),
            "DELETE FROM TW_TBLPRV WHERE USER_NAME = 'CLERK' AND "_L1 + ofTable(u"ITEMS"_s),
            u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
            "ALLOW_DELETE, REMARKS) VALUES ('SALES', 'WARES', 'CLERK', 01, 00, 00, 00, '')"_s,
            updateTable(u"WARES"_s, u"Wares"_s, u"TABLE"_s, u"EMPTY"_s, u"items.dat"_s, u"2"_s, u"CODE <> ''x''"_s,
                        u"old one"_s),
            readTable(u"WARES"_s)}));
    QStringList expected = before;
    expected.replaceInStrings(u"ITEMS"_s, u"WARES"_s).replaceInStrings(u"Items"_s, u"Wares"_s);
    expected.sort();
    EXPECT_EQ(wholeCatalog(), expected);
    EXPECT_EQ(paneTitle(), u"WARES - Table Properties"_s);
    EXPECT_EQ(state(), displayState);
    // The node stays where it is.
    EXPECT_EQ(nodes(), (QStringList{u"WARES"_s, u"ORDERS"_s}));
    EXPECT_EQ(selectedKey(), key(table(u"WARES"_s)));
    EXPECT_EQ(window->nodes().Item(key(table(u"WARES"_s))).NodeData(), u"WARES"_s);
    expandTo(key(table(u"WARES"_s) + QStringList{u"CO"_s}));
    EXPECT_EQ(children(key(table(u"WARES"_s) + QStringList{u"CO"_s})), QStringList{u"ARTICLE"_s});
}

TEST_F(TablePane, ANameInAnotherCaseIsLookedForInTheCatalog)
{
    open(table(u"ITEMS"_s));
    statements.clear();
    paste(u"TABLE_NAME"_s, u"Items"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().front(), nameIsTaken(u"Items"_s));
    EXPECT_EQ(tables(), (QStringList{u"Items|Items|TABLE|EMPTY|items.dat|2|CODE <> 'x'|old one"_s, storedOrders}));
    EXPECT_EQ(selectedKey(), key(table(u"Items"_s)));
}

TEST_F(TablePane, ANameTypedAsItWasIsNotLookedForButCarried)
{
    open(table(u"ITEMS"_s));
    const QStringList before = wholeCatalog();
    statements.clear();
    write(u"TABLE_NAME"_s, u"items"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent().first(2),
              (QStringList{readTable(u"ITEMS"_s).trimmed(), "DELETE FROM TW_TABLE WHERE "_L1 + ofTable(u"ITEMS"_s)}));
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(nodes(), (QStringList{u"ITEMS"_s, u"ORDERS"_s}));
}

TEST_F(TablePane, AnApostropheIsDoubledInStatementsAndSingleInTheKey)
{
    open(table(u"ITEMS"_s));
    clear(u"DISPLAY_NAME"_s);
    paste(u"TABLE_NAME"_s, u"IT'S"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().front(), nameIsTaken(u"IT''S"_s));
    EXPECT_EQ(selectedKey(), key(table(u"IT'S"_s)));
    EXPECT_EQ(paneTitle(), u"IT'S - Table Properties"_s);
    press(u"Table Edit"_s);
    statements.clear();
    clickButton(u"cmdCalcColumns"_s);
    EXPECT_EQ(statements.statements(), QStringList{countColumns(u"IT''S"_s)});
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"1"_s);
    press(u"Cancel"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    statements.clear();
    press(u"Table Delete"_s);
    EXPECT_EQ(statements.writes(), deleteTable(u"IT''S"_s));
    EXPECT_EQ(wholeCatalog().filter(u"IT'S"_s), QStringList());
    EXPECT_EQ(nodes(), QStringList{u"ORDERS"_s});
}

TEST_F(TablePane, TextsEndAtTheWidthOfTheirColumn)
{
    open(table(u"ITEMS"_s));
    write(u"TABLE_NAME"_s, QString(40, 'n'_L1));
    EXPECT_EQ(text(u"TABLE_NAME"_s), QString(32, 'N'_L1));
    for (const auto& [column, width] : {std::pair("TABLE_NAME", 32), std::pair("DISPLAY_NAME", 32),
                                        std::pair("FILE_SPECIFICATION", 254), std::pair("REMARKS", 254)}) {
        SCOPED_TRACE(column);
        paste(QLatin1String(column), QString(width + 1, 'p'_L1));
        EXPECT_EQ(text(QLatin1String(column)), QString(width, 'p'_L1));
        paste(QLatin1String(column), QString(width, 'q'_L1));
        EXPECT_EQ(text(QLatin1String(column)), QString(width, 'q'_L1));
    }
}

TEST_F(TablePane, ATypeThatTheListLacksStays)
{
    change(u"UPDATE TW_TABLE SET TABLE_TYPE = 'VIEW' WHERE TABLE_NAME = 'ITEMS'"_s);
    open(table(u"ITEMS"_s));
    EXPECT_EQ(list(u"TABLE_TYPE"_s).currentIndex(), -1);
    EXPECT_EQ(text(u"TABLE_TYPE"_s), u"VIEW"_s);
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(tables().first(), u"ITEMS|Items|VIEW|EMPTY|items.dat|2|CODE <> 'x'|x"_s);
}

TEST_F(TablePane, UndoBringsBackATypeThatTheListLacks)
{
    change(u"UPDATE TW_TABLE SET TABLE_TYPE = 'VIEW' WHERE TABLE_NAME = 'ITEMS'"_s);
    open(table(u"ITEMS"_s));
    pick(u"TABLE_TYPE"_s, u"TABLE"_s);
    press(u"Undo"_s);
    EXPECT_EQ(list(u"TABLE_TYPE"_s).currentIndex(), -1);
    EXPECT_EQ(text(u"TABLE_TYPE"_s), u"VIEW"_s);
}

TEST_F(TablePane, AFileThatTheCatalogLacksIsToBeChosenAnew)
{
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'EMPTY'"_s);
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(table(u"ITEMS"_s));
    EXPECT_EQ(list(u"FILE_NAME"_s).currentText(), u"EMPTY"_s);
    press(u"Table Edit"_s);
    EXPECT_EQ(list(u"FILE_NAME"_s).currentIndex(), -1);
    expectRefused(noFile, u"FILE_NAME"_s);
    EXPECT_EQ(tables().first(), storedItems);
}

TEST_F(TablePane, UndoReadsTheRowAnew)
{
    open(table(u"ITEMS"_s));
    change(u"UPDATE TW_TABLE SET CRITERIA = 'CODE = 1', REMARKS = 'newer' WHERE TABLE_NAME = 'ITEMS'"_s);
    pick(u"FILE_NAME"_s, u"PAYROLL"_s);
    write(u"TABLE_NAME"_s, u"x"_s);
    write(u"NUMBER_COLUMNS"_s, u"9"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(), QStringList{readTable(u"ITEMS"_s)});
    QStringList expected = shownItems;
    expected[7] = u"CODE = 1"_s;
    expected[8] = u"newer"_s;
    EXPECT_EQ(texts(tableColumns), expected);
    EXPECT_EQ(list(u"FILE_NAME"_s).currentText(), u"EMPTY"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), openColumns);
    EXPECT_EQ(paneTitle(), u"ITEMS - Edit Table Properties"_s);
    press(u"OK"_s);
    EXPECT_EQ(tables().first(), u"ITEMS|Items|TABLE|EMPTY|items.dat|2|CODE = 1|newer"_s);
    EXPECT_EQ(nodes(), (QStringList{u"ITEMS"_s, u"ORDERS"_s}));
}

TEST_F(TablePane, UndoOfATableThatSomeoneHasDeletedLeavesWhatWasTyped)
{
    open(table(u"ITEMS"_s));
    write(u"REMARKS"_s, u"mine"_s);
    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s);
    press(u"Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"mine"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
}

TEST_F(TablePane, CancelShowsTheTableAsItIs)
{
    open(table(u"ITEMS"_s));
    write(u"TABLE_NAME"_s, u"x"_s);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS - Table Properties"_s);
    EXPECT_EQ(texts(tableColumns), shownItems);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(TablePane, TheArrowsStayWithinTheLimits)
{
    open(table(u"ITEMS"_s));
    auto* up = control(u"spnUpDn_0"_s).findChild<QWidget*>(u"up"_s);
    auto* down = control(u"spnUpDn_0"_s).findChild<QWidget*>(u"down"_s);
    QTest::mouseClick(up, Qt::LeftButton);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"3"_s);
    clear(u"NUMBER_COLUMNS"_s);
    QTest::mouseClick(down, Qt::LeftButton);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"0"_s);
    write(u"NUMBER_COLUMNS"_s, u"32767"_s);
    hit(Qt::Key_Up);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"32767"_s);
    hit(Qt::Key_Down);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"32766"_s);
    press(u"Cancel"_s);
    QTest::mouseClick(up, Qt::LeftButton);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"2"_s);
}

TEST_F(TablePane, ASecondClickWhileTheTreeFollowsChangesNothing)
{
    open(table(u"ITEMS"_s));
    clear(u"DISPLAY_NAME"_s);
    write(u"TABLE_NAME"_s, u"once"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmTable.tbrButton_Click"_s));
    EXPECT_EQ(statements.writes().filter(u"INSERT INTO TW_TABLE "_s).size(), 1);
    EXPECT_EQ(statements.writes().filter(u"UPDATE TW_TABLE "_s).size(), 1);
    EXPECT_EQ(state(), displayState);

    press(u"Table Add"_s);
    fillIn(u"twice"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmTable.tbrButton_Click"_s));
    EXPECT_EQ(statements.writes().size(), 1);
    EXPECT_EQ(nodes(), (QStringList{u"ONCE"_s, u"ORDERS"_s, u"TWICE"_s}));
    EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel"_s);
}

// The number of columns ----------------------------------------------------------------------------------------------

TEST_F(TablePane, ColumnsAreCountedWithTheSpecialOnes)
{
    open(table(u"ORDERS"_s));
    statements.clear();
    clickButton(u"cmdCalcColumns"_s);
    EXPECT_EQ(statements.statements(), QStringList{countColumns(u"ORDERS"_s)});
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"3"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    // Only "OK" writes the number.
    EXPECT_EQ(tables().last(), storedOrders);
}

TEST_F(TablePane, ColumnsAreCountedUnderTheNameThatIsStored)
{
    open(table(u"ITEMS"_s));
    write(u"TABLE_NAME"_s, u"orders"_s);
    statements.clear();
    clickButton(u"cmdCalcColumns"_s);
    EXPECT_EQ(statements.statements(), QStringList{countColumns(u"ITEMS"_s)});
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"1"_s);
}

TEST_F(TablePane, ATableThatIsBeingAddedHasTheColumnsOfTheNameTyped)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('SALES', 'LEFT', 'BEHIND')"_s);
    beginToAdd();
    statements.clear();
    clickButton(u"cmdCalcColumns"_s);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"0"_s);
    EXPECT_EQ(statements.statements(), QStringList{countColumns({})});
    write(u"TABLE_NAME"_s, u"left"_s);
    clickButton(u"cmdCalcColumns"_s);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"1"_s);
}

TEST_F(TablePane, AFailureToCountLeavesTheNumber)
{
    open(table(u"ORDERS"_s));
    write(u"NUMBER_COLUMNS"_s, u"9"_s);
    statements.clear();
    statements.failAt(1);
    errors.expect(Press::Ignore);
    clickButton(u"cmdCalcColumns"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmTable.cmdCalcColumns_Click"_s);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"9"_s);
    statements.failAt(1);
    errors.expect(Press::Retry);
    clickButton(u"cmdCalcColumns"_s);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"3"_s);
}

// Deleting -----------------------------------------------------------------------------------------------------------

TEST_F(TablePane, DeletingATableTakesColumnsAndPrivilegesAndNoFile)
{
    const QStringList before = wholeCatalog();
    begin(table(u"ORDERS"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes, [&] {
        EXPECT_EQ(paneTitle(), u"ORDERS - Delete Table"_s);
        EXPECT_EQ(state(), u"Table Delete: Up1 OK Cancel"_s);
        EXPECT_EQ(open(), QStringList());
    });
    choose(key(table(u"ORDERS"_s)), u"mnu_TableDelete"_s);
    EXPECT_EQ(statements.statements().first(5),
              (QStringList{describe, readTable(u"ORDERS"_s)} + deleteTable(u"ORDERS"_s)));
    QStringList expected = before;
    expected.removeIf([](const QString& row) { return row.contains(u"ORDERS"_s); });
    EXPECT_EQ(wholeCatalog(), expected);
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s).size(), 3);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_EQ(gridNames(), QStringList{u"ITEMS"_s});
    EXPECT_EQ(nodes(), QStringList{u"ITEMS"_s});
}

TEST_F(TablePane, ADeleteThatIsNotWantedWaitsForCancelOrOk)
{
    open(table(u"ITEMS"_s));
    press(u"Cancel"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    press(u"Table Delete"_s);
    EXPECT_EQ(state(), u"Table Delete: Up1 OK Cancel"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS - Delete Table"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    press(u"Table Delete"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), deleteTable(u"ITEMS"_s));
    EXPECT_EQ(nodes(), QStringList{u"ORDERS"_s});
}

TEST_F(TablePane, UndoOfADeleteFailsAtItsEmptyStatement)
{
    begin(table(u"ITEMS"_s));
    const QStringList before = wholeCatalog();
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    choose(key(table(u"ITEMS"_s)), u"mnu_TableDelete"_s);
    window->toolBar(u"tbrTable"_s).Button(u"Undo"_s).setEnabled(true);
    statements.clear();
    errors.expect(Press::Ignore);
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(), QStringList{u""_s});
    EXPECT_EQ(errors.shown().back().number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmTable.tbr_ButtonClick"_s);
    EXPECT_EQ(open(), QStringList());
    EXPECT_FALSE(control(u"cmdCalcColumns"_s).isEnabled());
    EXPECT_TRUE(control(u"cmdCriteria"_s).isEnabled());
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(nodes(), (QStringList{u"ITEMS"_s, u"ORDERS"_s}));
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_FALSE(control(u"cmdCriteria"_s).isEnabled());
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(TablePane, ATableThatSomeoneHasDeletedIsNotMadeAnew)
{
    open(table(u"ITEMS"_s));
    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s);
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(texts(tableColumns), nothing);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(tables(), QStringList{storedOrders});
    EXPECT_EQ(errors.shown().size(), 0u);
}

TEST_F(TablePane, ARenameOfATableThatSomeoneHasDeletedIsReported)
{
    open(table(u"ITEMS"_s));
    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s);
    clear(u"DISPLAY_NAME"_s);
    write(u"TABLE_NAME"_s, u"x"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"3021"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateTable"_s);
    EXPECT_EQ(tables(), QStringList{storedOrders});
}

TEST_F(TablePane, ANameThatSomeoneHasTakenMeanwhileIsTheDriversToRefuse)
{
    beginToAdd();
    fillIn(u"late"_s);
    meanwhile(u"INSERT INTO TW_TABLE"_s,
              [&] { change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('SALES', 'LATE')"_s); });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"ODBC Error"_s);
    // The routine bears one name on the call stack and another one in reports.
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmTable.tbr_ButtonClick"_s);
    EXPECT_TRUE(errors.shown().back().callStack.contains(u"frmTable.tbrButton_Click"_s));
    EXPECT_FALSE(errors.shown().back().callStack.contains(u"frmTable.tbr_ButtonClick"_s));
    EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"TABLE_NAME"_s), u"LATE"_s);
    EXPECT_EQ(tables().filter(u"LATE"_s), QStringList{u"LATE|||||0||"_s});
    expectRefused(u"The Table Name 'LATE' is already used in the Database."_s, u"TABLE_NAME"_s);
}

TEST_F(TablePane, ANumberThatIsNoneIsTheDriversToRefuse)
{
    open(table(u"ITEMS"_s));
    const QStringList before = wholeCatalog();
    for (const char16_t* number : {u"-", u"٣", u"ten"}) {
        paste(u"NUMBER_COLUMNS"_s, QString::fromUtf16(number));
        errors.expect(Press::Ignore);
        press(u"OK"_s);
        errors.verify();
        EXPECT_EQ(errors.shown().back().trappedIn, u"frmTable.tbr_ButtonClick"_s);
        EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    }
    EXPECT_EQ(wholeCatalog(), before);
    press(u"Cancel"_s);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"2"_s);
}

TEST_F(TablePane, MissingPrivilegesAreOneBoxAndLeaveThePaneInItsState)
{
    open(table(u"ITEMS"_s));
    write(u"REMARKS"_s, u"9"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"9"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
}
