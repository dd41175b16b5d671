#include "UsersGridFixture.h"

#include "FaultSweep.h"

#include <algorithm>
#include <functional>
#include <ostream>

using namespace Qt::StringLiterals;
using namespace usersgrid;

namespace
{

/// The three grids of the room with failing statements.
class UsersGridFaults : public UsersGridTest
{
protected:
    void SetUp() override
    {
        UsersGridTest::SetUp();
        keepCatalog();
    }

    static QStringList ofUsers() { return {u"US"_s}; }
    static QStringList ofSales() { return ofDatabase(u"SALES"_s); }
    static QStringList ofOrders() { return ofTable(u"SALES"_s, u"ORDERS"_s); }

    /// A grid that is read anew has its rows in order.
    QStringList outcome(const QStringList& level) const
    {
        QStringList shown = rows();
        shown.sort();
        return ownRows() + children(key(level)) + shown;
    }

    void sweepShowing(const QStringList& level)
    {
        sweep.run({.prepare =
                       [&] {
                           beginAnew();
                           expandTo(key(level.first(level.size() - 1)));
                       },
                   .act = [&](const auto&) { click(key(level)); },
                   .outcome =
                       [&] {
                           return rows() + QStringList{currentPane(), current()};
                       },
                   .goOn = [&] { click(key(level)); }});
    }

    /// Leaves a row that has been filled in. A row that could not be written keeps the current cell, and is written the
    /// next time.
    void sweepLeaving(const QStringList& level, const std::function<void()>& fillIn)
    {
        QString filledIn;
        QStringList written;
        sweep.run({.prepare =
                       [&] {
                           beginAnew();
                           open(level);
                           fillIn();
                           filledIn = current();
                       },
                   .act = [&](const auto&) { leave(); },
                   .outcome =
                       [&] {
                           written = ownRows();
                           return outcome(level);
                       },
                   .afterIgnore =
                       [](int statement, const QStringList& withoutFault) {
                           const QStringList rest = withoutFault.sliced(statement - 1);
                           const bool writes = std::any_of(rest.begin(), rest.end(), [](const QString& sent) {
                               return !sent.startsWith("SELECT"_L1);
                           });
                           // The tree reads its level anew although it could not do so the first time.
                           return writes ? QStringList() : rest.sliced(1);
                       },
                   .goOn =
                       [&] {
                           if (ownRows() == written) {
                               // Only the tree could not read.
                               clickExpander(key());
                               return expandTo(key(level));
                           }
                           EXPECT_EQ(current(), filledIn);
                           leave();
                       }});
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(UsersGridFaults, WithinShowingUsers)
{
    sweepShowing(ofUsers());
}

TEST_F(UsersGridFaults, WithinShowingRightsOnADatabase)
{
    sweepShowing(ofSales());
}

TEST_F(UsersGridFaults, WithinShowingRightsOnATable)
{
    sweepShowing(ofOrders());
}

TEST_F(UsersGridFaults, WithinAnAddOfAUser)
{
    sweepLeaving(ofUsers(), [&] {
        change(blankRow(), u"User Name"_s, u"new"_s);
        change(blankRow(), u"User Password"_s, u"fresh"_s);
    });
}

TEST_F(UsersGridFaults, WithinAnUpdateOfAUser)
{
    sweepLeaving(ofUsers(), [&] {
        change(u"CLERK"_s, u"User Password"_s, u"fresh"_s);
        change(u"CLERK"_s, u"Remarks"_s, u"x"_s);
    });
}

TEST_F(UsersGridFaults, WithinARenameOfAUser)
{
    sweepLeaving(ofUsers(), [&] {
        change(u"CLERK"_s, u"User Name"_s, u"teller"_s);
        change(2, u"User Password"_s, u"fresh"_s);
    });
}

TEST_F(UsersGridFaults, WithinAnAddOfRightsOnADatabase)
{
    sweepLeaving(ofSales(), [&] {
        change(blankRow(), u"User Name"_s, u"b"_s);
        change(blankRow(), u"Database Password"_s, u"fresh"_s);
    });
}

TEST_F(UsersGridFaults, WithinAnUpdateOfRightsOnADatabase)
{
    sweepLeaving(ofSales(), [&] {
        change(u"CLERK"_s, u"Database Password"_s, u"fresh"_s);
        change(u"CLERK"_s, u"Allow Delete"_s, u"y"_s);
    });
}

TEST_F(UsersGridFaults, WithinAnotherUserOfRightsOnADatabase)
{
    sweepLeaving(ofSales(), [&] {
        change(u"CLERK"_s, u"User Name"_s, u"b"_s);
        change(0, u"Database Password"_s, u"fresh"_s);
    });
}

TEST_F(UsersGridFaults, WithinAnAddOfRightsOnATable)
{
    sweepLeaving(ofOrders(), [&] {
        change(blankRow(), u"User Name"_s, u"b"_s);
        change(blankRow(), u"Remarks"_s, u"x"_s);
    });
}

TEST_F(UsersGridFaults, WithinAnUpdateOfRightsOnATable)
{
    sweepLeaving(ofOrders(), [&] {
        change(u"CLERK"_s, u"Allow Delete"_s, u"y"_s);
        change(u"CLERK"_s, u"Remarks"_s, u"x"_s);
    });
}

/// The driver refuses the statement that would remove the row, however often it is sent.
TEST_F(UsersGridFaults, WithinAnotherUserOfRightsOnATable)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(ofOrders());
                       change(u"CLERK"_s, u"User Name"_s, u"b"_s);
                   },
               .act =
                   [&](const auto& fault) {
                       if (!fault || fault->answer == Press::Retry)
                           errors.expect(Press::Ignore);
                       leave();
                   },
               .outcome = [&] { return ownRows() + rows() + QStringList{current()}; },
               .goOn =
                   [&] {
                       errors.expect(Press::Ignore);
                       leave();
                       errors.verify();
                   }});
}
