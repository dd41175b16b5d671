#include "MainWindowFixture.h"

#include "MousePointer.h"
#include "Settings.h"

#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

/// The expansion of one type of node: what is sent and what then stands below it.
struct Level {
    const char* name;
    QStringList node;
    QStringList statements;
    QStringList lines;
    int sysTables = 0;
    int fieldOrder = 0;
};

void PrintTo(const Level& level, std::ostream* out)
{
    *out << level.name;
}

const QStringList file{u"FI"_s, u"fi=PAYROLL"_s};
const QStringList database{u"DB"_s, u"db=SALES"_s};
const QStringList table = database + QStringList{u"TA"_s, u"ta=ORDERS"_s};
const QStringList systemFile{u"FI"_s, u"fi=FIELD"_s};
const QStringList systemDatabase{u"DB"_s, u"db=TW"_s};
const QStringList systemTable = systemDatabase + QStringList{u"TA"_s, u"ta=TBLPRV"_s};

const QString filesWithoutSystem =
    u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME NOT IN ('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', 'FIELD', 'FILE', 'SQLDT', 'LOCDT', 'TABLE', 'TBLPRV', 'USER') ORDER BY FILE_NAME ASC"_s;

const QStringList allFiles{u"fi \"CNTRL\" File + grey"_s, u"fi \"COLUMN\" File + grey"_s, u"fi \"DB\" File + grey"_s,
                           u"fi \"DBPRV\" File + grey"_s, u"fi \"DRIVER\" File + grey"_s, u"fi \"EMPTY\" File +"_s,
                           u"fi \"FIELD\" File + grey"_s, u"fi \"FILE\" File + grey"_s,   u"fi \"KEY\" File +"_s,
                           u"fi \"LOCDT\" File + grey"_s, u"fi \"PAYROLL\" File +"_s,     u"fi \"SQLDT\" File + grey"_s,
                           u"fi \"TABLE\" File + grey"_s, u"fi \"TBLPRV\" File + grey"_s, u"fi \"USER\" File + grey"_s};

std::vector<Level> levels()
{
    return {
        {"Files",
         {u"FI"_s},
         {filesWithoutSystem},
         {u"fi \"EMPTY\" File +"_s, u"fi \"KEY\" File +"_s, u"fi \"PAYROLL\" File +"_s}},
        {"FilesWithSystemTables", {u"FI"_s}, {u"SELECT FILE_NAME FROM TW_FILE ORDER BY FILE_NAME ASC"_s}, allFiles, 1},
        {"FilesWithAnyOtherValueOfSystemTables",
         {u"FI"_s},
         {u"SELECT FILE_NAME FROM TW_FILE ORDER BY FILE_NAME ASC"_s},
         allFiles,
         -7},
        {"File", file, {}, {u"FD \"Fields\" Fields data \"PAYROLL\" +"_s}},
        {"SystemFile", systemFile, {}, {u"FD \"Fields\" Fields data \"FIELD\" + grey"_s}, 1},
        {"FieldsByName",
         file + QStringList{u"FD"_s},
         {u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' ORDER BY FIELD_NAME ASC"_s},
         {u"fd \"BONUS\" Field"_s, u"fd \"EMPLOYEE\" Field"_s, u"fd \"SALARY\" Field"_s}},
        {"FieldsByOffset",
         file + QStringList{u"FD"_s},
         {u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' ORDER BY OFFSET ASC"_s},
         {u"fd \"EMPLOYEE\" Field"_s, u"fd \"BONUS\" Field"_s, u"fd \"SALARY\" Field"_s},
         0,
         1},
        {"FieldsWithAnyOtherValueOfTheOrder",
         file + QStringList{u"FD"_s},
         {u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' ORDER BY OFFSET ASC"_s},
         {u"fd \"EMPLOYEE\" Field"_s, u"fd \"BONUS\" Field"_s, u"fd \"SALARY\" Field"_s},
         0,
         2},
        {"FieldsOfASystemFile",
         systemFile + QStringList{u"FD"_s},
         {u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'FIELD' ORDER BY OFFSET ASC"_s},
         {u"fd \"FILE_NAME\" Field grey"_s, u"fd \"FIELD_NUMBER\" Field grey"_s, u"fd \"FIELD_NAME\" Field grey"_s,
          u"fd \"LOCAL_TYPE_NAME\" Field grey"_s, u"fd \"OFFSET\" Field grey"_s, u"fd \"LENGTH\" Field grey"_s,
          u"fd \"PRECISION\" Field grey"_s, u"fd \"SCALE\" Field grey"_s, u"fd \"ENCRYPTED\" Field grey"_s,
          u"fd \"FORMAT\" Field grey"_s, u"fd \"DEFAULT_VALUE\" Field grey"_s, u"fd \"REMARKS\" Field grey"_s},
         1,
         1},
        {"FieldsOfAFileWithoutAny",
         {u"FI"_s, u"fi=EMPTY"_s, u"FD"_s},
         {u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'EMPTY' ORDER BY FIELD_NAME ASC"_s},
         {}},
        {"Databases",
         {u"DB"_s},
         {u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME <> 'TW' ORDER BY DATABASE_NAME ASC"_s},
         {u"db \"BARE\" DB +"_s, u"db \"SALES\" DB +"_s}},
        {"DatabasesWithSystemTables",
         {u"DB"_s},
         {u"SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME ASC"_s},
         {u"db \"BARE\" DB +"_s, u"db \"SALES\" DB +"_s, u"db \"TW\" DB + grey"_s},
         1},
        {"Database",
         database,
         {},
         {u"TA \"Tables\" Tables data \"SALES\" +"_s, u"DBPRV \"Database Privileges\" Padlock data \"SALES\" +"_s}},
        {"SystemDatabase",
         systemDatabase,
         {},
         {u"TA \"Tables\" Tables data \"TW\" + grey"_s, u"DBPRV \"Database Privileges\" Padlock data \"TW\" + grey"_s},
         1},
        {"Tables",
         database + QStringList{u"TA"_s},
         {u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' ORDER BY TABLE_NAME ASC"_s},
         {u"ta \"BARE\" Table +"_s, u"ta \"ORDERS\" Table +"_s}},
        {"TablesOfADatabaseWithoutAny",
         {u"DB"_s, u"db=BARE"_s, u"TA"_s},
         {u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'BARE' ORDER BY TABLE_NAME ASC"_s},
         {}},
        {"TablesOfTheSystemDatabase",
         systemDatabase + QStringList{u"TA"_s},
         {u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'TW' ORDER BY TABLE_NAME ASC"_s},
         {u"ta \"CNTRL\" Table + grey"_s, u"ta \"COLUMN\" Table + grey"_s, u"ta \"DB\" Table + grey"_s,
          u"ta \"DBPRV\" Table + grey"_s, u"ta \"DRIVER\" Table + grey"_s, u"ta \"FIELD\" Table + grey"_s,
          u"ta \"FILE\" Table + grey"_s, u"ta \"KEY\" Table + grey"_s, u"ta \"LOCDT\" Table + grey"_s,
          u"ta \"SQLDT\" Table + grey"_s, u"ta \"TABLE\" Table + grey"_s, u"ta \"TBLPRV\" Table + grey"_s,
          u"ta \"USER\" Table + grey"_s},
         1},
        {"Table",
         table,
         {},
         {u"CO \"Columns\" Columns data \"ORDERS\" +"_s, u"SCO \"Special Columns\" Special Columns data \"ORDERS\""_s,
          u"TBLPRV \"Table Privileges\" Padlock data \"ORDERS\" +"_s}},
        {"SystemTable",
         systemTable,
         {},
         {u"CO \"Columns\" Columns data \"TBLPRV\" + grey"_s,
          u"SCO \"Special Columns\" Special Columns data \"TBLPRV\" grey"_s,
          u"TBLPRV \"Table Privileges\" Padlock data \"TBLPRV\" + grey"_s},
         1},
        {"ColumnsByNumberWithoutSpecialOnes",
         table + QStringList{u"CO"_s},
         {u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s},
         {u"co \"BUYER\" Column"_s, u"co \"AMOUNT\" Column"_s}},
        {"ColumnsOfATableWithoutAny",
         database + QStringList{u"TA"_s, u"ta=BARE"_s, u"CO"_s},
         {u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'BARE' AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s},
         {}},
        {"ColumnsOfASystemTable",
         systemTable + QStringList{u"CO"_s},
         {u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'TW' AND TABLE_NAME = 'TBLPRV' AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s},
         {u"co \"DATABASE_NAME\" Column grey"_s, u"co \"TABLE_NAME\" Column grey"_s, u"co \"USER_NAME\" Column grey"_s,
          u"co \"ALLOW_SELECT\" Column grey"_s, u"co \"ALLOW_INSERT\" Column grey"_s,
          u"co \"ALLOW_UPDATE\" Column grey"_s, u"co \"ALLOW_DELETE\" Column grey"_s, u"co \"REMARKS\" Column grey"_s},
         1},
        {"Users",
         {u"US"_s},
         {u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s},
         {u"us \"ADMIN\" User bold"_s, u"us \"CLERK\" User"_s}},
        {"UsersWithSystemTables",
         {u"US"_s},
         {u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME ASC"_s},
         {u"us \"ADMIN\" User bold"_s, u"us \"CLERK\" User"_s},
         1},
        {"DatabasePrivileges",
         database + QStringList{u"DBPRV"_s},
         {u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES' ORDER BY USER_NAME "_s},
         {u"dbprv \"ADMIN\" User bold"_s, u"dbprv \"CLERK\" User"_s}},
        // The colour of the parent is for all levels but this one.
        {"DatabasePrivilegesOfTheSystemDatabase",
         systemDatabase + QStringList{u"DBPRV"_s},
         {u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'TW' ORDER BY USER_NAME "_s},
         {u"dbprv \"ADMIN\" User bold"_s},
         1},
        {"DatabasePrivilegesWithoutAny",
         {u"DB"_s, u"db=BARE"_s, u"DBPRV"_s},
         {u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'BARE' ORDER BY USER_NAME "_s},
         {}},
        {"TablePrivileges",
         table + QStringList{u"TBLPRV"_s},
         {u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS' ORDER BY USER_NAME "_s},
         {u"tblprv \"ADMIN\" User bold"_s, u"tblprv \"CLERK\" User"_s}},
        {"TablePrivilegesOfASystemTable",
         systemTable + QStringList{u"TBLPRV"_s},
         {u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'TW' AND TABLE_NAME = 'TBLPRV' ORDER BY USER_NAME "_s},
         {u"tblprv \"ADMIN\" User grey bold"_s},
         1},
    };
}

class Expand : public MainWindowTest
{
protected:
    void setOption(const QString& option, int value) { settings::save(u"Options"_s, option, value); }

    /// Starts, opens everything above the node and forgets the statements of that.
    void startAbove(const QStringList& steps)
    {
        start();
        if (!steps.isEmpty())
            expandTo(key(steps.first(steps.size() - 1)));
        statements.clear();
    }
};

class ExpandLevel : public Expand, public testing::WithParamInterface<Level>
{
protected:
    void SetUp() override
    {
        Expand::SetUp();
        change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('BARE')"_s);
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('SALES', 'BARE')"_s);
        change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('ADMIN', 'SALES')"_s);
        change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', 'ADMIN')"_s);
        setOption(u"SysTables"_s, GetParam().sysTables);
        setOption(u"FieldOrder"_s, GetParam().fieldOrder);
    }
};

class ExpandFilledLevel : public ExpandLevel
{
};

class ExpandEmptyLevel : public ExpandLevel
{
};

std::vector<Level> levelsWithRows(bool wanted)
{
    std::vector<Level> chosen = levels();
    std::erase_if(chosen, [&](const Level& level) { return level.lines.isEmpty() == wanted; });
    return chosen;
}

const auto nameOf = [](const auto& info) { return std::string(info.param.name); };

} // namespace

TEST_P(ExpandLevel, IsReadByItsStatementAndShownRowByRow)
{
    const Level& level = GetParam();
    startAbove(level.node);
    ASSERT_TRUE(line(node(key(level.node))).contains(u" +"_s));

    clickExpander(key(level.node));

    EXPECT_EQ(statements.statements(), level.statements);
    EXPECT_EQ(lines(key(level.node)), level.lines);
    EXPECT_EQ(node(key(level.node)).Children(), level.lines.size());
    EXPECT_EQ(node(key(level.node)).Expanded(), true);
    EXPECT_EQ(selectedKey(), key(level.node));
}

TEST_P(ExpandFilledLevel, IsReadAnewAfterACollapse)
{
    const Level& level = GetParam();
    startAbove(level.node);
    clickExpander(key(level.node));
    clickExpander(key(level.node));
    EXPECT_EQ(lines(key(level.node)), (QStringList{u" \"\" "_s}));
    statements.clear();

    clickExpander(key(level.node));

    EXPECT_EQ(statements.statements(), level.statements);
    EXPECT_EQ(lines(key(level.node)), level.lines);
}

TEST_P(ExpandEmptyLevel, HasNothingToCloseAndIsNotReadByAnotherClick)
{
    const Level& level = GetParam();
    startAbove(level.node);
    clickExpander(key(level.node));
    statements.clear();

    clickExpander(key(level.node));

    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(lines(key(level.node)), QStringList());
    EXPECT_TRUE(node(key(level.node)).Expanded());
}

INSTANTIATE_TEST_SUITE_P(Every, ExpandLevel, testing::ValuesIn(levels()), nameOf);
INSTANTIATE_TEST_SUITE_P(Every, ExpandFilledLevel, testing::ValuesIn(levelsWithRows(true)), nameOf);
INSTANTIATE_TEST_SUITE_P(Every, ExpandEmptyLevel, testing::ValuesIn(levelsWithRows(false)), nameOf);

TEST_F(Expand, ADatasourceConnectsOnItsFirstExpansionAndShowsItsThreeCollections)
{
    start();
    EXPECT_EQ(wholeTree(), (QStringList{u"DSN \"%1\" DSN Ghost +"_s.arg(datasource)}));

    clickExpander(key());

    EXPECT_EQ(lines(key()), (QStringList{u"FI \"Files\" Files data \"%1\" +"_s.arg(datasource),
                                         u"DB \"Databases\" DBs data \"%1\" +"_s.arg(datasource),
                                         u"US \"Users\" Users data \"%1\" +"_s.arg(datasource)}));
    EXPECT_EQ(line(node(key())), u"DSN \"%1\" Datasource"_s.arg(datasource));
    EXPECT_TRUE(node(key()).Expanded());
    EXPECT_TRUE(node(key()).Selected());
    EXPECT_EQ(statements.statements(), (QStringList{u"SELECT * FROM TW_SQLDT"_s, u"SELECT * FROM TW_LOCDT"_s}));
}

TEST_F(Expand, AnOpenDatasourceIsNotConnectedAgain)
{
    start();
    clickExpander(key());
    clickExpander(key());
    statements.clear();
    clickExpander(key());
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(children(key()), (QStringList{u"Files"_s, u"Databases"_s, u"Users"_s}));
}

TEST_F(Expand, RowsThatWereAddedBehindTheProgramsBackAreSeenAfterCollapseAndExpand)
{
    start();
    expandTo(key({u"FI"_s}));
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('LATER')"_s);
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'EMPTY'"_s);
    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"EMPTY"_s, u"KEY"_s, u"PAYROLL"_s}));

    clickExpander(key({u"FI"_s}));
    clickExpander(key({u"FI"_s}));

    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"KEY"_s, u"LATER"_s, u"PAYROLL"_s}));
}

TEST_F(Expand, AnEmptyLevelLosesItsExpanderAndIsFoundAgainFromAbove)
{
    const QStringList fields{u"FI"_s, u"fi=EMPTY"_s, u"FD"_s};
    start();
    expandTo(key(fields));
    EXPECT_EQ(node(key(fields)).Children(), 0);
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME) VALUES ('EMPTY', 1, 'FIRST')"_s);

    clickExpander(key({u"FI"_s, u"fi=EMPTY"_s}));
    clickExpander(key({u"FI"_s, u"fi=EMPTY"_s}));
    EXPECT_EQ(lines(key({u"FI"_s, u"fi=EMPTY"_s})), (QStringList{u"FD \"Fields\" Fields data \"EMPTY\" +"_s}));
    clickExpander(key(fields));

    EXPECT_EQ(children(key(fields)), QStringList{u"FIRST"_s});
}

TEST_F(Expand, TheOptionsAreReadAtEachExpansion)
{
    const QStringList fields{u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s};
    start();
    expandTo(key(fields));
    setOption(u"FieldOrder"_s, 1);
    setOption(u"SysTables"_s, 1);
    EXPECT_EQ(children(key(fields)), (QStringList{u"BONUS"_s, u"EMPLOYEE"_s, u"SALARY"_s}));

    clickExpander(key(fields));
    clickExpander(key(fields));

    EXPECT_EQ(children(key(fields)), (QStringList{u"EMPLOYEE"_s, u"BONUS"_s, u"SALARY"_s}));
    EXPECT_EQ(children(key({u"FI"_s})).size(), 3);
    clickExpander(key({u"FI"_s}));
    clickExpander(key({u"FI"_s}));
    EXPECT_EQ(lines(key({u"FI"_s})), allFiles);
}

TEST_F(Expand, TheFileKeyIsShownAndTreatedAsAnyOther)
{
    const QStringList keyFile{u"FI"_s, u"fi=KEY"_s};
    start();
    expandTo(key(keyFile + QStringList{u"FD"_s}));

    EXPECT_EQ(line(node(key(keyFile))), u"fi \"KEY\" File"_s);
    EXPECT_EQ(lines(key(keyFile)), (QStringList{u"FD \"Fields\" Fields data \"KEY\""_s}));
    EXPECT_EQ(children(key(keyFile + QStringList{u"FD"_s})),
              (QStringList{u"FIELD_NAME"_s, u"FILE_NAME"_s, u"KEY_NUMBER"_s, u"SEGMENT_NUMBER"_s, u"UNIQUE_KEY"_s}));
    EXPECT_EQ(menuOf(key(keyFile)),
              (QStringList{u"mnu_FileExpandAll"_s, u"mnu_FileAdd"_s, u"mnu_FileEdit"_s, u"mnu_FileSep1"_s,
                           u"mnu_FileCopy"_s, u"mnu_FileDelete"_s, u"mnu_FileSep2"_s, u"mnu_FileFileToTableWizard"_s}));
}

TEST_F(Expand, ASystemFileIsGreyToItsFieldsAndItsMenusAreCut)
{
    setOption(u"SysTables"_s, 1);
    const QStringList fields = systemFile + QStringList{u"FD"_s};
    const QStringList field = fields + QStringList{u"fd=LENGTH"_s};
    start();
    expandTo(key(fields));

    EXPECT_TRUE(node(key(systemFile)).Grey());
    EXPECT_TRUE(node(key(fields)).Grey());
    EXPECT_TRUE(node(key(field)).Grey());
    EXPECT_EQ(menuOf(key(systemFile)), (QStringList{u"mnu_FileExpandAll"_s, u"mnu_FileAdd"_s, u"mnu_FileSep1"_s,
                                                    u"mnu_FileCopy"_s, u"mnu_FileSep2"_s}));
    EXPECT_EQ(menuOf(key(fields)), QStringList());
    EXPECT_EQ(menuOf(key(field)), QStringList());
}

TEST_F(Expand, OnlyWholeNamesInTheirOwnCaseAreReserved)
{
    for (const char* name : {"FIEL", "IELD", "field", "FIELD2", "D", "'", "DB'DBPRV"})
        change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('%1')"_s.arg(QString::fromLatin1(name).replace('\'', "''")));
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('tw')"_s);
    setOption(u"SysTables"_s, 1);
    start();
    expandTo(key({u"FI"_s}));
    expandTo(key({u"DB"_s}));
    for (const char* name : {"FIEL", "IELD", "field", "FIELD2", "D", "'"})
        EXPECT_FALSE(node(key({u"FI"_s, u"fi=%1"_s.arg(QLatin1String(name))})).Grey()) << name;
    // The list is one text with apostrophes between its names, so two neighbours with theirs between are found in it.
    EXPECT_TRUE(node(key({u"FI"_s, u"fi=DB'DBPRV"_s})).Grey());
    EXPECT_FALSE(node(key({u"DB"_s, u"db=tw"_s})).Grey());
}

namespace
{

struct Name {
    const char* label;
    const char* text;
};

void PrintTo(const Name& name, std::ostream* out)
{
    *out << name.label;
}

class ExpandNames : public Expand, public testing::WithParamInterface<Name>
{
};

} // namespace

TEST_P(ExpandNames, StandInTheTreeAsTheyAreAndInStatementsWithTheirApostrophesDoubled)
{
    const QString name = QString::fromUtf8(GetParam().text);
    const QString quoted = QString(name).replace('\'', "''");
    const auto insert = [&](const QString& statement) { change(QString(statement).replace("$"_L1, quoted)); };
    insert(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('$')"_s);
    insert(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME) VALUES ('$', 1, '$')"_s);
    insert(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('$')"_s);
    insert(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('$', '$')"_s);
    insert(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
           "VALUES ('$', '$', 1, '$', 0)"_s);
    insert(u"INSERT INTO TW_USER (USER_NAME) VALUES ('$')"_s);
    insert(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('$', '$')"_s);
    insert(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('$', '$', '$')"_s);
    start();
    window->resize(1200, 900);

    const QString root = key();
    const QString fi = root + "FI=" + datasource + ":fi=" + name + ':';
    const QString fd = fi + "FD=" + name + ':';
    const QString db = root + "DB=" + datasource + ":db=" + name + ':';
    const QString ta = db + "TA=" + name + ":ta=" + name + ':';
    const QString co = ta + "CO=" + name + ':';
    const QString dbprv = db + "DBPRV=" + name + ':';
    const QString tblprv = ta + "TBLPRV=" + name + ':';
    clickExpander(root);
    for (const QString& branch : {root + "US=" + datasource + ':', root + "DB=" + datasource + ':', db,
                                  db + "TA=" + name + ':', ta, root + "FI=" + datasource + ':', fi})
        clickExpander(branch);
    statements.clear();
    for (const QString& branch : {fd, tblprv, co, dbprv}) {
        clickExpander(branch);
        EXPECT_EQ(children(branch), QStringList{name}) << branch.toStdString();
    }

    const auto expected = [&](const QString& statement) { return QString(statement).replace("$"_L1, quoted); };
    EXPECT_EQ(
        statements.statements(),
        (QStringList{
            expected(u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = '$' ORDER BY FIELD_NAME ASC"_s),
            expected(
                u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = '$' AND TABLE_NAME = '$' ORDER BY USER_NAME "_s),
            expected(
                u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = '$' AND TABLE_NAME = '$' AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s),
            expected(u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = '$' ORDER BY USER_NAME "_s)}));
    EXPECT_EQ(line(node(root + "US=" + datasource + ":us=" + name + ':')), "us \"" + name + "\" User");

    EXPECT_EQ(window->NodeToDragItem(find(fd + "fd=" + name + ':')).Keys, (QStringList{datasource, name, name}));
    EXPECT_EQ(window->NodeToDragItem(find(co + "co=" + name + ':')).Keys, (QStringList{datasource, name, name, name}));
    EXPECT_EQ(window->NodeToDragItem(find(tblprv + "tblprv=" + name + ':')).Keys,
              (QStringList{datasource, name, name, name}));
}

INSTANTIATE_TEST_SUITE_P(Of, ExpandNames,
                         testing::Values(Name{"AnApostrophe", "O'Brien"}, Name{"ApostrophesAlone", "''"},
                                         Name{"AColon", "a:b"}, Name{"AnEqualsSign", "c=d:"},
                                         Name{"WhatLooksLikeAKey", "fi=X:FD=X:"}, Name{"PlaceMarkers", "%1%2"},
                                         Name{"Blanks", "two  blanks"}, Name{"Quotes", "\"quoted\""},
                                         Name{"Wildcards", "per_cent%"},
                                         Name{"ManyScripts", "\xC5\xBB"
                                                             "aba \xCE\xA9 \xE6\x95\xB0\xE6\x8D\xAE"},
                                         Name{"RightToLeft", "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D"},
                                         Name{"TheHigherPlanes", "\xF0\x9F\x98\x80"}),
                         [](const auto& info) { return std::string(info.param.label); });

TEST_F(Expand, ANullNameIsShownAsAnEmptyOne)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES (NULL)"_s);
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES (NULL)"_s);
    start();
    expandTo(key({u"US"_s}));
    EXPECT_EQ(lines(key({u"US"_s})),
              (QStringList{u"us \"\" User"_s, u"us \"ADMIN\" User bold"_s, u"us \"CLERK\" User"_s}));
    // A null is in no list of names and outside of none either: the filter drops it.
    expandTo(key({u"FI"_s}));
    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"EMPTY"_s, u"KEY"_s, u"PAYROLL"_s}));
    setOption(u"SysTables"_s, 1);
    clickExpander(key({u"FI"_s}));
    clickExpander(key({u"FI"_s}));
    EXPECT_EQ(lines(key({u"FI"_s})), QStringList{u"fi \"\" File +"_s} + allFiles);
}

TEST_F(Expand, ANameThatComesTwiceIsReportedAndTheLevelGoesOn)
{
    change(u"INSERT INTO TW_USER (USER_NAME) VALUES (NULL), (NULL)"_s);
    start();
    clickExpander(key());
    errors.expect(Press::Ignore);

    clickExpander(key({u"US"_s}));

    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u""_s, u"ADMIN"_s, u"CLERK"_s}));
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"457"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"CNodes.Add"_s);
    EXPECT_EQ(errors.shown()[0].callStack, (QStringList{u"CNodes.Add"_s, u"mdiMain.tvw_Explorer_Expand"_s}));
}

TEST_F(Expand, ALargeLevelIsWholeAndInOrder)
{
    change(u"WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N WHERE I < 3000) "
           "INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, OFFSET) "
           "SELECT 'EMPTY', I, printf('F%05d', I), 3001 - I FROM N"_s);
    const QStringList fields{u"FI"_s, u"fi=EMPTY"_s, u"FD"_s};
    start();
    expandTo(key(fields));
    const QStringList byName = children(key(fields));
    ASSERT_EQ(byName.size(), 3000);
    EXPECT_EQ(byName.first(), u"F00001"_s);
    EXPECT_EQ(byName.last(), u"F03000"_s);

    setOption(u"FieldOrder"_s, 1);
    clickExpander(key(fields));
    clickExpander(key(fields));
    const QStringList byOffset = children(key(fields));
    ASSERT_EQ(byOffset.size(), 3000);
    EXPECT_EQ(byOffset.first(), u"F03000"_s);
    EXPECT_EQ(byOffset.last(), u"F00001"_s);
}

TEST_F(Expand, AFailedStatementIsReportedAndTheNodeStaysOpenWithWhatWasRead)
{
    start();
    clickExpander(key());
    statements.clear();
    statements.failAt(1);
    errors.expect([&](QWidget& form) {
        EXPECT_EQ(mousepointer::current(), mousepointer::Wait);
        ScriptedErrorForm::press(form, Press::Ignore);
    });

    clickExpander(key({u"US"_s}));

    ASSERT_EQ(errors.shown().size(), 1U);
    const ScriptedErrorForm::Shown& shown = errors.shown()[0];
    EXPECT_EQ(shown.title, u"Tarnwick Quorvane - Unexpected ODBC Error"_s);
    EXPECT_EQ(shown.number, u"ODBC Error"_s);
    EXPECT_EQ(shown.trappedIn, u"mdiMain.tvwExplorer_Expand"_s);
    EXPECT_EQ(shown.callStack, QStringList{u"mdiMain.tvw_Explorer_Expand"_s});
    EXPECT_TRUE(node(key({u"US"_s})).Expanded());
    EXPECT_EQ(node(key({u"US"_s})).Children(), 0);
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
    EXPECT_TRUE(window->tvwExplorer().updatesEnabled());

    clickExpander(key());
    clickExpander(key());
    clickExpander(key({u"US"_s}));
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"CLERK"_s}));
}

TEST_F(Expand, AUserWithoutPrivilegesSeesOneBoxAndAnEmptyLevel)
{
    start();
    clickExpander(key());
    statements.clear();
    statements.failAt(1, {{-1, "[Test] The user has no privileges on this table."}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);

    clickExpander(key({u"FI"_s}));

    EXPECT_EQ(node(key({u"FI"_s})).Children(), 0);
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(Expand, CodeExpandsALeafWithoutAStatement)
{
    const QStringList fields{u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s};
    start();
    expandTo(key(fields));
    statements.clear();
    TreeNode& leaf = node(key(fields + QStringList{u"fd=SALARY"_s}));
    window->tvwExplorer_Expand(&leaf);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(leaf.Children(), 0);
    EXPECT_FALSE(leaf.Expanded());
}

TEST_F(Expand, EveryNodeHasAnEntryUnderItsKey)
{
    start();
    for (const QStringList& branch : {QStringList{u"US"_s}, table + QStringList{u"CO"_s}, file + QStringList{u"FD"_s}})
        expandTo(key(branch));
    EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
    for (const CNode* payload : window->nodes().NewEnum()) {
        ASSERT_EQ(window->nodes().find(payload->Key), payload) << payload->Key.toStdString();
        const TreeNode* shown = CNodes::treeNode(*payload);
        ASSERT_EQ(shown->Key(), payload->Key);
        if (payload->NodeType().isEmpty())
            continue;
        const QString above = shown->Parent() ? shown->Parent()->Key() : QString();
        EXPECT_EQ(payload->Key, above + payload->NodeType() + '=' + payload->NodeData() + ':');
    }
}
