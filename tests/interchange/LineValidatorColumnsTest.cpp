#include "ValidatorFixture.h"

using namespace Qt::StringLiterals;

TEST_F(ValidatorTest, LinesOfColumns)
{
    const QString few = u"ERR COLUMN: Insufficient information to describe a Column"_s;
    const QString noName = u"WRN Table: Missing Display Name - Assuming Default"_s;
    const QString noType = u"WRN Table: Missing Column Type - Assuming Default"_s;
    const QString neither = u"WRN Column : Missing Display Name & Column Type - Assuming Default"_s;
    const QStringList& world = columnWorld;
    check({
        {"as it is written", world, uR"("COLUMN","DEPOT","PARTS","PART","PART","CHAR",8,1,1,"","PART",0)"_s, {}},
        {"whatever the case", world, u"column,depot,parts,part,part,char,65535,0,0,,,0"_s, {}},
        {"columns too many", world, u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,PART,0,,"_s, {}},
        {"nine columns", world, u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1"_s, {few}},
        {"ten columns", world, u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,"_s, {neither}},
        {"eleven columns, the last a number", world, u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,0"_s, {noName}},
        {"eleven columns, the last a number that is no type",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,9"_s,
         {noName, u"ERR COLUMN: Invalid Column Type '9' (Col 12)"_s}},
        {"eleven columns, the last a name", world, u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,Part"_s, {noType}},
        {"eleven columns, the last empty", world, u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,"_s, {noType}},
        {"an unknown database",
         {},
         u"COLUMN,depot,PARTS,PART,PART,CHAR,8,1,1,,,0"_s,
         {u"ERR COLUMN: Database 'DEPOT' does not exist (Col 2)"_s}},
        {"an unknown table",
         {database},
         u"COLUMN,DEPOT,parts,PART,PART,CHAR,8,1,1,,,0"_s,
         {u"ERR COLUMN: Table 'PARTS' does not exist (Col 3)"_s}},
        {"a table of the catalog alone",
         {},
         u"COLUMN,SALES,ORDERS,PART,BONUS,CHAR,8,1,1,,,0"_s,
         {u"ERR COLUMN: Reference to ORDERS has not been defined in catalog"_s}},
        {"an unknown field",
         world,
         u"COLUMN,DEPOT,PARTS,PART,price,CHAR,8,1,1,,,0"_s,
         {u"ERR COLUMN: Field 'PRICE' does not exist (Col 5)"_s}},
        {"an unknown type",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,text,8,1,1,,,0"_s,
         {u"ERR COLUMN: SQL Type Name Invalid 'TEXT' (Col 6)"_s}},
        {"no length",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,,1,1,,,0"_s,
         {u"ERR COLUMN: Invalid Length '' (Col 7)"_s}},
        {"a length too high",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,65536,1,1,,,0"_s,
         {u"ERR COLUMN: Invalid Length '65536' (Col 7)"_s}},
        {"updatable 2",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,2,1,,,0"_s,
         {u"ERR COLUMN: Invalid Updatable flag '2' (Col 8)"_s}},
        {"visible in words",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,yes,,,0"_s,
         {u"ERR COLUMN: Invalid Visible flag 'yes' (Col 9)"_s}},
        {"visible 2",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,2,,,0"_s,
         {u"ERR COLUMN: Invalid Visible flag '2' (Col 9)"_s}},
        {"updatable in words",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,yes,1,,,0"_s,
         {u"ERR COLUMN: Invalid Updatable flag 'yes' (Col 8)"_s}},
        {"a comma in the display name moves what is behind",
         world,
         uR"("COLUMN","DEPOT","PARTS","PART","PART","CHAR",8,1,1,"","Pa,rt",0)"_s,
         {u"ERR COLUMN: Invalid Column Type 'rt' (Col 12)"_s}},
        {"no type of column",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,,"_s,
         {u"ERR COLUMN: Invalid Column Type '' (Col 12)"_s}},
        {"type 9",
         world,
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,,9"_s,
         {u"ERR COLUMN: Invalid Column Type '9' (Col 12)"_s}},
        {"a type between two", world, u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,,1.5"_s, {}},
        {"two lines for one column",
         world + QStringList{u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,,0"_s},
         u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,,0"_s,
         {}},
        {"two columns on one field",
         world + QStringList{u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,,0"_s},
         u"COLUMN,DEPOT,PARTS,SPARE,PART,CHAR,8,1,1,,,0"_s,
         {}},
    });
}

TEST_F(ValidatorTest, SpecialColumnsBearTheNameOfTheirType)
{
    const QStringList names{"RFA",         "INDEX_NUMBER", "INDEX_NAME",     "INDEX_COLUMNS",
                            "TABLE_ORDER", "ROWID",        "RELATIVE_NUMBER"};
    std::vector<Row> rows;
    for (int type = 1; type <= names.size(); ++type) {
        const QString& name = names[type - 1];
        const QString line = u"COLUMN,DEPOT,PARTS,%1,PART,CHAR,8,1,1,,,%2"_s;
        rows.push_back({"the name", columnWorld, line.arg(name.toLower()).arg(type), {}});
        rows.push_back(
            {"the type with a fraction of nothing", columnWorld, line.arg(name, QString::number(type) + ".0"), {}});
        rows.push_back({"another name",
                        columnWorld,
                        line.arg(u"PART"_s).arg(type),
                        {u"ERR COLUMN: Invalid Column Name - Column Type indicates "_s + name}});
    }
    check(rows);
}

TEST_F(ValidatorTest, AColumnOfType8RefersToAColumnOfTheCatalogAlone)
{
    // The catalog holds columns whose table only the file defines.
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME) "
           "VALUES ('DEPOT', 'PARTS', 'OLD', 'GONE')"_s);
    check({
        {"a column of the catalog", columnWorld, u"COLUMN,DEPOT,PARTS,NEW,PART,CHAR,8,1,1,,old,8"_s, {}},
        {"no column",
         columnWorld,
         u"COLUMN,DEPOT,PARTS,NEW,PART,CHAR,8,1,1,,none,8"_s,
         {u"ERR COLUMN: Column 'NONE' undefined (Col 11)"_s}},
        {"eleven columns: the name stands for the column, which the catalog has not",
         columnWorld,
         u"COLUMN,DEPOT,PARTS,NEW,PART,CHAR,8,1,1,,8"_s,
         {u"WRN Table: Missing Display Name - Assuming Default"_s, u"ERR COLUMN: Column 'NEW' undefined (Col 11)"_s}},
        {"eleven columns: the name stands for the column, which the catalog has",
         columnWorld,
         u"COLUMN,DEPOT,PARTS,OLD,PART,CHAR,8,1,1,,8"_s,
         {u"WRN Table: Missing Display Name - Assuming Default"_s,
          u"ERR COLUMN: 'DEPOT' is already defined in Catalog (Col 2)"_s}},
        {"a column of a line before",
         columnWorld + QStringList{u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,,0"_s},
         u"COLUMN,DEPOT,PARTS,NEW,PART,CHAR,8,1,1,,PART,8"_s,
         {u"ERR COLUMN: Column 'PART' undefined (Col 11)"_s}},
    });
}

TEST_F(ValidatorTest, AColumnIsComparedWithThoseOfTheCatalog)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME) "
           "VALUES ('DEPOT', 'PARTS', 'PART', 'PART')"_s);
    const QString price = u"FIELD,STOCK,PRICE,STRING,8,4,4,0,0,,"_s;
    const QString defined = u"ERR COLUMN: 'DEPOT' is already defined in Catalog (Col 2)"_s;
    const QString mapped = u"ERR COLUMN: 'PART' is already mapped in Catalog (Col 5)"_s;
    const QStringList world = columnWorld + QStringList{price};
    check({
        {"its name", world, u"COLUMN,DEPOT,PARTS,PART,PRICE,CHAR,8,1,1,,,0"_s, {defined}},
        {"its field", world, u"COLUMN,DEPOT,PARTS,OTHER,PART,CHAR,8,1,1,,,0"_s, {mapped}},
        {"both", world, u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,,,0"_s, {defined, mapped}},
    });
}

TEST_F(ValidatorTest, LinesOfUsers)
{
    const QString few = u"ERR USER: Insufficient information to describe a User"_s;
    check({
        {"as it is written", {}, uR"("USER","BOB","secret")"_s, {}},
        {"two columns", {}, u"USER,BOB"_s, {few}},
        {"four columns", {}, u"USER,BOB,SECRET,MORE"_s, {few}},
        {"a comma in the password", {}, uR"("USER","BOB","SEC,RET")"_s, {few}},
        {"the administrator", {}, u"USER,admin,SECRET"_s, {u"ERR USER: ADMIN cannot be imported"_s}},
        {"a user of the catalog",
         {},
         u"USER,clerk,SECRET"_s,
         {u"ERR USER: 'CLERK' is already defined in Catalog (Col 2)"_s}},
        {"a user of a line before", {user}, user, {u"ERR USER: 'BOB' is already defined in CSV (Col 2)"_s}},
        {"no password", {}, uR"("USER","BOB","")"_s, {u"WRN USER: Password is blank"_s}},
    });
}

TEST_F(ValidatorTest, AUserWithoutAPasswordIsDefined)
{
    CatalogNames names;
    Findings findings;
    LineValidator validator(*connection, names, findings);
    validator.validate(1, u"USER,BOB,");
    EXPECT_TRUE(names.users.contains(u"BOB"_s));
}

TEST_F(ValidatorTest, LinesOfDatabasePrivileges)
{
    const QString few = u"ERR DBPRV: Insufficient information to describe a Database Privilege"_s;
    const QString blank = u"WRN DBPRV: Database Password is blank"_s;
    const QStringList world{user};
    check({
        {"as it is written", world, uR"("DBPRV","BOB","DEPOT","BOBBY","PASS",1,1,1,1,"DATABASE")"_s, {}},
        {"whatever the case, of no database at all", world, u"dbprv,bob,nowhere,bobby,pass,0,0,0,0,table"_s, {}},
        {"of the catalog, which is left to refuse it", {}, u"DBPRV,CLERK,SALES,,P,1,1,1,1,TABLE"_s, {}},
        {"twice", {user, u"DBPRV,BOB,DEPOT,,P,1,1,1,1,TABLE"_s}, u"DBPRV,BOB,DEPOT,,P,1,1,1,1,TABLE"_s, {}},
        {"nine columns", world, u"DBPRV,BOB,DEPOT,,P,1,1,1,1"_s, {few}},
        {"eleven columns", world, u"DBPRV,BOB,DEPOT,,P,1,1,1,1,TABLE,"_s, {few}},
        {"an unknown user",
         {},
         u"DBPRV,bob,DEPOT,,P,1,1,1,1,TABLE"_s,
         {u"ERR DBPRV: User 'BOB' does not exist (Col 2)"_s}},
        {"no password", world, u"DBPRV,BOB,DEPOT,,,1,1,1,1,TABLE"_s, {blank}},
        {"no password, and the checks go on",
         world,
         u"DBPRV,BOB,DEPOT,,,2,1,1,1,TABLE"_s,
         {blank, u"ERR DBPRV: Invalid Allow Select flag (Col 6)"_s}},
        {"level", world, u"DBPRV,BOB,DEPOT,,P,1,1,1,1,FIELD"_s, {u"ERR DBPRV: Invalid Security Level (Col 10)"_s}},
        {"no level", world, u"DBPRV,BOB,DEPOT,,P,1,1,1,1,"_s, {u"ERR DBPRV: Invalid Security Level (Col 10)"_s}},
    });
}

TEST_F(ValidatorTest, LinesOfTablePrivileges)
{
    const QString few = u"ERR TBLPRV: Insufficient information to describe a Table Privilege"_s;
    const QString known = u"TBLPRV,CLERK,SALES,ORDERS,1,1,1,1"_s;
    check({
        {"as it is written, of the catalog, which is left to refuse it",
         {},
         uR"("TBLPRV","CLERK","SALES","ORDERS",1,1,1,1)"_s,
         {}},
        {"whatever the case", {}, u"tblprv,clerk,sales,orders,0,0,0,0"_s, {}},
        {"seven columns", {}, u"TBLPRV,CLERK,SALES,ORDERS,1,1,1"_s, {few}},
        {"nine columns", {}, u"TBLPRV,CLERK,SALES,ORDERS,1,1,1,1,"_s, {few}},
        {"an unknown user",
         {},
         u"TBLPRV,bob,SALES,ORDERS,1,1,1,1"_s,
         {u"ERR TBLPRV: User 'BOB' does not exist (Col 2)"_s}},
        {"an unknown database",
         {},
         u"TBLPRV,CLERK,depot,ORDERS,1,1,1,1"_s,
         {u"ERR TBLPRV: Database 'DEPOT' does not exist (Col 3)"_s}},
        {"an unknown table",
         {},
         u"TBLPRV,CLERK,SALES,parts,1,1,1,1"_s,
         {u"ERR TBLPRV: Table 'SALES_PARTS' does not exist (Col 4)"_s}},
        {"a key of the catalog's privileges stands among the tables", {}, u"TBLPRV,CLERK,SALES,.CLERK,1,1,1,1"_s, {}},
        {"twice",
         {known},
         known,
         {u"ERR TBLPRV: 'User 'CLERK', Table 'SALESORDERS' privileges already defined in CSV (Col 2)"_s}},
        {"twice, with a flag in error",
         {known},
         u"TBLPRV,CLERK,SALES,ORDERS,9,1,1,1"_s,
         {u"ERR TBLPRV: Invalid Allow Select flag (Col 5)"_s}},
    });
}

TEST_F(ValidatorTest, TheFlagsOfPrivilegesAreZeroOrOne)
{
    std::vector<Row> rows;
    const auto add = [&](const char* what, const QStringList& columns, int column, const QString& finding) {
        for (const char* value : {"-1", "2", "x", ""}) {
            QStringList changed = columns;
            changed[column - 1] = QLatin1String(value);
            rows.push_back({what, {}, changed.join(','), {finding}});
        }
    };
    const QStringList database{"DBPRV", "CLERK", "SALES", "B", "P", "0", "1", "0", "1", "TABLE"};
    add("database, select", database, 6, u"ERR DBPRV: Invalid Allow Select flag (Col 6)"_s);
    add("database, insert", database, 7, u"ERR DBPRV: Invalid Allow Insert flag (Col 7)"_s);
    add("database, update", database, 8, u"ERR DBPRV: Invalid Allow Update flag (Col 8)"_s);
    add("database, delete", database, 9, u"ERR DBPRV: Invalid Allow Delete flag (Col 9)"_s);
    const QStringList table{"TBLPRV", "CLERK", "SALES", "ORDERS", "0", "1", "0", "1"};
    add("table, select", table, 5, u"ERR TBLPRV: Invalid Allow Select flag (Col 5)"_s);
    add("table, insert", table, 6, u"ERR TBLPRV: Invalid Allow Insert flag (Col 6)"_s);
    add("table, update", table, 7, u"ERR TBLPRV: Invalid Allow Update flag (Col 7)"_s);
    add("table, delete, which is called select", table, 8, u"ERR TBLPRV: Invalid Allow Select flag (Col 8)"_s);
    check(rows);
}

TEST_F(ValidatorTest, PrivilegesThatTheNamesHoldWouldBeTold)
{
    CatalogNames names;
    names.ReadCurrentCatalog(*connection->db(), [](const char*, QStringView) {});
    const auto told = [&](CatalogNames::Origin origin, const QString& line) {
        names.databasePrivileges = {{u"CLERKSALES"_s, origin}};
        names.tablePrivileges = {{u"CLERKSALESORDERS"_s, origin}};
        Findings findings;
        LineValidator(*connection, names, findings).validate(1, line);
        return lines(findings);
    };
    const QString database = u"DBPRV,CLERK,SALES,,,x,x,x,x,x"_s;
    const QString table = u"TBLPRV,CLERK,SALES,ORDERS,1,1,1,1"_s;
    EXPECT_EQ(
        told(CatalogNames::Origin::Catalog, database),
        QStringList{"1 ERR DBPRV: 'User 'CLERK', Database 'SALES' privileges already defined in Catalog (Col 2)"});
    EXPECT_EQ(told(CatalogNames::Origin::Csv, database),
              QStringList{"1 ERR TABLE: 'User 'CLERK', Database 'SALES' privileges already defined in CSV (Col 2)"});
    EXPECT_EQ(
        told(CatalogNames::Origin::Catalog, table),
        QStringList{"1 ERR TBLPRV: 'User 'CLERK', Table 'SALESORDERS' privileges already defined in Catalog (Col 2)"});
    EXPECT_EQ(
        told(CatalogNames::Origin::Csv, table),
        QStringList{"1 ERR TBLPRV: 'User 'CLERK', Table 'SALESORDERS' privileges already defined in CSV (Col 2)"});
}
