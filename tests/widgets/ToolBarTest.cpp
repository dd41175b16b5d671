#include "ToolBar.h"
#include "RuntimeError.h"

#include <QStringList>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace
{

class ToolBarTest : public testing::Test
{
protected:
    ToolBarTest()
    {
        QObject::connect(&bar, &ToolBar::ButtonClick, &bar, [this](ToolButton& button) { clicks << button.Key(); });
    }

    ToolBar bar{"tbrFile"};
    QStringList clicks;
};

TEST_F(ToolBarTest, ButtonsAreFoundByKeyAndKeepTheirOrder)
{
    ToolButton& up = bar.Add("Up1", "Up to File collection");
    bar.AddSeparator();
    ToolButton& add = bar.Add("File Add", "Add New File");
    EXPECT_EQ(&bar.Button("File Add"), &add);
    EXPECT_EQ(bar.find("File"), nullptr);
    EXPECT_EQ(bar.Buttons(), (std::vector<ToolButton*>{&up, &add}));
    try {
        bar.Button("file add");
        FAIL() << "an unknown key was found";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::FailedCall);
    }
    try {
        bar.Add("Up1", "");
        FAIL() << "a second button took the key";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::KeyAlreadyThere);
    }
    EXPECT_EQ(bar.Buttons().size(), 2U);
}

TEST_F(ToolBarTest, ButtonsHaveNamesForTestsAndForScreenReaders)
{
    ToolButton& add = bar.Add("File Add", "Add New File");
    EXPECT_EQ(bar.objectName(), "tbrFile");
    EXPECT_EQ(add.widget()->objectName(), "tbrFile_File_Add");
    EXPECT_EQ(add.widget()->toolTip(), "Add New File");
    EXPECT_EQ(add.widget()->accessibleName(), "Add New File");
    EXPECT_EQ(bar.Add("OK", "").widget()->accessibleName(), "OK");
    add.setToolTipText("Another");
    EXPECT_EQ(add.ToolTipText(), "Another");
    EXPECT_EQ(add.widget()->accessibleName(), "Another");
    EXPECT_FALSE(add.widget()->icon().isNull());
}

TEST_F(ToolBarTest, AClickReportsItsButtonIfItIsEnabled)
{
    ToolButton& add = bar.Add("File Add", "");
    ToolButton& edit = bar.Add("File Edit", "");
    bar.show();
    QTest::mouseClick(add.widget(), Qt::LeftButton);
    edit.press();
    QTest::keyClick(add.widget(), Qt::Key_Space);
    EXPECT_EQ(clicks, QStringList({"File Add", "File Edit", "File Add"}));
    add.setEnabled(false);
    EXPECT_FALSE(add.Enabled());
    QTest::mouseClick(add.widget(), Qt::LeftButton);
    add.press();
    EXPECT_EQ(clicks.size(), 3);
    add.setEnabled(true);
    add.press();
    EXPECT_EQ(clicks.size(), 4);
}

TEST_F(ToolBarTest, AButtonIsStillEnabledInABarThatIsDisabled)
{
    ToolButton& add = bar.Add("File Add", "");
    bar.setEnabled(false);
    EXPECT_TRUE(add.Enabled());
    add.press();
    EXPECT_EQ(clicks, QStringList());
}

TEST_F(ToolBarTest, AHiddenButtonTakesNoRoom)
{
    bar.Add("File Add", "");
    ToolButton& edit = bar.Add("File Edit", "");
    const int both = bar.sizeHint().width();
    edit.setVisible(false);
    EXPECT_FALSE(edit.Visible());
    EXPECT_LT(bar.sizeHint().width(), both);
}

TEST_F(ToolBarTest, TheKeyboardReachesEveryEnabledButton)
{
    ToolButton& first = bar.Add("File Add", "");
    ToolButton& skipped = bar.Add("File Edit", "");
    ToolButton& last = bar.Add("File Delete", "");
    skipped.setEnabled(false);
    bar.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&bar));
    bar.activateWindow();
    first.widget()->setFocus();
    QTest::keyClick(first.widget(), Qt::Key_Tab);
    EXPECT_EQ(bar.focusWidget(), last.widget());
}

TEST_F(ToolBarTest, TagsAreFreeText)
{
    ToolButton& ok = bar.Add("OK", "");
    EXPECT_EQ(ok.Tag(), "");
    ok.setTag("ADD");
    bar.setTag("File");
    EXPECT_EQ(ok.Tag(), "ADD");
    EXPECT_EQ(bar.Tag(), "File");
}

} // namespace
