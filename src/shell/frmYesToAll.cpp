#include "frmYesToAll.h"

#include "Application.h"
#include "Routine.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

frmYesToAll::frmYesToAll() : QuestionForm(u"frmYesToAll"_s)
{
    setWindowTitle(application::title());
    addAnswer(u"cmdYes"_s, u"&Yes"_s, 1);
    addAnswer(u"cmdYesAll"_s, u"Yes to &All"_s, 2);
    addAnswer(u"cmdNo"_s, u"&No"_s, 0);
    setDefaultButton(findChild<QPushButton*>(u"cmdYes"_s));
    setCancelButton(findChild<QPushButton*>(u"cmdNo"_s));
}

void frmYesToAll::addAnswer(const QString& name, const QString& caption, std::int32_t answer)
{
    connect(addButton(name, caption), &QPushButton::clicked, this, [this, answer] {
        m_answer = answer;
        hide();
    });
}

std::int32_t frmYesToAll::GetAnswer(const QString& prompt)
{
    std::int32_t answer = 0;
    Routine routine("frmYesToAll.GetAnswer");
    routine.run([&] {
        auto& form = get<frmYesToAll>(u"frmYesToAll"_s);
        const forms::Running running(form);
        const QPointer<frmYesToAll> alive = &form;
        form.m_answer = 0;
        form.setPrompt(prompt);
        form.ask();
        if (alive)
            answer = alive->m_answer;
    });
    return answer;
}
