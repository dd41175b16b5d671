#include "frmTables.h"

#include "Boxes.h"
#include "Database.h"
#include "Definitions.h"
#include "Recordset.h"
#include "Settings.h"
#include "frmCriteriaBuilder.h"
#include "modGUI.h"

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace
{

std::vector<GridColumn> columns()
{
    return {
        {.name = u"TABLE_NAME"_s, .isKey = true},
        {.name = u"DISPLAY_NAME"_s},
        {.name = u"TABLE_TYPE"_s, .editor = CellEditor::Combo, .items = {u"TABLE"_s}, .newRow = u"TABLE"_s},
        {.name = u"FILE_NAME"_s, .editor = CellEditor::Combo},
        {.name = u"FILE_SPECIFICATION"_s},
        {.name = u"NUMBER_COLUMNS"_s, .editor = CellEditor::LookUp, .newRow = u"0"_s},
        {.name = u"CRITERIA"_s, .editor = CellEditor::LookUp},
        {.name = u"REMARKS"_s},
    };
}

} // namespace

frmTables::frmTables(QWidget* parent)
    : GridPane({.form = "frmTables", .table = "TW_TABLE", .toolBar = "tbrTables"}, columns(), parent)
{
}

QString frmTables::title() const
{
    return database() + " - Tables"_L1;
}

QString frmTables::nodeKey() const
{
    return owner()->node + "TA="_L1 + database() + ':'_L1;
}

std::optional<GridPane::Owner> frmTables::owner() const
{
    return Owner{.pane = u"frmDatabase"_s,
                 .keys = keys(),
                 .node = "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ":db="_L1 + database() + ':'_L1,
                 .toolTip = "Up to Database '"_L1 + database() + '\''_L1};
}

QString frmTables::selectStatement() const
{
    return "SELECT TABLE_NAME, DISPLAY_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, NUMBER_COLUMNS, CRITERIA, "
           "REMARKS FROM TW_TABLE WHERE DATABASE_NAME = '"_L1 +
           SQLQuote(database()) + "' ORDER BY TABLE_NAME ASC"_L1;
}

void frmTables::populateLists()
{
    const bool all = settings::getNumber(u"Options"_s, u"SysTables"_s, 0) != 0;
    setItems(u"FILE_NAME"_s, firstColumn("SELECT FILE_NAME FROM TW_FILE "_L1 +
                                         (all ? QString() : QString("WHERE "_L1 + definitions::isUserFile()))));
}

bool frmTables::isReadOnly() const
{
    return definitions::isCatalogDatabase(database());
}

void frmTables::lookUp(const QString& column)
{
    if (column == "NUMBER_COLUMNS"_L1)
        countColumns();
    else
        buildCriteria();
}

void frmTables::buildCriteria()
{
    const QString& stored = loaded(u"TABLE_NAME"_s);
    const QString table = stored.isEmpty() ? text(u"TABLE_NAME"_s) : stored;
    if (table.isEmpty()) {
        boxes::inform(u"Please enter a Table Name before adding criteria."_s);
        return;
    }
    const QString former = lookedUp();
    const QString built = frmCriteriaBuilder::GetCriteria(datasource(), database(), table, former);
    if (built == former)
        return;
    setLookedUp(built);
    frmCriteriaBuilder::TellIfCut(built, lookedUp());
}

void frmTables::countColumns()
{
    const QString& table = loaded(u"TABLE_NAME"_s);
    setLookedUp(table.isEmpty() ? u"0"_s : definitions::countColumns(db(), database(), table));
}

QString frmTables::validate()
{
    const QString name = text(u"TABLE_NAME"_s);
    if (name.isEmpty())
        return refuse(u"Table Name cannot be blank"_s, u"TABLE_NAME"_s);
    if (name != loaded(u"TABLE_NAME"_s) &&
        finds("SELECT TABLE_NAME FROM TW_TABLE WHERE "_L1 + definitions::ofTable(database(), name)))
        return refuse("This Database already contains a Table called '"_L1 + name + '\''_L1, u"TABLE_NAME"_s);
    if (!definitions::isDisplayName(text(u"DISPLAY_NAME"_s), name))
        return refuse(u"The Display Name (if used) MUST exactly match the Table Name (exclusive of case)."_s,
                      u"DISPLAY_NAME"_s);
    if (text(u"FILE_NAME"_s).isEmpty())
        return refuse(u"Please select a File Name from the dropdown list"_s, u"FILE_NAME"_s);
    if (text(u"FILE_SPECIFICATION"_s).isEmpty())
        return refuse(u"File Specification cannot be blank"_s, u"FILE_SPECIFICATION"_s);
    if (!isWithin(u"NUMBER_COLUMNS"_s, 0, 32767))
        return refuse(modGUI::OutOfRange(u"Column Number"_s, 0, 32767), u"NUMBER_COLUMNS"_s);
    return {};
}

void frmTables::replaceRow()
{
    if (!loaded(u"TABLE_NAME"_s).isEmpty())
        removeRow("DELETE FROM TW_TABLE WHERE "_L1 + definitions::ofTable(database(), loaded(u"TABLE_NAME"_s)) +
                  ' '_L1);
    // clang-format off
    db().Execute("INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, DISPLAY_NAME, TABLE_TYPE, FILE_NAME, "
                 "FILE_SPECIFICATION, NUMBER_COLUMNS, CRITERIA, REMARKS) VALUES ('"_L1 + SQLQuote(database()) +
                 "', '"_L1 + quoted(u"TABLE_NAME"_s) +
                 "', '"_L1 + quoted(u"DISPLAY_NAME"_s) +
                 "', '"_L1 + quoted(u"TABLE_TYPE"_s) +
                 "', '"_L1 + quoted(u"FILE_NAME"_s) +
                 "', '"_L1 + quoted(u"FILE_SPECIFICATION"_s) +
                 "', "_L1 + text(u"NUMBER_COLUMNS"_s) +
                 ", '"_L1 + quoted(u"CRITERIA"_s) +
                 "', '"_L1 + quoted(u"REMARKS"_s) + "')"_L1);
    // clang-format on
}

void frmTables::updateRow()
{
    // clang-format off
    db().Execute("UPDATE TW_TABLE SET DISPLAY_NAME = '"_L1 + quoted(u"DISPLAY_NAME"_s) +
                 "', TABLE_TYPE = '"_L1 + quoted(u"TABLE_TYPE"_s) +
                 "', FILE_NAME = '"_L1 + quoted(u"FILE_NAME"_s) +
                 "', FILE_SPECIFICATION = '"_L1 + quoted(u"FILE_SPECIFICATION"_s) +
                 "', NUMBER_COLUMNS = "_L1 + text(u"NUMBER_COLUMNS"_s) +
                 ", CRITERIA = '"_L1 + quoted(u"CRITERIA"_s) +
                 "', REMARKS = '"_L1 + quoted(u"REMARKS"_s) +
                 "' WHERE "_L1 + definitions::ofTable(database(), loaded(u"TABLE_NAME"_s)) + ' '_L1);
    // clang-format on
}
