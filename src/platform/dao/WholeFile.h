#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Files that are read and written whole or not at all.
namespace dao::wholeFile
{

/// The bytes of a file, or nothing where there is none. Raises 75 for what is no file or can't be read: a device could
/// be read without an end.
std::optional<QByteArray> read(const QString& path);

/// Puts these bytes in the place of the file's: through a copy beside it that then takes its name. Where no copy can be
/// made beside it, the file is first given the room and then overwritten. On any failure it is as it was. A link is
/// followed. Raises 61 for a full disk, 75 and 76 for what else the system refuses, with the path and the system's
/// reason.
void write(const QString& path, const QByteArray& bytes);

/// Makes the file what `read` gave: these bytes, or no file.
void restore(const QString& path, const std::optional<QByteArray>& former);

} // namespace dao::wholeFile
