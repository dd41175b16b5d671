#include "MoveCopyRoom.h"

#include "Commands.h"
#include "DragHandlers.h"
#include "MoveCopyFixture.h"

using namespace Qt::StringLiterals;

namespace
{

class MoveCopyRoom : public MoveCopyTest
{
};

} // namespace

TEST_F(MoveCopyRoom, BringsTheDragsAlong)
{
    drags::setHandlers({});
    registerMoveCopyRoom();
    EXPECT_TRUE(drags::handlers().over);
    EXPECT_TRUE(drags::handlers().drop);
}

TEST_F(MoveCopyRoom, BringsTheCopyCommandsAlongEachForItsKindOfItemAlone)
{
    const DragItem table = item(u"ta"_s, {datasource, u"SALES"_s, u"ORDERS"_s});
    const DragItem file = item(u"fi"_s, {datasource, u"PAYROLL"_s});
    const DragItem database = item(u"db"_s, {datasource, u"SALES"_s});
    const auto cancel = [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdCancel"_s); };
    dialogs.expect(u"frmTableCopy"_s, cancel);
    commands::run(u"mnu_TableCopy"_s, table);
    dialogs.expect(u"frmFileCopy"_s, cancel);
    commands::run(u"mnu_FileCopy"_s, file);
    dialogs.expect(u"frmDBCopy"_s, cancel);
    commands::run(u"mnu_DBCopy"_s, database);
    dialogs.verify();
    commands::run(u"mnu_TableCopy"_s, database);
    commands::run(u"mnu_FileCopy"_s, item(u"FI"_s, {datasource}));
    commands::run(u"mnu_DBCopy"_s, {});
}
