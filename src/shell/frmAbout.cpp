#include "frmAbout.h"

#include "Application.h"
#include "BandBar.h"
#include "Boxes.h"
#include "Events.h"
#include "LinkLabel.h"
#include "Outside.h"
#include "PictureLabel.h"
#include "Routine.h"
#include "modAPIRegistry.h"
#include "modGUI.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace
{

/// The widest that a group gets, in device-independent pixels.
constexpr int groupWidth = 560;

QGridLayout* groupGrid(QGroupBox* group)
{
    group->setMaximumWidth(groupWidth);
    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(16, 8, 16, 16);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(8);
    grid->setColumnMinimumWidth(0, 112);
    grid->setColumnStretch(1, 1);
    return grid;
}

template <class Control>
Control* addRow(QGridLayout& grid, const QString& prompt, Control* control)
{
    auto* label = new QLabel(prompt, grid.parentWidget());
    control->setAccessibleName(prompt + QLatin1Char(' ') + control->text());
    const int row = grid.rowCount();
    grid.addWidget(label, row, 0, Qt::AlignTop);
    grid.addWidget(control, row, 1, Qt::AlignTop | Qt::AlignLeft);
    return control;
}

/// A fact that can be marked and copied.
QLabel* fact(const QString& name, const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

void runProgram(const QString& program)
{
    step([&] {
        if (!Outside::instance().run(program, {}))
            throw RuntimeError(ErrorNumber::FileNotFound);
    });
}

/// Opens an address with the link shown as pressed meanwhile. The link may be gone before the address has been opened.
void openLink(LinkLabel& link, const QString& prefix, const QString& complaint)
{
    Routine routine("frmAbout.lblEMail_Click");
    routine.run([&] {
        const QPointer<LinkLabel> pressed = &link;
        const QString address = prefix + link.text();
        link.setDown(true);
        events::yield();
        if (!Outside::instance().open(address))
            boxes::inform(complaint);
        if (pressed)
            pressed->setDown(false);
    });
}

} // namespace

frmAbout::frmAbout(QWidget* parent) : PaneForm(QStringLiteral("frmAbout"), parent)
{
    lblTitle()->setText(QStringLiteral("About Tarnwick Quorvane"));
    body()->addWidget(buildHeader());
    body()->addWidget(buildDetails());
    body()->addSpacing(8);
    body()->addWidget(buildContacts());
    body()->addStretch(1);
    Form_Load();
    lblTitle_Change();
}

QWidget* frmAbout::buildHeader()
{
    auto* header = new QWidget(this);
    m_logo = new PictureLabel(QStringLiteral("Logo"), {64, 64}, header);
    m_logo->setObjectName(QStringLiteral("imgLogo"));
    m_logo->hide();
    m_name = new QLabel(application::title(), header);
    QFont large = m_name->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setWeight(QFont::DemiBold);
    m_name->setFont(large);

    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 8);
    row->setSpacing(16);
    row->addWidget(m_logo);
    row->addWidget(m_name, 1);
    return header;
}

QWidget* frmAbout::buildDetails()
{
    auto* group = new QGroupBox(QStringLiteral("Application Details:"), this);
    QGridLayout* grid = groupGrid(group);
    m_appTitle = addRow(*grid, tr("Application:"), fact(QStringLiteral("lblAppTitle"), {}, group));
    m_appVersion = addRow(*grid, tr("Version:"), fact(QStringLiteral("lblAppVersion"), {}, group));
    m_appBuild = addRow(*grid, tr("Build:"), fact(QStringLiteral("lblAppBuild"), {}, group));
    return group;
}

QWidget* frmAbout::buildContacts()
{
    auto* group = new QGroupBox(QStringLiteral("Contact Details:"), this);
    QGridLayout* grid = groupGrid(group);
    addRow(*grid, tr("Head Office:"), fact(QStringLiteral("lblHeadOffice"), application::headOffice(), group));
    addRow(*grid, tr("Telephone:"), fact(QStringLiteral("lblTelephone"), application::telephone(), group));
    addRow(*grid, tr("Facsimile:"), fact(QStringLiteral("lblFacsimile"), application::facsimile(), group));
    addRow(*grid, tr("Voice Mail:"), fact(QStringLiteral("lblVoiceMail"), application::voiceMail(), group));
    m_eMail = addRow(*grid, tr("E-Mail:"), new LinkLabel(application::supportMail(), group));
    m_eMail->setObjectName(QStringLiteral("lblEMail"));
    m_www = addRow(*grid, tr("Web:"), new LinkLabel(application::supportWeb(), group));
    m_www->setObjectName(QStringLiteral("lblWWW"));
    connect(m_eMail, &LinkLabel::clicked, this, &frmAbout::lblEMail_Click);
    connect(m_www, &LinkLabel::clicked, this, &frmAbout::lblWWW_Click);
    return group;
}

void frmAbout::Form_Load()
{
    Routine routine("frmAbout.Form_Load");
    routine.run([&] {
        modGUI::PaneFormLoad(*this);
        m_appTitle->setText(application::title());
        m_appVersion->setText(QStringLiteral("%1.%2").arg(application::major()).arg(application::minor()));
        m_appBuild->setText(QString::number(application::revision()) +
                            (application::isBeta() ? QStringLiteral(" (Beta)") : QString()));
        m_logo->show();
    });
}

void frmAbout::lblTitle_Change()
{
    Routine routine("frmAbout.Display");
    routine.run([&] { modGUI::PaneFormResize(*this); });
}

void frmAbout::Display()
{
    Routine routine("frmAbout.Display");
    routine.run([&] { lblTitle_Change(); });
}

void frmAbout::tbr_ButtonClick(ToolButton& button)
{
    const forms::Running running(*this);
    Routine routine("frmAbout.tbr_ButtonClick");
    routine.run([&] {
        if (button.Key() == QLatin1String("WWW"))
            lblWWW_Click();
        else if (button.Key() == QLatin1String("EMail"))
            lblEMail_Click();
        else if (button.Key() == QLatin1String("Information"))
            DisplaySystemInfo();
    });
}

void frmAbout::lblEMail_Click()
{
    const forms::Running running(*this);
    openLink(*m_eMail, QStringLiteral("mailto:"), QStringLiteral("No default EMail Editor is registered"));
}

void frmAbout::lblWWW_Click()
{
    const forms::Running running(*this);
    openLink(*m_www, {}, QStringLiteral("No Default Browser is registered"));
}

void frmAbout::DisplaySystemInfo()
{
    Routine routine("frmAbout.DisplaySystemInfo");
    routine.run([&] {
        using modAPIRegistry::GetKeyValue;
        constexpr auto root = modAPIRegistry::Root::HKEY_LOCAL_MACHINE;
        QString found;
        if (GetKeyValue(root, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"), QStringLiteral("PATH"),
                        found)) {
            runProgram(found);
            return;
        }
        if (!GetKeyValue(root, QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"), QStringLiteral("MSINFO"),
                         found))
            return;
        const QString program = found + QLatin1String("/MSINFO32.EXE");
        if (QFileInfo::exists(program))
            runProgram(program);
    });
}
