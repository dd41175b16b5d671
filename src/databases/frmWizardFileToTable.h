#pragma once

#include "DialogForm.h"

#include <array>

class CConnection;
class DropDown;
class PropertyEdit;
class QListWidget;
class QPushButton;

namespace dao
{
class Database;
}

/// The wizard that makes a table, with a column for every field, from the definition of a file. Nothing is written, and
/// nothing checked, before "Finish".
class frmWizardFileToTable : public DialogForm
{
public:
    frmWizardFileToTable();

    /// Shows the wizard over the main window; names that are not empty are selected beforehand. Returns when it has
    /// closed.
    static void Display(const QString& datasource, const QString& database, const QString& file);
    /// Finishes with these names without showing itself; the boxes come all the same.
    static void Unattended(const QString& datasource, const QString& file, const QString& reserved,
                           const QString& database);

    int CurrentPage() const { return m_page; }
    /// A page beyond the first or the last one is that one.
    void setCurrentPage(int page);

private:
    static constexpr int pageCount = 4;

    QVBoxLayout* addPage(int index, const QString& heading, const QString& instruction);
    void buildWelcome();
    void buildFilePage();
    void buildDatabasePage();
    void buildPropertiesPage();
    void buildButtons();

    QPoint position(QPoint centred) const override;
    void unloading() override;

    void preselect(const QString& datasource, const QString& database, const QString& file);
    void FetchDatasourceList(DropDown& list);
    void FetchFileList(QListWidget& list);
    void FetchDBList(QListWidget& list);
    CConnection* connection() const;
    void cboFileDatasource_Click();
    void lstFile_Click();
    bool ValidatePage(int page);
    bool fail(int page, QWidget& control, const QString& message);
    void cmdFinish_Click();
    /// Makes table and columns. Returns whether the wizard has done its work.
    bool finish();
    void showTables();
    void insertColumns(dao::Database& db);
    QString file() const;
    QString database() const;

    std::array<QWidget*, pageCount> m_pages{};
    DropDown* m_datasource = nullptr;
    QListWidget* m_files = nullptr;
    QListWidget* m_databases = nullptr;
    PropertyEdit* m_table = nullptr;
    PropertyEdit* m_displayName = nullptr;
    PropertyEdit* m_specification = nullptr;
    PropertyEdit* m_remarks = nullptr;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
    QPushButton* m_finish = nullptr;
    int m_page = 0;
};
