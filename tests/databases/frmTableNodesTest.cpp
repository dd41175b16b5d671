#include "TablePaneFixture.h"

#include "Settings.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace tablepane;

// What the pane does where the tree, the catalog or the connection are no longer what they were.

TEST_F(TablePane, AddingATableWhoseNodeStillStandsKeepsOneNode)
{
    beginToAdd();
    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s);
    fillIn(u"items"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    EXPECT_EQ(nodes(), (QStringList{u"ITEMS"_s, u"ORDERS"_s}));
    EXPECT_EQ(tables().first(), u"ITEMS||TABLE|EMPTY|a.dat|0||"_s);
    EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel"_s);
}

TEST_F(TablePane, RenamingToANameWhoseNodeStillStandsReadsTheLevelAnew)
{
    open(table(u"ITEMS"_s));
    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ORDERS' AND DATABASE_NAME = 'SALES'"_s);
    change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'ORDERS' AND DATABASE_NAME = 'SALES'"_s);
    change(u"DELETE FROM TW_TBLPRV WHERE TABLE_NAME = 'ORDERS' AND DATABASE_NAME = 'SALES'"_s);
    clear(u"DISPLAY_NAME"_s);
    write(u"TABLE_NAME"_s, u"orders"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    EXPECT_EQ(nodes(), QStringList{u"ORDERS"_s});
    EXPECT_EQ(selectedKey(), key(table(u"ORDERS"_s)));
    EXPECT_EQ(paneTitle(), u"ORDERS - Table Properties"_s);
    EXPECT_EQ(text(u"FILE_SPECIFICATION"_s), u"items.dat"_s);
    EXPECT_EQ(state(), displayState);
}

TEST_F(TablePane, ATableOfAnotherDatabaseOfTheSameNameIsLeftAlone)
{
    for (const char* statement : {
             "INSERT INTO TW_DB (DATABASE_NAME) VALUES ('OTHER')",
             "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('OTHER', 'ITEMS', 'EMPTY')",
             "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('OTHER', 'ITEMS', 'ELSEWHERE')",
             "INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('OTHER', 'ITEMS', 'CLERK')",
         })
        change(QLatin1String(statement));
    const QStringList others = wholeCatalog().filter(u"OTHER"_s);
    ASSERT_EQ(others.size(), 4);
    open(table(u"ITEMS"_s));
    clear(u"DISPLAY_NAME"_s);
    write(u"TABLE_NAME"_s, u"wares"_s);
    press(u"OK"_s);
    EXPECT_EQ(wholeCatalog().filter(u"OTHER"_s), others);
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    press(u"Table Delete"_s);
    EXPECT_EQ(wholeCatalog().filter(u"OTHER"_s), others);
    EXPECT_EQ(wholeCatalog().filter(u"WARES"_s), QStringList());
}

TEST_F(TablePane, AFileRenamedMeanwhileIsTheTablesOwnFileAsTheCatalogHasIt)
{
    open(table(u"ITEMS"_s));
    change(u"UPDATE TW_FILE SET FILE_NAME = 'FULL' WHERE FILE_NAME = 'EMPTY'"_s);
    change(u"UPDATE TW_TABLE SET FILE_NAME = 'FULL' WHERE FILE_NAME = 'EMPTY'"_s);
    click(key(table(u"ITEMS"_s)));
    EXPECT_EQ(list(u"FILE_NAME"_s).currentText(), u"FULL"_s);
    EXPECT_FALSE(items(u"FILE_NAME"_s).contains(u"EMPTY"_s));
}

TEST_F(TablePane, ACatalogThatTakesNoChangeStaysAndSoDoesThePane)
{
    for (const char* event : {"INSERT", "UPDATE", "DELETE"})
        change(u"CREATE TRIGGER NO_%1 BEFORE %1 ON TW_TABLE BEGIN SELECT RAISE(ABORT, 'readonly'); END"_s.arg(
            QLatin1String(event)));
    const QStringList before = wholeCatalog();
    open(table(u"ITEMS"_s));
    write(u"REMARKS"_s, u"9"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"9"_s);
    press(u"Cancel"_s);

    // The first delete fails: columns and privileges stay too.
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    errors.expect(Press::Ignore);
    statements.clear();
    press(u"Table Delete"_s);
    EXPECT_EQ(statements.writes(), deleteTable(u"ITEMS"_s).first(1));
    EXPECT_EQ(state(), u"Table Delete: Up1 OK Cancel"_s);
    EXPECT_EQ(nodes(), (QStringList{u"ITEMS"_s, u"ORDERS"_s}));
    press(u"Cancel"_s);

    press(u"Table Add"_s);
    fillIn(u"x"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

TEST_F(TablePane, ALostConnectionLeavesThePaneInItsState)
{
    open(table(u"ITEMS"_s));
    const QStringList before = wholeCatalog();
    clear(u"DISPLAY_NAME"_s);
    write(u"TABLE_NAME"_s, u"x"_s);
    statements.clear();
    for (int k = 1; k <= 2; ++k)
        statements.failAt(k, {{10054, "[Test] 08S01 Communication link failure"}});
    errors.expect(Press::Ignore).expect(Press::Ignore);
    press(u"OK"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmTable.ValidateFields"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"TABLE_NAME"_s), u"X"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

TEST_F(TablePane, ADeletedTableOfAnOpenLevelTakesItsNodesAlong)
{
    begin(table(u"ORDERS"_s) + QStringList{u"CO"_s, u"co=AMOUNT"_s});
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    choose(key(table(u"ORDERS"_s)), u"mnu_TableDelete"_s);
    EXPECT_EQ(wholeTree().filter(u"ORDERS"_s), QStringList());
    EXPECT_EQ(wholeTree().filter(u"AMOUNT"_s), QStringList());
    EXPECT_EQ(nodes(), QStringList{u"ITEMS"_s});
    EXPECT_EQ(currentPane(), u"frmTables"_s);
}

TEST_F(TablePane, UpLeadsOutOfAnAddAndDropsIt)
{
    beginToAdd();
    fillIn(u"x"_s);
    press(u"Up1"_s);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_EQ(selectedKey(), key(level()));
    EXPECT_EQ(statements.writes(), QStringList());
    click(key(table(u"ITEMS"_s)));
    EXPECT_EQ(texts(tableColumns), shownItems);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
}

TEST_F(TablePane, ATableIsNotShownWhileItsRowCannotBeRead)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(table(u"ITEMS"_s));
    press(u"Table Edit"_s);
    write(u"REMARKS"_s, u"mine"_s);
    statements.clear();
    statements.failAt(1);
    errors.expect(Press::Ignore);
    click(key(table(u"ORDERS"_s)));
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmTable.Display"_s);
    EXPECT_EQ(paneTitle(), u"ORDERS - Table Properties"_s);
    EXPECT_EQ(texts(tableColumns), nothing);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
}

// Criteria -----------------------------------------------------------------------------------------------------------

TEST_F(TablePane, CriteriaComeFromTheirBuilderAloneAndUndoBringsTheStoredOnesBack)
{
    open(table(u"ITEMS"_s));
    EXPECT_FALSE(entry(u"CRITERIA"_s).isEnabled());
    const auto build = [&](const QString& criteria, const QString& endsWith) {
        dialogs.expect(u"frmCriteriaBuilder"_s, [=](DialogForm& dialog) {
            typeCriteria(dialog, u"CODE <> 'x'"_s, criteria);
            DialogScript::click(dialog, endsWith);
        });
        clickButton(u"cmdCriteria"_s);
        dialogs.verify();
    };
    build(u"never"_s, u"cmdCancel"_s);
    EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    build(u"ITEMS.ARTICLE = 'a'"_s, u"cmdOK"_s);
    EXPECT_EQ(text(u"CRITERIA"_s), u"ITEMS.ARTICLE = 'a'"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    press(u"Undo"_s);
    EXPECT_EQ(text(u"CRITERIA"_s), u"CODE <> 'x'"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);

    build(u"ITEMS.ARTICLE = 'a'"_s, u"cmdOK"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(),
              QStringList{updateTable(u"ITEMS"_s, u"Items"_s, u"TABLE"_s, u"EMPTY"_s, u"items.dat"_s, u"2"_s,
                                      u"ITEMS.ARTICLE = ''a''"_s, u"old one"_s)});
    EXPECT_EQ(tables().first(), u"ITEMS|Items|TABLE|EMPTY|items.dat|2|ITEMS.ARTICLE = 'a'|old one"_s);
}
