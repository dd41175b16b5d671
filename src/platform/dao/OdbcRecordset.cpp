#include "OdbcRecordset.h"

#include "RuntimeError.h"
#include "Step.h"

#include <algorithm>
#include <limits>

namespace dao
{

namespace
{
constexpr std::size_t readAhead = 32;
}

OdbcRecordset::OdbcRecordset(std::unique_ptr<Result> result) : m_result(std::move(result))
{
    m_result->read(readAhead);
    for (const Field& field : m_result->fields())
        addField(field);
    moveTo(0);
}

bool OdbcRecordset::Eof() const
{
    return m_row >= m_result->rows().rows() || m_result->ended();
}

void OdbcRecordset::MoveNext()
{
    DBEngine::Errors().Clear();
    if (m_row + 1 < m_result->rows().rows() && !m_result->ended())
        return moveTo(m_row + 1);
    step([this] {
        DBEngine::Errors().Clear();
        requireRow();
        if (m_row + 1 == m_result->rows().rows() && !m_result->finished())
            m_result->read(readAhead);
        moveTo(m_row + 1);
    });
}

void OdbcRecordset::MoveFirst()
{
    step([this] {
        DBEngine::Errors().Clear();
        if (m_result->rows().rows() == 0 || m_result->ended())
            throw RuntimeError(ErrorNumber::NoCurrentRecord);
        moveTo(0);
    });
}

void OdbcRecordset::MoveLast()
{
    step([this] {
        DBEngine::Errors().Clear();
        if (m_result->rows().rows() == 0 || m_result->ended())
            throw RuntimeError(ErrorNumber::NoCurrentRecord);
        while (!m_result->finished())
            m_result->read(std::numeric_limits<std::size_t>::max());
        moveTo(m_result->rows().rows() - 1);
    });
}

long OdbcRecordset::RecordCount() const
{
    return static_cast<long>(m_visited);
}

long OdbcRecordset::AbsolutePosition() const
{
    return Eof() ? -1 : static_cast<long>(m_row);
}

QStringView OdbcRecordset::View(int column, bool* isNull) const
{
    requireRow();
    if (column < 0 || column >= Fields().Count())
        throw RuntimeError(ErrorNumber::ItemNotFound);
    bool null = false;
    const QStringView text = m_result->rows().cell(m_row, static_cast<std::size_t>(column), null);
    if (isNull)
        *isNull = null;
    return text;
}

void OdbcRecordset::requireRow() const
{
    if (Eof())
        throw RuntimeError(ErrorNumber::NoCurrentRecord);
}

void OdbcRecordset::moveTo(std::size_t row)
{
    m_row = row;
    m_visited = std::max(m_visited, std::min(row + 1, m_result->rows().rows()));
}

} // namespace dao
