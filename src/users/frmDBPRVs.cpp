#include "frmDBPRVs.h"

#include "Database.h"

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace
{

std::vector<GridColumn> columns()
{
    std::vector<GridColumn> all{
        {.name = u"USER_NAME"_s, .editor = CellEditor::Combo, .isKey = true},
        {.name = u"DATABASE_USERNAME"_s},
        passwordColumn(u"DATABASE_PASSWORD"_s),
        {.name = u"SECURITY_LEVEL"_s, .editor = CellEditor::Combo, .items = {u"DATABASE"_s, u"TABLE"_s}},
    };
    for (const QString& right : privileges::rights())
        all.push_back(flagColumn(right, false));
    all.push_back({.name = u"REMARKS"_s});
    return all;
}

} // namespace

frmDBPRVs::frmDBPRVs(QWidget* parent)
    : PasswordGrid({.form = "frmDBPRVs", .table = "TW_DBPRV", .toolBar = "tbrDBPRVs", .newRowMark = "*"}, columns(),
                   parent)
{
}

QString frmDBPRVs::title() const
{
    return database() + " - Database Privileges"_L1;
}

QString frmDBPRVs::nodeKey() const
{
    return owner()->node + "DBPRV="_L1 + database() + ':'_L1;
}

std::optional<GridPane::Owner> frmDBPRVs::owner() const
{
    return Owner{.pane = u"frmDatabase"_s,
                 .keys = keys(),
                 .node = "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ":db="_L1 + database() + ':'_L1,
                 .toolTip = "Up to Database '"_L1 + database() + '\''_L1};
}

QString frmDBPRVs::selectStatement() const
{
    return "SELECT USER_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, SECURITY_LEVEL, ALLOW_SELECT, ALLOW_INSERT, "
           "ALLOW_UPDATE, ALLOW_DELETE, REMARKS FROM TW_DBPRV WHERE DATABASE_NAME = '"_L1 +
           SQLQuote(database()) + "' ORDER BY USER_NAME ASC"_L1;
}

void frmDBPRVs::populateLists()
{
    setItems(u"USER_NAME"_s, firstColumn(privileges::users()));
}

QString frmDBPRVs::validate()
{
    const QString user = text(u"USER_NAME"_s);
    if (user.isEmpty())
        return refuse(u"Please select a User Name from the drop down list"_s, u"USER_NAME"_s);
    if (user != loaded(u"USER_NAME"_s) && finds("SELECT USER_NAME FROM TW_DBPRV WHERE "_L1 + ofUser(user)))
        return refuse("The User Name '"_L1 + user + "' already has privileges set for this Database."_L1,
                      u"USER_NAME"_s);
    warnOfLostPassword();
    return {};
}

void frmDBPRVs::replaceRow()
{
    if (!isNewRow())
        removeRow("DELETE FROM TW_DBPRV WHERE "_L1 + ofUser(loaded(u"USER_NAME"_s)));
    // clang-format off
    db().Execute("INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
                 "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS ) VALUES ('"_L1 + quoted(u"USER_NAME"_s) +
                 "', '"_L1 + SQLQuote(database()) +
                 "', '"_L1 + quoted(u"DATABASE_USERNAME"_s) +
                 "', '"_L1 + quotedPassword() +
                 "', "_L1 + flag(u"ALLOW_SELECT"_s) +
                 ", "_L1 + flag(u"ALLOW_INSERT"_s) +
                 ", "_L1 + flag(u"ALLOW_UPDATE"_s) +
                 ", "_L1 + flag(u"ALLOW_DELETE"_s) +
                 ", '"_L1 + quoted(u"SECURITY_LEVEL"_s) +
                 "', '"_L1 + quoted(u"REMARKS"_s) + "')"_L1);
    // clang-format on
    showStoredPassword();
}

void frmDBPRVs::updateRow()
{
    db().Execute("UPDATE TW_DBPRV SET DATABASE_USERNAME = '"_L1 + quoted(u"DATABASE_USERNAME"_s) + "', "_L1 +
                 passwordAssignment() +
                 privileges::assignments([this](const QString& column) { return flag(column); }) + ", REMARKS = '"_L1 +
                 quoted(u"REMARKS"_s) + "' WHERE "_L1 + ofUser(loaded(u"USER_NAME"_s)));
}
