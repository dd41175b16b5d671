#include "Catalog.h"

#include "ConnectError.h"
#include "Resources.h"

#include <sqlite3.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace tarnwick::catalog
{
namespace
{

namespace fs = std::filesystem;

struct CloseEngine {
    void operator()(sqlite3* engine) const { sqlite3_close_v2(engine); }
};
using Engine = std::unique_ptr<sqlite3, CloseEngine>;

/// How long the making of a catalog waits for another process that is making it too, in milliseconds.
constexpr int patience = 30000;

std::string Quoted(const std::string& path)
{
    return "'" + path + "'";
}

[[noreturn]] void Fail(const std::string& path, int error)
{
    throw ConnectError("Cannot open the catalog " + Quoted(path) + ": " + std::strerror(error));
}

/// Makes an empty file. Others of the machine do not get to read it: a catalog holds passwords.
void CreateEmpty(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0640);
    if (file < 0 && errno != EEXIST)
        throw ConnectError("Cannot create the catalog " + Quoted(path) + ": " + std::strerror(errno));
    if (file >= 0)
        ::close(file);
}

void SyncFolder(const std::string& path)
{
    const int folder = ::open(fs::path(path).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    ::fsync(folder);
    ::close(folder);
}

void Run(sqlite3* engine, const char* script)
{
    if (sqlite3_exec(engine, script, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw ConnectError(sqlite3_errmsg(engine), sqlite3_errcode(engine));
}

bool IsEmpty(sqlite3* engine)
{
    bool empty = true;
    const auto onRow = [](void* answer, int, char**, char**) {
        *static_cast<bool*>(answer) = false;
        return 0;
    };
    if (sqlite3_exec(engine, "SELECT 1 FROM sqlite_master LIMIT 1", onRow, &empty, nullptr) != SQLITE_OK)
        throw ConnectError(sqlite3_errmsg(engine), sqlite3_errcode(engine));
    return empty;
}

void Fill(const std::string& path)
{
    sqlite3* opened = nullptr;
    const int answer = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const Engine engine(opened);
    if (answer != SQLITE_OK)
        throw ConnectError(sqlite3_errstr(answer), answer);
    sqlite3_busy_timeout(opened, patience);
    Run(opened, "PRAGMA synchronous = FULL; BEGIN EXCLUSIVE");
    if (IsEmpty(opened))
        for (const char* script : resources::catalogScripts)
            Run(opened, script);
    Run(opened, "COMMIT");
}

} // namespace

std::string Resolve(const std::string& path)
{
    return fs::absolute(path).lexically_normal().string();
}

void Ensure(const std::string& path)
{
    struct stat status {
    };
    if (::stat(path.c_str(), &status) != 0) {
        if (errno != ENOENT)
            Fail(path, errno);
        CreateEmpty(path);
        if (::stat(path.c_str(), &status) != 0)
            Fail(path, errno);
    }
    if (S_ISDIR(status.st_mode))
        Fail(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        throw ConnectError("Cannot open the catalog " + Quoted(path) + ": it is no regular file");
    if (::access(path.c_str(), R_OK) != 0)
        Fail(path, errno);
    if (status.st_size != 0)
        return;
    try {
        Fill(path);
    } catch (const ConnectError& error) {
        throw ConnectError("Cannot create the catalog " + Quoted(path) + ": " + error.what(), error.Native());
    }
    SyncFolder(path);
}

std::string Uri(const std::string& path, Access access)
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::string uri = "file://";
    for (const char c : path) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/' ||
                           c == '.' || c == '-' || c == '_';
        if (plain) {
            uri += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        uri += '%';
        uri += digits[byte >> 4];
        uri += digits[byte & 0xF];
    }
    return uri + (access == Access::Immutable ? "?mode=ro&immutable=1" : "?mode=rw");
}

bool NeedsImmutableAccess(const std::string& path)
{
    const bool folderIsWritable = ::access(fs::path(path).parent_path().c_str(), W_OK) == 0;
    if (folderIsWritable)
        return false;
    const bool isShared = ::access((path + "-wal").c_str(), R_OK) == 0 && ::access((path + "-shm").c_str(), R_OK) == 0;
    return !isShared && VersionOf(path).waiting == 0;
}

Version VersionOf(const std::string& path)
{
    Version version;
    struct stat status {
    };
    if (::stat(path.c_str(), &status) == 0) {
        version.file = status.st_ino;
        version.size = status.st_size;
        version.seconds = status.st_mtim.tv_sec;
        version.nanoseconds = status.st_mtim.tv_nsec;
    }
    if (::stat((path + "-wal").c_str(), &status) == 0)
        version.waiting = status.st_size;
    return version;
}

} // namespace tarnwick::catalog
