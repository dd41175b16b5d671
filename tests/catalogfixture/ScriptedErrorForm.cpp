#include "ScriptedErrorForm.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <utility>

namespace
{

template <class Control>
Control* control(const QWidget& form, const QString& name)
{
    auto* found = form.findChild<Control*>(name);
    EXPECT_TRUE(found) << "the error form has no " << name.toStdString();
    return found;
}

QString label(const QWidget& form, const QString& name)
{
    const auto* found = control<QLabel>(form, name);
    return found ? found->text() : QString();
}

QString text(const QWidget& form, const QString& name)
{
    const auto* found = control<QPlainTextEdit>(form, name);
    return found ? found->toPlainText() : QString();
}

ScriptedErrorForm::Shown read(const QWidget& form)
{
    ScriptedErrorForm::Shown shown{form.windowTitle(),
                                   label(form, "lblApp_0"),
                                   label(form, "lblApp_1"),
                                   label(form, "lblSysInfo"),
                                   label(form, "lblErrNo"),
                                   text(form, "txtDescription"),
                                   text(form, "txtAdditionalInfo"),
                                   label(form, "lblTrappedIn"),
                                   {}};
    if (const auto* stack = control<QComboBox>(form, "cboCallStack")) {
        for (int i = 0; i < stack->count(); ++i)
            shown.callStack.append(stack->itemText(i));
    }
    return shown;
}

void click(QWidget& form, const QString& name)
{
    if (auto* button = control<QPushButton>(form, name))
        QTest::mouseClick(button, Qt::LeftButton);
}

} // namespace

ScriptedErrorForm::ScriptedErrorForm()
{
    qApp->installEventFilter(this);
}

ScriptedErrorForm::~ScriptedErrorForm()
{
    verify();
}

ScriptedErrorForm& ScriptedErrorForm::expect(Press answer)
{
    return expect([answer](QWidget& form) { press(form, answer); });
}

ScriptedErrorForm& ScriptedErrorForm::expect(Action action)
{
    m_script.push_back(std::move(action));
    return *this;
}

void ScriptedErrorForm::verify()
{
    if (!m_script.empty())
        ADD_FAILURE() << m_script.size() << " expected error forms never came";
    m_script.clear();
}

void ScriptedErrorForm::press(QWidget& form, Press answer)
{
    click(form, QStringLiteral("cmdResponce_%1").arg(static_cast<int>(answer)));
}

void ScriptedErrorForm::pressReport(QWidget& form, int index)
{
    click(form, QStringLiteral("cmdReport_%1").arg(index));
}

bool ScriptedErrorForm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->objectName() == QLatin1String("frmTWErr")) {
        // Within the event the form is not on screen yet.
        QTimer::singleShot(0, this, [this, form = QPointer(qobject_cast<QWidget*>(watched))] {
            if (form && form->isVisible())
                act(*form);
        });
    }
    return QObject::eventFilter(watched, event);
}

void ScriptedErrorForm::act(QWidget& form)
{
    m_shown.push_back(read(form));
    if (!m_script.empty()) {
        const Action action = std::move(m_script.front());
        m_script.pop_front();
        action(form);
        return;
    }
    const Shown& shown = m_shown.back();
    if (!m_otherwise)
        ADD_FAILURE() << "unexpected error form in " << shown.trappedIn.toStdString() << ": "
                      << shown.number.toStdString() << ' ' << shown.description.toStdString() << '\n'
                      << shown.additional.toStdString();
    press(form, m_otherwise.value_or(Press::Ignore));
}
