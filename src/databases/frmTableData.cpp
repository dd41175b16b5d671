#include "frmTableData.h"

#include "CConnections.h"
#include "CMouseSleeper.h"
#include "CellGrid.h"
#include "DBEngine.h"
#include "Definitions.h"
#include "Passwords.h"
#include "Recordset.h"
#include "Routine.h"
#include "Step.h"
#include "ToolBar.h"
#include "frmTableCriteria.h"
#include "mdiMain.h"
#include "modDatabase.h"
#include "modGUI.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QToolButton>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

const QString refreshKey = u"Refresh"_s;

ToolButton& refreshButton()
{
    return mdiMain::instance().toolBar(u"tbrViewData"_s).Button(refreshKey);
}

QStringList headings(const dao::Fields& fields)
{
    QStringList columns;
    for (const dao::Field& field : fields)
        columns.append((modDatabase::isTextKind(field.Type) ? '<'_L1 : '>'_L1) + field.Name);
    return columns;
}

/// The records. The statement above them has what is left of the pane once a good look at them has its room.
class RecordGrid final : public CellGrid
{
public:
    using CellGrid::CellGrid;

    QSize sizeHint() const override
    {
        constexpr int goodLook = 10;
        const int headings = std::max(horizontalHeader()->sizeHint().height(), horizontalHeader()->minimumHeight());
        const int records = qBound(1, Rows(), goodLook) * verticalHeader()->defaultSectionSize();
        const int bar = horizontalScrollBar()->sizeHint().height();
        return {CellGrid::sizeHint().width(), headings + records + bar + 2 * frameWidth()};
    }
};

} // namespace

frmTableData::frmTableData(QWidget* parent)
    : PaneForm(u"frmTableData"_s, parent), m_grid(new RecordGrid(u"dbgEdit"_s, this)), m_explain(new QLabel(this)),
      m_caption(new QLabel), m_data(buildDataControl())
{
    m_explain->setObjectName(u"lblExplain"_s);
    m_explain->setTextFormat(Qt::PlainText);
    m_explain->setWordWrap(true);
    body()->addWidget(m_explain);
    body()->addWidget(m_grid, 1);
    body()->addWidget(m_data);
    body()->addStretch(0);
    explain({});
    m_grid->hide();
    m_data->hide();
    connect(m_grid, &CellGrid::RowColChange, this, &frmTableData::datPrimary_Reposition);
    Routine routine("frmTableData.Form_Load");
    routine.run([&] { modGUI::PaneFormLoad(*this); });
}

/// Moves over the records and says which one is the current one.
QWidget* frmTableData::buildDataControl()
{
    auto* data = new QWidget(this);
    data->setObjectName(u"datPrimary"_s);
    m_caption->setObjectName(u"lblPosition"_s);
    auto* bar = new QHBoxLayout(data);
    bar->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString& name, const QString& caption, const QString& tip, auto row) {
        auto* button = new QToolButton(data);
        button->setObjectName(name);
        button->setText(caption);
        button->setToolTip(tip);
        button->setAccessibleName(tip);
        bar->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, row] { moveTo(row()); });
    };
    add(u"cmdFirst"_s, u"|<"_s, tr("First record"), [] { return 0; });
    add(u"cmdPrevious"_s, u"<"_s, tr("Previous record"), [this] { return m_grid->Row() - 1; });
    bar->addWidget(m_caption, 1, Qt::AlignHCenter);
    add(u"cmdNext"_s, u">"_s, tr("Next record"), [this] { return m_grid->Row() + 1; });
    add(u"cmdLast"_s, u">|"_s, tr("Last record"), [this] { return m_grid->Rows() - 1; });
    return data;
}

void frmTableData::resizeEvent(QResizeEvent* event)
{
    Routine routine("frmTableData.Form_Resuze");
    routine.run([&] { PaneForm::resizeEvent(event); });
}

/// Without an explanation there is no line for it either.
void frmTableData::explain(const QString& text)
{
    m_explain->setText(text);
    m_explain->setVisible(!text.isEmpty());
}

void frmTableData::moveTo(int row)
{
    if (m_grid->Rows() > 0)
        m_grid->select(qBound(0, row, m_grid->Rows() - 1), qMax(m_grid->Col(), 0));
}

frmTableData::~frmTableData() = default;

void frmTableData::Display(const QString& datasource, const QString& database, const QString& table)
{
    const forms::Running running(*this);
    Routine routine("frmTableData.Display");
    routine.run([&] {
        m_grid->hide();
        m_data->hide();
        lblDescription()->clear();
        explain({});
        refreshButton().setEnabled(false);
        m_tableKey = "DSN="_L1 + datasource + ":DB="_L1 + datasource + ":db="_L1 + database + ":TA="_L1 + database +
                     ":ta="_L1 + table + ':'_L1;
        if (!CConnections::instance().Item(datasource))
            return;
        const QString only = definitions::defaultDatabase(datasource);
        if (!only.isEmpty() && only != database) {
            explain("You cannot view data from any Table in this Database because\n"
                    "the datasource specifies the default Database as '"_L1 +
                    only + '\''_L1);
            return;
        }
        const QString statement = frmTableCriteria::GetCriteria(datasource, database, table);
        requireLoaded();
        if (statement.isEmpty()) {
            mdiMain::instance().PaneDisplay(u"frmTable"_s, {datasource, database, table});
            return;
        }
        lblDescription()->setText("This is the results of a sample snapshot query ("_L1 + statement +
                                  ") run against the Datasource '"_L1 + datasource + '\''_L1);
        // The catalog's own tables hold passwords, and a datasource that is bound to a database reads them by name.
        m_hidesPasswords = definitions::isCatalogDatabase(database) ||
                           definitions::holdsPasswords(definitions::nameInSql(only, database, table));
        run(datasource, statement);
        refreshButton().setEnabled(true);
        lblTitle()->setText(definitions::joinedName(database, table) + " - Table Data"_L1);
        lblDescription()->setText("This is the results of a sample snapshot query:\n\n"_L1 +
                                  modDatabase::FormatSQL(statement).replace('\t'_L1, "    "_L1) +
                                  "\n\n run against the Datasource '"_L1 + datasource + '\''_L1);
        m_grid->show();
        m_data->show();
    });
}

/// Opens the pane's own connection, with the attributes of the catalog's and the one that a driver must see to open it.
void frmTableData::run(const QString& datasource, const QString& statement)
{
    CConnections& connections = CConnections::instance();
    const QString connect = connections.Item(datasource)->db()->Connect() + "DATABASE=PUBS"_L1;
    m_db = step([&] { return connections.workspace()->OpenDatabase({}, connect); });
    m_statement = statement;
    refresh();
}

/// Shows the records anew, all of them or, where they break off, still those that show.
void frmTableData::refresh()
{
    const CMouseSleeper sleeper;
    const auto rows = m_db->OpenRecordset(m_statement, dao::dbOpenSnapshot);
    if (!rows->Eof()) {
        rows->MoveLast();
        rows->MoveFirst();
    }
    {
        const dao::Fields& fields = rows->Fields();
        std::vector<bool> hides;
        for (const dao::Field& field : fields)
            hides.push_back(m_hidesPasswords && passwords::isPassword(field.Name));
        CellGrid::Filling filling(*m_grid, headings(fields));
        for (; !rows->Eof(); rows->MoveNext()) {
            for (int column = 0; column < fields.Count(); ++column) {
                const QStringView value = rows->View(column);
                if (hides[static_cast<std::size_t>(column)])
                    filling.add(passwords::shown(value.toString()));
                else
                    filling.add(value);
            }
        }
    }
    m_grid->sizeColumns();
    m_grid->updateGeometry();
    m_grid->select(0, 0);
    datPrimary_Reposition();
}

void frmTableData::datPrimary_Reposition()
{
    m_caption->setText(u"Record %1 of %2"_s.arg(m_grid->Row() + 1).arg(m_grid->Rows()));
}

void frmTableData::tbr_ButtonClick(ToolButton& button)
{
    const forms::Running running(*this);
    Routine routine("frmTableData.tbr_ButtonClick");
    routine.run([&] {
        if (button.Key() == refreshKey && m_db)
            refresh();
    });
}
