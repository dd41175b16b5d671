#pragma once

#include "DialogForm.h"

#include <functional>
#include <memory>

class NameEdit;
class QFormLayout;
class QLabel;

namespace dao
{
class Database;
class Recordset;
} // namespace dao

/// What the dialogs of the Copy commands have in common: what is copied, an entry for the name of the copy with a
/// proposal, the questions about that name, and rows that are read, rebuilt and written one by one. A copy that fails
/// leaves the rows that it has made.
class CopyDialog : public DialogForm
{
protected:
    CopyDialog(const QString& name, const QString& title);

    /// A text that is only read.
    void addOriginal(const QString& name, const QString& prompt, QLabel*& label);
    void addEntry(const QString& prompt, QWidget& entry);
    /// The entry of the name of the copy.
    void addName(const QString& name, const QString& prompt);

    /// What is asked about the name of the copy.
    struct NameRules {
        /// The statement that looks for a free name, with "?" in the place of the name.
        QString unique;
        /// The name that a free one is made from.
        QString original;
        /// The question when there is no name.
        QString missing;
        /// The statement that finds a name, the column that holds it, and the question when it is taken.
        std::function<QString(const QString&)> select;
        QString column;
        std::function<QString(const QString&)> taken;
    };

    /// Fills the entry with a free name.
    void proposeName(const NameRules& rules);
    /// The name that the copy gets; empty where the user goes on choosing.
    QString settledName(const NameRules& rules);

    std::unique_ptr<dao::Recordset> open(const QString& select);
    void execute(const QString& statement);
    /// Runs a copy with the wait pointer and the form of errors in place, and unloads the dialog at its end.
    void run(const char* routine, const std::function<bool()>& copy);
    /// Writes one row for each row of a statement. `status` tells of it, `insertion` rebuilds it.
    void copyRows(const QString& select, const std::function<QString(const dao::Recordset&)>& status,
                  const std::function<QString(const dao::Recordset&)>& insertion);

    dao::Database* m_database = nullptr;

private:
    virtual void cmdOk_Click() = 0;

    QFormLayout* m_rows;
    NameEdit* m_name = nullptr;
    QString m_statement;
};
