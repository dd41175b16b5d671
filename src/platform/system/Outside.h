#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

/// Everything beyond the program's own windows, settings and catalogs: other programs, the printer, the clipboard, the
/// clock and the end of the process. One real implementation; tests put a recording one in its place.
class Outside
{
public:
    virtual ~Outside() = default;

    /// Opens a file, a mail address or a web address with whatever the desktop has registered for it; false if nothing
    /// is, or if the file does not exist.
    virtual bool open(const QString& target) = 0;
    /// Starts a program without waiting for it; false if it can't be started.
    virtual bool run(const QString& program, const QStringList& arguments) = 0;
    /// Prints one document on the default printer, the title larger and bold. Raises 482 if it can't.
    virtual void print(const QString& title, const QString& body) = 0;
    virtual void setClipboard(const QString& text) = 0;
    virtual QDateTime now() = 0;
    /// Ends the process at once: nothing is saved and nothing is torn down.
    [[noreturn]] virtual void endProcess() = 0;

    static Outside& instance();
    /// Replaces the implementation and returns the former replacement; null stands for the real one.
    static Outside* replace(Outside* outside);
};
