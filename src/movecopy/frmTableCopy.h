#pragma once

#include "CopyDialog.h"

class DropDown;

/// Copies a table under another name, with its columns and privileges, into any database of its datasource.
class frmTableCopy : public CopyDialog
{
public:
    frmTableCopy();

    /// Shows the dialog for a table and returns when it has closed.
    static void Display(dao::Database& db, const QString& database, const QString& table);

private:
    NameRules rules() const override;
    bool isReady() override;
    void copy(const QString& table) override;
    Collection collection() const override;

    QString m_originalDatabase;
    QString m_original;
    QLabel* m_databaseLabel = nullptr;
    QLabel* m_label = nullptr;
    DropDown* m_databases = nullptr;
};
