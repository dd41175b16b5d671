#include "Application.h"
#include "BandBar.h"
#include "LinkLabel.h"
#include "MainWindowFixture.h"
#include "PaneForm.h"
#include "Settings.h"
#include "frmTWErr.h"

#include <QFile>
#include <QLabel>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

class AboutPane : public MainWindowTest
{
protected:
    void open()
    {
        start();
        chooseInBar(u"mnuHelpAbout"_s);
        ASSERT_EQ(currentPane(), u"frmAbout"_s);
        outside.runs = true;
    }

    QString text(const QString& label) const { return window->currentPane()->findChild<QLabel*>(label)->text(); }
    LinkLabel* link(const QString& name) const { return window->currentPane()->findChild<LinkLabel*>(name); }
    void press(const QString& button)
    {
        QTest::mouseClick(window->toolBar(u"tbrAbout"_s).Button(button).widget(), Qt::LeftButton);
    }
    QStringList startedPrograms() const
    {
        QStringList programs;
        for (const RecordingOutside::Run& run : outside.started)
            programs.append(run.program);
        return programs;
    }
    static void setRegistry(const QString& key, const QString& name, const QString& value)
    {
        settings::save(u"HKEY_LOCAL_MACHINE/SOFTWARE/Microsoft/"_s + key, name, value);
    }
};

TEST_F(AboutPane, ShowsTheProgramAndItsVersion)
{
    open();
    EXPECT_EQ(paneTitle(), u"About Tarnwick Quorvane"_s);
    EXPECT_EQ(text(u"lblAppTitle"_s), u"Tarnwick Quorvane"_s);
    EXPECT_EQ(text(u"lblAppVersion"_s), u"%1.%2"_s.arg(application::major()).arg(application::minor()));
    const QString revision = QString::number(application::revision());
    EXPECT_EQ(text(u"lblAppBuild"_s), application::isBeta() ? revision + u" (Beta)"_s : revision);
    EXPECT_TRUE(window->currentPane()->findChild<QWidget*>(u"imgLogo"_s)->isVisible());
}

TEST_F(AboutPane, ShowsWhomToTurnTo)
{
    open();
    EXPECT_EQ(text(u"lblHeadOffice"_s), application::headOffice());
    EXPECT_EQ(text(u"lblTelephone"_s), application::telephone());
    EXPECT_EQ(text(u"lblFacsimile"_s), application::facsimile());
    EXPECT_EQ(text(u"lblVoiceMail"_s), application::voiceMail());
    EXPECT_EQ(link(u"lblEMail"_s)->text(), application::supportMail());
    EXPECT_EQ(link(u"lblWWW"_s)->text(), application::supportWeb());
}

TEST_F(AboutPane, AClickOnTheMailLabelOpensAMailToIt)
{
    open();
    QTest::mouseClick(link(u"lblEMail"_s), Qt::LeftButton);
    EXPECT_EQ(outside.opened, QStringList{u"mailto:"_s + application::supportMail()});
}

TEST_F(AboutPane, AClickOnTheWebLabelOpensItsAddress)
{
    open();
    QTest::mouseClick(link(u"lblWWW"_s), Qt::LeftButton);
    EXPECT_EQ(outside.opened, QStringList{application::supportWeb()});
}

TEST_F(AboutPane, TheLabelsArePressedByTheKeyboardToo)
{
    open();
    link(u"lblEMail"_s)->setFocus();
    QTest::keyClick(link(u"lblEMail"_s), Qt::Key_Return);
    QTest::keyClick(link(u"lblEMail"_s), Qt::Key_Space);
    EXPECT_EQ(outside.opened.size(), 2);
}

TEST_F(AboutPane, WithoutAMailProgramAClickOnTheMailLabelShowsTheBoxAndNothingElse)
{
    open();
    outside.opens = false;
    boxes.expectInform(u"No default EMail Editor is registered"_s);
    QTest::mouseClick(link(u"lblEMail"_s), Qt::LeftButton);
    EXPECT_EQ(currentPane(), u"frmAbout"_s);
    EXPECT_TRUE(startedPrograms().isEmpty());
}

TEST_F(AboutPane, WithoutABrowserAClickOnTheWebLabelShowsTheBox)
{
    open();
    outside.opens = false;
    boxes.expectInform(u"No Default Browser is registered"_s);
    QTest::mouseClick(link(u"lblWWW"_s), Qt::LeftButton);
}

TEST_F(AboutPane, ALabelIsMarkedAsPressedWhileItsAddressIsOpened)
{
    open();
    outside.opens = false;
    bool marked = false;
    boxes.expect(u"No Default Browser is registered"_s, boxes::Icon::Information,
                 [&] { marked = link(u"lblWWW"_s)->isMarked(); });
    QTest::mouseClick(link(u"lblWWW"_s), Qt::LeftButton);
    EXPECT_TRUE(marked);
    EXPECT_FALSE(link(u"lblWWW"_s)->isMarked());
}

TEST_F(AboutPane, BothLabelsStandOnTheCallStackUnderOneName)
{
    open();
    outside.opens = false;
    QStringList tops;
    for (const QString& prompt : {u"No default EMail Editor is registered"_s, u"No Default Browser is registered"_s})
        boxes.expect(prompt, boxes::Icon::Information, [&] { tops.append(frmTWErr::CallStack().value(0)); });
    QTest::mouseClick(link(u"lblEMail"_s), Qt::LeftButton);
    QTest::mouseClick(link(u"lblWWW"_s), Qt::LeftButton);
    EXPECT_EQ(tops, (QStringList{u"frmAbout.lblEMail_Click"_s, u"frmAbout.lblEMail_Click"_s}));
}

TEST_F(AboutPane, TheToolBarClicksTheLabels)
{
    open();
    press(u"WWW"_s);
    press(u"EMail"_s);
    EXPECT_EQ(outside.opened, (QStringList{application::supportWeb(), u"mailto:"_s + application::supportMail()}));
}

TEST_F(AboutPane, APaneThatIsUnloadedWhileItsMailOpensDoesNoHarm)
{
    open();
    outside.opens = false;
    boxes.expect(u"No default EMail Editor is registered"_s, boxes::Icon::Information,
                 [&] { window->FetchTreeviewRoot(); });
    QTest::mouseClick(link(u"lblEMail"_s), Qt::LeftButton);
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
}

TEST_F(AboutPane, InformationRunsTheNamedProgram)
{
    setRegistry(u"Shared Tools/MSINFO"_s, u"PATH"_s, u"/usr/bin/hardware"_s);
    open();
    press(u"Information"_s);
    EXPECT_EQ(startedPrograms(), QStringList{u"/usr/bin/hardware"_s});
}

TEST_F(AboutPane, InformationOtherwiseRunsTheProgramOfTheNamedFolder)
{
    QFile program(world.folder() + u"/MSINFO32.EXE"_s);
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    setRegistry(u"Shared Tools Location"_s, u"MSINFO"_s, world.folder());
    open();
    press(u"Information"_s);
    EXPECT_EQ(startedPrograms(), QStringList{program.fileName()});
}

TEST_F(AboutPane, InformationDoesNothingWhenTheNamedFolderLacksTheProgram)
{
    setRegistry(u"Shared Tools Location"_s, u"MSINFO"_s, world.folder());
    open();
    press(u"Information"_s);
    EXPECT_TRUE(startedPrograms().isEmpty());
}

TEST_F(AboutPane, InformationHasNoEffectOnASystemWithoutTheProgram)
{
    open();
    press(u"Information"_s);
    EXPECT_TRUE(startedPrograms().isEmpty());
    EXPECT_EQ(currentPane(), u"frmAbout"_s);
}

TEST_F(AboutPane, AProgramThatCannotBeStartedIsReportedAndTriedAgain)
{
    setRegistry(u"Shared Tools/MSINFO"_s, u"PATH"_s, u"/nowhere/hardware"_s);
    open();
    outside.runs = false;
    errors.expect(Press::Retry).expect(Press::Ignore);
    press(u"Information"_s);
    ASSERT_EQ(errors.shown().size(), 2U);
    EXPECT_EQ(errors.shown().front().number, u"53"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmAbout.DisplaySystemInfo"_s);
    EXPECT_EQ(errors.shown().front().additional, u"None"_s);
    EXPECT_EQ(startedPrograms(), (QStringList{u"/nowhere/hardware"_s, u"/nowhere/hardware"_s}));
}
