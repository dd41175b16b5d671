#pragma once

#include "PasswordPane.h"

/// The pane of what a user may do in a database, a row of TW_DBPRV.
class frmDBPRV : public PasswordPane
{
    Q_OBJECT

public:
    explicit frmDBPRV(QWidget* parent = nullptr);

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
    void cancel(State state) override;

    /// The condition that selects the row.
    QString ofRow() const;
    const QString& database() const { return owners().at(1); }
};
