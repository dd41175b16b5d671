#include "DatasourceFamily.h"

namespace dao
{

std::vector<DataSource> familyDataSources()
{
    std::vector<DataSource> sources = DBEngine::DataSources();
    std::erase_if(sources, [](const DataSource& source) { return source.Description != familyDriver; });
    return sources;
}

} // namespace dao
