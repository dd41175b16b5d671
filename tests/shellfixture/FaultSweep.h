#pragma once

#include "ScriptedErrorForm.h"
#include "StatementRecorder.h"

#include <QStringList>

#include <functional>
#include <optional>

/// Reruns a scenario once for every statement that it sends, each time with another one of them failing once, and
/// answers the error form in both ways that go on:
///
/// - Retry: the statement is sent again, alone, and everything ends as it does without the fault.
/// - Ignore: the routine ends there, the call stack is as it was, and the program goes on.
///
/// The scenario must send the same statements each time that it is prepared anew.
class FaultSweep
{
public:
    /// The statement that fails, counted from 1, and the answer to its error form.
    struct Fault {
        int statement;
        Press answer;
    };

    struct Scenario {
        /// Brings everything back to where the scenario begins. What it sends is not counted.
        std::function<void()> prepare;
        /// What is swept. It scripts the boxes that come: others than without a fault may come after an Ignore.
        std::function<void(const std::optional<Fault>& fault)> act;
        /// Everything that the scenario is to bring about, in the catalog and on the screen.
        std::function<QStringList()> outcome;
        /// What is sent behind the statement that failed and was ignored; nothing unless this says otherwise.
        std::function<QStringList(int statement, const QStringList& withoutFault)> afterIgnore = {};
        /// What a user does next after an Ignore. It must bring about the outcome.
        std::function<void()> goOn;
    };

    FaultSweep(StatementRecorder& statements, ScriptedErrorForm& errors) : m_statements(statements), m_errors(errors) {}

    /// Fails the test wherever the scenario does not keep to the above.
    void run(const Scenario& scenario);

private:
    void runOnce(const Scenario& scenario, const std::optional<Fault>& fault);

    StatementRecorder& m_statements;
    ScriptedErrorForm& m_errors;
    QStringList m_withoutFault;
    QStringList m_outcome;
};
