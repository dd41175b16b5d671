#pragma once

#include "GridPane.h"

struct CSQLDT;

/// The ordinary columns of a table in a grid. It knows the row that it writes by its number alone, which special
/// columns can have as well.
class frmColumns : public GridPane
{
    Q_OBJECT

public:
    explicit frmColumns(QWidget* parent = nullptr);

private:
    QString title() const override;
    QString selectStatement() const override;
    QString nodeKey() const override;
    std::optional<Owner> owner() const override;
    void populateLists() override;
    bool isReadOnly() const override;
    bool isLocked(const QString& column) override;
    void cellChanged(const QString& column) override;
    void lookUp(const QString& column) override;
    QString validate() override;
    void replaceRow() override;
    void updateRow() override;

    QString validateKey();
    QString validateType();
    bool isToBeMended(const QString& column) const;
    bool IsValidLength(const CSQLDT& type) const;
    bool IsValidPrecision(const CSQLDT& type) const;
    QString search() const;
    /// The condition that selects the table.
    QString ofTable() const;
    QString ofLoadedNumber() const;
    const QString& database() const { return keys().at(1); }
    const QString& table() const { return keys().at(2); }
};
