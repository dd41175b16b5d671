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

using namespace Qt::StringLiterals;

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
        link.setMarked(true);
        events::yield();
        if (!Outside::instance().open(address))
            boxes::inform(complaint);
        if (pressed)
            pressed->setMarked(false);
    });
}

} // namespace

frmAbout::frmAbout(QWidget* parent) : PaneForm(u"frmAbout"_s, parent)
{
    lblTitle()->setText(u"About Tarnwick Quorvane"_s);
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
    m_logo = new PictureLabel(u"Logo"_s, {64, 64}, header);
    m_logo->setObjectName(u"imgLogo"_s);
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
    auto* group = new QGroupBox(u"Application Details:"_s, this);
    QGridLayout* grid = groupGrid(group);
    m_appTitle = addRow(*grid, tr("Application:"), fact(u"lblAppTitle"_s, {}, group));
    m_appVersion = addRow(*grid, tr("Version:"), fact(u"lblAppVersion"_s, {}, group));
    m_appBuild = addRow(*grid, tr("Build:"), fact(u"lblAppBuild"_s, {}, group));
    return group;
}

QWidget* frmAbout::buildContacts()
{
    auto* group = new QGroupBox(u"Contact Details:"_s, this);
    QGridLayout* grid = groupGrid(group);
    addRow(*grid, tr("Head Office:"), fact(u"lblHeadOffice"_s, application::headOffice(), group));
    addRow(*grid, tr("Telephone:"), fact(u"lblTelephone"_s, application::telephone(), group));
    addRow(*grid, tr("Facsimile:"), fact(u"lblFacsimile"_s, application::facsimile(), group));
    addRow(*grid, tr("Voice Mail:"), fact(u"lblVoiceMail"_s, application::voiceMail(), group));
    m_eMail = addRow(*grid, tr("E-Mail:"), new LinkLabel(application::supportMail(), group));
    m_eMail->setObjectName(u"lblEMail"_s);
    m_www = addRow(*grid, tr("Web:"), new LinkLabel(application::supportWeb(), group));
    m_www->setObjectName(u"lblWWW"_s);
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
        m_appVersion->setText(u"%1.%2"_s.arg(application::major()).arg(application::minor()));
        m_appBuild->setText(QString::number(application::revision()) +
                            (application::isBeta() ? u" (Beta)"_s : QString()));
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
        if (button.Key() == "WWW"_L1)
            lblWWW_Click();
        else if (button.Key() == "EMail"_L1)
            lblEMail_Click();
        else if (button.Key() == "Information"_L1)
            DisplaySystemInfo();
    });
}

void frmAbout::lblEMail_Click()
{
    const forms::Running running(*this);
    openLink(*m_eMail, u"mailto:"_s, u"No default EMail Editor is registered"_s);
}

void frmAbout::lblWWW_Click()
{
    const forms::Running running(*this);
    openLink(*m_www, {}, u"No Default Browser is registered"_s);
}

void frmAbout::DisplaySystemInfo()
{
    Routine routine("frmAbout.DisplaySystemInfo");
    routine.run([&] {
        using modAPIRegistry::GetKeyValue;
        constexpr auto root = modAPIRegistry::Root::HKEY_LOCAL_MACHINE;
        QString found;
        if (GetKeyValue(root, u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s, u"PATH"_s, found)) {
            runProgram(found);
            return;
        }
        if (!GetKeyValue(root, u"SOFTWARE\\Microsoft\\Shared Tools Location"_s, u"MSINFO"_s, found))
            return;
        const QString program = found + "/MSINFO32.EXE"_L1;
        if (QFileInfo::exists(program))
            runProgram(program);
    });
}
