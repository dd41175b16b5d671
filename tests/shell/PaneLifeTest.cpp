// What becomes of panes, their routines and the window around them: failures, unloading and the end of the program.
#include "MainWindowFixture.h"
#include "RecordingPanes.h"

#include "BandBar.h"
#include "RuntimeError.h"
#include "Settings.h"
#include "frmTWErr.h"

using namespace Qt::StringLiterals;

namespace
{

const QStringList keys{u"A"_s, u"B"_s, u"C"_s, u"D"_s};

/// Sees the window when the process is to end.
class EndWatcher final : public Outside
{
public:
    explicit EndWatcher(const QWidget& window) : m_window(window), m_former(Outside::replace(this)) {}
    ~EndWatcher() override { Outside::replace(m_former); }
    EndWatcher(const EndWatcher&) = delete;
    EndWatcher& operator=(const EndWatcher&) = delete;

    bool open(const QString& target) override { return m_former->open(target); }
    bool run(const QString& program, const QStringList& arguments) override
    {
        return m_former->run(program, arguments);
    }
    void print(const QString& title, const QString& body) override { m_former->print(title, body); }
    void setClipboard(const QString& text) override { m_former->setClipboard(text); }
    QDateTime now() override { return m_former->now(); }
    [[noreturn]] void endProcess() override
    {
        visibleAtEnds.push_back(m_window.isVisible());
        throw ProcessEnded{};
    }

    std::vector<bool> visibleAtEnds;

private:
    const QWidget& m_window;
    Outside* m_former;
};

class PaneLife : public MainWindowTest
{
protected:
    /// The call stack within each call of a pane from now on.
    void watchStacks()
    {
        asked.meanwhile = [this](RecordingPane&, const QString&) { stack = frmTWErr::CallStack(); };
    }

    QStringList unloaded() const
    {
        return QStringList(asked.lives.filter(u"unload "_s)).replaceInStrings(u"unload "_s, u""_s);
    }

    RecordingPanes asked;
    QStringList stack;
};

} // namespace

TEST_F(PaneLife, AnAbortEndsTheProcessWithTheMainWindowHidden)
{
    start();
    asked.meanwhile = [](RecordingPane&, const QString&) { throw RuntimeError(ErrorNumber::TypeMismatch); };
    EndWatcher watcher(*window);
    const std::vector<std::function<void()>> ways{
        [&] { window->PaneDisplay(u"frmFiles"_s, keys); }, [&] { window->PaneAddNew(u"frmFile"_s, keys); },
        [&] { window->PaneEdit(u"frmFile"_s, keys); }, [&] { window->PaneDelete(u"frmFile"_s, keys); }};
    for (const auto& way : ways) {
        errors.expect(Press::Abort);
        EXPECT_THROW(way(), ProcessEnded);
    }
    EXPECT_EQ(watcher.visibleAtEnds, std::vector<bool>(ways.size(), false));
    EXPECT_EQ(settings::get(u"mdiMain"_s, u"TreeviewWidth"_s, u"none"_s), u"none"_s);
}

TEST_F(PaneLife, APaneMayBeUnloadedByItsOwnToolBarCommand)
{
    start();
    window->PaneEdit(u"frmFile"_s, keys);
    asked.take();
    asked.lives.clear();
    bool wasUnloaded = false;
    asked.meanwhile = [&](RecordingPane& pane, const QString& call) {
        if (!call.endsWith('>'))
            return;
        forms::unload(u"frmFile"_s);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // Its code still runs, so it still stands.
        wasUnloaded = pane.isUnloaded();
        EXPECT_EQ(pane.name(), u"frmFile"_s);
    };

    window->toolBar(u"tbrFile"_s).Button(u"Cancel"_s).press();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_TRUE(wasUnloaded);
    EXPECT_EQ(asked.take(), QStringList{u"frmFile <Cancel>"_s});
    EXPECT_EQ(asked.lives, QStringList{u"unload frmFile"_s});
    EXPECT_EQ(currentPane(), QString());
    EXPECT_TRUE(errors.shown().empty());

    // A click on the tool bar that is left reaches nobody, and the next call makes a new pane.
    window->toolBar(u"tbrFile"_s).Button(u"Cancel"_s).press();
    EXPECT_EQ(asked.take(), QStringList());
    window->PaneEdit(u"frmFile"_s, keys);
    EXPECT_EQ(asked.lives, (QStringList{u"unload frmFile"_s, u"load frmFile"_s}));
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    EXPECT_TRUE(window->currentPane()->isVisible());
}

TEST_F(PaneLife, TheCommandsOfTheBarStandOnTheCallStack)
{
    start();
    watchStacks();
    chooseInBar(u"mnuViewOptions"_s);
    EXPECT_EQ(stack, (QStringList{u"mdiMain.PaneDisplay"_s, u"mdiMain.mnuViewOptions_Click"_s}));
    chooseInBar(u"mnuHelpAbout"_s);
    EXPECT_EQ(stack, (QStringList{u"mdiMain.PaneDisplay"_s, u"mdiMain.mnuHelpAbout_Click"_s}));
    click(key());
    EXPECT_EQ(stack,
              (QStringList{u"mdiMain.PaneDisplay"_s, u"mdiMain.DisplayNode"_s, u"mdiMain.tvwExplorer_MouseUp"_s}));
    chooseInBar(u"mnuFileExportCSV"_s);
    EXPECT_EQ(stack, (QStringList{u"mdiMain.PaneDisplay"_s, u"mdiMain.mnuFileExportCSV_Click"_s}));
    window->toolBar(u"tbrMain"_s).Button(u"Import"_s).press();
    EXPECT_EQ(stack, (QStringList{u"mdiMain.PaneDisplay"_s, u"mdiMain.mnuFileImportCSV_Click"_s,
                                  u"mdiMain.tbrMain_ButtonClick"_s}));
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(PaneLife, TheCommandsOfTheContextMenusStandOnTheCallStack)
{
    const QStringList around{u"modGUI.ShowContextMenu"_s, u"mdiMain.tvwExplorer_MouseUp"_s};
    const QString clerk = key({u"US"_s, u"us=CLERK"_s});
    start();
    expandTo(key({u"US"_s}));
    watchStacks();
    choose(clerk, u"mnu_UserAddNew"_s);
    EXPECT_EQ(stack, (QStringList{u"mdiMain.PaneAddNew"_s, u"mdiMain.mnu_UserAddNew_Click"_s}) + around);
    choose(clerk, u"mnu_UserEdit"_s);
    EXPECT_EQ(stack, (QStringList{u"mdiMain.PaneEdit"_s, u"mdiMain.mnu_UserEdit_Click"_s}) + around);
    choose(clerk, u"mnu_UserDelete"_s);
    EXPECT_EQ(stack, (QStringList{u"mdiMain.PaneDelete"_s, u"mdiMain.mnu_UserDelete_Click"_s}) + around);
    choose(key(), u"mnu_DSNImport"_s);
    EXPECT_EQ(stack, (QStringList{u"mdiMain.PaneDisplay"_s, u"mdiMain.mnuFileImportCSV_Click"_s,
                                  u"mdiMain.mnu_DSNImport_Click"_s}) +
                         around);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(PaneLife, TheToolBarsOfPanesStandOnTheCallStack)
{
    start();
    watchStacks();
    window->PaneEdit(u"frmFile"_s, keys);
    EXPECT_EQ(stack, QStringList{u"mdiMain.PaneEdit"_s});
    window->toolBar(u"tbrFile"_s).Button(u"Undo"_s).press();
    EXPECT_EQ(stack, QStringList{u"mdiMain.tbrFile_ButtonClick"_s});
    // An item pane is displayed first and opened for editing from there.
    window->PaneDisplay(u"frmTBLPRV"_s, keys);
    EXPECT_EQ(stack, (QStringList{u"mdiMain.PaneEdit"_s, u"mdiMain.PaneDisplay"_s}));
    window->toolBar(u"tbrTBLPRV"_s).Button(u"Up1"_s).press();
    EXPECT_EQ(stack, QStringList{u"mdiMain.tbrTBLPRV_ButtonClick"_s});
    window->PaneDisplay(u"frmTableData"_s, keys);
    window->toolBar(u"tbrViewData"_s).Button(u"Refresh"_s).press();
    EXPECT_EQ(stack, QStringList{u"mdiMain.tbrViewData_ButtonClick"_s});
}

TEST_F(PaneLife, AllPanesAreUnloadedAtTheEndOfTheProgram)
{
    start();
    const QStringList shown{u"frmFile"_s, u"frmColumns"_s, u"frmAbout"_s, u"frmFiles"_s};
    for (const QString& pane : shown)
        window->PaneDisplay(pane, keys);
    asked.lives.clear();

    window->close();

    EXPECT_EQ(unloaded(), QStringList{u"frmWelcome"_s} + shown);
    EXPECT_EQ(forms::loadedNames(), QStringList());
    window.reset();
    EXPECT_EQ(unloaded().size(), 5) << "each of them once";
}

TEST_F(PaneLife, APaneThatFailsWhileItIsUnloadedAtTheEndIsReportedAndTheSettingsAreSaved)
{
    start();
    for (const QString& pane : {u"frmFile"_s, u"frmColumns"_s, u"frmAbout"_s})
        window->PaneDisplay(pane, keys);
    asked.lives.clear();
    asked.atUnload = [&](const QString& pane) {
        if (pane == u"frmFile"_s)
            throw RuntimeError(ErrorNumber::PathNotFound);
    };
    errors.expect(Press::Ignore);

    window->close();

    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"76"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"mdiMain.MDIForm_Unload"_s);
    EXPECT_EQ(errors.shown()[0].callStack, QStringList{u"mdiMain.MDIForm_Unload"_s});
    for (const char* setting : {"Left", "Top", "Width", "Height", "TreeviewWidth"})
        EXPECT_NE(settings::get(u"mdiMain"_s, QLatin1String(setting), u"none"_s), u"none"_s) << setting;
    EXPECT_FALSE(window->isVisible());
    const QStringList all{u"frmWelcome"_s, u"frmFile"_s, u"frmColumns"_s, u"frmAbout"_s};
    EXPECT_EQ(unloaded(), all);
    EXPECT_EQ(forms::loadedNames(), QStringList());

    window.reset();
    EXPECT_EQ(unloaded(), all) << "each of them once";
}

TEST_F(PaneLife, AWindowThatWasNeverClosedGoesWhateverItsPanesDoWhileTheyAreUnloaded)
{
    start();
    for (const QString& pane : {u"frmFile"_s, u"frmColumns"_s, u"frmAbout"_s})
        window->PaneDisplay(pane, keys);
    asked.lives.clear();
    asked.atUnload = [&](const QString&) { throw RuntimeError(ErrorNumber::PathNotFound); };

    window.reset();

    EXPECT_TRUE(unloaded().contains(u"frmWelcome"_s));
    for (const QString& pane : {u"frmWelcome"_s, u"frmFile"_s, u"frmColumns"_s, u"frmAbout"_s})
        EXPECT_EQ(forms::loaded(pane), nullptr) << pane.toStdString();
    EXPECT_EQ(mdiMain::find(), nullptr);
    EXPECT_TRUE(errors.shown().empty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    // The next window starts as any other.
    asked.atUnload = nullptr;
    start();
    window->PaneDisplay(u"frmFile"_s, keys);
    EXPECT_EQ(currentPane(), u"frmFile"_s);
}
