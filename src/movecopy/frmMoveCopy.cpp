#include "frmMoveCopy.h"

#include "PictureLabel.h"
#include "Routine.h"
#include "Settings.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

constexpr int twipsPerPixel = 15;
/// The widest that a prompt gets before it is wrapped, in device-independent pixels.
constexpr int promptWidth = 480;

const QString section = u"frmMoveCopy"_s;
const QString pressed = u"True"_s;

} // namespace

frmMoveCopy::frmMoveCopy() : DialogForm(u"frmMoveCopy"_s)
{
    setWindowTitle(tr("Move or Copy?"));
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

    setDefaultButton(addAnswer(u"cmdCopy"_s, tr("&Copy")));
    addAnswer(u"cmdMove"_s, tr("&Move"));
    setCancelButton(addAnswer(u"cmdCancel"_s, tr("Cancel")));
}

QPushButton* frmMoveCopy::addAnswer(const QString& name, const QString& caption)
{
    QPushButton* button = addButton(name, caption);
    connect(button, &QPushButton::clicked, this, [this, button] {
        button->setProperty("Tag", pressed);
        hide();
    });
    return button;
}

bool frmMoveCopy::isPressed(const QString& button) const
{
    return findChild<QPushButton*>(button)->property("Tag").toString() == pressed;
}

QPoint frmMoveCopy::position(QPoint centred) const
{
    return storedPosition(section, centred);
}

void frmMoveCopy::unloading()
{
    storePosition(section);
}

DragMode frmMoveCopy::Query(const QString& prompt)
{
    DragMode answer = DragMode::Stop;
    Routine routine("frmMoveCopy.Query");
    routine.run([&] {
        auto& form = get<frmMoveCopy>(u"frmMoveCopy"_s);
        const forms::Running running(form);
        const QPointer<frmMoveCopy> alive = &form;
        form.m_prompt->setText(prompt);
        form.setAccessibleDescription(prompt);
        const QSize needed =
            form.m_prompt->fontMetrics().boundingRect({0, 0, promptWidth, 10000}, Qt::TextWordWrap, prompt).size();
        form.m_prompt->setMinimumWidth(qMin(promptWidth, needed.width() + 8));
        form.adjustSize();
        form.resize(qMax(form.width(), settings::getNumber(section, u"Width"_s, 0) / twipsPerPixel),
                    qMax(form.height(), settings::getNumber(section, u"Height"_s, 0) / twipsPerPixel));
        form.ask();
        if (!alive)
            return;
        if (alive->isPressed(u"cmdCopy"_s))
            answer = DragMode::Copy;
        else if (alive->isPressed(u"cmdMove"_s))
            answer = DragMode::Move;
    });
    return answer;
}
