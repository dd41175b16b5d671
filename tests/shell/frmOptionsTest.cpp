#include "CConnections.h"
#include "MainWindowFixture.h"
#include "PaneForm.h"
#include "Settings.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace Qt::StringLiterals;

class OptionsPane : public MainWindowTest
{
protected:
    void open()
    {
        start();
        chooseOptions();
    }
    void chooseOptions()
    {
        chooseInBar(u"mnuViewOptions"_s);
        ASSERT_EQ(currentPane(), u"frmOptions"_s);
    }

    template <class Control = QWidget>
    Control& control(const QString& name) const
    {
        auto* found = window->currentPane()->findChild<Control*>(name);
        if (!found)
            throw std::runtime_error("There is no control " + name.toStdString());
        return *found;
    }
    QCheckBox& chkSysTable() const { return control<QCheckBox>(u"chkSysTable"_s); }
    QCheckBox& chkWin98() const { return control<QCheckBox>(u"chkWin98"_s); }
    QRadioButton& optFieldOrder(int index) const { return control<QRadioButton>(u"optFieldOrder_%1"_s.arg(index)); }
    QComboBox& cboItems() const { return control<QComboBox>(u"cboItems"_s); }
    QPushButton& cmdOK() const { return control<QPushButton>(u"cmdOK"_s); }
    QPushButton& cmdCancel() const { return control<QPushButton>(u"cmdCancel"_s); }

    /// A click on the control's left end, where boxes and option buttons have what is clicked.
    static void press(QWidget& control)
    {
        QTest::mouseClick(&control, Qt::LeftButton, {}, QPoint(8, control.height() / 2));
    }
    void activate()
    {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    static QString saved(const QString& key) { return settings::get(u"Options"_s, key, u"-"_s); }
    static QStringList allSaved()
    {
        return {saved(u"Win98"_s), saved(u"SysTables"_s), saved(u"FieldOrder"_s), saved(u"Items"_s)};
    }
    static void save(const QString& key, int value) { settings::save(u"Options"_s, key, value); }
};

TEST_F(OptionsPane, ShowsTheDefaultsOfSettingsThatWereNeverSaved)
{
    open();
    EXPECT_EQ(paneTitle(), u"Options"_s);
    EXPECT_FALSE(chkSysTable().isChecked());
    EXPECT_TRUE(optFieldOrder(0).isChecked());
    EXPECT_EQ(cboItems().currentText(), u"Edit!"_s);
    EXPECT_TRUE(chkWin98().isChecked());
}

TEST_F(OptionsPane, ShowsTheSettings)
{
    save(u"SysTables"_s, 1);
    save(u"FieldOrder"_s, 1);
    save(u"Items"_s, 0);
    save(u"Win98"_s, 0);
    open();
    EXPECT_TRUE(chkSysTable().isChecked());
    EXPECT_TRUE(optFieldOrder(1).isChecked());
    EXPECT_EQ(cboItems().currentText(), u"Display"_s);
    EXPECT_FALSE(chkWin98().isChecked());
}

TEST_F(OptionsPane, OkIsOffUntilAnyControlChanges)
{
    open();
    const std::vector<std::function<void()>> changes = {
        [&] { press(chkSysTable()); },
        [&] { press(optFieldOrder(1)); },
        [&] { QTest::keyClick(&cboItems(), Qt::Key_Up); },
        [&] { press(chkWin98()); },
    };
    for (const auto& change : changes) {
        EXPECT_FALSE(cmdOK().isEnabled());
        change();
        EXPECT_TRUE(cmdOK().isEnabled());
        window->PaneDisplay(u"frmOptions"_s);
    }
}

TEST_F(OptionsPane, TheWarningShowsOnlyWhileSystemTablesAreOn)
{
    open();
    const auto& warning = control<QLabel>(u"lblWarning"_s);
    const auto& text = control<QLabel>(u"lblSysTable"_s);
    EXPECT_EQ(warning.text(), u"WARNING"_s);
    EXPECT_EQ(text.text(), u"Changing the system tables manually can make them unreadable and is not recommended."_s);
    EXPECT_FALSE(warning.isVisible() || text.isVisible());
    press(chkSysTable());
    EXPECT_TRUE(warning.isVisible() && text.isVisible());
    press(chkSysTable());
    EXPECT_FALSE(warning.isVisible() || text.isVisible());
}

TEST_F(OptionsPane, TheWarningShowsAtOnceWhereSystemTablesAreOn)
{
    save(u"SysTables"_s, 1);
    open();
    EXPECT_TRUE(control(u"lblWarning"_s).isVisible());
    EXPECT_TRUE(control(u"lblSysTable"_s).isVisible());
}

TEST_F(OptionsPane, OkSavesTheFourSettings)
{
    open();
    press(chkSysTable());
    press(optFieldOrder(1));
    QTest::keyClick(&cboItems(), Qt::Key_Up);
    press(chkWin98());
    press(cmdOK());
    EXPECT_EQ(allSaved(), (QStringList{u"0"_s, u"1"_s, u"1"_s, u"0"_s}));
}

TEST_F(OptionsPane, ChangingOnlyTheFieldOrderSavesItAndTheTreeShowsItAtTheNextExpansion)
{
    const QStringList byName{u"BONUS"_s, u"EMPLOYEE"_s, u"SALARY"_s};
    const QStringList byOffset{u"EMPLOYEE"_s, u"BONUS"_s, u"SALARY"_s};
    start();
    const QString fields = key({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s});
    expandTo(fields);
    ASSERT_EQ(children(fields), byName);

    chooseOptions();
    press(optFieldOrder(1));
    press(cmdOK());
    EXPECT_EQ(saved(u"FieldOrder"_s), u"1"_s);
    EXPECT_EQ(children(fields), byName);
    EXPECT_EQ(CConnections::instance().Count(), 1);

    clickExpander(fields);
    clickExpander(fields);
    EXPECT_EQ(children(fields), byOffset);
}

TEST_F(OptionsPane, TurningTheSystemTablesOnClosesAllConnectionsAndListsTheDatasourcesAnew)
{
    start();
    clickExpander(key());
    ASSERT_EQ(CConnections::instance().Count(), 1);

    chooseOptions();
    press(chkSysTable());
    press(cmdOK());
    EXPECT_EQ(CConnections::instance().Count(), 0);
    EXPECT_EQ(node(key()).Image(), u"DSN Ghost"_s);
    EXPECT_FALSE(node(key()).Expanded());
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_EQ(forms::loaded(u"frmOptions"_s), nullptr);
}

TEST_F(OptionsPane, ChangingTheWebStyleUnloadsEveryFormAndShowsTheWelcomePaneInTheNewStyle)
{
    start();
    clickExpander(key());
    click(key());
    chooseOptions();
    press(chkWin98());
    press(cmdOK());

    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_TRUE(window->currentPane()->isVisible());
    EXPECT_FALSE(control(u"imgCorner"_s).isVisible());
    EXPECT_EQ(forms::loaded(u"frmDSN"_s), nullptr);
    EXPECT_EQ(forms::loaded(u"frmOptions"_s), nullptr);
    EXPECT_EQ(CConnections::instance().Count(), 1);
}

TEST_F(OptionsPane, ChangingTheWebStyleAndTheSystemTablesDoesBoth)
{
    start();
    clickExpander(key());
    chooseOptions();
    press(chkWin98());
    press(chkSysTable());
    press(cmdOK());

    EXPECT_EQ(CConnections::instance().Count(), 0);
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_TRUE(window->currentPane()->isVisible());
    EXPECT_FALSE(control(u"imgCorner"_s).isVisible());
}

TEST_F(OptionsPane, WhatIsSwitchedOnAndOffAgainIsNoChange)
{
    start();
    clickExpander(key());
    chooseOptions();
    press(chkSysTable());
    press(chkSysTable());
    press(chkWin98());
    press(chkWin98());
    press(cmdOK());
    EXPECT_EQ(CConnections::instance().Count(), 1);
    EXPECT_EQ(currentPane(), u"frmOptions"_s);
}

TEST_F(OptionsPane, CancelAfterChangesSavesNothing)
{
    open();
    press(chkSysTable());
    press(optFieldOrder(1));
    QTest::keyClick(&cboItems(), Qt::Key_Up);
    press(chkWin98());
    press(cmdCancel());
    EXPECT_EQ(allSaved(), (QStringList{u"-"_s, u"-"_s, u"-"_s, u"-"_s}));
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_TRUE(window->currentPane()->isVisible());
}

TEST_F(OptionsPane, CancelLoadsTheWelcomePaneAnew)
{
    open();
    const QPointer<Form> former = forms::loaded(u"frmWelcome"_s);
    ASSERT_TRUE(former);
    press(cmdCancel());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(former);
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
}

TEST_F(OptionsPane, CancelledChangesAreStillShownWhenTheOptionsAreOpenedAgainButNotToBeSavedAsTheyStand)
{
    open();
    press(chkSysTable());
    press(cmdCancel());
    chooseOptions();
    EXPECT_TRUE(chkSysTable().isChecked());
    EXPECT_FALSE(cmdOK().isEnabled());
    EXPECT_EQ(saved(u"SysTables"_s), u"-"_s);
}

TEST_F(OptionsPane, EnterIsOkAndEscapeIsCancel)
{
    open();
    press(optFieldOrder(1));
    QTest::keyClick(&optFieldOrder(1), Qt::Key_Return);
    EXPECT_EQ(saved(u"FieldOrder"_s), u"1"_s);

    press(optFieldOrder(0));
    QTest::keyClick(&optFieldOrder(0), Qt::Key_Escape);
    EXPECT_EQ(saved(u"FieldOrder"_s), u"1"_s);
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
}

TEST_F(OptionsPane, EnterWithoutAChangeDoesNothing)
{
    open();
    QTest::keyClick(&cboItems(), Qt::Key_Return);
    EXPECT_EQ(saved(u"Items"_s), u"-"_s);
}

TEST_F(OptionsPane, ThePromptOfTheFieldOrderLeadsToTheChosenOrderAndKeepsIt)
{
    save(u"FieldOrder"_s, 1);
    open();
    activate();
    QTest::keyClick(window.get(), Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(optFieldOrder(1).hasFocus());
    EXPECT_TRUE(optFieldOrder(1).isChecked());
    EXPECT_FALSE(cmdOK().isEnabled());
}

TEST_F(OptionsPane, ThePromptsLeadToTheirControls)
{
    open();
    activate();
    QTest::keyClick(window.get(), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(cboItems().hasFocus());
    QTest::keyClick(window.get(), Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(chkSysTable().hasFocus());
    QTest::keyClick(window.get(), Qt::Key_W, Qt::AltModifier);
    EXPECT_TRUE(chkWin98().hasFocus());
    QTest::keyClick(&chkWin98(), Qt::Key_Space);
    EXPECT_FALSE(chkWin98().isChecked());
}

TEST_F(OptionsPane, TabGoesThroughTheControlsFromTopToBottom)
{
    open();
    activate();
    press(chkWin98());
    chkSysTable().setFocus();
    QStringList passed;
    for (int step = 0; step < 6; ++step) {
        passed.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(passed, (QStringList{u"chkSysTable"_s, u"optFieldOrder_0"_s, u"cboItems"_s, u"chkWin98"_s, u"cmdOK"_s,
                                   u"cmdCancel"_s}));
}

TEST_F(OptionsPane, ControlsAreCalledAfterTheirPrompts)
{
    open();
    EXPECT_EQ(chkSysTable().accessibleName(), u"View System Tables:"_s);
    EXPECT_EQ(cboItems().accessibleName(), u"Default View:"_s);
    EXPECT_EQ(chkWin98().accessibleName(), u"Web Style:"_s);
}
