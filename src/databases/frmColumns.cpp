#include "frmColumns.h"

#include "CConnections.h"
#include "Conversions.h"
#include "Database.h"
#include "Definitions.h"
#include "Recordset.h"
#include "modGUI.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace
{

/// Lengths and precisions end here, whatever their type says.
constexpr std::int32_t mostBytes = 32767;
/// Scales, radixes and file parameters end here.
constexpr int mostOfNumbers = 65535;

const QStringList noYes{u"No"_s, u"Yes"_s};

/// A stored search shows as a flag of the number before it: only "All except LIKE" is a "Yes".
QString shownSearch(const QString& stored)
{
    return noYes.at(conversions::Val(stored) - 1 == 1 ? 1 : 0);
}

std::vector<GridColumn> columns()
{
    return {
        {.name = u"COLUMN_NUMBER"_s, .editor = CellEditor::LookUp, .isKey = true},
        {.name = u"COLUMN_NAME"_s, .isKey = true},
        {.name = u"DISPLAY_NAME"_s},
        {.name = u"FIELD_NAME"_s, .editor = CellEditor::Combo, .isKey = true},
        {.name = u"SQL_TYPE_NAME"_s, .editor = CellEditor::Combo},
        {.name = u"LENGTH"_s},
        {.name = u"PRECISION"_s},
        {.name = u"SCALE"_s, .newRow = u"0"_s},
        flagColumn(u"NULLABLE"_s, false),
        flagColumn(u"UNSIGNED_ATTRIBUTE"_s, false),
        flagColumn(u"UPDATABLE"_s, true),
        flagColumn(u"VISIBLE"_s, true),
        flagColumn(u"MONEY"_s, false),
        flagColumn(u"AUTO_INCREMENT"_s, false),
        flagColumn(u"CASE_SENSITIVE"_s, false),
        {.name = u"SEARCHABLE"_s,
         .editor = CellEditor::Combo,
         .items = definitions::searches(),
         .newRow = u"All except LIKE"_s,
         .shown = &shownSearch},
        {.name = u"RADIX"_s, .newRow = u"0"_s},
        {.name = u"SETFILEPARAMETER"_s, .newRow = u"0"_s},
        {.name = u"DEFAULT_VALUE"_s},
        {.name = u"REMARKS"_s},
    };
}

} // namespace

frmColumns::frmColumns(QWidget* parent)
    : GridPane({.form = "frmColumns", .table = "TW_COLUMN", .toolBar = "tbrColumns"}, columns(), parent)
{
}

QString frmColumns::title() const
{
    return database() + '.'_L1 + table() + " - Columns"_L1;
}

QString frmColumns::nodeKey() const
{
    return owner()->node + "CO="_L1 + table() + ':'_L1;
}

std::optional<GridPane::Owner> frmColumns::owner() const
{
    return Owner{.pane = u"frmTable"_s,
                 .keys = keys(),
                 .node = "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ":db="_L1 + database() + ":TA="_L1 +
                         database() + ":ta="_L1 + table() + ':'_L1,
                 .toolTip = "Up to Table '"_L1 + table() + '\''_L1};
}

QString frmColumns::ofTable() const
{
    return definitions::ofTable(database(), table());
}

QString frmColumns::selectStatement() const
{
    return "SELECT COLUMN_NUMBER, COLUMN_NAME, DISPLAY_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, PRECISION, SCALE, "
           "NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, CASE_SENSITIVE, SEARCHABLE, "
           "RADIX, SETFILEPARAMETER, DEFAULT_VALUE, REMARKS FROM TW_COLUMN WHERE "_L1 +
           ofTable() + " AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_L1;
}

void frmColumns::populateLists()
{
    setItems(u"SQL_TYPE_NAME"_s, definitions::sqlTypeNames(connection()));
    setItems(u"FIELD_NAME"_s, firstColumn(definitions::fieldsOfTable(db(), database(), table())));
}

bool frmColumns::isReadOnly() const
{
    return definitions::isCatalogDatabase(database());
}

// Types --------------------------------------------------------------------------------------------------------------

/// What all but a character type decide upon takes no editor, unless the row holds something else there that is to be
/// mended.
bool frmColumns::isLocked(const QString& column)
{
    static const QStringList decided{u"LENGTH"_s, u"PRECISION"_s,      u"NULLABLE"_s,
                                     u"MONEY"_s,  u"AUTO_INCREMENT"_s, u"UNSIGNED_ATTRIBUTE"_s,
                                     u"RADIX"_s,  u"SEARCHABLE"_s,     u"CASE_SENSITIVE"_s};
    const QString type = text(u"SQL_TYPE_NAME"_s);
    return !type.isEmpty() && !definitions::isCharacterType(type) && decided.contains(column) && !isToBeMended(column);
}

bool frmColumns::isToBeMended(const QString& column) const
{
    if (column == "RADIX"_L1)
        return !isWithin(column, 0, mostOfNumbers);
    const CSQLDT* type = connection().SQLDTs().find(text(u"SQL_TYPE_NAME"_s));
    return type &&
           ((column == "LENGTH"_L1 && !IsValidLength(*type)) || (column == "PRECISION"_L1 && !IsValidPrecision(*type)));
}

void frmColumns::cellChanged(const QString& column)
{
    const QString chosen = text(u"SQL_TYPE_NAME"_s);
    if (column != "SQL_TYPE_NAME"_L1 || chosen.isEmpty() || definitions::isCharacterType(chosen))
        return;
    const CSQLDT& type = connection().SQLDTs().Item(chosen);
    setText(u"LENGTH"_s, QString::number(type.Length));
    setText(u"PRECISION"_s, QString::number(type.PRECISION));
    setText(u"NULLABLE"_s, noYes.at(type.NULLABLE == 1));
    setText(u"UNSIGNED_ATTRIBUTE"_s, noYes.at(type.UNSIGNED_ATTRIBUTE == 1));
    setText(u"MONEY"_s, noYes.at(type.MONEY == 1));
    setText(u"AUTO_INCREMENT"_s, noYes.at(type.AUTO_INCREMENT == 1));
    setText(u"CASE_SENSITIVE"_s, noYes.at(type.CASE_SENSITIVE == 1));
    setText(u"SEARCHABLE"_s, definitions::searches().value(type.SEARCHABLE));
    setText(u"RADIX"_s, QString::number(type.RADIX));
}

void frmColumns::lookUp(const QString&)
{
    setLookedUp(definitions::nextColumnNumber(db(), database(), table()));
}

// Rows ---------------------------------------------------------------------------------------------------------------

QString frmColumns::validate()
{
    if (QString failing = validateKey(); !failing.isEmpty())
        return failing;
    if (QString failing = validateType(); !failing.isEmpty())
        return failing;
    const struct {
        QString column;
        QString what;
    } numbers[] = {{u"SCALE"_s, u"Scale"_s}, {u"RADIX"_s, u"Radix"_s}, {u"SETFILEPARAMETER"_s, u"SetFileParameter"_s}};
    for (const auto& [column, what] : numbers)
        if (!isWithin(column, 0, mostOfNumbers))
            return refuse(modGUI::OutOfRange(what, 0, mostOfNumbers), column);
    return {};
}

/// The number, the names and the field.
QString frmColumns::validateKey()
{
    const QString number = text(u"COLUMN_NUMBER"_s);
    if (!isWithin(u"COLUMN_NUMBER"_s, 1, 32767))
        return refuse(modGUI::OutOfRange(u"Column Number"_s, 1, 32767), u"COLUMN_NUMBER"_s);
    // Special columns do not count.
    if (conversions::Val(number) != conversions::Val(loaded(u"COLUMN_NUMBER"_s)) &&
        finds("SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 + ofTable() +
              " AND COLUMN_TYPE = 0 AND COLUMN_NUMBER = "_L1 + number))
        return refuse("This Table already contains a column with a \nColumn Number of "_L1 + number,
                      u"COLUMN_NUMBER"_s);

    const QString name = text(u"COLUMN_NAME"_s);
    if (name.isEmpty())
        return refuse(u"Column Name cannot be blank"_s, u"COLUMN_NAME"_s);
    if (name != loaded(u"COLUMN_NAME"_s) && finds("SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 + ofTable() +
                                                  " AND COLUMN_NAME = '"_L1 + SQLQuote(name) + '\''_L1))
        return refuse("This Table already contains a Column called '"_L1 + name + '\''_L1, u"COLUMN_NAME"_s);
    if (definitions::isReservedColumn(name))
        return refuse(u"That is a reserved Column Name"_s, u"COLUMN_NAME"_s);
    if (!definitions::isDisplayName(text(u"DISPLAY_NAME"_s), name))
        return refuse(u"The Display Name (if used) MUST exactly match the Column Name (exclusive of case)."_s,
                      u"DISPLAY_NAME"_s);

    const QString field = text(u"FIELD_NAME"_s);
    if (field.isEmpty())
        return refuse(u"Please select a Field Name from the dropdown list."_s, u"FIELD_NAME"_s);
    if (field == loaded(u"FIELD_NAME"_s))
        return {};
    const auto mapped = db().OpenRecordset("SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 + ofTable() +
                                           " AND FIELD_NAME = '"_L1 + SQLQuote(field) + '\''_L1);
    if (mapped->Eof())
        return {};
    return refuse("The Field '"_L1 + field + "' is already used\nby Column '"_L1 + mapped->View(0).toString() +
                      "' in this Table."_L1,
                  u"FIELD_NAME"_s);
}

QString frmColumns::validateType()
{
    const CSQLDT* type = connection().SQLDTs().find(text(u"SQL_TYPE_NAME"_s));
    if (!type)
        return refuse(u"Please select an SQL Type Name from the dropdown list."_s, u"SQL_TYPE_NAME"_s);
    if (!IsValidLength(*type))
        return refuse(modGUI::OutOfRange(u"Length"_s, 0, type->Length), u"LENGTH"_s);
    if (!IsValidPrecision(*type))
        return refuse(modGUI::OutOfRange(u"Precision"_s, 0, type->PRECISION), u"PRECISION"_s);
    return {};
}

bool frmColumns::IsValidLength(const CSQLDT& type) const
{
    return isWithin(u"LENGTH"_s, 0, std::min(type.Length, mostBytes));
}

bool frmColumns::IsValidPrecision(const CSQLDT& type) const
{
    return isWithin(u"PRECISION"_s, 0, std::min(type.PRECISION, mostBytes));
}

QString frmColumns::ofLoadedNumber() const
{
    return ofTable() + " AND COLUMN_NUMBER = "_L1 + loaded(u"COLUMN_NUMBER"_s);
}

void frmColumns::replaceRow()
{
    if (!loaded(u"COLUMN_NUMBER"_s).isEmpty())
        removeRow("DELETE FROM TW_COLUMN WHERE "_L1 + ofLoadedNumber());
    // clang-format off
    db().Execute("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
                 "SQL_TYPE_NAME, LENGTH, PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, "
                 "AUTO_INCREMENT, CASE_SENSITIVE, SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, "
                 "COLUMN_TYPE, DISPLAY_NAME) VALUES ('"_L1 + SQLQuote(database()) +
                 "', '"_L1 + SQLQuote(table()) +
                 "', "_L1 + text(u"COLUMN_NUMBER"_s) +
                 ", '"_L1 + quoted(u"COLUMN_NAME"_s) +
                 "', '"_L1 + quoted(u"FIELD_NAME"_s) +
                 "', '"_L1 + quoted(u"SQL_TYPE_NAME"_s) +
                 "', "_L1 + text(u"LENGTH"_s) +
                 ", "_L1 + text(u"PRECISION"_s) +
                 ", "_L1 + text(u"SCALE"_s) +
                 ", "_L1 + flag(u"NULLABLE"_s) +
                 ", "_L1 + flag(u"UNSIGNED_ATTRIBUTE"_s) +
                 ", "_L1 + flag(u"UPDATABLE"_s) +
                 ", "_L1 + flag(u"VISIBLE"_s) +
                 ", "_L1 + flag(u"MONEY"_s) +
                 ", "_L1 + flag(u"AUTO_INCREMENT"_s) +
                 ", "_L1 + flag(u"CASE_SENSITIVE"_s) +
                 ", "_L1 + search() +
                 ", "_L1 + text(u"RADIX"_s) +
                 ", '"_L1 + quoted(u"DEFAULT_VALUE"_s) +
                 "', '"_L1 + quoted(u"REMARKS"_s) +
                 "', "_L1 + text(u"SETFILEPARAMETER"_s) +
                 ", 0, '"_L1 + quoted(u"DISPLAY_NAME"_s) + "')"_L1);
    // clang-format on
}

void frmColumns::updateRow()
{
    // clang-format off
    db().Execute("UPDATE TW_COLUMN SET DISPLAY_NAME = '"_L1 + quoted(u"DISPLAY_NAME"_s) +
                 "', SQL_TYPE_NAME = '"_L1 + quoted(u"SQL_TYPE_NAME"_s) +
                 "', LENGTH = "_L1 + text(u"LENGTH"_s) +
                 ", PRECISION = "_L1 + text(u"PRECISION"_s) +
                 ", SCALE = "_L1 + text(u"SCALE"_s) +
                 ", NULLABLE = "_L1 + flag(u"NULLABLE"_s) +
                 ", UNSIGNED_ATTRIBUTE = "_L1 + flag(u"UNSIGNED_ATTRIBUTE"_s) +
                 ", UPDATABLE = "_L1 + flag(u"UPDATABLE"_s) +
                 ", VISIBLE = "_L1 + flag(u"VISIBLE"_s) +
                 ", MONEY = "_L1 + flag(u"MONEY"_s) +
                 ", AUTO_INCREMENT = "_L1 + flag(u"AUTO_INCREMENT"_s) +
                 ", CASE_SENSITIVE = "_L1 + flag(u"CASE_SENSITIVE"_s) +
                 ", SEARCHABLE = "_L1 + search() +
                 ", RADIX = "_L1 + text(u"RADIX"_s) +
                 ", SETFILEPARAMETER = "_L1 + text(u"SETFILEPARAMETER"_s) +
                 ", DEFAULT_VALUE = '"_L1 + quoted(u"DEFAULT_VALUE"_s) +
                 "', REMARKS = '"_L1 + quoted(u"REMARKS"_s) +
                 "' WHERE "_L1 + ofLoadedNumber());
    // clang-format on
}

QString frmColumns::search() const
{
    return QString::number(ToSearchable(text(u"SEARCHABLE"_s)));
}
