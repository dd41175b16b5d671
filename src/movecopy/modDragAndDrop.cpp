#include "modDragAndDrop.h"

#include "CollectionView.h"
#include "DropJudgement.h"
#include "GridPane.h"
#include "ItemPane.h"
#include "NodeTypes.h"
#include "Routine.h"
#include "TreeView.h"
#include "mdiMain.h"

#include <algorithm>
#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

bool allowed = false;

using Carry = std::function<bool(const DragItem& source, const DragItem& target)>;
using CollectionRoutine = bool (*)(const DragItem&, const DragItem&, DragMode);
using ItemRoutine = bool (*)(const DragItem&, const DragItem&, DragMode, dao::Database*, dao::Database*);

Carry collection(CollectionRoutine routine)
{
    return [routine](const DragItem& source, const DragItem& target) { return routine(source, target, DragMode::Ask); };
}

Carry item(ItemRoutine routine)
{
    return [routine](const DragItem& source, const DragItem& target) {
        return routine(source, target, DragMode::Ask, nullptr, nullptr);
    };
}

/// A part of a node's key: its type, and the place of its name among the names of an item.
struct KeyPart {
    const char* type;
    int name;
};

/// Where a drop of one type of item goes, and what it changes on either side: a node that is read anew, and the grid of
/// that collection with the number of its key parts.
struct Route {
    const char* source;
    Carry carry;
    std::vector<KeyPart> node;
    const char* pane;
    int paneKeys;
};

bool carryFile(const DragItem& source, const DragItem& target)
{
    static const QStringList noPlace{u"db"_s, u"TA"_s, u"ta"_s, u"CO"_s, u"co"_s};
    return !noPlace.contains(target.NodeType) && item(modDragAndDrop::DragFileToDSN)(source, target);
}

const std::vector<Route>& routes()
{
    using namespace modDragAndDrop;
    static const std::vector<KeyPart> files{{"DSN", 0}, {"FI", 0}};
    static const std::vector<KeyPart> file{{"DSN", 0}, {"FI", 0}, {"fi", 1}};
    static const std::vector<KeyPart> fields{{"DSN", 0}, {"FI", 0}, {"fi", 1}, {"FD", 1}};
    static const std::vector<KeyPart> databases{{"DSN", 0}, {"DB", 0}};
    static const std::vector<KeyPart> tables{{"DSN", 0}, {"DB", 0}, {"db", 1}, {"TA", 1}};
    static const std::vector<KeyPart> table{{"DSN", 0}, {"DB", 0}, {"db", 1}, {"TA", 1}, {"ta", 2}};
    static const std::vector<KeyPart> columns{{"DSN", 0}, {"DB", 0}, {"db", 1}, {"TA", 1}, {"ta", 2}, {"CO", 2}};
    static const std::vector<KeyPart> users{{"DSN", 0}, {"US", 0}};
    static const std::vector<KeyPart> dbprvs{{"DSN", 0}, {"DB", 0}, {"db", 1}, {"DBPRV", 1}};
    static const std::vector<KeyPart> tblprvs{{"DSN", 0}, {"DB", 0}, {"db", 1}, {"TA", 1}, {"ta", 2}, {"TBLPRV", 2}};
    static const std::vector<Route> all{
        {"FI", collection(DragFilesToDSN), files, "frmFiles", 1},
        {"fi", carryFile, files, "frmFiles", 1},
        {"FD", collection(DragFieldsToFile), file, "frmFields", 2},
        {"fd", item(DragFieldToFile), fields, "frmFields", 2},
        {"DB", collection(DragDBsToDSN), databases, "frmDatabases", 1},
        {"db", item(DragDBToDSN), databases, "frmDatabases", 1},
        {"TA", collection(DragTablesToDB), tables, "frmTables", 2},
        {"ta", item(DragTableToDB), tables, "frmTables", 2},
        {"CO", collection(DragColumnsToTable), columns, "frmColumns", 3},
        {"co", item(DragColumnToTable), columns, "frmColumns", 3},
        {"US", collection(DragUsersToDSN), users, "frmUsers", 1},
        {"us", item(DragUserToDSN), users, "frmUsers", 1},
        {"DBPRV", collection(DragDBPRVsToDB), dbprvs, "frmDBPRVs", 2},
        {"dbprv", item(DragDBPRVToDB), dbprvs, "frmDBPRVs", 2},
        {"TBLPRV", collection(DragTBLPRVsToTable), table, "frmTBLPRVs", 3},
        {"tblprv", item(DragTBLPRVToTable), tblprvs, "frmTBLPRVs", 3},
    };
    return all;
}

const Route* routeOf(const QString& type)
{
    const auto found = std::find_if(routes().begin(), routes().end(),
                                    [&](const Route& route) { return type == QLatin1StringView(route.source); });
    return found == routes().end() ? nullptr : &*found;
}

QString keyOf(const std::vector<KeyPart>& node, const QStringList& names)
{
    QString key;
    for (const KeyPart& part : node)
        key += QLatin1StringView(part.type) + '='_L1 + names.at(part.name) + ':'_L1;
    return key;
}

/// The key of the node whose row or rows the pane on view shows; empty for any other pane, and for a row to be added.
QString shownNode()
{
    const Form* pane = mdiMain::instance().currentPane();
    if (const auto* item = dynamic_cast<const ItemPane*>(pane))
        return item->keys().back().isEmpty() ? QString() : item->CalcNodeKey();
    const auto* grid = dynamic_cast<const GridPane*>(pane);
    const auto found = std::find_if(routes().begin(), routes().end(), [&](const Route& route) {
        return grid && nodetypes::isItem(QString::fromLatin1(route.source)) &&
               grid->name() == QLatin1StringView(route.pane);
    });
    return found == routes().end() ? QString() : keyOf(found->node, grid->keys());
}

/// Leaves a pane whose object, or what that hangs under, has gone from a collection that has just been read anew.
void leaveWhatIsGone(const QString& collection)
{
    mdiMain& window = mdiMain::instance();
    const TreeNode* level = window.tvwExplorer().Nodes().find(collection);
    const QString shown = shownNode();
    if (!level || !shown.startsWith(collection) || shown == collection)
        return;
    for (const TreeNode* member = level->Child(); member; member = member->Next()) {
        if (shown.startsWith(member->Key()))
            return;
    }
    window.setCurrentItem(window.NodeToDragItem(window.tvwExplorer().SelectedItem()));
    window.DisplayNode();
}

void refresh(const Route& route, const DragItem& source, const DragItem& target)
{
    const QString sourceNode = keyOf(route.node, source.Keys);
    collectionview::readAnew(sourceNode);
    collectionview::readAnew(keyOf(route.node, target.Keys));
    const QString pane = QString::fromLatin1(route.pane);
    const QStringList from = source.Keys.mid(0, route.paneKeys);
    const QStringList to = target.Keys.mid(0, route.paneKeys);
    collectionview::showAnew(pane, from);
    if (to != from)
        collectionview::showAnew(pane, to);
    leaveWhatIsGone(sourceNode);
}

} // namespace

bool modDragAndDrop::dropAllowed()
{
    return allowed;
}

void modDragAndDrop::DoDragOver(TreeView* tree, const DragItem& source, const DragItem& target)
{
    Routine routine("modDragAndDrop.DoDragOver");
    routine.run([&] {
        allowed = true;
        if (!mdiMain::instance().isDragging() || source.NodeType.isEmpty() || target.NodeType.isEmpty() || !tree)
            return;
        const Drop drop = judgeDrop(source, target);
        allowed = drop == Drop::Allowed;
        if (drop == Drop::OnItself)
            return;
        tree->setDragIcon(allowed ? source.DragIcon : u"No Drop"_s);
    });
}

bool modDragAndDrop::DoDragDrop(TreeView* tree, const DragItem& source, const DragItem& target)
{
    bool dropped = false;
    Routine routine("modDragAndDrop.DoDragDrop");
    routine.run([&] {
        const Route* route = routeOf(source.NodeType);
        // Without a drag going on nothing has been judged.
        if (!allowed || !mdiMain::instance().isDragging() || !route || target.NodeType.isEmpty())
            return;
        dropped = route->carry(source, target);
        if (dropped)
            refresh(*route, source, target);
        mdiMain::instance().Status(u"Ready"_s);
    });
    if (tree)
        tree->setDropHighlight(nullptr);
    mdiMain::instance().setDragging(false);
    return dropped;
}
