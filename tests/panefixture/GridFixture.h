#pragma once

#include "MainWindowFixture.h"

#include <QWidget>

class CellGrid;
class QComboBox;
class QLineEdit;
class ctlTextLookup;

/// A user in front of a grid pane in the real main window. Cells go by the name of their heading.
class GridFixture : public MainWindowTest
{
protected:
    /// Starts the program and clicks its way to the grid of a node: open({"FI"}).
    void open(const QStringList& steps);
    /// Clicks the node of the grid, as open does, in the program that runs.
    void reopen(const QStringList& steps);

    CellGrid& grid() const;
    int column(const QString& heading) const;
    /// The row whose first cell has this text; fails the test and throws where there is none.
    int rowOf(const QString& name) const;
    /// The last row.
    int blankRow() const;
    QString cell(int row, const QString& heading) const;
    QString cell(const QString& name, const QString& heading) const { return cell(rowOf(name), heading); }
    /// All cells, the rows as lines.
    QStringList rows() const;
    /// The current cell as "1 Record Size".
    QString current() const;

    void click(int row, const QString& heading);
    void click(const QString& name, const QString& heading) { click(rowOf(name), heading); }
    using MainWindowTest::click;
    void doubleClick(int row, const QString& heading);
    /// Clicks below the last row.
    void clickBeside();
    /// Keys go to whatever has the focus.
    void write(const QString& text);
    void hit(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Clicks a cell and types another text into it, without leaving it.
    void change(int row, const QString& heading, const QString& text);
    void change(const QString& name, const QString& heading, const QString& text)
    {
        change(rowOf(name), heading, text);
    }
    using MainWindowTest::change;
    void paste(const QString& text);
    /// A real click on the button beside the entry of the look-up editor.
    void pressLookUp();

    /// What keys go to. A desktop gives the window its focus back when a dialog has closed; off-screen nobody does.
    QWidget* focus() const;
    /// The editor that shows, or null.
    QWidget* editor() const;
    QString editorText() const;
};
