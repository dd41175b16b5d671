#include "LineImporter.h"
#include "EngineFixture.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;

namespace
{

class LineImporterTest : public EngineTest
{
protected:
    /// Imports the lines as one file; what was sent.
    QStringList importFile(const QStringList& text)
    {
        statements.clear();
        findings.clear();
        LineImporter importer(*connection, findings);
        int number = 0;
        for (const QString& line : text)
            importer.ImportLine(++number, line);
        return statements.statements();
    }

    Findings findings;
};

const QString attributes =
    u"SELECT PRECISION, NULLABLE, CASE_SENSITIVE, SEARCHABLE, UNSIGNED_ATTRIBUTE, MONEY, AUTO_INCREMENT, RADIX "
    "FROM TW_SQLDT WHERE SQL_TYPE_NAME = 'CHAR'"_s;

} // namespace

TEST_F(LineImporterTest, AFileIsOneInsert)
{
    EXPECT_EQ(importFile({uR"("file","stock","indexed","fixed",20)"_s}),
              QStringList{u"INSERT INTO TW_FILE (FILE_NAME, FILE_ORGANISATION, RECORD_TYPE, RECORD_SIZE) "
                          "VALUES ('STOCK', 'INDEXED', 'FIXED', 20)"_s});
}

TEST_F(LineImporterTest, FieldsAreNumberedByFileFromOne)
{
    const QString start = u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
                          "SCALE, ENCRYPTED, FORMAT, FIELD_NUMBER, DEFAULT_VALUE)VALUES ("_s;
    EXPECT_EQ(importFile({
                  u"FIELD,PAYROLL,extra,string,12,8,8,0,1,\"dd/mm\",\"None\""_s,
                  u"FIELD,EMPTY,A,STRING,0,8,8,0,0,\"\",\"it's\""_s,
                  u"FIELD,payroll,MORE,STRING,20,8,8,0,0,\"\",\"\""_s,
              }),
              (QStringList{
                  start + "'PAYROLL', 'EXTRA', 'STRING', 12, 8, 8, 0, 1, 'DD/MM', 1, 'None') ",
                  start + "'EMPTY', 'A', 'STRING', 0, 8, 8, 0, 0, '', 1, 'it''s') ",
                  start + "'PAYROLL', 'MORE', 'STRING', 20, 8, 8, 0, 0, '', 2, '') ",
              }));
}

TEST_F(LineImporterTest, AFieldOfSixColumnsTakesTheDefaultsOfItsType)
{
    const QStringList sent = importFile({
        u"FIELD,EMPTY,S,STRING,0,8"_s,
        u"FIELD,EMPTY,A,INTEGER-4,0,4"_s,
        u"FIELD,EMPTY,D,DATE,0,10"_s,
    });
    ASSERT_EQ(sent.size(), 3);
    EXPECT_TRUE(sent[0].endsWith(u"VALUES ('EMPTY', 'S', 'STRING', 0, 8, 10, 10, 0, '', 1, '') "_s))
        << sent[0].toStdString();
    EXPECT_TRUE(sent[1].endsWith(u"VALUES ('EMPTY', 'A', 'INTEGER-4', 0, 4, 10, 4, 0, '', 2, '') "_s))
        << sent[1].toStdString();
    EXPECT_TRUE(sent[2].endsWith(u"VALUES ('EMPTY', 'D', 'DATE', 0, 10, 10, 10, 0, 'YYYY-MM-DD', 3, '') "_s))
        << sent[2].toStdString();
    EXPECT_EQ(lines(findings), QStringList());
}

TEST_F(LineImporterTest, DatabasesAndTables)
{
    EXPECT_EQ(importFile({
                  u"DB,depot,\"/Data,1\",disam,\"Dsn=x\",Depot"_s,
                  u"DB,store,\"/d\",disam,\"\""_s,
                  u"TABLE,depot,parts,table,stock,\"Parts.dat\",\"A = 'b', c\",Parts"_s,
                  u"TABLE,depot,spares,table,stock,\"s.dat\",\"\""_s,
              }),
              (QStringList{
                  u"INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, DISPLAY_NAME) "
                  "VALUES ('DEPOT', '/Data,1', 'DISAM', 'Dsn=x', 'Depot')"_s,
                  u"INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, DISPLAY_NAME) "
                  "VALUES ('STORE', '/d', 'DISAM', '', 'store')"_s,
                  u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
                  "CRITERIA, DISPLAY_NAME) "
                  "VALUES ('DEPOT', 'PARTS', 'TABLE', 'STOCK', 'Parts.dat', 'A = ''b'', c', 'Parts')"_s,
                  u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
                  "CRITERIA, DISPLAY_NAME) "
                  "VALUES ('DEPOT', 'SPARES', 'TABLE', 'STOCK', 's.dat', '', 'spares')"_s,
              }));
}

TEST_F(LineImporterTest, OrdinaryColumnsCountUpAndSpecialOnesAreTheFirst)
{
    const QString start =
        u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, UPDATABLE, "
        "VISIBLE, DEFAULT_VALUE, COLUMN_NUMBER, DISPLAY_NAME, PRECISION, NULLABLE, CASE_SENSITIVE, SEARCHABLE, "
        "UNSIGNED_ATTRIBUTE, MONEY, AUTO_INCREMENT, RADIX, COLUMN_TYPE) VALUES ("_s;
    const CSQLDT& type = connection->SQLDTs().Item(u"CHAR"_s);
    const QString ofType = u", 0%1, 0%2, 0%3, 0%4, 0%5, 0%6, 0%7, 0%8, "_s.arg(type.PRECISION)
                               .arg(type.NULLABLE)
                               .arg(type.CASE_SENSITIVE)
                               .arg(type.SEARCHABLE)
                               .arg(type.UNSIGNED_ATTRIBUTE)
                               .arg(type.MONEY)
                               .arg(type.AUTO_INCREMENT)
                               .arg(type.RADIX);
    EXPECT_EQ(importFile({
                  u"COLUMN,depot,parts,b,fb,char,8,1,0,\"It's\",B,0"_s,
                  u"COLUMN,DEPOT,PARTS,RFA,FB,CHAR,14,0,1,\"\",\"\",1"_s,
                  u"COLUMN,DEPOT,PARTS,A,FA,CHAR,8,1,1,\"\",\"\",0"_s,
                  u"COLUMN,DEPOT,OTHER,A,FA,CHAR,8,1,1,\"\",\"\",0.0"_s,
              }),
              (QStringList{
                  attributes,
                  start + "'DEPOT', 'PARTS', 'B', 'FB', 'CHAR', 8, 1, 0, 'It''s', 1, 'B'" + ofType + "0)",
                  attributes,
                  start + "'DEPOT', 'PARTS', 'RFA', 'FB', 'CHAR', 14, 0, 1, '', 1, ''" + ofType + "1)",
                  attributes,
                  start + "'DEPOT', 'PARTS', 'A', 'FA', 'CHAR', 8, 1, 1, '', 2, ''" + ofType + "0)",
                  attributes,
                  start + "'DEPOT', 'OTHER', 'A', 'FA', 'CHAR', 8, 1, 1, '', 1, ''" + ofType + "0.0)",
              }));
    EXPECT_EQ(lines(findings), QStringList());
}

TEST_F(LineImporterTest, AShortColumnLineIsFilledInAndWarnedOfAgain)
{
    const QStringList sent = importFile({
        u"COLUMN,DEPOT,PARTS,a,FA,CHAR,8,1,1,\"\""_s,
        u"COLUMN,DEPOT,PARTS,b,FB,CHAR,8,1,1,\"\",1"_s,
        u"COLUMN,DEPOT,PARTS,c,FC,CHAR,8,1,1,\"\",Cc"_s,
    });
    ASSERT_EQ(sent.size(), 6);
    EXPECT_TRUE(sent[1].contains(u"8, 1, 1, '', 1, 'a', "_s) && sent[1].endsWith(u", 0)"_s)) << sent[1].toStdString();
    EXPECT_TRUE(sent[3].contains(u"8, 1, 1, '', 1, 'b', "_s) && sent[3].endsWith(u", 1)"_s)) << sent[3].toStdString();
    EXPECT_TRUE(sent[5].contains(u"8, 1, 1, '', 2, 'Cc', "_s) && sent[5].endsWith(u", 0)"_s)) << sent[5].toStdString();
    EXPECT_EQ(lines(findings), (QStringList{u"1 WRN Column : Missing Display Name & Column Type - Assuming Default"_s,
                                            u"2 WRN Table: Missing Display Name - Assuming Default"_s,
                                            u"3 WRN Table: Missing Column Type - Assuming Default"_s}));
}

TEST_F(LineImporterTest, AFullLineWithABareEmptyColumnIsTakenForAShortOne)
{
    const QStringList sent = importFile({
        u"DB,depot,/d,disam,,Depot"_s,
        u"TABLE,depot,parts,table,stock,p.dat,,Parts"_s,
        u"COLUMN,depot,parts,a,fa,char,8,1,1,,Part,0"_s,
    });
    ASSERT_EQ(sent.size(), 4);
    EXPECT_TRUE(sent[0].endsWith(u"VALUES ('DEPOT', '/d', 'DISAM', 'Depot', 'depot')"_s)) << sent[0].toStdString();
    EXPECT_TRUE(sent[1].endsWith(u"VALUES ('DEPOT', 'PARTS', 'TABLE', 'STOCK', 'p.dat', 'Parts', 'parts')"_s))
        << sent[1].toStdString();
    EXPECT_TRUE(sent[3].contains(u"VALUES ('DEPOT', 'PARTS', 'A', 'FA', 'CHAR', 8, 1, 1, 'Part', 1, 'a', "_s) &&
                sent[3].endsWith(u", 0)"_s))
        << sent[3].toStdString();
    EXPECT_EQ(lines(findings), QStringList{u"3 WRN Table: Missing Display Name - Assuming Default"_s});
}

TEST_F(LineImporterTest, ANullAttributeOfTheTypeIsZero)
{
    change(u"UPDATE TW_SQLDT SET PRECISION = NULL, NULLABLE = NULL, CASE_SENSITIVE = 1, SEARCHABLE = NULL, "
           "UNSIGNED_ATTRIBUTE = NULL, MONEY = NULL, AUTO_INCREMENT = NULL, RADIX = NULL "
           "WHERE SQL_TYPE_NAME = 'CHAR'"_s);
    const QStringList sent = importFile({u"COLUMN,DEPOT,PARTS,B,FB,CHAR,8,1,0,\"\",B,0"_s});
    ASSERT_EQ(sent.size(), 2);
    EXPECT_TRUE(sent[1].endsWith(u", 1, 'B', 0, 0, 01, 0, 0, 0, 0, 0, 0)"_s)) << sent[1].toStdString();
    EXPECT_EQ(stored(u"SELECT PRECISION, CASE_SENSITIVE, RADIX FROM TW_COLUMN WHERE COLUMN_NAME = 'B'"_s),
              QStringList{"0|1|0"});
}

TEST_F(LineImporterTest, UsersAndPrivileges)
{
    EXPECT_EQ(
        importFile({
            u"USER,bob,\"secret\""_s,
            u"DBPRV,bob,sales,bobby,\"Pass\",1,0,1,0,table"_s,
            u"TBLPRV,bob,sales,orders,0,1,0,1"_s,
        }),
        (QStringList{
            u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD) VALUES ('BOB', 'SECRET') "_s,
            u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
            "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL) "
            "VALUES ('BOB', 'SALES', 'BOBBY', 'Pass', 1, 0, 1, 0, 'TABLE')"_s,
            u"INSERT INTO TW_TBLPRV (USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
            "ALLOW_DELETE) VALUES ('BOB', 'SALES', 'ORDERS', 0, 1, 0, 1)"_s,
        }));
}

TEST_F(LineImporterTest, EmptyLinesAndUnknownKindsSendNothing)
{
    EXPECT_EQ(importFile({u""_s, u"   "_s, u"FILES,A,B,C,1"_s, u","_s}), QStringList());
}

TEST_F(LineImporterTest, AFailureShowsTheThreeStatementsAndIgnoringItLosesTheLineAlone)
{
    errors.expect(Press::Ignore);
    importFile({u"USER,CLERK,A"_s, u"USER,BOB,B"_s});
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVImport.Import"_s);
    EXPECT_EQ(errors.shown()[0].number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown()[0].additional,
              modDatabase::FormatSQL(u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD) VALUES ('CLERK', 'A') \n"
                                     "SELECT USER_NAME FROM TW_USER WHERE USER_NAME = 'CLERK'\n"
                                     "DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'\n"_s));
    EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME"_s), (QStringList{"ADMIN", "BOB", "CLERK"}));
}

TEST_F(LineImporterTest, TheReportOfEachKindFindsAndRemovesItsRow)
{
    struct Row {
        const char* line;
        QString columns;
        QString table;
        QString criterion;
    };
    const std::vector<Row> rows{
        {"FILE,it's,indexed,fixed,20", u"FILE_NAME"_s, u"TW_FILE"_s, u"FILE_NAME = 'IT''S'"_s},
        {R"(FIELD,payroll,x,string,12,8,8,0,1,"","")", u"FILE_NAME, FIELD_NAME"_s, u"TW_FIELD"_s,
         u"FILE_NAME = 'PAYROLL' AND FIELD_NAME = 'X'"_s},
        {R"(DB,depot,"",disam,"","")", u"DATABASE_NAME"_s, u"TW_DB"_s, u"DATABASE_NAME = 'DEPOT'"_s},
        {R"(TABLE,depot,parts,table,stock,"","","")", u"DATABASE_NAME, TABLE_NAME"_s, u"TW_TABLE"_s,
         u"DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'PARTS'"_s},
        {R"(COLUMN,depot,parts,part,f,char,8,1,1,"","",0)", u"DATABASE_NAME, TABLE_NAME, COLUMN_NAME"_s, u"TW_COLUMN"_s,
         u"DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'PARTS' AND COLUMN_NAME = 'PART'"_s},
        {"USER,bob,secret", u"USER_NAME"_s, u"TW_USER"_s, u"USER_NAME = 'BOB'"_s},
        {"DBPRV,bob,sales,bobby,pass,1,0,1,0,table", u"USER_NAME, DATABASE_NAME"_s, u"TW_DBPRV"_s,
         u"USER_NAME = 'BOB' AND DATABASE_NAME = 'SALES'"_s},
        {"TBLPRV,bob,sales,orders,0,1,0,1", u"USER_NAME, DATABASE_NAME, TABLE_NAME"_s, u"TW_TBLPRV"_s,
         u"USER_NAME = 'BOB' AND DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"_s},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        statements.clear();
        statements.failAt(row.table == u"TW_COLUMN"_s ? 2 : 1);
        errors.expect(Press::Ignore);
        LineImporter(*connection, findings).ImportLine(1, QString::fromLatin1(row.line));
        ASSERT_TRUE(statements.failuresDone());
        EXPECT_EQ(errors.shown().back().additional,
                  modDatabase::FormatSQL(statements.statements().last() + '\n' + "SELECT "_L1 + row.columns +
                                         " FROM "_L1 + row.table + " WHERE "_L1 + row.criterion + '\n' +
                                         "DELETE FROM "_L1 + row.table + " WHERE "_L1 + row.criterion + '\n'));
    }
}

TEST_F(LineImporterTest, RetrySendsTheInsertAgainAlone)
{
    statements.clear();
    statements.failAt(2);
    errors.expect(Press::Retry);
    LineImporter importer(*connection, findings);
    importer.ImportLine(1, u"COLUMN,SALES,ORDERS,A,BONUS,CHAR,8,1,1,\"\",\"\",0");
    ASSERT_EQ(statements.statements().size(), 3);
    EXPECT_EQ(statements.statements()[1], statements.statements()[2]);
    EXPECT_EQ(stored(u"SELECT COLUMN_NUMBER FROM TW_COLUMN WHERE COLUMN_NAME = 'A'"_s), QStringList{"1"});
}

TEST_F(LineImporterTest, AnAbortEndsTheProgramWithTheLinesBefore)
{
    errors.expect(Press::Abort);
    EXPECT_THROW(importFile({u"USER,BOB,B"_s, u"USER,CLERK,A"_s, u"USER,EVE,E"_s}), ProcessEnded);
    EXPECT_EQ(outside.ends, 1);
    EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME"_s), (QStringList{"ADMIN", "BOB", "CLERK"}));
}

TEST_F(LineImporterTest, ALineThatLostColumnsIsReportedAndSendsNothing)
{
    errors.expect(Press::Ignore).expect(Press::Ignore);
    EXPECT_EQ(importFile({u"FIELD,EMPTY,A,STRING,0,8,,0,0,\"\",\"\""_s, u"USER,BOB"_s}), QStringList());
    ASSERT_EQ(errors.shown().size(), 2U);
    EXPECT_EQ(errors.shown()[0].number, u"13"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVImport.Import"_s);
    EXPECT_EQ(errors.shown()[0].additional, u"Line 1"_s);
    EXPECT_EQ(errors.shown()[1].number, u"9"_s);
    EXPECT_EQ(errors.shown()[1].additional, u"Line 2"_s);
    EXPECT_EQ(errors.shown()[1].description, u"Subscript out of range: the line has no column 3"_s);
}

TEST_F(LineImporterTest, TablesWhoseNamesJoinAlikeShareTheirNumbers)
{
    importFile({u"COLUMN,A_B,C,X,FX,CHAR,8,1,1,\"\",\"\",0"_s, u"COLUMN,A,B_C,Y,FY,CHAR,8,1,1,\"\",\"\",0"_s});
    const QStringList writes = statements.writes();
    ASSERT_EQ(writes.size(), 2);
    EXPECT_TRUE(writes[0].contains("8, 1, 1, '', 1, ''"_L1)) << writes[0].toStdString();
    EXPECT_TRUE(writes[1].contains("8, 1, 1, '', 2, ''"_L1)) << writes[1].toStdString();
}

TEST_F(LineImporterTest, ANumberThatIsNoneNeverStandsInAStatement)
{
    const QStringList former = wholeCatalog();
    for (const char* value : {"0); DELETE FROM TW_FILE; --", "", "1--", "0 OR 1", "x"}) {
        errors.expect(Press::Ignore);
        EXPECT_EQ(importFile({"FILE,A,INDEXED,FIXED,\""_L1 + QLatin1String(value) + '"'_L1}), QStringList()) << value;
    }
    EXPECT_EQ(errors.shown()[0].description, u"Type mismatch: the line has no number in column 5"_s);
    EXPECT_EQ(wholeCatalog(), former);
}

TEST_F(LineImporterTest, ANumberThatIsNoneIsNotShownForItMayBeAPassword)
{
    // Quotes within a user's name or a password move what stands behind them.
    for (const QString& line : {uR"("DBPRV","CLERK","SALES","O"BRIEN","TOP-SECRET",1,1,1,1,"TABLE")"_s,
                                uR"("DBPRV","CLERK","SALES","OBRIEN","TOP"SECRET",1,1,1,1,"TABLE")"_s}) {
        errors.expect(Press::Ignore);
        EXPECT_EQ(importFile({line}), QStringList());
        const auto& shown = errors.shown().back();
        EXPECT_EQ(shown.number, u"13"_s);
        EXPECT_EQ(shown.additional, u"Line 1"_s);
        EXPECT_FALSE(shown.description.contains("SECRET"_L1)) << shown.description.toStdString();
    }
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(LineImporterTest, AnUnknownTypeIsReportedAndTheLineLost)
{
    errors.expect(Press::Ignore);
    importFile({u"COLUMN,SALES,ORDERS,A,BONUS,NONE,8,1,1,\"\",\"\",0"_s});
    EXPECT_EQ(errors.shown()[0].number, u"3021"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}
