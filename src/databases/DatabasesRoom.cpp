#include "DatabasesRoom.h"

#include "Commands.h"
#include "PaneRegistry.h"
#include "frmColumn.h"
#include "frmColumnReorder.h"
#include "frmColumns.h"
#include "frmDatabase.h"
#include "frmDatabases.h"
#include "frmSpecialCols.h"
#include "frmTable.h"
#include "frmTableData.h"
#include "frmTables.h"
#include "frmWizardFileToTable.h"
#include "mdiMain.h"

using namespace Qt::StringLiterals;

namespace
{

template <class Pane>
void add(const QString& name, panes::Operations operations)
{
    panes::add(
        name, [] { return new Pane; }, std::move(operations));
}

void mnu_ColumnReorder_Click(const DragItem& item)
{
    if (item.NodeType == "CO"_L1 || item.NodeType == "co"_L1)
        frmColumnReorder::Display(item.Keys.first(3));
}

void mnu_FileFileToTableWizard_Click(const DragItem& item)
{
    frmWizardFileToTable::Display(item.Keys.value(0), {}, {});
}

void mnu_TableViewData_Click(const DragItem& item)
{
    if (item.NodeType == "ta"_L1)
        mdiMain::instance().PaneDisplay(u"frmTableData"_s, item.Keys.first(3));
}

} // namespace

void registerDatabasesRoom()
{
    add<frmDatabase>(u"frmDatabase"_s, ItemPane::operations(2));
    add<frmDatabases>(u"frmDatabases"_s, GridPane::operations(1));
    add<frmTable>(u"frmTable"_s, ItemPane::operations(3));
    add<frmTables>(u"frmTables"_s, GridPane::operations(2));
    add<frmColumn>(u"frmColumn"_s, ItemPane::operations(4));
    add<frmColumns>(u"frmColumns"_s, GridPane::operations(3));
    add<frmSpecialCols>(u"frmSpecialCols"_s, {.Display = panes::call(&frmSpecialCols::Display)});
    add<frmTableData>(u"frmTableData"_s, {.Display = panes::call(&frmTableData::Display)});
    commands::add(u"mnu_ColumnReorder"_s, mnu_ColumnReorder_Click);
    commands::add(u"mnu_FileFileToTableWizard"_s, mnu_FileFileToTableWizard_Click);
    commands::add(u"mnu_TableViewData"_s, mnu_TableViewData_Click);
}
