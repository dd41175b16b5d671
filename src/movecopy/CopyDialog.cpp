#include "CopyDialog.h"

#include "Boxes.h"
#include "CMouseSleeper.h"
#include "CollectionView.h"
#include "Database.h"
#include "Events.h"
#include "Insertions.h"
#include "NameEdit.h"
#include "Recordset.h"
#include "mdiMain.h"
#include "modDatabase.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

CopyDialog::CopyDialog(const char* name, const QString& title) : DialogForm(QString::fromLatin1(name))
{
    setWindowTitle(title);
    m_rows = new QFormLayout;
    m_rows->setHorizontalSpacing(16);
    m_rows->setVerticalSpacing(8);
    m_rows->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    body()->addLayout(m_rows);
    body()->addStretch(1);

    QPushButton* ok = addButton(u"cmdOk"_s, tr("OK"));
    QPushButton* cancel = addButton(u"cmdCancel"_s, tr("Cancel"));
    setDefaultButton(ok);
    setCancelButton(cancel);
    connect(ok, &QPushButton::clicked, this, [this] {
        const forms::Running running(*this);
        cmdOk_Click();
    });
    connect(cancel, &QPushButton::clicked, this, [this] { forms::unload(this->name()); });
    setMinimumWidth(400);
}

QLabel* CopyDialog::addOriginal(const QString& name, const QString& prompt)
{
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAccessibleName(QString(prompt).remove(u'&').remove(u':'));
    m_rows->addRow(prompt, label);
    return label;
}

void CopyDialog::addEntry(const QString& prompt, QWidget& entry)
{
    entry.setAccessibleName(QString(prompt).remove(u'&').remove(u':'));
    entry.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_rows->addRow(prompt, &entry);
}

void CopyDialog::addName(const QString& name, const QString& prompt)
{
    m_name = new NameEdit(this);
    m_name->setObjectName(name);
    addEntry(prompt, *m_name);
    m_name->setFocus();
}

/// Fills the entry with a free name.
void CopyDialog::proposeName()
{
    const NameRules names = rules();
    m_name->setText(modDatabase::FindUniqueName(*m_database, names.unique, names.original));
    m_name->selectAll();
}

/// Whether the user wants a free name and there is one, which the entry then holds.
bool CopyDialog::findName(const NameRules& rules, const QString& question)
{
    if (boxes::ask(question)) {
        proposeName();
        if (!m_name->text().isEmpty())
            return true;
        // Nothing is left of a name of digits alone.
        boxes::inform(u"A unique name could not be made from '%1'.\nPlease enter a name."_s.arg(rules.original));
    }
    backToName();
    return false;
}

/// The name that the copy gets; empty where the user goes on choosing.
QString CopyDialog::settledName(const NameRules& rules)
{
    if (m_name->text().isEmpty() && !findName(rules, rules.missing))
        return {};
    const auto found = open(rules.select(m_name->text()));
    const long size = found->Fields().Item(rules.column).Size;
    if (!found->Eof())
        return findName(rules, rules.taken(m_name->text())) ? m_name->text() : QString();
    if (size > 0 && m_name->text().size() > size) {
        boxes::inform(u"The name is too long.\nPlease enter %1 characters at the most."_s.arg(size));
        backToName();
        return {};
    }
    return m_name->text();
}

void CopyDialog::backToName()
{
    m_name->setFocus();
    m_name->selectAll();
}

QString CopyDialog::datasource() const
{
    return m_database->Name();
}

std::unique_ptr<dao::Recordset> CopyDialog::open(const QString& select)
{
    m_statement = select;
    return m_database->OpenRecordset(select);
}

void CopyDialog::execute(const QString& statement)
{
    m_statement = statement;
    m_database->Execute(statement);
}

void CopyDialog::cmdOk_Click()
{
    m_statement = u"None"_s;
    Routine routine(routineName(qPrintable(name()), "cmdOk_Click"));
    routine.additional([this] { return m_statement; });
    routine.run([&] {
        const CMouseSleeper sleeper;
        const events::LongRoutine pace;
        const QString settled = isReady() ? settledName(rules()) : QString();
        if (settled.isEmpty())
            return;
        copy(settled);
        const Collection around = collection();
        collectionview::readAnew(around.node);
        collectionview::showAnew(around.pane, around.keys);
        forms::unload(name());
    });
    mdiMain::instance().Status(u"Ready"_s);
}

CopyDialog::Progress CopyDialog::ofColumns()
{
    return {u"Copying Column '%1..."_s, u"COLUMN_NAME"_s};
}

CopyDialog::Progress CopyDialog::ofTablePrivileges()
{
    return {u"Copying Table Privileges for User '%1..."_s, u"USER_NAME"_s};
}

void CopyDialog::copyRows(const QString& select, const Progress& progress,
                          const std::function<QString(const dao::Recordset&)>& insertion)
{
    for (const auto rows = open(select); !rows->Eof(); rows->MoveNext()) {
        mdiMain::instance().Status(progress.text.arg(insertions::text(*rows, progress.column)));
        execute(insertion(*rows));
    }
}
