#include "Events.h"

#include <QCursor>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

using events::Input;
using events::LongRoutine;

namespace
{

/// A window that counts its paintings.
class Painted : public QWidget
{
public:
    int count = 0;

protected:
    void paintEvent(QPaintEvent*) override { ++count; }
};

/// A window that counts the moves of the mouse over it.
class Watched : public QWidget
{
public:
    Watched() { setMouseTracking(true); }
    int moves = 0;

protected:
    void mouseMoveEvent(QMouseEvent*) override { ++moves; }
};

class Events : public testing::Test
{
protected:
    void post(int& counter)
    {
        QTimer::singleShot(0, &m_context, [&counter] { ++counter; });
    }

private:
    QObject m_context;
};

} // namespace

TEST_F(Events, OutsideOfALongRoutineEveryYieldServesTheQueue)
{
    int served = 0;
    for (int i = 1; i <= 5; ++i) {
        post(served);
        events::yield();
        EXPECT_EQ(served, i);
        EXPECT_TRUE(events::frameDue());
    }
}

TEST_F(Events, InsideALongRoutineYieldsKeepAFramesPace)
{
    int served = 0;
    const LongRoutine routine;
    QElapsedTimer clock;
    clock.start();
    post(served);
    events::yield();
    EXPECT_EQ(served, 1) << "The first yield serves at once";

    post(served);
    while (served == 1)
        events::yield();
    EXPECT_GE(clock.elapsed(), 33);
}

TEST_F(Events, RepaintsKeepAFramesPaceOfTheirOwn)
{
    const LongRoutine routine;
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(events::frameDue());
    EXPECT_FALSE(events::frameDue());
    int served = 0;
    post(served);
    events::yield();
    EXPECT_EQ(served, 1) << "A repaint does not use up a yield";
    while (!events::frameDue()) {
    }
    EXPECT_GE(clock.elapsed(), 33);
    EXPECT_FALSE(events::frameDue());
}

TEST_F(Events, ANestedRoutineDoesNotStartAFrame)
{
    const LongRoutine outer;
    EXPECT_TRUE(events::frameDue());
    {
        const LongRoutine inner;
        EXPECT_FALSE(events::frameDue());
    }
    int served = 0;
    events::yield();
    post(served);
    events::yield();
    EXPECT_EQ(served, 0) << "The end of an inner scope leaves the pace to the outer one";
}

TEST_F(Events, WithoutAFramesTimeEachYieldAndEachRepaintIsDue)
{
    const int former = events::setFrame(0);
    EXPECT_EQ(former, 33);
    {
        const LongRoutine routine;
        int served = 0;
        for (int i = 1; i <= 5; ++i) {
            post(served);
            events::yield();
            EXPECT_EQ(served, i);
            EXPECT_TRUE(events::frameDue());
        }
    }
    EXPECT_EQ(events::setFrame(former), 0);
}

TEST_F(Events, EachRoutineBeginsWithAFrame)
{
    for (int i = 0; i < 3; ++i) {
        const LongRoutine routine;
        EXPECT_TRUE(events::frameDue());
    }
}

TEST_F(Events, TheEndOfTheOutermostRoutineServesTheQueue)
{
    int served = 0;
    {
        const LongRoutine outer;
        events::yield();
        {
            const LongRoutine inner;
            post(served);
        }
        EXPECT_EQ(served, 0);
    }
    EXPECT_EQ(served, 1);
}

TEST_F(Events, ALongRoutineStillPaints)
{
    Painted window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const int before = window.count;
    const LongRoutine routine;
    window.update();
    while (window.count == before)
        events::yield();
    EXPECT_GT(window.count, before);
}

/// A window over which the user moves the mouse. Setting the pointer's place puts the move into the queue of the window
/// system, where QTest's own input is delivered at once.
class UserInput : public Events
{
protected:
    void SetUp() override
    {
        m_window.setGeometry(100, 100, 200, 200);
        m_window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_window));
        QCursor::setPos(m_window.mapToGlobal(QPoint(10, 10)));
        ASSERT_TRUE(QTest::qWaitFor([this] { return moves() > 0; }));
        m_window.moves = 0;
    }

    void moveMouse() { QCursor::setPos(QCursor::pos() + QPoint(20, 20)); }
    int moves() const { return m_window.moves; }

    /// Yields for longer than a frame, so that at least two yields serve the queue.
    static void yieldOverAFrame()
    {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 50)
            events::yield();
    }

private:
    Watched m_window;
};

TEST_F(UserInput, RunsAtAYieldOutsideOfALongRoutine)
{
    moveMouse();
    EXPECT_EQ(moves(), 0);
    events::yield();
    EXPECT_GT(moves(), 0);
}

TEST_F(UserInput, RunsWhenControlIsBackInTheEventLoopIfALongRoutineHoldsIt)
{
    {
        const LongRoutine routine;
        moveMouse();
        yieldOverAFrame();
        EXPECT_EQ(moves(), 0);
    }
    EXPECT_EQ(moves(), 0) << "No command starts in the tail of another";
    EXPECT_TRUE(QTest::qWaitFor([this] { return moves() > 0; }));
}

TEST_F(UserInput, RunsAtAYieldOfALongRoutineThatTakesIt)
{
    const LongRoutine routine(Input::Taken);
    moveMouse();
    yieldOverAFrame();
    EXPECT_GT(moves(), 0);
}

TEST_F(UserInput, IsHeldForAllByOneScopeThatHoldsIt)
{
    const LongRoutine taking(Input::Taken);
    {
        const LongRoutine holding(Input::Held);
        moveMouse();
        yieldOverAFrame();
        EXPECT_EQ(moves(), 0);
    }
    yieldOverAFrame();
    EXPECT_GT(moves(), 0);
}
