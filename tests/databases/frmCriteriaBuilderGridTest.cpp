#include "DialogHands.h"
#include "TablePaneFixture.h"

#include "CellGrid.h"
#include "DialogScript.h"

#include <QClipboard>

#include <utility>

using namespace Qt::StringLiterals;
using namespace tablepane;

namespace
{

const QString builder = u"frmCriteriaBuilder"_s;
const QString heading = u"Criteria"_s;
const QString noColumns = u"This Table contains no columns.\nAdd some columns before entering a table criteria."_s;

QString readColumns(const QString& table)
{
    return u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_s + ofTable(table);
}

QString built(DialogForm& form)
{
    return dialog::get<QPlainTextEdit>(form, u"txtCriteria"_s).toPlainText();
}

/// The grid of tables with a user who builds criteria in its cells.
class CriteriaInTheGrid : public WithItems<GridTest>
{
protected:
    void openTables() { open(level()); }

    /// Opens the cell of a row for entry.
    void enter(int row)
    {
        click(row, heading);
        hit(Qt::Key_Return);
        statements.clear();
    }

    /// Builds on what stands in the cell that is open.
    void build(DialogScript::Action action)
    {
        dialogs.expect(builder, std::move(action));
        pressLookUp();
        dialogs.verify();
        EXPECT_FALSE(forms::loaded(builder));
    }

    void leave() { clickBeside(); }

    DialogScript dialogs;
};

} // namespace

TEST_F(CriteriaInTheGrid, TheBuilderGoesOnFromWhatStandsInTheCell)
{
    openTables();
    enter(rowOf(u"ITEMS"_s));
    build([](DialogForm& form) {
        EXPECT_EQ(dialog::rows(form, u"lstColumns"_s), QStringList{u"ARTICLE"_s});
        EXPECT_EQ(built(form), u"CODE <> 'x'"_s);
        DialogScript::click(form, u"cmdComp_6"_s);
        dialog::doubleClickRow(form, u"lstColumns"_s, u"ARTICLE"_s);
        DialogScript::click(form, u"cmdOK"_s);
    });
    EXPECT_EQ(sent(), QStringList{readColumns(u"ITEMS"_s)});
    EXPECT_EQ(editorText(), u"CODE <> 'x'AND SALES_ITEMS.ARTICLE "_s);
    leave();
    EXPECT_EQ(statements.writes(),
              QStringList{u"UPDATE TW_TABLE SET DISPLAY_NAME = 'Items', TABLE_TYPE = 'TABLE', FILE_NAME = 'EMPTY', "
                          "FILE_SPECIFICATION = 'items.dat', NUMBER_COLUMNS = 2, CRITERIA = 'CODE <> ''x''AND "
                          "SALES_ITEMS.ARTICLE ', REMARKS = 'old one' WHERE "_s +
                          ofTable(u"ITEMS"_s) + ' '_L1});
}

TEST_F(CriteriaInTheGrid, TheBuilderGoesOnFromWhatWasTypedInTheCell)
{
    openTables();
    enter(rowOf(u"ITEMS"_s));
    write(u"; -- 1"_s);
    const QString typed = editorText();
    build([&](DialogForm& form) {
        EXPECT_EQ(built(form), typed);
        DialogScript::click(form, u"cmdOK"_s);
    });
    EXPECT_EQ(editorText(), typed);
}

TEST_F(CriteriaInTheGrid, WhatIsLongerThanTheColumnIsCutAndTold)
{
    openTables();
    enter(rowOf(u"ITEMS"_s));
    const auto paste = [](DialogForm& form, int size) {
        dialog::write(form, u"txtCriteria"_s, {});
        QApplication::clipboard()->setText(QString(size, u'x'));
        dialog::hit(form, Qt::Key_V, Qt::ControlModifier);
        DialogScript::click(form, u"cmdOK"_s);
    };
    build([&](DialogForm& form) { paste(form, 1024); });
    boxes.expectInform(u"The criteria is longer than the catalog can hold: only the first 1024 of its 1025 characters "
                       "have been kept."_s);
    build([&](DialogForm& form) { paste(form, 1025); });
    boxes.verify();
    EXPECT_EQ(editorText(), QString(1024, u'x'));
}

TEST_F(CriteriaInTheGrid, AStoredCriteriaLongerThanItsColumnStaysWholeUnlessItIsEdited)
{
    const QString longer(1100, u'x');
    change(u"UPDATE TW_TABLE SET CRITERIA = '%1' WHERE TABLE_NAME = 'ITEMS'"_s.arg(longer));
    openTables();
    enter(rowOf(u"ITEMS"_s));
    for (const QString& end : {u"cmdCancel"_s, u"cmdOK"_s}) {
        build([&](DialogForm& form) {
            EXPECT_EQ(built(form).size(), 1100);
            DialogScript::click(form, end);
        });
        EXPECT_EQ(editorText().size(), 1100);
    }
    leave();
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(cell(u"ITEMS"_s, heading), longer);

    enter(rowOf(u"ITEMS"_s));
    boxes.expectInform(u"The criteria is longer than the catalog can hold: only the first 1024 of its 1112 characters "
                       "have been kept."_s);
    build([](DialogForm& form) {
        DialogScript::click(form, u"cmdComp_13"_s);
        DialogScript::click(form, u"cmdOK"_s);
    });
    boxes.verify();
    EXPECT_EQ(editorText(), longer.left(1024));
}

TEST_F(CriteriaInTheGrid, CancelLeavesTheCellAndWritesNothing)
{
    openTables();
    enter(rowOf(u"ITEMS"_s));
    build([](DialogForm& form) {
        DialogScript::click(form, u"cmdClear"_s);
        DialogScript::click(form, u"cmdCancel"_s);
    });
    EXPECT_EQ(editorText(), u"CODE <> 'x'"_s);
    leave();
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(tables().first(), storedItems);
}

TEST_F(CriteriaInTheGrid, ATableWithoutColumnsKeepsItsCriteria)
{
    change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS'"_s);
    openTables();
    enter(rowOf(u"ITEMS"_s));
    boxes.expectInform(noColumns);
    pressLookUp();
    boxes.verify();
    EXPECT_EQ(editorText(), u"CODE <> 'x'"_s);
    EXPECT_NE(editor(), nullptr);
    leave();
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CriteriaInTheGrid, ARenamedRowIsAskedForByItsStoredName)
{
    openTables();
    change(u"ITEMS"_s, u"Table Name"_s, u"orders"_s);
    enter(0);
    build([](DialogForm& form) {
        EXPECT_EQ(dialog::rows(form, u"lstColumns"_s), QStringList{u"ARTICLE"_s});
        dialog::doubleClickRow(form, u"lstColumns"_s, u"ARTICLE"_s);
        DialogScript::click(form, u"cmdOK"_s);
    });
    EXPECT_EQ(sent(), QStringList{readColumns(u"ITEMS"_s)});
    EXPECT_EQ(editorText(), u"CODE <> 'x'SALES_ITEMS.ARTICLE "_s);
}

TEST_F(CriteriaInTheGrid, ANewRowIsAskedForByTheNameThatWasTyped)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('SALES', 'LEFT', 'BEHIND')"_s);
    openTables();
    change(blankRow(), u"Table Name"_s, u"left"_s);
    enter(blankRow());
    build([](DialogForm& form) {
        EXPECT_EQ(dialog::rows(form, u"lstColumns"_s), QStringList{u"BEHIND"_s});
        EXPECT_EQ(built(form), QString());
        dialog::doubleClickRow(form, u"lstColumns"_s, u"BEHIND"_s);
        DialogScript::click(form, u"cmdOK"_s);
    });
    EXPECT_EQ(sent(), QStringList{readColumns(u"LEFT"_s)});
    EXPECT_EQ(editorText(), u"SALES_LEFT.BEHIND "_s);
}
