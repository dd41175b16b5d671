#include "TreeFixture.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

namespace
{

class TreeDragTest : public TreeFixture
{
protected:
    TreeDragTest()
    {
        for (int i = 0; i < 100; ++i)
            add(nullptr, QString::number(i));
        QObject::connect(&tree, &TreeView::MouseMove, &tree, [this](Qt::MouseButtons buttons, QPoint place) {
            if (buttons == Qt::LeftButton && tree.HitTest(place) == tree.SelectedItem())
                tree.BeginDrag();
        });
        QObject::connect(&tree, &TreeView::DragOver, &tree, [this](QPoint place) {
            tree.setDropHighlight(tree.HitTest(place));
            log << "over " + highlight();
        });
        QObject::connect(&tree, &TreeView::DragDrop, &tree,
                         [this](QPoint) { log << "drop on " + highlight() + (tree.IsDragging() ? " still" : ""); });
        QObject::connect(&tree, &TreeView::DragCancel, &tree, [this] { log << "cancel"; });
        QObject::connect(&tree, &TreeView::MouseUp, &tree, [this] { log << "up"; });
    }

    QString highlight() const { return tree.DropHighlight() ? tree.DropHighlight()->Key() : QString("nothing"); }
    void press(const char* key) { QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, nameOf(nodes().Item(key))); }
    void release(QPoint place) { QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, place); }
    void moveTo(QPoint place, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        QMouseEvent move(QEvent::MouseMove, place, tree.viewport()->mapToGlobal(place), Qt::NoButton, buttons, {});
        QApplication::sendEvent(tree.viewport(), &move);
    }
    /// Takes hold of node "3" and moves to "5".
    void drag()
    {
        press("3");
        moveTo(nameOf(nodes().Item("4")));
        moveTo(nameOf(nodes().Item("5")));
        EXPECT_TRUE(tree.IsDragging());
        log.clear();
    }
};

TEST_F(TreeDragTest, ADragReportsWhereItIsAndEndsWithADropInsteadOfARelease)
{
    show();
    press("3");
    moveTo(nameOf(nodes().Item("3")) + QPoint(1, 0));
    EXPECT_FALSE(tree.IsDragging());
    moveTo(nameOf(nodes().Item("4")));
    EXPECT_TRUE(tree.IsDragging());
    moveTo(nameOf(nodes().Item("5")));
    moveTo(nameOf(nodes().Item("6")));
    release(nameOf(nodes().Item("6")));
    EXPECT_EQ(log, QStringList({"over 5", "over 6", "drop on 6"}));
    EXPECT_FALSE(tree.IsDragging());
    EXPECT_EQ(tree.DropHighlight(), nullptr);
    EXPECT_EQ(tree.SelectedItem()->Key(), "3");
    click(nameOf(nodes().Item("7")));
    EXPECT_EQ(log.back(), "up");
}

TEST_F(TreeDragTest, EscapeEndsItAndTheButtonIsNobodysUntilItIsUp)
{
    show();
    drag();
    tree.setDropHighlight(nodes().find("5"));
    type(Qt::Key_Escape);
    EXPECT_FALSE(tree.IsDragging());
    EXPECT_EQ(tree.DropHighlight(), nullptr);
    // Back over the node that was dragged, no drag begins anew.
    moveTo(nameOf(nodes().Item("3")));
    moveTo(nameOf(nodes().Item("4")));
    EXPECT_FALSE(tree.IsDragging());
    release(nameOf(nodes().Item("5")));
    EXPECT_EQ(log, QStringList({"cancel"}));
    click(nameOf(nodes().Item("7")));
    EXPECT_EQ(log, QStringList({"cancel", "up"}));
    drag();
}

TEST_F(TreeDragTest, AnotherButtonAfterAnEndIsReportedAndTheHeldOneIsNot)
{
    show();
    drag();
    const QPoint place = nameOf(nodes().Item("7"));
    QTest::mousePress(tree.viewport(), Qt::RightButton, {}, place);
    QTest::mouseRelease(tree.viewport(), Qt::RightButton, {}, place);
    EXPECT_EQ(log, QStringList({"cancel", "up"}));
    release(place);
    EXPECT_EQ(log, QStringList({"cancel", "up"}));
}

TEST_F(TreeDragTest, ALostReleaseIsForgottenWithTheNextMove)
{
    show();
    drag();
    type(Qt::Key_Escape);
    moveTo(nameOf(nodes().Item("3")), Qt::NoButton);
    release(nameOf(nodes().Item("3")));
    EXPECT_EQ(log, QStringList({"cancel", "up"}));
}

TEST_F(TreeDragTest, KeysButEscapeDoNothingWhileItLasts)
{
    show();
    add(&nodes().Item("3"), "3a");
    add(&nodes().Item("3"), "3b");
    drag();
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Plus, Qt::Key_Down, Qt::Key_End, Qt::Key_7, Qt::Key_Return}) {
        type(key);
        EXPECT_FALSE(nodes().Item("3").Expanded()) << key;
        EXPECT_EQ(tree.SelectedItem()->Key(), "3") << key;
    }
    EXPECT_TRUE(tree.IsDragging());
    EXPECT_EQ(log, QStringList());
    release(nameOf(nodes().Item("5")));
    EXPECT_EQ(log.back(), "drop on 5");
    type(Qt::Key_Right);
    EXPECT_TRUE(nodes().Item("3").Expanded());
}

TEST_F(TreeDragTest, AReleaseOutsideOrALostOneEndsIt)
{
    show();
    drag();
    release(QPoint(-20, 40));
    EXPECT_EQ(log, QStringList({"cancel"}));
    drag();
    moveTo(QPoint(40, 40), Qt::NoButton);
    EXPECT_EQ(log, QStringList({"cancel"}));
}

TEST_F(TreeDragTest, AnotherPressOrHidingTheTreeEndsIt)
{
    show();
    drag();
    QTest::mousePress(tree.viewport(), Qt::RightButton, {}, nameOf(nodes().Item("7")));
    EXPECT_EQ(log, QStringList({"cancel"}));
    drag();
    tree.hide();
    EXPECT_EQ(log, QStringList({"cancel"}));
}

TEST_F(TreeDragTest, ThePictureIsThePointerForAsLongAsTheDragLasts)
{
    show();
    EXPECT_EQ(tree.DragIcon(), "");
    tree.setDragIcon("Drag File");
    EXPECT_EQ(tree.viewport()->cursor().shape(), Qt::ArrowCursor);
    drag();
    EXPECT_EQ(tree.DragIcon(), "Drag File");
    ASSERT_EQ(tree.viewport()->cursor().shape(), Qt::BitmapCursor);
    // It points with its tip, and leaves what it points at in sight.
    EXPECT_EQ(tree.viewport()->cursor().hotSpot(), QPoint(0, 0));
    const QImage pointer = tree.viewport()->cursor().pixmap().toImage();
    EXPECT_EQ(pointer.pixelColor(pointer.width() - 4, 2).alpha(), 0);
    EXPECT_EQ(pointer.pixelColor(2, pointer.height() - 4).alpha(), 0);
    EXPECT_EQ(pointer.pixelColor(pointer.width() / 2, pointer.height() / 2).alpha(), 255);
    const qint64 file = tree.viewport()->cursor().pixmap().cacheKey();
    tree.setDragIcon("No Drop");
    EXPECT_NE(tree.viewport()->cursor().pixmap().cacheKey(), file);
    tree.setDragIcon({});
    EXPECT_EQ(tree.viewport()->cursor().shape(), Qt::ArrowCursor);
    tree.setDragIcon("No Drop");
    tree.CancelDrag();
    EXPECT_EQ(tree.viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(TreeDragTest, NearAnEdgeTheTreeScrollsAndReportsWhatComesUnderThePointer)
{
    show();
    drag();
    moveTo(QPoint(40, tree.viewport()->height() - 3));
    EXPECT_TRUE(QTest::qWaitFor([&] { return tree.verticalScrollBar()->value() > 100; }));
    EXPECT_GT(log.size(), 3);
    EXPECT_NE(log.back(), log.front());
    moveTo(QPoint(40, 3));
    EXPECT_TRUE(QTest::qWaitFor([&] { return tree.verticalScrollBar()->value() == 0; }));
    EXPECT_EQ(log.back(), "over 0");
    release(QPoint(40, 3));
    EXPECT_EQ(log.back(), "drop on 0");
}

TEST_F(TreeDragTest, TheWheelReportsWhatComesUnderThePointer)
{
    show();
    drag();
    const QPoint place = nameOf(nodes().Item("5"));
    QWheelEvent wheel(place, tree.viewport()->mapToGlobal(place), {}, QPoint(0, -120), Qt::LeftButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(tree.viewport(), &wheel);
    ASSERT_GT(tree.verticalScrollBar()->value(), 0);
    const TreeNode* under = tree.HitTest(place);
    ASSERT_NE(under, nodes().find("5"));
    EXPECT_EQ(tree.DropHighlight(), under);
    ASSERT_FALSE(log.isEmpty());
    EXPECT_EQ(log.back(), "over " + under->Key());

    // Without a drag there is nobody to tell.
    tree.CancelDrag();
    log.clear();
    QApplication::sendEvent(tree.viewport(), &wheel);
    EXPECT_EQ(log, QStringList());
}

TEST_F(TreeDragTest, TheWheelBeforeTheFirstMoveReportsThePlaceOfThePress)
{
    show();
    drag();
    release(nameOf(nodes().Item("5")));
    press("3");
    const QPoint place = nameOf(nodes().Item("3"));
    moveTo(place + QPoint(QApplication::startDragDistance() + 1, 0));
    ASSERT_TRUE(tree.IsDragging());
    log.clear();
    tree.verticalScrollBar()->setValue(tree.verticalScrollBar()->value() +
                                       tree.visualRect(tree.indexAt(place)).height());
    EXPECT_EQ(log, QStringList({"over 4"}));
}

TEST_F(TreeDragTest, TheMenuKeyAsksForNoMenuWhileItLasts)
{
    show();
    QObject::connect(&tree, &TreeView::ContextKey, &tree, [this] { log << "menu"; });
    drag();
    const auto menuKey = [this] {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(tree.viewport(), &event);
        type(Qt::Key_Menu);
    };
    menuKey();
    EXPECT_TRUE(tree.IsDragging());
    EXPECT_EQ(log, QStringList());
    tree.CancelDrag();
    log.clear();
    menuKey();
    EXPECT_EQ(log, QStringList({"menu"}));
}

TEST_F(TreeDragTest, TheDropMayEmptyTheTree)
{
    show();
    QObject::connect(&tree, &TreeView::DragDrop, &tree, [this] { nodes().Clear(); });
    drag();
    release(nameOf(nodes().Item("5")));
    EXPECT_EQ(nodes().Count(), 0);
    EXPECT_EQ(tree.DropHighlight(), nullptr);
}

} // namespace
