#pragma once

#include <QObject>
#include <QString>

#include <deque>
#include <functional>

class DialogForm;

/// Stands in for the user in front of modal dialogs for as long as it lives: each dialog that comes up must be the next
/// one of the script, whose action then runs from the event loop and must end the dialog. Anything else fails the test,
/// and the dialog is closed.
class DialogScript final : public QObject
{
public:
    using Action = std::function<void(DialogForm& dialog)>;

    DialogScript();
    ~DialogScript() override;

    DialogScript& expect(const QString& name, Action action);
    /// Fails the test when dialogs of the script have not come, and forgets them.
    void verify();

    /// A real click on the button of that name; fails the test where there is none.
    static void click(DialogForm& dialog, const QString& button);
    /// What the read-only text of that name shows.
    static QString text(DialogForm& dialog, const QString& name);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Expected {
        QString name;
        Action action;
    };

    void act(DialogForm& dialog);

    std::deque<Expected> m_script;
};
