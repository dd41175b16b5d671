#include "MainWindowFixture.h"
#include "PaneForm.h"
#include "Settings.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

class WelcomePane : public MainWindowTest
{
protected:
    template <class Control = QWidget>
    Control* control(const QString& name) const
    {
        return window->currentPane()->findChild<Control*>(name);
    }

    /// The driver manager lists nothing from now on.
    void forgetDatasources() { EXPECT_TRUE(QFile(world.folder() + u"/user.ini"_s).resize(0)); }
};

TEST_F(WelcomePane, GreetsAtStart)
{
    start();
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_EQ(control<QLabel>(u"lblTitleBar"_s)->text(), u"Welcome to the Tarnwick Quorvane"_s);
    EXPECT_EQ(control<QLabel>(u"lblDescription"_s)->text(),
              u"Use the treeview on the left to explore and modify your Tarnwick ODBC datasources..."_s);
}

TEST_F(WelcomePane, ShowsTheCornerPictureInTheWebStyleAlone)
{
    start();
    EXPECT_TRUE(control(u"imgCorner"_s)->isVisible());
    quit();

    settings::save(u"Options"_s, u"Win98"_s, 0);
    start();
    EXPECT_FALSE(control(u"imgCorner"_s)->isVisible());
}

TEST_F(WelcomePane, ShowsTheCornerPictureAtTheNextDisplayOnceTheWebStyleIsOn)
{
    settings::save(u"Options"_s, u"Win98"_s, 0);
    start();
    settings::save(u"Options"_s, u"Win98"_s, 1);
    window->PaneDisplay(u"frmWelcome"_s);
    EXPECT_TRUE(control(u"imgCorner"_s)->isVisible());
}

TEST_F(WelcomePane, SaysHowToBegin)
{
    start();
    EXPECT_TRUE(control(u"fraHints"_s)->isVisible());
    EXPECT_FALSE(control(u"fraNoDatasources"_s)->isVisible());
}

TEST_F(WelcomePane, WithoutADatasourceTheTreeIsEmptyAndTheDatasourceWindowIsOffered)
{
    forgetDatasources();
    start();
    EXPECT_EQ(rootTexts(), QStringList());
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_FALSE(control(u"fraHints"_s)->isVisible());

    QTest::mouseClick(control(u"cmdAdministrator"_s), Qt::LeftButton);
    auto* administrator = window->findChild<QWidget*>(u"frmDSNAdmin"_s);
    ASSERT_TRUE(administrator);
    EXPECT_TRUE(administrator->isVisible());
}
