#include "RecordingOutside.h"
#include "ScriptedBoxes.h"
#include "ScriptedFileDialogs.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <exception>
#include <type_traits>

using boxes::Answer;
using boxes::Buttons;
using boxes::Icon;
using filedialogs::Mode;

TEST(ScriptedBoxes, ABoxOfTheScriptGetsItsAnswer)
{
    int meanwhile = 0;
    ScriptedBoxes script;
    script.expectInform("Told")
        .expectAsk("Asked", Answer::Yes)
        .expectAsk("Asked again", Answer::No, [&] { ++meanwhile; })
        .expect("Warned", Icon::Exclamation)
        .expect({"Chosen", Icon::None, Buttons::YesNoCancel, "Other title"}, Answer::Cancel);
    boxes::inform("Told");
    EXPECT_TRUE(boxes::ask("Asked"));
    EXPECT_EQ(meanwhile, 0);
    EXPECT_FALSE(boxes::ask("Asked again"));
    EXPECT_EQ(meanwhile, 1);
    EXPECT_FALSE(script.done());
    boxes::show({"Warned", Icon::Exclamation, Buttons::Ok, application::title()});
    EXPECT_EQ(boxes::show({"Chosen", Icon::None, Buttons::YesNoCancel, "Other title"}), Answer::Cancel);
    EXPECT_TRUE(script.done());
    EXPECT_EQ(script.shown().size(), 5U);
}

TEST(ScriptedBoxes, AnUnexpectedBoxFailsTheTestAndIsAnsweredSafely)
{
    ScriptedBoxes script;
    bool answer = true;
    EXPECT_NONFATAL_FAILURE(answer = boxes::ask("Really?"), "An unexpected box");
    EXPECT_FALSE(answer);
}

TEST(ScriptedBoxes, EachPartOfABoxMustBeAsExpected)
{
    const boxes::Box expected{"Prompt", Icon::Question, Buttons::YesNo, "Title"};
    const boxes::Box others[] = {{"prompt", Icon::Question, Buttons::YesNo, "Title"},
                                 {"Prompt", Icon::None, Buttons::YesNo, "Title"},
                                 {"Prompt", Icon::Question, Buttons::YesNoCancel, "Title"},
                                 {"Prompt", Icon::Question, Buttons::YesNo, "Other"}};
    for (const boxes::Box& other : others) {
        ScriptedBoxes script;
        script.expect(expected, Answer::Yes);
        Answer answer = Answer::Yes;
        EXPECT_NONFATAL_FAILURE(answer = boxes::show(other), "Another box than expected");
        EXPECT_EQ(answer, boxes::answerOfClosing(other.buttons));
    }
}

TEST(ScriptedBoxes, ABoxThatNeverCameFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedBoxes script;
            script.expectInform("Never");
        },
        "A box never came");
}

TEST(ScriptedBoxes, TheInnerScriptCountsUntilItEnds)
{
    ScriptedBoxes outer;
    outer.expectInform("Outer");
    {
        ScriptedBoxes inner;
        inner.expectInform("Inner");
        boxes::inform("Inner");
    }
    boxes::inform("Outer");
}

TEST(ScriptedFileDialogs, ADialogOfTheScriptGetsItsPath)
{
    ScriptedFileDialogs script;
    script.expect(Mode::Save, "Save it", "/some/path.txt").expectCancelled(Mode::Open, "Open it");
    EXPECT_EQ(filedialogs::choose({Mode::Save, "Save it", "name.txt"}), "/some/path.txt");
    try {
        filedialogs::choose({Mode::Open, "Open it"});
        FAIL() << "Nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::DialogCancelled);
    }
    ASSERT_EQ(script.requests().size(), 2U);
    EXPECT_EQ(script.requests()[0].suggestedName, "name.txt");
}

TEST(ScriptedFileDialogs, AnUnexpectedDialogFailsTheTestAndIsCancelled)
{
    ScriptedFileDialogs script;
    EXPECT_NONFATAL_FAILURE(EXPECT_THROW(filedialogs::choose({Mode::Open, "Open it"}), RuntimeError),
                            "An unexpected file dialog");
    script.expect(Mode::Open, "Open it", "/path");
    EXPECT_NONFATAL_FAILURE(EXPECT_THROW(filedialogs::choose({Mode::Save, "Open it"}), RuntimeError),
                            "Another file dialog than expected");
}

TEST(ScriptedFileDialogs, ADialogThatNeverCameFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(
        {
            ScriptedFileDialogs script;
            script.expectCancelled(Mode::Open, "Never");
        },
        "A file dialog never came");
}

TEST(RecordingOutside, RecordsAndDoesNothing)
{
    RecordingOutside outside;
    EXPECT_TRUE(Outside::instance().open("mailto:someone"));
    outside.opens = false;
    EXPECT_FALSE(Outside::instance().open("https://somewhere"));
    EXPECT_EQ(outside.opened, (QStringList{"mailto:someone", "https://somewhere"}));

    EXPECT_TRUE(Outside::instance().run("program", {"argument"}));
    ASSERT_EQ(outside.started.size(), 1U);
    EXPECT_EQ(outside.started[0].program, "program");
    EXPECT_EQ(outside.started[0].arguments, QStringList("argument"));

    Outside::instance().print("Title", "Body");
    ASSERT_EQ(outside.printed.size(), 1U);
    EXPECT_EQ(outside.printed[0].title, "Title");
    EXPECT_EQ(outside.printed[0].body, "Body");
    outside.printFailure = RuntimeError(ErrorNumber::PrinterError);
    EXPECT_THROW(Outside::instance().print("Title", "Body"), RuntimeError);
    EXPECT_EQ(outside.printed.size(), 1U);

    Outside::instance().setClipboard("text");
    EXPECT_EQ(outside.clipboard, "text");
    EXPECT_EQ(Outside::instance().now(), outside.clock);
}

TEST(RecordingOutside, TheProcessesEndIsNothingThatTheProgramHandles)
{
    RecordingOutside outside;
    static_assert(!std::is_base_of_v<std::exception, ProcessEnded>);
    EXPECT_THROW(Outside::instance().endProcess(), ProcessEnded);
    EXPECT_EQ(outside.ends, 1);
}
