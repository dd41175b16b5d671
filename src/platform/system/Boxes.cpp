#include "Boxes.h"

#include "Application.h"
#include "MousePointer.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTextEdit>

#include <array>
#include <memory>
#include <utility>

namespace
{

using namespace boxes;

boxes::Presenter* replacement = nullptr;

constexpr std::array standardButtons{
    std::pair{Answer::Ok, QMessageBox::Ok},
    std::pair{Answer::Yes, QMessageBox::Yes},
    std::pair{Answer::No, QMessageBox::No},
    std::pair{Answer::Cancel, QMessageBox::Cancel},
};

QMessageBox::StandardButton standardButton(Answer answer)
{
    for (const auto& [candidate, button] : standardButtons)
        if (candidate == answer)
            return button;
    return QMessageBox::NoButton;
}

Answer answerOf(int button, Answer otherwise)
{
    for (const auto& [answer, candidate] : standardButtons)
        if (candidate == button)
            return answer;
    return otherwise;
}

QMessageBox::StandardButtons standardButtonsOf(Buttons buttons)
{
    switch (buttons) {
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

QMessageBox::Icon iconOf(Icon icon)
{
    switch (icon) {
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

constexpr qsizetype tallestPrompt = 18;
constexpr qsizetype longestPrompt = 1400;

bool fitsOnScreen(const QString& prompt)
{
    return prompt.size() <= longestPrompt && prompt.count('\n') < tallestPrompt;
}

/// The beginning and the end of a prompt that is too long to stand in a box: a question stands at its end.
QString shortened(const QString& prompt)
{
    constexpr qsizetype lines = tallestPrompt / 2;
    constexpr qsizetype characters = longestPrompt / 2;
    const QString head = prompt.section('\n', 0, lines - 1).left(characters);
    const QString tail = prompt.section('\n', -2).right(characters / 4);
    return head + QStringLiteral("\n…\n") + tail;
}

class RealPresenter final : public Presenter
{
public:
    Answer show(const Box& box) override
    {
        const Answer otherwise = answerOfClosing(box.buttons);
        const mousepointer::Suspended pointer;

        // The box goes with its parent if that is deleted while it shows, so it can't stand on the stack.
        auto owned = std::make_unique<QMessageBox>(iconOf(box.icon), box.title, QString(),
                                                   standardButtonsOf(box.buttons), parent());
        const QPointer<QMessageBox> shown = owned.get();
        shown->setTextFormat(Qt::PlainText);
        shown->setTextInteractionFlags(Qt::TextSelectableByMouse);
        shown->setEscapeButton(shown->button(standardButton(otherwise)));
        shown->setDefaultButton(qobject_cast<QPushButton*>(firstButton(*shown)));
        if (fitsOnScreen(box.prompt)) {
            shown->setText(box.prompt);
        } else {
            shown->setText(shortened(box.prompt));
            shown->setDetailedText(box.prompt);
        }

        const int button = shown->exec();
        if (!shown)
            static_cast<void>(owned.release());
        return answerOf(button, otherwise);
    }

private:
    static QWidget* parent()
    {
        if (QWidget* modal = QApplication::activeModalWidget())
            return modal;
        QWidget* active = QApplication::activeWindow();
        return active && active->isVisible() ? active : nullptr;
    }

    static QAbstractButton* firstButton(const QMessageBox& box)
    {
        QAbstractButton* ok = box.button(QMessageBox::Ok);
        return ok ? ok : box.button(QMessageBox::Yes);
    }
};

} // namespace

boxes::Presenter* boxes::setPresenter(Presenter* presenter)
{
    return std::exchange(replacement, presenter);
}

boxes::Answer boxes::show(const Box& box)
{
    if (replacement)
        return replacement->show(box);
    RealPresenter presenter;
    return presenter.show(box);
}

boxes::Answer boxes::answerOfClosing(Buttons buttons)
{
    switch (buttons) {
    case Buttons::YesNo:
        return Answer::No;
    case Buttons::YesNoCancel:
    case Buttons::OkCancel:
        return Answer::Cancel;
    case Buttons::Ok:
        break;
    }
    return Answer::Ok;
}

void boxes::inform(const QString& prompt)
{
    show({prompt, Icon::Information, Buttons::Ok, application::title()});
}

bool boxes::ask(const QString& prompt)
{
    return show({prompt, Icon::Question, Buttons::YesNo, application::title()}) == Answer::Yes;
}
