#include "ColumnReorderFixture.h"
#include "modDatabase.h"

#include <ostream>

using namespace columnreorder;

TEST_F(ColumnReorder, AFailureBetweenThePassesLeavesTheNumbersNegativeAndARepeatMendsThem)
{
    expectComplete();
    reorder(columns, [&](DialogForm& dialog) {
        select(dialog, u"LEFT"_s);
        DialogScript::click(dialog, up);
        // The second reading of all columns, behind three statements for each of them.
        statements.clear();
        statements.failAt(11);
        errors.expect(Press::Ignore);
        DialogScript::click(dialog, ok);
        errors.verify();
        EXPECT_EQ(statements.statements().last(), readAll);
        EXPECT_EQ(numbers(), (QStringList{u"LEFT -20"_s, u"PRICE -7"_s, u"ARTICLE -3"_s}));
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(boxes.done());
        DialogScript::click(dialog, ok);
    });
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown()[0].number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmColumnReorder.cmdOK_Click"_s);
    EXPECT_EQ(errors.shown()[0].callStack.first(3),
              (QStringList{u"frmColumnReorder.cmdOK_Click"_s, u"frmColumnReorder.Display"_s,
                           u"mdiMain.mnu_ColumnReorder_Click"_s}));
    EXPECT_EQ(numbers(), (QStringList{u"ARTICLE 1"_s, u"LEFT 2"_s, u"PRICE 3"_s}));
}

TEST_F(ColumnReorder, AColumnThatCannotBeWrittenDoesNotHoldTheOthersUp)
{
    keepCatalog();
    const struct {
        int failing;
        QStringList numbers;
    } cases[] = {
        // Reading it, deleting it, and adding it again in the first pass; reading it in the second.
        {5, {u"ARTICLE 1"_s, u"PRICE 2"_s, u"LEFT 3"_s}},
        {6, {u"ARTICLE 1"_s, u"PRICE 2"_s, u"LEFT 3"_s}},
        {7, {u"ARTICLE 1"_s, u"LEFT 3"_s}},
        {15, {u"PRICE -7"_s, u"ARTICLE 1"_s, u"LEFT 3"_s}},
    };
    for (const auto& [failing, expected] : cases) {
        SCOPED_TRACE(failing);
        beginAnew();
        expectComplete();
        reorder(columns, [&, failing = failing](DialogForm& dialog) {
            statements.clear();
            statements.failAt(failing);
            errors.expect(Press::Ignore);
            DialogScript::click(dialog, ok);
            errors.verify();
        });
        EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateColumn"_s);
        EXPECT_EQ(errors.shown().back().callStack.value(1), u"frmColumnReorder.cmdOK_Click"_s);
        EXPECT_EQ(numbers(), expected);
    }
}

TEST_F(ColumnReorder, RetryLosesNothing)
{
    keepCatalog();
    const auto run = [&](int failing) {
        beginAnew();
        expectComplete();
        begin(columns);
        statements.clear();
        if (failing > 0) {
            statements.failAt(failing);
            errors.expect(Press::Retry);
        }
        dialogs.expect(dialogName, [&](DialogForm& dialog) {
            select(dialog, u"LEFT"_s);
            DialogScript::click(dialog, up);
            DialogScript::click(dialog, ok);
        });
        choose(key(columns), u"mnu_ColumnReorder"_s);
        dialogs.verify();
        boxes.verify();
        errors.verify();
        EXPECT_FALSE(forms::loaded(dialogName));
    };
    const auto outcome = [&] { return wholeCatalog() + gridNames() + QStringList{currentPane(), statusText()}; };
    run(0);
    const QStringList sent = statements.statements();
    const QStringList expected = outcome();
    ASSERT_GE(sent.size(), 21);
    for (int failing = 1; failing <= sent.size(); ++failing) {
        SCOPED_TRACE(sent[failing - 1].toStdString());
        run(failing);
        EXPECT_EQ(outcome(), expected);
        QStringList all = sent;
        all.insert(failing - 1, sent[failing - 1]);
        EXPECT_EQ(statements.statements(), all);
    }
}

TEST_F(ColumnReorder, AFailingListIsReportedWithItsStatementAndConfirmsNothing)
{
    const QString routine = u"frmColumnReorder.chkSortAlpha_Click"_s;
    errors.expect(Press::Ignore).expect(Press::Ignore);
    expectComplete();
    begin(columns);
    statements.failAt(1);
    dialogs.expect(dialogName, [&](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), QStringList());
        statements.failAt(1);
        DialogScript::click(dialog, sort);
        EXPECT_EQ(names(dialog), QStringList());
        DialogScript::click(dialog, ok);
    });
    choose(key(columns), u"mnu_ColumnReorder"_s);
    dialogs.verify();
    ASSERT_EQ(errors.shown().size(), 2u);
    const QStringList asked{byNumber, byName};
    for (qsizetype k = 0; k < asked.size(); ++k) {
        const ScriptedErrorForm::Shown& shown = errors.shown()[static_cast<std::size_t>(k)];
        EXPECT_EQ(shown.number, u"ODBC Error"_s);
        EXPECT_EQ(shown.trappedIn, routine);
        EXPECT_EQ(shown.additional, modDatabase::FormatSQL(asked.at(k)));
        EXPECT_EQ(shown.callStack.first(3),
                  (QStringList{routine, u"frmColumnReorder.Display"_s, u"mdiMain.mnu_ColumnReorder_Click"_s}));
    }
    EXPECT_EQ(numbers(), asItWas);
}

TEST_F(ColumnReorder, ANumberThatIsNullIsReportedBeforeAnythingIsWritten)
{
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = NULL WHERE COLUMN_NAME = 'LEFT'"_s);
    const QStringList catalog = wholeCatalog();
    errors.expect(Press::Ignore);
    reorder(columns, [&](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), (QStringList{u"LEFT"_s, u"ARTICLE"_s, u"PRICE"_s}));
        DialogScript::click(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        DialogScript::click(dialog, cancel);
    });
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown()[0].number, u"94"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmColumnReorder.cmdOK_Click"_s);
    EXPECT_EQ(wholeCatalog(), catalog);
}
