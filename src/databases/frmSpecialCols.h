#pragma once

#include "ActionPane.h"
#include "modDatabase.h"

#include <QStringList>

#include <array>

class CConnection;
class DropDown;
class QCheckBox;

namespace dao
{
class Database;
}

/// The special columns of a table: a fixed list of switches, each of which adds or removes one row of TW_COLUMN. A row
/// is known by its COLUMN_TYPE, the place in the list from 1 on.
class frmSpecialCols : public ActionPane
{
public:
    explicit frmSpecialCols(QWidget* parent = nullptr);

    /// Reads which of them the table has. Nothing happens where there is no connection.
    void Display(const QString& datasource, const QString& database, const QString& table);
    /// 1 if the statement finds a row, else 0. One found for the index 8 gives its column to the list.
    int GetCheck(int index, const QString& sql);
    void tbr_ButtonClick(ToolButton& button) override;
    QString shownNode() const override;

private:
    static constexpr int count = 8;

    QCheckBox& chkActive(int index) const { return *m_boxes.at(static_cast<std::size_t>(index - 1)); }
    void chkActive_Click(int index);
    void buildList();
    void blank();
    void showColumn(const QString& column);
    void showState(bool editing);
    void openEntries(bool open);
    void up();
    void edit();
    void ok();
    void insert(int index);
    void cancel();
    QString first(const QString& statement) const;
    dao::Database& db() const;
    /// The condition that selects the row of an index.
    QString ofRow(int index) const;
    /// The tree's key of the table.
    QString tableKey() const;

    std::array<QCheckBox*, count> m_boxes;
    /// Whether the catalog has the rows, as of the last reading or writing.
    std::array<bool, count> m_stored{};
    DropDown* m_column = nullptr;
    CConnection* m_connection = nullptr;
    modDatabase::FieldInfos m_fields;
    QString m_datasource;
    QString m_database;
    QString m_table;
};
