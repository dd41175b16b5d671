#include "DatabasePaneFixture.h"

#include "CellGrid.h"
#include "FaultSweep.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace databasepane;

namespace
{

class DatabasesGridFaults : public WithDepot<GridTest>
{
protected:
    void SetUp() override
    {
        WithDepot<GridTest>::SetUp();
        keepCatalog();
    }

    void openAnew()
    {
        beginAnew();
        open({u"DB"_s});
    }
    void leave() { clickBeside(); }
    QStringList outcome() const { return databases() + nodes() + rows(); }

    /// Reads the level and the grid anew.
    void readAnew()
    {
        clickExpander(key());
        expandTo(key({u"DB"_s}));
        click(key({u"DB"_s}));
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(DatabasesGridFaults, WithinShowing)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       expandTo(key({u"DB"_s}));
                   },
               .act = [&](const auto&) { click(key({u"DB"_s})); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key({u"DB"_s})); }});
}

TEST_F(DatabasesGridFaults, WithinARename)
{
    sweep.run({.prepare =
                   [&] {
                       openAnew();
                       change(u"SALES"_s, u"Database Name"_s, u"trade"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       // The tree reads its level anew although it could not do so the first time.
                       return statement == 4 ? withoutFault.sliced(4) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (databases().contains(u"TRADE||DISAM||||"_s))
                           return readAnew();
                       EXPECT_EQ(current(), u"1 Database Name"_s);
                       EXPECT_EQ(cell(1, u"Database Name"_s), u"TRADE"_s);
                       leave();
                   }});
}

TEST_F(DatabasesGridFaults, WithinAnAdd)
{
    sweep.run({.prepare =
                   [&] {
                       openAnew();
                       change(blankRow(), u"Database Name"_s, u"z"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       return statement == 3 ? withoutFault.sliced(3) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (databases().contains(u"Z||DISAM||||"_s))
                           return readAnew();
                       EXPECT_EQ(current(), u"2 Database Name"_s);
                       leave();
                   }});
}

TEST_F(DatabasesGridFaults, WithinAChange)
{
    sweep.run({.prepare =
                   [&] {
                       openAnew();
                       change(u"SALES"_s, u"Remarks"_s, u"x"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       return statement == 2 ? withoutFault.sliced(2) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (databases().contains(u"SALES||DISAM||||x"_s))
                           return readAnew();
                       EXPECT_EQ(current(), u"1 Remarks"_s);
                       leave();
                   }});
}
