// A catalog without locks that somebody has spoilt: nothing of it is read any more, and all that is told is why.

#include "OdbcClient.h"

#include <gtest/gtest.h>

#include <sqlucode.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

const std::string changed = "The catalog was changed since it was opened for reading only; connect again.";

/// What the catalog functions that tell of tables answer.
std::vector<Result> Told(OdbcClient& client)
{
    std::vector<SQLWCHAR> table = Wide("TW_USER");
    return {
        client.Read([&](SQLHSTMT s) { return SQLTablesW(s, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0); }),
        client.Read(
            [&](SQLHSTMT s) { return SQLColumnsW(s, nullptr, 0, nullptr, 0, table.data(), SQL_NTS, nullptr, 0); }),
        client.Read([&](SQLHSTMT s) { return SQLTablePrivilegesW(s, nullptr, 0, nullptr, 0, table.data(), SQL_NTS); }),
        client.Read([&](SQLHSTMT s) {
            return SQLColumnPrivilegesW(s, nullptr, 0, nullptr, 0, table.data(), SQL_NTS, nullptr, 0);
        }),
        client.Read([](SQLHSTMT s) { return SQLGetTypeInfo(s, SQL_ALL_TYPES); })};
}

/// 0 if a catalog that can only be read, and is spoilt through `file` meanwhile, is not answered from.
int IsNotAnsweredFrom(const std::string& path, int file)
{
    OdbcClient client;
    if (!client.Connect("Driver=Tarnwick ODBC;Catalog=" + path))
        return 1;
    for (const Result& result : Told(client))
        if (result.rows.empty())
            return 2;
    // What SQLite keeps in memory of the file would do for a while.
    if (!client.Execute("PRAGMA shrink_memory").Succeeded())
        return 3;
    const std::string rubbish(65536, 'x');
    constexpr off_t behindTheName = 16;
    if (::pwrite(file, rubbish.data(), rubbish.size(), behindTheName) != static_cast<ssize_t>(rubbish.size()))
        return 4;
    int place = 10;
    for (const Result& result : Told(client)) {
        if (result.diagnostic.message.find(changed) == std::string::npos) {
            std::cerr << result.diagnostic.message << '\n';
            return place;
        }
        ++place;
    }
    return 0;
}

} // namespace

TEST(OutdatedCatalog, IsToldToBeOneByEachFunctionThatWouldReadIt)
{
    OdbcSetup setup;
    const std::string path = setup.File("a.cat");
    {
        OdbcClient client;
        ASSERT_TRUE(client.Connect("Driver=Tarnwick ODBC;Catalog=" + path)) << client.Failure().message;
    }
    ::chmod(path.c_str(), 0644);
    ::chmod(setup.Path().c_str(), 0555);
    const pid_t child = ::fork();
    if (child == 0) {
        // A superuser can write into any folder; the file that it opened can be written by whom it becomes.
        const int file = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
        constexpr uid_t nobody = 65534;
        if (::getuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            ::_exit(99);
        ::_exit(IsNotAnsweredFrom(path, file));
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ::chmod(setup.Path().c_str(), 0755);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}
