#pragma once

#include "CellGrid.h"
#include "UserPaneFixture.h"

#include <QComboBox>

/// What the grids of the room have in common.
namespace usersgrid
{

using namespace userpane;

inline const QString warning = u"User Name has changed - password will be set to blank"_s;
inline const QString mask = u"**********"_s;

/// A grid of the room, with a user in front of it.
class UsersGridTest : public WithUsers<GridTest>
{
protected:
    void leave() { clickBeside(); }
    /// Types a text in place of a cell's, as the keys and the clipboard allow.
    void pasteInto(int row, const QString& heading, const QString& text)
    {
        click(row, heading);
        hit(Qt::Key_Delete);
        paste(text);
    }
    void pasteInto(const QString& name, const QString& heading, const QString& text)
    {
        pasteInto(rowOf(name), heading, text);
    }
    QStringList headings() const
    {
        QStringList all;
        for (int column = 0; column < grid().Cols(); ++column)
            all.append(grid().Heading(column));
        return all;
    }
    /// What the list over the current cell offers.
    QStringList offered() const
    {
        auto* list = qobject_cast<QComboBox*>(editor());
        if (!list)
            return {u"<no list>"_s};
        QStringList items;
        for (int i = 0; i < list->count(); ++i)
            items.append(list->itemText(i));
        return items;
    }
    /// Leaves the row and expects a message of validation.
    void expectRefused(const QString& message, const QString& cell)
    {
        boxes.expectInform(message);
        leave();
        boxes.verify();
        EXPECT_EQ(current(), cell);
        EXPECT_NE(editor(), nullptr);
    }
};

} // namespace usersgrid
