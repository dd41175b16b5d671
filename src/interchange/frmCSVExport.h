#pragma once

#include "InterchangePane.h"
#include "ToolbarPane.h"

class TextWriter;
struct CsvBlock;

/// The pane that writes the catalog of a datasource to a text file. It changes nothing in the catalog.
class frmCSVExport : public InterchangePane, public ToolbarPane
{
public:
    explicit frmCSVExport(QWidget* parent = nullptr);

    void Display(const QString& datasource);
    void tbr_ButtonClick(ToolButton& button) override;

private:
    void cmdAction_Click();
    void Export();
    void writeCatalog(dao::Database& db, const QString& fileName);
    void WriteBlock(dao::Database& db, TextWriter& file, const CsvBlock& block);
};
