#include "Step.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace
{

struct Left {
};

/// A trap that answers by a script and is left by an exception of its own.
class Trap final : public StepTrap
{
public:
    explicit Trap(std::deque<StepAnswer> answers = {}) : m_answers(std::move(answers)) {}

    StepAnswer failed(const RuntimeError& error) override
    {
        reported.push_back(static_cast<int>(error.number()));
        if (whileAsked)
            whileAsked();
        if (error.number() == passing)
            throw RuntimeError(error);
        if (m_answers.empty()) {
            ADD_FAILURE() << "Asked once too often";
            return StepAnswer::Ignore;
        }
        const StepAnswer answer = m_answers.front();
        m_answers.pop_front();
        return answer;
    }

    [[noreturn]] void leave() override { throw Left{}; }

    std::vector<int> reported;
    std::function<void()> whileAsked;
    ErrorNumber passing{};

private:
    std::deque<StepAnswer> m_answers;
};

/// Work that fails the first few times.
struct Shaky {
    int failures;
    int runs = 0;

    int operator()()
    {
        if (++runs <= failures)
            throw RuntimeError(ErrorNumber::OdbcFailed);
        return runs;
    }
};

} // namespace

TEST(StepTrap, TheInnermostOneIsCurrent)
{
    EXPECT_EQ(StepTrap::current(), nullptr);
    {
        Trap outer;
        EXPECT_EQ(StepTrap::current(), &outer);
        {
            Trap inner;
            EXPECT_EQ(StepTrap::current(), &inner);
        }
        EXPECT_EQ(StepTrap::current(), &outer);
    }
    EXPECT_EQ(StepTrap::current(), nullptr);
}

TEST(Step, WithoutATrapAFailurePasses)
{
    Shaky work{1};
    EXPECT_THROW(step(work), RuntimeError);
    EXPECT_EQ(work.runs, 1);
    EXPECT_EQ(step(work), 2);
}

TEST(Step, GivesWhatItsBodyGives)
{
    Trap trap;
    int value = 7;
    EXPECT_EQ(step([] { return std::string("text"); }), "text");
    int& reference = step([&]() -> int& { return value; });
    EXPECT_EQ(&reference, &value);
    step([&] { value = 8; });
    EXPECT_EQ(value, 8);
}

TEST(Step, RetryRepeatsTheStepAloneUntilItSucceeds)
{
    Trap trap({StepAnswer::Retry, StepAnswer::Retry});
    int before = 0;
    Shaky work{2};
    ++before;
    EXPECT_EQ(step(work), 3);
    EXPECT_EQ(before, 1);
    EXPECT_EQ(trap.reported, (std::vector{3146, 3146}));
}

TEST(Step, IgnoreLeavesTheRoutine)
{
    Trap trap({StepAnswer::Retry, StepAnswer::Ignore});
    Shaky work{9};
    EXPECT_THROW(step(work), Left);
    EXPECT_EQ(work.runs, 2);
    EXPECT_FALSE(trap.insideStep());
}

TEST(Step, AStepInsideAStepOfTheSameTrapBelongsToTheOuterOne)
{
    Trap trap({StepAnswer::Retry});
    int outerRuns = 0;
    Shaky work{1};
    step([&] {
        ++outerRuns;
        EXPECT_TRUE(trap.insideStep());
        step(work);
        EXPECT_TRUE(trap.insideStep());
    });
    EXPECT_EQ(outerRuns, 2);
    EXPECT_EQ(work.runs, 2);
    EXPECT_EQ(trap.reported.size(), 1U);
    EXPECT_FALSE(trap.insideStep());
}

TEST(Step, AStepOfAnInnerTrapIsAskedForThere)
{
    Trap outer;
    Shaky work{1};
    int outerRuns = 0;
    step([&] {
        ++outerRuns;
        Trap inner({StepAnswer::Retry});
        EXPECT_FALSE(inner.insideStep());
        step(work);
        EXPECT_EQ(inner.reported.size(), 1U);
    });
    EXPECT_EQ(outerRuns, 1);
    EXPECT_TRUE(outer.reported.empty());
}

TEST(Step, AfterAnInnerTrapTheOuterOneIsAskedAgain)
{
    Trap outer({StepAnswer::Ignore});
    {
        Trap inner({StepAnswer::Ignore});
        Shaky work{1};
        EXPECT_THROW(step(work), Left);
    }
    Shaky work{1};
    EXPECT_THROW(step(work), Left);
    EXPECT_EQ(outer.reported.size(), 1U);
}

TEST(Step, TheTrapIsAskedOutsideOfTheStep)
{
    Trap trap({StepAnswer::Retry});
    bool inside = true;
    trap.whileAsked = [&] { inside = trap.insideStep(); };
    Shaky work{1};
    step(work);
    EXPECT_FALSE(inside);
}

TEST(Step, WhatATrapHandlesWithoutAskingReachesTheBodyOnce)
{
    Trap trap;
    trap.passing = ErrorNumber::OdbcFailed;
    Shaky work{1};
    bool caught = false;
    try {
        step(work);
    } catch (const RuntimeError& error) {
        caught = error.number() == ErrorNumber::OdbcFailed;
    }
    EXPECT_TRUE(caught);
    EXPECT_EQ(work.runs, 1);
    EXPECT_EQ(trap.reported.size(), 1U);
    EXPECT_FALSE(trap.insideStep());
}

TEST(Step, AFailureThatIsNoRunTimeErrorIsNotAskedFor)
{
    Trap trap;
    EXPECT_THROW(step([]() -> void { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_TRUE(trap.reported.empty());
    EXPECT_FALSE(trap.insideStep());
}

TEST(Step, AnotherStepRunsAfterOneWasRetried)
{
    Trap trap({StepAnswer::Retry, StepAnswer::Retry});
    Shaky first{1};
    Shaky second{1};
    step(first);
    step(second);
    EXPECT_EQ(first.runs, 2);
    EXPECT_EQ(second.runs, 2);
}
