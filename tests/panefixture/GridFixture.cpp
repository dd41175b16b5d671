#include "GridFixture.h"

#include "CellGrid.h"
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

void GridFixture::open(const QStringList& steps)
{
    if (!window)
        start();
    window->resize(1100, 640);
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    expandTo(key(steps.first(steps.size() - 1)));
    reopen(steps);
}

void GridFixture::reopen(const QStringList& steps)
{
    click(key(steps));
    statements.clear();
}

CellGrid& GridFixture::grid() const
{
    const Form* pane = window->currentPane();
    auto* found = pane ? pane->findChild<CellGrid*>(u"grd"_s) : nullptr;
    if (!found)
        throw std::runtime_error("There is no grid");
    return *found;
}

int GridFixture::column(const QString& heading) const
{
    for (int column = 0; column < grid().Cols(); ++column)
        if (grid().Heading(column) == heading)
            return column;
    throw std::runtime_error("There is no column " + heading.toStdString());
}

int GridFixture::rowOf(const QString& name) const
{
    for (int row = 0; row < grid().Rows(); ++row)
        if (grid().TextMatrix(row, 0) == name)
            return row;
    throw std::runtime_error("There is no row " + name.toStdString());
}

int GridFixture::blankRow() const
{
    return grid().Rows() - 1;
}

QString GridFixture::cell(int row, const QString& heading) const
{
    return grid().TextMatrix(row, column(heading));
}

QStringList GridFixture::rows() const
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

QString GridFixture::current() const
{
    return grid().Row() < 0 ? QString() : QString::number(grid().Row()) + ' '_L1 + grid().Heading(grid().Col());
}

void GridFixture::click(int row, const QString& heading)
{
    const QModelIndex index = grid().model()->index(row, column(heading));
    grid().scrollTo(index);
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(index).center());
}

void GridFixture::doubleClick(int row, const QString& heading)
{
    click(row, heading);
    const QModelIndex index = grid().model()->index(row, column(heading));
    QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(index).center());
}

void GridFixture::clickBeside()
{
    const QRect last = grid().visualRect(grid().model()->index(blankRow(), 0));
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, last.center() + QPoint(0, 2 * last.height()));
}

QWidget* GridFixture::focus() const
{
    QWidget* widget = QApplication::focusWidget();
    return widget && window->isAncestorOf(widget) ? widget : window->focusWidget();
}

void GridFixture::write(const QString& text)
{
    // The first character opens an editor, which then has the focus.
    for (const QChar character : text)
        QTest::keyClicks(focus(), character);
}

void GridFixture::hit(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(focus(), key, modifiers);
}

void GridFixture::change(int row, const QString& heading, const QString& text)
{
    click(row, heading);
    hit(Qt::Key_Delete);
    write(text);
}

void GridFixture::paste(const QString& text)
{
    QApplication::clipboard()->setText(text);
    hit(Qt::Key_V, Qt::ControlModifier);
}

void GridFixture::pressLookUp()
{
    auto* button = grid().findChild<QToolButton*>(u"cmd"_s);
    ASSERT_TRUE(button && button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
}

QWidget* GridFixture::editor() const
{
    for (const char* name : {"txtCell", "cboCell", "ctlLUCell"}) {
        auto* found = grid().findChild<QWidget*>(QLatin1String(name));
        if (found && found->isVisible())
            return found;
    }
    return nullptr;
}

QString GridFixture::editorText() const
{
    QWidget* shown = editor();
    if (auto* text = qobject_cast<QLineEdit*>(shown))
        return text->text();
    if (auto* list = qobject_cast<QComboBox*>(shown))
        return list->currentText();
    auto* lookUp = qobject_cast<ctlTextLookup*>(shown);
    return lookUp ? lookUp->Text() : QString();
}
