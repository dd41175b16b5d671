#include "ContextMenuTable.h"

using namespace Qt::StringLiterals;

namespace contextmenus
{

namespace
{

/// When an item stands for something of the catalog's own.
enum class Guard { None, ReservedFile, CatalogDatabase };

struct Row {
    const char* type;
    const char* menu;
    std::vector<const char*> shown;
    std::vector<const char*> hidden;
    Guard guard = Guard::None;
    /// Under the guard: no menu at all, or the entries that are hidden beyond the others.
    bool noMenuWhenGuarded = false;
    std::vector<const char*> hiddenWhenGuarded = {};
};

const std::vector<Row>& rows()
{
    static const std::vector<Row> table = {
        {"FI",
         "mnu_File",
         {"mnu_FileAdd", "mnu_FileExpandAll"},
         {"mnu_FileDelete", "mnu_FileEdit", "mnu_FileFileToTableWizard", "mnu_FileSep1", "mnu_FileSep2",
          "mnu_FileCopy"}},
        {"fi",
         "mnu_File",
         {"mnu_FileDelete", "mnu_FileEdit", "mnu_FileAdd", "mnu_FileFileToTableWizard", "mnu_FileSep1", "mnu_FileSep2",
          "mnu_FileCopy"},
         {},
         Guard::ReservedFile,
         false,
         {"mnu_FileDelete", "mnu_FileEdit", "mnu_FileFileToTableWizard"}},
        {"FD",
         "mnu_Field",
         {"mnu_FieldAddNew", "mnu_FieldRecalculate", "mnu_FieldReorder"},
         {"mnu_FieldDelete", "mnu_FieldEdit"},
         Guard::ReservedFile,
         true},
        {"fd",
         "mnu_Field",
         {"mnu_FieldDelete", "mnu_FieldEdit", "mnu_FieldRecalculate"},
         {},
         Guard::ReservedFile,
         true},
        {"DB", "mnu_DB", {"mnu_DBAdd", "mnu_DBExpandAll"}, {"mnu_DBDelete", "mnu_DBEdit", "mnu_DBCopy", "mnu_DBSep1"}},
        {"db",
         "mnu_DB",
         {"mnu_DBDelete", "mnu_DBEdit", "mnu_DBCopy", "mnu_DBSep1"},
         {},
         Guard::CatalogDatabase,
         false,
         {"mnu_DBDelete", "mnu_DBEdit"}},
        {"TA",
         "mnu_Table",
         {"mnu_TableAddNew", "mnu_TableExpandAll"},
         {"mnu_TableDelete", "mnu_TableEdit", "mnu_TableViewData", "mnu_TableCopy", "mnu_TableSep1"},
         Guard::CatalogDatabase,
         false,
         {"mnu_TableAddNew"}},
        {"ta",
         "mnu_Table",
         {"mnu_TableDelete", "mnu_TableEdit", "mnu_TableViewData", "mnu_TableCopy", "mnu_TableSep1"},
         {},
         Guard::CatalogDatabase,
         false,
         {"mnu_TableAddNew", "mnu_TableDelete", "mnu_TableEdit"}},
        {"CO",
         "mnu_Column",
         {"mnu_ColumnAddNew", "mnu_ColumnReorder"},
         {"mnu_ColumnDelete", "mnu_ColumnEdit"},
         Guard::CatalogDatabase,
         true},
        {"co", "mnu_Column", {"mnu_ColumnDelete", "mnu_ColumnEdit"}, {}, Guard::CatalogDatabase, true},
        {"US", "mnu_User", {"mnu_UserAddNew"}, {"mnu_UserDelete", "mnu_UserEdit"}},
        {"us", "mnu_User", {"mnu_UserDelete", "mnu_UserEdit", "mnu_UserAddNew"}, {}},
        {"DBPRV", "mnu_DBPRV", {"mnu_DBPRVAddNew"}, {"mnu_DBPRVDelete", "mnu_DBPRVEdit"}},
        {"dbprv", "mnu_DBPRV", {"mnu_DBPRVDelete", "mnu_DBPRVEdit", "mnu_DBPRVAddNew"}, {}},
        {"TBLPRV",
         "mnu_TBLPRV",
         {"mnu_TBLPRVAddNew"},
         {"mnu_TBLPRVDelete", "mnu_TBLPRVEdit"},
         Guard::CatalogDatabase,
         true},
        {"tblprv",
         "mnu_TBLPRV",
         {"mnu_TBLPRVDelete", "mnu_TBLPRVEdit", "mnu_TBLPRVAddNew"},
         {},
         Guard::CatalogDatabase,
         true},
    };
    return table;
}

std::vector<QString> names(const std::vector<const char*>& literals)
{
    std::vector<QString> result;
    for (const char* literal : literals)
        result.push_back(QLatin1String(literal));
    return result;
}

Use datasourceUse(bool connected)
{
    std::vector<QString> whenConnected =
        names({"mnu_DSNClear", "mnu_DSNDisconnect", "mnu_DSNExpandAll", "mnu_DSNExport", "mnu_DSNImport"});
    std::vector<QString> whenGhost = names({"mnu_DSNConnect"});
    if (connected)
        return {u"mnu_DSN"_s, std::move(whenConnected), std::move(whenGhost)};
    return {u"mnu_DSN"_s, std::move(whenGhost), std::move(whenConnected)};
}

/// Whether a file is one of the catalog's own that context menus protect.
bool isProtectedFile(const QString& name)
{
    return u",CNTRL,COLUMN,DB,DBPRV,DRIVER,FIELD,FILE,LOCDT,SQLDT,TABLE,TBLPRV,USER,"_s.contains(','_L1 + name +
                                                                                                 ','_L1);
}

bool isGuarded(Guard guard, const DragItem& item)
{
    // The second key part is the file or the database of every item that the guards speak of.
    switch (guard) {
    case Guard::None:
        return false;
    case Guard::ReservedFile:
        return isProtectedFile(item.Keys.value(1));
    case Guard::CatalogDatabase:
        return item.Keys.value(1) == "TW"_L1;
    }
    return false;
}

} // namespace

Use use(const DragItem& item, bool connected)
{
    if (item.NodeType == "DSN"_L1 || item.NodeType == "FDSN"_L1)
        return datasourceUse(connected);

    for (const Row& row : rows()) {
        if (item.NodeType != QLatin1String(row.type))
            continue;
        const bool guarded = isGuarded(row.guard, item);
        if (guarded && row.noMenuWhenGuarded)
            return {};
        Use result{QLatin1String(row.menu), names(row.shown), names(row.hidden)};
        if (guarded) {
            for (const QString& name : names(row.hiddenWhenGuarded)) {
                std::erase(result.shown, name);
                result.hidden.push_back(name);
            }
        }
        return result;
    }
    return {};
}

} // namespace contextmenus
