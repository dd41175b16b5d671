#include "OrderDialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

/// One section for all order dialogs.
const QString section = u"frmColumnReorder"_s;

QPushButton* moveButton(const QString& name, const QString& caption, const QString& tip, QWidget* parent)
{
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAccessibleDescription(tip);
    button->setMinimumWidth(80);
    button->setAutoRepeat(true);
    return button;
}

} // namespace

OrderDialog::OrderDialog(const QString& name, const Words& words, QWidget* parent) : DialogForm(name, parent)
{
    setWindowTitle(words.title);
    body()->addWidget(buildList(words), 1);

    m_sort = new QCheckBox(tr("&Sort alphabetically"), this);
    m_sort->setObjectName(u"chkSortAlpha"_s);
    body()->addWidget(m_sort);

    QPushButton* ok = addButton(u"cmdOK"_s, tr("OK"));
    QPushButton* cancel = addButton(u"cmdCancel"_s, tr("Cancel"));
    setDefaultButton(ok);
    setCancelButton(cancel);

    connect(m_sort, &QCheckBox::toggled, this, [this] {
        const forms::Running running(*this);
        chkSortAlpha_Click();
    });
    connect(ok, &QPushButton::clicked, this, [this] {
        const forms::Running running(*this);
        cmdOK_Click();
    });
    connect(cancel, &QPushButton::clicked, this, [this] { forms::unload(this->name()); });
    resize(400, 400);
}

QWidget* OrderDialog::buildList(const Words& words)
{
    auto* part = new QWidget(this);
    m_list = new QListWidget(part);
    m_list->setObjectName(words.list);
    m_list->setUniformItemSizes(true);
    m_list->setToolTip(words.listTip);
    m_list->setAccessibleName(QString(words.prompt).remove(u'&').remove(u':'));
    auto* prompt = new QLabel(words.prompt, part);
    prompt->setBuddy(m_list);

    QPushButton* up = moveButton(u"cmdUp"_s, tr("&Up"), words.upTip, part);
    QPushButton* down = moveButton(u"cmdDown"_s, tr("&Down"), words.downTip, part);
    connect(up, &QPushButton::clicked, this, &OrderDialog::cmdUp_Click);
    connect(down, &QPushButton::clicked, this, &OrderDialog::cmdDown_Click);

    auto* grid = new QGridLayout(part);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(8);
    grid->addWidget(prompt, 0, 0);
    grid->addWidget(m_list, 1, 0, 3, 1);
    grid->addWidget(up, 1, 1);
    grid->addWidget(down, 2, 1);
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(0, 1);
    return part;
}

bool OrderDialog::sortsAlphabetically() const
{
    return m_sort->isChecked();
}

QStringList OrderDialog::names() const
{
    QStringList all;
    all.reserve(m_list->count());
    for (int row = 0; row < m_list->count(); ++row)
        all.append(m_list->item(row)->text());
    return all;
}

void OrderDialog::clear()
{
    m_list->clear();
}

void OrderDialog::add(const QString& name)
{
    m_list->addItem(name);
}

void OrderDialog::moveSelected(int rows)
{
    const QList<QListWidgetItem*> selected = m_list->selectedItems();
    if (selected.isEmpty())
        return;
    const int from = m_list->row(selected.first());
    const int to = from + rows;
    if (to < 0 || to >= m_list->count())
        return;
    QListWidgetItem* item = m_list->takeItem(from);
    m_list->insertItem(to, item);
    m_list->setCurrentItem(item);
}

QPoint OrderDialog::position(QPoint centred) const
{
    return storedPosition(section, centred);
}

void OrderDialog::savePosition() const
{
    storePosition(section);
}
