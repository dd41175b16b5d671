#pragma once

#include "CCtrls.h"

class DropDown;

namespace dao
{
class Database;
class Recordset;
} // namespace dao

/// What panes do with all their controls of one name at once; `prototype` is that name.
namespace modBoundControls
{

/// Fills a list with the first column of a statement's rows, and selects the text again that was selected. Returns the
/// number of rows.
int PopulateList(DropDown& list, dao::Database& db, const QString& statement);

/// Gives each control with a tag the value of that column in the current row; a null shows as the empty text. Raises
/// 3265 for a tag that the rows lack.
void PopulateFields(const Controls& form, const QString& prototype, const dao::Recordset& row);

void EnableControls(const Controls& form, const QString& prototype, bool enabled);

/// Gives each control the value; a list loses its selection whatever the value is.
void SetControls(const Controls& form, const QString& prototype, const QString& value);

} // namespace modBoundControls
