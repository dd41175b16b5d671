#include "OdbcFixture.h"

#include <set>

namespace
{

const char* const emoji = "a\xF0\x9F\x98\x80"
                          "b \xD0\x94\xD1\x8F \xE6\xBC\xA2";

/// Runs on the distribution's SQLite driver and on this project's driver above it.
class DatabaseOnDriver : public OdbcFixture, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        OdbcFixture::SetUp();
        catalog = folder() + QStringLiteral("/catalog.db");
        // The driver manager remembers the driver of a name for a while.
        define(name());
        database = open("ODBC;DSN=" + name() + ";DATABASE=" + (isLower() ? catalog : QStringLiteral("PUBS")));
    }

    bool isLower() const { return GetParam() == std::string("SQLite"); }

    static QString name() { return QStringLiteral("real") + GetParam(); }

    void define(const QString& name)
    {
        const QString driver = isLower() ? QStringLiteral("SQLite") : QStringLiteral("Tarnwick ODBC");
        write(userIni(),
              read(userIni()) +
                  QStringLiteral("[%1]\nDriver=%2\nDatabase=%3\nCatalog=%3\n").arg(name, driver, catalog).toUtf8());
    }

    std::unique_ptr<dao::Recordset> select(const QString& statement) { return database->OpenRecordset(statement); }
    QString single(const QString& statement) { return select(statement)->Fields().Item(0).Value().Text(); }

    void makeTable(int rows)
    {
        database->Execute("CREATE TABLE t (NAME VARCHAR(40), NUM INTEGER, NOTE VARCHAR(254))");
        if (rows > 0)
            database->Execute(
                QStringLiteral("INSERT INTO t SELECT 'name' || n, n, 'note ' || n FROM (WITH RECURSIVE g(n) AS "
                               "(SELECT 1 UNION ALL SELECT n + 1 FROM g WHERE n < %1) SELECT n FROM g)")
                    .arg(rows));
    }

    QString catalog;
    std::unique_ptr<dao::Database> database;
};

#ifdef TARNWICK_DRIVER
INSTANTIATE_TEST_SUITE_P(Drivers, DatabaseOnDriver, testing::Values("SQLite", "Tarnwick"),
                         [](const auto& info) { return std::string(info.param); });
#else
INSTANTIATE_TEST_SUITE_P(Drivers, DatabaseOnDriver, testing::Values("SQLite"),
                         [](const auto& info) { return std::string(info.param); });
#endif

} // namespace

TEST_P(DatabaseOnDriver, KnowsItsNameAndItsConnectString)
{
    EXPECT_EQ(database->Name(), name());
    EXPECT_TRUE(database->Connect().startsWith("ODBC;DSN=" + name() + ";DATABASE="));
}

TEST_P(DatabaseOnDriver, ReadsRowsInOrderUpToTheEnd)
{
    makeTable(100);
    auto rows = select("SELECT NAME, NUM FROM t ORDER BY NUM");
    int expected = 0;
    for (; !rows->Eof(); rows->MoveNext()) {
        ++expected;
        ASSERT_EQ(rows->Fields().Item("name").Value().Text(), QStringLiteral("name%1").arg(expected));
        ASSERT_EQ(rows->Fields().Item("NUM").Value().Long(), expected);
    }
    EXPECT_EQ(expected, 100);
    EXPECT_EQ(raised([&] { rows->MoveNext(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(raised([&] { rows->Fields().Item(0).Value(); }), ErrorNumber::NoCurrentRecord);
}

TEST_P(DatabaseOnDriver, AResultWithoutRowsIsAtItsEnd)
{
    makeTable(0);
    auto rows = select("SELECT * FROM t");
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 0);
    EXPECT_EQ(rows->AbsolutePosition(), -1);
    EXPECT_EQ(rows->Fields().Count(), 3);
    EXPECT_EQ(raised([&] { rows->MoveFirst(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(raised([&] { rows->MoveLast(); }), ErrorNumber::NoCurrentRecord);
}

TEST_P(DatabaseOnDriver, TellsNullFromAnEmptyText)
{
    makeTable(0);
    database->Execute("INSERT INTO t (NAME, NUM, NOTE) VALUES ('', NULL, NULL)");
    auto rows = select("SELECT NAME, NUM, NOTE FROM t");
    EXPECT_FALSE(rows->Fields().Item("NAME").Value().IsNull());
    EXPECT_EQ(rows->Fields().Item("NAME").Value().Text(), "");
    EXPECT_TRUE(rows->Fields().Item("NUM").Value().IsNull());
    EXPECT_EQ(rows->Fields().Item("NOTE").Value().Text(), "");
    EXPECT_EQ(raised([&] { rows->Fields().Item("NUM").Value().Long(); }), ErrorNumber::InvalidUseOfNull);
    bool isNull = false;
    EXPECT_TRUE(rows->View(2, &isNull).isEmpty());
    EXPECT_TRUE(isNull);
}

TEST_P(DatabaseOnDriver, EveryCharacterSurvivesTheWayThereAndBack)
{
    makeTable(0);
    const QString text = QString::fromUtf8(emoji) + QStringLiteral(" \" `' \t\n\\ \u00e9").replace('\'', "''");
    database->Execute("INSERT INTO t (NAME) VALUES ('" + text + "')");
    EXPECT_EQ(single("SELECT NAME FROM t"), QString(text).replace("''", "'"));
    EXPECT_EQ(single("SELECT COUNT(*) FROM t WHERE NAME = '" + text + "'"), "1");
}

TEST_P(DatabaseOnDriver, ASurrogateWithoutItsHalfSurvivesOrIsRefused)
{
    makeTable(0);
    QString text = QStringLiteral("a");
    text += QChar(0xD83D);
    text += QStringLiteral("b");
    const auto failure = raised([&] { database->Execute("INSERT INTO t (NAME) VALUES ('" + text + "')"); });
    if (isLower()) {
        EXPECT_EQ(failure, std::nullopt);
        EXPECT_EQ(single("SELECT NAME FROM t"), text);
    } else {
        EXPECT_EQ(failure, ErrorNumber::OdbcFailed);
        EXPECT_EQ(chain().size(), 2);
        EXPECT_EQ(single("SELECT COUNT(*) FROM t"), "0");
    }
}

TEST_P(DatabaseOnDriver, ColumnNamesOfAnyScriptSurvive)
{
    const QString name = QString::fromUtf8("\xD0\x98\xD0\xBC\xD1\x8F\xF0\x9F\x98\x80");
    auto rows = select("SELECT 1 AS \"" + name + "\", 2 AS other");
    EXPECT_EQ(rows->Fields().Item(0).Name, name);
    EXPECT_EQ(rows->Fields().Item(name).Value().Text(), "1");
    EXPECT_EQ(rows->Fields().Item("OTHER").Value().Text(), "2");
}

TEST_P(DatabaseOnDriver, LongTextIsNeverCut)
{
    makeTable(0);
    for (const int length :
         {35, 36, 37, 43, 44, 45, 251, 252, 253, 254, 255, 256, 257, 1023, 1024, 1025, 5000, 1024 * 1024}) {
        QString text;
        while (text.size() < length)
            text += QString::number(text.size()) + QString::fromUtf8(emoji);
        text.truncate(length);
        if (text.back().isHighSurrogate())
            text.back() = u'x';
        database->Execute("DELETE FROM t");
        database->Execute("INSERT INTO t (NAME, NUM, NOTE) VALUES ('" + text + "', 7, '" + text + "')");
        auto rows = select("SELECT NAME, NUM, NOTE FROM t");
        ASSERT_TRUE(rows->Fields().Item("NAME").Value().Text() == text) << length;
        ASSERT_EQ(rows->Fields().Item("NUM").Value().Text(), "7");
        ASSERT_TRUE(rows->Fields().Item("NOTE").Value().Text() == text) << length;
    }
}

TEST_P(DatabaseOnDriver, LongTextsBetweenShortOnesStayInTheirRows)
{
    makeTable(50);
    database->Execute("UPDATE t SET NOTE = NOTE || replace(hex(zeroblob(NUM * 100)), '00', 'ab') WHERE NUM % 3 = 0");
    auto rows = select("SELECT NUM, NOTE, NAME FROM t ORDER BY NUM");
    for (int number = 1; number <= 50; ++number, rows->MoveNext()) {
        QString expected = QStringLiteral("note %1").arg(number);
        if (number % 3 == 0)
            expected += QStringLiteral("ab").repeated(number * 100);
        ASSERT_TRUE(rows->Fields().Item("NOTE").Value().Text() == expected) << number;
        ASSERT_EQ(rows->Fields().Item("NAME").Value().Text(), QStringLiteral("name%1").arg(number));
    }
}

TEST_P(DatabaseOnDriver, MovesToTheFirstAndLastRowAndCounts)
{
    makeTable(1000);
    auto rows = select("SELECT NAME FROM t ORDER BY NUM");
    EXPECT_EQ(rows->AbsolutePosition(), 0);
    EXPECT_EQ(rows->RecordCount(), 1);
    rows->MoveNext();
    EXPECT_EQ(rows->RecordCount(), 2);
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    rows->MoveLast();
    EXPECT_EQ(rows->Fields().Item(0).Value().Text(), "name1000");
    EXPECT_EQ(rows->RecordCount(), 1000);
    EXPECT_EQ(rows->AbsolutePosition(), 999);
    rows->MoveFirst();
    EXPECT_EQ(rows->Fields().Item(0).Value().Text(), "name1");
    EXPECT_EQ(rows->RecordCount(), 1000);
    EXPECT_EQ(columnTexts(*rows, "NAME").size(), 1000);
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->AbsolutePosition(), -1);
    rows->MoveFirst();
    EXPECT_EQ(rows->View(0).toString(), "name1");
}

TEST_P(DatabaseOnDriver, AHundredThousandRowsCanBeVisitedAtRandom)
{
    makeTable(100000);
    auto rows = database->OpenRecordset("SELECT NUM, NAME FROM t ORDER BY NUM", dao::dbOpenTable);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 100000);
    rows->MoveFirst();
    long number = 0;
    for (; !rows->Eof(); rows->MoveNext())
        ASSERT_EQ(rows->View(0).toLong(), ++number);
    EXPECT_EQ(number, 100000);
}

TEST_P(DatabaseOnDriver, ARecordsetStaysAsOfItsOpeningWhileItsTableChanges)
{
    makeTable(60);
    auto rows = select("SELECT NAME, NUM FROM t ORDER BY NUM");
    QStringList seen;
    for (; !rows->Eof(); rows->MoveNext()) {
        const QString name = rows->Fields().Item("NAME").Value().Text();
        seen << name;
        database->Execute("DELETE FROM t WHERE NAME = '" + name + "'");
        database->Execute("INSERT INTO t (NAME, NUM) VALUES ('new', 1000)");
        database->Execute("UPDATE t SET NAME = NAME || 'x' WHERE NUM = 50");
    }
    EXPECT_EQ(seen.size(), 60);
    EXPECT_EQ(seen[49], "name50");
    EXPECT_EQ(single("SELECT COUNT(*) FROM t WHERE NAME = 'new'"), "60");
}

TEST_P(DatabaseOnDriver, ManyRecordsetsCanBeOpenAtOnce)
{
    makeTable(300);
    std::vector<std::unique_ptr<dao::Recordset>> open;
    for (int first = 1; first <= 100; ++first)
        open.push_back(select(QStringLiteral("SELECT NUM FROM t WHERE NUM >= %1 ORDER BY NUM").arg(first)));
    for (int step = 0; step < 150; ++step) {
        for (int first = 1; first <= 100; ++first) {
            ASSERT_EQ(open[static_cast<std::size_t>(first - 1)]->View(0).toInt(), first + step);
            open[static_cast<std::size_t>(first - 1)]->MoveNext();
        }
    }
}

TEST_P(DatabaseOnDriver, TenThousandStatementsRunOnOneHandle)
{
    makeTable(0);
    for (int number = 0; number < 10000; ++number)
        database->Execute(QStringLiteral("UPDATE t SET NUM = %1 WHERE NUM = -1").arg(number));
    for (int number = 0; number < 2000; ++number)
        ASSERT_EQ(single(QStringLiteral("SELECT %1").arg(number)), QString::number(number));
}

TEST_P(DatabaseOnDriver, AStatementThatMatchesNothingIsNoFailure)
{
    makeTable(1);
    EXPECT_EQ(raised([&] { database->Execute("DELETE FROM t WHERE NUM = 99"); }), std::nullopt);
    EXPECT_EQ(raised([&] { database->Execute("SELECT * FROM t"); }), std::nullopt);
    EXPECT_EQ(single("SELECT COUNT(*) FROM t"), "1");
}

TEST_P(DatabaseOnDriver, AFailingStatementFillsTheChainAndTheNextOneEmptiesIt)
{
    EXPECT_EQ(raised([&] { database->Execute("INSERT INTO nowhere VALUES (1)"); }), ErrorNumber::OdbcFailed);
    ASSERT_EQ(chain().size(), 2);
    EXPECT_TRUE(chain()[0].contains("no such table: nowhere")) << chain()[0].toStdString();
    EXPECT_EQ(chain()[1], "3146 ODBC--call failed.");

    EXPECT_EQ(raised([&] { select("SELECT * FROM gone"); }), ErrorNumber::OdbcFailed);
    ASSERT_EQ(chain().size(), 2);
    EXPECT_TRUE(chain()[0].contains("no such table: gone"));

    database->Execute("CREATE TABLE gone (A INTEGER)");
    EXPECT_EQ(chain(), QStringList());
    EXPECT_TRUE(select("SELECT * FROM gone")->Eof());
}

TEST_P(DatabaseOnDriver, EmptyStatementsFailAndHarmNothing)
{
    EXPECT_EQ(raised([&] { select(""); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain().last(), "3146 ODBC--call failed.");
    EXPECT_EQ(single("SELECT 5"), "5");
}

TEST_P(DatabaseOnDriver, ASelectWithoutAResultFails)
{
    EXPECT_EQ(raised([&] { select("CREATE TABLE made (A INTEGER)"); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain(), QStringList({"0 The statement has no result set.", "3146 ODBC--call failed."}));
}

TEST_P(DatabaseOnDriver, ClosingEndsOpenRecordsets)
{
    makeTable(1000);
    auto part = select("SELECT NUM FROM t");
    auto whole = select("SELECT 1");
    database->Close();
    EXPECT_TRUE(part->Eof());
    EXPECT_TRUE(whole->Eof());
    EXPECT_EQ(raised([&] { part->MoveNext(); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(raised([&] { part->View(0); }), ErrorNumber::NoCurrentRecord);
    EXPECT_EQ(raised([&] { database->Execute("DELETE FROM t"); }), ErrorNumber::ObjectNotSet);
    EXPECT_EQ(raised([&] { select("SELECT 1"); }), ErrorNumber::ObjectNotSet);
    EXPECT_EQ(raised([&] { database->Close(); }), std::nullopt);
    EXPECT_EQ(database->Name(), name());
}

TEST_P(DatabaseOnDriver, ADestroyedDatabaseEndsOpenRecordsets)
{
    makeTable(1000);
    auto rows = select("SELECT NUM FROM t");
    database.reset();
    workspace.reset();
    EXPECT_TRUE(rows->Eof());
}

TEST_P(DatabaseOnDriver, AFileDatasourceCarriesItsPathAsName)
{
    const QString path = folder() + "/source.dsn";
    write(path, QStringLiteral("[ODBC]\nDRIVER=%1\nDatabase=%2\nCatalog=%2\n")
                    .arg(isLower() ? "SQLite" : "Tarnwick ODBC", catalog)
                    .toUtf8());
    makeTable(3);
    auto other = open("ODBC;FILEDSN=" + path);
    EXPECT_EQ(other->Name(), path);
    EXPECT_EQ(other->OpenRecordset("SELECT COUNT(*) FROM t")->View(0).toString(), "3");
}

TEST_P(DatabaseOnDriver, ADatasourceNamedInAnyScriptConnects)
{
    makeTable(3);
    for (const char* script :
         {"\xD0\x94\xD0\xB0\xD0\xBD\xD0\xBD\xD1\x8B\xD0\xB5", "caf\xC3\xA9", "\xE6\xBC\xA2\xE5\xAD\x97"}) {
        const QString scripted = QString::fromUtf8(script) + GetParam();
        define(scripted);
        auto other = open("ODBC;DSN=" + scripted);
        EXPECT_EQ(other->Name(), scripted);
        EXPECT_EQ(other->OpenRecordset("SELECT COUNT(*) FROM t")->View(0).toString(), "3") << script;
    }
}

TEST_P(DatabaseOnDriver, ADatasourceNamedWithAnEmojiConnects)
{
    makeTable(3);
    const QString emojiName = QString::fromUtf8("emoji\xF0\x9F\x98\x80") + GetParam();
    define(emojiName);
    auto other = open("ODBC;DSN=" + emojiName);
    EXPECT_EQ(other->OpenRecordset("SELECT COUNT(*) FROM t")->View(0).toString(), "3");
}

TEST_P(DatabaseOnDriver, ADatasourceThatComesAfterAFailureIsFoundAtOnce)
{
    const QString late = QStringLiteral("late") + GetParam();
    EXPECT_EQ(raised([&] { open("ODBC;DSN=" + late); }), ErrorNumber::OdbcFailed);
    define(late);
    const DriverManagersOwnLeak known;
    auto other = open("ODBC;DSN=" + late);
    EXPECT_EQ(other->Name(), late);
    makeTable(3);
    EXPECT_EQ(other->OpenRecordset("SELECT COUNT(*) FROM t")->View(0).toString(), "3");
}

TEST_P(DatabaseOnDriver, FieldsAreDescribed)
{
    database->Execute(
        "CREATE TABLE kinds (A VARCHAR(30), B INTEGER, C SMALLINT, D DOUBLE, E DATE, F TIME, G TIMESTAMP, "
        "H BIT, I TINYINT, J BIGINT, K LONGVARCHAR)");
    auto rows = select("SELECT * FROM kinds");
    const std::pair<const char*, dao::DataType> expected[] = {
        {"A", dao::dbText}, {"B", dao::dbLong},   {"C", dao::dbInteger},   {"D", dao::dbDouble},
        {"E", dao::dbDate}, {"F", dao::dbTime},   {"G", dao::dbTimeStamp}, {"H", dao::dbBoolean},
        {"I", dao::dbByte}, {"J", dao::dbBigInt}, {"K", dao::dbMemo},
    };
    ASSERT_EQ(rows->Fields().Count(), 11);
    for (const auto& [name, type] : expected)
        EXPECT_EQ(rows->Fields().Item(name).Type, type) << name;
    EXPECT_EQ(rows->Fields().Item("A").Size, 30);
}
