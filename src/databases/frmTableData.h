#pragma once

#include "PaneForm.h"
#include "ToolbarPane.h"

#include <memory>

class CellGrid;
class QLabel;

namespace dao
{
class Database;
}

/// The pane that shows records of a table, read through the driver by the definitions as they are now, over a
/// connection of its own.
class frmTableData : public PaneForm, public ToolbarPane
{
public:
    explicit frmTableData(QWidget* parent = nullptr);
    ~frmTableData() override;

    /// Asks what is wanted and shows it. Nothing happens where there is no connection.
    void Display(const QString& datasource, const QString& database, const QString& table);
    void tbr_ButtonClick(ToolButton& button) override;
    QString shownNode() const override { return m_tableKey; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* buildDataControl();
    void explain(const QString& text);
    void moveTo(int row);
    void run(const QString& datasource, const QString& statement);
    void refresh();
    void datPrimary_Reposition();

    CellGrid* m_grid;
    QLabel* m_explain;
    QLabel* m_caption;
    QWidget* m_data;
    std::unique_ptr<dao::Database> m_db;
    QString m_statement;
    /// The tree's key of the table.
    QString m_tableKey;
    bool m_hidesPasswords = false;
};
