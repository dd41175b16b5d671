#include "modAPIMisc.h"

#include "Routine.h"

#include <QComboBox>
#include <QLineEdit>

bool modAPIMisc::ComboKeyPress(QComboBox& combo, const QString& key)
{
    constexpr char16_t last = 128;
    if (key.isEmpty() || key.at(0) < u' ' || key.at(0) > last)
        return false;
    Routine routine("modAPIMisc.ComboKeyPress");
    routine.run([&] {
        QLineEdit& entry = *combo.lineEdit();
        const QString kept = entry.hasSelectedText() ? entry.text().left(entry.selectionStart()) : entry.text();
        const QString typed = kept + key;
        const int found = combo.findText(typed, Qt::MatchStartsWith);
        if (found < 0)
            return;
        combo.setCurrentIndex(found);
        combo.setEditText(combo.itemText(found));
        // The caret stays behind what was typed.
        const auto whole = static_cast<int>(entry.text().size());
        entry.setSelection(whole, static_cast<int>(typed.size()) - whole);
    });
    return true;
}
