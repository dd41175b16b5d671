#include "TablePaneFixture.h"

#include "CellGrid.h"
#include "Settings.h"
#include "ToolBar.h"

#include <QComboBox>
#include <QRegularExpression>
#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace tablepane;

namespace
{

class TablesGrid : public WithItems<GridTest>
{
protected:
    void openTables() { open(level()); }
    void leave() { clickBeside(); }

    /// What the list over the current cell offers.
    QStringList offered() const
    {
        auto* list = qobject_cast<QComboBox*>(editor());
        if (!list)
            return {u"<no list>"_s};
        QStringList items;
        for (int i = 0; i < list->count(); ++i)
            items.append(list->itemText(i));
        return items;
    }

    /// Types a whole table into the blank row, without leaving the row.
    void add(const QString& name)
    {
        change(blankRow(), u"Table Name"_s, name);
        change(blankRow(), u"File Name"_s, u"pay"_s);
        change(blankRow(), u"File Specification"_s, u"a.dat"_s);
    }

    void retype(const QString& text)
    {
        while (!editorText().isEmpty())
            hit(Qt::Key_Backspace);
        write(text);
    }

    void expectRefused(const QString& message, const QString& cell)
    {
        SCOPED_TRACE(message.toStdString());
        boxes.expectInform(message);
        leave();
        boxes.verify();
        EXPECT_EQ(current(), cell);
        EXPECT_NE(editor(), nullptr);
    }
};

const QString items = u"ITEMS|Items|TABLE|EMPTY|items.dat|2|CODE <> 'x'|old one"_s;
const QString orders = u"ORDERS||TABLE|PAYROLL||0||"_s;
const QString blank = u"||TABLE|||0||"_s;
const QString readUserFiles = u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME NOT IN "_s + systemFiles;
const QString outOfGridRange = u"Column Number is out of range.\nPlease enter a value between 0 and 32767."_s;
const QString otherName = u"The Display Name (if used) MUST exactly match the Table Name (exclusive of case)."_s;

QString selectTables(const QString& database)
{
    return u"SELECT TABLE_NAME, DISPLAY_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, NUMBER_COLUMNS, CRITERIA, "
           "REMARKS FROM TW_TABLE WHERE DATABASE_NAME = '%1' ORDER BY TABLE_NAME ASC"_s.arg(database);
}

QString insertRow(const QString& name, const QString& rest)
{
    return u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, DISPLAY_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
           "NUMBER_COLUMNS, CRITERIA, REMARKS) VALUES ('SALES', '%1', %2)"_s.arg(name, rest);
}

QString deleteRow(const QString& name)
{
    return "DELETE FROM TW_TABLE WHERE "_L1 + ofTable(name) + ' '_L1;
}

/// The rest of the row ITEMS as its UPDATE tells it.
QString updateItems(const QString& columns, const QString& remarks)
{
    return u"UPDATE TW_TABLE SET DISPLAY_NAME = 'Items', TABLE_TYPE = 'TABLE', FILE_NAME = 'EMPTY', "
           "FILE_SPECIFICATION = 'items.dat', NUMBER_COLUMNS = %1, CRITERIA = 'CODE <> ''x''', REMARKS = '%2' "
           "WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ITEMS' "_s.arg(columns, remarks);
}

} // namespace

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(TablesGrid, ShowsTheTablesAndABlankRow)
{
    openTables();
    EXPECT_EQ(paneTitle(), u"SALES - Tables"_s);
    QStringList headings;
    for (int column = 0; column < grid().Cols(); ++column)
        headings.append(grid().Heading(column));
    EXPECT_EQ(headings, (QStringList{u"Table Name"_s, u"Display Name"_s, u"Table Type"_s, u"File Name"_s,
                                     u"File Specification"_s, u"Number Columns"_s, u"Criteria"_s, u"Remarks"_s}));
    EXPECT_EQ(rows(), (QStringList{items, orders, blank}));
    EXPECT_EQ(current(), u"0 Table Name"_s);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(TablesGrid, ReadsTheFilesTheColumnsOnceAndTheRows)
{
    start();
    expandTo(key(level().first(2)));
    statements.clear();
    click(key(level()));
    EXPECT_EQ(sent(), (QStringList{readUserFiles, describe, selectTables(u"SALES"_s)}));
    statements.clear();
    click(key(level()));
    EXPECT_EQ(sent(), (QStringList{readUserFiles, selectTables(u"SALES"_s)}));
}

TEST_F(TablesGrid, TheFilesOfferedAreTheUsersUnlessTheOptionIsOn)
{
    // As the catalog gives them, a blank name too.
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('')"_s);
    openTables();
    click(u"ITEMS"_s, u"File Name"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(offered(), stored(readUserFiles));
    EXPECT_TRUE(offered().contains(u""_s));
    hit(Qt::Key_Escape);
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    statements.clear();
    click(key(level()));
    EXPECT_EQ(sent().first(), u"SELECT FILE_NAME FROM TW_FILE "_s);
    click(u"ITEMS"_s, u"File Name"_s);
    hit(Qt::Key_Return);
    EXPECT_TRUE(offered().contains(u"LOCDT"_s));
    EXPECT_TRUE(offered().contains(u"PAYROLL"_s));
    hit(Qt::Key_Escape);
    click(u"ITEMS"_s, u"Table Type"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(offered(), QStringList{u"TABLE"_s});
}

TEST_F(TablesGrid, TheTablesOfTheCatalogAreOnlyShown)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    open({u"DB"_s, u"db=TW"_s, u"TA"_s});
    EXPECT_EQ(paneTitle(), u"TW - Tables"_s);
    const int count = world.value(datasource, u"SELECT COUNT(*) FROM TW_TABLE WHERE DATABASE_NAME = 'TW'"_s).toInt();
    EXPECT_EQ(grid().Rows(), count);
    EXPECT_EQ(rows().filter(QRegularExpression(u"^\\|"_s)), QStringList());
    for (int column = 0; column < grid().Cols(); ++column) {
        SCOPED_TRACE(column);
        click(u"DRIVER"_s, grid().Heading(column));
        hit(Qt::Key_Return);
        EXPECT_EQ(editor(), nullptr);
        write(u"x"_s);
        EXPECT_EQ(editor(), nullptr);
        hit(Qt::Key_Delete);
        EXPECT_EQ(editor(), nullptr);
    }
    EXPECT_EQ(statements.writes(), QStringList());
    // The next grid takes entries again.
    open(level());
    EXPECT_EQ(rows().last(), blank);
    click(u"ITEMS"_s, u"Remarks"_s);
    hit(Qt::Key_Return);
    EXPECT_NE(editor(), nullptr);
}

TEST_F(TablesGrid, NullsShowAsEmptyTexts)
{
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
           "NUMBER_COLUMNS, CRITERIA, REMARKS, DISPLAY_NAME) "
           "VALUES ('SALES', 'BARE', NULL, NULL, NULL, NULL, NULL, NULL, NULL)"_s);
    openTables();
    EXPECT_EQ(rows().first(), u"BARE|||||||"_s);
    change(u"BARE"_s, u"Remarks"_s, u"x"_s);
    expectRefused(u"Please select a File Name from the dropdown list"_s, u"0 File Name"_s);
}

TEST_F(TablesGrid, UpShowsTheDatabase)
{
    openTables();
    ToolButton& up = window->toolBar(u"tbrTables"_s).Button(u"Up1"_s);
    EXPECT_EQ(up.ToolTipText(), u"Up to Database 'SALES'"_s);
    up.press();
    EXPECT_EQ(currentPane(), u"frmDatabase"_s);
    EXPECT_EQ(paneTitle(), u"SALES - Edit Database Properties"_s);
    EXPECT_EQ(selectedKey(), key(level().first(2)));
    EXPECT_TRUE(window->tvwExplorer().hasFocus());
}

// Writing ------------------------------------------------------------------------------------------------------------

TEST_F(TablesGrid, AChangedRowIsUpdatedWhole)
{
    openTables();
    change(u"ORDERS"_s, u"Display Name"_s, u"Orders"_s);
    change(u"ORDERS"_s, u"File Name"_s, u"emp"_s);
    change(u"ORDERS"_s, u"File Specification"_s, u"it's 100%"_s);
    change(u"ORDERS"_s, u"Number Columns"_s, u"012"_s);
    change(u"ORDERS"_s, u"Remarks"_s, u"O'Hara"_s);
    EXPECT_EQ(sent(), QStringList());
    click(u"ITEMS"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList{u"UPDATE TW_TABLE SET DISPLAY_NAME = 'Orders', TABLE_TYPE = 'TABLE', "
                                  "FILE_NAME = 'EMPTY', FILE_SPECIFICATION = 'it''s 100%', NUMBER_COLUMNS = 012, "
                                  "CRITERIA = '', REMARKS = 'O''Hara' WHERE DATABASE_NAME = 'SALES' AND "
                                  "TABLE_NAME = 'ORDERS' "_s});
    EXPECT_EQ(tables(), (QStringList{storedItems, u"ORDERS|Orders|TABLE|EMPTY|it's 100%|12||O'Hara"_s}));
    EXPECT_EQ(current(), u"0 Remarks"_s);
    EXPECT_EQ(selectedKey(), key(level()));
    EXPECT_TRUE(node(key(level())).Expanded());
    EXPECT_TRUE(grid().hasFocus());
}

TEST_F(TablesGrid, ANewTableIsInsertedAndGoesByItsNameFromThenOn)
{
    openTables();
    add(u"b"_s);
    leave();
    EXPECT_EQ(sent(),
              (QStringList{nameIsTaken(u"B"_s), insertRow(u"B"_s, u"'', 'TABLE', 'PAYROLL', 'a.dat', 0, '', ''"_s)}));
    EXPECT_EQ(rows(), (QStringList{items, orders, u"B||TABLE|PAYROLL|a.dat|0||"_s, blank}));
    EXPECT_EQ(nodes(), (QStringList{u"B"_s, u"ITEMS"_s, u"ORDERS"_s}));
    EXPECT_EQ(selectedKey(), key(level()));

    statements.clear();
    change(u"B"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(),
              QStringList{u"UPDATE TW_TABLE SET DISPLAY_NAME = '', TABLE_TYPE = 'TABLE', FILE_NAME = 'PAYROLL', "
                          "FILE_SPECIFICATION = 'a.dat', NUMBER_COLUMNS = 0, CRITERIA = '', REMARKS = 'x' "
                          "WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'B' "_s});
}

TEST_F(TablesGrid, ThreeTablesAreAddedOneBelowTheOther)
{
    openTables();
    for (const char* name : {"a", "b", "c"}) {
        add(QLatin1String(name));
        hit(Qt::Key_Down);
        EXPECT_EQ(current(), QString::number(blankRow()) + u" File Specification"_s);
        EXPECT_EQ(rows().last(), blank);
    }
    EXPECT_EQ(tables().first(3), (QStringList{u"A||TABLE|PAYROLL|a.dat|0||"_s, u"B||TABLE|PAYROLL|a.dat|0||"_s,
                                              u"C||TABLE|PAYROLL|a.dat|0||"_s}));
    EXPECT_EQ(nodes(), (QStringList{u"A"_s, u"B"_s, u"C"_s, u"ITEMS"_s, u"ORDERS"_s}));
}

TEST_F(TablesGrid, ATableGivenANewNameLeavesColumnsAndPrivilegesUnderTheOldOne)
{
    openTables();
    QStringList expected = wholeCatalog();
    change(u"ITEMS"_s, u"Table Name"_s, u"wares"_s);
    change(0, u"Display Name"_s, u"Wares"_s);
    leave();
    EXPECT_EQ(sent(), (QStringList{nameIsTaken(u"WARES"_s), deleteRow(u"ITEMS"_s),
                                   insertRow(u"WARES"_s, u"'Wares', 'TABLE', 'EMPTY', 'items.dat', 2, 'CODE <> ''x''', "
                                                         "'old one'"_s)}));
    expected.replaceInStrings(u"TW_TABLE SALES|ITEMS|"_s, u"TW_TABLE SALES|WARES|"_s)
        .replaceInStrings(u"|Items"_s, u"|Wares"_s);
    expected.sort();
    EXPECT_EQ(wholeCatalog(), expected);
    EXPECT_EQ(stored(u"SELECT TABLE_NAME FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s), QStringList{u"ITEMS"_s});
    EXPECT_EQ(nodes(), (QStringList{u"ORDERS"_s, u"WARES"_s}));
}

TEST_F(TablesGrid, ANameThatIsPutBackIsNoOtherName)
{
    openTables();
    change(u"ITEMS"_s, u"Table Name"_s, u"x"_s);
    hit(Qt::Key_Return);
    change(0, u"Table Name"_s, u"items"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateItems(u"2"_s, u"old one"_s)});
}

TEST_F(TablesGrid, ApostrophesAreDoubled)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('O''HARA')"_s);
    open({u"DB"_s, u"db=O'HARA"_s, u"TA"_s});
    EXPECT_EQ(paneTitle(), u"O'HARA - Tables"_s);
    EXPECT_EQ(window->toolBar(u"tbrTables"_s).Button(u"Up1"_s).ToolTipText(), u"Up to Database 'O'HARA'"_s);
    EXPECT_EQ(rows(), QStringList{blank});
    click(blankRow(), u"Table Name"_s);
    paste(u"IT'S"_s);
    change(blankRow(), u"File Name"_s, u"pay"_s);
    change(blankRow(), u"File Specification"_s, u"a"_s);
    leave();
    EXPECT_EQ(sent().first(),
              u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'O''HARA' AND TABLE_NAME = 'IT''S'"_s);
    click(u"IT'S"_s, u"Number Columns"_s);
    hit(Qt::Key_Return);
    statements.clear();
    pressLookUp();
    EXPECT_EQ(sent(), QStringList{u"SELECT COUNT(*) AS COLUMN_COUNT FROM TW_COLUMN WHERE DATABASE_NAME = 'O''HARA' AND "
                                  "TABLE_NAME = 'IT''S'"_s});
    hit(Qt::Key_Escape);
    change(u"IT'S"_s, u"Table Name"_s, u"its"_s);
    leave();
    EXPECT_EQ(stored(u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'O''HARA'"_s), QStringList{u"ITS"_s});
    EXPECT_EQ(children(key({u"DB"_s, u"db=O'HARA"_s, u"TA"_s})), QStringList{u"ITS"_s});
}

TEST_F(TablesGrid, TextsEndAtTheWidthOfTheirColumn)
{
    openTables();
    for (const auto& [heading, width] : {std::pair("Table Name", 32), std::pair("Display Name", 32),
                                         std::pair("File Specification", 254), std::pair("Remarks", 254)}) {
        SCOPED_TRACE(heading);
        click(u"ITEMS"_s, QLatin1String(heading));
        hit(Qt::Key_Delete);
        paste(QString(300, 'p'_L1));
        EXPECT_EQ(editorText(), QString(width, 'p'_L1));
        hit(Qt::Key_Escape);
    }
}

// Messages -----------------------------------------------------------------------------------------------------------

TEST_F(TablesGrid, ARowWithEveryFaultIsRefusedForOneAfterTheOther)
{
    openTables();
    change(u"ITEMS"_s, u"Number Columns"_s, {});
    change(0, u"File Specification"_s, {});
    change(0, u"File Name"_s, {});
    change(0, u"Table Type"_s, {});
    change(0, u"Display Name"_s, u"y"_s);
    change(0, u"Table Name"_s, {});
    expectRefused(u"Table Name cannot be blank"_s, u"0 Table Name"_s);
    EXPECT_EQ(sent(), QStringList());
    write(u"orders"_s);
    expectRefused(u"This Database already contains a Table called 'ORDERS'"_s, u"0 Table Name"_s);
    EXPECT_EQ(sent(), QStringList{nameIsTaken(u"ORDERS"_s)});
    retype(u"z"_s);
    expectRefused(otherName, u"0 Display Name"_s);
    retype(u"Z"_s);
    expectRefused(u"Please select a File Name from the dropdown list"_s, u"0 File Name"_s);
    write(u"pay"_s);
    expectRefused(u"File Specification cannot be blank"_s, u"0 File Specification"_s);
    write(u"z.dat"_s);
    expectRefused(outOfGridRange, u"0 Number Columns"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(tables(), (QStringList{storedItems, storedOrders}));
    write(u"32767"_s);
    leave();
    // A table may stay without a type.
    EXPECT_EQ(tables(), (QStringList{storedOrders, u"Z|Z||PAYROLL|z.dat|32767|CODE <> 'x'|old one"_s}));
}

TEST_F(TablesGrid, ANumberOfColumnsOutOfRangeIsRefused)
{
    openTables();
    for (const char* number : {"32768", "-1", "", "999999"}) {
        SCOPED_TRACE(number);
        change(u"ITEMS"_s, u"Number Columns"_s, QLatin1String(number));
        expectRefused(outOfGridRange, u"0 Number Columns"_s);
        EXPECT_EQ(editorText(), QLatin1String(number));
    }
    for (const char* number : {"1e400", "--2", "ten", "5/*"}) {
        SCOPED_TRACE(number);
        click(u"ITEMS"_s, u"Number Columns"_s);
        hit(Qt::Key_Delete);
        paste(QLatin1String(number));
        expectRefused(outOfGridRange, u"0 Number Columns"_s);
    }
    EXPECT_EQ(sent(), QStringList());
    retype(u"0"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateItems(u"0"_s, u"old one"_s)});
}

TEST_F(TablesGrid, ADisplayNameDiffersInCaseAlone)
{
    openTables();
    change(u"ITEMS"_s, u"Display Name"_s, u"iTEMs"_s);
    leave();
    EXPECT_EQ(tables().first(), u"ITEMS|iTEMs|TABLE|EMPTY|items.dat|2|CODE <> 'x'|old one"_s);
    change(u"ITEMS"_s, u"Display Name"_s, u"item"_s);
    expectRefused(otherName, u"0 Display Name"_s);
    retype({});
    leave();
    EXPECT_EQ(tables().first(), u"ITEMS||TABLE|EMPTY|items.dat|2|CODE <> 'x'|old one"_s);
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(TablesGrid, ATableThatIsGoneIsNotMadeAnewUnlessItIsRenamed)
{
    openTables();
    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s);
    change(u"ITEMS"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(tables(), QStringList{storedOrders});
    EXPECT_EQ(nodes(), QStringList{u"ORDERS"_s});
    change(u"ITEMS"_s, u"Display Name"_s, {});
    change(u"ITEMS"_s, u"Table Name"_s, u"wares"_s);
    leave();
    EXPECT_EQ(tables(), (QStringList{storedOrders, u"WARES||TABLE|EMPTY|items.dat|2|CODE <> 'x'|x"_s}));
    EXPECT_EQ(errors.shown().size(), 0u);
}

TEST_F(TablesGrid, ARowThatTheDriverRefusesStaysToBeCorrected)
{
    for (const char* event : {"INSERT", "UPDATE", "DELETE"})
        change(u"CREATE TRIGGER NO_%1 BEFORE %1 ON TW_TABLE BEGIN SELECT RAISE(ABORT, 'readonly'); END"_s.arg(
            QLatin1String(event)));
    openTables();
    const QStringList before = wholeCatalog();
    change(u"ITEMS"_s, u"Remarks"_s, u"x"_s);
    errors.expect(Press::Ignore);
    leave();
    errors.verify();
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmTables.LeaveCell"_s);
    EXPECT_EQ(current(), u"0 Remarks"_s);
    EXPECT_EQ(cell(0, u"Remarks"_s), u"x"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

TEST_F(TablesGrid, AFileThatIsGoneStaysWithItsTable)
{
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'EMPTY'"_s);
    openTables();
    change(u"ITEMS"_s, u"Remarks"_s, u"x"_s);
    clickBeside();
    EXPECT_EQ(stored(u"SELECT FILE_NAME, REMARKS FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s),
              QStringList{u"EMPTY|x"_s});
}
