#pragma once

#include <QString>

/// The one way to a message box: prompt, icon, buttons and title in, the pressed button out. Tests put a script behind
/// it.
namespace boxes
{

enum class Icon { None, Information, Question, Exclamation, Critical };
enum class Buttons { Ok, YesNo, YesNoCancel, OkCancel };
enum class Answer { Ok, Yes, No, Cancel };

struct Box {
    /// Plain text: nothing in it is taken as markup.
    QString prompt = {};
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    QString title = {};
};

/// Whatever shows a box. Closing a box otherwise than by a button is Cancel where there is one, else No, else Ok.
class Presenter
{
public:
    virtual ~Presenter() = default;
    virtual Answer show(const Box& box) = 0;
};

/// Replaces the presenter and returns the former one; null stands for the real boxes.
Presenter* setPresenter(Presenter* presenter);

Answer show(const Box& box);

/// What closing a box otherwise than by a button answers.
Answer answerOfClosing(Buttons buttons);

/// An information box with OK under the application title.
void inform(const QString& prompt);

/// A Yes/No question under the application title; true for Yes.
bool ask(const QString& prompt);

} // namespace boxes
