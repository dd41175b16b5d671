#pragma once

#include <QElapsedTimer>

/// Yielding to the event queue, in step with what an eye can follow.
namespace events {

/// Lets pending events run. Inside a LongRoutine it only paints, at most thirty times a second, and the user's keys and
/// clicks wait until the routine has ended.
void yield();

/// True when a frame is due: always outside of a LongRoutine, at most thirty times a second inside. Whoever repaints a
/// progress text asks this first.
bool frameDue();

/// For as long as one lives, yields and repaints are held to a frame's pace. Its end lets pending events run once.
/// Scopes nest; the outermost one counts.
class LongRoutine
{
public:
    LongRoutine();
    ~LongRoutine();
    LongRoutine(const LongRoutine&) = delete;
    LongRoutine& operator=(const LongRoutine&) = delete;
};

} // namespace events
