#include "CMouseSleeper.h"

#include "MousePointer.h"

CMouseSleeper::CMouseSleeper() : m_pointer(mousepointer::current())
{
    mousepointer::set(mousepointer::Wait);
}

CMouseSleeper::~CMouseSleeper()
{
    if (mousepointer::current() == mousepointer::Wait)
        mousepointer::set(m_pointer);
}
