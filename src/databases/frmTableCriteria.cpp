#include "frmTableCriteria.h"

#include "Boxes.h"
#include "CConnections.h"
#include "Definitions.h"
#include "DropDown.h"
#include "Recordset.h"
#include "Routine.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace
{

constexpr int unit = 8;

QString bracketed(const QString& name)
{
    return '['_L1 + name + ']'_L1;
}

} // namespace

frmTableCriteria::frmTableCriteria() : DialogForm(u"frmTableCriteria"_s)
{
    setWindowTitle(tr("Table Criteria"));
    body()->addWidget(buildColumns(), 1);
    body()->addWidget(buildConditions());
    auto* warning = new QLabel(this);
    warning->setObjectName(u"lblWarning"_s);
    warning->setWordWrap(true);
    body()->addWidget(warning);

    QPushButton* clear = addButton(u"cmdClear"_s, u"&Clear"_s);
    m_ok = addButton(u"cmdOK"_s, tr("OK"));
    m_ok->setEnabled(false);
    QPushButton* cancel = addButton(u"cmdCancel"_s, tr("Cancel"));
    setDefaultButton(m_ok);
    setCancelButton(cancel);
    connect(clear, &QPushButton::clicked, this, &frmTableCriteria::cmdClear_Click);
    connect(m_ok, &QPushButton::clicked, this, &frmTableCriteria::cmdOK_Click);
    connect(cancel, &QPushButton::clicked, this, &QWidget::hide);
    resize(640, 560);

    Routine routine("frmTableCriteria.Form_Load");
    routine.run([&] {
        warning->setText(u"Please Note:\nCriteria which return a large amount of data may take some time to retrieve "
                         "over a slow connection."_s);
    });
}

QWidget* frmTableCriteria::buildColumns()
{
    auto* part = new QWidget(this);
    m_columns = new QTreeWidget(part);
    m_columns->setObjectName(u"lstColumns"_s);
    m_columns->setAccessibleName(tr("Columns"));
    m_columns->setHeaderLabels({tr("Column"), tr("SQL Data Type")});
    m_columns->setRootIsDecorated(false);
    m_columns->setUniformRowHeights(true);
    m_columns->setSelectionMode(QAbstractItemView::MultiSelection);
    connect(m_columns, &QTreeWidget::itemSelectionChanged, this, &frmTableCriteria::lstColumns_Click);
    auto* prompt = new QLabel(tr("&Select:"), part);
    prompt->setBuddy(m_columns);
    m_from = new QLabel(part);
    m_from->setObjectName(u"lblTable"_s);
    m_from->setTextFormat(Qt::PlainText);

    const auto button = [&](const QString& name, const QString& caption, bool selected) {
        auto* made = new QPushButton(caption, part);
        made->setObjectName(name);
        connect(made, &QPushButton::clicked, this, [this, selected] { selectAll(selected); });
        return made;
    };
    auto* grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(unit);
    grid->addWidget(prompt, 0, 0);
    grid->addWidget(m_columns, 1, 0, 3, 1);
    grid->addWidget(button(u"cmdSelectAll"_s, u"&All"_s, true), 1, 1);
    grid->addWidget(button(u"cmdSelectNone"_s, tr("&None"), false), 2, 1);
    grid->addWidget(m_from, 4, 0, 1, 2);
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(0, 1);
    return part;
}

QWidget* frmTableCriteria::buildConditions()
{
    auto* part = new QWidget(this);
    auto* grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(unit);
    const auto list = [&](const QString& name, std::size_t index, const QStringList& items, const QString& spoken) {
        auto* made = new DropDown(part);
        made->setObjectName(u"%1_%2"_s.arg(name).arg(index));
        made->setAccessibleName(spoken);
        made->refill(items);
        return made;
    };
    for (std::size_t i = 0; i < conditionCount; ++i) {
        Condition& condition = m_conditions.at(i);
        condition.cboAndOr = list(
            u"cboAndOr"_s, i, i == 0 ? QStringList{QString(), u"WHERE"_s} : QStringList{QString(), u"AND"_s, u"OR"_s},
            tr("Condition %1").arg(i + 1));
        condition.cboColumn = list(u"cboColumn"_s, i, {}, tr("Column"));
        condition.cboColumn->setMinimumWidth(20 * unit);
        condition.cboCriteria =
            list(u"cboCriteria"_s, i, {u"LIKE"_s, u"="_s, u"<>"_s, u"<"_s, u">"_s, u"<="_s, u">="_s}, tr("Operator"));
        condition.txtCriteria = new QLineEdit(part);
        condition.txtCriteria->setObjectName(u"txtCriteria_%1"_s.arg(i));
        condition.txtCriteria->setAccessibleName(tr("Value"));
        const int row = static_cast<int>(i);
        grid->addWidget(condition.cboAndOr, row, 0);
        grid->addWidget(condition.cboColumn, row, 1);
        grid->addWidget(condition.cboCriteria, row, 2);
        grid->addWidget(condition.txtCriteria, row, 3);
        connect(condition.cboAndOr, &DropDown::Change, this, [this, i] { cboAndOr_Click(i); });
    }
    grid->setColumnStretch(3, 1);
    return part;
}

QString frmTableCriteria::GetCriteria(const QString& datasource, const QString& database, const QString& table)
{
    QString built;
    Routine routine("frmTableCriteria.GetCriteria");
    routine.run([&] {
        auto& form = get<frmTableCriteria>(u"frmTableCriteria"_s);
        const forms::Running running(form);
        const auto ended = qScopeGuard([&] { forms::unload(form.name()); });
        if (!form.fill(datasource, database, table))
            return;
        form.cmdClear_Click();
        form.m_columns->setFocus();
        form.ask();
        if (form.m_accepted)
            built = form.statement();
    });
    return built;
}

/// Lists the columns of the table; false where there is no connection.
bool frmTableCriteria::fill(const QString& datasource, const QString& database, const QString& table)
{
    CConnection* connection = CConnections::instance().Item(datasource);
    if (!connection)
        return false;
    m_table = definitions::nameInSql(definitions::defaultDatabase(datasource), database, table);
    QStringList names;
    for (const auto rows =
             connection->db()->OpenRecordset("SELECT COLUMN_NAME, SQL_TYPE_NAME FROM TW_COLUMN WHERE "_L1 +
                                             definitions::ofTable(database, table) + " ORDER BY COLUMN_NAME"_L1);
         !rows->Eof(); rows->MoveNext()) {
        const QString name = rows->View(0).toString();
        const QString type = rows->View(1).toString();
        new QTreeWidgetItem(m_columns, {name, type});
        m_types.insert(name, type);
        names.append(name);
    }
    m_columns->resizeColumnToContents(0);
    for (const Condition& condition : m_conditions)
        condition.cboColumn->refill(names);
    m_from->setText("From "_L1 + m_table);
    return true;
}

// Choosing -----------------------------------------------------------------------------------------------------------

/// Without a first condition there are no others, and what was entered for them only shows; each one is open when it is
/// joined to those above.
void frmTableCriteria::cboAndOr_Click(std::size_t index)
{
    Routine routine("frmTableCriteria.cboAndOr_Click");
    routine.run([&] {
        const auto isJoined = [](const Condition& condition) { return !condition.cboAndOr->currentText().isEmpty(); };
        const bool joined = isJoined(m_conditions.at(index));
        if (index == 0) {
            for (std::size_t i = 1; i < conditionCount; ++i) {
                const Condition& other = m_conditions.at(i);
                other.cboAndOr->setEnabled(joined);
                enableLists(other, joined && isJoined(other));
                other.txtCriteria->setReadOnly(!joined);
            }
        }
        enableLists(m_conditions.at(index), joined);
        m_conditions.at(index).txtCriteria->setEnabled(joined);
    });
}

void frmTableCriteria::enableLists(const Condition& condition, bool enabled)
{
    condition.cboColumn->setEnabled(enabled);
    condition.cboCriteria->setEnabled(enabled);
}

void frmTableCriteria::selectAll(bool selected)
{
    Routine routine(selected ? "frmTableCriteria.cmdSelectAll_Click" : "frmTableCriteria.cmdSelectNone_Click");
    routine.run([&] {
        if (selected)
            m_columns->selectAll();
        else
            m_columns->clearSelection();
    });
}

/// The first selection enables OK for good: without one left, OK says what is missing.
void frmTableCriteria::lstColumns_Click()
{
    if (!m_columns->selectedItems().isEmpty())
        m_ok->setEnabled(true);
}

void frmTableCriteria::cmdClear_Click()
{
    Routine routine("frmTableCriteria.cmdClear_Click");
    routine.run([&] {
        selectAll(false);
        for (std::size_t i = 0; i < conditionCount; ++i) {
            const Condition& condition = m_conditions.at(i);
            condition.cboAndOr->setCurrentIndex(-1);
            condition.cboColumn->setCurrentIndex(-1);
            condition.cboCriteria->setCurrentIndex(-1);
            condition.txtCriteria->clear();
            // A list that was blank before tells of no change, and its line is to close all the same.
            cboAndOr_Click(i);
        }
    });
}

void frmTableCriteria::cmdOK_Click()
{
    Routine routine("frmTableCriteria.cmdOK_Click");
    routine.run([&] {
        if (m_columns->selectedItems().isEmpty()) {
            boxes::inform(u"You must select at least one column to return."_s);
            m_columns->setFocus();
            return;
        }
        m_accepted = true;
        hide();
    });
}

// The statement ------------------------------------------------------------------------------------------------------

QString frmTableCriteria::statement() const
{
    QStringList columns;
    for (int i = 0; i < m_columns->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = m_columns->topLevelItem(i);
        if (item->isSelected())
            columns.append(bracketed(item->text(0)));
    }
    QString sql =
        "SELECT "_L1 + (columns.isEmpty() ? u"*"_s : columns.join(", "_L1)) + " FROM "_L1 + bracketed(m_table) + ' '_L1;
    for (std::size_t i = 0; i < conditionCount; ++i) {
        const Condition& condition = m_conditions.at(i);
        const QString joint = condition.cboAndOr->currentText();
        if (joint.isEmpty())
            continue;
        sql += (i == 0 ? QString() : u" "_s) + joint + ' '_L1 + comparison(condition);
    }
    return sql;
}

QString frmTableCriteria::comparison(const Condition& condition) const
{
    const QString column = condition.cboColumn->currentText();
    return bracketed(column) + ' '_L1 + condition.cboCriteria->currentText() + ' '_L1 +
           WrapCriteria(condition.txtCriteria->text(), m_types.value(column));
}

QString frmTableCriteria::WrapCriteria(const QString& value, const QString& type)
{
    const QString upper = type.toUpper();
    if (upper == "CHAR"_L1 || upper == "VARCHAR"_L1)
        return definitions::quotedText(value);
    if (upper == "DATE"_L1 || upper == "TIME"_L1 || upper == "TIMESTAMP"_L1)
        return '#'_L1 + value + '#'_L1;
    return value;
}
