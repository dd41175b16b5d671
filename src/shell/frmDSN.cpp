#include "frmDSN.h"

#include "DBEngine.h"
#include "Routine.h"
#include "mdiMain.h"
#include "modGUI.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace
{

/// The widest that a group gets, in device-independent pixels.
constexpr int groupWidth = 560;

QLabel* addFact(QFormLayout& form, const QString& prompt, const QString& name)
{
    auto* label = new QLabel(form.parentWidget());
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setAccessibleDescription(prompt);
    form.addRow(prompt, label);
    return label;
}

} // namespace

frmDSN::frmDSN(QWidget* parent) : PaneForm(QStringLiteral("frmDSN"), parent), m_facts(new QGroupBox(this))
{
    m_facts->setTitle(tr("Datasource"));
    m_facts->setMaximumWidth(groupWidth);
    auto* form = new QFormLayout(m_facts);
    form->setContentsMargins(16, 8, 16, 16);
    form->setHorizontalSpacing(16);
    form->setVerticalSpacing(8);
    m_name = addFact(*form, tr("Name:"), QStringLiteral("lblName"));
    m_driver = addFact(*form, tr("Driver:"), QStringLiteral("lblDriver"));
    body()->addWidget(m_facts);
    body()->addStretch(1);
    Form_Load();
}

void frmDSN::Form_Load()
{
    Routine routine("frmDSN.Form_Load");
    routine.run([&] { modGUI::PaneFormLoad(*this); });
}

void frmDSN::Display(const QString& name)
{
    Routine routine("frmDSN.Display");
    routine.run([&] {
        const QString key = QStringLiteral("DSN=") + name + QLatin1Char(':');
        const TreeNode& node = mdiMain::instance().tvwExplorer().Nodes().Item(key);
        if (node.Image() == QLatin1String("DSN Ghost")) {
            lblTitle()->setText(name + QStringLiteral(" (Unconnected) - Datasource Properties"));
            lblDescription()->setText(QStringLiteral("Please connect to this datasource to explorer it further..."));
        } else {
            lblTitle()->setText(name + QStringLiteral(" (Connected) - Datasource Properties"));
            lblDescription()->clear();
        }
        showFacts(name);
    });
}

void frmDSN::showFacts(const QString& name)
{
    m_name->setText(name);
    m_driver->clear();
    for (const dao::DataSource& source : dao::DBEngine::DataSources()) {
        if (source.Name == name)
            m_driver->setText(source.Description);
    }
}
