#include "DragHandlers.h"

#include "MainWindowFixture.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace
{

class Drag : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        drags::setHandlers({[this](TreeView* tree, const DragItem& source, const DragItem& target) {
                                log.append("over "_L1 + told(source) + " on "_L1 + told(target));
                                EXPECT_EQ(tree, &window->tvwExplorer());
                            },
                            [this](TreeView*, const DragItem& source, const DragItem& target) {
                                EXPECT_TRUE(window->isDragging());
                                log.append("drop "_L1 + told(source) + " on "_L1 + told(target));
                                return true;
                            }});
        start();
        expandTo(key({u"FI"_s}));
    }
    void TearDown() override
    {
        MainWindowTest::TearDown();
        drags::setHandlers({});
    }

    static QString told(const DragItem& item) { return item.NodeType + '/'_L1 + item.Keys.value(1); }
    void grab(const QString& nodeKey)
    {
        press(nodeKey);
        move(textPosition(nodeKey) + QPoint(QApplication::startDragDistance() + 1, 0), Qt::LeftButton);
    }
    QPoint emptySpace() const { return {20, window->tvwExplorer().viewport()->height() - 40}; }

    const QStringList payroll{u"FI"_s, u"fi=PAYROLL"_s};
    const QStringList empty{u"FI"_s, u"fi=EMPTY"_s};
    QStringList log;
};

} // namespace

TEST_F(Drag, ReportsWhatItIsOverAndWhereItIsDropped)
{
    grab(key(payroll));
    EXPECT_TRUE(window->isDragging());
    EXPECT_EQ(statusText(), u"BeginDrag"_s);
    EXPECT_EQ(window->tvwExplorer().DragIcon(), u"Drag File"_s);
    move(textPosition(key(empty)), Qt::LeftButton);
    EXPECT_EQ(statusText(), u"DragOver"_s);
    EXPECT_EQ(window->tvwExplorer().DropHighlight(), find(key(empty)));
    move(emptySpace(), Qt::LeftButton);
    EXPECT_EQ(window->tvwExplorer().DropHighlight(), nullptr);
    release(textPosition(key(empty)));
    EXPECT_EQ(statusText(), u"DragDrop"_s);
    // The place of the drop is judged too.
    EXPECT_EQ(log, (QStringList{u"over fi/PAYROLL on fi/EMPTY"_s, u"over fi/PAYROLL on /"_s,
                                u"over fi/PAYROLL on fi/EMPTY"_s, u"drop fi/PAYROLL on fi/EMPTY"_s}));
    EXPECT_FALSE(window->isDragging());
    EXPECT_EQ(window->tvwExplorer().DragIcon(), QString());
    EXPECT_EQ(window->tvwExplorer().DropHighlight(), nullptr);
}

TEST_F(Drag, TakesTheReleaseSoThatNoPaneComesUp)
{
    const QString pane = currentPane();
    grab(key(payroll));
    release(textPosition(key(empty)));
    EXPECT_EQ(currentPane(), pane);
    // A click is one again afterwards.
    click(key());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
}

TEST_F(Drag, EndsOnEscapeWithoutADrop)
{
    grab(key(payroll));
    move(textPosition(key(empty)), Qt::LeftButton);
    type(Qt::Key_Escape);
    EXPECT_FALSE(window->isDragging());
    EXPECT_EQ(window->tvwExplorer().DragIcon(), QString());
    // With the button still down nothing begins, and its release turns to no other pane.
    const QString pane = currentPane();
    move(textPosition(key(payroll)), Qt::LeftButton);
    move(textPosition(key(empty)), Qt::LeftButton);
    EXPECT_FALSE(window->isDragging());
    release(textPosition(key(empty)));
    EXPECT_EQ(currentPane(), pane);
    EXPECT_EQ(log, QStringList{u"over fi/PAYROLL on fi/EMPTY"_s});
}

TEST_F(Drag, EndsWhereItsNodeIsOpenedOrClosedMeanwhile)
{
    for (const bool opens : {true, false}) {
        grab(key(payroll));
        node(key(payroll)).setExpanded(opens);
        EXPECT_FALSE(window->isDragging());
        EXPECT_FALSE(window->tvwExplorer().IsDragging());
        release(textPosition(key(empty)));
    }
    EXPECT_EQ(log, QStringList());
}

TEST_F(Drag, EndsWithTheWindow)
{
    grab(key(payroll));
    window.reset();
    EXPECT_EQ(log, QStringList());
}

TEST_F(Drag, OfANodeThatHasGoneMeanwhileIsOneOfNothing)
{
    grab(key(payroll));
    window->nodes().Remove(window->nodes().Item(key(payroll)));
    move(textPosition(key(empty)), Qt::LeftButton);
    release(textPosition(key(empty)));
    EXPECT_EQ(log, (QStringList{u"over / on fi/EMPTY"_s, u"over / on fi/EMPTY"_s, u"drop / on fi/EMPTY"_s}));
}

TEST_F(Drag, BeginsOnlyWhereSomebodyTakesIt)
{
    drags::setHandlers({});
    grab(key(payroll));
    EXPECT_FALSE(window->tvwExplorer().IsDragging());
    release(textPosition(key(payroll)));
    EXPECT_EQ(log, QStringList());
}
