// What the status line tells while something is carried, and behind it.
#include "MoveCopyFixture.h"

#include "modDragAndDrop.h"

#include <tuple>

using namespace Qt::StringLiterals;
using namespace modDragAndDrop;

namespace
{

using DragStatus = MoveCopyTest;

} // namespace

TEST_F(DragStatus, TellsWhatIsBeingCarried)
{
    using Single = bool (*)(const DragItem&, const DragItem&, DragMode, dao::Database*, dao::Database*);
    const QString d = datasource;
    const std::vector<std::tuple<Single, DragItem, DragItem, QString>> all{
        {DragFileToDSN, item(u"fi"_s, {d, u"PAYROLL"_s}), item(u"FI"_s, {other}), u"Processing File 'PAYROLL'"_s},
        {DragFieldToFile, item(u"fd"_s, {d, u"PAYROLL"_s, u"SALARY"_s}), item(u"fi"_s, {other, u"F"_s}),
         u"Processing Field 'SALARY'"_s},
        {DragDBToDSN, item(u"db"_s, {d, u"SALES"_s}), item(u"DB"_s, {other}), u"Processing Database 'SALES'"_s},
        {DragTableToDB, item(u"ta"_s, {d, u"SALES"_s, u"ORDERS"_s}), item(u"db"_s, {other, u"B"_s}),
         u"Processing Table 'ORDERS'"_s},
        {DragColumnToTable, item(u"co"_s, {d, u"SALES"_s, u"ORDERS"_s, u"BUYER"_s}),
         item(u"ta"_s, {other, u"B"_s, u"T"_s}), u"Processing Column 'BUYER'"_s},
        {DragUserToDSN, item(u"us"_s, {d, u"CLERK"_s}), item(u"US"_s, {other}), u"Processing User 'CLERK'"_s},
        {DragDBPRVToDB, item(u"dbprv"_s, {d, u"SALES"_s, u"ADMIN"_s}), item(u"db"_s, {other, u"B"_s}),
         u"Processing User 'ADMIN'"_s},
        {DragTBLPRVToTable, item(u"tblprv"_s, {d, u"SALES"_s, u"ORDERS"_s, u"CLERK"_s}),
         item(u"ta"_s, {other, u"B"_s, u"T"_s}), u"Processing User 'CLERK'"_s},
    };
    for (const auto& [routine, source, target, status] : all) {
        statements.clear();
        statements.failAt(1);
        errors.expect([this, status = status](QWidget& form) {
            EXPECT_EQ(statusText(), status);
            ScriptedErrorForm::press(form, Press::Ignore);
        });
        EXPECT_FALSE(routine(source, target, DragMode::Copy, nullptr, nullptr));
        verify();
    }
}

TEST_F(DragStatus, IsReadyAtTheEndOfEveryRoutine)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('DEPOT', 'PARTS', 'PAYROLL')"_s);
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('ZOE')"_s);
    // What every catalog has would be refused, and a special column has no field.
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'KEY'"_s);
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'ADMIN'"_s);
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'TW'"_s);
    change(u"DELETE FROM TW_COLUMN WHERE COLUMN_NAME = 'RFA'"_s);
    const QString d = datasource;
    const DragItem orders = item(u"ta"_s, {d, u"SALES"_s, u"ORDERS"_s});
    const std::vector<std::function<bool()>> all{
        [&] {
            return DragFileToDSN(item(u"fi"_s, {d, u"EMPTY"_s}), item(u"FI"_s, {other}), DragMode::Move);
        },
        [&] { return DragFilesToDSN(item(u"FI"_s, {d}), item(u"FI"_s, {other}), DragMode::Copy); },
        [&] {
            return DragFieldToFile(item(u"fd"_s, {d, u"PAYROLL"_s, u"BONUS"_s}), item(u"fi"_s, {other, u"EMPTY"_s}),
                                   DragMode::Move);
        },
        [&] {
            return DragFieldsToFile(item(u"FD"_s, {d, u"PAYROLL"_s}), item(u"fi"_s, {other, u"EMPTY"_s}),
                                    DragMode::Copy);
        },
        [&] {
            return DragUserToDSN(item(u"us"_s, {d, u"ZOE"_s}), item(u"US"_s, {other}), DragMode::Move);
        },
        [&] { return DragUsersToDSN(item(u"US"_s, {d}), item(u"US"_s, {other}), DragMode::Copy); },
        [&] {
            return DragDBToDSN(item(u"db"_s, {d, u"DEPOT"_s}), item(u"DB"_s, {other}), DragMode::Move);
        },
        [&] { return DragDBsToDSN(item(u"DB"_s, {d}), item(u"DB"_s, {other}), DragMode::Copy); },
        [&] {
            return DragTablesToDB(item(u"TA"_s, {d, u"SALES"_s}), item(u"db"_s, {other, u"B"_s}), DragMode::Copy);
        },
        [&] {
            return DragTableToDB(orders, item(u"db"_s, {other, u"C"_s}), DragMode::Copy);
        },
    };
    for (const auto& routine : all) {
        window->Status(u"other"_s);
        EXPECT_TRUE(routine());
        EXPECT_EQ(statusText(), u"Ready"_s);
    }
}
