#include "DatabasePaneFixture.h"

#include "Settings.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace databasepane;

// What the pane does where the tree, the catalog or the connection are no longer what they were.

TEST_F(DatabasePane, AddingADatabaseWhoseNodeStillStandsKeepsOneNode)
{
    beginToAdd();
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s);
    fillIn(u"depot"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    EXPECT_EQ(nodes(), (QStringList{u"DEPOT"_s, u"SALES"_s}));
    EXPECT_EQ(databases().first(), u"DEPOT||FLAT||||"_s);
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel"_s);
}

TEST_F(DatabasePane, RenamingToANameWhoseNodeStillStandsReadsTheLevelAnew)
{
    open(database(u"SALES"_s));
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s);
    change(u"DELETE FROM TW_TABLE WHERE DATABASE_NAME = 'DEPOT'"_s);
    write(u"DATABASE_NAME"_s, u"depot"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    EXPECT_EQ(nodes(), QStringList{u"DEPOT"_s});
    EXPECT_EQ(paneTitle(), u"DEPOT - Database Properties"_s);
    EXPECT_EQ(text(u"DRIVER_NAME"_s), u"DISAM"_s);
    EXPECT_EQ(state(), displayState);
}

TEST_F(DatabasePane, WhatOthersAddedMeanwhileComesWithTheNextChange)
{
    open(database(u"DEPOT"_s));
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('ARCHIVE')"_s);
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(nodes(), (QStringList{u"ARCHIVE"_s, u"DEPOT"_s, u"SALES"_s}));
    EXPECT_EQ(selectedKey(), key(database(u"DEPOT"_s)));
}

TEST_F(DatabasePane, AnEmptyLevelShowsTheFirstDatabaseThatIsAdded)
{
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s);
    begin(database(u"SALES"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    choose(key(database(u"SALES"_s)), u"mnu_DBDelete"_s);
    EXPECT_EQ(nodes(), QStringList());
    EXPECT_EQ(gridNames(), QStringList());
    choose(key({u"DB"_s}), u"mnu_DBAdd"_s);
    fillIn(u"first"_s);
    press(u"OK"_s);
    EXPECT_EQ(databases(), QStringList{u"FIRST||FLAT||||"_s});
    EXPECT_EQ(nodes(), QStringList{u"FIRST"_s});
    fillIn(u"a"_s);
    press(u"OK"_s);
    EXPECT_EQ(nodes(), (QStringList{u"A"_s, u"FIRST"_s}));
    press(u"Cancel"_s);
    EXPECT_EQ(gridNames(), nodes());
    click(key(database(u"FIRST"_s)));
    EXPECT_EQ(paneTitle(), u"FIRST - Edit Database Properties"_s);
}

TEST_F(DatabasePane, ACatalogThatTakesNoChangeStaysAndSoDoesThePane)
{
    for (const char* event : {"INSERT", "UPDATE", "DELETE"})
        change(u"CREATE TRIGGER NO_%1 BEFORE %1 ON TW_DB BEGIN SELECT RAISE(ABORT, 'readonly'); END"_s.arg(
            QLatin1String(event)));
    const QStringList before = wholeCatalog();
    open(database(u"DEPOT"_s));
    write(u"REMARKS"_s, u"9"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"9"_s);
    press(u"Cancel"_s);

    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    errors.expect(Press::Ignore);
    press(u"DB Delete"_s);
    EXPECT_EQ(state(), u"DB Delete: Up1 OK Cancel"_s);
    EXPECT_EQ(nodes(), (QStringList{u"DEPOT"_s, u"SALES"_s}));
    press(u"Cancel"_s);

    press(u"DB Add"_s);
    fillIn(u"x"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

TEST_F(DatabasePane, ALostConnectionLeavesThePaneInItsState)
{
    open(database(u"DEPOT"_s));
    const QStringList before = wholeCatalog();
    clear(u"DISPLAY_NAME"_s);
    write(u"DATABASE_NAME"_s, u"x"_s);
    statements.clear();
    for (int k = 1; k <= 2; ++k)
        statements.failAt(k, {{10054, "[Test] 08S01 Communication link failure"}});
    errors.expect(Press::Ignore).expect(Press::Ignore);
    press(u"OK"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmDatabase.ValidateFields"_s);
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"DATABASE_NAME"_s), u"X"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

TEST_F(DatabasePane, UpLeadsOutOfAnAddAndDropsIt)
{
    beginToAdd();
    fillIn(u"x"_s);
    press(u"Up1"_s);
    EXPECT_EQ(currentPane(), u"frmDatabases"_s);
    EXPECT_EQ(selectedKey(), key({u"DB"_s}));
    EXPECT_EQ(statements.writes(), QStringList());
    click(key(database(u"DEPOT"_s)));
    EXPECT_EQ(texts(databaseColumns), shownDepot);
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel"_s);
}

TEST_F(DatabasePane, ADatabaseIsNotShownWhileItsRowCannotBeRead)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(database(u"DEPOT"_s));
    press(u"DB Edit"_s);
    write(u"REMARKS"_s, u"mine"_s);
    statements.clear();
    statements.failAt(1);
    errors.expect(Press::Ignore);
    click(key(database(u"SALES"_s)));
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmDatabase.Display"_s);
    EXPECT_EQ(paneTitle(), u"SALES - Database Properties"_s);
    EXPECT_EQ(texts(databaseColumns), nothing);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
}
