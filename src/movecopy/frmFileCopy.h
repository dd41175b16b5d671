#pragma once

#include "CopyDialog.h"

/// Copies a file within its datasource under another name, with its fields.
class frmFileCopy : public CopyDialog
{
public:
    frmFileCopy();

    /// Shows the dialog for a file and returns when it has closed.
    static void Display(dao::Database& db, const QString& file);

private:
    NameRules rules() const override;
    void copy(const QString& file) override;
    Collection collection() const override;

    QString m_original;
    QLabel* m_label = nullptr;
};
