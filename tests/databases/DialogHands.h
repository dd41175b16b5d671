#pragma once

#include "DialogForm.h"
#include "DropDown.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <stdexcept>

/// A user's hands in the dialogs of this room; controls go by their object names.
namespace dialog
{

template <class Widget>
Widget& get(DialogForm& form, const QString& name)
{
    if (auto* found = form.findChild<Widget*>(name))
        return *found;
    throw std::runtime_error("There is no control " + name.toStdString());
}

inline bool isEnabled(DialogForm& form, const QString& name)
{
    return get<QWidget>(form, name).isEnabled();
}

inline QString label(DialogForm& form, const QString& name)
{
    return get<QLabel>(form, name).text();
}

/// The prompt in front of a control.
inline QString prompt(DialogForm& form, const QString& name)
{
    for (const QLabel* found : form.findChildren<QLabel*>()) {
        if (found->buddy() && found->buddy()->objectName() == name)
            return found->text();
    }
    return {};
}

inline QString caption(DialogForm& form, const QString& name)
{
    return get<QAbstractButton>(form, name).text();
}

/// The rows of a list, the cells of each with "|" between them.
inline QStringList rows(DialogForm& form, const QString& list)
{
    const QAbstractItemModel& model = *get<QAbstractItemView>(form, list).model();
    QStringList all;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells.append(model.index(row, column).data().toString());
        all.append(cells.join(u'|'));
    }
    return all;
}

/// The first cells of the rows of a list that are selected, from the top.
inline QStringList selected(DialogForm& form, const QString& list)
{
    const auto& view = get<QAbstractItemView>(form, list);
    QStringList all;
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        const QModelIndex index = view.model()->index(row, 0);
        if (view.selectionModel()->isSelected(index))
            all.append(index.data().toString());
    }
    return all;
}

/// Where the row of a name is in the viewport of its list.
inline QPoint place(QAbstractItemView& view, const QString& name)
{
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        const QModelIndex index = view.model()->index(row, 0);
        if (index.data().toString() != name)
            continue;
        view.scrollTo(index);
        return view.visualRect(index).center();
    }
    throw std::runtime_error("There is no row " + name.toStdString());
}

inline void clickRow(DialogForm& form, const QString& list, const QString& name)
{
    auto& view = get<QAbstractItemView>(form, list);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place(view, name));
}

inline void doubleClickRow(DialogForm& form, const QString& list, const QString& name)
{
    auto& view = get<QAbstractItemView>(form, list);
    const QPoint where = place(view, name);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, where);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, where);
}

/// Clicks into a text and types over whatever it holds.
inline void write(DialogForm& form, const QString& name, const QString& text)
{
    auto& entry = get<QWidget>(form, name);
    ASSERT_TRUE(entry.isVisible() && entry.isEnabled()) << name.toStdString();
    auto* memo = qobject_cast<QPlainTextEdit*>(&entry);
    QTest::mouseClick(memo ? memo->viewport() : &entry, Qt::LeftButton);
    QTest::keyClick(&entry, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&entry, Qt::Key_Delete);
    QTest::keyClicks(&entry, text);
}

/// Chooses from a list with the keys.
inline void pick(DialogForm& form, const QString& name, const QString& item)
{
    auto& list = get<DropDown>(form, name);
    ASSERT_TRUE(list.isVisible() && list.isEnabled()) << name.toStdString();
    list.setFocus();
    const int wanted = list.findText(item);
    ASSERT_GE(wanted, 0) << item.toStdString();
    while (list.currentIndex() != wanted)
        QTest::keyClick(&list, list.currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
}

inline QStringList items(DialogForm& form, const QString& name)
{
    const auto& list = get<DropDown>(form, name);
    QStringList all;
    for (int i = 0; i < list.count(); ++i)
        all.append(list.itemText(i));
    return all;
}

/// The control that keys go to.
inline QString focus(DialogForm& form)
{
    const QWidget* focused = form.focusWidget();
    return focused ? focused->objectName() : QString();
}

/// A key for whatever has the focus.
inline void hit(DialogForm& form, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    ASSERT_TRUE(form.focusWidget());
    QTest::keyClick(form.focusWidget(), key, modifiers);
}

} // namespace dialog
