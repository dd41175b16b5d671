// tarnwick-samples FOLDER [--driver FILE]
//
// Makes two sample catalogs in a folder, with the ini files through which the driver manager finds them.

#include "Catalog.h"
#include "ConnectError.h"
#include "IniFile.h"
#include "SampleResources.h"

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using namespace tarnwick;

struct Sample {
    const char* datasource;
    const char* fileName;
    const char* description;
    std::span<const char* const> scripts;
};

/// The scripts of each catalog, in the order in which they run.
constexpr const char* ledgerScripts[] = {samples::begin,         samples::ledger,       samples::finish,
                                         samples::ledgerColumns, samples::recordTables, samples::ledgerRecords,
                                         samples::recordViews};
constexpr const char* warehouseScripts[] = {
    samples::begin,        samples::warehouse,        samples::finish,     samples::warehouseColumns,
    samples::recordTables, samples::warehouseRecords, samples::recordViews};

constexpr const char* driverName = "Tarnwick ODBC";

const Sample sampleCatalogs[] = {
    {"Ledger", "ledger.cat", "A bank's accounts and its payroll", ledgerScripts},
    {"Warehouse", "warehouse.cat", "A wholesaler's orders and stock", warehouseScripts},
};

struct CloseEngine {
    void operator()(sqlite3* engine) const { sqlite3_close(engine); }
};

int AddStatement(void* statements, int, char** cells, char**)
{
    static_cast<std::vector<std::string>*>(statements)->emplace_back(cells[0]);
    return 0;
}

/// Runs scripts one after the other. The rows that a script answers with are statements too, which run when it is done.
void RunScripts(const fs::path& catalog, std::span<const char* const> scripts)
{
    sqlite3* opened = nullptr;
    const int answer = sqlite3_open_v2(catalog.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, CloseEngine> engine(opened);
    const auto run = [&](const char* script) {
        std::vector<std::string> statements;
        if (sqlite3_exec(opened, script, AddStatement, &statements, nullptr) != SQLITE_OK)
            throw std::runtime_error(catalog.string() + ": " + sqlite3_errmsg(opened));
        return statements;
    };
    if (answer != SQLITE_OK)
        throw std::runtime_error(catalog.string() + ": " + sqlite3_errstr(answer));
    run("BEGIN EXCLUSIVE");
    for (const char* script : scripts)
        for (const std::string& statement : run(script))
            run(statement.c_str());
    run("COMMIT");
}

/// Makes a sample catalog under another name first, so that one under its own name is always whole. One that is there
/// already is left as it is. True if it was made.
bool Make(const fs::path& catalog, const Sample& sample)
{
    if (fs::exists(catalog))
        return false;
    const fs::path unfinished = catalog.string() + ".unfinished";
    fs::remove(unfinished);
    fs::remove(unfinished.string() + "-journal");
    catalog::Ensure(unfinished);
    RunScripts(unfinished, sample.scripts);
    fs::rename(unfinished, catalog);
    return true;
}

/// The driver beside this program: in a build folder or where both are installed.
fs::path FindDriver()
{
    const fs::path bin = fs::read_symlink("/proc/self/exe").parent_path();
    for (const char* place : {"../lib/libtarnwickodbc.so", "../" TARNWICK_INSTALL_LIBDIR "/odbc/libtarnwickodbc.so"})
        if (fs::exists(bin / place))
            return fs::canonical(bin / place);
    throw std::runtime_error("The driver libtarnwickodbc.so was not found; name it with --driver.");
}

void Register(const fs::path& folder, const fs::path& driver)
{
    IniFile drivers((folder / "odbcinst.ini").string());
    drivers.SetSection(driverName, {{"Description", "Catalogs of flat, indexed and record-managed files as SQL tables"},
                                    {"Driver", driver.string()},
                                    {"UsageCount", "1"}});
    drivers.Save();
    IniFile datasources((folder / "odbc.ini").string());
    for (const Sample& sample : sampleCatalogs)
        datasources.SetSection(sample.datasource, {{"Driver", driverName},
                                                   {"Description", sample.description},
                                                   {"Catalog", (folder / sample.fileName).string()}});
    datasources.Save();
}

int Usage()
{
    std::cerr << "Usage: tarnwick-samples FOLDER [--driver FILE]\n\n"
                 "Makes the sample datasources Ledger and Warehouse in FOLDER. Clients see them with\n"
                 "  ODBCSYSINI=FOLDER ODBCINI=FOLDER/odbc.ini\n";
    return 2;
}

int Run(const std::vector<std::string>& arguments)
{
    const bool namesDriver = arguments.size() == 3 && arguments[1] == "--driver";
    if ((arguments.size() != 1 && !namesDriver) || arguments[0].starts_with("-"))
        return Usage();
    const fs::path driver = namesDriver ? fs::canonical(arguments[2]) : FindDriver();
    fs::create_directories(arguments[0]);
    const fs::path folder = fs::canonical(arguments[0]);
    for (const Sample& sample : sampleCatalogs) {
        const fs::path catalog = folder / sample.fileName;
        std::cout << sample.datasource << ": " << catalog.string()
                  << (Make(catalog, sample) ? " made\n" : " is there already\n");
    }
    Register(folder, driver);
    return 0;
}

} // namespace

int main(int count, char** values)
{
    try {
        return Run(std::vector<std::string>(values + 1, values + count));
    } catch (const std::exception& error) {
        std::cerr << "tarnwick-samples: " << error.what() << '\n';
        return 1;
    }
}
