#include "Findings.h"

#include "modString.h"

using namespace Qt::StringLiterals;

void Findings::AddError(int line, const QString& type, const QString& description)
{
    // What else is wrong with the line that has passed the limit would stand behind the row that says so.
    if (m_errors > errorLimit)
        return;
    m_all.push_back({line, Finding::Severity::Error, type, description});
    if (++m_errors <= errorLimit)
        return;
    m_all.push_back(
        {line, Finding::Severity::Stopped, u"?"_s,
         "Stopped validating after "_L1 + QString::number(m_errors) + modString::Pluralise(u" error"_s, m_errors)});
    if (m_tooMany)
        m_tooMany();
}

void Findings::AddWarning(int line, const QString& type, const QString& description)
{
    m_all.push_back({line, Finding::Severity::Warning, type, description});
    ++m_warnings;
}

void Findings::clear()
{
    m_all.clear();
    m_errors = 0;
    m_warnings = 0;
}
