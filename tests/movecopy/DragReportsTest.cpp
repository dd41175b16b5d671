// What the report of a failure tells, and what is refused before anything is written.
#include "MoveCopyFixture.h"

#include "frmTWErr.h"
#include "modDatabase.h"
#include "modDragAndDrop.h"

using namespace Qt::StringLiterals;

namespace
{

class DragReports : public MoveCopyTest
{
protected:
    DragItem database() const { return item(u"db"_s, {datasource, u"SALES"_s}); }
    DragItem table() const { return item(u"ta"_s, {datasource, u"SALES"_s, u"ORDERS"_s}); }
    DragItem parts() const { return item(u"ta"_s, {other, u"DEPOT"_s, u"PARTS"_s}); }
    DragItem depot() const { return item(u"db"_s, {other, u"DEPOT"_s}); }

    /// Lets each statement of a routine fail once and gives what the reports tell besides.
    QStringList reports(int count, const std::function<bool()>& routine)
    {
        QStringList told;
        for (int k = 1; k <= count; ++k) {
            statements.clear();
            statements.failAt(k);
            errors.expect(Press::Ignore);
            EXPECT_FALSE(routine());
            verify();
            told.append(errors.shown().back().additional);
            EXPECT_EQ(statements.statements().size(), k);
        }
        return told;
    }
    static QStringList laidOut(QStringList all)
    {
        for (QString& statement : all)
            statement = modDatabase::FormatSQL(statement);
        return all;
    }
};

} // namespace

TEST_F(DragReports, TellTheStatementThatFailed)
{
    EXPECT_EQ(
        reports(2, [&] { return modDragAndDrop::DragDBToDSN(database(), item(u"DSN"_s, {other}), DragMode::Move); }),
        laidOut({u"SELECT * FROM TW_DB WHERE DATABASE_NAME = 'SALES'"_s,
                 u"SELECT * FROM TW_DB WHERE DATABASE_NAME = 'SALES'"_s}));
    EXPECT_EQ(reports(3,
                      [&] {
                          return modDragAndDrop::DragFileToDSN(item(u"fi"_s, {datasource, u"PAYROLL"_s}),
                                                               item(u"FI"_s, {other}), DragMode::Move);
                      }),
              laidOut({u"SELECT * FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s,
                       u"SELECT * FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s,
                       u"INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, "
                       "REMARKS) VALUES ('PAYROLL', '', '12', 'INDEXED', 'FIXED', '')"_s}));
}

TEST_F(DragReports, ShowNoPasswordOfAnInsertThatFailed)
{
    change(u"UPDATE TW_USER SET USER_PASSWORD = 's''ecret' WHERE USER_NAME = 'CLERK'"_s);
    change(u"UPDATE TW_DBPRV SET DATABASE_USERNAME = 'DBA', DATABASE_PASSWORD = 'hush' WHERE USER_NAME = 'CLERK'"_s);
    const DragItem clerk = item(u"us"_s, {datasource, u"CLERK"_s});
    EXPECT_EQ(
        reports(3, [&] { return modDragAndDrop::DragUserToDSN(clerk, item(u"US"_s, {other}), DragMode::Move); }).back(),
        modDatabase::FormatSQL(
            u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES ('CLERK', '**********', '')"_s));
    EXPECT_TRUE(said().back().contains(u"'s''ecret'"_s));

    changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s);
    const DragItem privilege = item(u"dbprv"_s, {datasource, u"SALES"_s, u"CLERK"_s});
    EXPECT_EQ(
        reports(4, [&] { return modDragAndDrop::DragDBPRVToDB(privilege, depot(), DragMode::Move); }).back(),
        modDatabase::FormatSQL(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, "
                               "ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS) "
                               "VALUES ('CLERK', 'DEPOT', 'DBA', '**********', '0', '0', '0', '0', '', '')"_s));
    EXPECT_TRUE(said().back().contains(u"'hush'"_s));
}

TEST_F(DragReports, ShowNoPasswordWhenTheDriverItselfRefuses)
{
    change(u"UPDATE TW_USER SET USER_PASSWORD = 's''ecret' WHERE USER_NAME = 'CLERK'"_s);
    change(u"UPDATE TW_DBPRV SET DATABASE_USERNAME = 'DBA', DATABASE_PASSWORD = 'hush' WHERE USER_NAME = 'CLERK'"_s);
    for (const char* table : {"TW_USER", "TW_DBPRV"})
        changeOther(u"CREATE TRIGGER full_%1 BEFORE INSERT ON %1 "
                    "BEGIN SELECT RAISE(ABORT, 'database or disk is full'); END"_s.arg(QLatin1String(table)));
    const QStringList before = bothCatalogs();
    errors.expect(Press::Ignore);
    EXPECT_FALSE(
        modDragAndDrop::DragUserToDSN(item(u"us"_s, {datasource, u"CLERK"_s}), item(u"US"_s, {other}), DragMode::Move));
    EXPECT_TRUE(said().back().contains(u"'s''ecret'"_s));
    EXPECT_EQ(bothCatalogs(), before);

    change(u"UPDATE TW_DBPRV SET USER_NAME = 'ADMIN' WHERE USER_NAME = 'CLERK'"_s);
    errors.expect(Press::Ignore);
    EXPECT_FALSE(
        modDragAndDrop::DragDBPRVToDB(item(u"dbprv"_s, {datasource, u"SALES"_s, u"ADMIN"_s}), depot(), DragMode::Move));
    EXPECT_TRUE(said().back().contains(u"'hush'"_s));
    verify();
    ASSERT_EQ(errors.shown().size(), 2u);
    for (const auto& shown : errors.shown()) {
        EXPECT_TRUE(shown.description.contains(u"database or disk is full"_s)) << shown.description.toStdString();
        const QString all = shown.description + shown.additional + shown.callStack.join('\n');
        EXPECT_TRUE(all.contains(u"**********"_s));
        EXPECT_FALSE(all.contains(u"ecret"_s) || all.contains(u"hush"_s)) << all.toStdString();
    }
}

TEST_F(DragReports, OfATableWithoutItsNumberOfColumnsLeaveTheSource)
{
    change(u"UPDATE TW_TABLE SET NUMBER_COLUMNS = NULL WHERE TABLE_NAME = 'ORDERS'"_s);
    changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('PAYROLL')"_s);
    const QStringList before = bothCatalogs();
    errors.expect(Press::Ignore);
    EXPECT_FALSE(modDragAndDrop::DragTableToDB(table(), depot(), DragMode::Move));
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modDragAndDrop.DragTableToDB"_s);
    EXPECT_TRUE(said().back().endsWith(u"VALUES ('DEPOT', 'ORDERS', 'TABLE', 'PAYROLL', '', , '', '', '')"_s))
        << said().back().toStdString();
    EXPECT_EQ(bothCatalogs(), before);
}

TEST_F(DragReports, OfARowThatIsGoneFromTheSourceComeBeforeAnythingIsWritten)
{
    using namespace modDragAndDrop;
    changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s);
    const QString d = datasource;
    const QString gone = u"GONE"_s;
    const std::vector<std::pair<const char*, std::function<bool()>>> all{
        {"DragDBtoDSN",
         [&] {
             return DragDBToDSN(item(u"db"_s, {d, gone}), item(u"DSN"_s, {other}), DragMode::Move);
         }},
        {"DragTableToDB",
         [&] {
             return DragTableToDB(item(u"ta"_s, {d, u"SALES"_s, gone}), depot(), DragMode::Move);
         }},
        {"DragColumnToTable",
         [&] {
             return DragColumnToTable(item(u"co"_s, {d, u"SALES"_s, u"ORDERS"_s, gone}), parts(), DragMode::Move);
         }},
        {"DragUserToDSN",
         [&] {
             return DragUserToDSN(item(u"us"_s, {d, gone}), item(u"US"_s, {other}), DragMode::Move);
         }},
        {"DragDBPRVToDB",
         [&] {
             return DragDBPRVToDB(item(u"dbprv"_s, {d, gone, u"CLERK"_s}), depot(), DragMode::Move);
         }},
        {"DragTBLPRVToTable",
         [&] {
             return DragTBLPRVToTable(item(u"tblprv"_s, {d, u"SALES"_s, gone, u"CLERK"_s}), parts(), DragMode::Move);
         }},
    };
    const QStringList before = bothCatalogs();
    for (const auto& [routine, run] : all) {
        SCOPED_TRACE(routine);
        statements.clear();
        errors.expect(Press::Ignore);
        EXPECT_FALSE(run());
        verify();
        EXPECT_EQ(errors.shown().back().number, u"3021"_s);
        EXPECT_EQ(errors.shown().back().trappedIn, u"modDragAndDrop."_s + QLatin1String(routine));
        EXPECT_EQ(statements.writes(), QStringList());
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    }
    EXPECT_EQ(bothCatalogs(), before);
}

TEST_F(DragReports, OfATableThatIsGoneFromTheTargetComeBeforeTheColumnIsWritten)
{
    const QStringList before = bothCatalogs();
    errors.expect(Press::Ignore);
    EXPECT_FALSE(modDragAndDrop::DragColumnToTable(item(u"co"_s, {datasource, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s}),
                                                   parts(), DragMode::Move));
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"3021"_s);
    EXPECT_EQ(bothCatalogs(), before);
}

TEST_F(DragReports, AreNoneWhereASideHasNoConnection)
{
    using namespace modDragAndDrop;
    const QString third = datasource + u"Third"_s;
    world.addDatasource(third);
    const QString d = datasource;
    for (const bool isSource : {true, false}) {
        const QString from = isSource ? third : d;
        const QString to = isSource ? other : third;
        const DragItem toDatabase = item(u"db"_s, {to, u"B"_s});
        const DragItem toTable = item(u"ta"_s, {to, u"B"_s, u"T"_s});
        for (const DragMode mode : {DragMode::Move, DragMode::Copy}) {
            EXPECT_FALSE(DragDBsToDSN(item(u"DB"_s, {from}), item(u"DB"_s, {to}), mode));
            EXPECT_FALSE(DragDBToDSN(item(u"db"_s, {from, u"SALES"_s}), item(u"DB"_s, {to}), mode));
            EXPECT_FALSE(DragTablesToDB(item(u"TA"_s, {from, u"SALES"_s}), toDatabase, mode));
            EXPECT_FALSE(DragTableToDB(item(u"ta"_s, {from, u"SALES"_s, u"ORDERS"_s}), toDatabase, mode));
            EXPECT_FALSE(DragColumnsToTable(item(u"CO"_s, {from, u"SALES"_s, u"ORDERS"_s}), toTable, mode));
            EXPECT_FALSE(DragColumnToTable(item(u"co"_s, {from, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s}), toTable, mode));
            EXPECT_FALSE(DragUsersToDSN(item(u"US"_s, {from}), item(u"US"_s, {to}), mode));
            EXPECT_FALSE(DragUserToDSN(item(u"us"_s, {from, u"CLERK"_s}), item(u"US"_s, {to}), mode));
            EXPECT_FALSE(DragDBPRVsToDB(item(u"DBPRV"_s, {from, u"SALES"_s}), toDatabase, mode));
            EXPECT_FALSE(DragDBPRVToDB(item(u"dbprv"_s, {from, u"SALES"_s, u"CLERK"_s}), toDatabase, mode));
            EXPECT_FALSE(DragTBLPRVsToTable(item(u"TBLPRV"_s, {from, u"SALES"_s, u"ORDERS"_s}), toTable, mode));
            EXPECT_FALSE(
                DragTBLPRVToTable(item(u"tblprv"_s, {from, u"SALES"_s, u"ORDERS"_s, u"CLERK"_s}), toTable, mode));
        }
    }
    EXPECT_EQ(said(), QStringList());
}

TEST_F(DragReports, ACollectionAsksBeforeItMissesItsConnection)
{
    using namespace modDragAndDrop;
    const QString third = datasource + u"Third"_s;
    world.addDatasource(third);
    const auto asked = [this](const std::function<bool(DragMode)>& routine) {
        bool hasAsked = false;
        dialogs.expect(u"frmMoveCopy"_s, [&](DialogForm& dialog) {
            hasAsked = true;
            DialogScript::click(dialog, u"cmdMove"_s);
        });
        EXPECT_FALSE(routine(DragMode::Ask));
        EXPECT_TRUE(hasAsked);
        verify();
    };
    const DragItem toDatabase = item(u"db"_s, {third, u"B"_s});
    const DragItem toTable = item(u"ta"_s, {third, u"B"_s, u"T"_s});
    const QString d = datasource;
    asked([&](DragMode mode) { return DragFilesToDSN(item(u"FI"_s, {d}), item(u"FI"_s, {third}), mode); });
    asked([&](DragMode mode) {
        return DragFieldsToFile(item(u"FD"_s, {d, u"PAYROLL"_s}), item(u"fi"_s, {third, u"F"_s}), mode);
    });
    asked([&](DragMode mode) { return DragDBsToDSN(item(u"DB"_s, {d}), item(u"DB"_s, {third}), mode); });
    asked([&](DragMode mode) { return DragTablesToDB(item(u"TA"_s, {d, u"SALES"_s}), toDatabase, mode); });
    asked([&](DragMode mode) {
        return DragColumnsToTable(item(u"CO"_s, {d, u"SALES"_s, u"ORDERS"_s}), toTable, mode);
    });
    asked([&](DragMode mode) { return DragUsersToDSN(item(u"US"_s, {d}), item(u"US"_s, {third}), mode); });
    asked([&](DragMode mode) { return DragDBPRVsToDB(item(u"DBPRV"_s, {d, u"SALES"_s}), toDatabase, mode); });
    asked([&](DragMode mode) {
        return DragTBLPRVsToTable(item(u"TBLPRV"_s, {d, u"SALES"_s, u"ORDERS"_s}), toTable, mode);
    });

    // What is carried alone misses it first.
    EXPECT_FALSE(DragFileToDSN(item(u"fi"_s, {d, u"PAYROLL"_s}), item(u"FI"_s, {third}), DragMode::Ask));
    EXPECT_FALSE(
        DragFieldToFile(item(u"fd"_s, {d, u"PAYROLL"_s, u"SALARY"_s}), item(u"fi"_s, {third, u"F"_s}), DragMode::Ask));
    EXPECT_FALSE(DragDBToDSN(item(u"db"_s, {d, u"SALES"_s}), item(u"DB"_s, {third}), DragMode::Ask));
    EXPECT_FALSE(DragTableToDB(item(u"ta"_s, {d, u"SALES"_s, u"ORDERS"_s}), toDatabase, DragMode::Ask));
    EXPECT_FALSE(DragColumnToTable(item(u"co"_s, {d, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s}), toTable, DragMode::Ask));
    EXPECT_FALSE(DragUserToDSN(item(u"us"_s, {d, u"CLERK"_s}), item(u"US"_s, {third}), DragMode::Ask));
    EXPECT_FALSE(DragDBPRVToDB(item(u"dbprv"_s, {d, u"SALES"_s, u"CLERK"_s}), toDatabase, DragMode::Ask));
    EXPECT_FALSE(
        DragTBLPRVToTable(item(u"tblprv"_s, {d, u"SALES"_s, u"ORDERS"_s, u"CLERK"_s}), toTable, DragMode::Ask));
    EXPECT_EQ(said(), QStringList());
}
