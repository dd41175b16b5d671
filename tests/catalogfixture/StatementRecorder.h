#pragma once

#include "DBEngine.h"

#include <QStringList>

#include <map>
#include <vector>

/// Watches every statement of the program for as long as it lives, and makes those fail that a test has named.
class StatementRecorder final : public dao::StatementObserver
{
public:
    StatementRecorder();
    ~StatementRecorder() override;
    StatementRecorder(const StatementRecorder&) = delete;
    StatementRecorder& operator=(const StatementRecorder&) = delete;

    /// The exact texts in order, failed ones included.
    const QStringList& statements() const { return m_statements; }
    /// The datasource of each of them.
    const QStringList& datasources() const { return m_datasources; }
    /// The statements that change something.
    QStringList writes() const;
    /// Forgets what it has seen; counting starts anew at 1.
    void clear();

    /// The k-th statement from now on fails, counted from 1, with this chain. It fails once.
    void failAt(int k, std::vector<dao::Error> chain = usualFailure());
    /// Whether everything that was to fail has failed.
    bool failuresDone() const { return m_failures.empty(); }

    static std::vector<dao::Error> usualFailure();

    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override;

private:
    dao::StatementObserver* m_former;
    QStringList m_statements;
    QStringList m_datasources;
    /// By the number of the statement, counted from the first one that is remembered.
    std::map<qsizetype, std::vector<dao::Error>> m_failures;
};
