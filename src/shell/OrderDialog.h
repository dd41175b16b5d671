#pragma once

#include "DialogForm.h"

class QCheckBox;
class QListWidget;

/// A dialog in which the user brings names into an order, by moving one at a time or by the alphabet, and stores it
/// with "OK". What the list is filled from and where the order goes is the concrete dialog's. All of them come up where
/// the one that calls savePosition was left.
class OrderDialog : public DialogForm
{
public:
    /// What differs on the form.
    struct Words {
        QString title;
        /// The list's control name, prompt and tool-tip.
        QString list;
        QString prompt;
        QString listTip;
        QString upTip;
        QString downTip;
    };

    OrderDialog(const QString& name, const Words& words, QWidget* parent = nullptr);

protected:
    /// Whether the user wants the names in the order of the alphabet.
    bool sortsAlphabetically() const;
    /// The names in the order in which they stand.
    QStringList names() const;
    void clear();
    void add(const QString& name);

    void savePosition() const;

private:
    /// Fills the list anew; moves made by hand are lost.
    virtual void chkSortAlpha_Click() = 0;
    /// Stores the order and unloads the dialog.
    virtual void cmdOK_Click() = 0;

    QPoint position(QPoint centred) const override;
    QWidget* buildList(const Words& words);
    void cmdUp_Click() { moveSelected(-1); }
    void cmdDown_Click() { moveSelected(1); }
    void moveSelected(int rows);

    QListWidget* m_list;
    QCheckBox* m_sort;
};
