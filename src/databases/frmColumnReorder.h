#pragma once

#include "OrderDialog.h"

#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>

namespace dao
{
class Database;
class Value;
} // namespace dao

/// The dialog that gives the ordinary columns of a table new numbers, 1 and up without gaps, in the order of its list.
/// Special columns are left with the number -1.
class frmColumnReorder : public OrderDialog
{
public:
    frmColumnReorder();

    /// Shows the dialog for the columns of a table and returns when it has closed. `table` is its datasource, database
    /// and name.
    static void Display(const QStringList& table);

private:
    /// The new number of a column by its name and its present number.
    using NumberOf = std::function<std::optional<std::int32_t>(const QString& column, const dao::Value& number)>;

    void chkSortAlpha_Click() override;
    void cmdOK_Click() override;
    void unloading() override;
    void renumber(QLatin1StringView status, const NumberOf& numberOf);

    dao::Database* m_database = nullptr;
    QStringList m_table;
};
