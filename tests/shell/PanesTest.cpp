#include "MainWindowFixture.h"
#include "RecordingPanes.h"

#include "BandBar.h"
#include "MousePointer.h"
#include "RuntimeError.h"
#include "Settings.h"

#include <QCheckBox>
#include <QEvent>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <map>
#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

/// A pane: how many key parts each operation takes (-1 where it has none), whether the option "Items" opens it in edit
/// state, and the band of its tool bar (0 for none).
struct Pane {
    const char* name;
    int display;
    int addNew;
    int edit;
    int remove;
    bool opensInEditState;
    int band;
};

void PrintTo(const Pane& pane, std::ostream* out)
{
    *out << pane.name;
}

const std::vector<Pane> allPanes{
    {"frmAbout", 0, -1, -1, -1, false, 19},       {"frmWelcome", 0, -1, -1, -1, false, 0},
    {"frmOptions", 0, -1, -1, -1, false, 0},      {"frmFiles", 1, -1, -1, -1, false, 11},
    {"frmDatabases", 1, -1, -1, -1, false, 5},    {"frmUsers", 1, -1, -1, -1, false, 18},
    {"frmCSVImport", 1, -1, -1, -1, false, 0},    {"frmCSVExport", 1, -1, -1, -1, false, 0},
    {"frmDSN", 1, -1, -1, -1, false, 0},          {"frmFile", 2, 1, 2, 2, true, 10},
    {"frmFields", 2, -1, -1, -1, false, 9},       {"frmDatabase", 2, 1, 2, 2, true, 4},
    {"frmTables", 2, -1, -1, -1, false, 14},      {"frmUser", 2, 1, 2, 2, true, 17},
    {"frmDBPRVs", 2, -1, -1, -1, false, 7},       {"frmField", 3, 2, 3, 3, true, 8},
    {"frmTable", 3, 2, 3, 3, true, 13},           {"frmColumns", 3, -1, -1, -1, false, 3},
    {"frmSpecialCols", 3, -1, -1, -1, false, 12}, {"frmDBPRV", 3, 2, 3, 3, true, 6},
    {"frmTableData", 3, -1, -1, -1, false, 20},   {"frmTBLPRVs", 3, -1, -1, -1, false, 16},
    {"frmColumn", 4, 3, 4, 4, true, 2},           {"frmTBLPRV", 4, 3, 4, 4, true, 15},
};

const QStringList keys{u"A"_s, u"B"_s, u"C"_s, u"D"_s};

class Panes : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        start();
        asked.take();
        asked.lives.clear();
    }

    static QString call(const QString& pane, const char* operation, int count)
    {
        return u"%1.%2(%3)"_s.arg(pane, QLatin1String(operation), keys.first(count).join(u", "_s));
    }

    /// The bands that show.
    std::vector<int> bands() const
    {
        const auto* bar = window->findChild<BandBar*>(u"cbrMain"_s);
        std::vector<int> shown;
        for (int band = 1; band <= bar->Bands(); ++band) {
            if (bar->BandVisible(band))
                shown.push_back(band);
        }
        return shown;
    }

    static std::vector<int> bandsWith(int band) { return band ? std::vector<int>{1, band} : std::vector<int>{1}; }

    RecordingPanes asked;
};

class EachPane : public Panes, public testing::WithParamInterface<Pane>
{
protected:
    QString name() const { return QLatin1String(GetParam().name); }
};

/// Writes down when a form is shown and hidden.
class Visibility : public QObject
{
public:
    explicit Visibility(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show)
            seen.append("show " + watched->objectName());
        if (event->type() == QEvent::Hide)
            seen.append("hide " + watched->objectName());
        return false;
    }

    QStringList seen;
};

} // namespace

TEST_P(EachPane, TakesAsManyKeyPartsAsItNeeds)
{
    const Pane& pane = GetParam();
    settings::save(u"Options"_s, u"Items"_s, 0);
    window->PaneDisplay(name(), keys);
    EXPECT_EQ(asked.take(), QStringList{call(name(), "Display", pane.display)});
    if (pane.addNew < 0)
        return;
    window->PaneAddNew(name(), keys);
    EXPECT_EQ(asked.take(), QStringList{call(name(), "AddNew", pane.addNew)});
    window->PaneEdit(name(), keys);
    EXPECT_EQ(asked.take(), QStringList{call(name(), "Edit", pane.edit)});
    window->PaneDelete(name(), keys);
    EXPECT_EQ(asked.take(), QStringList{call(name(), "Delete", pane.remove)});
}

TEST_P(EachPane, OpensInEditStateIfItShowsOneItem)
{
    const Pane& pane = GetParam();
    const QStringList edit{call(name(), "Edit", pane.edit < 0 ? 0 : pane.edit)};
    const QStringList display{call(name(), "Display", pane.display)};
    window->PaneDisplay(name(), keys);
    EXPECT_EQ(asked.take(), pane.opensInEditState ? edit : display) << "by default";
    for (const auto& [value, edits] : std::map<int, bool>{{0, false}, {1, true}, {2, false}, {-1, false}}) {
        settings::save(u"Options"_s, u"Items"_s, value);
        window->PaneDisplay(name(), keys);
        EXPECT_EQ(asked.take(), pane.opensInEditState && edits ? edit : display) << value;
    }
}

TEST_P(EachPane, ShowsItsToolBarBesideTheMainOne)
{
    const Pane& pane = GetParam();
    window->PaneDisplay(name(), keys);
    EXPECT_EQ(bands(), bandsWith(pane.band));
    // The tool bar goes with the pane.
    window->PaneDisplay(u"frmCSVExport"_s, keys);
    EXPECT_EQ(bands(), bandsWith(0));
    if (pane.addNew >= 0) {
        window->PaneAddNew(name(), keys);
        EXPECT_EQ(bands(), bandsWith(pane.band));
    }
}

TEST_P(EachPane, FillsThePaneAreaWhateverItDoesToItself)
{
    QRect within;
    asked.meanwhile = [&](RecordingPane& pane, const QString&) {
        within = pane.geometry();
        EXPECT_TRUE(pane.isVisible());
        pane.setGeometry(3, 3, 30, 30);
    };
    settings::save(u"Options"_s, u"Items"_s, 0);
    window->PaneDisplay(name(), keys);
    const QRect area = window->currentPane()->parentWidget()->rect();
    EXPECT_FALSE(area.isEmpty());
    EXPECT_EQ(within, area);
    EXPECT_EQ(window->currentPane()->geometry(), area);
}

INSTANTIATE_TEST_SUITE_P(Of, EachPane, testing::ValuesIn(allPanes),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Panes, AMisspeltNameStandsInTheListOfThoseThatOpenInEditState)
{
    EXPECT_TRUE(panes::opensInEditState(u"frmDBPV"_s));
    EXPECT_FALSE(panes::isKnown(u"frmDBPV"_s));
    window->PaneDisplay(u"frmDBPV"_s, keys);
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
}

TEST_F(Panes, TheRegistryKnowsTheCounts)
{
    for (const Pane& pane : allPanes) {
        const QString name = QLatin1String(pane.name);
        EXPECT_EQ(panes::count(name, panes::Operation::Display), pane.display) << pane.name;
        EXPECT_EQ(panes::count(name, panes::Operation::AddNew), pane.addNew) << pane.name;
        EXPECT_EQ(panes::count(name, panes::Operation::Edit), pane.edit) << pane.name;
        EXPECT_EQ(panes::count(name, panes::Operation::Delete), pane.remove) << pane.name;
    }
    EXPECT_EQ(panes::count(u"frmNowhere"_s, panes::Operation::Display), -1);
    EXPECT_EQ(panes::count(u"frmCheck"_s, panes::Operation::Display), -1);
}

TEST_F(Panes, DisplayOfANameWithoutAFormChangesNothing)
{
    window->PaneDisplay(u"frmFile"_s, keys);
    const Form* form = window->currentPane();
    const std::vector<int> shown = bands();
    asked.take();
    asked.lives.clear();

    window->PaneDisplay(u"frmCheck"_s, keys);

    EXPECT_EQ(window->currentPane(), form);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(bands(), shown);
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(asked.lives, QStringList());
    EXPECT_FALSE(forms::isKnown(u"frmCheck"_s));
}

TEST_F(Panes, TheSamePaneStaysUpWithoutAFlicker)
{
    window->PaneDisplay(u"frmFile"_s, keys);
    const Form* form = window->currentPane();
    Visibility visibility(*window->currentPane());
    window->PaneDisplay(u"frmFile"_s, {u"A"_s, u"C"_s});
    window->PaneAddNew(u"frmFile"_s, keys);
    window->PaneDelete(u"frmFile"_s, keys);
    EXPECT_EQ(window->currentPane(), form);
    EXPECT_EQ(visibility.seen, QStringList());
    EXPECT_EQ(asked.take(), (QStringList{u"frmFile.Edit(A, B)"_s, u"frmFile.Edit(A, C)"_s, u"frmFile.AddNew(A)"_s,
                                         u"frmFile.Delete(A, B)"_s}));
}

TEST_F(Panes, TheFormerPaneIsHiddenAndNotUnloaded)
{
    window->PaneDisplay(u"frmFile"_s, keys);
    Form* file = window->currentPane();
    window->PaneDisplay(u"frmField"_s, keys);
    EXPECT_FALSE(file->isVisible());
    EXPECT_TRUE(window->currentPane()->isVisible());
    EXPECT_EQ(forms::loaded(u"frmFile"_s), file);
    window->PaneDisplay(u"frmFile"_s, keys);
    EXPECT_EQ(window->currentPane(), file);
    EXPECT_TRUE(file->isVisible());
    EXPECT_EQ(asked.lives, (QStringList{u"load frmFile"_s, u"load frmField"_s}));
}

TEST_F(Panes, TheTableDataAreUnloadedBeforeAnythingElse)
{
    const auto showData = [&] {
        window->PaneDisplay(u"frmTableData"_s, keys);
        EXPECT_EQ(currentPane(), u"frmTableData"_s);
        asked.lives.clear();
        asked.take();
    };
    bool isUnloaded = false;
    asked.meanwhile = [&](RecordingPane&, const QString&) {
        isUnloaded = asked.lives.contains(u"unload frmTableData"_s);
    };
    const std::vector<std::function<void()>> ways{
        [&] { window->PaneDisplay(u"frmFiles"_s, keys); }, [&] { window->PaneDisplay(u"frmFile"_s, keys); },
        [&] { window->PaneAddNew(u"frmFile"_s, keys); },   [&] { window->PaneEdit(u"frmFile"_s, keys); },
        [&] { window->PaneDelete(u"frmFile"_s, keys); },   [&] { window->PaneDisplay(u"frmTableData"_s, keys); },
    };
    for (const auto& way : ways) {
        showData();
        isUnloaded = false;
        way();
        EXPECT_TRUE(isUnloaded);
        EXPECT_EQ(asked.lives.first(), u"unload frmTableData"_s);
        EXPECT_TRUE(window->currentPane()->isVisible());
    }
    // Shown again it is a new one.
    EXPECT_EQ(asked.lives, (QStringList{u"unload frmTableData"_s, u"load frmTableData"_s}));
    EXPECT_EQ(bands(), bandsWith(20));
}

TEST_F(Panes, ClickingANodeUnloadsTheTableData)
{
    clickExpander(key());
    window->PaneDisplay(u"frmTableData"_s, keys);
    click(key({u"US"_s}));
    EXPECT_TRUE(asked.lives.contains(u"unload frmTableData"_s));
    EXPECT_EQ(currentPane(), u"frmUsers"_s);
}

TEST_F(Panes, TheWaitPointerShowsForTheLengthOfTheOperation)
{
    std::vector<int> within;
    asked.meanwhile = [&](RecordingPane&, const QString&) { within.push_back(mousepointer::current()); };
    window->PaneDisplay(u"frmFiles"_s, keys);
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
    window->PaneAddNew(u"frmFile"_s, keys);
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
    EXPECT_EQ(within, (std::vector<int>{mousepointer::Wait, mousepointer::Wait}));
}

TEST_F(Panes, EachOperationEndsWithReady)
{
    asked.meanwhile = [&](RecordingPane&, const QString& call) { window->Status(call); };
    window->PaneDisplay(u"frmFiles"_s, keys);
    EXPECT_EQ(statusText(), u"Ready"_s);
    const std::vector<std::function<void()>> ways{[&] { window->PaneAddNew(u"frmFile"_s, keys); },
                                                  [&] { window->PaneEdit(u"frmFile"_s, keys); },
                                                  [&] { window->PaneDelete(u"frmFile"_s, keys); }};
    for (const auto& way : ways) {
        window->Status(u"busy"_s);
        way();
        EXPECT_EQ(statusText(), u"Ready"_s);
    }
}

TEST_F(Panes, AFailureIsReportedWithTheMainWindowHidden)
{
    const std::vector<std::pair<QString, std::function<void()>>> ways{
        {u"mdiMain.PaneDisplay"_s, [&] { window->PaneDisplay(u"frmFiles"_s, keys); }},
        {u"mdiMain.PaneAddNew"_s, [&] { window->PaneAddNew(u"frmFile"_s, keys); }},
        {u"mdiMain.PaneEdit"_s, [&] { window->PaneEdit(u"frmFile"_s, keys); }},
        {u"mdiMain.PaneDelete"_s, [&] { window->PaneDelete(u"frmFile"_s, keys); }},
    };
    for (const auto& [name, way] : ways) {
        asked.meanwhile = [&](RecordingPane&, const QString&) { throw RuntimeError(ErrorNumber::TypeMismatch); };
        bool wasVisible = true;
        errors.expect([&](QWidget& form) {
            wasVisible = window->isVisible();
            EXPECT_TRUE(form.isVisible());
            ScriptedErrorForm::press(form, Press::Ignore);
        });
        window->Status(u"busy"_s);
        way();
        EXPECT_FALSE(wasVisible);
        EXPECT_TRUE(window->isVisible());
        const ScriptedErrorForm::Shown& shown = errors.shown().back();
        EXPECT_EQ(shown.number, u"13"_s);
        EXPECT_EQ(shown.trappedIn, u"mdiMain.PaneDisplay"_s);
        EXPECT_EQ(shown.additional, u"None"_s);
        EXPECT_EQ(shown.callStack, QStringList{name});
        // The rest of the routine is left.
        EXPECT_EQ(statusText(), u"busy"_s);
        EXPECT_EQ(mousepointer::current(), mousepointer::Default);

        // The program goes on with the pane that failed.
        asked.meanwhile = nullptr;
        asked.take();
        way();
        EXPECT_EQ(asked.take().size(), 1);
        EXPECT_EQ(statusText(), u"Ready"_s);
    }
}

TEST_F(Panes, APaneThatWasTornDownEndsQuietly)
{
    asked.meanwhile = [&](RecordingPane&, const QString&) { throw RuntimeError(ErrorNumber::ObjectNotSet); };
    window->Status(u"busy"_s);
    window->PaneDisplay(u"frmFiles"_s, keys);
    window->PaneAddNew(u"frmFile"_s, keys);
    window->PaneEdit(u"frmFile"_s, keys);
    window->PaneDelete(u"frmFile"_s, keys);
    EXPECT_TRUE(errors.shown().empty());
    EXPECT_EQ(statusText(), u"busy"_s);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Panes, APaneThatRefreshesTheTreeIsGoneAfterwards)
{
    asked.meanwhile = [&](RecordingPane& pane, const QString& call) {
        if (call.startsWith(u"frmFiles"_s)) {
            window->FetchTreeviewRoot();
            pane.requireLoaded();
        }
    };
    window->PaneDisplay(u"frmFiles"_s, keys);
    EXPECT_EQ(asked.take(), (QStringList{u"frmFiles.Display(A)"_s, u"frmWelcome.Display()"_s}));
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_TRUE(window->currentPane()->isVisible());
    EXPECT_TRUE(errors.shown().empty());
    EXPECT_EQ(forms::loaded(u"frmFiles"_s), nullptr);
}

TEST_F(Panes, TooFewKeyPartsAreReported)
{
    errors.expect(Press::Ignore);
    window->PaneDisplay(u"frmFiles"_s, {});
    EXPECT_EQ(errors.shown().back().number, u"9"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"mdiMain.PaneDisplay"_s);
    EXPECT_EQ(asked.take(), QStringList());
}

TEST_F(Panes, AnOperationThatAPaneLacksIsReported)
{
    errors.expect(Press::Ignore);
    window->PaneAddNew(u"frmFiles"_s, keys);
    EXPECT_EQ(errors.shown().back().number, u"5"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"mdiMain.PaneDisplay"_s);
}

TEST_F(Panes, APaneMayShowAnotherOne)
{
    window->PaneDisplay(u"frmFile"_s, keys);
    asked.take();
    asked.meanwhile = [&](RecordingPane&, const QString& call) {
        if (call.endsWith('>'))
            window->PaneDisplay(u"frmFiles"_s, keys);
    };
    window->toolBar(u"tbrFile"_s).Button(u"Up1"_s).press();
    EXPECT_EQ(asked.take(), (QStringList{u"frmFile <Up1>"_s, u"frmFiles.Display(A)"_s}));
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_EQ(bands(), bandsWith(11));
}

TEST_F(Panes, EveryButtonOfAToolBarGoesToTheCurrentPane)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    const std::map<QString, QString> bars{{u"frmColumn"_s, u"tbrColumn"_s},
                                          {u"frmColumns"_s, u"tbrColumns"_s},
                                          {u"frmDatabase"_s, u"tbrDatabase"_s},
                                          {u"frmDatabases"_s, u"tbrDatabases"_s},
                                          {u"frmDBPRV"_s, u"tbrDBPRV"_s},
                                          {u"frmDBPRVs"_s, u"tbrDBPRVs"_s},
                                          {u"frmField"_s, u"tbrField"_s},
                                          {u"frmFields"_s, u"tbrFields"_s},
                                          {u"frmFile"_s, u"tbrFile"_s},
                                          {u"frmFiles"_s, u"tbrFiles"_s},
                                          {u"frmSpecialCols"_s, u"tbrSpecialCols"_s},
                                          {u"frmTable"_s, u"tbrTable"_s},
                                          {u"frmTables"_s, u"tbrTables"_s},
                                          {u"frmTBLPRV"_s, u"tbrTBLPRV"_s},
                                          {u"frmTBLPRVs"_s, u"tbrTBLPRVs"_s},
                                          {u"frmUser"_s, u"tbrUser"_s},
                                          {u"frmUsers"_s, u"tbrUsers"_s},
                                          {u"frmAbout"_s, u"tbrAbout"_s},
                                          {u"frmTableData"_s, u"tbrViewData"_s}};
    ASSERT_EQ(bars.size(), 19U);
    for (const auto& [pane, bar] : bars) {
        window->PaneDisplay(pane, keys);
        asked.take();
        for (ToolButton* button : window->toolBar(bar).Buttons()) {
            QTest::mouseClick(button->widget(), Qt::LeftButton);
            EXPECT_EQ(asked.take(), QStringList{pane + " <" + button->Key() + '>'});
        }
    }
}

namespace
{

class RealPanes : public MainWindowTest
{
};

} // namespace

TEST_F(RealPanes, TheWelcomePaneShowsAnewAfterBothOptionsOfTheCatalogAndTheStyleHaveChanged)
{
    start();
    chooseInBar(u"mnuViewOptions"_s);
    ASSERT_EQ(currentPane(), u"frmOptions"_s);
    auto* options = window->currentPane();
    QTest::mouseClick(options->findChild<QCheckBox*>(u"chkSysTable"_s), Qt::LeftButton, {}, {5, 8});
    QTest::mouseClick(options->findChild<QCheckBox*>(u"chkWin98"_s), Qt::LeftButton, {}, {5, 8});
    QTest::mouseClick(options->findChild<QPushButton*>(u"cmdOK"_s), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_EQ(settings::getNumber(u"Options"_s, u"SysTables"_s, 0), 1);
    EXPECT_EQ(settings::getNumber(u"Options"_s, u"Win98"_s, 1), 0);
    ASSERT_TRUE(window->currentPane());
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_EQ(window->currentPane(), forms::loaded(u"frmWelcome"_s));
    EXPECT_TRUE(window->currentPane()->isVisible());
}
