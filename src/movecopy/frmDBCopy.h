#pragma once

#include "CopyDialog.h"

/// Copies a database within its datasource under another name, with its tables, columns and privileges. The copied
/// privileges on the database have neither a user name nor a password of their own.
class frmDBCopy : public CopyDialog
{
public:
    frmDBCopy();

    /// Shows the dialog for a database and returns when it has closed.
    static void Display(dao::Database& db, const QString& database);

private:
    NameRules rules() const override;
    void copy(const QString& database) override;
    Collection collection() const override;

    QString m_original;
    QLabel* m_label = nullptr;
};
