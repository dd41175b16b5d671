#pragma once

#include "ItemPane.h"

/// An item pane with a password and its confirmation. A stored password is never read into the pane: both boxes are
/// filled with blanks instead, and a password of nothing but blanks means that the stored one is to stay.
class PasswordPane : public ItemPane
{
    Q_OBJECT

protected:
    /// The properties must have one password and its confirmation, txtConfirm.
    PasswordPane(const Kind& kind, std::vector<Property> properties, QWidget* parent);

    /// Whether there is no password to be written.
    bool isPasswordBlank() const { return isBlank(m_column); }
    /// Asks whether a password is to be entered before it is lost; true, with the focus on it, if so.
    bool wantsToEnterPassword();
    /// Whether the password has been entered twice alike; says so and moves the focus there if not.
    bool isPasswordConfirmed();
    /// The password in front of what else an UPDATE sets, as "USER_PASSWORD = '...', "; empty when it is to stay.
    QString passwordAssignment() const;

    void fill(const dao::Recordset& row) override;
    void blank() override;
    void displayed() override;
    void enableEntries(bool enabled) override;

private:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    QLineEdit& passwordBox() const;
    QLineEdit& txtConfirm() const;
    void selectPassword();

    QString m_column;
};
