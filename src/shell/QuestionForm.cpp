#include "QuestionForm.h"

#include "PictureLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

/// The widest that a prompt gets before it is wrapped, in device-independent pixels.
constexpr int promptWidth = 480;

} // namespace

QuestionForm::QuestionForm(const QString& name) : DialogForm(name)
{
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
}

void QuestionForm::setPrompt(const QString& prompt)
{
    m_prompt->setText(prompt);
    setAccessibleDescription(prompt);
    const QSize needed =
        m_prompt->fontMetrics().boundingRect({0, 0, promptWidth, 10000}, Qt::TextWordWrap, prompt).size();
    m_prompt->setMinimumWidth(qMin(promptWidth, needed.width() + 8));
    adjustSize();
}
