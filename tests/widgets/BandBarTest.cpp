#include "BandBar.h"

#include "RuntimeError.h"

#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace
{

class BandBarTest : public testing::Test
{
protected:
    BandBarTest()
    {
        auto* column = new QVBoxLayout(&window);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        column->addWidget(bar);
        column->addStretch();
        for (int band = 1; band <= 3; ++band) {
            auto* toolBar = new ToolBar("tbr" + QString::number(band));
            for (int key = 0; key < 4; ++key)
                toolBar->Add(QString::number(key), "");
            EXPECT_EQ(bar->AddBand(toolBar), band);
        }
    }
    void show(int width)
    {
        window.resize(width, 400);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        QApplication::processEvents();
    }

    QWidget window;
    BandBar* bar = new BandBar("cbrMain");
};

TEST_F(BandBarTest, BandsAreNumberedFromOne)
{
    EXPECT_EQ(bar->objectName(), "cbrMain");
    EXPECT_EQ(bar->Bands(), 3);
    EXPECT_EQ(bar->Child(1)->objectName(), "tbr1");
    EXPECT_EQ(bar->Child(3)->objectName(), "tbr3");
    for (const int band : {0, 4, -1}) {
        try {
            bar->Child(band);
            FAIL() << "there is a band " << band;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), ErrorNumber::SubscriptOutOfRange);
        }
    }
}

TEST_F(BandBarTest, AHiddenBandTakesNoRoom)
{
    show(800);
    EXPECT_TRUE(bar->BandVisible(2));
    const int place = bar->Child(3)->x();
    const int second = bar->Child(2)->x();
    bar->setBandVisible(2, false);
    QApplication::processEvents();
    EXPECT_FALSE(bar->BandVisible(2));
    EXPECT_EQ(bar->Child(3)->x(), second);
    bar->setBandVisible(2, true);
    QApplication::processEvents();
    EXPECT_EQ(bar->Child(3)->x(), place);
}

TEST_F(BandBarTest, ABandIsVisibleOrNotBeforeTheWindowIsShown)
{
    bar->setBandVisible(2, false);
    EXPECT_FALSE(bar->BandVisible(2));
    bar->setBandVisible(2, true);
    EXPECT_TRUE(bar->BandVisible(2));
    bar->setBandVisible(3, false);
    show(800);
    EXPECT_TRUE(bar->Child(2)->isVisible());
    EXPECT_FALSE(bar->Child(3)->isVisible());
}

TEST_F(BandBarTest, BandsWrapWhenTheBarIsTooNarrow)
{
    show(800);
    const int one = bar->height();
    EXPECT_EQ(bar->Child(3)->y(), bar->Child(1)->y());
    show(bar->Child(1)->width() * 2 + 10);
    EXPECT_EQ(bar->height(), 2 * one);
    EXPECT_EQ(bar->Child(2)->y(), bar->Child(1)->y());
    EXPECT_EQ(bar->Child(3)->y(), bar->Child(1)->y() + one);
    EXPECT_EQ(bar->Child(3)->x(), bar->Child(1)->x());
    bar->setBandVisible(2, false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar->height() == one; }));
}

TEST_F(BandBarTest, ABandIsAsWideAsItIsToldButNeverNarrowerThanItsButtons)
{
    show(1200);
    const int natural = bar->Child(1)->width();
    bar->setBandWidth(1, 300);
    QApplication::processEvents();
    EXPECT_EQ(bar->Child(1)->width(), natural);
    bar->setBandWidth(1, (natural + 100) * 15);
    QApplication::processEvents();
    EXPECT_EQ(bar->Child(1)->width(), natural + 100);
    bar->setBandWidth(1, 300);
    QApplication::processEvents();
    EXPECT_EQ(bar->Child(1)->width(), natural);
}

} // namespace
