#pragma once

#include "DropDown.h"
#include "RoomFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>

/// What the pane of a user sends and says.
namespace userpane
{

using namespace Qt::StringLiterals;

inline const QStringList shownColumns{u"USER_NAME"_s, u"REMARKS"_s};
inline const QString describe = u"SELECT * FROM TW_USER "_s;
inline const QString displayState = u": Up1 User Add User Edit User Delete"_s;
inline const QString noName = u"Please enter a User Name."_s;
inline const QString wantsPassword = u"The password will be re-set to blank unless you specify a new one.\n"
                                     "Do you wish to specify a new password now?"_s;
inline const QString noMatch = u"Password and Confirmation do not match!  Please re-enter the password."_s;
inline const QString mayDelete = u"Are you sure you want to delete this user?"_s;
/// What stands in the boxes instead of a password.
inline const QString filler(31, ' '_L1);

inline QString readUser(const QString& name)
{
    return u"SELECT * FROM TW_USER WHERE USER_NAME = '%1' "_s.arg(name);
}

inline QString nameIsTaken(const QString& name)
{
    return u"SELECT * FROM TW_USER WHERE USER_NAME = '%1'"_s.arg(name);
}

inline QString insertUser(const QString& name, const QString& password, const QString& remarks)
{
    return u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES ('%1', '%2', '%3')"_s.arg(name, password,
                                                                                                      remarks);
}

inline QString updateRemarks(const QString& name, const QString& remarks)
{
    return u"UPDATE TW_USER SET REMARKS = '%1' WHERE USER_NAME = '%2'"_s.arg(remarks, name);
}

inline QString updatePassword(const QString& name, const QString& password, const QString& remarks)
{
    return u"UPDATE TW_USER SET USER_PASSWORD = '%1', REMARKS = '%2' WHERE USER_NAME = '%3'"_s.arg(password, remarks,
                                                                                                   name);
}

inline QStringList deleteUser(const QString& name)
{
    return {u"DELETE FROM TW_USER WHERE USER_NAME = '%1'"_s.arg(name),
            u"DELETE FROM TW_DBPRV WHERE USER_NAME = '%1'"_s.arg(name),
            u"DELETE FROM TW_TBLPRV WHERE USER_NAME = '%1'"_s.arg(name)};
}

/// What carries a user with one table to another name within a database.
inline QStringList carried(const QString& from, const QString& to, const QString& database, const QString& table,
                           const QString& databaseRow, const QString& tableRow)
{
    return {
        u"SELECT * FROM TW_DBPRV WHERE DATABASE_NAME = '%1' AND USER_NAME = '%2' "_s.arg(database, from),
        u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME = '%1' AND USER_NAME = '%2' "_s.arg(database, from),
        u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
        "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS) VALUES ('%1', '%2', %3)"_s.arg(to, database,
                                                                                                           databaseRow),
        u"SELECT TABLE_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = '%1'"_s.arg(database),
        u"SELECT * FROM TW_TBLPRV WHERE USER_NAME = '%1' AND DATABASE_NAME = '%2' AND TABLE_NAME = '%3'"_s.arg(
            from, database, table),
        u"DELETE FROM TW_TBLPRV WHERE USER_NAME = '%1' AND DATABASE_NAME = '%2' AND TABLE_NAME = '%3'"_s.arg(
            from, database, table),
        u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
        "ALLOW_DELETE, REMARKS) VALUES ('%1', '%2', '%3', %4)"_s.arg(database, table, to, tableRow),
    };
}

inline QString isTaken(const QString& name)
{
    return u"A user called '%1' already exits in the Datasource.\nUse a unique name to identify this user."_s.arg(name);
}

/// Besides the usual catalog: all that CLERK may do is spelled out; database DEPOT with the table SHELF, on both of
/// which CLERK has rights too; and the user BOSS, who has none.
template <class Fixture>
class WithUsers : public Fixture
{
protected:
    void SetUp() override
    {
        Fixture::SetUp();
        for (const QString& statement : {
                 u"UPDATE TW_USER SET USER_PASSWORD = 'OLD-SECRET', REMARKS = 'at the desk' "
                 "WHERE USER_NAME = 'CLERK'"_s,
                 u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES ('BOSS', 'TOP-SECRET', '')"_s,
                 u"INSERT INTO TW_DB (DATABASE_NAME, DRIVER_NAME) VALUES ('DEPOT', 'DISAM')"_s,
                 u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME) "
                 "VALUES ('DEPOT', 'SHELF', 'TABLE', 'EMPTY')"_s,
                 u"UPDATE TW_DBPRV SET DATABASE_USERNAME = 'SCOTT', DATABASE_PASSWORD = 'DEEP-SECRET', "
                 "ALLOW_SELECT = 1, ALLOW_UPDATE = 1, SECURITY_LEVEL = 'DATABASE', REMARKS = 'sells' "
                 "WHERE USER_NAME = 'CLERK'"_s,
                 u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
                 "ALLOW_DELETE, SECURITY_LEVEL, REMARKS) "
                 "VALUES ('CLERK', 'DEPOT', 'TIGER', 'DARK-SECRET', 1, 1, 'TABLE', 'stores')"_s,
                 u"UPDATE TW_TBLPRV SET ALLOW_SELECT = 1, ALLOW_INSERT = 1, REMARKS = 'takes orders' "
                 "WHERE USER_NAME = 'CLERK'"_s,
                 u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_DELETE) "
                 "VALUES ('DEPOT', 'SHELF', 'CLERK', 1)"_s,
             })
            this->change(statement);
    }

    static QStringList user(const QString& name) { return {u"US"_s, "us="_L1 + name}; }
    static QStringList ofDatabase(const QString& database) { return {u"DB"_s, "db="_L1 + database, u"DBPRV"_s}; }
    static QStringList ofDatabase(const QString& database, const QString& user)
    {
        return ofDatabase(database) + QStringList{"dbprv="_L1 + user};
    }
    static QStringList ofTable(const QString& database, const QString& table)
    {
        return {u"DB"_s, "db="_L1 + database, u"TA"_s, "ta="_L1 + table, u"TBLPRV"_s};
    }
    static QStringList ofTable(const QString& database, const QString& table, const QString& user)
    {
        return ofTable(database, table) + QStringList{"tblprv="_L1 + user};
    }

    QStringList users() const
    {
        return this->stored(u"SELECT USER_NAME, USER_PASSWORD, REMARKS FROM TW_USER WHERE USER_NAME <> 'ADMIN' "
                            "ORDER BY USER_NAME"_s);
    }
    QString password(const QString& user) const
    {
        return this->world.value(this->datasource, u"SELECT USER_PASSWORD FROM TW_USER WHERE USER_NAME = '%1'"_s.arg(
                                                       QString(user).replace('\''_L1, "''"_L1)));
    }
    /// Who has rights on databases besides the administrator.
    QStringList databasePrivileges() const
    {
        return this->stored(u"SELECT DATABASE_NAME, USER_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
                            "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS FROM TW_DBPRV "
                            "WHERE DATABASE_NAME <> 'TW' ORDER BY DATABASE_NAME, USER_NAME"_s);
    }
    /// The same on tables.
    QStringList tablePrivileges() const
    {
        return this->stored(u"SELECT DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
                            "ALLOW_DELETE, REMARKS FROM TW_TBLPRV WHERE DATABASE_NAME <> 'TW' "
                            "ORDER BY DATABASE_NAME, TABLE_NAME, USER_NAME"_s);
    }
    /// All users and privileges but the administrator's.
    QStringList ownRows() const { return users() + databasePrivileges() + tablePrivileges(); }
};

inline const QString storedBoss = u"BOSS|TOP-SECRET|"_s;
inline const QString storedClerk = u"CLERK|OLD-SECRET|at the desk"_s;
inline const QString clerkOnDepot = u"DEPOT|CLERK|TIGER|DARK-SECRET|1|0|0|1|TABLE|stores"_s;
inline const QString clerkOnSales = u"SALES|CLERK|SCOTT|DEEP-SECRET|1|0|1|0|DATABASE|sells"_s;
inline const QString clerkOnShelf = u"DEPOT|SHELF|CLERK|0|0|0|1|"_s;
inline const QString clerkOnOrders = u"SALES|ORDERS|CLERK|1|1|0|0|takes orders"_s;

/// An item pane of the room, with a user in front of it.
class UsersItemTest : public WithUsers<ItemTest>
{
protected:
    /// The prompt in front of an entry.
    QString prompt(const QWidget& entry) const
    {
        for (const QLabel* label : window->currentPane()->findChildren<QLabel*>()) {
            if (label->buddy() == &entry)
                return label->text();
        }
        return u"<no prompt>"_s;
    }
    QLineEdit& box(const QString& name) const { return dynamic_cast<QLineEdit&>(control(name)); }
    /// What the boxes of a password and its confirmation hold.
    QStringList passwords(const QString& column) const
    {
        return {box(u"txtProperty_"_s + column).text(), box(u"txtConfirm"_s).text()};
    }
    /// Clicks into the second box of a password and types another text into it.
    void confirm(const QString& text)
    {
        ASSERT_TRUE(box(u"txtConfirm"_s).isEnabled());
        QTest::mouseClick(&box(u"txtConfirm"_s), Qt::LeftButton);
        hit(Qt::Key_A, Qt::ControlModifier);
        hit(Qt::Key_Delete);
        QTest::keyClicks(&box(u"txtConfirm"_s), text);
    }
    /// Types a password into both boxes.
    void writePassword(const QString& column, const QString& password)
    {
        write(column, password);
        confirm(password);
    }
    /// Pastes a password into both boxes.
    void pastePassword(const QString& column, const QString& password)
    {
        paste(column, password);
        confirm({});
        hit(Qt::Key_V, Qt::ControlModifier);
    }
    /// The flags that are ticked, by their columns.
    QStringList ticked() const
    {
        QStringList columns;
        for (const QCheckBox* check : window->currentPane()->findChildren<QCheckBox*>()) {
            if (check->isChecked())
                columns.append(check->objectName().section('_'_L1, 1));
        }
        return columns;
    }
    /// A click on the box of a flag.
    void tick(const QString& column)
    {
        auto& check = dynamic_cast<QCheckBox&>(control(u"chkProperty_"_s + column));
        QStyleOptionButton option;
        option.initFrom(&check);
        QTest::mouseClick(&check, Qt::LeftButton, {},
                          check.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &check).center());
    }
    QStringList items(const QString& column) const
    {
        QStringList all;
        for (int i = 0; i < list(column).count(); ++i)
            all.append(list(column).itemText(i));
        return all;
    }
    /// Presses "OK" and expects a message of validation.
    void expectRefused(const QString& message, const QString& column)
    {
        boxes.expectInform(message);
        press(u"OK"_s);
        boxes.verify();
        EXPECT_EQ(focus(), column);
    }
    /// Where the focus comes by, from where it is on.
    QStringList walked(int steps)
    {
        QStringList all{focus()};
        for (int i = 0; i < steps; ++i) {
            hit(Qt::Key_Tab);
            all.append(focus());
        }
        return all;
    }
    /// What shows of the pane.
    QStringList shownPane() const { return {currentPane(), paneTitle(), state(), open().join(' '_L1)}; }
};

/// The pane of a user, with a user in front of it.
class UserPane : public UsersItemTest
{
protected:
    /// Begins to add a user while the others show.
    void beginToAdd()
    {
        begin(user(u"BOSS"_s));
        choose(key({u"US"_s}), u"mnu_UserAddNew"_s);
    }
};

} // namespace userpane
