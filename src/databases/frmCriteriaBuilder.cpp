#include "frmCriteriaBuilder.h"

#include "Boxes.h"
#include "CConnections.h"
#include "Definitions.h"
#include "PropertyEntry.h"
#include "Recordset.h"
#include "Routine.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopeGuard>

#include <array>

using namespace Qt::StringLiterals;

namespace
{

constexpr int unit = 8;

struct Operator {
    const char* caption;
    const char* toolTip;
};

constexpr std::array<Operator, 14> operators{{
    {"<", "Less than"},
    {">", "Greater than"},
    {"<=", "Less than or Equal to"},
    {">=", "Greater than or Equal to"},
    {"<>", "Not Equal to"},
    {"=", "Equal to"},
    {"AND", nullptr},
    {"OR", nullptr},
    {"NOT", nullptr},
    {"LIKE", nullptr},
    {"(", nullptr},
    {")", nullptr},
    {"IS NULL", nullptr},
    {"IS NOT NULL", nullptr},
}};

} // namespace

frmCriteriaBuilder::frmCriteriaBuilder() : DialogForm(u"frmCriteriaBuilder"_s)
{
    setWindowTitle(tr("Table Criteria Builder"));
    auto* upper = new QHBoxLayout;
    upper->setSpacing(2 * unit);
    upper->addWidget(buildColumns(), 1);
    upper->addWidget(buildOperators());
    body()->addLayout(upper, 1);
    body()->addWidget(buildCriteria(), 1);

    QPushButton* clear = addButton(u"cmdClear"_s, u"&Clear"_s);
    clear->setToolTip(u"Clear the criteria string"_s);
    QPushButton* ok = addButton(u"cmdOK"_s, u"&OK"_s);
    QPushButton* cancel = addButton(u"cmdCancel"_s, u"Cancel"_s);
    setDefaultButton(ok);
    setCancelButton(cancel);
    connect(clear, &QPushButton::clicked, this, &frmCriteriaBuilder::cmdClear_Click);
    connect(ok, &QPushButton::clicked, this, [this] {
        m_accepted = true;
        hide();
    });
    connect(cancel, &QPushButton::clicked, this, &QWidget::hide);
    resize(560, 480);
}

QWidget* frmCriteriaBuilder::buildColumns()
{
    auto* part = new QWidget(this);
    m_columns = new QListWidget(part);
    m_columns->setObjectName(u"lstColumns"_s);
    m_columns->setUniformItemSizes(true);
    m_columns->setAccessibleName(u"Available Columns"_s);
    m_columns->setToolTip(u"A list of the columns for which criteria can be specified.  Double clicking the column "
                          "appends it to the criteria string."_s);
    // Not itemActivated: that would take Enter, which is the default button's, too.
    connect(m_columns, &QListWidget::itemDoubleClicked, this, &frmCriteriaBuilder::lstColumns_DblClick);
    auto* columns = new QLabel(u"Available Columns:"_s, part);
    columns->setBuddy(m_columns);

    m_value = new QLineEdit(part);
    m_value->setObjectName(u"txtColVal"_s);
    m_value->setAccessibleName(u"Column Value"_s);
    auto* value = new QLabel(u"Column Value:"_s, part);
    value->setBuddy(m_value);
    auto* insert = new QPushButton(tr("&Insert"), part);
    insert->setObjectName(u"cmdInsert"_s);
    insert->setToolTip(u"Append to Criteria String"_s);
    connect(insert, &QPushButton::clicked, this, &frmCriteriaBuilder::cmdInsert_Click);

    auto* grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(unit);
    grid->addWidget(columns, 0, 0, 1, 2);
    grid->addWidget(m_columns, 1, 0, 1, 2);
    grid->addWidget(value, 2, 0, 1, 2);
    grid->addWidget(m_value, 3, 0);
    grid->addWidget(insert, 3, 1);
    return part;
}

QWidget* frmCriteriaBuilder::buildOperators()
{
    auto* part = new QWidget(this);
    auto* grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(unit);
    constexpr int columns = 2;
    for (std::size_t i = 0; i < operators.size(); ++i) {
        const QString caption = QLatin1String(operators.at(i).caption);
        auto* button = new QPushButton(caption, part);
        const int index = static_cast<int>(i);
        button->setObjectName(u"cmdComp_%1"_s.arg(index));
        button->setToolTip(QLatin1String(operators.at(i).toolTip));
        connect(button, &QPushButton::clicked, this, [this, caption] {
            Routine routine("frmCriteriaBuilder.cmdComp_Click");
            routine.run([&] { append(caption); });
        });
        grid->addWidget(button, index / columns, index % columns);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    return part;
}

QWidget* frmCriteriaBuilder::buildCriteria()
{
    auto* part = new QWidget(this);
    m_criteria = new PropertyMemo(part);
    m_criteria->setObjectName(u"txtCriteria"_s);
    m_criteria->setAccessibleName(u"Criteria String"_s);
    m_criteria->setToolTip(u"Criteria string - Any valid SQL is allowed"_s);
    auto* prompt = new QLabel(u"Criteria String:"_s, part);
    prompt->setBuddy(m_criteria);
    auto* rows = new QVBoxLayout(part);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(unit);
    rows->addWidget(prompt);
    rows->addWidget(m_criteria);
    return part;
}

QString frmCriteriaBuilder::GetCriteria(const QString& datasource, const QString& database, const QString& table,
                                        const QString& criteria)
{
    QString built = criteria;
    Routine routine("frmCriteriaBuilder.GetCriteria");
    routine.run([&] {
        auto& form = get<frmCriteriaBuilder>(u"frmCriteriaBuilder"_s);
        const forms::Running running(form);
        const auto ended = qScopeGuard([&] { forms::unload(form.name()); });
        if (!form.fill(datasource, database, table))
            return;
        form.m_criteria->setText(criteria);
        form.m_criteria->moveCursor(QTextCursor::End);
        form.m_columns->setFocus();
        form.ask();
        if (form.m_accepted)
            built = form.m_criteria->text();
    });
    return built;
}

void frmCriteriaBuilder::TellIfCut(const QString& built, const QString& kept)
{
    if (kept.size() < built.size())
        boxes::inform(
            tr("The criteria is longer than the catalog can hold: only the first %1 of its %2 characters have "
               "been kept.")
                .arg(kept.size())
                .arg(built.size()));
}

/// Lists the columns of the table; says so if there are none.
bool frmCriteriaBuilder::fill(const QString& datasource, const QString& database, const QString& table)
{
    CConnection* connection = CConnections::instance().Item(datasource);
    if (!connection)
        return false;
    m_table = definitions::joinedName(database, table);
    for (const auto rows = connection->db()->OpenRecordset("SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_L1 +
                                                           definitions::ofTable(database, table));
         !rows->Eof(); rows->MoveNext())
        m_columns->addItem(rows->View(0).toString());
    if (m_columns->count() > 0)
        return true;
    boxes::inform(u"This Table contains no columns.\nAdd some columns before entering a table criteria."_s);
    return false;
}

void frmCriteriaBuilder::append(const QString& text)
{
    m_criteria->moveCursor(QTextCursor::End);
    m_criteria->insertPlainText(text + ' '_L1);
    m_criteria->ensureCursorVisible();
}

void frmCriteriaBuilder::lstColumns_DblClick(const QListWidgetItem* item)
{
    Routine routine("frmCriteriaBuilder.lstColumns_DblClick");
    routine.run([&] { append(m_table + '.'_L1 + item->text()); });
}

void frmCriteriaBuilder::cmdInsert_Click()
{
    Routine routine("frmCriteriaBuilder.cmdInsert_Click");
    routine.run([&] {
        if (!m_value->text().isEmpty())
            append(m_value->text());
    });
}

void frmCriteriaBuilder::cmdClear_Click()
{
    Routine routine("frmCriteriaBuilder.cmdClear_Click");
    routine.run([&] {
        m_value->clear();
        m_criteria->setText({});
    });
}
