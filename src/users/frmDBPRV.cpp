#include "frmDBPRV.h"

#include "Database.h"
#include "modUpdate.h"

using namespace Qt::StringLiterals;
using modDatabase::BuildDelete;
using modDatabase::SQLQuote;

namespace
{

std::vector<Property> properties()
{
    return {
        {.prompt = "Database Name:", .column = "DATABASE_NAME", .index = 0, .isKey = true, .isFixed = true},
        {.prompt = "User &Name:", .column = "USER_NAME", .kind = EntryKind::List, .index = 1, .isKey = true},
        {.prompt = "Data&base Username", .column = "DATABASE_USERNAME", .index = 2},
        {.prompt = "Database &Password:", .column = "DATABASE_PASSWORD", .kind = EntryKind::Password, .index = 3},
        {.prompt = "&Confirm Password:", .column = "DATABASE_PASSWORD", .kind = EntryKind::Confirmation},
        {.prompt = "Security &Level:",
         .column = "SECURITY_LEVEL",
         .kind = EntryKind::List,
         .index = 4,
         .items = {"DATABASE", "TABLE"}},
        {.prompt = "S&ELECT",
         .column = "ALLOW_SELECT",
         .kind = EntryKind::Flag,
         .index = 5,
         .toolTip = "Can the user view this Database?"},
        {.prompt = "&INSERT",
         .column = "ALLOW_INSERT",
         .kind = EntryKind::Flag,
         .index = 6,
         .toolTip = "Can the user add records to this Database?"},
        {.prompt = "UP&DATE",
         .column = "ALLOW_UPDATE",
         .kind = EntryKind::Flag,
         .index = 7,
         .toolTip = "Can the user change existing data in this Database?"},
        {.prompt = "DELE&TE",
         .column = "ALLOW_DELETE",
         .kind = EntryKind::Flag,
         .index = 8,
         .toolTip = "Can the user remove records from this Database?"},
        {.prompt = "Re&marks",
         .column = "REMARKS",
         .kind = EntryKind::Memo,
         .index = 9,
         .toolTip = "Any notes you wish to make about this User's Database Privileges"},
    };
}

} // namespace

frmDBPRV::frmDBPRV(QWidget* parent)
    : RightsPane({.form = "frmDBPRV",
                  .table = "TW_DBPRV",
                  .collection = "frmDBPRVs",
                  .toolBar = "tbrDBPRV",
                  .deleteQuestion = "Are you sure you wish to delete this users database privileges?",
                  .nameColumn = "USER_NAME",
                  .nodeType = "dbprv",
                  .nodeImage = "User"},
                 properties(), parent)
{
}

QString frmDBPRV::parentKey() const
{
    return "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ":db="_L1 + database() + ":DBPRV="_L1 + database() +
           ':'_L1;
}

QString frmDBPRV::title(State state) const
{
    switch (state) {
    case State::Add:
        return "Add New User Privileges to "_L1 + database();
    case State::Edit:
        return name() + " - Edit User Privileges"_L1;
    case State::Delete:
        return name() + " - Delete User Privileges"_L1;
    default:
        return name() + " - User Database Privileges"_L1;
    }
}

QString frmDBPRV::selectStatement() const
{
    return "SELECT * FROM TW_DBPRV WHERE "_L1 + ofRow();
}

void frmDBPRV::adding()
{
    setText(u"DATABASE_NAME"_s, database());
}

bool frmDBPRV::validate()
{
    const QString user = text(u"USER_NAME"_s);
    if (user.isEmpty())
        return refuse(u"Please select a Username from the dropdown list."_s, u"USER_NAME"_s);
    // The user comes first here, unlike everywhere else.
    if (user != loadedName() && finds("SELECT USER_NAME FROM TW_DBPRV WHERE USER_NAME = '"_L1 + SQLQuote(user) +
                                      "' AND DATABASE_NAME = '"_L1 + SQLQuote(database()) + '\''_L1))
        return refuse("User '"_L1 + user + "' already has Database Privileges set for this Database."_L1,
                      u"USER_NAME"_s);
    if (keyChanged() && isPasswordBlank() && wantsToEnterPassword())
        return false;
    if (text(u"SECURITY_LEVEL"_s).isEmpty())
        return refuse(u"Please select a Secutity Level from the dropdown list"_s, u"SECURITY_LEVEL"_s);
    return isPasswordConfirmed();
}

void frmDBPRV::carryKey()
{
    modUpdate::UpdateDBPRV(datasource(), database(), database(), loadedName(), name());
}

void frmDBPRV::updateRow()
{
    const QString rights = privileges::assignments([this](const QString& column) { return '0'_L1 + text(column); });
    db().Execute("UPDATE TW_DBPRV SET DATABASE_USERNAME = '"_L1 + quoted(u"DATABASE_USERNAME"_s) + "', "_L1 +
                 passwordAssignment() + rights + ", SECURITY_LEVEL = '"_L1 + quoted(u"SECURITY_LEVEL"_s) +
                 "', REMARKS = '"_L1 + quoted(u"REMARKS"_s) + "' WHERE "_L1 + ofRow());
}

void frmDBPRV::deleteRow()
{
    db().Execute(BuildDelete(u"TW_DBPRV"_s, ofRow()));
    removeNode();
    showCollection();
}
