#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarnwick
{

/// A column of one of the catalog's tables as it is declared.
struct CatalogColumn {
    std::string name;
    bool isNumber = false;
};

/// The columns of the catalog's table of that name, in any case, in their order; nothing if there is no such table.
/// They are those of a new catalog, read once from the statements that make it.
const std::vector<CatalogColumn>* ColumnsOfCatalogTable(std::string_view table);

} // namespace tarnwick
