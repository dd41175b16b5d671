#pragma once

#include "RuntimeError.h"

#include <utility>

/// What a trap answers to a failed step. The program ends at once on an abort, so a step never sees one.
enum class StepAnswer { Retry, Ignore };

/// The innermost trap in force, as the layers below the traps see it: whoever runs a step that can be retried asks it
/// while everything around the step still stands.
class StepTrap
{
public:
    StepTrap(const StepTrap&) = delete;
    StepTrap& operator=(const StepTrap&) = delete;

    static StepTrap* current();

    /// True while a step of this trap runs: what fails inside belongs to that step and is not asked for by itself.
    bool insideStep() const { return m_insideStep; }

    /// Reports the failure and returns the answer. Does not return when the user aborts.
    /// Throws the error itself when this trap handles that number without asking.
    virtual StepAnswer failed(const RuntimeError& error) = 0;

    /// Leaves the routine by its normal exit.
    [[noreturn]] virtual void leave() = 0;

protected:
    StepTrap();
    virtual ~StepTrap();

private:
    template <class F>
    friend auto step(F&& body) -> decltype(body());

    StepTrap* m_outer;
    bool m_insideStep = false;
};

/// Runs one step: a piece of work that is repeated alone, and whole, when the user answers a failure of it by Retry.
/// On Ignore the routine that owns the innermost trap is left. Without a trap, or inside another step of the same trap,
/// the failure is passed on as it is.
template <class F>
auto step(F&& body) -> decltype(body())
{
    StepTrap* trap = StepTrap::current();
    if (!trap || trap->m_insideStep)
        return body();

    for (;;) {
        try {
            struct Inside {
                explicit Inside(bool& flag) : flag(flag) { flag = true; }
                ~Inside() { flag = false; }
                bool& flag;
            } inside(trap->m_insideStep);
            return body();
        } catch (const RuntimeError& error) {
            if (trap->failed(error) == StepAnswer::Ignore)
                trap->leave();
        }
    }
}
