#pragma once

#include <QPoint>
#include <QStringList>
#include <Qt>

#include <functional>

class QWidget;

/// A user with a mouse and a keyboard in front of an X server: every event goes through the server to the window that
/// is really there.
namespace xuser
{

/// Moves the pointer to a place of a widget and clicks.
void click(const QWidget& widget, QPoint position, Qt::MouseButton button = Qt::LeftButton);
/// Clicks the middle of a widget.
void click(const QWidget& widget);
/// Presses at one place of a widget, moves to another and releases.
void drag(const QWidget& widget, QPoint from, QPoint to);
/// A drag in its parts, for who waits in between: presses at a place of a widget, moves to one, releases where the
/// pointer is.
void press(const QWidget& widget, QPoint position);
void moveTo(const QWidget& widget, QPoint position);
void release();
/// Types keys by their X names, as "alt+v" or "Return", into the window of a widget.
void type(const QWidget& widget, const QStringList& keys);

/// Runs the action as soon as the condition holds, from the event loop, also while a menu or a box is up.
void when(std::function<bool()> condition, std::function<void()> action);

} // namespace xuser
