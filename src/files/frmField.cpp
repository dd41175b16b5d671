#include "frmField.h"

#include "Boxes.h"
#include "CConnections.h"
#include "Conversions.h"
#include "Database.h"
#include "DropDown.h"
#include "LocalTypeLimits.h"
#include "Recordset.h"
#include "ReservedFiles.h"
#include "Routine.h"
#include "UpDown.h"
#include "frmDateFormat.h"
#include "frmTimeFormat.h"
#include "modUpdate.h"

#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

/// The indices among spnUpDn and lblMinMax.
enum Spinner { NumberSpinner, OffsetSpinner, LengthSpinner, PrecisionSpinner, ScaleSpinner };
enum MinMax { LengthLabel, PrecisionLabel, ScaleLabel };

std::vector<Property> properties()
{
    return {
        {.prompt = "File Name:",
         .column = "FILE_NAME",
         .index = 0,
         .toolTip = "File which this Field is registered with.",
         .isKey = true,
         .isFixed = true},
        {.prompt = "Field Num&ber:",
         .column = "FIELD_NUMBER",
         .kind = EntryKind::Number,
         .index = 1,
         .toolTip = "Determines the Field Order within the File Definition.",
         .limits = {.spinner = NumberSpinner, .minimum = 1, .maximum = 32767, .text = "(1 to 32767)"},
         .button = {"cmdNextFieldNumber", "Next Number", "Find next free Field Number"}},
        {.prompt = "Field &Name:",
         .column = "FIELD_NAME",
         .index = 2,
         .toolTip = "Unique identifier for a Field within the File Definition. Valid characters are: [a..z], [A..Z], _ "
                    "(underscore) and - (hyphen).",
         .isKey = true},
        {.prompt = "Data &Type:",
         .column = "LOCAL_TYPE_NAME",
         .kind = EntryKind::List,
         .index = 3,
         .toolTip = "The storage format of the Field in the File on the Server."},
        {.prompt = "Off&set:",
         .column = "OFFSET",
         .kind = EntryKind::Number,
         .index = 4,
         .toolTip = "The position of the Field within the File.  Fields can be placed at the same offset if multiple "
                    "record types are present in the same File on the Server.",
         .limits = {.spinner = OffsetSpinner, .minimum = 0, .maximum = 65535, .text = "(0 to 65535)"},
         .button = {"cmdCalcOffset", "Calculate", "Calculate next Offset"},
         .isKey = true},
        {.prompt = "&Length:",
         .column = "LENGTH",
         .kind = EntryKind::Number,
         .index = 5,
         .toolTip = "Size of the Field in bytes and fixed for certain Data Types.",
         .limits = {LengthSpinner, 0, 65535, LengthLabel, "(0 to 65535)"}},
        {.prompt = "&Precision:",
         .column = "PRECISION",
         .kind = EntryKind::Number,
         .index = 6,
         .toolTip = "Refers to the maximum number of digits used by the datatype.  The precision of a non-numeric "
                    "field refers to the maximum length of the field.",
         .limits = {PrecisionSpinner, 0, 65535, PrecisionLabel, "(0 to 65535)"}},
        {.prompt = "S&cale:",
         .column = "SCALE",
         .kind = EntryKind::Number,
         .index = 7,
         .toolTip = "Refers to the maximum number of digits to the right of the decimal point (numeric fields only).",
         .limits = {ScaleSpinner, -32, 32, ScaleLabel, "(-32 to +32)"}},
        {.prompt = "&Encrypted:",
         .column = "ENCRYPTED",
         .kind = EntryKind::List,
         .index = 8,
         .toolTip = "This is used to enable encryption on specific fields.  This encryption is a facility of the "
                    "Tarnwick SQL engine and therefore other applications are not capable of reading fields written "
                    "with encryption.",
         .items = {"No", "Yes - Read/Write", "Yes - Read Only"}},
        {.prompt = "F&ormat:",
         .column = "FORMAT",
         .index = 9,
         .toolTip = "The Format field allows users to specify the format of a date or a time field stored in a string "
                    "on the Server.  Entry to this field is performed using the Date/Time Format dialog box.",
         .button = {"cmdFormat", "Format", "Launch Format Builder"}},
        {.prompt = "&Default Value:",
         .column = "DEFAULT_VALUE",
         .index = 10,
         .toolTip = "The default value is overwritten when data is inserted into the field."},
        {.prompt = "Re&marks:",
         .column = "REMARKS",
         .kind = EntryKind::Memo,
         .index = 11,
         .toolTip = "Any notes you wish to make about this Field."},
    };
}

QString shownLimits(const LocalTypeLimits::Range& range)
{
    const bool isFixed = !range.editable && range.preset == range.minimum && range.preset == range.maximum;
    return isFixed ? u"(%1 - Fixed)"_s.arg(range.preset) : u"(%1 to %2)"_s.arg(range.minimum).arg(range.maximum);
}

} // namespace

frmField::frmField(QWidget* parent)
    : ItemPane({.form = "frmField",
                .table = "TW_FIELD",
                .collection = "frmFields",
                .toolBar = "tbrField",
                .deleteQuestion = "Are you sure you want to delete this field?",
                .nameColumn = "FIELD_NAME",
                .nodeType = "fd",
                .nodeImage = "Field"},
               properties(), parent)
{
}

QString frmField::parentKey() const
{
    return "DSN="_L1 + datasource() + ":FI="_L1 + datasource() + ":fi="_L1 + file() + ":FD="_L1 + file() + ':'_L1;
}

QString frmField::title(State state) const
{
    const QString whole = file() + '.'_L1 + name();
    switch (state) {
    case State::Add:
        return u"Add New Field to "_s + file();
    case State::Edit:
        return whole + " - Edit Field Properties"_L1;
    case State::Delete:
        return whole + " - Delete Field"_L1;
    default:
        return whole + " - Field Properties"_L1;
    }
}

QString frmField::selectStatement() const
{
    return u"SELECT * FROM TW_FIELD WHERE FILE_NAME = '"_s + SQLQuote(file()) + "' AND FIELD_NAME = '"_L1 +
           SQLQuote(name()) + "' "_L1;
}

bool frmField::isProtected() const
{
    return reservedfiles::isReserved(file());
}

// Filling ------------------------------------------------------------------------------------------------------------

void frmField::fill(const dao::Recordset& row)
{
    const QString type = row.Fields().Item(u"LOCAL_TYPE_NAME"_s).Value().Text();
    sheet().list(u"LOCAL_TYPE_NAME"_s).refill({type});
    resetLimits();
    ApplyLocalType(type);
    {
        const QScopedValueRollback loading(m_loading, true);
        ItemPane::fill(row);
    }
    m_storedNumber = text(u"FIELD_NUMBER"_s);
}

void frmField::displayed()
{
    if (wrappedAttributes().startsWith(";PACKED"_L1))
        applyPackedRule();
    // The limits of the type have opened what it leaves open.
    EnableEdit(false);
    m_lengthChanged = false;
}

void frmField::ApplyLocalType(const QString& localType)
{
    Routine routine("frmField.ApplyLocalType");
    routine.run([&] {
        if (localType.isEmpty())
            return;
        const CLOCDT& type = connection().LOCDTs().Item(localType);
        const LocalTypeLimits limits =
            LocalTypeLimits::of(';'_L1 + type.ATTRIBUTES + ';'_L1, LocalTypeLimits::PaneStringPosition);

        struct Limited {
            QString column;
            int spinner;
            int label;
            const LocalTypeLimits::Range& range;
        };
        const std::array limited{Limited{u"LENGTH"_s, LengthSpinner, LengthLabel, limits.Length},
                                 Limited{u"PRECISION"_s, PrecisionSpinner, PrecisionLabel, limits.Precision},
                                 Limited{u"SCALE"_s, ScaleSpinner, ScaleLabel, limits.Scale}};
        for (const auto& [column, spinner, label, range] : limited) {
            enable(column, range.editable);
            sheet().spinner(spinner).setEnabled(range.editable);
            sheet().spinner(spinner).setRange(range.minimum, range.maximum);
            sheet().minMax(label).setText(shownLimits(range));
        }
        enable(u"FORMAT"_s, limits.FormatEditable);
        sheet().button(u"cmdFormat"_s).setEnabled(limits.FormatEditable);
        setText(u"FORMAT"_s, limits.Format);
        for (const Limited& one : limited)
            setText(one.column, QString::number(one.range.preset));
    });
}

QString frmField::wrappedAttributes() const
{
    const CLOCDT* type = connection().LOCDTs().find(text(u"LOCAL_TYPE_NAME"_s));
    return type ? ';'_L1 + type->ATTRIBUTES + ';'_L1 : QString();
}

/// A packed number has two digits to the byte, and room for one more in the half byte of its sign.
void frmField::applyPackedRule()
{
    const std::int32_t digits = conversions::ToLong(2 * conversions::Val(text(u"LENGTH"_s)));
    sheet().spinner(PrecisionSpinner).setRange(digits, digits + 1);
    sheet().minMax(PrecisionLabel).setText(u"(%1 to %2)"_s.arg(digits).arg(digits + 1));
    setText(u"PRECISION"_s, QString::number(digits));
}

void frmField::populateLists()
{
    QStringList types;
    for (const CLOCDT& type : connection().LOCDTs())
        types.append(type.LOCAL_TYPE_NAME);
    sheet().list(u"LOCAL_TYPE_NAME"_s).refill(types);
}

void frmField::adding()
{
    m_lengthChanged = false;
    m_storedNumber.clear();
    resetLimits();
    setText(u"FILE_NAME"_s, file());
    clickButton(u"cmdNextFieldNumber"_s);
    clickButton(u"cmdCalcOffset"_s);
    enableButtons(true);
    sheet().button(u"cmdFormat"_s).setEnabled(false);
    sheet().minMax(LengthLabel).setText(u"(Set the Local Type)"_s);
}

/// Without a type there are no narrower limits than those of the columns.
void frmField::resetLimits()
{
    for (const Property& property : sheet().properties()) {
        const Limits& limits = property.limits;
        if (limits.label < 0)
            continue;
        sheet().spinner(limits.spinner).setRange(limits.minimum, limits.maximum);
        sheet().minMax(limits.label).setText(QLatin1String(limits.text));
    }
}

void frmField::editing()
{
    enableButtons(true);
    const QString type = text(u"LOCAL_TYPE_NAME"_s);
    sheet().button(u"cmdFormat"_s).setEnabled(type == "DATE"_L1 || type == "TIME"_L1);
}

void frmField::enableEntries(bool enabled)
{
    ItemPane::enableEntries(enabled);
    if (!enabled)
        enableButtons(false);
}

void frmField::enableButtons(bool enabled)
{
    for (const QString& button : {u"cmdNextFieldNumber"_s, u"cmdCalcOffset"_s, u"cmdFormat"_s})
        sheet().button(button).setEnabled(enabled);
}

// Entry --------------------------------------------------------------------------------------------------------------

void frmField::textChanged(const QString& column)
{
    const QString entered = text(column);
    if (entered.isEmpty())
        return;
    if (column == "LENGTH"_L1) {
        m_lengthChanged = true;
        if (text(u"LOCAL_TYPE_NAME"_s) == "HEXADECIMAL"_L1)
            setText(u"PRECISION"_s, QString::number(conversions::ToLong(2 * conversions::Val(entered))));
        else if (wrappedAttributes().startsWith(";PACKED"_L1))
            applyPackedRule();
    } else if (column == "LOCAL_TYPE_NAME"_L1) {
        if (!m_loading)
            ApplyLocalType(entered);
        sheet().list(column).select(entered);
    } else if (column == "ENCRYPTED"_L1) {
        sheet().list(column).setCurrentIndex(conversions::ToLong(conversions::Val(entered)));
    } else if (column == "FORMAT"_L1 && !m_loading) {
        setText(u"LENGTH"_s, QString::number(entered.size()));
        setText(u"PRECISION"_s, QString::number(entered.size()));
    }
}

bool frmField::makesKeyChanged(const QString& column) const
{
    return ItemPane::makesKeyChanged(column) && !text(column).isEmpty();
}

void frmField::listChanged(const QString& column)
{
    if (column == "ENCRYPTED"_L1)
        setText(column, QString::number(sheet().list(column).currentIndex()));
    else
        ItemPane::listChanged(column);
}

void frmField::buttonClicked(const QString& button)
{
    if (button == "cmdNextFieldNumber"_L1)
        cmdNextFieldNumber_Click();
    else if (button == "cmdCalcOffset"_L1)
        cmdCalcOffset_Click();
    else if (button == "cmdFormat"_L1)
        cmdFormat_Click();
}

void frmField::cmdNextFieldNumber_Click()
{
    const auto numbers = db().OpenRecordset(u"SELECT FIELD_NUMBER FROM TW_FIELD WHERE FILE_NAME = '"_s +
                                            SQLQuote(file()) + "' ORDER BY FIELD_NUMBER DESC"_L1);
    setText(u"FIELD_NUMBER"_s,
            numbers->Eof() ? u"1"_s : QString::number(numbers->Fields().Item(0).Value().Long() + qint64{1}));
}

void frmField::cmdCalcOffset_Click()
{
    if (text(u"FIELD_NUMBER"_s).isEmpty())
        clickButton(u"cmdNextFieldNumber"_s);
    const auto sum = db().OpenRecordset(u"SELECT SUM(LENGTH) AS NextOffset FROM TW_FIELD WHERE FILE_NAME = '"_s +
                                        SQLQuote(file()) + "' AND FIELD_NUMBER < 0"_L1 + text(u"FIELD_NUMBER"_s));
    const QString offset = sum->Eof() ? QString() : sum->View(0).toString();
    setText(u"OFFSET"_s, offset.isEmpty() ? u"0"_s : offset);
}

void frmField::cmdFormat_Click()
{
    const QString type = text(u"LOCAL_TYPE_NAME"_s);
    if (type.contains("DATE"_L1))
        setText(u"FORMAT"_s, frmDateFormat::GetFormat(text(u"FORMAT"_s)));
    else if (type.contains("TIME"_L1))
        setText(u"FORMAT"_s, frmTimeFormat::GetFormat(text(u"FORMAT"_s)));
}

bool frmField::refuseRange(const QString& what, const QString& column, int spinner)
{
    const UpDown& limits = sheet().spinner(spinner);
    return refuse(u"Invalid %1, must be an integer between %2 and %3."_s.arg(what).arg(limits.Min()).arg(limits.Max()),
                  column);
}

bool frmField::validate()
{
    if (text(u"FIELD_NAME"_s).isEmpty())
        return refuse(u"Please give this Field a name."_s, u"FIELD_NAME"_s);
    if (!isWithin(u"FIELD_NUMBER"_s, NumberSpinner))
        return refuseRange(u"Field Number"_s, u"FIELD_NUMBER"_s, NumberSpinner);
    if (text(u"LOCAL_TYPE_NAME"_s).isEmpty())
        return refuse(u"Please select a Local Data Type for this field from the drop down list."_s,
                      u"LOCAL_TYPE_NAME"_s);
    if (!isWithin(u"OFFSET"_s, OffsetSpinner))
        return refuseRange(u"Offset"_s, u"OFFSET"_s, OffsetSpinner);
    if (!isWithin(u"LENGTH"_s, LengthSpinner))
        return refuseRange(u"length"_s, u"LENGTH"_s, LengthSpinner);
    if (!isWithin(u"PRECISION"_s, PrecisionSpinner))
        return refuseRange(u"Length"_s, u"PRECISION"_s, PrecisionSpinner);
    if (!isWithin(u"SCALE"_s, ScaleSpinner))
        return refuseRange(u"Scale"_s, u"SCALE"_s, ScaleSpinner);

    if (text(u"FIELD_NAME"_s) != name() &&
        finds(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '"_s + SQLQuote(file()) + "' AND FIELD_NAME = '"_L1 +
              quoted(u"FIELD_NAME"_s) + "'"_L1))
        return refuse("This File already contains a Field called '"_L1 + text(u"FIELD_NAME"_s) + "'"_L1,
                      u"FIELD_NAME"_s);
    const QString number = text(u"FIELD_NUMBER"_s);
    if (number != m_storedNumber &&
        finds(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '"_s + file() + "' AND FIELD_NUMBER = "_L1 + number))
        return refuse("Field Number '"_L1 + number + "' is already used in this File."_L1, u"FIELD_NAME"_s);
    return true;
}

// Writing ------------------------------------------------------------------------------------------------------------

void frmField::carryKey()
{
    modUpdate::UpdateField(datasource(), file(), file(), loadedName(), name(),
                           conversions::ToLong(conversions::Val(text(u"OFFSET"_s))));
}

void frmField::updateRow()
{
    db().Execute(u"UPDATE TW_FIELD SET FIELD_NUMBER = 0"_s + text(u"FIELD_NUMBER"_s) + ", LOCAL_TYPE_NAME = '"_L1 +
                 quoted(u"LOCAL_TYPE_NAME"_s) + "', LENGTH = 0"_L1 + text(u"LENGTH"_s) + ", PRECISION = 0"_L1 +
                 text(u"PRECISION"_s) + ", SCALE = 0"_L1 + text(u"SCALE"_s) + ", ENCRYPTED = 0"_L1 +
                 text(u"ENCRYPTED"_s) + ", FORMAT = '"_L1 + quoted(u"FORMAT"_s) + "', DEFAULT_VALUE = '"_L1 +
                 quoted(u"DEFAULT_VALUE"_s) + "', REMARKS = '"_L1 + quoted(u"REMARKS"_s) + "' WHERE FILE_NAME = '"_L1 +
                 SQLQuote(file()) + "' AND FIELD_NAME = '"_L1 + SQLQuote(name()) + "'"_L1);
}

void frmField::followUpdate()
{
    if (m_lengthChanged) {
        const bool columnsFollow = boxes::ask(u"You have changed the length of this Field.\n"
                                              "Do you want to update the length of any columns\n"
                                              "that refer to this Field to match?"_s);
        requireLoaded();
        if (columnsFollow)
            updateColumnLengths();
    }
    ItemPane::followUpdate();
}

/// A table of the same name in another database is changed too.
void frmField::updateColumnLengths()
{
    for (const auto tables =
             db().OpenRecordset(u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = '"_s + file() + "'"_L1);
         !tables->Eof(); tables->MoveNext())
        db().Execute(u"UPDATE TW_COLUMN SET LENGTH = "_s + text(u"LENGTH"_s) + " WHERE TABLE_NAME = '"_L1 +
                     tables->View(0).toString() + "' AND FIELD_NAME = '"_L1 + name() + "'"_L1);
    boxes::inform(u"Columns lengths updated"_s);
    requireLoaded();
}

void frmField::deleteRow()
{
    for (const auto tables = db().OpenRecordset(u"SELECT DISTINCT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = '"_s +
                                                SQLQuote(file()) + "'"_L1);
         !tables->Eof(); tables->MoveNext()) {
        const auto columns = db().OpenRecordset(
            u"SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME FROM TW_COLUMN WHERE TABLE_NAME = '"_s +
            SQLQuote(tables->View(0).toString()) + "' AND FIELD_NAME = '"_L1 + SQLQuote(name()) + "'"_L1);
        if (columns->Eof())
            continue;
        const bool goes = boxes::ask("This Field is used by Column '"_L1 + columns->View(2).toString() +
                                     "' in Database '"_L1 + columns->View(0).toString() + "', Table '"_L1 +
                                     columns->View(1).toString() + "'\nAre you sure you want to delete it?"_L1);
        requireLoaded();
        if (!goes)
            return;
        break;
    }
    db().Execute(BuildDelete(u"TW_FIELD"_s, u"FILE_NAME = '"_s + SQLQuote(file()) + "' AND FIELD_NAME = '"_L1 +
                                                SQLQuote(name()) + "'"_L1));
    removeNode();
    showCollection();
}

void frmField::undo(State state)
{
    if (state != State::Edit) {
        ItemPane::undo(state);
        return;
    }
    const auto row = db().OpenRecordset(u"SELECT * FROM TW_FIELD WHERE FILENAME = '"_s + SQLQuote(file()) +
                                        "' AND FIELD_NAME = '"_L1 + SQLQuote(name()) + "'"_L1);
    if (!row->Eof())
        fill(*row);
}

/// Goes by what is being done: a new field that could not be followed up in the tree is not shown either.
void frmField::cancel(State state)
{
    if (state == State::Add)
        showCollection();
    else
        Display(keys());
}
