#include "FilePaneFixture.h"

#include "FaultSweep.h"

#include <algorithm>
#include <ostream>

using namespace Qt::StringLiterals;
using namespace filepane;

namespace
{

class FilePaneFaults : public FilePane
{
protected:
    /// All that shows of the pane and the catalog.
    QStringList outcome() const
    {
        QStringList all = wholeCatalog() + wholeTree() + QStringList{currentPane(), selectedKey()};
        if (currentPane() == u"frmFile"_s)
            all += QStringList{paneTitle(), state()} + texts(fileColumns);
        return all;
    }

    void SetUp() override
    {
        FilePane::SetUp();
        keepCatalog();
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(FilePaneFaults, WithinOpeningAFile)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(file(u"PAYROLL"_s));
                   },
               .act = [&](const auto&) { click(key(file(u"PAYROLL"_s))); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key(file(u"PAYROLL"_s))); }});
}

TEST_F(FilePaneFaults, WithinAnAdd)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       beginToAdd();
                       fillIn(u"new"_s);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       EXPECT_EQ(state(), u"File Add: Up1 OK Cancel Undo"_s);
                       press(u"OK"_s);
                   }});
}

TEST_F(FilePaneFaults, WithinAChange)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(file(u"PAYROLL"_s));
                       write(u"RECORD_SIZE"_s, u"99"_s);
                   },
               .act = [&](const auto&) { press(u"OK"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       // Only the last reading failed where the pane has been emptied.
                       if (text(u"FILE_NAME"_s).isEmpty()) {
                           press(u"File Edit"_s);
                           return press(u"Cancel"_s);
                       }
                       EXPECT_EQ(state(), u"File Edit: Up1 OK Cancel Undo"_s);
                       press(u"OK"_s);
                   }});
}

TEST_F(FilePaneFaults, WithinADelete)
{
    const auto remove = [&](int boxesThatCome) {
        if (boxesThatCome > 0)
            boxes.expectAsk(mayDelete(), boxes::Answer::Yes);
        if (boxesThatCome > 1)
            boxes.expectAsk(takesAlong(u"STOCK"_s, u"5 Fields"_s), boxes::Answer::Yes);
        if (boxesThatCome > 2)
            boxes.expectAsk(isReferenced(u"ITEMS"_s), boxes::Answer::Yes);
        choose(key(file(u"STOCK"_s)), u"mnu_FileDelete"_s);
        boxes.verify();
    };
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(file(u"STOCK"_s));
                   },
               .act =
                   [&](const auto& fault) {
                       // Describe, read, count, look for tables, delete, delete.
                       const bool isIgnored = fault && fault->answer == Press::Ignore;
                       remove(isIgnored ? std::max(0, fault->statement - 2) : 3);
                   },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       EXPECT_TRUE(find(key(file(u"STOCK"_s))));
                       if (!files().filter(u"STOCK"_s).isEmpty() || !fieldsOf(u"STOCK"_s).isEmpty())
                           remove(3);
                   }});
}

TEST_F(FilePaneFaults, WithinTheSizeOfARecord)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       open(file(u"PAYROLL"_s));
                       write(u"RECORD_SIZE"_s, u"99"_s);
                   },
               .act = [&](const auto&) { clickButton(u"cmdCalcRecordSize"_s); },
               .outcome = [&] { return outcome(); },
               .goOn =
                   [&] {
                       EXPECT_EQ(text(u"RECORD_SIZE"_s), u"99"_s);
                       clickButton(u"cmdCalcRecordSize"_s);
                   }});
}

TEST_F(FilePaneFaults, RetryWithinARenameLosesNothing)
{
    const auto rename = [&](int failing) {
        beginAnew();
        open(file(u"STOCK"_s));
        write(u"FILE_NAME"_s, u"shelf"_s);
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
    ASSERT_GT(sent.size(), 20);
    for (int failing = 1; failing <= sent.size(); ++failing) {
        SCOPED_TRACE(sent[failing - 1].toStdString());
        rename(failing);
        EXPECT_EQ(outcome(), expected);
        EXPECT_EQ(statements.statements().size(), sent.size() + 1);
    }
}
