#include "TreeFixture.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>

#include <cstdlib>

namespace
{

class TreeViewTest : public TreeFixture
{
protected:
    void logMouse()
    {
        QObject::connect(&tree, &TreeView::MouseDown, &tree, [this](Qt::MouseButton button, QPoint place) {
            log << QString("down %1 on %2, selected %3").arg(button).arg(keyAt(place), selected());
        });
        QObject::connect(&tree, &TreeView::MouseMove, &tree, [this](Qt::MouseButtons buttons, QPoint place) {
            log << QString("move %1 on %2").arg(buttons.toInt()).arg(keyAt(place));
        });
        QObject::connect(&tree, &TreeView::MouseUp, &tree, [this](Qt::MouseButton button, QPoint place) {
            log << QString("up %1 on %2, selected %3").arg(button).arg(keyAt(place), selected());
        });
        QObject::connect(&tree, &TreeView::ContextKey, &tree,
                         [this](TreeNode* node, QPoint) { log << "context " + node->Key(); });
    }
    QString keyAt(QPoint place) const
    {
        const TreeNode* node = tree.HitTest(place);
        return node ? node->Key() : QString("nothing");
    }
    QString selected() const { return tree.SelectedItem() ? tree.SelectedItem()->Key() : QString("nothing"); }
};

TEST_F(TreeViewTest, ExpandingFromCodeRaisesTheEventOnceAndOnlyOnAChange)
{
    addSmallTree();
    TreeNode& a = nodes().Item("a");
    a.setExpanded(false);
    EXPECT_EQ(log, QStringList());
    a.setExpanded(true);
    a.setExpanded(true);
    EXPECT_EQ(log, QStringList({"expand a"}));
    a.setExpanded(false);
    a.setExpanded(false);
    EXPECT_EQ(log, QStringList({"expand a", "collapse a"}));
}

TEST_F(TreeViewTest, ANodeWithoutChildrenDoesNotExpand)
{
    addSmallTree();
    TreeNode& b = nodes().Item("b");
    b.setExpanded(true);
    EXPECT_FALSE(b.Expanded());
    EXPECT_EQ(log, QStringList());
}

TEST_F(TreeViewTest, ANodeThatLostItsChildrenStaysExpandedUntilItIsCollapsedSilently)
{
    addSmallTree();
    show();
    TreeNode& a = nodes().Item("a");
    a.setExpanded(true);
    nodes().RemoveChildren(a);
    EXPECT_TRUE(a.Expanded());
    add(&a, "new");
    EXPECT_EQ(rows(), QStringList({"a", "new", "b"}));
    nodes().RemoveChildren(a);
    log.clear();
    a.setExpanded(false);
    EXPECT_FALSE(a.Expanded());
    EXPECT_EQ(log, QStringList());
    add(&a, "newer");
    EXPECT_EQ(rows(), QStringList({"a", "b"}));
}

TEST_F(TreeViewTest, ABranchThatWasOpenBelowAClosedOneIsOpenAgainWithIt)
{
    addSmallTree();
    add(&nodes().Item("a2"), "a2x");
    show();
    nodes().Item("a2").setExpanded(true);
    EXPECT_EQ(rows(), QStringList({"a", "b"}));
    nodes().Item("a").setExpanded(true);
    EXPECT_EQ(rows(), QStringList({"a", "a1", "a2", "a2x", "a3", "b"}));
}

TEST_F(TreeViewTest, AFilledLevelStaysOpenAndACollapsedOneKeepsItsExpander)
{
    addPlaceholder(add(nullptr, "a"));
    add(nullptr, "b");
    fillOnExpand(3);
    show();
    TreeNode& a = nodes().Item("a");
    click(expanderOf(a));
    EXPECT_EQ(rows(), QStringList({"a", "a.0", "a.1", "a.2", "b"}));
    click(expanderOf(a));
    EXPECT_EQ(rows(), QStringList({"a", "b"}));
    EXPECT_EQ(a.Children(), 1);
    click(expanderOf(a));
    EXPECT_EQ(rows(), QStringList({"a", "a.0", "a.1", "a.2", "b"}));
    EXPECT_EQ(log, QStringList({"expand a", "collapse a", "expand a"}));
}

TEST_F(TreeViewTest, TheWholeRowIsHitFromTheExpanderToTheRightEdge)
{
    addSmallTree();
    show();
    const QRect row = rowOf(nodes().Item("b"));
    EXPECT_EQ(tree.HitTest(QPoint(0, row.center().y())), nodes().find("b"));
    EXPECT_EQ(tree.HitTest(QPoint(tree.viewport()->width() - 1, row.top())), nodes().find("b"));
    EXPECT_EQ(tree.HitTest(QPoint(10, row.bottom() + 1)), nullptr);
    EXPECT_EQ(tree.HitTest(QPoint(10, -1)), nullptr);
    EXPECT_EQ(tree.HitTest(QPoint(tree.viewport()->width(), row.top())), nullptr);
}

TEST_F(TreeViewTest, ALeftPressTellsTheFormerSelectionThenSelects)
{
    addSmallTree();
    show();
    logMouse();
    tree.setSelectedItem(nodes().find("a"));
    click(nameOf(nodes().Item("b")));
    EXPECT_EQ(log, QStringList({"down 1 on b, selected a", "up 1 on b, selected b"}));
    EXPECT_EQ(tree.selectionModel()->selectedRows(), QModelIndexList{tree.currentIndex()});
}

TEST_F(TreeViewTest, ARightPressSelectsAndLeavesTheExpanderAlone)
{
    addSmallTree();
    show();
    logMouse();
    tree.setSelectedItem(nodes().find("b"));
    click(expanderOf(nodes().Item("a")), Qt::RightButton);
    EXPECT_EQ(log, QStringList({"down 2 on a, selected b", "up 2 on a, selected a"}));
}

TEST_F(TreeViewTest, APressOnEmptySpaceLeavesTheSelection)
{
    addSmallTree();
    show();
    logMouse();
    tree.setSelectedItem(nodes().find("b"));
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton})
        click(QPoint(20, 400), button);
    EXPECT_EQ(log, QStringList({"down 1 on nothing, selected b", "up 1 on nothing, selected b",
                                "down 2 on nothing, selected b", "up 2 on nothing, selected b"}));
}

TEST_F(TreeViewTest, APressOnTheExpanderSelectsAndTogglesAtOnce)
{
    addSmallTree();
    show();
    logMouse();
    tree.setSelectedItem(nodes().find("b"));
    const QPoint expander = expanderOf(nodes().Item("a"));
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, expander);
    EXPECT_EQ(log, QStringList({"down 1 on a, selected b", "expand a"}));
    EXPECT_EQ(selected(), "a");
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, expander);
    EXPECT_EQ(log.back(), "up 1 on a, selected a");
    EXPECT_EQ(log.size(), 3);
}

TEST_F(TreeViewTest, TheExpanderOfALeafIsPartOfItsRow)
{
    addSmallTree();
    show();
    click(expanderOf(nodes().Item("b")));
    EXPECT_EQ(selected(), "b");
    EXPECT_EQ(log, QStringList());
}

TEST_F(TreeViewTest, ADoubleClickTogglesAndReportsBothPresses)
{
    addSmallTree();
    show();
    logMouse();
    const QPoint name = nameOf(nodes().Item("a"));
    click(name);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, name);
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, name);
    EXPECT_EQ(log, QStringList({"down 1 on a, selected nothing", "up 1 on a, selected a", "down 1 on a, selected a",
                                "expand a", "up 1 on a, selected a"}));
    EXPECT_TRUE(nodes().Item("a").Expanded());
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, name);
    EXPECT_FALSE(nodes().Item("a").Expanded());
}

TEST_F(TreeViewTest, AnUnsteadyClickIsNoMove)
{
    addSmallTree();
    show();
    logMouse();
    const QPoint name = nameOf(nodes().Item("a"));
    QTest::mouseMove(tree.viewport(), name);
    log.clear();
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, name);
    const auto drag = [&](QPoint to) {
        QMouseEvent move(QEvent::MouseMove, to, tree.viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(tree.viewport(), &move);
    };
    drag(name + QPoint(2, 1));
    EXPECT_EQ(log, QStringList({"down 1 on a, selected nothing"}));
    // The row below is under the pointer by now, but the drag began on this one.
    drag(name + QPoint(0, 24));
    EXPECT_EQ(log.back(), "move 1 on a");
    drag(name + QPoint(0, 25));
    EXPECT_EQ(log.back(), "move 1 on b");
    drag(name);
    EXPECT_EQ(log.back(), "move 1 on a");
    EXPECT_EQ(log.size(), 4);
    EXPECT_EQ(selected(), "a");
}

TEST_F(TreeViewTest, CollapsingMovesASelectionInsideToTheNodeBeforeTheEvent)
{
    addSmallTree();
    show();
    tree.setSelectedItem(nodes().find("a2"));
    log.clear();
    QString atEvent;
    QObject::connect(&tree, &TreeView::Collapse, &tree, [&] { atEvent = selected(); });
    nodes().Item("a").setExpanded(false);
    EXPECT_EQ(atEvent, "a");
    EXPECT_EQ(log, QStringList({"collapse a"}));
}

TEST_F(TreeViewTest, SelectingBelowClosedNodesOpensThemFromTheOutermost)
{
    addSmallTree();
    add(&nodes().Item("a2"), "deep");
    show();
    nodes().Item("deep").setSelected(true);
    EXPECT_EQ(log, QStringList({"expand a", "expand a2"}));
    EXPECT_TRUE(nodes().Item("deep").Selected());
    EXPECT_EQ(rows(), QStringList({"a", "a1", "a2", "deep", "a3", "b"}));
    nodes().Item("a1").setSelected(false);
    EXPECT_EQ(selected(), "deep");
    nodes().Item("deep").setSelected(false);
    EXPECT_EQ(selected(), "nothing");
}

TEST_F(TreeViewTest, SelectingWithRedrawOffShowsAtItsEnd)
{
    addSmallTree();
    show();
    {
        TreeView::RedrawOff off(tree);
        for (int i = 0; i < 100; ++i)
            add(nullptr, "c" + QString::number(i));
        tree.setSelectedItem(nodes().find("c90"));
        EXPECT_EQ(selected(), "c90");
    }
    EXPECT_TRUE(isInSight(nodes().Item("c90")));
    EXPECT_EQ(tree.currentIndex().data().toString(), "c90");
}

TEST_F(TreeViewTest, ArrowsMoveOpenAndClose)
{
    addSmallTree();
    show();
    tree.setSelectedItem(nodes().find("a"));
    type(Qt::Key_Right);
    EXPECT_EQ(log, QStringList({"expand a"}));
    EXPECT_EQ(selected(), "a");
    type(Qt::Key_Right);
    EXPECT_EQ(selected(), "a1");
    type(Qt::Key_Right);
    EXPECT_EQ(selected(), "a1");
    type(Qt::Key_Down);
    EXPECT_EQ(selected(), "a2");
    type(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(selected(), "a1");
    EXPECT_TRUE(tree.selectionModel()->isSelected(tree.currentIndex()));
    type(Qt::Key_End);
    EXPECT_EQ(selected(), "b");
    type(Qt::Key_Home);
    EXPECT_EQ(selected(), "a");
    type(Qt::Key_Down);
    type(Qt::Key_Left);
    EXPECT_EQ(selected(), "a");
    type(Qt::Key_Left);
    EXPECT_EQ(log, QStringList({"expand a", "collapse a"}));
    type(Qt::Key_Left);
    EXPECT_EQ(selected(), "a");
}

TEST_F(TreeViewTest, TheKeyboardComingToTheTreeSelectsNothingItsFirstArrowDoes)
{
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Left}) {
        nodes().Clear();
        addSmallTree();
        show();
        for (const Qt::FocusReason reason : {Qt::TabFocusReason, Qt::OtherFocusReason, Qt::ActiveWindowFocusReason}) {
            QFocusEvent focus(QEvent::FocusIn, reason);
            QApplication::sendEvent(&tree, &focus);
            EXPECT_EQ(selected(), "nothing");
            EXPECT_FALSE(tree.currentIndex().isValid());
        }
        type(key);
        EXPECT_EQ(selected(), "a");
        EXPECT_TRUE(tree.selectionModel()->isSelected(tree.currentIndex()));
        EXPECT_EQ(log, QStringList());
    }
}

TEST_F(TreeViewTest, PlusAndMinusOpenAndClose)
{
    addSmallTree();
    show();
    tree.setSelectedItem(nodes().find("a"));
    type(Qt::Key_Plus);
    type(Qt::Key_Plus);
    type(Qt::Key_Minus);
    type(Qt::Key_Minus);
    type(Qt::Key_Asterisk);
    EXPECT_EQ(log, QStringList({"expand a", "collapse a"}));
}

TEST_F(TreeViewTest, PageKeysScrollTheSelectionIntoSight)
{
    for (int i = 0; i < 100; ++i)
        add(nullptr, QString::number(1000 + i));
    show();
    tree.setSelectedItem(nodes().find("1000"));
    type(Qt::Key_PageDown);
    type(Qt::Key_PageDown);
    const QString far = selected();
    EXPECT_GT(far.toInt(), 1025);
    EXPECT_TRUE(isInSight(nodes().Item(far))) << rowOf(nodes().Item(far)).top() << " of " << tree.viewport()->height();
    type(Qt::Key_PageUp);
    EXPECT_LT(selected().toInt(), far.toInt());
}

TEST_F(TreeViewTest, TypingANameFindsItMinusIncluded)
{
    for (const char* key : {"ALPHA", "BETA", "B-ONE", "B-TWO"})
        add(nullptr, key);
    show();
    tree.setSelectedItem(nodes().find("ALPHA"));
    QTest::keyClicks(&tree, "b-t");
    EXPECT_EQ(selected(), "B-TWO");
}

TEST_F(TreeViewTest, EnterIsSwallowed)
{
    addSmallTree();
    show();
    tree.setSelectedItem(nodes().find("a"));
    QSignalSpy activated(&tree, &QAbstractItemView::activated);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        press.ignore();
        QApplication::sendEvent(&tree, &press);
        EXPECT_TRUE(press.isAccepted());
    }
    EXPECT_EQ(activated.count(), 0);
    EXPECT_EQ(log, QStringList());
    EXPECT_EQ(selected(), "a");
}

TEST_F(TreeViewTest, TheMenuKeyAsksOnceForTheSelectedNode)
{
    addSmallTree();
    show();
    logMouse();
    type(Qt::Key_Menu);
    EXPECT_EQ(log, QStringList());
    tree.setSelectedItem(nodes().find("b"));
    type(Qt::Key_Menu);
    type(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(log, QStringList({"context b", "context b"}));
    // Some platforms send the request and then the key that made it.
    log.clear();
    QContextMenuEvent request(QContextMenuEvent::Keyboard, QPoint(1, 1), tree.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&tree, &request);
    type(Qt::Key_Menu);
    EXPECT_EQ(log, QStringList({"context b"}));
}

TEST_F(TreeViewTest, TheMouseOpensNoContextMenuByItself)
{
    addSmallTree();
    show();
    logMouse();
    tree.setSelectedItem(nodes().find("b"));
    QContextMenuEvent request(QContextMenuEvent::Mouse, QPoint(10, 10), tree.mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(tree.viewport(), &request);
    EXPECT_TRUE(request.isAccepted());
    EXPECT_EQ(log, QStringList());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(TreeViewTest, GreyAndBoldNodesLookSo)
{
    addSmallTree();
    TreeNode& a = nodes().Item("a");
    const QModelIndex index = tree.model()->index(0, 0);
    EXPECT_FALSE(index.data(Qt::ForegroundRole).isValid());
    EXPECT_FALSE(index.data(Qt::FontRole).isValid());
    a.setGrey(true);
    a.setBold(true);
    EXPECT_EQ(index.data(Qt::ForegroundRole).value<QBrush>(), tree.palette().brush(QPalette::Disabled, QPalette::Text));
    EXPECT_TRUE(index.data(Qt::FontRole).value<QFont>().bold());
    EXPECT_TRUE(a.Grey());
    EXPECT_TRUE(a.Bold());
    QFont larger = tree.font();
    larger.setPointSize(larger.pointSize() + 3);
    tree.setFont(larger);
    EXPECT_EQ(index.data(Qt::FontRole).value<QFont>().pointSize(), larger.pointSize());
}

TEST_F(TreeViewTest, TheSelectedNodeShowsItsOtherImage)
{
    TreeNode& node = nodes().Add(nullptr, "a", "a", "File", "Files");
    TreeNode& other = nodes().Add(nullptr, "b", "b", "File");
    nodes().Add(nullptr, "c", "c");
    EXPECT_EQ(node.Image(), "File");
    EXPECT_EQ(node.SelectedImage(), "Files");
    const auto pictureOf = [&](int row) {
        return tree.model()->index(row, 0).data(Qt::DecorationRole).value<QIcon>().cacheKey();
    };
    const qint64 plain = pictureOf(0);
    EXPECT_EQ(pictureOf(1), plain);
    tree.setSelectedItem(&node);
    EXPECT_NE(pictureOf(0), plain);
    tree.setSelectedItem(&other);
    EXPECT_EQ(pictureOf(0), plain);
    EXPECT_EQ(pictureOf(1), plain);
    node.setImage("Files");
    EXPECT_NE(pictureOf(0), plain);
    EXPECT_FALSE(tree.model()->index(2, 0).data(Qt::DecorationRole).isValid());
}

TEST_F(TreeViewTest, TheAccessibleNameIsTheText)
{
    nodes().Add(nullptr, "key", "the text");
    show();
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&tree);
    ASSERT_NE(accessible, nullptr);
    ASSERT_NE(accessible->tableInterface(), nullptr);
    EXPECT_EQ(accessible->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), "the text");
    EXPECT_EQ(tree.model()->index(0, 0).data(Qt::AccessibleTextRole).toString(), "the text");
    nodes().Item("key").setText("another");
    EXPECT_EQ(tree.model()->index(0, 0).data().toString(), "another");
}

TEST_F(TreeViewTest, ALongNameCanBeScrolledToAndSelectingDoesNotScrollSideways)
{
    add(nullptr, "short");
    add(nullptr, QString(200, 'W'));
    show();
    QScrollBar* across = tree.horizontalScrollBar();
    ASSERT_GT(across->maximum(), 500);
    tree.setSelectedItem(nodes().Root()->Next());
    EXPECT_EQ(across->value(), 0);
    type(Qt::Key_Up);
    EXPECT_EQ(across->value(), 0);
    nodes().Remove(*nodes().Root()->Next());
    EXPECT_TRUE(QTest::qWaitFor([&] { return across->maximum() == 0; }));
}

TEST_F(TreeViewTest, ANameThatDoesNotFitHasATipAndAShortOneNone)
{
    TreeNode& brief = add(nullptr, "short");
    TreeNode& lengthy = add(nullptr, QString(200, 'W'));
    show();
    const auto askAt = [&](QPoint place) {
        QHelpEvent help(QEvent::ToolTip, place, tree.viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree.viewport(), &help);
    };
    for (const QPoint other : {nameOf(brief), QPoint(40, 400)}) {
        askAt(nameOf(lengthy));
        EXPECT_TRUE(QToolTip::isVisible());
        EXPECT_EQ(QToolTip::text(), lengthy.Text());
        askAt(other);
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    }
}

TEST_F(TreeViewTest, ALongNameThatScrollsIntoSightIsNotCutOff)
{
    for (int i = 0; i < 100; ++i)
        add(nullptr, QString::number(i));
    add(nullptr, QString(200, 'W'));
    show();
    EXPECT_EQ(tree.horizontalScrollBar()->maximum(), 0);
    tree.verticalScrollBar()->setValue(tree.verticalScrollBar()->maximum());
    EXPECT_GT(tree.horizontalScrollBar()->maximum(), 500);
}

TEST_F(TreeViewTest, TheFirstRowInSightStaysWhereItIsWhenRowsAboveItGo)
{
    TreeNode& a = add(nullptr, "a");
    for (int i = 0; i < 50; ++i)
        add(&a, "a" + QString::number(i));
    for (int i = 0; i < 100; ++i)
        add(nullptr, "b" + QString::number(i));
    show();
    a.setExpanded(true);
    nodes().Item("b70").EnsureVisible();
    const QString top = tree.indexAt(QPoint(0, 0)).data().toString();
    const QRect before = rowOf(nodes().Item(top));
    {
        TreeView::RedrawOff off(tree);
        for (int i = 10; i < 40; ++i)
            nodes().Remove(nodes().Item("a" + QString::number(i)));
        add(nullptr, "c");
    }
    EXPECT_EQ(tree.indexAt(QPoint(0, 0)).data().toString(), top);
    EXPECT_EQ(rowOf(nodes().Item(top)), before);
}

TEST_F(TreeViewTest, AReadAnewLevelKeepsTheScrollPosition)
{
    addPlaceholder(add(nullptr, "a"));
    fillOnExpand(100);
    show();
    TreeNode& a = nodes().Item("a");
    a.setExpanded(true);
    nodes().Item("a.60").EnsureVisible();
    const int value = tree.verticalScrollBar()->value();
    ASSERT_GT(value, 100);
    a.setExpanded(false);
    a.setExpanded(true);
    EXPECT_EQ(rows().size(), 101);
    EXPECT_EQ(tree.verticalScrollBar()->value(), value);
}

TEST_F(TreeViewTest, TheDropTargetLooksSelectedAndIsForgottenWithItsNode)
{
    addSmallTree();
    show();
    TreeNode& b = nodes().Item("b");
    // A row under the mouse is tinted: what counts is whether it has the selection's colour or not.
    const auto looksSelected = [&](const TreeNode& node) {
        const QImage picture = tree.viewport()->grab().toImage();
        const QColor seen = picture.pixelColor(tree.viewport()->width() - 5, rowOf(node).center().y());
        const auto distance = [&](QPalette::ColorRole role) {
            const QColor other = tree.palette().color(role);
            return std::abs(seen.red() - other.red()) + std::abs(seen.green() - other.green());
        };
        return distance(QPalette::Highlight) < distance(QPalette::Base);
    };
    TreeNode& a = nodes().Item("a");
    tree.setSelectedItem(&a);
    EXPECT_TRUE(looksSelected(a));
    EXPECT_FALSE(looksSelected(b));
    tree.setDropHighlight(&b);
    EXPECT_EQ(tree.DropHighlight(), &b);
    EXPECT_TRUE(looksSelected(b));
    EXPECT_FALSE(looksSelected(a));
    EXPECT_EQ(selected(), "a");
    nodes().Remove(b);
    EXPECT_EQ(tree.DropHighlight(), nullptr);
    EXPECT_TRUE(looksSelected(a));
}

} // namespace
