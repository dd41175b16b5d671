#include "frmYesToAll.h"

#include "Application.h"
#include "PictureLabel.h"
#include "Routine.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

/// The widest that a prompt gets before it is wrapped, in device-independent pixels.
constexpr int promptWidth = 480;

} // namespace

frmYesToAll::frmYesToAll() : DialogForm(u"frmYesToAll"_s)
{
    setWindowTitle(application::title());
    m_prompt = new QLabel(this);
    m_prompt->setObjectName(u"lblPrompt"_s);
    m_prompt->setTextFormat(Qt::PlainText);
    m_prompt->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_prompt->setWordWrap(true);
    m_prompt->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    auto* row = new QHBoxLayout;
    row->setSpacing(16);
    row->addWidget(new PictureLabel(u"Box Question"_s, {32, 32}, this), 0, Qt::AlignTop);
    row->addWidget(m_prompt, 1);
    body()->addLayout(row, 1);

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
        form.m_prompt->setText(prompt);
        form.setAccessibleDescription(prompt);
        form.m_prompt->setMinimumWidth(qMin(promptWidth, form.m_prompt->fontMetrics().horizontalAdvance(prompt) + 8));
        form.adjustSize();
        form.ask();
        if (alive)
            answer = alive->m_answer;
    });
    return answer;
}
