#include "frmFieldReorder.h"

#include "Boxes.h"
#include "CMouseSleeper.h"
#include "Database.h"
#include "Events.h"
#include "Recordset.h"
#include "Routine.h"
#include "mdiMain.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

frmFieldReorder::frmFieldReorder()
    : OrderDialog(u"frmFieldReorder"_s, {.title = tr("Reorder Fields"),
                                         .list = u"lstField"_s,
                                         .prompt = tr("&Fields:"),
                                         .listTip = tr("List of Fields in this File"),
                                         .upTip = tr("Move selected field up"),
                                         .downTip = tr("Move selected field down")})
{
}

bool frmFieldReorder::Display(dao::Database& database, const QString& file)
{
    bool written = false;
    Routine routine("frmFieldReorder.Display");
    routine.run([&] {
        auto& form = get<frmFieldReorder>(u"frmFieldReorder"_s);
        const forms::Running running(form);
        form.m_database = &database;
        form.m_file = file;
        form.setWindowTitle(tr("Reorder Fields") + " - "_L1 + file);
        form.chkSortAlpha_Click();
        form.ask();
        written = form.m_written;
    });
    return written;
}

void frmFieldReorder::chkSortAlpha_Click()
{
    QString sql = u"None"_s;
    Routine routine("frmFieldReorder.chkSortAlpha_Click");
    routine.additional([&] { return sql; });
    routine.run([&] {
        clear();
        sql = "SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '"_L1 + SQLQuote(m_file) + "' "_L1 +
              (sortsAlphabetically() ? "ORDER BY FIELD_NAME ASC"_L1 : "ORDER BY FIELD_NUMBER ASC"_L1);
        const auto rows = m_database->OpenRecordset(sql);
        for (; !rows->Eof(); rows->MoveNext())
            add(rows->Fields().Item(u"FIELD_NAME"_s).Value().Text());
    });
}

void frmFieldReorder::cmdOK_Click()
{
    QString sql = u"None"_s;
    Routine routine("frmFieldReorder.cmdOK_Click");
    routine.additional([&] { return sql; });
    routine.run([&] {
        mdiMain& window = mdiMain::instance();
        {
            const CMouseSleeper sleeper;
            const events::LongRoutine pace;
            const QStringList all = names();
            for (qsizetype i = 0; i < all.size(); ++i) {
                window.Status("Reording Field '"_L1 + all.at(i) + '\''_L1);
                sql = "UPDATE TW_FIELD SET FIELD_NUMBER = 0"_L1 + QString::number(i + 1) + " WHERE FILE_NAME = '"_L1 +
                      SQLQuote(m_file) + "' AND FIELD_NAME = '"_L1 + SQLQuote(all.at(i)) + '\''_L1;
                m_database->Execute(sql);
                m_written = true;
            }
        }
        boxes::inform(u"Field re-ordering complete"_s);
        window.Status(u"Ready"_s);
        forms::unload(name());
    });
}
