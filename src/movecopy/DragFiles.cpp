// Moving and copying files and fields.
#include "modDragAndDrop.h"

#include "Boxes.h"
#include "DragRoutine.h"
#include "Insertions.h"
#include "Recordset.h"
#include "Settings.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using insertions::quoted;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

/// The files of a collection that go along: without the catalog's own, but for KEY, unless the user sees those too.
QString filesThatGo()
{
    if (settings::getNumber(u"Options"_s, u"SysTables"_s, 0) != 0)
        return u"SELECT FILE_NAME FROM TW_FILE "_s;
    return u"SELECT FILE_NAME FROM TW_FILE "
           "WHERE FILE_NAME NOT IN('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', 'LOCDT', 'SQLDT', "
           "'TABLE', 'TBLPRV', 'USER')"_s;
}

} // namespace

bool modDragAndDrop::DragFilesToDSN(const DragItem& source, const DragItem& target, DragMode mode)
{
    CollectionDrag drag({"modDragAndDrop.DragFilesToDSN"}, source, target, mode);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString to = target.Keys.at(0);
        if (from == to)
            return false;
        if (!drag.begin(
                u"Do you want to Move or Copy the Files collection in Datasource '%1' to Datasource '%2'?"_s.arg(from,
                                                                                                                 to)))
            return false;
        drag.each(filesThatGo(), u"Do you want to continue with the remainder of the Files in this collection?"_s,
                  [&](const QString& file) {
                      return DragFileToDSN(dragItem(u"fi"_s, {from, file}), dragItem(u"FI"_s, {to}), drag.mode(),
                                           drag.sourceDb(), drag.targetDb());
                  });
        return true;
    });
}

bool modDragAndDrop::DragFileToDSN(const DragItem& source, const DragItem& target, DragMode mode,
                                   dao::Database* sourceDb, dao::Database* targetDb)
{
    ItemDrag drag("fi", {"modDragAndDrop.DragFileToDSN"}, source, target, mode, sourceDb, targetDb);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString file = source.Keys.at(1);
        const QString to = target.Keys.at(0);
        if (from == to)
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the File '%1' from Datasource '%2' to Datasource '%3'?"_s.arg(
                            file, from, to),
                        u"Processing File '%1'"_s.arg(file)))
            return false;

        const QString ofFile = u"FILE_NAME = '%1'"_s.arg(SQLQuote(file));
        const QString select = u"SELECT * FROM TW_FILE WHERE "_s + ofFile;
        if (drag.targetHas(select)) {
            boxes::inform(u"Datasource '%1' already contains a File called '%2'!"_s.arg(to, file));
            return false;
        }
        const auto row = drag.fromSource(select);
        drag.toTarget(u"INSERT INTO TW_FILE "
                      "(FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
                      "VALUES ('%1', '%2', '%3', '%4', '%5', '%6')"_s.arg(
                          quoted(*row, u"FILE_NAME"_s), quoted(*row, u"OPEN_STRING"_s), quoted(*row, u"RECORD_SIZE"_s),
                          quoted(*row, u"FILE_ORGANISATION"_s), quoted(*row, u"RECORD_TYPE"_s),
                          quoted(*row, u"REMARKS"_s)));
        DragFieldsToFile(dragItem(u"FD"_s, {from, file}), dragItem(u"fi"_s, {to, file}), drag.mode());

        // The fields go with the file, those too that stayed behind.
        drag.afterMove(BuildDelete(u"TW_FILE"_s, ofFile));
        drag.afterMove(BuildDelete(u"TW_FIELD"_s, ofFile));
        return drag.done();
    });
}

bool modDragAndDrop::DragFieldsToFile(const DragItem& source, const DragItem& target, DragMode mode)
{
    CollectionDrag drag({"modDragAndDrop.DragFieldsToFile"}, source, target, mode);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString file = source.Keys.at(1);
        const QString to = target.Keys.at(0);
        const QString toFile = target.Keys.at(1);
        if (!drag.begin(u"Do you want to Move or Copy the Fields collection in Datasource '%1', File '%2' "
                        "to the Datasource '%3', File '%4'?"_s.arg(from, file, to, toFile)))
            return false;
        drag.each(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '%1'"_s.arg(SQLQuote(file)),
                  u"Do you want to continue with the remainder of the Fields in this collection?"_s,
                  [&](const QString& field) {
                      return DragFieldToFile(dragItem(u"fd"_s, {from, file, field}), dragItem(u"fi"_s, {to, toFile}),
                                             drag.mode(), drag.sourceDb(), drag.targetDb());
                  });
        return true;
    });
}

bool modDragAndDrop::DragFieldToFile(const DragItem& source, const DragItem& target, DragMode mode,
                                     dao::Database* sourceDb, dao::Database* targetDb)
{
    ItemDrag drag("fd", {"modDragAndDrop.DragFieldToFile"}, source, target, mode, sourceDb, targetDb);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString file = source.Keys.at(1);
        const QString field = source.Keys.at(2);
        const QString to = target.Keys.at(0);
        const QString toFile = target.Keys.at(1);
        if (!drag.begin(u"Do you want to Move or Copy the Field '%1' in Datasource '%2', File '%3' "
                        "to Datasource '%4', File '%5'?"_s.arg(field, from, file, to, toFile),
                        u"Processing Field '%1'"_s.arg(field)))
            return false;

        const QString ofField = u"FILE_NAME = '%1' AND FIELD_NAME = '%2'"_s;
        const QString there = ofField.arg(SQLQuote(toFile), SQLQuote(field));
        const QString here = ofField.arg(SQLQuote(file), SQLQuote(field));
        if (drag.targetHas(u"SELECT * FROM TW_FIELD WHERE "_s + there)) {
            boxes::inform(
                u"Datasource '%1', File '%2' already contains a field called  '%3'!"_s.arg(to, toFile, field));
            return false;
        }
        const auto row = drag.fromSource(u"SELECT * FROM TW_FIELD WHERE "_s + here);
        drag.toTarget(insertions::field(*row, toFile, insertions::text));
        drag.afterMove(BuildDelete(u"TW_FIELD"_s, here));
        return drag.done();
    });
}
