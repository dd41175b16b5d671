#include "frmFile.h"

#include "Boxes.h"
#include "Database.h"
#include "RecordSize.h"
#include "Recordset.h"
#include "ReservedFiles.h"
#include "UpDown.h"
#include "modString.h"
#include "modUpdate.h"

#include <QPushButton>

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

std::vector<Property> properties()
{
    return {
        {.prompt = "File &Name:",
         .column = "FILE_NAME",
         .index = 0,
         .toolTip = "A unique name by which the selected file definition can be accessed from within the table "
                    "definition.",
         .isKey = true},
        {.prompt = "Open &String:", .column = "OPEN_STRING", .index = 1},
        {.prompt = "&Record Size:",
         .column = "RECORD_SIZE",
         .kind = EntryKind::Number,
         .index = 2,
         .toolTip = "The total length of all the fields in the file.",
         .limits = {.spinner = 0, .minimum = 0, .maximum = 65535, .label = 0, .text = "(0 to 65535)"},
         .button = {"cmdCalcRecordSize", "Calculate", "Calculate record size"}},
        {.prompt = "File &Organisation:",
         .column = "FILE_ORGANISATION",
         .kind = EntryKind::List,
         .index = 3,
         .toolTip = "Used to specify the type of file being defined.  Supported types are Indexed, Relative and "
                    "Sequential.  The file organisation can be selected from the drop-down list.",
         .items = {"INDEXED", "RELATIVE", "SEQUENTIAL"}},
        {.prompt = "Record &Type:",
         .column = "RECORD_TYPE",
         .kind = EntryKind::List,
         .index = 4,
         .toolTip = "Defines the type of records stored in the file.  Supported types are Fixed and Variable.  The "
                    "record type can be selected from the dropdown list.",
         .items = {"FIXED", "VARIABLE"}},
        {.prompt = "Re&marks",
         .column = "REMARKS",
         .kind = EntryKind::Memo,
         .index = 5,
         .toolTip = "Any notes you wish to make about this File"},
    };
}

} // namespace

frmFile::frmFile(QWidget* parent)
    : ItemPane({.form = "frmFile",
                .table = "TW_FILE",
                .collection = "frmFiles",
                .toolBar = "tbrFile",
                .deleteQuestion = "Are you sure you want to delete this File?",
                .nameColumn = "FILE_NAME",
                .nodeType = "fi",
                .nodeImage = "File",
                .nodeOpens = true},
               properties(), parent)
{
}

QString frmFile::parentKey() const
{
    return "DSN="_L1 + datasource() + ":FI="_L1 + datasource() + ':'_L1;
}

QString frmFile::title(State state) const
{
    switch (state) {
    case State::Add:
        return u"Add New File Definition to "_s + datasource();
    case State::Edit:
        return name() + " - Edit File Definition"_L1;
    case State::Delete:
        return name() + " - Delete File Definition"_L1;
    default:
        return name() + " - File Properties"_L1;
    }
}

QString frmFile::selectStatement() const
{
    return u"SELECT * FROM TW_FILE WHERE FILE_NAME = '"_s + SQLQuote(name()) + "'"_L1;
}

bool frmFile::isProtected() const
{
    return reservedfiles::isReserved(name());
}

void frmFile::enableEntries(bool enabled)
{
    ItemPane::enableEntries(enabled);
    sheet().button(u"cmdCalcRecordSize"_s).setEnabled(false);
}

void frmFile::editing()
{
    sheet().button(u"cmdCalcRecordSize"_s).setEnabled(true);
}

bool frmFile::validate()
{
    if (isBlank(u"FILE_NAME"_s))
        return refuse(u"Please give this File a name."_s, u"FILE_NAME"_s);
    if (isBlank(u"FILE_ORGANISATION"_s))
        return refuse(u"Please specify a File Organisation"_s, u"FILE_ORGANISATION"_s);
    if (isBlank(u"RECORD_TYPE"_s))
        return refuse(u"Please specify a Record Type"_s, u"RECORD_TYPE"_s);
    if (text(u"FILE_NAME"_s) != name() &&
        finds(u"SELECT * FROM TW_FILE WHERE FILE_NAME = '"_s + quoted(u"FILE_NAME"_s) + "'"_L1))
        return refuse("The Datasource '"_L1 + datasource() + "' already contains a File definition called '"_L1 +
                          text(u"FILE_NAME"_s) + "'"_L1,
                      u"FILE_NAME"_s);
    if (!isWithin(u"RECORD_SIZE"_s, 0)) {
        const UpDown& limits = sheet().spinner(0);
        return refuse(
            u"Record Size out of range.\nPlease enter a value between %1 and %2."_s.arg(limits.Min()).arg(limits.Max()),
            u"RECORD_SIZE"_s);
    }
    return true;
}

void frmFile::carryKey()
{
    modUpdate::UpdateFile(datasource(), loadedName(), name());
}

void frmFile::updateRow()
{
    db().Execute(u"UPDATE TW_FILE SET OPEN_STRING = '"_s + quoted(u"OPEN_STRING"_s) + "', RECORD_SIZE = 0"_L1 +
                 text(u"RECORD_SIZE"_s) + ", FILE_ORGANISATION = '"_L1 + quoted(u"FILE_ORGANISATION"_s) +
                 "', RECORD_TYPE = '"_L1 + quoted(u"RECORD_TYPE"_s) + "', REMARKS = '"_L1 + quoted(u"REMARKS"_s) +
                 "' WHERE FILE_NAME = '"_L1 + SQLQuote(name()) + "'"_L1);
}

QString frmFile::firstTable() const
{
    const auto tables = db().OpenRecordset(u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = '"_s + name() + "'"_L1);
    return tables->Eof() ? QString() : tables->View(0).toString();
}

void frmFile::deleteRow()
{
    const QString criterion = u"FILE_NAME = '"_s + SQLQuote(name()) + "'"_L1;
    const auto fields =
        db().OpenRecordset(u"SELECT COUNT(FIELD_NAME) AS RECORD_COUNT FROM TW_FIELD WHERE "_s + criterion);
    const QString warning = u"Warning this file is referenced by Table '"_s;

    if (fields->Eof()) {
        if (const QString table = firstTable(); !table.isNull())
            boxes::inform(warning + table + "'"_L1);
        requireLoaded();
        db().Execute(BuildDelete(u"TW_FILE"_s, criterion));
        showCollection();
        return;
    }

    const std::int32_t count = fields->Fields().Item(u"RECORD_COUNT"_s).Value().Long();
    const bool goes = boxes::ask("Deleteing the File '"_L1 + name() + "' will also remove the "_L1 +
                                 QString::number(count) + ' '_L1 + modString::Pluralise(u"Field"_s, count) +
                                 " attached to it.\n\nAre you sure you wish to delete this File?"_L1);
    requireLoaded();
    if (!goes)
        return;
    if (const QString table = firstTable(); !table.isNull()) {
        const bool goesAnyway = boxes::ask(warning + table + "'\nAre you sure you want to remove it?"_L1);
        requireLoaded();
        if (!goesAnyway)
            return;
    }
    db().Execute(BuildDelete(u"TW_FILE"_s, criterion));
    db().Execute(BuildDelete(u"TW_FIELD"_s, criterion));
    showCollection();
    removeNode();
}

void frmFile::buttonClicked(const QString&)
{
    cmdCalcRecordSize_Click();
}

void frmFile::cmdCalcRecordSize_Click()
{
    if (name().isEmpty())
        return;
    const QString sum = recordsize::sumOfFields(db(), name());
    setText(u"RECORD_SIZE"_s, sum.isEmpty() ? u"0"_s : sum);
    setText(u"RECORD_SIZE"_s, recordsize::withControlBytes(text(u"RECORD_SIZE"_s), name()));
}
