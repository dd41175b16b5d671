#pragma once

#include "DBEngine.h"

#include <QString>

/// Readable texts for the error chain of the database layer, among them the codes of the D-ISAM file manager beneath
/// the drivers.
namespace filemanager
{

/// True for an entry that the file manager wrote.
bool isMessage(const dao::Error& error);

/// The code in a message of the file manager: the three digits before its last character. Raises 13 if they are none.
int code(const dao::Error& error);

/// What a code means; the code itself as text where nothing is known of it.
QString meaning(int code);

} // namespace filemanager

/// The text of a whole chain; entries of the generic number 3146 say nothing and are left out. Raises 13 for a message
/// of the file manager without a code.
QString readableText(const dao::Errors& errors);
