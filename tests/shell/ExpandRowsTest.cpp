// Levels whose rows come in an order of the driver's, or come to a stop half-way.
#include "MainWindowFixture.h"
#include "WatchedWorkspace.h"

#include "CConnections.h"
#include "Database.h"
#include "MousePointer.h"
#include "Recordset.h"
#include "Settings.h"

using namespace Qt::StringLiterals;

namespace
{

const QString usersStatement = u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s;

class ExpandRows : public MainWindowTest
{
protected:
    /// Starts with a hundred users more, whose rows break off behind the sixtieth of all, and opens the datasource.
    void startWithRowsThatBreakOff()
    {
        change(u"WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N WHERE I < 100) "
               "INSERT INTO TW_USER (USER_NAME) SELECT printf('U%03d', I) FROM N"_s);
        start();
        auto workspace = std::make_unique<WatchedWorkspace>();
        workspace->breakOffAfter(usersStatement, 60);
        CConnections::instance().setWorkspace(std::move(workspace));
        clickExpander(key());
    }

    static QStringList users(int count)
    {
        QStringList all{u"ADMIN"_s, u"CLERK"_s};
        for (int i = 1; i <= count; ++i)
            all.append(u"U%1"_s.arg(i, 3, 10, '0'_L1));
        return all;
    }
};

} // namespace

TEST_F(ExpandRows, AFailureAmongTheRowsLeavesTheNodeOpenWithThoseThatWereRead)
{
    const QString collection = key({u"US"_s});
    const QString last = key({u"US"_s, u"us=U058"_s});
    startWithRowsThatBreakOff();
    bool redraws = true;
    errors.expect([&](QWidget& form) {
        EXPECT_EQ(mousepointer::current(), mousepointer::Wait);
        redraws = window->tvwExplorer().updatesEnabled();
        ScriptedErrorForm::press(form, Press::Ignore);
    });

    clickExpander(collection);

    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"mdiMain.tvwExplorer_Expand"_s);
    EXPECT_FALSE(redraws);
    EXPECT_TRUE(node(collection).Expanded());
    EXPECT_EQ(children(collection), users(58));
    EXPECT_TRUE(window->tvwExplorer().updatesEnabled());
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
    EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
    // The rows are in sight, and not only among the nodes.
    click(last);
    EXPECT_EQ(selectedKey(), last);
}

TEST_F(ExpandRows, RetryAmongTheRowsGoesOnWithTheNextOneAndSendsNothingAgain)
{
    startWithRowsThatBreakOff();
    statements.clear();
    errors.expect(Press::Retry);
    clickExpander(key({u"US"_s}));
    EXPECT_EQ(children(key({u"US"_s})), users(100));
    EXPECT_EQ(statements.statements(), QStringList{usersStatement});
}

TEST_F(ExpandRows, FieldsOfOneOffsetStandInTheDriversOrder)
{
    const QStringList fields{u"FI"_s, u"fi=EMPTY"_s, u"FD"_s};
    const QString statement = u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'EMPTY' ORDER BY OFFSET ASC"_s;
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, OFFSET) VALUES ('EMPTY', 4, 'ZULU', 4), "
           "('EMPTY', 2, 'MIKE', 4), ('EMPTY', 3, 'ALPHA', 4), ('EMPTY', 1, 'LAST', 9), ('EMPTY', 5, 'FIRST', 0)"_s);
    // So that this driver's order is not by chance that of the names.
    change(u"CREATE INDEX BY_OFFSET ON TW_FIELD (FILE_NAME, OFFSET, FIELD_NUMBER)"_s);
    settings::save(u"Options"_s, u"FieldOrder"_s, 1);
    start();
    clickExpander(key());
    QStringList expected;
    for (const auto rows = CConnections::instance().Item(datasource)->db()->OpenRecordset(statement); !rows->Eof();
         rows->MoveNext())
        expected.append(rows->View(0).toString());
    ASSERT_EQ(expected.size(), 5);
    QStringList byName = expected.mid(1, 3);
    byName.sort();
    ASSERT_NE(expected.mid(1, 3), byName);
    statements.clear();

    expandTo(key(fields));

    EXPECT_TRUE(statements.statements().contains(statement));
    EXPECT_EQ(children(key(fields)), expected);
}
