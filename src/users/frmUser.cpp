#include "frmUser.h"

#include "Boxes.h"
#include "CConnections.h"
#include "Database.h"
#include "Privileges.h"
#include "Recordset.h"
#include "ReservedRows.h"
#include "modUpdate.h"

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;

namespace
{

const QString cannotDelete = u"You cannot delete the ADMIN User!"_s;

std::vector<Property> properties()
{
    return {
        {.prompt = "&User Name:", .column = "USER_NAME", .index = 0, .isKey = true},
        {.prompt = "&Password:", .column = "USER_PASSWORD", .kind = EntryKind::Password, .index = 1},
        {.prompt = "&Confirm Password:", .column = "USER_PASSWORD", .kind = EntryKind::Confirmation},
        {.prompt = "Re&marks:",
         .column = "REMARKS",
         .kind = EntryKind::Memo,
         .index = 2,
         .toolTip = "Any notes you wish to make about this User"},
    };
}

} // namespace

frmUser::frmUser(QWidget* parent)
    : PasswordPane({.form = "frmUser",
                    .table = "TW_USER",
                    .collection = "frmUsers",
                    .toolBar = "tbrUser",
                    .deleteQuestion = "Are you sure you want to delete this user?",
                    .nameColumn = "USER_NAME",
                    .nodeType = "us",
                    .nodeImage = "User"},
                   properties(), parent)
{
}

QString frmUser::parentKey() const
{
    return "DSN="_L1 + datasource() + ":US="_L1 + datasource() + ':'_L1;
}

QString frmUser::title(State state) const
{
    switch (state) {
    case State::Add:
        return "Add New User to "_L1 + datasource();
    case State::Edit:
        return name() + " - Edit User Properties"_L1;
    case State::Delete:
        return name() + " - Delete User"_L1;
    default:
        return name() + " - User Properties"_L1;
    }
}

QString frmUser::selectStatement() const
{
    return "SELECT * FROM TW_USER WHERE "_L1 + privileges::ofUser(name()) + ' '_L1;
}

bool frmUser::validate()
{
    const QString user = text(u"USER_NAME"_s);
    if (user.isEmpty())
        return refuse(u"Please enter a User Name."_s, u"USER_NAME"_s);
    const bool isOther = user != loadedName();
    if (isOther && finds("SELECT * FROM TW_USER WHERE "_L1 + privileges::ofUser(user)))
        return refuse("A user called '"_L1 + user +
                          "' already exits in the Datasource.\nUse a unique name to identify this user."_L1,
                      u"USER_NAME"_s);
    if (isOther && isPasswordBlank() && wantsToEnterPassword())
        return false;
    return isPasswordConfirmed();
}

bool frmUser::mayUpdate()
{
    if (!reservedrows::isAdministrator(loadedName()) || reservedrows::isAdministrator(text(u"USER_NAME"_s)))
        return true;
    return refuse(u"You cannot change the name of the ADMIN user."_s, u"USER_NAME"_s);
}

void frmUser::carryKey()
{
    modUpdate::UpdateUser(datasource(), loadedName(), name());
}

/// Goes by the stored name, under which there is nothing more when the name has changed.
void frmUser::updateRow()
{
    db().Execute("UPDATE TW_USER SET "_L1 + passwordAssignment() + "REMARKS = '"_L1 + quoted(u"REMARKS"_s) +
                 "' WHERE "_L1 + privileges::ofUser(loadedName()));
}

/// The user stands under each database and table that it has rights on.
void frmUser::renameNodes(const QString& from, const QString& to)
{
    // The tree may yield, and by then the pane show another user.
    const QString owner = datasource();
    const auto privilegesOf = [&](const QString& select) -> std::unique_ptr<dao::Recordset> {
        const CConnection* connection = CConnections::instance().find(owner);
        return connection ? connection->db()->OpenRecordset(select + privileges::ofUser(to)) : nullptr;
    };
    const QString databases = "DSN="_L1 + owner + ":DB="_L1 + owner + ":db="_L1;
    PasswordPane::renameNodes(from, to);
    for (const auto rows = privilegesOf(u"SELECT DATABASE_NAME FROM TW_DBPRV WHERE "_s); rows && !rows->Eof();
         rows->MoveNext()) {
        const QString database = rows->View(0).toString();
        renameNode(databases + database + ":DBPRV="_L1 + database + ":dbprv="_L1, from, to);
    }
    for (const auto rows = privilegesOf(u"SELECT DATABASE_NAME, TABLE_NAME FROM TW_TBLPRV WHERE "_s);
         rows && !rows->Eof(); rows->MoveNext()) {
        const QString database = rows->View(0).toString();
        const QString table = rows->View(1).toString();
        renameNode(databases + database + ":TA="_L1 + database + ":ta="_L1 + table + ":TBLPRV="_L1 + table +
                       ":tblprv="_L1,
                   from, to);
    }
}

// Deleting -----------------------------------------------------------------------------------------------------------

bool frmUser::mayDelete()
{
    if (!reservedrows::isAdministrator(text(u"USER_NAME"_s)))
        return true;
    boxes::inform(cannotDelete);
    return false;
}

bool frmUser::confirmsDelete()
{
    if (!reservedrows::isAdministrator(text(u"USER_NAME"_s)))
        return PasswordPane::confirmsDelete();
    boxes::inform(u"You cannot delete User 'ADMIN'"_s);
    return false;
}

void frmUser::deleteRow()
{
    if (reservedrows::isAdministrator(name())) {
        boxes::inform(cannotDelete);
        return;
    }
    // The tree yields, and the pane may show another user by then.
    const QStringList above = owners();
    const QString collection = parentKey();
    const QString databases = "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ':'_L1;
    for (const QString& table : {u"TW_USER"_s, u"TW_DBPRV"_s, u"TW_TBLPRV"_s})
        db().Execute(BuildDelete(table, privileges::ofUser(name())));
    removeNode();
    rereadNode(collection);
    rereadNode(databases);
    showCollection(above);
}
