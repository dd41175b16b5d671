#include "Recordset.h"

#include "Conversions.h"
#include "RuntimeError.h"

namespace dao
{

std::int32_t Value::Long() const
{
    if (m_null)
        throw RuntimeError(ErrorNumber::InvalidUseOfNull);
    return conversions::ToLong(m_text);
}

dao::Value Field::Value() const
{
    if (!m_recordset)
        throw RuntimeError(ErrorNumber::NoCurrentRecord);
    bool isNull = false;
    const QStringView text = m_recordset->View(m_column, &isNull);
    return isNull ? dao::Value() : dao::Value(QString(text.data(), text.size()));
}

const Field& Fields::Item(const QString& name) const
{
    // Loops over rows ask for the columns in the same order again and again.
    const std::size_t count = m_fields.size();
    for (std::size_t tried = 0; tried < count; ++tried) {
        const std::size_t index = m_likely + tried < count ? m_likely + tried : m_likely + tried - count;
        const Field& field = m_fields[index];
        if (field.m_findable && field.Name.size() == name.size() &&
            (field.Name == name || field.Name.compare(name, Qt::CaseInsensitive) == 0)) {
            m_likely = index + 1 < count ? index + 1 : 0;
            return field;
        }
    }
    throw RuntimeError(ErrorNumber::ItemNotFound);
}

const Field& Fields::Item(int index) const
{
    if (index < 0 || index >= Count())
        throw RuntimeError(ErrorNumber::ItemNotFound);
    return m_fields[static_cast<std::size_t>(index)];
}

void Recordset::addField(Field field)
{
    field.m_recordset = this;
    field.m_column = m_fields.Count();
    for (const Field& former : m_fields)
        field.m_findable = field.m_findable && former.Name.compare(field.Name, Qt::CaseInsensitive) != 0;
    m_fields.m_fields.push_back(std::move(field));
}

} // namespace dao
