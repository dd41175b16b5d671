#pragma once

#include "ItemPane.h"
#include "RightsPane.h"

/// The pane of what a user may do with a table, a row of TW_TBLPRV.
class frmTBLPRV : public RightsPane<ItemPane>
{
    Q_OBJECT

public:
    explicit frmTBLPRV(QWidget* parent = nullptr);

private:
    QString parentKey() const override;
    QString title(State state) const override;
    QString selectStatement() const override;
    void adding() override;
    bool validate() override;
    void carryKey() override;
    void updateRow() override;
    void deleteRow() override;

    /// The condition that selects the row of a user.
    QString ofUser(const QString& user) const { return privileges::ofUser(database(), table(), user); }
    const QString& database() const { return owners().at(1); }
    const QString& table() const { return owners().at(2); }
};
