#include "MoveCopyFixture.h"

#include "frmTWErr.h"
#include "modDragAndDrop.h"

using namespace Qt::StringLiterals;
using modDragAndDrop::DragDBPRVsToDB;
using modDragAndDrop::DragDBPRVToDB;
using modDragAndDrop::DragTableToDB;
using modDragAndDrop::DragTBLPRVsToTable;
using modDragAndDrop::DragTBLPRVToTable;
using modDragAndDrop::DragUsersToDSN;
using modDragAndDrop::DragUserToDSN;

namespace
{

class DragUsers : public MoveCopyTest
{
protected:
    void SetUp() override
    {
        MoveCopyTest::SetUp();
        change(u"UPDATE TW_USER SET USER_PASSWORD = 's''ecret', REMARKS = 'at desk 4' WHERE USER_NAME = 'CLERK'"_s);
        change(u"UPDATE TW_DBPRV SET DATABASE_USERNAME = 'DBA', DATABASE_PASSWORD = 'hush', ALLOW_SELECT = 1, "
               "SECURITY_LEVEL = 'HIGH' WHERE USER_NAME = 'CLERK'"_s);
        change(u"UPDATE TW_TBLPRV SET ALLOW_UPDATE = 1 WHERE USER_NAME = 'CLERK'"_s);
        statements.clear();
    }

    DragItem user(const QString& name) const { return item(u"us"_s, {datasource, name}); }
    DragItem dbprv() const { return item(u"dbprv"_s, {datasource, u"SALES"_s, u"CLERK"_s}); }
    DragItem tblprv() const { return item(u"tblprv"_s, {datasource, u"SALES"_s, u"ORDERS"_s, u"CLERK"_s}); }
    DragItem otherUsers() const { return item(u"US"_s, {other}); }
    DragItem depot() const { return item(u"db"_s, {other, u"DEPOT"_s}); }
    DragItem parts() const { return item(u"ta"_s, {other, u"DEPOT"_s, u"PARTS"_s}); }
    void addClerk() const { changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s); }

    QString noUser() const { return u"Datasource '%1' does not contain the User 'CLERK'."_s.arg(other); }

    QStringList clerk(bool moved) const
    {
        QStringList all{u"T: SELECT * FROM TW_USER WHERE USER_NAME = 'CLERK'"_s,
                        u"S: SELECT * FROM TW_USER WHERE USER_NAME = 'CLERK'"_s,
                        u"T: INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) "
                        "VALUES ('CLERK', 's''ecret', 'at desk 4')"_s};
        if (moved)
            all.append(u"S: DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s);
        return all;
    }

    QStringList clerkOnDatabase(bool moved) const
    {
        const QString select = u"SELECT * FROM TW_DBPRV WHERE USER_NAME = 'CLERK' AND DATABASE_NAME = '%1'"_s;
        QStringList all{u"T: "_s + select.arg(u"DEPOT"_s), u"T: SELECT * FROM TW_USER WHERE USER_NAME = 'CLERK'"_s,
                        u"S: "_s + select.arg(u"SALES"_s),
                        u"T: INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, "
                        "ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS) "
                        "VALUES ('CLERK', 'DEPOT', 'DBA', 'hush', '1', '0', '0', '0', 'HIGH', '')"_s};
        if (moved)
            all.append(u"S: DELETE FROM TW_DBPRV WHERE USER_NAME = 'CLERK' AND DATABASE_NAME = 'SALES'"_s);
        return all;
    }

    QStringList clerkOnTable(bool moved) const
    {
        const QString select =
            u"SELECT * FROM TW_TBLPRV WHERE USER_NAME = 'CLERK' AND DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s;
        QStringList all{u"T: "_s + select.arg(u"DEPOT"_s, u"PARTS"_s),
                        u"T: SELECT * FROM TW_USER WHERE USER_NAME = 'CLERK'"_s,
                        u"S: "_s + select.arg(u"SALES"_s, u"ORDERS"_s),
                        u"T: INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, "
                        "ALLOW_UPDATE, ALLOW_DELETE, REMARKS) "
                        "VALUES ('DEPOT', 'PARTS', 'CLERK', '0', '0', '1', '0', '')"_s};
        if (moved)
            all.append(u"S: DELETE FROM TW_TBLPRV WHERE USER_NAME = 'CLERK' AND DATABASE_NAME = 'SALES' "
                       "AND TABLE_NAME = 'ORDERS'"_s);
        return all;
    }

    QString dbprvQuestion() const
    {
        return u"Do you want to Move or Copy the Database User Privileges for User 'CLERK' from Datasource '%1', "
               "Database 'SALES' to Datasource '%2', Database 'DEPOT'?\n\n"
               "NOTE: For security reasons, the password field will be set to blank in the new entry."_s.arg(datasource,
                                                                                                             other);
    }
};

} // namespace

TEST_F(DragUsers, AUserIsCopiedWithItsPasswordAndWithoutItsPrivileges)
{
    expectQuestion(u"Do you want to Move or Copy the User 'CLERK' from Datasource '%1' to Datasource '%2'?"_s.arg(
                       datasource, other),
                   u"cmdCopy"_s);
    EXPECT_TRUE(DragUserToDSN(user(u"CLERK"_s), otherUsers(), DragMode::Ask));
    EXPECT_EQ(said(), clerk(false));
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_EQ(rowsOf(other, u"TW_USER"_s, u"USER_NAME = 'CLERK'"_s), QStringList{u"CLERK|s'ecret|at desk 4"_s});
    EXPECT_EQ(rowsOf(other, u"TW_DBPRV"_s, u"USER_NAME = 'CLERK'"_s), QStringList());
}

TEST_F(DragUsers, AMovedUserLeavesItsPrivileges)
{
    EXPECT_TRUE(DragUserToDSN(user(u"CLERK"_s), otherUsers(), DragMode::Move));
    EXPECT_EQ(said(), clerk(true));
    EXPECT_EQ(rowsOf(datasource, u"TW_USER"_s, u"USER_NAME = 'CLERK'"_s), QStringList());
    EXPECT_EQ(rowsOf(datasource, u"TW_DBPRV"_s, u"USER_NAME = 'CLERK'"_s).size(), 1);
}

TEST_F(DragUsers, AdminOfACollectionIsRefusedAndTheOthersFollow)
{
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('ZOE')"_s);
    expectQuestion(u"Do you want to Move or Copy the Users collection in Datasource '%1' to the Datasource '%2'?"_s.arg(
                       datasource, other),
                   u"cmdMove"_s);
    boxes.expectInform(u"Datasource '%1' already contains a User called 'ADMIN'!"_s.arg(other));
    expectGoOn(u"Do you want to continue with the remainder of the Users in this collection?"_s, u"cmdYes"_s);
    EXPECT_TRUE(DragUsersToDSN(item(u"US"_s, {datasource}), otherUsers(), DragMode::Ask));
    EXPECT_EQ(said().front(), u"S: SELECT USER_NAME FROM TW_USER "_s);
    EXPECT_EQ(rowsOf(datasource, u"TW_USER"_s).size(), 1);
    EXPECT_EQ(rowsOf(other, u"TW_USER"_s).size(), 3);
}

TEST_F(DragUsers, OneSideOnItselfIsTold)
{
    boxes.expectInform(u"The source and the destination Datasources are the same"_s);
    EXPECT_FALSE(DragUsersToDSN(item(u"US"_s, {datasource}), item(u"FI"_s, {datasource}), DragMode::Ask));
    boxes.expectInform(u"The source and the destination Datasources are the same"_s);
    EXPECT_FALSE(DragUserToDSN(user(u"CLERK"_s), item(u"FI"_s, {datasource}), DragMode::Ask));
    const DragItem sales = item(u"db"_s, {datasource, u"SALES"_s});
    boxes.expectInform(u"The source and the destination Datasource are the same"_s);
    EXPECT_FALSE(DragDBPRVsToDB(item(u"DBPRV"_s, {datasource, u"SALES"_s}), sales, DragMode::Ask));
    boxes.expectInform(u"The source and the destination Database are the same"_s);
    EXPECT_FALSE(DragDBPRVToDB(dbprv(), sales, DragMode::Ask));
    const DragItem orders = item(u"ta"_s, {datasource, u"SALES"_s, u"ORDERS"_s});
    boxes.expectInform(u"The source and the destination Table are the same"_s);
    EXPECT_FALSE(DragTBLPRVsToTable(item(u"TBLPRV"_s, {datasource, u"SALES"_s, u"ORDERS"_s}), orders, DragMode::Ask));
    boxes.expectInform(u"The source and the destination Table are the same"_s);
    EXPECT_FALSE(DragTBLPRVToTable(tblprv(), orders, DragMode::Ask));
    EXPECT_EQ(said(), QStringList());
}

TEST_F(DragUsers, APrivilegeOnADatabaseTakesItsPasswordAlong)
{
    addClerk();
    expectQuestion(dbprvQuestion(), u"cmdCopy"_s);
    EXPECT_TRUE(DragDBPRVToDB(dbprv(), depot(), DragMode::Ask));
    EXPECT_EQ(said(), clerkOnDatabase(false));
    EXPECT_EQ(rowsOf(other, u"TW_DBPRV"_s, u"USER_NAME = 'CLERK'"_s),
              QStringList{u"CLERK|DEPOT|DBA|hush|1|0|0|0|HIGH|"_s});
    statements.clear();
    changeOther(u"DELETE FROM TW_DBPRV WHERE USER_NAME = 'CLERK'"_s);
    EXPECT_TRUE(DragDBPRVToDB(dbprv(), item(u"dbprv"_s, {other, u"DEPOT"_s, u"ADMIN"_s}), DragMode::Move));
    EXPECT_EQ(said(), clerkOnDatabase(true));
    EXPECT_EQ(rowsOf(datasource, u"TW_DBPRV"_s, u"USER_NAME = 'CLERK'"_s), QStringList());
}

TEST_F(DragUsers, APrivilegeThatTheDatabaseHasIsRefused)
{
    addClerk();
    changeOther(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('CLERK', 'DEPOT')"_s);
    boxes.expectInform(
        u"Datasource '%1', Database 'DEPOT' already contains a User Database Privilege for User 'CLERK'!"_s.arg(other));
    EXPECT_FALSE(DragDBPRVToDB(dbprv(), depot(), DragMode::Move));
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DragUsers, APrivilegeOfAUserWhomTheTargetLacksStaysWithinAMovedCollection)
{
    expectQuestion(u"Do you want to Move or Copy the Users Database Privileges collection in Datasource '%1', "
                   "Database 'SALES' to the Datasource '%2'?\n\n"
                   "NOTE: For security reasons, the passwords field will be set blank in the new entries."_s.arg(
                       datasource, other),
                   u"cmdMove"_s);
    boxes.expectInform(noUser());
    expectGoOn(u"Do you want to continue with the remainder of the User Privileges in this collection?"_s,
               u"cmdYesAll"_s);
    EXPECT_TRUE(DragDBPRVsToDB(item(u"DBPRV"_s, {datasource, u"SALES"_s}), depot(), DragMode::Ask));
    EXPECT_EQ(said(), (QStringList{u"S: SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES'"_s,
                                   u"T: SELECT * FROM TW_DBPRV WHERE USER_NAME = 'CLERK' AND DATABASE_NAME = 'DEPOT'"_s,
                                   u"T: SELECT * FROM TW_USER WHERE USER_NAME = 'CLERK'"_s}));
    EXPECT_EQ(rowsOf(datasource, u"TW_DBPRV"_s, u"DATABASE_NAME = 'SALES'"_s).size(), 1);
}

TEST_F(DragUsers, APrivilegeOnATableIsCarried)
{
    addClerk();
    expectQuestion(
        u"Do you want to Move or Copy the Table User Privileges for User 'CLERK' from Datasource '%1', "
        "Database 'SALES', Table 'ORDERS' to Datasource '%2', Database 'DEPOT' Table 'PARTS'?"_s.arg(datasource, other),
        u"cmdMove"_s);
    EXPECT_TRUE(DragTBLPRVToTable(tblprv(), parts(), DragMode::Ask));
    EXPECT_EQ(said(), clerkOnTable(true));
    EXPECT_EQ(rowsOf(other, u"TW_TBLPRV"_s, u"USER_NAME = 'CLERK'"_s), QStringList{u"DEPOT|PARTS|CLERK|0|0|1|0|"_s});
    EXPECT_EQ(rowsOf(datasource, u"TW_TBLPRV"_s, u"USER_NAME = 'CLERK'"_s), QStringList());
}

TEST_F(DragUsers, APrivilegeThatTheTableHasOrWhoseUserIsMissingIsRefused)
{
    const QString goOn = u"Do you want to continue with the remainder of the Table Privileges in this collection?"_s;
    expectQuestion(u"Do you want to Move or Copy the Users Tables Privileges collection in Datasource '%1', "
                   "Database 'SALES', Table 'ORDERS' to the Datasource '%2', Database 'DEPOT', Table 'PARTS'?"_s.arg(
                       datasource, other),
                   u"cmdMove"_s);
    boxes.expectInform(noUser());
    expectGoOn(goOn, u"cmdYes"_s);
    const DragItem collection = item(u"TBLPRV"_s, {datasource, u"SALES"_s, u"ORDERS"_s});
    EXPECT_TRUE(DragTBLPRVsToTable(collection, parts(), DragMode::Ask));
    EXPECT_EQ(said().front(),
              u"S: SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"_s);
    addClerk();
    changeOther(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('DEPOT', 'PARTS', 'CLERK')"_s);
    boxes.expectInform(
        u"Datasource '%1', Database 'DEPOT', Table 'PARTS' contains a User Table Privilege for User 'CLERK'!"_s.arg(
            other));
    EXPECT_FALSE(DragTBLPRVToTable(tblprv(), parts(), DragMode::Move));
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DragUsers, AMovedTableTellsOfEveryPrivilegeWhoseUserIsMissing)
{
    change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', 'ZOE')"_s);
    change(u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES'"_s);
    changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('PAYROLL')"_s);
    boxes.expectInform(noUser());
    expectGoOn(u"Do you want to continue with the remainder of the Table Privileges in this collection?"_s,
               u"cmdYesAll"_s);
    boxes.expectInform(u"Datasource '%1' does not contain the User 'ZOE'."_s.arg(other));
    EXPECT_TRUE(DragTableToDB(item(u"ta"_s, {datasource, u"SALES"_s, u"ORDERS"_s}), depot(), DragMode::Move));
    EXPECT_EQ(rowsOf(datasource, u"TW_TBLPRV"_s, u"DATABASE_NAME = 'SALES'"_s).size(), 2);
    EXPECT_EQ(rowsOf(datasource, u"TW_TABLE"_s, u"DATABASE_NAME = 'SALES'"_s), QStringList());
}

TEST_F(DragUsers, AFaultIsMendedByARetry)
{
    addClerk();
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('ZOE')"_s);
    sweep([&] {
        EXPECT_TRUE(DragDBPRVsToDB(item(u"DBPRV"_s, {datasource, u"SALES"_s}), depot(), DragMode::Move));
        EXPECT_TRUE(
            DragTBLPRVsToTable(item(u"TBLPRV"_s, {datasource, u"SALES"_s, u"ORDERS"_s}), parts(), DragMode::Move));
        boxes.expectInform(u"Datasource '%1' already contains a User called 'ADMIN'!"_s.arg(other));
        expectGoOn(u"Do you want to continue with the remainder of the Users in this collection?"_s, u"cmdYesAll"_s);
        boxes.expectInform(u"Datasource '%1' already contains a User called 'CLERK'!"_s.arg(other));
        EXPECT_TRUE(DragUsersToDSN(item(u"US"_s, {datasource}), otherUsers(), DragMode::Move));
        EXPECT_EQ(rowsOf(other, u"TW_USER"_s, u"USER_NAME = 'ZOE'"_s).size(), 1);
        EXPECT_EQ(rowsOf(datasource, u"TW_USER"_s, u"USER_NAME = 'ZOE'"_s), QStringList());
    });
}

TEST_F(DragUsers, AnIgnoredFaultLeavesTheRoutineAndWhatItDid)
{
    keepBoth();
    const QStringList user1 = clerk(true);
    for (int k = 1; k <= user1.size(); ++k) {
        beginAnewBoth();
        statements.failAt(k);
        errors.expect(Press::Ignore);
        EXPECT_FALSE(DragUserToDSN(user(u"CLERK"_s), otherUsers(), DragMode::Move));
        EXPECT_EQ(said(), user1.first(k));
        EXPECT_EQ(errors.shown().back().trappedIn, u"modDragAndDrop.DragUserToDSN"_s);
        // The last one that fails leaves the user on both sides.
        EXPECT_EQ(rowsOf(other, u"TW_USER"_s, u"USER_NAME = 'CLERK'"_s).size(), k > 3 ? 1 : 0);
        EXPECT_EQ(rowsOf(datasource, u"TW_USER"_s, u"USER_NAME = 'CLERK'"_s).size(), 1);
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    }
    beginAnewBoth();
    addClerk();
    for (int k = 1; k <= 5; ++k) {
        statements.clear();
        changeOther(u"DELETE FROM TW_DBPRV WHERE USER_NAME = 'CLERK'"_s);
        statements.failAt(k);
        errors.expect(Press::Ignore);
        EXPECT_FALSE(DragDBPRVToDB(dbprv(), depot(), DragMode::Move));
        EXPECT_EQ(said(), clerkOnDatabase(true).first(k));
        EXPECT_EQ(errors.shown().back().trappedIn, u"modDragAndDrop.DragDBPRVToDB"_s);
        statements.clear();
        changeOther(u"DELETE FROM TW_TBLPRV WHERE USER_NAME = 'CLERK'"_s);
        statements.failAt(k);
        errors.expect(Press::Ignore);
        EXPECT_FALSE(DragTBLPRVToTable(tblprv(), parts(), DragMode::Move));
        EXPECT_EQ(said(), clerkOnTable(true).first(k));
        EXPECT_EQ(errors.shown().back().trappedIn, u"modDragAndDrop.DragTBLPRVToTable"_s);
    }
}

TEST_F(DragUsers, ARefusalByTheTargetsRightsIsOneBoxAndTheSourceStays)
{
    addClerk();
    const QStringList before = bothCatalogs();
    const auto expectRefusal = [&](int insertion) {
        statements.clear();
        statements.failAt(insertion, {{42000, u"no privileges on the table"_s}});
        boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    };
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('ZOE')"_s);
    expectRefusal(3);
    EXPECT_FALSE(DragUserToDSN(user(u"ZOE"_s), otherUsers(), DragMode::Move));
    EXPECT_TRUE(said().back().startsWith(u"T: INSERT INTO TW_USER "_s));
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'ZOE'"_s);
    expectRefusal(4);
    EXPECT_FALSE(DragDBPRVToDB(dbprv(), depot(), DragMode::Move));
    EXPECT_TRUE(said().back().startsWith(u"T: INSERT INTO TW_DBPRV "_s));
    expectRefusal(4);
    EXPECT_FALSE(DragTBLPRVToTable(tblprv(), parts(), DragMode::Move));
    EXPECT_TRUE(said().back().startsWith(u"T: INSERT INTO TW_TBLPRV "_s));
    verify();
    EXPECT_EQ(errors.shown().size(), 0u);
    EXPECT_EQ(bothCatalogs(), before);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}
