// Connections that the caller has: the names of the datasources then say nothing of where rows come from or go to.
#include "MoveCopyFixture.h"

#include "CConnections.h"
#include "modDragAndDrop.h"

using namespace Qt::StringLiterals;
using namespace modDragAndDrop;

namespace
{

class HandedOver : public MoveCopyTest
{
protected:
    void SetUp() override
    {
        MoveCopyTest::SetUp();
        world.addDatasource(third);
        changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('PAYROLL')"_s);
        changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) VALUES ('PAYROLL', 'SALARY')"_s);
        changeOther(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('B', 'T', 'PAYROLL')"_s);
        changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s);
        change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('ZOE')"_s);
    }

    /// Copies one object of each kind from one datasource to another, as far as their names go, and gives what the
    /// other catalog then has more.
    QStringList copyEach(const QString& from, const QString& to, dao::Database* sourceDb, dao::Database* targetDb)
    {
        using Single = bool (*)(const DragItem&, const DragItem&, DragMode, dao::Database*, dao::Database*);
        struct Drag {
            Single routine;
            DragItem source;
            DragItem target;
        };
        const DragItem table = item(u"ta"_s, {to, u"B"_s, u"T"_s});
        const std::vector<Drag> all{
            {DragFileToDSN, item(u"fi"_s, {from, u"EMPTY"_s}), item(u"FI"_s, {to})},
            {DragFieldToFile, item(u"fd"_s, {from, u"PAYROLL"_s, u"BONUS"_s}), item(u"fi"_s, {to, u"EMPTY"_s})},
            {DragDBToDSN, item(u"db"_s, {from, u"SALES"_s}), item(u"DB"_s, {to})},
            {DragTableToDB, item(u"ta"_s, {from, u"SALES"_s, u"ORDERS"_s}), item(u"db"_s, {to, u"B"_s})},
            {DragColumnToTable, item(u"co"_s, {from, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s}), table},
            {DragUserToDSN, item(u"us"_s, {from, u"ZOE"_s}), item(u"US"_s, {to})},
            {DragDBPRVToDB, item(u"dbprv"_s, {from, u"SALES"_s, u"CLERK"_s}), item(u"db"_s, {to, u"B"_s})},
            {DragTBLPRVToTable, item(u"tblprv"_s, {from, u"SALES"_s, u"ORDERS"_s, u"CLERK"_s}), table},
        };
        const QStringList before = bothCatalogs();
        for (const Drag& drag : all)
            EXPECT_TRUE(drag.routine(drag.source, drag.target, DragMode::Copy, sourceDb, targetDb))
                << drag.source.NodeType.toStdString();
        verify();
        QStringList after = bothCatalogs();
        for (const QString& row : before)
            EXPECT_TRUE(after.removeOne(row)) << row.toStdString();
        return after;
    }

    static dao::Database* databaseOf(const QString& side) { return CConnections::instance().find(side)->db(); }

    /// A datasource that nothing connects to.
    const QString third = u"HandedOverThird"_s;
    const QStringList copies{u"T TW_FILE EMPTY||0|RELATIVE|FIXED|"_s,
                             u"T TW_FIELD EMPTY|3|BONUS|CHARACTER|4|4|0|0|0|||"_s,
                             u"T TW_DB SALES||DISAM||||"_s,
                             u"T TW_TABLE B|ORDERS|TABLE|PAYROLL||0|||"_s,
                             u"T TW_COLUMN B|T|2|AMOUNT|SALARY||0|0|0|0|0|0|0|0|0|0|0|0|||0|0|"_s,
                             u"T TW_USER ZOE||"_s,
                             u"T TW_DBPRV CLERK|B|||0|0|0|0||"_s,
                             u"T TW_TBLPRV B|T|CLERK|0|0|0|0|"_s};
};

} // namespace

TEST_F(HandedOver, ATargetIsNotLookedUp)
{
    EXPECT_EQ(copyEach(datasource, third, nullptr, databaseOf(other)), copies);
    EXPECT_EQ(CConnections::instance().find(third), nullptr);
}

TEST_F(HandedOver, ASourceIsNotLookedUp)
{
    EXPECT_EQ(copyEach(third, other, databaseOf(datasource), nullptr), copies);
    EXPECT_EQ(CConnections::instance().find(third), nullptr);
}
