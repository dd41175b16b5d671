#pragma once

#include "UserPaneFixture.h"

/// What the pane of a user's rights on a database sends and says.
namespace databaseprivileges
{

using namespace userpane;

inline const QStringList columns{u"DATABASE_NAME"_s,  u"USER_NAME"_s,    u"DATABASE_USERNAME"_s,
                                 u"SECURITY_LEVEL"_s, u"ALLOW_SELECT"_s, u"ALLOW_INSERT"_s,
                                 u"ALLOW_UPDATE"_s,   u"ALLOW_DELETE"_s, u"REMARKS"_s};
inline const QString describePrivileges = u"SELECT * FROM TW_DBPRV "_s;
inline const QString readUsers = u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s;
inline const QString noUser = u"Please select a Username from the dropdown list."_s;
inline const QString noLevel = u"Please select a Secutity Level from the dropdown list"_s;
inline const QString mayDeletePrivileges = u"Are you sure you wish to delete this users database privileges?"_s;
inline const QString allOpen = u"USER_NAME DATABASE_USERNAME DATABASE_PASSWORD SECURITY_LEVEL REMARKS"_s;
inline const QString secret = u"DATABASE_PASSWORD"_s;

inline QString readRow(const QString& user)
{
    return u"SELECT * FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = '%1'"_s.arg(user);
}

inline QString userIsTaken(const QString& user)
{
    return u"SELECT USER_NAME FROM TW_DBPRV WHERE USER_NAME = '%1' AND DATABASE_NAME = 'SALES'"_s.arg(user);
}

inline QString insertRow(const QString& values)
{
    return u"INSERT INTO TW_DBPRV (DATABASE_NAME, USER_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, SECURITY_LEVEL, "
           "ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, REMARKS) VALUES ('SALES', %1)"_s.arg(values);
}

inline QString updateRow(const QString& assignments, const QString& user)
{
    return u"UPDATE TW_DBPRV SET %1 WHERE DATABASE_NAME = 'SALES' AND USER_NAME = '%2'"_s.arg(assignments, user);
}

inline QString deleteRow(const QString& user)
{
    return u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = '%1'"_s.arg(user);
}

inline const QString asItWas = u"DATABASE_USERNAME = 'SCOTT', ALLOW_SELECT = 01, ALLOW_INSERT = 00, ALLOW_UPDATE = 01, "
                               "ALLOW_DELETE = 00, SECURITY_LEVEL = 'DATABASE', REMARKS = 'sells'"_s;

/// The pane of what a user may do in a database, with a user in front of it.
class DatabasePrivilegePane : public UsersItemTest
{
protected:
    static QStringList clerk() { return ofDatabase(u"SALES"_s, u"CLERK"_s); }

    /// Begins to add rights while the others show.
    void beginToAdd()
    {
        begin(clerk());
        choose(key(ofDatabase(u"SALES"_s)), u"mnu_DBPRVAddNew"_s);
    }
};

} // namespace databaseprivileges
