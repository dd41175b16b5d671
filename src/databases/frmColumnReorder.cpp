#include "frmColumnReorder.h"

#include "Boxes.h"
#include "CConnections.h"
#include "CMouseSleeper.h"
#include "Conversions.h"
#include "Definitions.h"
#include "Events.h"
#include "Recordset.h"
#include "Routine.h"
#include "mdiMain.h"
#include "modUpdate.h"

using namespace Qt::StringLiterals;

frmColumnReorder::frmColumnReorder()
    : OrderDialog(u"frmColumnReorder"_s, {.title = tr("Reorder Columns"),
                                          .list = u"lstColumn"_s,
                                          .prompt = tr("&Columns:"),
                                          .listTip = tr("List of Columns in this Table"),
                                          .upTip = tr("Move selected column up"),
                                          .downTip = tr("Move selected column Down")})
{
}

void frmColumnReorder::Display(const QStringList& table)
{
    Routine routine("frmColumnReorder.Display");
    routine.run([&] {
        CConnection* connection = CConnections::instance().Item(table.at(0));
        if (!connection)
            return;
        auto& form = get<frmColumnReorder>(u"frmColumnReorder"_s);
        const forms::Running running(form);
        form.m_database = connection->db();
        form.m_table = table;
        form.setWindowTitle(tr("Reorder Columns") + " - "_L1 + table.at(2));
        form.chkSortAlpha_Click();
        form.ask();
    });
}

void frmColumnReorder::chkSortAlpha_Click()
{
    QString sql = u"None"_s;
    Routine routine("frmColumnReorder.chkSortAlpha_Click");
    routine.additional([&] { return sql; });
    routine.run([&] {
        clear();
        sql = "SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 + definitions::ofTable(m_table.at(1), m_table.at(2)) +
              " AND COLUMN_TYPE = 0 ORDER BY "_L1 +
              (sortsAlphabetically() ? "COLUMN_NAME ASC"_L1 : "COLUMN_NUMBER ASC"_L1);
        for (const auto rows = m_database->OpenRecordset(sql); !rows->Eof(); rows->MoveNext())
            add(rows->Fields().Item(u"COLUMN_NAME"_s).Value().Text());
    });
}

/// Gives every column of the table, special ones included, the number that `numberOf` has for it, if any.
void frmColumnReorder::renumber(QLatin1StringView status, const NumberOf& numberOf)
{
    const QString& database = m_table.at(1);
    const QString& table = m_table.at(2);
    const auto rows = m_database->OpenRecordset(
        "SELECT COLUMN_NAME, COLUMN_NUMBER, COLUMN_TYPE, FIELD_NAME FROM TW_COLUMN WHERE "_L1 +
        definitions::ofTable(database, table) + " ORDER BY COLUMN_NUMBER ASC"_L1);
    for (; !rows->Eof(); rows->MoveNext()) {
        const dao::Fields& row = rows->Fields();
        const QString column = row.Item(u"COLUMN_NAME"_s).Value().Text();
        const std::optional<std::int32_t> number = numberOf(column, row.Item(u"COLUMN_NUMBER"_s).Value());
        if (!number)
            continue;
        mdiMain::instance().Status(status + column);
        modUpdate::UpdateColumn(m_table.at(0), database, database, table, table, column, column,
                                row.Item(u"COLUMN_TYPE"_s).Value().Long(), *number,
                                row.Item(u"FIELD_NAME"_s).Value().Text());
    }
}

void frmColumnReorder::cmdOK_Click()
{
    Routine routine("frmColumnReorder.cmdOK_Click");
    routine.run([&] {
        // Without a list, be it that the table has no ordinary column or that it could not be read, there is no order
        // to give, and numbers that were only turned around would be lost.
        if (const QStringList order = names(); !order.isEmpty()) {
            const CMouseSleeper sleeper;
            const events::LongRoutine pace;
            // The numbers are turned around first, so that no two columns have the same one at any time.
            renumber("Preparing column "_L1, [](const QString&, const dao::Value& number) {
                return std::optional(conversions::ToLong(-static_cast<double>(number.Long())));
            });
            renumber("Re-ordering column "_L1, [&](const QString& column, const dao::Value&) {
                const qsizetype place = order.indexOf(column);
                return place < 0 ? std::nullopt : std::optional(static_cast<std::int32_t>(place + 1));
            });
        }
        boxes::inform(u"Column re-ordering complete"_s);
        mdiMain& window = mdiMain::instance();
        window.Status(u"Ready"_s);
        window.PaneDisplay(u"frmColumns"_s, m_table);
        forms::unload(name());
    });
}

void frmColumnReorder::unloading()
{
    savePosition();
}
