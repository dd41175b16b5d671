#include "MousePointer.h"

#include <QCursor>
#include <QGuiApplication>

#include <gtest/gtest.h>

namespace
{

/// What shows over all windows.
bool waitShows()
{
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::WaitCursor;
}

class MousePointer : public testing::Test
{
protected:
    void TearDown() override
    {
        mousepointer::set(mousepointer::Default);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
};

} // namespace

TEST_F(MousePointer, TheWaitPointerShowsOverAllWindows)
{
    EXPECT_EQ(mousepointer::current(), 0);
    EXPECT_FALSE(waitShows());
    mousepointer::set(mousepointer::Wait);
    EXPECT_EQ(mousepointer::current(), 11);
    EXPECT_TRUE(waitShows());
    mousepointer::set(mousepointer::Default);
    EXPECT_FALSE(waitShows());
}

TEST_F(MousePointer, SettingItTwiceNeedsOneReset)
{
    mousepointer::set(mousepointer::Wait);
    mousepointer::set(mousepointer::Wait);
    mousepointer::set(mousepointer::Default);
    EXPECT_FALSE(waitShows());
}

TEST_F(MousePointer, AnyOtherNumberIsKeptAndShowsTheWindowsOwnPointer)
{
    mousepointer::set(2);
    EXPECT_EQ(mousepointer::current(), 2);
    EXPECT_FALSE(waitShows());
}

TEST_F(MousePointer, ABoxSuspendsIt)
{
    mousepointer::set(mousepointer::Wait);
    {
        const mousepointer::Suspended outer;
        EXPECT_FALSE(waitShows());
        EXPECT_EQ(mousepointer::current(), 11);
        {
            const mousepointer::Suspended inner;
        }
        EXPECT_FALSE(waitShows());
    }
    EXPECT_TRUE(waitShows());
}

TEST_F(MousePointer, WhatIsSetWhileSuspendedShowsAfterwards)
{
    {
        const mousepointer::Suspended box;
        mousepointer::set(mousepointer::Wait);
        EXPECT_FALSE(waitShows());
    }
    EXPECT_TRUE(waitShows());
}

TEST_F(MousePointer, ADialogHasOneOfItsOwnAndItsCallersComesBack)
{
    mousepointer::set(mousepointer::Wait);
    {
        const mousepointer::OfDialog dialog;
        EXPECT_EQ(mousepointer::current(), mousepointer::Default);
        EXPECT_FALSE(waitShows());
        mousepointer::set(mousepointer::Wait);
        EXPECT_TRUE(waitShows());
        {
            const mousepointer::Suspended box;
            EXPECT_FALSE(waitShows());
        }
        EXPECT_TRUE(waitShows());
        mousepointer::set(mousepointer::Default);
        EXPECT_FALSE(waitShows());
    }
    EXPECT_EQ(mousepointer::current(), mousepointer::Wait);
    EXPECT_TRUE(waitShows());
}
