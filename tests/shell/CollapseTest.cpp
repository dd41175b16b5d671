#include "MainWindowFixture.h"
#include "RecordingPanes.h"

#include "BandBar.h"
#include "modGUI.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

const QStringList fields{u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s};
const QStringList field = fields + QStringList{u"fd=SALARY"_s};

class Collapse : public MainWindowTest
{
protected:
    QStringList statementsAndCalls()
    {
        QStringList all = statements.statements() + asked.take();
        statements.clear();
        return all;
    }

    RecordingPanes asked;
};

} // namespace

TEST_F(Collapse, LeavesAPlaceholderAndNoEntryOfWhatWasThere)
{
    start();
    expandTo(key(fields));
    const int entries = window->nodes().Count();
    ASSERT_EQ(children(key(fields)).size(), 3);

    clickExpander(key(fields));

    EXPECT_EQ(lines(key(fields)), (QStringList{u" \"\" "_s}));
    EXPECT_FALSE(node(key(fields)).Expanded());
    EXPECT_TRUE(node(key(fields)).Child()->Key().startsWith('K'));
    EXPECT_EQ(window->nodes().Count(), entries - 2);
    EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
}

TEST_F(Collapse, TakesAllLevelsBelow)
{
    start();
    expandTo(key(fields));
    clickExpander(key());
    EXPECT_EQ(wholeTree(), (QStringList{u"DSN \"%1\" Datasource +"_s.arg(datasource)}));
    // The datasource and its placeholder.
    EXPECT_EQ(window->nodes().Count(), 2);
}

TEST_F(Collapse, SaysSoAndClearsTheTypeOfTheCurrentItem)
{
    start();
    expandTo(key({u"FI"_s}));
    press(key());
    EXPECT_EQ(window->currentItem().NodeType, u"DSN"_s);
    release(textPosition(key()));

    QTest::mousePress(window->tvwExplorer().viewport(), Qt::LeftButton, {}, expanderPosition(key({u"FI"_s})));

    EXPECT_EQ(statusText(), u"Collapse"_s);
    EXPECT_EQ(window->currentItem().NodeType, QString());
    EXPECT_EQ(window->currentItem().Node, key());
    EXPECT_EQ(window->currentItem().Keys, QStringList{datasource});
    asked.take();
    release(expanderPosition(key({u"FI"_s})));
    // Without a type the release shows nothing.
    EXPECT_EQ(asked.take(), QStringList());
}

TEST_F(Collapse, ThePaneFollowsASelectionThatWasInside)
{
    start();
    expandTo(key(fields));
    click(key(field));
    asked.take();

    clickExpander(key({u"FI"_s, u"fi=PAYROLL"_s}));

    EXPECT_EQ(selectedKey(), key({u"FI"_s, u"fi=PAYROLL"_s}));
    EXPECT_EQ(asked.take(), QStringList{u"frmFile.Edit(%1, PAYROLL)"_s.arg(datasource)});
    EXPECT_EQ(currentPane(), u"frmFile"_s);
    EXPECT_EQ(window->currentItem().NodeType, QString());
}

TEST_F(Collapse, ThePaneFollowsASelectionFarBelow)
{
    start();
    expandTo(key(fields));
    click(key(field));
    asked.take();
    clickExpander(key());
    EXPECT_EQ(selectedKey(), key());
    EXPECT_EQ(asked.take(), QStringList{u"frmDSN.Display(%1)"_s.arg(datasource)});
}

TEST_F(Collapse, ThePaneStaysWhenTheSelectionWasElsewhere)
{
    start();
    expandTo(key(fields));
    expandTo(key({u"US"_s}));
    click(key({u"US"_s, u"us=CLERK"_s}));
    asked.take();
    clickExpander(key(fields));
    EXPECT_FALSE(node(key(fields)).Expanded());
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(currentPane(), u"frmUser"_s);
    EXPECT_EQ(selectedKey(), key({u"US"_s, u"us=CLERK"_s}));
}

TEST_F(Collapse, OpeningAgainSelectsTheNodeAndShowsItsPane)
{
    start();
    expandTo(key(fields));
    expandTo(key({u"US"_s}));
    click(key({u"US"_s, u"us=CLERK"_s}));
    clickExpander(key(fields));
    asked.take();
    clickExpander(key(fields));
    EXPECT_TRUE(node(key(fields)).Expanded());
    EXPECT_EQ(asked.take(), QStringList{u"frmFields.Display(%1, PAYROLL)"_s.arg(datasource)});
    EXPECT_EQ(currentPane(), u"frmFields"_s);
    EXPECT_EQ(selectedKey(), key(fields));
}

TEST_F(Collapse, ThePaneFollowsALostSelectionOnlyWhileAPressLasts)
{
    const QString clerk = key({u"US"_s, u"us=CLERK"_s});
    start();
    for (const bool lasts : {true, false}) {
        SCOPED_TRACE(lasts);
        expandTo(key({u"US"_s}));
        click(clerk);
        asked.take();
        const QPoint place = textPosition(clerk);
        press(clerk);
        // The release went to another window: the next move comes without a button.
        if (!lasts)
            move(place, Qt::NoButton);
        node(key({u"US"_s})).setExpanded(false);
        EXPECT_EQ(selectedKey(), key({u"US"_s}));
        EXPECT_EQ(asked.take(), lasts ? QStringList{u"frmUsers.Display(%1)"_s.arg(datasource)} : QStringList());
        release(place);
    }
}

TEST_F(Collapse, AReleaseEndsThePress)
{
    const QString clerk = key({u"US"_s, u"us=CLERK"_s});
    start();
    expandTo(key({u"US"_s}));
    click(clerk);
    click(clerk);
    asked.take();
    node(key({u"US"_s})).setExpanded(false);
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(currentPane(), u"frmUser"_s);
}

TEST_F(Collapse, ThePaneStaysWhenTheNodeItselfWasSelected)
{
    start();
    expandTo(key({u"US"_s}));
    click(key({u"US"_s}));
    asked.take();
    clickExpander(key({u"US"_s}));
    EXPECT_EQ(asked.take(), QStringList());
    EXPECT_EQ(selectedKey(), key({u"US"_s}));
}

TEST_F(Collapse, APaneThatReadsTheTreeAnewDuringItsOwnCommandStays)
{
    start();
    expandTo(key({u"US"_s}));
    click(key({u"US"_s, u"us=ADMIN"_s}));
    click(key({u"US"_s, u"us=CLERK"_s}));
    asked.take();
    // As a pane does after it has added a row.
    asked.meanwhile = [&](RecordingPane&, const QString& call) {
        if (!call.contains('<'))
            return;
        node(key({u"US"_s})).setExpanded(false);
        node(key({u"US"_s})).setExpanded(true);
        modGUI::ExpandToNode(key({u"US"_s, u"us=CLERK"_s}));
    };
    window->toolBar(u"tbrUser"_s).Button(u"User Edit"_s).press();
    EXPECT_EQ(asked.take(), QStringList{u"frmUser <User Edit>"_s});
    EXPECT_EQ(currentPane(), u"frmUser"_s);
    EXPECT_EQ(selectedKey(), key({u"US"_s, u"us=CLERK"_s}));
}

TEST_F(Collapse, TheKeyboardCollapsesAndExpands)
{
    start();
    expandTo(key({u"US"_s}));
    window->tvwExplorer().setSelectedItem(find(key({u"US"_s})));
    asked.take();
    statements.clear();

    type(Qt::Key_Left);
    EXPECT_EQ(lines(key({u"US"_s})), (QStringList{u" \"\" "_s}));
    EXPECT_EQ(statementsAndCalls(), QStringList());
    type(Qt::Key_Right);
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"CLERK"_s}));
    EXPECT_EQ(statementsAndCalls(), QStringList{u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s});
    type(Qt::Key_Minus);
    EXPECT_FALSE(node(key({u"US"_s})).Expanded());
    type(Qt::Key_Plus);
    EXPECT_TRUE(node(key({u"US"_s})).Expanded());
}
