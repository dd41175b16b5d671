#pragma once

#include <QComboBox>

/// A list to choose from. `Change` comes with every other selection, whether the user or the program makes it, and
/// never while the list is being filled anew unless the text that was selected is no longer there. The wheel scrolls
/// what the list stands on and leaves the choice alone.
class DropDown : public QComboBox
{
    Q_OBJECT

public:
    explicit DropDown(QWidget* parent = nullptr);

    /// Fills the list anew and selects the former text again; without it nothing is selected.
    void refill(const QStringList& items);
    /// Selects an entry by its text; a text that the list lacks leaves it without a selection.
    void select(const QString& text);

signals:
    void Change();

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    int m_index = -1;
    bool m_refilling = false;
};
