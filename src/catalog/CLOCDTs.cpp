#include "CLOCDTs.h"

#include "LocalTypeLimits.h"
#include "TypeRows.h"
#include "modString.h"

std::int32_t CLOCDT::DEFAULT_LENGTH() const
{
    const std::int32_t variable = NumberAttr(";DEFAULT_LENGTH=", ATTRIBUTES);
    return variable != 0 ? variable : NumberAttr(";LENGTH=", ATTRIBUTES);
}

std::int32_t CLOCDT::DEFAULT_PRECISION() const
{
    const std::int32_t marker = NumberAttr(";DEFAULT_PRECISION=", ATTRIBUTES);
    if (marker == 0) {
        const std::int32_t fixed = NumberAttr(";PRECISION=", ATTRIBUTES);
        return fixed != 0 ? fixed : DEFAULT_LENGTH();
    }
    if (ATTRIBUTES.startsWith(";BINARY")) {
        if (!ATTRIBUTES.contains(";INTEGER;"))
            return marker;
        const std::int32_t digits = decimalDigits(DEFAULT_LENGTH(), ATTRIBUTES.contains(";UNSIGNED;"));
        return digits != 0 ? digits : marker;
    }
    if (ATTRIBUTES.startsWith(";PACKED"))
        return 2 * DEFAULT_LENGTH();
    // Elsewhere the number is only a marker that the precision is variable: it follows the length.
    return DEFAULT_LENGTH();
}

QString CLOCDT::DEFAULT_FORMAT() const
{
    const QString variable = modString::ExtractAttr(";DEFAULT_FORMAT=", ATTRIBUTES);
    return !variable.isEmpty() ? variable : modString::ExtractAttr(";FORMAT=", ATTRIBUTES);
}

void CLOCDTs::FetchDTs(const QString& datasource)
{
    fetchTypes("CLOCDTs.FetchDTs", "TW_LOCDT", datasource, [this](const TypeRow& row) {
        CLOCDT type;
        type.LOCAL_TYPE_NAME = row.text("LOCAL_TYPE_NAME");
        type.SQL_TYPE_NAME = row.text("SQL_TYPE_NAME");
        type.ATTRIBUTES = row.text("ATTRIBUTES");
        type.REMARKS = row.text("REMARKS");
        add(std::move(type));
    });
}

void CLOCDTs::add(CLOCDT type)
{
    const QString key = type.LOCAL_TYPE_NAME;
    m_types.add(key, std::move(type));
}
