#include "frmColumn.h"

#include "Boxes.h"
#include "CConnections.h"
#include "Conversions.h"
#include "Database.h"
#include "Definitions.h"
#include "DropDown.h"
#include "Recordset.h"
#include "Routine.h"
#include "UpDown.h"
#include "modBoundControls.h"
#include "modGUI.h"
#include "modUpdate.h"

#include <QPushButton>
#include <QScopedValueRollback>

#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

/// The indices among spnUpDn.
enum Spinner { NumberSpinner, LengthSpinner, PrecisionSpinner, ScaleSpinner };

const QString nextNumber = u"cmdNextColumnNumber"_s;

std::vector<Property> properties()
{
    return {
        {.prompt = "Database Name:",
         .column = "DATABASE_NAME",
         .index = 0,
         .toolTip = "Database this column is bound to",
         .isKey = true,
         .isFixed = true},
        {.prompt = "Table Name:",
         .column = "TABLE_NAME",
         .index = 1,
         .toolTip = "Table this column is bound to",
         .isKey = true,
         .isFixed = true},
        {.prompt = "F&ield Name:",
         .column = "FIELD_NAME",
         .kind = EntryKind::List,
         .index = 10,
         .toolTip = "Field that this column maps to.",
         .isKey = true},
        {.prompt = "&Column Name:",
         .column = "COLUMN_NAME",
         .index = 2,
         .toolTip = "Each Column must have a unique name within a Table.",
         .isKey = true},
        {.prompt = "&Display Name:",
         .column = "DISPLAY_NAME",
         .index = 3,
         .toolTip = "How the column name appears to other applications."},
        {.prompt = "C&olumn Number:",
         .column = "COLUMN_NUMBER",
         .kind = EntryKind::Number,
         .index = 4,
         .toolTip = "Location in the table of this column.",
         .limits = {.spinner = NumberSpinner, .minimum = 1, .maximum = 32767, .text = "(1 to 32767)"},
         .button = {"cmdNextColumnNumber", "Next Number", "Calculate the next free Column number."},
         .isKey = true},
        {.prompt = "&SQL Data Type:",
         .column = "SQL_TYPE_NAME",
         .kind = EntryKind::List,
         .index = 99,
         .toolTip = "The SQL data type that the column definition maps onto."},
        {.prompt = "&Length:",
         .column = "LENGTH",
         .kind = EntryKind::Number,
         .index = 5,
         .toolTip = "'Size of the Column in bytes and fixed for certain Data Types",
         .limits = {.spinner = LengthSpinner, .minimum = 0, .maximum = 65535, .text = "(0 to 65535)"}},
        {.prompt = "&Precision:",
         .column = "PRECISION",
         .kind = EntryKind::Number,
         .index = 6,
         .toolTip = "Refers to the maximum number of digits used by the datatype.  The precision of a non-numeric "
                    "field refers to the maximum length of the column.",
         .limits = {.spinner = PrecisionSpinner, .minimum = 0, .maximum = 65535, .text = "(0 to 65535)"}},
        {.prompt = "Scal&e:",
         .column = "SCALE",
         .kind = EntryKind::Number,
         .index = 7,
         .toolTip = "Refers to the maximum number of digits to the right of the decimal point (numeric fields only).",
         .limits = {.spinner = ScaleSpinner, .minimum = -32, .maximum = 32, .text = "(-32 to 32)"}},
        {.prompt = "Sea&rchable:",
         .column = "SEARCHABLE",
         .kind = EntryKind::List,
         .index = 14,
         .toolTip = "Limits (if required) the search that can be performed on this column.",
         .items = {"Unsearchable", "LIKE only", "All except LIKE", "Searchable"}},
        {.prompt = "&1. Nullable",
         .column = "NULLABLE",
         .kind = EntryKind::Flag,
         .index = 15,
         .toolTip = "The column can be Null."},
        {.prompt = "&2. Unsigned Attribute:",
         .column = "UNSIGNED_ATTRIBUTE",
         .kind = EntryKind::Flag,
         .index = 16,
         .toolTip = "Signed or Unsigned."},
        {.prompt = "&3. Updatable:",
         .column = "UPDATABLE",
         .kind = EntryKind::Flag,
         .index = 17,
         .toolTip = "Is the Column data read only?"},
        {.prompt = "&4. Visible:",
         .column = "VISIBLE",
         .kind = EntryKind::Flag,
         .index = 18,
         .toolTip = "Is the Column visible to other applications?"},
        {.prompt = "&5. Money:",
         .column = "MONEY",
         .kind = EntryKind::Flag,
         .index = 19,
         .toolTip = "Is this a monetary value"},
        {.prompt = "&6. Auto Increment:",
         .column = "AUTO_INCREMENT",
         .kind = EntryKind::Flag,
         .index = 20,
         .toolTip = "Does this column supply its own incremental value?"},
        {.prompt = "&7. Case Sensitive:",
         .column = "CASE_SENSITIVE",
         .kind = EntryKind::Flag,
         .index = 21,
         .toolTip = "Does this Column differentiate between upper and lower case?"},
        {.prompt = "&8. Radix:", .column = "RADIX", .kind = EntryKind::Flag, .index = 22},
        {.prompt = "&9. Set File Parameter:", .column = "SETFILEPARAMETER", .kind = EntryKind::Flag, .index = 12},
        {.prompt = "Defaul&t Value:", .column = "DEFAULT_VALUE", .index = 8, .toolTip = "Initial value of column."},
        {.prompt = "Re&marks",
         .column = "REMARKS",
         .kind = EntryKind::Memo,
         .index = 9,
         .toolTip = "Any notes you wish to make about this Column"},
        {.column = "COLUMN_TYPE", .kind = EntryKind::Hidden, .index = 13, .isKey = true},
    };
}

} // namespace

frmColumn::frmColumn(QWidget* parent)
    : ItemPane({.form = "frmColumn",
                .table = "TW_COLUMN",
                .collection = "frmColumns",
                .toolBar = "tbrColumn",
                .deleteQuestion = "Are you sure you want to delete this column?",
                .nameColumn = "COLUMN_NAME",
                .nodeType = "co",
                .nodeImage = "Column",
                .firstColumn = "FIELD_NAME",
                .listRoutine = "cboDropdown_Click",
                .upFocusesGrid = true},
               properties(), parent)
{
}

const char* frmColumn::stackedRoutine(const char* operation) const
{
    return std::strcmp(operation, "ValidateFields") == 0 ? "frmColumn,ValidateFields" : routine(operation);
}

QString frmColumn::parentKey() const
{
    return "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ":db="_L1 + database() + ":TA="_L1 + database() +
           ":ta="_L1 + table() + ":CO="_L1 + table() + ':'_L1;
}

QString frmColumn::title(State state) const
{
    const QString whole = table() + '.'_L1 + name();
    switch (state) {
    case State::Add:
        return "Add New Column to "_L1 + table();
    case State::Edit:
        return whole + " - Edit Column Properties"_L1;
    case State::Delete:
        return whole + " - Delete Column"_L1;
    default:
        return whole + " - Column Properties"_L1;
    }
}

QString frmColumn::ofColumn(const QString& column) const
{
    return definitions::ofTable(database(), table()) + " AND COLUMN_NAME = '"_L1 + SQLQuote(column) + '\''_L1;
}

QString frmColumn::selectStatement() const
{
    return "SELECT * FROM TW_COLUMN WHERE "_L1 + ofColumn(name());
}

bool frmColumn::isProtected() const
{
    return definitions::isCatalogDatabase(database());
}

// Filling ------------------------------------------------------------------------------------------------------------

void frmColumn::fill(const dao::Recordset& row)
{
    for (const QString& column : {u"FIELD_NAME"_s, u"SQL_TYPE_NAME"_s})
        sheet().list(column).refill({row.Fields().Item(column).Value().Text()});
    const QScopedValueRollback populating(m_populating, true);
    ItemPane::fill(row);
}

void frmColumn::displayed()
{
    m_loadedField = text(u"FIELD_NAME"_s);
}

void frmColumn::populateLists()
{
    sheet().list(u"SQL_TYPE_NAME"_s).refill(definitions::sqlTypeNames(connection()));
    modBoundControls::PopulateList(sheet().list(u"FIELD_NAME"_s), db(),
                                   definitions::fieldsOfTable(db(), database(), table()));
}

void frmColumn::adding()
{
    m_loadedField.clear();
    setText(u"DATABASE_NAME"_s, database());
    setText(u"TABLE_NAME"_s, table());
    setText(u"VISIBLE"_s, u"1"_s);
    setText(u"UPDATABLE"_s, u"1"_s);
    setText(u"COLUMN_TYPE"_s, u"0"_s);
}

void frmColumn::editing()
{
    adoptType();
}

void frmColumn::enableEntries(bool enabled)
{
    ItemPane::enableEntries(enabled);
    sheet().button(nextNumber).setEnabled(enabled);
}

// Entry --------------------------------------------------------------------------------------------------------------

void frmColumn::textChanged(const QString& column)
{
    const QString entered = text(column);
    if (column == "SEARCHABLE"_L1) {
        if (!entered.isEmpty())
            sheet().list(column).setCurrentIndex(conversions::ToLong(conversions::Val(entered)));
    } else if (column != "UNSIGNED_ATTRIBUTE"_L1 && column != "SETFILEPARAMETER"_L1) {
        // The boxes of those two do not show what is stored: they speak of a change alone.
        ItemPane::textChanged(column);
    }
}

void frmColumn::listChanged(const QString& column)
{
    if (column != "SEARCHABLE"_L1) {
        ItemPane::listChanged(column);
        if (column == "SQL_TYPE_NAME"_L1 && !m_populating)
            adoptType();
    } else if (const int chosen = sheet().list(column).currentIndex(); chosen >= 0) {
        setText(column, QString::number(chosen));
    }
}

/// All but a character type decide upon the column's attributes; a character type leaves them as they are, and open.
void frmColumn::adoptType()
{
    const QString name = text(u"SQL_TYPE_NAME"_s);
    if (name.isEmpty())
        return;
    const bool isOpen = definitions::isCharacterType(name);
    if (!isOpen) {
        const CSQLDT& type = connection().SQLDTs().Item(name);
        const auto adopt = [this](const QString& column, std::int32_t value) {
            setText(column, QString::number(value));
            // A flag that has lost its tick by that has written its own 0 over it.
            setText(column, QString::number(value));
        };
        adopt(u"LENGTH"_s, type.Length);
        adopt(u"PRECISION"_s, type.PRECISION);
        adopt(u"SEARCHABLE"_s, type.SEARCHABLE);
        adopt(u"NULLABLE"_s, type.NULLABLE);
        adopt(u"UNSIGNED_ATTRIBUTE"_s, type.UNSIGNED_ATTRIBUTE);
        adopt(u"MONEY"_s, type.MONEY);
        adopt(u"AUTO_INCREMENT"_s, type.AUTO_INCREMENT);
        adopt(u"CASE_SENSITIVE"_s, type.CASE_SENSITIVE);
        adopt(u"RADIX"_s, type.RADIX);
    }
    EnableDatatype(isOpen);
}

void frmColumn::EnableDatatype(bool enabled)
{
    Routine routine("frmColumn.EnableDatatype");
    routine.run([&] {
        for (const QString& column :
             {u"LENGTH"_s, u"PRECISION"_s, u"SEARCHABLE"_s, u"NULLABLE"_s, u"UNSIGNED_ATTRIBUTE"_s, u"MONEY"_s,
              u"AUTO_INCREMENT"_s, u"CASE_SENSITIVE"_s, u"RADIX"_s})
            enable(column, enabled);
        for (const int spinner : {LengthSpinner, PrecisionSpinner})
            sheet().spinner(spinner).setEnabled(enabled);
    });
}

void frmColumn::buttonClicked(const QString&)
{
    cmdNextColumnNumber_Click();
}

void frmColumn::cmdNextColumnNumber_Click()
{
    setText(u"COLUMN_NUMBER"_s, definitions::nextColumnNumber(db(), database(), table()));
}

// Validation ---------------------------------------------------------------------------------------------------------

bool frmColumn::refuseRange(const QString& what, const QString& column, int spinner)
{
    const UpDown& limits = sheet().spinner(spinner);
    return refuse(modGUI::OutOfRange(what, limits.Min(), limits.Max()), column);
}

/// Of a column that is being added: its name or its number is in the table already.
bool frmColumn::isNumberOrNameTaken()
{
    const QString column = text(u"COLUMN_NAME"_s);
    const QString number = text(u"COLUMN_NUMBER"_s);
    const auto taken = [&](const QString& what, const QString& value) {
        return "The Column "_L1 + what + " '"_L1 + value + "' is already used in Table '"_L1 + table() +
               "'.\nPlease use another name."_L1;
    };
    if (finds("SELECT * FROM TW_COLUMN WHERE "_L1 + ofColumn(column) + ' '_L1))
        return !refuse(taken(u"Name"_s, column), u"COLUMN_NAME"_s);
    if (finds("SELECT * FROM TW_COLUMN WHERE "_L1 + definitions::ofTable(database(), table()) +
              " AND COLUMN_NUMBER = 0"_L1 + number))
        return !refuse(taken(u"Number"_s, number), u"COLUMN_NUMBER"_s);
    return false;
}

bool frmColumn::validate()
{
    const QString column = text(u"COLUMN_NAME"_s);
    const QString field = text(u"FIELD_NAME"_s);
    const QString ofTable = definitions::ofTable(database(), table());
    if (text(u"COLUMN_NUMBER"_s).isEmpty())
        clickButton(nextNumber);
    if (field.isEmpty())
        return refuse(u"Please select a Field Name to map this column to."_s, u"FIELD_NAME"_s);
    if (column.isEmpty())
        return refuse(u"Please enter a Column Name to uniquely identify this column."_s, u"COLUMN_NAME"_s,
                      u"Missing COLUMN_NAME"_s);
    if (name().isEmpty() && isNumberOrNameTaken())
        return false;
    if (definitions::isReservedColumn(column))
        return refuse(u"That is a reserved Column Name"_s, u"COLUMN_NAME"_s);
    if (field != m_loadedField) {
        const auto mapped = db().OpenRecordset("SELECT * FROM TW_COLUMN WHERE "_L1 + ofTable +
                                               " AND FIELD_NAME = '"_L1 + SQLQuote(field) + '\''_L1);
        if (!mapped->Eof())
            return refuse("The Field '"_L1 + field + "' has already been mapped to Column '"_L1 +
                              mapped->Fields().Item(u"COLUMN_NAME"_s).Value().Text() + '\''_L1,
                          u"FIELD_NAME"_s);
    }
    if (!definitions::isDisplayName(text(u"DISPLAY_NAME"_s), column))
        return refuse(u"The Display Name (if used) MUST exactly match the Column Name (exclusive of case)."_s,
                      u"DISPLAY_NAME"_s);
    if (text(u"SQL_TYPE_NAME"_s).isEmpty())
        return refuse(u"Please select an SQL Data Type for this column."_s, u"SQL_TYPE_NAME"_s);
    if (text(u"COLUMN_NUMBER"_s).isEmpty())
        clickButton(nextNumber);
    if (!isWithin(u"COLUMN_NUMBER"_s, NumberSpinner))
        return refuseRange(u"Column Number"_s, u"COLUMN_NUMBER"_s, NumberSpinner);
    const QString number = text(u"COLUMN_NUMBER"_s);
    {
        // Special columns count: all of them have the number 1. The row itself goes by the name that it still has.
        const QString own = name().isEmpty() ? column : name();
        const auto assigned =
            db().OpenRecordset("SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 + ofTable + " AND COLUMN_NUMBER = "_L1 +
                               number + " AND COLUMN_NAME <> '"_L1 + SQLQuote(own) + '\''_L1);
        if (!assigned->Eof()) {
            boxes::inform("Column Number "_L1 + number + " has already been assigned to Column '"_L1 +
                          assigned->View(0).toString() + "'."_L1);
            return false;
        }
    }
    if (column != name() && finds("SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 + ofColumn(column)))
        return refuse("Column Name '"_L1 + column + "' has already been used in this Table."_L1, u"COLUMN_NAME"_s);
    if (!isWithin(u"LENGTH"_s, LengthSpinner))
        return refuseRange(u"Length"_s, u"LENGTH"_s, LengthSpinner);
    if (!isWithin(u"PRECISION"_s, PrecisionSpinner))
        return refuseRange(u"Precision"_s, u"PRECISION"_s, PrecisionSpinner);
    if (!isWithin(u"SCALE"_s, ScaleSpinner))
        return refuseRange(u"Scale"_s, u"SCALE"_s, ScaleSpinner);
    return true;
}

// Writing ------------------------------------------------------------------------------------------------------------

void frmColumn::followInsert()
{
    rereadCollection();
}

void frmColumn::carryKey()
{
    const auto number = [this](const QString& column) { return conversions::ToLong(conversions::Val(text(column))); };
    modUpdate::UpdateColumn(datasource(), database(), database(), table(), table(), loadedName(), name(),
                            number(u"COLUMN_TYPE"_s), number(u"COLUMN_NUMBER"_s), text(u"FIELD_NAME"_s));
}

void frmColumn::updateRow()
{
    // clang-format off
    db().Execute("UPDATE TW_COLUMN SET SQL_TYPE_NAME = '"_L1 + quoted(u"SQL_TYPE_NAME"_s) +
                 "', LENGTH = 0"_L1 + text(u"LENGTH"_s) +
                 ", PRECISION = 0"_L1 + text(u"PRECISION"_s) +
                 ", SCALE = 0"_L1 + text(u"SCALE"_s) +
                 ", NULLABLE = 0"_L1 + text(u"NULLABLE"_s) +
                 ", UNSIGNED_ATTRIBUTE = 0"_L1 + text(u"UNSIGNED_ATTRIBUTE"_s) +
                 ", UPDATABLE = 0"_L1 + text(u"UPDATABLE"_s) +
                 ", VISIBLE = 0"_L1 + text(u"VISIBLE"_s) +
                 ", MONEY = 0"_L1 + text(u"MONEY"_s) +
                 ", AUTO_INCREMENT = 0"_L1 + text(u"AUTO_INCREMENT"_s) +
                 ", CASE_SENSITIVE = 0"_L1 + text(u"CASE_SENSITIVE"_s) +
                 ", SEARCHABLE = 0"_L1 + text(u"SEARCHABLE"_s) +
                 ", RADIX = 0"_L1 + text(u"RADIX"_s) +
                 ", DEFAULT_VALUE = '"_L1 + quoted(u"DEFAULT_VALUE"_s) +
                 "', REMARKS = '"_L1 + quoted(u"REMARKS"_s) +
                 "', SETFILEPARAMETER = 0"_L1 + text(u"SETFILEPARAMETER"_s) +
                 ", DISPLAY_NAME = '"_L1 + quoted(u"DISPLAY_NAME"_s) +
                 "' WHERE "_L1 + ofColumn(name()));
    // clang-format on
}

void frmColumn::followUpdate()
{
    rereadCollection();
}

/// A criteria names a column behind its database and table.
bool frmColumn::confirmsDelete()
{
    if (!ItemPane::confirmsDelete())
        return false;
    requireLoaded();
    const QString database = SQLQuote(this->database());
    const QString table = SQLQuote(this->table());
    if (!finds("SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME ='"_L1 + database + "' AND TABLE_NAME = '"_L1 +
               table + "' AND CRITERIA LIKE '%"_L1 + database + '_'_L1 + table + '.'_L1 + SQLQuote(name()) + "%'"_L1))
        return true;
    return boxes::ask(u"This coulm is used as part of the Table criteria for this table.  Removing it will invalidate "
                      "your criteria.\nAre you sure you want to delete this Column?"_s);
}

void frmColumn::deleteRow()
{
    // Whatever shows when the tree has yielded, this goes on with the row that it began with.
    const QStringList above = owners();
    db().Execute(BuildDelete(u"TW_COLUMN"_s, ofColumn(name())));
    modGUI::ExpandToNode(CalcParentKey());
    requireLoaded();
    showCollection(above);
}

void frmColumn::undo(State state)
{
    startAgain(state);
}
