#include "ToolbarTable.h"

namespace toolbars
{

namespace
{

constexpr Button separator{nullptr, nullptr};
constexpr Button ok{"OK", ""};
constexpr Button cancel{"Cancel", "Cancel"};
constexpr Button undo{"Undo", "Undo changes"};

std::vector<Row> withHandlers(std::vector<Row> rows)
{
    for (Row& row : rows)
        row.handler = std::string("mdiMain.") + row.toolBar + "_ButtonClick";
    return rows;
}

} // namespace

const std::vector<Row>& table()
{
    static const std::vector<Row> rows = withHandlers({
        {"tbrMain",
         "Main",
         nullptr,
         {{"DSN Refresh", "Refresh Datasources"},
          {"DSN Admin", "Datasource Administrator"},
          {"Import", "Import Catalog"},
          {"Export", "Export Catalog"}}},
        {"tbrColumn",
         "Column",
         "frmColumn",
         {{"Up1", "Up to Column Collection"},
          separator,
          {"Column Add", "Add New Column"},
          {"Column Edit", "Edit Column"},
          {"Column Delete", "Delete Column"},
          separator,
          ok,
          cancel,
          undo}},
        {"tbrColumns", "", "frmColumns", {{"Up1", "No where to go!"}}},
        {"tbrDatabase",
         "DB",
         "frmDatabase",
         {{"Up1", "Up to Database collection"},
          separator,
          {"DB Add", "Add New Database"},
          {"DB Edit", "Edit Database"},
          {"DB Delete", "Delete Database"},
          separator,
          ok,
          cancel,
          undo}},
        {"tbrDatabases", "", "frmDatabases", {{"Up1", "No where to go!"}}},
        {"tbrDBPRV",
         "User",
         "frmDBPRV",
         {{"Up1", "Up to Database Privilige collection"},
          separator,
          {"User Add", "Add New User Privileges"},
          {"User Edit", "Edit User Privileges"},
          {"User Delete", "Delete User Privileges"},
          separator,
          ok,
          cancel,
          undo}},
        {"tbrDBPRVs", "User", "frmDBPRVs", {{"Up1", "Up to Database Collection"}}},
        {"tbrField",
         "Field",
         "frmField",
         {{"Up1", "Up to the Field collection"},
          separator,
          {"Field Add", "Add New Field"},
          {"Field Edit", "Edit Field"},
          {"Field Delete", "Delete Field"},
          separator,
          ok,
          cancel,
          undo}},
        {"tbrFields", "Fields", "frmFields", {{"Up1", "Up to File '?'"}}},
        {"tbrFile",
         "File",
         "frmFile",
         {{"Up1", "Up to File collection"},
          separator,
          {"File Add", "Add New File"},
          {"File Edit", "Edit File"},
          {"File Delete", "Delete File"},
          separator,
          ok,
          cancel,
          undo}},
        {"tbrFiles", "Files", "frmFiles", {{"Up1", "No where to go!"}}},
        {"tbrSpecialCols",
         "",
         "frmSpecialCols",
         {{"Up1", "Up to Table ?"}, separator, {"Special Column Edit", "Edit Special Columns"}, separator, ok, cancel}},
        {"tbrTable",
         "Table",
         "frmTable",
         {{"Up1", "Up to Table collection"},
          separator,
          {"Table Add", "Add New Table"},
          {"Table Edit", "Edit Table"},
          {"Table Delete", "Delete Table"},
          separator,
          ok,
          cancel,
          undo,
          separator,
          {"ViewData", "View Data"}}},
        {"tbrTables", "Tables", "frmTables", {{"Up1", "Up to..."}}},
        {"tbrTBLPRV",
         "User",
         "frmTBLPRV",
         {{"Up1", "Up to Table Privilieges collection"},
          separator,
          {"User Add", "Add New User Privileges"},
          {"User Edit", "Edit User Privileges"},
          {"User Delete", "Delete User Privileges"},
          separator,
          ok,
          cancel,
          undo}},
        {"tbrTBLPRVs", "TBLPRVS", "frmTBLPRVs", {{"Up1", "Up to..."}}},
        {"tbrUser",
         "User",
         "frmUser",
         {{"Up1", "Up to User collection"},
          separator,
          {"User Add", "Add New User"},
          {"User Edit", "Edit User"},
          {"User Delete", "Delete User"},
          separator,
          ok,
          cancel,
          undo}},
        {"tbrUsers", "Users", "frmUsers", {{"Up1", "No where to go!"}}},
        {"tbrAbout", "", "frmAbout", {{"WWW", ""}, {"EMail", ""}, {"Information", ""}}},
        {"tbrViewData", "", "frmTableData", {{"Refresh", "Refresh Grid"}}},
    });
    return rows;
}

} // namespace toolbars
