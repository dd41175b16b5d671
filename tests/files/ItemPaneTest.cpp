#include "FieldPaneFixture.h"

#include "CConnections.h"
#include "Form.h"
#include "Settings.h"
#include "ToolBar.h"
#include "modGUI.h"

#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace fieldpane;

namespace
{

/// What the panes of single rows have in common, held by that of a field.
class ItemPanes : public FieldPane
{
protected:
    static QString enabledKeys(const ToolBar& bar)
    {
        QStringList enabled;
        for (const ToolButton* button : bar.Buttons()) {
            if (button->Enabled())
                enabled.append(button->Key());
        }
        return enabled.join(' '_L1);
    }
};

} // namespace

TEST_F(ItemPanes, AToolBarHasTwoStatesAndMayLackButtons)
{
    ToolBar bar(u"tbrAny"_s);
    bar.setTag(u"Any"_s);
    for (const char* key : {"Any Add", "Any Edit", "Other Delete", "OK", "Undo", "ViewData"})
        bar.Add(QLatin1String(key), {});
    modGUI::SetToolbarState(bar, 1, u"Any Edit"_s);
    EXPECT_EQ(enabledKeys(bar), u"Other Delete OK"_s);
    EXPECT_EQ(bar.Button(u"OK"_s).Tag(), u"Any Edit"_s);
    bar.Button(u"Undo"_s).setEnabled(true);
    modGUI::SetToolbarState(bar, 0);
    EXPECT_EQ(enabledKeys(bar), u"Any Add Any Edit Other Delete ViewData"_s);
    EXPECT_EQ(bar.Button(u"OK"_s).Tag(), u""_s);
    modGUI::SetToolbarState(bar, 1);
    EXPECT_EQ(enabledKeys(bar), u"Other Delete OK"_s);
    EXPECT_EQ(bar.Button(u"OK"_s).Tag(), u""_s);
    ToolBar empty(u"tbrEmpty"_s);
    modGUI::SetToolbarState(empty, 1, u"x"_s);
}

TEST_F(ItemPanes, MenuToolBarAndButtonLeadToTheSameState)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    const QString edit = u"Field Edit: Up1 OK Cancel"_s;
    command(field(u"CODE"_s), u"mnu_FieldEdit"_s);
    EXPECT_EQ(state(), edit);
    clickButton(u"cmdCancel"_s);
    EXPECT_EQ(state(), displayState);
    press(u"Field Edit"_s);
    EXPECT_EQ(state(), edit);
    clickButton(u"cmdAction"_s);
    EXPECT_EQ(state(), displayState);
    press(u"Field Add"_s);
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel"_s);
    EXPECT_EQ(text(u"FILE_NAME"_s), u"STOCK"_s);
}

TEST_F(ItemPanes, AChangeEnablesUndo)
{
    open(field(u"CODE"_s));
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel"_s);
    pick(u"ENCRYPTED"_s, u"Yes - Read Only"_s);
    EXPECT_EQ(text(u"ENCRYPTED"_s), u"2"_s);
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel Undo"_s);
}

TEST_F(ItemPanes, ADatasourceThatCannotBeReachedLeavesThePaneAsItIs)
{
    world.addUnreachableDatasource(u"Nowhere"_s);
    open(field(u"CODE"_s));
    const QStringList before = texts(fieldColumns);
    expectUnreachable();
    window->PaneEdit(u"frmField"_s, {u"Nowhere"_s, u"STOCK"_s, u"PRICE"_s});
    EXPECT_EQ(texts(fieldColumns), before);
    EXPECT_EQ(paneTitle(), u"STOCK.CODE - Edit Field Properties"_s);
    clickButton(u"cmdNextFieldNumber"_s);
    EXPECT_EQ(text(u"FIELD_NUMBER"_s), u"6"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(text(u"FIELD_NUMBER"_s), u"1"_s);
}

TEST_F(ItemPanes, APaneThatNeverShowedARowTakesNoCommand)
{
    world.addUnreachableDatasource(u"Nowhere"_s);
    start();
    expectUnreachable();
    window->PaneEdit(u"frmField"_s, {u"Nowhere"_s, u"STOCK"_s, u"PRICE"_s});
    EXPECT_EQ(currentPane(), u"frmField"_s);
    for (const ToolButton* button : window->toolBar(u"tbrField"_s).Buttons()) {
        if (button->Enabled())
            QTest::mouseClick(button->widget(), Qt::LeftButton);
    }
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(takeShown(), QStringList());
}

TEST_F(ItemPanes, APaneThatIsTornDownUnderItsQuestionDoesNothingMore)
{
    begin(field(u"FLAGS"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes, [] { forms::unload(u"frmField"_s); });
    errors.expect(Press::Ignore);
    choose(key(field(u"FLAGS"_s)), u"mnu_FieldDelete"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(errors.shown().front().number, u"91"_s);
    EXPECT_NE(storedField(u"FLAGS"_s), QStringList());
}

TEST_F(ItemPanes, APaneThatIsTornDownUnderAMessageDoesNothingMore)
{
    beginToAdd();
    boxes.expect(noName, boxes::Icon::Information, [] { forms::unload(u"frmField"_s); });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().front().number, u"91"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(ItemPanes, ARenameWithoutANodeInTheTreeIsARename)
{
    open(field(u"CODE"_s));
    clickExpander(key({u"FI"_s}));
    window->PaneEdit(u"frmField"_s, {datasource, u"STOCK"_s, u"CODE"_s});
    write(u"FIELD_NAME"_s, u"article"_s);
    press(u"OK"_s);
    EXPECT_NE(storedField(u"ARTICLE"_s), QStringList());
    EXPECT_EQ(selectedKey(), key(field(u"ARTICLE"_s)));
}

TEST_F(ItemPanes, TheClassicLookShowsTheSameEntries)
{
    settings::save(u"Options"_s, u"Win98"_s, 0);
    open(field(u"CODE"_s));
    EXPECT_EQ(open(), fieldColumns.sliced(1));
    EXPECT_FALSE(control(u"txtProperty_ENCRYPTED"_s).isVisible());
}
