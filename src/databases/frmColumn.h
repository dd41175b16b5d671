#pragma once

#include "ItemPane.h"

/// The pane of an ordinary column of a table, a row of TW_COLUMN.
class frmColumn : public ItemPane
{
    Q_OBJECT

public:
    explicit frmColumn(QWidget* parent = nullptr);

    /// Opens or locks what an SQL type decides upon.
    void EnableDatatype(bool enabled);

private:
    const char* stackedRoutine(const char* operation) const override;
    QString parentKey() const override;
    QString title(State state) const override;
    QString selectStatement() const override;
    bool isProtected() const override;
    void fill(const dao::Recordset& row) override;
    void displayed() override;
    void populateLists() override;
    void adding() override;
    void editing() override;
    void enableEntries(bool enabled) override;
    void textChanged(const QString& column) override;
    void listChanged(const QString& column) override;
    void buttonClicked(const QString& name) override;
    bool validate() override;
    void followInsert() override;
    void carryKey() override;
    void updateRow() override;
    void followUpdate() override;
    bool confirmsDelete() override;
    void deleteRow() override;
    void undo(State state) override;

    void adoptType();
    void cmdNextColumnNumber_Click();
    bool isNumberOrNameTaken();
    /// Refuses a number beyond the limits of its arrows.
    bool refuseRange(const QString& what, const QString& column, int spinner);
    /// The condition that selects a column of the table.
    QString ofColumn(const QString& column) const;
    const QString& database() const { return owners().at(1); }
    const QString& table() const { return owners().at(2); }

    /// While a row is being filled in, a type changes nothing else.
    bool m_populating = false;
    QString m_loadedField;
};
