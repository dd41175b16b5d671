#pragma once

#include <QString>

#include <functional>
#include <vector>

/// One thing that a validation says about a line.
struct Finding {
    enum class Severity { Error, Warning, Stopped };

    int line = 0;
    Severity severity = Severity::Error;
    QString type;
    QString description;
};

/// All findings of a run in their order. Errors are limited: the one behind the 5000th is the last, and says so.
class Findings
{
public:
    static constexpr int errorLimit = 5000;

    /// `tooMany` is called once when the limit of errors is passed.
    explicit Findings(std::function<void()> tooMany = {}) : m_tooMany(std::move(tooMany)) {}

    /// Adds nothing once the limit is passed.
    void AddError(int line, const QString& type, const QString& description);
    void AddWarning(int line, const QString& type, const QString& description);
    /// A line that passed leaves nothing behind.
    void AddPassed(int /*line*/, const QString& /*type*/, const QString& /*description*/) {}

    int errors() const { return m_errors; }
    int warnings() const { return m_warnings; }
    /// The user wants to go on in spite of the warnings.
    void acceptWarnings() { m_warnings = 0; }
    const std::vector<Finding>& all() const { return m_all; }
    void clear();

private:
    std::function<void()> m_tooMany;
    std::vector<Finding> m_all;
    int m_errors = 0;
    int m_warnings = 0;
};
