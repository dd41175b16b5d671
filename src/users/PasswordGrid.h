#pragma once

#include "GridPane.h"

/// A grid with users and passwords. A stored password never shows, and one that has been typed is kept aside until the
/// row is written or left.
class PasswordGrid : public GridPane
{
protected:
    /// One of the columns must be the password's, a masked one.
    PasswordGrid(const Kind& kind, std::vector<GridColumn> columns, QWidget* parent);

    /// Whether there is a password to be written: one of nothing but blanks is none.
    bool isPasswordTyped() const;
    /// The typed password as it goes between the apostrophes of a statement; empty without one.
    QString quotedPassword() const;
    /// The typed password in front of what else an UPDATE sets, as "USER_PASSWORD = '...', "; empty without one.
    QString passwordAssignment() const;
    /// Tells, for a row whose user has changed, that its password is going to be lost.
    void warnOfLostPassword();
    /// Shows, for a row that has been added anew, whether it has been given a password.
    void showStoredPassword();

private:
    void cellChanged(const QString& column) override;

    QString m_column;
};

/// A masked column for passwords.
GridColumn passwordColumn(const QString& name);
