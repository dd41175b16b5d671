#pragma once

#include "Recordset.h"
#include "Result.h"

#include <memory>

namespace dao
{

/// A recordset over the result of one statement. Rows are read ahead a few at a time and kept, so that every position
/// can be visited again; a small result is read whole when it is opened.
class OdbcRecordset final : public Recordset
{
public:
    /// Reads the first rows. Raises 3146.
    explicit OdbcRecordset(std::unique_ptr<Result> result);

    bool Eof() const override;
    void MoveNext() override;
    void MoveFirst() override;
    void MoveLast() override;
    long RecordCount() const override;
    long AbsolutePosition() const override;
    QStringView View(int column, bool* isNull) const override;

private:
    void requireRow() const;
    void moveTo(std::size_t row);

    std::unique_ptr<Result> m_result;
    std::size_t m_row = 0;
    std::size_t m_visited = 0;
};

} // namespace dao
