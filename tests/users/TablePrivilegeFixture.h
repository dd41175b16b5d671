#pragma once

#include "UserPaneFixture.h"

/// What the pane of a user's rights on a table sends and says.
namespace tableprivileges
{

using namespace userpane;

inline const QStringList columns{u"DATABASE_NAME"_s, u"TABLE_NAME"_s,   u"USER_NAME"_s,    u"ALLOW_SELECT"_s,
                                 u"ALLOW_INSERT"_s,  u"ALLOW_UPDATE"_s, u"ALLOW_DELETE"_s, u"REMARKS"_s};
inline const QString describePrivileges = u"SELECT * FROM TW_TBLPRV "_s;
inline const QString readUsers = u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s;
inline const QString noUser = u"Please enter select a Username."_s;
inline const QString mayDeletePrivileges = u"Are you sure you want to delete this users table privileges?"_s;
inline const QString asItWas =
    u"ALLOW_SELECT = 01, ALLOW_INSERT = 01, ALLOW_UPDATE = 00, ALLOW_DELETE = 00, REMARKS = 'takes orders'"_s;

inline QString ofRow(const QString& user)
{
    return u"WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND USER_NAME = '%1'"_s.arg(user);
}

inline QString readRow(const QString& user)
{
    return u"SELECT * FROM TW_TBLPRV "_s + ofRow(user);
}

inline QString userIsTaken(const QString& user)
{
    return u"SELECT USER_NAME FROM TW_TBLPRV "_s + ofRow(user);
}

inline QString insertRow(const QString& values)
{
    return u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
           "ALLOW_DELETE, REMARKS) VALUES ('SALES', 'ORDERS', %1)"_s.arg(values);
}

inline QString updateRow(const QString& assignments, const QString& user)
{
    return u"UPDATE TW_TBLPRV SET "_s + assignments + ' '_L1 + ofRow(user);
}

inline QString isThere(const QString& user)
{
    return u"This Table already has User privileges set for User '%1'"_s.arg(user);
}

/// The pane of what a user may do with a table, with a user in front of it.
class TablePrivilegePane : public UsersItemTest
{
protected:
    static QStringList clerk() { return ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s); }

    /// Begins to add rights while the others show.
    void beginToAdd()
    {
        begin(clerk());
        choose(key(ofTable(u"SALES"_s, u"ORDERS"_s)), u"mnu_TBLPRVAddNew"_s);
    }
};

} // namespace tableprivileges
