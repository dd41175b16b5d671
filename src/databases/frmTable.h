#pragma once

#include "ItemPane.h"

/// The pane of an SQL table, a row of TW_TABLE.
class frmTable : public ItemPane
{
    Q_OBJECT

public:
    explicit frmTable(QWidget* parent = nullptr);

private:
    const char* stackedRoutine(const char* operation) const override;
    QString parentKey() const override;
    QString title(State state) const override;
    QString selectStatement() const override;
    bool isProtected() const override;
    void fill(const dao::Recordset& row) override;
    void populateLists() override;
    void adding() override;
    void enableEntries(bool enabled) override;
    bool validate() override;
    void followInsert() override;
    void carryKey() override;
    void updateRow() override;
    void deleteRow() override;
    void undo(State state) override;
    void buttonClicked(const QString& name) override;
    void toolBarClicked(const QString& key) override;

    void cmdCalcColumns_Click();
    void cmdCriteria_Click();
    const QString& database() const { return owners().at(1); }
};
