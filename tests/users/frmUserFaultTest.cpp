#include "UserPaneFixture.h"

#include "FaultSweep.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace userpane;

namespace
{

class UserPaneFaults : public UserPane
{
protected:
    /// All that shows of the pane and the catalog.
    QStringList outcome() const
    {
        QStringList all = ownRows() + wholeTree() + QStringList{currentPane(), selectedKey()};
        if (currentPane() == u"frmUser"_s)
            all += shownPane() + texts(shownColumns) + passwords(u"USER_PASSWORD"_s);
        return all;
    }

    void SetUp() override
    {
        UserPane::SetUp();
        keepCatalog();
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(UserPaneFaults, WithinOpeningAUser)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(user(u"CLERK"_s));
                   },
               .act = [&](const auto&) { click(key(user(u"CLERK"_s))); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key(user(u"CLERK"_s))); }});
}

TEST_F(UserPaneFaults, WithinAnAdd)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       beginToAdd();
                       write(u"USER_NAME"_s, u"new"_s);
                       writePassword(u"USER_PASSWORD"_s, u"secret"_s);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
                       EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{u"SECRET"_s, u"SECRET"_s}));
                       press(u"OK"_s);
                   }});
}

TEST_F(UserPaneFaults, WithinAChange)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(user(u"CLERK"_s));
                       writePassword(u"USER_PASSWORD"_s, u"secret"_s);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       // Only the last reading failed where the pane has been emptied.
                       if (text(u"USER_NAME"_s).isEmpty()) {
                           press(u"User Edit"_s);
                           return press(u"Cancel"_s);
                       }
                       EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
                       press(u"OK"_s);
                   }});
}

TEST_F(UserPaneFaults, WithinADelete)
{
    const auto remove = [&](boxes::Answer answer) {
        boxes.expectAsk(mayDelete, answer);
        choose(key(user(u"CLERK"_s)), u"mnu_UserDelete"_s);
        boxes.verify();
    };
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(user(u"CLERK"_s));
                   },
               .act =
                   [&](const auto& fault) {
                       // Describe and read; a row that could not be read is not asked about.
                       if (fault && fault->answer == Press::Ignore && fault->statement <= 2)
                           return choose(key(user(u"CLERK"_s)), u"mnu_UserDelete"_s);
                       remove(boxes::Answer::Yes);
                   },
               .outcome =
                   [&] {
                       // The current pane has nothing of the user, and neither has the catalog.
                       return ownRows() + children(key({u"US"_s})) + children(key({u"DB"_s})) +
                              QStringList{currentPane()} + gridNames();
                   },
               .afterIgnore = [](int statement, const QStringList& withoutFault) -> QStringList {
                   // Describe, read, three deletes; behind them the tree and the grid, each for itself.
                   return statement > 5 ? withoutFault.sliced(statement) : QStringList();
               },
               .goOn =
                   [&] {
                       if (find(key(user(u"CLERK"_s))))
                           return remove(boxes::Answer::Yes);
                       // A level that could not be read has nothing left to click upon.
                       clickExpander(key());
                       expandTo(key({u"US"_s}));
                       expandTo(key({u"DB"_s}));
                       click(key({u"US"_s}));
                   }});
}

TEST_F(UserPaneFaults, RetryWithinARenameLosesNothing)
{
    const auto rename = [&](int failing) {
        beginAnew();
        begin(ofDatabase(u"SALES"_s, u"CLERK"_s));
        begin(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s));
        open(user(u"CLERK"_s));
        write(u"USER_NAME"_s, u"teller"_s);
        statements.clear();
        if (failing > 0) {
            statements.failAt(failing);
            errors.expect(Press::Retry);
        }
        boxes.expectAsk(wantsPassword, boxes::Answer::No);
        press(u"OK"_s);
        errors.verify();
    };
    rename(0);
    const QStringList sent = statements.statements();
    const QStringList expected = outcome();
    ASSERT_GT(sent.size(), 20);
    for (int failing = 1; failing <= sent.size(); ++failing) {
        SCOPED_TRACE(sent[failing - 1].toStdString());
        rename(failing);
        EXPECT_EQ(outcome(), expected);
        EXPECT_EQ(statements.statements().size(), sent.size() + 1);
    }
}

TEST_F(UserPaneFaults, IgnoreWithinARenameLosesOneRowAtTheMost)
{
    const auto rename = [&](int failing) {
        beginAnew();
        begin(ofDatabase(u"SALES"_s, u"CLERK"_s));
        begin(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s));
        open(user(u"CLERK"_s));
        write(u"USER_NAME"_s, u"teller"_s);
        statements.clear();
        if (failing > 0) {
            statements.failAt(failing);
            errors.expect(Press::Ignore);
        }
        // A name that could not be looked up is not gone on with.
        if (failing != 1)
            boxes.expectAsk(wantsPassword, boxes::Answer::No);
        press(u"OK"_s);
        errors.verify();
        boxes.verify();
    };
    rename(0);
    const QStringList sent = statements.statements();
    const qsizetype rows = ownRows().size();
    for (int failing = 1; failing <= sent.size(); ++failing) {
        SCOPED_TRACE(sent[failing - 1].toStdString());
        rename(failing);
        // What was removed and could not be added is the one that is gone.
        const bool isLost = sent[failing - 1].startsWith("INSERT"_L1);
        EXPECT_EQ(ownRows().size(), rows - (isLost ? 1 : 0));
        EXPECT_TRUE(ownRows().contains(storedBoss));
        const bool isDone = state() == displayState;
        EXPECT_TRUE(isDone || state().startsWith("User Edit: Up1 OK Cancel"_L1)) << state().toStdString();
        // The pane goes on from here.
        press(isDone ? u"User Edit"_s : u"Cancel"_s);
        press(u"Up1"_s);
        EXPECT_EQ(currentPane(), u"frmUsers"_s);
    }
}

TEST_F(UserPaneFaults, WithinUndoCancelEditAndUp)
{
    const QStringList clerk = user(u"CLERK"_s);
    const auto enter = [&] {
        beginAnew();
        open(clerk);
        writePassword(u"USER_PASSWORD"_s, u"secret"_s);
    };
    const auto show = [&] {
        press(u"User Edit"_s);
        press(u"Cancel"_s);
    };
    {
        SCOPED_TRACE("Undo");
        sweep.run({.prepare = enter,
                   .act = [&](const auto&) { press(u"Undo"_s); },
                   .outcome = [&] { return outcome(); },
                   .goOn = [&] { click(key(clerk)); }});
    }
    {
        SCOPED_TRACE("Cancel");
        sweep.run({.prepare = enter,
                   .act = [&](const auto&) { press(u"Cancel"_s); },
                   .outcome = [&] { return outcome(); },
                   .goOn = show});
    }
    {
        SCOPED_TRACE("Edit");
        sweep.run({.prepare =
                       [&] {
                           enter();
                           press(u"Cancel"_s);
                       },
                   .act = [&](const auto&) { press(u"User Edit"_s); },
                   .outcome = [&] { return outcome(); },
                   .goOn = [&] { click(key(clerk)); }});
    }
    SCOPED_TRACE("Up");
    sweep.run({.prepare = enter,
               .act = [&](const auto&) { press(u"Up1"_s); },
               .outcome =
                   [&] {
                       return QStringList{currentPane(), selectedKey()} + gridNames();
                   },
               .goOn = [&] { click(key({u"US"_s})); }});
}
