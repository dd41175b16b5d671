#pragma once

#include "CellGrid.h"
#include "Settings.h"
#include "UserPaneFixture.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDirIterator>
#include <QFile>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QToolTip>

/// Passwords that are found wherever they show.
namespace passwordsearch
{

using namespace userpane;

inline const QString storedOfUser = u"QZX7-USER-PASSWORD"_s;
inline const QString storedOfDatabase = u"QZX7-DATABASE-PASSWORD"_s;
/// What all passwords here have in common, whether stored or typed, and nothing else has.
inline const QString sign = u"QZX7"_s;
inline const QString copied = u"what was copied before"_s;

/// Whose own text a password may be while it is being typed.
inline bool isPasswordBox(const QObject& object)
{
    const auto* edit = qobject_cast<const QLineEdit*>(&object);
    return edit && edit->echoMode() == QLineEdit::Password;
}

class Passwords : public UsersItemTest
{
protected:
    void SetUp() override
    {
        UsersItemTest::SetUp();
        change(u"UPDATE TW_USER SET USER_PASSWORD = '%1'"_s.arg(storedOfUser));
        change(u"UPDATE TW_DBPRV SET DATABASE_PASSWORD = '%1'"_s.arg(storedOfDatabase));
        QApplication::clipboard()->setText(copied);
    }

    /// Wherever the program could show a password, or hand it on, does so. Each line is a place and its text.
    /// `typing` leaves out the boxes themselves, which must hold what is being typed.
    QStringList leaks(bool typing = false) const
    {
        m_found.clear();
        for (const QWidget* widget : QApplication::allWidgets())
            lookAt(*widget, typing);
        for (const QAction* action : window->findChildren<QAction*>()) {
            note(*action, "action", action->text());
            note(*action, "tool tip", action->toolTip());
        }
        for (const QClipboard::Mode mode : {QClipboard::Clipboard, QClipboard::Selection})
            note(*window, "clipboard", QApplication::clipboard()->text(mode));
        note(*window, "tool tip that shows", QToolTip::text());
        note(*window, "status", statusText());
        note(*window, "title", paneTitle() + window->windowTitle());
        note(*window, "tree", wholeTree().join('\n'_L1));
        for (const QString& file : settingsFiles())
            note(*window, "settings", file);
        return m_found;
    }

    QStringList settingsFiles() const
    {
        QStringList contents;
        for (QDirIterator files(settingsFolder.folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
             files.hasNext();) {
            QFile file(files.next());
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            contents.append(QString::fromUtf8(file.readAll()));
        }
        return contents;
    }

    CellGrid& grid() const { return dynamic_cast<CellGrid&>(control(u"grd"_s)); }
    QLineEdit& cellEditor() const { return *grid().findChild<QLineEdit*>(u"txtCell"_s); }
    /// Clicks the cell of a row and of a heading.
    void clickCell(int row, const QString& heading)
    {
        for (int column = 0; column < grid().Cols(); ++column) {
            if (grid().Heading(column) != heading)
                continue;
            const QModelIndex index = grid().model()->index(row, column);
            grid().scrollTo(index);
            QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(index).center());
        }
    }
    /// Types into the current cell as it is, key by key.
    void typeIntoCell(const QString& text)
    {
        for (const QChar character : text)
            QTest::keyClicks(cellEditor().isVisible() ? static_cast<QWidget*>(&cellEditor()) : &grid(), character);
    }
    void leaveRow()
    {
        const QRect last = grid().visualRect(grid().model()->index(grid().Rows() - 1, 0));
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, last.center() + QPoint(0, 2 * last.height()));
    }
    /// All that the keys offer to get at what a box holds.
    static void tryToCopy(QLineEdit& box)
    {
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_Insert, Qt::ControlModifier);
        box.selectAll();
        box.copy();
        EXPECT_EQ(QApplication::clipboard()->text(), copied) << box.objectName().toStdString();
    }

    struct Place {
        QStringList node;
        QString column;
        QString heading;
        QString addItem;
        QString deleteItem;
        QString question;
    };
    /// The two item panes with a password, and the grids above them.
    static std::vector<Place> places()
    {
        return {{user(u"CLERK"_s), u"USER_PASSWORD"_s, u"User Password"_s, u"mnu_UserAddNew"_s, u"mnu_UserDelete"_s,
                 mayDelete},
                {ofDatabase(u"SALES"_s, u"CLERK"_s), u"DATABASE_PASSWORD"_s, u"Database Password"_s,
                 u"mnu_DBPRVAddNew"_s, u"mnu_DBPRVDelete"_s,
                 u"Are you sure you wish to delete this users database privileges?"_s}};
    }
    static QStringList gridOf(const Place& place) { return place.node.first(place.node.size() - 1); }
    /// The row of CLERK in the grid.
    int clerksRow() const { return static_cast<int>(gridNames().indexOf(u"CLERK"_s)); }

private:
    void note(const QObject& where, const char* what, const QString& text) const
    {
        if (text.contains(sign, Qt::CaseInsensitive))
            m_found.append(where.objectName() + ' '_L1 + QLatin1String(what) + ": "_L1 + text);
    }

    void lookAt(const QWidget& widget, bool typing) const
    {
        note(widget, "tool tip", widget.toolTip());
        note(widget, "status tip", widget.statusTip());
        note(widget, "help", widget.whatsThis());
        note(widget, "title", widget.windowTitle());
        note(widget, "accessible name", widget.accessibleName());
        note(widget, "accessible description", widget.accessibleDescription());
        if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) {
            note(widget, "shown text", edit->displayText());
            note(widget, "place holder", edit->placeholderText());
            if (!typing || !isPasswordBox(widget))
                note(widget, "text", edit->text());
        }
        if (const auto* memo = qobject_cast<const QPlainTextEdit*>(&widget))
            note(widget, "text", memo->toPlainText());
        if (const auto* label = qobject_cast<const QLabel*>(&widget))
            note(widget, "text", label->text());
        if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
            note(widget, "text", button->text());
        if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
            for (int i = 0; i < list->count(); ++i)
                note(widget, "item", list->itemText(i) + list->itemData(i).toString());
        }
        if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget); view && view->model())
            lookAt(*view, *view->model(), {});
        if (QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget))) {
            lookAt(widget, *accessible);
            // Nobody tells it when a grid is filled anew, as long as no screen reader runs.
            QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(accessible));
        }
    }

    void lookAt(const QAbstractItemView& view, const QAbstractItemModel& model, const QModelIndex& parent) const
    {
        for (int row = 0; row < model.rowCount(parent); ++row) {
            for (int column = 0; column < model.columnCount(parent); ++column) {
                const QModelIndex index = model.index(row, column, parent);
                for (int role = 0; role <= Qt::UserRole + 8; ++role)
                    note(view, "cell", index.data(role).toString());
                lookAt(view, model, index);
            }
        }
    }

    void lookAt(const QWidget& widget, QAccessibleInterface& accessible) const
    {
        for (const QAccessible::Text kind : {QAccessible::Name, QAccessible::Value, QAccessible::Description,
                                             QAccessible::Help, QAccessible::Accelerator})
            note(widget, "spoken", accessible.text(kind));
        if (QAccessibleTextInterface* text = accessible.textInterface()) {
            note(widget, "read out", text->text(0, text->characterCount()));
            if (qobject_cast<const QLineEdit*>(&widget))
                lookAtPieces(widget, *text);
        }
        if (QAccessibleTableInterface* table = accessible.tableInterface()) {
            for (int row = 0; row < table->rowCount(); ++row) {
                for (int column = 0; column < table->columnCount(); ++column) {
                    if (const QAccessibleInterface* cell = table->cellAt(row, column))
                        note(widget, "spoken cell", cell->text(QAccessible::Name) + cell->text(QAccessible::Value));
                }
            }
        }
    }

    /// What a screen reader gets that walks through a text.
    void lookAtPieces(const QWidget& widget, QAccessibleTextInterface& text) const
    {
        int start = 0;
        int end = 0;
        for (const QAccessible::TextBoundaryType boundary :
             {QAccessible::CharBoundary, QAccessible::WordBoundary, QAccessible::SentenceBoundary,
              QAccessible::ParagraphBoundary, QAccessible::LineBoundary, QAccessible::NoBoundary}) {
            QString before;
            QString at;
            QString after;
            for (int offset = 0; offset < text.characterCount(); ++offset) {
                before += text.textBeforeOffset(offset, boundary, &start, &end);
                at += text.textAtOffset(offset, boundary, &start, &end);
                after += text.textAfterOffset(offset, boundary, &start, &end);
            }
            note(widget, "walked before", before);
            note(widget, "walked at", at);
            note(widget, "walked after", after);
        }
    }

    mutable QStringList m_found;
};

} // namespace passwordsearch
