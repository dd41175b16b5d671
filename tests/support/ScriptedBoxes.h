#pragma once

#include "Application.h"
#include "Boxes.h"

#include <deque>
#include <functional>
#include <vector>

/// Stands in for the user in front of message boxes for as long as it lives: each box must be the next one of the
/// script, in text, icon, buttons and title, and gets the script's answer. A box that is not in the script, and one of
/// the script that never came, fail the test.
class ScriptedBoxes final : public boxes::Presenter
{
public:
    ScriptedBoxes();
    ~ScriptedBoxes() override;
    ScriptedBoxes(const ScriptedBoxes&) = delete;
    ScriptedBoxes& operator=(const ScriptedBoxes&) = delete;

    /// What else happens while a box shows, as a user or a driver may cause it.
    using Meanwhile = std::function<void()>;

    ScriptedBoxes& expect(const boxes::Box& box, boxes::Answer answer, Meanwhile meanwhile = {});
    /// A box with an OK button under the application title.
    ScriptedBoxes& expect(const QString& prompt, boxes::Icon icon, Meanwhile meanwhile = {});
    /// The same with the information icon.
    ScriptedBoxes& expectInform(const QString& prompt);
    /// A Yes/No question under the application title.
    ScriptedBoxes& expectAsk(const QString& prompt, boxes::Answer answer, Meanwhile meanwhile = {});

    /// True when every box of the script has come.
    bool done() const { return m_script.empty(); }
    /// Fails the test when boxes of the script are left, and forgets them.
    void verify();
    /// All boxes that came, expected or not.
    const std::vector<boxes::Box>& shown() const { return m_shown; }

    boxes::Answer show(const boxes::Box& box) override;

private:
    struct Expected {
        boxes::Box box;
        boxes::Answer answer;
        Meanwhile meanwhile;
    };

    boxes::Presenter* m_former;
    std::deque<Expected> m_script;
    std::vector<boxes::Box> m_shown;
};
