#include "UsersRoom.h"

#include "PaneRegistry.h"
#include "frmDBPRV.h"
#include "frmDBPRVs.h"
#include "frmTBLPRV.h"
#include "frmTBLPRVs.h"
#include "frmUser.h"
#include "frmUsers.h"

using namespace Qt::StringLiterals;

namespace
{

template <class Pane>
void add(const QString& name, panes::Operations operations)
{
    panes::add(
        name, [] { return new Pane; }, std::move(operations));
}

} // namespace

void registerUsersRoom()
{
    add<frmUser>(u"frmUser"_s, ItemPane::operations(2));
    add<frmUsers>(u"frmUsers"_s, GridPane::operations(1));
    add<frmDBPRV>(u"frmDBPRV"_s, ItemPane::operations(3));
    add<frmDBPRVs>(u"frmDBPRVs"_s, GridPane::operations(2));
    add<frmTBLPRV>(u"frmTBLPRV"_s, ItemPane::operations(4));
    add<frmTBLPRVs>(u"frmTBLPRVs"_s, GridPane::operations(3));
}
