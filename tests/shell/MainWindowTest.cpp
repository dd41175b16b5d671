#include "MainWindowFixture.h"
#include "RecordingPanes.h"

#include "BandBar.h"
#include "CConnections.h"
#include "Icons.h"
#include "RuntimeError.h"
#include "Settings.h"
#include "frmTWErr.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QMouseEvent>
#include <QProgressBar>
#include <QStatusBar>
#include <QTest>
#include <QToolButton>

#include <map>

using namespace Qt::StringLiterals;

namespace
{

constexpr int twips = 15;

class Main : public MainWindowTest
{
protected:
    static void save(const char* key, int value) { settings::save(u"mdiMain"_s, QLatin1String(key), value); }
    static QString saved(const char* key) { return settings::get(u"mdiMain"_s, QLatin1String(key), u"none"_s); }

    template <class Widget = QWidget>
    Widget& control(const QString& name) const
    {
        auto* found = window->findChild<Widget*>(name);
        if (!found)
            throw std::runtime_error("The window has no " + name.toStdString());
        return *found;
    }

    int treeWidth() const { return control(u"picTreeview"_s).width(); }

    /// Drags the splitter from its middle by so many pixels, in steps as a hand does.
    void dragSplitter(int by, int steps = 4)
    {
        QWidget& splitter = control(u"picSplitter"_s);
        const QPoint middle(splitter.width() / 2, splitter.height() / 2);
        const QPoint from = splitter.mapToGlobal(middle);
        QTest::mousePress(&splitter, Qt::LeftButton, {}, middle);
        for (int step = 1; step <= steps; ++step)
            moveOver(splitter, from + QPoint(by * step / steps, 0), Qt::LeftButton);
        QTest::mouseRelease(&splitter, Qt::LeftButton, {}, splitter.mapFromGlobal(from + QPoint(by, 0)));
    }

    static void moveOver(QWidget& widget, QPoint global, Qt::MouseButtons buttons)
    {
        QMouseEvent move(QEvent::MouseMove, widget.mapFromGlobal(global), global, Qt::NoButton, buttons, {});
        QCoreApplication::sendEvent(&widget, &move);
    }

    void expectLaidOut() const
    {
        const QRect side = control(u"picTreeview"_s).geometry();
        const QRect client = control(u"picClient"_s).rect();
        EXPECT_EQ(side.topLeft(), QPoint(0, 0));
        EXPECT_EQ(side.height(), client.height());
        const QRect splitter = control(u"picSplitter"_s).geometry();
        EXPECT_EQ(splitter.right(), side.width() - 1);
        EXPECT_EQ(splitter.width(), 60 / twips);
        EXPECT_EQ(splitter.height(), side.height());
        EXPECT_EQ(control(u"tvwExplorer"_s).geometry(), QRect(0, 0, splitter.left(), side.height()));
        const QRect panes = control(u"picPanes"_s).geometry();
        EXPECT_EQ(panes, QRect(side.width(), 0, client.width() - side.width(), client.height()));
        ASSERT_TRUE(window->currentPane());
        EXPECT_EQ(window->currentPane()->geometry(), QRect(QPoint(0, 0), panes.size()));
    }
};

} // namespace

// Start and end -------------------------------------------------------------------------------------------------------

TEST_F(Main, OpensAtTheTopLeftInItsUsualSizeWithoutSavedSettings)
{
    start();
    EXPECT_EQ(window->pos(), QPoint(0, 0));
    EXPECT_EQ(window->size(), QSize(9600 / twips, 8700 / twips));
    EXPECT_EQ(treeWidth(), 2475 / twips);
    expectLaidOut();
}

TEST_F(Main, OpensWhereAndAsLargeAsItWasSaved)
{
    save("Left", 45 * twips);
    save("Top", 30 * twips);
    save("Width", 700 * twips);
    save("Height", 510 * twips);
    save("TreeviewWidth", 240 * twips);
    start();
    EXPECT_EQ(window->pos(), QPoint(45, 30));
    EXPECT_EQ(window->size(), QSize(700, 510));
    EXPECT_EQ(treeWidth(), 240);
    expectLaidOut();
}

TEST_F(Main, SettingsThatAreNoNumbersAreTheDefaults)
{
    for (const char* key : {"Left", "Top", "Width", "Height", "TreeviewWidth"})
        settings::save(u"mdiMain"_s, QLatin1String(key), u"wide"_s);
    start();
    EXPECT_EQ(window->pos(), QPoint(0, 0));
    EXPECT_EQ(window->size(), QSize(9600 / twips, 8700 / twips));
    EXPECT_EQ(treeWidth(), 2475 / twips);
}

TEST_F(Main, APlaceOutsideOfEveryScreenIsNotTaken)
{
    save("Left", 100000 * twips);
    save("Top", -5000 * twips);
    start();
    EXPECT_EQ(window->pos(), QPoint(0, 0));
}

TEST_F(Main, ClosingANormalWindowSavesPlaceSizeAndTreeWidth)
{
    start();
    window->move(60, 75);
    window->resize(720, 540);
    dragSplitter(35);
    quit();
    EXPECT_EQ(saved("Left"), QString::number(60 * twips));
    EXPECT_EQ(saved("Top"), QString::number(75 * twips));
    EXPECT_EQ(saved("Width"), QString::number(720 * twips));
    EXPECT_EQ(saved("Height"), QString::number(540 * twips));
    EXPECT_EQ(saved("TreeviewWidth"), QString::number(200 * twips));
}

TEST_F(Main, ClosingAMaximisedWindowSavesTheTreeWidthAlone)
{
    save("Width", 705 * twips);
    save("Left", 15 * twips);
    start();
    window->showMaximized();
    ASSERT_TRUE(window->isMaximized());
    dragSplitter(35);
    quit();
    EXPECT_EQ(saved("Left"), QString::number(15 * twips));
    EXPECT_EQ(saved("Top"), u"none"_s);
    EXPECT_EQ(saved("Width"), QString::number(705 * twips));
    EXPECT_EQ(saved("Height"), u"none"_s);
    EXPECT_EQ(saved("TreeviewWidth"), QString::number(200 * twips));
}

TEST_F(Main, ClosingAMinimisedWindowSavesTheTreeWidthAlone)
{
    start();
    window->showMinimized();
    ASSERT_TRUE(window->isMinimized());
    quit();
    for (const char* key : {"Left", "Top", "Width", "Height"})
        EXPECT_EQ(saved(key), u"none"_s) << key;
    EXPECT_EQ(saved("TreeviewWidth"), u"2475"_s);
}

TEST_F(Main, TheSettingsStandUnderTheApplicationsName)
{
    start();
    quit();
    EXPECT_TRUE(settings::fileName().endsWith(u"/Tarnwick Quorvane.ini"_s)) << settings::fileName().toStdString();
    EXPECT_TRUE(QFile::exists(settings::fileName()));
}

TEST_F(Main, TheErrorFormIsThereFromFirstToLast)
{
    start();
    // The first listing empties it, as each one does.
    frmTWErr::Load();
    window->close();
    EXPECT_EQ(forms::loaded(u"frmTWErr"_s), nullptr);
    EXPECT_EQ(saved("TreeviewWidth"), u"2475"_s);
}

TEST_F(Main, ConnectionsAreNotClosedAtTheEnd)
{
    start();
    clickExpander(key());
    quit();
    EXPECT_EQ(CConnections::instance().Count(), 1);
}

TEST_F(Main, ExitClosesTheWindow)
{
    start();
    chooseInBar(u"mnuFileExit"_s);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(saved("Width"), u"9600"_s);
}

TEST_F(Main, TheStartListsConnectsToNothingAndShowsTheWelcomePaneTwice)
{
    RecordingPanes asked;
    start();
    EXPECT_EQ(asked.take(), (QStringList{u"frmWelcome.Display()"_s, u"frmWelcome.Display()"_s}));
    EXPECT_EQ(rootTexts(), QStringList{datasource});
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(CConnections::instance().Count(), 0);
    EXPECT_TRUE(CConnections::instance().workspace());
    EXPECT_EQ(window->nodes().Treeview(), &window->tvwExplorer());
    EXPECT_EQ(window->currentItem().NodeType, QString());
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(Main, AFailureAtTheStartThatIsIgnoredDoesNotKeepTheWindowAway)
{
    RecordingPanes asked;
    asked.meanwhile = [](RecordingPane&, const QString&) { throw RuntimeError(ErrorNumber::TypeMismatch); };
    errors.expect(Press::Ignore);
    errors.expect(Press::Ignore);
    start();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(rootTexts(), QStringList{datasource});
    EXPECT_EQ(errors.shown()[0].callStack.first(), u"mdiMain.PaneDisplay"_s);
    EXPECT_EQ(errors.shown()[0].callStack.last(), u"mdiMain.MDIForm_Load"_s);
}

TEST_F(Main, HasItsCaption)
{
    start();
    EXPECT_EQ(window->windowTitle(), u"Tarnwick Quorvane"_s);
}

TEST_F(Main, TheDebugWordCountsAnywhereInItsExactCase)
{
    const struct {
        QStringList words;
        bool debug;
    } rows[] = {
        {{}, false},
        {{u"DEBUG"_s}, true},
        {{u"-xDEBUGy"_s}, true},
        {{u"some"_s, u"DEBUG"_s, u"words"_s}, true},
        {{u"debug"_s}, false},
        {{u"Debug"_s}, false},
        {{u"DE"_s, u"BUG"_s}, false},
    };
    for (const auto& row : rows) {
        const mdiMain one(row.words);
        EXPECT_EQ(one.debugFlag(), row.debug) << row.words.join(' ').toStdString();
    }
}

TEST_F(Main, TheDebugWordShowsHiddenControls)
{
    for (const auto& [words, visible] : std::map<QString, bool>{{u"DEBUG"_s, true}, {u"debug"_s, false}}) {
        start({words});
        chooseInBar(u"mnuViewOptions"_s);
        EXPECT_EQ(control(u"lblWarning"_s).isVisible(), visible) << words.toStdString();
        quit();
    }
}

// Layout --------------------------------------------------------------------------------------------------------------

TEST_F(Main, ThePaneFollowsTheSizeOfTheWindowAndTheTreeKeepsItsWidth)
{
    start();
    window->resize(780, 420);
    EXPECT_EQ(treeWidth(), 165);
    expectLaidOut();
    window->resize(500, 600);
    EXPECT_EQ(treeWidth(), 165);
    expectLaidOut();
}

TEST_F(Main, TheSplitterMovesTreeAndPane)
{
    start();
    dragSplitter(100);
    EXPECT_EQ(treeWidth(), 265);
    expectLaidOut();
    dragSplitter(-180);
    EXPECT_EQ(treeWidth(), 85);
    expectLaidOut();
}

TEST_F(Main, TheSplitterPastTheLeftEdgeLeavesTheLastWidth)
{
    start();
    // The last place on the way that is still right of the edge.
    dragSplitter(-160, 1);
    EXPECT_EQ(treeWidth(), 5);
    dragSplitter(100, 1);
    const int width = treeWidth();
    dragSplitter(-1000, 1);
    EXPECT_EQ(treeWidth(), width);
    expectLaidOut();
}

TEST_F(Main, TheSplitterAtTheVeryEdgeIsIgnored)
{
    start();
    const int width = treeWidth();
    dragSplitter(-(width - 60 / twips), 1);
    EXPECT_EQ(treeWidth(), width);
}

TEST_F(Main, TheSplitterHasNoLimitOnTheRight)
{
    start();
    dragSplitter(2000, 1);
    EXPECT_EQ(treeWidth(), 2165);
    EXPECT_EQ(control(u"picPanes"_s).width(), 0);
}

TEST_F(Main, TheSplitterMovesWithTheLeftButtonAlone)
{
    start();
    QWidget& splitter = control(u"picSplitter"_s);
    const QPoint there = splitter.mapToGlobal(QPoint(50, 50));
    moveOver(splitter, there, Qt::NoButton);
    moveOver(splitter, there, Qt::RightButton);
    EXPECT_EQ(treeWidth(), 165);
    moveOver(splitter, there, Qt::LeftButton | Qt::RightButton);
    EXPECT_EQ(treeWidth(), 213);
}

TEST_F(Main, TheSplitterMovesByTheKeyboardToo)
{
    start();
    QWidget& splitter = control(u"picSplitter"_s);
    EXPECT_EQ(splitter.focusPolicy(), Qt::TabFocus);
    QTest::keyClick(&splitter, Qt::Key_Right);
    EXPECT_EQ(treeWidth(), 181);
    QTest::keyClick(&splitter, Qt::Key_Left);
    EXPECT_EQ(treeWidth(), 165);
    QTest::keyClick(&splitter, Qt::Key_Down);
    EXPECT_EQ(treeWidth(), 165);
}

TEST_F(Main, ASavedTreeWidthThatLeavesNothingToGripIsNotTaken)
{
    for (const int width : {0, -1500, 60}) {
        settings::save(u"mdiMain"_s, u"TreeviewWidth"_s, width);
        start();
        EXPECT_EQ(treeWidth(), 165) << width;
        window.reset();
    }
}

// Status line, menus and tool bars ------------------------------------------------------------------------------------

TEST_F(Main, TheStatusLineShowsItsTextAsItIs)
{
    start();
    window->Status(u"<b>100 %</b> & more"_s);
    EXPECT_EQ(statusText(), u"<b>100 %</b> & more"_s);
    EXPECT_EQ(control<QLabel>(u"Status"_s).textFormat(), Qt::PlainText);
    EXPECT_TRUE(control<QStatusBar>(u"sbrMain"_s).isVisible());
    EXPECT_TRUE(control<QProgressBar>(u"prbMain"_s).isVisible());
}

TEST_F(Main, TheStatusLineIsRepaintedAtOnce)
{
    class Paints : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int count = 0;
    } paints;
    start();
    QCoreApplication::processEvents();
    control(u"Status"_s).installEventFilter(&paints);
    window->Status(u"one"_s);
    EXPECT_EQ(paints.count, 1);
    window->Status(u"two"_s);
    EXPECT_EQ(paints.count, 2);
}

TEST_F(Main, TheViewMenuTogglesToolBarsAndStatusLine)
{
    start();
    const std::pair<QString, QString> rows[] = {{u"mnuViewToolbar"_s, u"cbrMain"_s},
                                                {u"mnuViewStatusBar"_s, u"sbrMain"_s}};
    for (const auto& [entry, bar] : rows) {
        SCOPED_TRACE(entry.toStdString());
        EXPECT_TRUE(control<QAction>(entry).isChecked());
        EXPECT_TRUE(control(bar).isVisible());
        chooseInBar(entry);
        EXPECT_FALSE(control<QAction>(entry).isChecked());
        EXPECT_FALSE(control(bar).isVisible());
        expectLaidOut();
        chooseInBar(entry);
        EXPECT_TRUE(control<QAction>(entry).isChecked());
        EXPECT_TRUE(control(bar).isVisible());
        expectLaidOut();
    }
}

TEST_F(Main, OptionsAndAboutAreShownFromTheMenus)
{
    start();
    chooseInBar(u"mnuViewOptions"_s);
    EXPECT_EQ(currentPane(), u"frmOptions"_s);
    chooseInBar(u"mnuHelpAbout"_s);
    EXPECT_EQ(currentPane(), u"frmAbout"_s);
}

TEST_F(Main, EveryToolBarHasItsTagAndItsButtonsWithTheirTips)
{
    const std::map<QString, QStringList> rows{
        {u"tbrMain"_s,
         {u"Main"_s, u"DSN Refresh: Refresh Datasources"_s, u"DSN Admin: Datasource Administrator"_s,
          u"Import: Import Catalog"_s, u"Export: Export Catalog"_s}},
        {u"tbrFile"_s,
         {u"File"_s, u"Up1: Up to File collection"_s, u"File Add: Add New File"_s, u"File Edit: Edit File"_s,
          u"File Delete: Delete File"_s, u"OK: "_s, u"Cancel: Cancel"_s, u"Undo: Undo changes"_s}},
        {u"tbrFiles"_s, {u"Files"_s, u"Up1: No where to go!"_s}},
        {u"tbrField"_s,
         {u"Field"_s, u"Up1: Up to the Field collection"_s, u"Field Add: Add New Field"_s, u"Field Edit: Edit Field"_s,
          u"Field Delete: Delete Field"_s, u"OK: "_s, u"Cancel: Cancel"_s, u"Undo: Undo changes"_s}},
        {u"tbrFields"_s, {u"Fields"_s, u"Up1: Up to File '?'"_s}},
        {u"tbrDatabase"_s,
         {u"DB"_s, u"Up1: Up to Database collection"_s, u"DB Add: Add New Database"_s, u"DB Edit: Edit Database"_s,
          u"DB Delete: Delete Database"_s, u"OK: "_s, u"Cancel: Cancel"_s, u"Undo: Undo changes"_s}},
        {u"tbrDatabases"_s, {u""_s, u"Up1: No where to go!"_s}},
        {u"tbrTable"_s,
         {u"Table"_s, u"Up1: Up to Table collection"_s, u"Table Add: Add New Table"_s, u"Table Edit: Edit Table"_s,
          u"Table Delete: Delete Table"_s, u"OK: "_s, u"Cancel: Cancel"_s, u"Undo: Undo changes"_s,
          u"ViewData: View Data"_s}},
        {u"tbrTables"_s, {u"Tables"_s, u"Up1: Up to..."_s}},
        {u"tbrColumn"_s,
         {u"Column"_s, u"Up1: Up to Column Collection"_s, u"Column Add: Add New Column"_s,
          u"Column Edit: Edit Column"_s, u"Column Delete: Delete Column"_s, u"OK: "_s, u"Cancel: Cancel"_s,
          u"Undo: Undo changes"_s}},
        {u"tbrColumns"_s, {u""_s, u"Up1: No where to go!"_s}},
        {u"tbrSpecialCols"_s,
         {u""_s, u"Up1: Up to Table ?"_s, u"Special Column Edit: Edit Special Columns"_s, u"OK: "_s,
          u"Cancel: Cancel"_s}},
        {u"tbrUser"_s,
         {u"User"_s, u"Up1: Up to User collection"_s, u"User Add: Add New User"_s, u"User Edit: Edit User"_s,
          u"User Delete: Delete User"_s, u"OK: "_s, u"Cancel: Cancel"_s, u"Undo: Undo changes"_s}},
        {u"tbrUsers"_s, {u"Users"_s, u"Up1: No where to go!"_s}},
        {u"tbrDBPRV"_s,
         {u"User"_s, u"Up1: Up to Database Privilige collection"_s, u"User Add: Add New User Privileges"_s,
          u"User Edit: Edit User Privileges"_s, u"User Delete: Delete User Privileges"_s, u"OK: "_s,
          u"Cancel: Cancel"_s, u"Undo: Undo changes"_s}},
        {u"tbrDBPRVs"_s, {u"User"_s, u"Up1: Up to Database Collection"_s}},
        {u"tbrTBLPRV"_s,
         {u"User"_s, u"Up1: Up to Table Privilieges collection"_s, u"User Add: Add New User Privileges"_s,
          u"User Edit: Edit User Privileges"_s, u"User Delete: Delete User Privileges"_s, u"OK: "_s,
          u"Cancel: Cancel"_s, u"Undo: Undo changes"_s}},
        {u"tbrTBLPRVs"_s, {u"TBLPRVS"_s, u"Up1: Up to..."_s}},
        {u"tbrViewData"_s, {u""_s, u"Refresh: Refresh Grid"_s}},
        {u"tbrAbout"_s, {u""_s, u"WWW: "_s, u"EMail: "_s, u"Information: "_s}},
    };
    start();
    for (const auto& [name, expected] : rows) {
        const ToolBar& bar = window->toolBar(name);
        QStringList seen{bar.Tag()};
        for (const ToolButton* button : bar.Buttons())
            seen.append(button->Key() + ": " + button->ToolTipText());
        EXPECT_EQ(seen, expected) << name.toStdString();
    }
}

TEST_F(Main, EachBandHoldsItsToolBar)
{
    const QStringList bars{u"tbrMain"_s,    u"tbrColumn"_s,      u"tbrColumns"_s, u"tbrDatabase"_s, u"tbrDatabases"_s,
                           u"tbrDBPRV"_s,   u"tbrDBPRVs"_s,      u"tbrField"_s,   u"tbrFields"_s,   u"tbrFile"_s,
                           u"tbrFiles"_s,   u"tbrSpecialCols"_s, u"tbrTable"_s,   u"tbrTables"_s,   u"tbrTBLPRV"_s,
                           u"tbrTBLPRVs"_s, u"tbrUser"_s,        u"tbrUsers"_s,   u"tbrAbout"_s,    u"tbrViewData"_s};
    start();
    const auto& bands = control<BandBar>(u"cbrMain"_s);
    ASSERT_EQ(bands.Bands(), bars.size());
    for (int band = 1; band <= bands.Bands(); ++band) {
        EXPECT_EQ(bands.Child(band)->objectName(), bars[band - 1]);
        EXPECT_EQ(bands.BandVisible(band), band == 1) << band;
    }
}

TEST_F(Main, EveryButtonHasThePictureOfItsKey)
{
    start();
    for (const ToolBar* bar : window->findChildren<ToolBar*>()) {
        for (const ToolButton* button : bar->Buttons()) {
            ASSERT_TRUE(Icons::contains(button->Key())) << button->Key().toStdString();
            EXPECT_EQ(button->widget()->icon().pixmap(16).toImage(), Icons::icon(button->Key()).pixmap(16).toImage())
                << button->Key().toStdString();
            EXPECT_TRUE(button->widget()->autoRaise()) << "flat";
        }
    }
}

TEST_F(Main, TheAdministratorButtonStartsTheSystemsOwnAndWaitsForNothing)
{
    outside.runs = true;
    start();
    expandTo(key({u"US"_s}));
    const QStringList tree = wholeTree();
    window->toolBar(u"tbrMain"_s).Button(u"DSN Admin"_s).press();
    ASSERT_EQ(outside.started.size(), 1U);
    EXPECT_EQ(outside.started[0].program, u"control"_s);
    EXPECT_EQ(outside.started[0].arguments, QStringList{u"odbccp32.cpl"_s});
    EXPECT_EQ(wholeTree(), tree);
    EXPECT_EQ(window->findChild<QDialog*>(u"frmDSNAdmin"_s), nullptr);
}

TEST_F(Main, WithoutOneTheAdministratorButtonListsTheDatasources)
{
    start();
    window->toolBar(u"tbrMain"_s).Button(u"DSN Admin"_s).press();
    auto* list = window->findChild<QDialog*>(u"frmDSNAdmin"_s);
    ASSERT_TRUE(list);
    EXPECT_TRUE(list->isVisible());
    EXPECT_FALSE(list->isModal());
    list->close();
}

TEST_F(Main, ImportAndExportAskForADatasourceFirst)
{
    RecordingPanes asked;
    start();
    expandTo(key({u"DB"_s, u"db=SALES"_s, u"TA"_s}));
    const struct {
        QString name;
        QString pane;
        std::function<void()> fromBar;
        std::function<void()> fromToolBar;
    } rows[] = {
        {u"Import"_s, u"frmCSVImport"_s, [&] { chooseInBar(u"mnuFileImportCSV"_s); },
         [&] { window->toolBar(u"tbrMain"_s).Button(u"Import"_s).press(); }},
        {u"Export"_s, u"frmCSVExport"_s, [&] { chooseInBar(u"mnuFileExportCSV"_s); },
         [&] { window->toolBar(u"tbrMain"_s).Button(u"Export"_s).press(); }},
    };
    for (const auto& row : rows) {
        for (const auto& way : {row.fromBar, row.fromToolBar}) {
            const QString refusal = u"Please select a Datasource before selecting '%1 Catalog'"_s.arg(row.name);
            click(key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s}));
            asked.take();
            boxes.expectInform(refusal);
            way();
            EXPECT_EQ(asked.take(), QStringList());
            EXPECT_EQ(currentPane(), u"frmTable"_s);

            click(key());
            asked.take();
            way();
            EXPECT_EQ(asked.take(), QStringList{u"%1.Display(%2)"_s.arg(row.pane, datasource)});
            EXPECT_EQ(currentPane(), row.pane);

            window->setCurrentItem({});
            boxes.expectInform(refusal);
            way();
        }
    }
}

TEST_F(Main, AfterACollapseNoDatasourceIsChosen)
{
    start();
    clickExpander(key());
    clickExpander(key());
    boxes.expectInform(u"Please select a Datasource before selecting 'Export Catalog'"_s);
    chooseInBar(u"mnuFileExportCSV"_s);
}

TEST_F(Main, AFileDatasourceIsADatasource)
{
    RecordingPanes asked;
    start();
    asked.take();
    DragItem item;
    item.NodeType = u"FDSN"_s;
    item.Keys = QStringList{u"/x/y.dsn"_s};
    window->setCurrentItem(item);
    chooseInBar(u"mnuFileImportCSV"_s);
    EXPECT_EQ(asked.take(), QStringList{u"frmCSVImport.Display(/x/y.dsn)"_s});
}
