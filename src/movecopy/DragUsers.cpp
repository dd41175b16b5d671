// Moving and copying users and their privileges.
#include "modDragAndDrop.h"

#include "Boxes.h"
#include "DragRoutine.h"
#include "Insertions.h"
#include "Passwords.h"
#include "Recordset.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using insertions::quoted;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

/// Whether the target knows the user whom a privilege is for; if not, a box says so.
bool isUserThere(ItemDrag& drag, const QString& to, const QString& user)
{
    if (drag.targetHas(u"SELECT * FROM TW_USER WHERE USER_NAME = '%1'"_s.arg(SQLQuote(user))))
        return true;
    boxes::inform(u"Datasource '%1' does not contain the User '%2'."_s.arg(to, user));
    return false;
}

const QString sameDatasource = u"The source and the destination Datasources are the same"_s;

} // namespace

bool modDragAndDrop::DragUsersToDSN(const DragItem& source, const DragItem& target, DragMode mode)
{
    CollectionDrag drag({"modDragAndDrop.DragUsersToDSN"}, source, target, mode);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString to = target.Keys.at(0);
        if (isSameSide(source, target, 1, sameDatasource))
            return false;
        if (!drag.begin(
                u"Do you want to Move or Copy the Users collection in Datasource '%1' to the Datasource '%2'?"_s.arg(
                    from, to)))
            return false;
        // ADMIN goes along and is refused by the target's.
        drag.each(u"SELECT USER_NAME FROM TW_USER "_s,
                  u"Do you want to continue with the remainder of the Users in this collection?"_s,
                  [&](const QString& user) {
                      return DragUserToDSN(dragItem(u"us"_s, {from, user}), dragItem(u"DSN"_s, {to}), drag.mode(),
                                           drag.sourceDb(), drag.targetDb());
                  });
        return true;
    });
}

bool modDragAndDrop::DragUserToDSN(const DragItem& source, const DragItem& target, DragMode mode,
                                   dao::Database* sourceDb, dao::Database* targetDb)
{
    ItemDrag drag("us", {"modDragAndDrop.DragUserToDSN"}, source, target, mode, sourceDb, targetDb);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString user = source.Keys.at(1);
        const QString to = target.Keys.at(0);
        if (isSameSide(source, target, 1, sameDatasource))
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the User '%1' from Datasource '%2' to Datasource '%3'?"_s.arg(
                            user, from, to),
                        u"Processing User '%1'"_s.arg(user)))
            return false;

        const QString select = u"SELECT * FROM TW_USER WHERE USER_NAME = '%1'"_s.arg(SQLQuote(user));
        if (drag.targetHas(select)) {
            boxes::inform(u"Datasource '%1' already contains a User called '%2'!"_s.arg(to, user));
            return false;
        }
        const auto row = drag.fromSource(select);
        const auto insertion = [&](const QString& password) {
            return u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES ('%1', '%2', '%3')"_s.arg(
                quoted(*row, u"USER_NAME"_s), password, quoted(*row, u"REMARKS"_s));
        };
        drag.toTarget(insertion(quoted(*row, u"USER_PASSWORD"_s)), insertion(passwords::mask()));
        drag.afterMove(BuildDelete(u"TW_USER"_s, u"USER_NAME = '%1'"_s.arg(SQLQuote(user))));
        return drag.done();
    });
}

bool modDragAndDrop::DragDBPRVsToDB(const DragItem& source, const DragItem& target, DragMode mode)
{
    CollectionDrag drag({"modDragAndDrop.DragDBPRVsToDB"}, source, target, mode);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString database = source.Keys.at(1);
        const QString to = target.Keys.at(0);
        const QString toDatabase = target.Keys.at(1);
        if (isSameSide(source, target, 2, u"The source and the destination Datasource are the same"_s))
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Users Database Privileges collection in Datasource '%1', "
                        "Database '%2' to the Datasource '%3'?\n\n"
                        "NOTE: For security reasons, the passwords field will be set blank in the new entries."_s.arg(
                            from, database, to)))
            return false;
        drag.each(u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = '%1'"_s.arg(SQLQuote(database)),
                  u"Do you want to continue with the remainder of the User Privileges in this collection?"_s,
                  [&](const QString& user) {
                      return DragDBPRVToDB(dragItem(u"dbprv"_s, {from, database, user}),
                                           dragItem(u"dbprv"_s, {to, toDatabase, user}), drag.mode(), drag.sourceDb(),
                                           drag.targetDb());
                  });
        return true;
    });
}

bool modDragAndDrop::DragDBPRVToDB(const DragItem& source, const DragItem& target, DragMode mode,
                                   dao::Database* sourceDb, dao::Database* targetDb)
{
    ItemDrag drag("dbprv", {"modDragAndDrop.DragDBPRVToDB"}, source, target, mode, sourceDb, targetDb);
    return drag.run([&] {
        const QString from = source.Keys.at(0);
        const QString database = source.Keys.at(1);
        const QString user = source.Keys.at(2);
        const QString to = target.Keys.at(0);
        const QString toDatabase = target.Keys.at(1);
        if (isSameSide(source, target, 2, u"The source and the destination Database are the same"_s))
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Database User Privileges for User '%1' from Datasource '%2', "
                        "Database '%3' to Datasource '%4', Database '%5'?\n\n"
                        "NOTE: For security reasons, the password field will be set to blank in the new entry."_s.arg(
                            user, from, database, to, toDatabase),
                        u"Processing User '%1'"_s.arg(user)))
            return false;

        const QString select = u"SELECT * FROM TW_DBPRV WHERE USER_NAME = '%1' AND DATABASE_NAME = '%2'"_s;
        if (drag.targetHas(select.arg(SQLQuote(user), SQLQuote(toDatabase)))) {
            boxes::inform(
                u"Datasource '%1', Database '%2' already contains a User Database Privilege for User '%3'!"_s.arg(
                    to, toDatabase, user));
            return false;
        }
        if (!isUserThere(drag, to, user))
            return false;
        const auto row = drag.fromSource(select.arg(SQLQuote(user), SQLQuote(database)));
        const auto insertion = [&](const QString& password) {
            return u"INSERT INTO TW_DBPRV "
                   "(USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, ALLOW_INSERT, "
                   "ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS) "
                   "VALUES ('%1', '%2', '%3', '%4', '%5', '%6', '%7', '%8', '%9', '%10')"_s.arg(
                       quoted(*row, u"USER_NAME"_s), SQLQuote(toDatabase), quoted(*row, u"DATABASE_USERNAME"_s),
                       password, quoted(*row, u"ALLOW_SELECT"_s), quoted(*row, u"ALLOW_INSERT"_s),
                       quoted(*row, u"ALLOW_UPDATE"_s), quoted(*row, u"ALLOW_DELETE"_s),
                       quoted(*row, u"SECURITY_LEVEL"_s), quoted(*row, u"REMARKS"_s));
        };
        drag.toTarget(insertion(quoted(*row, u"DATABASE_PASSWORD"_s)), insertion(passwords::mask()));
        drag.afterMove(BuildDelete(
            u"TW_DBPRV"_s, u"USER_NAME = '%1' AND DATABASE_NAME = '%2'"_s.arg(SQLQuote(user), SQLQuote(database))));
        return drag.done();
    });
}

bool modDragAndDrop::DragTBLPRVsToTable(const DragItem& source, const DragItem& target, DragMode mode)
{
    CollectionDrag drag({"modDragAndDrop.DragTBLPRVsToTable"}, source, target, mode);
    return drag.run([&] {
        const TablePath from(source);
        const TablePath to(target);
        if (isSameTable(source, target))
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Users Tables Privileges collection in Datasource '%1', "
                        "Database '%2', Table '%3' to the Datasource '%4', Database '%5', Table '%6'?"_s.arg(
                            from.datasource, from.database, from.table, to.datasource, to.database, to.table)))
            return false;
        drag.each(u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(
                      SQLQuote(from.database), SQLQuote(from.table)),
                  u"Do you want to continue with the remainder of the Table Privileges in this collection?"_s,
                  [&](const QString& user) {
                      return DragTBLPRVToTable(from.below(u"tblprv"_s, user), to.below(u"tblprv"_s, user), drag.mode(),
                                               drag.sourceDb(), drag.targetDb());
                  });
        return true;
    });
}

bool modDragAndDrop::DragTBLPRVToTable(const DragItem& source, const DragItem& target, DragMode mode,
                                       dao::Database* sourceDb, dao::Database* targetDb)
{
    ItemDrag drag("tblprv", {"modDragAndDrop.DragTBLPRVToTable"}, source, target, mode, sourceDb, targetDb);
    return drag.run([&] {
        const TablePath from(source);
        const TablePath to(target);
        const QString user = source.Keys.at(3);
        if (isSameTable(source, target))
            return false;
        if (!drag.begin(u"Do you want to Move or Copy the Table User Privileges for User '%1' from Datasource '%2', "
                        "Database '%3', Table '%4' to Datasource '%5', Database '%6' Table '%7'?"_s.arg(
                            user, from.datasource, from.database, from.table, to.datasource, to.database, to.table),
                        u"Processing User '%1'"_s.arg(user)))
            return false;

        const QString select =
            u"SELECT * FROM TW_TBLPRV WHERE USER_NAME = '%1' AND DATABASE_NAME = '%2' AND TABLE_NAME = '%3'"_s;
        if (drag.targetHas(select.arg(SQLQuote(user), SQLQuote(to.database), SQLQuote(to.table)))) {
            boxes::inform(
                u"Datasource '%1', Database '%2', Table '%3' contains a User Table Privilege for User '%4'!"_s.arg(
                    to.datasource, to.database, to.table, user));
            return false;
        }
        if (!isUserThere(drag, to.datasource, user))
            return false;
        const auto row = drag.fromSource(select.arg(SQLQuote(user), SQLQuote(from.database), SQLQuote(from.table)));
        drag.toTarget(u"INSERT INTO TW_TBLPRV "
                      "(DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, "
                      "REMARKS) "
                      "VALUES ('%1', '%2', '%3', '%4', '%5', '%6', '%7', '%8')"_s.arg(
                          SQLQuote(to.database), SQLQuote(to.table), quoted(*row, u"USER_NAME"_s),
                          quoted(*row, u"ALLOW_SELECT"_s), quoted(*row, u"ALLOW_INSERT"_s),
                          quoted(*row, u"ALLOW_UPDATE"_s), quoted(*row, u"ALLOW_DELETE"_s),
                          quoted(*row, u"REMARKS"_s)));
        drag.afterMove(
            BuildDelete(u"TW_TBLPRV"_s, u"USER_NAME = '%1' AND DATABASE_NAME = '%2' AND TABLE_NAME = '%3'"_s.arg(
                                            SQLQuote(user), SQLQuote(from.database), SQLQuote(from.table))));
        return drag.done();
    });
}
