#include "CopyCommands.h"

#include "CConnections.h"
#include "Commands.h"
#include "DragItem.h"
#include "frmDBCopy.h"
#include "frmFileCopy.h"
#include "frmTableCopy.h"

using namespace Qt::StringLiterals;

namespace
{

/// The open database of an item of a type, or null for another type and where there is no connection.
dao::Database* databaseOf(const DragItem& item, const QString& type)
{
    if (item.NodeType != type)
        return nullptr;
    const CConnection* connection = CConnections::instance().Item(item.Keys.at(0));
    return connection ? connection->db() : nullptr;
}

void mnu_DBCopy_Click(const DragItem& item)
{
    if (dao::Database* db = databaseOf(item, u"db"_s))
        frmDBCopy::Display(*db, item.Keys.at(1));
}

void mnu_TableCopy_Click(const DragItem& item)
{
    if (dao::Database* db = databaseOf(item, u"ta"_s))
        frmTableCopy::Display(*db, item.Keys.at(1), item.Keys.at(2));
}

void mnu_FileCopy_Click(const DragItem& item)
{
    if (dao::Database* db = databaseOf(item, u"fi"_s))
        frmFileCopy::Display(*db, item.Keys.at(1));
}

} // namespace

void registerCopyCommands()
{
    commands::add(u"mnu_DBCopy"_s, mnu_DBCopy_Click);
    commands::add(u"mnu_TableCopy"_s, mnu_TableCopy_Click);
    commands::add(u"mnu_FileCopy"_s, mnu_FileCopy_Click);
}
