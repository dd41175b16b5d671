// Moving and copying columns.
#include "modDragAndDrop.h"

#include "Boxes.h"
#include "Departures.h"
#include "DragRoutine.h"
#include "Insertions.h"
#include "NodeKeys.h"
#include "Recordset.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using insertions::text;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

/// Makes room for a column where another one has its type and number, if the user agrees. False if not.
bool makeRoom(ItemDrag& drag, const TablePath& to, const QString& type, const QString& number)
{
    QStringList taken;
    for (const auto columns =
             drag.fromTarget(u"SELECT * FROM TW_COLUMN WHERE DATABASE_NAME ='%1' AND TABLE_NAME = '%2' "
                             "AND COLUMN_TYPE = %3 AND COLUMN_NUMBER = %4 "_s.arg(SQLQuote(to.database),
                                                                                  SQLQuote(to.table), type, number));
         !columns->Eof(); columns->MoveNext())
        taken.append(text(*columns, u"COLUMN_NAME"_s));
    if (taken.isEmpty())
        return true;
    if (!boxes::ask(u"A column already exists is in Datasource '%1', Database '%2', Table '%3' "
                    "with a Column Type of %4 and a column number of %5\n"
                    "Do you want to overwrite it?"_s.arg(to.datasource, to.database, to.table, type, number)))
        return false;
    drag.toTarget(
        u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2' "
        "AND COLUMN_NUMBER = %3  AND COLUMN_TYPE = %4"_s.arg(SQLQuote(to.database), SQLQuote(to.table), number, type));
    for (const QString& column : taken)
        Departures::note(nodekeys::of(u"co"_s, to.below(u"co"_s, column).Keys));
    return true;
}

/// Warns of a column whose field the file of its new table lacks.
void warnOfMissingField(ItemDrag& drag, const TablePath& to, const QString& column, const QString& field)
{
    const auto files =
        drag.fromTarget(u"SELECT FILE_NAME FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(
            SQLQuote(to.database), SQLQuote(to.table)));
    const QString file = text(*files, u"FILE_NAME"_s);
    if (drag.targetHas(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '%1' AND FIELD_NAME = '%2'"_s.arg(
            SQLQuote(file), SQLQuote(field))))
        return;
    boxes::inform(u"WARNING - The Column '%1' refers Field '%2' which does not exists in \n"
                  "File '%3' (refered to by Table '%4')."_s.arg(column, field, file, to.table));
}

} // namespace

bool modDragAndDrop::DragColumnsToTable(const DragItem& source, const DragItem& target, DragMode mode)
{
    CollectionDrag drag({"modDragAndDrop.DragColumnsToTable"}, source, target, mode);
    return drag.run([&] {
        const TablePath from(source);
        const TablePath to(target);
        if (isSameTable(source, target))
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Collumns collection in Datasource '%1', Database '%2' "
                        "Table '%3' to Datasource '%4', Database '%5', Table '%6'?"_s.arg(
                            from.datasource, from.database, from.table, to.datasource, to.database, to.table)))
            return false;
        drag.each(u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(
                      SQLQuote(from.database), SQLQuote(from.table)),
                  u"Do you want to continue with the remainder of the Columns in this collection?"_s,
                  [&](const QString& column) {
                      return DragColumnToTable(from.below(u"co"_s, column), to.item(), drag.mode(), drag.sourceDb(),
                                               drag.targetDb());
                  });
        return true;
    });
}

bool modDragAndDrop::DragColumnToTable(const DragItem& source, const DragItem& target, DragMode mode,
                                       dao::Database* sourceDb, dao::Database* targetDb)
{
    ItemDrag drag("co", {"modDragAndDrop.DragColumnToTable"}, source, target, mode, sourceDb, targetDb);
    return drag.run([&] {
        const TablePath from(source);
        const TablePath to(target);
        const QString column = source.Keys.at(3);
        if (isSameTable(source, target))
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Column '%1' from Datasource '%2', Database '%3', Table '%4' "
                        "to Datasource '%5', Database & '%6', Table '%7'?"_s.arg(
                            column, from.datasource, from.database, from.table, to.datasource, to.database, to.table),
                        u"Processing Column '%1'"_s.arg(column)))
            return false;

        const QString ofColumn = u"DATABASE_NAME = '%1' AND TABLE_NAME = '%2' AND COLUMN_NAME = '%3'"_s;
        const QString there = ofColumn.arg(SQLQuote(to.database), SQLQuote(to.table), SQLQuote(column));
        const QString here = ofColumn.arg(SQLQuote(from.database), SQLQuote(from.table), SQLQuote(column));
        const auto row = drag.fromSource(u"SELECT * FROM TW_COLUMN WHERE "_s + here);
        if (!makeRoom(drag, to, text(*row, u"COLUMN_TYPE"_s), text(*row, u"COLUMN_NUMBER"_s)))
            return false;
        if (drag.targetHas(u"SELECT * FROM TW_COLUMN WHERE "_s + there)) {
            boxes::inform(u"Datasource '%1', Table '%2' already contains a Column called '%3'."_s.arg(
                to.datasource, to.table, column));
            return false;
        }
        warnOfMissingField(drag, to, column, text(*row, u"FIELD_NAME"_s));
        drag.toTarget(insertions::column(*row, to.database, to.table, text));
        drag.afterMove(BuildDelete(u"TW_COLUMN"_s, here));
        return drag.done();
    });
}
