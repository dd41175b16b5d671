#pragma once

#include "ItemPane.h"

/// The pane of a file definition, a row of TW_FILE.
class frmFile : public ItemPane
{
    Q_OBJECT

public:
    explicit frmFile(QWidget* parent = nullptr);

private:
    QString parentKey() const override;
    QString title(State state) const override;
    QString selectStatement() const override;
    bool isProtected() const override;
    bool validate() override;
    void enableEntries(bool enabled) override;
    void editing() override;
    void carryKey() override;
    void updateRow() override;
    void deleteRow() override;
    void buttonClicked(const QString& name) override;

    void cmdCalcRecordSize_Click();
    /// The first table that maps the file, or a null text.
    QString firstTable() const;
};
