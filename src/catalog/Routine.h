#pragma once

#include "RuntimeError.h"
#include "Step.h"

#include <QString>

#include <functional>
#include <initializer_list>
#include <vector>

/// A routine of the program: its name stands on the call stack for as long as it lives, and its body runs under its
/// trap. A failing step (see Step.h) goes to the error form at once; Retry repeats that step alone, Ignore leaves the
/// body at its end, Abort ends the program. A failure outside of any step is reported when it reaches the routine.
///
///     Routine routine("frmFile.Display");
///     routine.run([&] { ... });
class Routine final : private StepTrap
{
public:
    /// Both names must be literals; the second one is what reports show where it differs from the first.
    explicit Routine(const char* name, const char* reportedAs = nullptr);
    ~Routine() override;

    /// The text that a report shows as additional information; "None" unless set. Asked at the time of the failure.
    Routine& additional(std::function<QString()> text);

    /// Failures of these numbers are not reported but pass to the body, which catches what it handles.
    Routine& passing(std::initializer_list<ErrorNumber> numbers);

    /// Run before and after the error form of this routine shows: some routines hide the main window meanwhile.
    Routine& aroundReport(std::function<void()> before, std::function<void()> after);

    /// Runs the body under the trap. Returns whether it came to its end; false after an Ignore.
    bool run(const std::function<void()>& body);
};
