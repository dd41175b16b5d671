// What may stay within one datasource: columns and privileges.
#include "MoveCopyFixture.h"

#include "modDragAndDrop.h"

using namespace Qt::StringLiterals;
using namespace modDragAndDrop;

namespace
{

class DragWithin : public MoveCopyTest
{
protected:
    void SetUp() override
    {
        MoveCopyTest::SetUp();
        change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s);
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('DEPOT', 'PARTS', 'PAYROLL')"_s);
        change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('ZOE')"_s);
        change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('ZOE', 'SALES')"_s);
        change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', 'ZOE')"_s);
        statements.clear();
    }

    QStringList sales(const QString& table) const { return rowsOf(datasource, table, u"DATABASE_NAME = 'SALES'"_s); }
    QStringList depot(const QString& table) const { return rowsOf(datasource, table, u"DATABASE_NAME = 'DEPOT'"_s); }
    /// Rows as they stand when SALES has become DEPOT, and ORDERS PARTS.
    static QStringList moved(QStringList rows)
    {
        return rows.replaceInStrings(u"SALES"_s, u"DEPOT"_s).replaceInStrings(u"ORDERS"_s, u"PARTS"_s);
    }
    DragItem depotItem() const { return item(u"db"_s, {datasource, u"DEPOT"_s}); }
    DragItem partsItem() const { return item(u"ta"_s, {datasource, u"DEPOT"_s, u"PARTS"_s}); }
};

} // namespace

TEST_F(DragWithin, AColumnMovesToAnotherTable)
{
    const QString ofAmount = u"COLUMN_NAME = 'AMOUNT'"_s;
    const QStringList row = rowsOf(datasource, u"TW_COLUMN"_s, ofAmount);
    EXPECT_TRUE(DragColumnToTable(item(u"co"_s, {datasource, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s}), partsItem(),
                                  DragMode::Move));
    EXPECT_EQ(rowsOf(datasource, u"TW_COLUMN"_s, ofAmount), moved(row));
    EXPECT_TRUE(said().filter(u"T: "_s).isEmpty());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DragWithin, APrivilegeMovesToAnotherDatabase)
{
    const QStringList rows = sales(u"TW_DBPRV"_s);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_TRUE(DragDBPRVToDB(item(u"dbprv"_s, {datasource, u"SALES"_s, u"ZOE"_s}), depotItem(), DragMode::Move));
    EXPECT_EQ(depot(u"TW_DBPRV"_s), moved(rows.filter(u"ZOE"_s)));
    EXPECT_EQ(sales(u"TW_DBPRV"_s), rows.filter(u"CLERK"_s));
    EXPECT_TRUE(said().filter(u"T: "_s).isEmpty());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DragWithin, APrivilegeMovesToAnotherTable)
{
    const QStringList rows = sales(u"TW_TBLPRV"_s);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_TRUE(DragTBLPRVToTable(item(u"tblprv"_s, {datasource, u"SALES"_s, u"ORDERS"_s, u"ZOE"_s}), partsItem(),
                                  DragMode::Move));
    EXPECT_EQ(depot(u"TW_TBLPRV"_s), moved(rows.filter(u"ZOE"_s)));
    EXPECT_EQ(sales(u"TW_TBLPRV"_s), rows.filter(u"CLERK"_s));
    EXPECT_TRUE(said().filter(u"T: "_s).isEmpty());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DragWithin, AMovedCollectionOfPrivilegesLeavesItsSource)
{
    const QStringList onDatabase = sales(u"TW_DBPRV"_s);
    const QStringList onTable = sales(u"TW_TBLPRV"_s);
    EXPECT_TRUE(DragDBPRVsToDB(item(u"DBPRV"_s, {datasource, u"SALES"_s}), depotItem(), DragMode::Move));
    EXPECT_EQ(depot(u"TW_DBPRV"_s), moved(onDatabase));
    EXPECT_EQ(sales(u"TW_DBPRV"_s), QStringList());
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_TRUE(
        DragTBLPRVsToTable(item(u"TBLPRV"_s, {datasource, u"SALES"_s, u"ORDERS"_s}), partsItem(), DragMode::Move));
    EXPECT_EQ(depot(u"TW_TBLPRV"_s), moved(onTable));
    EXPECT_EQ(sales(u"TW_TBLPRV"_s), QStringList());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DragWithin, ACopiedCollectionOfColumnsStaysInItsSource)
{
    const QStringList rows = sales(u"TW_COLUMN"_s);
    boxes.expectInform(u"WARNING - The Column 'RFA' refers Field 'RFA' which does not exists in \n"
                       "File 'PAYROLL' (refered to by Table 'PARTS')."_s);
    EXPECT_TRUE(DragColumnsToTable(item(u"CO"_s, {datasource, u"SALES"_s, u"ORDERS"_s}), partsItem(), DragMode::Copy));
    EXPECT_EQ(sales(u"TW_COLUMN"_s), rows);
    EXPECT_EQ(depot(u"TW_COLUMN"_s), moved(rows));
    EXPECT_EQ(statusText(), u"Ready"_s);
}
