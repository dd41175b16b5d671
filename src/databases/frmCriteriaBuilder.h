#pragma once

#include "DialogForm.h"

class PropertyMemo;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

/// The dialog that edits the stored filter of a table: any SQL text, with columns named behind the database and the
/// table, as SQL clients see them.
class frmCriteriaBuilder : public DialogForm
{
public:
    frmCriteriaBuilder();

    /// Lets the user go on from a criteria. Returns the new one after "OK", else the given one, as for a table without
    /// columns.
    static QString GetCriteria(const QString& datasource, const QString& database, const QString& table,
                               const QString& criteria);

    /// Says so where a pane has kept only the beginning of what was built.
    static void TellIfCut(const QString& built, const QString& kept);

private:
    QWidget* buildColumns();
    QWidget* buildOperators();
    QWidget* buildCriteria();
    bool fill(const QString& datasource, const QString& database, const QString& table);
    void append(const QString& text);
    void lstColumns_DblClick(const QListWidgetItem* item);
    void cmdInsert_Click();
    void cmdClear_Click();

    QListWidget* m_columns = nullptr;
    QLineEdit* m_value = nullptr;
    PropertyMemo* m_criteria = nullptr;
    /// The name of the table in SQL.
    QString m_table;
    bool m_accepted = false;
};
