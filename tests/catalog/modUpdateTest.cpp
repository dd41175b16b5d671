#include "modUpdate.h"

#include "ScriptedBoxes.h"
#include "UpdateFixture.h"
#include "modDatabase.h"

namespace
{

using ModUpdateTest = UpdateFixture;

TEST_F(ModUpdateTest, UpdateFieldMovesTheFieldAndTheColumnsOfTheFilesTables)
{
    const QStringList sent =
        sentBy([&] { modUpdate::UpdateField(datasource, "ORDERS", "ORDERS", "AMOUNT", "TOTAL", 12); });
    EXPECT_EQ(
        lines(sent),
        lines({"SELECT * FROM TW_FIELD WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'AMOUNT'",
               "DELETE FROM TW_FIELD WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'AMOUNT'",
               "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
               "SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
               "VALUES ('ORDERS', 02, 'TOTAL', 'PACKED', 012, 04, 07, 0-2, 01, '', '0', 'net')",
               "SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME='ORDERS'",
               "UPDATE TW_COLUMN SET FIELD_NAME = 'TOTAL' WHERE FIELD_NAME = 'AMOUNT' AND TABLE_NAME = 'LINES'",
               "UPDATE TW_COLUMN SET FIELD_NAME = 'TOTAL' WHERE FIELD_NAME = 'AMOUNT' AND TABLE_NAME = 'ORDERS'"}));
}

TEST_F(ModUpdateTest, UpdateFileMovesTheFileThenTheTablesThenEachField)
{
    const QStringList sent = sentBy([&] { modUpdate::UpdateFile(datasource, "ORDERS", "BILLS"); });
    EXPECT_EQ(
        lines(sent),
        lines({"SELECT * FROM TW_FILE WHERE FILE_NAME = 'ORDERS'", "DELETE FROM TW_FILE WHERE FILE_NAME = 'ORDERS'",
               "INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
               "VALUES ('BILLS', 'data:it''s', 0120, 'INDEXED', 'FIXED', 'the clerk''s')",
               "UPDATE TW_TABLE SET FILE_NAME = 'BILLS' WHERE FILE_NAME = 'ORDERS'",
               "SELECT FIELD_NAME, OFFSET FROM TW_FIELD WHERE FILE_NAME = 'ORDERS'",

               "SELECT * FROM TW_FIELD WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'AMOUNT'",
               "DELETE FROM TW_FIELD WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'AMOUNT'",
               "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
               "SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
               "VALUES ('BILLS', 02, 'AMOUNT', 'PACKED', 010, 04, 07, 0-2, 01, '', '0', 'net')",
               "SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME='BILLS'",
               "UPDATE TW_COLUMN SET FIELD_NAME = 'AMOUNT' WHERE FIELD_NAME = 'AMOUNT' AND TABLE_NAME = 'LINES'",
               "UPDATE TW_COLUMN SET FIELD_NAME = 'AMOUNT' WHERE FIELD_NAME = 'AMOUNT' AND TABLE_NAME = 'ORDERS'",

               "SELECT * FROM TW_FIELD WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'ORDER-ID'",
               "DELETE FROM TW_FIELD WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'ORDER-ID'",
               "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
               "SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
               "VALUES ('BILLS', 01, 'ORDER-ID', 'it''s text', 00, 010, 010, 00, 00, 'YYYY', 'none', 'unique')",
               "SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME='BILLS'",
               "UPDATE TW_COLUMN SET FIELD_NAME = 'ORDER-ID' WHERE FIELD_NAME = 'ORDER-ID' AND TABLE_NAME = 'LINES'",
               "UPDATE TW_COLUMN SET FIELD_NAME = 'ORDER-ID' WHERE FIELD_NAME = 'ORDER-ID' AND TABLE_NAME = "
               "'ORDERS'"}));
}

TEST_F(ModUpdateTest, UpdateColumnCopiesNumbersAsTheyStand)
{
    const QStringList sent = sentBy([&] {
        modUpdate::UpdateColumn(datasource, "SALES", "STOCK", "ORDERS", "PARTS", "AMOUNT", "TOTAL", 0, 12, "PRICE");
    });
    EXPECT_EQ(
        lines(sent),
        lines(
            {"SELECT * FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_NAME = "
             "'AMOUNT'",
             "DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_NAME = 'AMOUNT'",
             "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, "
             "LENGTH, PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, "
             "CASE_SENSITIVE, SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, COLUMN_TYPE, DISPLAY_NAME) "
             "VALUES ('STOCK', 'PARTS', 012, 'TOTAL', 'PRICE', 'DECIMAL', 4, 7, -2, 1, 0, 1, 1, 1, 0, 0, 3, 10, "
             "'''0''', 'it''s  net, rounded', 5, 0, 'Amount')"}));
}

TEST_F(ModUpdateTest, ANumberBelowZeroOfAColumnStaysBelowZero)
{
    const QStringList expected = catalogAfter(
        {"UPDATE TW_COLUMN SET COLUMN_NUMBER = -3 WHERE DATABASE_NAME = 'SALES' AND COLUMN_NAME = 'AMOUNT'"});
    const QStringList sent = sentBy([&] {
        modUpdate::UpdateColumn(datasource, "SALES", "SALES", "ORDERS", "ORDERS", "AMOUNT", "AMOUNT", 0, -3, "AMOUNT");
    });
    EXPECT_TRUE(sent.back().contains("VALUES ('SALES', 'ORDERS', 0-3, 'AMOUNT', 'AMOUNT', 'DECIMAL', "));
    EXPECT_EQ(lines(catalog()), lines(expected));
}

TEST_F(ModUpdateTest, UpdateTableMovesTheTableThenItsColumnsThenItsPrivileges)
{
    const QStringList sent = sentBy([&] { modUpdate::UpdateTable(datasource, "SALES", "STOCK", "ORDERS", "BILLS"); });
    const QString column =
        "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, "
        "LENGTH, PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, "
        "CASE_SENSITIVE, SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, COLUMN_TYPE, DISPLAY_NAME) ";
    EXPECT_EQ(
        lines(sent),
        lines({"SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "DELETE FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
               "NUMBER_COLUMNS, CRITERIA, REMARKS, DISPLAY_NAME) "
               "VALUES ('STOCK', 'BILLS', 'TABLE', 'ORDERS', 'orders.dat', 02, 'KIND = ''O''', 'all orders,  the "
               "clerk''s too', 'BILLS')",
               "SELECT COLUMN_TYPE, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME FROM TW_COLUMN "
               "WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",

               "SELECT * FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_NAME = "
               "'AMOUNT'",
               "DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_NAME = "
               "'AMOUNT'",
               column + "VALUES ('STOCK', 'BILLS', 02, 'AMOUNT', 'AMOUNT', 'DECIMAL', 4, 7, -2, 1, 0, 1, 1, 1, 0, 0, "
                        "3, 10, '''0''', 'it''s  net, rounded', 5, 0, 'Amount')",

               "SELECT * FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_NAME = "
               "'RFA'",
               "DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_NAME = 'RFA'",
               column + "VALUES ('STOCK', 'BILLS', 01, 'RFA', 'RFA', '', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, '', '', "
                        "0, 1, '')",

               "SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "SELECT * FROM TW_TBLPRV WHERE USER_NAME = 'ANN' AND DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "DELETE FROM TW_TBLPRV WHERE USER_NAME = 'ANN' AND DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
               "ALLOW_DELETE, REMARKS) VALUES ('STOCK', 'BILLS', 'ANN', 01, 01, 00, 00, 'Ann''s')"}));
}

TEST_F(ModUpdateTest, UpdateTBLPRVMovesOneRow)
{
    const QStringList sent =
        sentBy([&] { modUpdate::UpdateTBLPRV(datasource, "SALES", "STOCK", "ORDERS", "PARTS", "ANN", "BOB"); });
    EXPECT_EQ(
        lines(sent),
        lines({"SELECT * FROM TW_TBLPRV WHERE USER_NAME = 'ANN' AND DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "DELETE FROM TW_TBLPRV WHERE USER_NAME = 'ANN' AND DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
               "ALLOW_DELETE, REMARKS) VALUES ('STOCK', 'PARTS', 'BOB', 01, 01, 00, 00, 'Ann''s')"}));
}

TEST_F(ModUpdateTest, UpdateDatabaseMovesTheDatabaseThenItsTablesThenItsPrivileges)
{
    // One empty table and one privilege: what hangs under a table has a test of its own.
    run({"DELETE FROM TW_COLUMN", "DELETE FROM TW_TBLPRV", "DELETE FROM TW_TABLE WHERE TABLE_NAME = 'LINES'",
         "DELETE FROM TW_DBPRV WHERE USER_NAME = 'BOB'"});
    const QStringList sent = sentBy([&] { modUpdate::UpdateDatabase(datasource, "SALES", "SHOP"); });
    EXPECT_EQ(
        lines(sent),
        lines({"SELECT * FROM TW_DB WHERE DATABASE_NAME = 'SALES' ", "DELETE FROM TW_DB WHERE DATABASE_NAME = 'SALES' ",
               "INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, CONNECT_STRING, "
               "REMARKS, DISPLAY_NAME) "
               "VALUES ('SHOP', 'data:', 'DISAM', 'setup', 'c=''1''', 'the shop''s', 'SHOP')",
               "SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'SALES'",

               "SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "DELETE FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
               "NUMBER_COLUMNS, CRITERIA, REMARKS, DISPLAY_NAME) "
               "VALUES ('SHOP', 'ORDERS', 'TABLE', 'ORDERS', 'orders.dat', 02, 'KIND = ''O''', 'all orders,  the "
               "clerk''s too', 'ORDERS')",
               "SELECT COLUMN_TYPE, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME FROM TW_COLUMN "
               "WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",

               "SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' ",
               "SELECT * FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = 'ANN' ",
               "DELETE FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = 'ANN' ",
               "INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
               "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS) "
               "VALUES ('ANN', 'SHOP', 'ann', 'it''s', 01, 00, 01, 00, 'TABLE', 'clerk,  Bob''s')",
               "SELECT TABLE_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES'"}));
}

TEST_F(ModUpdateTest, UpdateUserMovesTheUserWithoutThePasswordThenThePrivilegesOfEachDatabase)
{
    run({"DELETE FROM TW_DBPRV WHERE DATABASE_NAME = 'STOCK'"});
    const QStringList sent = sentBy([&] { modUpdate::UpdateUser(datasource, "ANN", "EVE"); });
    EXPECT_EQ(
        lines(sent),
        lines({"SELECT * FROM TW_USER WHERE USER_NAME = 'ANN'", "DELETE FROM TW_USER WHERE USER_NAME = 'ANN'",
               "INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES ('EVE', '', 'Ann''s')",
               "SELECT DATABASE_NAME FROM TW_DBPRV WHERE USER_NAME = 'ANN'",

               "SELECT * FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = 'ANN' ",
               "DELETE FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = 'ANN' ",
               "INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
               "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS) "
               "VALUES ('EVE', 'SALES', 'ann', 'it''s', 01, 00, 01, 00, 'TABLE', 'clerk,  Bob''s')",
               "SELECT TABLE_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES'",

               "SELECT * FROM TW_TBLPRV WHERE USER_NAME = 'ANN' AND DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "DELETE FROM TW_TBLPRV WHERE USER_NAME = 'ANN' AND DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
               "INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
               "ALLOW_DELETE, REMARKS) VALUES ('SALES', 'ORDERS', 'EVE', 01, 01, 00, 00, 'Ann''s')"}));
}

TEST_F(ModUpdateTest, EveryRoutineChangesTheKeyInAllDependentRowsAndNothingElse)
{
    for (const Update& update : updates()) {
        const QStringList expected = catalogAfter(update.changes);
        update.call();
        EXPECT_EQ(lines(catalog()), lines(expected)) << update.name;
        restore();
    }
}

TEST_F(ModUpdateTest, EqualNamesWriteEveryRowAnewWithItsValues)
{
    for (const Update& rewrite : rewrites()) {
        const QStringList expected = catalogAfter(rewrite.changes);
        const QStringList sent = sentBy(rewrite.call);
        EXPECT_EQ(lines(catalog()), lines(expected)) << rewrite.name;
        EXPECT_EQ(sent.filter("DELETE FROM").size(), sent.filter("INSERT INTO").size()) << rewrite.name;
        EXPECT_GT(sent.filter("INSERT INTO").size(), 0) << rewrite.name;
        restore();
    }
}

TEST_F(ModUpdateTest, AKeyThatIsNotInTheCatalogIsReportedBeforeAnyWrite)
{
    const struct {
        std::function<void()> call;
        QString routine;
        QString from;
    } missing[] = {
        {[&] { modUpdate::UpdateField(datasource, "ORDERS", "ORDERS", "NONE", "X", 0); }, "modUpdate.UpdateField",
         "FROM TW_FIELD WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'NONE'"},
        {[&] { modUpdate::UpdateFile(datasource, "NONE", "X"); }, "modUpdate.UpdateFile",
         "FROM TW_FILE WHERE FILE_NAME = 'NONE'"},
        {[&] { modUpdate::UpdateColumn(datasource, "SALES", "X", "ORDERS", "X", "NONE", "X", 0, 1, "X"); },
         "modUpdate.UpdateColumn",
         "FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_NAME = 'NONE'"},
        {[&] { modUpdate::UpdateTable(datasource, "SALES", "X", "NONE", "X"); }, "modUpdate.UpdateTable",
         "FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'NONE'"},
        {[&] { modUpdate::UpdateTBLPRV(datasource, "SALES", "X", "ORDERS", "X", "NONE", "X"); },
         "modUpdate.UpdateDatabase",
         "FROM TW_TBLPRV WHERE USER_NAME = 'NONE' AND DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"},
        {[&] { modUpdate::UpdateDatabase(datasource, "NONE", "X"); }, "modUpdate.UpdateDatabase",
         "FROM TW_DB WHERE DATABASE_NAME = 'NONE' "},
        {[&] { modUpdate::UpdateDBPRV(datasource, "SALES", "X", "NONE", "X"); }, "modUpdate.UpdateDBPRV",
         "FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' AND USER_NAME = 'NONE' "},
        {[&] { modUpdate::UpdateUser(datasource, "NONE", "X"); }, "modUpdate.UpdateUser",
         "FROM TW_USER WHERE USER_NAME = 'NONE'"},
    };
    const QStringList before = catalog();
    for (const auto& [call, routine, from] : missing) {
        form.expect(Press::Ignore);
        EXPECT_EQ(sentBy(call), QStringList("SELECT * " + from));
        ASSERT_FALSE(form.shown().empty());
        const ScriptedErrorForm::Shown& shown = form.shown().back();
        EXPECT_EQ(shown.number, "3021");
        EXPECT_EQ(shown.trappedIn, routine);
        EXPECT_EQ(shown.callStack, QStringList(routine));
        EXPECT_EQ(shown.additional, "SELECT * " + from + "\n\nDELETE " + from);
    }
    EXPECT_EQ(form.shown().size(), std::size(missing));
    EXPECT_EQ(catalog(), before);
}

TEST_F(ModUpdateTest, AReportShowsTheStatementsBuiltSoFar)
{
    const QString select = "SELECT * FROM TW_FILE WHERE FILE_NAME = 'ORDERS'";
    const QString remove = "DELETE FROM TW_FILE WHERE FILE_NAME = 'ORDERS'";
    const QString insert = "INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, "
                           "REMARKS) VALUES ('PARTS2', 'data:it''s', 0120, 'INDEXED', 'FIXED', 'the clerk''s')";
    const QString tables = "UPDATE TW_TABLE SET FILE_NAME = 'PARTS2' WHERE FILE_NAME = 'ORDERS'";
    const QString fields = "SELECT FIELD_NAME, OFFSET FROM TW_FIELD WHERE FILE_NAME = 'ORDERS'";
    const QStringList reports{select, select + "\n\n" + insert + "\n\n" + remove,
                              select + "\n\n" + insert + "\n\n" + remove, tables + "\n\n" + insert + "\n\n" + remove,
                              fields + "\n\n" + insert + "\n\n" + remove};
    for (int k = 1; k <= reports.size(); ++k) {
        restore();
        statements.clear();
        statements.failAt(k);
        form.expect(Press::Ignore);
        modUpdate::UpdateFile(datasource, "ORDERS", "PARTS2");
        ASSERT_EQ(form.shown().size(), static_cast<std::size_t>(k));
        EXPECT_EQ(form.shown().back().trappedIn, "modUpdate.UpdateFile");
        EXPECT_EQ(form.shown().back().additional, modDatabase::FormatSQL(reports[k - 1])) << k;
    }
}

TEST_F(ModUpdateTest, AFailureInADependentNamesTheDependentsRoutine)
{
    statements.failAt(6);
    form.expect(Press::Ignore);
    modUpdate::UpdateFile(datasource, "ORDERS", "BILLS");
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().trappedIn, "modUpdate.UpdateField");
    EXPECT_EQ(form.shown().front().callStack, QStringList({"modUpdate.UpdateField", "modUpdate.UpdateFile"}));
}

TEST_F(ModUpdateTest, AFailureOfATablePrivilegeIsReportedUnderTheNameOfTheDatabasesRoutine)
{
    statements.failAt(3);
    form.expect(Press::Ignore);
    modUpdate::UpdateTBLPRV(datasource, "SALES", "STOCK", "ORDERS", "PARTS", "ANN", "ANN");
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().trappedIn, "modUpdate.UpdateDatabase");
    EXPECT_EQ(form.shown().front().callStack, QStringList("modUpdate.UpdateDatabase"));
}

TEST_F(ModUpdateTest, AFailureOfPrivilegesShowsOneBoxAndEndsTheRoutine)
{
    ScriptedBoxes boxes;
    boxes.expect("The current user has insufficient privileges to complete this action.", boxes::Icon::None);
    statements.failAt(2, {{42000, "no privileges on TW_USER"}});
    const QStringList before = catalog();
    modUpdate::UpdateUser(datasource, "ANN", "EVE");
    EXPECT_EQ(statements.statements().size(), 2);
    EXPECT_EQ(catalog(), before);
}

TEST_F(ModUpdateTest, WithoutAConnectionNothingIsSent)
{
    connections.Remove(datasource);
    connections.setWorkspace(nullptr);
    statements.clear();
    form.expect(Press::Ignore).expect(Press::Ignore);
    modUpdate::UpdateUser(datasource, "ANN", "EVE");
    EXPECT_TRUE(statements.statements().isEmpty());
    ASSERT_EQ(form.shown().size(), 2U);
    EXPECT_EQ(form.shown()[0].trappedIn, "CConnectionsAdd");
    EXPECT_EQ(form.shown()[1].trappedIn, "modUpdate.UpdateUser");
    EXPECT_EQ(form.shown()[1].number, "91");
}

TEST_F(ModUpdateTest, AFailedDeleteThatIsIgnoredLeavesTheOldRow)
{
    statements.failAt(2);
    form.expect(Press::Ignore);
    const QStringList before = catalog();
    modUpdate::UpdateFile(datasource, "ORDERS", "BILLS");
    EXPECT_EQ(catalog(), before);
}

TEST_F(ModUpdateTest, AFailedInsertThatIsIgnoredLeavesNeitherRow)
{
    const QStringList expected = catalogAfter({"DELETE FROM TW_FILE WHERE FILE_NAME = 'ORDERS'"});
    statements.failAt(3);
    form.expect(Press::Ignore);
    modUpdate::UpdateFile(datasource, "ORDERS", "BILLS");
    EXPECT_EQ(lines(catalog()), lines(expected));
}

TEST_F(ModUpdateTest, ANewKeyThatIsTakenFailsInTheInsert)
{
    const QStringList expected = catalogAfter({"DELETE FROM TW_USER WHERE USER_NAME = 'ANN'"});
    form.expect(Press::Ignore);
    modUpdate::UpdateUser(datasource, "ANN", "BOB");
    EXPECT_EQ(lines(catalog()), lines(expected));
    EXPECT_EQ(form.shown().front().number, "ODBC Error");
}

TEST_F(ModUpdateTest, ATablePrivilegeThatDidNotMoveWithItsTableMovesWithItsDatabasePrivilege)
{
    const QStringList expected = catalogAfter(updates()[5].changes);
    const QStringList whole = sentBy([&] { modUpdate::UpdateDatabase(datasource, "SALES", "SHOP"); });
    restore();
    statements.clear();
    statements.failAt(static_cast<int>(whole.indexOf("SELECT * FROM TW_TBLPRV WHERE USER_NAME = 'ANN' AND "
                                                     "DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'")) +
                      1);
    form.expect(Press::Ignore);
    modUpdate::UpdateDatabase(datasource, "SALES", "SHOP");
    EXPECT_EQ(lines(catalog()), lines(expected));
}

TEST_F(ModUpdateTest, NullsBecomeZerosAndEmptyTexts)
{
    const struct {
        QString row;
        QStringList numbers;
        QStringList texts;
        std::function<void()> call;
        QString insertion;
    } nulls[] = {
        {"TW_FIELD WHERE FILE_NAME = 'PARTS'",
         {"FIELD_NUMBER", "LENGTH", "PRECISION", "SCALE", "ENCRYPTED"},
         {"LOCAL_TYPE_NAME", "FORMAT", "DEFAULT_VALUE", "REMARKS"},
         [&] { modUpdate::UpdateField(datasource, "PARTS", "PARTS", "AMOUNT", "AMOUNT", 0); },
         "VALUES ('PARTS', 0, 'AMOUNT', '', 00, 0, 0, 0, 0, '', '', '')"},
        {"TW_FILE WHERE FILE_NAME = 'PARTS'",
         {"RECORD_SIZE"},
         {"OPEN_STRING", "FILE_ORGANISATION", "RECORD_TYPE", "REMARKS"},
         [&] { modUpdate::UpdateFile(datasource, "PARTS", "PARTS"); },
         "VALUES ('PARTS', '', 0, '', '', '')"},
        {"TW_COLUMN WHERE DATABASE_NAME = 'STOCK'",
         {},
         {"SQL_TYPE_NAME", "DEFAULT_VALUE", "REMARKS", "DISPLAY_NAME"},
         [&] {
             modUpdate::UpdateColumn(datasource, "STOCK", "STOCK", "PARTS", "PARTS", "AMOUNT", "AMOUNT", 0, 1,
                                     "AMOUNT");
         },
         "VALUES ('STOCK', 'PARTS', 01, 'AMOUNT', 'AMOUNT', '', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, '', '', 0, 0, '')"},
        {"TW_TABLE WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'",
         {"NUMBER_COLUMNS"},
         {"TABLE_TYPE", "FILE_NAME", "FILE_SPECIFICATION", "CRITERIA", "REMARKS"},
         [&] {
             run({"UPDATE TW_TABLE SET DISPLAY_NAME = TABLE_NAME"});
             modUpdate::UpdateTable(datasource, "SALES", "SALES", "ORDERS", "ORDERS");
         },
         "VALUES ('SALES', 'ORDERS', '', '', '', 0, '', '', 'ORDERS')"},
        {"TW_TBLPRV WHERE USER_NAME = 'ANN'",
         {"ALLOW_SELECT", "ALLOW_INSERT", "ALLOW_UPDATE", "ALLOW_DELETE"},
         {"REMARKS"},
         [&] { modUpdate::UpdateTBLPRV(datasource, "SALES", "SALES", "ORDERS", "ORDERS", "ANN", "ANN"); },
         "VALUES ('SALES', 'ORDERS', 'ANN', 0, 0, 0, 0, '')"},
        {"TW_DB WHERE DATABASE_NAME = 'STOCK'",
         {},
         {"DEFAULT_DIRECTORY", "DRIVER_NAME", "SETUP_PROCEDURE", "CONNECT_STRING", "REMARKS"},
         [&] {
             run({"UPDATE TW_DB SET DISPLAY_NAME = DATABASE_NAME", "UPDATE TW_TABLE SET DISPLAY_NAME = TABLE_NAME"});
             modUpdate::UpdateDatabase(datasource, "STOCK", "STOCK");
         },
         "VALUES ('STOCK', '', '', '', '', '', 'STOCK')"},
        {"TW_DBPRV WHERE USER_NAME = 'ANN' AND DATABASE_NAME = 'SALES'",
         {"ALLOW_SELECT", "ALLOW_INSERT", "ALLOW_UPDATE", "ALLOW_DELETE"},
         {"DATABASE_USERNAME", "DATABASE_PASSWORD", "SECURITY_LEVEL", "REMARKS"},
         [&] { modUpdate::UpdateDBPRV(datasource, "SALES", "SALES", "ANN", "ANN"); },
         "VALUES ('ANN', 'SALES', '', '', 0, 0, 0, 0, '', '')"},
        {"TW_USER WHERE USER_NAME = 'ANN'",
         {},
         {"REMARKS"},
         [&] {
             run({"UPDATE TW_USER SET USER_PASSWORD = ''"});
             modUpdate::UpdateUser(datasource, "ANN", "ANN");
         },
         "VALUES ('ANN', '', '')"},
    };
    for (const auto& [row, numbers, texts, call, insertion] : nulls) {
        SCOPED_TRACE(row.toStdString());
        const auto setTo = [&](const QString& number, const QString& text) {
            QStringList assignments;
            for (const QString& column : numbers)
                assignments.append(column + " = " + number);
            for (const QString& column : texts)
                assignments.append(column + " = " + text);
            return "UPDATE " + QString(row).replace(" WHERE ", " SET " + assignments.join(", ") + " WHERE ");
        };
        // Written with nulls or without, the rows come out the same.
        run({setTo("0", "''")});
        call();
        const QStringList expected = catalog();
        restore();
        run({setTo("NULL", "NULL")});
        const QStringList sent = sentBy(call);
        EXPECT_EQ(sent.filter(insertion).size(), 1) << lines(sent);
        EXPECT_EQ(lines(catalog()), lines(expected));
        restore();
    }
}

TEST_F(ModUpdateTest, ANullNumberOfAColumnLeavesItsPlaceEmptyAndTheInsertFails)
{
    const QStringList expected = catalogAfter({"DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'STOCK'"});
    run({"UPDATE TW_COLUMN SET PRECISION = NULL WHERE DATABASE_NAME = 'STOCK'"});
    form.expect(Press::Ignore);
    const QStringList sent = sentBy([&] {
        modUpdate::UpdateColumn(datasource, "STOCK", "STOCK", "PARTS", "PARTS", "AMOUNT", "TOTAL", 0, 1, "AMOUNT");
    });
    EXPECT_TRUE(sent.back().contains("VALUES ('STOCK', 'PARTS', 01, 'TOTAL', 'AMOUNT', '', 0, , 0, "));
    EXPECT_EQ(lines(catalog()), lines(expected));
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().trappedIn, "modUpdate.UpdateColumn");
}

TEST_F(ModUpdateTest, AColumnWithoutATypeEndsTheMoveOfItsTable)
{
    run({"UPDATE TW_COLUMN SET COLUMN_TYPE = NULL WHERE DATABASE_NAME = 'STOCK'"});
    form.expect(Press::Ignore);
    modUpdate::UpdateTable(datasource, "STOCK", "STOCK", "PARTS", "GOODS");
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().number, "94");
    EXPECT_EQ(form.shown().front().trappedIn, "modUpdate.UpdateTable");
    EXPECT_TRUE(statements.statements().back().startsWith("SELECT COLUMN_TYPE"));
}

TEST_F(ModUpdateTest, TheTextsOfAFieldAreLaidOutAnewAndThoseOfOtherRowsAreNot)
{
    const QString note = " from,  here\t(SELECT it)  ";
    run({"UPDATE TW_FIELD SET REMARKS = '" + note + "', FORMAT = '" + note + "', DEFAULT_VALUE = '" + note +
             "', LOCAL_TYPE_NAME = '" + note + "' WHERE FILE_NAME = 'PARTS'",
         "UPDATE TW_FILE SET REMARKS = '" + note + "' WHERE FILE_NAME = 'PARTS'"});
    modUpdate::UpdateFile(datasource, "PARTS", "GOODS");
    const QString laidOut = "from,\n\there (\n\tSELECT it)\n\t";
    EXPECT_EQ(world
                  .rows(datasource, "SELECT REMARKS, FORMAT, DEFAULT_VALUE, LOCAL_TYPE_NAME FROM TW_FIELD "
                                    "WHERE FILE_NAME = 'GOODS'")
                  .front(),
              QStringList({laidOut, laidOut, laidOut, note}));
    EXPECT_EQ(value("SELECT REMARKS FROM TW_FILE WHERE FILE_NAME = 'GOODS'"), note);
}

TEST_F(ModUpdateTest, AnApostropheInAFieldsRemarksLosesTheFieldAndTheFileGoesOnWithTheNextOne)
{
    QStringList changes = updates()[1].changes;
    changes.prepend("DELETE FROM TW_FIELD WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'AMOUNT'");
    const QStringList expected = catalogAfter(changes);
    run({"UPDATE TW_FIELD SET REMARKS = 'the clerk''s' WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'AMOUNT'"});
    form.expect(Press::Ignore);
    updates()[1].call();
    EXPECT_EQ(lines(catalog()), lines(expected));
    EXPECT_EQ(form.shown().front().trappedIn, "modUpdate.UpdateField");
}

TEST_F(ModUpdateTest, AFileThatNoTableUsesMovesItsFieldsOneByOne)
{
    run({"DELETE FROM TW_TABLE WHERE FILE_NAME = 'ORDERS'"});
    const QStringList sent = sentBy([&] { modUpdate::UpdateFile(datasource, "ORDERS", "BILLS"); });
    EXPECT_EQ(sent.size(), 5 + 2 * 4);
    EXPECT_TRUE(sent.filter("UPDATE TW_COLUMN").isEmpty());
    EXPECT_EQ(value("SELECT COUNT(*) FROM TW_FIELD WHERE FILE_NAME = 'BILLS'"), "2");
}

TEST_F(ModUpdateTest, AFileOfMoreFieldsThanAreReadAheadMovesEachFieldOnce)
{
    for (int number = 1; number <= 150; ++number)
        run({QStringLiteral("INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, OFFSET) "
                            "VALUES ('PARTS', %1, 'F%1', %1)")
                 .arg(number + 1)});
    const QStringList before = catalog();
    const QStringList sent = sentBy([&] { modUpdate::UpdateFile(datasource, "PARTS", "PARTS"); });
    EXPECT_EQ(sent.filter("INSERT INTO TW_FIELD").size(), 151);
    EXPECT_EQ(catalog(), before);
}

TEST_F(ModUpdateTest, TablesOfOneNameInTwoDatabasesAllHaveTheirColumnsFollowTheField)
{
    run({"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('STOCK', 'ORDERS', 'PARTS')",
         "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME) "
         "VALUES ('STOCK', 'ORDERS', 'PRICE', 'AMOUNT')"});
    modUpdate::UpdateField(datasource, "ORDERS", "ORDERS", "AMOUNT", "TOTAL", 10);
    EXPECT_EQ(value("SELECT FIELD_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'STOCK' AND TABLE_NAME = 'ORDERS'"),
              "TOTAL");
    EXPECT_EQ(value("SELECT FIELD_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'PARTS'"), "AMOUNT");
}

TEST_F(ModUpdateTest, ATablePrivilegeOfAnotherUserIsReportedOncePerRowAndStays)
{
    run({"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'LINES', 'BOB')"});
    const QStringList expected =
        catalogAfter(updates()[7].changes + QStringList("INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, "
                                                        "USER_NAME) VALUES ('SALES', 'LINES', 'BOB')"));
    run({"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'LINES', 'BOB')"});
    form.expect(Press::Ignore);
    updates()[7].call();
    EXPECT_EQ(lines(catalog()), lines(expected));
    ASSERT_EQ(form.shown().size(), 1U);
    EXPECT_EQ(form.shown().front().number, "3021");
    EXPECT_EQ(form.shown().front().callStack,
              QStringList({"modUpdate.UpdateDatabase", "modUpdate.UpdateDBPRV", "modUpdate.UpdateUser"}));
}

TEST_F(ModUpdateTest, TheUsersOwnPrivilegeOnATableMovesOnceAndEachForeignRowIsReportedOnce)
{
    const QStringList foreign{
        "INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', 'BOB')",
        "INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'LINES', 'BOB')"};
    const QStringList expected =
        catalogAfter(foreign + QStringList({"UPDATE TW_DBPRV SET USER_NAME = 'EVE' WHERE USER_NAME = 'ANN' AND "
                                            "DATABASE_NAME = 'SALES'",
                                            "UPDATE TW_TBLPRV SET USER_NAME = 'EVE' WHERE USER_NAME = 'ANN'"}));
    run(foreign);
    form.expect(Press::Ignore).expect(Press::Ignore);
    const QStringList sent = sentBy([&] { modUpdate::UpdateDBPRV(datasource, "SALES", "SALES", "ANN", "EVE"); });
    EXPECT_EQ(lines(catalog()), lines(expected));
    EXPECT_EQ(sent.filter("DELETE FROM TW_TBLPRV").size(), 1);
    const QString select = "SELECT * FROM TW_TBLPRV WHERE USER_NAME = 'ANN' AND DATABASE_NAME = 'SALES' "
                           "AND TABLE_NAME = '%1'";
    EXPECT_EQ(sent.count(select.arg("ORDERS")), 2);
    EXPECT_EQ(sent.count(select.arg("LINES")), 1);
    ASSERT_EQ(form.shown().size(), 2U);
    QStringList reported;
    for (const ScriptedErrorForm::Shown& shown : form.shown()) {
        EXPECT_EQ(shown.number, "3021");
        EXPECT_EQ(shown.trappedIn, "modUpdate.UpdateDatabase");
        EXPECT_EQ(shown.callStack, QStringList({"modUpdate.UpdateDatabase", "modUpdate.UpdateDBPRV"}));
        reported.append(shown.additional.section("\n\n", 0, 0));
    }
    reported.sort();
    EXPECT_EQ(reported, QStringList({select.arg("LINES"), select.arg("ORDERS")}));
}

TEST_F(ModUpdateTest, ATablePrivilegeWithoutADatabasePrivilegeStaysUnderTheOldUser)
{
    run({"DELETE FROM TW_DBPRV WHERE USER_NAME = 'ANN' AND DATABASE_NAME = 'SALES'"});
    modUpdate::UpdateUser(datasource, "ANN", "EVE");
    EXPECT_EQ(value("SELECT USER_NAME FROM TW_TBLPRV"), "ANN");
    EXPECT_EQ(value("SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'STOCK'"), "EVE");
}

TEST_F(ModUpdateTest, AUserWithDatabasePrivilegesOnlyTouchesNoTablePrivilege)
{
    run({"DELETE FROM TW_TBLPRV"});
    const QStringList sent = sentBy([&] { modUpdate::UpdateUser(datasource, "ANN", "EVE"); });
    EXPECT_EQ(sent.filter("TW_TBLPRV").filter("SELECT TABLE_NAME").size(), 2);
    EXPECT_EQ(sent.filter("TW_TBLPRV").size(), 2);
}

} // namespace
