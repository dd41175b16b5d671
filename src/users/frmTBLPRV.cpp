#include "frmTBLPRV.h"

#include "Database.h"
#include "modUpdate.h"

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;

namespace
{

std::vector<Property> properties()
{
    return {
        {.prompt = "Database Name:", .column = "DATABASE_NAME", .index = 0, .isKey = true, .isFixed = true},
        {.prompt = "Table Name:", .column = "TABLE_NAME", .index = 1, .isKey = true, .isFixed = true},
        {.prompt = "User &Name:",
         .column = "USER_NAME",
         .kind = EntryKind::List,
         .index = 2,
         .toolTip = "Select a user from the dropdown list",
         .isKey = true},
        {.prompt = "S&ELECT",
         .column = "ALLOW_SELECT",
         .kind = EntryKind::Flag,
         .index = 3,
         .toolTip = "Can the user view this Table?"},
        {.prompt = "&INSERT",
         .column = "ALLOW_INSERT",
         .kind = EntryKind::Flag,
         .index = 4,
         .toolTip = "Can the user add records to this Table?"},
        {.prompt = "UP&DATE",
         .column = "ALLOW_UPDATE",
         .kind = EntryKind::Flag,
         .index = 5,
         .toolTip = "Can the user change existing data in this Table?"},
        {.prompt = "DELE&TE",
         .column = "ALLOW_DELETE",
         .kind = EntryKind::Flag,
         .index = 6,
         .toolTip = "Can the user remove records from this Table?"},
        {.prompt = "Re&marks:",
         .column = "REMARKS",
         .kind = EntryKind::Memo,
         .index = 7,
         .toolTip = "Any notes you wish to make about this Users Table Privileges"},
    };
}

} // namespace

frmTBLPRV::frmTBLPRV(QWidget* parent)
    : RightsPane({.form = "frmTBLPRV",
                  .table = "TW_TBLPRV",
                  .collection = "frmTBLPRVs",
                  .toolBar = "tbrTBLPRV",
                  .deleteQuestion = "Are you sure you want to delete this users table privileges?",
                  .nameColumn = "USER_NAME",
                  .nodeType = "tblprv",
                  .nodeImage = "User"},
                 properties(), parent)
{
}

QString frmTBLPRV::parentKey() const
{
    return "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ":db="_L1 + database() + ":TA="_L1 + database() +
           ":ta="_L1 + table() + ":TBLPRV="_L1 + table() + ':'_L1;
}

QString frmTBLPRV::title(State state) const
{
    switch (state) {
    case State::Add:
        return "Add New User Privilege to "_L1 + table();
    case State::Edit:
        return name() + " - Edit User Privileges"_L1;
    case State::Delete:
        return name() + " - Delete User Privileges"_L1;
    default:
        return name() + " - User Table Privileges"_L1;
    }
}

QString frmTBLPRV::selectStatement() const
{
    return "SELECT * FROM TW_TBLPRV WHERE "_L1 + ofUser(name());
}

void frmTBLPRV::adding()
{
    setText(u"DATABASE_NAME"_s, database());
    setText(u"TABLE_NAME"_s, table());
}

bool frmTBLPRV::validate()
{
    const QString user = text(u"USER_NAME"_s);
    if (user.isEmpty())
        return refuse(u"Please enter select a Username."_s, u"USER_NAME"_s);
    if (user != loadedName() && finds("SELECT USER_NAME FROM TW_TBLPRV WHERE "_L1 + ofUser(user)))
        return refuse("This Table already has User privileges set for User '"_L1 + user + '\''_L1, u"USER_NAME"_s);
    return true;
}

void frmTBLPRV::carryKey()
{
    modUpdate::UpdateTBLPRV(datasource(), database(), database(), table(), table(), loadedName(), name());
}

void frmTBLPRV::updateRow()
{
    db().Execute("UPDATE TW_TBLPRV SET "_L1 +
                 privileges::assignments([this](const QString& column) { return '0'_L1 + text(column); }) +
                 ", REMARKS = '"_L1 + quoted(u"REMARKS"_s) + "' WHERE "_L1 + ofUser(name()));
}

void frmTBLPRV::deleteRow()
{
    db().Execute(BuildDelete(u"TW_TBLPRV"_s, ofUser(name())));
    removeNode();
    showCollection();
}
