#include "FilesRoom.h"

#include "PaneRegistry.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{

TEST(FilesRoom, ThePanesAreThereOnceTheRoomIsRegistered)
{
    using panes::Operation;
    for (const QString& pane : {u"frmFile"_s, u"frmFiles"_s, u"frmField"_s, u"frmFields"_s}) {
        panes::remove(pane);
        EXPECT_FALSE(panes::isKnown(pane)) << pane.toStdString();
    }

    registerFilesRoom();

    const auto counts = [](const QString& pane) {
        return std::vector{panes::count(pane, Operation::Display), panes::count(pane, Operation::AddNew),
                           panes::count(pane, Operation::Edit), panes::count(pane, Operation::Delete)};
    };
    EXPECT_EQ(counts(u"frmFile"_s), (std::vector{2, 1, 2, 2}));
    EXPECT_EQ(counts(u"frmField"_s), (std::vector{3, 2, 3, 3}));
    EXPECT_EQ(counts(u"frmFiles"_s), (std::vector{1, -1, -1, -1}));
    EXPECT_EQ(counts(u"frmFields"_s), (std::vector{2, -1, -1, -1}));
}

} // namespace
