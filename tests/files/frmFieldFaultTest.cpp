#include "FieldPaneFixture.h"

#include "FaultSweep.h"

#include <algorithm>
#include <ostream>

using namespace Qt::StringLiterals;
using namespace fieldpane;

namespace
{

class FieldPaneFaults : public FieldPane
{
protected:
    QStringList outcome() const
    {
        QStringList all = wholeCatalog() + wholeTree() + QStringList{currentPane(), selectedKey()};
        if (currentPane() == u"frmField"_s)
            all += QStringList{paneTitle(), state()} + texts(fieldColumns) + allLimits();
        return all;
    }

    void SetUp() override
    {
        FieldPane::SetUp();
        keepCatalog();
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(FieldPaneFaults, WithinOpeningAField)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(field(u"PRICE"_s));
                   },
               .act = [&](const auto&) { click(key(field(u"PRICE"_s))); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key(field(u"PRICE"_s))); }});
}

TEST_F(FieldPaneFaults, WithinAChangeWithItsColumns)
{
    const auto ok = [&](int boxesThatCome) {
        if (boxesThatCome > 0)
            boxes.expectAsk(columnsToo, boxes::Answer::Yes);
        if (boxesThatCome > 1)
            boxes.expectInform(u"Columns lengths updated"_s);
        press(u"OK"_s);
        boxes.verify();
    };
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(field(u"CODE"_s));
                       write(u"LENGTH"_s, u"12"_s);
                   },
               .act =
                   [&](const auto& fault) {
                       // Update, look for tables, update the columns, read.
                       const bool isIgnored = fault && fault->answer == Press::Ignore;
                       ok(!isIgnored || fault->statement == 4 ? 2 : std::min(1, fault->statement - 1));
                   },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       // Only the last reading failed where the pane has been emptied.
                       if (!text(u"LENGTH"_s).isEmpty())
                           return ok(2);
                       press(u"Field Edit"_s);
                       press(u"Cancel"_s);
                   }});
}

TEST_F(FieldPaneFaults, WithinADelete)
{
    const auto remove = [&](int boxesThatCome) {
        if (boxesThatCome > 0)
            boxes.expectAsk(mayDelete, boxes::Answer::Yes);
        if (boxesThatCome > 1)
            boxes.expectAsk(isUsed, boxes::Answer::Yes);
        choose(key(field(u"CODE"_s)), u"mnu_FieldDelete"_s);
        boxes.verify();
    };
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(field(u"CODE"_s));
                   },
               .act =
                   [&](const auto& fault) {
                       // Describe, read, look for tables, look for columns, delete.
                       const bool isIgnored = fault && fault->answer == Press::Ignore;
                       remove(!isIgnored || fault->statement == 5 ? 2 : fault->statement > 2 ? 1 : 0);
                   },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { remove(2); }});
}

TEST_F(FieldPaneFaults, WithinAnAdd)
{
    sweep.run(
        {.prepare =
             [&] {
                 beginAnew();
                 beginToAdd();
                 fillIn(u"new"_s, u"STRING"_s);
             },
         .act = [&](const auto&) { press(u"OK"_s); },
         .outcome = [&] { return wholeCatalog() + wholeTree() + QStringList{selectedKey()} + texts(fieldColumns); },
         .afterIgnore = [&](int statement, const QStringList& sent) -> QStringList {
             // Behind the insert, the next number and the next offset fail each for itself.
             if (statement == 4)
                 return {nextNumber, sent[4]};
             return {};
         },
         .goOn =
             [&] {
                 if (storedField(u"NEW"_s).isEmpty())
                     return press(u"OK"_s);
                 EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel"_s);
                 clickButton(u"cmdNextFieldNumber"_s);
                 clickButton(u"cmdCalcOffset"_s);
             }});
}

TEST_F(FieldPaneFaults, RetryWithinARenameLosesNothing)
{
    const auto rename = [&](int failing) {
        beginAnew();
        open(field(u"CODE"_s));
        write(u"FIELD_NAME"_s, u"article"_s);
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
    ASSERT_GE(sent.size(), 8);
    for (int failing = 1; failing <= sent.size(); ++failing) {
        SCOPED_TRACE(sent[failing - 1].toStdString());
        rename(failing);
        EXPECT_EQ(outcome(), expected);
        EXPECT_EQ(statements.statements().size(), sent.size() + 1);
    }
}
