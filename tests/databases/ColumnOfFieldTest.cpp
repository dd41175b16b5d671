#include "ColumnOfField.h"

#include "DBEngine.h"
#include "Database.h"
#include "Recordset.h"
#include "RuntimeError.h"
#include "WizardFixture.h"

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using wizard::insertColumn;

namespace
{

/// A field in the catalog beside the SQL types that a new catalog has.
class ColumnOfField : public testing::Test
{
protected:
    void SetUp() override
    {
        world.addDatasource(u"ColumnOfField"_s);
        workspace = dao::DBEngine::CreateWorkspace(u"Tests"_s, {}, {}, 1);
        db = workspace->OpenDatabase({}, u"ODBC;DSN=ColumnOfField;DATABASE=PUBS"_s);
        db->Execute(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, LENGTH, PRECISION, "
                    "SCALE, DEFAULT_VALUE, REMARKS) VALUES ('STOCK', 1, 'ORDER-NO', 'STRING', 7, 9, 0, 'no''ne', "
                    "'key')"_s);
    }

    void changeField(const QString& assignments) const
    {
        db->Execute(u"UPDATE TW_FIELD SET %1 WHERE FILE_NAME = 'STOCK'"_s.arg(assignments));
    }
    void changeType(const QString& type, const QString& assignments) const
    {
        db->Execute(u"UPDATE TW_SQLDT SET %1 WHERE SQL_TYPE_NAME = '%2'"_s.arg(assignments, type));
    }

    /// The column that the field becomes under an SQL type.
    QString columnOf(const QString& type) const
    {
        const auto field = db->OpenRecordset(u"SELECT * FROM TW_FIELD WHERE FILE_NAME = 'STOCK'"_s);
        const auto row = db->OpenRecordset(u"SELECT * FROM TW_SQLDT WHERE SQL_TYPE_NAME = '%1'"_s.arg(type));
        return columnoffield::insertion(u"SALES"_s, u"WARES"_s, *field, type, *row);
    }

private:
    CatalogFixture world;
    std::unique_ptr<dao::Workspace> workspace;
    std::unique_ptr<dao::Database> db;
};

} // namespace

TEST_F(ColumnOfField, TakesItsNameItsTextsAndTheFlagsOfItsType)
{
    EXPECT_EQ(columnOf(u"VARCHAR"_s), insertColumn(u"'SALES', 'WARES', 1, 'ORDER_NO', 'ORDER-NO', 'VARCHAR', 7, 9, 0, "
                                                   "'no''ne', 'key', 'ORDER_NO', 1, 1, 0, 0, 0, 1, 3, 1, 0"_s));
}

TEST_F(ColumnOfField, EveryDashOfANameBecomesAnUnderscore)
{
    changeField(u"FIELD_NAME = '-A--B-'"_s);
    EXPECT_EQ(columnOf(u"VARCHAR"_s), insertColumn(u"'SALES', 'WARES', 1, '_A__B_', '-A--B-', 'VARCHAR', 7, 9, 0, "
                                                   "'no''ne', 'key', '_A__B_', 1, 1, 0, 0, 0, 1, 3, 1, 0"_s));
}

TEST_F(ColumnOfField, AScaledNumberBecomesADoubleWithTheFlagsOfItsOwnType)
{
    changeField(u"LOCAL_TYPE_NAME = 'ZONED', SCALE = 2"_s);
    changeType(u"INTEGER"_s, u"NULLABLE = 2, UNSIGNED_ATTRIBUTE = 3, MONEY = 4, AUTO_INCREMENT = 5, CASE_SENSITIVE = "
                             "6, SEARCHABLE = 7, RADIX = 8, LENGTH = 9, PRECISION = 11"_s);
    EXPECT_EQ(columnOf(u"INTEGER"_s), insertColumn(u"'SALES', 'WARES', 1, 'ORDER_NO', 'ORDER-NO', 'DOUBLE', 7, 11, 2, "
                                                   "'no''ne', 'key', 'ORDER_NO', 1, 2, 3, 4, 5, 6, 7, 1, 8"_s));
}

TEST_F(ColumnOfField, ANegativeScaleMakesADoubleToo)
{
    changeField(u"LOCAL_TYPE_NAME = 'PACKED', SCALE = -2"_s);
    changeType(u"NUMERIC"_s, u"LENGTH = 33"_s);
    EXPECT_EQ(columnOf(u"NUMERIC"_s), insertColumn(u"'SALES', 'WARES', 1, 'ORDER_NO', 'ORDER-NO', 'DOUBLE', 33, 31, "
                                                   "-2, 'no''ne', 'key', 'ORDER_NO', 1, 1, 0, 0, 0, 0, 2, 1, 10"_s));
}

TEST_F(ColumnOfField, SomeTypesKeepTheirOwnLengthAndOneItsPrecision)
{
    changeType(u"VARCHAR"_s, u"LENGTH = 77, PRECISION = 88"_s);
    const std::vector<std::tuple<const char*, int, int>> rows{
        {"STRING", 7, 9},   {"NUMERIC", 7, 88},   {"ZONED", 7, 88},        {"ZONED-NUM", 7, 88}, {"ZONED-S", 7, 88},
        {"ZONED-U", 7, 88}, {"ZONED-LS", 77, 88}, {"STRING-ZERO", 77, 88}, {"PACKED", 77, 88},   {"INTEGER-2", 77, 88},
    };
    for (const auto& [type, length, precision] : rows) {
        SCOPED_TRACE(type);
        changeField(u"LOCAL_TYPE_NAME = '%1'"_s.arg(QLatin1String(type)));
        EXPECT_EQ(columnOf(u"VARCHAR"_s),
                  insertColumn(u"'SALES', 'WARES', 1, 'ORDER_NO', 'ORDER-NO', 'VARCHAR', %1, %2, 0, 'no''ne', 'key', "
                               "'ORDER_NO', 1, 1, 0, 0, 0, 1, 3, 1, 0"_s.arg(length)
                                   .arg(precision)));
    }
}

TEST_F(ColumnOfField, NullsAreNumbersOfZeroAndEmptyTexts)
{
    changeField(u"FIELD_NUMBER = NULL, LENGTH = NULL, PRECISION = NULL, SCALE = NULL, DEFAULT_VALUE = NULL, "
                "REMARKS = NULL"_s);
    changeType(u"VARCHAR"_s, u"LENGTH = NULL, PRECISION = NULL, NULLABLE = NULL, UNSIGNED_ATTRIBUTE = NULL, MONEY = "
                             "NULL, AUTO_INCREMENT = NULL, CASE_SENSITIVE = NULL, SEARCHABLE = NULL, RADIX = NULL"_s);
    EXPECT_EQ(columnOf(u"VARCHAR"_s), insertColumn(u"'SALES', 'WARES', 0, 'ORDER_NO', 'ORDER-NO', 'VARCHAR', 0, 0, 0, "
                                                   "'', '', 'ORDER_NO', 1, 0, 0, 0, 0, 0, 0, 1, 0"_s));
}

TEST_F(ColumnOfField, ATypeThatTheCatalogLacksIsAnError)
{
    try {
        FAIL() << columnOf(u"NO SUCH"_s).toStdString();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::NoCurrentRecord);
    }
}
