#include "modGrid.h"

#include "CConnections.h"
#include "CellGrid.h"
#include "Database.h"
#include "GridTest.h"
#include "Recordset.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// One row of columns of given types, each of the name "TYPE_" and its type's number.
class TypedRow final : public dao::Recordset
{
public:
    explicit TypedRow(const std::vector<dao::DataType>& types)
    {
        for (const dao::DataType type : types) {
            dao::Field field;
            field.Name = u"TYPE_%1"_s.arg(type);
            field.Type = type;
            addField(field);
        }
    }

    bool Eof() const override { return m_row > 0; }
    void MoveNext() override { ++m_row; }
    void MoveFirst() override { m_row = 0; }
    void MoveLast() override { m_row = 0; }
    long RecordCount() const override { return 1; }
    long AbsolutePosition() const override { return m_row; }
    QStringView View(int, bool* isNull) const override
    {
        if (isNull)
            *isNull = false;
        return u"value";
    }

private:
    long m_row = 0;
};

/// Answers every SELECT with that row.
class TypedDatabase final : public dao::Database
{
public:
    explicit TypedDatabase(std::vector<dao::DataType> types) : m_types(std::move(types)) {}

    void Execute(const QString&) override {}
    std::unique_ptr<dao::Recordset> OpenRecordset(const QString&, dao::RecordsetType) override
    {
        return std::make_unique<TypedRow>(m_types);
    }
    void Close() override {}
    QString Name() const override { return {}; }
    QString Connect() const override { return {}; }

private:
    std::vector<dao::DataType> m_types;
};

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

TEST_F(PopulateGrid, LongTextStandsAtTheLeftToo)
{
    change(u"CREATE TABLE KINDS (LONG_TEXT LONGVARCHAR, AMOUNT DOUBLE, NUMBER SMALLINT)"_s);
    change(u"INSERT INTO KINDS VALUES ('a', 1.5, 2)"_s);
    populate(u"SELECT LONG_TEXT, AMOUNT, NUMBER FROM KINDS"_s);
    EXPECT_TRUE(alignment(0).testFlag(Qt::AlignLeft));
    EXPECT_TRUE(alignment(1).testFlag(Qt::AlignRight));
    EXPECT_TRUE(alignment(2).testFlag(Qt::AlignRight));
}

TEST_F(PopulateGrid, EveryTypeStandsAtItsSide)
{
    const std::vector texts{dao::dbText, dao::dbMemo, dao::dbChar};
    const std::vector others{dao::dbBoolean, dao::dbByte,   dao::dbInteger,   dao::dbLong,    dao::dbCurrency,
                             dao::dbSingle,  dao::dbDouble, dao::dbDate,      dao::dbBinary,  dao::dbLongBinary,
                             dao::dbGUID,    dao::dbBigInt, dao::dbVarBinary, dao::dbNumeric, dao::dbDecimal,
                             dao::dbFloat,   dao::dbTime,   dao::dbTimeStamp};
    std::vector<dao::DataType> types = texts;
    types.insert(types.end(), others.begin(), others.end());
    TypedDatabase db(types);
    modGrid::PopulateGrid(grid, db, u"SELECT * FROM KINDS"_s);
    ASSERT_EQ(grid.Rows(), 1);
    ASSERT_EQ(grid.Cols(), static_cast<int>(types.size()));
    for (int column = 0; column < grid.Cols(); ++column) {
        const dao::DataType type = types[static_cast<std::size_t>(column)];
        const bool isText = std::find(texts.begin(), texts.end(), type) != texts.end();
        EXPECT_EQ(alignment(column).testFlag(Qt::AlignLeft), isText) << type;
        EXPECT_EQ(alignment(column).testFlag(Qt::AlignRight), !isText) << type;
        EXPECT_EQ(grid.Heading(column), u"Type %1"_s.arg(type));
        EXPECT_EQ(grid.TextMatrix(0, column), u"value"_s);
    }
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
