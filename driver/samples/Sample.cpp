#include "Sample.h"

#include "Catalog.h"
#include "DataFiles.h"
#include "SampleResources.h"

#include <sqlite3.h>

#include <algorithm>
#include <stdexcept>

namespace tarnwick::samples
{
namespace
{

namespace fs = std::filesystem;

constexpr const char* ledgerScripts[] = {begin, ledger, finish, ledgerColumns, fileRows, ledgerRecords};
constexpr const char* warehouseScripts[] = {begin, warehouse, finish, warehouseColumns, fileRows, warehouseRecords};

int AddStatement(void* statements, int, char** cells, char**)
{
    static_cast<std::vector<std::string>*>(statements)->emplace_back(cells[0]);
    return 0;
}

std::vector<std::string> Run(sqlite3* engine, const char* script)
{
    std::vector<std::string> statements;
    if (sqlite3_exec(engine, script, AddStatement, &statements, nullptr) != SQLITE_OK)
        throw std::runtime_error(std::string("A sample's script failed: ") + sqlite3_errmsg(engine));
    return statements;
}

std::string ProblemOf(const Sample& sample, const fs::path& folder)
{
    try {
        const Engine engine = OpenCatalog(folder / sample.fileName);
        for (const DataFile& file : DataFilesOf(engine.get(), SurroundingsOf(sample, folder)))
            if (std::error_code ignored; !fs::exists(file.path, ignored))
                return "There is no data file " + file.path + ".";
        return {};
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

} // namespace

std::span<const Sample> AllSamples()
{
    static const Sample samples[] = {
        {"Ledger", "ledger.cat", "A bank's accounts and its payroll", ledgerScripts, {{"LEDGER_DATA", "data/ledger"}}},
        {"Warehouse", "warehouse.cat", "A wholesaler's orders and stock", warehouseScripts, {}},
    };
    return samples;
}

void CloseEngine::operator()(sqlite3* engine) const
{
    sqlite3_close(engine);
}

Engine OpenCatalog(const fs::path& catalog)
{
    sqlite3* opened = nullptr;
    const int answer = sqlite3_open_v2(catalog.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    Engine engine(opened);
    if (answer != SQLITE_OK)
        throw std::runtime_error(catalog.string() + ": " + sqlite3_errstr(answer));
    return engine;
}

/// The rows that a script answers with are statements too, which run when it is done.
void Fill(sqlite3* catalog, const Sample& sample)
{
    Run(catalog, "PRAGMA temp_store = MEMORY");
    Run(catalog, "BEGIN EXCLUSIVE");
    for (const char* script : sample.scripts)
        for (const std::string& statement : Run(catalog, script))
            Run(catalog, statement.c_str());
    Run(catalog, "COMMIT");
}

records::Surroundings SurroundingsOf(const Sample& sample, const fs::path& folder)
{
    records::Surroundings surroundings;
    surroundings.catalogDirectory = folder.string();
    surroundings.directoryOf = [&sample, folder](const std::string& key) {
        const auto found = std::find_if(sample.directories.begin(), sample.directories.end(),
                                        [&](const auto& directory) { return directory.first == key; });
        return found == sample.directories.end() ? std::string() : (folder / found->second).string();
    };
    return surroundings;
}

Made Make(const Sample& sample, const fs::path& folder)
{
    const fs::path catalog = folder / sample.fileName;
    if (fs::exists(catalog))
        return {false, ProblemOf(sample, folder)};
    const fs::path unfinished = catalog.string() + ".unfinished";
    for (const char* suffix : {"", "-journal", "-wal", "-shm"})
        fs::remove(unfinished.string() + suffix);
    catalog::Ensure(unfinished);
    {
        const Engine engine = OpenCatalog(unfinished);
        Fill(engine.get(), sample);
        for (const DataFile& file : DataFilesOf(engine.get(), SurroundingsOf(sample, folder)))
            WriteWhole(file.path, ContentOf(engine.get(), file));
    }
    fs::rename(unfinished, catalog);
    return {true, {}};
}

} // namespace tarnwick::samples
