#pragma once

#include <QString>

/// What the program is called, which version it is and whom its users write to.
namespace application
{

QString title();
int major();
int minor();
int revision();
/// True below version 1.0.
bool isBeta();
/// Major, minor and revision with full stops between them.
QString version();
QString supportMail();
QString supportWeb();
/// The maker's address, one line each.
QString headOffice();
QString telephone();
QString facsimile();
QString voiceMail();

} // namespace application
