#include "ValidatorFixture.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

TEST_F(ValidatorTest, TheFirstRuleInOrderSpeaks)
{
    // The catalog has a column of the table that the lines before define.
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME) "
           "VALUES ('DEPOT', 'PARTS', 'RFA', 'PART')"_s);
    const QString privilege = u"TBLPRV,CLERK,SALES,ORDERS,1,1,1,1"_s;
    const QStringList world = columnWorld + QStringList{u"FIELD,STOCK,PRICE,STRING,8,4,4,0,0,,"_s, privilege};
    // Each kind begins with a line that breaks every rule, and one more of them is kept from line to line.
    const std::vector<std::pair<QString, QStringList>> lines{
        {u"FILE,PAYROLL,X"_s, {u"ERR FILE: Insufficient information to describe a File"_s}},
        {u"FILE,PAYROLL,X,Y,Z"_s, {u"ERR FILE: 'PAYROLL' already defined in Catalog (Col 2)"_s}},
        {u"FILE,NEW,X,Y,Z"_s, {u"ERR FILE: Invalid File Organisation 'X' (Col 3)"_s}},
        {u"FILE,NEW,INDEXED,Y,Z"_s, {u"ERR FILE: Invalid Record Type 'Y' (Col 4)"_s}},
        {u"FILE,NEW,INDEXED,FIXED,Z"_s, {u"ERR FILE: Invalid Record Size 'Z' (Col 5)"_s}},
        {u"FILE,NEW,INDEXED,FIXED,1"_s, {}},

        {u"FIELD,NONE,SALARY,NO,a,b,c,d,e,"_s, {u"ERR FIELD: Insufficient information to describe a Field"_s}},
        {u"FIELD,NONE,SALARY,NO,a,b,c,d,e,,"_s, {u"ERR FIELD: File 'NONE' is not defined (Col 2)"_s}},
        {u"FIELD,PAYROLL,SALARY,NO,a,b,c,d,e,,"_s,
         {u"ERR FIELD: 'PAYROLL.SALARY' is already defined in Catalog (Col 3)"_s}},
        {u"FIELD,PAYROLL,NEW,NO,a,b,c,d,e,,"_s, {u"ERR FIELD: Invalid Local Type Name 'NO' (Col 4)"_s}},
        {u"FIELD,PAYROLL,NEW,STRING,a,b,c,d,e,,"_s, {u"ERR FIELD: Invalid Offset 'a' (Col 5)"_s}},
        {u"FIELD,PAYROLL,NEW,STRING,0,b,c,d,e,,"_s, {u"ERR FIELD: Invalid Length 'b' (Col 6)"_s}},
        {u"FIELD,PAYROLL,NEW,STRING,0,0,c,d,e,,"_s, {u"ERR FIELD: Invalid Precision 'c' (Col 7)"_s}},
        {u"FIELD,PAYROLL,NEW,STRING,0,0,0,d,e,,"_s, {u"ERR FIELD: Invalid Scale 'd' (Col 8)"_s}},
        {u"FIELD,PAYROLL,NEW,STRING,0,0,0,0,e,,"_s, {u"ERR FIELD: Invalid Encrypted Flag 'e' (Col 9)"_s}},
        {u"FIELD,PAYROLL,NEW,STRING,0,0,0,0,0,,"_s, {}},

        {u"DB,SALES,,FAST"_s, {u"ERR DB: Insufficient information to describe a Database"_s}},
        {u"DB,SALES,,FAST,,OTHER"_s, {u"ERR DB: 'SALES' is already defined in Catalog (Col 2)"_s}},
        {u"DB,NEW,,FAST,,OTHER"_s, {u"ERR DB: Invalid Driver Name 'FAST' (Col 4)"_s}},
        {u"DB,NEW,,DISAM,,OTHER"_s, {u"ERR DB: Display Name must match Database Name"_s}},
        {u"DB,NEW,,DISAM,,NEW"_s, {}},

        {u"TABLE,NONE,ORDERS,,NONE,"_s, {u"ERR TABLE: Insufficient information to describe a Table"_s}},
        {u"TABLE,NONE,ORDERS,,NONE,,,"_s, {u"ERR TABLE: Database 'NONE' does not exist (Col 2)"_s}},
        {u"TABLE,SALES,ORDERS,,NONE,,,"_s, {u"WRN TABLE: Table Type not set (Col 4)"_s}},
        {u"TABLE,SALES,ORDERS,TABLE,NONE,,,"_s, {u"ERR TABLE: File 'NONE' is not defined (Col 5)"_s}},
        {u"TABLE,SALES,ORDERS,TABLE,STOCK,,,"_s,
         {u"ERR TABLE: 'SALES_ORDERS' is already defined in Catalog (Col 3)"_s}},
        {u"TABLE,SALES,NEW,TABLE,STOCK,,,"_s, {}},

        {u"COLUMN,NONE,NONE,A,NONE,NO,a,b,c"_s, {u"ERR COLUMN: Insufficient information to describe a Column"_s}},
        {u"COLUMN,NONE,NONE,A,NONE,NO,a,b,c,,,d"_s, {u"ERR COLUMN: Database 'NONE' does not exist (Col 2)"_s}},
        {u"COLUMN,DEPOT,NONE,A,NONE,NO,a,b,c,,,d"_s, {u"ERR COLUMN: Table 'NONE' does not exist (Col 3)"_s}},
        {u"COLUMN,SALES,ORDERS,A,NONE,NO,a,b,c,,,d"_s,
         {u"ERR COLUMN: Reference to ORDERS has not been defined in catalog"_s}},
        {u"COLUMN,DEPOT,PARTS,A,NONE,NO,a,b,c,,,d"_s, {u"ERR COLUMN: Field 'NONE' does not exist (Col 5)"_s}},
        {u"COLUMN,DEPOT,PARTS,A,PART,NO,a,b,c,,,d"_s, {u"ERR COLUMN: SQL Type Name Invalid 'NO' (Col 6)"_s}},
        {u"COLUMN,DEPOT,PARTS,A,PART,CHAR,a,b,c,,,d"_s, {u"ERR COLUMN: Invalid Length 'a' (Col 7)"_s}},
        {u"COLUMN,DEPOT,PARTS,A,PART,CHAR,8,b,c,,,d"_s, {u"ERR COLUMN: Invalid Updatable flag 'b' (Col 8)"_s}},
        {u"COLUMN,DEPOT,PARTS,A,PART,CHAR,8,1,c,,,d"_s, {u"ERR COLUMN: Invalid Visible flag 'c' (Col 9)"_s}},
        {u"COLUMN,DEPOT,PARTS,A,PART,CHAR,8,1,1,,,d"_s, {u"ERR COLUMN: Invalid Column Type 'd' (Col 12)"_s}},
        {u"COLUMN,DEPOT,PARTS,A,PART,CHAR,8,1,1,,,1"_s,
         {u"ERR COLUMN: Invalid Column Name - Column Type indicates RFA"_s}},
        {u"COLUMN,DEPOT,PARTS,RFA,PART,CHAR,8,1,1,,,1"_s,
         {u"ERR COLUMN: 'DEPOT' is already defined in Catalog (Col 2)"_s,
          u"ERR COLUMN: 'PART' is already mapped in Catalog (Col 5)"_s}},
        {u"COLUMN,DEPOT,PARTS,A,PART,CHAR,8,1,1,,,0"_s, {u"ERR COLUMN: 'PART' is already mapped in Catalog (Col 5)"_s}},
        {u"COLUMN,DEPOT,PARTS,A,PRICE,CHAR,8,1,1,,,0"_s, {}},

        {u"USER,ADMIN"_s, {u"ERR USER: Insufficient information to describe a User"_s}},
        {u"USER,ADMIN,"_s, {u"ERR USER: ADMIN cannot be imported"_s}},
        {u"USER,CLERK,"_s, {u"ERR USER: 'CLERK' is already defined in Catalog (Col 2)"_s}},
        {u"USER,NEW,"_s, {u"WRN USER: Password is blank"_s}},
        {u"USER,NEW,P"_s, {}},

        {u"DBPRV,NONE,SALES,,,a,b,c,d"_s, {u"ERR DBPRV: Insufficient information to describe a Database Privilege"_s}},
        {u"DBPRV,NONE,SALES,,,a,b,c,d,e"_s, {u"ERR DBPRV: User 'NONE' does not exist (Col 2)"_s}},
        {u"DBPRV,CLERK,SALES,,,a,b,c,d,e"_s,
         {u"WRN DBPRV: Database Password is blank"_s, u"ERR DBPRV: Invalid Allow Select flag (Col 6)"_s}},
        {u"DBPRV,CLERK,SALES,,P,a,b,c,d,e"_s, {u"ERR DBPRV: Invalid Allow Select flag (Col 6)"_s}},
        {u"DBPRV,CLERK,SALES,,P,1,b,c,d,e"_s, {u"ERR DBPRV: Invalid Allow Insert flag (Col 7)"_s}},
        {u"DBPRV,CLERK,SALES,,P,1,1,c,d,e"_s, {u"ERR DBPRV: Invalid Allow Update flag (Col 8)"_s}},
        {u"DBPRV,CLERK,SALES,,P,1,1,1,d,e"_s, {u"ERR DBPRV: Invalid Allow Delete flag (Col 9)"_s}},
        {u"DBPRV,CLERK,SALES,,P,1,1,1,1,e"_s, {u"ERR DBPRV: Invalid Security Level (Col 10)"_s}},
        {u"DBPRV,CLERK,SALES,,P,1,1,1,1,TABLE"_s, {}},

        {u"TBLPRV,NONE,NONE,NONE,a,b,c"_s, {u"ERR TBLPRV: Insufficient information to describe a Table Privilege"_s}},
        {u"TBLPRV,NONE,NONE,NONE,a,b,c,d"_s, {u"ERR TBLPRV: User 'NONE' does not exist (Col 2)"_s}},
        {u"TBLPRV,CLERK,NONE,NONE,a,b,c,d"_s, {u"ERR TBLPRV: Database 'NONE' does not exist (Col 3)"_s}},
        {u"TBLPRV,CLERK,SALES,NONE,a,b,c,d"_s, {u"ERR TBLPRV: Table 'SALES_NONE' does not exist (Col 4)"_s}},
        {u"TBLPRV,CLERK,SALES,ORDERS,a,b,c,d"_s, {u"ERR TBLPRV: Invalid Allow Select flag (Col 5)"_s}},
        {u"TBLPRV,CLERK,SALES,ORDERS,1,b,c,d"_s, {u"ERR TBLPRV: Invalid Allow Insert flag (Col 6)"_s}},
        {u"TBLPRV,CLERK,SALES,ORDERS,1,1,c,d"_s, {u"ERR TBLPRV: Invalid Allow Update flag (Col 7)"_s}},
        {u"TBLPRV,CLERK,SALES,ORDERS,1,1,1,d"_s, {u"ERR TBLPRV: Invalid Allow Select flag (Col 8)"_s}},
        {privilege, {u"ERR TBLPRV: 'User 'CLERK', Table 'SALESORDERS' privileges already defined in CSV (Col 2)"_s}},
        {u"TBLPRV,CLERK,DEPOT,PARTS,1,1,1,1"_s, {}},
    };
    std::vector<Row> rows;
    for (const auto& [line, findings] : lines)
        rows.push_back({"", world, line, findings});
    check(rows);
}

TEST_F(ValidatorTest, ALineInErrorDefinesNothing)
{
    CatalogNames names;
    names.ReadCurrentCatalog(*connection->db(), [](const char*, QStringView) {});
    Findings findings;
    LineValidator validator(*connection, names, findings);
    for (const QString& line : columnWorld)
        validator.validate(1, line);
    ASSERT_EQ(lines(findings), QStringList());

    const auto sets = [&] {
        return std::tuple(names.files, names.fields, names.databases, names.tables, names.tableFiles, names.columnTypes,
                          names.columnNames, names.mappedFields, names.users, names.databasePrivileges,
                          names.tablePrivileges);
    };
    const auto former = sets();
    for (const char* line : {
             "FILE,NEW,INDEXED,FIXED,x",
             "FIELD,STOCK,NEW,STRING,0,8,8,0,x,,",
             "DB,NEW,,DISAM,,OTHER",
             "DB,NEW,,NONE,,",
             "TABLE,DEPOT,NEW,TABLE,NONE,,,",
             "TABLE,DEPOT,NEW,,STOCK,,,",
             "COLUMN,DEPOT,PARTS,NEW,PART,CHAR,8,1,x,,,0",
             "USER,NEW",
             "DBPRV,CLERK,SALES,,P,1,1,1,1,x",
             "TBLPRV,CLERK,SALES,ORDERS,1,1,1,x",
         }) {
        validator.validate(2, QString::fromLatin1(line));
        EXPECT_TRUE(sets() == former) << line;
    }
    EXPECT_EQ(findings.all().size(), 10U);
}

TEST_F(ValidatorTest, ATypeStoredInMixedCaseIsNeverFound)
{
    CLOCDT local;
    local.LOCAL_TYPE_NAME = u"Mixed"_s;
    local.ATTRIBUTES = u";DEFAULT_LENGTH=4;DEFAULT_PRECISION=4;"_s;
    connection->LOCDTs().add(local);
    CSQLDT sql;
    sql.SQL_TYPE_NAME = u"Mixed"_s;
    connection->SQLDTs().add(sql);
    const QStringList invalid{u"ERR FIELD: Invalid Local Type Name 'MIXED' (Col 4)"_s};
    check({
        {"a field as the type is stored", {file}, u"FIELD,STOCK,PART,Mixed,0,8,8,0,0,,"_s, invalid},
        {"a field in upper case", {file}, u"FIELD,STOCK,PART,MIXED,0,8,8,0,0,,"_s, invalid},
        {"a field that takes the defaults of the type",
         {file},
         u"FIELD,STOCK,PART,Mixed,0,8"_s,
         QStringList{u"WRN FIELD: Missing DT information - Assuming default"_s} + invalid},
        {"a column as the type is stored",
         {file, field, database, table},
         u"COLUMN,DEPOT,PARTS,PART,PART,Mixed,8,1,1,,PART,0"_s,
         {u"ERR COLUMN: SQL Type Name Invalid 'MIXED' (Col 6)"_s}},
    });
}

TEST_F(ValidatorTest, ATypeWhoseDefaultIsOutOfRangeFaults)
{
    CLOCDT vast;
    vast.LOCAL_TYPE_NAME = u"VAST"_s;
    vast.ATTRIBUTES = u";DEFAULT_LENGTH=99999999999;"_s;
    connection->LOCDTs().add(vast);
    CatalogNames names;
    Findings findings;
    LineValidator validator(*connection, names, findings);
    try {
        validator.validate(1, u"FIELD,STOCK,PART,VAST,0,8");
        ADD_FAILURE() << "No fault";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::Overflow);
    }
    EXPECT_EQ(lines(findings), QStringList());
}

TEST_F(ValidatorTest, OtherLines)
{
    check({
        {"an empty one is skipped", {}, u""_s, {}},
        {"blanks are a line", {}, u"  "_s, {u"ERR ?: Unknow line ID ''"_s}},
        {"an unknown kind, as written", {}, u"Files,STOCK"_s, {u"ERR ?: Unknow line ID 'Files'"_s}},
        {"a quote", {}, u"\""_s, {u"ERR ?: Unknow line ID ''"_s}},
        {"a kind within quotes", {}, uR"(" USER","BOB","SECRET")"_s, {u"ERR ?: Unknow line ID ' USER'"_s}},
        {"a heading", {}, u"FILE_NAME;FILE_ORGANISATION"_s, {u"ERR ?: Unknow line ID 'FILE_NAME;FILE_ORGANISATION'"_s}},
    });
}

TEST_F(ValidatorTest, NumbersInEveryScriptAndForm)
{
    const std::vector<std::pair<QString, bool>> rows{
        {"0", true},       {"1", true},       {"+1", true},      {"-0", true},      {"01", true},      {"1.0", true},
        {".5", true},      {"1.", true},      {"1e0", true},     {"1E-3", true},    {" 1 ", true},     {"\t1", true},
        {"1.0001", false}, {"1e400", false},  {"-1e400", false}, {"1e-400", true},  {"", false},       {".", false},
        {"+", false},      {"e1", false},     {"1e", false},     {"1 0", false},    {"1_0", false},    {"0x1", false},
        {"&H1", false},    {"$1", false},     {"1-", false},     {"(1)", false},    {"1d0", false},    {"nan", false},
        {"inf", false},    {"\u0661", false}, {"\uFF11", false}, {"\u00B9", false}, {"\u2160", false}, {"--1", false},
        {"1/*", false},    {"0--", false},    {"true", false},
    };
    for (const auto& [text, valid] : rows)
        EXPECT_EQ(IsValidNumeric(text, 0, 1), valid) << text.toStdString();
    EXPECT_TRUE(IsValidNumeric(u"65535", 0, 65535));
    EXPECT_FALSE(IsValidNumeric(u"65535.01", 0, 65535));
}

TEST_F(ValidatorTest, NoLineWritesWhateverItHolds)
{
    const QStringList former = wholeCatalog();
    statements.clear();
    CatalogNames names;
    names.ReadCurrentCatalog(*connection->db(), [](const char*, QStringView) {});
    Findings findings;
    LineValidator validator(*connection, names, findings);
    QRandomGenerator random(1234);
    const QStringList pieces{"FILE",    "FIELD",
                             "DB",      "TABLE",
                             "COLUMN",  "USER",
                             "DBPRV",   "TBLPRV",
                             ",",       ",",
                             ",",       ",",
                             ",",       ",",
                             "\"",      "0",
                             "1",       "STOCK",
                             "PAYROLL", "SALES",
                             "INDEXED", "FIXED",
                             "STRING",  "DISAM",
                             "BOB",     "; DELETE FROM TW_FILE",
                             " ",       "--",
                             "\u00E9"};
    for (int number = 1; number <= 20000; ++number) {
        QString line = pieces[random.bounded(8)] + ',';
        for (int count = random.bounded(24); count > 0; --count)
            line += pieces[random.bounded(static_cast<int>(pieces.size()))];
        try {
            validator.validate(number, line);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), ErrorNumber::SubscriptOutOfRange) << line.toStdString();
            EXPECT_EQ(line.count(u','), 3) << line.toStdString();
        }
    }
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(wholeCatalog(), former);
}

TEST_F(ValidatorTest, TheCatalogIsReadOnceInItsOrder)
{
    CatalogNames names;
    QStringList told;
    names.ReadCurrentCatalog(*connection->db(), [&](const char* kind, QStringView name) {
        told.append(QLatin1String(kind) + ' ' + name.toString());
    });
    const QStringList selects{
        u"SELECT FILE_NAME FROM TW_FILE"_s,
        u"SELECT FILE_NAME, FIELD_NAME, OFFSET FROM TW_FIELD"_s,
        u"SELECT DATABASE_NAME FROM TW_DB"_s,
        u"SELECT DATABASE_NAME, TABLE_NAME, FILE_NAME FROM TW_TABLE"_s,
        u"SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME, COLUMN_NUMBER, FIELD_NAME, COLUMN_TYPE FROM TW_COLUMN"_s,
        u"SELECT USER_NAME FROM TW_USER"_s,
        u"SELECT DATABASE_NAME, USER_NAME FROM TW_DBPRV"_s,
        u"SELECT DATABASE_NAME, TABLE_NAME, USER_NAME FROM TW_TBLPRV"_s,
    };
    EXPECT_EQ(statements.statements(), selects);
    // What each row is called, and which of its columns is its name.
    static constexpr std::array kinds{std::pair{"File", 0},  std::pair{"Field", 1},  std::pair{"Database", 0},
                                      std::pair{"Table", 1}, std::pair{"Column", 2}, std::pair{"User", 0},
                                      std::pair{"DBPRV", 1}, std::pair{"TBLPRV", 2}};
    QStringList expected;
    for (std::size_t i = 0; i < kinds.size(); ++i)
        for (const QString& row : stored(selects[static_cast<qsizetype>(i)]))
            expected.append(QLatin1String(kinds[i].first) + ' ' + row.section('|', kinds[i].second, kinds[i].second));
    EXPECT_EQ(told, expected);
    EXPECT_TRUE(told.contains(u"Field SALARY"_s) && told.contains(u"TBLPRV CLERK"_s));
    EXPECT_TRUE(names.files.contains(u"CNTRL"_s));
    EXPECT_TRUE(names.fields.contains(u"PAYROLLSALARY"_s));
    EXPECT_TRUE(names.tables.contains(u"SALESORDERS"_s));
    EXPECT_TRUE(names.tables.contains(u"SALES.CLERK"_s));
    EXPECT_TRUE(names.tables.contains(u"SALESORDERS.CLERK"_s));
    EXPECT_TRUE(names.tableFiles.isEmpty());
    EXPECT_TRUE(names.databasePrivileges.isEmpty());
    EXPECT_TRUE(names.tablePrivileges.isEmpty());
    EXPECT_TRUE(names.columnTypes.contains(CatalogKey().apart({u"SALES", u"ORDERS", u"1", u"1"}).toString()));
}
