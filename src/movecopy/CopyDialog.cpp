#include "CopyDialog.h"

#include "Boxes.h"
#include "CMouseSleeper.h"
#include "Database.h"
#include "Events.h"
#include "NameEdit.h"
#include "Recordset.h"
#include "Routine.h"
#include "mdiMain.h"
#include "modDatabase.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

CopyDialog::CopyDialog(const QString& name, const QString& title) : DialogForm(name)
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

void CopyDialog::addOriginal(const QString& name, const QString& prompt, QLabel*& label)
{
    label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAccessibleName(QString(prompt).remove(u'&').remove(u':'));
    m_rows->addRow(prompt, label);
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

void CopyDialog::proposeName(const NameRules& rules)
{
    m_name->setText(modDatabase::FindUniqueName(*m_database, rules.unique, rules.original));
    m_name->selectAll();
}

QString CopyDialog::settledName(const NameRules& rules)
{
    if (m_name->text().isEmpty()) {
        if (!boxes::ask(rules.missing))
            return {};
        proposeName(rules);
        if (m_name->text().isEmpty())
            return {};
    }
    const auto found = open(rules.select(m_name->text()));
    const long size = found->Fields().Item(rules.column).Size;
    if (!found->Eof()) {
        if (!boxes::ask(rules.taken(m_name->text())))
            return {};
        proposeName(rules);
    } else if (size > 0 && m_name->text().size() > size) {
        boxes::inform(u"The name is too long.\nPlease enter %1 characters at the most."_s.arg(size));
        return {};
    }
    return m_name->text();
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

void CopyDialog::run(const char* routineName, const std::function<bool()>& copy)
{
    m_statement = u"None"_s;
    Routine routine(routineName);
    routine.additional([this] { return m_statement; });
    routine.run([&] {
        const CMouseSleeper sleeper;
        const events::LongRoutine pace;
        if (copy())
            forms::unload(name());
    });
    mdiMain::instance().Status(u"Ready"_s);
}

void CopyDialog::copyRows(const QString& select, const std::function<QString(const dao::Recordset&)>& status,
                          const std::function<QString(const dao::Recordset&)>& insertion)
{
    for (const auto rows = open(select); !rows->Eof(); rows->MoveNext()) {
        mdiMain::instance().Status(status(*rows));
        execute(insertion(*rows));
    }
}
