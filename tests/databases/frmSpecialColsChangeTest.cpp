#include "SpecialColsFixture.h"

#include "CellGrid.h"

#include <QPushButton>

using namespace specialcols;

namespace
{

const QString priceStored = u"0|1|PRICE|PRICE||0|0|0|0||"_s;
const QString articleStored = u"0|2|ARTICLE|ARTICLE||0|0|0|0||"_s;

struct Switch {
    int code;
    const char* driver;
    const char* organisation;
    QString tail;
    QString stored;
};

const Switch switches[] = {
    {1, "VAX-RMS", "INDEXED", u"'RFA', 'RFA', 14, 14, '', 0, 1, 1, 'VARCHAR', 1, '')"_s,
     u"1|1|RFA|RFA|VARCHAR|14|14|0|1||"_s},
    {2, "FLAT", "SEQUENTIAL", u"'INDEX_NUMBER', 'INDEX_NUMBER', 2, 5, '', 0, 1, 2, 'SMALLINT', 1, '')"_s,
     u"2|1|INDEX_NUMBER|INDEX_NUMBER|SMALLINT|2|5|0|1||"_s},
    {3, "FLAT", "SEQUENTIAL", u"'INDEX_NAME', 'INDEX_NAME', 64, 64, '', 0, 1, 3, 'VARCHAR', 1, '')"_s,
     u"3|1|INDEX_NAME|INDEX_NAME|VARCHAR|64|64|0|1||"_s},
    {4, "FLAT", "SEQUENTIAL", u"'INDEX_COLUMNS', 'INDEX_COLUMNS', 254, 254, '', 0, 1, 4, 'VARCHAR', 1, '')"_s,
     u"4|1|INDEX_COLUMNS|INDEX_COLUMNS|VARCHAR|254|254|0|1||"_s},
    {5, "FLAT", "SEQUENTIAL", u"'TABLE_ORDER', 'TABLE_ORDER', 2, 5, '', 0, 1, 5, 'SMALLINT', 1, '')"_s,
     u"5|1|TABLE_ORDER|TABLE_ORDER|SMALLINT|2|5|0|1||"_s},
    {6, "DISAM", "INDEXED", u"'ROWID', 'ROWID', 4, 10, '', 0, 1, 6, 'INTEGER', 1, '')"_s,
     u"6|1|ROWID|ROWID|INTEGER|4|10|0|1||"_s},
    {7, "VAX-RMS", "RELATIVE", u"'RELATIVE_NUMBER', 'RELATIVE_NUMBER', 4, 10, '', 0, 1, 7, 'INTEGER', 1, '')"_s,
     u"7|1|RELATIVE_NUMBER|RELATIVE_NUMBER|INTEGER|4|10|0|1||"_s},
    {8, "VAX-RMS", "INDEXED", u"'RELATIVE_INDEX', 'RELATIVE_INDEX', 4, 10, '', 0, 1, 8, 'INTEGER', 1, '')"_s,
     u"8|1|RELATIVE_INDEX|RELATIVE_INDEX|INTEGER|4|10|0|1||"_s},
};

} // namespace

TEST_F(SpecialCols, EachSwitchAddsItsRowAndRemovesItAgain)
{
    for (const Switch& c : switches) {
        SCOPED_TRACE(c.code);
        change(u"UPDATE TW_DB SET DRIVER_NAME = '%1' WHERE DATABASE_NAME = 'SALES'"_s.arg(QLatin1String(c.driver)));
        change(u"UPDATE TW_FILE SET FILE_ORGANISATION = '%1' WHERE FILE_NAME = 'STOCK'"_s.arg(
            QLatin1String(c.organisation)));
        openToEdit();
        toggle(c.code);
        press(u"OK"_s);
        QStringList expected{insertion(c.tail)};
        if (c.code == 8)
            expected.append(updateIndex({}));
        EXPECT_EQ(statements.statements(), expected + QStringList({readNames, readRows}));
        EXPECT_EQ(storedColumns(), (QStringList{priceStored, articleStored, c.stored}));
        EXPECT_EQ(ticked(), QString::number(c.code));
        EXPECT_EQ(enabled(), QString());
        EXPECT_EQ(state(), atRest);

        press(u"Special Column Edit"_s);
        statements.clear();
        toggle(c.code);
        press(u"OK"_s);
        EXPECT_EQ(statements.statements(), (QStringList{deletion(c.code), readNames, readRows}));
        // The ordinary column with the same number is another row.
        EXPECT_EQ(storedColumns(), (QStringList{priceStored, articleStored}));
        EXPECT_EQ(ticked(), QString());
    }
}

TEST_F(SpecialCols, SeveralSwitchesAreWrittenInTheOrderOfTheirCodes)
{
    for (const auto& [name, code] : {std::pair("RFA", 1), std::pair("INDEX_NAME", 3), std::pair("TABLE_ORDER", 5)})
        addColumn(QLatin1String(name), 1, code);
    openToEdit();
    toggle(5);
    toggle(4);
    toggle(1);
    toggle(2);
    // Switched over and back.
    toggle(3);
    toggle(3);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(),
              (QStringList{deletion(1), insertion(switches[1].tail), insertion(switches[3].tail), deletion(5)}));
    EXPECT_EQ(storedCodes(), u"2 3 4"_s);
    EXPECT_EQ(ticked(), u"2 3 4"_s);
}

TEST_F(SpecialCols, ADeleteReachesOneTableAlone)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('OTHER')"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
           "VALUES ('OTHER', 'ITEMS', 1, 'RFA', 1)"_s);
    addColumn(u"RFA"_s, 1, 1);
    addColumn(u"RFA2"_s, -1, 1);
    openToEdit();
    toggle(1);
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME FROM TW_COLUMN WHERE COLUMN_TYPE = 1 "
                     "ORDER BY 1, 2"_s),
              (QStringList{u"OTHER|ITEMS|RFA"_s, u"SALES|ITEMS|RFA2"_s, u"SALES|ORDERS|RFA"_s}));
}

TEST_F(SpecialCols, NothingThatHasChangedWritesNothing)
{
    addColumn(u"RFA"_s, 1, 1);
    openToEdit();
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(), (QStringList{readNames, readRows}));
    EXPECT_EQ(state(), atRest);
}

// The relative index -------------------------------------------------------------------------------------------------

TEST_F(SpecialCols, TheColumnOfARelativeIndexIsChosenWhileItIsSwitchedOn)
{
    openToEdit();
    EXPECT_FALSE(indexed().isEnabled());
    toggle(8);
    EXPECT_TRUE(indexed().isEnabled());
    choose(u"PRICE"_s);
    toggle(8);
    EXPECT_FALSE(indexed().isEnabled());
    toggle(8);
    EXPECT_EQ(indexed().currentText(), u"PRICE"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(),
              (QStringList{insertion(QString(switches[7].tail).replace(u"1, '')"_s, u"1, 'PRICE')"_s)),
                           updateIndex(u"PRICE"_s)}));
    EXPECT_EQ(storedColumns().last(), u"8|1|RELATIVE_INDEX|RELATIVE_INDEX|INTEGER|4|10|0|1||PRICE"_s);
    EXPECT_EQ(indexed().currentText(), u"PRICE"_s);
    EXPECT_FALSE(indexed().isEnabled());

    press(u"Special Column Edit"_s);
    EXPECT_TRUE(indexed().isEnabled());
    // Its own name is among those offered by now.
    EXPECT_EQ(offered(), (QStringList{u"ARTICLE"_s, u"PRICE"_s, u"RELATIVE_INDEX"_s}));
    choose(u"ARTICLE"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateIndex(u"ARTICLE"_s)});
    EXPECT_EQ(storedColumns().last(), u"8|1|RELATIVE_INDEX|RELATIVE_INDEX|INTEGER|4|10|0|1||ARTICLE"_s);
}

TEST_F(SpecialCols, AColumnThatIsGoneIsWrittenBack)
{
    addColumn(u"RELATIVE_INDEX"_s, 1, 8, u"IT''S GONE"_s);
    openToEdit();
    EXPECT_EQ(indexed().currentText(), u"IT'S GONE"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateIndex(u"IT''S GONE"_s)});
    EXPECT_TRUE(storedColumns().last().endsWith(u"|IT'S GONE"_s));
    // Switched off, it is asked for no more.
    press(u"Special Column Edit"_s);
    toggle(8);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{deletion(8)});
    EXPECT_EQ(indexed().currentIndex(), -1);
    EXPECT_EQ(offered(), (QStringList{u"ARTICLE"_s, u"PRICE"_s}));
}

// Leaving ------------------------------------------------------------------------------------------------------------

TEST_F(SpecialCols, CancelShowsWhatIsStored)
{
    addColumn(u"RELATIVE_INDEX"_s, 1, 8, u"PRICE"_s);
    openToEdit();
    toggle(1);
    choose(u"ARTICLE"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(statements.statements(), (QStringList{readNames, readRows}));
    EXPECT_EQ(ticked(), u"8"_s);
    EXPECT_EQ(indexed().currentText(), u"PRICE"_s);
    EXPECT_EQ(state(), atRest);
    EXPECT_EQ(enabled(), QString());
}

TEST_F(SpecialCols, TheNodeClickedAgainDropsWhatWasNotConfirmed)
{
    openToEdit();
    toggle(2);
    click(key(special));
    EXPECT_EQ(state(), atRest);
    EXPECT_EQ(ticked(), QString());
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(SpecialCols, TheButtonsOfThePaneAndTheKeysConfirmAndCancel)
{
    openSpecial();
    auto* action = window->currentPane()->findChild<QPushButton*>(u"cmdAction"_s);
    auto* cancel = window->currentPane()->findChild<QPushButton*>(u"cmdCancel"_s);
    EXPECT_FALSE(action->isVisible());
    EXPECT_FALSE(cancel->isVisible());
    const auto begin = [&] {
        press(u"Special Column Edit"_s);
        EXPECT_EQ(action->text(), u"&Update"_s);
        EXPECT_TRUE(action->isVisible());
    };
    begin();
    toggle(2);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(ticked(), QString());
    EXPECT_EQ(state(), atRest);
    begin();
    toggle(2);
    clickButton(u"cmdAction"_s);
    EXPECT_EQ(storedCodes(), u"2"_s);
    begin();
    toggle(3);
    QTest::keyClick(&box(3), Qt::Key_Escape);
    EXPECT_EQ(state(), atRest);
    EXPECT_EQ(ticked(), u"2"_s);
    begin();
    box(3).setFocus();
    QTest::keyClick(&box(3), Qt::Key_Space);
    EXPECT_EQ(ticked(), u"2 3"_s);
    QTest::keyClick(&box(3), Qt::Key_Return);
    EXPECT_EQ(storedCodes(), u"2 3"_s);
    EXPECT_EQ(state(), atRest);
}

// Elsewhere ----------------------------------------------------------------------------------------------------------

TEST_F(SpecialCols, TheyAreNoColumnsOfTheGridOrTheTree)
{
    openToEdit();
    toggle(1);
    toggle(2);
    press(u"OK"_s);
    ASSERT_EQ(storedCodes(), u"1 2"_s);
    const QStringList columns = table + QStringList{u"CO"_s};
    clickExpander(key(columns));
    EXPECT_EQ(children(key(columns)), (QStringList{u"PRICE"_s, u"ARTICLE"_s}));
    click(key(columns));
    EXPECT_EQ(gridNames(), (QStringList{u"1"_s, u"2"_s}));
}

TEST_F(SpecialCols, TheyCountAmongTheColumnsOfTheTable)
{
    openToEdit();
    toggle(1);
    toggle(2);
    press(u"OK"_s);
    press(u"Up1"_s);
    clickButton(u"cmdCalcColumns"_s);
    EXPECT_EQ(text(u"NUMBER_COLUMNS"_s), u"4"_s);
}

TEST_F(SpecialCols, TheyGoWithTheirTable)
{
    addColumn(u"RFA"_s, 1, 1);
    openSpecial();
    boxes.expectAsk(u"Are you sure you want to delete this Table?"_s, boxes::Answer::Yes);
    ItemTest::choose(key(table), u"mnu_TableDelete"_s);
    boxes.verify();
    EXPECT_EQ(storedColumns(), QStringList());
    EXPECT_EQ(currentPane(), u"frmTables"_s);
}

// Names and meanwhile ------------------------------------------------------------------------------------------------

TEST_F(SpecialCols, ApostrophesAreDoubled)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME, DRIVER_NAME) VALUES ('O''B', 'VAX-RMS')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('O''B', 'O''T', 'O''F')"_s);
    change(u"INSERT INTO TW_FILE (FILE_NAME, FILE_ORGANISATION) VALUES ('O''F', 'INDEXED')"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
           "VALUES ('O''B', 'O''T', 5, 'O''C', 0)"_s);
    open({u"DB"_s, u"db=O'B"_s, u"TA"_s, u"ta=O'T"_s, u"SCO"_s});
    EXPECT_EQ(paneTitle(), u"O'T - Special Columns"_s);
    press(u"Special Column Edit"_s);
    EXPECT_EQ(enabled(), u"1 2 3 4 5 8"_s);
    toggle(8);
    choose(u"O'C"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(
        statements.writes(),
        (QStringList{u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, LENGTH, PRECISION, "
                     "DEFAULT_VALUE, UPDATABLE, COLUMN_NUMBER, COLUMN_TYPE, SQL_TYPE_NAME, VISIBLE, REMARKS) VALUES "
                     "('O''B', 'O''T', 'RELATIVE_INDEX', 'RELATIVE_INDEX', 4, 10, '', 0, 1, 8, 'INTEGER', 1, 'O''C')"_s,
                     u"UPDATE TW_COLUMN SET REMARKS = 'O''C' WHERE DATABASE_NAME = 'O''B' AND TABLE_NAME = 'O''T' AND "
                     "COLUMN_NUMBER = 1 AND COLUMN_TYPE = 8"_s}));
    EXPECT_EQ(indexed().currentText(), u"O'C"_s);
}

TEST_F(SpecialCols, RowsThatAreGoneAreNotMissed)
{
    addColumn(u"RFA"_s, 1, 1);
    addColumn(u"RELATIVE_INDEX"_s, 1, 8, u"PRICE"_s);
    openToEdit();
    toggle(1);
    change(u"DELETE FROM TW_COLUMN WHERE COLUMN_TYPE > 0"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), (QStringList{deletion(1), updateIndex(u"PRICE"_s)}));
    EXPECT_EQ(ticked(), QString());
    EXPECT_EQ(state(), atRest);
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(SpecialCols, ARowThatIsThereMeanwhileIsReportedAndCancelShowsIt)
{
    openToEdit();
    toggle(2);
    toggle(3);
    toggle(4);
    addColumn(u"INDEX_NAME"_s, 1, 3);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmSpeicalCols.tbr_ButtonClick"_s);
    EXPECT_EQ(statements.writes(), (QStringList{insertion(switches[1].tail), insertion(switches[2].tail)}));
    // What was written before stays, and the rest waits.
    EXPECT_EQ(storedCodes(), u"2 3"_s);
    EXPECT_EQ(state(), inEdit);
    EXPECT_EQ(ticked(), u"2 3 4"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(ticked(), u"2 3"_s);
}
