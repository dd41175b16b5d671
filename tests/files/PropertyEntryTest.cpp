#include "PropertyEntry.h"

#include "QtPrinting.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTest>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace
{

class PropertyEntryTest : public testing::Test
{
protected:
    PropertyEntryTest()
    {
        name.setColumn({u"FILE_NAME"_s, dao::dbText, 6});
        remarks.setColumn({u"REMARKS"_s, dao::dbText, 12});
    }

    template <class Entry>
    static void paste(Entry& entry, const QString& text)
    {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(&entry, Qt::Key_V, Qt::ControlModifier);
    }

    template <class Entry>
    static void compose(Entry& entry, const QString& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(&entry, &event);
    }

    template <class Entry>
    static void drop(Entry& entry, const QString& text)
    {
        QMimeData data;
        data.setText(text);
        const QPoint at = entry.rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&entry, &enter);
        QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&entry, &event);
    }

    PropertyEdit name;
    PropertyMemo remarks;
};

} // namespace

TEST_F(PropertyEntryTest, KeysPassTheFilterOfTheColumn)
{
    QTest::keyClicks(&name, u"a b.c;"_s);
    EXPECT_EQ(name.text(), u"A_BC"_s);
    QTest::keyClicks(&remarks, u"a b.c;'%"_s);
    EXPECT_EQ(remarks.text(), u"a b.c;'%"_s);
}

TEST_F(PropertyEntryTest, WithoutAColumnNothingIsFiltered)
{
    PropertyEdit plain;
    QTest::keyClicks(&plain, u"a b.c;defghi"_s);
    EXPECT_EQ(plain.text(), u"a b.c;defghi"_s);
}

TEST_F(PropertyEntryTest, AKeyReplacesWhatIsSelectedInAFullEntry)
{
    QTest::keyClicks(&name, u"abcdefg"_s);
    EXPECT_EQ(name.text(), u"ABCDEF"_s);
    name.setSelection(1, 2);
    QTest::keyClicks(&name, u"x"_s);
    EXPECT_EQ(name.text(), u"AXDEF"_s);
    EXPECT_EQ(name.cursorPosition(), 2);
}

TEST_F(PropertyEntryTest, EditingKeysWorkInAFullEntry)
{
    QTest::keyClicks(&name, u"abcdef"_s);
    QTest::keyClick(&name, Qt::Key_Backspace);
    QTest::keyClick(&name, Qt::Key_Home);
    QTest::keyClick(&name, Qt::Key_Delete);
    EXPECT_EQ(name.text(), u"BCDE"_s);
    QTest::keyClick(&name, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(name.selectedText(), u"BCDE"_s);
    QTest::keyClick(&name, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(name.text(), u"BCDE"_s);
}

TEST_F(PropertyEntryTest, WhatIsPastedIsOnlyCut)
{
    paste(name, u"o'h ü🚀x"_s);
    EXPECT_EQ(name.text(), u"o'h ü"_s);
    name.clear();
    paste(name, u"abcdef"_s);
    EXPECT_EQ(name.text(), u"abcdef"_s);
    name.setCursorPosition(2);
    paste(name, u"12"_s);
    EXPECT_EQ(name.text(), u"ab12cd"_s);
    EXPECT_EQ(name.cursorPosition(), 4);
    paste(remarks, u"one\ntwo\nthree"_s);
    EXPECT_EQ(remarks.text(), u"one\ntwo\nthre"_s);
}

TEST_F(PropertyEntryTest, WhatIsDroppedIsOnlyCut)
{
    name.show();
    drop(name, u"o'hara is long"_s);
    EXPECT_EQ(name.text(), u"o'hara"_s);
}

TEST_F(PropertyEntryTest, WhatIsComposedPassesTheFilterAsKeysDo)
{
    compose(name, u"aé b🚀c"_s);
    EXPECT_EQ(name.text(), u"A_BC"_s);
    compose(name, u"xyz"_s);
    EXPECT_EQ(name.text(), u"A_BCXY"_s);
    name.selectAll();
    compose(name, u"q-"_s);
    EXPECT_EQ(name.text(), u"Q-"_s);
    compose(remarks, u"né🚀"_s);
    EXPECT_EQ(remarks.text(), u"né🚀"_s);
    compose(remarks, u"0123456789"_s);
    EXPECT_EQ(remarks.text(), u"né🚀01234567"_s);
}

TEST_F(PropertyEntryTest, AReadOnlyEntryTakesNothing)
{
    name.setReadOnly(true);
    QTest::keyClicks(&name, u"abc"_s);
    compose(name, u"abc"_s);
    EXPECT_EQ(name.text(), u""_s);
}

TEST_F(PropertyEntryTest, ATextThatNobodyHasEditedIsGivenBackAsItWas)
{
    for (const QString& text :
         {u"a\r\nb"_s, u"a\rb"_s, u"a\n"_s, u"x\u00a0y"_s, u"longer than the column is"_s, u""_s}) {
        remarks.setText(text);
        EXPECT_EQ(remarks.text(), text);
    }
}

TEST_F(PropertyEntryTest, AnEditedTextHasPlainLineEndsAndKeepsItsBlanks)
{
    remarks.setText(u"a\r\nb\u00a0c"_s);
    QTest::keyClick(&remarks, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(&remarks, Qt::Key_Return);
    QTest::keyClicks(&remarks, u"d"_s);
    EXPECT_EQ(remarks.text(), u"a\nb\u00a0c\nd"_s);
    while (remarks.document()->isUndoAvailable())
        QTest::keyClick(&remarks, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(remarks.text(), u"a\r\nb\u00a0c"_s);
}

TEST_F(PropertyEntryTest, SettingTheSameTextIsNoChange)
{
    int changes = 0;
    QObject::connect(&remarks, &QPlainTextEdit::textChanged, &remarks, [&] { ++changes; });
    remarks.setText(u"a"_s);
    EXPECT_EQ(changes, 1);
    remarks.setText(u"a"_s);
    EXPECT_EQ(changes, 1);
    QTest::keyClicks(&remarks, u"b"_s);
    remarks.setText(u"a"_s);
    EXPECT_EQ(remarks.text(), u"a"_s);
}

TEST_F(PropertyEntryTest, TabLeavesAMemo)
{
    EXPECT_TRUE(remarks.tabChangesFocus());
}

TEST_F(PropertyEntryTest, NothingThatIsEnteredIsLongerThanItsColumn)
{
    std::mt19937 random(7);
    const QStringList pieces{u"a"_s, u" "_s, u"🚀"_s, u"o'hara"_s, u"é"_s, u"12345678901234567890"_s};
    for (int round = 0; round < 200; ++round) {
        const QString& piece = pieces[static_cast<qsizetype>(random() % pieces.size())];
        const int caret = static_cast<int>(random() % 8);
        name.setCursorPosition(caret);
        switch (random() % 4) {
        case 0:
            QTest::keyClicks(&name, piece.isLower() ? u"a"_s : u"7"_s);
            QTest::keyClick(&remarks, Qt::Key_A);
            break;
        case 1:
            paste(name, piece);
            paste(remarks, piece);
            break;
        case 2:
            compose(name, piece);
            compose(remarks, piece);
            break;
        default:
            QTest::keyClick(&name, Qt::Key_Backspace);
            QTest::keyClick(&remarks, Qt::Key_Backspace);
        }
        ASSERT_LE(name.text().size(), 6);
        ASSERT_LE(remarks.text().size(), 12);
    }
}
