#include "DialogScript.h"

#include "DialogForm.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

DialogScript::DialogScript()
{
    qApp->installEventFilter(this);
}

DialogScript::~DialogScript()
{
    verify();
}

DialogScript& DialogScript::expect(const QString& name, Action action)
{
    m_script.push_back({name, std::move(action)});
    return *this;
}

void DialogScript::verify()
{
    for (const Expected& expected : m_script)
        ADD_FAILURE() << expected.name.toStdString() << " never came up";
    m_script.clear();
}

void DialogScript::click(DialogForm& dialog, const QString& button)
{
    auto* found = dialog.findChild<QAbstractButton*>(button);
    ASSERT_NE(found, nullptr) << button.toStdString();
    ASSERT_TRUE(found->isVisibleTo(&dialog) && found->isEnabled()) << button.toStdString();
    QPoint where = found->rect().center();
    if (auto* check = qobject_cast<QCheckBox*>(found)) {
        // A check box takes clicks on its box and its caption, which end long before its right edge may.
        QStyleOptionButton option;
        option.initFrom(check);
        where = check->style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, check).center();
    }
    QTest::mouseClick(found, Qt::LeftButton, {}, where);
}

QString DialogScript::text(DialogForm& dialog, const QString& name)
{
    auto* found = dialog.findChild<QLineEdit*>(name);
    return found ? found->text() : QStringLiteral("<no ") + name + '>';
}

bool DialogScript::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && !event->spontaneous()) {
        if (const QPointer<DialogForm> dialog = dynamic_cast<DialogForm*>(watched))
            QTimer::singleShot(0, this, [this, dialog] {
                if (dialog)
                    act(*dialog);
            });
    }
    return QObject::eventFilter(watched, event);
}

void DialogScript::act(DialogForm& dialog)
{
    const QPointer<DialogForm> alive = &dialog;
    if (m_script.empty() || m_script.front().name != dialog.name()) {
        ADD_FAILURE() << dialog.name().toStdString() << " came up unexpectedly";
    } else {
        const Action action = std::move(m_script.front().action);
        m_script.pop_front();
        EXPECT_TRUE(dialog.isModal());
        action(dialog);
    }
    if (alive && alive->isVisible()) {
        ADD_FAILURE() << dialog.name().toStdString() << " is still there";
        dialog.close();
    }
}
