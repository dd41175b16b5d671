#pragma once

#include <QString>

/// Files that describe the catalog itself.
namespace reservedfiles
{

/// Whether a file and its fields are shown but never changed.
bool isReserved(const QString& file);

/// Whether the records of a file are 8 bytes longer than their fields.
bool hasControlBytes(const QString& file);

} // namespace reservedfiles
