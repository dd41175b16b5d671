#include "Command.h"
#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <sqlite3.h>
#include <sqlucode.h>

#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

/// Why a connection failed; fails the test if it did not.
Diagnostic FailureOf(const std::string& connectString)
{
    OdbcClient client;
    EXPECT_FALSE(client.Connect(connectString)) << connectString;
    return client.Failure();
}

bool Holds(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

/// What one of two processes waits for and the other gives.
class Signal
{
public:
    Signal() { EXPECT_EQ(::pipe(m_ends), 0); }
    ~Signal()
    {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    void Give() const { EXPECT_EQ(::write(m_ends[1], "x", 1), 1); }

    /// Fails the test, and goes on, if it never comes.
    void Await() const
    {
        pollfd end{m_ends[0], POLLIN, 0};
        char given = 0;
        EXPECT_TRUE(::poll(&end, 1, 20000) == 1 && ::read(m_ends[0], &given, 1) == 1);
    }

private:
    int m_ends[2];
};

/// Runs `test` in a child process under a user for whom read-only files are read-only, with `beside` in this one, and
/// gives the child's exit code. A superuser may write anything, so the tests of such files step down first.
template <typename Test, typename Beside>
int AsOrdinaryUserBeside(Test test, Beside beside)
{
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t nobody = 65534;
        if (::getuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            ::_exit(99);
        ::_exit(test());
    }
    beside();
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 98;
}

template <typename Test>
int AsOrdinaryUser(Test test)
{
    return AsOrdinaryUserBeside(test, [] {});
}

std::string CountOf(OdbcClient& client, const std::string& user)
{
    return client.Execute("SELECT COUNT(*) FROM TW_USER WHERE USER_NAME = '" + user + "'").Single();
}

void MakeCatalog(const std::string& path)
{
    OdbcClient client;
    ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + path)) << client.Failure().message;
    ASSERT_TRUE(client.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('KEPT')").Succeeded());
}

/// 0 if a catalog can be read and refuses to be written, with ODBC errors in their places.
int ReadsButDoesNotWrite(const std::string& path)
{
    OdbcClient client;
    if (!client.Connect("Driver=Tarnwick ODBC;Catalog=" + path)) {
        std::cerr << client.Failure().message << '\n';
        return 1;
    }
    if (client.Execute("SELECT USER_NAME FROM TW_USER WHERE USER_NAME = 'KEPT'").rows.size() != 1)
        return 2;
    const Result written = client.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('NEW')");
    std::cerr << written.diagnostic.message << '\n';
    return written.answer == SQL_ERROR && Holds(written.diagnostic.message, "readonly") ? 0 : 3;
}

} // namespace

TEST(Connect, TheCatalogKeyComesFromOdbcIni)
{
    OdbcSetup setup;
    const std::string name = setup.AddCatalog("a.cat");
    OdbcClient client;
    ASSERT_TRUE(client.Connect("DSN=" + name + ";DATABASE=PUBS")) << client.Failure().message;
    EXPECT_EQ(client.CompletedConnectString(), "DSN=" + name + ";DATABASE=PUBS");
    EXPECT_EQ(client.Info(SQL_DATA_SOURCE_NAME), name);
    EXPECT_EQ(client.Info(SQL_DATABASE_NAME), setup.File("a.cat"));
    EXPECT_EQ(client.Info(SQL_DRIVER_NAME), "libtarnwickodbc.so");
    EXPECT_EQ(client.Execute("SELECT COUNT (*) FROM TW_FILE").Single(), "13");
}

TEST(Connect, TheCatalogKeyOfTheConnectStringGoesFirst)
{
    OdbcSetup setup;
    const std::string name = setup.AddCatalog("a.cat");
    OdbcClient client;
    ASSERT_TRUE(client.Connect("DSN=" + name + ";Catalog=" + setup.File("b.cat"))) << client.Failure().message;
    EXPECT_TRUE(fs::exists(setup.File("b.cat")));
    EXPECT_FALSE(fs::exists(setup.File("a.cat")));
}

TEST(Connect, ADatabaseAttributeIsNoFileName)
{
    OdbcSetup setup;
    fs::create_directory(setup.File("here"));
    fs::current_path(setup.File("here"));
    const std::string name = setup.AddCatalog("a.cat");
    for (const char* attribute :
         {"DATABASE=PUBS", "DATABASE=PUBSDATABASE=PUBS", "database=/nowhere/at/all", "DATABASE="}) {
        OdbcClient client;
        EXPECT_TRUE(client.Connect("DSN=" + name + ";" + attribute)) << client.Failure().message;
    }
    EXPECT_TRUE(fs::is_empty(fs::current_path()));
    fs::current_path("/");
}

TEST(Connect, TheOlderConnectFunctionWorksToo)
{
    OdbcSetup setup;
    std::vector<SQLWCHAR> name = Wide(setup.AddCatalog("a.cat"));
    OdbcClient client;
    EXPECT_EQ(SQLConnectW(client.Handle(), name.data(), SQL_NTS, nullptr, 0, nullptr, 0), SQL_SUCCESS);
    EXPECT_TRUE(fs::exists(setup.File("a.cat")));
    SQLDisconnect(client.Handle());
}

TEST(Connect, AnyFileNameWorks)
{
    OdbcSetup setup;
    for (const char* file : {"with blank.cat", "\xF0\x9F\x98\x80\xC3\xA9.cat", "100%.cat", "a?b#c.cat", "it's.cat",
                             "x;y}z.cat", "a=b.cat", "file:x.cat"}) {
        std::string braced;
        for (const char c : setup.File(file))
            braced += c == '}' ? "}}" : std::string(1, c);
        OdbcClient client;
        ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog={" + braced + "}")) << client.Failure().message;
        EXPECT_TRUE(client.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('X')").Succeeded());
        EXPECT_TRUE(fs::exists(setup.File(file))) << file;
        EXPECT_EQ(client.Info(SQL_DATABASE_NAME), setup.File(file));
    }
}

TEST(Connect, AMissingCatalogKeyIsSaid)
{
    OdbcSetup setup;
    const Diagnostic failure = FailureOf("DSN=" + setup.AddDataSource({}));
    EXPECT_EQ(failure.state, "08001");
    EXPECT_TRUE(Holds(failure.message, "Catalog")) << failure.message;
}

TEST(Connect, AnUnreachablePathIsSaid)
{
    OdbcSetup setup;
    const Diagnostic failure = FailureOf("Driver=Tarnwick ODBC;Catalog=" + setup.File("no/such/folder/a.cat"));
    EXPECT_EQ(failure.state, "08001");
    EXPECT_TRUE(Holds(failure.message, "No such file or directory")) << failure.message;
    EXPECT_TRUE(Holds(failure.message, "no/such/folder/a.cat")) << failure.message;
}

TEST(Connect, AFolderIsNoCatalog)
{
    OdbcSetup setup;
    const Diagnostic failure = FailureOf("Driver=Tarnwick ODBC;Catalog=" + setup.Path().string());
    EXPECT_EQ(failure.state, "08001");
    EXPECT_TRUE(Holds(failure.message, "Is a directory")) << failure.message;
}

TEST(Connect, ACorruptFileFailsAtConnectAndIsLeftAsItIs)
{
    OdbcSetup setup;
    const std::string garbage(8192, 'x');
    std::ofstream(setup.File("bad.cat")) << garbage;
    const Diagnostic failure = FailureOf("Driver=Tarnwick ODBC;Catalog=" + setup.File("bad.cat"));
    EXPECT_EQ(failure.state, "08001");
    EXPECT_EQ(failure.native, SQLITE_NOTADB);
    EXPECT_TRUE(Holds(failure.message, "file is not a database")) << failure.message;
    std::ifstream kept(setup.File("bad.cat"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), garbage);
}

TEST(Connect, ATruncatedCatalogFailsAtConnect)
{
    OdbcSetup setup;
    MakeCatalog(setup.File("a.cat"));
    fs::resize_file(setup.File("a.cat"), 3 * 4096);
    const Diagnostic failure = FailureOf("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat"));
    EXPECT_EQ(failure.state, "08001");
    EXPECT_TRUE(Holds(failure.message, "malformed")) << failure.message;
}

TEST(Connect, AnotherDatabaseIsNoCatalog)
{
    OdbcSetup setup;
    sqlite3* other = nullptr;
    sqlite3_open(setup.File("other.db").c_str(), &other);
    sqlite3_exec(other, "CREATE TABLE SHOPPING (WHAT TEXT)", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    const Diagnostic failure = FailureOf("Driver=Tarnwick ODBC;Catalog=" + setup.File("other.db"));
    EXPECT_EQ(failure.state, "08001");
    EXPECT_TRUE(Holds(failure.message, "holds no catalog")) << failure.message;
}

TEST(Connect, AfterAFailureTheSameHandleConnectsElsewhere)
{
    OdbcSetup setup;
    OdbcClient client;
    std::ofstream(setup.File("bad.cat")) << std::string(5000, '?');
    EXPECT_FALSE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("bad.cat")));
    EXPECT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("good.cat"))) << client.Failure().message;
    EXPECT_EQ(client.Execute("SELECT COUNT(*) FROM TW_USER").Single(), "1");
}

TEST(Connect, AReadOnlyFileCanBeRead)
{
    OdbcSetup setup;
    MakeCatalog(setup.File("a.cat"));
    ::chmod(setup.Path().c_str(), 0777);
    ::chmod(setup.File("a.cat").c_str(), 0444);
    EXPECT_EQ(AsOrdinaryUser([&] { return ReadsButDoesNotWrite(setup.File("a.cat")); }), 0);
}

TEST(Connect, AFileInAReadOnlyFolderCanBeRead)
{
    OdbcSetup setup;
    MakeCatalog(setup.File("a.cat"));
    ::chmod(setup.File("a.cat").c_str(), 0444);
    ::chmod(setup.Path().c_str(), 0555);
    EXPECT_EQ(AsOrdinaryUser([&] { return ReadsButDoesNotWrite(setup.File("a.cat")); }), 0);
    ::chmod(setup.File("a.cat").c_str(), 0666);
    EXPECT_EQ(AsOrdinaryUser([&] { return ReadsButDoesNotWrite(setup.File("a.cat")); }), 0);
    ::chmod(setup.Path().c_str(), 0755);
}

TEST(Connect, AFileInAReadOnlyFolderCanBeReadBesideALogThatSomebodyLeft)
{
    OdbcSetup setup;
    MakeCatalog(setup.File("a.cat"));
    for (const char* left : {"a.cat-wal", "a.cat-shm"}) {
        std::ofstream(setup.File(left)).flush();
        ::chmod(setup.File(left).c_str(), 0444);
    }
    ::chmod(setup.Path().c_str(), 0555);
    for (const mode_t mode : {0444, 0666}) {
        ::chmod(setup.File("a.cat").c_str(), mode);
        EXPECT_EQ(AsOrdinaryUser([&] { return ReadsButDoesNotWrite(setup.File("a.cat")); }), 0) << mode;
    }
    ::chmod(setup.Path().c_str(), 0755);
}

TEST(Connect, AFileInAReadOnlyFolderShowsWhatIsCommittedWhileOthersHaveItOpen)
{
    OdbcSetup setup;
    const std::string path = setup.File("a.cat");
    MakeCatalog(path);
    ::chmod(path.c_str(), 0444);
    Signal open, connected, written;
    const int answer = AsOrdinaryUserBeside(
        [&] {
            open.Await();
            OdbcClient client;
            if (!client.Connect("Driver=Tarnwick ODBC;Catalog=" + path) || CountOf(client, "KEPT") != "1")
                return 1;
            connected.Give();
            written.Await();
            return CountOf(client, "LATER") == "1" ? 0 : 2;
        },
        [&] {
            OdbcClient writer;
            ::chmod(path.c_str(), 0644);
            EXPECT_TRUE(writer.Connect("Driver=Tarnwick ODBC;Catalog=" + path)) << writer.Failure().message;
            EXPECT_EQ(CountOf(writer, "KEPT"), "1");
            ::chmod(setup.Path().c_str(), 0555);
            open.Give();
            connected.Await();
            EXPECT_TRUE(writer.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('LATER')").Succeeded());
            written.Give();
        });
    ::chmod(setup.Path().c_str(), 0755);
    EXPECT_EQ(answer, 0);
}

TEST(Connect, AFileInAReadOnlyFolderIsNotAnsweredFromOnceItWasChanged)
{
    OdbcSetup setup;
    const std::string path = setup.File("a.cat");
    MakeCatalog(path);
    ::chmod(path.c_str(), 0644);
    ::chmod(setup.Path().c_str(), 0555);
    Signal connected, written, refused, closed;
    const int answer = AsOrdinaryUserBeside(
        [&] {
            OdbcClient client;
            if (!client.Connect("Driver=Tarnwick ODBC;Catalog=" + path) || CountOf(client, "KEPT") != "1")
                return 1;
            SQLHSTMT prepared = client.NewStatement();
            std::string text = "SELECT COUNT(*) FROM TW_USER";
            SQLPrepare(prepared, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS);
            connected.Give();
            written.Await();
            const std::string changed = "The catalog was changed since it was opened for reading only; connect again.";
            if (!Holds(client.Execute("SELECT COUNT(*) FROM TW_USER").diagnostic.message, changed))
                return 2;
            refused.Give();
            closed.Await();
            if (!Holds(client.Execute("SELECT COUNT(*) FROM TW_USER").diagnostic.message, changed))
                return 3;
            if (SQLExecute(prepared) != SQL_ERROR)
                return 4;
            const Result types = client.Read([](SQLHSTMT s) { return SQLGetTypeInfo(s, SQL_ALL_TYPES); });
            if (!Holds(types.diagnostic.message, changed))
                return 5;
            std::vector<SQLWCHAR> user = Wide("TW_USER"), none = Wide("");
            const Result answers[] = {
                client.Read(
                    [&](SQLHSTMT s) { return SQLPrimaryKeysW(s, nullptr, 0, nullptr, 0, user.data(), SQL_NTS); }),
                client.Read([&](SQLHSTMT s) {
                    return SQLForeignKeysW(s, nullptr, 0, nullptr, 0, user.data(), SQL_NTS, nullptr, 0, nullptr, 0,
                                           nullptr, 0);
                }),
                client.Read([&](SQLHSTMT s) {
                    return SQLStatisticsW(s, nullptr, 0, nullptr, 0, user.data(), SQL_NTS, SQL_INDEX_ALL, SQL_QUICK);
                }),
                client.Read([&](SQLHSTMT s) {
                    return SQLSpecialColumnsW(s, SQL_BEST_ROWID, nullptr, 0, nullptr, 0, user.data(), SQL_NTS,
                                              SQL_SCOPE_CURROW, SQL_NULLABLE);
                }),
                client.Read([&](SQLHSTMT s) {
                    std::vector<SQLWCHAR> all = Wide("%");
                    return SQLTablesW(s, none.data(), SQL_NTS, none.data(), SQL_NTS, none.data(), SQL_NTS, all.data(),
                                      SQL_NTS);
                })};
            for (const Result& result : answers)
                if (!Holds(result.diagnostic.message, changed))
                    return 10 + static_cast<int>(&result - answers);
            SQLFreeHandle(SQL_HANDLE_STMT, prepared);
            OdbcClient again;
            return again.Connect("Driver=Tarnwick ODBC;Catalog=" + path) && CountOf(again, "LATER") == "1" ? 0 : 6;
        },
        [&] {
            connected.Await();
            ::chmod(setup.Path().c_str(), 0755);
            {
                OdbcClient writer;
                EXPECT_TRUE(writer.Connect("Driver=Tarnwick ODBC;Catalog=" + path)) << writer.Failure().message;
                EXPECT_TRUE(writer.Execute("INSERT INTO TW_USER (USER_NAME) VALUES ('LATER')").Succeeded());
                written.Give();
                refused.Await();
            }
            ::chmod(setup.Path().c_str(), 0555);
            closed.Give();
        });
    ::chmod(setup.Path().c_str(), 0755);
    EXPECT_EQ(answer, 0);
}

TEST(Connect, AFolderThatCannotBeWrittenGetsNoNewCatalog)
{
    OdbcSetup setup;
    MakeCatalog(setup.File("other.cat"));
    ::chmod(setup.Path().c_str(), 0555);
    const int answer = AsOrdinaryUser([&] {
        OdbcClient client;
        if (client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("new.cat")))
            return 1;
        return client.Failure().state == "08001" && Holds(client.Failure().message, "Permission denied") ? 0 : 2;
    });
    ::chmod(setup.Path().c_str(), 0755);
    EXPECT_EQ(answer, 0);
}

TEST(Connect, AMissingLibraryBelowIsSaid)
{
    OdbcSetup setup;
    // The driver loads the library once, with itself, so this is asked of a process of its own.
    const std::string name = setup.AddCatalog("a.cat");
    ::setenv("TARNWICK_SQLITE_ODBC", setup.File("no-such-library.so").c_str(), 1);
    const CommandOutput isql = RunCommand({"isql", "-b", "-v", name}, "");
    ::unsetenv("TARNWICK_SQLITE_ODBC");
    EXPECT_NE(isql.exitCode, 0);
    EXPECT_TRUE(Holds(isql.text, "08001")) << isql.text;
    EXPECT_TRUE(Holds(isql.text, "libsqlite3odbc.so")) << isql.text;
    EXPECT_TRUE(Holds(isql.text, "no-such-library.so")) << isql.text;
}

TEST(Connect, AnEmptyFileBecomesACatalog)
{
    OdbcSetup setup;
    std::ofstream(setup.File("a.cat")).flush();
    OdbcClient client;
    ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat"))) << client.Failure().message;
    EXPECT_EQ(client.Execute("SELECT COUNT(*) FROM TW_FILE").Single(), "13");
}

TEST(Connect, ManyProcessesMakeOneCatalog)
{
    OdbcSetup setup;
    std::vector<pid_t> children;
    for (int i = 0; i < 8; ++i) {
        const pid_t child = ::fork();
        if (child == 0) {
            OdbcClient client;
            if (!client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat"))) {
                std::cerr << client.Failure().message << '\n';
                ::_exit(1);
            }
            ::_exit(client.Execute("SELECT COUNT(*) FROM TW_FILE").Single() == "13" ? 0 : 2);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
}

TEST(Connect, OthersDoNotGetToReadANewCatalog)
{
    OdbcSetup setup;
    const mode_t before = ::umask(0);
    MakeCatalog(setup.File("a.cat"));
    ::umask(before);
    struct stat status {
    };
    ASSERT_EQ(::stat(setup.File("a.cat").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

TEST(Connect, ATimeoutMustBeANumber)
{
    OdbcSetup setup;
    const Diagnostic failure = FailureOf("Driver=Tarnwick ODBC;Timeout=soon;Catalog=" + setup.File("a.cat"));
    EXPECT_EQ(failure.state, "08001");
    EXPECT_TRUE(Holds(failure.message, "Timeout")) << failure.message;
}

TEST(Connect, OtherConnectionsOfTheProcessKeepTheirOwnWays)
{
    OdbcSetup setup;
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &other), SQLITE_OK);
    OdbcClient client;
    ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + setup.File("a.cat")));
    sqlite3* later = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &later), SQLITE_OK);
    for (sqlite3* engine : {other, later}) {
        int quotedText = -1;
        sqlite3_db_config(engine, SQLITE_DBCONFIG_DQS_DML, -1, &quotedText);
        EXPECT_EQ(quotedText, 1);
        sqlite3_close(engine);
    }
}
