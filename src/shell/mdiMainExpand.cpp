#include "mdiMain.h"

#include "CConnections.h"
#include "CMouseSleeper.h"
#include "Events.h"
#include "NodeTypes.h"
#include "Recordset.h"
#include "ReservedRows.h"
#include "Routine.h"
#include "Settings.h"
#include "modDatabase.h"

#include <optional>

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace
{

const QString options = u"Options"_s;

bool isSystemFile(const QString& name)
{
    static constexpr QStringView names = u"'CNTRL'COLUMN'DB'DBPRV'DRIVER'FIELD'FILE'SQLDT'LOCDT'TABLE'TBLPRV'USER'";
    constexpr qsizetype longest = 6;
    if (name.size() > longest && !name.contains('\''))
        return false;
    for (qsizetype at = names.indexOf(name, 1); at > 0; at = names.indexOf(name, at + 1)) {
        if (names.sliced(at - 1).startsWith('\'') && names.sliced(at + name.size()).startsWith('\''))
            return true;
    }
    return false;
}

bool isCatalogDatabase(const QString& name)
{
    return name == "TW"_L1;
}

bool never(const QString&)
{
    return false;
}

/// A level that a statement fills: what each of its rows becomes.
struct Level {
    QString statement;
    QString type;
    QString image;
    bool hasPlaceholder = false;
    /// The names that show grey, besides those below a grey parent.
    bool (*isGrey)(const QString& name) = never;
    bool (*isBold)(const QString& name) = never;
    bool takesColourOfParent = false;
};

Level filesLevel()
{
    return {.statement = settings::getNumber(options, u"SysTables"_s, 0) == 0
                             ? u"SELECT FILE_NAME FROM TW_FILE "
                               "WHERE FILE_NAME NOT IN ('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', "
                               "'SQLDT', 'LOCDT', 'TABLE', 'TBLPRV', 'USER') "
                               "ORDER BY FILE_NAME ASC"_s
                             : u"SELECT FILE_NAME FROM TW_FILE ORDER BY FILE_NAME ASC"_s,
            .type = u"fi"_s,
            .image = u"File"_s,
            .hasPlaceholder = true,
            .isGrey = isSystemFile};
}

Level fieldsLevel(const QString& file)
{
    const QString statement = settings::getNumber(options, u"FieldOrder"_s, 0) == 0
                                  ? u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '%1' ORDER BY FIELD_NAME ASC"_s
                                  : u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '%1' ORDER BY OFFSET ASC"_s;
    return {
        .statement = statement.arg(SQLQuote(file)), .type = u"fd"_s, .image = u"Field"_s, .takesColourOfParent = true};
}

Level databasesLevel()
{
    return {.statement = settings::getNumber(options, u"SysTables"_s, 0) == 0
                             ? u"SELECT DATABASE_NAME FROM TW_DB "
                               "WHERE DATABASE_NAME <> 'TW' ORDER BY DATABASE_NAME ASC"_s
                             : u"SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME ASC"_s,
            .type = u"db"_s,
            .image = u"DB"_s,
            .hasPlaceholder = true,
            .isGrey = isCatalogDatabase};
}

Level tablesLevel(const QString& database)
{
    return {.statement = u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = '%1' ORDER BY TABLE_NAME ASC"_s.arg(
                SQLQuote(database)),
            .type = u"ta"_s,
            .image = u"Table"_s,
            .hasPlaceholder = true,
            .takesColourOfParent = true};
}

Level columnsLevel(const QString& database, const QString& table)
{
    return {.statement = u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2' "
                         "AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s.arg(SQLQuote(database), SQLQuote(table)),
            .type = u"co"_s,
            .image = u"Column"_s,
            .takesColourOfParent = true};
}

Level usersLevel()
{
    return {.statement = u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s,
            .type = u"us"_s,
            .image = u"User"_s,
            .isBold = reservedrows::isAdministrator};
}

Level databasePrivilegesLevel(const QString& database)
{
    return {.statement = u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = '%1' ORDER BY USER_NAME "_s.arg(
                SQLQuote(database)),
            .type = u"dbprv"_s,
            .image = u"User"_s,
            .isBold = reservedrows::isAdministrator};
}

Level tablePrivilegesLevel(const QString& database, const QString& table)
{
    return {.statement = u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2' "
                         "ORDER BY USER_NAME "_s.arg(SQLQuote(database), SQLQuote(table)),
            .type = u"tblprv"_s,
            .image = u"User"_s,
            .isBold = reservedrows::isAdministrator,
            .takesColourOfParent = true};
}

/// The level below a collection of the type; nothing for a node that no statement fills.
std::optional<Level> levelOf(const QString& type, const QStringList& keys)
{
    if (type == "FI"_L1)
        return filesLevel();
    if (type == "FD"_L1)
        return fieldsLevel(keys.at(1));
    if (type == "DB"_L1)
        return databasesLevel();
    if (type == "TA"_L1)
        return tablesLevel(keys.at(1));
    if (type == "CO"_L1)
        return columnsLevel(keys.at(1), keys.at(2));
    if (type == "US"_L1)
        return usersLevel();
    if (type == "DBPRV"_L1)
        return databasePrivilegesLevel(keys.at(1));
    if (type == "TBLPRV"_L1)
        return tablePrivilegesLevel(keys.at(1), keys.at(2));
    return std::nullopt;
}

TreeNode* addNode(CNodes& nodes, TreeNode& parent, const QString& type, const QString& data, const QString& text,
                  const QString& image, bool hasPlaceholder)
{
    const CNode* payload = nodes.add(&parent, type, data, text, image);
    if (!payload)
        return nullptr;
    TreeNode* node = CNodes::treeNode(*payload);
    if (hasPlaceholder)
        nodes.addPlaceholder(*node);
    return node;
}

/// One of the fixed collections below an item, in the colour of that item.
void addCollection(CNodes& nodes, TreeNode& parent, const QString& type, const QString& text, const QString& image,
                   bool hasPlaceholder = true)
{
    const QString owner = nodes.Item(parent).NodeData();
    if (TreeNode* node = addNode(nodes, parent, type, owner, text, image, hasPlaceholder))
        node->setGrey(parent.Grey());
}

void fill(CNodes& nodes, TreeNode& parent, dao::Database& db, const Level& level)
{
    for (auto rows = db.OpenRecordset(level.statement); !rows->Eof(); rows->MoveNext()) {
        const QString name = rows->View(0).toString();
        TreeNode* node = addNode(nodes, parent, level.type, name, name, level.image, level.hasPlaceholder);
        if (!node)
            continue;
        node->setGrey(level.isGrey(name) || (level.takesColourOfParent && parent.Grey()));
        node->setBold(level.isBold(name));
    }
}

} // namespace

void mdiMain::tvwExplorer_Expand(TreeNode* node)
{
    Routine routine("mdiMain.tvw_Explorer_Expand", "mdiMain.tvwExplorer_Expand");
    routine.run([&] {
        const CMouseSleeper sleeper;
        m_tree->CancelDrag();
        m_dragging = false;
        expandLevel(*node);
    });
    events::yield();
}

void mdiMain::expandLevel(TreeNode& node)
{
    TreeView::RedrawOff redrawOff(*m_tree);
    m_nodes.RemoveChildren(node);

    const QString type = m_nodes.Item(node).NodeType();
    const QStringList keys = NodeToDragItem(&node).Keys;
    const QString datasource = keys.value(0);
    if (nodetypes::isDatasource(type)) {
        redrawOff.end();
        node.setSelected(true);
        m_tree->viewport()->repaint();
        expandDatasource(node, datasource);
    } else if (type == "fi"_L1) {
        addCollection(m_nodes, node, u"FD"_s, u"Fields"_s, u"Fields"_s);
    } else if (type == "db"_L1) {
        addCollection(m_nodes, node, u"TA"_s, u"Tables"_s, u"Tables"_s);
        addCollection(m_nodes, node, u"DBPRV"_s, u"Database Privileges"_s, u"Padlock"_s);
    } else if (type == "ta"_L1) {
        addCollection(m_nodes, node, u"CO"_s, u"Columns"_s, u"Columns"_s);
        addCollection(m_nodes, node, u"SCO"_s, u"Special Columns"_s, u"Special Columns"_s, false);
        addCollection(m_nodes, node, u"TBLPRV"_s, u"Table Privileges"_s, u"Padlock"_s);
    } else if (const std::optional<Level> level = levelOf(type, keys)) {
        if (CConnection* connection = CConnections::instance().Item(datasource))
            fill(m_nodes, node, *connection->db(), *level);
    }
}

void mdiMain::expandDatasource(TreeNode& node, const QString& datasource)
{
    if (!CConnections::instance().Item(datasource)) {
        node.setExpanded(false);
        m_nodes.addPlaceholder(node);
        return;
    }
    const TreeView::RedrawOff redrawOff(*m_tree);
    node.setImage(nodetypes::connectedImage);
    node.setSelectedImage(nodetypes::connectedImage);
    addNode(m_nodes, node, u"FI"_s, datasource, u"Files"_s, u"Files"_s, true);
    addNode(m_nodes, node, u"DB"_s, datasource, u"Databases"_s, u"DBs"_s, true);
    addNode(m_nodes, node, u"US"_s, datasource, u"Users"_s, u"Users"_s, true);
}
