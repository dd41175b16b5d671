#include "Command.h"
#include "OdbcClient.h"

#include <gtest/gtest.h>

// The driver as a client sees it that nobody of this project wrote: unixODBC's isql in batch mode.

namespace
{

bool Holds(const CommandOutput& output, const std::string& part)
{
    return output.text.find(part) != std::string::npos;
}

} // namespace

TEST(Isql, MakesReadsAndChangesACatalog)
{
    OdbcSetup setup;
    const std::string name = setup.AddCatalog("a.cat");
    const CommandOutput output =
        RunIsql(name, "SELECT COUNT (*) AS N FROM TW_FILE\n"
                      "INSERT INTO TW_USER (USER_NAME, REMARKS) VALUES ('J\xF0\x9F\x98\x80\xC3\xA9', 'it''s')\n"
                      "SELECT USER_NAME, REMARKS FROM TW_USER WHERE USER_NAME LIKE 'J%'\n");
    EXPECT_EQ(output.exitCode, 0) << output.text;
    EXPECT_TRUE(Holds(output, "13")) << output.text;
    EXPECT_TRUE(Holds(output, "J\xF0\x9F\x98\x80\xC3\xA9|it's")) << output.text;
    OdbcClient client;
    ASSERT_TRUE(client.Connect("DSN=" + name));
    EXPECT_EQ(client.Execute("SELECT USER_NAME FROM TW_USER WHERE REMARKS = 'it''s'").Single(),
              "J\xF0\x9F\x98\x80\xC3\xA9");
}

TEST(Isql, ReadsWhatAWideClientWrote)
{
    OdbcSetup setup;
    const std::string name = setup.AddCatalog("a.cat");
    {
        OdbcClient client;
        ASSERT_TRUE(client.Connect("DSN=" + name));
        ASSERT_TRUE(
            client.Execute("UPDATE TW_USER SET REMARKS = 'W\xC3\xA4hrung \xE2\x82\xAC \xF0\x9F\x92\xB6'").Succeeded());
    }
    const CommandOutput output = RunIsql(name, "SELECT REMARKS FROM TW_USER\n");
    EXPECT_TRUE(Holds(output, "W\xC3\xA4hrung \xE2\x82\xAC \xF0\x9F\x92\xB6")) << output.text;
}

TEST(Isql, GetsAnswersToTheWorkbenchsSpellings)
{
    OdbcSetup setup;
    const std::string name = setup.AddCatalog("a.cat");
    const CommandOutput output =
        RunIsql(name, "INSERT INTO TW_DB (DATABASE_NAME) VALUES ('SHOP')\n"
                      "SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME WHERE DATABASE_NAME <> 'TW'\n"
                      "SELECT #12/31/1998# AS D\n"
                      "SELECT [FIELD_NAME] FROM [TW_FIELD] WHERE [FILE_NAME] = 'USER' AND FIELD_NUMBER = 02\n");
    EXPECT_TRUE(Holds(output, "SHOP\n")) << output.text;
    EXPECT_FALSE(Holds(output, "TW\n")) << output.text;
    EXPECT_TRUE(Holds(output, "1998-12-31\n")) << output.text;
    EXPECT_TRUE(Holds(output, "USER_PASSWORD\n")) << output.text;
}

TEST(Isql, IsToldOfErrors)
{
    OdbcSetup setup;
    const std::string name = setup.AddCatalog("a.cat");
    const CommandOutput output = RunCommand({"isql", name, "-b", "-v"}, "SELECT \"NOPE\" FROM TW_FILE\n");
    EXPECT_TRUE(Holds(output, "no such column: NOPE")) << output.text;
    EXPECT_TRUE(Holds(output, "S0022")) << output.text;
    const CommandOutput missing = RunCommand({"isql", setup.AddDataSource({}), "-b", "-v"}, "");
    EXPECT_NE(missing.exitCode, 0);
    EXPECT_TRUE(Holds(missing, "the key Catalog is missing")) << missing.text;
}

TEST(Isql, ListsTablesAndColumns)
{
    OdbcSetup setup;
    const std::string name = setup.AddCatalog("a.cat");
    const CommandOutput tables = RunIsql(name, "help\n");
    EXPECT_TRUE(Holds(tables, "TW_COLUMN")) << tables.text;
    const CommandOutput columns = RunIsql(name, "help TW_USER\n");
    EXPECT_TRUE(Holds(columns, "TW_USER|USER_PASSWORD|12|VARCHAR|32|128|")) << columns.text;
}
