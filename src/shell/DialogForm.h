#pragma once

#include "Form.h"

class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

/// A modal dialog with the manners of the desktop's own: Enter presses the button that has the focus and otherwise the
/// default one, Escape presses the cancelling one, and it comes up over the middle of its owner, whole on the screen.
/// A dialog is loaded for one showing: its buttons unload it.
class DialogForm : public Form
{
public:
    explicit DialogForm(const QString& name, QWidget* parent = nullptr);

    /// The dialog of that name, which the registry of forms knows from its first use on.
    template <class Dialog>
    static Dialog& get(const QString& name)
    {
        if (!forms::isKnown(name))
            forms::add(name, [] { return new Dialog; });
        return static_cast<Dialog&>(forms::get(name));
    }

    /// Shows the dialog over the main window, if there is one, and unloads it afterwards. The caller holds a
    /// forms::Running if it means to read the dialog's answer.
    void ask();

protected:
    /// The layout of what stands above the row of buttons.
    QVBoxLayout* body() const { return m_body; }
    /// A button at the right end of the bottom row, behind those already there.
    QPushButton* addButton(const QString& name, const QString& caption);
    /// What Enter presses wherever the focus is in no button.
    void setDefaultButton(QPushButton* button);
    /// What Escape presses; without one it closes the dialog as its title bar does.
    void setCancelButton(QPushButton* button) { m_cancel = button; }

    /// The place that the settings have for a dialog, in twips under Left and Top, or another one.
    static QPoint storedPosition(const QString& section, QPoint otherwise);
    /// Stores the place of a dialog that has been shown.
    void storePosition(const QString& section) const;

    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// Where the dialog comes up, given where it would stand in the middle of its owner.
    virtual QPoint position(QPoint centred) const { return centred; }

    void place();
    void markDefault(QWidget* focus);

    QVBoxLayout* m_body;
    QHBoxLayout* m_buttons;
    QPushButton* m_default = nullptr;
    QPushButton* m_marked = nullptr;
    QPushButton* m_cancel = nullptr;
    bool m_placed = false;
};
