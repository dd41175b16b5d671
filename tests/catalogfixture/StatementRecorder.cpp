#include "StatementRecorder.h"

#include <utility>

StatementRecorder::StatementRecorder() : m_former(dao::DBEngine::setObserver(this)) {}

StatementRecorder::~StatementRecorder()
{
    dao::DBEngine::setObserver(m_former);
}

QStringList StatementRecorder::writes() const
{
    QStringList found;
    for (const QString& statement : m_statements) {
        if (!statement.startsWith("SELECT"))
            found.append(statement);
    }
    return found;
}

void StatementRecorder::clear()
{
    m_statements.clear();
    m_datasources.clear();
    m_failures.clear();
}

void StatementRecorder::failAt(int k, std::vector<dao::Error> chain)
{
    m_failures[m_statements.size() + k] = std::move(chain);
}

std::vector<dao::Error> StatementRecorder::usualFailure()
{
    return {{-1, "[Test] The statement was made to fail."}};
}

std::vector<dao::Error> StatementRecorder::beforeStatement(const QString& datasource, const QString& statement)
{
    m_statements.append(statement);
    m_datasources.append(datasource);
    const auto failure = m_failures.find(m_statements.size());
    if (failure == m_failures.end())
        return {};
    std::vector<dao::Error> chain = std::move(failure->second);
    m_failures.erase(failure);
    return chain;
}
