#pragma once

#include <QString>

/// What the program is called, which version it is and whom its users write to.
namespace application {

QString title();
int major();
int minor();
int revision();
bool isBeta();
/// Major, minor and revision with full stops between them.
QString version();
QString supportMail();
QString supportWeb();

} // namespace application
