#include "Boxes.h"

#include "Application.h"
#include "MousePointer.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using boxes::Answer;
using boxes::Box;
using boxes::Buttons;
using boxes::Icon;

namespace
{

/// The real boxes, with a user who acts as soon as one shows.
class Boxes : public testing::Test
{
protected:
    void SetUp() override { m_former = boxes::setPresenter(nullptr); }
    void TearDown() override { boxes::setPresenter(m_former); }

    Answer show(const Box& box, const std::function<void(QMessageBox&)>& user)
    {
        QTimer timer;
        bool came = false;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            auto* shown = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!shown || came)
                return;
            came = true;
            user(*shown);
        });
        timer.start(0);
        const Answer answer = boxes::show(box);
        EXPECT_TRUE(came) << "No box showed";
        return answer;
    }

    static void press(QMessageBox& box, QMessageBox::StandardButton button)
    {
        QAbstractButton* found = box.button(button);
        ASSERT_NE(found, nullptr);
        QTest::mouseClick(found, Qt::LeftButton);
    }

private:
    boxes::Presenter* m_former = nullptr;
};

} // namespace

TEST_F(Boxes, EachButtonGivesItsAnswer)
{
    const struct {
        Buttons buttons;
        QMessageBox::StandardButton pressed;
        Answer answer;
    } rows[] = {
        {Buttons::Ok, QMessageBox::Ok, Answer::Ok},
        {Buttons::YesNo, QMessageBox::Yes, Answer::Yes},
        {Buttons::YesNo, QMessageBox::No, Answer::No},
        {Buttons::YesNoCancel, QMessageBox::Yes, Answer::Yes},
        {Buttons::YesNoCancel, QMessageBox::No, Answer::No},
        {Buttons::YesNoCancel, QMessageBox::Cancel, Answer::Cancel},
        {Buttons::OkCancel, QMessageBox::Ok, Answer::Ok},
        {Buttons::OkCancel, QMessageBox::Cancel, Answer::Cancel},
    };
    for (const auto& row : rows)
        EXPECT_EQ(
            show({"Prompt", Icon::None, row.buttons, "Title"}, [&](QMessageBox& box) { press(box, row.pressed); }),
            row.answer);
}

TEST_F(Boxes, ClosingOneGivesTheAnswerThatChangesLeast)
{
    const struct {
        Buttons buttons;
        Answer answer;
    } rows[] = {{Buttons::Ok, Answer::Ok},
                {Buttons::YesNo, Answer::No},
                {Buttons::YesNoCancel, Answer::Cancel},
                {Buttons::OkCancel, Answer::Cancel}};
    for (const auto& row : rows) {
        const Box box{"Prompt", Icon::Question, row.buttons, "Title"};
        EXPECT_EQ(show(box, [](QMessageBox& shown) { QTest::keyClick(&shown, Qt::Key_Escape); }), row.answer);
        EXPECT_EQ(show(box, [](QMessageBox& shown) { shown.close(); }), row.answer);
        EXPECT_EQ(boxes::answerOfClosing(row.buttons), row.answer);
    }
}

TEST_F(Boxes, EnterPressesTheFirstButton)
{
    const auto enter = [](QMessageBox& shown) { QTest::keyClick(&shown, Qt::Key_Return); };
    EXPECT_EQ(show({"Prompt", Icon::None, Buttons::YesNo, "Title"}, enter), Answer::Yes);
    EXPECT_EQ(show({"Prompt", Icon::None, Buttons::OkCancel, "Title"}, enter), Answer::Ok);
}

TEST_F(Boxes, YesAndNoHaveMnemonics)
{
    show({"Prompt", Icon::None, Buttons::YesNo, "Title"}, [](QMessageBox& shown) {
        EXPECT_TRUE(shown.button(QMessageBox::Yes)->text().contains('&'));
        EXPECT_TRUE(shown.button(QMessageBox::No)->text().contains('&'));
        shown.close();
    });
}

TEST_F(Boxes, TitleIconAndPromptStandAsTheyWereGiven)
{
    const struct {
        Icon icon;
        QMessageBox::Icon shown;
    } rows[] = {{Icon::None, QMessageBox::NoIcon},
                {Icon::Information, QMessageBox::Information},
                {Icon::Question, QMessageBox::Question},
                {Icon::Exclamation, QMessageBox::Warning},
                {Icon::Critical, QMessageBox::Critical}};
    for (const auto& row : rows)
        show({"First\nSecond & third", row.icon, Buttons::Ok, "Title"}, [&](QMessageBox& shown) {
            EXPECT_EQ(shown.windowTitle(), "Title");
            EXPECT_EQ(shown.text(), "First\nSecond & third");
            EXPECT_EQ(shown.icon(), row.shown);
            EXPECT_TRUE(shown.isModal());
            shown.close();
        });
}

TEST_F(Boxes, DataNeverTurnsIntoMarkup)
{
    const QString prompt = "<b>Delete</b> '<img src=x>' &amp; <a href=\"x\">all</a>?";
    show({prompt, Icon::Question, Buttons::YesNo, "Title"}, [&](QMessageBox& shown) {
        EXPECT_EQ(shown.textFormat(), Qt::PlainText);
        EXPECT_EQ(shown.text(), prompt);
        shown.close();
    });
}

TEST_F(Boxes, ThePromptCanBeSelectedWithTheMouse)
{
    show({"Copy me", Icon::None, Buttons::Ok, "Title"}, [](QMessageBox& shown) {
        EXPECT_TRUE(shown.textInteractionFlags() & Qt::TextSelectableByMouse);
        shown.close();
    });
}

TEST_F(Boxes, ALongPromptStaysOnTheScreenAndCanBeReadWhole)
{
    QString lines;
    for (int i = 0; i < 400; ++i)
        lines += QString("[driver][%1] The statement could not be prepared.\n").arg(i);
    const QString questions[] = {
        lines + "Do you wish to go on?",
        QString(10000, 'x') + "\nDo you wish to go on?",
        QString("word ").repeated(2000) + "\nDo you wish to go on?",
    };
    for (const QString& prompt : questions)
        show({prompt, Icon::Exclamation, Buttons::YesNo, "Title"}, [&](QMessageBox& shown) {
            const QSize screen = shown.screen()->availableSize();
            EXPECT_LE(shown.height(), screen.height());
            EXPECT_LE(shown.width(), screen.width());
            EXPECT_EQ(shown.detailedText(), prompt);
            EXPECT_TRUE(shown.text().endsWith("Do you wish to go on?"));
            EXPECT_TRUE(shown.text().startsWith(prompt.left(40)));
            shown.close();
        });
}

TEST_F(Boxes, APromptOfAFewLinesShowsWhole)
{
    const QString prompt = QString("A line of ordinary length stands here.\n").repeated(12) + "Is that so?";
    show({prompt, Icon::Exclamation, Buttons::YesNo, "Title"}, [&](QMessageBox& shown) {
        EXPECT_EQ(shown.text(), prompt);
        EXPECT_TRUE(shown.detailedText().isEmpty());
        EXPECT_LE(shown.height(), shown.screen()->availableSize().height());
        shown.close();
    });
}

TEST_F(Boxes, ABoxBelongsToTheActiveWindow)
{
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    show({"Prompt", Icon::None, Buttons::Ok, "Title"}, [&](QMessageBox& shown) {
        EXPECT_EQ(shown.parentWidget(), &window);
        shown.close();
    });
}

TEST_F(Boxes, ABoxWhoseWindowIsDeletedCountsAsClosed)
{
    auto window = std::make_unique<QWidget>();
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    EXPECT_EQ(show({"Prompt", Icon::None, Buttons::YesNo, "Title"}, [&](QMessageBox&) { window.reset(); }), Answer::No);
}

TEST_F(Boxes, TheWaitPointerDoesNotShowMeanwhile)
{
    mousepointer::set(mousepointer::Wait);
    show({"Prompt", Icon::None, Buttons::Ok, "Title"}, [](QMessageBox& shown) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        shown.close();
    });
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    mousepointer::set(mousepointer::Default);
}

TEST_F(Boxes, TheShortFormsShowUnderTheApplicationTitle)
{
    class Recorder final : public boxes::Presenter
    {
    public:
        Answer show(const Box& box) override
        {
            last = box;
            return answer;
        }
        Box last;
        Answer answer = Answer::Ok;
    } recorder;
    EXPECT_EQ(boxes::setPresenter(&recorder), nullptr);

    boxes::inform("Told");
    EXPECT_EQ(recorder.last.prompt, "Told");
    EXPECT_EQ(recorder.last.icon, Icon::Information);
    EXPECT_EQ(recorder.last.buttons, Buttons::Ok);
    EXPECT_EQ(recorder.last.title, application::title());

    for (const Answer answer : {Answer::Yes, Answer::No}) {
        recorder.answer = answer;
        EXPECT_EQ(boxes::ask("Asked"), answer == Answer::Yes);
        EXPECT_EQ(recorder.last.prompt, "Asked");
        EXPECT_EQ(recorder.last.icon, Icon::Question);
        EXPECT_EQ(recorder.last.buttons, Buttons::YesNo);
        EXPECT_EQ(recorder.last.title, application::title());
    }
    EXPECT_EQ(boxes::setPresenter(nullptr), &recorder);
}
