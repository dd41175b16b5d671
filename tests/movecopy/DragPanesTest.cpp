// What the pane on view shows after a drag or a copy.
#include "CopyDialogFixture.h"
#include "DragAndDropFixture.h"
#include "RealPanes.h"

#include "CellGrid.h"
#include "GridPane.h"
#include "ItemPane.h"

using namespace Qt::StringLiterals;

namespace
{

QStringList gridRows()
{
    const auto* grid = mdiMain::instance().currentPane()->findChild<CellGrid*>(u"grd"_s);
    QStringList all;
    for (int row = 0; grid && row < grid->Rows(); ++row)
        all.append(grid->TextMatrix(row, 0));
    return all;
}

class DragPanes : public DragAndDrop
{
protected:
    void SetUp() override
    {
        panes.emplace();
        DragAndDrop::SetUp();
    }
    void TearDown() override
    {
        window.reset();
        panes.reset();
        DragAndDrop::TearDown();
    }
    void move(const QString& from, const QString& to)
    {
        dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdMove"_s); });
        dragTo(from, to);
        verify();
    }
    QStringList paneKeys() const
    {
        if (const auto* grid = dynamic_cast<const GridPane*>(window->currentPane()))
            return grid->keys();
        const auto* item = dynamic_cast<const ItemPane*>(window->currentPane());
        return item ? item->keys() : QStringList();
    }

    const QStringList payroll{u"FI"_s, u"fi=PAYROLL"_s};
    std::optional<RealPanes> panes;
};

class CopyPanes : public CopyDialogTest
{
protected:
    void SetUp() override
    {
        panes.emplace();
        CopyDialogTest::SetUp();
    }
    void TearDown() override
    {
        window.reset();
        panes.reset();
        CopyDialogTest::TearDown();
    }

    std::optional<RealPanes> panes;
};

} // namespace

TEST_F(DragPanes, AMovedFileLeavesTheGridOfItsSource)
{
    show(there({u"FI"_s}));
    show(key(payroll));
    click(key({u"FI"_s}));
    ASSERT_EQ(currentPane(), u"frmFiles"_s);
    ASSERT_TRUE(gridRows().contains(u"PAYROLL"_s));
    move(key(payroll), there({u"FI"_s}));
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_EQ(paneKeys(), QStringList{datasource});
    EXPECT_FALSE(gridRows().contains(u"PAYROLL"_s));
}

TEST_F(DragPanes, ThePaneOfWhatMovedAwayGivesWayToTheCollectionWhereItIs)
{
    change(u"UPDATE TW_FIELD SET LOCAL_TYPE_NAME = (SELECT MIN(LOCAL_TYPE_NAME) FROM TW_LOCDT)"_s);
    show(there({u"FI"_s}));
    struct View {
        QStringList node;
        QString pane;
    };
    const QStringList fields = payroll + QStringList{u"FD"_s};
    for (const auto& [node, pane] : {View{payroll, u"frmFile"_s}, View{fields, u"frmFields"_s},
                                     View{fields + QStringList{u"fd=SALARY"_s}, u"frmField"_s}}) {
        show(key(fields + QStringList{u"fd=SALARY"_s}));
        click(key(node));
        ASSERT_EQ(currentPane(), pane);
        move(key(payroll), there({u"FI"_s}));
        EXPECT_EQ(selectedKey(), there({u"FI"_s}));
        EXPECT_EQ(currentPane(), u"frmFiles"_s);
        EXPECT_EQ(paneKeys(), QStringList{other});
        EXPECT_TRUE(gridRows().contains(u"PAYROLL"_s));
        // And back.
        show(there(payroll));
        move(there(payroll), key({u"FI"_s}));
        EXPECT_EQ(currentPane(), u"frmFiles"_s);
    }
}

TEST_F(DragPanes, ThePaneOfSomethingElseStays)
{
    show(there({u"FI"_s}));
    show(key(payroll));
    click(key({u"FI"_s, u"fi=EMPTY"_s}));
    ASSERT_EQ(currentPane(), u"frmFile"_s);
    move(key(payroll), there({u"FI"_s}));
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    EXPECT_EQ(paneKeys(), (QStringList{datasource, u"EMPTY"_s}));

    // A file that is being added is not in the tree, and has not gone.
    window->PaneAddNew(u"frmFile"_s, {datasource});
    move(key({u"FI"_s, u"fi=EMPTY"_s}), there({u"FI"_s}));
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    EXPECT_EQ(paneKeys(), (QStringList{datasource, QString()}));
}

TEST_F(DragPanes, ThePaneOfWhatWasCopiedStays)
{
    show(there({u"FI"_s}));
    show(key(payroll));
    click(key(payroll));
    dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCopy"_s); });
    dragTo(key(payroll), there({u"FI"_s}));
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    EXPECT_EQ(paneKeys(), (QStringList{datasource, u"PAYROLL"_s}));
}

TEST_F(CopyPanes, ShowTheGridOfTheirCollectionAnew)
{
    const auto accept = [this](DialogForm& dialog) { press(dialog, ok); };
    expandTo(key({u"FI"_s}));
    click(key({u"FI"_s}));
    copyFile(accept);
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_TRUE(gridRows().contains(u"PAYROLL1"_s));
    expandTo(key({u"DB"_s}));
    click(key({u"DB"_s}));
    copyDatabase(accept);
    EXPECT_EQ(currentPane(), u"frmDatabases"_s);
    EXPECT_TRUE(gridRows().contains(u"SALES1"_s));
    expandTo(key(database + QStringList{u"TA"_s}));
    click(key(database + QStringList{u"TA"_s}));
    copyTable(accept);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_TRUE(gridRows().contains(u"ORDERS1"_s));
}
