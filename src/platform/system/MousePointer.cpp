#include "MousePointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace
{

int number = mousepointer::Default;
int suspensions = 0;
bool shown = false;

/// Brings the one override cursor that is ours in line with the number.
void apply()
{
    const bool wanted = number == mousepointer::Wait && suspensions == 0;
    if (wanted == shown || !QGuiApplication::instance())
        return;
    shown = wanted;
    if (wanted)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

} // namespace

int mousepointer::current()
{
    return number;
}

void mousepointer::set(int pointer)
{
    number = pointer;
    apply();
}

mousepointer::Suspended::Suspended()
{
    ++suspensions;
    apply();
}

mousepointer::Suspended::~Suspended()
{
    --suspensions;
    apply();
}

mousepointer::OfDialog::OfDialog() : m_former(number)
{
    set(Default);
}

mousepointer::OfDialog::~OfDialog()
{
    set(m_former);
}
