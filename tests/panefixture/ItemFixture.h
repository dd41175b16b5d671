#pragma once

#include "DialogScript.h"
#include "MainWindowFixture.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

class DropDown;
class QLabel;
class UpDown;

/// A user in front of an item pane in the real main window. Entries go by the column that they are bound to.
class ItemFixture : public MainWindowTest
{
protected:
    ItemFixture();
    ~ItemFixture() override;
    void TearDown() override;

    /// Panes that only write down that they were shown, by name and number of key parts.
    void record(const std::vector<std::pair<QString, int>>& panes);

    /// Starts the program and opens the tree down to the parent of a node.
    void begin(const QStringList& steps);
    /// The same, and clicks the node; statements count from the click on.
    void open(const QStringList& steps);
    /// The same, and runs a command of the node's context menu.
    void command(const QStringList& steps, const QString& menuItem);

    /// A control of the current pane by its object name; fails the test and throws where there is none.
    QWidget& control(const QString& name) const;
    /// What the user works with for a column: its list or its text.
    QWidget& entry(const QString& column) const;
    DropDown& list(const QString& column) const;
    UpDown& arrows(int index) const;
    QString limits(int index) const;
    /// What the text of a column holds, be it hidden or not.
    QString text(const QString& column) const;
    QStringList texts(const QStringList& columns) const;
    /// The columns that are open to entry.
    QStringList open() const;

    /// Clicks into an entry and types another text into it.
    void write(const QString& column, const QString& text);
    /// Clicks into an entry and pastes another text into it.
    void paste(const QString& column, const QString& text);
    /// Clicks into an entry and deletes what it holds.
    void clear(const QString& column);
    void hit(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Chooses from a list with the keys.
    void pick(const QString& column, const QString& item);

    /// Clicks a button of the pane's tool bar.
    void press(const QString& key);
    /// Clicks a button of the pane, as cmdAction.
    void clickButton(const QString& name);
    /// What "OK" is going to do, and the buttons of the tool bar that can be clicked, as "File Edit: Up1 OK Cancel".
    QString state() const;
    /// The column, or the button, that has the window's focus.
    QString focus() const;

    /// The recorded panes that were shown since the last asking, as "frmFields Ledger1/STOCK".
    QStringList takeShown();
    /// The first cells of the grid that shows, without the row for a new row.
    QStringList gridNames() const;
    /// Runs before the first statement that begins so is sent, as another administrator would.
    void meanwhile(const QString& beginning, std::function<void()> action);
    /// Clicks "OK" of the tool bar with a second click right behind, which is served as soon as the first one's work
    /// lets events run. Tells in which routines it came; nothing when it only came behind them.
    QStringList pressOkTwice();

    DialogScript dialogs;

private:
    class Interloper;

    QStringList m_shown;
    std::unique_ptr<Interloper> m_interloper;
};
