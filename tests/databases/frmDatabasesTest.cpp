#include "DatabasePaneFixture.h"

#include "CellGrid.h"
#include "Settings.h"
#include "ToolBar.h"

#include <QComboBox>
#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace databasepane;

namespace
{

class DatabasesGrid : public WithDepot<GridTest>
{
protected:
    void openDatabases() { open({u"DB"_s}); }
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

    void expectRefused(const QString& message, const QString& cell)
    {
        boxes.expectInform(message);
        leave();
        boxes.verify();
        EXPECT_EQ(current(), cell);
        EXPECT_NE(editor(), nullptr);
    }
};

const QString depot = u"DEPOT|Depot|stock:[here]|FLAT|SETUP|UID_ME|old one"_s;
const QString sales = u"SALES|||DISAM|||"_s;
const QString blank = u"|||DISAM|||"_s;
const QString storedDepot = u"DEPOT|Depot|FLAT|stock:[here]|UID_ME|SETUP|old one"_s;
const QString storedSales = u"SALES||DISAM||||"_s;
const QString selectAll = u"SELECT DATABASE_NAME, DISPLAY_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, "
                          "CONNECT_STRING, REMARKS FROM TW_DB ORDER BY DATABASE_NAME ASC"_s;
const QString selectUsers = u"SELECT DATABASE_NAME, DISPLAY_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, "
                            "CONNECT_STRING, REMARKS FROM TW_DB WHERE DATABASE_NAME <> 'TW' "
                            "ORDER BY DATABASE_NAME ASC"_s;
const QString otherName = u"The Display Name (if used) MUST exactly match the Column Name (exclusive of case)."_s;

QString updateRow(const QString& name, const QString& directory, const QString& driver, const QString& setup,
                  const QString& connect, const QString& remarks, const QString& displayName)
{
    return u"UPDATE TW_DB SET DEFAULT_DIRECTORY = '%1',DRIVER_NAME= '%2',SETUP_PROCEDURE = '%3',"
           "CONNECT_STRING = '%4',REMARKS = '%5',DISPLAY_NAME = '%6' WHERE DATABASE_NAME = '%7'"_s.arg(
               directory, driver, setup, connect, remarks, displayName, name);
}

QString deleteRow(const QString& name)
{
    return u"DELETE FROM TW_DB WHERE DATABASE_NAME = '%1' "_s.arg(name);
}

} // namespace

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(DatabasesGrid, ShowsTheDatabasesAndABlankRowWithTheDriverAbove)
{
    openDatabases();
    EXPECT_EQ(paneTitle(), datasource + u" - Databases"_s);
    QStringList headings;
    for (int column = 0; column < grid().Cols(); ++column)
        headings.append(grid().Heading(column));
    EXPECT_EQ(headings, (QStringList{u"Database Name"_s, u"Display Name"_s, u"Default Directory"_s, u"Driver Name"_s,
                                     u"Setup Procedure"_s, u"Connect String"_s, u"Remarks"_s}));
    EXPECT_EQ(rows(), (QStringList{depot, sales, blank}));
    EXPECT_EQ(current(), u"0 Database Name"_s);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DatabasesGrid, ReadsTheDriversTheColumnsOnceAndTheRows)
{
    start();
    expandTo(key());
    statements.clear();
    click(key({u"DB"_s}));
    EXPECT_EQ(sent(), (QStringList{readDrivers, describe, selectUsers}));
    statements.clear();
    click(key({u"DB"_s}));
    EXPECT_EQ(sent(), (QStringList{readDrivers, selectUsers}));
}

TEST_F(DatabasesGrid, WithoutDatabasesTheBlankRowHasNoDriver)
{
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME <> 'TW'"_s);
    openDatabases();
    EXPECT_EQ(rows(), QStringList{u"||||||"_s});
}

TEST_F(DatabasesGrid, AnEmptyLevelShowsTheFirstDatabaseThatIsAdded)
{
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME <> 'TW'"_s);
    openDatabases();
    expandTo(key({u"DB"_s}));
    change(blankRow(), u"Database Name"_s, u"first"_s);
    leave();
    EXPECT_EQ(nodes(), QStringList{u"FIRST"_s});
    EXPECT_EQ(rows(), (QStringList{u"FIRST||||||"_s, u"||||||"_s}));
}

TEST_F(DatabasesGrid, NullsShowAsEmptyTexts)
{
    change(u"UPDATE TW_DB SET DEFAULT_DIRECTORY = NULL, DRIVER_NAME = NULL, SETUP_PROCEDURE = NULL, "
           "CONNECT_STRING = NULL, REMARKS = NULL, DISPLAY_NAME = NULL WHERE DATABASE_NAME = 'DEPOT'"_s);
    openDatabases();
    EXPECT_EQ(rows().first(), u"DEPOT||||||"_s);
    // Here a database may stay without a driver.
    change(u"DEPOT"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRow(u"DEPOT"_s, {}, {}, {}, {}, u"x"_s, {})});
}

TEST_F(DatabasesGrid, UpLeadsNowhere)
{
    openDatabases();
    ToolButton& up = window->toolBar(u"tbrDatabases"_s).Button(u"Up1"_s);
    EXPECT_EQ(up.ToolTipText(), u"No where to go!"_s);
    up.press();
    EXPECT_EQ(currentPane(), u"frmDatabases"_s);
    EXPECT_EQ(sent(), QStringList());
}

// The catalog's own database -----------------------------------------------------------------------------------------

TEST_F(DatabasesGrid, TheCatalogsOwnDatabaseShowsByOptionAndTakesNoEditor)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    openDatabases();
    statements.clear();
    click(key({u"DB"_s}));
    EXPECT_EQ(sent(), (QStringList{readDrivers, selectAll}));
    for (int column = 0; column < grid().Cols(); ++column) {
        SCOPED_TRACE(column);
        click(u"TW"_s, grid().Heading(column));
        hit(Qt::Key_Return);
        EXPECT_EQ(editor(), nullptr);
        write(u"x"_s);
        EXPECT_EQ(editor(), nullptr);
        hit(Qt::Key_Delete);
        EXPECT_EQ(editor(), nullptr);
        doubleClick(rowOf(u"TW"_s), grid().Heading(column));
        EXPECT_EQ(editor(), nullptr);
    }
    click(u"SALES"_s, u"Remarks"_s);
    hit(Qt::Key_Return);
    EXPECT_NE(editor(), nullptr);
    EXPECT_EQ(statements.writes(), QStringList());
    // The new row has the driver of whatever is above it.
    EXPECT_EQ(rows().last(), u"|||SYSTEM|||"_s);
}

TEST_F(DatabasesGrid, TheListOffersSystemToTheCatalogsNameAlone)
{
    openDatabases();
    click(u"SALES"_s, u"Driver Name"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(offered(), (QStringList{u"DISAM"_s, u"FLAT"_s, u"VAX-RMS"_s}));
    hit(Qt::Key_Escape);
    // The name that is typed into a new row counts, and can be corrected.
    change(blankRow(), u"Database Name"_s, u"tw"_s);
    click(blankRow(), u"Driver Name"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(offered(), QStringList{u"SYSTEM"_s});
    hit(Qt::Key_Escape);
    expectRefused(u"The Database Name 'TW' has already been used in this Datasource."_s, u"2 Database Name"_s);
    write(u"o"_s);
    leave();
    EXPECT_EQ(nodes(), (QStringList{u"DEPOT"_s, u"SALES"_s, u"TWO"_s}));
}

// Writing ------------------------------------------------------------------------------------------------------------

TEST_F(DatabasesGrid, AChangedRowIsUpdatedWhole)
{
    openDatabases();
    change(u"DEPOT"_s, u"Display Name"_s, u"dEpOt"_s);
    change(u"DEPOT"_s, u"Default Directory"_s, u"C:\\it's 100%"_s);
    change(u"DEPOT"_s, u"Driver Name"_s, u"v"_s);
    change(u"DEPOT"_s, u"Setup Procedure"_s, u"run it"_s);
    change(u"DEPOT"_s, u"Connect String"_s, u"uid=me"_s);
    change(u"DEPOT"_s, u"Remarks"_s, u"O'Hara"_s);
    EXPECT_EQ(sent(), QStringList());
    click(u"SALES"_s, u"Remarks"_s);
    EXPECT_EQ(sent(), QStringList{updateRow(u"DEPOT"_s, u"C:\\it''s 100%"_s, u"VAX-RMS"_s, u"RUN_IT"_s, u"UIDME"_s,
                                            u"O''Hara"_s, u"dEpOt"_s)});
    EXPECT_EQ(databases(), (QStringList{u"DEPOT|dEpOt|VAX-RMS|C:\\it's 100%|UIDME|RUN_IT|O'Hara"_s, storedSales}));
    EXPECT_EQ(current(), u"1 Remarks"_s);
    EXPECT_EQ(selectedKey(), key({u"DB"_s}));
    EXPECT_TRUE(node(key({u"DB"_s})).Expanded());
    EXPECT_TRUE(grid().hasFocus());
}

TEST_F(DatabasesGrid, ANewDatabaseIsInsertedAndTheNextTakesItsDriver)
{
    openDatabases();
    change(blankRow(), u"Database Name"_s, u"b"_s);
    change(blankRow(), u"Driver Name"_s, u"f"_s);
    leave();
    EXPECT_EQ(sent(), (QStringList{nameIsTaken(u"B"_s), insertDatabase(u"B"_s, u"'', 'FLAT', '', '', '', ''"_s)}));
    EXPECT_EQ(rows(), (QStringList{depot, sales, u"B|||FLAT|||"_s, u"|||FLAT|||"_s}));
    EXPECT_EQ(nodes(), (QStringList{u"B"_s, u"DEPOT"_s, u"SALES"_s}));

    // From now on the row goes by its name.
    statements.clear();
    change(u"B"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRow(u"B"_s, {}, u"FLAT"_s, {}, {}, u"x"_s, {})});
}

TEST_F(DatabasesGrid, ThreeDatabasesAreAddedOneBelowTheOther)
{
    openDatabases();
    click(blankRow(), u"Database Name"_s);
    for (const char* name : {"a", "b", "c"}) {
        write(QLatin1String(name));
        hit(Qt::Key_Tab);
        write(QLatin1String(name));
        hit(Qt::Key_Down);
        EXPECT_EQ(current(), QString::number(blankRow()) + u" Display Name"_s);
        EXPECT_EQ(rows().last(), blank);
        click(blankRow(), u"Database Name"_s);
    }
    EXPECT_EQ(databases(),
              (QStringList{u"A|a|DISAM||||"_s, u"B|b|DISAM||||"_s, u"C|c|DISAM||||"_s, storedDepot, storedSales}));
    EXPECT_EQ(nodes(), (QStringList{u"A"_s, u"B"_s, u"C"_s, u"DEPOT"_s, u"SALES"_s}));
}

TEST_F(DatabasesGrid, ADatabaseGivenANewNameLeavesAllThatItHoldsUnderTheOldOne)
{
    openDatabases();
    QStringList expected = wholeCatalog();
    change(u"SALES"_s, u"Database Name"_s, u"trade"_s);
    leave();
    EXPECT_EQ(sent(), (QStringList{nameIsTaken(u"TRADE"_s), deleteRow(u"SALES"_s),
                                   insertDatabase(u"TRADE"_s, u"'', 'DISAM', '', '', '', ''"_s)}));
    expected.replaceInStrings(u"TW_DB SALES|"_s, u"TW_DB TRADE|"_s);
    EXPECT_EQ(wholeCatalog(), expected);
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME FROM TW_TABLE WHERE TABLE_NAME = 'ORDERS'"_s), QStringList{u"SALES"_s});
    EXPECT_EQ(nodes(), (QStringList{u"DEPOT"_s, u"TRADE"_s}));

    statements.clear();
    change(u"TRADE"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRow(u"TRADE"_s, {}, u"DISAM"_s, {}, {}, u"x"_s, {})});
}

TEST_F(DatabasesGrid, ANameThatIsPutBackIsNoOtherName)
{
    openDatabases();
    change(u"SALES"_s, u"Database Name"_s, u"trade"_s);
    hit(Qt::Key_Return);
    change(1, u"Database Name"_s, u"sales"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRow(u"SALES"_s, {}, u"DISAM"_s, {}, {}, {}, {})});
}

TEST_F(DatabasesGrid, ANameInAnotherCaseIsLookedForInTheCatalog)
{
    openDatabases();
    click(u"SALES"_s, u"Database Name"_s);
    hit(Qt::Key_Delete);
    paste(u"Sales"_s);
    leave();
    EXPECT_EQ(sent(), (QStringList{nameIsTaken(u"Sales"_s), deleteRow(u"SALES"_s),
                                   insertDatabase(u"Sales"_s, u"'', 'DISAM', '', '', '', ''"_s)}));
    EXPECT_EQ(nodes(), (QStringList{u"DEPOT"_s, u"Sales"_s}));
}

TEST_F(DatabasesGrid, AnApostropheInANameIsDoubled)
{
    openDatabases();
    click(u"SALES"_s, u"Database Name"_s);
    hit(Qt::Key_Delete);
    paste(u"O'HARA"_s);
    leave();
    EXPECT_EQ(sent(), (QStringList{nameIsTaken(u"O''HARA"_s), deleteRow(u"SALES"_s),
                                   insertDatabase(u"O''HARA"_s, u"'', 'DISAM', '', '', '', ''"_s)}));
    statements.clear();
    change(u"O'HARA"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(sent(), QStringList{updateRow(u"O''HARA"_s, {}, u"DISAM"_s, {}, {}, u"x"_s, {})});
    change(u"O'HARA"_s, u"Database Name"_s, u"sales"_s);
    leave();
    EXPECT_EQ(databases(), (QStringList{storedDepot, u"SALES||DISAM||||x"_s}));
    EXPECT_EQ(nodes(), (QStringList{u"DEPOT"_s, u"SALES"_s}));
}

TEST_F(DatabasesGrid, EscapeLeavesTheCellAsItWas)
{
    openDatabases();
    change(u"SALES"_s, u"Database Name"_s, u"x"_s);
    hit(Qt::Key_Escape);
    leave();
    EXPECT_EQ(rows(), (QStringList{depot, sales, blank}));
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(DatabasesGrid, ABlankRowThatIsLeftAsItWasAddsNothing)
{
    openDatabases();
    change(blankRow(), u"Database Name"_s, u"x"_s);
    hit(Qt::Key_Return);
    change(blankRow(), u"Database Name"_s, {});
    leave();
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(rows().last(), blank);
}

TEST_F(DatabasesGrid, TextsEndAtTheWidthOfTheirColumn)
{
    openDatabases();
    change(u"SALES"_s, u"Database Name"_s, u"abcdefghijklm"_s);
    EXPECT_EQ(editorText(), u"ABCDEFGHIJ"_s);
    hit(Qt::Key_Escape);
    for (const auto& [heading, width] :
         {std::pair("Database Name", 10), std::pair("Display Name", 10), std::pair("Default Directory", 254),
          std::pair("Setup Procedure", 254), std::pair("Connect String", 254), std::pair("Remarks", 254)}) {
        SCOPED_TRACE(heading);
        click(u"SALES"_s, QLatin1String(heading));
        hit(Qt::Key_Delete);
        paste(QString(300, 'p'_L1));
        EXPECT_EQ(editorText(), QString(width, 'p'_L1));
        hit(Qt::Key_Escape);
    }
}

// Messages -----------------------------------------------------------------------------------------------------------

TEST_F(DatabasesGrid, ABlankNameIsRefused)
{
    openDatabases();
    change(u"SALES"_s, u"Database Name"_s, {});
    expectRefused(u"Database Name cannot be blank"_s, u"1 Database Name"_s);
    EXPECT_EQ(sent(), QStringList());
    write(u"sales"_s);
    leave();
    change(blankRow(), u"Remarks"_s, u"x"_s);
    expectRefused(u"Database Name cannot be blank"_s, u"2 Database Name"_s);
    EXPECT_EQ(databases(), (QStringList{storedDepot, storedSales}));
}

TEST_F(DatabasesGrid, ANameThatIsTakenIsRefused)
{
    openDatabases();
    change(u"SALES"_s, u"Database Name"_s, u"depot"_s);
    expectRefused(u"The Database Name 'DEPOT' has already been used in this Datasource."_s, u"1 Database Name"_s);
    EXPECT_EQ(sent(), QStringList{nameIsTaken(u"DEPOT"_s)});
    EXPECT_EQ(editorText(), u"DEPOT"_s);
    EXPECT_EQ(databases(), (QStringList{storedDepot, storedSales}));
}

TEST_F(DatabasesGrid, ADisplayNameDiffersInCaseAlone)
{
    openDatabases();
    change(u"SALES"_s, u"Display Name"_s, u"sale"_s);
    expectRefused(otherName, u"1 Display Name"_s);
    EXPECT_EQ(sent(), QStringList());
    write(u"S"_s);
    leave();
    EXPECT_EQ(databases().last(), u"SALES|saleS|DISAM||||"_s);
    // A new name leaves it behind.
    change(u"SALES"_s, u"Database Name"_s, u"trade"_s);
    expectRefused(otherName, u"1 Display Name"_s);
    hit(Qt::Key_Delete, Qt::ControlModifier);
    while (!editorText().isEmpty())
        hit(Qt::Key_Backspace);
    leave();
    EXPECT_EQ(databases().last(), u"TRADE||DISAM||||"_s);
}

TEST_F(DatabasesGrid, ARowWithEveryFaultIsRefusedForOneAfterTheOther)
{
    openDatabases();
    change(u"SALES"_s, u"Display Name"_s, u"x"_s);
    change(1, u"Database Name"_s, {});
    expectRefused(u"Database Name cannot be blank"_s, u"1 Database Name"_s);
    write(u"depot"_s);
    expectRefused(u"The Database Name 'DEPOT' has already been used in this Datasource."_s, u"1 Database Name"_s);
    write(u"s"_s);
    expectRefused(otherName, u"1 Display Name"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    hit(Qt::Key_Backspace);
    write(u"depotS"_s);
    leave();
    EXPECT_EQ(databases(), (QStringList{storedDepot, u"DEPOTS|depotS|DISAM||||"_s}));
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(DatabasesGrid, ADatabaseThatIsGoneIsNotMadeAnewUnlessItIsRenamed)
{
    openDatabases();
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'SALES'"_s);
    change(u"SALES"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(databases(), QStringList{storedDepot});
    EXPECT_EQ(nodes(), QStringList{u"DEPOT"_s});
    change(u"SALES"_s, u"Database Name"_s, u"trade"_s);
    leave();
    EXPECT_EQ(databases(), (QStringList{storedDepot, u"TRADE||DISAM||||x"_s}));
    EXPECT_EQ(errors.shown().size(), 0u);
}

TEST_F(DatabasesGrid, ARowThatTheDriverRefusesStaysToBeCorrected)
{
    for (const char* event : {"INSERT", "UPDATE", "DELETE"})
        change(u"CREATE TRIGGER NO_%1 BEFORE %1 ON TW_DB BEGIN SELECT RAISE(ABORT, 'readonly'); END"_s.arg(
            QLatin1String(event)));
    openDatabases();
    const QStringList before = wholeCatalog();
    change(u"SALES"_s, u"Remarks"_s, u"x"_s);
    errors.expect(Press::Ignore);
    leave();
    errors.verify();
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmDatabases.LeaveCell"_s);
    EXPECT_EQ(current(), u"1 Remarks"_s);
    change(u"SALES"_s, u"Database Name"_s, u"x"_s);
    errors.expect(Press::Ignore);
    leave();
    errors.verify();
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(rows(), (QStringList{depot, u"X|||DISAM|||x"_s, blank}));
}
