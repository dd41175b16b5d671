#include "OdbcFixture.h"

namespace
{

class Diagnostics : public OdbcFixture
{
};

const QString generic = QStringLiteral("3146 ODBC--call failed.");

} // namespace

TEST_F(Diagnostics, EveryRecordOfAStatementArrivesInOrderWithItsFullText)
{
    auto database = openScripted();
    EXPECT_EQ(raised([&] {
                  database->Execute(
                      "FAIL\n42000|105|first\n01000|-7|\\u0416\\uD83D\\uDE00 second\nHY000|2|<long>\nHY000|3|last");
              }),
              ErrorNumber::OdbcFailed);
    ASSERT_EQ(chain().size(), 5);
    EXPECT_EQ(chain()[0], "105 first");
    EXPECT_EQ(chain()[1], QString::fromUtf8("-7 \xD0\x96\xF0\x9F\x98\x80 second"));
    EXPECT_EQ(chain()[2], "2 " + QString(3000, u'm') + "end");
    EXPECT_EQ(chain()[3], "3 last");
    EXPECT_EQ(chain()[4], generic);
}

TEST_F(Diagnostics, AFailureWithoutRecordsHasTheGenericEntryAlone)
{
    auto database = openScripted();
    EXPECT_EQ(raised([&] { database->Execute("FAIL"); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain(), QStringList(generic));
}

TEST_F(Diagnostics, ASecondResultThatFailsFailsTheStatement)
{
    auto database = openScripted();
    EXPECT_EQ(raised([&] { database->Execute("BATCH"); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain(), QStringList({"2627 [Scripted]The second statement failed", generic}));
    database->Execute("COUNTED");
    EXPECT_EQ(chain(), QStringList());
}

TEST_F(Diagnostics, WarningsAndNothingMatchedAreNoFailures)
{
    auto database = openScripted(QStringLiteral("Reply=warn"));
    database->Execute("WARN\n01000|1|careful");
    database->Execute("NOTHING");
    EXPECT_EQ(chain(), QStringList());
}

TEST_F(Diagnostics, AFailedConnectHasAllRecords)
{
    EXPECT_EQ(raised([&] { openScripted(QStringLiteral("Reply=fail")); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain(), QStringList({"18456 [Scripted]Login failed", "17 [Scripted]No such server", generic}));
}

TEST_F(Diagnostics, ACancelledConnectRaises3059)
{
    EXPECT_EQ(raised([&] { openScripted(QStringLiteral("Reply=cancel")); }), ErrorNumber::Cancelled);
    EXPECT_EQ(chain(), QStringList());
}

TEST_F(Diagnostics, AnUnknownDatasourceIsReportedByTheDriverManager)
{
    for (const char* name : {"nowhere", "\xD0\xBD\xD0\xB5\xD1\x82"}) {
        EXPECT_EQ(raised([&] { open(QStringLiteral("ODBC;DSN=%1;DATABASE=PUBS").arg(QString::fromUtf8(name))); }),
                  ErrorNumber::OdbcFailed);
        ASSERT_EQ(chain().size(), 2);
        EXPECT_TRUE(chain()[0].contains("Data source name not found")) << chain()[0].toStdString();
    }
}

TEST_F(Diagnostics, ALibraryThatIsNotThereIsExplained)
{
    write(userIni(), "[gone]\nDriver=/nowhere/libgone.so\n");
    EXPECT_EQ(raised([&] { open("ODBC;DSN=gone"); }), ErrorNumber::OdbcFailed);
    ASSERT_EQ(chain().size(), 3);
    EXPECT_TRUE(chain()[0].contains("Can't open lib '/nowhere/libgone.so'"));
    EXPECT_EQ(chain()[1], "0 /nowhere/libgone.so: cannot open shared object file: No such file or directory");
    EXPECT_EQ(chain()[2], generic);
}

TEST_F(Diagnostics, ALibraryThatIsNoneIsExplained)
{
    const QString path = folder() + QStringLiteral("/lib'no lib.so");
    write(path, "this is no library");
    write(userIni(), "[bad]\nDriver=" + path.toUtf8() + "\n");
    EXPECT_EQ(raised([&] { open("ODBC;DSN=bad"); }), ErrorNumber::OdbcFailed);
    ASSERT_EQ(chain().size(), 3);
    EXPECT_TRUE(chain()[1].startsWith("0 " + path)) << chain()[1].toStdString();
    EXPECT_TRUE(chain()[1].contains("file too short") || chain()[1].contains("invalid ELF header"))
        << chain()[1].toStdString();
}

TEST_F(Diagnostics, ALostConnectionFailsEveryStatementAndTheProgramGoesOn)
{
    auto database = openScripted();
    const QStringList lost{"5001 [Scripted]The server went away", "5002 [Scripted]Broken pipe", generic};
    QString result = QStringLiteral("RESULT\nCOLUMN A 12 10\n") + QStringLiteral("ROW a\n").repeated(100);
    auto rows = database->OpenRecordset(result);
    EXPECT_EQ(raised([&] { database->Execute("LOSE"); }), ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain(), lost);
    for (int attempt = 0; attempt < 3; ++attempt) {
        EXPECT_EQ(raised([&] { database->Execute("COUNTED"); }), ErrorNumber::OdbcFailed);
        EXPECT_EQ(chain(), lost);
        EXPECT_EQ(raised([&] { database->OpenRecordset(result); }), ErrorNumber::OdbcFailed);
        EXPECT_EQ(chain(), lost);
    }
    // The cursor was no promise of the driver, so its rows had been read before the statement.
    EXPECT_EQ(columnTexts(*rows, "A").size(), 100);
    EXPECT_EQ(raised([&] { database->Close(); }), std::nullopt);
    auto again = openScripted();
    EXPECT_EQ(raised([&] { again->Execute("COUNTED"); }), std::nullopt);
}

TEST_F(Diagnostics, ALostConnectionFailsTheNextRow)
{
    auto database = openScripted(QStringLiteral("Static=1;Preserve=1"));
    auto rows =
        database->OpenRecordset(QStringLiteral("RESULT\nCOLUMN A 12 10\n") + QStringLiteral("ROW a\n").repeated(100));
    EXPECT_EQ(raised([&] { database->Execute("LOSE"); }), ErrorNumber::OdbcFailed);
    int seen = 1;
    const auto failure = raised([&] {
        for (; seen < 100; ++seen)
            rows->MoveNext();
    });
    EXPECT_EQ(failure, ErrorNumber::OdbcFailed);
    EXPECT_EQ(chain().first(), "5001 [Scripted]The server went away");
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(rows->View(0).toString(), "a");
    EXPECT_EQ(rows->RecordCount(), seen);
}

TEST_F(Diagnostics, TheChainRefusesAnIndexOutOfRange)
{
    EXPECT_EQ(raised([] { dao::DBEngine::Errors().Item(0); }), ErrorNumber::ItemNotFound);
    EXPECT_EQ(raised([] { dao::DBEngine::Errors().Item(-1); }), ErrorNumber::ItemNotFound);
}
