#include "frmSpecialCols.h"

#include "CConnections.h"
#include "Database.h"
#include "Definitions.h"
#include "DropDown.h"
#include "Events.h"
#include "Recordset.h"
#include "Routine.h"
#include "ToolBar.h"
#include "mdiMain.h"
#include "modBoundControls.h"
#include "modDatabase.h"
#include "modGUI.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace
{

constexpr int unit = 8;
constexpr int relativeIndex = 8;

struct SpecialColumn {
    const char* name;
    const char* prompt;
    const char* sqlType;
    int length;
    int precision;
};

/// By COLUMN_TYPE, from 1 on.
constexpr std::array<SpecialColumn, 8> specialColumns{{
    {"RFA", "&Record File Address", "VARCHAR", 14, 14},
    {"INDEX_NUMBER", "&Index Number", "SMALLINT", 2, 5},
    {"INDEX_NAME", "I&ndex Name", "VARCHAR", 64, 64},
    {"INDEX_COLUMNS", "Index &Columns", "VARCHAR", 254, 254},
    {"TABLE_ORDER", "Table &Order", "SMALLINT", 2, 5},
    {"ROWID", "I&SAM RowID", "INTEGER", 4, 10},
    {"RELATIVE_NUMBER", "Relative &Key Number:", "INTEGER", 4, 10},
    {"RELATIVE_INDEX", "Relative Index:", "INTEGER", 4, 10},
}};

QString spoken(const char* prompt)
{
    return QString::fromLatin1(prompt).remove('&'_L1).remove(':'_L1);
}

} // namespace

frmSpecialCols::frmSpecialCols(QWidget* parent) : ActionPane("frmSpecialCols", "tbrSpecialCols", parent)
{
    static_assert(specialColumns.size() == count);
    buildList();
    Routine routine("frmSpeicalCols.Form_Load");
    routine.run([&] { modGUI::PaneFormLoad(*this); });
}

void frmSpecialCols::buildList()
{
    auto* entries = new QWidget(this);
    auto* list = new QGridLayout(entries);
    list->setContentsMargins(0, unit, 0, unit);
    list->setHorizontalSpacing(2 * unit);
    list->setVerticalSpacing(unit);
    list->setColumnStretch(4, 1);
    list->addWidget(new QLabel(u"Enabled"_s, entries), 0, 0);
    list->addWidget(new QLabel(u"Column Name"_s, entries), 0, 1);
    for (int index = 1; index <= count; ++index) {
        const char* prompt = specialColumns.at(static_cast<std::size_t>(index - 1)).prompt;
        auto* box = new QCheckBox(entries);
        box->setObjectName(u"chkActive_%1"_s.arg(index));
        box->setAccessibleName(spoken(prompt));
        auto* label = new QLabel(QLatin1String(prompt), entries);
        label->setBuddy(box);
        list->addWidget(box, index, 0, Qt::AlignHCenter);
        list->addWidget(label, index, 1);
        m_boxes.at(static_cast<std::size_t>(index - 1)) = box;
        connect(box, &QCheckBox::toggled, this, [this, index] { chkActive_Click(index); });
    }
    m_column = new DropDown(entries);
    auto* prompt = new QLabel(u"Column:"_s, entries);
    prompt->setBuddy(m_column);
    m_column->setObjectName(u"cboRIColumn"_s);
    m_column->setAccessibleName(spoken("Column:"));
    m_column->setMinimumWidth(26 * unit);
    list->addWidget(prompt, count, 2);
    list->addWidget(m_column, count, 3);
    connect(m_column, &DropDown::Change, this, [this] { cmdAction()->setEnabled(true); });

    makeActions();
    auto* actions = new QHBoxLayout;
    actions->setSpacing(unit);
    actions->addWidget(cmdAction());
    actions->addWidget(cmdCancel());
    actions->addStretch(1);
    body()->addWidget(entries);
    body()->addLayout(actions);
    body()->addStretch(1);
    openEntries(false);
}

dao::Database& frmSpecialCols::db() const
{
    return *m_connection->db();
}

QString frmSpecialCols::ofRow(int index) const
{
    return definitions::ofTable(m_database, m_table) + " AND COLUMN_NUMBER = 1 AND COLUMN_TYPE = "_L1 +
           QString::number(index);
}

QString frmSpecialCols::tableKey() const
{
    return "DSN="_L1 + m_datasource + ":DB="_L1 + m_datasource + ":db="_L1 + m_database + ":TA="_L1 + m_database +
           ":ta="_L1 + m_table + ':'_L1;
}

QString frmSpecialCols::shownNode() const
{
    return m_table.isEmpty() ? QString() : tableKey() + "SCO="_L1 + m_table + ':'_L1;
}

// Showing ------------------------------------------------------------------------------------------------------------

void frmSpecialCols::Display(const QString& datasource, const QString& database, const QString& table)
{
    Routine routine("frmSpeicalCols.Display", "frmSpecialCols.Display");
    routine.run([&] {
        CConnection* connection = CConnections::instance().Item(datasource);
        if (!connection)
            return;
        if (m_fields.isEmpty())
            m_fields = modDatabase::FetchFieldInfo(*connection->db(), u"TW_COLUMN"_s);
        m_connection = connection;
        m_datasource = datasource;
        m_database = database;
        m_table = table;
        lblTitle()->setText(table + " - Special Columns"_L1);
        toolBar().Button(u"Up1"_s).setToolTipText("Up to Table '"_L1 + table + '\''_L1);
        blank();
        modBoundControls::PopulateList(*m_column, db(),
                                       "SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 +
                                           definitions::ofTable(database, table) + " ORDER BY COLUMN_NAME ASC"_L1);
        for (const auto rows =
                 db().OpenRecordset("SELECT * FROM TW_COLUMN WHERE "_L1 + definitions::ofTable(database, table) +
                                    " AND COLUMN_NUMBER = 1 AND COLUMN_TYPE > 0 ORDER BY COLUMN_TYPE"_L1);
             !rows->Eof(); rows->MoveNext()) {
            const std::int32_t index = rows->Fields().Item(u"COLUMN_TYPE"_s).Value().Long();
            if (index > count)
                continue;
            chkActive(index).setChecked(true);
            m_stored.at(static_cast<std::size_t>(index - 1)) = true;
            if (index == relativeIndex)
                showColumn(rows->Fields().Item(u"REMARKS"_s).Value().Text());
        }
        showState(false);
        lblDescription()->setText("This is a list of all the Special Columns in Table '"_L1 + table + "'."_L1);
    });
}

/// At rest, and closed to changes: what has not been read yet may be there.
void frmSpecialCols::blank()
{
    m_stored.fill(false);
    for (QCheckBox* box : m_boxes)
        box->setChecked(false);
    m_column->setCurrentIndex(-1);
    showState(false);
    toolBar().Button(u"Special Column Edit"_s).setEnabled(false);
}

/// A column that the table has no more is still the one that is stored.
void frmSpecialCols::showColumn(const QString& column)
{
    if (!column.isEmpty() && m_column->findText(column, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        m_column->addItem(column);
    m_column->select(column);
}

void frmSpecialCols::showState(bool editing)
{
    ToolBar& bar = toolBar();
    bar.Button(u"Special Column Edit"_s).setEnabled(!editing && !definitions::isCatalogDatabase(m_database));
    bar.Button(u"OK"_s).setEnabled(editing);
    bar.Button(u"Cancel"_s).setEnabled(editing);
    openEntries(editing);
}

void frmSpecialCols::openEntries(bool open)
{
    showActions(open, u"&Update"_s);
    for (QCheckBox* box : m_boxes)
        box->setEnabled(open);
    m_column->setEnabled(false);
}

int frmSpecialCols::GetCheck(int index, const QString& sql)
{
    int found = 0;
    Routine routine("frmSpeicalCols.GetCheck");
    routine.run([&] {
        const auto row = db().OpenRecordset(sql, dao::dbOpenSnapshot);
        if (row->Eof())
            return;
        found = 1;
        if (index == relativeIndex)
            showColumn(row->Fields().Item(u"REMARKS"_s).Value().Text());
    });
    return found;
}

void frmSpecialCols::chkActive_Click(int index)
{
    if (index == relativeIndex)
        m_column->setEnabled(chkActive(index).isChecked());
    cmdAction()->setEnabled(true);
}

// Commands -----------------------------------------------------------------------------------------------------------

void frmSpecialCols::tbr_ButtonClick(ToolButton& button)
{
    const forms::Running running(*this);
    Routine routine("frmSpeicalCols.tbr_ButtonClick");
    routine.run([&] {
        if (!m_connection)
            return;
        const QString& key = button.Key();
        if (key == "Up1"_L1)
            up();
        else if (key == "Special Column Edit"_L1)
            edit();
        else if (key == "OK"_L1)
            ok();
        else if (key == "Cancel"_L1)
            cancel();
    });
}

void frmSpecialCols::up()
{
    mdiMain& window = mdiMain::instance();
    window.PaneDisplay(u"frmTable"_s, {m_datasource, m_database, m_table});
    events::yield();
    requireLoaded();
    TreeView& tree = window.tvwExplorer();
    if (TreeNode* node = tree.Nodes().find(tableKey()))
        tree.setSelectedItem(node);
    tree.setFocus();
}

QString frmSpecialCols::first(const QString& statement) const
{
    const auto row = db().OpenRecordset(statement);
    return row->Eof() ? QString() : row->View(0).toString();
}

/// A driver offers what its files have; a box that it does not offer keeps what is stored.
void frmSpecialCols::edit()
{
    showState(true);
    const QString driver =
        first("SELECT DRIVER_NAME FROM TW_DB WHERE DATABASE_NAME = '"_L1 + SQLQuote(m_database) + '\''_L1);
    const QString file = first("SELECT FILE_NAME FROM TW_TABLE WHERE "_L1 + definitions::ofTable(m_database, m_table));
    const QString organisation =
        first("SELECT FILE_ORGANISATION FROM TW_FILE WHERE FILE_NAME = '"_L1 + SQLQuote(file) + '\''_L1);

    const bool isRms = driver == "VAX-RMS"_L1;
    const bool hasAddresses = organisation == "INDEXED"_L1 || organisation == "SEQUENTIAL"_L1;
    chkActive(1).setEnabled(isRms && hasAddresses);
    chkActive(6).setEnabled(driver == "DISAM"_L1);
    chkActive(7).setEnabled(isRms && !hasAddresses);
    chkActive(relativeIndex).setEnabled(isRms);
    m_column->setEnabled(chkActive(relativeIndex).isChecked());
}

void frmSpecialCols::ok()
{
    for (int index = 1; index <= count; ++index) {
        const bool wanted = chkActive(index).isChecked();
        bool& stored = m_stored.at(static_cast<std::size_t>(index - 1));
        if (wanted == stored)
            continue;
        if (wanted)
            insert(index);
        else
            db().Execute("DELETE FROM TW_COLUMN WHERE "_L1 + ofRow(index));
        stored = wanted;
    }
    if (chkActive(relativeIndex).isChecked() && m_stored.back())
        db().Execute("UPDATE TW_COLUMN SET REMARKS = '"_L1 + SQLQuote(m_column->currentText()) + "' WHERE "_L1 +
                     ofRow(relativeIndex));
    cancel();
}

void frmSpecialCols::insert(int index)
{
    const SpecialColumn& column = specialColumns.at(static_cast<std::size_t>(index - 1));
    const QString remarks = index == relativeIndex ? SQLQuote(m_column->currentText()) : QString();
    db().Execute("INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, LENGTH, PRECISION, "
                 "DEFAULT_VALUE, UPDATABLE, COLUMN_NUMBER, COLUMN_TYPE, SQL_TYPE_NAME, VISIBLE, REMARKS) VALUES ('"_L1 +
                 SQLQuote(m_database) + "', '"_L1 + SQLQuote(m_table) +
                 u"', '%1', '%1', %2, %3, '', 0, 1, %4, '%5', 1, '"_s.arg(QLatin1String(column.name))
                     .arg(column.length)
                     .arg(column.precision)
                     .arg(index)
                     .arg(QLatin1String(column.sqlType)) +
                 remarks + "')"_L1);
}

void frmSpecialCols::cancel()
{
    showState(false);
    Display(m_datasource, m_database, m_table);
}
