#include "DragHandlers.h"
#include "MainWindowFixture.h"
#include "RecordingPanes.h"

#include "Settings.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>

#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

const QStringList database{u"DB"_s, u"db=SALES"_s};
const QStringList table = database + QStringList{u"TA"_s, u"ta=ORDERS"_s};

/// A type of node: where one is, what the program knows it by, the pane of a click and the picture of a drag. "$" is
/// the datasource.
struct Type {
    const char* type;
    QStringList node;
    QStringList keys;
    const char* pane;
    /// An item opens in edit state unless the option says otherwise.
    bool isItem;
    const char* dragIcon;
};

void PrintTo(const Type& type, std::ostream* out)
{
    *out << type.type;
}

std::vector<Type> types()
{
    const QString d = u"$"_s;
    return {
        {"DSN", {}, {d}, "frmDSN", false, ""},
        {"FI", {u"FI"_s}, {d}, "frmFiles", false, "Drag File"},
        {"fi", {u"FI"_s, u"fi=PAYROLL"_s}, {d, u"PAYROLL"_s}, "frmFile", true, "Drag File"},
        {"FD", {u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s}, {d, u"PAYROLL"_s}, "frmFields", false, "Drag Field"},
        {"fd",
         {u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s, u"fd=SALARY"_s},
         {d, u"PAYROLL"_s, u"SALARY"_s},
         "frmField",
         true,
         "Drag Field"},
        {"DB", {u"DB"_s}, {d}, "frmDatabases", false, "Drag Database"},
        {"db", database, {d, u"SALES"_s}, "frmDatabase", true, "Drag Database"},
        {"TA", database + QStringList{u"TA"_s}, {d, u"SALES"_s}, "frmTables", false, "Drag Table"},
        {"ta", table, {d, u"SALES"_s, u"ORDERS"_s}, "frmTable", true, "Drag Table"},
        {"CO", table + QStringList{u"CO"_s}, {d, u"SALES"_s, u"ORDERS"_s}, "frmColumns", false, "Drag Column"},
        {"co",
         table + QStringList{u"CO"_s, u"co=AMOUNT"_s},
         {d, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s},
         "frmColumn",
         true,
         "Drag Column"},
        {"SCO", table + QStringList{u"SCO"_s}, {d, u"SALES"_s, u"ORDERS"_s}, "frmSpecialCols", false, ""},
        {"US", {u"US"_s}, {d}, "frmUsers", false, "Drag User"},
        {"us", {u"US"_s, u"us=CLERK"_s}, {d, u"CLERK"_s}, "frmUser", true, "Drag User"},
        {"DBPRV", database + QStringList{u"DBPRV"_s}, {d, u"SALES"_s}, "frmDBPRVs", false, "Drag User"},
        {"dbprv",
         database + QStringList{u"DBPRV"_s, u"dbprv=CLERK"_s},
         {d, u"SALES"_s, u"CLERK"_s},
         "frmDBPRV",
         true,
         "Drag User"},
        {"TBLPRV", table + QStringList{u"TBLPRV"_s}, {d, u"SALES"_s, u"ORDERS"_s}, "frmTBLPRVs", false, "Drag User"},
        {"tblprv",
         table + QStringList{u"TBLPRV"_s, u"tblprv=CLERK"_s},
         {d, u"SALES"_s, u"ORDERS"_s, u"CLERK"_s},
         "frmTBLPRV",
         true,
         "Drag User"},
    };
}

void expectEmpty(const DragItem& item)
{
    EXPECT_EQ(item.Node, QString());
    EXPECT_EQ(item.NodeType, QString());
    EXPECT_EQ(item.Keys, QStringList());
    EXPECT_EQ(item.DragIcon, QString());
}

class Mouse : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        drags::setHandlers({[](TreeView*, const DragItem&, const DragItem&) {},
                            [](TreeView*, const DragItem&, const DragItem&) { return false; }});
    }
    void TearDown() override
    {
        MainWindowTest::TearDown();
        drags::setHandlers({});
    }

    bool isDragging() const
    {
        EXPECT_EQ(window->isDragging(), window->tvwExplorer().IsDragging());
        return window->tvwExplorer().IsDragging();
    }

    RecordingPanes asked;
};

class MouseOn : public Mouse, public testing::WithParamInterface<Type>
{
protected:
    void SetUp() override
    {
        Mouse::SetUp();
        start();
        expandTo(where());
        asked.take();
    }

    QString where() const { return key(GetParam().node); }
    QStringList keys() const { return QStringList(GetParam().keys).replaceInStrings(u"$"_s, datasource); }
    QStringList call(const char* operation) const
    {
        return {u"%1.%2(%3)"_s.arg(QLatin1String(GetParam().pane), QLatin1String(operation), keys().join(u", "_s))};
    }
};

} // namespace

TEST_P(MouseOn, APressMakesTheNodeTheCurrentItem)
{
    press(where());
    EXPECT_EQ(window->currentItem().NodeType, QLatin1String(GetParam().type));
    EXPECT_EQ(window->currentItem().Node, where());
    EXPECT_EQ(window->currentItem().Keys, keys());
    EXPECT_EQ(window->currentItem().DragIcon, QLatin1String(GetParam().dragIcon));
    EXPECT_EQ(statusText(), u"MouseDown"_s);
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(selectedKey(), where());
}

TEST_P(MouseOn, AReleaseShowsThePane)
{
    click(where());
    EXPECT_EQ(asked.take(), call(GetParam().isItem ? "Edit" : "Display"));
    EXPECT_EQ(currentPane(), QLatin1String(GetParam().pane));
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_P(MouseOn, WithItemsOffEveryPaneIsOnlyDisplayed)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    click(where());
    EXPECT_EQ(asked.take(), call("Display"));
}

TEST_P(MouseOn, TheMiddleButtonShowsThePaneToo)
{
    click(where(), Qt::MiddleButton);
    EXPECT_EQ(asked.take(), call(GetParam().isItem ? "Edit" : "Display"));
}

TEST_P(MouseOn, ARightClickLeavesSelectionAndPaneWhereTheyWere)
{
    const bool isUsers = QLatin1String(GetParam().type) == "US"_L1;
    const QString other = key({isUsers ? u"FI"_s : u"US"_s});
    click(other);
    asked.take();
    const bool hasMenu = QLatin1String(GetParam().type) != "SCO"_L1;
    EXPECT_EQ(rightClick(where(), [&](QMenu&) { EXPECT_EQ(selectedKey(), where()); }), hasMenu);
    EXPECT_EQ(selectedKey(), other);
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(currentPane(), isUsers ? u"frmFiles"_s : u"frmUsers"_s);
    EXPECT_EQ(window->currentItem().Node, where());
}

TEST_P(MouseOn, ADragBeginsOnThePressedNodeUnlessItIsADatasource)
{
    const QPoint place = textPosition(where());
    press(where());
    move(place + QPoint(QApplication::startDragDistance() + 1, 0), Qt::LeftButton);

    if (QLatin1String(GetParam().type) == "DSN"_L1) {
        EXPECT_FALSE(isDragging());
        EXPECT_EQ(statusText(), u"MouseMove"_s);
    } else {
        EXPECT_TRUE(isDragging());
        EXPECT_EQ(window->currentItem().Node, where());
        EXPECT_EQ(window->tvwExplorer().DragIcon(), QLatin1String(GetParam().dragIcon));
        EXPECT_EQ(statusText(), u"BeginDrag"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(EachType, MouseOn, testing::ValuesIn(types()), [](const auto& info) {
    return std::string(info.param.type[0] < 'a' ? "Collection_" : "Item_") + info.param.type;
});

TEST_F(Mouse, EachClickOnTheSameNodeShowsItAnew)
{
    start();
    clickExpander(key());
    asked.take();
    click(key({u"US"_s}));
    click(key({u"US"_s}));
    const QString call = u"frmUsers.Display(%1)"_s.arg(datasource);
    EXPECT_EQ(asked.take(), (QStringList{call, call}));
}

TEST_F(Mouse, AClickOnAnExpanderSelectsOpensAndShowsTheNode)
{
    start();
    clickExpander(key());
    EXPECT_EQ(selectedKey(), key());
    EXPECT_EQ(asked.take().last(), u"frmDSN.Display(%1)"_s.arg(datasource));
}

TEST_F(Mouse, ADoubleClickOpensTheNode)
{
    start();
    QTest::mouseDClick(window->tvwExplorer().viewport(), Qt::LeftButton, {}, textPosition(key()));
    EXPECT_EQ(children(key()), (QStringList{u"Files"_s, u"Databases"_s, u"Users"_s}));
}

TEST_F(Mouse, AClickOnEmptySpaceEmptiesTheCurrentItemAndShowsNothing)
{
    start();
    clickExpander(key());
    click(key({u"US"_s}));
    asked.take();
    const QRect area = window->tvwExplorer().viewport()->rect();
    QTest::mouseClick(window->tvwExplorer().viewport(), Qt::LeftButton, {}, {area.width() / 2, area.bottom() - 2});
    EXPECT_EQ(window->currentItem().NodeType, QString());
    EXPECT_EQ(window->currentItem().Node, QString());
    EXPECT_EQ(window->currentItem().Keys, QStringList());
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(selectedKey(), key({u"US"_s}));
}

TEST_F(Mouse, ARightClickOnEmptySpaceShowsNoMenu)
{
    start();
    clickExpander(key());
    click(key({u"US"_s}));
    asked.take();
    EXPECT_FALSE(rightClickEmptySpace());
    EXPECT_EQ(window->currentItem().NodeType, QString());
    EXPECT_EQ(selectedKey(), key({u"US"_s}));
    EXPECT_EQ(asked.take(), QStringList());
}

TEST_F(Mouse, ARightClickBeforeAnySelectionLeavesNone)
{
    start();
    ASSERT_EQ(selectedKey(), QString());
    EXPECT_TRUE(rightClick(key()));
    EXPECT_EQ(selectedKey(), QString());
}

TEST_F(Mouse, TheKeyboardMovesTheSelectionAndShowsNoPane)
{
    start();
    clickExpander(key());
    click(key());
    asked.take();
    type(Qt::Key_Down);
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
    type(Qt::Key_Down);
    EXPECT_EQ(selectedKey(), key({u"DB"_s}));
    type(Qt::Key_End);
    EXPECT_EQ(selectedKey(), key({u"US"_s}));
    type(Qt::Key_Home);
    EXPECT_EQ(selectedKey(), key());
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
}

TEST_F(Mouse, EnterIsSwallowed)
{
    start();
    clickExpander(key());
    window->tvwExplorer().setSelectedItem(find(key({u"FI"_s})));
    asked.take();
    const QStringList before = wholeTree();
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        QKeyEvent event(QEvent::KeyPress, enter, {}, u"\r"_s);
        QCoreApplication::sendEvent(&window->tvwExplorer(), &event);
        EXPECT_TRUE(event.isAccepted());
    }
    EXPECT_EQ(wholeTree(), before);
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
    EXPECT_EQ(asked.take(), QStringList());
}

TEST_F(Mouse, TheMenuKeyShowsTheMenuOfTheSelectedNode)
{
    start();
    clickExpander(key());
    window->tvwExplorer().setSelectedItem(find(key({u"US"_s})));
    QStringList entries;
    QTimer::singleShot(0, [&] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            entries.append(menu->objectName());
            menu->close();
        }
    });
    type(Qt::Key_Menu);
    EXPECT_EQ(entries, QStringList{u"mnu_User"_s});
    EXPECT_EQ(window->currentItem().Node, key({u"US"_s}));
    EXPECT_EQ(selectedKey(), key({u"US"_s}));
}

TEST_F(Mouse, AnUnsteadyPressDragsNothing)
{
    start();
    clickExpander(key());
    const QPoint place = textPosition(key({u"US"_s}));
    press(key({u"US"_s}));
    move(place + QPoint(QApplication::startDragDistance() - 1, 0), Qt::LeftButton);
    EXPECT_EQ(statusText(), u"MouseDown"_s);
    EXPECT_FALSE(isDragging());
    asked.take();
    release(place);
    EXPECT_EQ(asked.take(), QStringList{u"frmUsers.Display(%1)"_s.arg(datasource)});
}

TEST_F(Mouse, ADragBeginsOnceUntilTheButtonIsReleased)
{
    start();
    clickExpander(key());
    const QPoint place = textPosition(key({u"US"_s}));
    const QPoint far = place + QPoint(QApplication::startDragDistance() + 1, 0);
    press(key({u"US"_s}));
    move(far, Qt::LeftButton);
    EXPECT_EQ(statusText(), u"BeginDrag"_s);
    move(far + QPoint(1, 0), Qt::LeftButton);
    EXPECT_EQ(statusText(), u"DragOver"_s);
    release(far);
    EXPECT_FALSE(isDragging());
    press(key({u"US"_s}));
    move(far, Qt::LeftButton);
    EXPECT_TRUE(isDragging());
    EXPECT_EQ(statusText(), u"BeginDrag"_s);
}

TEST_F(Mouse, OnlyTheLeftButtonDrags)
{
    start();
    clickExpander(key());
    const QPoint place = textPosition(key({u"US"_s}));
    const QPoint far = place + QPoint(QApplication::startDragDistance() + 1, 0);
    press(key({u"US"_s}), Qt::MiddleButton);
    move(far, Qt::MiddleButton);
    EXPECT_EQ(statusText(), u"MouseMove"_s);
    release(far, Qt::MiddleButton);
    move(place, Qt::NoButton);
    EXPECT_EQ(statusText(), u"MouseMove"_s);
    EXPECT_FALSE(isDragging());
}

TEST_F(Mouse, NothingDragsFromEmptySpace)
{
    start();
    clickExpander(key());
    click(key({u"US"_s}));
    const QRect area = window->tvwExplorer().viewport()->rect();
    const QPoint below(area.width() / 2, area.bottom() - 2);
    QTest::mousePress(window->tvwExplorer().viewport(), Qt::LeftButton, {}, below);
    move(below - QPoint(QApplication::startDragDistance() + 1, 0), Qt::LeftButton);
    EXPECT_FALSE(isDragging());
    EXPECT_EQ(statusText(), u"MouseMove"_s);
    release(below);
}

TEST_F(Mouse, AnItemWithoutATypeOrWithoutAPaneShowsNothing)
{
    start();
    asked.take();
    for (const char* type : {"", "FDSN", "sco", "K1", "dsn"}) {
        DragItem item;
        item.NodeType = QLatin1String(type);
        item.Keys = QStringList{datasource, u"A"_s, u"B"_s, u"C"_s};
        window->setCurrentItem(item);
        window->DisplayNode();
    }
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
}

TEST_F(Mouse, NoNodeGivesAnEmptyItem)
{
    start();
    expectEmpty(window->NodeToDragItem(nullptr));
}

TEST_F(Mouse, ANodeWithoutAPayloadGivesAnEmptyItem)
{
    start();
    clickExpander(key());
    expectEmpty(window->NodeToDragItem(&window->tvwExplorer().Nodes().Add(nullptr, u"bare"_s, u"Bare"_s)));
    expectEmpty(window->NodeToDragItem(&window->tvwExplorer().Nodes().Add(find(key()), u"barer"_s, u"Barer"_s)));
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(Mouse, ASpecialColumnHasItsFourKeyPartsAndNoPicture)
{
    start();
    expandTo(key(table));
    const CNode* column = window->nodes().add(&node(key(table + QStringList{u"SCO"_s})), u"sco"_s, u"RFA"_s, u"RFA"_s);
    ASSERT_TRUE(column);
    const DragItem item = window->NodeToDragItem(find(column->Key));
    EXPECT_EQ(item.Node, key(table + QStringList{u"SCO"_s, u"sco=RFA"_s}));
    EXPECT_EQ(item.NodeType, u"sco"_s);
    EXPECT_EQ(item.Keys, (QStringList{datasource, u"SALES"_s, u"ORDERS"_s, u"RFA"_s}));
    EXPECT_EQ(item.DragIcon, QString());
}

TEST_F(Mouse, APaneThatIsNotThereIsNoFailure)
{
    start();
    clickExpander(key());
    panes::remove(u"frmUsers"_s);
    asked.take();
    click(key({u"US"_s}));
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
    EXPECT_TRUE(errors.shown().empty());
}
