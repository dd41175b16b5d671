#include "MenuTable.h"

#include "mdiMain.h"

namespace menus
{

namespace
{

using panes::Operation;

Item routine(const char* name, const char* caption, void (mdiMain::*run)())
{
    return {.name = name, .caption = caption, .run = run};
}

Item check(const char* name, const char* caption, void (mdiMain::*run)())
{
    return {.name = name, .caption = caption, .run = run, .checkable = true};
}

std::string handlerOf(const char* name)
{
    return std::string("mdiMain.") + name + "_Click";
}

Item pane(const char* name, const char* caption, const char* pane, Operation operation)
{
    return {.name = name, .caption = caption, .pane = pane, .operation = operation, .handler = handlerOf(name)};
}

Item feature(const char* name, const char* caption)
{
    return {.name = name, .caption = caption, .handler = handlerOf(name)};
}

Item separator(const char* name)
{
    return {.name = name};
}

} // namespace

const std::vector<Menu>& table()
{
    static const std::vector<Menu> menus = {
        {"mnuFile",
         "&File",
         true,
         {routine("mnuFileRefresh", "&Refresh Datasources", &mdiMain::mnuFileRefresh_Click), separator("mnuFileSep1"),
          routine("mnuFileImportCSV", "&Import Catalog", &mdiMain::mnuFileImportCSV_Click),
          routine("mnuFileExportCSV", "&Export Catalog", &mdiMain::mnuFileExportCSV_Click), separator("mnuFileSep2"),
          routine("mnuFileExit", "E&xit", &mdiMain::mnuFileExit_Click)}},
        {"mnuView",
         "&View",
         true,
         {check("mnuViewToolbar", "&Tool Bar", &mdiMain::mnuViewToolbar_Click),
          check("mnuViewStatusBar", "&Status Bar", &mdiMain::mnuViewStatusBar_Click), separator("mnuViewSep1"),
          pane("mnuViewOptions", "&Options", "frmOptions", Operation::Display)}},
        {"mnuHelp", "&Help", true, {pane("mnuHelpAbout", "&About Quorvane", "frmAbout", Operation::Display)}},
        {"mnu_DSN",
         "DSN",
         false,
         {routine("mnu_DSNConnect", "&Connect", &mdiMain::mnu_DSNConnect_Click),
          routine("mnu_DSNExpandAll", "E&xpand All", &mdiMain::mnu_DSNExpandAll_Click),
          routine("mnu_DSNImport", "&Import Catalog", &mdiMain::mnu_DSNImport_Click),
          routine("mnu_DSNExport", "&Export Catalog", &mdiMain::mnu_DSNExport_Click),
          routine("mnu_DSNClear", "C&lear Catalog", &mdiMain::mnu_DSNClear_Click),
          routine("mnu_DSNDisconnect", "&Disconnect", &mdiMain::mnu_DSNDisconnect_Click)}},
        {"mnu_File",
         "_File",
         false,
         {routine("mnu_FileExpandAll", "E&xpand All", &mdiMain::mnu_FileExpandAll_Click),
          pane("mnu_FileAdd", "&Add New File", "frmFile", Operation::AddNew),
          pane("mnu_FileEdit", "&Edit File", "frmFile", Operation::Edit), separator("mnu_FileSep1"),
          feature("mnu_FileCopy", "&Copy"), pane("mnu_FileDelete", "&Delete File", "frmFile", Operation::Delete),
          separator("mnu_FileSep2"), feature("mnu_FileFileToTableWizard", "File to Table &Wizard")}},
        {"mnu_Field",
         "_Field",
         false,
         {pane("mnu_FieldAddNew", "&Add New Field", "frmField", Operation::AddNew),
          pane("mnu_FieldEdit", "&Edit Field", "frmField", Operation::Edit),
          pane("mnu_FieldDelete", "&Delete Field", "frmField", Operation::Delete),
          routine("mnu_FieldRecalculate", "Recalulate &Offsets", &mdiMain::mnu_FieldRecalculate_Click),
          routine("mnu_FieldReorder", "&Reorder Fields", &mdiMain::mnu_FieldReorder_Click)}},
        {"mnu_DB",
         "_DB",
         false,
         {routine("mnu_DBExpandAll", "E&xpand All", &mdiMain::mnu_DBExpandAll_Click),
          pane("mnu_DBAdd", "&Add New Database", "frmDatabase", Operation::AddNew),
          pane("mnu_DBEdit", "&Edit Database", "frmDatabase", Operation::Edit),
          pane("mnu_DBDelete", "&Delete Database", "frmDatabase", Operation::Delete), separator("mnu_DBSep1"),
          feature("mnu_DBCopy", "&Copy")}},
        {"mnu_Table",
         "_Table",
         false,
         {routine("mnu_TableExpandAll", "E&xpand All", &mdiMain::mnu_TableExpandAll_Click),
          pane("mnu_TableAddNew", "&Add New Table", "frmTable", Operation::AddNew),
          pane("mnu_TableEdit", "&Edit Table", "frmTable", Operation::Edit),
          pane("mnu_TableDelete", "&Delete Table", "frmTable", Operation::Delete), separator("mnu_TableSep1"),
          routine("mnu_TableViewData", "&View Data", &mdiMain::mnu_TableViewData_Click),
          feature("mnu_TableCopy", "&Copy")}},
        {"mnu_Column",
         "_Column",
         false,
         {pane("mnu_ColumnAddNew", "&Add New Column", "frmColumn", Operation::AddNew),
          pane("mnu_ColumnEdit", "&Edit Column", "frmColumn", Operation::Edit),
          pane("mnu_ColumnDelete", "&Delete Column", "frmColumn", Operation::Delete),
          routine("mnu_ColumnReorder", "&Reorder Columns", &mdiMain::mnu_ColumnReorder_Click)}},
        {"mnu_User",
         "_User",
         false,
         {pane("mnu_UserAddNew", "&Add New User", "frmUser", Operation::AddNew),
          pane("mnu_UserEdit", "&Edit User", "frmUser", Operation::Edit),
          pane("mnu_UserDelete", "&Delete User", "frmUser", Operation::Delete)}},
        {"mnu_DBPRV",
         "DBPRV",
         false,
         {pane("mnu_DBPRVAddNew", "&Add New User Privileges", "frmDBPRV", Operation::AddNew),
          pane("mnu_DBPRVEdit", "&Edit User's Privileges", "frmDBPRV", Operation::Edit),
          pane("mnu_DBPRVDelete", "&Delete User's Privileges", "frmDBPRV", Operation::Delete)}},
        {"mnu_TBLPRV",
         "TBLPRV",
         false,
         {pane("mnu_TBLPRVAddNew", "&Add New User Priveleges", "frmTBLPRV", Operation::AddNew),
          pane("mnu_TBLPRVEdit", "&Edit User's Privileges", "frmTBLPRV", Operation::Edit),
          pane("mnu_TBLPRVDelete", "&Delete User's Privileges", "frmTBLPRV", Operation::Delete)}},
    };
    return menus;
}

} // namespace menus
