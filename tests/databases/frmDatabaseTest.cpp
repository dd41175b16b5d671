#include "DatabasePaneFixture.h"

#include "Settings.h"
#include "ToolBar.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using namespace databasepane;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(DatabasePane, AClickOpensADatabaseForChange)
{
    open(database(u"DEPOT"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readDatabase(u"DEPOT"_s), readDrivers}));
    EXPECT_EQ(currentPane(), u"frmDatabase"_s);
    EXPECT_EQ(paneTitle(), u"DEPOT - Edit Database Properties"_s);
    EXPECT_EQ(texts(databaseColumns), shownDepot);
    EXPECT_EQ(list(u"DRIVER_NAME"_s).currentText(), u"FLAT"_s);
    EXPECT_EQ(items(u"DRIVER_NAME"_s), (QStringList{u"DISAM"_s, u"FLAT"_s, u"VAX-RMS"_s}));
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), databaseColumns);
    EXPECT_EQ(focus(), u"DATABASE_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Update"_s);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DatabasePane, TheColumnsAreAskedForOnce)
{
    open(database(u"DEPOT"_s));
    open(database(u"SALES"_s));
    EXPECT_EQ(statements.statements(), (QStringList{readDatabase(u"SALES"_s), readDrivers}));
    EXPECT_EQ(texts(databaseColumns), (QStringList{u"SALES"_s, u""_s, u"DISAM"_s, u""_s, u""_s, u""_s, u""_s}));
}

TEST_F(DatabasePane, WithTheOptionOffAClickOnlyShowsAndNeedsNoListOfDrivers)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(database(u"DEPOT"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readDatabase(u"DEPOT"_s)}));
    EXPECT_EQ(paneTitle(), u"DEPOT - Database Properties"_s);
    EXPECT_EQ(texts(databaseColumns), shownDepot);
    EXPECT_EQ(items(u"DRIVER_NAME"_s), QStringList{u"FLAT"_s});
    EXPECT_EQ(list(u"DRIVER_NAME"_s).currentText(), u"FLAT"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    EXPECT_FALSE(control(u"cmdAction"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdCancel"_s).isEnabled());

    press(u"DB Edit"_s);
    EXPECT_EQ(paneTitle(), u"DEPOT - Edit Database Properties"_s);
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(items(u"DRIVER_NAME"_s).size(), 3);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(paneTitle(), u"DEPOT - Database Properties"_s);
    EXPECT_EQ(items(u"DRIVER_NAME"_s), QStringList{u"FLAT"_s});
}

TEST_F(DatabasePane, TellsWhatEachPropertyIs)
{
    open(database(u"DEPOT"_s));
    const std::vector<std::tuple<const char*, const char*, const char*>> rows{
        {"DATABASE_NAME", "&Database Name:",
         "Within each Tarnwick Catalog Databases have unique names.  A Database name can be up to 10 characters in "
         "length."},
        {"DISPLAY_NAME", "D&isplay Name:", "The Name of this database as it appears to other applications"},
        {"DRIVER_NAME", "Driver &Name:", "The driver used for file access by the Tarnwick SQL engine."},
        {"DEFAULT_DIRECTORY", "Default Di&rectory:",
         "The directory path can be logical or full. If using a logical path, ensure it is terminated with a "
         "colon(:)."},
        {"CONNECT_STRING", "&Connect String:", "Not applicable to Harrowgate"},
        {"SETUP_PROCEDURE", "&Setup Procedure:", ""},
        {"REMARKS", "Re&marks:", "Any notes you wish to make about this Database."},
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
    EXPECT_EQ(window->toolBar(u"tbrDatabase"_s).Button(u"Up1"_s).ToolTipText(), u"Up to Database collection"_s);
}

TEST_F(DatabasePane, TheTabKeyWalksFromTopToBottom)
{
    open(database(u"DEPOT"_s));
    QStringList walked{focus()};
    for (int i = 0; i < 8; ++i) {
        hit(Qt::Key_Tab);
        walked.append(focus());
    }
    EXPECT_EQ(walked, databaseColumns + (QStringList{u"cmdAction"_s, u"cmdCancel"_s}));
}

TEST_F(DatabasePane, OnlyTheDebugWordShowsTheTextBehindTheList)
{
    open(database(u"DEPOT"_s));
    EXPECT_FALSE(control(u"txtProperty_DRIVER_NAME"_s).isVisible());
    quit();
    start({u"DEBUG"_s});
    open(database(u"DEPOT"_s));
    EXPECT_TRUE(control(u"txtProperty_DRIVER_NAME"_s).isVisible());
}

TEST_F(DatabasePane, NullsShowAsEmptyTexts)
{
    change(u"UPDATE TW_DB SET DEFAULT_DIRECTORY = NULL, DRIVER_NAME = NULL, SETUP_PROCEDURE = NULL, "
           "CONNECT_STRING = NULL, REMARKS = NULL, DISPLAY_NAME = NULL WHERE DATABASE_NAME = 'SALES'"_s);
    open(database(u"DEPOT"_s));
    open(database(u"SALES"_s));
    EXPECT_EQ(texts(databaseColumns), (QStringList{u"SALES"_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(list(u"DRIVER_NAME"_s).currentIndex(), -1);
    expectRefused(noDriver, u"DRIVER_NAME"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DatabasePane, ADriverThatTheCatalogLacksIsToBeChosenAnew)
{
    change(u"UPDATE TW_DB SET DRIVER_NAME = 'GONE' WHERE DATABASE_NAME = 'DEPOT'"_s);
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(database(u"DEPOT"_s));
    EXPECT_EQ(list(u"DRIVER_NAME"_s).currentText(), u"GONE"_s);
    press(u"DB Edit"_s);
    EXPECT_EQ(items(u"DRIVER_NAME"_s), (QStringList{u"DISAM"_s, u"FLAT"_s, u"VAX-RMS"_s}));
    EXPECT_EQ(list(u"DRIVER_NAME"_s).currentIndex(), -1);
    expectRefused(noDriver, u"DRIVER_NAME"_s);
    pick(u"DRIVER_NAME"_s, u"VAX-RMS"_s);
    press(u"OK"_s);
    EXPECT_EQ(databases().first(), u"DEPOT|Depot|VAX-RMS|stock:[here]|UID_ME|SETUP|old one"_s);
}

TEST_F(DatabasePane, ADatabaseThatIsGoneShowsNoValues)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(database(u"SALES"_s));
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s);
    click(key(database(u"DEPOT"_s)));
    EXPECT_EQ(paneTitle(), u"DEPOT - Database Properties"_s);
    EXPECT_EQ(texts(databaseColumns), nothing);
    EXPECT_EQ(state(), displayState);
}

TEST_F(DatabasePane, AnotherClickDropsWhatWasEntered)
{
    open(database(u"DEPOT"_s));
    write(u"REMARKS"_s, u"new"_s);
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel Undo"_s);
    click(key(database(u"DEPOT"_s)));
    EXPECT_EQ(text(u"REMARKS"_s), u"old one"_s);
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel"_s);
    write(u"DATABASE_NAME"_s, u"new"_s);
    click(key(database(u"SALES"_s)));
    EXPECT_EQ(text(u"DATABASE_NAME"_s), u"SALES"_s);
    // The former database's other name is no change of this one's.
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateDatabase(u"SALES"_s, {}, {}, u"DISAM"_s, {}, {}, {})});
}

TEST_F(DatabasePane, UpShowsTheCollectionWithTheFocusInItsGrid)
{
    open(database(u"DEPOT"_s));
    press(u"Up1"_s);
    EXPECT_EQ(currentPane(), u"frmDatabases"_s);
    EXPECT_EQ(paneTitle(), datasource + u" - Databases"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"DEPOT"_s, u"SALES"_s}));
    EXPECT_EQ(selectedKey(), key({u"DB"_s}));
    EXPECT_TRUE(control(u"grd"_s).hasFocus());
}

// The catalog's own database -----------------------------------------------------------------------------------------

TEST_F(DatabasePane, TheCatalogsOwnDatabaseIsForReadingOnly)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    open(database(u"TW"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readDatabase(u"TW"_s)}));
    EXPECT_EQ(paneTitle(), u"TW - Database Properties"_s);
    EXPECT_EQ(text(u"DATABASE_NAME"_s), u"TW"_s);
    EXPECT_EQ(text(u"DRIVER_NAME"_s), u"SYSTEM"_s);
    EXPECT_EQ(items(u"DRIVER_NAME"_s), QStringList{u"SYSTEM"_s});
    EXPECT_EQ(list(u"DRIVER_NAME"_s).currentText(), u"SYSTEM"_s);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    EXPECT_FALSE(control(u"cmdAction"_s).isEnabled());
    EXPECT_FALSE(control(u"cmdCancel"_s).isEnabled());

    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    press(u"Cancel"_s);
    EXPECT_EQ(statements.statements(), QStringList{readDatabase(u"TW"_s)});
    EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
    const QStringList menu = menuOf(key(database(u"TW"_s)));
    EXPECT_FALSE(menu.contains(u"mnu_DBEdit"_s));
    EXPECT_FALSE(menu.contains(u"mnu_DBDelete"_s));

    // The next one can be changed again.
    click(key(database(u"DEPOT"_s)));
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(items(u"DRIVER_NAME"_s), (QStringList{u"DISAM"_s, u"FLAT"_s, u"VAX-RMS"_s}));
}

TEST_F(DatabasePane, AnEditOfTheCatalogsOwnDatabaseOnlyShowsIt)
{
    open(database(u"DEPOT"_s));
    statements.clear();
    window->PaneEdit(u"frmDatabase"_s, {datasource, u"TW"_s});
    EXPECT_EQ(statements.statements(), QStringList{readDatabase(u"TW"_s)});
    EXPECT_EQ(paneTitle(), u"TW - Database Properties"_s);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(state(), u": Up1 OK Cancel"_s);
}

// Adding -------------------------------------------------------------------------------------------------------------

TEST_F(DatabasePane, AddBeginsWithAnEmptyFormAndReadsTheDriversTwice)
{
    open(database(u"DEPOT"_s));
    command({u"DB"_s}, u"mnu_DBAdd"_s);
    EXPECT_EQ(statements.statements(), (QStringList{readDrivers, readDrivers}));
    EXPECT_EQ(paneTitle(), "Add New Database to "_L1 + datasource);
    EXPECT_EQ(texts(databaseColumns), nothing);
    EXPECT_EQ(list(u"DRIVER_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(items(u"DRIVER_NAME"_s), (QStringList{u"DISAM"_s, u"FLAT"_s, u"VAX-RMS"_s}));
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel"_s);
    EXPECT_EQ(open(), databaseColumns);
    EXPECT_EQ(focus(), u"DATABASE_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Add"_s);
}

TEST_F(DatabasePane, ThreeDatabasesAreAddedOneBehindTheOther)
{
    beginToAdd();
    const QStringList before = databases();
    statements.clear();

    fillIn(u"a"_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{nameIsTaken(u"A"_s), insertDatabase(u"A"_s, u"'', 'FLAT', '', '', '', ''"_s),
                                   readDrivers, readDrivers}));
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel"_s);
    EXPECT_EQ(texts(databaseColumns), nothing);
    EXPECT_EQ(focus(), u"DATABASE_NAME"_s);
    EXPECT_EQ(nodes(), (QStringList{u"A"_s, u"DEPOT"_s, u"SALES"_s}));

    fillIn(u"z z"_s);
    write(u"DISPLAY_NAME"_s, u"z Z"_s);
    write(u"DEFAULT_DIRECTORY"_s, u"/data/it's 100%:"_s);
    write(u"CONNECT_STRING"_s, u"uid=me;x"_s);
    write(u"SETUP_PROCEDURE"_s, u"run it"_s);
    write(u"REMARKS"_s, u"\"fine\""_s);
    clickButton(u"cmdAction"_s);
    fillIn(u"m"_s);
    hit(Qt::Key_Return);

    EXPECT_EQ(databases(), (QStringList{u"A||FLAT||||"_s, before[0], u"M||FLAT||||"_s, before[1],
                                        u"Z_Z|z_Z|FLAT|/data/it's 100%:|UIDMEX|RUN_IT|\"fine\""_s}));
    EXPECT_EQ(statements.writes(),
              (QStringList{insertDatabase(u"A"_s, u"'', 'FLAT', '', '', '', ''"_s),
                           insertDatabase(u"Z_Z"_s, u"'/data/it''s 100%:', 'FLAT', 'RUN_IT', 'UIDMEX', '\"fine\"', "
                                                    "'z_Z'"_s),
                           insertDatabase(u"M"_s, u"'', 'FLAT', '', '', '', ''"_s)}));
    EXPECT_EQ(nodes(), (QStringList{u"A"_s, u"DEPOT"_s, u"M"_s, u"SALES"_s, u"Z_Z"_s}));
    EXPECT_EQ(line(node(key(database(u"M"_s)))), line(node(key(database(u"SALES"_s)))).replace(u"SALES"_s, u"M"_s));
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(currentPane(), u"frmDatabases"_s);
    EXPECT_EQ(gridNames(), nodes());
}

TEST_F(DatabasePane, AddingBelowACollectionThatIsClosedOpensIt)
{
    begin({u"DB"_s});
    choose(key({u"DB"_s}), u"mnu_DBAdd"_s);
    fillIn(u"new"_s);
    press(u"OK"_s);
    EXPECT_EQ(nodes(), (QStringList{u"DEPOT"_s, u"NEW"_s, u"SALES"_s}));
    EXPECT_TRUE(node(key({u"DB"_s})).Expanded());
}

TEST_F(DatabasePane, CancelOfAnAddShowsTheCollection)
{
    open(database(u"DEPOT"_s));
    press(u"Cancel"_s);
    press(u"DB Add"_s);
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel"_s);
    write(u"DATABASE_NAME"_s, u"x"_s);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(currentPane(), u"frmDatabases"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"DEPOT"_s, u"SALES"_s}));
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DatabasePane, UndoOfAnAddBeginsItAnew)
{
    beginToAdd();
    fillIn(u"x"_s);
    write(u"REMARKS"_s, u"y"_s);
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel Undo"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(), (QStringList{readDrivers, readDrivers}));
    EXPECT_EQ(texts(databaseColumns), nothing);
    EXPECT_EQ(list(u"DRIVER_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel"_s);
    EXPECT_EQ(focus(), u"DATABASE_NAME"_s);
}

TEST_F(DatabasePane, ChoosingADriverIsAChangeToo)
{
    beginToAdd();
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel"_s);
    pick(u"DRIVER_NAME"_s, u"VAX-RMS"_s);
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"DRIVER_NAME"_s), u"VAX-RMS"_s);
}

// Validation ---------------------------------------------------------------------------------------------------------

TEST_F(DatabasePane, RefusesWhatIsWrongOneAfterTheOther)
{
    beginToAdd();
    const QStringList tree = wholeTree();
    statements.clear();
    expectRefused(noName, u"DATABASE_NAME"_s);
    paste(u"DATABASE_NAME"_s, u"   "_s);
    expectRefused(noName, u"DATABASE_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    write(u"DATABASE_NAME"_s, u"x"_s);
    write(u"DISPLAY_NAME"_s, u"y"_s);
    // Not the display name.
    expectRefused(otherDisplayName, u"DATABASE_NAME"_s);
    write(u"DISPLAY_NAME"_s, u"x"_s);
    expectRefused(noDriver, u"DRIVER_NAME"_s);
    EXPECT_EQ(statements.statements(), (QStringList{nameIsTaken(u"X"_s), nameIsTaken(u"X"_s)}));
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(texts(databaseColumns), (QStringList{u"X"_s, u"x"_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
}

TEST_F(DatabasePane, RefusesANameThatIsTaken)
{
    beginToAdd();
    fillIn(u"depot"_s);
    statements.clear();
    expectRefused(u"This Datasource already contains a Database called 'DEPOT'"_s, u"DATABASE_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{nameIsTaken(u"DEPOT"_s)});
    write(u"DATABASE_NAME"_s, u"tw"_s);
    expectRefused(u"This Datasource already contains a Database called 'TW'"_s, u"DATABASE_NAME"_s);
}

TEST_F(DatabasePane, AnApostropheIsDoubledInTheQuestionAndSingleInTheMessage)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('O''HARA')"_s);
    beginToAdd();
    paste(u"DATABASE_NAME"_s, u"O'HARA"_s);
    statements.clear();
    expectRefused(u"This Datasource already contains a Database called 'O'HARA'"_s, u"DATABASE_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{nameIsTaken(u"O''HARA"_s)});
}

TEST_F(DatabasePane, RefusesTheSameInAnEdit)
{
    open(database(u"DEPOT"_s));
    statements.clear();
    write(u"DISPLAY_NAME"_s, u"depots"_s);
    expectRefused(otherDisplayName, u"DATABASE_NAME"_s);
    // Its own name is not looked for.
    EXPECT_EQ(statements.statements(), QStringList());
    write(u"DATABASE_NAME"_s, u"sales"_s);
    expectRefused(u"This Datasource already contains a Database called 'SALES'"_s, u"DATABASE_NAME"_s);
    clear(u"DATABASE_NAME"_s);
    expectRefused(noName, u"DATABASE_NAME"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"DISPLAY_NAME"_s), u"depots"_s);
}
