#pragma once

#include "KeyedCollection.h"

#include <QString>

#include <vector>

class QWidget;

/// A control of a form: its name, which the controls of an array share, its index among them, and its tag, which is the
/// catalog column that it is bound to or empty.
struct Control {
    QString Name;
    int Index = 0;
    QString Tag;
    QWidget* Widget = nullptr;

    /// What the control holds: the text of an entry, a label or a list, 0 or 1 of a check box.
    QString Value() const;
    /// Raises the same change as the user's doing does, unless the value is equal.
    void setValue(const QString& value) const;
};

/// The controls of a form in their design order.
using Controls = std::vector<Control>;

/// A bound control under its key: the column, or name and index for a control without a tag.
struct CCtrl {
    QString Key;
    Control Ctl;
};

/// The bound controls of one name by their keys.
class CCtrls
{
public:
    /// Raises 457 for a key that is already there.
    void add(const QString& key, const Control& control) { m_controls.add(key, {key, control}); }
    /// Raises 5 for a missing key, as Remove does.
    const Control& Item(const QString& key) const { return m_controls.Item(key).Ctl; }
    /// The same, or null.
    const Control* find(const QString& key) const;
    int Count() const { return m_controls.Count(); }
    void Remove(const QString& key) { m_controls.Remove(key); }
    auto begin() const { return m_controls.begin(); }
    auto end() const { return m_controls.end(); }

    /// Adds every control of the form that has the prototype's name.
    void BindControls(const Controls& form, const QString& prototype);

private:
    KeyedCollection<CCtrl> m_controls;
};
