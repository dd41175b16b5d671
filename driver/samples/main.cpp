// tarnwick-samples FOLDER [--driver FILE]
//
// Makes two sample catalogs and the data files that they describe in a folder, with the ini files through which the
// driver manager finds them.

#include "IniFile.h"
#include "Sample.h"

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using namespace tarnwick;

constexpr const char* driverName = "Tarnwick ODBC";

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
    for (const samples::Sample& sample : samples::AllSamples()) {
        std::vector<std::pair<std::string, std::string>> keys = {{"Driver", driverName},
                                                                 {"Description", sample.description},
                                                                 {"Catalog", (folder / sample.fileName).string()}};
        for (const auto& [key, directory] : sample.directories)
            keys.emplace_back(key, (folder / directory).string());
        datasources.SetSection(sample.datasource, keys);
    }
    datasources.Save();
}

void MakeAndTell(const samples::Sample& sample, const fs::path& folder)
{
    const std::string catalog = (folder / sample.fileName).string();
    const samples::Made made = samples::Make(sample, folder);
    std::cout << sample.datasource << ": " << catalog << (made.isNew ? " made\n" : " is there already\n") << std::flush;
    if (!made.problem.empty())
        std::cerr << "tarnwick-samples: " << sample.datasource << " is left as it is, but is not whole. "
                  << made.problem << " Samples of older versions had no data files. Remove " << catalog
                  << " and call this again to have both made anew.\n";
}

int Usage()
{
    std::cerr << "Usage: tarnwick-samples FOLDER [--driver FILE]\n\n"
                 "Makes the sample datasources Ledger and Warehouse in FOLDER, with their data files in FOLDER/data.\n"
                 "Clients see them with\n"
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
    for (const samples::Sample& sample : samples::AllSamples())
        MakeAndTell(sample, folder);
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
