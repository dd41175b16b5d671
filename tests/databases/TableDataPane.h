#pragma once

#include "TableDataFixture.h"

#include "CellGrid.h"
#include "ToolBar.h"

#include <QApplication>
#include <QClipboard>
#include <QToolButton>

namespace tabledata
{

inline const QString pane = u"frmTableData"_s;

/// Chooses every column and ends the dialog.
inline void all(DialogForm& form)
{
    DialogScript::click(form, u"cmdSelectAll"_s);
    DialogScript::click(form, ok);
}

/// The pane of a table's records, with a user in front of it.
class TableData : public WithRecords
{
protected:
    static QStringList table(const QString& name, const QString& database = u"SALES"_s)
    {
        return {u"DB"_s, "db="_L1 + database, u"TA"_s, "ta="_L1 + name};
    }

    /// Asks for a table's records and answers the dialog.
    void view(DialogScript::Action action, const QString& name = u"ITEMS"_s, const QString& database = u"SALES"_s)
    {
        begin(table(name, database));
        dialogs.expect(criteria, std::move(action));
        MainWindowTest::choose(key(table(name, database)), u"mnu_TableViewData"_s);
        dialogs.verify();
        EXPECT_FALSE(forms::loaded(criteria));
    }

    static void choose(DialogForm& form, const QStringList& names)
    {
        for (const QString& name : names)
            dialog::clickRow(form, columns, name);
    }

    CellGrid& grid() const { return dynamic_cast<CellGrid&>(control(u"dbgEdit"_s)); }
    QStringList headings() const
    {
        QStringList texts;
        for (int column = 0; column < grid().Cols(); ++column)
            texts.append(grid().Heading(column));
        return texts;
    }
    QStringList rows() const
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

    /// Where the cells of each column stand, and its heading with them.
    QStringList sides() const
    {
        const QAbstractItemModel& model = *grid().model();
        QStringList all;
        for (int column = 0; column < grid().Cols(); ++column) {
            const auto ofHeading = model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole);
            const auto ofCell = model.index(0, column).data(Qt::TextAlignmentRole);
            EXPECT_EQ(ofHeading.value<Qt::Alignment>(), ofCell.value<Qt::Alignment>());
            const Qt::Alignment side = ofCell.value<Qt::Alignment>() & Qt::AlignHorizontal_Mask;
            all.append(side == Qt::AlignRight ? u"right"_s : side == Qt::AlignLeft ? u"left"_s : u"neither"_s);
        }
        return all;
    }

    QString label(const QString& name) const { return dynamic_cast<QLabel&>(control(name)).text(); }
    QString description() const { return label(u"lblDescription"_s); }
    QString explanation() const { return label(u"lblExplain"_s); }
    QString position() const { return label(u"lblPosition"_s); }

    ToolButton& refresh() const { return window->toolBar(u"tbrViewData"_s).Button(u"Refresh"_s); }
    void pressRefresh() const
    {
        ASSERT_TRUE(refresh().widget()->isVisible());
        QTest::mouseClick(refresh().widget(), Qt::LeftButton);
    }
};

/// The same on a datasource that is bound to the database SALES.
class TableDataOfOneDatabase : public TableData
{
protected:
    void SetUp() override
    {
        world.removeDatasource(datasource);
        world.addDatasource(datasource, {u"DefaultDatabase=SALES"_s});
        TableData::SetUp();
    }
};

} // namespace tabledata
