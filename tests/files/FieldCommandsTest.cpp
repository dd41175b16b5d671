#include "FieldFixture.h"

#include "FaultSweep.h"
#include "GridTest.h"
#include "PaneRegistry.h"

#include <QLineEdit>
#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

const QString refusal = u"Please select a Field Collection or Field in a Field Collection to recalculate."_s;

QString recalculated(const QString& file)
{
    return "Field offsets recalulated for File '"_L1 + file + '\''_L1;
}

QString tooLong(int bytes)
{
    return u"WARNING!\nTotal length of Fields exceeds Record size by %1 bytes."_s.arg(bytes);
}

QString setOffset(int offset, const QString& field, int number)
{
    return u"UPDATE TW_FIELD SET OFFSET = %1 WHERE FILE_NAME = 'PAYROLL' AND FIELD_NAME = '%2' AND FIELD_NUMBER = %3"_s
        .arg(offset)
        .arg(field)
        .arg(number);
}

const QStringList readings{u"SELECT RECORD_SIZE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s,
                           u"SELECT * FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' ORDER BY OFFSET ASC"_s};

class FieldRecalculate : public FieldTest
{
protected:
    FieldRecalculate()
    {
        panes::Operations operations;
        operations.Display = {2, [this](Form&, const QStringList& keys) { displayed.append(keys.join('/')); }};
        panes::add(
            u"frmFields"_s, [] { return new Form(u"frmFields"_s); }, operations);
    }
    ~FieldRecalculate() override
    {
        forms::unload(u"frmFields"_s);
        panes::remove(u"frmFields"_s);
    }

    /// Recalculates from the context menu of a file's fields.
    void recalculate(const QString& file)
    {
        expandTo(key(collection(file)));
        statements.clear();
        displayed.clear();
        choose(key(collection(file)), u"mnu_FieldRecalculate"_s);
        boxes.verify();
    }

    QString shown(const QString& file) const { return datasource + '/'_L1 + file; }

    /// What the pane was asked to display.
    QStringList displayed;
};

} // namespace

TEST_F(FieldRecalculate, LaysTheFieldsOutInTheOrderOfTheirOffsets)
{
    start();
    boxes.expectInform(recalculated(u"PAYROLL"_s));
    recalculate(u"PAYROLL"_s);
    EXPECT_EQ(statements.statements(),
              readings + QStringList({setOffset(0, u"EMPLOYEE"_s, 1), setOffset(4, u"BONUS"_s, 3),
                                      setOffset(8, u"SALARY"_s, 2)}));
    EXPECT_EQ(displayed, QStringList{shown(u"PAYROLL"_s)});
}

TEST_F(FieldRecalculate, ClosesGapsAndUndoesOverlaps)
{
    change(u"UPDATE TW_FIELD SET OFFSET = 100 WHERE FIELD_NAME = 'SALARY'"_s);
    change(u"UPDATE TW_FIELD SET OFFSET = 2 WHERE FIELD_NAME = 'BONUS'"_s);
    start();
    boxes.expectInform(recalculated(u"PAYROLL"_s));
    recalculate(u"PAYROLL"_s);
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 2 8"_s, u"BONUS 3 4"_s}));
}

TEST_F(FieldRecalculate, FieldsOfOneOffsetComeOneBehindTheOther)
{
    change(u"UPDATE TW_FIELD SET OFFSET = 4 WHERE FIELD_NAME = 'SALARY'"_s);
    start();
    boxes.expectInform(recalculated(u"PAYROLL"_s));
    recalculate(u"PAYROLL"_s);
    const QStringList all = fieldsOf(u"PAYROLL"_s);
    EXPECT_TRUE(all == (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 2 8"_s, u"BONUS 3 4"_s}) ||
                all == (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 2 4"_s, u"BONUS 3 8"_s}))
        << all.join(',').toStdString();
}

TEST_F(FieldRecalculate, FieldsBeyondTheRecordAreWarnedOfAndStayWritten)
{
    change(u"UPDATE TW_FILE SET RECORD_SIZE = 9 WHERE FILE_NAME = 'PAYROLL'"_s);
    change(u"UPDATE TW_FIELD SET OFFSET = 90 WHERE FIELD_NAME = 'SALARY'"_s);
    start();
    boxes.expectInform(tooLong(3));
    boxes.expectInform(recalculated(u"PAYROLL"_s));
    recalculate(u"PAYROLL"_s);
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 2 8"_s, u"BONUS 3 4"_s}));
    EXPECT_EQ(displayed, QStringList{shown(u"PAYROLL"_s)});
}

TEST_F(FieldRecalculate, AFileWithoutARowHasNoRoomAtAll)
{
    start();
    expandTo(key(collection(u"PAYROLL"_s)));
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s);
    boxes.expectInform(tooLong(12));
    boxes.expectInform(recalculated(u"PAYROLL"_s));
    choose(key(collection(u"PAYROLL"_s)), u"mnu_FieldRecalculate"_s);
}

TEST_F(FieldRecalculate, AFileWithoutFieldsGetsNoUpdatesAndNoWarning)
{
    start();
    boxes.expectInform(recalculated(u"EMPTY"_s));
    recalculate(u"EMPTY"_s);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(displayed, QStringList{shown(u"EMPTY"_s)});
}

TEST_F(FieldRecalculate, AFieldNodeStandsForItsFile)
{
    start();
    expandTo(key(collection(u"PAYROLL"_s)));
    statements.clear();
    displayed.clear();
    boxes.expectInform(recalculated(u"PAYROLL"_s));
    choose(key(collection(u"PAYROLL"_s) + QStringList{u"fd=SALARY"_s}), u"mnu_FieldRecalculate"_s);
    EXPECT_EQ(statements.writes().size(), 3);
    EXPECT_EQ(displayed, QStringList{shown(u"PAYROLL"_s)});
}

TEST_F(FieldRecalculate, AnyOtherNodeIsRefused)
{
    start();
    expandTo(key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s}));
    expandTo(key(collection(u"PAYROLL"_s)));
    expandTo(key({u"US"_s}));
    const QStringList table{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s};
    const std::vector<QStringList> others{{},
                                          {u"FI"_s},
                                          {u"FI"_s, u"fi=PAYROLL"_s},
                                          {u"DB"_s},
                                          {u"DB"_s, u"db=SALES"_s},
                                          table,
                                          table + QStringList{u"CO"_s},
                                          table + QStringList{u"CO"_s, u"co=BUYER"_s},
                                          {u"US"_s},
                                          {u"US"_s, u"us=CLERK"_s}};
    statements.clear();
    displayed.clear();
    for (const QStringList& other : others) {
        SCOPED_TRACE(other.join('/').toStdString());
        window->setCurrentItem(window->NodeToDragItem(&node(key(other))));
        boxes.expectInform(refusal);
        window->mnu_FieldRecalculate_Click();
        boxes.verify();
    }
    window->setCurrentItem({});
    boxes.expectInform(refusal);
    window->mnu_FieldRecalculate_Click();
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(displayed, QStringList());
}

TEST_F(FieldRecalculate, WithoutAConnectionItEndsQuietly)
{
    const QString unreachable = datasource + u"Gone"_s;
    world.addUnreachableDatasource(unreachable);
    start();
    statements.clear();
    DragItem item;
    item.NodeType = u"FD"_s;
    item.Keys = {unreachable, u"PAYROLL"_s};
    window->setCurrentItem(item);
    expectUnreachable();
    window->mnu_FieldRecalculate_Click();
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(displayed, QStringList());
}

TEST_F(FieldRecalculate, ApostrophesAreDoubledAndOtherScriptsKept)
{
    const QString file = u"O'HARA🚀"_s;
    addFile(file, 10);
    addField(file, u"IT'S"_s, 5, 3, 2);
    addField(file, u"🚀\"Ü"_s, 9, 7, 4);
    start();
    boxes.expectInform(recalculated(file));
    recalculate(file);
    EXPECT_EQ(statements.writes(),
              (QStringList{u"UPDATE TW_FIELD SET OFFSET = 0 WHERE FILE_NAME = 'O''HARA🚀' AND FIELD_NAME = 'IT''S' "
                           "AND FIELD_NUMBER = 5"_s,
                           u"UPDATE TW_FIELD SET OFFSET = 2 WHERE FILE_NAME = 'O''HARA🚀' AND FIELD_NAME = '🚀\"Ü' "
                           "AND FIELD_NUMBER = 9"_s}));
    EXPECT_EQ(fieldsOf(file), (QStringList{u"IT'S 5 0"_s, u"🚀\"Ü 9 2"_s}));
    EXPECT_EQ(displayed, QStringList{shown(file)});
}

TEST_F(FieldRecalculate, AnOffsetBeyond32767IsAnOverflow)
{
    change(u"UPDATE TW_FIELD SET LENGTH = 20000 WHERE FILE_NAME = 'PAYROLL'"_s);
    start();
    errors.expect(Press::Ignore);
    recalculate(u"PAYROLL"_s);
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"6"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"mdiMain.mnu_FieldRecalculate_Click"_s);
    // What was written before stays, and nothing follows.
    EXPECT_EQ(statements.writes(), (QStringList{setOffset(0, u"EMPLOYEE"_s, 1), setOffset(20000, u"BONUS"_s, 3)}));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 2 8"_s, u"BONUS 3 20000"_s}));
    EXPECT_EQ(displayed, QStringList());
}

TEST_F(FieldRecalculate, AFieldWithoutALengthEndsItBehindItsOffset)
{
    change(u"UPDATE TW_FIELD SET OFFSET = OFFSET * 10 + 2 WHERE FILE_NAME = 'PAYROLL'"_s);
    change(u"UPDATE TW_FIELD SET LENGTH = NULL WHERE FIELD_NAME = 'BONUS'"_s);
    start();
    errors.expect(Press::Ignore);
    recalculate(u"PAYROLL"_s);
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"94"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"mdiMain.mnu_FieldRecalculate_Click"_s);
    EXPECT_EQ(errors.shown().front().additional, u"None"_s);
    EXPECT_EQ(statements.statements(),
              readings + QStringList({setOffset(0, u"EMPLOYEE"_s, 1), setOffset(4, u"BONUS"_s, 3)}));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 2 82"_s, u"BONUS 3 4"_s}));
    EXPECT_EQ(displayed, QStringList());
}

TEST_F(FieldRecalculate, AFileWithoutARecordSizeEndsItBeforeAnyOffset)
{
    change(u"UPDATE TW_FIELD SET OFFSET = 90 WHERE FIELD_NAME = 'SALARY'"_s);
    change(u"UPDATE TW_FILE SET RECORD_SIZE = NULL WHERE FILE_NAME = 'PAYROLL'"_s);
    start();
    errors.expect(Press::Ignore);
    recalculate(u"PAYROLL"_s);
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"94"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"mdiMain.mnu_FieldRecalculate_Click"_s);
    EXPECT_EQ(statements.statements(), readings.first(1));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 2 90"_s, u"BONUS 3 4"_s}));
    EXPECT_EQ(displayed, QStringList());
}

TEST_F(FieldRecalculate, AnOffsetOf32767IsStillOne)
{
    change(u"UPDATE TW_FIELD SET LENGTH = 32759 WHERE FIELD_NAME = 'EMPLOYEE'"_s);
    start();
    boxes.expectInform(tooLong(32755));
    boxes.expectInform(recalculated(u"PAYROLL"_s));
    recalculate(u"PAYROLL"_s);
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 2 32763"_s, u"BONUS 3 32759"_s}));
}

TEST_F(FieldRecalculate, ARecordSizeBeyond32767IsRoomEnough)
{
    change(u"UPDATE TW_FILE SET RECORD_SIZE = 65535 WHERE FILE_NAME = 'PAYROLL'"_s);
    start();
    boxes.expectInform(recalculated(u"PAYROLL"_s));
    recalculate(u"PAYROLL"_s);
}

TEST_F(FieldRecalculate, AFaultLeavesWhatWasWrittenAndTheNextTimeDoesItAll)
{
    change(u"UPDATE TW_FIELD SET OFFSET = 90 WHERE FIELD_NAME = 'SALARY'"_s);
    keepCatalog();
    FaultSweep sweep{statements, errors};
    const auto act = [&](bool isIgnored) {
        displayed.clear();
        if (!isIgnored)
            boxes.expectInform(recalculated(u"PAYROLL"_s));
        choose(key(collection(u"PAYROLL"_s)), u"mnu_FieldRecalculate"_s);
        boxes.verify();
        EXPECT_EQ(displayed.isEmpty(), isIgnored);
    };
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       expandTo(key(collection(u"PAYROLL"_s)));
                   },
               .act = [&](const auto& fault) { act(fault && fault->answer == Press::Ignore); },
               .outcome = [&] { return wholeCatalog() + wholeTree() + displayed; },
               .goOn = [&] { act(false); }});
}

/// The command in front of the real grid of fields.
class FieldRecalculateGrid : public GridTest
{
protected:
    void SetUp() override
    {
        GridTest::SetUp();
        change(u"UPDATE TW_FIELD SET OFFSET = OFFSET * 10 + 2 WHERE FILE_NAME = 'PAYROLL'"_s);
    }

    void recalculate()
    {
        boxes.expectInform(recalculated(u"PAYROLL"_s));
        statements.clear();
        choose(key(payroll), u"mnu_FieldRecalculate"_s);
        boxes.verify();
        EXPECT_EQ(currentPane(), u"frmFields"_s);
        EXPECT_EQ(paneTitle(), u"PAYROLL - Fields"_s);
        EXPECT_EQ(offsets(), (QStringList{u"BONUS 4"_s, u"EMPLOYEE 0"_s, u"SALARY 8"_s}));
        EXPECT_EQ(statements.statements().size(), 6);
        EXPECT_TRUE(statements.statements().back().startsWith(u"SELECT FIELD_NAME, FIELD_NUMBER, OFFSET, "_s));
    }

    /// Of the rows of the grid but the blank one.
    QStringList offsets() const
    {
        QStringList all;
        for (int row = 0; row < blankRow(); ++row)
            all.append(cell(row, u"Field Name"_s) + ' '_L1 + cell(row, u"Offset"_s));
        return all;
    }

    const QStringList payroll{u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s};
};

TEST_F(FieldRecalculateGrid, TheGridThatShowsTheFieldsShowsTheirNewOffsets)
{
    open(payroll);
    EXPECT_EQ(offsets(), (QStringList{u"BONUS 42"_s, u"EMPLOYEE 2"_s, u"SALARY 82"_s}));
    recalculate();
}

TEST_F(FieldRecalculateGrid, TheGridComesUpInFrontOfAnotherPane)
{
    open(payroll);
    click(key({u"FI"_s}));
    ASSERT_EQ(currentPane(), u"frmFiles"_s);
    recalculate();
}

/// The dialog of the fields' order in front of the panes that show their numbers.
class FieldReorderInFront : public GridTest
{
protected:
    void SetUp() override
    {
        GridTest::SetUp();
        change(u"UPDATE TW_FIELD SET LOCAL_TYPE_NAME = 'STRING' WHERE FILE_NAME = 'PAYROLL'"_s);
    }

    /// Puts the fields into the order of the alphabet.
    void reorder(const QString& button)
    {
        dialogs.expect(u"frmFieldReorder"_s, [&](DialogForm& dialog) {
            DialogScript::click(dialog, u"chkSortAlpha"_s);
            DialogScript::click(dialog, button);
        });
        choose(key(payroll), u"mnu_FieldReorder"_s);
        dialogs.verify();
        boxes.verify();
    }

    QStringList numbers() const
    {
        QStringList all;
        for (int row = 0; row < blankRow(); ++row)
            all.append(cell(row, u"Field Name"_s) + ' '_L1 + cell(row, u"Field Number"_s));
        return all;
    }

    const QStringList payroll{u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s};
    DialogScript dialogs;
};

TEST_F(FieldReorderInFront, TheGridThatShowsTheFieldsShowsTheirNewNumbers)
{
    open(payroll);
    EXPECT_EQ(numbers(), (QStringList{u"BONUS 3"_s, u"EMPLOYEE 1"_s, u"SALARY 2"_s}));
    boxes.expectInform(u"Field re-ordering complete"_s);
    reorder(u"cmdOK"_s);
    EXPECT_EQ(numbers(), (QStringList{u"BONUS 1"_s, u"EMPLOYEE 2"_s, u"SALARY 3"_s}));
    EXPECT_EQ(currentPane(), u"frmFields"_s);
}

TEST_F(FieldReorderInFront, APaneThatShowsSomethingElseStays)
{
    open(payroll);
    click(key({u"FI"_s}));
    ASSERT_EQ(currentPane(), u"frmFiles"_s);
    statements.clear();
    boxes.expectInform(u"Field re-ordering complete"_s);
    reorder(u"cmdOK"_s);
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    // Two readings of the list and one number for each field: no pane has read its rows again.
    EXPECT_EQ(statements.statements().size(), 5);
}

TEST_F(FieldReorderInFront, TheFieldThatShowsHasItsNewNumber)
{
    open(payroll + QStringList{u"fd=BONUS"_s});
    ASSERT_EQ(currentPane(), u"frmField"_s);
    const auto number = [&] {
        const auto* text = window->currentPane()->findChild<QLineEdit*>(u"txtProperty_FIELD_NUMBER"_s);
        return text ? text->text() : QString();
    };
    EXPECT_EQ(number(), u"3"_s);
    boxes.expectInform(u"Field re-ordering complete"_s);
    reorder(u"cmdOK"_s);
    EXPECT_EQ(currentPane(), u"frmField"_s);
    EXPECT_EQ(number(), u"1"_s);
}

TEST_F(FieldReorderInFront, CancelLeavesWhatIsBeingTyped)
{
    open(payroll + QStringList{u"fd=BONUS"_s});
    auto* value = window->currentPane()->findChild<QLineEdit*>(u"txtProperty_DEFAULT_VALUE"_s);
    ASSERT_NE(value, nullptr);
    value->setFocus();
    QTest::keyClicks(value, u"17"_s);
    dialogs.expect(u"frmFieldReorder"_s, [&](DialogForm& dialog) {
        EXPECT_EQ(value->text(), u"17"_s);
        DialogScript::click(dialog, u"cmdCancel"_s);
    });
    choose(key(payroll), u"mnu_FieldReorder"_s);
    dialogs.verify();
    EXPECT_EQ(currentPane(), u"frmField"_s);
    EXPECT_EQ(value->text(), u"17"_s);
}
