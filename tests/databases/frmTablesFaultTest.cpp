#include "TablePaneFixture.h"

#include "CellGrid.h"
#include "FaultSweep.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace tablepane;

namespace
{

class TablesGridFaults : public WithItems<GridTest>
{
protected:
    void SetUp() override
    {
        WithItems<GridTest>::SetUp();
        keepCatalog();
    }

    void openAnew()
    {
        beginAnew();
        open(level());
    }
    void leave() { clickBeside(); }
    QStringList outcome() const { return tables() + nodes() + rows(); }

    /// Reads the level and the grid anew.
    void readAnew()
    {
        clickExpander(key());
        expandTo(key(level()));
        click(key(level()));
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(TablesGridFaults, WithinShowing)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       expandTo(key(level()));
                   },
               .act = [&](const auto&) { click(key(level())); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key(level())); }});
}

TEST_F(TablesGridFaults, WithinARename)
{
    const QString renamed = u"WARES||TABLE|EMPTY|items.dat|2|CODE <> 'x'|old one"_s;
    sweep.run({.prepare =
                   [&] {
                       openAnew();
                       change(u"ITEMS"_s, u"Display Name"_s, {});
                       change(u"ITEMS"_s, u"Table Name"_s, u"wares"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return tables() + nodes(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       // The tree reads its level anew although it could not do so the first time.
                       return statement == 4 ? withoutFault.sliced(4) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (tables().contains(renamed))
                           return readAnew();
                       EXPECT_EQ(current(), u"0 Table Name"_s);
                       EXPECT_EQ(cell(0, u"Table Name"_s), u"WARES"_s);
                       leave();
                   }});
}

TEST_F(TablesGridFaults, WithinAnAdd)
{
    sweep.run({.prepare =
                   [&] {
                       openAnew();
                       change(blankRow(), u"Table Name"_s, u"z"_s);
                       change(blankRow(), u"File Name"_s, u"pay"_s);
                       change(blankRow(), u"File Specification"_s, u"z.dat"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       return statement == 3 ? withoutFault.sliced(3) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (tables().contains(u"Z||TABLE|PAYROLL|z.dat|0||"_s))
                           return readAnew();
                       EXPECT_EQ(current(), u"2 File Specification"_s);
                       leave();
                   }});
}

TEST_F(TablesGridFaults, WithinAChange)
{
    sweep.run({.prepare =
                   [&] {
                       openAnew();
                       change(u"ITEMS"_s, u"Remarks"_s, u"x"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       return statement == 2 ? withoutFault.sliced(2) : QStringList();
                   },
               .goOn =
                   [&] {
                       if (tables().first().endsWith(u"|x"_s))
                           return readAnew();
                       EXPECT_EQ(current(), u"0 Remarks"_s);
                       leave();
                   }});
}

TEST_F(TablesGridFaults, WithinCountingColumns)
{
    sweep.run({.prepare =
                   [&] {
                       openAnew();
                       change(u"ORDERS"_s, u"Number Columns"_s, u"9"_s);
                       statements.clear();
                   },
               .act = [&](const auto&) { pressLookUp(); },
               .outcome = [&] { return QStringList{editorText()}; },
               .goOn =
                   [&] {
                       EXPECT_EQ(editorText(), u"9"_s);
                       pressLookUp();
                   }});
}
