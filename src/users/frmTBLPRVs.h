#pragma once

#include "GridPane.h"
#include "Privileges.h"

/// What users may do with a table, in a grid. The user of a row that is there already cannot be changed: the statement
/// that would remove the row is malformed, and refused.
class frmTBLPRVs : public GridPane
{
    Q_OBJECT

public:
    explicit frmTBLPRVs(QWidget* parent = nullptr);

private:
    QString title() const override;
    QString selectStatement() const override;
    QString nodeKey() const override;
    std::optional<Owner> owner() const override;
    void populateLists() override;
    QString validate() override;
    void replaceRow() override;
    void updateRow() override;

    /// The condition that selects the rows of the table.
    QString ofTable() const { return privileges::ofTable(database(), table()); }
    /// The condition that selects the row of a user.
    QString ofUser(const QString& user) const { return privileges::ofUser(database(), table(), user); }
    const QString& database() const { return keys().at(1); }
    const QString& table() const { return keys().at(2); }
};
