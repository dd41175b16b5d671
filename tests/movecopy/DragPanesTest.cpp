// What the pane on view shows after a drag or a copy.
#include "CopyDialogFixture.h"
#include "DragAndDropFixture.h"
#include "DropDown.h"
#include "RealPanes.h"

using namespace Qt::StringLiterals;

namespace
{

class DragPanes : public WithRealPanes<DragAndDrop>
{
protected:
    void drag(const QString& from, const QString& to, const QString& answer)
    {
        dialogs.expect(u"frmMoveCopy"_s, [answer](DialogForm& dialog) { DialogScript::click(dialog, answer); });
        dragTo(from, to);
        verify();
    }
    void move(const QString& from, const QString& to) { drag(from, to, u"cmdMove"_s); }

    const QStringList payroll{u"FI"_s, u"fi=PAYROLL"_s};
};

using CopyPanes = WithRealPanes<CopyDialogTest>;

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
    drag(key(payroll), there({u"FI"_s}), u"cmdCopy"_s);
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

TEST_F(CopyPanes, ShowTheTablesOfTheOtherDatabaseThatWasChosen)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s);
    const QString depotTables = key({u"DB"_s, u"db=DEPOT"_s, u"TA"_s});
    expandTo(key(database + QStringList{u"TA"_s}));
    expandTo(depotTables);
    click(depotTables);
    ASSERT_EQ(currentPane(), u"frmTables"_s);
    ASSERT_FALSE(gridRows().contains(u"ORDERS"_s));
    copyTable([&](DialogForm& dialog) {
        dialog.findChild<DropDown*>(u"cboDB"_s)->select(u"DEPOT"_s);
        enter(dialog, u"txtTable"_s, u"ORDERS"_s);
        press(dialog, ok);
    });
    EXPECT_NE(find(depotTables + u"ta=ORDERS:"_s), nullptr);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_TRUE(gridRows().contains(u"ORDERS"_s));
}
