#include "frmYesToAll.h"

#include "DialogScript.h"

#include "QtPrinting.h"
#include "clsCount.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{

const QString question = u"Do you want to continue with the remainder of the Files in this collection?"_s;

class YesToAll : public testing::Test
{
protected:
    void TearDown() override { EXPECT_FALSE(forms::loaded(u"frmYesToAll"_s)); }

    static int answer(const QString& prompt, const DialogScript::Action& action)
    {
        DialogScript script;
        script.expect(u"frmYesToAll"_s, action);
        return frmYesToAll::GetAnswer(prompt);
    }

    static int answerByClick(const QString& button)
    {
        return answer(question, [&](DialogForm& dialog) { DialogScript::click(dialog, button); });
    }

    static int answerByKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        return answer(question, [&](DialogForm& dialog) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
            QWidget* focus = dialog.focusWidget();
            QTest::keyClick(focus ? focus : &dialog, key, modifiers);
            // A button that a key has pressed shows itself pressed for a moment first.
            EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
        });
    }
};

} // namespace

TEST_F(YesToAll, EachButtonHasItsAnswer)
{
    EXPECT_EQ(answerByClick(u"cmdNo"_s), 0);
    EXPECT_EQ(answerByClick(u"cmdYes"_s), 1);
    EXPECT_EQ(answerByClick(u"cmdYesAll"_s), 2);
}

TEST_F(YesToAll, ClosingItOtherwiseIsANo)
{
    EXPECT_EQ(answerByClick(u"cmdYesAll"_s), 2);
    EXPECT_EQ(answer(question, [](DialogForm& dialog) { dialog.close(); }), 0);
    EXPECT_EQ(answer(question, [](DialogForm& dialog) { forms::unload(dialog.name()); }), 0);
    EXPECT_EQ(answerByKey(Qt::Key_Escape), 0);
}

TEST_F(YesToAll, KeysAnswerToo)
{
    EXPECT_EQ(answerByKey(Qt::Key_Return), 1);
    EXPECT_EQ(answerByKey(Qt::Key_A, Qt::AltModifier), 2);
    EXPECT_EQ(answerByKey(Qt::Key_N, Qt::AltModifier), 0);
    EXPECT_EQ(answerByKey(Qt::Key_Y, Qt::AltModifier), 1);
}

TEST_F(YesToAll, ShowsThePromptUnderTheApplicationTitle)
{
    const QString strange = u"Copy <b>'O'HARA'</b> & \"🚀\"?\nAll of it?"_s;
    EXPECT_EQ(answer(strange,
                     [&](DialogForm& dialog) {
                         EXPECT_EQ(dialog.windowTitle(), u"Tarnwick Quorvane"_s);
                         auto* prompt = dialog.findChild<QLabel*>(u"lblPrompt"_s);
                         EXPECT_EQ(prompt->text(), strange);
                         EXPECT_EQ(prompt->textFormat(), Qt::PlainText);
                         EXPECT_EQ(dialog.findChild<QPushButton*>(u"cmdNo"_s)->text(), u"&No"_s);
                         EXPECT_EQ(dialog.findChild<QPushButton*>(u"cmdYes"_s)->text(), u"&Yes"_s);
                         EXPECT_EQ(dialog.findChild<QPushButton*>(u"cmdYesAll"_s)->text(), u"Yes to &All"_s);
                         DialogScript::click(dialog, u"cmdYes"_s);
                     }),
              1);
}

TEST_F(YesToAll, ALongPromptIsWrappedAndStaysOnTheScreen)
{
    answer(question.repeated(6), [](DialogForm& dialog) {
        EXPECT_LT(dialog.width(), 600);
        auto* prompt = dialog.findChild<QLabel*>(u"lblPrompt"_s);
        EXPECT_GE(prompt->height(), prompt->heightForWidth(prompt->width()));
        DialogScript::click(dialog, u"cmdNo"_s);
    });
}

TEST(Count, IsSharedByReference)
{
    clsCount count;
    const auto callee = [](clsCount& shared) { shared.Value += 2; };
    EXPECT_EQ(count.Value, 0);
    callee(count);
    callee(count);
    EXPECT_EQ(count.Value, 4);
    static_assert(sizeof(count.Value) == 4);
}
