#pragma once

#include <QString>

/// Files that describe the catalog itself.
namespace reservedfiles
{

/// Whether a file and its fields are shown but never changed.
bool isReserved(const QString& file);

/// The criterion that leaves these files out of a statement on files or fields.
inline constexpr char userFiles[] = "FILE_NAME NOT IN ('CNTRL','COLUMN','DB','DBPRV','DRIVER','FIELD','FILE','KEY',"
                                    "'LOCDT','SQLDT','TABLE','TBLPRV','USER')";

/// Whether the records of a file are 8 bytes longer than their fields.
bool hasControlBytes(const QString& file);

} // namespace reservedfiles
