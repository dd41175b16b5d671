#pragma once

#include "ConnectString.h"

#include <string>

namespace tarnwick
{

/// What a connection needs to know, from the connect string first and from the data source's section of odbc.ini
/// second.
struct DataSource {
    std::string name;         ///< DSN, or empty
    std::string catalog;      ///< `Catalog`: the catalog file
    std::string statementLog; ///< `StatementLog`: receives each statement; empty for none
    long timeout;             ///< `Timeout`: milliseconds to wait for a lock

    /// Throws ConnectError if `Timeout` is no number of milliseconds.
    static DataSource Read(const ConnectString& text);
};

} // namespace tarnwick
