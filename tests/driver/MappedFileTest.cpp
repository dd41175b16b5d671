// Files that change under a statement. A client of the driver gets its rows when the statement runs, so these tests
// step through SQLite itself.

#include "MappedFile.h"
#include "Catalog.h"
#include "OdbcClient.h"
#include "RecordFormat.h"
#include "RecordTables.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <fstream>

using namespace tarnwick;
using namespace tarnwick::records;

namespace
{

constexpr int recordCount = 40000;
constexpr int countedRecords = 1000;

/// A catalog with the table B_T over a file of lines of 8 bytes, and a statement that reads it.
class ChangingFile : public ::testing::Test
{
protected:
    void SetUp() override
    {
        catalog::Ensure(m_folder.File("c.cat"));
        ASSERT_EQ(sqlite3_open(m_folder.File("c.cat").c_str(), &m_engine), SQLITE_OK);
        const std::string script = "INSERT INTO TW_DB (DATABASE_NAME) VALUES ('B');"
                                   "INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE) "
                                   "VALUES ('T', 8, 'SEQUENTIAL', 'FIXED');"
                                   "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH) "
                                   "VALUES ('T', 'F', 'STRING', 0, 8);"
                                   "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME, FILE_SPECIFICATION) "
                                   "VALUES ('B', 'T', 'T', 't.dat');"
                                   "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, "
                                   "SQL_TYPE_NAME, PRECISION, VISIBLE) "
                                   "VALUES ('B', 'T', 'F', 'F', 'VARCHAR', 8, 1);";
        ASSERT_EQ(sqlite3_exec(m_engine, script.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_engine);
        m_tables.emplace(m_engine, Surroundings{"", m_folder.Path().string(), {}}, BadFields::Error);
        WriteAll();
    }
    void TearDown() override
    {
        sqlite3_finalize(m_statement);
        sqlite3_close(m_engine);
    }

    std::string Path() const { return m_folder.File("t.dat"); }

    void WriteAll() const
    {
        std::ofstream file(Path(), std::ios::binary);
        for (int i = 0; i < recordCount; ++i)
            file << "abcdefgh";
    }

    /// Records behind their lengths: where they begin is seen by who reads none of their fields.
    void WriteCounted() const
    {
        ASSERT_EQ(sqlite3_exec(m_engine,
                               "UPDATE TW_FILE SET RECORD_TYPE = 'VARIABLE', OPEN_STRING = 'COUNTED-2' WHERE FILE_NAME "
                               "= 'T'",
                               nullptr, nullptr, nullptr),
                  SQLITE_OK);
        std::ofstream file(Path(), std::ios::binary);
        for (int i = 0; i < countedRecords; ++i)
            file << std::string("\x08\0", 2) << "abcdefgh";
    }

    void Prepare(const std::string& statement = "SELECT F FROM B_T")
    {
        sqlite3_finalize(m_statement);
        m_statement = nullptr;
        m_tables->MakeReady(statement);
        ASSERT_EQ(sqlite3_prepare_v2(m_engine, statement.c_str(), -1, &m_statement, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_engine);
    }

    /// How many data files of the test this process has open, those that are deleted meanwhile included.
    std::size_t OpenDataFiles() const
    {
        std::size_t open = 0;
        std::error_code gone;
        for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
            const std::string file = std::filesystem::read_symlink(entry.path(), gone).string();
            if (file.starts_with(m_folder.Path().string()) && file.find(".dat") != std::string::npos)
                ++open;
        }
        return open;
    }

    /// Gives the table a criteria that does something to the data file. A deterministic function without arguments is
    /// called before the first record is read, one that is asked for a field when its record is.
    void DoInCriteria(const std::string& criteria, void (*act)(const std::string& path), int flags)
    {
        m_act = act;
        const auto call = [](sqlite3_context* context, int, sqlite3_value**) {
            const auto& self = *static_cast<const ChangingFile*>(sqlite3_user_data(context));
            self.m_act(self.Path());
            sqlite3_result_int(context, 1);
        };
        ASSERT_EQ(sqlite3_create_function(m_engine, "act", -1, SQLITE_UTF8 | flags, this, call, nullptr, nullptr),
                  SQLITE_OK);
        const std::string update = "UPDATE TW_TABLE SET CRITERIA = '" + criteria + "' WHERE DATABASE_NAME = 'B'";
        ASSERT_EQ(sqlite3_exec(m_engine, update.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    }

    /// Steps at most so often; gives the rows.
    int Step(int most)
    {
        int rows = 0;
        while (rows < most && (m_answer = sqlite3_step(m_statement)) == SQLITE_ROW)
            ++rows;
        return rows;
    }

    TemporaryFolder m_folder;
    sqlite3* m_engine = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    std::optional<RecordTables> m_tables;
    int m_answer = SQLITE_OK;
    void (*m_act)(const std::string& path) = nullptr;
};

} // namespace

TEST_F(ChangingFile, CutWhileItIsReadIsToldAndTheProcessLives)
{
    for (const std::size_t left : {std::size_t{300000}, std::size_t{100}, std::size_t{0}}) {
        WriteAll();
        Prepare();
        ASSERT_EQ(Step(10), 10);
        std::filesystem::resize_file(Path(), left);
        EXPECT_LT(Step(recordCount), recordCount - 10) << left;
        EXPECT_EQ(m_answer, SQLITE_ERROR);
        EXPECT_EQ(sqlite3_errmsg(m_engine), "The data file '" + Path() + "' was cut while it was read.");
    }
    Prepare();
    EXPECT_EQ(Step(1), 0);
    EXPECT_EQ(m_answer, SQLITE_DONE) << "the next statement reads the file as it is";
}

TEST_F(ChangingFile, ReplacedWhileItIsReadIsReadToItsEnd)
{
    Prepare();
    ASSERT_EQ(Step(10), 10);
    std::ofstream(m_folder.File("new.dat")) << "ijklmnop";
    std::filesystem::rename(m_folder.File("new.dat"), Path());
    EXPECT_EQ(Step(recordCount), recordCount - 10);
    EXPECT_EQ(m_answer, SQLITE_DONE);
    Prepare();
    EXPECT_EQ(Step(recordCount), 1);
}

TEST_F(ChangingFile, AppendedToBetweenTheFileAndItsCriteriaHasTheRecordsOfBefore)
{
    DoInCriteria(
        "act()", [](const std::string& path) { std::ofstream(path, std::ios::binary | std::ios::app) << "ijklmnop"; },
        SQLITE_DETERMINISTIC);
    Prepare();
    EXPECT_EQ(Step(2 * recordCount), recordCount);
    EXPECT_EQ(m_answer, SQLITE_DONE);
    Prepare();
    EXPECT_EQ(Step(2 * recordCount), recordCount + 1);
}

TEST_F(ChangingFile, WhoseRecordIsGoneOnceItMetTheCriteriaIsToldOf)
{
    ASSERT_EQ(sqlite3_exec(m_engine, "UPDATE TW_FILE SET FILE_ORGANISATION = 'RELATIVE' WHERE FILE_NAME = 'T'", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
    DoInCriteria(
        "act(F)",
        [](const std::string& path) {
            std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
            file << std::string(8, '\0');
        },
        0);
    Prepare();
    EXPECT_EQ(Step(recordCount), 0);
    EXPECT_EQ(m_answer, SQLITE_ERROR);
    EXPECT_EQ(sqlite3_errmsg(m_engine), "The data file '" + Path() + "' was changed while it was read.");
}

TEST_F(ChangingFile, WhatWasCutAwayReadsAsZeroBytes)
{
    const auto file = MappedFile::Open(Path());
    EXPECT_TRUE(file->IsCurrent());
    EXPECT_FALSE(file->WasCut(true));
    std::filesystem::resize_file(Path(), 4);
    const std::string_view content = file->Content();
    EXPECT_EQ(content.substr(0, 4), "abcd");
    EXPECT_EQ(std::count(content.begin() + 4, content.end(), '\0'), 8 * recordCount - 4);
    EXPECT_TRUE(file->WasCut(true));
    EXPECT_FALSE(file->IsCurrent());
    WriteAll();
    EXPECT_TRUE(file->WasCut(true)) << "what was read as zeros does not come back";
}

TEST_F(ChangingFile, WrittenAnewInItsOldSizeIsACutFileWhereItWasReadMeanwhile)
{
    const auto file = MappedFile::Open(Path());
    std::filesystem::resize_file(Path(), 0);
    EXPECT_EQ(file->Content()[0], '\0');
    WriteAll();
    EXPECT_FALSE(file->IsCurrent());
    EXPECT_TRUE(file->WasCut(true));
}

TEST_F(ChangingFile, WrittenAnewInItsOldSizeIsReadAnewThoughNobodyAskedWhetherItWasCut)
{
    WriteCounted();
    Prepare("SELECT 1 FROM B_T LIMIT 3");
    ASSERT_EQ(Step(1), 1);
    std::filesystem::resize_file(Path(), 0);
    EXPECT_EQ(Step(5), 2) << "zeros read as records without bytes";
    EXPECT_EQ(m_answer, SQLITE_DONE);
    WriteCounted();
    Prepare("SELECT 1 FROM B_T WHERE F = 'abcdefgh'");
    EXPECT_EQ(Step(recordCount), countedRecords);
    EXPECT_EQ(m_answer, SQLITE_DONE) << sqlite3_errmsg(m_engine);
}

TEST_F(ChangingFile, WhosePagesAreGoneThoughItIsAsItWasHasABadDisk)
{
    WriteCounted();
    const auto written = std::filesystem::last_write_time(Path());
    for (const bool isAsItWas : {true, false}) {
        Prepare("SELECT 1 FROM B_T");
        ASSERT_EQ(Step(10), 10);
        std::filesystem::resize_file(Path(), 0);
        ASSERT_EQ(Step(2), 2) << "the page is looked at while it is gone";
        WriteCounted();
        std::filesystem::last_write_time(Path(), isAsItWas ? written : written + std::chrono::seconds(1));
        EXPECT_LT(Step(countedRecords), 100);
        EXPECT_EQ(m_answer, SQLITE_ERROR);
        EXPECT_EQ(sqlite3_errmsg(m_engine),
                  "The data file '" + Path() + "' " +
                      (isAsItWas ? "cannot be read: Input/output error." : "was cut while it was read."));
        std::filesystem::last_write_time(Path(), written);
    }
}

TEST_F(ChangingFile, IsStillGuardedOnceManyOthersWereRead)
{
    constexpr int tables = 600;
    const std::string script = "CREATE TEMP TABLE N AS WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM c "
                               "WHERE n < " +
                               std::to_string(tables) +
                               ") SELECT n FROM c;"
                               "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME, FILE_SPECIFICATION) "
                               "SELECT 'B', 'T' || n, 'T', 't' || n || '.dat' FROM N;"
                               "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, "
                               "SQL_TYPE_NAME, PRECISION, VISIBLE) "
                               "SELECT 'B', 'T' || n, 'F', 'F', 'VARCHAR', 8, 1 FROM N;";
    ASSERT_EQ(sqlite3_exec(m_engine, script.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(m_engine);
    for (int i = 1; i <= tables; ++i) {
        std::ofstream(m_folder.File("t" + std::to_string(i) + ".dat")) << "abcdefgh";
        Prepare("SELECT F FROM B_T" + std::to_string(i));
        ASSERT_EQ(Step(2), 1) << i;
        ASSERT_EQ(m_answer, SQLITE_DONE) << i;
        ASSERT_LE(OpenDataFiles(), RecentFiles::most) << i;
    }
    Prepare();
    ASSERT_EQ(Step(10), 10);
    std::filesystem::resize_file(Path(), 0);
    EXPECT_LT(Step(recordCount), recordCount - 10);
    EXPECT_EQ(sqlite3_errmsg(m_engine), "The data file '" + Path() + "' was cut while it was read.");
}

TEST_F(ChangingFile, IsMappedOnceForAllTablesOverIt)
{
    for (const char* table : {"TW_TABLE", "TW_COLUMN"}) {
        const std::string name = table;
        const std::string script = "CREATE TEMP TABLE X AS SELECT * FROM " + name +
                                   " WHERE DATABASE_NAME = 'B'; UPDATE X SET TABLE_NAME = 'SECOND'; INSERT INTO " +
                                   name + " SELECT * FROM X; DROP TABLE X";
        ASSERT_EQ(sqlite3_exec(m_engine, script.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_engine);
    }
    for (const char* table : {"B_T", "B_SECOND"}) {
        Prepare(std::string("SELECT F FROM ") + table);
        ASSERT_EQ(Step(recordCount + 1), recordCount) << table;
        EXPECT_EQ(OpenDataFiles(), 1u) << table;
    }
    Prepare("SELECT COUNT(*) FROM B_T x, B_SECOND y WHERE x.rowid = y.rowid AND x.rowid = 3");
    ASSERT_EQ(Step(1), 1);
    EXPECT_EQ(OpenDataFiles(), 1u);
}

TEST_F(ChangingFile, IsNotKeptInPlaceOfTheOneThatStandsThereNow)
{
    for (int i = 0; i < 20; ++i) {
        Prepare();
        ASSERT_EQ(Step(recordCount + 1), recordCount);
        std::ofstream(m_folder.File("new.dat")) << std::string(8 * recordCount, 'x');
        std::filesystem::rename(m_folder.File("new.dat"), Path());
    }
    EXPECT_LE(OpenDataFiles(), 1u);
}

TEST(MappedFile, ManyMappingsComeAndGo)
{
    const TemporaryFolder folder;
    std::ofstream(folder.File("x")) << "some bytes";
    std::vector<std::shared_ptr<const MappedFile>> files;
    for (int i = 0; i < 700; ++i)
        files.push_back(MappedFile::Open(folder.File("x")));
    EXPECT_EQ(files.back()->Content(), "some bytes");
    files.clear();
    const auto file = MappedFile::Open(folder.File("x"));
    std::filesystem::resize_file(folder.File("x"), 0);
    EXPECT_EQ(file->Content(), std::string_view("\0\0\0\0\0\0\0\0\0\0", 10));
    EXPECT_TRUE(file->WasCut(true));
}
