#pragma once

#include "DialogForm.h"

#include <QHash>

#include <array>

class DropDown;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;

/// The dialog that builds the SELECT for a look at the records of a table: which columns, and up to five conditions.
class frmTableCriteria : public DialogForm
{
public:
    frmTableCriteria();

    /// Lets the user choose. Returns the statement after "OK", else an empty text.
    static QString GetCriteria(const QString& datasource, const QString& database, const QString& table);

    /// A value as a literal of an SQL type.
    static QString WrapCriteria(const QString& value, const QString& type);

private:
    static constexpr std::size_t conditionCount = 5;

    /// One condition, by its line.
    struct Condition {
        DropDown* cboAndOr;
        DropDown* cboColumn;
        DropDown* cboCriteria;
        QLineEdit* txtCriteria;
    };

    QWidget* buildColumns();
    QWidget* buildConditions();
    bool fill(const QString& datasource, const QString& database, const QString& table);
    void cboAndOr_Click(std::size_t index);
    static void enableLists(const Condition& condition, bool enabled);
    void selectAll(bool selected);
    void lstColumns_Click();
    void cmdClear_Click();
    void cmdOK_Click();
    QString statement() const;
    QString comparison(const Condition& condition) const;

    QTreeWidget* m_columns = nullptr;
    QLabel* m_from = nullptr;
    QPushButton* m_ok = nullptr;
    std::array<Condition, conditionCount> m_conditions{};
    QHash<QString, QString> m_types;
    /// The name of the table in SQL.
    QString m_table;
    bool m_accepted = false;
};
