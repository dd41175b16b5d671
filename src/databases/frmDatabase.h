#pragma once

#include "ItemPane.h"

/// The pane of a database, a row of TW_DB.
class frmDatabase : public ItemPane
{
    Q_OBJECT

public:
    explicit frmDatabase(QWidget* parent = nullptr);

private:
    QString parentKey() const override;
    QString title(State state) const override;
    QString selectStatement() const override;
    bool isProtected() const override;
    void fill(const dao::Recordset& row) override;
    void populateLists() override;
    void adding() override;
    bool validate() override;
    void followInsert() override;
    void carryKey() override;
    void updateRow() override;
    void followUpdate() override;
    void deleteRow() override;
    void undo(State state) override;
};
