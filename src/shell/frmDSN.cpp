#include "frmDSN.h"

#include "Installer.h"
#include "NodeTypes.h"
#include "Routine.h"
#include "mdiMain.h"
#include "modGUI.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

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
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    form.addRow(prompt, label);
    return label;
}

} // namespace

frmDSN::frmDSN(QWidget* parent) : PaneForm(u"frmDSN"_s, parent), m_facts(new QGroupBox(this))
{
    m_facts->setTitle(tr("Datasource"));
    m_facts->setMaximumWidth(groupWidth);
    auto* form = new QFormLayout(m_facts);
    form->setContentsMargins(16, 8, 16, 16);
    form->setHorizontalSpacing(16);
    form->setVerticalSpacing(8);
    m_name = addFact(*form, tr("Name:"), u"lblName"_s);
    m_driver = addFact(*form, tr("Driver:"), u"lblDriver"_s);
    m_driver->setText(dao::familyDriver);
    m_remarks = addFact(*form, tr("Description:"), u"lblRemarks"_s);
    m_catalog = addFact(*form, tr("Catalog file:"), u"lblCatalog"_s);
    m_file = addFact(*form, tr("Defined in:"), u"lblFile"_s);
    body()->addSpacing(8);
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
        const TreeNode& node = mdiMain::instance().tvwExplorer().Nodes().Item(nodetypes::datasourceKey(name));
        if (node.Image() == nodetypes::ghostImage) {
            lblTitle()->setText(name + u" (Unconnected) - Datasource Properties"_s);
            lblDescription()->setText(u"Please connect to this datasource to explorer it further..."_s);
        } else {
            lblTitle()->setText(name + u" (Connected) - Datasource Properties"_s);
            lblDescription()->clear();
        }
        showFacts(name);
    });
}

void frmDSN::showFacts(const QString& name)
{
    setFact(*m_name, name);
    for (QLabel* fact : {m_remarks, m_catalog, m_file})
        setFact(*fact, {});
    // The driver manager takes the user's datasource before the system's of the same name.
    for (const dao::Installer::Datasource& source : dao::Installer::datasources()) {
        if (source.Name != name)
            continue;
        for (const dao::Installer::Key& key : source.Keys) {
            if (key.Name.compare("Description"_L1, Qt::CaseInsensitive) == 0)
                setFact(*m_remarks, key.Value);
            else if (key.Name.compare("Catalog"_L1, Qt::CaseInsensitive) == 0)
                setFact(*m_catalog, key.Value);
        }
        setFact(*m_file, source.File);
        break;
    }
}

/// What is not known takes no row.
void frmDSN::setFact(QLabel& fact, const QString& text)
{
    fact.setText(text);
    fact.setToolTip(text);
    fact.setVisible(!text.isEmpty());
    static_cast<QFormLayout*>(m_facts->layout())->labelForField(&fact)->setVisible(!text.isEmpty());
}
