#include "Findings.h"

#include "modString.h"

using namespace Qt::StringLiterals;

void Findings::AddError(int line, const QString& type, const QString& description)
{
    m_all.push_back({line, Finding::Severity::Error, type, description});
    if (++m_errors != errorLimit + 1)
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
