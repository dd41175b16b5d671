// Moving and copying columns.
#include "modDragAndDrop.h"

#include "Boxes.h"
#include "DragRoutine.h"
#include "Insertions.h"
#include "Recordset.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using insertions::bare;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

/// Whether source and target are one table, which the user is then told.
bool isSameTable(const DragItem& source, const DragItem& target)
{
    if (source.Keys.first(3) != target.Keys.first(3))
        return false;
    boxes::inform(u"The source and the destination Table are the same"_s);
    return true;
}

/// Makes room for a column where another one has its type and number, if the user agrees. False if not.
bool makeRoom(ItemDrag& drag, const QStringList& table, const QString& type, const QString& number)
{
    const QString to = table.at(0);
    const QString toDatabase = table.at(1);
    const QString toTable = table.at(2);
    if (!drag.targetHas(u"SELECT * FROM TW_COLUMN WHERE DATABASE_NAME ='%1' AND TABLE_NAME = '%2' "
                        "AND COLUMN_TYPE = %3 AND COLUMN_NUMBER = %4 "_s.arg(SQLQuote(toDatabase), SQLQuote(toTable),
                                                                             type, number)))
        return true;
    if (!boxes::ask(u"A column already exists is in Datasource '%1', Database '%2', Table '%3' "
                    "with a Column Type of %4 and a column number of %5\n"
                    "Do you want to overwrite it?"_s.arg(to, toDatabase, toTable, type, number)))
        return false;
    drag.toTarget(
        u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2' "
        "AND COLUMN_NUMBER = %3  AND COLUMN_TYPE = %4"_s.arg(SQLQuote(toDatabase), SQLQuote(toTable), number, type));
    return true;
}

/// Warns of a column whose field the file of its new table lacks.
void warnOfMissingField(ItemDrag& drag, const QStringList& table, const QString& column, const QString& field)
{
    const QString toTable = table.at(2);
    const auto files =
        drag.fromTarget(u"SELECT FILE_NAME FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(
            SQLQuote(table.at(1)), SQLQuote(toTable)));
    const QString file = files->Fields().Item(u"FILE_NAME"_s).Value().Text();
    if (drag.targetHas(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '%1' AND FIELD_NAME = '%2'"_s.arg(
            SQLQuote(file), SQLQuote(field))))
        return;
    boxes::inform(u"WARNING - The Column '%1' refers Field '%2' which does not exists in \n"
                  "File '%3' (refered to by Table '%4')."_s.arg(column, field, file, toTable));
}

} // namespace

bool modDragAndDrop::DragColumnsToTable(const DragItem& source, const DragItem& target, DragMode mode)
{
    CollectionDrag drag({"modDragAndDrop.DragColumnsToTable"}, source, target, mode);
    return drag.run([&] {
        const QStringList from = source.Keys.first(3);
        const QStringList to = target.Keys.first(3);
        if (isSameTable(source, target))
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Collumns collection in Datasource '%1', Database '%2' "
                        "Table '%3' to Datasource '%4', Database '%5', Table '%6'?"_s.arg(
                            from.at(0), from.at(1), from.at(2), to.at(0), to.at(1), to.at(2))))
            return false;
        drag.each(u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(
                      SQLQuote(from.at(1)), SQLQuote(from.at(2))),
                  u"Do you want to continue with the remainder of the Columns in this collection?"_s,
                  [&](const QString& column) {
                      return DragColumnToTable(dragItem(u"co"_s, from + QStringList{column}), dragItem(u"ta"_s, to),
                                               drag.mode(), drag.sourceDb(), drag.targetDb());
                  });
        return true;
    });
}

bool modDragAndDrop::DragColumnToTable(const DragItem& source, const DragItem& target, DragMode mode,
                                       dao::Database* sourceDb, dao::Database* targetDb)
{
    ItemDrag drag({"modDragAndDrop.DragColumnToTable"}, source, target, mode, sourceDb, targetDb);
    return drag.run([&] {
        const QStringList from = source.Keys.first(3);
        const QStringList to = target.Keys.first(3);
        const QString column = source.Keys.at(3);
        if (isSameTable(source, target))
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Column '%1' from Datasource '%2', Database '%3', Table '%4' "
                        "to Datasource '%5', Database & '%6', Table '%7'?"_s.arg(
                            column, from.at(0), from.at(1), from.at(2), to.at(0), to.at(1), to.at(2)),
                        u"Processing Column '%1'"_s.arg(column)))
            return false;

        const QString ofColumn = u"DATABASE_NAME = '%1' AND TABLE_NAME = '%2' AND COLUMN_NAME = '%3'"_s;
        const auto row = drag.fromSource(u"SELECT * FROM TW_COLUMN WHERE "_s +
                                         ofColumn.arg(SQLQuote(from.at(1)), SQLQuote(from.at(2)), SQLQuote(column)));
        if (!makeRoom(drag, to, bare(*row, u"COLUMN_TYPE"_s), bare(*row, u"COLUMN_NUMBER"_s)))
            return false;
        if (drag.targetHas(u"SELECT * FROM TW_COLUMN WHERE "_s +
                           ofColumn.arg(SQLQuote(to.at(1)), SQLQuote(to.at(2)), SQLQuote(column)))) {
            boxes::inform(u"Datasource '%1', Table '%2' already contains a Column called '%3'."_s.arg(
                to.at(0), to.at(2), column));
            return false;
        }
        warnOfMissingField(drag, to, column, row->Fields().Item(u"FIELD_NAME"_s).Value().Text());
        drag.toTarget(insertions::column(*row, to.at(1), to.at(2), bare));
        drag.afterMove(
            BuildDelete(u"TW_COLUMN"_s, ofColumn.arg(SQLQuote(from.at(1)), SQLQuote(from.at(2)), SQLQuote(column))));
        return drag.done();
    });
}
