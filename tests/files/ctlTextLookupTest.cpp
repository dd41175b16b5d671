#include "ctlTextLookup.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{

class TextLookup : public testing::Test
{
protected:
    TextLookup()
    {
        control.resize(120, 24);
        control.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&control));
    }

    ctlTextLookup control{u"ctlLUCell"_s};
};

} // namespace

TEST_F(TextLookup, ThePropertiesAreThoseOfItsParts)
{
    control.setText(u"wages"_s);
    EXPECT_EQ(control.txt()->text(), u"wages"_s);
    EXPECT_EQ(control.Text(), u"wages"_s);
    control.setTextEnabled(false);
    EXPECT_FALSE(control.txt()->isEnabled());
    EXPECT_FALSE(control.TextEnabled());
    control.setTextEnabled(true);
    control.setButtonEnabled(false);
    EXPECT_FALSE(control.cmd()->isEnabled());
    EXPECT_FALSE(control.ButtonEnabled());
    control.setLocked(true);
    EXPECT_TRUE(control.Locked());
    EXPECT_TRUE(control.txt()->isReadOnly());
    control.setCaption(u"?"_s);
    EXPECT_EQ(control.cmd()->text(), u"?"_s);
    EXPECT_EQ(control.Caption(), u"?"_s);
    EXPECT_EQ(control.Appearance(), 1);
    control.setAppearance(0);
    EXPECT_EQ(control.Appearance(), 0);
    control.setBackColor(Qt::yellow);
    EXPECT_EQ(control.BackColor(), QColor(Qt::yellow));
    control.setForeColor(Qt::red);
    EXPECT_EQ(control.ForeColor(), QColor(Qt::red));
    EXPECT_EQ(control.MaxLength(), 0);
    control.setMaxLength(3);
    EXPECT_EQ(control.MaxLength(), 3);
    EXPECT_EQ(control.Text(), u"wag"_s);
    QFont font = control.Font();
    font.setBold(true);
    control.setFont(font);
    EXPECT_TRUE(control.txt()->font().bold());
}

TEST_F(TextLookup, TheSelectionIsThatOfTheText)
{
    control.setText(u"wages"_s);
    control.setSelStart(1);
    EXPECT_EQ(control.SelStart(), 1);
    EXPECT_EQ(control.SelLength(), 0);
    control.setSelLength(3);
    EXPECT_EQ(control.txt()->selectedText(), u"age"_s);
    EXPECT_EQ(control.SelStart(), 1);
    EXPECT_EQ(control.SelLength(), 3);
}

TEST_F(TextLookup, TheOwnerHearsOfTextKeysAndTheButton)
{
    QSignalSpy changes(&control, &ctlTextLookup::Change);
    QSignalSpy clicks(&control, &ctlTextLookup::Click);
    QString keys;
    QObject::connect(&control, &ctlTextLookup::KeyPress, &control, [&](QKeyEvent* event) {
        keys += event->text();
        event->setAccepted(event->text() == u"x"_s);
    });
    QTest::keyClicks(control.txt(), u"axb"_s);
    EXPECT_EQ(keys, u"axb"_s);
    EXPECT_EQ(control.Text(), u"ab"_s);
    EXPECT_EQ(changes.count(), 2);
    QTest::mouseClick(control.cmd(), Qt::LeftButton);
    QTest::keyClick(control.txt(), Qt::Key_F4);
    QTest::keyClick(control.txt(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(clicks.count(), 3);
    control.setButtonEnabled(false);
    QTest::keyClick(control.txt(), Qt::Key_F4);
    EXPECT_EQ(clicks.count(), 3);
}

TEST_F(TextLookup, TextAndButtonShareTheRoom)
{
    for (const QSize size : {QSize(120, 24), QSize(300, 30), QSize(30, 24)}) {
        control.resize(size);
        EXPECT_TRUE(control.rect().contains(control.txt()->geometry()));
        EXPECT_TRUE(control.rect().contains(control.cmd()->geometry()));
        EXPECT_EQ(control.txt()->geometry().right() + 1, control.cmd()->geometry().left());
    }
}
