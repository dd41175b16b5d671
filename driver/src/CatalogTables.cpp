#include "CatalogTables.h"

#include "Resources.h"
#include "Text.h"

#include <sqlite3.h>

#include <algorithm>
#include <memory>

namespace tarnwick
{
namespace
{

struct Table {
    std::string name;
    std::vector<CatalogColumn> columns;
};
using Tables = std::vector<Table>;

struct CloseEngine {
    void operator()(sqlite3* engine) const { sqlite3_close(engine); }
};

int AddColumn(void* target, int, char** cells, char**)
{
    auto& tables = *static_cast<Tables*>(target);
    if (tables.empty() || tables.back().name != cells[0])
        tables.push_back({cells[0], {}});
    tables.back().columns.push_back({cells[1], !std::string_view(cells[2]).starts_with("VARCHAR")});
    return 0;
}

Tables ReadTables()
{
    Tables tables;
    sqlite3* opened = nullptr;
    const int answer = sqlite3_open(":memory:", &opened);
    const std::unique_ptr<sqlite3, CloseEngine> engine(opened);
    if (answer != SQLITE_OK || sqlite3_exec(opened, resources::tables, nullptr, nullptr, nullptr) != SQLITE_OK)
        return {};
    sqlite3_exec(opened,
                 "SELECT m.name, c.name, c.type FROM sqlite_master m JOIN pragma_table_info(m.name) c "
                 "WHERE m.type = 'table' ORDER BY m.name, c.cid",
                 AddColumn, &tables, nullptr);
    return tables;
}

} // namespace

const std::vector<CatalogColumn>* ColumnsOfCatalogTable(std::string_view table)
{
    static const Tables tables = ReadTables();
    const auto found = std::find_if(tables.begin(), tables.end(),
                                    [&](const Table& known) { return EqualIgnoringCase(known.name, table); });
    return found == tables.end() ? nullptr : &found->columns;
}

} // namespace tarnwick
