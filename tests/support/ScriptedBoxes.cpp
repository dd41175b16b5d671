#include "ScriptedBoxes.h"

#include <gtest/gtest.h>

#include <ostream>
#include <utility>

namespace
{

const char* nameOf(boxes::Icon icon)
{
    switch (icon) {
    case boxes::Icon::Information:
        return "information";
    case boxes::Icon::Question:
        return "question";
    case boxes::Icon::Exclamation:
        return "exclamation";
    case boxes::Icon::Critical:
        return "critical";
    case boxes::Icon::None:
        break;
    }
    return "no icon";
}

const char* nameOf(boxes::Buttons buttons)
{
    switch (buttons) {
    case boxes::Buttons::YesNo:
        return "Yes/No";
    case boxes::Buttons::YesNoCancel:
        return "Yes/No/Cancel";
    case boxes::Buttons::OkCancel:
        return "OK/Cancel";
    case boxes::Buttons::Ok:
        break;
    }
    return "OK";
}

std::string described(const boxes::Box& box)
{
    return '[' + box.title.toStdString() + "] (" + nameOf(box.icon) + ", " + nameOf(box.buttons) + ")\n" +
           box.prompt.toStdString() + '\n';
}

/// The answer that changes least.
boxes::Answer safeAnswer(boxes::Buttons buttons)
{
    return boxes::answerOfClosing(buttons);
}

} // namespace

ScriptedBoxes::ScriptedBoxes() : m_former(boxes::setPresenter(this)) {}

ScriptedBoxes::~ScriptedBoxes()
{
    verify();
    boxes::setPresenter(m_former);
}

ScriptedBoxes& ScriptedBoxes::expect(const boxes::Box& box, boxes::Answer answer, Meanwhile meanwhile)
{
    m_script.push_back({box, answer, std::move(meanwhile)});
    return *this;
}

ScriptedBoxes& ScriptedBoxes::expect(const QString& prompt, boxes::Icon icon, Meanwhile meanwhile)
{
    return expect({prompt, icon, boxes::Buttons::Ok, application::title()}, boxes::Answer::Ok, std::move(meanwhile));
}

ScriptedBoxes& ScriptedBoxes::expectInform(const QString& prompt)
{
    return expect(prompt, boxes::Icon::Information);
}

ScriptedBoxes& ScriptedBoxes::expectAsk(const QString& prompt, boxes::Answer answer, Meanwhile meanwhile)
{
    return expect({prompt, boxes::Icon::Question, boxes::Buttons::YesNo, application::title()}, answer,
                  std::move(meanwhile));
}

void ScriptedBoxes::verify()
{
    for (const Expected& expected : m_script)
        ADD_FAILURE() << "A box never came: " << described(expected.box);
    m_script.clear();
}

boxes::Answer ScriptedBoxes::show(const boxes::Box& box)
{
    m_shown.push_back(box);
    if (m_script.empty()) {
        ADD_FAILURE() << "An unexpected box: " << described(box);
        return safeAnswer(box.buttons);
    }

    const Expected expected = std::move(m_script.front());
    m_script.pop_front();
    const bool same = box.prompt == expected.box.prompt && box.icon == expected.box.icon &&
                      box.buttons == expected.box.buttons && box.title == expected.box.title;
    if (!same) {
        ADD_FAILURE() << "Another box than expected: " << described(box) << "Expected: " << described(expected.box);
        return safeAnswer(box.buttons);
    }
    if (expected.meanwhile)
        expected.meanwhile();
    return expected.answer;
}
