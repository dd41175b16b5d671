#include "Events.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include <utility>

namespace
{

int frame = 33;
/// How long one yield may serve events that keep coming, in milliseconds.
constexpr int patience = 20;

/// Says at most once a frame that one is due.
class Pace
{
public:
    bool due()
    {
        if (m_last.isValid() && m_last.elapsed() < frame)
            return false;
        m_last.start();
        return true;
    }

    void reset() { m_last.invalidate(); }

private:
    QElapsedTimer m_last;
};

int routines = 0;
int holdingInput = 0;
Pace yields;
Pace repaints;

void serve(QEventLoop::ProcessEventsFlags flags)
{
    if (QCoreApplication::instance())
        QCoreApplication::processEvents(flags, patience);
}

/// What was held stays in the queue of the window system, where some dispatchers don't look again before something
/// wakes them.
void release()
{
    if (auto* dispatcher = QAbstractEventDispatcher::instance())
        dispatcher->wakeUp();
}

} // namespace

void events::yield()
{
    if (routines > 0 && !yields.due())
        return;
    serve(holdingInput > 0 ? QEventLoop::ExcludeUserInputEvents : QEventLoop::AllEvents);
}

bool events::frameDue()
{
    return routines == 0 || repaints.due();
}

int events::setFrame(int milliseconds)
{
    return std::exchange(frame, milliseconds);
}

events::LongRoutine::LongRoutine(Input input) : m_input(input)
{
    if (routines++ == 0) {
        yields.reset();
        repaints.reset();
    }
    if (m_input == Input::Held)
        ++holdingInput;
}

events::LongRoutine::~LongRoutine()
{
    if (--routines == 0)
        serve(QEventLoop::ExcludeUserInputEvents);
    if (m_input == Input::Held && --holdingInput == 0)
        release();
}
