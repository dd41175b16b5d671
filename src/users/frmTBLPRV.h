#pragma once

#include "ItemPane.h"

/// The pane of what a user may do with a table, a row of TW_TBLPRV.
class frmTBLPRV : public ItemPane
{
    Q_OBJECT

public:
    explicit frmTBLPRV(QWidget* parent = nullptr);

private:
    QString parentKey() const override;
    QString title(State state) const override;
    QString selectStatement() const override;
    void fill(const dao::Recordset& row) override;
    void populateLists() override;
    void listChanged(const QString& column) override;
    void adding() override;
    bool validate() override;
    void carryKey() override;
    void updateRow() override;
    void deleteRow() override;
    void undo(State state) override;
    void cancel(State state) override;

    /// The condition that selects the row of a user.
    QString ofUser(const QString& user) const;
    const QString& database() const { return owners().at(1); }
    const QString& table() const { return owners().at(2); }
};
