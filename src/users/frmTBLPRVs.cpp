#include "frmTBLPRVs.h"

#include "Database.h"
#include "Privileges.h"
#include "RuntimeError.h"

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace
{

std::vector<GridColumn> columns()
{
    std::vector<GridColumn> all{{.name = u"USER_NAME"_s, .editor = CellEditor::Combo, .isKey = true}};
    for (const QString& right : privileges::rights())
        all.push_back(flagColumn(right, false));
    all.push_back({.name = u"REMARKS"_s});
    return all;
}

} // namespace

frmTBLPRVs::frmTBLPRVs(QWidget* parent)
    : GridPane({.form = "frmTBLPRVs", .table = "TW_TBLPRV", .toolBar = "tbrTBLPRVs"}, columns(), parent)
{
}

QString frmTBLPRVs::title() const
{
    return database() + '.'_L1 + table() + " - User Privileges"_L1;
}

QString frmTBLPRVs::nodeKey() const
{
    return owner()->node + "TBLPRV="_L1 + table() + ':'_L1;
}

std::optional<GridPane::Owner> frmTBLPRVs::owner() const
{
    return Owner{.pane = u"frmTable"_s,
                 .keys = keys(),
                 .node = "DSN="_L1 + datasource() + ":DB="_L1 + datasource() + ":db="_L1 + database() + ":TA="_L1 +
                         database() + ":ta="_L1 + table() + ':'_L1,
                 .toolTip = "Up to Table '"_L1 + table() + '\''_L1};
}

QString frmTBLPRVs::selectStatement() const
{
    return "SELECT USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, REMARKS FROM TW_TBLPRV WHERE "_L1 +
           ofTable() + " ORDER BY USER_NAME ASC"_L1;
}

void frmTBLPRVs::populateLists()
{
    setItems(u"USER_NAME"_s, firstColumn(u"SELECT USER_NAME FROM TW_USER"_s));
}

QString frmTBLPRVs::validate()
{
    const QString user = text(u"USER_NAME"_s);
    if (user.isEmpty())
        return refuse(u"User Name Cannot be blank."_s, u"USER_NAME"_s);
    if (user != loaded(u"USER_NAME"_s) && finds("SELECT USER_NAME FROM TW_TBLPRV WHERE "_L1 + ofUser(user)))
        return refuse("This Table already has privileges set for User '"_L1 + user + '\''_L1, u"USER_NAME"_s);
    return {};
}

void frmTBLPRVs::replaceRow()
{
    if (!isNewRow()) {
        const QString user = quotedLoaded(u"USER_NAME"_s);
        // The statement fails, and the row stays, by the apostrophe that it has too much. A name that ends the
        // statement in front of that one would turn into a condition of its own, and the rights of others would go.
        if (modDatabase::endsStatement(user))
            throw RuntimeError(ErrorNumber::FailedCall,
                               u"The rights of user '%1' cannot be given to another one"_s.arg(loaded(u"USER_NAME"_s)));
        removeRow("DELETE FROM TW_TBLPRV WHERE "_L1 + ofTable() + " AND USER_NAME = "_L1 + user + '\''_L1);
    }
    // clang-format off
    db().Execute("INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
                 "ALLOW_DELETE, REMARKS) VALUES ('"_L1 + SQLQuote(database()) +
                 "', '"_L1 + SQLQuote(table()) +
                 "', '"_L1 + quoted(u"USER_NAME"_s) +
                 "', "_L1 + flag(u"ALLOW_SELECT"_s) +
                 ", "_L1 + flag(u"ALLOW_INSERT"_s) +
                 ", "_L1 + flag(u"ALLOW_UPDATE"_s) +
                 ", "_L1 + flag(u"ALLOW_DELETE"_s) +
                 ", '"_L1 + quoted(u"REMARKS"_s) + "')"_L1);
    // clang-format on
}

void frmTBLPRVs::updateRow()
{
    db().Execute("UPDATE TW_TBLPRV SET "_L1 +
                 privileges::assignments([this](const QString& column) { return flag(column); }) + ", REMARKS = '"_L1 +
                 quoted(u"REMARKS"_s) + "' WHERE "_L1 + ofUser(loaded(u"USER_NAME"_s)));
}
