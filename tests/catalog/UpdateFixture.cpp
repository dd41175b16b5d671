#include "UpdateFixture.h"

#include "DBEngine.h"
#include "frmTWErr.h"
#include "modUpdate.h"

namespace
{

const QStringList tables{"TW_FILE", "TW_FIELD", "TW_DB", "TW_TABLE", "TW_COLUMN", "TW_USER", "TW_DBPRV", "TW_TBLPRV"};

const QStringList rows{
    "INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
    "VALUES ('ORDERS', 'data:it''s', 120, 'INDEXED', 'FIXED', 'the clerk''s')",
    "INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('PARTS', 8)",
    "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE, "
    "ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
    "VALUES ('ORDERS', 2, 'AMOUNT', 'PACKED', 10, 4, 7, -2, 1, '', '0', 'net')",
    "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE, "
    "ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
    "VALUES ('ORDERS', 1, 'ORDER-ID', 'it''s text', 0, 10, 10, 0, 0, 'YYYY', 'none', 'unique')",
    "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME) VALUES ('PARTS', 1, 'AMOUNT')",
    "INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, CONNECT_STRING, REMARKS, "
    "DISPLAY_NAME) VALUES ('SALES', 'data:', 'DISAM', 'setup', 'c=''1''', 'the shop''s', 'Sales')",
    "INSERT INTO TW_DB (DATABASE_NAME, DISPLAY_NAME) VALUES ('STOCK', 'Stock')",
    "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, NUMBER_COLUMNS, "
    "CRITERIA, REMARKS, DISPLAY_NAME) "
    "VALUES ('SALES', 'LINES', 'TABLE', 'ORDERS', 'lines.dat', 1, '', '', 'Lines')",
    "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, NUMBER_COLUMNS, "
    "CRITERIA, REMARKS, DISPLAY_NAME) "
    "VALUES ('SALES', 'ORDERS', 'TABLE', 'ORDERS', 'orders.dat', 2, 'KIND = ''O''', 'all orders,  the clerk''s too', "
    "'Orders')",
    "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME, DISPLAY_NAME) "
    "VALUES ('STOCK', 'PARTS', 'PARTS', 'Parts')",
    "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
    "VALUES ('SALES', 'LINES', 1, 'SUM', 'AMOUNT')",
    "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, "
    "PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, CASE_SENSITIVE, "
    "SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, COLUMN_TYPE, DISPLAY_NAME) "
    "VALUES ('SALES', 'ORDERS', 2, 'AMOUNT', 'AMOUNT', 'DECIMAL', 4, 7, -2, 1, 0, 1, 1, 1, 0, 0, 3, 10, '''0''', "
    "'it''s  net, rounded', 5, 0, 'Amount')",
    "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, COLUMN_TYPE) "
    "VALUES ('SALES', 'ORDERS', 1, 'RFA', 'RFA', 1)",
    "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
    "VALUES ('STOCK', 'PARTS', 1, 'AMOUNT', 'AMOUNT')",
    "INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES ('ANN', 'secret', 'Ann''s')",
    "INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES ('BOB', 'hidden', '')",
    "INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
    "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS) "
    "VALUES ('ANN', 'SALES', 'ann', 'it''s', 1, 0, 1, 0, 'TABLE', 'clerk,  Bob''s')",
    "INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('ANN', 'STOCK')",
    "INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('BOB', 'SALES')",
    "INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
    "ALLOW_DELETE, REMARKS) VALUES ('SALES', 'ORDERS', 'ANN', 1, 1, 0, 0, 'Ann''s')"};

QString nextName()
{
    static int number = 0;
    return QStringLiteral("Updates of test %1").arg(++number);
}

} // namespace

UpdateFixture::UpdateFixture() : datasource(nextName())
{
    connections.setWorkspace(dao::DBEngine::CreateWorkspace("Tarnwick Administrator", {}, {}, 1));
    world.addDatasource(datasource);
    connections.Item(datasource);
    for (const QString& table : tables)
        run({"DELETE FROM " + table});
    run(rows);
    keepTheWorld();
    statements.clear();
}

UpdateFixture::~UpdateFixture()
{
    while (connections.Count() >= 1)
        connections.Remove(1);
    connections.setWorkspace(nullptr);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    EXPECT_TRUE(statements.failuresDone());
}

void UpdateFixture::keepTheWorld() const
{
    // One statement that puts all rows back is one commit instead of dozens.
    QString restoring;
    for (const QString& table : tables) {
        run({"CREATE TABLE SAVED_" + table + " AS SELECT * FROM " + table});
        restoring += "DELETE FROM " + table + "; INSERT INTO " + table + " SELECT * FROM SAVED_" + table + "; ";
    }
    run({"CREATE TABLE RESTORE (REQUEST)",
         "CREATE TRIGGER RESTORING AFTER INSERT ON RESTORE BEGIN " + restoring + "END"});
}

void UpdateFixture::restore()
{
    run({"INSERT INTO RESTORE VALUES (1)"});
}

void UpdateFixture::run(const QStringList& changes) const
{
    for (const QString& change : changes)
        world.run(datasource, change);
}

QStringList UpdateFixture::catalog() const
{
    QStringList found;
    for (const QString& table : tables) {
        for (const CatalogFixture::Row& row : world.rows(datasource, "SELECT * FROM " + table))
            found.append(table + ": " + row.join(" | "));
    }
    found.sort();
    return found;
}

QStringList UpdateFixture::catalogAfter(const QStringList& changes)
{
    restore();
    run(changes);
    const QStringList found = catalog();
    restore();
    return found;
}

QStringList UpdateFixture::sentBy(const std::function<void()>& update)
{
    statements.clear();
    update();
    return statements.statements();
}

std::vector<UpdateFixture::Update> UpdateFixture::updates() const
{
    const QString source = datasource;
    return {
        {"UpdateField",
         [=] { modUpdate::UpdateField(source, "ORDERS", "ORDERS", "AMOUNT", "TOTAL", 12); },
         {"UPDATE TW_FIELD SET FIELD_NAME = 'TOTAL', OFFSET = 12 WHERE FILE_NAME = 'ORDERS' AND FIELD_NAME = 'AMOUNT'",
          "UPDATE TW_COLUMN SET FIELD_NAME = 'TOTAL' WHERE FIELD_NAME = 'AMOUNT' AND DATABASE_NAME = 'SALES'"}},
        {"UpdateFile",
         [=] { modUpdate::UpdateFile(source, "ORDERS", "SALES"); },
         {"UPDATE TW_FILE SET FILE_NAME = 'SALES' WHERE FILE_NAME = 'ORDERS'",
          "UPDATE TW_FIELD SET FILE_NAME = 'SALES' WHERE FILE_NAME = 'ORDERS'",
          "UPDATE TW_TABLE SET FILE_NAME = 'SALES' WHERE FILE_NAME = 'ORDERS'"}},
        {"UpdateColumn",
         [=] { modUpdate::UpdateColumn(source, "SALES", "STOCK", "ORDERS", "PARTS", "RFA", "ROWID", 6, 9, "KEY"); },
         {"UPDATE TW_COLUMN SET DATABASE_NAME = 'STOCK', TABLE_NAME = 'PARTS', COLUMN_NAME = 'ROWID', COLUMN_TYPE = 6, "
          "COLUMN_NUMBER = 9, FIELD_NAME = 'KEY' WHERE COLUMN_NAME = 'RFA'"}},
        {"UpdateTable",
         [=] { modUpdate::UpdateTable(source, "SALES", "STOCK", "ORDERS", "BILLS"); },
         {"UPDATE TW_TABLE SET DATABASE_NAME = 'STOCK', TABLE_NAME = 'BILLS', DISPLAY_NAME = 'BILLS' "
          "WHERE TABLE_NAME = 'ORDERS'",
          "UPDATE TW_COLUMN SET DATABASE_NAME = 'STOCK', TABLE_NAME = 'BILLS' WHERE TABLE_NAME = 'ORDERS'",
          "UPDATE TW_TBLPRV SET DATABASE_NAME = 'STOCK', TABLE_NAME = 'BILLS' WHERE TABLE_NAME = 'ORDERS'"}},
        {"UpdateTBLPRV",
         [=] { modUpdate::UpdateTBLPRV(source, "SALES", "STOCK", "ORDERS", "PARTS", "ANN", "BOB"); },
         {"UPDATE TW_TBLPRV SET DATABASE_NAME = 'STOCK', TABLE_NAME = 'PARTS', USER_NAME = 'BOB'"}},
        {"UpdateDatabase",
         [=] { modUpdate::UpdateDatabase(source, "SALES", "SHOP"); },
         {"UPDATE TW_DB SET DATABASE_NAME = 'SHOP', DISPLAY_NAME = 'SHOP' WHERE DATABASE_NAME = 'SALES'",
          "UPDATE TW_TABLE SET DATABASE_NAME = 'SHOP', DISPLAY_NAME = TABLE_NAME WHERE DATABASE_NAME = 'SALES'",
          "UPDATE TW_COLUMN SET DATABASE_NAME = 'SHOP' WHERE DATABASE_NAME = 'SALES'",
          "UPDATE TW_DBPRV SET DATABASE_NAME = 'SHOP' WHERE DATABASE_NAME = 'SALES'",
          "UPDATE TW_TBLPRV SET DATABASE_NAME = 'SHOP' WHERE DATABASE_NAME = 'SALES'"}},
        {"UpdateDBPRV",
         [=] { modUpdate::UpdateDBPRV(source, "SALES", "SHOP", "ANN", "EVE"); },
         {"UPDATE TW_DBPRV SET DATABASE_NAME = 'SHOP', USER_NAME = 'EVE' "
          "WHERE DATABASE_NAME = 'SALES' AND USER_NAME = 'ANN'",
          "UPDATE TW_TBLPRV SET DATABASE_NAME = 'SHOP', USER_NAME = 'EVE'"}},
        {"UpdateUser",
         [=] { modUpdate::UpdateUser(source, "ANN", "EVE"); },
         {"UPDATE TW_USER SET USER_NAME = 'EVE', USER_PASSWORD = '' WHERE USER_NAME = 'ANN'",
          "UPDATE TW_DBPRV SET USER_NAME = 'EVE' WHERE USER_NAME = 'ANN'",
          "UPDATE TW_TBLPRV SET USER_NAME = 'EVE' WHERE USER_NAME = 'ANN'"}},
    };
}

std::vector<UpdateFixture::Update> UpdateFixture::rewrites() const
{
    const QString source = datasource;
    return {
        {"UpdateField", [=] { modUpdate::UpdateField(source, "ORDERS", "ORDERS", "AMOUNT", "AMOUNT", 10); }, {}},
        {"UpdateFile", [=] { modUpdate::UpdateFile(source, "ORDERS", "ORDERS"); }, {}},
        {"UpdateColumn",
         [=] {
             modUpdate::UpdateColumn(source, "SALES", "SALES", "ORDERS", "ORDERS", "AMOUNT", "AMOUNT", 0, 2, "AMOUNT");
         },
         {}},
        {"UpdateTable",
         [=] { modUpdate::UpdateTable(source, "SALES", "SALES", "ORDERS", "ORDERS"); },
         {"UPDATE TW_TABLE SET DISPLAY_NAME = 'ORDERS' WHERE TABLE_NAME = 'ORDERS'"}},
        {"UpdateTBLPRV",
         [=] { modUpdate::UpdateTBLPRV(source, "SALES", "SALES", "ORDERS", "ORDERS", "ANN", "ANN"); },
         {}},
        {"UpdateDatabase",
         [=] { modUpdate::UpdateDatabase(source, "STOCK", "STOCK"); },
         {"UPDATE TW_DB SET DISPLAY_NAME = 'STOCK' WHERE DATABASE_NAME = 'STOCK'",
          "UPDATE TW_TABLE SET DISPLAY_NAME = 'PARTS' WHERE DATABASE_NAME = 'STOCK'"}},
        {"UpdateDBPRV", [=] { modUpdate::UpdateDBPRV(source, "SALES", "SALES", "ANN", "ANN"); }, {}},
        {"UpdateUser",
         [=] { modUpdate::UpdateUser(source, "ANN", "ANN"); },
         {"UPDATE TW_USER SET USER_PASSWORD = '' WHERE USER_NAME = 'ANN'"}},
    };
}
