#pragma once

#include "PasswordGrid.h"
#include "Privileges.h"

/// What users may do in a database, in a grid. It does not write a changed security level of a row that is there
/// already.
class frmDBPRVs : public PasswordGrid
{
    Q_OBJECT

public:
    explicit frmDBPRVs(QWidget* parent = nullptr);

private:
    QString title() const override;
    QString selectStatement() const override;
    QString nodeKey() const override;
    std::optional<Owner> owner() const override;
    void populateLists() override;
    QString validate() override;
    void replaceRow() override;
    void updateRow() override;

    /// The condition that selects the row of a user.
    QString ofUser(const QString& user) const { return privileges::ofUser(database(), user); }
    const QString& database() const { return keys().at(1); }
};
