#pragma once

#include "DialogForm.h"
#include "Routine.h"
#include "RoutineNames.h"

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
/// leaves the rows that it has made. A dialog states the questions, what it copies, and where the copy belongs.
class CopyDialog : public DialogForm
{
protected:
    CopyDialog(const char* name, const QString& title);

    /// Sets a dialog up for what is to be copied, proposes a name, and returns when the dialog has closed.
    template <class Dialog, class SetUp>
    static void present(const char* name, dao::Database& db, SetUp setUp)
    {
        Routine routine(routineName(name, "Display"));
        routine.run([&] {
            auto& form = get<Dialog>(QString::fromLatin1(name));
            const forms::Running running(form);
            form.m_database = &db;
            setUp(form);
            form.proposeName();
            form.ask();
        });
    }

    /// A text that is only read.
    QLabel* addOriginal(const QString& name, const QString& prompt);
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

    /// The collection that a copy belongs to: its node, and its grid with the key parts.
    struct Collection {
        QString node;
        QString pane;
        QStringList keys;
    };

    /// What the status line says of a row: a text with "%1" for the name, and the column that holds the name.
    struct Progress {
        QString text;
        QString column;
    };
    static Progress ofColumns();
    static Progress ofTablePrivileges();

    dao::Database& db() const { return *m_database; }
    QString datasource() const;
    std::unique_ptr<dao::Recordset> open(const QString& select);
    void execute(const QString& statement);
    /// Writes one row for each row of a statement, which `insertion` rebuilds.
    void copyRows(const QString& select, const Progress& progress,
                  const std::function<QString(const dao::Recordset&)>& insertion);

private:
    virtual NameRules rules() const = 0;
    /// Whether all is chosen besides the name; tells the user if not.
    virtual bool isReady() { return true; }
    virtual void copy(const QString& name) = 0;
    virtual Collection collection() const = 0;

    void cmdOk_Click();
    void proposeName();
    bool findName(const NameRules& rules, const QString& question);
    QString settledName(const NameRules& rules);
    void backToName();

    dao::Database* m_database = nullptr;
    QFormLayout* m_rows;
    NameEdit* m_name = nullptr;
    QString m_statement;
};
