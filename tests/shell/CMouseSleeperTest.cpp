#include "CMouseSleeper.h"

#include "MousePointer.h"

#include <gtest/gtest.h>

class MouseSleeper : public testing::Test
{
protected:
    void TearDown() override { mousepointer::set(mousepointer::Default); }
};

TEST_F(MouseSleeper, ShowsTheWaitPointerForAsLongAsItLives)
{
    {
        const CMouseSleeper sleeper;
        EXPECT_EQ(mousepointer::current(), mousepointer::Wait);
    }
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
}

TEST_F(MouseSleeper, PutsBackTheFormerPointerAndNotADefault)
{
    constexpr int cross = 2;
    mousepointer::set(cross);
    {
        const CMouseSleeper outer;
        {
            const CMouseSleeper inner;
        }
        EXPECT_EQ(mousepointer::current(), mousepointer::Wait);
    }
    EXPECT_EQ(mousepointer::current(), cross);
}

TEST_F(MouseSleeper, LeavesAPointerAloneThatSomeoneElseHasSet)
{
    constexpr int cross = 2;
    {
        const CMouseSleeper sleeper;
        mousepointer::set(cross);
    }
    EXPECT_EQ(mousepointer::current(), cross);
}

TEST_F(MouseSleeper, EndsOnEveryPathOut)
{
    try {
        const CMouseSleeper sleeper;
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
}
