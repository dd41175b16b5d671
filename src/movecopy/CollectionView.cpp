#include "CollectionView.h"

#include "GridPane.h"
#include "RuntimeError.h"
#include "mdiMain.h"
#include "modGUI.h"

void collectionview::readAnew(const QString& nodeKey)
{
    try {
        modGUI::ExpandToNode(nodeKey);
    } catch (const RuntimeError&) {
    }
}

void collectionview::showAnew(const QString& pane, const QStringList& keys)
{
    try {
        mdiMain& window = mdiMain::instance();
        const auto* grid = dynamic_cast<const GridPane*>(window.currentPane());
        if (grid && grid->name() == pane && grid->keys() == keys)
            window.PaneDisplay(pane, keys);
    } catch (const RuntimeError&) {
    }
}
