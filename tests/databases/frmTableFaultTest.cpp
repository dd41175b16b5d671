#include "TablePaneFixture.h"

#include "FaultSweep.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace tablepane;

namespace
{

class TablePaneFaults : public TablePane
{
protected:
    /// All that shows of the pane and the catalog.
    QStringList outcome() const
    {
        QStringList all = wholeCatalog() + wholeTree() + QStringList{currentPane(), selectedKey()};
        if (currentPane() == u"frmTable"_s)
            all += QStringList{paneTitle(), state()} + texts(tableColumns);
        return all;
    }

    void SetUp() override
    {
        TablePane::SetUp();
        keepCatalog();
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(TablePaneFaults, WithinOpeningATable)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(table(u"ITEMS"_s));
                   },
               .act = [&](const auto&) { click(key(table(u"ITEMS"_s))); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key(table(u"ITEMS"_s))); }});
}

TEST_F(TablePaneFaults, WithinBeginningAnAdd)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(table(u"ITEMS"_s));
                       press(u"Cancel"_s);
                   },
               .act = [&](const auto&) { press(u"Table Add"_s); },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       // A list that could not be read stays as it was, and the add goes on.
                       return withoutFault.sliced(statement);
                   },
               .goOn =
                   [&] {
                       if (!state().startsWith("Table Add"_L1))
                           press(u"Table Add"_s);
                   }});
}

TEST_F(TablePaneFaults, WithinCancel)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(table(u"ITEMS"_s));
                       write(u"REMARKS"_s, u"x"_s);
                   },
               .act = [&](const auto&) { press(u"Cancel"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       click(key(table(u"ITEMS"_s)));
                       press(u"Cancel"_s);
                   }});
}

TEST_F(TablePaneFaults, WithinAnAdd)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       beginToAdd();
                       fillIn(u"new"_s);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome =
                   [&] {
                       return wholeCatalog() + nodes() + QStringList{paneTitle(), state()};
                   },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       // Looking for the name and adding it; behind them the tree and the list of files.
                       return statement > 2 ? withoutFault.sliced(statement) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (text(u"TABLE_NAME"_s).isEmpty()) {
                           EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel"_s);
                           clickExpander(key());
                           expandTo(key(level()));
                           return choose(key(level()), u"mnu_TableAddNew"_s);
                       }
                       EXPECT_EQ(state(), u"Table Add: Up1 OK Cancel Undo"_s);
                       press(u"OK"_s);
                   }});
}

TEST_F(TablePaneFaults, WithinAChange)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(table(u"ITEMS"_s));
                       write(u"REMARKS"_s, u"new"_s);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       // Only the last reading failed where the pane has been emptied.
                       if (text(u"TABLE_NAME"_s).isEmpty()) {
                           EXPECT_EQ(state(), displayState);
                           press(u"Table Edit"_s);
                           return press(u"Cancel"_s);
                       }
                       EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
                       press(u"OK"_s);
                   }});
}

TEST_F(TablePaneFaults, WithinADelete)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(table(u"ORDERS"_s));
                       boxes.expectAsk(mayDelete, boxes::Answer::No);
                       choose(key(table(u"ORDERS"_s)), u"mnu_TableDelete"_s);
                       boxes.verify();
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome =
                   [&] {
                       return wholeCatalog() + nodes() + gridNames() + QStringList{currentPane(), selectedKey()};
                   },
               .goOn =
                   [&] {
                       if (currentPane() == u"frmTable"_s) {
                           // What was deleted stays so, and the rest can be deleted from where it ended.
                           EXPECT_EQ(state(), u"Table Delete: Up1 OK Cancel"_s);
                           EXPECT_TRUE(find(key(table(u"ORDERS"_s))));
                           press(u"OK"_s);
                       } else {
                           EXPECT_FALSE(find(key(table(u"ORDERS"_s))));
                           click(key(level()));
                       }
                   }});
}

TEST_F(TablePaneFaults, WithinUndo)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(table(u"ITEMS"_s));
                       write(u"REMARKS"_s, u"new"_s);
                   },
               .act = [&](const auto&) { press(u"Undo"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       // What was typed is still there to be undone.
                       EXPECT_EQ(state(), u"Table Edit: Up1 OK Cancel Undo"_s);
                       EXPECT_EQ(text(u"REMARKS"_s), u"new"_s);
                       press(u"Undo"_s);
                   }});
}

TEST_F(TablePaneFaults, RetryWithinARenameLosesNothing)
{
    const auto rename = [&](int failing) {
        beginAnew();
        open(table(u"ORDERS"_s));
        write(u"TABLE_NAME"_s, u"sold"_s);
        write(u"FILE_SPECIFICATION"_s, u"s.dat"_s);
        statements.clear();
        if (failing > 0) {
            statements.failAt(failing);
            errors.expect(Press::Retry);
        }
        press(u"OK"_s);
        errors.verify();
    };
    rename(0);
    const QStringList sent = statements.statements();
    const QStringList expected = outcome();
    ASSERT_GT(sent.size(), 18);
    for (int failing = 1; failing <= sent.size(); ++failing) {
        SCOPED_TRACE(sent[failing - 1].toStdString());
        rename(failing);
        EXPECT_EQ(outcome(), expected);
        EXPECT_EQ(statements.statements().size(), sent.size() + 1);
    }
}
