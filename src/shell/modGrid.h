#pragma once

#include <QString>

#include <vector>

class CellGrid;

namespace dao
{
class Database;
}

namespace modGrid
{

/// What a grid shows for a value of the catalog.
using ShownForm = QString (*)(const QString& stored);

/// Fills a grid with the rows of a SELECT. A heading is the column's name as words in proper case; texts stand at the
/// left, all else at the right, and a null shows as an empty text. A column that has a form of its own shows that one.
/// A failure is reported; the rows that were read by then stay.
void PopulateGrid(CellGrid& grid, dao::Database& db, const QString& statement,
                  const std::vector<ShownForm>& forms = {});

} // namespace modGrid
