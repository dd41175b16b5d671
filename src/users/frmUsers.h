#pragma once

#include "PasswordGrid.h"

/// The users of a datasource in a grid. Unlike the pane of a user it renames the row alone: privileges stay under the
/// former name.
class frmUsers : public PasswordGrid
{
    Q_OBJECT

public:
    explicit frmUsers(QWidget* parent = nullptr);

private:
    QString title() const override;
    QString selectStatement() const override;
    QString nodeKey() const override;
    bool isLocked(const QString& column) override;
    QString validate() override;
    void replaceRow() override;
    void updateRow() override;
};
