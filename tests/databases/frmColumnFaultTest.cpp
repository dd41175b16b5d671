#include "ColumnPaneFixture.h"

#include "FaultSweep.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace columnpane;

namespace
{

class ColumnPaneFaults : public ColumnPane
{
protected:
    QStringList outcome() const
    {
        QStringList all = wholeCatalog() + wholeTree() + QStringList{currentPane(), selectedKey()};
        if (currentPane() == u"frmColumn"_s)
            all += QStringList{paneTitle(), state()} + texts(allColumns) + ticked() + open();
        return all;
    }

    void SetUp() override
    {
        ColumnPane::SetUp();
        recordCollection();
        change(u"UPDATE TW_TABLE SET CRITERIA = 'SALES_ITEMS.PRICE > 5' WHERE TABLE_NAME = 'ITEMS'"_s);
        keepCatalog();
    }

    /// What a user does about a level that could not be read: it is empty, and has nothing to click upon.
    void readColumnsAnew()
    {
        const QString table = key(items().first(4));
        clickExpander(table);
        clickExpander(table);
        clickExpander(key(items()));
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(ColumnPaneFaults, WithinOpeningAColumn)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(column(u"PRICE"_s));
                   },
               .act = [&](const auto&) { click(key(column(u"PRICE"_s))); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key(column(u"PRICE"_s))); }});
}

TEST_F(ColumnPaneFaults, WithinBeginningAnAdd)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(column(u"PRICE"_s));
                       press(u"Cancel"_s);
                   },
               .act = [&](const auto&) { press(u"Column Add"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       if (!state().startsWith("Column Add"_L1))
                           press(u"Column Add"_s);
                   }});
}

TEST_F(ColumnPaneFaults, WithinCancel)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(column(u"PRICE"_s));
                       write(u"REMARKS"_s, u"x"_s);
                   },
               .act = [&](const auto&) { press(u"Cancel"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       click(key(column(u"PRICE"_s)));
                       press(u"Cancel"_s);
                   }});
}

TEST_F(ColumnPaneFaults, WithinAChange)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(column(u"ARTICLE"_s));
                       write(u"REMARKS"_s, u"x"_s);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome = [&] { return outcome(); },
               .afterIgnore = [&](int statement, const QStringList& sent) -> QStringList {
                   // A level that could not be read ends with itself.
                   return statement == 3 ? QStringList{sent[3]} : QStringList();
               },
               .goOn =
                   [&] {
                       if (state().startsWith("Column Edit"_L1))
                           return press(u"OK"_s);
                       readColumnsAnew();
                       click(key(column(u"ARTICLE"_s)));
                       press(u"Cancel"_s);
                   }});
}

TEST_F(ColumnPaneFaults, WithinAnAdd)
{
    sweep.run(
        {.prepare =
             [&] {
                 beginAnew();
                 beginToAdd();
                 fillIn(u"new"_s, u"SOLD"_s, u"INTEGER"_s);
             },
         .act = [&](const auto&) { press(u"OK"_s); },
         .outcome = [&] { return wholeCatalog() + wholeTree() + texts(allColumns) + ticked() + open(); },
         .afterIgnore = [&](int statement, const QStringList& sent) -> QStringList {
             // The number is proposed for itself, and asked for again once it is needed.
             if (statement == 1)
                 return QStringList{nameIsTaken(u"NEW"_s), numberIsTaken({}), sent[3], nextNumber} + sent.sliced(4);
             // The tree and the lists fail each for itself.
             return statement == 8 ? sent.sliced(8) : QStringList();
         },
         .goOn =
             [&] {
                 if (storedColumn(u"NEW"_s).isEmpty())
                     return press(u"OK"_s);
                 readColumnsAnew();
                 choose(key(items()), u"mnu_ColumnAddNew"_s);
             }});
}

TEST_F(ColumnPaneFaults, WithinADelete)
{
    const auto remove = [&](int boxesThatCome) {
        if (boxesThatCome > 0)
            boxes.expectAsk(mayDelete, boxes::Answer::Yes);
        if (boxesThatCome > 1)
            boxes.expectAsk(isInCriteria, boxes::Answer::Yes);
        choose(key(column(u"PRICE"_s)), u"mnu_ColumnDelete"_s);
        boxes.verify();
    };
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(column(u"PRICE"_s));
                   },
               .act =
                   [&](const auto& fault) {
                       // Describe, read, look into the criteria, delete; the tree behind that.
                       const bool isIgnored = fault && fault->answer == Press::Ignore;
                       remove(!isIgnored || fault->statement > 3 ? 2 : fault->statement > 2 ? 1 : 0);
                   },
               .outcome = [&] { return outcome(); },
               .afterIgnore = [&](int statement, const QStringList& sent) -> QStringList {
                   return statement > 4 ? sent.sliced(statement) : QStringList();
               },
               .goOn =
                   [&] {
                       if (!storedColumn(u"PRICE"_s).isEmpty())
                           return remove(2);
                       readColumnsAnew();
                       click(key(items()));
                   }});
}

TEST_F(ColumnPaneFaults, RetryWithinARenameLosesNothing)
{
    const auto rename = [&](int failing) {
        beginAnew();
        open(column(u"ARTICLE"_s));
        clear(u"DISPLAY_NAME"_s);
        write(u"COLUMN_NAME"_s, u"item"_s);
        write(u"COLUMN_NUMBER"_s, u"8"_s);
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
