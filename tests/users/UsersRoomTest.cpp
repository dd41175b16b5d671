#include "UsersRoom.h"

#include "PaneRegistry.h"

#include <QString>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(UsersRoom, EachPaneTakesAsManyKeyPartsAsItsRowHas)
{
    registerUsersRoom();
    const auto counts = [](const QString& pane) {
        std::vector<int> all;
        for (const auto operation :
             {panes::Operation::Display, panes::Operation::AddNew, panes::Operation::Edit, panes::Operation::Delete})
            all.push_back(panes::count(pane, operation));
        return all;
    };
    EXPECT_EQ(counts(u"frmUser"_s), (std::vector{2, 1, 2, 2}));
    EXPECT_EQ(counts(u"frmUsers"_s), (std::vector{1, -1, -1, -1}));
    EXPECT_EQ(counts(u"frmDBPRV"_s), (std::vector{3, 2, 3, 3}));
    EXPECT_EQ(counts(u"frmDBPRVs"_s), (std::vector{2, -1, -1, -1}));
    EXPECT_EQ(counts(u"frmTBLPRV"_s), (std::vector{4, 3, 4, 4}));
    EXPECT_EQ(counts(u"frmTBLPRVs"_s), (std::vector{3, -1, -1, -1}));
}
