#include "modAPIMisc.h"

#include "QtPrinting.h"

#include <QComboBox>
#include <QLineEdit>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{

class ComboKeyPress : public testing::Test
{
protected:
    ComboKeyPress()
    {
        combo.setEditable(true);
        combo.setCompleter(nullptr);
        combo.addItems({u"DATE"_s, u"DATE-YYMMDD"_s, u"PACKED"_s, u"PACKED-U"_s});
        combo.setCurrentIndex(-1);
    }

    /// The text with what is marked in brackets.
    QString shown() const
    {
        const QLineEdit& entry = *combo.lineEdit();
        if (!entry.hasSelectedText())
            return entry.text();
        QString text = entry.text();
        text.insert(entry.selectionEnd(), ']'_L1);
        return text.insert(entry.selectionStart(), '['_L1);
    }

    QComboBox combo;
};

} // namespace

TEST_F(ComboKeyPress, WithoutASelectionTheKeyGoesBehindTheText)
{
    combo.setCurrentIndex(0);
    combo.lineEdit()->end(false);
    EXPECT_TRUE(modAPIMisc::ComboKeyPress(combo, u"-"_s));
    EXPECT_EQ(shown(), u"DATE-[YYMMDD]"_s);
    EXPECT_EQ(combo.currentIndex(), 1);
    EXPECT_EQ(combo.lineEdit()->cursorPosition(), 5);
}

TEST_F(ComboKeyPress, WithoutASelectionTheCaretDoesNotMatter)
{
    combo.setCurrentIndex(2);
    combo.lineEdit()->home(false);
    EXPECT_TRUE(modAPIMisc::ComboKeyPress(combo, u"-"_s));
    EXPECT_EQ(shown(), u"PACKED-[U]"_s);
    EXPECT_EQ(combo.currentIndex(), 3);
}

TEST_F(ComboKeyPress, AnEmptyTextTakesTheFirstItemWithTheKey)
{
    EXPECT_TRUE(modAPIMisc::ComboKeyPress(combo, u"p"_s));
    EXPECT_EQ(shown(), u"P[ACKED]"_s);
    EXPECT_EQ(combo.currentIndex(), 2);
}

TEST_F(ComboKeyPress, TheKeyReplacesASelectionAndWhatStandsBehindIt)
{
    combo.setCurrentIndex(2);
    combo.lineEdit()->setSelection(0, 2);
    EXPECT_TRUE(modAPIMisc::ComboKeyPress(combo, u"d"_s));
    EXPECT_EQ(shown(), u"D[ATE]"_s);
    EXPECT_EQ(combo.currentIndex(), 0);
}

TEST_F(ComboKeyPress, AKeyThatFindsNothingIsDroppedAndTheTextStays)
{
    combo.setCurrentIndex(3);
    combo.lineEdit()->end(false);
    for (const char* key : {"-", "x", "D", "%", "*", " "}) {
        EXPECT_TRUE(modAPIMisc::ComboKeyPress(combo, QLatin1String(key)));
        EXPECT_EQ(shown(), u"PACKED-U"_s) << key;
        EXPECT_EQ(combo.currentIndex(), 3) << key;
    }
    combo.lineEdit()->setSelection(6, 2);
    EXPECT_TRUE(modAPIMisc::ComboKeyPress(combo, u"x"_s));
    EXPECT_EQ(shown(), u"PACKED[-U]"_s);
}

TEST_F(ComboKeyPress, ControlCharactersAreLeftToTheList)
{
    combo.setCurrentIndex(0);
    for (const char* key : {"", "\b", "\t", "\r", "\x1b"}) {
        EXPECT_FALSE(modAPIMisc::ComboKeyPress(combo, QLatin1String(key)));
        EXPECT_EQ(shown(), u"DATE"_s);
    }
}

TEST_F(ComboKeyPress, CharactersBeyond128AreLeftToTheList)
{
    combo.setCurrentIndex(0);
    EXPECT_TRUE(modAPIMisc::ComboKeyPress(combo, QString(QChar(128))));
    for (const QString& key : {QString(QChar(129)), u"\u00e9"_s, u"\U0001F680"_s}) {
        EXPECT_FALSE(modAPIMisc::ComboKeyPress(combo, key));
        EXPECT_EQ(shown(), u"DATE"_s);
    }
}
