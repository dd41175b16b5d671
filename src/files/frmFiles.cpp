#include "frmFiles.h"

#include "Boxes.h"
#include "Database.h"
#include "RecordSize.h"
#include "ReservedFiles.h"
#include "Settings.h"

using namespace Qt::StringLiterals;

namespace
{

std::vector<GridColumn> columns()
{
    return {
        {.name = u"FILE_NAME"_s, .isKey = true},
        {.name = u"OPEN_STRING"_s},
        {.name = u"RECORD_SIZE"_s, .editor = CellEditor::LookUp},
        {.name = u"FILE_ORGANISATION"_s,
         .editor = CellEditor::Combo,
         .items = {u"INDEXED"_s, u"RELATIVE"_s, u"SEQUENTIAL"_s},
         .newRow = u"INDEXED"_s},
        {.name = u"RECORD_TYPE"_s,
         .editor = CellEditor::Combo,
         .items = {u"FIXED"_s, u"VARIABLE"_s},
         .newRow = u"FIXED"_s},
        {.name = u"REMARKS"_s},
    };
}

} // namespace

frmFiles::frmFiles(QWidget* parent)
    : GridPane({.form = "frmFiles", .table = "TW_FILE", .toolBar = "tbrFiles"}, columns(), parent)
{
}

QString frmFiles::title() const
{
    return datasource() + u" - Files"_s;
}

QString frmFiles::nodeKey() const
{
    return u"DSN="_s + datasource() + u":FI="_s + datasource() + u":"_s;
}

QString frmFiles::selectStatement() const
{
    if (settings::getNumber(u"Options"_s, u"SysTables"_s, 0) == 0)
        return u"SELECT FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS "
               "FROM TW_FILE "
               "WHERE "_s +
               QLatin1StringView(reservedfiles::userFiles);
    return u"SELECT FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS "
           "FROM TW_FILE "
           "ORDER BY FILE_NAME ASC"_s;
}

/// Goes by the name under which the row is stored: while a reserved name is being typed it can still be corrected.
bool frmFiles::isLocked(const QString&)
{
    return reservedfiles::isReserved(loaded(u"FILE_NAME"_s));
}

void frmFiles::lookUp(const QString&)
{
    const QString& stored = loaded(u"FILE_NAME"_s);
    const QString file = stored.isEmpty() ? text(u"FILE_NAME"_s) : stored;
    const QString sum = recordsize::sumOfFields(db(), file);
    if (sum.isEmpty())
        boxes::inform(u"You need to add some Fields to this File before I can calculate the Record Size.."_s);
    else
        setLookedUp(recordsize::withControlBytes(sum, file));
}

QString frmFiles::validate()
{
    if (!isWithin(u"RECORD_SIZE"_s, 0, 65535))
        return refuse(u"Record Size out of range.\nPlease enter a value between 0 and 65535."_s, u"RECORD_SIZE"_s);
    const QString name = text(u"FILE_NAME"_s);
    if (name.isEmpty())
        return refuse(u"Filename cannot be blank"_s, u"FILE_NAME"_s);
    if (name != loaded(u"FILE_NAME"_s) &&
        finds(u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = '"_s + quoted(u"FILE_NAME"_s) + u"'"_s))
        return refuse(u"This Datasource already contains a File called '"_s + name + u"'"_s, u"FILE_NAME"_s);
    return {};
}

void frmFiles::replaceRow()
{
    if (!loaded(u"FILE_NAME"_s).isEmpty())
        removeRow(u"DELETE FROM TW_FILE WHERE FILE_NAME = '"_s + quotedLoaded(u"FILE_NAME"_s) + u"'"_s);
    // clang-format off
    db().Execute(u"INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
                 "VALUES ('"_s + quoted(u"FILE_NAME"_s) +
                 u"', '"_s + quoted(u"OPEN_STRING"_s) +
                 u"', "_s + text(u"RECORD_SIZE"_s) +
                 u", '"_s + quoted(u"FILE_ORGANISATION"_s) +
                 u"', '"_s + quoted(u"RECORD_TYPE"_s) +
                 u"', '"_s + quoted(u"REMARKS"_s) + u"')"_s);
    // clang-format on
}

void frmFiles::updateRow()
{
    // clang-format off
    db().Execute(u"UPDATE TW_FILE SET OPEN_STRING = '"_s + quoted(u"OPEN_STRING"_s) + u"',RECORD_SIZE = "_s +
                 text(u"RECORD_SIZE"_s) + u",FILE_ORGANISATION = '"_s + quoted(u"FILE_ORGANISATION"_s) +
                 u"',RECORD_TYPE = '"_s + quoted(u"RECORD_TYPE"_s) + u"',REMARKS = '"_s + quoted(u"REMARKS"_s) +
                 u"' WHERE FILE_NAME = '"_s + quotedLoaded(u"FILE_NAME"_s) + u"'"_s);
    // clang-format on
}
