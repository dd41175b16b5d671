#include "frmUsers.h"

#include "Database.h"
#include "Privileges.h"
#include "ReservedRows.h"
#include "modString.h"

using namespace Qt::StringLiterals;

frmUsers::frmUsers(QWidget* parent)
    : PasswordGrid(
          {.form = "frmUsers", .table = "TW_USER", .toolBar = "tbrUsers", .newRowMark = "*"},
          {{.name = u"USER_NAME"_s, .isKey = true}, passwordColumn(u"USER_PASSWORD"_s), {.name = u"REMARKS"_s}}, parent)
{
}

QString frmUsers::title() const
{
    return datasource() + " - Users"_L1;
}

QString frmUsers::nodeKey() const
{
    return "DSN="_L1 + datasource() + ":US="_L1 + datasource() + ':'_L1;
}

QString frmUsers::selectStatement() const
{
    return u"SELECT USER_NAME, USER_PASSWORD, REMARKS FROM TW_USER ORDER BY USER_NAME ASC"_s;
}

bool frmUsers::isLocked(const QString& column)
{
    return column == "USER_NAME"_L1 && reservedrows::isAdministrator(loaded(u"USER_NAME"_s));
}

QString frmUsers::validate()
{
    const QString name = text(u"USER_NAME"_s);
    if (modString::Trim(name).isEmpty())
        return refuse(u"User Name cannot be blank"_s, u"USER_NAME"_s);
    if (name != loaded(u"USER_NAME"_s) && finds("SELECT USER_NAME FROM TW_USER WHERE "_L1 + privileges::ofUser(name)))
        return refuse("This Datasource already contains a User called '"_L1 + name + '\''_L1, u"USER_NAME"_s);
    warnOfLostPassword();
    return {};
}

void frmUsers::replaceRow()
{
    if (!loaded(u"USER_NAME"_s).isEmpty())
        removeRow("DELETE FROM TW_USER WHERE "_L1 + privileges::ofUser(loaded(u"USER_NAME"_s)));
    db().Execute("INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES ('"_L1 + quoted(u"USER_NAME"_s) +
                 "', '"_L1 + quotedPassword() + "', '"_L1 + quoted(u"REMARKS"_s) + "')"_L1);
    showStoredPassword();
}

void frmUsers::updateRow()
{
    db().Execute("UPDATE TW_USER SET "_L1 + passwordAssignment() + "REMARKS = '"_L1 + quoted(u"REMARKS"_s) +
                 "' WHERE "_L1 + privileges::ofUser(loaded(u"USER_NAME"_s)));
}
