#include "InterchangeRoom.h"

#include "PaneRegistry.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(InterchangeRoom, BothPanesAreShownForADatasourceAndDoNothingElse)
{
    registerInterchangeRoom();
    for (const QString& pane : {u"frmCSVExport"_s, u"frmCSVImport"_s}) {
        EXPECT_TRUE(panes::isKnown(pane));
        EXPECT_EQ(panes::count(pane, panes::Operation::Display), 1);
        for (const panes::Operation none : {panes::Operation::AddNew, panes::Operation::Edit, panes::Operation::Delete})
            EXPECT_EQ(panes::count(pane, none), -1);
        EXPECT_FALSE(panes::opensInEditState(pane));
        panes::remove(pane);
    }
}
