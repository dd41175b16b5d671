#include "Application.h"

#include "Version.h"

QString application::title()
{
    return "Tarnwick Quorvane";
}

int application::major()
{
    return QUORVANE_VERSION_MAJOR;
}

int application::minor()
{
    return QUORVANE_VERSION_MINOR;
}

int application::revision()
{
    return QUORVANE_VERSION_PATCH;
}

bool application::isBeta()
{
    return major() == 0;
}

QString application::version()
{
    return QString("%1.%2.%3").arg(major()).arg(minor()).arg(revision());
}

QString application::supportMail()
{
    return "support@quorvane.example";
}

QString application::supportWeb()
{
    return "https://www.quorvane.example/";
}

// The telephone numbers below lie in a range that is kept free for fiction and never assigned.

QString application::headOffice()
{
    return "Tarnwick Software\n1 Example Row\nLondon\nUnited Kingdom";
}

QString application::telephone()
{
    return "+44 20 7946 0100";
}

QString application::facsimile()
{
    return "+44 20 7946 0101";
}

QString application::voiceMail()
{
    return "+44 20 7946 0102";
}
