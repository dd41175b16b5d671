#include "Routine.h"

#include "DBEngine.h"
#include "RecordingOutside.h"
#include "ScriptedBoxes.h"
#include "ScriptedErrorForm.h"
#include "frmTWErr.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <stdexcept>

namespace
{

/// Every test starts with an empty stack and an empty chain, and must end with them.
class RoutineTest : public testing::Test
{
protected:
    void SetUp() override { dao::DBEngine::Errors().Clear(); }
    void TearDown() override { EXPECT_EQ(frmTWErr::CallStack(), QStringList()); }

    /// A step that fails the first `times` times.
    void failingStep(int times, ErrorNumber number = ErrorNumber::PathFileAccess)
    {
        step([&] {
            ++tries;
            if (tries <= times)
                throw RuntimeError(number);
        });
    }

    ScriptedErrorForm form;
    RecordingOutside outside;
    int tries = 0;
};

TEST_F(RoutineTest, StandsOnTheCallStackForAsLongAsItLives)
{
    {
        const Routine outer("a.outer");
        EXPECT_EQ(frmTWErr::CallStack(), QStringList({"a.outer"}));
        {
            const Routine inner("b.inner");
            EXPECT_EQ(frmTWErr::CallStack(), QStringList({"b.inner", "a.outer"}));
        }
        EXPECT_EQ(frmTWErr::CallStack(), QStringList({"a.outer"}));
    }
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(RoutineTest, ABodyThatComesToItsEndShowsNothing)
{
    Routine routine("a.b");
    EXPECT_TRUE(routine.run([&] { failingStep(0); }));
    EXPECT_EQ(tries, 1);
}

TEST_F(RoutineTest, RetryRepeatsTheFailedStepAlone)
{
    form.expect(Press::Retry);
    int before = 0;
    int after = 0;
    Routine routine("a.b");
    EXPECT_TRUE(routine.run([&] {
        step([&] { ++before; });
        failingStep(1);
        ++after;
    }));
    EXPECT_EQ(before, 1);
    EXPECT_EQ(tries, 2);
    EXPECT_EQ(after, 1);
}

TEST_F(RoutineTest, RetryOfAStepThatFailsAgainShowsTheFormAgainWithTheSameStack)
{
    form.expect(Press::Retry).expect(Press::Retry).expect(Press::Retry);
    const Routine caller("a.caller");
    Routine routine("a.b");
    EXPECT_TRUE(routine.run([&] { failingStep(3); }));
    EXPECT_EQ(tries, 4);
    ASSERT_EQ(form.shown().size(), 3U);
    for (const auto& shown : form.shown()) {
        EXPECT_EQ(shown.callStack, QStringList({"a.b", "a.caller"}));
        EXPECT_EQ(shown.number, "75");
    }
}

TEST_F(RoutineTest, IgnoreLeavesTheBodyAtItsEndAndTheCallerGoesOn)
{
    form.expect(Press::Ignore);
    QStringList ran;
    Routine caller("a.caller");
    EXPECT_TRUE(caller.run([&] {
        Routine routine("a.b");
        EXPECT_FALSE(routine.run([&] {
            ran.append("before");
            failingStep(1);
            ran.append("after");
        }));
        ran.append("caller");
    }));
    EXPECT_EQ(ran, QStringList({"before", "caller"}));
    EXPECT_EQ(tries, 1);
}

TEST_F(RoutineTest, AbortEndsTheProcessAtOnce)
{
    form.expect(Press::Abort);
    bool after = false;
    const auto failing = [&] {
        Routine routine("a.b");
        routine.run([&] {
            failingStep(1);
            after = true;
        });
        after = true;
    };
    EXPECT_THROW(failing(), ProcessEnded);
    EXPECT_EQ(outside.ends, 1);
    EXPECT_FALSE(after);
}

TEST_F(RoutineTest, AFailureOutsideOfAnyStepIsReportedInTheRoutineAndRetryAsksAgain)
{
    form.expect(Press::Retry).expect(Press::Retry).expect(Press::Ignore);
    int runs = 0;
    Routine routine("a.b");
    EXPECT_FALSE(routine.run([&] {
        ++runs;
        throw RuntimeError(ErrorNumber::TypeMismatch);
    }));
    EXPECT_EQ(runs, 1) << "what ran before the failure must not run again";
    ASSERT_EQ(form.shown().size(), 3U);
    EXPECT_EQ(form.shown().back().number, "13");
    EXPECT_EQ(form.shown().back().trappedIn, "a.b");
}

TEST_F(RoutineTest, EachQuestionAboutAnUnmarkedFailureShowsTheSameChain)
{
    form.expect(Press::Retry).expect(Press::Ignore);
    Routine routine("a.b");
    routine.run([&] {
        dao::DBEngine::Errors().Append({1, "no such table"});
        throw RuntimeError(ErrorNumber::OdbcFailed);
    });
    ASSERT_EQ(form.shown().size(), 2U);
    EXPECT_EQ(form.shown()[0].description, "\nError: &H1\nno such table\n");
    EXPECT_EQ(form.shown()[1].description, form.shown()[0].description);
    EXPECT_EQ(dao::DBEngine::Errors().Count(), 0);
}

TEST_F(RoutineTest, AnAnswerEmptiesTheErrorChain)
{
    form.expect(Press::Retry);
    Routine routine("a.b");
    routine.run([&] {
        step([&] {
            EXPECT_EQ(dao::DBEngine::Errors().Count(), 0);
            if (++tries == 1) {
                dao::DBEngine::Errors().Append({1, "old entry"});
                throw RuntimeError(ErrorNumber::OdbcFailed);
            }
        });
    });
    EXPECT_EQ(tries, 2);
}

TEST_F(RoutineTest, AHelperWithoutATrapFailsInItsCallerAndAloneIsRepeated)
{
    form.expect(Press::Retry);
    int helperCalls = 0;
    const auto helper = [&] {
        ++helperCalls;
        failingStep(1);
    };
    Routine routine("a.caller");
    EXPECT_TRUE(routine.run([&] { helper(); }));
    EXPECT_EQ(helperCalls, 1);
    EXPECT_EQ(tries, 2);
    EXPECT_EQ(form.shown().front().trappedIn, "a.caller");
}

TEST_F(RoutineTest, ALargerStepIsRepeatedWholeAndWhatFailsInsideIsAskedForOnce)
{
    form.expect(Press::Retry);
    int outerRuns = 0;
    Routine routine("a.b");
    routine.run([&] {
        step([&] {
            ++outerRuns;
            failingStep(1);
        });
    });
    EXPECT_EQ(outerRuns, 2);
    EXPECT_EQ(form.shown().size(), 1U);
}

TEST_F(RoutineTest, ARoutineCalledInsideAStepAnswersForItself)
{
    form.expect(Press::Ignore);
    int outerRuns = 0;
    Routine routine("a.outer");
    EXPECT_TRUE(routine.run([&] {
        step([&] {
            ++outerRuns;
            Routine inner("a.inner");
            EXPECT_FALSE(inner.run([&] { failingStep(1); }));
        });
    }));
    EXPECT_EQ(outerRuns, 1);
    EXPECT_EQ(form.shown().front().trappedIn, "a.inner");
}

TEST_F(RoutineTest, AStepBesideTheBodyFailsInTheCaller)
{
    form.expect(Press::Ignore);
    Routine caller("a.caller");
    EXPECT_FALSE(caller.run([&] {
        const Routine routine("a.b");
        failingStep(1);
        ADD_FAILURE() << "the step was passed over";
    }));
    EXPECT_EQ(form.shown().front().trappedIn, "a.caller");
}

TEST_F(RoutineTest, AdditionalInformationIsAskedForAtTheFailure)
{
    form.expect(Press::Ignore).expect(Press::Ignore);
    QString sql = "first";
    int asked = 0;
    Routine routine("a.b");
    routine.additional([&] {
        ++asked;
        return sql;
    });
    routine.run([&] { failingStep(0); });
    EXPECT_EQ(asked, 0);
    tries = 0;
    routine.run([&] {
        sql = "second";
        failingStep(1);
    });
    Routine other("a.c");
    tries = 0;
    other.run([&] { failingStep(1); });
    ASSERT_EQ(form.shown().size(), 2U);
    EXPECT_EQ(form.shown()[0].additional, "second");
    EXPECT_EQ(form.shown()[1].additional, "None");
}

TEST_F(RoutineTest, ReportsUnderItsSecondNameWhereItHasOne)
{
    form.expect(Press::Ignore);
    Routine routine("mdiMain.tvw_Explorer_Expand", "mdiMain.tvwExplorer_Expand");
    routine.run([&] { failingStep(1); });
    EXPECT_EQ(form.shown().front().trappedIn, "mdiMain.tvwExplorer_Expand");
    EXPECT_EQ(form.shown().front().callStack, QStringList({"mdiMain.tvw_Explorer_Expand"}));
}

TEST_F(RoutineTest, PassingNumbersReachTheBodyUnasked)
{
    Routine routine("a.b");
    routine.passing({ErrorNumber::FileNotFound, ErrorNumber::Cancelled});
    bool caught = false;
    EXPECT_TRUE(routine.run([&] {
        try {
            failingStep(1, ErrorNumber::Cancelled);
        } catch (const RuntimeError& error) {
            caught = error.number() == ErrorNumber::Cancelled;
        }
    }));
    EXPECT_TRUE(caught);
}

TEST_F(RoutineTest, APassingNumberThatTheBodyLetsThroughIsReported)
{
    form.expect(Press::Ignore);
    Routine routine("a.b");
    routine.passing({ErrorNumber::FileNotFound});
    EXPECT_FALSE(routine.run([&] { failingStep(1, ErrorNumber::FileNotFound); }));
    EXPECT_EQ(form.shown().front().number, "53");
}

TEST_F(RoutineTest, OtherNumbersAreReportedInSpiteOfPassingOnes)
{
    form.expect(Press::Ignore);
    Routine routine("a.b");
    routine.passing({ErrorNumber::FileNotFound});
    EXPECT_FALSE(routine.run([&] { failingStep(1, ErrorNumber::DiskFull); }));
}

TEST_F(RoutineTest, TheFormShowsBetweenTheTwoCallsAroundIt)
{
    QStringList order;
    form.expect([&](QWidget& shown) {
        order.append("form");
        ScriptedErrorForm::press(shown, Press::Ignore);
    });
    Routine routine("a.b");
    routine.aroundReport([&] { order.append("before"); }, [&] { order.append("after"); });
    routine.run([&] { failingStep(1); });
    EXPECT_EQ(order, QStringList({"before", "form", "after"}));
}

TEST_F(RoutineTest, OtherExceptionsPassThroughUntouched)
{
    const auto failing = [] {
        Routine routine("a.b");
        routine.run([] { step([]() { throw std::logic_error("broken"); }); });
    };
    EXPECT_THROW(failing(), std::logic_error);
    EXPECT_EQ(StepTrap::current(), nullptr);
}

TEST_F(RoutineTest, AChainThatCannotBeReadIsShownInItsPlaceAndRetryRepeatsTheStep)
{
    form.expect(Press::Retry);
    Routine routine("a.b");
    routine.additional([] { return QString("DELETE FROM TW_FILE"); });
    EXPECT_TRUE(routine.run([&] {
        step([&] {
            if (++tries == 1) {
                dao::DBEngine::Errors().Append({1, "isam without a code"});
                throw RuntimeError(ErrorNumber::OdbcFailed);
            }
        });
    }));
    EXPECT_EQ(tries, 2);
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().number, "13");
    EXPECT_EQ(form.shown().front().additional, "DELETE FROM TW_FILE");
    EXPECT_EQ(form.shown().front().trappedIn, "a.b");
}

TEST_F(RoutineTest, APrivilegesFailureEndsTheRoutineQuietlyAndTakesItsNameOff)
{
    ScriptedBoxes boxes;
    boxes.expect("The current user has insufficient privileges to complete this action.", boxes::Icon::None);
    {
        Routine routine("a.b");
        EXPECT_FALSE(routine.run([&] {
            step([] {
                dao::DBEngine::Errors().Append({1, "no privileges on TW_FILE"});
                dao::DBEngine::Errors().Append({3146, "ODBC--call failed."});
                throw RuntimeError(ErrorNumber::OdbcFailed);
            });
        }));
    }
    EXPECT_TRUE(form.shown().empty());
    EXPECT_EQ(dao::DBEngine::Errors().Count(), 0);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(RoutineTest, UnloadingTheFormInTheMiddleOfARoutineEmptiesTheStackAndDoesNoHarm)
{
    form.expect(Press::Ignore);
    {
        Routine outer("mdiMain.FetchTreeviewRoot");
        outer.run([&] {
            frmTWErr::Unload();
            EXPECT_EQ(frmTWErr::CallStack(), QStringList());
            Routine later("frmWelcome.Display");
            later.run([&] { failingStep(1); });
        });
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    }
    EXPECT_EQ(form.shown().front().callStack, QStringList({"frmWelcome.Display"}));
}

TEST_F(RoutineTest, PushAndPopCostNextToNothing)
{
    frmTWErr::Load();
    constexpr int pairs = 200'000;
    qint64 best = std::numeric_limits<qint64>::max();
    for (int attempt = 0; attempt < 5; ++attempt) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < pairs; ++i) {
            frmTWErr::Push("a.b");
            frmTWErr::Pop();
        }
        best = std::min(best, timer.nsecsElapsed());
    }
    RecordProperty("picosecondsPerPair", static_cast<int>(best * 1000 / pairs));
    EXPECT_LT(best / pairs, 500) << "nanoseconds a pair";
}

} // namespace
