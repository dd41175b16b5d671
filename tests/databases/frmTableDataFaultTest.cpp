#include "FaultSweep.h"
#include "TableDataPane.h"

#include "CConnections.h"
#include "WatchedWorkspace.h"

#include <memory>
#include <ostream>
#include <utility>

using namespace tabledata;

namespace
{

const QString allRecords = u"SELECT [ARTICLE], [MAKER], [NOTE], [PRICE], [SOLD] FROM [SALES_ITEMS] "_s;

class TableDataFaults : public TableData
{
protected:
    void SetUp() override
    {
        TableData::SetUp();
        keepCatalog();
    }

    /// All that shows of the pane.
    QStringList outcome() const
    {
        QStringList shown{currentPane(), paneTitle()};
        if (currentPane() == pane)
            shown += QStringList{description(), explanation(), position(),
                                 QString::number(grid().isVisible()) + QString::number(refresh().Enabled())} +
                     rows();
        return shown;
    }

    void askAgain() { view(all); }

    /// The pane's connections are watched from now on.
    static WatchedWorkspace& watch()
    {
        auto workspace = std::make_unique<WatchedWorkspace>();
        WatchedWorkspace& watched = *workspace;
        CConnections::instance().setWorkspace(std::move(workspace));
        return watched;
    }

    FaultSweep sweep{statements, errors};
};

} // namespace

TEST_F(TableDataFaults, WithinALook)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(table(u"ITEMS"_s));
                   },
               .act =
                   [&](const auto& fault) {
                       // The dialog that can't read the columns does not come.
                       if (!fault || fault->answer == Press::Retry || fault->statement > 1)
                           dialogs.expect(criteria, all);
                       MainWindowTest::choose(key(table(u"ITEMS"_s)), u"mnu_TableViewData"_s);
                       dialogs.verify();
                   },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [&](int statement, const QStringList&) {
                       // Without a statement the table's own pane shows again.
                       return statement == 1 ? QStringList{u"SELECT * FROM TW_TABLE "_s,
                                                           u"SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' AND "
                                                           "TABLE_NAME = 'ITEMS' "_s,
                                                           u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME <> '' "
                                                           "ORDER BY FILE_NAME ASC"_s}
                                             : QStringList();
                   },
               .goOn =
                   [&] {
                       EXPECT_FALSE(forms::loaded(criteria));
                       askAgain();
                   }});
}

TEST_F(TableDataFaults, WithinARefresh)
{
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       view(all);
                   },
               .act = [&](const auto&) { pressRefresh(); },
               .outcome = [&] { return outcome(); },
               .goOn = [&] { pressRefresh(); }});
}

TEST_F(TableDataFaults, RecordsThatBreakOffLeaveTheGridHidden)
{
    begin(table(u"ITEMS"_s));
    watch().breakOffAfter(allRecords, 1);
    errors.expect(Press::Ignore);
    view(all);
    errors.verify();
    EXPECT_FALSE(grid().isVisible());
    EXPECT_FALSE(refresh().Enabled());

    errors.expect(Press::Retry);
    view(all);
    errors.verify();
    EXPECT_TRUE(grid().isVisible());
    EXPECT_EQ(rows().size(), 3);
    EXPECT_EQ(position(), u"Record 1 of 3"_s);
}

TEST_F(TableDataFaults, ARefreshThatBreaksOffKeepsTheRecordsThatShow)
{
    begin(table(u"ITEMS"_s));
    WatchedWorkspace& workspace = watch();
    view(all);
    clickButton(u"cmdNext"_s);
    const QStringList before = outcome();
    ASSERT_EQ(position(), u"Record 2 of 3"_s);
    change(u"DELETE FROM SALES_ITEMS WHERE ARTICLE = 'pen'"_s);
    change(u"INSERT INTO SALES_ITEMS (ARTICLE) VALUES ('cap'), ('hat')"_s);

    workspace.breakOffAfter(allRecords, 2);
    errors.expect(Press::Ignore);
    pressRefresh();
    errors.verify();
    EXPECT_EQ(outcome(), before);
    EXPECT_EQ(grid().Row(), 1);

    errors.expect(Press::Retry);
    pressRefresh();
    errors.verify();
    EXPECT_EQ(rows().size(), 4);
    EXPECT_EQ(position(), u"Record 1 of 4"_s);
}

TEST_F(TableDataFaults, AConnectionThatCannotBeOpenedLeavesTheGridHidden)
{
    begin(table(u"ITEMS"_s));
    dialogs.expect(criteria, [&](DialogForm& form) {
        // The datasource goes while the user chooses.
        world.removeDatasource(datasource);
        all(form);
    });
    errors.expect(Press::Ignore);
    MainWindowTest::choose(key(table(u"ITEMS"_s)), u"mnu_TableViewData"_s);
    errors.verify();
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmTableData.Display"_s);
    EXPECT_FALSE(grid().isVisible());
    EXPECT_FALSE(refresh().Enabled());
    EXPECT_TRUE(description().startsWith(u"This is the results of a sample snapshot query (SELECT "_s));
    EXPECT_EQ(paneTitle(), QString());
}
