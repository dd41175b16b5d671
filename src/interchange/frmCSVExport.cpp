#include "frmCSVExport.h"

#include "Boxes.h"
#include "CMouseSleeper.h"
#include "CsvBlocks.h"
#include "Database.h"
#include "FileDialogs.h"
#include "Recordset.h"
#include "Routine.h"
#include "TextWriter.h"
#include "ToolBar.h"
#include "mdiMain.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

frmCSVExport::frmCSVExport(QWidget* parent)
    : InterchangePane(
          {.form = "frmCSVExport",
           .action = tr("&Export..."),
           .actionTip = tr("Choose a file and write the catalog to it"),
           .hints = {tr("Writes the files, fields, databases, tables, columns, users and privileges of this "
                        "datasource to a text file, which Import Catalog reads back into a datasource."),
                     tr("Passwords stand in the file as the catalog holds them.")}},
          parent)
{
    connect(cmdAction(), &QPushButton::clicked, this, &frmCSVExport::cmdAction_Click);
}

void frmCSVExport::Display(const QString& datasource)
{
    Routine routine("frmCSVExport.Display");
    routine.run([&] { show(datasource, "Export Datasource '"_L1 + datasource + "' Catalog to File."_L1); });
}

void frmCSVExport::tbr_ButtonClick(ToolButton& button)
{
    Routine routine("frmCSVExport.tbr_ButtonClick");
    routine.run([&] {
        if (button.Key() == "Export"_L1)
            Export();
    });
}

void frmCSVExport::cmdAction_Click()
{
    const forms::Running running(*this);
    Routine routine("frmCSVExport.cmdAction_Click");
    routine.run([&] { Export(); });
}

void frmCSVExport::Export()
{
    // What was chosen last in this run of the program.
    static QString fileName;

    mdiMain& window = mdiMain::instance();
    const auto ready = [&window] { window.Status(u"Ready"_s); };
    Routine routine("frmCSVExport.Export");
    routine.passing({ErrorNumber::DialogCancelled, ErrorNumber::PathFileAccess}).aroundReport(ready, {});
    routine.run([&] {
        dao::Database* db = catalog();
        if (!db)
            return;
        try {
            fileName = filedialogs::choose({
                .mode = filedialogs::Mode::Save,
                .title = u"Please select a filename to export the catalog to..."_s,
                .suggestedName = fileName,
                .filter = u"Text File(*.TXT)|*.txt|Comma Seperated Values (*.CSV)|*.csv|All Files (*.*)|*.*"_s,
                .defaultExtension = u"*.txt"_s,
                .promptBeforeOverwriting = true,
                .promptBeforeCreating = true,
            });
            const CMouseSleeper sleeper;
            writeCatalog(*db, fileName);
            ready();
            boxes::inform(u"Catalog Exported"_s);
        } catch (const RuntimeError& error) {
            ready();
            if (error.number() == ErrorNumber::PathFileAccess)
                boxes::inform("There was an access problem writing to the file '"_L1 + fileName +
                              ".\nThis may be a read-only device?"_L1);
            else if (error.number() != ErrorNumber::DialogCancelled)
                throw;
        }
    });
}

void frmCSVExport::writeCatalog(dao::Database& db, const QString& fileName)
{
    TextWriter file(fileName);
    for (const CsvBlock& block : csvBlocks()) {
        mdiMain::instance().Status(QLatin1StringView(block.status));
        WriteBlock(db, file, block);
    }
    file.close();
}

void frmCSVExport::WriteBlock(dao::Database& db, TextWriter& file, const CsvBlock& block)
{
    const QString sql = QLatin1StringView(block.statement);
    Routine routine("frmCSVExport.WriteBlock");
    routine.additional([&] { return sql; });
    routine.run([&] {
        const auto rows = db.OpenRecordset(sql);
        for (; !rows->Eof(); rows->MoveNext()) {
            appendCsvLine(file, block.id, *rows);
            file.flushWhenFull();
        }
    });
}
