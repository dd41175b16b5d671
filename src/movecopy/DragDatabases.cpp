// Moving and copying databases and tables.
#include "modDragAndDrop.h"

#include "Boxes.h"
#include "DragRoutine.h"
#include "Insertions.h"
#include "Recordset.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

bool modDragAndDrop::DragDBsToDSN(const DragItem& source, const DragItem& target, DragMode mode)
{
    CollectionDrag drag({"modDragAndDrop.DragDBsToDSN"}, source, target, mode);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString to = target.Keys.at(0);
        if (from == to)
            return false;
        if (!drag.begin(
                u"Do you want to Move or Copy the Database collection in Datasource '%1' to Datasource '%2'?"_s.arg(
                    from, to)))
            return false;
        // The catalog's own database goes along and is refused by the target's.
        drag.each(u"SELECT DATABASE_NAME FROM TW_DB "_s,
                  u"Do you want to continue with the remainder of the Databases in this collection?"_s,
                  [&](const QString& database) {
                      return DragDBToDSN(dragItem(u"DB"_s, {from, database}), dragItem(u"DSN"_s, {to}), drag.mode(),
                                         drag.sourceDb(), drag.targetDb());
                  });
        return true;
    });
}

bool modDragAndDrop::DragDBToDSN(const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb,
                                 dao::Database* targetDb)
{
    ItemDrag drag("db", {"modDragAndDrop.DragDBToDSN", "modDragAndDrop.DragDBtoDSN"}, source, target, mode, sourceDb,
                  targetDb);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString database = source.Keys.at(1);
        const QString to = target.Keys.at(0);
        if (from == to)
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Database '%1' from Datasource '%2 to Datasource '%3'?"_s.arg(
                            database, from, to),
                        u"Processing Database '%1'"_s.arg(database)))
            return false;

        const QString select = u"SELECT * FROM TW_DB WHERE DATABASE_NAME = '%1'"_s.arg(SQLQuote(database));
        if (drag.targetHas(select)) {
            boxes::inform(u"Datasource '%1' already contains a Database called '%2'!"_s.arg(to, database));
            return false;
        }
        const auto row = drag.fromSource(select);
        drag.toTarget(insertions::database(*row, database));
        // The privileges on the database stay behind.
        DragTablesToDB(dragItem(u"TA"_s, {from, database}), dragItem(u"DB"_s, {to, database}), drag.mode());
        drag.afterMove(BuildDelete(u"TW_DB"_s, u"DATABASE_NAME = '%1'"_s.arg(SQLQuote(database))));
        return drag.done();
    });
}

bool modDragAndDrop::DragTablesToDB(const DragItem& source, const DragItem& target, DragMode mode)
{
    CollectionDrag drag({"modDragAndDrop.DragTablesToDB"}, source, target, mode);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString database = source.Keys.at(1);
        const QString to = target.Keys.at(0);
        const QString toDatabase = target.Keys.at(1);
        if (from == to && database == toDatabase)
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Table collection in Datasource '%1', Database '%2' "
                        "to Datasource '%3', Database '%4'?"_s.arg(from, database, to, toDatabase)))
            return false;
        drag.each(u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = '%1'"_s.arg(SQLQuote(database)),
                  u"Do you want to continue with the remainder of the Tables in this collection?"_s,
                  [&](const QString& table) {
                      return DragTableToDB(dragItem(u"ta"_s, {from, database, table}),
                                           dragItem(u"DB"_s, {to, toDatabase}), drag.mode(), drag.sourceDb(),
                                           drag.targetDb());
                  });
        return true;
    });
}

bool modDragAndDrop::DragTableToDB(const DragItem& source, const DragItem& target, DragMode mode,
                                   dao::Database* sourceDb, dao::Database* targetDb)
{
    ItemDrag drag("ta", {"modDragAndDrop.DragTableToDB"}, source, target, mode, sourceDb, targetDb);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString database = source.Keys.at(1);
        const QString table = source.Keys.at(2);
        const QString to = target.Keys.at(0);
        const QString toDatabase = target.Keys.at(1);
        if (from == to && database == toDatabase)
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Table '%1' in Datasource '%2', Database '%3' "
                        "to the Database '%4' in  the Datasource '%5'?"_s.arg(table, from, database, toDatabase, to),
                        u"Processing Table '%1'"_s.arg(table)))
            return false;

        const QString select = u"SELECT * FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s;
        if (drag.targetHas(select.arg(SQLQuote(toDatabase), SQLQuote(table)))) {
            boxes::inform(
                u"Database '%1' in Datasource '%2' already contains a Table called '%3'!"_s.arg(toDatabase, to, table));
            return false;
        }
        const auto row = drag.fromSource(select.arg(SQLQuote(database), SQLQuote(table)));
        // A table may reach a catalog before its file.
        const QString file = insertions::text(*row, u"FILE_NAME"_s);
        if (!drag.targetHas(u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = '%1'"_s.arg(SQLQuote(file))))
            boxes::inform(u"WARNING - Table '%1' refrences File '%2'\n"
                          "which has not been defined in Datasource '%3'."_s.arg(table, file, to));
        drag.toTarget(insertions::table(*row, toDatabase, table, insertions::text));

        const DragItem children = dragItem(u"CO"_s, {from, database, table});
        const DragItem owner = dragItem(u"ta"_s, {to, toDatabase, table});
        DragColumnsToTable(children, owner, drag.mode());
        DragTBLPRVsToTable(children, owner, drag.mode());
        drag.afterMove(BuildDelete(
            u"TW_TABLE"_s, u"DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(SQLQuote(database), SQLQuote(table))));
        return drag.done();
    });
}
