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

/// For as long as one lives every window shows its own pointer: a box that waits for the user must not look busy. The
/// number stays as it is, and what is set meanwhile shows afterwards. Scopes nest.
class Suspended
{
public:
    Suspended();
    ~Suspended();
    Suspended(const Suspended&) = delete;
    Suspended& operator=(const Suspended&) = delete;
};

/// For as long as one lives the pointer is that of a dialog whose own code may set it: it begins as the default one,
/// and that of the dialog's caller comes back afterwards. Scopes nest.
class OfDialog
{
public:
    OfDialog();
    ~OfDialog();
    OfDialog(const OfDialog&) = delete;
    OfDialog& operator=(const OfDialog&) = delete;

private:
    int m_former;
};

} // namespace mousepointer
