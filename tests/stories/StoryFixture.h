#pragma once

#include "CellGrid.h"
#include "DialogHands.h"
#include "RoomFixture.h"

/// A user who makes tables of data files and looks at the records in them.
class Story : public ItemTest
{
protected:
    /// Lets the wizard make a table, under the file's name, of the data file.
    void makeTable(const QString& file, const QString& database, const QString& specification)
    {
        using namespace Qt::StringLiterals;
        dialogs.expect(u"frmWizardFileToTable"_s, [&](DialogForm& form) {
            const QString next = u"cmdNext"_s;
            DialogScript::click(form, next);
            dialog::clickRow(form, u"lstFile"_s, file);
            DialogScript::click(form, next);
            dialog::clickRow(form, u"lstDB"_s, database);
            DialogScript::click(form, next);
            dialog::write(form, u"txtProperty_FILE_SPECIFICATION"_s, specification);
            boxes.expectInform(u"Table Created"_s);
            DialogScript::click(form, u"cmdFinish"_s);
        });
        MainWindowTest::choose(key({u"FI"_s, "fi="_L1 + file}), u"mnu_FileFileToTableWizard"_s);
        dialogs.verify();
        boxes.verify();
    }

    /// The texts of the records that the data view shows, each with its cells in the order of the headings asked for.
    QList<QStringList> viewData(const QString& database, const QString& table, const QStringList& headings)
    {
        using namespace Qt::StringLiterals;
        const QStringList steps{u"DB"_s, "db="_L1 + database, u"TA"_s, "ta="_L1 + table};
        expandTo(key(steps.first(3)));
        dialogs.expect(u"frmTableCriteria"_s, [](DialogForm& form) {
            DialogScript::click(form, u"cmdSelectAll"_s);
            DialogScript::click(form, u"cmdOK"_s);
        });
        MainWindowTest::choose(key(steps), u"mnu_TableViewData"_s);
        dialogs.verify();
        const auto& grid = dynamic_cast<CellGrid&>(control(u"dbgEdit"_s));
        EXPECT_TRUE(grid.isVisible());
        const QAbstractItemModel& model = *grid.model();
        QList<QStringList> rows;
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (const QString& heading : headings)
                for (int column = 0; column < model.columnCount(); ++column)
                    if (model.headerData(column, Qt::Horizontal).toString().compare(heading, Qt::CaseInsensitive) == 0)
                        cells.append(model.index(row, column).data().toString());
            rows.append(cells);
        }
        return rows;
    }
};
