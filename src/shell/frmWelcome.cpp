#include "frmWelcome.h"

#include "BandBar.h"
#include "PictureLabel.h"
#include "Routine.h"
#include "Settings.h"
#include "mdiMain.h"
#include "modGUI.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

/// The widest that the hints get before their lines wrap, in device-independent pixels.
constexpr int hintsWidth = 560;

QLabel* wrappedLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

void addHint(QGridLayout& grid, const QString& imageKey, const QString& text)
{
    const int row = grid.rowCount();
    QWidget* parent = grid.parentWidget();
    grid.addWidget(new PictureLabel(imageKey, {24, 24}, parent), row, 0, Qt::AlignTop);
    grid.addWidget(wrappedLabel(text, parent), row, 1, Qt::AlignVCenter);
}

QGridLayout* hintGrid(QWidget* parent)
{
    parent->setMaximumWidth(hintsWidth);
    auto* grid = new QGridLayout(parent);
    grid->setContentsMargins(0, 8, 0, 8);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(16);
    grid->setColumnStretch(1, 1);
    return grid;
}

} // namespace

frmWelcome::frmWelcome(QWidget* parent)
    : PaneForm(u"frmWelcome"_s, parent), m_hints(new QWidget(this)), m_noDatasources(new QWidget(this))
{
    lblTitle()->setObjectName(u"lblTitleBar"_s);

    QGridLayout* hints = hintGrid(m_hints);
    addHint(*hints, u"Datasource"_s,
            tr("Expand a datasource to connect to it. Its files, databases and users appear below it."));
    addHint(*hints, u"File Edit"_s,
            tr("Click an item to show it here. The right mouse button lists what can be done with it."));
    addHint(*hints, u"Export"_s,
            tr("Import Catalog and Export Catalog in the File menu read and write a whole catalog as a CSV file."));

    QGridLayout* none = hintGrid(m_noDatasources);
    addHint(
        *none, u"Warning"_s,
        tr("No Tarnwick ODBC datasource is set up yet. Add one, then choose Refresh Datasources in the File menu."));
    auto* administrator = new QPushButton(tr("&Datasource Administrator"), m_noDatasources);
    administrator->setObjectName(u"cmdAdministrator"_s);
    connect(administrator, &QPushButton::clicked, this,
            [] { mdiMain::instance().toolBar(u"tbrMain"_s).Button(u"DSN Admin"_s).press(); });
    none->addWidget(administrator, none->rowCount(), 1, Qt::AlignLeft);

    m_hints->setObjectName(u"fraHints"_s);
    m_noDatasources->setObjectName(u"fraNoDatasources"_s);
    body()->addWidget(m_noDatasources);
    body()->addWidget(m_hints);
    body()->addStretch(1);
    Form_Load();
}

void frmWelcome::Form_Load()
{
    Routine routine("frmWelcome.Form_Load");
    routine.run([&] {
        modGUI::PaneFormLoad(*this);
        lblTitle()->setText(u"Welcome to the Tarnwick Quorvane"_s);
        lblDescription()->setText(u"Use the treeview on the left to explore and modify your Tarnwick ODBC "
                                  "datasources..."_s);
    });
}

void frmWelcome::Display()
{
    Routine routine("frmWelcome.Display");
    routine.run([&] {
        if (settings::getNumber(u"Options"_s, u"Win98"_s, 1) != 0)
            imgCorner()->show();
        const bool anyDatasource = mdiMain::instance().tvwExplorer().Nodes().Root() != nullptr;
        m_noDatasources->setVisible(!anyDatasource);
        m_hints->setVisible(anyDatasource);
    });
}
