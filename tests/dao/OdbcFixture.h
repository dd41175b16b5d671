#pragma once

#include "DBEngine.h"
#include "Database.h"
#include "QtPrinting.h"
#include "Recordset.h"
#include "RuntimeError.h"
#include "Step.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <optional>

/// A folder with the driver manager's files for one process, emptied for every test: the driver manager keeps the path
/// of its system folder from its first use on.
class OdbcFixture : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    static QString folder();
    static QString userIni() { return folder() + QStringLiteral("/user.ini"); }
    static QString systemIni() { return folder() + QStringLiteral("/odbc.ini"); }
    static void write(const QString& path, const QByteArray& bytes);
    static QByteArray read(const QString& path);

    /// Opens a connection to the driver of the tests' own, with further attributes such as "Activities=1".
    std::unique_ptr<dao::Database> openScripted(const QString& attributes = {});
    std::unique_ptr<dao::Database> open(const QString& connect);

    std::unique_ptr<dao::Workspace> workspace;
};

/// The texts of the error chain as "number description".
QStringList chain();

/// The number of the failure that an action raises, or nothing.
template <class Action>
std::optional<ErrorNumber> raised(Action&& action)
{
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return std::nullopt;
}

/// Keeps the leak checker from what the driver manager itself loses: the DSN of a connect string that names a driver
/// first.
class DriverManagersOwnLeak
{
public:
    DriverManagersOwnLeak();
    ~DriverManagersOwnLeak();
    DriverManagersOwnLeak(const DriverManagersOwnLeak&) = delete;
    DriverManagersOwnLeak& operator=(const DriverManagersOwnLeak&) = delete;
};

/// All texts of a column, from the current row on.
QStringList columnTexts(dao::Recordset& recordset, const QString& column);

/// A trap that gives prepared answers and counts how often it is asked.
class AnsweringTrap final : public StepTrap
{
public:
    struct Left {
    };
    explicit AnsweringTrap(std::deque<StepAnswer> answers) : m_answers(std::move(answers)) {}

    StepAnswer failed(const RuntimeError& error) override;
    [[noreturn]] void leave() override { throw Left(); }

    /// For each failure its number and the chain at that time.
    QStringList failures;

private:
    std::deque<StepAnswer> m_answers;
};
