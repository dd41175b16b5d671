#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace tarnwick::catalog
{

/// The absolute path of a catalog file as a data source names it; a relative one starts from the working directory.
std::string Resolve(const std::string& path);

/// Sees that a catalog stands at an absolute path: a file that is missing or empty becomes a new catalog, complete
/// with its system rows, in one transaction, so that others find either nothing or all of it. Whatever else stands
/// there is left as it is. Throws ConnectError if nothing can be opened or made there.
void Ensure(const std::string& path);

enum class Access {
    Ordinary,
    Immutable, ///< reads without locks or a write-ahead log, for a file in a folder that cannot be written
};

/// The path as an SQLite file URI, in plain ASCII whatever the path holds.
std::string Uri(const std::string& path, Access access);

/// Whether only immutable access can read the catalog: this user cannot make a write-ahead log beside it, and neither
/// are a log and its index there already, nor waits a log with content that such access would miss.
bool NeedsImmutableAccess(const std::string& path);

/// By what is seen from outside that a catalog was changed.
struct Version {
    std::uint64_t file = 0; ///< which file stands there
    std::int64_t size = 0;
    std::int64_t seconds = 0; ///< when it was written last
    std::int64_t nanoseconds = 0;
    std::int64_t waiting = 0; ///< the size of its write-ahead log

    bool operator==(const Version&) const = default;
};

Version VersionOf(const std::string& path);

} // namespace tarnwick::catalog
