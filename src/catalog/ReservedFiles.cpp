#include "ReservedFiles.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

bool reservedfiles::isReserved(const QString& file)
{
    return u",CNTRL,COLUMN,DB,DBPRV,DRIVER,FIELD,FILE,KEY,LOCDT,SQLDT,TABLE,TBLPRV,USER,"_s.contains(','_L1 + file +
                                                                                                     ','_L1);
}

bool reservedfiles::hasControlBytes(const QString& file)
{
    static constexpr std::array names{"CNTRL"_L1, "co"_L1,    "DB"_L1,    "DBPRV"_L1, "DRIVER"_L1, "fd"_L1,
                                      "fi"_L1,    "LOCDT"_L1, "SQLDT"_L1, "ta"_L1,    "TBLPRV"_L1, "us"_L1};
    return std::find(names.begin(), names.end(), file) != names.end();
}
