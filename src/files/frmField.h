#pragma once

#include "ItemPane.h"

struct LocalTypeLimits;

/// The pane of a field, a row of TW_FIELD. What may be entered follows the field's storage type.
class frmField : public ItemPane
{
    Q_OBJECT

public:
    explicit frmField(QWidget* parent = nullptr);

    /// Puts the limits of a storage type upon length, precision, scale and format, and its defaults into them. Raises 5
    /// for a type that the connection does not know.
    void ApplyLocalType(const QString& localType);

private:
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
    bool validate() override;
    void carryKey() override;
    void updateRow() override;
    void followUpdate() override;
    void deleteRow() override;
    void undo(State state) override;
    void cancel(State state) override;
    void textChanged(const QString& column) override;
    bool makesKeyChanged(const QString& column) const override;
    void listChanged(const QString& column) override;
    void buttonClicked(const QString& name) override;

    const QString& file() const { return owners().back(); }
    void resetLimits();
    void enableButtons(bool enabled);
    bool refuseRange(const QString& what, const QString& column, int spinner);
    /// The attributes of the type in the pane as the limits read them; empty for a type that nobody knows.
    QString wrappedAttributes() const;
    void applyPackedRule();
    void cmdNextFieldNumber_Click();
    void cmdCalcOffset_Click();
    void cmdFormat_Click();
    void updateColumnLengths();

    QString m_storedNumber;
    bool m_loading = false;
    bool m_lengthChanged = false;
};
