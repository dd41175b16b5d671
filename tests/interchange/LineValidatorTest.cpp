#include "ValidatorFixture.h"

using namespace Qt::StringLiterals;

TEST_F(ValidatorTest, LinesOfFiles)
{
    const QString few = u"ERR FILE: Insufficient information to describe a File"_s;
    check({
        {"as it is written", {}, uR"("FILE","STOCK","INDEXED","FIXED",20)"_s, {}},
        {"whatever the case", {}, u"file,stock,relative,variable,0"_s, {}},
        {"the highest record size", {}, u"FILE,STOCK,SEQUENTIAL,FIXED,65535"_s, {}},
        {"columns too many", {}, u"FILE,STOCK,SEQUENTIAL,FIXED,1,2,3"_s, {}},
        {"the kind alone", {}, u"FILE"_s, {few}},
        {"three columns", {}, u"FILE,STOCK,INDEXED"_s, {few}},
        {"a file of the catalog",
         {},
         u"FILE,payroll,INDEXED,FIXED,20"_s,
         {u"ERR FILE: 'PAYROLL' already defined in Catalog (Col 2)"_s}},
        {"a file of the catalog's own",
         {},
         u"FILE,CNTRL,INDEXED,FIXED,20"_s,
         {u"ERR FILE: 'CNTRL' already defined in Catalog (Col 2)"_s}},
        {"a file of a line before", {file}, file, {u"ERR FILE: 'STOCK' already defined in CSV (Col 2)"_s}},
        {"four columns of a known file",
         {},
         u"FILE,PAYROLL,INDEXED,FIXED"_s,
         {u"ERR FILE: 'PAYROLL' already defined in Catalog (Col 2)"_s}},
        {"no organisation", {}, u"FILE,STOCK,,FIXED,20"_s, {u"ERR FILE: Invalid File Organisation '' (Col 3)"_s}},
        {"part of an organisation",
         {},
         u"FILE,STOCK,INDEX,FIXED,20"_s,
         {u"ERR FILE: Invalid File Organisation 'INDEX' (Col 3)"_s}},
        {"a record type in lower case is told in upper case",
         {},
         u"FILE,STOCK,INDEXED,fluid,20"_s,
         {u"ERR FILE: Invalid Record Type 'FLUID' (Col 4)"_s}},
        {"no record size", {}, u"FILE,STOCK,INDEXED,FIXED,"_s, {u"ERR FILE: Invalid Record Size '' (Col 5)"_s}},
        {"a record size too high",
         {},
         u"FILE,STOCK,INDEXED,FIXED,65536"_s,
         {u"ERR FILE: Invalid Record Size '65536' (Col 5)"_s}},
        {"a record size below zero",
         {},
         u"FILE,STOCK,INDEXED,FIXED,-1"_s,
         {u"ERR FILE: Invalid Record Size '-1' (Col 5)"_s}},
        {"a record size in words",
         {},
         u"FILE,STOCK,INDEXED,FIXED,many"_s,
         {u"ERR FILE: Invalid Record Size 'many' (Col 5)"_s}},
        {"the first error ends the line",
         {},
         u"FILE,STOCK,X,Y,Z"_s,
         {u"ERR FILE: Invalid File Organisation 'X' (Col 3)"_s}},
        {"a comma within quotes moves what is behind",
         {},
         uR"("FILE","ST,OCK","INDEXED","FIXED",20)"_s,
         {u"ERR FILE: Invalid File Organisation 'OCK' (Col 3)"_s}},
        {"a quote within a name stays",
         {},
         uR"("FILE","ST"OCK","INDEXED","X",20)"_s,
         {u"ERR FILE: Invalid Record Type 'X' (Col 4)"_s}},
    });
}

TEST_F(ValidatorTest, AFileInErrorIsNotDefined)
{
    CatalogNames names;
    Findings findings;
    LineValidator validator(*connection, names, findings);
    validator.validate(1, u"FILE,STOCK,INDEXED,FIXED,many");
    validator.validate(2, field);
    EXPECT_EQ(lines(findings), (QStringList{u"1 ERR FILE: Invalid Record Size 'many' (Col 5)"_s,
                                            u"2 ERR FIELD: File 'STOCK' is not defined (Col 2)"_s}));
}

TEST_F(ValidatorTest, AFileLineOfFourColumnsThatAreRightFaultsOnTheMissingOne)
{
    CatalogNames names;
    Findings findings;
    LineValidator validator(*connection, names, findings);
    try {
        validator.validate(1, u"FILE,STOCK,INDEXED,FIXED");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::SubscriptOutOfRange);
    }
    EXPECT_EQ(lines(findings), QStringList());
    EXPECT_TRUE(names.files.isEmpty());
}

TEST_F(ValidatorTest, LinesOfFields)
{
    const QString few = u"ERR FIELD: Insufficient information to describe a Field"_s;
    const QString assumed = u"WRN FIELD: Missing DT information - Assuming default"_s;
    check({
        {"as it is written", {file}, uR"("FIELD","STOCK","PART","STRING",0,8,8,0,0,"","none")"_s, {}},
        {"whatever the case", {file}, u"field,stock,part,string,65535,65535,65535,65535,1,,"_s, {}},
        {"a file of the catalog", {}, u"FIELD,EMPTY,PART,STRING,0,8,8,0,0,,"_s, {}},
        {"columns too many", {file}, u"FIELD,STOCK,PART,STRING,0,8,8,0,0,,,,"_s, {}},
        {"five columns", {file}, u"FIELD,STOCK,PART,STRING,0"_s, {few}},
        {"six columns", {file}, u"FIELD,STOCK,PART,STRING,0,8"_s, {assumed}},
        {"six columns of no defined file: the type is not looked at",
         {},
         u"FIELD,STOCK,PART,NONE,0,8"_s,
         {assumed, u"ERR FIELD: File 'STOCK' is not defined (Col 2)"_s}},
        {"six columns whose type is in lower case have no defaults",
         {file},
         u"FIELD,STOCK,PART,string,0,8"_s,
         {assumed, u"ERR FIELD: Invalid Precision '' (Col 7)"_s}},
        {"six columns of an unknown type",
         {file},
         u"FIELD,STOCK,PART,NONE,0,8"_s,
         {assumed, u"ERR FIELD: Invalid Local Type Name 'NONE' (Col 4)"_s}},
        {"seven columns", {file}, u"FIELD,STOCK,PART,STRING,0,8,8"_s, {few}},
        {"ten columns", {file}, u"FIELD,STOCK,PART,STRING,0,8,8,0,0,"_s, {few}},
        {"an unknown file",
         {},
         u"FIELD,stock,PART,STRING,0,8,8,0,0,,"_s,
         {u"ERR FIELD: File 'STOCK' is not defined (Col 2)"_s}},
        {"a field of the catalog",
         {},
         u"FIELD,PAYROLL,salary,STRING,0,8,8,0,0,,"_s,
         {u"ERR FIELD: 'PAYROLL.SALARY' is already defined in Catalog (Col 3)"_s}},
        {"a field of a line before",
         {file, field},
         field,
         {u"ERR FIELD: 'STOCK.PART' is already defined in CSV (Col 3)"_s}},
        {"names that are the same without their border",
         {u"FILE,STOCKP,INDEXED,FIXED,1"_s, file, field},
         u"FIELD,STOCKP,ART,STRING,0,8,8,0,0,,"_s,
         {u"ERR FIELD: 'STOCKP.ART' is already defined in CSV (Col 3)"_s}},
        {"an unknown type",
         {file},
         u"FIELD,STOCK,PART,char,0,8,8,0,0,,"_s,
         {u"ERR FIELD: Invalid Local Type Name 'CHAR' (Col 4)"_s}},
        {"no offset", {file}, u"FIELD,STOCK,PART,STRING,,8,8,0,0,,"_s, {u"ERR FIELD: Invalid Offset '' (Col 5)"_s}},
        {"an offset too high",
         {file},
         u"FIELD,STOCK,PART,STRING,65536,8,8,0,0,,"_s,
         {u"ERR FIELD: Invalid Offset '65536' (Col 5)"_s}},
        {"a length too high",
         {file},
         u"FIELD,STOCK,PART,STRING,0,65536,8,0,0,,"_s,
         {u"ERR FIELD: Invalid Length '65536' (Col 6)"_s}},
        {"a precision too high",
         {file},
         u"FIELD,STOCK,PART,STRING,0,8,65536,0,0,,"_s,
         {u"ERR FIELD: Invalid Precision '65536' (Col 7)"_s}},
        {"a scale too high",
         {file},
         u"FIELD,STOCK,PART,STRING,0,8,8,65536,0,,"_s,
         {u"ERR FIELD: Invalid Scale '65536' (Col 8)"_s}},
        {"a length below zero",
         {file},
         u"FIELD,STOCK,PART,STRING,0,-1,8,0,0,,"_s,
         {u"ERR FIELD: Invalid Length '-1' (Col 6)"_s}},
        {"no precision, as of a null",
         {file},
         u"FIELD,STOCK,PART,STRING,0,8,,0,0,,"_s,
         {u"ERR FIELD: Invalid Precision '' (Col 7)"_s}},
        {"a scale below zero",
         {file},
         u"FIELD,STOCK,PART,STRING,0,8,8,-2,0,,"_s,
         {u"ERR FIELD: Invalid Scale '-2' (Col 8)"_s}},
        {"encryption 2",
         {file},
         u"FIELD,STOCK,PART,STRING,0,8,8,0,2,,"_s,
         {u"ERR FIELD: Invalid Encrypted Flag '2' (Col 9)"_s}},
    });
}

TEST_F(ValidatorTest, LinesOfDatabases)
{
    check({
        {"as it is written", {}, uR"("DB","DEPOT","/data","DISAM","","DEPOT")"_s, {}},
        {"the name in another case", {}, u"db,depot,,disam,,Depot"_s, {}},
        {"no display name", {}, u"DB,DEPOT,,DISAM,,"_s, {}},
        {"columns too many", {}, u"DB,DEPOT,,DISAM,,DEPOT,more"_s, {}},
        {"four columns", {}, u"DB,DEPOT,,DISAM"_s, {u"ERR DB: Insufficient information to describe a Database"_s}},
        {"five columns", {}, u"DB,DEPOT,,DISAM,"_s, {u"WRN DB: Missing Display Name - Assuming Default"_s}},
        {"a database of the catalog",
         {},
         u"DB,sales,,DISAM,,"_s,
         {u"ERR DB: 'SALES' is already defined in Catalog (Col 2)"_s}},
        {"the catalog's own", {}, u"DB,TW,,DISAM,,"_s, {u"ERR DB: 'TW' is already defined in Catalog (Col 2)"_s}},
        {"a database of a line before", {database}, database, {u"ERR DB: 'DEPOT' is already defined in CSV (Col 2)"_s}},
        {"five columns of a database of a line before",
         {database},
         u"DB,DEPOT,,DISAM,"_s,
         {u"WRN DB: Missing Display Name - Assuming Default"_s,
          u"ERR DB: 'DEPOT' is already defined in CSV (Col 2)"_s}},
        {"an unknown driver", {}, u"DB,DEPOT,,fast,,"_s, {u"ERR DB: Invalid Driver Name 'FAST' (Col 4)"_s}},
        {"another display name", {}, u"DB,DEPOT,,DISAM,,STORE"_s, {u"ERR DB: Display Name must match Database Name"_s}},
        {"a comma in a display name whose first half is the name",
         {},
         uR"("DB","DEPOT","","DISAM","","DEPOT,X")"_s,
         {}},
        {"a comma in another display name",
         {},
         uR"("DB","DEPOT","","DISAM","","STO,RE")"_s,
         {u"ERR DB: Display Name must match Database Name"_s}},
        {"a comma in the directory moves what is behind",
         {},
         uR"("DB","DEPOT","/a,b","DISAM","","DEPOT")"_s,
         {u"ERR DB: Invalid Driver Name 'B' (Col 4)"_s}},
    });
}

TEST_F(ValidatorTest, TheDriverIsAskedForByItsNameInUpperCase)
{
    check({{"a line", {}, u"DB,DEPOT,,disam,,"_s, {}}});
    EXPECT_EQ(statements.statements().last(), u"SELECT DRIVER_NAME FROM TW_DRIVER WHERE DRIVER_NAME = 'DISAM'"_s);
}

TEST_F(ValidatorTest, ADriverNameThatWouldBeginAStatementIsNeverSent)
{
    const QStringList former = wholeCatalog();
    check({{"a name",
            {},
            u"DB,DEPOT,,X'; DELETE FROM TW_FILE; --,,"_s,
            {u"ERR DB: Invalid Driver Name 'X'; DELETE FROM TW_FILE; --' (Col 4)"_s}}});
    EXPECT_EQ(statements.statements().filter(u"DELETE"_s), QStringList());
    EXPECT_EQ(wholeCatalog(), former);
}

TEST_F(ValidatorTest, LinesOfTables)
{
    const QStringList world{file, database};
    check({
        {"as it is written", world, uR"("TABLE","DEPOT","PARTS","TABLE","STOCK","parts.dat","","PARTS")"_s, {}},
        {"whatever the case", world, u"table,depot,parts,table,stock,parts.dat,,Parts"_s, {}},
        {"on what the catalog holds", {}, u"TABLE,SALES,PARTS,TABLE,PAYROLL,,,"_s, {}},
        {"a display name of its own is not looked at", world, u"TABLE,DEPOT,PARTS,TABLE,STOCK,,,OTHER"_s, {}},
        {"six columns",
         world,
         u"TABLE,DEPOT,PARTS,TABLE,STOCK,parts.dat"_s,
         {u"ERR TABLE: Insufficient information to describe a Table"_s}},
        {"seven columns",
         world,
         u"TABLE,DEPOT,PARTS,TABLE,STOCK,parts.dat,"_s,
         {u"WRN Table: Missing Display Name - Assuming Default"_s}},
        {"a comma within quotes is one column too many, and passes",
         world,
         uR"("TABLE","DEPOT","PARTS","TABLE","STOCK","parts.dat","A = 1, 2","PARTS")"_s,
         {}},
        {"a comma in the name is read one place late",
         world,
         uR"("TABLE","DEPOT","PA,RTS","VIEW","STOCK","parts.dat","","PARTS")"_s,
         {u"ERR TABLE: File 'VIEW' is not defined (Col 5)"_s}},
        {"an unknown database",
         {file},
         u"TABLE,depot,PARTS,TABLE,STOCK,,,"_s,
         {u"ERR TABLE: Database 'DEPOT' does not exist (Col 2)"_s}},
        {"no type", world, u"TABLE,DEPOT,PARTS,,STOCK,,,"_s, {u"WRN TABLE: Table Type not set (Col 4)"_s}},
        {"no type, and nothing behind is looked at",
         world,
         u"TABLE,DEPOT,PARTS,,NOWHERE,,,"_s,
         {u"WRN TABLE: Table Type not set (Col 4)"_s}},
        {"an unknown file",
         {database},
         u"TABLE,DEPOT,PARTS,TABLE,stock,,,"_s,
         {u"ERR TABLE: File 'STOCK' is not defined (Col 5)"_s}},
        {"a table of the catalog",
         {},
         u"TABLE,SALES,orders,TABLE,PAYROLL,,,"_s,
         {u"ERR TABLE: 'SALES_ORDERS' is already defined in Catalog (Col 3)"_s}},
        {"a table of a line before",
         {file, database, table},
         table,
         {u"ERR TABLE: 'DEPOT_PARTS' is already defined in CSV (Col 3)"_s}},
        {"the same with another border",
         {file, database, u"DB,DEP,,DISAM,,"_s, table},
         u"TABLE,DEP,OTPARTS,TABLE,STOCK,,,"_s,
         {u"ERR TABLE: 'DEP_OTPARTS' is already defined in CSV (Col 3)"_s}},
    });
}

TEST_F(ValidatorTest, ATableWithoutATypeEntersNoSet)
{
    CatalogNames names;
    Findings findings;
    LineValidator validator(*connection, names, findings);
    for (const QString& line : {file, field, database})
        validator.validate(1, line);
    validator.validate(2, u"TABLE,DEPOT,PARTS,,STOCK,,,");
    EXPECT_TRUE(names.tables.isEmpty());
    EXPECT_TRUE(names.tableFiles.isEmpty());
}

TEST_F(ValidatorTest, TheFirstTableOfANameDecidesItsFileEvenInError)
{
    CatalogNames names;
    names.ReadCurrentCatalog(*connection->db(), [](const char*, QStringView) {});
    Findings findings;
    LineValidator validator(*connection, names, findings);
    validator.validate(1, file);
    validator.validate(2, database);
    validator.validate(3, u"TABLE,SALES,ORDERS,TABLE,EMPTY,,,");
    validator.validate(4, u"TABLE,DEPOT,ORDERS,TABLE,STOCK,,,");
    EXPECT_EQ(lines(findings), QStringList{u"3 ERR TABLE: 'SALES_ORDERS' is already defined in Catalog (Col 3)"_s});
    EXPECT_EQ(names.tableFiles.value(u"ORDERS"_s), u"EMPTY"_s);
}
