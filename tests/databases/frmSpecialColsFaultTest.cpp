#include "FaultSweep.h"
#include "SpecialColsFixture.h"

#include <ostream>

using namespace specialcols;

namespace
{

class SpecialColsFaults : public SpecialCols
{
protected:
    void SetUp() override
    {
        SpecialCols::SetUp();
        addColumn(u"RFA"_s, 1, 1);
        addColumn(u"RELATIVE_INDEX"_s, 1, 8, u"PRICE"_s);
        keepCatalog();
    }

    QStringList outcome() const
    {
        return wholeCatalog() + wholeTree() + offered() +
               QStringList{currentPane(), paneTitle(), selectedKey(),          ticked(),
                           enabled(),     state(),     indexed().currentText()};
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(SpecialColsFaults, WithinOpeningThePane)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(special);
                   },
               .act =
                   [&](const auto& fault) {
                       click(key(special));
                       // What could not be read cannot be changed either.
                       if (fault && fault->answer == Press::Ignore && fault->statement == 3) {
                           press(u"Special Column Edit"_s);
                           EXPECT_EQ(enabled(), QString());
                       }
                   },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       // The description and the list fail each for itself.
                       return withoutFault.sliced(statement);
                   },
               .goOn = [&] { click(key(special)); }});
}

TEST_F(SpecialColsFaults, WithinBeginningToEdit)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       openSpecial();
                   },
               .act = [&](const auto&) { press(u"Special Column Edit"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       press(u"Cancel"_s);
                       press(u"Special Column Edit"_s);
                   }});
}

TEST_F(SpecialColsFaults, WithinConfirming)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       openToEdit();
                       toggle(1);
                       toggle(3);
                       toggle(5);
                       choose(u"ARTICLE"_s);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       // Behind the writing, the list fails for itself.
                       return statement == 5 ? withoutFault.sliced(5) : QStringList();
                   },
               .goOn =
                   [&] {
                       // "OK" goes on where it was; behind it only the reading has failed.
                       if (state() == inEdit)
                           press(u"OK"_s);
                       else
                           click(key(special));
                   }});
}

TEST_F(SpecialColsFaults, AFailureWhileAnotherTableComesUpLeavesNothingOfTheFormerOneToConfirm)
{
    openToEdit();
    toggle(2);
    const QStringList orders{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"SCO"_s};
    expandTo(key(orders.first(4)));
    statements.clear();
    statements.failAt(2);
    errors.expect(Press::Ignore);
    click(key(orders));
    errors.verify();
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmSpecialCols.Display"_s);
    EXPECT_EQ(paneTitle(), u"ORDERS - Special Columns"_s);
    EXPECT_EQ(state(), u": Up1"_s);
    EXPECT_EQ(ticked(), QString());
    EXPECT_EQ(enabled(), QString());
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(SpecialColsFaults, TheColumnOfARelativeIndexShowsWithoutTheOthers)
{
    begin(special);
    statements.failAt(2);
    errors.expect(Press::Ignore);
    click(key(special));
    errors.verify();
    EXPECT_EQ(errors.shown().back().trappedIn, u"modBoundControls.PopulateList"_s);
    EXPECT_EQ(offered(), QStringList{u"PRICE"_s});
    EXPECT_EQ(indexed().currentText(), u"PRICE"_s);
    EXPECT_EQ(state(), atRest);
}
