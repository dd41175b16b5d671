#pragma once

/// The main window's mouse pointer, by the numbers that the forms use.
namespace mousepointer
{

inline constexpr int Default = 0;
inline constexpr int Wait = 11;

/// The number that was set last.
int current();
/// Shows the wait pointer over all windows for Wait and each window's own pointer for any other number, at once.
void set(int pointer);

/// For as long as one lives every window shows its own pointer: a dialog that waits for the user must not look busy.
/// What runs in it meanwhile may set a pointer, which shows; the former one comes back afterwards. Scopes nest.
class Suspended
{
public:
    Suspended();
    ~Suspended();
    Suspended(const Suspended&) = delete;
    Suspended& operator=(const Suspended&) = delete;

private:
    int m_former;
};

} // namespace mousepointer
