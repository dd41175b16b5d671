#include "FieldPaneFixture.h"

#include "DropDown.h"
#include "Settings.h"
#include "UpDown.h"
#include "mdiMain.h"

#include <QTest>

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using namespace fieldpane;

namespace
{

/// What the panes of single rows keep from happening, held by that of a field.
class ItemPaneGuards : public FieldPane
{
};

/// The pane of a field in front of the grid of its file's fields.
class FieldPaneWithGrid : public FieldPane
{
protected:
    FieldPaneWithGrid() { takeRealCollections(); }
};

const QStringList limitsOfColumns{u"(0 to 65535)"_s, u"(0 to 65535)"_s, u"(-32 to +32)"_s};

} // namespace

// Numbers that are more than numbers ---------------------------------------------------------------------------------

TEST_F(ItemPaneGuards, ATypedScaleThatWouldEndTheStatementIsOutOfRange)
{
    open(field(u"PRICE"_s));
    const QStringList before = wholeCatalog();
    write(u"SCALE"_s, u"-2"_s);
    hit(Qt::Key_Home);
    QTest::keyClicks(&entry(u"SCALE"_s), u"-"_s);
    ASSERT_EQ(text(u"SCALE"_s), u"--2"_s);
    expectRefused(u"Invalid Scale, must be an integer between -32 and 31."_s, u"SCALE"_s);
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel Undo"_s);
}

TEST_F(ItemPaneGuards, APastedNumberThatWouldEndTheStatementIsOutOfRange)
{
    open(field(u"CODE"_s));
    const QStringList before = wholeCatalog();
    const std::vector<std::tuple<QString, QString, QString>> rows{
        {u"FIELD_NUMBER"_s, u"1--"_s, u"Invalid Field Number, must be an integer between 1 and 32767."_s},
        {u"OFFSET"_s, u"5/*"_s, u"Invalid Offset, must be an integer between 0 and 65535."_s},
        {u"OFFSET"_s, u"5;"_s, u"Invalid Offset, must be an integer between 0 and 65535."_s},
        {u"LENGTH"_s, u"12--"_s, u"Invalid length, must be an integer between 1 and 65535."_s},
        {u"PRECISION"_s, u"12 /*x*/"_s, u"Invalid Length, must be an integer between 1 and 65535."_s},
    };
    for (const auto& [column, value, message] : rows) {
        SCOPED_TRACE(column.toStdString());
        click(key(field(u"CODE"_s)));
        paste(column, value);
        ASSERT_EQ(text(column), value);
        expectRefused(message, column);
        EXPECT_EQ(wholeCatalog(), before);
    }
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(ItemPaneGuards, ANewRowTakesNoCommentsEither)
{
    beginToAdd();
    const QStringList before = wholeCatalog();
    fillIn(u"x"_s, u"STRING"_s);
    paste(u"LENGTH"_s, u"12--"_s);
    expectRefused(u"Invalid length, must be an integer between 1 and 65535."_s, u"LENGTH"_s);
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel Undo"_s);
}

// A second click -----------------------------------------------------------------------------------------------------

TEST_F(ItemPaneGuards, ASecondClickWhileTheTreeFollowsAnAddAddsNothing)
{
    command(stock(), u"mnu_FieldAddNew"_s);
    fillIn(u"twice"_s, u"STRING"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmField.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes(),
              QStringList{insertField(u"06, 'TWICE', 'STRING', 034, 010, 010, 00, 0, '', '', ''"_s)});
    EXPECT_EQ(children(key(stock())).count(u"TWICE"_s), 1);
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel"_s);
    EXPECT_EQ(text(u"FIELD_NUMBER"_s), u"7"_s);
}

TEST_F(ItemPaneGuards, ASecondClickWhileTheTreeFollowsARenameRenamesNothing)
{
    open(field(u"FLAGS"_s));
    write(u"FIELD_NAME"_s, u"bits"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmField.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes().filter(u"INSERT INTO TW_FIELD "_s).size(), 1);
    EXPECT_EQ(statements.writes().filter(u"UPDATE TW_FIELD "_s).size(), 1);
    EXPECT_EQ(children(key(stock())).count(u"BITS"_s), 1);
    EXPECT_EQ(state(), displayState);
}

// A row that could not be read ---------------------------------------------------------------------------------------

TEST_F(ItemPaneGuards, ADeleteThatWaitsIsNotOfTheFieldThatCouldNotBeRead)
{
    for (const int items : {1, 0}) {
        SCOPED_TRACE(items);
        settings::save(u"Options"_s, u"Items"_s, items);
        begin(field(u"FLAGS"_s));
        const QStringList before = wholeCatalog();
        boxes.expectAsk(mayDelete, boxes::Answer::No);
        choose(key(field(u"FLAGS"_s)), u"mnu_FieldDelete"_s);
        ASSERT_EQ(state(), u"Field Delete: Up1 OK Cancel"_s);

        statements.clear();
        statements.failAt(1);
        errors.expect(Press::Ignore);
        click(key(field(u"PRICE"_s)));
        errors.verify();
        EXPECT_EQ(errors.shown().back().trappedIn, u"frmField.Display"_s);
        EXPECT_EQ(statements.statements(), QStringList{readField(u"PRICE"_s)});
        EXPECT_EQ(state(), displayState);
        EXPECT_FALSE(control(u"cmdAction"_s).isVisible());
        EXPECT_EQ(open(), QStringList());

        press(u"OK"_s);
        hit(Qt::Key_Return);
        EXPECT_EQ(statements.writes(), QStringList());
        EXPECT_EQ(wholeCatalog(), before);
    }
}

TEST_F(ItemPaneGuards, AnAddIsNotGoneOnWithBehindAFieldThatCouldNotBeRead)
{
    beginToAdd();
    fillIn(u"x"_s, u"STRING"_s);
    statements.clear();
    statements.failAt(1);
    errors.expect(Press::Ignore);
    click(key(field(u"PRICE"_s)));
    EXPECT_EQ(state(), displayState);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

// Limits -------------------------------------------------------------------------------------------------------------

TEST_F(ItemPaneGuards, AFieldWithoutAKnownTypeHasTheLimitsOfItsColumns)
{
    change(u"UPDATE TW_FIELD SET LOCAL_TYPE_NAME = '' WHERE FIELD_NAME = 'FLAGS'"_s);
    change(u"UPDATE TW_FIELD SET LOCAL_TYPE_NAME = NULL WHERE FIELD_NAME = 'CODE'"_s);
    change(u"UPDATE TW_FIELD SET LOCAL_TYPE_NAME = 'NOSUCH' WHERE FIELD_NAME = 'PIECES'"_s);
    for (const auto& [name, isReported] :
         {std::pair(u"FLAGS"_s, false), std::pair(u"CODE"_s, false), std::pair(u"PIECES"_s, true)}) {
        SCOPED_TRACE(name.toStdString());
        open(field(u"PRICE"_s));
        ASSERT_EQ(allLimits(), (QStringList{u"(1 to 16)"_s, u"(8 to 9)"_s, u"(-32 to 31)"_s}));
        if (isReported)
            errors.expect(Press::Ignore);
        click(key(field(name)));
        errors.verify();
        EXPECT_EQ(allLimits(), limitsOfColumns);
        EXPECT_EQ(arrows(2).Min(), 0);
        EXPECT_EQ(arrows(2).Max(), 65535);
        EXPECT_EQ(arrows(3).Min(), 0);
        EXPECT_EQ(arrows(3).Max(), 65535);
        EXPECT_EQ(arrows(4).Min(), -32);
        EXPECT_EQ(arrows(4).Max(), 32);
    }
}

// The tree -----------------------------------------------------------------------------------------------------------

TEST_F(ItemPaneGuards, AddingAFieldWhoseNodeStillStandsKeepsOneNode)
{
    beginToAdd();
    change(u"DELETE FROM TW_FIELD WHERE FIELD_NAME = 'SOLD'"_s);
    fillIn(u"sold"_s, u"STRING"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    EXPECT_EQ(children(key(stock())), (QStringList{u"CODE"_s, u"FLAGS"_s, u"PIECES"_s, u"PRICE"_s, u"SOLD"_s}));
    EXPECT_EQ(selectedKey(), key(field(u"SOLD"_s)));
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel"_s);
}

TEST_F(ItemPaneGuards, RenamingToANameWhoseNodeStillStandsReadsTheLevelAnew)
{
    open(field(u"FLAGS"_s));
    change(u"DELETE FROM TW_FIELD WHERE FIELD_NAME = 'SOLD'"_s);
    write(u"FIELD_NAME"_s, u"sold"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    EXPECT_EQ(children(key(stock())), (QStringList{u"CODE"_s, u"PIECES"_s, u"PRICE"_s, u"SOLD"_s}));
    EXPECT_EQ(selectedKey(), key(field(u"SOLD"_s)));
    EXPECT_EQ(text(u"LOCAL_TYPE_NAME"_s), u"HEXADECIMAL"_s);
    EXPECT_EQ(state(), displayState);
}

TEST_F(ItemPaneGuards, TheFirstFieldComesUpBelowACollectionThatShowsNone)
{
    const QStringList none{u"FI"_s, u"fi=EMPTY"_s, u"FD"_s};
    begin(none);
    expandTo(key(none));
    ASSERT_EQ(children(key(none)), QStringList());
    choose(key(none), u"mnu_FieldAddNew"_s);
    fillIn(u"first"_s, u"STRING"_s);
    press(u"OK"_s);
    EXPECT_EQ(lines(key(none)), QStringList{u"fd \"FIRST\" Field"_s});
    EXPECT_EQ(selectedKey(), key(none + QStringList{u"fd=FIRST"_s}));
    EXPECT_EQ(fieldsOf(u"EMPTY"_s), QStringList{u"FIRST 1 0"_s});
}

// The rest of the family, for a field --------------------------------------------------------------------------------

TEST_F(ItemPaneGuards, MissingPrivilegesAreOneBoxAndLeaveThePaneInItsState)
{
    open(field(u"CODE"_s));
    write(u"REMARKS"_s, u"x"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"x"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    press(u"Cancel"_s);
    EXPECT_EQ(text(u"REMARKS"_s), QString());
}

TEST_F(ItemPaneGuards, NullsShowAsEmptyTexts)
{
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
           "SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
           "VALUES ('STOCK', NULL, 'NOTHING', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)"_s);
    open(field(u"SOLD"_s));
    click(key(field(u"NOTHING"_s)));
    EXPECT_EQ(texts(fieldColumns), (QStringList{u"STOCK"_s, {}, u"NOTHING"_s, {}, {}, {}, {}, {}, {}, {}, {}, {}}));
    EXPECT_EQ(list(u"LOCAL_TYPE_NAME"_s).currentText(), QString());
    EXPECT_EQ(list(u"ENCRYPTED"_s).currentIndex(), -1);
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel"_s);
}

TEST_F(ItemPaneGuards, TheNumberBehindTheHighestOneIsProposedAndRefused)
{
    addField(u"STOCK"_s, u"LAST"_s, 32767, 50, 1);
    beginToAdd();
    EXPECT_EQ(text(u"FIELD_NUMBER"_s), u"32768"_s);
    fillIn(u"x"_s, u"STRING"_s);
    const QStringList before = wholeCatalog();
    expectRefused(u"Invalid Field Number, must be an integer between 1 and 32767."_s, u"FIELD_NUMBER"_s);
    EXPECT_EQ(wholeCatalog(), before);
}

// The grid behind the pane -------------------------------------------------------------------------------------------

TEST_F(FieldPaneWithGrid, CancelUpAndDeleteEndInTheGridWithItsRows)
{
    beginToAdd();
    fillIn(u"sixth"_s, u"STRING"_s);
    press(u"OK"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(currentPane(), u"frmFields"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"CODE"_s, u"FLAGS"_s, u"PIECES"_s, u"PRICE"_s, u"SIXTH"_s, u"SOLD"_s}));

    click(key(field(u"PRICE"_s)));
    EXPECT_EQ(currentPane(), u"frmField"_s);
    change(u"DELETE FROM TW_FIELD WHERE FIELD_NAME = 'SOLD'"_s);
    press(u"Up1"_s);
    EXPECT_EQ(currentPane(), u"frmFields"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"CODE"_s, u"FLAGS"_s, u"PIECES"_s, u"PRICE"_s, u"SIXTH"_s}));
    EXPECT_EQ(selectedKey(), key(stock()));
    EXPECT_EQ(window->focusWidget(), &window->tvwExplorer());

    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    choose(key(field(u"SIXTH"_s)), u"mnu_FieldDelete"_s);
    EXPECT_EQ(currentPane(), u"frmFields"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"CODE"_s, u"FLAGS"_s, u"PIECES"_s, u"PRICE"_s}));
    EXPECT_EQ(find(key(field(u"SIXTH"_s))), nullptr);
}
