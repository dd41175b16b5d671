#include "XUser.h"

#include <QProcess>
#include <QTimer>
#include <QWidget>

#include <stdexcept>

namespace
{

/// Does not wait: what the events start, a menu say, may keep control until further events come.
void xdotool(const QStringList& arguments)
{
    if (!QProcess::startDetached(QStringLiteral(XDOTOOL), arguments))
        throw std::runtime_error("xdotool can't be started");
}

QStringList movement(const QWidget& widget, QPoint position)
{
    const QPoint global = widget.mapToGlobal(position);
    return {QStringLiteral("mousemove"), QString::number(global.x()), QString::number(global.y())};
}

QString number(Qt::MouseButton button)
{
    return button == Qt::RightButton ? QStringLiteral("3") : QStringLiteral("1");
}

} // namespace

void xuser::click(const QWidget& widget, QPoint position, Qt::MouseButton button)
{
    xdotool(movement(widget, position) + QStringList{QStringLiteral("click"), number(button)});
}

void xuser::click(const QWidget& widget)
{
    click(widget, widget.rect().center());
}

void xuser::drag(const QWidget& widget, QPoint from, QPoint to)
{
    const QString sleep = QStringLiteral("sleep");
    const QString moment = QStringLiteral("0.05");
    xdotool(movement(widget, from) + QStringList{QStringLiteral("mousedown"), QStringLiteral("1"), sleep, moment} +
            movement(widget, (from + to) / 2) + QStringList{sleep, moment} + movement(widget, to) +
            QStringList{sleep, moment, QStringLiteral("mouseup"), QStringLiteral("1")});
}

void xuser::press(const QWidget& widget, QPoint position)
{
    xdotool(movement(widget, position) + QStringList{QStringLiteral("mousedown"), QStringLiteral("1")});
}

void xuser::moveTo(const QWidget& widget, QPoint position)
{
    xdotool(movement(widget, position));
}

void xuser::release()
{
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
}

void xuser::type(const QWidget& widget, const QStringList& keys)
{
    // Without a window manager nobody else gives a window the keyboard.
    QStringList arguments{QStringLiteral("windowfocus"), QStringLiteral("--sync"),
                          QString::number(widget.window()->winId())};
    for (const QString& key : keys)
        arguments += {QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("60"), key};
    xdotool(arguments);
}

void xuser::when(std::function<bool()> condition, std::function<void()> action)
{
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, timer, [timer, condition, action] {
        if (!condition())
            return;
        timer->stop();
        timer->deleteLater();
        action();
    });
    timer->start(20);
}
