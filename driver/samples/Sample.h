#pragma once

#include "TableDefinition.h"

#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

struct sqlite3;

namespace tarnwick::samples
{

/// A sample catalog with its data files.
struct Sample {
    const char* datasource;
    const char* fileName; ///< of the catalog
    const char* description;
    std::span<const char* const> scripts; ///< in the order in which they run
    /// The keys of the data source for its logical directories, with the folders behind them beside the catalog.
    std::vector<std::pair<std::string, std::string>> directories;
};

/// All of them.
std::span<const Sample> AllSamples();

struct CloseEngine {
    void operator()(sqlite3* engine) const;
};
using Engine = std::unique_ptr<sqlite3, CloseEngine>;

/// Opens a catalog that is there. Throws std::runtime_error.
Engine OpenCatalog(const std::filesystem::path& catalog);

/// Fills a new catalog. The rows of its data files stay in temporary tables of the connection, as `RowsOf` names them.
void Fill(sqlite3* catalog, const Sample& sample);

/// What the data source adds to the catalog's definitions, for a catalog in `folder`.
records::Surroundings SurroundingsOf(const Sample& sample, const std::filesystem::path& folder);

/// What there is of a sample in a folder after `Make`.
struct Made {
    bool isNew = false;
    std::string
        problem; ///< why a catalog that was there already cannot show its records, in a sentence; empty if it can
};

/// Makes a sample's data files and then its catalog, so that a catalog under its own name is always whole. One that is
/// there already is left as it is, and so are its data files. Throws std::runtime_error.
Made Make(const Sample& sample, const std::filesystem::path& folder);

} // namespace tarnwick::samples
