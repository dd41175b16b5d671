#include "frmCSVImport.h"

#include "FileDialogs.h"
#include "Routine.h"
#include "frmCSVValidate.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

frmCSVImport::frmCSVImport(QWidget* parent)
    : InterchangePane({.form = "frmCSVImport",
                       .action = tr("&Import..."),
                       .actionTip = tr("Choose a file and validate it before anything is written"),
                       .hints = {tr("Reads a text file as Export Catalog writes it. Each line is validated first, and "
                                    "nothing is written while there is an error."),
                                 tr("What the file holds is added to the catalog. Nothing there is removed or "
                                    "replaced.")}},
                      parent)
{
    connect(cmdAction(), &QPushButton::clicked, this, &frmCSVImport::cmdAction_Click);
}

void frmCSVImport::Display(const QString& datasource)
{
    Routine routine("frmCSVImport.Display", "CSVImport.Display");
    routine.run([&] { show(datasource, "Import Datasource '"_L1 + datasource + "' Catalog from File."_L1); });
}

void frmCSVImport::cmdAction_Click()
{
    const forms::Running running(*this);
    Routine routine("frmCSVImport.cmdAction_Click");
    routine.passing({ErrorNumber::DialogCancelled});
    routine.run([&] {
        if (!catalog())
            return;
        try {
            const QString fileName = filedialogs::choose({
                .mode = filedialogs::Mode::Open,
                .title = u"Select the CSV file to import..."_s,
                .filter = u"CSV File (*.csv)|*.csv|Text File (*.txt)|*.txt|All Files (*.*)|*.*"_s,
                .defaultExtension = u"*.txt"_s,
                .fileMustExist = true,
            });
            if (frmCSVValidate::Validate(datasource(), fileName))
                ImportCSV();
        } catch (const RuntimeError& error) {
            if (error.number() != ErrorNumber::DialogCancelled)
                throw;
        }
    });
}
