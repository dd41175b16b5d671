// Rows without two equal values: what goes into another column than it came from shows.
#include "CopyDialogFixture.h"

#include "modDragAndDrop.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace
{

const QString ofSales = u"DATABASE_NAME = 'SALES'"_s;
const QString ofPayroll = u"FILE_NAME = 'PAYROLL'"_s;
const QString ofClerk = u"USER_NAME = 'CLERK'"_s;

class WholeRows : public CopyDialogTest
{
protected:
    void SetUp() override
    {
        CopyDialogTest::SetUp();
        change(u"DELETE FROM TW_COLUMN WHERE COLUMN_NAME IN ('BUYER', 'RFA')"_s);
        change(u"DELETE FROM TW_FIELD WHERE FIELD_NAME IN ('EMPLOYEE', 'BONUS')"_s);
        change(u"UPDATE TW_FILE SET OPEN_STRING = 'a', RECORD_SIZE = 11, FILE_ORGANISATION = 'b', RECORD_TYPE = 'c', "
               "REMARKS = 'd' WHERE "_s +
               ofPayroll);
        change(u"UPDATE TW_FIELD SET FIELD_NUMBER = 11, LOCAL_TYPE_NAME = 'a', OFFSET = 12, LENGTH = 13, "
               "PRECISION = 14, SCALE = 15, ENCRYPTED = 16, FORMAT = 'b', DEFAULT_VALUE = 'c', REMARKS = 'd' WHERE "_s +
               ofPayroll);
        change(u"UPDATE TW_DB SET DEFAULT_DIRECTORY = 'a', DRIVER_NAME = 'b', SETUP_PROCEDURE = 'c', "
               "CONNECT_STRING = 'd', REMARKS = 'e', DISPLAY_NAME = 'f' WHERE "_s +
               ofSales);
        change(u"UPDATE TW_TABLE SET TABLE_TYPE = 'a', FILE_SPECIFICATION = 'b', NUMBER_COLUMNS = 11, CRITERIA = 'c', "
               "REMARKS = 'd', DISPLAY_NAME = 'e' WHERE "_s +
               ofSales);
        change(u"UPDATE TW_COLUMN SET COLUMN_NUMBER = 11, SQL_TYPE_NAME = 'a', LENGTH = 12, PRECISION = 13, "
               "SCALE = 14, NULLABLE = 15, UNSIGNED_ATTRIBUTE = 16, UPDATABLE = 17, VISIBLE = 18, MONEY = 19, "
               "AUTO_INCREMENT = 20, CASE_SENSITIVE = 21, SEARCHABLE = 22, RADIX = 23, DEFAULT_VALUE = 'b', "
               "REMARKS = 'c', SETFILEPARAMETER = 24, COLUMN_TYPE = 25, DISPLAY_NAME = 'd' WHERE "_s +
               ofSales);
        change(u"UPDATE TW_USER SET USER_PASSWORD = 'a', REMARKS = 'b' WHERE "_s + ofClerk);
        change(u"UPDATE TW_DBPRV SET DATABASE_USERNAME = 'a', DATABASE_PASSWORD = 'b', ALLOW_SELECT = 1, "
               "ALLOW_INSERT = 2, ALLOW_UPDATE = 3, ALLOW_DELETE = 4, SECURITY_LEVEL = 'c', REMARKS = 'd' WHERE "_s +
               ofClerk);
        change(u"UPDATE TW_TBLPRV SET ALLOW_SELECT = 1, ALLOW_INSERT = 2, ALLOW_UPDATE = 3, ALLOW_DELETE = 4, "
               "REMARKS = 'a' WHERE "_s +
               ofClerk);
        statements.clear();
    }

    /// The rows that name another owner, as if they named the former one.
    QStringList renamed(const QString& side, const QString& table, const QString& where, const QString& from,
                        const QString& to) const
    {
        QStringList rows = rowsOf(side, table, where);
        for (QString& row : rows)
            row.replace(u'|' + from + u'|', u'|' + to + u'|')
                .replace(QRegularExpression(u'^' + from + u"\\|"_s), to + u'|');
        return rows;
    }

    /// There is one row of the copy, and it differs from the original in its name alone.
    void expectCopied(const QString& table, const QString& column, const QString& original, const QString& copy) const
    {
        const auto named = [&](QString name) {
            return rowsOf(datasource, table, column + " = '"_L1 + name.replace(u'\'', u"''"_s) + u'\'');
        };
        QStringList rows = named(copy);
        EXPECT_EQ(rows.size(), 1) << table.toStdString();
        EXPECT_EQ(rows.replaceInStrings(copy, original), named(original)) << table.toStdString();
    }

    /// What the user does in a dialog: gives the copy a name.
    DialogScript::Action under(const QString& entry, const QString& name) const
    {
        return [=, this](DialogForm& dialog) {
            enter(dialog, entry, name);
            press(dialog, ok);
        };
    }

    const QString columnValues =
        u"11, 'AMOUNT', 'SALARY', 'a', 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 'b', 'c', 24, 25, 'd')"_s;
};

} // namespace

TEST_F(WholeRows, OfADatabaseAndAllBelowItArriveAsTheyWere)
{
    changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('PAYROLL')"_s);
    changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) VALUES ('PAYROLL', 'SALARY')"_s);
    changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s);
    EXPECT_TRUE(
        modDragAndDrop::DragDBToDSN(item(u"db"_s, {datasource, u"SALES"_s}), item(u"DSN"_s, {other}), DragMode::Copy));
    for (const char* table : {"TW_DB", "TW_TABLE", "TW_COLUMN", "TW_TBLPRV"}) {
        const QStringList rows = rowsOf(other, QLatin1String(table), ofSales);
        EXPECT_EQ(rows.size(), 1) << table;
        EXPECT_EQ(rows, rowsOf(datasource, QLatin1String(table), ofSales));
    }
    const QStringList writes = statements.writes();
    ASSERT_EQ(writes.size(), 4);
    EXPECT_TRUE(writes[0].endsWith(u"VALUES ('SALES', 'a', 'b', 'c', 'd', 'e', 'f')"_s)) << writes[0].toStdString();
    EXPECT_TRUE(writes[1].endsWith(u"VALUES ('SALES', 'ORDERS', 'a', 'PAYROLL', 'b', 11, 'c', 'd', 'e')"_s))
        << writes[1].toStdString();
    EXPECT_TRUE(writes[2].endsWith(u"VALUES ('SALES', 'ORDERS', "_s + columnValues)) << writes[2].toStdString();
    EXPECT_TRUE(writes[3].endsWith(u"VALUES ('SALES', 'ORDERS', 'CLERK', '1', '2', '3', '4', 'a')"_s))
        << writes[3].toStdString();
}

TEST_F(WholeRows, OfAFileAndItsFieldsArriveAsTheyWere)
{
    EXPECT_TRUE(modDragAndDrop::DragFileToDSN(item(u"fi"_s, {datasource, u"PAYROLL"_s}), item(u"FI"_s, {other}),
                                              DragMode::Copy));
    for (const char* table : {"TW_FILE", "TW_FIELD"}) {
        const QStringList rows = rowsOf(other, QLatin1String(table), ofPayroll);
        EXPECT_EQ(rows.size(), 1) << table;
        EXPECT_EQ(rows, rowsOf(datasource, QLatin1String(table), ofPayroll));
    }
    const QStringList writes = statements.writes();
    ASSERT_EQ(writes.size(), 2);
    EXPECT_TRUE(writes[0].endsWith(u"VALUES ('PAYROLL', 'a', '11', 'b', 'c', 'd')"_s)) << writes[0].toStdString();
    EXPECT_TRUE(writes[1].endsWith(u"VALUES ('PAYROLL', 11, 'SALARY', 'a', 12, 13, 14, 15, 16, 'b', 'c', 'd')"_s))
        << writes[1].toStdString();
}

TEST_F(WholeRows, OfAUserAndItsPrivilegesArriveAsTheyWere)
{
    changeOther(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('SALES')"_s);
    const DragItem clerk = item(u"us"_s, {datasource, u"CLERK"_s});
    EXPECT_TRUE(modDragAndDrop::DragUserToDSN(clerk, item(u"US"_s, {other}), DragMode::Copy));
    EXPECT_TRUE(modDragAndDrop::DragDBPRVToDB(item(u"dbprv"_s, {datasource, u"SALES"_s, u"CLERK"_s}),
                                              item(u"db"_s, {other, u"SALES"_s}), DragMode::Copy));
    EXPECT_TRUE(modDragAndDrop::DragTBLPRVToTable(item(u"tblprv"_s, {datasource, u"SALES"_s, u"ORDERS"_s, u"CLERK"_s}),
                                                  item(u"ta"_s, {other, u"SALES"_s, u"ORDERS"_s}), DragMode::Copy));
    for (const char* table : {"TW_USER", "TW_DBPRV", "TW_TBLPRV"}) {
        const QStringList rows = rowsOf(other, QLatin1String(table), ofClerk);
        EXPECT_EQ(rows.size(), 1) << table;
        EXPECT_EQ(rows, rowsOf(datasource, QLatin1String(table), ofClerk));
    }
    const QStringList writes = statements.writes();
    ASSERT_EQ(writes.size(), 3);
    EXPECT_TRUE(writes[0].endsWith(u"VALUES ('CLERK', 'a', 'b')"_s)) << writes[0].toStdString();
    EXPECT_TRUE(writes[1].endsWith(u"VALUES ('CLERK', 'SALES', 'a', 'b', '1', '2', '3', '4', 'c', 'd')"_s))
        << writes[1].toStdString();
    EXPECT_TRUE(writes[2].endsWith(u"VALUES ('SALES', 'ORDERS', 'CLERK', '1', '2', '3', '4', 'a')"_s))
        << writes[2].toStdString();
}

TEST_F(WholeRows, OfMissingNumbersInQuotedPlacesGoAsEmptyTexts)
{
    change(u"UPDATE TW_FILE SET RECORD_SIZE = NULL WHERE "_s + ofPayroll);
    for (const char* table : {"TW_DBPRV", "TW_TBLPRV"})
        change(u"UPDATE %1 SET ALLOW_SELECT = NULL, ALLOW_INSERT = NULL, ALLOW_UPDATE = NULL, ALLOW_DELETE = NULL "
               "WHERE "_s.arg(QLatin1String(table)) +
               ofClerk);
    changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s);
    EXPECT_TRUE(modDragAndDrop::DragFileToDSN(item(u"fi"_s, {datasource, u"PAYROLL"_s}), item(u"FI"_s, {other}),
                                              DragMode::Copy));
    EXPECT_TRUE(modDragAndDrop::DragDBPRVToDB(item(u"dbprv"_s, {datasource, u"SALES"_s, u"CLERK"_s}),
                                              item(u"db"_s, {other, u"SALES"_s}), DragMode::Copy));
    EXPECT_TRUE(modDragAndDrop::DragTBLPRVToTable(item(u"tblprv"_s, {datasource, u"SALES"_s, u"ORDERS"_s, u"CLERK"_s}),
                                                  item(u"ta"_s, {other, u"SALES"_s, u"ORDERS"_s}), DragMode::Copy));
    const QStringList writes = statements.writes();
    ASSERT_EQ(writes.size(), 4);
    EXPECT_TRUE(writes[0].endsWith(u"VALUES ('PAYROLL', 'a', '', 'b', 'c', 'd')"_s)) << writes[0].toStdString();
    EXPECT_TRUE(writes[2].endsWith(u"VALUES ('CLERK', 'SALES', 'a', 'b', '', '', '', '', 'c', 'd')"_s))
        << writes[2].toStdString();
    EXPECT_TRUE(writes[3].endsWith(u"VALUES ('SALES', 'ORDERS', 'CLERK', '', '', '', '', 'a')"_s))
        << writes[3].toStdString();
}

TEST_F(WholeRows, OfADatabaseAreCopiedUnderItsNewNameAlone)
{
    copyDatabase(under(u"txtDB"_s, u"SHOP"_s));
    const QString ofShop = u"DATABASE_NAME = 'SHOP'"_s;
    for (const char* table : {"TW_DB", "TW_TABLE", "TW_COLUMN", "TW_TBLPRV"}) {
        const QString name = QLatin1String(table);
        EXPECT_EQ(renamed(datasource, name, ofShop, u"SHOP"_s, u"SALES"_s), rowsOf(datasource, name, ofSales)) << table;
    }
    EXPECT_EQ(rowsOf(datasource, u"TW_DBPRV"_s, ofShop), QStringList{u"CLERK|SHOP|||1|2|3|4|c|d"_s});
    const QStringList writes = statements.writes();
    ASSERT_EQ(writes.size(), 5);
    EXPECT_TRUE(writes[2].endsWith(u"VALUES ('SHOP', 'ORDERS', "_s + columnValues)) << writes[2].toStdString();
    EXPECT_TRUE(writes[3].endsWith(u"VALUES ( 'CLERK', 'SHOP', 1, 2, 3, 4, 'c', 'd')"_s)) << writes[3].toStdString();
    EXPECT_TRUE(writes[4].endsWith(u"VALUES ( 'SHOP', 'ORDERS', 'CLERK', 1, 2, 3, 4, 'a')"_s))
        << writes[4].toStdString();
}

TEST_F(WholeRows, OfATableAndAFileAreCopiedUnderTheirNewNamesAlone)
{
    copyTable(under(u"txtTable"_s, u"BIDS"_s));
    for (const char* table : {"TW_TABLE", "TW_COLUMN", "TW_TBLPRV"}) {
        const QString name = QLatin1String(table);
        EXPECT_EQ(renamed(datasource, name, u"TABLE_NAME = 'BIDS'"_s, u"BIDS"_s, u"ORDERS"_s),
                  rowsOf(datasource, name, ofSales + u" AND TABLE_NAME = 'ORDERS'"_s))
            << table;
    }
    copyFile(under(u"txtFilename"_s, u"WAGES"_s));
    for (const char* table : {"TW_FILE", "TW_FIELD"}) {
        const QString name = QLatin1String(table);
        EXPECT_EQ(renamed(datasource, name, u"FILE_NAME = 'WAGES'"_s, u"WAGES"_s, u"PAYROLL"_s),
                  rowsOf(datasource, name, ofPayroll))
            << table;
    }
}

TEST_F(WholeRows, OfTablesAndColumnsStayWhileFilesAndFieldsMove)
{
    changeOther(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('DEPOT', 'PARTS', 'PAYROLL')"_s);
    const auto views = [&] {
        return rowsOf(datasource, u"TW_TABLE"_s) + rowsOf(datasource, u"TW_COLUMN"_s) + rowsOf(other, u"TW_TABLE"_s) +
               rowsOf(other, u"TW_COLUMN"_s);
    };
    const QStringList before = views();
    EXPECT_TRUE(modDragAndDrop::DragFieldToFile(item(u"fd"_s, {datasource, u"PAYROLL"_s, u"SALARY"_s}),
                                                item(u"fi"_s, {datasource, u"EMPTY"_s}), DragMode::Move));
    EXPECT_TRUE(modDragAndDrop::DragFileToDSN(item(u"fi"_s, {datasource, u"PAYROLL"_s}), item(u"FI"_s, {other}),
                                              DragMode::Move));
    EXPECT_TRUE(
        modDragAndDrop::DragFileToDSN(item(u"fi"_s, {datasource, u"EMPTY"_s}), item(u"FI"_s, {other}), DragMode::Move));
    EXPECT_EQ(views(), before);
}

TEST_F(WholeRows, LongCollectionsGoWhole)
{
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME IN ('KEY', 'PAYROLL', 'EMPTY')"_s);
    change(u"DELETE FROM TW_FIELD WHERE FILE_NAME IN ('KEY', 'PAYROLL', 'EMPTY')"_s);
    for (int i = 0; i < 100; ++i) {
        change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('LONG%1')"_s.arg(i));
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME) "
               "VALUES ('SALES', 'ORDERS', %1, 'LONG%1')"_s.arg(i + 100));
    }
    const QString ofLong = u"FILE_NAME LIKE 'LONG%'"_s;
    const QStringList files = rowsOf(datasource, u"TW_FILE"_s, ofLong);
    ASSERT_EQ(files.size(), 100);
    EXPECT_TRUE(modDragAndDrop::DragFilesToDSN(item(u"FI"_s, {datasource}), item(u"FI"_s, {other}), DragMode::Move));
    EXPECT_EQ(rowsOf(other, u"TW_FILE"_s, ofLong), files);
    EXPECT_EQ(rowsOf(datasource, u"TW_FILE"_s, ofLong), QStringList());

    copyDatabase(under(u"txtDB"_s, u"SHOP"_s));
    EXPECT_EQ(rowsOf(datasource, u"TW_COLUMN"_s, u"DATABASE_NAME = 'SHOP'"_s).size(), 101);
}

TEST_F(WholeRows, OfDatabasesWithNamesOfAnyKindArriveAsTheyAre)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('P''5')"_s);
    changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('P''5')"_s);
    changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) VALUES ('P''5', 'F''4')"_s);
    changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('O''HARA%1')"_s);
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('O''HARA%1')"_s);
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('O''B%1')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('O''B%1', 'T''%2', 'P''5')"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
           "VALUES ('O''B%1', 'T''%2', 1, 'C''3', 'F''4')"_s);
    change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('O''B%1', 'T''%2', 'O''HARA%1')"_s);
    const QString owned = u"DATABASE_NAME = 'O''B%1'"_s;
    QStringList before;
    const std::array<QString, 4> tables{u"TW_DB"_s, u"TW_TABLE"_s, u"TW_COLUMN"_s, u"TW_TBLPRV"_s};
    for (const QString& table : tables)
        before += rowsOf(datasource, table, owned);
    ASSERT_EQ(before.size(), 4);

    expectQuestion(u"Do you want to Move or Copy the Database 'O'B%1' from Datasource '"_s + datasource +
                       u" to Datasource '"_s + other + u"'?"_s,
                   u"cmdMove"_s);
    EXPECT_TRUE(
        modDragAndDrop::DragDBToDSN(item(u"db"_s, {datasource, u"O'B%1"_s}), item(u"DSN"_s, {other}), DragMode::Ask));
    QStringList after;
    for (const QString& table : tables) {
        after += rowsOf(other, table, owned);
        EXPECT_EQ(rowsOf(datasource, table, owned), QStringList());
    }
    EXPECT_EQ(after, before);
}

TEST_F(WholeRows, OfCopiesWithNamesOfAnyKindArriveAsTheyAre)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('P''5')"_s);
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME) VALUES ('P''5', 1, 'F''4')"_s);
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('O''B%1')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('O''B%1', 'T''%2', 'P''5')"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
           "VALUES ('O''B%1', 'T''%2', 1, 'C''3', 'F''4')"_s);
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('O''HARA%1', 'O''B%1')"_s);
    change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('O''B%1', 'T''%2', 'O''HARA%1')"_s);
    const auto accept = [this](const QString& entry, const QString& proposal) {
        return [=, this](DialogForm& dialog) {
            EXPECT_EQ(dialog.findChild<QLineEdit*>(entry)->text(), proposal);
            press(dialog, ok);
        };
    };
    const QStringList owner{u"DB"_s, u"db=O'B%1"_s};
    copy(owner, u"mnu_DBCopy"_s, u"frmDBCopy"_s, accept(u"txtDB"_s, u"O'B%"_s));
    for (const char* table : {"TW_DB", "TW_TABLE", "TW_COLUMN", "TW_DBPRV", "TW_TBLPRV"})
        expectCopied(QLatin1String(table), u"DATABASE_NAME"_s, u"O'B%1"_s, u"O'B%"_s);
    copy(owner + QStringList{u"TA"_s, u"ta=T'%2"_s}, u"mnu_TableCopy"_s, u"frmTableCopy"_s,
         accept(u"txtTable"_s, u"T'%"_s));
    change(u"DELETE FROM TW_TABLE WHERE DATABASE_NAME = 'O''B%'"_s);
    change(u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'O''B%'"_s);
    change(u"DELETE FROM TW_TBLPRV WHERE DATABASE_NAME = 'O''B%'"_s);
    for (const char* table : {"TW_TABLE", "TW_COLUMN", "TW_TBLPRV"})
        expectCopied(QLatin1String(table), u"TABLE_NAME"_s, u"T'%2"_s, u"T'%"_s);
    copy({u"FI"_s, u"fi=P'5"_s}, u"mnu_FileCopy"_s, u"frmFileCopy"_s, accept(u"txtFilename"_s, u"P'"_s));
    for (const char* table : {"TW_FILE", "TW_FIELD"})
        expectCopied(QLatin1String(table), u"FILE_NAME"_s, u"P'5"_s, u"P'"_s);
}

TEST_F(WholeRows, OfUsersWithNamesOfAnyKindArriveAsTheyAre)
{
    const QString name = u"O'HARA%1"_s;
    change(u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD) VALUES ('O''HARA%1', 'p''%2')"_s);
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('O''HARA%1', 'O''B%1')"_s);
    change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('O''B%1', 'T''%2', 'O''HARA%1')"_s);
    using namespace modDragAndDrop;
    EXPECT_TRUE(DragUserToDSN(item(u"us"_s, {datasource, name}), item(u"US"_s, {other}), DragMode::Move));
    EXPECT_TRUE(DragDBPRVToDB(item(u"dbprv"_s, {datasource, u"O'B%1"_s, name}), item(u"db"_s, {other, u"D'%3"_s}),
                              DragMode::Move));
    EXPECT_TRUE(DragTBLPRVToTable(item(u"tblprv"_s, {datasource, u"O'B%1"_s, u"T'%2"_s, name}),
                                  item(u"ta"_s, {other, u"D'%3"_s, u"U'%4"_s}), DragMode::Move));
    const QString ofHer = u"USER_NAME = 'O''HARA%1'"_s;
    EXPECT_EQ(rowsOf(other, u"TW_USER"_s, ofHer), QStringList{u"O'HARA%1|p'%2|"_s});
    EXPECT_EQ(rowsOf(other, u"TW_DBPRV"_s, ofHer), QStringList{u"O'HARA%1|D'%3|||0|0|0|0||"_s});
    EXPECT_EQ(rowsOf(other, u"TW_TBLPRV"_s, ofHer), QStringList{u"D'%3|U'%4|O'HARA%1|0|0|0|0|"_s});
    for (const char* table : {"TW_USER", "TW_DBPRV", "TW_TBLPRV"})
        EXPECT_EQ(rowsOf(datasource, QLatin1String(table), ofHer), QStringList()) << table;

    // Each of the boxes names them as they are.
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES ('O''HARA%1')"_s);
    boxes.expectInform(u"Datasource '"_s + other + u"' already contains a User called 'O'HARA%1'!"_s);
    EXPECT_FALSE(DragUserToDSN(item(u"us"_s, {datasource, name}), item(u"US"_s, {other}), DragMode::Move));
    boxes.expectInform(u"Datasource '"_s + other +
                       u"', Database 'D'%3' already contains a User Database Privilege for User 'O'HARA%1'!"_s);
    EXPECT_FALSE(DragDBPRVToDB(item(u"dbprv"_s, {datasource, u"O'B%1"_s, name}), item(u"db"_s, {other, u"D'%3"_s}),
                               DragMode::Move));
}
