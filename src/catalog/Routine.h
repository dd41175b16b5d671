#pragma once

#include "RuntimeError.h"
#include "Step.h"

#include <QString>

#include <array>
#include <cstddef>
#include <functional>
#include <initializer_list>

/// A routine of the program: its name stands on the call stack for as long as it lives, and its body runs under its
/// trap. A failing step (see Step.h) goes to the error form at once; Retry repeats that step alone, Ignore leaves the
/// body at its end, Abort ends the program. A failure outside of any step is reported when it reaches the routine;
/// since it would come again, Retry asks again there. Exceptions other than RuntimeError pass through.
///
///     Routine routine("frmFile.Display");
///     routine.run([&] { ... });
///
/// Only what runs inside of `run` is under the trap; what fails beside it is passed on to the caller.
class Routine final : private StepTrap
{
public:
    /// Both names must be literals; the second one is what reports show where it differs from the first.
    explicit Routine(const char* name, const char* reportedAs = nullptr);
    ~Routine() override;

    /// The text that a report shows as additional information; "None" unless set. Asked at the time of the failure.
    Routine& additional(std::function<QString()> text);

    /// Failures of these numbers are not reported but pass to the body, which catches what it handles. One that the
    /// body lets through is reported like any other. Eight numbers at the most.
    Routine& passing(std::initializer_list<ErrorNumber> numbers);

    /// Run before and after the error form of this routine shows: some routines hide the main window meanwhile.
    Routine& aroundReport(std::function<void()> before, std::function<void()> after);

    /// Runs the body under the trap. Returns whether it came to its end; false after an Ignore.
    template <class Body>
    bool run(Body&& body)
    {
        const Running running(*this);
        try {
            body();
            return true;
        } catch (const Left& left) {
            if (left.routine != this)
                throw;
        } catch (const RuntimeError& error) {
            reportUntilIgnored(error);
        }
        return false;
    }

private:
    /// Thrown by an Ignore, from the failed step to the `run` of the routine that is left.
    struct Left {
        const Routine* routine;
    };

    class Running
    {
    public:
        explicit Running(Routine& routine) : m_routine(routine), m_former(routine.m_running)
        {
            routine.m_running = true;
        }
        ~Running() { m_routine.m_running = m_former; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        Routine& m_routine;
        bool m_former;
    };

    StepAnswer failed(const RuntimeError& error) override;
    [[noreturn]] void leave() override;

    bool isPassing(ErrorNumber number) const;
    StepAnswer report(const RuntimeError& error);
    void reportUntilIgnored(const RuntimeError& error);

    const char* m_reportedAs;
    std::function<QString()> m_additional;
    std::function<void()> m_beforeReport;
    std::function<void()> m_afterReport;
    std::array<ErrorNumber, 8> m_passing;
    std::size_t m_passingCount = 0;
    bool m_running = false;
};
