#include "GridFixture.h"

#include "CellGrid.h"
#include "FilesRoom.h"
#include "Form.h"
#include "ctlTextLookup.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

#include <stdexcept>

using namespace Qt::StringLiterals;

void GridTest::SetUp()
{
    MainWindowTest::SetUp();
    registerFilesRoom();
}

void GridTest::open(const QStringList& steps)
{
    if (!window)
        start();
    window->resize(1100, 640);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    expandTo(key(steps.first(steps.size() - 1)));
    reopen(steps);
}

void GridTest::reopen(const QStringList& steps)
{
    click(key(steps));
    statements.clear();
}

CellGrid& GridTest::grid() const
{
    const Form* pane = window->currentPane();
    auto* found = pane ? pane->findChild<CellGrid*>(u"grd"_s) : nullptr;
    if (!found)
        throw std::runtime_error("There is no grid");
    return *found;
}

int GridTest::column(const QString& heading) const
{
    for (int column = 0; column < grid().Cols(); ++column)
        if (grid().Heading(column) == heading)
            return column;
    throw std::runtime_error("There is no column " + heading.toStdString());
}

int GridTest::rowOf(const QString& name) const
{
    for (int row = 0; row < grid().Rows(); ++row)
        if (grid().TextMatrix(row, 0) == name)
            return row;
    throw std::runtime_error("There is no row " + name.toStdString());
}

int GridTest::blankRow() const
{
    return grid().Rows() - 1;
}

QString GridTest::cell(int row, const QString& heading) const
{
    return grid().TextMatrix(row, column(heading));
}

QStringList GridTest::rows() const
{
    QStringList lines;
    for (int row = 0; row < grid().Rows(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid().Cols(); ++column)
            cells.append(grid().TextMatrix(row, column));
        lines.append(cells.join('|'_L1));
    }
    return lines;
}

QString GridTest::current() const
{
    return grid().Row() < 0 ? QString() : QString::number(grid().Row()) + ' '_L1 + grid().Heading(grid().Col());
}

void GridTest::click(int row, const QString& heading)
{
    const QModelIndex index = grid().model()->index(row, column(heading));
    grid().scrollTo(index);
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(index).center());
}

void GridTest::doubleClick(int row, const QString& heading)
{
    click(row, heading);
    const QModelIndex index = grid().model()->index(row, column(heading));
    QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(index).center());
}

void GridTest::clickBeside()
{
    const QRect last = grid().visualRect(grid().model()->index(blankRow(), 0));
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, last.center() + QPoint(0, 2 * last.height()));
}

QWidget* GridTest::focus() const
{
    QWidget* widget = QApplication::focusWidget();
    return widget && window->isAncestorOf(widget) ? widget : window->focusWidget();
}

void GridTest::write(const QString& text)
{
    // The first character opens an editor, which then has the focus.
    for (const QChar character : text)
        QTest::keyClicks(focus(), character);
}

void GridTest::hit(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(focus(), key, modifiers);
}

void GridTest::change(int row, const QString& heading, const QString& text)
{
    click(row, heading);
    hit(Qt::Key_Delete);
    write(text);
}

void GridTest::paste(const QString& text)
{
    QApplication::clipboard()->setText(text);
    hit(Qt::Key_V, Qt::ControlModifier);
}

void GridTest::pressLookUp()
{
    auto* button = grid().findChild<QToolButton*>(u"cmd"_s);
    ASSERT_TRUE(button && button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
}

QWidget* GridTest::editor() const
{
    for (const char* name : {"txtCell", "cboCell", "ctlLUCell"}) {
        auto* found = grid().findChild<QWidget*>(QLatin1String(name));
        if (found && found->isVisible())
            return found;
    }
    return nullptr;
}

QString GridTest::editorText() const
{
    QWidget* shown = editor();
    if (auto* text = qobject_cast<QLineEdit*>(shown))
        return text->text();
    if (auto* list = qobject_cast<QComboBox*>(shown))
        return list->currentText();
    auto* lookUp = qobject_cast<ctlTextLookup*>(shown);
    return lookUp ? lookUp->Text() : QString();
}

QStringList GridTest::stored(const QString& select) const
{
    QStringList lines;
    for (const QStringList& row : world.rows(datasource, select))
        lines.append(row.join('|'_L1));
    return lines;
}

QStringList GridTest::sent() const
{
    QStringList own = statements.statements();
    own.removeIf([](const QString& statement) {
        const bool readsFiles = statement.contains("NOT IN ('CNTRL', 'COLUMN'"_L1);
        const bool readsFields = statement.startsWith("SELECT FIELD_NAME FROM TW_FIELD"_L1) &&
                                 statement.endsWith("ORDER BY FIELD_NAME ASC"_L1);
        return readsFiles || readsFields;
    });
    return own;
}
