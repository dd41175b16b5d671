#pragma once

#include "Outside.h"
#include "RuntimeError.h"

#include <optional>
#include <vector>

/// Thrown in place of the process's end. It is no exception that the program knows, so nothing there handles it.
struct ProcessEnded {
};

/// Stands in for the world outside for as long as it lives: it records what the program does to it and does nothing.
/// Its answers and its clock are what the test sets.
class RecordingOutside final : public Outside
{
public:
    struct Run {
        QString program;
        QStringList arguments;
    };
    struct Print {
        QString title;
        QString body;
    };

    RecordingOutside();
    ~RecordingOutside() override;
    RecordingOutside(const RecordingOutside&) = delete;
    RecordingOutside& operator=(const RecordingOutside&) = delete;

    bool open(const QString& target) override;
    bool run(const QString& program, const QStringList& arguments) override;
    void print(const QString& title, const QString& body) override;
    void setClipboard(const QString& text) override;
    QDateTime now() override;
    [[noreturn]] void endProcess() override;

    /// Whether something is registered for what is opened, and whether programs can be started.
    bool opens = true;
    bool runs = true;
    /// Raised by every print.
    std::optional<RuntimeError> printFailure;
    /// Friday, 14 March 2003, 15:09:26.
    QDateTime clock{QDate(2003, 3, 14), QTime(15, 9, 26)};

    QStringList opened;
    std::vector<Run> started;
    std::vector<Print> printed;
    QString clipboard;
    int ends = 0;

private:
    Outside* m_former;
};
