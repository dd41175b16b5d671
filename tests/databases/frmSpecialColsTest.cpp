#include "frmSpecialCols.h"

#include "PaneForm.h"
#include "Settings.h"
#include "SpecialColsFixture.h"
#include "ToolBar.h"

#include <QLabel>
#include <QPushButton>
#include <QToolButton>

using namespace specialcols;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(SpecialCols, ShowsWhichOnesTheTableHas)
{
    addColumn(u"ROWID"_s, 1, 6);
    addColumn(u"INDEX_NUMBER"_s, 1, 2);
    begin(special);
    click(key(special));
    EXPECT_EQ(statements.statements(), (QStringList{describe, readNames, readRows}));
    EXPECT_EQ(currentPane(), u"frmSpecialCols"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS - Special Columns"_s);
    const auto& pane = dynamic_cast<PaneForm&>(*window->currentPane());
    EXPECT_EQ(pane.lblDescription()->text(), u"This is a list of all the Special Columns in Table 'ITEMS'."_s);
    EXPECT_TRUE(pane.lblDescription()->isVisible());
    EXPECT_EQ(window->toolBar(u"tbrSpecialCols"_s).Button(u"Up1"_s).ToolTipText(), u"Up to Table 'ITEMS'"_s);
    EXPECT_EQ(ticked(), u"2 6"_s);
    EXPECT_EQ(enabled(), QString());
    EXPECT_FALSE(indexed().isEnabled());
    EXPECT_EQ(indexed().currentIndex(), -1);
    EXPECT_EQ(offered(), (QStringList{u"ARTICLE"_s, u"INDEX_NUMBER"_s, u"PRICE"_s, u"ROWID"_s}));
    EXPECT_EQ(state(), atRest);

    // The table is described only once.
    statements.clear();
    click(key(special));
    EXPECT_EQ(statements.statements(), (QStringList{readNames, readRows}));
}

TEST_F(SpecialCols, EachSwitchHasItsPrompt)
{
    openSpecial();
    QStringList texts;
    for (const QLabel* label : window->currentPane()->findChildren<QLabel*>())
        texts.append(label->text());
    for (const char* heading : {"Enabled", "Column Name", "Column:"})
        EXPECT_TRUE(texts.contains(QLatin1String(heading))) << heading;
    const QStringList prompts{u"&Record File Address"_s,  u"&Index Number"_s,  u"I&ndex Name"_s,
                              u"Index &Columns"_s,        u"Table &Order"_s,   u"I&SAM RowID"_s,
                              u"Relative &Key Number:"_s, u"Relative Index:"_s};
    for (int code = 1; code <= 8; ++code) {
        const QString& prompt = prompts.at(code - 1);
        SCOPED_TRACE(prompt.toStdString());
        const auto labels = window->currentPane()->findChildren<QLabel*>();
        const auto label = std::find_if(labels.begin(), labels.end(),
                                        [&](const QLabel* candidate) { return candidate->text() == prompt; });
        ASSERT_NE(label, labels.end());
        EXPECT_EQ((*label)->buddy(), &box(code));
        EXPECT_EQ(box(code).accessibleName(), QString(prompt).remove('&'_L1).remove(':'_L1));
    }
}

TEST_F(SpecialCols, RowsAreKnownByTypeAndNumberAndNotByName)
{
    addColumn(u"NUMBERS"_s, 1, 2);
    addColumn(u"RFA"_s, 1, 0);
    addColumn(u"TABLE_ORDER"_s, -1, 5);
    addColumn(u"LATER"_s, 1, 9);
    addColumn(u"EARLIER"_s, 1, -3);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
           "VALUES ('SALES', 'ITEMS', 1, 'NONE', NULL), ('SALES', 'ITEMS', NULL, 'NOT', 3), "
           "('SALES', 'OTHERS', 1, 'ROWID', 6)"_s);
    openSpecial();
    EXPECT_EQ(ticked(), u"2"_s);
}

TEST_F(SpecialCols, TheColumnOfARelativeIndexShows)
{
    addColumn(u"RELATIVE_INDEX"_s, 1, 8, u"PRICE"_s);
    openSpecial();
    EXPECT_EQ(ticked(), u"8"_s);
    EXPECT_EQ(indexed().currentText(), u"PRICE"_s);
    EXPECT_FALSE(indexed().isEnabled());

    // One that is gone still shows, and in its own case.
    for (const char* gone : {"GONE", "price"}) {
        change(u"UPDATE TW_COLUMN SET REMARKS = '%1' WHERE COLUMN_TYPE = 8"_s.arg(QLatin1String(gone)));
        click(key(special));
        EXPECT_EQ(indexed().currentText(), QLatin1String(gone));
        EXPECT_EQ(offered(), (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"RELATIVE_INDEX"_s, QLatin1String(gone)}));
    }
    change(u"UPDATE TW_COLUMN SET REMARKS = NULL WHERE COLUMN_TYPE = 8"_s);
    click(key(special));
    EXPECT_EQ(indexed().currentIndex(), -1);
    EXPECT_EQ(offered(), (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"RELATIVE_INDEX"_s}));
}

TEST_F(SpecialCols, AnotherTableShowsItsOwn)
{
    addColumn(u"RELATIVE_INDEX"_s, 1, 8, u"PRICE"_s);
    openToEdit();
    toggle(2);
    const QStringList orders{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"SCO"_s};
    expandTo(key(orders.first(4)));
    click(key(orders));
    EXPECT_EQ(paneTitle(), u"ORDERS - Special Columns"_s);
    EXPECT_EQ(window->toolBar(u"tbrSpecialCols"_s).Button(u"Up1"_s).ToolTipText(), u"Up to Table 'ORDERS'"_s);
    EXPECT_EQ(ticked(), u"1"_s);
    EXPECT_EQ(indexed().currentIndex(), -1);
    EXPECT_EQ(enabled(), QString());
    EXPECT_EQ(state(), atRest);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(SpecialCols, TheCatalogsOwnAreNeverChanged)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
           "VALUES ('TW', 'KEY', 1, 'ROWID', 6)"_s);
    open({u"DB"_s, u"db=TW"_s, u"TA"_s, u"ta=KEY"_s, u"SCO"_s});
    EXPECT_EQ(paneTitle(), u"KEY - Special Columns"_s);
    EXPECT_EQ(ticked(), u"6"_s);
    EXPECT_EQ(enabled(), QString());
    EXPECT_EQ(state(), u": Up1"_s);
    statements.clear();
    press(u"Special Column Edit"_s);
    EXPECT_EQ(state(), u": Up1"_s);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(SpecialCols, UpShowsTheTable)
{
    for (const bool editing : {false, true}) {
        SCOPED_TRACE(editing);
        openSpecial();
        if (editing)
            press(u"Special Column Edit"_s);
        press(u"Up1"_s);
        EXPECT_EQ(currentPane(), u"frmTable"_s);
        EXPECT_EQ(paneTitle(), u"ITEMS - Edit Table Properties"_s);
        EXPECT_EQ(selectedKey(), key(table));
        EXPECT_TRUE(window->tvwExplorer().hasFocus());
    }
}

TEST_F(SpecialCols, ACheckFindsARowAndGivesTheColumnOfARelativeIndex)
{
    addColumn(u"RELATIVE_INDEX"_s, 1, 8, u"ARTICLE"_s);
    openSpecial();
    change(u"UPDATE TW_COLUMN SET REMARKS = 'PRICE' WHERE COLUMN_TYPE = 8"_s);
    auto& pane = dynamic_cast<frmSpecialCols&>(*window->currentPane());
    const auto check = [&](int index, int type) {
        return pane.GetCheck(index, u"SELECT * FROM TW_COLUMN WHERE %1 AND COLUMN_TYPE = %2"_s.arg(ofItems).arg(type));
    };
    EXPECT_EQ(check(7, 7), 0);
    EXPECT_EQ(check(7, 8), 1);
    EXPECT_EQ(indexed().currentText(), u"ARTICLE"_s);
    EXPECT_EQ(check(8, 7), 0);
    EXPECT_EQ(indexed().currentText(), u"ARTICLE"_s);
    EXPECT_EQ(check(8, 8), 1);
    EXPECT_EQ(indexed().currentText(), u"PRICE"_s);
}

TEST_F(SpecialCols, ADatasourceThatCannotBeConnectedShowsNothing)
{
    const QString lost = datasource + u"Lost"_s;
    world.addUnreachableDatasource(lost);
    start();
    expectUnreachable();
    window->PaneDisplay(u"frmSpecialCols"_s, {lost, u"SALES"_s, u"ITEMS"_s});
    boxes.verify();
    ASSERT_EQ(currentPane(), u"frmSpecialCols"_s);
    EXPECT_EQ(enabled(), QString());
    EXPECT_FALSE(indexed().isEnabled());
    EXPECT_FALSE(control(u"cmdAction"_s).isVisible());
    press(u"Up1"_s);
    EXPECT_EQ(currentPane(), u"frmSpecialCols"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_TRUE(errors.shown().empty());
}

// What a driver offers -----------------------------------------------------------------------------------------------

TEST_F(SpecialCols, TheDriverAndTheOrganisationDecideWhichOnesCanBeSwitched)
{
    const struct {
        const char* driver;
        const char* organisation;
        const char* enabled;
    } cases[] = {
        {"'VAX-RMS'", "'INDEXED'", "1 2 3 4 5 8"},
        {"'VAX-RMS'", "'SEQUENTIAL'", "1 2 3 4 5 8"},
        {"'VAX-RMS'", "'RELATIVE'", "2 3 4 5 7 8"},
        {"'VAX-RMS'", "NULL", "2 3 4 5 7 8"},
        {"'VAX-RMS'", "'indexed'", "2 3 4 5 7 8"},
        {"'DISAM'", "'INDEXED'", "2 3 4 5 6"},
        {"'DISAM'", "'RELATIVE'", "2 3 4 5 6"},
        {"'FLAT'", "'SEQUENTIAL'", "2 3 4 5"},
        {"NULL", "NULL", "2 3 4 5"},
    };
    openSpecial();
    for (const auto& [driver, organisation, expected] : cases) {
        SCOPED_TRACE(driver + std::string(" ") + organisation);
        change(u"UPDATE TW_DB SET DRIVER_NAME = %1 WHERE DATABASE_NAME = 'SALES'"_s.arg(QLatin1String(driver)));
        change(
            u"UPDATE TW_FILE SET FILE_ORGANISATION = %1 WHERE FILE_NAME = 'STOCK'"_s.arg(QLatin1String(organisation)));
        statements.clear();
        press(u"Special Column Edit"_s);
        EXPECT_EQ(statements.statements(), (QStringList{readDriver, readFile, readOrganisation}));
        EXPECT_EQ(enabled(), QLatin1String(expected));
        EXPECT_FALSE(indexed().isEnabled());
        EXPECT_EQ(state(), inEdit);
        press(u"Cancel"_s);
        EXPECT_EQ(enabled(), QString());
    }
}

TEST_F(SpecialCols, AMissingTableOrFileHasNoOrganisation)
{
    openSpecial();
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'STOCK'"_s);
    press(u"Special Column Edit"_s);
    EXPECT_EQ(enabled(), u"2 3 4 5 7 8"_s);
    press(u"Cancel"_s);
    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s);
    statements.clear();
    press(u"Special Column Edit"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{readDriver, readFile, u"SELECT FILE_ORGANISATION FROM TW_FILE WHERE FILE_NAME = ''"_s}));
    EXPECT_EQ(enabled(), u"2 3 4 5 7 8"_s);
    press(u"Cancel"_s);
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'SALES'"_s);
    press(u"Special Column Edit"_s);
    EXPECT_EQ(enabled(), u"2 3 4 5"_s);
}

TEST_F(SpecialCols, WhatTheDriverDoesNotOfferStaysAsItIs)
{
    change(u"UPDATE TW_DB SET DRIVER_NAME = 'FLAT' WHERE DATABASE_NAME = 'SALES'"_s);
    for (const auto& [name, code] : {std::pair("RFA", 1), std::pair("ROWID", 6), std::pair("RELATIVE_NUMBER", 7)})
        addColumn(QLatin1String(name), 1, code);
    addColumn(u"RELATIVE_INDEX"_s, 1, 8, u"PRICE"_s);
    const QStringList before = storedColumns();
    openToEdit();
    EXPECT_EQ(ticked(), u"1 6 7 8"_s);
    EXPECT_EQ(enabled(), u"2 3 4 5"_s);
    // The column can be chosen all the same.
    EXPECT_TRUE(indexed().isEnabled());
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateIndex(u"PRICE"_s)});
    EXPECT_EQ(storedColumns(), before);
    EXPECT_EQ(ticked(), u"1 6 7 8"_s);
}
