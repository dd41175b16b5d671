#pragma once

#include "DragItem.h"
#include "DragMode.h"

class TreeView;

namespace dao
{
class Database;
}

/// What a drag within the tree may do and what a drop does. A routine with a plural name carries a collection and calls
/// the one for its single objects; both answer whether they ran to their end, and nothing that the target has is ever
/// overwritten but a column's place. Only rows of the catalogs move, never the data files. The connection arguments of
/// the single routines may be null: an open connection is then looked up by the first key part, and without one nothing
/// happens. What a routine did before a failure stays.
namespace modDragAndDrop
{

/// Whether a drop would do something, as DoDragOver found it last.
bool dropAllowed();

/// Judges a drag over a node and shows the refusing picture where a drop would do nothing.
void DoDragOver(TreeView* tree, const DragItem& source, const DragItem& target);
/// Drops: moves or copies after a question, and shows both collections anew. False where nothing came of it.
bool DoDragDrop(TreeView* tree, const DragItem& source, const DragItem& target);

bool DragFilesToDSN(const DragItem& source, const DragItem& target, DragMode mode);
bool DragFileToDSN(const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb = nullptr,
                   dao::Database* targetDb = nullptr);
bool DragFieldsToFile(const DragItem& source, const DragItem& target, DragMode mode);
bool DragFieldToFile(const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb = nullptr,
                     dao::Database* targetDb = nullptr);

bool DragDBsToDSN(const DragItem& source, const DragItem& target, DragMode mode);
bool DragDBToDSN(const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb = nullptr,
                 dao::Database* targetDb = nullptr);
bool DragTablesToDB(const DragItem& source, const DragItem& target, DragMode mode);
bool DragTableToDB(const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb = nullptr,
                   dao::Database* targetDb = nullptr);
bool DragColumnsToTable(const DragItem& source, const DragItem& target, DragMode mode);
bool DragColumnToTable(const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb = nullptr,
                       dao::Database* targetDb = nullptr);

bool DragUsersToDSN(const DragItem& source, const DragItem& target, DragMode mode);
bool DragUserToDSN(const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb = nullptr,
                   dao::Database* targetDb = nullptr);
bool DragDBPRVsToDB(const DragItem& source, const DragItem& target, DragMode mode);
bool DragDBPRVToDB(const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb = nullptr,
                   dao::Database* targetDb = nullptr);
bool DragTBLPRVsToTable(const DragItem& source, const DragItem& target, DragMode mode);
bool DragTBLPRVToTable(const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb = nullptr,
                       dao::Database* targetDb = nullptr);

} // namespace modDragAndDrop
