#include "CsvDefaults.h"

#include "CLOCDTs.h"
#include "Conversions.h"
#include "CsvColumns.h"

using namespace Qt::StringLiterals;

namespace
{

Assumption fillInField(CsvColumns& columns, const CLOCDTs& types)
{
    columns.setCount(11);
    if (const CLOCDT* type = types.find(columns[4].toString())) {
        columns.set(7, QString::number(type->DEFAULT_PRECISION()));
        // The length stands in the place of the scale.
        columns.set(8, QString::number(type->DEFAULT_LENGTH()));
        columns.set(9, u"0"_s);
        columns.set(10, type->DEFAULT_FORMAT());
    }
    return {u"FIELD"_s, u"Missing DT information - Assuming default"_s};
}

Assumption fillInColumn(CsvColumns& columns)
{
    const bool hasLast = columns.count() == 11;
    if (hasLast && !conversions::IsNumeric(columns[11])) {
        columns.set(12, u"0"_s);
        return {u"Table"_s, u"Missing Column Type - Assuming Default"_s};
    }
    columns.set(12, hasLast ? columns[11].toString() : u"0"_s);
    columns.set(11, columns[4].toString());
    if (hasLast)
        return {u"Table"_s, u"Missing Display Name - Assuming Default"_s};
    return {u"Column "_s, u"Missing Display Name & Column Type - Assuming Default"_s};
}

} // namespace

Assumption fillIn(QStringView id, CsvColumns& columns, const CLOCDTs& types)
{
    const int count = columns.count();
    if (id == "FIELD"_L1 && count == 6)
        return fillInField(columns, types);
    if (id == "DB"_L1 && count == 5) {
        columns.set(6, columns[2].toString());
        return {u"DB"_s, u"Missing Display Name - Assuming Default"_s};
    }
    if (id == "TABLE"_L1 && count == 7) {
        columns.set(8, columns[3].toString());
        return {u"Table"_s, u"Missing Display Name - Assuming Default"_s};
    }
    if (id == "COLUMN"_L1 && (count == 10 || count == 11))
        return fillInColumn(columns);
    return {};
}
