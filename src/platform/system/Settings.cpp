#include "Settings.h"

#include "Application.h"
#include "Conversions.h"
#include "RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <tuple>

namespace
{

using Place = std::tuple<QString, QString, QString>;

/// Values that could not be written, by file, section and key; they hold for the rest of the run.
std::map<Place, QString>& unwritten()
{
    static std::map<Place, QString> values;
    return values;
}

/// The files in which lines were found that are no settings. Qt says so once, to whoever happens to read them first.
QStringList& damagedFiles()
{
    static QStringList names;
    return names;
}

void noteDamage(const QSettings& file)
{
    if (file.status() == QSettings::FormatError && !damagedFiles().contains(file.fileName()))
        damagedFiles().append(file.fileName());
}

/// Saving drops the lines that are no settings, so the file is kept before.
void keepDamaged(const QSettings& file)
{
    // Makes Qt look into every section.
    file.allKeys();
    noteDamage(file);
    if (!damagedFiles().removeOne(file.fileName()))
        return;
    const QString kept = file.fileName() + ".damaged";
    QFile::remove(kept);
    QFile::copy(file.fileName(), kept);
}

Place placeOf(const QString& section, const QString& key)
{
    return {settings::fileName(), section, key};
}

QString path(const QString& section, const QString& key)
{
    return section + '/' + key;
}

/// A list is what a comma in a line typed by hand is read as.
std::optional<QString> textOf(const QVariant& value)
{
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(", ");
    if (!value.isValid() || !value.canConvert<QString>())
        return std::nullopt;
    return value.toString();
}

std::optional<QString> stored(const QString& section, const QString& key)
{
    const auto kept = unwritten().find(placeOf(section, key));
    if (kept != unwritten().end())
        return kept->second;
    const QSettings file(settings::fileName(), QSettings::IniFormat);
    const QVariant value = file.value(path(section, key));
    noteDamage(file);
    return textOf(value);
}

bool beginsWithNumber(QStringView text)
{
    const QStringView trimmed = text.trimmed();
    for (qsizetype length = trimmed.size(); length > 0; --length)
        if (conversions::IsNumeric(trimmed.first(length)))
            return true;
    return false;
}

} // namespace

QString settings::get(const QString& section, const QString& key, const QString& defaultValue)
{
    return stored(section, key).value_or(defaultValue);
}

int settings::getNumber(const QString& section, const QString& key, int defaultValue)
{
    const QString text = get(section, key).left(64);
    if (!beginsWithNumber(text))
        return defaultValue;
    try {
        return conversions::ToLong(conversions::Val(text));
    } catch (const RuntimeError&) {
        return text.trimmed().startsWith('-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    }
}

void settings::save(const QString& section, const QString& key, const QString& value)
{
    QSettings file(fileName(), QSettings::IniFormat);
    keepDamaged(file);
    file.setValue(path(section, key), value);
    file.sync();
    if (file.status() == QSettings::AccessError)
        unwritten()[placeOf(section, key)] = value;
    else
        unwritten().erase(placeOf(section, key));
}

void settings::save(const QString& section, const QString& key, int value)
{
    save(section, key, QString::number(value));
}

QString settings::fileName()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
        .filePath(application::title() + ".ini");
}
