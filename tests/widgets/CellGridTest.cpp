#include "CellGrid.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace
{

class CellGridTest : public testing::Test
{
protected:
    CellGridTest()
    {
        grid.resize(420, 240);
        fill(3);
        grid.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&grid));
        grid.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&grid));
        grid.setFocus();
    }

    void fill(int rows)
    {
        CellGrid::Filling filling(grid, u"<Name|>Size|<Remarks"_s);
        for (int row = 0; row < rows; ++row) {
            filling.add(QString(u"N"_s + QString::number(row)));
            filling.add(QString::number(10 * row));
            filling.add(u"");
        }
    }

    QPoint centre(int row, int column) { return grid.visualRect(grid.model()->index(row, column)).center(); }

    CellGrid grid{u"grd"_s};
};

} // namespace

TEST_F(CellGridTest, HoldsWhatItWasFilledWith)
{
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.Cols(), 3);
    EXPECT_EQ(grid.Heading(1), u"Size"_s);
    EXPECT_EQ(grid.TextMatrix(2, 0), u"N2"_s);
    EXPECT_EQ(grid.TextMatrix(2, 2), QString());
    EXPECT_THROW(static_cast<void>(grid.TextMatrix(3, 0)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(grid.TextMatrix(0, -1)), std::out_of_range);
}

TEST_F(CellGridTest, NumbersStandAtTheRightUnderTheirHeading)
{
    const QAbstractItemModel& model = *grid.model();
    EXPECT_TRUE(model.index(0, 1).data(Qt::TextAlignmentRole).value<Qt::Alignment>().testFlag(Qt::AlignRight));
    EXPECT_TRUE(
        model.headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>().testFlag(Qt::AlignRight));
    EXPECT_TRUE(model.index(0, 0).data(Qt::TextAlignmentRole).value<Qt::Alignment>().testFlag(Qt::AlignLeft));
}

TEST_F(CellGridTest, ACellTakesAnotherTextAndTheOthersKeepTheirs)
{
    grid.setTextMatrix(1, 0, u"O'Hara 😀\nsecond line"_s);
    EXPECT_EQ(grid.TextMatrix(1, 0), u"O'Hara 😀\nsecond line"_s);
    EXPECT_EQ(grid.TextMatrix(0, 0), u"N0"_s);
    EXPECT_EQ(grid.TextMatrix(1, 1), u"10"_s);
    grid.AddItem({u"last"_s});
    EXPECT_EQ(grid.TextMatrix(3, 0), u"last"_s);
    EXPECT_EQ(grid.TextMatrix(3, 2), QString());
}

TEST_F(CellGridTest, ARowThatWasNotCompletedIsDropped)
{
    {
        CellGrid::Filling filling(grid, u"<A|<B"_s);
        for (const QStringView text : {u"1", u"2", u"3"})
            filling.add(text);
    }
    EXPECT_EQ(grid.Rows(), 1);
    grid.Clear();
    EXPECT_EQ(grid.Rows(), 0);
    EXPECT_EQ(grid.Cols(), 0);
}

TEST_F(CellGridTest, HeadingsThatComeOneByOneMayHoldAnyCharacter)
{
    {
        CellGrid::Filling filling(grid, QStringList{u"<A|B"_s, u">"_s, u"><C"_s});
        for (const QStringView text : {u"1", u"2", u"3"})
            filling.add(text);
    }
    EXPECT_EQ(grid.Cols(), 3);
    EXPECT_EQ(grid.Heading(0), u"A|B"_s);
    EXPECT_EQ(grid.Heading(1), QString());
    EXPECT_EQ(grid.Heading(2), u"<C"_s);
    EXPECT_EQ(grid.TextMatrix(0, 2), u"3"_s);
}

TEST_F(CellGridTest, AnotherCurrentCellIsAnnouncedOnceItIsInForce)
{
    grid.select(1, 2);
    QStringList announced;
    QObject::connect(&grid, &CellGrid::RowColChange, &grid,
                     [&] { announced.append(QString::number(grid.Row()) + ','_L1 + QString::number(grid.Col())); });
    grid.select(0, 0);
    grid.select(0, 0);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, centre(2, 1));
    QTest::keyClick(&grid, Qt::Key_Up);
    QTest::keyClick(&grid, Qt::Key_Tab);
    grid.select(7, 7);
    EXPECT_EQ(announced, (QStringList{u"0,0"_s, u"2,1"_s, u"1,1"_s, u"1,2"_s}));
}

TEST_F(CellGridTest, AHandlerMaySendTheCurrentCellBack)
{
    grid.select(0, 0);
    QObject::connect(&grid, &CellGrid::RowColChange, &grid, [&] { grid.select(0, 0); });
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, centre(2, 1));
    EXPECT_EQ(grid.Row(), 0);
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(grid.Row(), 0);
}

TEST_F(CellGridTest, ADragOverCellsMovesNothing)
{
    grid.select(0, 0);
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, centre(1, 0));
    QMouseEvent move(QEvent::MouseMove, centre(2, 1), grid.viewport()->mapToGlobal(centre(2, 1)), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(grid.viewport(), &move);
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, {}, centre(2, 1));
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), 0);
}

TEST_F(CellGridTest, KeysThatDoNotMoveAreHandedOver)
{
    QString keys;
    QObject::connect(&grid, &CellGrid::KeyPress, &grid, [&](QKeyEvent* event) { keys += event->text(); });
    grid.select(0, 0);
    QTest::keyClicks(&grid, u"aN2"_s);
    EXPECT_EQ(keys, u"aN2"_s);
    EXPECT_EQ(grid.Row(), 0);
}

TEST_F(CellGridTest, TheWayOutAtTheEndIsOfferedFirst)
{
    bool taken = true;
    int offered = 0;
    QObject::connect(&grid, &CellGrid::KeyPress, &grid, [&](QKeyEvent* event) {
        ++offered;
        event->setAccepted(taken);
    });
    grid.select(2, 1);
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(offered, 1);
    QTest::keyClick(&grid, Qt::Key_Tab);
    EXPECT_EQ(offered, 1);
    QTest::keyClick(&grid, Qt::Key_Tab);
    EXPECT_EQ(offered, 2);
    EXPECT_EQ(grid.Row(), 2);
    taken = false;
    QTest::keyClick(&grid, Qt::Key_Tab);
    EXPECT_EQ(grid.Row(), 0);
}

TEST_F(CellGridTest, ADoubleClickAndAClickBesideTheCellsAreTold)
{
    QSignalSpy doubled(&grid, &CellGrid::DblClick);
    QSignalSpy beside(&grid, &CellGrid::ClickBeside);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, centre(1, 1));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, centre(1, 1));
    EXPECT_EQ(doubled.count(), 1);
    EXPECT_EQ(beside.count(), 0);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(20, grid.viewport()->height() - 5));
    EXPECT_EQ(beside.count(), 1);
    EXPECT_EQ(grid.Row(), 1);
}

TEST_F(CellGridTest, AnEditorStaysOverItsCell)
{
    fill(200);
    grid.select(50, 1);
    QLineEdit editor(grid.viewport());
    grid.layOver(&editor);
    editor.show();
    const auto cell = [&] { return grid.visualRect(grid.model()->index(50, 1)); };
    const auto overCell = [&] { return cell().adjusted(0, 0, 2, 0); };
    EXPECT_EQ(editor.geometry(), overCell());
    grid.setColumnWidth(0, 170);
    EXPECT_EQ(editor.geometry(), overCell());
    grid.verticalScrollBar()->setValue(48);
    EXPECT_EQ(editor.geometry(), overCell());
    grid.verticalScrollBar()->setValue(150);
    grid.showEditor();
    EXPECT_EQ(editor.geometry(), overCell());
    EXPECT_TRUE(grid.viewport()->rect().contains(cell()));
}

TEST_F(CellGridTest, ColumnsTakeTheWidthOfWhatShowsAndOfWhatMayCome)
{
    fill(20);
    grid.setTextMatrix(0, 0, u"a text that is rather wide"_s);
    grid.setRoom(1, {u"Yes - Read/Write"_s}, 30);
    grid.sizeColumns();
    EXPECT_GE(grid.columnWidth(0), grid.fontMetrics().horizontalAdvance(u"a text that is rather wide"_s));
    EXPECT_GE(grid.columnWidth(1), grid.fontMetrics().horizontalAdvance(u"Yes - Read/Write"_s) + 30);
    grid.setTextMatrix(0, 0, QString(4000, u'x'));
    grid.sizeColumns();
    EXPECT_LT(grid.columnWidth(0), 400);
}

TEST_F(CellGridTest, AVeryLongTextIsKeptWholeAndShownByItsBeginning)
{
    const auto toolTip = [&](int row, int column) {
        const QPoint place = centre(row, column);
        QHelpEvent help(QEvent::ToolTip, place, grid.viewport()->mapToGlobal(place));
        QApplication::sendEvent(grid.viewport(), &help);
        return QToolTip::text();
    };
    const QString text = u"begins"_s + QString(1'000'000 - 6, u'x');
    grid.setTextMatrix(1, 0, text);
    // A character of two units that the limit falls into.
    grid.setTextMatrix(2, 0, QString(2047, u'x') + u"😀"_s + QString(9, u'x'));
    grid.sizeColumns();
    EXPECT_EQ(grid.TextMatrix(1, 0), text);
    EXPECT_EQ(grid.model()->index(1, 0).data().toString(), text);
    grid.select(1, 0);
    QTest::keySequence(&grid, QKeySequence::Copy);
    EXPECT_EQ(QApplication::clipboard()->text(), text);

    EXPECT_EQ(toolTip(0, 0), QString());
    const QString shown = toolTip(1, 0);
    EXPECT_TRUE(shown.contains(u"beginsxxx"_s));
    EXPECT_TRUE(shown.contains(u"x…"_s));
    EXPECT_LE(shown.size(), 2100);
    EXPECT_EQ(toolTip(2, 0).count(u'x'), 2047);
    EXPECT_TRUE(toolTip(2, 0).contains(u"x…"_s));
}

TEST_F(CellGridTest, AMarkStandsBeforeTheLastRowAlone)
{
    EXPECT_FALSE(grid.verticalHeader()->isVisible());
    grid.setNewRowMark(u"*"_s);
    EXPECT_TRUE(grid.verticalHeader()->isVisible());
    EXPECT_EQ(grid.model()->headerData(2, Qt::Vertical).toString(), u"*"_s);
    EXPECT_EQ(grid.model()->headerData(1, Qt::Vertical).toString(), QString());
    grid.AddItem({});
    EXPECT_EQ(grid.model()->headerData(3, Qt::Vertical).toString(), u"*"_s);
    EXPECT_EQ(grid.model()->headerData(2, Qt::Vertical).toString(), QString());
}
