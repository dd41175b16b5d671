#include "UpDown.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace
{

class UpDownTest : public testing::Test
{
protected:
    UpDownTest()
    {
        auto* row = new QHBoxLayout(&window);
        row->addWidget(entry);
        row->addWidget(arrows);
        arrows->setRange(-5, 20);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    QString up(const QString& from) { return click("up", from); }
    QString down(const QString& from) { return click("down", from); }
    QString click(const char* arrow, const QString& from)
    {
        entry->setText(from);
        QTest::mouseClick(arrows->findChild<QWidget*>(arrow), Qt::LeftButton);
        return entry->text();
    }

    QWidget window;
    QLineEdit* entry = new QLineEdit(&window);
    UpDown* arrows = new UpDown(entry, &window);
};

} // namespace

TEST_F(UpDownTest, CountsByOne)
{
    EXPECT_EQ(up("7"), "8");
    EXPECT_EQ(down("7"), "6");
    EXPECT_EQ(down("0"), "-1");
}

TEST_F(UpDownTest, StaysWithinItsLimits)
{
    EXPECT_EQ(arrows->Min(), -5);
    EXPECT_EQ(arrows->Max(), 20);
    EXPECT_EQ(up("20"), "20");
    EXPECT_EQ(down("-5"), "-5");
    EXPECT_EQ(up("500"), "20");
    EXPECT_EQ(down("500"), "20");
    EXPECT_EQ(up("-500"), "-5");
    arrows->setRange(4, 4);
    EXPECT_EQ(up(""), "4");
    EXPECT_EQ(down("17"), "4");
}

TEST_F(UpDownTest, ReadsTheNumberThatTheTextBeginsWith)
{
    const std::vector<std::pair<const char*, const char*>> rows{
        {"", "1"}, {"abc", "1"}, {"3x", "4"}, {"2.9", "3"}, {"-2.9", "-1"}, {"1e1", "11"}, {"\u0663", "1"}};
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(up(QString::fromUtf8(text)), expected) << text;
}

TEST_F(UpDownTest, ANumberBeyondAllNumbersEndsAtTheLimit)
{
    EXPECT_EQ(up("1e999"), "20");
    EXPECT_EQ(down("-1e999"), "-5");
}

TEST_F(UpDownTest, TheKeysOfTheEntryDoTheSame)
{
    entry->setText("7");
    QTest::keyClick(entry, Qt::Key_Up);
    QTest::keyClick(entry, Qt::Key_Up);
    EXPECT_EQ(entry->text(), "9");
    QTest::keyClick(entry, Qt::Key_Down);
    EXPECT_EQ(entry->text(), "8");
    EXPECT_EQ(entry->selectedText(), "8");
}

TEST_F(UpDownTest, WhatIsLockedDoesNotCount)
{
    entry->setEnabled(false);
    EXPECT_EQ(up("7"), "7");
    entry->setEnabled(true);
    entry->setReadOnly(true);
    EXPECT_EQ(up("7"), "7");
    entry->setReadOnly(false);
    arrows->setEnabled(false);
    EXPECT_EQ(up("7"), "7");
}

TEST_F(UpDownTest, ArrowsDoNotTakeTheFocus)
{
    for (const char* arrow : {"up", "down"}) {
        EXPECT_EQ(arrows->findChild<QWidget*>(arrow)->focusPolicy(), Qt::NoFocus);
        EXPECT_FALSE(arrows->findChild<QWidget*>(arrow)->accessibleName().isEmpty());
    }
}
