#pragma once

#include <QString>

/// The user's settings: text values by section and key, kept under the application name in an INI file of the user's
/// configuration folder. The default stands at the reader.
namespace settings {

QString get(const QString& section, const QString& key, const QString& defaultValue = {});
/// The leading number of the stored text.
int getNumber(const QString& section, const QString& key, int defaultValue);
void save(const QString& section, const QString& key, const QString& value);
void save(const QString& section, const QString& key, int value);

/// Where the settings lie, for people who look for them.
QString fileName();

} // namespace settings
