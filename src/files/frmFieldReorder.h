#pragma once

#include "OrderDialog.h"

namespace dao
{
class Database;
}

/// The dialog that gives the fields of a file new numbers, 1 and up without gaps, in the order of its list.
class frmFieldReorder : public OrderDialog
{
public:
    frmFieldReorder();

    /// Shows the dialog for the fields of a file and returns when it has closed: whether a field has a new number.
    static bool Display(dao::Database& database, const QString& file);

private:
    void chkSortAlpha_Click() override;
    void cmdOK_Click() override;

    dao::Database* m_database = nullptr;
    QString m_file;
    bool m_written = false;
};
