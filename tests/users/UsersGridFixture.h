#pragma once

#include "CellGrid.h"
#include "Form.h"
#include "UserPaneFixture.h"

#include <QComboBox>

#include <utility>

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
    void TearDown() override
    {
        WithUsers<GridTest>::TearDown();
        for (const QString& pane : m_recorded)
            panes::remove(pane);
    }

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
    /// Opens the list over a cell and walks to an entry with the keys.
    void chooseFromList(int row, const QString& heading, const QString& item)
    {
        click(row, heading);
        hit(Qt::Key_Return);
        const qsizetype steps = offered().size();
        for (qsizetype i = 0; i < steps && editorText() != item; ++i)
            hit(Qt::Key_Down);
        ASSERT_EQ(editorText(), item);
    }
    /// A pane of another room that only writes down that it was opened.
    void record(const QString& pane, int keyParts)
    {
        panes::Operations operations;
        operations.Edit = {keyParts, [this, pane](Form&, const QStringList& keys) {
                               m_shown.append(pane + ' '_L1 + keys.join('/'_L1));
                           }};
        panes::add(
            pane, [pane] { return new Form(pane); }, operations);
        m_recorded.append(pane);
    }
    QStringList takeShown() { return std::exchange(m_shown, {}); }
    /// Leaves the row and expects a message of validation.
    void expectRefused(const QString& message, const QString& cell)
    {
        boxes.expectInform(message);
        leave();
        boxes.verify();
        EXPECT_EQ(current(), cell);
        EXPECT_NE(editor(), nullptr);
    }

private:
    QStringList m_recorded;
    QStringList m_shown;
};

} // namespace usersgrid
