#include "frmFields.h"

#include "Boxes.h"
#include "CConnections.h"
#include "Conversions.h"
#include "Database.h"
#include "Recordset.h"
#include "ReservedFiles.h"
#include "Routine.h"
#include "Settings.h"
#include "frmDateFormat.h"
#include "frmTimeFormat.h"
#include "modGUI.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

const QStringList& encryptions()
{
    static const QStringList names{u"No"_s, u"Yes - Read/Write"_s, u"Yes - Read Only"_s};
    return names;
}

/// A number that stands for none of them shows as it is, as does a null.
QString encryption(const QString& stored)
{
    bool isNumber = false;
    const qsizetype number = stored.toLongLong(&isNumber);
    return isNumber && number >= 0 && number < encryptions().size() ? encryptions().at(number) : stored;
}

std::vector<GridColumn> columns()
{
    return {
        {.name = u"FIELD_NAME"_s, .isKey = true},
        {.name = u"FIELD_NUMBER"_s, .editor = CellEditor::LookUp},
        {.name = u"OFFSET"_s, .editor = CellEditor::LookUp},
        {.name = u"LOCAL_TYPE_NAME"_s, .editor = CellEditor::Combo},
        {.name = u"LENGTH"_s},
        {.name = u"PRECISION"_s},
        {.name = u"SCALE"_s},
        {.name = u"ENCRYPTED"_s,
         .editor = CellEditor::Combo,
         .items = encryptions(),
         .newRow = u"No"_s,
         .shown = &encryption},
        {.name = u"FORMAT"_s, .editor = CellEditor::LookUp},
        {.name = u"DEFAULT_VALUE"_s},
        {.name = u"REMARKS"_s},
    };
}

} // namespace

frmFields::frmFields(QWidget* parent)
    : GridPane({.form = "frmFields", .table = "TW_FIELD", .toolBar = "tbrFields"}, columns(), parent)
{
}

QString frmFields::title() const
{
    return file() + u" - Fields"_s;
}

QString frmFields::nodeKey() const
{
    return owner()->node + u"FD="_s + file() + u":"_s;
}

std::optional<GridPane::Owner> frmFields::owner() const
{
    return Owner{.pane = u"frmFile"_s,
                 .keys = keys(),
                 .node = u"DSN="_s + datasource() + u":FI="_s + datasource() + u":fi="_s + file() + u":"_s,
                 .toolTip = u"Up to File '"_s + file() + u"'"_s};
}

QString frmFields::selectStatement() const
{
    const bool byName = settings::getNumber(u"Options"_s, u"FieldOrder"_s, 0) == 0;
    return u"SELECT FIELD_NAME, FIELD_NUMBER, OFFSET, LOCAL_TYPE_NAME, LENGTH, PRECISION, SCALE, ENCRYPTED, FORMAT, "
           "DEFAULT_VALUE, REMARKS "
           "FROM TW_FIELD "
           "WHERE FILE_NAME = '"_s +
           quotedFile() + (byName ? u"' ORDER BY FIELD_NAME ASC"_s : u"' ORDER BY OFFSET ASC"_s);
}

void frmFields::populateLists()
{
    QStringList types;
    for (const CLOCDT& type : connection().LOCDTs())
        types.append(type.LOCAL_TYPE_NAME);
    setItems(u"LOCAL_TYPE_NAME"_s, types);
}

bool frmFields::isReadOnly() const
{
    return reservedfiles::isReserved(file());
}

int frmFields::ToEncrypted(const QString& text)
{
    return static_cast<int>(std::max<qsizetype>(0, encryptions().indexOf(text)));
}

/// The number behind the cell; one that has no name is kept.
QString frmFields::encrypted() const
{
    const QString shown = text(u"ENCRYPTED"_s);
    const bool isUntouched = shown == loaded(u"ENCRYPTED"_s) && !encryptions().contains(shown);
    return isUntouched && conversions::IsNumeric(shown) ? shown : QString::number(ToEncrypted(shown));
}

// The storage type ---------------------------------------------------------------------------------------------------

/// What a storage type allows. A row without a type, or with one that is not known, may hold what a field can hold.
LocalTypeLimits frmFields::limitsOf(const QString& localTypeName) const
{
    LocalTypeLimits limits{.Length = {0, 0, 65535, true},
                           .Precision = {0, 0, 65535, true},
                           .Scale = {0, -32, 32, true},
                           .Format = {},
                           .FormatEditable = true};
    if (localTypeName.isEmpty())
        return limits;
    Routine routine("frmFields.FetchTypeInfo");
    routine.run([&] {
        const QString wrapped = u";"_s + connection().LOCDTs().Item(localTypeName).ATTRIBUTES + u";"_s;
        limits = LocalTypeLimits::of(wrapped, LocalTypeLimits::GridStringPosition);
    });
    return limits;
}

/// A chosen type brings its format. Numbers that it does not allow, and blank ones, take its defaults, since a cell
/// that the type fixes cannot be entered.
void frmFields::FetchTypeInfo(const QString& localTypeName)
{
    if (localTypeName.isEmpty())
        return;
    const LocalTypeLimits limits = limitsOf(localTypeName);
    setText(u"FORMAT"_s, limits.Format);
    const auto adopt = [this](const QString& column, const LocalTypeLimits::Range& range) {
        if (!isWithin(column, range.minimum, range.maximum))
            setText(column, QString::number(range.preset));
    };
    adopt(u"LENGTH"_s, limits.Length);
    adopt(u"PRECISION"_s, limits.Precision);
    adopt(u"SCALE"_s, limits.Scale);
}

void frmFields::cellChanged(const QString& column)
{
    if (column == "LOCAL_TYPE_NAME"_L1)
        FetchTypeInfo(text(column));
}

/// What the type fixes takes no editor, unless the row holds something else there that is to be mended.
bool frmFields::isLocked(const QString& column)
{
    const auto isFixed = [&](const LocalTypeLimits::Range& range) {
        return !range.editable && isWithin(column, range.minimum, range.maximum);
    };
    const QString type = text(u"LOCAL_TYPE_NAME"_s);
    if (column == "LENGTH"_L1)
        return isFixed(limitsOf(type).Length);
    if (column == "PRECISION"_L1)
        return isFixed(limitsOf(type).Precision);
    if (column == "SCALE"_L1)
        return isFixed(limitsOf(type).Scale);
    if (column != "FORMAT"_L1)
        return false;
    const LocalTypeLimits limits = limitsOf(type);
    return !limits.FormatEditable && text(column) == limits.Format;
}

// Looking up ---------------------------------------------------------------------------------------------------------

void frmFields::lookUp(const QString& column)
{
    if (column == "FIELD_NUMBER"_L1)
        findNextNumber();
    else if (column == "OFFSET"_L1)
        sumOffset();
    else
        buildFormat();
}

void frmFields::findNextNumber()
{
    const auto rows = db().OpenRecordset(u"SELECT FIELD_NUMBER FROM TW_FIELD WHERE FILE_NAME = '"_s + quotedFile() +
                                         u"' ORDER BY FIELD_NUMBER DESC"_s);
    const dao::Value highest = rows->Eof() ? dao::Value() : rows->Fields().Item(0).Value();
    setLookedUp(QString::number((highest.IsNull() ? 0 : highest.Long()) + qint64{1}));
}

void frmFields::sumOffset()
{
    const QString number = text(u"FIELD_NUMBER"_s);
    if (number.isEmpty()) {
        boxes::inform(u"Please enter a Field Number for this Field."_s);
        return;
    }
    const auto sum = db().OpenRecordset(u"SELECT SUM(LENGTH) AS NextOffset FROM TW_FIELD WHERE FILE_NAME = '"_s +
                                        quotedFile() + u"' AND FIELD_NUMBER < 0"_s + number);
    const dao::Value offset = sum->Eof() ? dao::Value() : sum->Fields().Item(0).Value();
    setLookedUp(offset.IsNull() ? u"0"_s : offset.Text());
}

void frmFields::buildFormat()
{
    const QString type = text(u"LOCAL_TYPE_NAME"_s);
    if (type.contains("DATE"_L1))
        setLookedUp(frmDateFormat::GetFormat(lookedUp()));
    else if (type.contains("TIME"_L1))
        setLookedUp(frmTimeFormat::GetFormat(lookedUp()));
}

// Rows ---------------------------------------------------------------------------------------------------------------

QString frmFields::validate()
{
    const QString name = text(u"FIELD_NAME"_s);
    if (name.isEmpty())
        return refuse(u"The Field Name cannot be blank"_s, u"FIELD_NAME"_s);
    if (name != loaded(u"FIELD_NAME"_s) &&
        finds(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '"_s + quotedFile() + u"' AND FIELD_NAME = '"_s +
              quoted(u"FIELD_NAME"_s) + u"'"_s))
        return refuse(u"The Field Name '"_s + name + u"' already has already been used in this File."_s,
                      u"FIELD_NAME"_s);

    // The pane of a field ends at 32767.
    if (!isWithin(u"FIELD_NUMBER"_s, 1, 65535))
        return refuse(modGUI::OutOfRange(u"Field Number"_s, 1, 65535), u"FIELD_NUMBER"_s);
    const QString number = text(u"FIELD_NUMBER"_s);
    if (conversions::Val(number) != conversions::Val(loaded(u"FIELD_NUMBER"_s)) &&
        finds(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '"_s + quotedFile() + u"' AND FIELD_NUMBER = "_s +
              number))
        return refuse(u"That Field Number has already been used in this File."_s, u"FIELD_NUMBER"_s);

    if (!isWithin(u"OFFSET"_s, 0, 65535))
        return refuse(modGUI::OutOfRange(u"Offset"_s, 0, 65535), u"OFFSET"_s);
    const LocalTypeLimits limits = limitsOf(text(u"LOCAL_TYPE_NAME"_s));
    const auto isOutside = [this](const QString& column, const LocalTypeLimits::Range& range) {
        return !isWithin(column, range.minimum, range.maximum);
    };
    if (isOutside(u"LENGTH"_s, limits.Length))
        return refuse(modGUI::OutOfRange(u"Length"_s, limits.Length.minimum, limits.Length.maximum), u"LENGTH"_s);
    if (isOutside(u"PRECISION"_s, limits.Precision))
        return refuse(modGUI::OutOfRange(u"Precision"_s, limits.Precision.minimum, limits.Precision.maximum),
                      u"PRECISION"_s);
    if (isOutside(u"SCALE"_s, limits.Scale))
        return refuse(modGUI::OutOfRange(u"Scale"_s, limits.Scale.minimum, limits.Scale.maximum), u"SCALE"_s);
    return {};
}

void frmFields::replaceRow()
{
    if (!loaded(u"FIELD_NAME"_s).isEmpty())
        removeRow(u"DELETE FROM TW_FIELD WHERE FILE_NAME = '"_s + quotedFile() + u"' AND FIELD_NAME = '"_s +
                  quotedLoaded(u"FIELD_NAME"_s) + u"'"_s);
    // clang-format off
    db().Execute(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
                 "SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS ) VALUES ('"_s + quotedFile() +
                 u"', "_s + text(u"FIELD_NUMBER"_s) +
                 u", '"_s + quoted(u"FIELD_NAME"_s) +
                 u"', '"_s + quoted(u"LOCAL_TYPE_NAME"_s) +
                 u"', "_s + text(u"OFFSET"_s) +
                 u", "_s + text(u"LENGTH"_s) +
                 u", "_s + text(u"PRECISION"_s) +
                 u", "_s + text(u"SCALE"_s) +
                 u", "_s + encrypted() +
                 u", '"_s + quoted(u"FORMAT"_s) +
                 u"', '"_s + quoted(u"DEFAULT_VALUE"_s) +
                 u"', '"_s + quoted(u"REMARKS"_s) + u"')"_s);
    // clang-format on
}

void frmFields::updateRow()
{
    // clang-format off
    db().Execute(u"UPDATE TW_FIELD SET FIELD_NUMBER = "_s + text(u"FIELD_NUMBER"_s) +
                 u", LOCAL_TYPE_NAME = '"_s + quoted(u"LOCAL_TYPE_NAME"_s) +
                 u"', OFFSET = "_s + text(u"OFFSET"_s) +
                 u", LENGTH = "_s + text(u"LENGTH"_s) +
                 u", PRECISION = "_s + text(u"PRECISION"_s) +
                 u", SCALE = "_s + text(u"SCALE"_s) +
                 u", ENCRYPTED = "_s + encrypted() +
                 u", FORMAT = '"_s + quoted(u"FORMAT"_s) +
                 u"', DEFAULT_VALUE = '"_s + quoted(u"DEFAULT_VALUE"_s) +
                 u"', REMARKS = '"_s + quoted(u"REMARKS"_s) +
                 u"' WHERE FILE_NAME = '"_s + quotedFile() +
                 u"' AND FIELD_NAME = '"_s + quotedLoaded(u"FIELD_NAME"_s) + u"'"_s);
    // clang-format on
}
