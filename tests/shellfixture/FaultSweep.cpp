#include "FaultSweep.h"

#include "DBEngine.h"
#include "MousePointer.h"
#include "frmTWErr.h"

#include <gtest/gtest.h>

#include <ostream>

void FaultSweep::run(const Scenario& scenario)
{
    {
        SCOPED_TRACE("without a fault");
        runOnce(scenario, std::nullopt);
    }
    ASSERT_FALSE(m_withoutFault.isEmpty()) << "the scenario sends nothing";
    for (int statement = 1; statement <= m_withoutFault.size(); ++statement) {
        for (const Press answer : {Press::Retry, Press::Ignore}) {
            SCOPED_TRACE((answer == Press::Retry ? "Retry of " : "Ignore of ") +
                         m_withoutFault[statement - 1].toStdString());
            runOnce(scenario, Fault{statement, answer});
        }
    }
}

void FaultSweep::runOnce(const Scenario& scenario, const std::optional<Fault>& fault)
{
    scenario.prepare();
    const QStringList stack = frmTWErr::CallStack();
    const int pointer = mousepointer::current();
    m_statements.clear();
    if (fault) {
        m_statements.failAt(fault->statement);
        m_errors.expect(fault->answer);
    }

    scenario.act(fault);

    EXPECT_TRUE(m_statements.failuresDone()) << "the statement was never sent";
    m_errors.verify();
    EXPECT_EQ(frmTWErr::CallStack(), stack);
    EXPECT_EQ(mousepointer::current(), pointer);
    EXPECT_EQ(dao::DBEngine::Errors().Count(), 0) << "an old error is left";
    const QStringList sent = m_statements.statements();
    if (!fault) {
        m_withoutFault = sent;
        m_outcome = scenario.outcome();
        return;
    }

    QStringList expected = m_withoutFault.first(fault->statement);
    if (fault->answer == Press::Retry)
        expected += m_withoutFault.sliced(fault->statement - 1);
    else if (scenario.afterIgnore)
        expected += scenario.afterIgnore(fault->statement, m_withoutFault);
    EXPECT_EQ(sent, expected);
    if (fault->answer == Press::Ignore)
        scenario.goOn();
    EXPECT_EQ(scenario.outcome(), m_outcome);
}
