// The place of a column, its type and number, is the one thing of a target that a drag may overwrite.
#include "MoveCopyFixture.h"

#include "frmTWErr.h"
#include "modDragAndDrop.h"

using namespace Qt::StringLiterals;
using modDragAndDrop::DragColumnsToTable;
using modDragAndDrop::DragColumnToTable;

namespace
{

class ColumnPlaces : public MoveCopyTest
{
protected:
    void SetUp() override
    {
        MoveCopyTest::SetUp();
        changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('LEDGER')"_s);
        changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) "
                    "VALUES ('LEDGER', 'SALARY'), ('LEDGER', 'EMPLOYEE'), ('LEDGER', 'RFA')"_s);
        changeOther(
            u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('DEPOT', 'PARTS', 'LEDGER')"_s);
    }

    void addColumn(const QString& name, int number) const
    {
        changeOther(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
                    "VALUES ('DEPOT', 'PARTS', %1, '%2', 0)"_s.arg(number)
                        .arg(name));
    }
    /// The question about the place of AMOUNT.
    void expectTaken(boxes::Answer answer)
    {
        boxes.expectAsk(u"A column already exists is in Datasource '%1', Database 'DEPOT', Table 'PARTS' "
                        "with a Column Type of 0 and a column number of 2\nDo you want to overwrite it?"_s.arg(other),
                        answer);
    }
    QStringList columnsThere() const
    {
        QStringList all;
        for (const QStringList& row : world.rows(
                 other, u"SELECT COLUMN_NAME, COLUMN_NUMBER FROM TW_COLUMN WHERE TABLE_NAME = 'PARTS' ORDER BY 1"_s))
            all.append(row.join(' '));
        return all;
    }
    QStringList columnsHere() const { return rowsOf(datasource, u"TW_COLUMN"_s, u"DATABASE_NAME = 'SALES'"_s); }

    DragItem amount() const { return item(u"co"_s, {datasource, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s}); }
    DragItem columns() const { return item(u"CO"_s, {datasource, u"SALES"_s, u"ORDERS"_s}); }
    DragItem parts() const { return item(u"ta"_s, {other, u"DEPOT"_s, u"PARTS"_s}); }

    const QString deletion = u"T: DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'PARTS' "
                             "AND COLUMN_NUMBER = 2  AND COLUMN_TYPE = 0"_s;
};

} // namespace

TEST_F(ColumnPlaces, AColumnOfTheSameNameAndPlaceIsOverwrittenWithoutAFurtherBox)
{
    addColumn(u"AMOUNT"_s, 2);
    expectTaken(boxes::Answer::Yes);
    EXPECT_TRUE(DragColumnToTable(amount(), parts(), DragMode::Move));
    EXPECT_EQ(columnsThere(), QStringList{u"AMOUNT 2"_s});
    EXPECT_EQ(world.value(other, u"SELECT FIELD_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'PARTS'"_s), u"SALARY"_s);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(ColumnPlaces, AnOverwrittenPlaceIsGoneThoughTheNameIsRefused)
{
    addColumn(u"WEIGHT"_s, 2);
    addColumn(u"AMOUNT"_s, 9);
    const QStringList here = columnsHere();
    expectTaken(boxes::Answer::Yes);
    boxes.expectInform(u"Datasource '%1', Table 'PARTS' already contains a Column called 'AMOUNT'."_s.arg(other));
    EXPECT_FALSE(DragColumnToTable(amount(), parts(), DragMode::Move));
    EXPECT_EQ(columnsThere(), QStringList{u"AMOUNT 9"_s});
    EXPECT_EQ(columnsHere(), here);
}

TEST_F(ColumnPlaces, ACollectionAsksToGoOnAfterAPlaceIsNotGivenUp)
{
    addColumn(u"WEIGHT"_s, 2);
    expectTaken(boxes::Answer::No);
    expectGoOn(u"Do you want to continue with the remainder of the Columns in this collection?"_s, u"cmdYes"_s);
    EXPECT_TRUE(DragColumnsToTable(columns(), parts(), DragMode::Move));
    EXPECT_EQ(columnsThere(), (QStringList{u"BUYER 1"_s, u"RFA 1"_s, u"WEIGHT 2"_s}));
    EXPECT_EQ(columnsHere().size(), 1);
}

TEST_F(ColumnPlaces, AFaultInTheOverwriteIsMendedByARetry)
{
    addColumn(u"WEIGHT"_s, 2);
    sweep([&] {
        expectTaken(boxes::Answer::Yes);
        EXPECT_TRUE(DragColumnToTable(amount(), parts(), DragMode::Move));
        EXPECT_EQ(columnsThere(), QStringList{u"AMOUNT 2"_s});
    });
}

TEST_F(ColumnPlaces, AnIgnoredFaultInTheOverwriteLeavesBothColumns)
{
    addColumn(u"WEIGHT"_s, 2);
    const QStringList before = bothCatalogs();
    statements.failAt(3);
    expectTaken(boxes::Answer::Yes);
    errors.expect(Press::Ignore);
    EXPECT_FALSE(DragColumnToTable(amount(), parts(), DragMode::Move));
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modDragAndDrop.DragColumnToTable"_s);
    EXPECT_EQ(said().back(), deletion);
    EXPECT_EQ(bothCatalogs(), before);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(ColumnPlaces, NamesOfAnyKindAreOverwrittenToo)
{
    change(u"UPDATE TW_COLUMN SET COLUMN_NAME = 'A''%1' WHERE COLUMN_NAME = 'AMOUNT'"_s);
    changeOther(u"UPDATE TW_TABLE SET TABLE_NAME = 'P''%2' WHERE TABLE_NAME = 'PARTS'"_s);
    changeOther(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
                "VALUES ('DEPOT', 'P''%2', 2, 'A''%1', 0)"_s);
    boxes.expectAsk(u"A column already exists is in Datasource '"_s + other +
                        u"', Database 'DEPOT', Table 'P'%2' with a Column Type of 0 and a column number of 2\n"
                        "Do you want to overwrite it?"_s,
                    boxes::Answer::Yes);
    EXPECT_TRUE(DragColumnToTable(item(u"co"_s, {datasource, u"SALES"_s, u"ORDERS"_s, u"A'%1"_s}),
                                  item(u"ta"_s, {other, u"DEPOT"_s, u"P'%2"_s}), DragMode::Move));
    EXPECT_EQ(world.value(other, u"SELECT FIELD_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'P''%2'"_s), u"SALARY"_s);
    EXPECT_EQ(columnsHere().size(), 2);
}

TEST_F(ColumnPlaces, AColumnWithoutItsNumberIsReportedBeforeAnythingIsWritten)
{
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = NULL WHERE COLUMN_NAME = 'AMOUNT'"_s);
    const QStringList before = bothCatalogs();
    errors.expect(Press::Ignore);
    EXPECT_FALSE(DragColumnToTable(amount(), parts(), DragMode::Move));
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modDragAndDrop.DragColumnToTable"_s);
    EXPECT_TRUE(said().back().endsWith(u"AND COLUMN_TYPE = 0 AND COLUMN_NUMBER =  "_s));
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(bothCatalogs(), before);
}
