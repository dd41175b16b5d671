#include "modGrid.h"

#include "CConnections.h"
#include "CellGrid.h"
#include "GridFixture.h"

using namespace Qt::StringLiterals;

namespace
{

class PopulateGrid : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        start();
        ASSERT_NE(connection(), nullptr);
        statements.clear();
    }

    CConnection* connection() const { return CConnections::instance().Item(datasource); }

    void populate(const QString& statement, const std::vector<modGrid::ShownForm>& forms = {})
    {
        modGrid::PopulateGrid(grid, *connection()->db(), statement, forms);
    }

    Qt::Alignment alignment(int column) const
    {
        return grid.model()->index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    }

    CellGrid grid{u"grd"_s};
};

} // namespace

TEST_F(PopulateGrid, HeadingsAreTheNamesInProperCaseOverAlignedColumns)
{
    populate(u"SELECT FIELD_NAME, OFFSET, LOCAL_TYPE_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' ORDER BY OFFSET"_s);
    EXPECT_EQ(grid.Heading(0), u"Field Name"_s);
    EXPECT_EQ(grid.Heading(1), u"Offset"_s);
    EXPECT_EQ(grid.Heading(2), u"Local Type Name"_s);
    EXPECT_TRUE(alignment(0).testFlag(Qt::AlignLeft));
    EXPECT_TRUE(alignment(1).testFlag(Qt::AlignRight));
    EXPECT_TRUE(alignment(2).testFlag(Qt::AlignLeft));
    ASSERT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.TextMatrix(1, 0), u"BONUS"_s);
    EXPECT_EQ(grid.TextMatrix(1, 1), u"4"_s);
    EXPECT_EQ(statements.statements().size(), 1);
}

TEST_F(PopulateGrid, NoRowsLeaveTheHeadingsAlone)
{
    populate(u"SELECT FIELD_NAME, OFFSET FROM TW_FIELD WHERE FILE_NAME = 'EMPTY'"_s);
    EXPECT_EQ(grid.Rows(), 0);
    EXPECT_EQ(grid.Cols(), 2);
    EXPECT_EQ(grid.Heading(1), u"Offset"_s);
}

TEST_F(PopulateGrid, ANullShowsAsAnEmptyText)
{
    change(u"UPDATE TW_FIELD SET OFFSET = NULL, REMARKS = NULL WHERE FIELD_NAME = 'BONUS'"_s);
    populate(u"SELECT FIELD_NAME, OFFSET, REMARKS FROM TW_FIELD WHERE FIELD_NAME = 'BONUS'"_s);
    EXPECT_EQ(grid.TextMatrix(0, 1), QString());
    EXPECT_EQ(grid.TextMatrix(0, 2), QString());
}

TEST_F(PopulateGrid, AColumnCanShowAFormOfItsOwn)
{
    const modGrid::ShownForm doubled = [](const QString& stored) { return stored + stored; };
    populate(u"SELECT FIELD_NAME, OFFSET FROM TW_FIELD WHERE FIELD_NAME = 'BONUS'"_s, {nullptr, doubled});
    EXPECT_EQ(grid.TextMatrix(0, 0), u"BONUS"_s);
    EXPECT_EQ(grid.TextMatrix(0, 1), u"44"_s);
}

TEST_F(PopulateGrid, EveryRowIsThere)
{
    change(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
           "INSERT INTO TW_FILE (FILE_NAME, REMARKS) SELECT printf('F%05d', i), 'It''s 😀 ' || i FROM n"_s);
    populate(u"SELECT FILE_NAME, REMARKS FROM TW_FILE WHERE FILE_NAME LIKE 'F0%' ORDER BY FILE_NAME"_s);
    ASSERT_EQ(grid.Rows(), 5000);
    EXPECT_EQ(grid.TextMatrix(4999, 0), u"F05000"_s);
    EXPECT_EQ(grid.TextMatrix(4999, 1), u"It's 😀 5000"_s);
}

TEST_F(PopulateGrid, AFailureIsReportedAndTheGridStaysAsItIs)
{
    populate(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL'"_s);
    statements.failAt(1);
    errors.expect(Press::Ignore);
    populate(u"SELECT OFFSET FROM TW_FIELD"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"modGrid.PopulateGrid"_s);
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.Heading(0), u"Field Name"_s);
}
