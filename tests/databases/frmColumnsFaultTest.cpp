#include "CellGrid.h"
#include "ColumnGridFixture.h"
#include "FaultSweep.h"
#include "modDatabase.h"

#include <ostream>

using namespace columngrid;

namespace
{

/// Changes the catalog before the first statement that begins so is sent, as another administrator would.
class Meanwhile final : public dao::StatementObserver
{
public:
    Meanwhile(QString beginning, std::function<void()> action)
        : m_beginning(std::move(beginning)), m_action(std::move(action)), m_former(dao::DBEngine::setObserver(this))
    {
    }
    ~Meanwhile() override
    {
        dao::DBEngine::setObserver(m_former);
        EXPECT_FALSE(m_action) << m_beginning.toStdString() << " was never sent";
    }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override
    {
        if (m_action && statement.startsWith(m_beginning))
            std::exchange(m_action, nullptr)();
        return m_former->beforeStatement(datasource, statement);
    }

private:
    QString m_beginning;
    std::function<void()> m_action;
    dao::StatementObserver* m_former;
};

class ColumnGridFaults : public ColumnGrid
{
protected:
    void SetUp() override
    {
        ColumnGrid::SetUp();
        keepCatalog();
    }

    void prepareGrid()
    {
        beginAnew();
        openColumns();
        expandTo(key(level));
    }

    QStringList outcome() const
    {
        return wholeCatalog() + wholeTree() + rows() + QStringList{currentPane(), paneTitle(), selectedKey()};
    }

    /// The same with the rows as they show once they are read anew.
    QStringList outcomeAnew()
    {
        click(key(level));
        return outcome();
    }

    /// Leaves the row again, which writes it unless only the tree could not be read.
    void leaveAgain()
    {
        leave();
        if (!node(key(level)).Child()) {
            clickExpander(key(level.first(4)));
            expandTo(key(level));
        }
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(ColumnGridFaults, WithinOpeningTheGrid)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       window->resize(1100, 640);
                       expandTo(key(level.first(4)));
                   },
               .act = [&](const auto&) { click(key(level)); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { click(key(level)); }});
}

TEST_F(ColumnGridFaults, WithinAddingAColumn)
{
    sweep.run({.prepare =
                   [&] {
                       prepareGrid();
                       fillIn(u"7"_s, u"SOLD"_s, u"SOLD"_s, u"INTEGER"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return outcomeAnew(); },
               .goOn = [&] { leaveAgain(); }});
}

TEST_F(ColumnGridFaults, WithinReplacingAColumn)
{
    sweep.run({.prepare =
                   [&] {
                       prepareGrid();
                       change(u"2"_s, u"Column Name"_s, u"cost"_s);
                       change(u"2"_s, u"Field Name"_s, u"LEFT"_s);
                       change(u"2"_s, u"Column Number"_s, u"9"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return outcomeAnew(); },
               .goOn = [&] { leaveAgain(); }});
}

TEST_F(ColumnGridFaults, WithinUpdatingAColumn)
{
    sweep.run({.prepare =
                   [&] {
                       prepareGrid();
                       change(u"1"_s, u"Remarks"_s, u"x"_s);
                   },
               .act = [&](const auto&) { leave(); },
               .outcome = [&] { return outcomeAnew(); },
               .goOn = [&] { leaveAgain(); }});
}

TEST_F(ColumnGridFaults, WithinLookingUpTheNextNumber)
{
    sweep.run({.prepare =
                   [&] {
                       prepareGrid();
                       click(blankRow(), u"Column Number"_s);
                       hit(Qt::Key_Return);
                   },
               .act = [&](const auto&) { pressLookUp(); },
               .outcome = [&] { return outcome() + QStringList{editorText()}; },
               .goOn = [&] { pressLookUp(); }});
}

TEST_F(ColumnGridFaults, AFailureNamesTheRoutineAndLeavesTheRowToBeTriedAgain)
{
    openColumns();
    change(u"2"_s, u"Column Name"_s, u"cost"_s);
    statements.clear();
    statements.failAt(3);
    errors.expect(Press::Ignore);
    leave();
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmColumns.LeaveCell"_s);
    // The row is gone by now, and the grid still has it.
    EXPECT_EQ(storedColumns(), QStringList{articleStored});
    EXPECT_EQ(current(), u"1 Column Name"_s);
    leave();
    EXPECT_EQ(storedColumns(),
              (QStringList{articleStored, u"2|COST||PRICE|INTEGER|4|10|2|0|1|0|1|1|1|0|0|10|1|0||0"_s}));
}

TEST_F(ColumnGridFaults, ANameThatIsTakenBehindTheValidationIsReportedAndCanBeMended)
{
    openColumns();
    fillIn(u"7"_s, u"SOLD"_s, u"SOLD"_s, u"INTEGER"_s);
    {
        const Meanwhile meanwhile(u"INSERT"_s, [&] {
            addColumn(u"5, 'SOLD', 'LEFT', 'DATE', 6, 10, 0, 1, 0, 1, 1, 0, 0, 0, 2, 0, '', '', 0, 0, ''"_s);
        });
        errors.expect(Press::Ignore);
        leave();
        errors.verify();
    }
    EXPECT_EQ(current().section(' '_L1, 0, 0), u"2"_s);
    EXPECT_EQ(rows().last(), u"7|SOLD||SOLD|INTEGER|4|10|0|Yes|No|Yes|Yes|No|No|No|All except LIKE|10|0||"_s);
    boxes.expectInform(u"This Table already contains a Column called 'SOLD'"_s);
    leave();
    boxes.verify();
    write(u"2"_s);
    leave();
    EXPECT_EQ(storedColumns().mid(2), (QStringList{u"5|SOLD||LEFT|DATE|6|10|0|1|0|1|1|0|0|0|2|0|0|||0"_s,
                                                   u"7|SOLD2||SOLD|INTEGER|4|10|0|1|0|1|1|0|0|0|2|10|0|||0"_s}));
}

TEST_F(ColumnGridFaults, ARowThatIsGoneIsUpdatedToNothingAndReplacedByItself)
{
    openColumns();
    change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'ITEMS'"_s);
    change(u"1"_s, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(storedColumns(), QStringList());
    change(u"1"_s, u"Column Number"_s, u"4"_s);
    leave();
    EXPECT_EQ(storedColumns(),
              QStringList{u"4|ARTICLE|Article|ARTICLE|VARCHAR|10|12|0|1|0|1|1|0|0|1|0|0|0|none|x|0"_s});
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(ColumnGridFaults, ARowWithoutANumberIsOnlyAdded)
{
    change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = NULL WHERE COLUMN_NAME = 'PRICE'"_s);
    openColumns();
    change(0, u"Column Number"_s, u"3"_s);
    change(0, u"Column Name"_s, u"cost"_s);
    change(0, u"Field Name"_s, u"LEFT"_s);
    leave();
    EXPECT_EQ(statements.writes().size(), 1);
    EXPECT_EQ(storedColumns().size(), 3);
    EXPECT_EQ(storedColumns().last(), u"3|COST||LEFT|INTEGER|4|10|2|0|1|0|1|1|1|0|0|10|1|0||0"_s);
}
