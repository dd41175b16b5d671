#include "OdbcFixture.h"

#include <sqlext.h>

namespace
{

/// Reads results of the scripted driver in each way in which a driver lets cells be got: SQL_GETDATA_EXTENSIONS with
/// nothing, with bound columns, and with bound columns in blocks.
class ResultByAbility : public OdbcFixture, public testing::WithParamInterface<int>
{
protected:
    std::unique_ptr<dao::Database> openAble(const QString& attributes = {})
    {
        return openScripted(QStringLiteral("GetData=%1;").arg(GetParam()) + attributes);
    }

    static QString rows(int count)
    {
        QString text;
        for (int row = 0; row < count; ++row)
            text += QStringLiteral("ROW r%1|%1\n").arg(row);
        return text;
    }
};

INSTANTIATE_TEST_SUITE_P(Abilities, ResultByAbility,
                         testing::Values(0, SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER | SQL_GD_BOUND,
                                         SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER | SQL_GD_BOUND | SQL_GD_BLOCK));

const QString twoColumns = QStringLiteral("RESULT\nCOLUMN A 12 10\nCOLUMN B 4 10\n");

class Result : public OdbcFixture
{
};

} // namespace

TEST_P(ResultByAbility, ReadsEveryRow)
{
    auto database = openAble();
    for (const int count : {0, 1, 2, 15, 16, 17, 31, 32, 33, 64, 1000}) {
        auto recordset = database->OpenRecordset(twoColumns + rows(count));
        int seen = 0;
        for (; !recordset->Eof(); recordset->MoveNext(), ++seen) {
            ASSERT_EQ(recordset->Fields().Item("A").Value().Text(), QStringLiteral("r%1").arg(seen));
            ASSERT_EQ(recordset->Fields().Item("B").Value().Long(), seen);
        }
        ASSERT_EQ(seen, count);
    }
}

TEST_P(ResultByAbility, LongCellsArriveWhole)
{
    for (const QString& attributes : {QString(), QStringLiteral("NoTotal=1")}) {
        auto database = openAble(attributes);
        QString statement = twoColumns;
        const QList<int> lengths{0, 1, 39, 40, 41, 255, 256, 257, 1022, 1023, 1024, 1025, 4096, 100000, 1 << 20, 3};
        for (const int length : lengths)
            statement += QStringLiteral("ROW <long %1>|%1\n").arg(length);
        auto recordset = database->OpenRecordset(statement);
        for (const int length : lengths) {
            QString expected(length, u' ');
            for (int at = 0; at < length; ++at)
                expected[at] = QChar(u'a' + at % 26);
            ASSERT_TRUE(recordset->View(0) == expected) << length;
            ASSERT_EQ(recordset->View(1).toInt(), length);
            recordset->MoveNext();
        }
        EXPECT_TRUE(recordset->Eof());
    }
}

TEST_P(ResultByAbility, NullsAndSurrogatesArriveAsTheyAre)
{
    auto database = openAble();
    auto recordset =
        database->OpenRecordset(twoColumns + "ROW <null>|1\nROW \\uD83D\\uDE00|<null>\nROW \\uDE00\\uD83Dx|\\u0000\n");
    bool isNull = false;
    EXPECT_TRUE(recordset->View(0, &isNull).isEmpty() && isNull);
    recordset->MoveNext();
    EXPECT_EQ(recordset->View(0).toString(), QString::fromUtf8("\xF0\x9F\x98\x80"));
    EXPECT_TRUE(recordset->Fields().Item("B").Value().IsNull());
    recordset->MoveNext();
    const char16_t halves[] = {0xDE00, 0xD83D, u'x'};
    EXPECT_TRUE(recordset->View(0) == QStringView(halves, 3));
    EXPECT_EQ(recordset->View(1).size(), 1);
}

TEST_P(ResultByAbility, AFetchThatFailsIsRaisedAtItsRowAndRepeatedAlone)
{
    auto database = openAble(QStringLiteral("Static=1;Preserve=1"));
    for (const int good : {1, 2, 20, 40}) {
        auto recordset = database->OpenRecordset(twoColumns + rows(good) + "BREAK\n" + "ROW behind|9\n");
        for (int row = 1; row < good; ++row)
            ASSERT_EQ(raised([&] { recordset->MoveNext(); }), std::nullopt) << good;
        EXPECT_EQ(raised([&] { recordset->MoveNext(); }), ErrorNumber::OdbcFailed) << good;
        EXPECT_EQ(chain(), QStringList({"1205 [Scripted]Deadlock", "3146 ODBC--call failed."}));
        EXPECT_EQ(recordset->View(0).toString(), QStringLiteral("r%1").arg(good - 1));
        recordset->MoveNext();
        EXPECT_EQ(recordset->View(0).toString(), "behind");
        EXPECT_EQ(chain(), QStringList());
        recordset->MoveNext();
        EXPECT_TRUE(recordset->Eof());
    }
}

TEST_P(ResultByAbility, AFirstFetchThatFailsFailsTheOpening)
{
    auto database = openAble();
    EXPECT_EQ(raised([&] { database->OpenRecordset(twoColumns + "BREAK\nROW a|1\n"); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain().first(), "1205 [Scripted]Deadlock");
}

TEST_P(ResultByAbility, RetryOfARowGoesOnWhereItFailed)
{
    auto database = openAble();
    const QString letter(300, u'q');
    AnsweringTrap trap({StepAnswer::Retry});
    auto recordset =
        database->OpenRecordset(twoColumns + "ROW first|1\nROW second|<late " + letter + ">\nROW third|3\n");
    recordset->MoveNext();
    EXPECT_EQ(trap.failures, QStringList("3146: 9 [Scripted]The page is locked / 3146 ODBC--call failed."));
    EXPECT_EQ(recordset->View(0).toString(), "second");
    EXPECT_EQ(recordset->View(1).toString(), letter);
    recordset->MoveNext();
    EXPECT_EQ(recordset->View(0).toString(), "third");
    EXPECT_EQ(recordset->View(1).toString(), "3");
}

TEST_F(Result, ARowThatTheDriverMarksAsBadFailsEachTime)
{
    auto database = openScripted(QStringLiteral("GetData=15"));
    auto recordset = database->OpenRecordset(twoColumns + "ROW a|1\nBAD x|y\nROW b|2\n");
    for (int attempt = 0; attempt < 3; ++attempt) {
        EXPECT_EQ(raised([&] { recordset->MoveNext(); }), ErrorNumber::OdbcFailed);
        EXPECT_EQ(chain().first(), "245 [Scripted]The row can't be converted");
        EXPECT_EQ(recordset->View(0).toString(), "a");
    }
}

TEST_F(Result, ARowThatTheDriverMarksAsBadIsNotBlamedForTextsThatWereCut)
{
    auto database = openScripted(QStringLiteral("GetData=15"));
    auto recordset = database->OpenRecordset(twoColumns + "ROW <long 300>|1\nBAD x|y\nROW <long 300>|2\n");
    EXPECT_EQ(recordset->View(0).size(), 300);
    EXPECT_EQ(raised([&] { recordset->MoveNext(); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain(), QStringList({"245 [Scripted]The row can't be converted", "3146 ODBC--call failed."}));
}

TEST_F(Result, BytesArriveWithTheirBlockInTwoDigitsEach)
{
    auto database = openScripted(QStringLiteral("GetData=15"));
    for (const int type : {SQL_BINARY, SQL_VARBINARY, SQL_LONGVARBINARY})
        for (const int size : {1, 20, 100, 126}) {
            // A cell that were asked for alone would fail.
            const QString digits(2 * size, u'F');
            auto recordset = database->OpenRecordset(
                QStringLiteral("RESULT\nCOLUMN A %1 %2\nROW <late %3>\n").arg(type).arg(size).arg(digits));
            EXPECT_EQ(recordset->View(0).toString(), digits) << size;
        }
}

TEST_F(Result, EveryOdbcTypeHasItsNumber)
{
    const std::pair<int, dao::DataType> types[] = {
        {SQL_CHAR, dao::dbChar},
        {SQL_WCHAR, dao::dbChar},
        {SQL_VARCHAR, dao::dbText},
        {SQL_WVARCHAR, dao::dbText},
        {SQL_LONGVARCHAR, dao::dbMemo},
        {SQL_WLONGVARCHAR, dao::dbMemo},
        {SQL_BIT, dao::dbBoolean},
        {SQL_TINYINT, dao::dbByte},
        {SQL_SMALLINT, dao::dbInteger},
        {SQL_INTEGER, dao::dbLong},
        {SQL_BIGINT, dao::dbBigInt},
        {SQL_REAL, dao::dbSingle},
        {SQL_DOUBLE, dao::dbDouble},
        {SQL_FLOAT, dao::dbFloat},
        {SQL_NUMERIC, dao::dbNumeric},
        {SQL_DECIMAL, dao::dbDecimal},
        {SQL_DATE, dao::dbDate},
        {SQL_TYPE_DATE, dao::dbDate},
        {SQL_TIME, dao::dbTime},
        {SQL_TYPE_TIME, dao::dbTime},
        {SQL_TIMESTAMP, dao::dbTimeStamp},
        {SQL_TYPE_TIMESTAMP, dao::dbTimeStamp},
        {SQL_BINARY, dao::dbBinary},
        {SQL_VARBINARY, dao::dbVarBinary},
        {SQL_LONGVARBINARY, dao::dbLongBinary},
        {SQL_GUID, dao::dbGUID},
        {SQL_INTERVAL_DAY, dao::dbText},
    };
    QString statement = QStringLiteral("RESULT\n");
    int number = 0;
    for (const auto& [odbcType, type] : types) {
        statement += QStringLiteral("COLUMN C%1 %2 %3\n").arg(number).arg(odbcType).arg(100 + number);
        ++number;
    }
    auto database = openScripted();
    auto recordset = database->OpenRecordset(statement);
    number = 0;
    for (const auto& [odbcType, type] : types) {
        const dao::Field& field = recordset->Fields().Item(number);
        EXPECT_EQ(field.Name, QStringLiteral("C%1").arg(number));
        EXPECT_EQ(field.Type, type) << odbcType;
        EXPECT_EQ(field.Size, 100 + number);
        ++number;
    }
}

TEST_F(Result, ALongColumnNameArrivesWhole)
{
    auto database = openScripted();
    const QString name(2000, u'N');
    auto recordset = database->OpenRecordset("RESULT\nCOLUMN " + name + " 12 5\nROW a\n");
    EXPECT_EQ(recordset->Fields().Item(0).Name, name);
}

TEST_F(Result, RowsAreThoseOfTheOpeningWhateverTheDriversCursorsDo)
{
    for (const char* attributes : {"", "Static=1", "Preserve=1", "Static=1;Preserve=1", "GetData=15", "Activities=5"}) {
        auto database = openScripted(QString::fromUtf8(attributes));
        auto recordset = database->OpenRecordset("RESULT\nCOLUMN A 4 10\nCOUNTER 100");
        database->Execute("BUMP");
        EXPECT_EQ(columnTexts(*recordset, "A"), QStringList(100, "0")) << attributes;
    }
}

TEST_F(Result, OneActiveStatementIsEnoughForManyRecordsets)
{
    auto database = openScripted(QStringLiteral("Activities=1"));
    std::vector<std::unique_ptr<dao::Recordset>> open;
    for (int number = 0; number < 5; ++number) {
        open.push_back(database->OpenRecordset("RESULT\nCOLUMN A 4 10\nCOUNTER 100"));
        database->Execute("BUMP");
    }
    for (int number = 0; number < 5; ++number)
        EXPECT_EQ(columnTexts(*open[static_cast<std::size_t>(number)], "A"), QStringList(100, QString::number(number)));
}

TEST_F(Result, ThreeActiveStatementsAreEnoughForManyRecordsets)
{
    auto database = openScripted(QStringLiteral("Activities=3;Static=1;Preserve=1"));
    std::vector<std::unique_ptr<dao::Recordset>> open;
    for (int number = 0; number < 10; ++number) {
        open.push_back(database->OpenRecordset("RESULT\nCOLUMN A 4 10\nCOUNTER 100"));
        database->Execute("BUMP");
    }
    for (int number = 0; number < 10; ++number)
        EXPECT_EQ(columnTexts(*open[static_cast<std::size_t>(number)], "A").size(), 100);
}

TEST_F(Result, ADriverWithoutWideEntryPointsGetsNarrowStatements)
{
    // The scripted driver answers here as if its texts had lost characters; statements then go through the narrow
    // entry.
    auto database = openScripted(QStringLiteral("Narrow=1"));
    EXPECT_EQ(raised([&] { database->Execute("FAIL\n42000|105|plain"); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain().first(), "105 plain");
    auto recordset = database->OpenRecordset("RESULT\nCOLUMN A 4 10\nROW 5");
    EXPECT_EQ(recordset->Fields().Item("A").Value().Text(), "5");
}
