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

    std::string defaultDatabase; ///< `DefaultDatabase`: the only database whose tables are served, by their own names
    std::string user;            ///< `UID`; empty for none
    bool badFieldsAreNull;       ///< `BadFields`: `Null` rather than `Error`

    /// Throws ConnectError if `Timeout` is no number of milliseconds or `BadFields` neither of its two words.
    static DataSource Read(const ConnectString& text);

    /// The value of any key, for directories that the catalog names by one: from the connect string, or from the
    /// section of the data source `name`.
    static std::string Value(const ConnectString& text, const std::string& name, const std::string& key);
};

} // namespace tarnwick
