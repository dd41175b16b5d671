#include "FieldCommands.h"

#include "Boxes.h"
#include "CConnections.h"
#include "CMouseSleeper.h"
#include "Commands.h"
#include "Conversions.h"
#include "Recordset.h"
#include "frmField.h"
#include "frmFieldReorder.h"
#include "frmFields.h"
#include "mdiMain.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace
{

bool belongsToFields(const DragItem& item)
{
    return item.NodeType == "FD"_L1 || item.NodeType == "fd"_L1;
}

/// The bytes of a record, or 0 for a file that is not there.
std::int32_t recordSize(dao::Database& db, const QString& file)
{
    const auto rows =
        db.OpenRecordset("SELECT RECORD_SIZE FROM TW_FILE WHERE FILE_NAME = '"_L1 + SQLQuote(file) + '\''_L1);
    return rows->Eof() ? 0 : rows->Fields().Item(u"RECORD_SIZE"_s).Value().Long();
}

/// Lays the fields out one behind the other in the order of their offsets, and returns the offset behind the last one.
/// An offset has 16 bits: raises 6 beyond.
std::int16_t layOut(dao::Database& db, const QString& file)
{
    const CMouseSleeper sleeper;
    const auto rows =
        db.OpenRecordset("SELECT * FROM TW_FIELD WHERE FILE_NAME = '"_L1 + SQLQuote(file) + "' ORDER BY OFFSET ASC"_L1);
    std::int16_t offset = 0;
    for (; !rows->Eof(); rows->MoveNext()) {
        const dao::Fields& row = rows->Fields();
        db.Execute("UPDATE TW_FIELD SET OFFSET = "_L1 + QString::number(offset) + " WHERE FILE_NAME = '"_L1 +
                   SQLQuote(row.Item(u"FILE_NAME"_s).Value()) + "' AND FIELD_NAME = '"_L1 +
                   SQLQuote(row.Item(u"FIELD_NAME"_s).Value()) + "' AND FIELD_NUMBER = "_L1 +
                   SQLQuote(row.Item(u"FIELD_NUMBER"_s).Value()));
        offset = conversions::ToInteger(static_cast<double>(offset) + row.Item(u"LENGTH"_s).Value().Long());
    }
    return offset;
}

void mnu_FieldRecalculate_Click(const DragItem& item)
{
    if (!belongsToFields(item)) {
        boxes::inform(u"Please select a Field Collection or Field in a Field Collection to recalculate."_s);
        return;
    }
    const QString datasource = item.Keys.at(0);
    const QString file = item.Keys.at(1);
    CConnection* connection = CConnections::instance().Item(datasource);
    if (!connection)
        return;
    const std::int32_t size = recordSize(*connection->db(), file);
    const std::int32_t length = layOut(*connection->db(), file);
    if (length > size)
        boxes::inform("WARNING!\nTotal length of Fields exceeds Record size by "_L1 + QString::number(length - size) +
                      " bytes."_L1);
    boxes::inform("Field offsets recalulated for File '"_L1 + file + '\''_L1);
    mdiMain::instance().PaneDisplay(u"frmFields"_s, {datasource, file});
}

/// A pane that shows fields of the file has their former numbers, and would write them back.
void showAnew(const QStringList& file)
{
    mdiMain& window = mdiMain::instance();
    if (const auto* grid = dynamic_cast<const frmFields*>(window.currentPane()); grid && grid->keys() == file)
        window.PaneDisplay(u"frmFields"_s, file);
    const auto* field = dynamic_cast<const frmField*>(window.currentPane());
    if (field && field->keys().size() == 3 && field->keys().first(2) == file && !field->keys().back().isEmpty())
        window.PaneDisplay(u"frmField"_s, field->keys());
}

void mnu_FieldReorder_Click(const DragItem& item)
{
    if (!belongsToFields(item))
        return;
    const QStringList file = item.Keys.first(2);
    CConnection* connection = CConnections::instance().Item(file.at(0));
    if (!connection)
        return;
    if (frmFieldReorder::Display(*connection->db(), file.at(1)))
        showAnew(file);
}

} // namespace

void registerFieldCommands()
{
    commands::add(u"mnu_FieldRecalculate"_s, mnu_FieldRecalculate_Click);
    commands::add(u"mnu_FieldReorder"_s, mnu_FieldReorder_Click);
}
