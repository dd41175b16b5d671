#include "mdiMain.h"

#include "Application.h"
#include "BandBar.h"
#include "CConnections.h"
#include "Commands.h"
#include "DBEngine.h"
#include "Events.h"
#include "Icons.h"
#include "MenuTable.h"
#include "Routine.h"
#include "Settings.h"
#include "ToolbarPane.h"
#include "ToolbarTable.h"
#include "Twips.h"
#include "frmTWErr.h"
#include "modGUI.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <QScreen>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

mdiMain* theMain = nullptr;

/// The strip at the right edge of the tree side that holds the splitter.
constexpr int splitterTwips = 60;
constexpr int defaultTreeviewTwips = 2475;
/// How far a key moves the splitter, in pixels.
constexpr int splitterKeyStep = 16;

const QString section = u"mdiMain"_s;

} // namespace

mdiMain::mdiMain(const QStringList& commandLine) : m_debug(commandLine.join(' '_L1).contains("DEBUG"_L1))
{
    theMain = this;
    setObjectName(u"mdiMain"_s);
    setWindowTitle(application::title());
    setWindowIcon(Icons::icon(u"Logo"_s));
    buildControls();
    buildToolBars();
    buildMenus();
}

mdiMain::~mdiMain()
{
    m_tree->CancelDrag();
    try {
        forms::unloadAllBut({});
    } catch (const RuntimeError&) {
        // The window is gone, and with it whoever could be asked.
    }
    m_nodes.Clear();
    theMain = nullptr;
}

mdiMain& mdiMain::instance()
{
    if (!theMain)
        throw RuntimeError(ErrorNumber::ObjectNotSet);
    return *theMain;
}

mdiMain* mdiMain::find()
{
    return theMain;
}

void mdiMain::MDIForm_Load()
{
    frmTWErr::Load();
    Routine routine("mdiMain.MDIForm_Load");
    routine.run([&] {
        events::yield();
        restorePlacement();
        CConnections::instance().setWorkspace(dao::DBEngine::CreateWorkspace(u"Tarnwick Administrator"_s, {}, {}, 1));
        forgetCurrentPane();
        for (ToolBar* toolBar : std::as_const(m_toolBars))
            modGUI::PaneToolbarSetup(*toolBar);
        CoolbarContextToolbar();
        m_nodes.setTreeview(m_tree);
        FetchTreeviewRoot();
        PaneDisplay(u"frmWelcome"_s);
    });
}

void mdiMain::MDIForm_Unload()
{
    {
        Routine routine("mdiMain.MDIForm_Unload");
        routine.run([&] {
            if (!isMaximized() && !isMinimized() && !isFullScreen()) {
                settings::save(section, u"Top"_s, toTwips(y()));
                settings::save(section, u"Left"_s, toTwips(x()));
                settings::save(section, u"Width"_s, toTwips(width()));
                settings::save(section, u"Height"_s, toTwips(height()));
            }
            settings::save(section, u"TreeviewWidth"_s, toTwips(m_treeSide->width()));
            m_savedNodeKey.clear();
        });
    }
    frmTWErr::Unload();
}

void mdiMain::closeEvent(QCloseEvent* event)
{
    // One form that fails does not keep the others from being unloaded.
    for (const QString& form : forms::loadedNames()) {
        if (form == "frmTWErr"_L1)
            continue;
        Routine routine("mdiMain.MDIForm_Unload");
        routine.run([&] { forms::unload(form); });
    }
    MDIForm_Unload();
    event->accept();
    QApplication::quit();
}

void mdiMain::restorePlacement()
{
    resize(toPixels(settings::getNumber(section, u"Width"_s, 9600)),
           toPixels(settings::getNumber(section, u"Height"_s, 8700)));
    const QPoint position(toPixels(settings::getNumber(section, u"Left"_s, 0)),
                          toPixels(settings::getNumber(section, u"Top"_s, 0)));
    // A place on a screen that is no longer there would open the window out of sight.
    const QList<QScreen*> screens = QGuiApplication::screens();
    const bool isInSight = std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
        return screen->availableGeometry().intersects(QRect(position, size()));
    });
    move(isInSight ? position : QPoint(0, 0));
    // A side without any width could not be gripped to give it one.
    const int treeviewWidth = settings::getNumber(section, u"TreeviewWidth"_s, defaultTreeviewTwips);
    setTreeviewWidth(treeviewWidth > splitterTwips ? treeviewWidth : defaultTreeviewTwips);
}

void mdiMain::buildControls()
{
    auto* central = new QWidget(this);
    auto* rows = new QVBoxLayout(central);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    m_bands = new BandBar(u"cbrMain"_s, central);
    rows->addWidget(m_bands);

    m_client = new QWidget(central);
    m_client->setObjectName(u"picClient"_s);
    rows->addWidget(m_client, 1);

    m_treeSide = new QWidget(m_client);
    m_treeSide->setObjectName(u"picTreeview"_s);
    m_tree = new TreeView(m_treeSide);
    m_tree->setObjectName(u"tvwExplorer"_s);
    m_tree->setAccessibleName(tr("Datasources"));
    m_splitter = new QWidget(m_treeSide);
    m_splitter->setObjectName(u"picSplitter"_s);
    m_splitter->setCursor(Qt::SplitHCursor);
    m_splitter->setAccessibleName(tr("Width of the tree"));
    m_splitter->setAccessibleDescription(tr("The left and right keys move it."));
    m_splitter->setFocusPolicy(Qt::TabFocus);
    m_splitter->setAutoFillBackground(true);
    m_paneArea = new QWidget(m_client);
    m_paneArea->setObjectName(u"picPanes"_s);
    for (QWidget* watched : {m_client, m_treeSide, m_splitter, m_paneArea})
        watched->installEventFilter(this);

    statusBar()->setObjectName(u"sbrMain"_s);
    m_status = new QLabel(statusBar());
    m_status->setObjectName(u"Status"_s);
    m_status->setTextFormat(Qt::PlainText);
    // A long text is cut off and does not widen the window.
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(m_status, 1);
    auto* progress = new QProgressBar(statusBar());
    progress->setObjectName(u"prbMain"_s);
    progress->setMaximumSize(120, 12);
    progress->setTextVisible(false);
    progress->setAccessibleName(tr("Progress"));
    statusBar()->addPermanentWidget(progress);

    connect(m_tree, &TreeView::Expand, this, &mdiMain::tvwExplorer_Expand);
    connect(m_tree, &TreeView::Collapse, this, &mdiMain::tvwExplorer_Collapse);
    connect(m_tree, &TreeView::MouseDown, this, &mdiMain::tvwExplorer_MouseDown);
    connect(m_tree, &TreeView::MouseMove, this, &mdiMain::tvwExplorer_MouseMove);
    connect(m_tree, &TreeView::MouseUp, this, &mdiMain::tvwExplorer_MouseUp);
    connect(m_tree, &TreeView::DragOver, this, &mdiMain::tvwExplorer_DragOver);
    connect(m_tree, &TreeView::DragDrop, this, &mdiMain::tvwExplorer_DragDrop);
    connect(m_tree, &TreeView::DragCancel, this, &mdiMain::endDrag);
    connect(m_tree, &TreeView::ContextKey, this, &mdiMain::tvwExplorer_ContextKey);
    setCentralWidget(central);
}

void mdiMain::buildToolBars()
{
    for (const toolbars::Row& row : toolbars::table()) {
        auto* toolBar = new ToolBar(QLatin1String(row.toolBar), m_bands);
        toolBar->setTag(QLatin1String(row.tag));
        for (const toolbars::Button& button : row.buttons) {
            if (button.key)
                toolBar->Add(QLatin1String(button.key), QLatin1String(button.toolTip));
            else
                toolBar->AddSeparator();
        }
        m_bands->AddBand(toolBar);
        m_toolBars.insert(toolBar->objectName(), toolBar);

        if (!row.pane) {
            connect(toolBar, &ToolBar::ButtonClick, this, &mdiMain::tbrMain_ButtonClick);
            continue;
        }
        connect(toolBar, &ToolBar::ButtonClick, this,
                [this, &row](ToolButton& button) { forwardToPane(row.handler.c_str(), button); });
    }
}

void mdiMain::forwardToPane(const char* handler, ToolButton& button)
{
    Routine routine(handler);
    routine.run([&] {
        Form* form = currentPane();
        auto* pane = dynamic_cast<ToolbarPane*>(form);
        if (!pane)
            return;
        const forms::Running running(*form);
        const QScopedValueRollback paneAtWork(m_paneAtWork, true);
        pane->tbr_ButtonClick(button);
    });
}

void mdiMain::buildMenus()
{
    for (const menus::Menu& row : menus::table()) {
        auto* menu = new QMenu(QLatin1String(row.caption), this);
        menu->setObjectName(QLatin1String(row.name));
        for (const menus::Item& item : row.items)
            menu->addAction(buildMenuItem(item, *menu));
        if (row.inBar)
            menuBar()->addMenu(menu);
        m_menus.insert(menu->objectName(), menu);
    }
}

QAction* mdiMain::buildMenuItem(const menus::Item& item, QMenu& menu)
{
    auto* action = new QAction(&menu);
    action->setObjectName(QLatin1String(item.name));
    if (!item.caption) {
        action->setSeparator(true);
        return action;
    }
    action->setText(QLatin1String(item.caption));
    action->setCheckable(item.checkable);
    action->setChecked(item.checkable);

    connect(action, &QAction::triggered, this, [this, &item] { runMenuItem(item); });
    return action;
}

void mdiMain::runMenuItem(const menus::Item& item)
{
    if (item.run) {
        (this->*item.run)();
        return;
    }
    if (!item.pane) {
        runCommand(item.handler.c_str(), QLatin1String(item.name));
        return;
    }
    Routine routine(item.handler.c_str());
    routine.run([&] {
        const QString pane = QLatin1String(item.pane);
        const QStringList keys = m_currentItem.Keys;
        if (item.operation == panes::Operation::AddNew)
            PaneAddNew(pane, keys);
        else if (item.operation == panes::Operation::Edit)
            PaneEdit(pane, keys);
        else if (item.operation == panes::Operation::Delete)
            PaneDelete(pane, keys);
        else
            PaneDisplay(pane, keys);
    });
}

ToolBar& mdiMain::toolBar(const QString& name) const
{
    if (ToolBar* found = m_toolBars.value(name))
        return *found;
    throw RuntimeError(ErrorNumber::FailedCall);
}

QMenu& mdiMain::menu(const QString& name) const
{
    if (QMenu* found = m_menus.value(name))
        return *found;
    throw RuntimeError(ErrorNumber::FailedCall);
}

void mdiMain::Status(const QString& text)
{
    m_status->setText(text);
    if (events::frameDue())
        m_status->repaint();
}

void mdiMain::CoolbarContextToolbar()
{
    Routine routine("mdiMain.CoolbarContextToolbar");
    routine.run([&] {
        const Form* pane = currentPane();
        const std::vector<toolbars::Row>& rows = toolbars::table();
        for (int band = 2; band <= m_bands->Bands(); ++band) {
            const char* bandPane = rows.at(static_cast<std::size_t>(band - 1)).pane;
            m_bands->setBandWidth(band, 300);
            m_bands->setBandVisible(band, pane && pane->name() == QLatin1String(bandPane));
        }
    });
}

bool mdiMain::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_client && event->type() == QEvent::Resize) {
        setTreeviewWidth(toTwips(m_treeSide->width()));
    } else if (watched == m_treeSide && event->type() == QEvent::Resize) {
        picTreeview_Resize();
    } else if (watched == m_paneArea && event->type() == QEvent::Resize) {
        MDIForm_Resize();
    } else if (watched == m_splitter && event->type() == QEvent::MouseMove) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->buttons().testFlag(Qt::LeftButton))
            picSplitter_MouseMove(qRound(mouse->position().x()));
    } else if (watched == m_splitter && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
        m_splitter->setBackgroundRole(event->type() == QEvent::FocusIn ? QPalette::Highlight : QPalette::Window);
    } else if (watched == m_splitter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent*>(event)->key();
        if (key == Qt::Key_Left || key == Qt::Key_Right) {
            const int towards = key == Qt::Key_Left ? -splitterKeyStep : splitterKeyStep;
            picSplitter_MouseMove(m_splitter->width() / 2 + towards);
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void mdiMain::setTreeviewWidth(int twips)
{
    const int width = toPixels(twips);
    m_treeSide->setGeometry(0, 0, width, m_client->height());
    m_paneArea->setGeometry(width, 0, std::max(0, m_client->width() - width), m_client->height());
}

void mdiMain::picTreeview_Resize()
{
    Routine routine("mdiMain.picTreeview_Resize");
    routine.run([&] {
        const int margin = toPixels(splitterTwips);
        const int treeWidth = m_treeSide->width() - margin;
        const int height = m_treeSide->height();
        if (treeWidth > 0)
            m_splitter->move(treeWidth, 0);
        m_tree->resize(treeWidth > 0 ? treeWidth : m_tree->width(), height);
        m_splitter->resize(margin, height);
        MDIForm_Resize();
    });
}

void mdiMain::picSplitter_MouseMove(int x)
{
    Routine routine("mdiMain.picSplitter_MouseMove");
    routine.run([&] {
        const int position = toTwips(m_splitter->x() + x) - splitterTwips / 2;
        const int snapped = position - position % twipsPerPixel;
        if (snapped > 0)
            setTreeviewWidth(snapped + splitterTwips);
    });
}

void mdiMain::MDIForm_Resize()
{
    Routine routine("mdiMain.MDIForm_Resize");
    routine.run([&] {
        if (Form* pane = currentPane())
            pane->setGeometry(m_paneArea->rect());
    });
}
