#pragma once

#include "DialogForm.h"
#include "Findings.h"

class CConnection;
class CatalogNames;
class FindingsModel;
class QLabel;
class QModelIndex;
class QProgressBar;
class QTreeView;

/// The dialog that takes a catalog's CSV file through two stages: the first one validates every line and writes
/// nothing, the second one writes the lines to the catalog. The second begins only if the first found nothing that the
/// user did not accept. Each stage reads the file anew.
class frmCSVValidate : public DialogForm
{
public:
    frmCSVValidate();

    /// Shows the dialog for a file and a connected datasource. Always false: what there was to import has been
    /// imported by then.
    static bool Validate(const QString& connection, const QString& fileName);

protected:
    void closeEvent(QCloseEvent* event) override;
    void unloading() override { m_stop = true; }

private:
    friend class CSVRemoveAllTest;

    void build();
    void cmdAction_Click();
    void cmdCancel_Click();
    void lvwErr_DblClick(const QModelIndex& index);

    /// One click on Start or Restart, to its end.
    void run();
    /// Shows that a run has ended before all lines were seen.
    void showHalted();
    void readCatalog(CatalogNames& names);
    int countLines();
    void validateLines(CatalogNames& names, int lines);
    /// Tells what was found, and whether the second stage may begin.
    bool isAccepted();
    void importLines(int lines);
    /// Kept for a catalog that is to be replaced as a whole; nothing calls it.
    void RemoveAll();

    /// Shows the line that a stage has come to, once a frame.
    void advance();
    void showProgress();
    void endStage();

    Findings m_findings;
    FindingsModel* m_model = nullptr;
    QTreeView* m_list = nullptr;
    QLabel* m_status = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_action = nullptr;
    QPushButton* m_cancel = nullptr;

    CConnection* m_connection = nullptr;
    QString m_datasource;
    QString m_fileName;
    bool m_isRunning = false;
    bool m_stop = false;
    bool m_importing = false;

    /// The step that a stage has come to.
    const char* m_what = "";
    int m_line = 0;
    int m_lines = 0;
};
