#pragma once

#include "PasswordPane.h"
#include "RightsPane.h"

/// The pane of what a user may do in a database, a row of TW_DBPRV.
class frmDBPRV : public RightsPane<PasswordPane>
{
    Q_OBJECT

public:
    explicit frmDBPRV(QWidget* parent = nullptr);

private:
    QString parentKey() const override;
    QString title(State state) const override;
    QString selectStatement() const override;
    void adding() override;
    bool validate() override;
    void carryKey() override;
    void updateRow() override;
    void deleteRow() override;

    /// The condition that selects the row.
    QString ofRow() const { return privileges::ofUser(database(), name()); }
    const QString& database() const { return owners().at(1); }
};
