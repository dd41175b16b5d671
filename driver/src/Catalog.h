#pragma once

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

/// Whether only immutable access can read the catalog: this user can write neither a write-ahead log beside it nor the
/// file, and no log with content waits there that such access would miss.
bool NeedsImmutableAccess(const std::string& path);

} // namespace tarnwick::catalog
