#pragma once

#include "PasswordPane.h"

/// The pane of a user, a row of TW_USER. ADMIN is there to stay, under that name.
class frmUser : public PasswordPane
{
    Q_OBJECT

public:
    explicit frmUser(QWidget* parent = nullptr);

private:
    QString parentKey() const override;
    QString title(State state) const override;
    QString selectStatement() const override;
    bool mayDelete() override;
    bool confirmsDelete() override;
    bool validate() override;
    bool mayUpdate() override;
    void carryKey() override;
    void updateRow() override;
    void renameNodes(const QString& from, const QString& to) override;
    void deleteRow() override;
};
