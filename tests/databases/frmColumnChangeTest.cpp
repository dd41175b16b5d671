#include "CConnections.h"
#include "ColumnPaneFixture.h"
#include "ToolBar.h"

#include <ostream>
#include <utility>

using namespace Qt::StringLiterals;
using namespace columnpane;

// Changing -----------------------------------------------------------------------------------------------------------

TEST_F(ColumnPane, AChangeIsOneStatement)
{
    open(column(u"ARTICLE"_s));
    statements.clear();
    write(u"REMARKS"_s, u"Don't; \"100%\""_s);
    paste(u"DEFAULT_VALUE"_s, u"🚀'"_s);
    write(u"SCALE"_s, u"-2"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(),
              (QStringList{numberIsAssigned(u"2"_s, u"ARTICLE"_s),
                           updateColumn(u"ARTICLE"_s,
                                        u"SQL_TYPE_NAME = 'VARCHAR', LENGTH = 012, PRECISION = 010, SCALE = 0-2, "
                                        "NULLABLE = 01, UNSIGNED_ATTRIBUTE = 01, UPDATABLE = 01, VISIBLE = 01, "
                                        "MONEY = 00, AUTO_INCREMENT = 00, CASE_SENSITIVE = 01, SEARCHABLE = 03, "
                                        "RADIX = 00, DEFAULT_VALUE = '🚀''', REMARKS = 'Don''t; \"100%\"', "
                                        "SETFILEPARAMETER = 01, DISPLAY_NAME = 'Article'"_s),
                           readColumn(u"ARTICLE"_s)}));
    EXPECT_EQ(storedColumn(u"ARTICLE"_s),
              QStringList{u"SALES|ITEMS|2|ARTICLE|CODE|VARCHAR|12|10|-2|1|1|1|1|0|0|1|3|0|🚀'|Don't; \"100%\"|1|0|"
                          "Article"_s});
    EXPECT_EQ(paneTitle(), u"ITEMS.ARTICLE - Column Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(selectedKey(), key(column(u"ARTICLE"_s)));
    EXPECT_EQ(text(u"SCALE"_s), u"-2"_s);
}

TEST_F(ColumnPane, ARenameWritesTheRowAnewAndItsNodeFollows)
{
    open(column(u"ARTICLE"_s));
    statements.clear();
    write(u"COLUMN_NAME"_s, u"item no"_s);
    write(u"DISPLAY_NAME"_s, u"Item No"_s);
    write(u"COLUMN_NUMBER"_s, u"8"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{
                          numberIsAssigned(u"8"_s, u"ARTICLE"_s), nameIsUsed(u"ITEM_NO"_s), readColumn(u"ARTICLE"_s),
                          deleteColumn(u"ARTICLE"_s),
                          insertAnew(u"08, 'ITEM_NO', 'CODE', 'VARCHAR', 12, 10, 0, 1, 1, 1, 1, 0, 0, 1, 3, 0, 'none', "
                                     "'it''s', 1, 0, 'Article'"_s),
                          updateColumn(u"ITEM_NO"_s, QString(unchangedArticle).replace("Article"_L1, "Item_No"_L1)),
                          readColumn(u"ITEM_NO"_s)}));
    EXPECT_EQ(selectedKey(), key(column(u"ITEM_NO"_s)));
    EXPECT_EQ(children(key(items())), (QStringList{u"PRICE"_s, u"PIECES"_s, u"ITEM_NO"_s}));
    EXPECT_EQ(line(node(key(column(u"ITEM_NO"_s)))), u"co \"ITEM_NO\" Column"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS.ITEM_NO - Column Properties"_s);
    EXPECT_EQ(state(), displayState);
    // The new name is the one that the next change is for.
    press(u"Column Edit"_s);
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored1(u"ITEM_NO"_s, u"REMARKS"_s), u"x"_s);
}

TEST_F(ColumnPane, ANewNumberOrFieldIsCarriedAsAKeyIs)
{
    open(column(u"ARTICLE"_s));
    write(u"COLUMN_NUMBER"_s, u"9"_s);
    pick(u"FIELD_NAME"_s, u"SOLD"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{
                          isMapped(u"SOLD"_s), numberIsAssigned(u"9"_s, u"ARTICLE"_s), readColumn(u"ARTICLE"_s),
                          deleteColumn(u"ARTICLE"_s),
                          insertAnew(u"09, 'ARTICLE', 'SOLD', 'VARCHAR', 12, 10, 0, 1, 1, 1, 1, 0, 0, 1, 3, 0, 'none', "
                                     "'it''s', 1, 0, 'Article'"_s),
                          updateColumn(u"ARTICLE"_s, unchangedArticle), readColumn(u"ARTICLE"_s)}));
    // It moves behind the others.
    EXPECT_EQ(children(key(items())), (QStringList{u"PRICE"_s, u"PIECES"_s, u"ARTICLE"_s}));
    EXPECT_EQ(selectedKey(), key(column(u"ARTICLE"_s)));
    EXPECT_EQ(texts({u"COLUMN_NUMBER"_s, u"FIELD_NAME"_s}), (QStringList{u"9"_s, u"SOLD"_s}));
}

TEST_F(ColumnPane, AKeyThatWasTypedAndTakenBackIsCarriedAsItIs)
{
    open(column(u"ARTICLE"_s));
    statements.clear();
    write(u"COLUMN_NUMBER"_s, u"2"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes().size(), 3);
    press(u"Column Edit"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateColumn(u"ARTICLE"_s, unchangedArticle)});
}

TEST_F(ColumnPane, WithoutATypeOfItsOwnAColumnIsCarriedAsAnOrdinaryOne)
{
    open(column(u"PRICE"_s));
    change(u"UPDATE TW_COLUMN SET COLUMN_TYPE = NULL WHERE COLUMN_NAME = 'ARTICLE'"_s);
    click(key(column(u"ARTICLE"_s)));
    EXPECT_EQ(text(u"COLUMN_TYPE"_s), u""_s);
    write(u"COLUMN_NUMBER"_s, u"6"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT COLUMN_NUMBER, COLUMN_TYPE FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s),
              QStringList{u"6|0"_s});
}

TEST_F(ColumnPane, ARenameOfAColumnWithANullEndsBehindItsDelete)
{
    change(u"UPDATE TW_COLUMN SET PRECISION = NULL WHERE COLUMN_NAME = 'ARTICLE'"_s);
    open(column(u"ARTICLE"_s));
    clear(u"DISPLAY_NAME"_s);
    write(u"COLUMN_NAME"_s, u"x"_s);
    write(u"COLUMN_NUMBER"_s, u"8"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateColumn"_s);
    EXPECT_EQ(storedColumn(u"ARTICLE"_s) + storedColumn(u"X"_s), QStringList());
    // The pane and the tree show what the catalog holds.
    EXPECT_EQ(texts(allColumns).join(QString()), QString());
    EXPECT_EQ(children(key(items())), (QStringList{u"PRICE"_s, u"PIECES"_s}));
    EXPECT_EQ(state(), displayState);
}

TEST_F(ColumnPane, UndoOfAChangeReadsTheColumnAgain)
{
    open(column(u"PRICE"_s));
    write(u"COLUMN_NAME"_s, u"x"_s);
    pick(u"FIELD_NAME"_s, u"SOLD"_s);
    chooseType(u"VARCHAR"_s);
    tick(u"UNSIGNED_ATTRIBUTE"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(), (QStringList{readColumn(u"PRICE"_s), readFile, readFields}));
    EXPECT_EQ(texts({u"COLUMN_NAME"_s, u"FIELD_NAME"_s, u"SQL_TYPE_NAME"_s, u"LENGTH"_s, u"UNSIGNED_ATTRIBUTE"_s}),
              (QStringList{u"PRICE"_s, u"PRICE"_s, u"DECIMAL"_s, u"33"_s, u"0"_s}));
    EXPECT_EQ(ticked(), (QStringList{u"NULLABLE"_s, u"UPDATABLE"_s, u"VISIBLE"_s}));
    EXPECT_EQ(open(), openEntriesOfFixedType);
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel"_s);
    // What was undone is no changed key either.
    press(u"OK"_s);
    EXPECT_EQ(statements.writes().size(), 1);
}

TEST_F(ColumnPane, CancelOfAChangeShowsTheColumnAsItIs)
{
    open(column(u"ARTICLE"_s));
    write(u"COLUMN_NAME"_s, u"x"_s);
    write(u"REMARKS"_s, u"x"_s);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS.ARTICLE - Column Properties"_s);
    EXPECT_EQ(texts({u"COLUMN_NAME"_s, u"REMARKS"_s}), (QStringList{u"ARTICLE"_s, u"it's"_s}));
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(ColumnPane, AClickOnAnotherColumnDropsTheChange)
{
    open(column(u"ARTICLE"_s));
    write(u"REMARKS"_s, u"x"_s);
    pick(u"FIELD_NAME"_s, u"SOLD"_s);
    click(key(column(u"PIECES"_s)));
    EXPECT_EQ(texts({u"COLUMN_NAME"_s, u"FIELD_NAME"_s, u"REMARKS"_s}), (QStringList{u"PIECES"_s, u"PIECES"_s, {}}));
    press(u"OK"_s);
    EXPECT_EQ(statements.writes().size(), 1);
    EXPECT_EQ(stored1(u"ARTICLE"_s, u"FIELD_NAME"_s), u"CODE"_s);
}

TEST_F(ColumnPane, AnApostropheIsDoubledInStatementsAndSingleInTheKey)
{
    open(column(u"ARTICLE"_s));
    clear(u"DISPLAY_NAME"_s);
    paste(u"COLUMN_NAME"_s, u"it's"_s);
    write(u"COLUMN_NUMBER"_s, u"8"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent().mid(0, 2), (QStringList{numberIsAssigned(u"8"_s, u"ARTICLE"_s), nameIsUsed(u"it''s"_s)}));
    EXPECT_EQ(selectedKey(), key(column(u"it's"_s)));
    EXPECT_EQ(storedColumn(u"it's"_s),
              QStringList{u"SALES|ITEMS|8|it's|CODE|VARCHAR|12|10|0|1|1|1|1|0|0|1|3|0|none|it's|1|0|"_s});
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    statements.clear();
    press(u"Column Delete"_s);
    EXPECT_EQ(sent().mid(0, 3),
              (QStringList{readColumn(u"it''s"_s), criteriaName(u"it''s"_s), deleteColumn(u"it''s"_s)}));
    EXPECT_EQ(children(key(items())), (QStringList{u"PRICE"_s, u"PIECES"_s}));
}

TEST_F(ColumnPane, ApostrophesInTheNamesOfDatabaseTableFileAndFieldAreDoubledToo)
{
    addFile(u"F'1"_s, 4);
    addField(u"F'1"_s, u"A'B"_s, 1, 0, 4);
    addField(u"F'1"_s, u"C"_s, 2, 0, 4);
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('D''1')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('D''1', 'T''1', 'F''1')"_s);
    const QStringList columns{u"DB"_s, u"db=D'1"_s, u"TA"_s, u"ta=T'1"_s, u"CO"_s};
    command(columns, u"mnu_ColumnAddNew"_s);
    fillIn(u"x"_s, u"A'B"_s, u"DATE"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME FROM TW_COLUMN "
                     "WHERE COLUMN_NAME = 'X'"_s),
              QStringList{u"D'1|T'1|X|A'B"_s});
    fillIn(u"y"_s, u"A'B"_s, u"DATE"_s);
    expectRefused(u"The Field 'A'B' has already been mapped to Column 'X'"_s, u"FIELD_NAME"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(children(key(columns)), QStringList{u"X"_s});
    click(key(columns + QStringList{u"co=X"_s}));
    EXPECT_EQ(list(u"FIELD_NAME"_s).currentText(), u"A'B"_s);
    write(u"COLUMN_NAME"_s, u"z"_s);
    write(u"COLUMN_NUMBER"_s, u"8"_s);
    press(u"OK"_s);
    EXPECT_EQ(selectedKey(), key(columns + QStringList{u"co=Z"_s}));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    press(u"Column Delete"_s);
    EXPECT_EQ(stored(u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'T''1'"_s), QStringList());
}

TEST_F(ColumnPane, ASecondClickOnOkChangesNothingTwice)
{
    open(column(u"ARTICLE"_s));
    write(u"COLUMN_NUMBER"_s, u"9"_s);
    statements.clear();
    pressOkTwice();
    EXPECT_EQ(statements.writes().size(), 3);
    EXPECT_EQ(state(), displayState);
}

// Deleting -----------------------------------------------------------------------------------------------------------

TEST_F(ColumnPane, DeletingAColumnReadsTheLevelAnewAndShowsTheCollection)
{
    recordCollection();
    begin(column(u"PRICE"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes, [&] {
        EXPECT_EQ(paneTitle(), u"ITEMS.PRICE - Delete Column"_s);
        EXPECT_EQ(state(), u"Column Delete: Up1 OK Cancel"_s);
        EXPECT_EQ(open(), QStringList());
        EXPECT_EQ(openFlags(), QStringList());
        EXPECT_EQ(text(u"LENGTH"_s), u"7"_s);
    });
    choose(key(column(u"PRICE"_s)), u"mnu_ColumnDelete"_s);
    EXPECT_EQ(sent(),
              (QStringList{describe, readColumn(u"PRICE"_s), criteriaName(u"PRICE"_s), deleteColumn(u"PRICE"_s)}));
    EXPECT_EQ(takeShown(), QStringList{shown()});
    EXPECT_EQ(children(key(items())), (QStringList{u"ARTICLE"_s, u"PIECES"_s}));
    // Numbers stay as they are.
    EXPECT_EQ(stored1(u"PIECES"_s, u"COLUMN_NUMBER"_s), u"4"_s);
}

TEST_F(ColumnPane, TheGridShowsBehindADelete)
{
    open(column(u"ARTICLE"_s));
    press(u"Cancel"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    press(u"Column Delete"_s);
    EXPECT_EQ(currentPane(), u"frmColumns"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"3"_s, u"4"_s}));
    EXPECT_EQ(selectedKey(), key(items()));
    EXPECT_EQ(stored(u"SELECT NUMBER_COLUMNS FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s), QStringList{u"0"_s});
}

TEST_F(ColumnPane, DeletingAColumnOfTheTablesCriteriaAsksTwice)
{
    recordCollection();
    change(u"UPDATE TW_TABLE SET CRITERIA = 'SALES_ITEMS.PRICE > 5' WHERE TABLE_NAME = 'ITEMS'"_s);
    begin(column(u"PRICE"_s));
    const QStringList before = wholeCatalog();
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    boxes.expectAsk(isInCriteria, boxes::Answer::No);
    choose(key(column(u"PRICE"_s)), u"mnu_ColumnDelete"_s);
    boxes.verify();
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(state(), u"Column Delete: Up1 OK Cancel"_s);
    EXPECT_EQ(takeShown(), QStringList());
    press(u"Cancel"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    boxes.expectAsk(isInCriteria, boxes::Answer::Yes);
    press(u"Column Delete"_s);
    EXPECT_EQ(storedColumn(u"PRICE"_s), QStringList());
    EXPECT_EQ(stored(u"SELECT CRITERIA FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s),
              QStringList{u"SALES_ITEMS.PRICE > 5"_s});
    EXPECT_EQ(takeShown(), QStringList{shown()});
}

TEST_F(ColumnPane, WhatIsLikeTheNameInTheCriteriaIsTakenForIt)
{
    // An underscore stands for any character there.
    for (const char* criteria :
         {"SALES_ITEMS.PRICES = 1", "SALESXITEMS.PRICE = 1", "OTHER_SALES_ITEMS.PRICE = 1", "1 = SALES_ITEMS.PRICE"}) {
        SCOPED_TRACE(criteria);
        change(u"UPDATE TW_TABLE SET CRITERIA = '%1' WHERE TABLE_NAME = 'ITEMS'"_s.arg(QLatin1String(criteria)));
        open(column(u"PRICE"_s));
        press(u"Cancel"_s);
        boxes.expectAsk(mayDelete, boxes::Answer::Yes);
        boxes.expectAsk(isInCriteria, boxes::Answer::No);
        press(u"Column Delete"_s);
        boxes.verify();
    }
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(ColumnPane, WhatTheCriteriaDoesNotNameIsAskedForOnce)
{
    change(u"UPDATE TW_TABLE SET CRITERIA = 'SALES_ITEMS.BUYER = 1' WHERE TABLE_NAME = 'ORDERS'"_s);
    for (const auto& [criteria, name] :
         {std::pair("SALES_ITEMS.PIECES = 1", "PRICE"), std::pair("SALES_ORDERS.ARTICLE = 1", "ARTICLE"),
          std::pair("PIECES = 1", "PIECES")}) {
        SCOPED_TRACE(criteria);
        change(u"UPDATE TW_TABLE SET CRITERIA = '%1' WHERE TABLE_NAME = 'ITEMS'"_s.arg(QLatin1String(criteria)));
        open(column(QLatin1String(name)));
        press(u"Cancel"_s);
        boxes.expectAsk(mayDelete, boxes::Answer::Yes);
        press(u"Column Delete"_s);
        boxes.verify();
        EXPECT_EQ(storedColumn(QLatin1String(name)), QStringList());
    }
}

TEST_F(ColumnPane, ADeleteThatIsNotWantedWaitsForAnAnswer)
{
    recordCollection();
    change(u"UPDATE TW_TABLE SET CRITERIA = 'SALES_ITEMS.PRICE > 5' WHERE TABLE_NAME = 'ITEMS'"_s);
    open(column(u"PRICE"_s));
    press(u"Cancel"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    statements.clear();
    press(u"Column Delete"_s);
    boxes.verify();
    EXPECT_EQ(statements.statements(), QStringList{readColumn(u"PRICE"_s)});
    EXPECT_EQ(state(), u"Column Delete: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(paneTitle(), u"ITEMS.PRICE - Column Properties"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    press(u"Column Delete"_s);
    // "OK" goes through with it without asking again.
    statements.clear();
    clickButton(u"cmdAction"_s);
    EXPECT_EQ(sent(), QStringList{deleteColumn(u"PRICE"_s)});
    EXPECT_EQ(takeShown(), QStringList{shown()});
}

TEST_F(ColumnPane, TheLastColumnLeavesAnEmptyLevel)
{
    change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS' AND COLUMN_NAME <> 'ARTICLE'"_s);
    begin(column(u"ARTICLE"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    choose(key(column(u"ARTICLE"_s)), u"mnu_ColumnDelete"_s);
    EXPECT_EQ(children(key(items())), QStringList());
    EXPECT_EQ(currentPane(), u"frmColumns"_s);
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(ColumnPane, AColumnThatSomeoneHasDeletedIsNotMadeAnew)
{
    open(column(u"ARTICLE"_s));
    change(u"DELETE FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s);
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(texts(allColumns).join(QString()), QString());
    EXPECT_EQ(storedColumn(u"ARTICLE"_s), QStringList());
    EXPECT_EQ(children(key(items())), (QStringList{u"PRICE"_s, u"PIECES"_s}));
}

TEST_F(ColumnPane, ARenameOfAColumnThatSomeoneHasDeletedIsReported)
{
    open(column(u"ARTICLE"_s));
    change(u"DELETE FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s);
    clear(u"DISPLAY_NAME"_s);
    write(u"COLUMN_NAME"_s, u"x"_s);
    write(u"COLUMN_NUMBER"_s, u"8"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"3021"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateColumn"_s);
    EXPECT_EQ(storedColumn(u"X"_s), QStringList());
    EXPECT_EQ(children(key(items())), (QStringList{u"PRICE"_s, u"PIECES"_s}));
}

TEST_F(ColumnPane, DeletingAColumnThatSomeoneHasDeletedLeavesTheTreeTrue)
{
    begin(column(u"ARTICLE"_s));
    change(u"DELETE FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    choose(key(column(u"ARTICLE"_s)), u"mnu_ColumnDelete"_s);
    EXPECT_EQ(children(key(items())), (QStringList{u"PRICE"_s, u"PIECES"_s}));
    EXPECT_EQ(currentPane(), u"frmColumns"_s);
}

TEST_F(ColumnPane, AFailedUpdateBehindANewKeyLeavesTheOldPropertiesUnderIt)
{
    open(column(u"ARTICLE"_s));
    clear(u"DISPLAY_NAME"_s);
    write(u"COLUMN_NAME"_s, u"x"_s);
    write(u"COLUMN_NUMBER"_s, u"8"_s);
    write(u"REMARKS"_s, u"new"_s);
    statements.clear();
    statements.failAt(6);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmColumn.tbr_ButtonClick"_s);
    EXPECT_EQ(statements.statements().back().left(16), u"UPDATE TW_COLUMN"_s);
    EXPECT_EQ(storedColumn(u"X"_s),
              QStringList{u"SALES|ITEMS|8|X|CODE|VARCHAR|12|10|0|1|1|1|1|0|0|1|3|0|none|it's|1|0|Article"_s});
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"new"_s);
}

TEST_F(ColumnPane, ALostConnectionLeavesThePaneInItsState)
{
    open(column(u"ARTICLE"_s));
    const QStringList before = wholeCatalog();
    write(u"REMARKS"_s, u"x"_s);
    statements.clear();
    statements.failAt(1, {{10054, "[Test] 08S01 Communication link failure"}});
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"Column Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"x"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

TEST_F(ColumnPane, UndoOfADeleteOnlyDisablesItself)
{
    begin(column(u"ARTICLE"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    choose(key(column(u"ARTICLE"_s)), u"mnu_ColumnDelete"_s);
    window->toolBar(u"tbrColumn"_s).Button(u"Undo"_s).setEnabled(true);
    const QStringList asShown = texts(allColumns);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(state(), u"Column Delete: Up1 OK Cancel"_s);
    EXPECT_EQ(texts(allColumns), asShown);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(ColumnPane, ATypeThatHasGoneIsReportedByTheListsRoutine)
{
    open(column(u"ARTICLE"_s));
    CConnections::instance().find(datasource)->SQLDTs().Remove(u"INTEGER"_s);
    errors.expect(Press::Ignore);
    chooseType(u"INTEGER"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmColumn.cboDropdown_Click"_s);
}
