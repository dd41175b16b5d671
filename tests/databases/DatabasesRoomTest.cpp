#include "DatabasesRoom.h"

#include "PaneRegistry.h"

#include <QString>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(DatabasesRoom, EachPaneTakesAsManyKeyPartsAsItsRowHas)
{
    registerDatabasesRoom();
    const auto counts = [](const QString& pane) {
        std::vector<int> all;
        for (const auto operation :
             {panes::Operation::Display, panes::Operation::AddNew, panes::Operation::Edit, panes::Operation::Delete})
            all.push_back(panes::count(pane, operation));
        return all;
    };
    EXPECT_EQ(counts(u"frmDatabase"_s), (std::vector{2, 1, 2, 2}));
    EXPECT_EQ(counts(u"frmDatabases"_s), (std::vector{1, -1, -1, -1}));
    EXPECT_EQ(counts(u"frmTable"_s), (std::vector{3, 2, 3, 3}));
    EXPECT_EQ(counts(u"frmTables"_s), (std::vector{2, -1, -1, -1}));
    EXPECT_EQ(counts(u"frmColumn"_s), (std::vector{4, 3, 4, 4}));
    EXPECT_EQ(counts(u"frmColumns"_s), (std::vector{3, -1, -1, -1}));
    EXPECT_EQ(counts(u"frmSpecialCols"_s), (std::vector{3, -1, -1, -1}));
    EXPECT_EQ(counts(u"frmTableData"_s), (std::vector{3, -1, -1, -1}));
}
