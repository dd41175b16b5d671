#include "frmMoveCopy.h"

#include "Routine.h"
#include "Settings.h"
#include "Twips.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace
{

const QString section = u"frmMoveCopy"_s;
const QString pressed = u"True"_s;

} // namespace

frmMoveCopy::frmMoveCopy() : QuestionForm(u"frmMoveCopy"_s)
{
    setWindowTitle(tr("Move or Copy?"));
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
        form.setPrompt(prompt);
        form.resize(qMax(form.width(), toPixels(settings::getNumber(section, u"Width"_s, 0))),
                    qMax(form.height(), toPixels(settings::getNumber(section, u"Height"_s, 0))));
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
