#include "PasswordsFixture.h"

#include "ScreenReader.h"

#include <memory>
#include <ostream>

using namespace Qt::StringLiterals;
using namespace passwordsearch;

namespace
{

/// The panes and grids with a screen reader behind them, which listens before the window comes up.
class SpokenPasswords : public Passwords
{
protected:
    void SetUp() override
    {
        m_reader = std::make_unique<ScreenReader>();
        Passwords::SetUp();
    }
    void TearDown() override
    {
        Passwords::TearDown();
        m_reader.reset();
    }

    /// All texts that were heard since the last asking, joined.
    static QString takeHeard()
    {
        QString all;
        for (const QString& event : ScreenReader::takeHeard()) {
            if (event.startsWith('+'_L1) || event.startsWith('-'_L1) || event.startsWith('='_L1))
                all += event.mid(1);
        }
        return all;
    }
    static void expectHeard(const char* what)
    {
        const QString all = takeHeard();
        EXPECT_TRUE(all.contains("*"_L1)) << what << " is not spoken of";
        EXPECT_FALSE(all.contains(sign, Qt::CaseInsensitive)) << what << ": " << all.toStdString();
    }

private:
    std::unique_ptr<ScreenReader> m_reader;
};

} // namespace

TEST_F(SpokenPasswords, WhatIsTypedElsewhereIsSpoken)
{
    open(user(u"CLERK"_s));
    takeHeard();
    write(u"REMARKS"_s, u"qzx7"_s);
    EXPECT_TRUE(takeHeard().contains(u"qzx7"_s));
}

TEST_F(SpokenPasswords, NoPasswordIsSpokenWhileItIsTypedOrTakenAwayInAPane)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(place.node);
        takeHeard();
        writePassword(place.column, u"qzx7-typed"_s);
        expectHeard("typing");
        hit(Qt::Key_Backspace);
        expectHeard("Backspace");
        hit(Qt::Key_Z, Qt::ControlModifier);
        takeHeard();
        pastePassword(place.column, u"qzx7-pasted"_s);
        expectHeard("pasting");
        press(u"Undo"_s);
        expectHeard("Undo");
        writePassword(place.column, u"qzx7-typed"_s);
        takeHeard();
        press(u"OK"_s);
        expectHeard("OK");
        press(u"User Edit"_s);
        writePassword(place.column, u"qzx7-typed"_s);
        takeHeard();
        hit(Qt::Key_Escape);
        expectHeard("Escape");
        press(u"User Edit"_s);
        writePassword(place.column, u"qzx7-typed"_s);
        takeHeard();
        click(key(gridOf(place)));
        expectHeard("another pane");
    }
}

TEST_F(SpokenPasswords, NoPasswordIsSpokenWhileItIsTypedOrTakenAwayInAGrid)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        const auto typeAnew = [&] {
            clickCell(clerksRow(), place.heading);
            typeIntoCell(u"qzx7-typed"_s);
            ASSERT_EQ(cellEditor().text(), u"QZX7-TYPED"_s);
        };
        open(gridOf(place));
        takeHeard();
        typeAnew();
        expectHeard("typing");
        QTest::keyClick(&cellEditor(), Qt::Key_Backspace);
        expectHeard("Backspace");
        QApplication::clipboard()->setText(u"qzx7-pasted"_s);
        cellEditor().selectAll();
        QTest::keyClick(&cellEditor(), Qt::Key_V, Qt::ControlModifier);
        expectHeard("pasting");
        QTest::keyClick(&cellEditor(), Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(&cellEditor(), Qt::Key_Escape);
        expectHeard("Escape");
        typeAnew();
        takeHeard();
        QTest::keyClick(&cellEditor(), Qt::Key_Return);
        expectHeard("Return");
        clickCell(clerksRow(), place.heading);
        QTest::keyClick(&grid(), Qt::Key_Return);
        expectHeard("entering the cell again");
        leaveRow();
        expectHeard("the row that is written");
        // Another cell takes the same entry, which shows what it holds.
        clickCell(clerksRow(), u"Remarks"_s);
        QTest::keyClick(&grid(), Qt::Key_Return);
        EXPECT_FALSE(takeHeard().contains(sign, Qt::CaseInsensitive));
        QTest::keyClick(&cellEditor(), Qt::Key_Escape);
    }
}
