#include "frmOptions.h"

#include "PictureLabel.h"
#include "Routine.h"
#include "Settings.h"
#include "mdiMain.h"
#include "modGUI.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

/// The widest that a group gets, in device-independent pixels.
constexpr int groupWidth = 560;

const QString section = u"Options"_s;

/// A prompt in the first column and its control beside it; the control is named after its prompt.
QLabel* addRow(QGridLayout& grid, const QString& prompt, QWidget* control)
{
    auto* label = new QLabel(prompt, grid.parentWidget());
    label->setBuddy(control);
    control->setAccessibleName(QString(prompt).remove(QLatin1Char('&')));
    const int row = grid.rowCount();
    grid.addWidget(label, row, 0);
    grid.addWidget(control, row, 1, Qt::AlignLeft);
    return label;
}

QGridLayout* groupGrid(QGroupBox* group)
{
    group->setMaximumWidth(groupWidth);
    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(16, 8, 16, 16);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);
    return grid;
}

} // namespace

frmOptions::frmOptions(QWidget* parent) : PaneForm(u"frmOptions"_s, parent)
{
    lblTitle()->setText(u"Options"_s);
    lblDescription()->setText(tr("What the explorer shows, and how panes look and open."));

    QGroupBox* catalog = buildCatalogOptions();
    QGroupBox* display = buildDisplayOptions();
    alignPrompts({catalog, display});
    body()->addSpacing(8);
    body()->addWidget(catalog);
    body()->addSpacing(8);
    body()->addWidget(display);
    body()->addSpacing(8);

    m_ok = new QPushButton(tr("OK"), this);
    m_ok->setObjectName(u"cmdOK"_s);
    m_ok->setDefault(true);
    m_cancel = new QPushButton(tr("Cancel"), this);
    m_cancel->setObjectName(u"cmdCancel"_s);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    buttons->addStretch(1);
    body()->addLayout(buttons);
    body()->addStretch(1);

    connect(m_sysTable, &QCheckBox::toggled, this, &frmOptions::chkSysTable_Click);
    for (QRadioButton* order : m_fieldOrder)
        connect(order, &QRadioButton::toggled, this, &frmOptions::optFieldOrder_Click);
    connect(m_items, &QComboBox::currentIndexChanged, this, &frmOptions::changed);
    connect(m_win98, &QCheckBox::toggled, this, &frmOptions::changed);
    connect(m_ok, &QPushButton::clicked, this, &frmOptions::cmdOK_Click);
    connect(m_cancel, &QPushButton::clicked, this, &frmOptions::cmdCancel_Click);
    Form_Load();
}

QGroupBox* frmOptions::buildCatalogOptions()
{
    auto* group = new QGroupBox(u"Catalog Options..."_s, this);
    QGridLayout* grid = groupGrid(group);

    m_sysTable = new QCheckBox(group);
    m_sysTable->setObjectName(u"chkSysTable"_s);
    addRow(*grid, u"View &System Tables:"_s, m_sysTable);

    m_warningPicture = new PictureLabel(u"Warning"_s, {16, 16}, group);
    m_warningPicture->setObjectName(u"imgWarning"_s);
    m_warning = new QLabel(u"WARNING"_s, group);
    m_warning->setObjectName(u"lblWarning"_s);
    QFont bold = m_warning->font();
    bold.setBold(true);
    m_warning->setFont(bold);
    auto* heading = new QHBoxLayout;
    heading->setSpacing(8);
    heading->addWidget(m_warningPicture);
    heading->addWidget(m_warning, 1);
    grid->addLayout(heading, grid->rowCount(), 1);

    m_sysTableNote =
        new QLabel(u"Changing the system tables manually can make them unreadable and is not recommended."_s, group);
    m_sysTableNote->setObjectName(u"lblSysTable"_s);
    m_sysTableNote->setWordWrap(true);
    grid->addWidget(m_sysTableNote, grid->rowCount(), 1);
    m_sysTable->setAccessibleDescription(m_sysTableNote->text());
    chkSysTable_Click();

    // The prompt leads to whichever of the two is on.
    m_fieldOrderFrame = new QWidget(group);
    m_fieldOrderFrame->setObjectName(u"fraFieldOrder"_s);
    m_fieldOrderFrame->setFocusPolicy(Qt::ClickFocus);
    auto* orders = new QHBoxLayout(m_fieldOrderFrame);
    orders->setContentsMargins(0, 0, 0, 0);
    orders->setSpacing(16);
    m_fieldOrder = {new QRadioButton(u"Alphabetically"_s, m_fieldOrderFrame),
                    new QRadioButton(u"Offset Order"_s, m_fieldOrderFrame)};
    for (std::size_t index = 0; index < m_fieldOrder.size(); ++index) {
        m_fieldOrder[index]->setObjectName(u"optFieldOrder_%1"_s.arg(index));
        orders->addWidget(m_fieldOrder[index]);
    }
    addRow(*grid, u"Field &Order"_s, m_fieldOrderFrame);
    return group;
}

QGroupBox* frmOptions::buildDisplayOptions()
{
    auto* group = new QGroupBox(u"Display Options..."_s, this);
    QGridLayout* grid = groupGrid(group);

    m_items = new QComboBox(group);
    m_items->setObjectName(u"cboItems"_s);
    m_items->addItems({u"Display"_s, u"Edit!"_s});
    m_items->setMinimumWidth(144);
    addRow(*grid, u"&Default View:"_s, m_items);

    m_win98 = new QCheckBox(group);
    m_win98->setObjectName(u"chkWin98"_s);
    addRow(*grid, u"&Web Style:"_s, m_win98);
    return group;
}

/// The controls of all groups begin at the same distance from the left.
void frmOptions::alignPrompts(std::initializer_list<QGroupBox*> groups)
{
    int widest = 0;
    for (const QGroupBox* group : groups) {
        for (const QLabel* label : group->findChildren<QLabel*>())
            widest = label->buddy() ? std::max(widest, label->sizeHint().width()) : widest;
    }
    for (QGroupBox* group : groups)
        static_cast<QGridLayout*>(group->layout())->setColumnMinimumWidth(0, widest);
}

void frmOptions::Form_Load()
{
    Routine routine("frmOptions.Form_Load");
    routine.run([&] {
        modGUI::PaneFormLoad(*this);
        loadSettings();
    });
}

void frmOptions::loadSettings()
{
    m_win98->setChecked(settings::getNumber(section, u"Win98"_s, 1) != 0);
    m_sysTable->setChecked(settings::getNumber(section, u"SysTables"_s, 0) != 0);
    m_fieldOrder[settings::getNumber(section, u"FieldOrder"_s, 0) == 0 ? 0 : 1]->setChecked(true);
    const int items = settings::getNumber(section, u"Items"_s, 1);
    m_items->setCurrentIndex(items >= 0 && items < m_items->count() ? items : 1);
    m_loadedSysTable = m_sysTable->isChecked();
    m_loadedWin98 = m_win98->isChecked();
}

void frmOptions::Display()
{
    Routine routine("frmOptions.Display");
    routine.run([&] { m_ok->setEnabled(false); });
}

void frmOptions::chkSysTable_Click()
{
    const bool on = m_sysTable->isChecked();
    m_warningPicture->setVisible(on);
    m_warning->setVisible(on);
    m_sysTableNote->setVisible(on);
    if (m_ok)
        changed();
}

void frmOptions::optFieldOrder_Click()
{
    m_fieldOrderFrame->setFocusProxy(m_fieldOrder[m_fieldOrder[0]->isChecked() ? 0 : 1]);
    changed();
}

void frmOptions::changed()
{
    m_ok->setEnabled(true);
}

void frmOptions::cmdOK_Click()
{
    const forms::Running running(*this);
    Routine routine("frmOptions.cmdOK_Click");
    routine.run([&] {
        settings::save(section, u"Win98"_s, m_win98->isChecked() ? 1 : 0);
        settings::save(section, u"SysTables"_s, m_sysTable->isChecked() ? 1 : 0);
        settings::save(section, u"FieldOrder"_s, m_fieldOrder[0]->isChecked() ? 0 : 1);
        settings::save(section, u"Items"_s, m_items->currentIndex());

        // Rebuilding the tree unloads this form.
        const bool sysTableChanged = m_sysTable->isChecked() != m_loadedSysTable;
        const bool win98Changed = m_win98->isChecked() != m_loadedWin98;
        mdiMain& window = mdiMain::instance();
        if (sysTableChanged)
            window.FetchTreeviewRoot();
        if (win98Changed) {
            forms::unloadAllBut({window.objectName()});
            window.PaneDisplay(u"frmWelcome"_s);
        }
    });
}

void frmOptions::cmdCancel_Click()
{
    const forms::Running running(*this);
    Routine routine("frmOptions.cmdCancel_Click");
    routine.run([&] {
        forms::unload(u"frmWelcome"_s);
        mdiMain::instance().PaneDisplay(u"frmWelcome"_s);
    });
}

void frmOptions::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        m_ok->click();
    else if (event->key() == Qt::Key_Escape)
        m_cancel->click();
    else
        PaneForm::keyPressEvent(event);
}
