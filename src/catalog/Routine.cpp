#include "Routine.h"

#include "DBEngine.h"
#include "Outside.h"
#include "frmTWErr.h"

#include <algorithm>
#include <stdexcept>

namespace
{

/// Calls a function, if there is one, when the scope ends.
class AtEnd
{
public:
    explicit AtEnd(const std::function<void()>& call) : m_call(call) {}
    ~AtEnd()
    {
        if (m_call)
            m_call();
    }
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;

private:
    const std::function<void()>& m_call;
};

} // namespace

Routine::Routine(const char* name, const char* reportedAs) : m_reportedAs(reportedAs ? reportedAs : name)
{
    frmTWErr::Push(name);
}

Routine::~Routine()
{
    frmTWErr::Pop();
}

Routine& Routine::additional(std::function<QString()> text)
{
    m_additional = std::move(text);
    return *this;
}

Routine& Routine::passing(std::initializer_list<ErrorNumber> numbers)
{
    if (numbers.size() > m_passing.size())
        throw std::length_error("Routine::passing");
    std::copy(numbers.begin(), numbers.end(), m_passing.begin());
    m_passingCount = numbers.size();
    return *this;
}

Routine& Routine::aroundReport(std::function<void()> before, std::function<void()> after)
{
    m_beforeReport = std::move(before);
    m_afterReport = std::move(after);
    return *this;
}

StepAnswer Routine::failed(const RuntimeError& error)
{
    // Beside its body a routine has no exit to leave by, so the failure goes on to the caller.
    if (!m_running || isPassing(error.number()))
        throw error;
    return report(error);
}

void Routine::leave()
{
    throw Left{this};
}

bool Routine::isPassing(ErrorNumber number) const
{
    const auto end = m_passing.begin() + static_cast<std::ptrdiff_t>(m_passingCount);
    return std::find(m_passing.begin(), end, number) != end;
}

StepAnswer Routine::report(const RuntimeError& error)
{
    const QString routine = QString::fromUtf8(m_reportedAs);
    QString additional = QStringLiteral("None");
    frmTWErr::Response response = frmTWErr::Abort;
    {
        if (m_beforeReport)
            m_beforeReport();
        const AtEnd after(m_afterReport);
        try {
            if (m_additional)
                additional = m_additional();
            response = frmTWErr::OnError(routine, additional, error);
        } catch (const RuntimeError& unreadable) {
            // The report itself failed, as on a message of the file manager without a code: that is what can be shown.
            response = frmTWErr::StandardErr(routine, additional, unreadable);
        }
        if (response == frmTWErr::Abort)
            Outside::instance().endProcess();
    }
    dao::DBEngine::Errors().Clear();

    return response == frmTWErr::Retry ? StepAnswer::Retry : StepAnswer::Ignore;
}

void Routine::reportUntilIgnored(const RuntimeError& error)
{
    // An answer empties the error chain; each further question needs it as it was.
    const dao::Errors chain = dao::DBEngine::Errors();
    while (report(error) == StepAnswer::Retry)
        dao::DBEngine::Errors() = chain;
}
