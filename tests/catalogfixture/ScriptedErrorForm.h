#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <optional>
#include <vector>

class QWidget;

/// The buttons that answer the error form, by their index.
enum class Press { Abort = 0, Retry = 1, Ignore = 2 };

/// Stands in for the user in front of the error form for as long as it lives: each time the form comes up the next
/// action of the script runs from the event loop, by real clicks. A form that the script does not know, and an action
/// whose form never came, fail the test.
class ScriptedErrorForm final : public QObject
{
public:
    ScriptedErrorForm();
    ~ScriptedErrorForm() override;

    using Action = std::function<void(QWidget& form)>;

    /// The next form is answered so.
    ScriptedErrorForm& expect(Press answer);
    /// The next form gets this action, which must end in an answer.
    ScriptedErrorForm& expect(Action action);
    /// All forms beyond the script are answered so, and are no failure of the test.
    void otherwise(Press answer) { m_otherwise = answer; }

    /// What a form showed when it came up.
    struct Shown {
        QString title;
        QString application;
        QString version;
        QString sysInfo;
        QString number;
        QString description;
        QString additional;
        QString trappedIn;
        QStringList callStack;
    };
    const std::vector<Shown>& shown() const { return m_shown; }

    /// Fails the test when actions are left, and forgets them.
    void verify();

    /// A click on an answer or on a report button (0 Print, 1 Save, 2 Email, 3 WWW).
    static void press(QWidget& form, Press answer);
    static void pressReport(QWidget& form, int index);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void act(QWidget& form);

    std::deque<Action> m_script;
    std::optional<Press> m_otherwise;
    std::vector<Shown> m_shown;
};
