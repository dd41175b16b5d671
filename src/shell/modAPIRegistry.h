#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Values of the system's registry. Where the system has none, the user's settings file stands for it: the section
/// [HKEY_LOCAL_MACHINE\SOFTWARE\...] is a key below that root, and its lines are the values, "hex:0a,1b" bytes and any
/// other one a text.
namespace modAPIRegistry
{

enum class Root { HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS };

/// The kinds of values by the registry's own numbers (REG_SZ, REG_BINARY).
enum class ValueType { String = 1, Binary = 3 };

/// What a value's data reads as: a text without one trailing NUL; bytes as "&H" and their hexadecimal digits, last byte
/// first. Nothing for data of more than 1024 bytes, which is all that is read of a value.
std::optional<QString> ValueText(ValueType type, const QByteArray& data);

/// Reads a value; false, with `value` unchanged, if there is no such key or value or if it is too long.
bool GetKeyValue(Root root, const QString& key, const QString& name, QString& value);

} // namespace modAPIRegistry
