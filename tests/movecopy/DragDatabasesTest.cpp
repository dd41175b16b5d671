#include "MoveCopyFixture.h"

#include "frmTWErr.h"
#include "modDragAndDrop.h"

using namespace Qt::StringLiterals;
using modDragAndDrop::DragColumnsToTable;
using modDragAndDrop::DragColumnToTable;
using modDragAndDrop::DragDBsToDSN;
using modDragAndDrop::DragDBToDSN;
using modDragAndDrop::DragTablesToDB;
using modDragAndDrop::DragTableToDB;

namespace
{

class DragDatabases : public MoveCopyTest
{
protected:
    DragItem database() const { return item(u"db"_s, {datasource, u"SALES"_s}); }
    DragItem table() const { return item(u"ta"_s, {datasource, u"SALES"_s, u"ORDERS"_s}); }
    DragItem column(const QString& name) const { return item(u"co"_s, {datasource, u"SALES"_s, u"ORDERS"_s, name}); }
    DragItem otherSide() const { return item(u"DB"_s, {other}); }

    /// A database of the target, and a table in it of a file with one field.
    void addDepot(const QString& tableOfFile = u"LEDGER"_s) const
    {
        changeOther(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s);
        changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('LEDGER')"_s);
        changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) VALUES ('LEDGER', 'SALARY')"_s);
        changeOther(
            u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('DEPOT', 'PARTS', '%1')"_s.arg(
                tableOfFile));
    }
    DragItem depot() const { return item(u"db"_s, {other, u"DEPOT"_s}); }
    DragItem parts() const { return item(u"ta"_s, {other, u"DEPOT"_s, u"PARTS"_s}); }

    QString noFile() const
    {
        return u"WARNING - Table 'ORDERS' refrences File 'PAYROLL'\nwhich has not been defined in Datasource '%1'."_s
            .arg(other);
    }
    static QString noField(const QString& columnName, const QString& field, const QString& file,
                           const QString& tableName)
    {
        return u"WARNING - The Column '%1' refers Field '%2' which does not exists in \n"
               "File '%3' (refered to by Table '%4')."_s.arg(columnName, field, file, tableName);
    }
    /// The files that the columns of ORDERS map to, with their fields.
    void addPayroll() const
    {
        changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('PAYROLL')"_s);
        changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) "
                    "VALUES ('PAYROLL', 'SALARY'), ('PAYROLL', 'EMPLOYEE'), ('PAYROLL', 'RFA')"_s);
    }
    void addClerk() const { changeOther(u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s); }

    /// What a column says on its way from ORDERS into a table.
    static QStringList carried(const QString& name, const QString& number, const QString& type, const QString& field,
                               const QString& toDatabase, const QString& toTable, const QString& file, bool moved)
    {
        const QString select =
            u"SELECT * FROM TW_COLUMN WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2' AND COLUMN_NAME = '%3'"_s;
        QStringList all{
            u"S: "_s + select.arg(u"SALES"_s, u"ORDERS"_s, name),
            u"T: SELECT * FROM TW_COLUMN WHERE DATABASE_NAME ='%1' AND TABLE_NAME = '%2' AND COLUMN_TYPE = %3 "
            "AND COLUMN_NUMBER = %4 "_s.arg(toDatabase, toTable, type, number),
            u"T: "_s + select.arg(toDatabase, toTable, name),
            u"T: SELECT FILE_NAME FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(toDatabase,
                                                                                                        toTable),
            u"T: SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '%1' AND FIELD_NAME = '%2'"_s.arg(file, field),
            u"T: INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
            "SQL_TYPE_NAME, LENGTH, PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, "
            "AUTO_INCREMENT, CASE_SENSITIVE, SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, "
            "COLUMN_TYPE, DISPLAY_NAME) VALUES ('%1', '%2', %3, '%4', '%5', '', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "
            "'', '', 0, %6, '')"_s.arg(toDatabase, toTable, number, name, field, type)};
        if (moved)
            all.append(u"S: DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' "
                       "AND COLUMN_NAME = '%1'"_s.arg(name));
        return all;
    }

    /// All that a table says on its way into a database of that name; the columns in the driver's order.
    static QStringList orders(const QString& to, bool moved)
    {
        QStringList all{
            u"T: SELECT * FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = 'ORDERS'"_s.arg(to),
            u"S: SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"_s,
            u"T: SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s,
            u"T: INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
            "NUMBER_COLUMNS, CRITERIA, REMARKS, DISPLAY_NAME) "
            "VALUES ('%1', 'ORDERS', 'TABLE', 'PAYROLL', '', 0, '', '', '')"_s.arg(to),
            u"S: SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"_s};
        const QString file = u"PAYROLL"_s;
        const QString name = u"ORDERS"_s;
        all += carried(u"AMOUNT"_s, u"2"_s, u"0"_s, u"SALARY"_s, to, name, file, moved);
        all += carried(u"BUYER"_s, u"1"_s, u"0"_s, u"EMPLOYEE"_s, to, name, file, moved);
        all += carried(u"RFA"_s, u"1"_s, u"1"_s, u"RFA"_s, to, name, file, moved);
        all += {
            u"S: SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"_s,
            u"T: SELECT * FROM TW_TBLPRV WHERE USER_NAME = 'CLERK' AND DATABASE_NAME = '%1' AND TABLE_NAME = 'ORDERS'"_s
                .arg(to),
            u"T: SELECT * FROM TW_USER WHERE USER_NAME = 'CLERK'"_s,
            u"S: SELECT * FROM TW_TBLPRV WHERE USER_NAME = 'CLERK' AND DATABASE_NAME = 'SALES' "
            "AND TABLE_NAME = 'ORDERS'"_s,
            u"T: INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, "
            "ALLOW_UPDATE, ALLOW_DELETE, REMARKS) VALUES ('%1', 'ORDERS', 'CLERK', '0', '0', '0', '0', '')"_s.arg(to)};
        if (moved)
            all += {u"S: DELETE FROM TW_TBLPRV WHERE USER_NAME = 'CLERK' AND DATABASE_NAME = 'SALES' "
                    "AND TABLE_NAME = 'ORDERS'"_s,
                    u"S: DELETE FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"_s};
        return all;
    }

    QStringList sales(bool moved) const
    {
        QStringList all{u"T: SELECT * FROM TW_DB WHERE DATABASE_NAME = 'SALES'"_s,
                        u"S: SELECT * FROM TW_DB WHERE DATABASE_NAME = 'SALES'"_s,
                        u"T: INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, "
                        "CONNECT_STRING, REMARKS, DISPLAY_NAME) VALUES ('SALES', '', 'DISAM', '', '', '', '')"_s,
                        u"S: SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'SALES'"_s};
        all += orders(u"SALES"_s, moved);
        if (moved)
            all.append(u"S: DELETE FROM TW_DB WHERE DATABASE_NAME = 'SALES'"_s);
        return all;
    }

    const QString goOnWithColumns = u"Do you want to continue with the remainder of the Columns in this collection?"_s;
};

} // namespace

TEST_F(DragDatabases, ADatabaseTakesItsTablesColumnsAndTheirPrivilegesAlong)
{
    addPayroll();
    addClerk();
    const QStringList columns = rowsOf(datasource, u"TW_COLUMN"_s, u"DATABASE_NAME = 'SALES'"_s);
    expectQuestion(u"Do you want to Move or Copy the Database 'SALES' from Datasource '%1 to Datasource '%2'?"_s.arg(
                       datasource, other),
                   u"cmdCopy"_s);
    EXPECT_TRUE(DragDBToDSN(database(), otherSide(), DragMode::Ask));
    EXPECT_EQ(said(), sales(false));
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_EQ(rowsOf(other, u"TW_COLUMN"_s, u"DATABASE_NAME = 'SALES'"_s), columns);
    EXPECT_EQ(rowsOf(datasource, u"TW_COLUMN"_s, u"DATABASE_NAME = 'SALES'"_s), columns);
    EXPECT_EQ(rowsOf(other, u"TW_TBLPRV"_s, u"DATABASE_NAME = 'SALES'"_s),
              QStringList{u"SALES|ORDERS|CLERK|0|0|0|0|"_s});
    EXPECT_EQ(rowsOf(other, u"TW_DBPRV"_s, u"DATABASE_NAME = 'SALES'"_s), QStringList());
}

TEST_F(DragDatabases, AMovedDatabaseLeavesItsPrivilegesBehind)
{
    addPayroll();
    addClerk();
    EXPECT_TRUE(DragDBToDSN(database(), otherSide(), DragMode::Move));
    EXPECT_EQ(said(), sales(true));
    for (const char* table : {"TW_DB", "TW_TABLE", "TW_COLUMN", "TW_TBLPRV"})
        EXPECT_EQ(rowsOf(datasource, QLatin1String(table), u"DATABASE_NAME = 'SALES'"_s), QStringList()) << table;
    EXPECT_EQ(rowsOf(datasource, u"TW_DBPRV"_s, u"DATABASE_NAME = 'SALES'"_s).size(), 1);
}

TEST_F(DragDatabases, ADatabaseThatTheTargetHasIsRefused)
{
    changeOther(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('SALES')"_s);
    boxes.expectInform(u"Datasource '%1' already contains a Database called 'SALES'!"_s.arg(other));
    EXPECT_FALSE(DragDBToDSN(database(), otherSide(), DragMode::Move));
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DragDatabases, TheCatalogsOwnDatabaseIsRefusedByTheTargetsWithinACollection)
{
    addPayroll();
    addClerk();
    expectQuestion(u"Do you want to Move or Copy the Database collection in Datasource '%1' to Datasource '%2'?"_s.arg(
                       datasource, other),
                   u"cmdMove"_s);
    boxes.expectInform(u"Datasource '%1' already contains a Database called 'TW'!"_s.arg(other));
    expectGoOn(u"Do you want to continue with the remainder of the Databases in this collection?"_s, u"cmdYes"_s);
    EXPECT_TRUE(DragDBsToDSN(item(u"DB"_s, {datasource}), otherSide(), DragMode::Ask));
    EXPECT_EQ(said().front(), u"S: SELECT DATABASE_NAME FROM TW_DB "_s);
    EXPECT_EQ(rowsOf(datasource, u"TW_DB"_s).size(), 1);
    EXPECT_EQ(rowsOf(other, u"TW_DB"_s).size(), 2);
    EXPECT_EQ(rowsOf(datasource, u"TW_TABLE"_s, u"DATABASE_NAME <> 'TW'"_s), QStringList());
    EXPECT_EQ(rowsOf(other, u"TW_TABLE"_s, u"DATABASE_NAME <> 'TW'"_s),
              QStringList{u"SALES|ORDERS|TABLE|PAYROLL||0|||"_s});
}

TEST_F(DragDatabases, ATableWithoutItsFileIsWarnedOfOnceAndArrives)
{
    addDepot();
    addClerk();
    change(u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES'"_s);
    expectQuestion(u"Do you want to Move or Copy the Table 'ORDERS' in Datasource '%1', Database 'SALES' "
                   "to the Database 'DEPOT' in  the Datasource '%2'?"_s.arg(datasource, other),
                   u"cmdMove"_s);
    boxes.expectInform(noFile());
    EXPECT_TRUE(DragTableToDB(table(), depot(), DragMode::Ask));
    EXPECT_EQ(rowsOf(other, u"TW_TABLE"_s, u"TABLE_NAME = 'ORDERS'"_s),
              QStringList{u"DEPOT|ORDERS|TABLE|PAYROLL||0|||"_s});
    EXPECT_EQ(rowsOf(datasource, u"TW_TABLE"_s, u"TABLE_NAME = 'ORDERS'"_s), QStringList());
}

TEST_F(DragDatabases, ATableDroppedOnAColumnGoesToTheDatabaseOfThatColumn)
{
    addDepot();
    addPayroll();
    addClerk();
    EXPECT_TRUE(DragTableToDB(table(), item(u"co"_s, {other, u"DEPOT"_s, u"PARTS"_s, u"NUMBER"_s}), DragMode::Copy));
    EXPECT_EQ(said(), orders(u"DEPOT"_s, false));
}

TEST_F(DragDatabases, ATableThatTheDatabaseHasIsRefused)
{
    addDepot();
    changeOther(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('DEPOT', 'ORDERS')"_s);
    expectQuestion(u"Do you want to Move or Copy the Table collection in Datasource '%1', Database 'SALES' "
                   "to Datasource '%2', Database 'DEPOT'?"_s.arg(datasource, other),
                   u"cmdMove"_s);
    boxes.expectInform(u"Database 'DEPOT' in Datasource '%1' already contains a Table called 'ORDERS'!"_s.arg(other));
    expectGoOn(u"Do you want to continue with the remainder of the Tables in this collection?"_s, u"cmdNo"_s);
    EXPECT_TRUE(DragTablesToDB(item(u"TA"_s, {datasource, u"SALES"_s}), depot(), DragMode::Ask));
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(said(), (QStringList{u"S: SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'SALES'"_s,
                                   u"T: SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'DEPOT' "
                                   "AND TABLE_NAME = 'ORDERS'"_s}));
}

TEST_F(DragDatabases, TheColumnsKeepTheirNumbersAndAreWarnedOfOneByOne)
{
    addDepot();
    expectQuestion(u"Do you want to Move or Copy the Collumns collection in Datasource '%1', Database 'SALES' "
                   "Table 'ORDERS' to Datasource '%2', Database 'DEPOT', Table 'PARTS'?"_s.arg(datasource, other),
                   u"cmdCopy"_s);
    boxes.expectInform(noField(u"BUYER"_s, u"EMPLOYEE"_s, u"LEDGER"_s, u"PARTS"_s));
    boxes.expectInform(noField(u"RFA"_s, u"RFA"_s, u"LEDGER"_s, u"PARTS"_s));
    EXPECT_TRUE(DragColumnsToTable(item(u"CO"_s, {datasource, u"SALES"_s, u"ORDERS"_s}), parts(), DragMode::Ask));
    QStringList expected{
        u"S: SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"_s};
    expected += carried(u"AMOUNT"_s, u"2"_s, u"0"_s, u"SALARY"_s, u"DEPOT"_s, u"PARTS"_s, u"LEDGER"_s, false);
    expected += carried(u"BUYER"_s, u"1"_s, u"0"_s, u"EMPLOYEE"_s, u"DEPOT"_s, u"PARTS"_s, u"LEDGER"_s, false);
    expected += carried(u"RFA"_s, u"1"_s, u"1"_s, u"RFA"_s, u"DEPOT"_s, u"PARTS"_s, u"LEDGER"_s, false);
    EXPECT_EQ(said(), expected);
    EXPECT_EQ(rowsOf(other, u"TW_COLUMN"_s, u"TABLE_NAME = 'PARTS'"_s).size(), 3);
}

TEST_F(DragDatabases, ATakenPlaceIsAskedForBeforeTheNameAndMayBeOverwritten)
{
    addDepot();
    changeOther(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
                "VALUES ('DEPOT', 'PARTS', 2, 'WEIGHT', 0)"_s);
    const QString question = u"A column already exists is in Datasource '%1', Database 'DEPOT', Table 'PARTS' "
                             "with a Column Type of 0 and a column number of 2\n"
                             "Do you want to overwrite it?"_s.arg(other);
    expectQuestion(u"Do you want to Move or Copy the Column 'AMOUNT' from Datasource '%1', Database 'SALES', "
                   "Table 'ORDERS' to Datasource '%2', Database & 'DEPOT', Table 'PARTS'?"_s.arg(datasource, other),
                   u"cmdMove"_s);
    boxes.expectAsk(question, boxes::Answer::No);
    EXPECT_FALSE(DragColumnToTable(column(u"AMOUNT"_s), parts(), DragMode::Ask));
    EXPECT_EQ(statements.writes(), QStringList());
    verify();
    statements.clear();

    boxes.expectAsk(question, boxes::Answer::Yes);
    EXPECT_TRUE(DragColumnToTable(column(u"AMOUNT"_s), parts(), DragMode::Move));
    QStringList expected = carried(u"AMOUNT"_s, u"2"_s, u"0"_s, u"SALARY"_s, u"DEPOT"_s, u"PARTS"_s, u"LEDGER"_s, true);
    expected.insert(2, u"T: DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'PARTS' "
                       "AND COLUMN_NUMBER = 2  AND COLUMN_TYPE = 0"_s);
    EXPECT_EQ(said(), expected);
    EXPECT_EQ(world.value(other, u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'PARTS'"_s), u"AMOUNT"_s);
    EXPECT_EQ(rowsOf(datasource, u"TW_COLUMN"_s, u"COLUMN_NAME = 'AMOUNT'"_s), QStringList());
}

TEST_F(DragDatabases, AColumnThatTheTableHasIsRefused)
{
    addDepot();
    changeOther(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
                "VALUES ('DEPOT', 'PARTS', 9, 'AMOUNT', 0)"_s);
    boxes.expectInform(u"Datasource '%1', Table 'PARTS' already contains a Column called 'AMOUNT'."_s.arg(other));
    EXPECT_FALSE(DragColumnToTable(column(u"AMOUNT"_s), parts(), DragMode::Move));
    boxes.expectInform(u"Datasource '%1', Table 'PARTS' already contains a Column called 'AMOUNT'."_s.arg(other));
    expectGoOn(goOnWithColumns, u"cmdNo"_s);
    EXPECT_TRUE(DragColumnsToTable(item(u"CO"_s, {datasource, u"SALES"_s, u"ORDERS"_s}), parts(), DragMode::Move));
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DragDatabases, ATableMovesToAnotherDatabaseOfItsDatasource)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s);
    const QStringList before = bothCatalogs();
    boxes.expectInform(noField(u"RFA"_s, u"RFA"_s, u"PAYROLL"_s, u"ORDERS"_s));
    EXPECT_TRUE(DragTableToDB(table(), item(u"TA"_s, {datasource, u"DEPOT"_s}), DragMode::Move));
    QStringList expected = before;
    for (const QString& owned : {u"S TW_TABLE "_s, u"S TW_COLUMN "_s, u"S TW_TBLPRV "_s})
        expected.replaceInStrings(owned + u"SALES|"_s, owned + u"DEPOT|"_s);
    expected.sort();
    QStringList after = bothCatalogs();
    after.sort();
    EXPECT_EQ(after, expected);
    // Both sides are one connection.
    EXPECT_TRUE(said().filter(u"T: "_s).isEmpty());
}

TEST_F(DragDatabases, AWholeCatalogMovesFilesThenUsersThenDatabases)
{
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'KEY'"_s);
    QStringList expected;
    for (const QString& row : bothCatalogs()) {
        const bool isSystem = row.contains("|TW|"_L1) || row.contains(" TW|"_L1) || row.contains(" ADMIN|"_L1);
        const bool isSystemFile =
            row.startsWith("S TW_FI"_L1) && !row.contains(" PAYROLL|"_L1) && !row.contains(" EMPTY|"_L1);
        const bool staysBehind = row.startsWith("S TW_DBPRV "_L1);
        if (row.startsWith("S "_L1) && !isSystem && !isSystemFile && !staysBehind)
            expected.append("T "_L1 + row.sliced(2));
        else
            expected.append(row);
    }
    expected.sort();

    EXPECT_TRUE(modDragAndDrop::DragFilesToDSN(item(u"FI"_s, {datasource}), item(u"FI"_s, {other}), DragMode::Move));
    boxes.expectInform(u"Datasource '%1' already contains a User called 'ADMIN'!"_s.arg(other));
    expectGoOn(u"Do you want to continue with the remainder of the Users in this collection?"_s, u"cmdYes"_s);
    EXPECT_TRUE(modDragAndDrop::DragUsersToDSN(item(u"US"_s, {datasource}), item(u"US"_s, {other}), DragMode::Move));
    // RFA is no field of a file.
    boxes.expectInform(noField(u"RFA"_s, u"RFA"_s, u"PAYROLL"_s, u"ORDERS"_s));
    boxes.expectInform(u"Datasource '%1' already contains a Database called 'TW'!"_s.arg(other));
    expectGoOn(u"Do you want to continue with the remainder of the Databases in this collection?"_s, u"cmdYes"_s);
    EXPECT_TRUE(DragDBsToDSN(item(u"DB"_s, {datasource}), otherSide(), DragMode::Move));
    QStringList after = bothCatalogs();
    after.sort();
    EXPECT_EQ(after, expected);
}

TEST_F(DragDatabases, OneTableOnItselfIsTold)
{
    const QString same = u"The source and the destination Table are the same"_s;
    boxes.expectInform(same);
    EXPECT_FALSE(DragColumnsToTable(item(u"CO"_s, {datasource, u"SALES"_s, u"ORDERS"_s}), table(), DragMode::Ask));
    boxes.expectInform(same);
    EXPECT_FALSE(DragColumnToTable(column(u"AMOUNT"_s), table(), DragMode::Ask));
    // What holds tables and databases is silent.
    EXPECT_FALSE(DragTableToDB(table(), database(), DragMode::Ask));
    EXPECT_FALSE(DragTablesToDB(item(u"TA"_s, {datasource, u"SALES"_s}), database(), DragMode::Ask));
    EXPECT_FALSE(DragDBToDSN(database(), item(u"DB"_s, {datasource}), DragMode::Ask));
    EXPECT_FALSE(DragDBsToDSN(item(u"DB"_s, {datasource}), item(u"DB"_s, {datasource}), DragMode::Ask));
    EXPECT_EQ(said(), QStringList());
}

TEST_F(DragDatabases, AMovedTableGoesThoughTheUserStoppedItsColumns)
{
    addDepot();
    addPayroll();
    addClerk();
    changeOther(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
                "VALUES ('DEPOT', 'ORDERS', 9, 'AMOUNT', 0)"_s);
    boxes.expectInform(u"Datasource '%1', Table 'ORDERS' already contains a Column called 'AMOUNT'."_s.arg(other));
    expectGoOn(goOnWithColumns, u"cmdNo"_s);
    EXPECT_TRUE(DragTableToDB(table(), depot(), DragMode::Move));
    EXPECT_EQ(rowsOf(datasource, u"TW_TABLE"_s, u"DATABASE_NAME = 'SALES'"_s), QStringList());
    EXPECT_EQ(rowsOf(datasource, u"TW_COLUMN"_s, u"DATABASE_NAME = 'SALES'"_s).size(), 3);
}

TEST_F(DragDatabases, AMissingNumberMakesTheInsertFail)
{
    addDepot();
    change(u"UPDATE TW_COLUMN SET PRECISION = NULL WHERE COLUMN_NAME = 'AMOUNT'"_s);
    errors.expect(Press::Ignore);
    EXPECT_FALSE(DragColumnToTable(column(u"AMOUNT"_s), parts(), DragMode::Move));
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modDragAndDrop.DragColumnToTable"_s);
    EXPECT_TRUE(said().back().contains(u"'', 0, , 0,"_s)) << said().back().toStdString();
    EXPECT_EQ(rowsOf(datasource, u"TW_COLUMN"_s, u"COLUMN_NAME = 'AMOUNT'"_s).size(), 1);
}

TEST_F(DragDatabases, AFailureNamesItsRoutine)
{
    statements.failAt(1);
    errors.expect(Press::Ignore);
    EXPECT_FALSE(DragDBToDSN(database(), otherSide(), DragMode::Move));
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modDragAndDrop.DragDBtoDSN"_s);
    EXPECT_EQ(errors.shown().front().callStack.front(), u"modDragAndDrop.DragDBToDSN"_s);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(DragDatabases, AFaultInAMoveIsMendedByARetry)
{
    addPayroll();
    addClerk();
    sweep([&] {
        boxes.expectInform(u"Datasource '%1' already contains a Database called 'TW'!"_s.arg(other));
        expectGoOn(u"Do you want to continue with the remainder of the Databases in this collection?"_s, u"cmdYes"_s);
        EXPECT_TRUE(DragDBsToDSN(item(u"DB"_s, {datasource}), otherSide(), DragMode::Move));
    });
}

TEST_F(DragDatabases, AnIgnoredFaultEndsNoMoreThanItsRoutine)
{
    addPayroll();
    addClerk();
    keepBoth();
    const QStringList whole = sales(true);
    // The single routines and where their statements begin and end: the table, each column, the privilege.
    struct Span {
        int first;
        int last;
        bool asks;
        const char* routine;
    };
    const int columns = 4 + 5;
    const std::vector<Span> spans{{1, 3, false, "DragDBtoDSN"},
                                  {4, 4, false, "DragTablesToDB"},
                                  {5, 8, true, "DragTableToDB"},
                                  {9, 9, false, "DragColumnsToTable"},
                                  {columns + 1, columns + 7, true, "DragColumnToTable"},
                                  {columns + 8, columns + 14, true, "DragColumnToTable"},
                                  {columns + 15, columns + 21, true, "DragColumnToTable"},
                                  {columns + 22, columns + 22, false, "DragTBLPRVsToTable"},
                                  {columns + 23, columns + 27, true, "DragTBLPRVToTable"},
                                  {columns + 28, columns + 28, true, "DragTableToDB"},
                                  {columns + 29, columns + 29, false, "DragDBtoDSN"}};
    ASSERT_EQ(whole.size(), columns + 29);
    for (const Span& span : spans) {
        for (int k = span.first; k <= span.last; ++k) {
            SCOPED_TRACE(whole.at(k - 1).toStdString());
            beginAnewBoth();
            statements.failAt(k);
            errors.expect(Press::Ignore);
            if (span.asks)
                dialogs.expect(u"frmYesToAll"_s, [](DialogForm& dialog) { DialogScript::click(dialog, u"cmdYes"_s); });
            const QString routine = u"modDragAndDrop."_s + QLatin1String(span.routine);
            EXPECT_EQ(DragDBToDSN(database(), otherSide(), DragMode::Move), !routine.endsWith("DBtoDSN"_L1));
            verify();
            EXPECT_EQ(errors.shown().back().trappedIn, routine);
            EXPECT_EQ(said().first(k), whole.first(k));
            // Whatever happened below, the database itself goes at the end, unless its own routine was left.
            EXPECT_EQ(said().back() == whole.back(), k > 3);
            EXPECT_EQ(frmTWErr::CallStack(), QStringList());
        }
    }
}
