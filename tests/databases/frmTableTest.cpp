#include "TablePaneFixture.h"

#include "PaneRegistry.h"
#include "Settings.h"
#include "ToolBar.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using namespace tablepane;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(TablePane, AClickOpensATableForChange)
{
    open(table(u"ITEMS"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readTable(u"ITEMS"_s), readFiles}));
    EXPECT_EQ(currentPane(), u"frmTable"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS - Edit Table Properties"_s);
    EXPECT_EQ(texts(tableColumns), shownItems);
    EXPECT_EQ(list(u"TABLE_TYPE"_s).currentText(), u"TABLE"_s);
    EXPECT_EQ(list(u"FILE_NAME"_s).currentText(), u"EMPTY"_s);
    EXPECT_EQ(items(u"TABLE_TYPE"_s), QStringList{u"TABLE"_s});
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), openColumns);
    EXPECT_TRUE(control(u"cmdCalcColumns"_s).isEnabled());
    EXPECT_TRUE(control(u"cmdCriteria"_s).isEnabled());
    EXPECT_EQ(focus(), u"TABLE_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Update"_s);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(TablePane, TheColumnsAreAskedForOnce)
{
    open(table(u"ITEMS"_s));
    open(table(u"ORDERS"_s));
    EXPECT_EQ(statements.statements(), (QStringList{readTable(u"ORDERS"_s), readFiles}));
    EXPECT_EQ(texts(tableColumns),
              (QStringList{u"SALES"_s, u"ORDERS"_s, u""_s, u"TABLE"_s, u"PAYROLL"_s, u""_s, u"0"_s, u""_s, u""_s}));
}

TEST_F(TablePane, WithTheOptionOffAClickOnlyShowsAndNeedsNoListOfFiles)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(table(u"ITEMS"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readTable(u"ITEMS"_s)}));
    EXPECT_EQ(paneTitle(), u"ITEMS - Table Properties"_s);
    EXPECT_EQ(texts(tableColumns), shownItems);
    EXPECT_EQ(items(u"FILE_NAME"_s), QStringList{u"EMPTY"_s});
    EXPECT_EQ(list(u"TABLE_TYPE"_s).currentText(), u"TABLE"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    for (const char* button : {"cmdCalcColumns", "cmdCriteria", "cmdAction", "cmdCancel"})
        EXPECT_FALSE(control(QLatin1String(button)).isEnabled()) << button;

    press(u"Table Edit"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS - Edit Table Properties"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    EXPECT_TRUE(items(u"FILE_NAME"_s).contains(u"PAYROLL"_s));
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(paneTitle(), u"ITEMS - Table Properties"_s);
    EXPECT_EQ(items(u"FILE_NAME"_s), QStringList{u"EMPTY"_s});
}

TEST_F(TablePane, TheFilesOfferedIncludeTheCatalogsOwnUnlessTheOptionIsOff)
{
    open(table(u"ITEMS"_s));
    EXPECT_TRUE(items(u"FILE_NAME"_s).contains(u"LOCDT"_s));
    const QStringList all = items(u"FILE_NAME"_s);
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    click(key(table(u"ITEMS"_s)));
    EXPECT_EQ(items(u"FILE_NAME"_s), all);

    settings::save(u"Options"_s, u"SysTables"_s, 0);
    statements.clear();
    click(key(table(u"ITEMS"_s)));
    EXPECT_EQ(statements.statements().back(),
              u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME <> '' AND FILE_NAME NOT IN "_s + systemFiles +
                  u" ORDER BY FILE_NAME ASC"_s);
    EXPECT_EQ(items(u"FILE_NAME"_s), (QStringList{u"EMPTY"_s, u"PAYROLL"_s}));
    EXPECT_EQ(list(u"FILE_NAME"_s).currentText(), u"EMPTY"_s);
}

TEST_F(TablePane, TellsWhatEachPropertyIs)
{
    open(table(u"ITEMS"_s));
    const std::vector<std::tuple<const char*, const char*, const char*>> rows{
        {"DATABASE_NAME", "Database Name:", "The name of the Database containing the Table"},
        {"TABLE_NAME", "Table &Name:", "Table name must be unique within a database."},
        {"DISPLAY_NAME", "&Display Name:", "How the table name appears to other applications."},
        {"TABLE_TYPE", "&Table Type:", "Specifies the type of SQL table."},
        {"FILE_NAME", "F&ile Name:", "The name of the File definition to map to"},
        {"FILE_SPECIFICATION", "File &Specification:", "The file which the File Definition maps to on the server."},
        {"NUMBER_COLUMNS", "Number of &Columns:", "The number of columns in this Table"},
        {"CRITERIA", "C&riteria:", "SQL Filter aplied to table to limit the results returned"},
        {"REMARKS", "Re&marks:", "Any notes you wish to make about this Table"},
    };
    for (const auto& [column, prompt, toolTip] : rows) {
        SCOPED_TRACE(column);
        QWidget& found = entry(QLatin1String(column));
        EXPECT_EQ(found.toolTip(), QLatin1String(toolTip));
        QString buddyText;
        for (const QLabel* label : window->currentPane()->findChildren<QLabel*>()) {
            if (label->buddy() == &found)
                buddyText = label->text();
        }
        EXPECT_EQ(buddyText, QLatin1String(prompt));
        EXPECT_EQ(found.accessibleName(), QString(QLatin1String(prompt)).remove('&'_L1).remove(':'_L1));
    }
    EXPECT_EQ(limits(0), u"(0 to 32767)"_s);
    EXPECT_EQ(control(u"cmdCalcColumns"_s).toolTip(), u"Automatically count the number of columns in this table."_s);
    EXPECT_EQ(window->toolBar(u"tbrTable"_s).Button(u"Up1"_s).ToolTipText(), u"Up to Table collection"_s);
}

TEST_F(TablePane, TheTabKeyWalksFromTopToBottom)
{
    open(table(u"ITEMS"_s));
    QStringList walked{focus()};
    for (int i = 0; i < 10; ++i) {
        hit(Qt::Key_Tab);
        walked.append(focus());
    }
    EXPECT_EQ(walked, (QStringList{u"TABLE_NAME"_s, u"DISPLAY_NAME"_s, u"TABLE_TYPE"_s, u"FILE_NAME"_s,
                                   u"FILE_SPECIFICATION"_s, u"NUMBER_COLUMNS"_s, u"cmdCalcColumns"_s, u"cmdCriteria"_s,
                                   u"REMARKS"_s, u"cmdAction"_s, u"cmdCancel"_s}));
}

TEST_F(TablePane, OnlyTheDebugWordShowsTheTextsBehindTheLists)
{
    open(table(u"ITEMS"_s));
    EXPECT_FALSE(control(u"txtProperty_TABLE_TYPE"_s).isVisible());
    EXPECT_FALSE(control(u"txtProperty_FILE_NAME"_s).isVisible());
    quit();
    start({u"DEBUG"_s});
    open(table(u"ITEMS"_s));
    EXPECT_TRUE(control(u"txtProperty_TABLE_TYPE"_s).isVisible());
    EXPECT_TRUE(control(u"txtProperty_FILE_NAME"_s).isVisible());
}

TEST_F(TablePane, NullsShowAsEmptyTexts)
{
    change(
        u"UPDATE TW_TABLE SET TABLE_TYPE = NULL, FILE_NAME = NULL, FILE_SPECIFICATION = NULL, NUMBER_COLUMNS = NULL, "
        "CRITERIA = NULL, REMARKS = NULL, DISPLAY_NAME = NULL WHERE TABLE_NAME = 'ORDERS' "
        "AND DATABASE_NAME = 'SALES'"_s);
    open(table(u"ITEMS"_s));
    open(table(u"ORDERS"_s));
    EXPECT_EQ(texts(tableColumns), (QStringList{u"SALES"_s, u"ORDERS"_s} + nothing.first(7)));
    EXPECT_EQ(list(u"TABLE_TYPE"_s).currentIndex(), -1);
    EXPECT_EQ(list(u"FILE_NAME"_s).currentIndex(), -1);
    expectRefused(noType, u"TABLE_TYPE"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(TablePane, ATableThatIsGoneShowsNoValues)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(table(u"ORDERS"_s));
    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s);
    click(key(table(u"ITEMS"_s)));
    EXPECT_EQ(paneTitle(), u"ITEMS - Table Properties"_s);
    EXPECT_EQ(texts(tableColumns), nothing);
    EXPECT_EQ(state(), displayState);
}

TEST_F(TablePane, AnotherClickDropsWhatWasEntered)
{
    open(table(u"ITEMS"_s));
    write(u"REMARKS"_s, u"new"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    write(u"TABLE_NAME"_s, u"new"_s);
    click(key(table(u"ORDERS"_s)));
    EXPECT_EQ(text(u"TABLE_NAME"_s), u"ORDERS"_s);
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel"_s);
    // The former table's other name is no change of this one's.
    write(u"FILE_SPECIFICATION"_s, u"x"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(),
              QStringList{updateTable(u"ORDERS"_s, {}, u"TABLE"_s, u"PAYROLL"_s, u"x"_s, u"0"_s, {}, {})});
}

TEST_F(TablePane, UpShowsTheCollectionWithTheFocusInItsGrid)
{
    open(table(u"ITEMS"_s));
    press(u"Up1"_s);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_EQ(paneTitle(), u"SALES - Tables"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"ITEMS"_s, u"ORDERS"_s}));
    EXPECT_EQ(selectedKey(), key(level()));
    EXPECT_TRUE(control(u"grd"_s).hasFocus());
}

TEST_F(TablePane, TheDataOfATableAreShownByTheirPane)
{
    record({{u"frmTableData"_s, 3}});
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(table(u"ITEMS"_s));
    press(u"ViewData"_s);
    EXPECT_EQ(takeShown(), QStringList{"frmTableData "_L1 + datasource + "/SALES/ITEMS"_L1});
    EXPECT_EQ(currentPane(), u"frmTableData"_s);
    click(key(table(u"ORDERS"_s)));
    EXPECT_EQ(paneTitle(), u"ORDERS - Table Properties"_s);
    panes::remove(u"frmTableData"_s);
}

// The catalog's own tables -------------------------------------------------------------------------------------------

TEST_F(TablePane, ATableOfTheCatalogIsForReadingOnly)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    const QStringList own{u"DB"_s, u"db=TW"_s, u"TA"_s, u"ta=DRIVER"_s};
    const QString readOwn = u"SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'TW' AND TABLE_NAME = 'DRIVER' "_s;
    open(own);
    EXPECT_EQ(statements.statements(), (QStringList{describe, readOwn}));
    EXPECT_EQ(paneTitle(), u"DRIVER - Table Properties"_s);
    EXPECT_EQ(texts(tableColumns).first(6),
              (QStringList{u"TW"_s, u"DRIVER"_s, u"Driver"_s, u"TABLE"_s, u"DRIVER"_s, u"TW_DRIVER"_s}));
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    EXPECT_FALSE(control(u"cmdCalcColumns"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdCriteria"_s).isEnabled());

    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    press(u"Cancel"_s);
    EXPECT_EQ(statements.statements(), QStringList{readOwn});
    const QStringList menu = menuOf(key(own));
    for (const char* entry : {"mnu_TableAddNew", "mnu_TableEdit", "mnu_TableDelete"})
        EXPECT_FALSE(menu.contains(QLatin1String(entry))) << entry;

    window->PaneEdit(u"frmTable"_s, {datasource, u"TW"_s, u"DRIVER"_s});
    EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    EXPECT_EQ(open(), QStringList());
}

// Adding -------------------------------------------------------------------------------------------------------------

TEST_F(TablePane, AddBeginsWithAnEmptyFormInItsDatabase)
{
    open(table(u"ITEMS"_s));
    command(level(), u"mnu_TableAddNew"_s);
    EXPECT_EQ(statements.statements(), QStringList{readFiles});
    EXPECT_EQ(paneTitle(), u"Add New Table to SALES"_s);
    EXPECT_EQ(texts(tableColumns), (QStringList{u"SALES"_s} + nothing.first(8)));
    EXPECT_EQ(list(u"TABLE_TYPE"_s).currentIndex(), -1);
    EXPECT_EQ(list(u"FILE_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(items(u"TABLE_TYPE"_s), QStringList{u"TABLE"_s});
    EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), openColumns);
    EXPECT_TRUE(control(u"cmdCalcColumns"_s).isEnabled());
    EXPECT_TRUE(control(u"cmdCriteria"_s).isEnabled());
    EXPECT_EQ(focus(), u"TABLE_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Add"_s);
}

TEST_F(TablePane, ThreeTablesAreAddedOneBehindTheOther)
{
    beginToAdd();
    statements.clear();
    fillIn(u"a"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{nameIsTaken(u"A"_s),
                                   insertTable(u"A"_s, u"'TABLE', 'EMPTY', 'a.dat', 0, '', '', ''"_s), readFiles}));
    EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel"_s);
    EXPECT_EQ(texts(tableColumns), (QStringList{u"SALES"_s} + nothing.first(8)));
    EXPECT_EQ(focus(), u"TABLE_NAME"_s);
    EXPECT_EQ(nodes(), (QStringList{u"A"_s, u"ITEMS"_s, u"ORDERS"_s}));
    EXPECT_EQ(selectedKey(), key(level()));

    fillIn(u"z z"_s);
    write(u"DISPLAY_NAME"_s, u"z Z"_s);
    write(u"FILE_SPECIFICATION"_s, u"C:\\it's 100%.dat"_s);
    write(u"NUMBER_COLUMNS"_s, u"12"_s);
    write(u"REMARKS"_s, u"\"fine\""_s);
    clickButton(u"cmdAction"_s);
    fillIn(u"m"_s);
    hit(Qt::Key_Return);

    EXPECT_EQ(tables(), (QStringList{u"A||TABLE|EMPTY|a.dat|0||"_s, storedItems, u"M||TABLE|EMPTY|a.dat|0||"_s,
                                     storedOrders, u"Z_Z|z_Z|TABLE|EMPTY|C:\\it's 100%.dat|12||\"fine\""_s}));
    EXPECT_EQ(statements.writes(),
              (QStringList{insertTable(u"A"_s, u"'TABLE', 'EMPTY', 'a.dat', 0, '', '', ''"_s),
                           insertTable(u"Z_Z"_s, u"'TABLE', 'EMPTY', 'C:\\it''s 100%.dat', 012, '', '\"fine\"', "
                                                 "'z_Z'"_s),
                           insertTable(u"M"_s, u"'TABLE', 'EMPTY', 'a.dat', 0, '', '', ''"_s)}));
    EXPECT_EQ(nodes(), (QStringList{u"A"_s, u"ITEMS"_s, u"M"_s, u"ORDERS"_s, u"Z_Z"_s}));
    EXPECT_EQ(line(node(key(table(u"M"_s)))), line(node(key(table(u"ORDERS"_s)))).replace(u"ORDERS"_s, u"M"_s));
    press(u"Cancel"_s);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_EQ(gridNames(), nodes());
}

TEST_F(TablePane, AddingBelowACollectionThatIsClosedOpensIt)
{
    begin(level());
    choose(key(level()), u"mnu_TableAddNew"_s);
    fillIn(u"new"_s);
    press(u"OK"_s);
    EXPECT_EQ(nodes(), (QStringList{u"ITEMS"_s, u"NEW"_s, u"ORDERS"_s}));
    EXPECT_TRUE(node(key(level())).Expanded());
    EXPECT_EQ(selectedKey(), key(level()));
}

TEST_F(TablePane, TheFirstTableOfADatabaseGetsItsNode)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('BARE')"_s);
    const QStringList bare{u"DB"_s, u"db=BARE"_s, u"TA"_s};
    begin(bare);
    clickExpander(key(bare));
    EXPECT_EQ(children(key(bare)), QStringList());
    choose(key(bare), u"mnu_TableAddNew"_s);
    fillIn(u"first"_s);
    press(u"OK"_s);
    EXPECT_EQ(children(key(bare)), QStringList{u"FIRST"_s});
    EXPECT_EQ(stored(u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'BARE'"_s), QStringList{u"FIRST"_s});
}

TEST_F(TablePane, CancelOfAnAddShowsTheCollection)
{
    open(table(u"ITEMS"_s));
    press(u"Cancel"_s);
    press(u"Table Add"_s);
    EXPECT_EQ(paneTitle(), u"Add New Table to SALES"_s);
    write(u"TABLE_NAME"_s, u"x"_s);
    hit(Qt::Key_Escape);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"ITEMS"_s, u"ORDERS"_s}));
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(TablePane, UndoOfAnAddEmptiesEveryText)
{
    beginToAdd();
    fillIn(u"x"_s);
    EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel Undo"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(texts(tableColumns), nothing);
    EXPECT_EQ(list(u"TABLE_TYPE"_s).currentIndex(), -1);
    EXPECT_EQ(list(u"FILE_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel"_s);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(TablePane, WhatIsFilledInBehindAnUndoStillBelongsToTheDatabase)
{
    beginToAdd();
    fillIn(u"x"_s);
    press(u"Undo"_s);
    fillIn(u"y"_s);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME FROM TW_TABLE WHERE TABLE_NAME = 'Y'"_s), QStringList{u"SALES"_s});
}

// Validation ---------------------------------------------------------------------------------------------------------

TEST_F(TablePane, RefusesWhatIsWrongOneAfterTheOther)
{
    beginToAdd();
    const QStringList tree = wholeTree();
    statements.clear();
    write(u"NUMBER_COLUMNS"_s, u"32768"_s);
    expectRefused(noName, u"TABLE_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    write(u"TABLE_NAME"_s, u"items"_s);
    write(u"DISPLAY_NAME"_s, u"y"_s);
    expectRefused(u"The Table Name 'ITEMS' is already used in the Database."_s, u"TABLE_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{nameIsTaken(u"ITEMS"_s)});
    write(u"TABLE_NAME"_s, u"x"_s);
    expectRefused(otherDisplayName, u"DISPLAY_NAME"_s);
    write(u"DISPLAY_NAME"_s, u"x"_s);
    expectRefused(noType, u"TABLE_TYPE"_s);
    pick(u"TABLE_TYPE"_s, u"TABLE"_s);
    expectRefused(noSpecification, u"FILE_SPECIFICATION"_s);
    write(u"FILE_SPECIFICATION"_s, u"f"_s);
    expectRefused(noFile, u"FILE_NAME"_s);
    pick(u"FILE_NAME"_s, u"EMPTY"_s);
    expectRefused(outOfRange, u"NUMBER_COLUMNS"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel Undo"_s);
    write(u"NUMBER_COLUMNS"_s, u"32767"_s);
    press(u"OK"_s);
    EXPECT_EQ(tables().last(), u"X|x|TABLE|EMPTY|f|32767||"_s);
}

TEST_F(TablePane, TheSameNameMayStandInAnotherDatabase)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('O''HARA')"_s);
    command({u"DB"_s, u"db=O'HARA"_s, u"TA"_s}, u"mnu_TableAddNew"_s);
    fillIn(u"items"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(sent().first(),
              u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'O''HARA' AND TABLE_NAME = 'ITEMS'"_s);
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS' ORDER BY 1"_s),
              (QStringList{u"O'HARA"_s, u"SALES"_s}));
}

TEST_F(TablePane, ANumberOfColumnsOutOfRangeIsRefused)
{
    open(table(u"ITEMS"_s));
    for (const char* number : {"32768", "-1", "1e5", "32767.5", "--2", "5/*"}) {
        SCOPED_TRACE(number);
        paste(u"NUMBER_COLUMNS"_s, QLatin1String(number));
        expectRefused(outOfRange, u"NUMBER_COLUMNS"_s);
    }
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
    // Only digits are typed, and a sign in front.
    write(u"NUMBER_COLUMNS"_s, u"1.2x-34"_s);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"1234"_s);
}

TEST_F(TablePane, ABlankNumberOfColumnsIsZero)
{
    open(table(u"ITEMS"_s));
    clear(u"NUMBER_COLUMNS"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateTable(u"ITEMS"_s, u"Items"_s, u"TABLE"_s, u"EMPTY"_s,
                                                           u"items.dat"_s, {}, u"CODE <> ''x''"_s, u"old one"_s)});
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"0"_s);
    EXPECT_EQ(tables().first(), u"ITEMS|Items|TABLE|EMPTY|items.dat|0|CODE <> 'x'|old one"_s);
}
