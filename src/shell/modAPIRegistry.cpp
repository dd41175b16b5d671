#include "modAPIRegistry.h"

#include "Routine.h"
#include "Settings.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace modAPIRegistry
{

namespace
{

/// The buffer that a value is read into, in bytes; a text's trailing NUL counts.
constexpr qsizetype bufferSize = 1024;

QLatin1String rootName(Root root)
{
    switch (root) {
    case Root::HKEY_CLASSES_ROOT:
        return "HKEY_CLASSES_ROOT"_L1;
    case Root::HKEY_CURRENT_USER:
        return "HKEY_CURRENT_USER"_L1;
    case Root::HKEY_USERS:
        return "HKEY_USERS"_L1;
    case Root::HKEY_LOCAL_MACHINE:
        break;
    }
    return "HKEY_LOCAL_MACHINE"_L1;
}

/// The settings file's own mark between the steps of a section is the slash; it reads a backslash as one.
QString sectionOf(Root root, const QString& key)
{
    return rootName(root) + u'/' + QString(key).replace(u'\\', u'/');
}

} // namespace

std::optional<QString> ValueText(ValueType type, const QByteArray& data)
{
    if (data.size() > bufferSize)
        return std::nullopt;

    if (type == ValueType::Binary) {
        QByteArray reversed = data;
        std::reverse(reversed.begin(), reversed.end());
        return "&H"_L1 + QString::fromLatin1(reversed.toHex().toUpper());
    }
    return QString::fromUtf8(data.endsWith('\0') ? data.chopped(1) : data);
}

bool GetKeyValue(Root root, const QString& key, const QString& name, QString& value)
{
    bool found = false;
    Routine routine("modAPIRegistry.GetKeyValue");
    routine.run([&] {
        const QString stored = settings::get(sectionOf(root, key), name);
        if (stored.isNull())
            return;
        const QLatin1String hex("hex:");
        const std::optional<QString> text =
            stored.startsWith(hex)
                ? ValueText(ValueType::Binary, QByteArray::fromHex(stored.mid(hex.size()).toLatin1()))
                : ValueText(ValueType::String, stored.toUtf8().append('\0'));
        found = text.has_value();
        if (found)
            value = *text;
    });
    return found;
}

} // namespace modAPIRegistry
