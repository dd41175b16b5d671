#include "modDragAndDrop.h"

#include "CollectionView.h"
#include "Departures.h"
#include "DropJudgement.h"
#include "Events.h"
#include "NodeKeys.h"
#include "PaneForm.h"
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

Carry wholeCollection(CollectionRoutine routine)
{
    return [routine](const DragItem& source, const DragItem& target) { return routine(source, target, DragMode::Ask); };
}

Carry singleItem(ItemRoutine routine)
{
    return [routine](const DragItem& source, const DragItem& target) {
        return routine(source, target, DragMode::Ask, nullptr, nullptr);
    };
}

/// Where a drop of one type of item goes, and what it changes on either side: a node that is read anew, by its type,
/// and the grid of that collection with the number of its key parts.
struct Route {
    const char* source;
    Carry carry;
    const char* node;
    const char* pane;
    int paneKeys;

    QString nodeOf(const DragItem& side) const { return nodekeys::of(QLatin1StringView(node), side.Keys); }
    QString grid() const { return QLatin1StringView(pane); }
    QStringList gridKeys(const DragItem& side) const { return side.Keys.mid(0, paneKeys); }
};

bool carryFile(const DragItem& source, const DragItem& target)
{
    static const QStringList noPlace{u"db"_s, u"TA"_s, u"ta"_s, u"CO"_s, u"co"_s};
    return !noPlace.contains(target.NodeType) && singleItem(modDragAndDrop::DragFileToDSN)(source, target);
}

const std::vector<Route>& routes()
{
    using namespace modDragAndDrop;
    static const std::vector<Route> all{
        {"FI", wholeCollection(DragFilesToDSN), "FI", "frmFiles", 1},
        {"fi", carryFile, "FI", "frmFiles", 1},
        {"FD", wholeCollection(DragFieldsToFile), "fi", "frmFields", 2},
        {"fd", singleItem(DragFieldToFile), "FD", "frmFields", 2},
        {"DB", wholeCollection(DragDBsToDSN), "DB", "frmDatabases", 1},
        {"db", singleItem(DragDBToDSN), "DB", "frmDatabases", 1},
        {"TA", wholeCollection(DragTablesToDB), "TA", "frmTables", 2},
        {"ta", singleItem(DragTableToDB), "TA", "frmTables", 2},
        {"CO", wholeCollection(DragColumnsToTable), "CO", "frmColumns", 3},
        {"co", singleItem(DragColumnToTable), "CO", "frmColumns", 3},
        {"US", wholeCollection(DragUsersToDSN), "US", "frmUsers", 1},
        {"us", singleItem(DragUserToDSN), "US", "frmUsers", 1},
        {"DBPRV", wholeCollection(DragDBPRVsToDB), "DBPRV", "frmDBPRVs", 2},
        {"dbprv", singleItem(DragDBPRVToDB), "DBPRV", "frmDBPRVs", 2},
        {"TBLPRV", wholeCollection(DragTBLPRVsToTable), "ta", "frmTBLPRVs", 3},
        {"tblprv", singleItem(DragTBLPRVToTable), "TBLPRV", "frmTBLPRVs", 3},
    };
    return all;
}

const Route* routeOf(const QString& type)
{
    const auto found = std::find_if(routes().begin(), routes().end(),
                                    [&](const Route& route) { return type == QLatin1StringView(route.source); });
    return found == routes().end() ? nullptr : &*found;
}

/// The key of the node whose object the pane on view shows; empty for none.
QString shownNode()
{
    const auto* pane = dynamic_cast<const PaneForm*>(mdiMain::instance().currentPane());
    return pane ? pane->shownNode() : QString();
}

/// Columns take the special ones along, whose pane remembers what is stored.
void showSpecialColumnsAnew(const DragItem& side)
{
    if (shownNode() == nodekeys::of(u"ta"_s, side.Keys) + "SCO="_L1 + side.Keys.value(2) + ':'_L1)
        mdiMain::instance().PaneDisplay(u"frmSpecialCols"_s, side.Keys.mid(0, 3));
}

void refresh(const Route& route, const DragItem& source, const DragItem& target)
{
    collectionview::readAnew(route.nodeOf(source));
    collectionview::readAnew(route.nodeOf(target));
    const QStringList from = route.gridKeys(source);
    const QStringList to = route.gridKeys(target);
    collectionview::showAnew(route.grid(), from);
    if (to != from)
        collectionview::showAnew(route.grid(), to);
    if (route.grid() == "frmColumns"_L1) {
        showSpecialColumnsAnew(source);
        showSpecialColumnsAnew(target);
    }
}

/// Shows the collection that was dropped upon, in place of the pane of something that has gone: what that pane would
/// still write belongs nowhere.
void showTarget(const Route& route, const DragItem& target)
{
    mdiMain& window = mdiMain::instance();
    window.setCurrentItem(window.NodeToDragItem(window.tvwExplorer().SelectedItem()));
    window.PaneDisplay(route.grid(), route.gridKeys(target));
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
    const events::LongRoutine pace;
    bool dropped = false;
    Routine routine("modDragAndDrop.DoDragDrop");
    routine.run([&] {
        const Route* route = routeOf(source.NodeType);
        // Without a drag going on nothing has been judged.
        if (!allowed || !mdiMain::instance().isDragging() || !route || target.NodeType.isEmpty())
            return;
        const QString shown = shownNode();
        const Departures departures;
        dropped = route->carry(source, target);
        if (dropped)
            refresh(*route, source, target);
        if (departures.took(shown))
            showTarget(*route, target);
    });
    if (tree)
        tree->setDropHighlight(nullptr);
    mdiMain::instance().setDragging(false);
    mdiMain::instance().Status(u"Ready"_s);
    return dropped;
}
