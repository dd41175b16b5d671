#include "frmTable.h"

#include "Database.h"
#include "Definitions.h"
#include "DropDown.h"
#include "KeyFilter.h"
#include "Recordset.h"
#include "Settings.h"
#include "UpDown.h"
#include "frmCriteriaBuilder.h"
#include "mdiMain.h"
#include "modBoundControls.h"
#include "modGUI.h"
#include "modUpdate.h"

#include <QPushButton>

#include <cstring>

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

const QString calcColumns = u"cmdCalcColumns"_s;
const QString criteria = u"cmdCriteria"_s;

std::vector<Property> properties()
{
    return {
        {.prompt = "Database Name:",
         .column = "DATABASE_NAME",
         .index = 0,
         .toolTip = "The name of the Database containing the Table",
         .isKey = true,
         .isFixed = true},
        {.prompt = "Table &Name:",
         .column = "TABLE_NAME",
         .index = 1,
         .toolTip = "Table name must be unique within a database.",
         .isKey = true},
        {.prompt = "&Display Name:",
         .column = "DISPLAY_NAME",
         .index = 8,
         .toolTip = "How the table name appears to other applications."},
        {.prompt = "&Table Type:",
         .column = "TABLE_TYPE",
         .kind = EntryKind::List,
         .index = 2,
         .toolTip = "Specifies the type of SQL table.",
         .items = {"TABLE"}},
        {.prompt = "F&ile Name:",
         .column = "FILE_NAME",
         .kind = EntryKind::List,
         .index = 3,
         .toolTip = "The name of the File definition to map to"},
        {.prompt = "File &Specification:",
         .column = "FILE_SPECIFICATION",
         .index = 4,
         .toolTip = "The file which the File Definition maps to on the server."},
        {.prompt = "Number of &Columns:",
         .column = "NUMBER_COLUMNS",
         .kind = EntryKind::Number,
         .index = 5,
         .toolTip = "The number of columns in this Table",
         .limits = {.spinner = 0, .minimum = 0, .maximum = 32767, .label = 0, .text = "(0 to 32767)"},
         .button = {"cmdCalcColumns", "Calculate", "Automatically count the number of columns in this table."}},
        {.prompt = "C&riteria:",
         .column = "CRITERIA",
         .kind = EntryKind::Memo,
         .index = 6,
         .toolTip = "SQL Filter aplied to table to limit the results returned",
         .button = {"cmdCriteria", "Criteria"},
         .isFixed = true},
        {.prompt = "Re&marks:",
         .column = "REMARKS",
         .kind = EntryKind::Memo,
         .index = 7,
         .toolTip = "Any notes you wish to make about this Table"},
    };
}

} // namespace

frmTable::frmTable(QWidget* parent)
    : ItemPane({.form = "frmTable",
                .table = "TW_TABLE",
                .collection = "frmTables",
                .toolBar = "tbrTable",
                .deleteQuestion = "Are you sure you want to delete this Table?",
                .nameColumn = "TABLE_NAME",
                .nodeType = "ta",
                .nodeImage = "Table",
                .nodeOpens = true,
                .upFocusesGrid = true},
               properties(), parent)
{
}

const char* frmTable::stackedRoutine(const char* operation) const
{
    return std::strcmp(operation, "tbr_ButtonClick") == 0 ? "frmTable.tbrButton_Click" : routine(operation);
}

QString frmTable::parentKey() const
{
    return "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ":db="_L1 + database() + ":TA="_L1 + database() +
           ':'_L1;
}

QString frmTable::title(State state) const
{
    switch (state) {
    case State::Add:
        return "Add New Table to "_L1 + database();
    case State::Edit:
        return name() + " - Edit Table Properties"_L1;
    case State::Delete:
        return name() + " - Delete Table"_L1;
    default:
        return name() + " - Table Properties"_L1;
    }
}

QString frmTable::selectStatement() const
{
    return "SELECT * FROM TW_TABLE WHERE "_L1 + definitions::ofTable(database(), name()) + ' '_L1;
}

bool frmTable::isProtected() const
{
    return definitions::isCatalogDatabase(database());
}

// Filling ------------------------------------------------------------------------------------------------------------

void frmTable::fill(const dao::Recordset& row)
{
    sheet().list(u"FILE_NAME"_s).refill({row.Fields().Item(u"FILE_NAME"_s).Value().Text()});
    ItemPane::fill(row);
}

void frmTable::populateLists()
{
    const bool all = settings::getNumber(u"Options"_s, u"SysTables"_s, 1) != 0;
    modBoundControls::PopulateList(sheet().list(u"FILE_NAME"_s), db(),
                                   "SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME <> '' "_L1 +
                                       (all ? QString() : QString("AND "_L1 + definitions::isUserFile() + ' '_L1)) +
                                       "ORDER BY FILE_NAME ASC"_L1);
}

void frmTable::adding()
{
    setText(u"DATABASE_NAME"_s, database());
}

void frmTable::enableEntries(bool enabled)
{
    ItemPane::enableEntries(enabled);
    for (const QString& button : {calcColumns, criteria})
        sheet().button(button).setEnabled(enabled);
}

void frmTable::buttonClicked(const QString& button)
{
    if (button == calcColumns)
        cmdCalcColumns_Click();
    else
        cmdCriteria_Click();
}

void frmTable::cmdCalcColumns_Click()
{
    const QString table = name().isEmpty() ? text(u"TABLE_NAME"_s) : name();
    setText(u"NUMBER_COLUMNS"_s, definitions::countColumns(db(), database(), table));
}

void frmTable::cmdCriteria_Click()
{
    const QString former = text(u"CRITERIA"_s);
    const QString built = frmCriteriaBuilder::GetCriteria(datasource(), database(), text(u"TABLE_NAME"_s), former);
    requireLoaded();
    if (built == former)
        return;
    // The entry shows what fits and gives back all of what it was set to: what is kept is decided here.
    const modDatabase::FieldInfo column{.Name = u"CRITERIA"_s, .Size = columnSize(u"CRITERIA"_s)};
    const QString kept = column.Size > 0 ? modGUI::cutToColumn(built, column) : built;
    setText(column.Name, kept);
    frmCriteriaBuilder::TellIfCut(built, kept);
}

bool frmTable::validate()
{
    const QString table = text(u"TABLE_NAME"_s);
    if (table.isEmpty())
        return refuse(u"Please give this Table a name."_s, u"TABLE_NAME"_s);
    if (table != name() && finds("SELECT TABLE_NAME FROM TW_TABLE WHERE "_L1 + definitions::ofTable(database(), table)))
        return refuse("The Table Name '"_L1 + table + "' is already used in the Database."_L1, u"TABLE_NAME"_s);
    if (!definitions::isDisplayName(text(u"DISPLAY_NAME"_s), table))
        return refuse(u"The Display Name MUST match the Table Name (exclusive of case) or be Null."_s,
                      u"DISPLAY_NAME"_s);
    if (text(u"TABLE_TYPE"_s).isEmpty())
        return refuse(u"Please select a Table Type from the dropdown list"_s, u"TABLE_TYPE"_s);
    if (text(u"FILE_SPECIFICATION"_s).isEmpty())
        return refuse(u"Please enter a file specification for this Table."_s, u"FILE_SPECIFICATION"_s);
    if (text(u"FILE_NAME"_s).isEmpty())
        return refuse(u"Please select a file name from the drop down list."_s, u"FILE_NAME"_s);
    if (!isWithin(u"NUMBER_COLUMNS"_s, 0)) {
        const UpDown& limits = sheet().spinner(0);
        return refuse(modGUI::OutOfRange(u"Number of Columns"_s, limits.Min(), limits.Max()), u"NUMBER_COLUMNS"_s);
    }
    return true;
}

// Writing ------------------------------------------------------------------------------------------------------------

void frmTable::followInsert()
{
    modGUI::ExpandToNode(CalcParentKey());
}

void frmTable::carryKey()
{
    modUpdate::UpdateTable(datasource(), database(), database(), loadedName(), name());
}

void frmTable::updateRow()
{
    db().Execute("UPDATE TW_TABLE SET DISPLAY_NAME = '"_L1 + quoted(u"DISPLAY_NAME"_s) + "', TABLE_TYPE = '"_L1 +
                 quoted(u"TABLE_TYPE"_s) + "', FILE_NAME = '"_L1 + quoted(u"FILE_NAME"_s) +
                 "', FILE_SPECIFICATION = '"_L1 + quoted(u"FILE_SPECIFICATION"_s) + "', NUMBER_COLUMNS = 0"_L1 +
                 text(u"NUMBER_COLUMNS"_s) + ", CRITERIA = '"_L1 + quoted(u"CRITERIA"_s) + "', REMARKS = '"_L1 +
                 quoted(u"REMARKS"_s) + "' WHERE "_L1 + definitions::ofTable(database(), name()));
}

void frmTable::deleteRow()
{
    const QString table = definitions::ofTable(database(), name());
    db().Execute(BuildDelete(u"TW_TABLE"_s, "DATABASE_NAME = '"_L1 + SQLQuote(database()) + "'  AND TABLE_NAME = '"_L1 +
                                                SQLQuote(name()) + '\''_L1));
    db().Execute(BuildDelete(u"TW_COLUMN"_s, table));
    db().Execute(BuildDelete(u"TW_TBLPRV"_s, table));
    removeNode();
    showCollection();
}

void frmTable::undo(State state)
{
    switch (state) {
    case State::Edit: {
        const auto row = db().OpenRecordset(selectStatement());
        if (row->Eof())
            break;
        // A list that loses its selection blanks the text behind it.
        for (const QString& column : {u"TABLE_TYPE"_s, u"FILE_NAME"_s})
            sheet().list(column).setCurrentIndex(-1);
        ItemPane::fill(*row);
        break;
    }
    case State::Delete:
        ItemPane::undo(state);
        sheet().button(criteria).setEnabled(true);
        db().Execute({});
        showCollection();
        break;
    default:
        ItemPane::undo(state);
    }
}

void frmTable::toolBarClicked(const QString& key)
{
    if (key == "ViewData"_L1)
        mdiMain::instance().PaneDisplay(u"frmTableData"_s, keys());
}
