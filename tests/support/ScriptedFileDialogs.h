#pragma once

#include "FileDialogs.h"

#include <deque>
#include <vector>

/// Stands in for the user in front of file dialogs for as long as it lives: each dialog must be the next one of the
/// script, in mode and title, and gets the script's path. A dialog that is not in the script, and one of the script
/// that never came, fail the test.
class ScriptedFileDialogs final : public filedialogs::Presenter
{
public:
    ScriptedFileDialogs();
    ~ScriptedFileDialogs() override;
    ScriptedFileDialogs(const ScriptedFileDialogs&) = delete;
    ScriptedFileDialogs& operator=(const ScriptedFileDialogs&) = delete;

    ScriptedFileDialogs& expect(filedialogs::Mode mode, const QString& title, const QString& path);
    ScriptedFileDialogs& expectCancelled(filedialogs::Mode mode, const QString& title);

    /// Fails the test when dialogs of the script are left, and forgets them.
    void verify();
    /// All dialogs that came, expected or not.
    const std::vector<filedialogs::Request>& requests() const { return m_requests; }

    QString choose(const filedialogs::Request& request) override;

private:
    struct Expected {
        filedialogs::Mode mode;
        QString title;
        QString path;
    };

    filedialogs::Presenter* m_former;
    std::deque<Expected> m_script;
    std::vector<filedialogs::Request> m_requests;
};
