#include "TablePaneFixture.h"

#include "CellGrid.h"

#include <QListWidget>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace tablepane;

namespace
{

/// The cells of the grid of tables behind which something is looked up.
class TablesLookUp : public WithItems<GridTest>
{
protected:
    void openTables() { open(level()); }
    void leave() { clickBeside(); }

    /// Opens the editor over a cell and presses its button, which brings up the builder of criteria: it must offer
    /// these columns and show this text. Ends it with another text.
    void build(int row, const QStringList& columns, const QString& former, const QString& criteria,
               const QString& endsWith = u"cmdOK"_s)
    {
        dialogs.expect(u"frmCriteriaBuilder"_s, [=](DialogForm& dialog) {
            auto* list = dialog.findChild<QListWidget*>(u"lstColumns"_s);
            ASSERT_NE(list, nullptr);
            QStringList offered;
            for (int i = 0; i < list->count(); ++i)
                offered.append(list->item(i)->text());
            EXPECT_EQ(offered, columns);
            typeCriteria(dialog, former, criteria);
            DialogScript::click(dialog, endsWith);
        });
        click(row, u"Criteria"_s);
        hit(Qt::Key_Return);
        pressLookUp();
        dialogs.verify();
    }

    DialogScript dialogs;
};

} // namespace

TEST_F(TablesLookUp, ColumnsAreCountedWithTheSpecialOnes)
{
    openTables();
    click(u"ORDERS"_s, u"Number Columns"_s);
    hit(Qt::Key_Return);
    pressLookUp();
    EXPECT_EQ(sent(), QStringList{countColumns(u"ORDERS"_s)});
    EXPECT_EQ(editorText(), u"3"_s);
    hit(Qt::Key_Escape);
    // Under the name that is stored.
    change(u"ITEMS"_s, u"Table Name"_s, u"orders"_s);
    click(0, u"Number Columns"_s);
    hit(Qt::Key_Delete);
    statements.clear();
    hit(Qt::Key_F4);
    EXPECT_EQ(sent(), QStringList{countColumns(u"ITEMS"_s)});
    EXPECT_EQ(editorText(), u"1"_s);
}

TEST_F(TablesLookUp, ATableThatIsNotYetStoredHasNoColumns)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('SALES', 'LEFT', 'BEHIND')"_s);
    openTables();
    change(blankRow(), u"Table Name"_s, u"left"_s);
    change(blankRow(), u"Number Columns"_s, u"9"_s);
    pressLookUp();
    EXPECT_EQ(editorText(), u"0"_s);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(TablesLookUp, CriteriaNeedATable)
{
    openTables();
    click(blankRow(), u"Criteria"_s);
    hit(Qt::Key_Return);
    boxes.expectInform(u"Please enter a Table Name before adding criteria."_s);
    pressLookUp();
    boxes.verify();
    EXPECT_EQ(current(), u"2 Criteria"_s);
    EXPECT_NE(editor(), nullptr);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(TablesLookUp, CriteriaAreBuiltForTheStoredTable)
{
    openTables();
    change(u"ITEMS"_s, u"Display Name"_s, {});
    change(u"ITEMS"_s, u"Table Name"_s, u"orders2"_s);
    build(0, {u"ARTICLE"_s}, u"CODE <> 'x'"_s, u"never"_s, u"cmdCancel"_s);
    EXPECT_EQ(editorText(), u"CODE <> 'x'"_s);
    hit(Qt::Key_Return);
    build(0, {u"ARTICLE"_s}, u"CODE <> 'x'"_s, u"ARTICLE = 'b'"_s);
    EXPECT_EQ(editorText(), u"ARTICLE = 'b'"_s);
    EXPECT_EQ(tables().first(), storedItems);
    leave();
    EXPECT_EQ(tables().last(), u"ORDERS2||TABLE|EMPTY|items.dat|2|ARTICLE = 'b'|old one"_s);
}

TEST_F(TablesLookUp, CriteriaOfANewRowAreBuiltForTheNameTyped)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('SALES', 'LEFT', 'BEHIND')"_s);
    openTables();
    change(blankRow(), u"Table Name"_s, u"left"_s);
    build(2, {u"BEHIND"_s}, {}, u"BEHIND > 1"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(cell(2, u"Criteria"_s), u"BEHIND > 1"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(TablesLookUp, CriteriaCanBeTypedAndMayBeLong)
{
    openTables();
    click(u"ITEMS"_s, u"Criteria"_s);
    hit(Qt::Key_Delete);
    paste(QString(1024, 'c'_L1));
    leave();
    EXPECT_EQ(stored(u"SELECT LENGTH(CRITERIA) FROM TW_TABLE WHERE TABLE_NAME = 'ITEMS'"_s), QStringList{u"1024"_s});
    // A text of the catalog that is longer than a line of entry is no change by being looked at.
    statements.clear();
    click(u"ITEMS"_s, u"Criteria"_s);
    hit(Qt::Key_Return);
    hit(Qt::Key_Return);
    leave();
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(TablesLookUp, CriteriaOfSeveralLinesStayAsTheyWereBuilt)
{
    change(u"UPDATE TW_TABLE SET REMARKS = 'one' || char(10) || 'two' WHERE TABLE_NAME = 'ITEMS'"_s);
    openTables();
    build(0, {u"ARTICLE"_s}, u"CODE <> 'x'"_s, u"ARTICLE = 'b'\nOR ARTICLE = 'c'"_s);
    leave();
    EXPECT_EQ(tables().first(), u"ITEMS|Items|TABLE|EMPTY|items.dat|2|ARTICLE = 'b'\nOR ARTICLE = 'c'|one\ntwo"_s);
    // Looking at a text of several lines is no change.
    statements.clear();
    for (const char* heading : {"Criteria", "Remarks"}) {
        click(u"ITEMS"_s, QLatin1String(heading));
        hit(Qt::Key_Return);
        hit(Qt::Key_Return);
    }
    leave();
    EXPECT_EQ(statements.writes(), QStringList());
}
