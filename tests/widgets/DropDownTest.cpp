#include "DropDown.h"

#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <vector>

namespace
{

class DropDownTest : public testing::Test
{
protected:
    DropDownTest()
    {
        QObject::connect(&list, &DropDown::Change, &list, [this] { changes.append(list.currentText()); });
        list.refill({"FIXED", "VARIABLE", "VAST"});
    }

    QStringList taken()
    {
        const QStringList all = changes;
        changes.clear();
        return all;
    }

    DropDown list;
    QStringList changes;
};

} // namespace

TEST_F(DropDownTest, BeginsWithoutASelection)
{
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(DropDownTest, EveryOtherSelectionIsOneChangeWhoeverMakesIt)
{
    list.select("VAST");
    EXPECT_EQ(taken(), QStringList{"VAST"});
    list.select("VAST");
    EXPECT_EQ(taken(), QStringList());
    QTest::keyClick(&list, Qt::Key_Up);
    EXPECT_EQ(taken(), QStringList{"VARIABLE"});
    list.setCurrentIndex(-1);
    EXPECT_EQ(taken(), QStringList{""});
}

TEST_F(DropDownTest, AListWithoutASelectionDoesNotChangeByLosingIt)
{
    list.setCurrentIndex(-1);
    list.select("unknown");
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(DropDownTest, ATextIsFoundExactly)
{
    list.select("FIXED");
    list.select("fixed");
    EXPECT_EQ(list.currentIndex(), -1);
    list.select("VA");
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_EQ(taken(), (QStringList{"FIXED", ""}));
}

TEST_F(DropDownTest, FillingItAnewKeepsTheTextThatIsSelected)
{
    list.select("VAST");
    taken();
    list.refill({"VAST"});
    EXPECT_EQ(list.currentText(), "VAST");
    EXPECT_EQ(list.currentIndex(), 0);
    EXPECT_EQ(taken(), QStringList());
    // What was moved meanwhile is no change, what is chosen then is one.
    list.refill({"FIXED", "VAST"});
    list.select("FIXED");
    EXPECT_EQ(taken(), QStringList{"FIXED"});
}

TEST_F(DropDownTest, FillingItAnewWithoutTheSelectedTextIsAChange)
{
    list.select("VAST");
    taken();
    list.refill({"FIXED", "VARIABLE"});
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_EQ(taken(), QStringList{""});
    list.refill({});
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(DropDownTest, TheWheelLeavesTheChoiceAlone)
{
    list.select("VARIABLE");
    taken();
    for (const int turn : {-120, 120}) {
        QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, turn}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&list, &wheel);
        // What the list stands on may scroll by it.
        EXPECT_FALSE(wheel.isAccepted()) << turn;
    }
    EXPECT_EQ(list.currentText(), "VARIABLE");
    EXPECT_EQ(taken(), QStringList());
    EXPECT_EQ(list.focusPolicy(), Qt::StrongFocus);
}
