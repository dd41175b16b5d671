#pragma once

#include "InterchangePane.h"

/// The pane that reads a text file into the catalog of a datasource, by way of the dialog that validates it.
class frmCSVImport : public InterchangePane
{
public:
    explicit frmCSVImport(QWidget* parent = nullptr);

    void Display(const QString& datasource);

private:
    void cmdAction_Click();
    /// What would follow a validation that says yes; none does, since the dialog itself writes the catalog.
    bool ImportCSV() { return false; }
};
