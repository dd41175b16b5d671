#pragma once

/// Yielding to the event queue, in step with what an eye can follow.
namespace events
{

/// What becomes of the user's keys and clicks during a long routine.
enum class Input {
    /// They wait until the routine has ended.
    Held,
    /// They run at each yield, so that a Stop button works.
    Taken,
};

/// Lets pending events run. Inside a LongRoutine at most thirty times a second, and without the user's keys and clicks
/// unless all scopes in force take them.
void yield();

/// True when a frame is due: always outside of a LongRoutine, the first time and then at most thirty times a second
/// inside. A true answer takes the frame. Whoever repaints a progress text asks this first; yields have a pace of their
/// own.
bool frameDue();

/// Replaces the time of a frame, 33 milliseconds, and returns the former one. With 0 every yield and every repaint is
/// due, so that what a test does at one comes at a known point of a routine, however fast the machine is.
int setFrame(int milliseconds);

/// For as long as one lives, yields and repaints are held to a frame's pace. The end of the outermost one lets pending
/// events run once, painting above all; keys and clicks that were held come when control is back in the event loop, so
/// that no command starts in the tail of another.
class LongRoutine
{
public:
    explicit LongRoutine(Input input = Input::Held);
    ~LongRoutine();
    LongRoutine(const LongRoutine&) = delete;
    LongRoutine& operator=(const LongRoutine&) = delete;

private:
    Input m_input;
};

} // namespace events
