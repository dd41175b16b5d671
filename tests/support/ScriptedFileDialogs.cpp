#include "ScriptedFileDialogs.h"

#include <gtest/gtest.h>

#include <utility>

namespace
{

std::string described(filedialogs::Mode mode, const QString& title)
{
    return (mode == filedialogs::Mode::Open ? "to open, \"" : "to save, \"") + title.toStdString() + '"';
}

} // namespace

ScriptedFileDialogs::ScriptedFileDialogs() : m_former(filedialogs::setPresenter(this)) {}

ScriptedFileDialogs::~ScriptedFileDialogs()
{
    verify();
    filedialogs::setPresenter(m_former);
}

ScriptedFileDialogs& ScriptedFileDialogs::expect(filedialogs::Mode mode, const QString& title, const QString& path)
{
    m_script.push_back({mode, title, path});
    return *this;
}

ScriptedFileDialogs& ScriptedFileDialogs::expectCancelled(filedialogs::Mode mode, const QString& title)
{
    return expect(mode, title, {});
}

void ScriptedFileDialogs::verify()
{
    for (const Expected& expected : m_script)
        ADD_FAILURE() << "A file dialog never came: " << described(expected.mode, expected.title);
    m_script.clear();
}

QString ScriptedFileDialogs::choose(const filedialogs::Request& request)
{
    m_requests.push_back(request);
    if (m_script.empty()) {
        ADD_FAILURE() << "An unexpected file dialog " << described(request.mode, request.title);
        return {};
    }

    const Expected expected = std::move(m_script.front());
    m_script.pop_front();
    if (request.mode != expected.mode || request.title != expected.title) {
        ADD_FAILURE() << "Another file dialog than expected: " << described(request.mode, request.title)
                      << "\nExpected one " << described(expected.mode, expected.title);
        return {};
    }
    return expected.path;
}
