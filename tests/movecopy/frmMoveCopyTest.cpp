#include "frmMoveCopy.h"

#include "MoveCopyFixture.h"
#include "Settings.h"
#include "frmTWErr.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

class MoveCopyQuestion : public MoveCopyTest
{
protected:
    DragMode ask(const DialogScript::Action& action)
    {
        dialogs.expect(u"frmMoveCopy"_s, action);
        const DragMode answer = frmMoveCopy::Query(u"Do you want <b>that</b>?\n\nNOTE: so be it."_s);
        dialogs.verify();
        return answer;
    }
};

} // namespace

TEST_F(MoveCopyQuestion, EachButtonHasItsAnswer)
{
    const auto answer = [this](const QString& button) {
        return ask([&](DialogForm& dialog) {
            EXPECT_TRUE(frmTWErr::CallStack().contains(u"frmMoveCopy.Query"_s));
            DialogScript::click(dialog, button);
        });
    };
    EXPECT_EQ(answer(u"cmdMove"_s), DragMode::Move);
    EXPECT_EQ(answer(u"cmdCopy"_s), DragMode::Copy);
    EXPECT_EQ(ask([](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCancel"_s); }), DragMode::Stop);
    EXPECT_EQ(static_cast<int>(DragMode::Stop), 0);
    EXPECT_EQ(static_cast<int>(DragMode::Move), 1);
    EXPECT_EQ(static_cast<int>(DragMode::Copy), 2);
}

TEST_F(MoveCopyQuestion, TheButtonThatWasClickedIsMarkedAlone)
{
    const QStringList buttons{u"cmdCopy"_s, u"cmdMove"_s, u"cmdCancel"_s};
    for (const QString& clicked : buttons) {
        ask([&](DialogForm& dialog) {
            for (const QString& button : buttons)
                EXPECT_EQ(dialog.findChild<QPushButton*>(button)->property("Tag").toString(), QString());
            DialogScript::click(dialog, clicked);
            for (const QString& button : buttons)
                EXPECT_EQ(dialog.findChild<QPushButton*>(button)->property("Tag").toString(),
                          button == clicked ? u"True"_s : QString());
        });
    }
}

TEST_F(MoveCopyQuestion, ClosingItOtherwiseIsACancel)
{
    EXPECT_EQ(ask([](DialogForm& dialog) { dialog.close(); }), DragMode::Stop);
    EXPECT_EQ(ask([](DialogForm& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }), DragMode::Stop);
    // Enter takes nothing away from the source.
    EXPECT_EQ(ask([](DialogForm& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }), DragMode::Copy);
}

TEST_F(MoveCopyQuestion, ThePromptIsPlainTextAndAllOfItShows)
{
    ask([](DialogForm& dialog) {
        const auto* prompt = dialog.findChild<QLabel*>(u"lblPrompt"_s);
        EXPECT_EQ(prompt->text(), u"Do you want <b>that</b>?\n\nNOTE: so be it."_s);
        EXPECT_EQ(prompt->textFormat(), Qt::PlainText);
        EXPECT_GE(prompt->height(), prompt->heightForWidth(prompt->width()));
        DialogScript::click(dialog, u"cmdCancel"_s);
    });
}

TEST_F(MoveCopyQuestion, ItComesUpWhereItWasLeft)
{
    QPoint left;
    ask([&](DialogForm& dialog) {
        dialog.move(90, 70);
        left = dialog.pos();
        DialogScript::click(dialog, u"cmdCancel"_s);
    });
    EXPECT_EQ(settings::getNumber(u"frmMoveCopy"_s, u"Left"_s, -1), left.x() * 15);
    EXPECT_EQ(settings::getNumber(u"frmMoveCopy"_s, u"Top"_s, -1), left.y() * 15);
    EXPECT_EQ(settings::get(u"frmMoveCopy"_s, u"Width"_s), QString());
    ask([&](DialogForm& dialog) {
        EXPECT_EQ(dialog.pos(), left);
        DialogScript::click(dialog, u"cmdCancel"_s);
    });
}

TEST_F(MoveCopyQuestion, ASizeThatIsSetIsTaken)
{
    settings::save(u"frmMoveCopy"_s, u"Width"_s, 700 * 15);
    settings::save(u"frmMoveCopy"_s, u"Height"_s, 300 * 15);
    ask([](DialogForm& dialog) {
        EXPECT_EQ(dialog.size(), QSize(700, 300));
        DialogScript::click(dialog, u"cmdCancel"_s);
    });
}
