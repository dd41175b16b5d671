#include "frmDatabase.h"

#include "Database.h"
#include "Definitions.h"
#include "DropDown.h"
#include "Recordset.h"
#include "mdiMain.h"
#include "modBoundControls.h"
#include "modUpdate.h"

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

std::vector<Property> properties()
{
    return {
        {.prompt = "&Database Name:",
         .column = "DATABASE_NAME",
         .index = 0,
         .toolTip = "Within each Tarnwick Catalog Databases have unique names.  A Database name can be up to 10 "
                    "characters in length.",
         .isKey = true},
        {.prompt = "D&isplay Name:",
         .column = "DISPLAY_NAME",
         .index = 6,
         .toolTip = "The Name of this database as it appears to other applications"},
        {.prompt = "Driver &Name:",
         .column = "DRIVER_NAME",
         .kind = EntryKind::List,
         .index = 2,
         .toolTip = "The driver used for file access by the Tarnwick SQL engine."},
        {.prompt = "Default Di&rectory:",
         .column = "DEFAULT_DIRECTORY",
         .index = 1,
         .toolTip = "The directory path can be logical or full. If using a logical path, ensure it is terminated with "
                    "a colon(:)."},
        {.prompt = "&Connect String:",
         .column = "CONNECT_STRING",
         .kind = EntryKind::Memo,
         .index = 4,
         .toolTip = "Not applicable to Harrowgate"},
        {.prompt = "&Setup Procedure:", .column = "SETUP_PROCEDURE", .index = 3},
        {.prompt = "Re&marks:",
         .column = "REMARKS",
         .kind = EntryKind::Memo,
         .index = 5,
         .toolTip = "Any notes you wish to make about this Database."},
    };
}

} // namespace

frmDatabase::frmDatabase(QWidget* parent)
    : ItemPane({.form = "frmDatabase",
                .table = "TW_DB",
                .collection = "frmDatabases",
                .toolBar = "tbrDatabase",
                .deleteQuestion = "Are you sure you want to delete this database?",
                .nameColumn = "DATABASE_NAME",
                .nodeType = "db",
                .nodeImage = "DB",
                .nodeOpens = true,
                .listRoutine = "cboDropdown_Click",
                .upFocusesGrid = true},
               properties(), parent)
{
}

QString frmDatabase::parentKey() const
{
    return "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ':'_L1;
}

QString frmDatabase::title(State state) const
{
    switch (state) {
    case State::Add:
        return u"Add New Database to "_s + datasource();
    case State::Edit:
        return name() + " - Edit Database Properties"_L1;
    case State::Delete:
        return name() + " - Delete Database"_L1;
    default:
        return name() + " - Database Properties"_L1;
    }
}

QString frmDatabase::selectStatement() const
{
    return u"SELECT * FROM TW_DB WHERE DATABASE_NAME = '"_s + SQLQuote(name()) + "'"_L1;
}

bool frmDatabase::isProtected() const
{
    return definitions::isCatalogDatabase(name());
}

void frmDatabase::fill(const dao::Recordset& row)
{
    sheet().list(u"DRIVER_NAME"_s).refill({row.Fields().Item(u"DRIVER_NAME"_s).Value().Text()});
    ItemPane::fill(row);
}

void frmDatabase::populateLists()
{
    DropDown& drivers = sheet().list(u"DRIVER_NAME"_s);
    if (isProtected()) {
        drivers.refill({u"SYSTEM"_s});
        drivers.select(u"SYSTEM"_s);
        return;
    }
    modBoundControls::PopulateList(drivers, db(), definitions::drivers());
}

void frmDatabase::adding()
{
    PopulateCombos();
}

bool frmDatabase::validate()
{
    const QString database = text(u"DATABASE_NAME"_s);
    if (isBlank(u"DATABASE_NAME"_s))
        return refuse(u"Please give this Database a name."_s, u"DATABASE_NAME"_s);
    if (database != name() &&
        finds(u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME = '"_s + quoted(u"DATABASE_NAME"_s) + "'"_L1))
        return refuse(u"This Datasource already contains a Database called '"_s + database + "'"_L1,
                      u"DATABASE_NAME"_s);
    // The focus goes to the name, not to the display name.
    if (!definitions::isDisplayName(text(u"DISPLAY_NAME"_s), database))
        return refuse(u"The Display Name (if used) MUST match the Database Name (exclusive of case)."_s,
                      u"DATABASE_NAME"_s);
    if (text(u"DRIVER_NAME"_s).isEmpty())
        return refuse(u"Please select a Driver from the drop down list."_s, u"DRIVER_NAME"_s);
    return true;
}

void frmDatabase::followInsert()
{
    mdiMain& window = mdiMain::instance();
    TreeNode* collection = window.tvwExplorer().Nodes().find(CalcParentKey());
    // A level that was empty has no expander that could be moved.
    if (collection && !collection->Child())
        window.tvwExplorer_Expand(collection);
    else
        rereadCollection();
}

void frmDatabase::carryKey()
{
    modUpdate::UpdateDatabase(datasource(), loadedName(), name());
}

void frmDatabase::updateRow()
{
    db().Execute(u"UPDATE TW_DB SET DISPLAY_NAME = '"_s + quoted(u"DISPLAY_NAME"_s) + "', DEFAULT_DIRECTORY = '"_L1 +
                 quoted(u"DEFAULT_DIRECTORY"_s) + "', DRIVER_NAME = '"_L1 + quoted(u"DRIVER_NAME"_s) +
                 "', SETUP_PROCEDURE = '"_L1 + quoted(u"SETUP_PROCEDURE"_s) + "', CONNECT_STRING = '"_L1 +
                 quoted(u"CONNECT_STRING"_s) + "', REMARKS = '"_L1 + quoted(u"REMARKS"_s) +
                 "' WHERE DATABASE_NAME = '"_L1 + SQLQuote(name()) + "'"_L1);
}

void frmDatabase::followUpdate()
{
    rereadCollection();
}

void frmDatabase::deleteRow()
{
    const QString database = SQLQuote(name());
    const QString spaced = u"DATABASE_NAME = '"_s + database + "'"_L1;
    const QString tight = u"DATABASE_NAME ='"_s + database + "'"_L1;
    mdiMain& window = mdiMain::instance();

    window.Status(u"Deleting Database"_s);
    db().Execute(BuildDelete(u"TW_DB"_s, spaced));
    window.Status(u"Deleting Tables"_s);
    db().Execute(BuildDelete(u"TW_TABLE"_s, tight));
    window.Status(u"Deleting Columns"_s);
    db().Execute(BuildDelete(u"TW_COLUMN"_s, tight));
    window.Status(u"Deleting Database Privileges"_s);
    db().Execute(BuildDelete(u"TW_DBPRV"_s, spaced));
    window.Status(u"Deleting Table Privileges"_s);
    db().Execute(BuildDelete(u"TW_TBLPRV"_s, spaced));

    showCollection();
    window.Status(u"Ready"_s);
    removeNode();
}

void frmDatabase::undo(State state)
{
    startAgain(state);
}
