#pragma once

#include <QString>

/// The user's settings: text values by section and key, kept under the application name in an INI file of the user's
/// configuration folder (XDG_CONFIG_HOME). The default stands at the reader. Each save is on the disk when it returns.
/// A file that can't be read or written never stops the program: what can't be written holds for the rest of the run,
/// and a file with lines that are no settings is kept beside the new one, with ".damaged" behind its name.
namespace settings
{

QString get(const QString& section, const QString& key, const QString& defaultValue = {});
/// The leading number of the stored text, rounded and kept within the range of an int; the default where the text does
/// not begin with a number.
int getNumber(const QString& section, const QString& key, int defaultValue);
void save(const QString& section, const QString& key, const QString& value);
void save(const QString& section, const QString& key, int value);

/// Where the settings lie, for people who look for them.
QString fileName();

} // namespace settings
