#include "DatabasePaneFixture.h"

#include "FaultSweep.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace databasepane;

namespace
{

class DatabasePaneFaults : public DatabasePane
{
protected:
    /// All that shows of the pane and the catalog.
    QStringList outcome() const
    {
        QStringList all = wholeCatalog() + wholeTree() + QStringList{currentPane(), selectedKey()};
        if (currentPane() == u"frmDatabase"_s)
            all += QStringList{paneTitle(), state()} + texts(databaseColumns);
        return all;
    }

    void SetUp() override
    {
        DatabasePane::SetUp();
        keepCatalog();
    }

    /// Reads the level of the databases anew, as it is when a failure has emptied it.
    void reopenCollection()
    {
        clickExpander(key());
        expandTo(key({u"DB"_s}));
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(DatabasePaneFaults, WithinOpeningADatabase)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(database(u"DEPOT"_s));
                   },
               .act = [&](const auto&) { click(key(database(u"DEPOT"_s))); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key(database(u"DEPOT"_s))); }});
}

TEST_F(DatabasePaneFaults, WithinBeginningAnAdd)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(database(u"DEPOT"_s));
                       press(u"Cancel"_s);
                   },
               .act = [&](const auto&) { press(u"DB Add"_s); },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       // A list that could not be read stays as it was, and the add goes on.
                       return withoutFault.sliced(statement);
                   },
               .goOn =
                   [&] {
                       if (!state().startsWith("DB Add"_L1))
                           press(u"DB Add"_s);
                   }});
}

TEST_F(DatabasePaneFaults, WithinCancel)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(database(u"DEPOT"_s));
                       write(u"REMARKS"_s, u"x"_s);
                   },
               .act = [&](const auto&) { press(u"Cancel"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       click(key(database(u"DEPOT"_s)));
                       press(u"Cancel"_s);
                   }});
}

TEST_F(DatabasePaneFaults, WithinAnAdd)
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
                       // Looking for the name and adding it; behind them the tree and the lists of drivers.
                       return statement > 2 ? withoutFault.sliced(statement) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (text(u"DATABASE_NAME"_s).isEmpty()) {
                           EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel"_s);
                           reopenCollection();
                           return choose(key({u"DB"_s}), u"mnu_DBAdd"_s);
                       }
                       EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel Undo"_s);
                       press(u"OK"_s);
                   }});
}

TEST_F(DatabasePaneFaults, WithinAChange)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(database(u"DEPOT"_s));
                       write(u"REMARKS"_s, u"new"_s);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome = [&] { return wholeCatalog() + nodes() + texts(databaseColumns) + QStringList{state()}; },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       return statement == 2 ? withoutFault.sliced(2) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (text(u"DATABASE_NAME"_s).isEmpty()) {
                           // Only the last reading failed.
                           EXPECT_EQ(state(), displayState);
                           press(u"DB Edit"_s);
                           return press(u"Cancel"_s);
                       }
                       if (state() == displayState) {
                           reopenCollection();
                           click(key(database(u"DEPOT"_s)));
                           return press(u"Cancel"_s);
                       }
                       EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel Undo"_s);
                       press(u"OK"_s);
                   }});
}

TEST_F(DatabasePaneFaults, WithinADelete)
{
    const auto remove = [&](boxes::Answer answer) {
        boxes.expectAsk(mayDelete, answer);
        choose(key(database(u"SALES"_s)), u"mnu_DBDelete"_s);
        boxes.verify();
    };
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(database(u"SALES"_s));
                       remove(boxes::Answer::No);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome =
                   [&] {
                       return wholeCatalog() + nodes() + gridNames() + QStringList{currentPane(), selectedKey()};
                   },
               .goOn =
                   [&] {
                       if (currentPane() == u"frmDatabase"_s) {
                           // What was deleted stays so, and the rest can be deleted from where it ended.
                           EXPECT_EQ(state(), u"DB Delete: Up1 OK Cancel"_s);
                           EXPECT_TRUE(find(key(database(u"SALES"_s))));
                           press(u"OK"_s);
                       } else {
                           EXPECT_FALSE(find(key(database(u"SALES"_s))));
                           click(key({u"DB"_s}));
                       }
                   }});
}

TEST_F(DatabasePaneFaults, WithinUndo)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(database(u"DEPOT"_s));
                       write(u"REMARKS"_s, u"new"_s);
                   },
               .act = [&](const auto&) { press(u"Undo"_s); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key(database(u"DEPOT"_s))); }});
}

TEST_F(DatabasePaneFaults, RetryWithinARenameLosesNothing)
{
    const auto rename = [&](int failing) {
        beginAnew();
        open(database(u"SALES"_s));
        write(u"DATABASE_NAME"_s, u"trade"_s);
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
    ASSERT_GT(sent.size(), 25);
    for (int failing = 1; failing <= sent.size(); ++failing) {
        SCOPED_TRACE(sent[failing - 1].toStdString());
        rename(failing);
        EXPECT_EQ(outcome(), expected);
        EXPECT_EQ(statements.statements().size(), sent.size() + 1);
    }
}

TEST_F(DatabasePaneFaults, AnIgnoreWithinARenameEndsOneRoutineAndStandsBalanced)
{
    beginAnew();
    open(database(u"SALES"_s));
    write(u"DATABASE_NAME"_s, u"trade"_s);
    statements.clear();
    // The adding of the row that has just been deleted under its former name.
    statements.failAt(4);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateDatabase"_s);
    // The routine has ended, the command has not.
    EXPECT_EQ(sent().mid(4, 1), QStringList{updateDatabase(u"TRADE"_s, {}, {}, u"DISAM"_s, {}, {}, {})});
    EXPECT_EQ(sent().back(), readDatabase(u"TRADE"_s));
    EXPECT_EQ(databases().size(), 1);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(nodes(), QStringList{u"DEPOT"_s});
}
