// What the program makes of catalogs, drivers and files of the driver manager that are not what they should be, of a
// connection that is lost, and of a catalog that is larger than any other.
#include "MainWindowFixture.h"

#include "CConnections.h"

#include <QFile>

#include <algorithm>
#include <optional>
#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray read(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

class BadInput : public MainWindowTest
{
protected:
    static int connections() { return CConnections::instance().Count(); }

    void expectFailure(const QString& entries)
    {
        boxes.expect(u"Failed to connect for the following reason:\n"_s + entries, boxes::Icon::Exclamation);
    }

    /// The datasource stands as it did before anyone tried to open it, and is selected.
    void expectClosed(const QString& name) const
    {
        EXPECT_EQ(line(node(keyBelow(name))), u"DSN \"%1\" DSN Ghost +"_s.arg(name));
        EXPECT_FALSE(node(keyBelow(name)).Expanded());
        EXPECT_FALSE(CConnections::instance().find(name));
        EXPECT_EQ(selectedKey(), keyBelow(name));
        EXPECT_TRUE(window->tvwExplorer().updatesEnabled());
        EXPECT_EQ(window->nodes().Count(), window->tvwExplorer().Nodes().Count());
        EXPECT_TRUE(errors.shown().empty());
    }

    void expectUsersOf(const QString& name, const QStringList& users)
    {
        expandTo(keyBelow(name, {u"US"_s}));
        EXPECT_EQ(children(keyBelow(name, {u"US"_s})), users);
    }
};

} // namespace

// Catalogs and drivers ------------------------------------------------------------------------------------------------

TEST_F(BadInput, ACorruptCatalogShowsOneBoxAndIsLeftAsItIs)
{
    const QString corrupt = datasource + "Corrupt";
    const QByteArray garbage(8192, 'x');
    world.addDatasource(corrupt);
    write(world.catalogFile(corrupt), garbage);
    start();
    expectFailure(u"\nError: &H1A\n[Tarnwick][ODBC]Cannot open the catalog '%1': file is not a database\n"_s.arg(
        world.catalogFile(corrupt)));

    clickExpander(keyBelow(corrupt));

    EXPECT_TRUE(boxes.done());
    expectClosed(corrupt);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(read(world.catalogFile(corrupt)), garbage);
    expectUsersOf(datasource, {u"ADMIN"_s, u"CLERK"_s});
    EXPECT_EQ(connections(), 1);
}

TEST_F(BadInput, ADriverLibraryThatIsNoneShowsOneBoxWithTheLoadersReason)
{
    const QString broken = datasource + "Broken";
    const QString library = world.folder() + "/library.so";
    write(library, QByteArray(4096, 'x'));
    // The driver manager remembers the library of a driver that has worked, so this one is named by its path.
    world.addForeignDatasource(broken, library);
    start();
    CNode* source = window->nodes().add(nullptr, u"DSN"_s, broken, broken, u"DSN Ghost"_s);
    ASSERT_TRUE(source);
    window->nodes().addPlaceholder(node(source->Key));
    expectFailure(u"\nError: &H0\n[unixODBC][Driver Manager]Can't open lib '%1' : file not found\n"
                  "\nError: &H0\n%1: invalid ELF header\n"_s.arg(library));

    clickExpander(keyBelow(broken));

    EXPECT_TRUE(boxes.done());
    expectClosed(broken);
    EXPECT_EQ(connections(), 0);
    expectUsersOf(datasource, {u"ADMIN"_s, u"CLERK"_s});
    EXPECT_EQ(connections(), 1);
}

TEST_F(BadInput, ACatalogThatCantBeWrittenIsReadAndClearCatalogEndsInTheErrorForm)
{
    // Catalogs of a write format that is newer than what the engine knows are read and never written.
    const qint64 writeFormat = 18;
    change(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
    {
        QFile catalog(world.catalogFile(datasource));
        ASSERT_TRUE(catalog.open(QIODevice::ReadWrite));
        ASSERT_TRUE(catalog.seek(writeFormat));
        ASSERT_EQ(catalog.write("\x03", 1), 1);
    }
    const QStringList users{u"ADMIN"_s, u"CLERK"_s};
    start();
    expectUsersOf(datasource, users);
    const QStringList tree = wholeTree();
    statements.clear();
    boxes.expectAsk(u"WARNING - You are about to remove ALL the catalog definitions for Datasource '%1'.\n"
                    "Are you sure you wish to completely clear the calaog?"_s.arg(datasource),
                    boxes::Answer::Yes);
    errors.expect(Press::Ignore);

    choose(key(), u"mnu_DSNClear"_s);

    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown()[0].description, u"\nError: &H8\nattempt to write a readonly database (8)\n"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"mdiMain.mnu_DSNClear_Click"_s);
    EXPECT_EQ(statements.statements(), QStringList{u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME <> 'TW'"_s});
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_EQ(wholeTree(), tree);

    // The program goes on, with the connection and without.
    expandTo(key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s}));
    EXPECT_EQ(children(key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s})),
              (QStringList{u"BUYER"_s, u"AMOUNT"_s}));
    choose(key(), u"mnu_DSNDisconnect"_s);
    expectUsersOf(datasource, users);
}

// The driver manager's files ------------------------------------------------------------------------------------------

namespace
{

/// What stands in the files of datasources when the program starts; null for a file that is not there.
struct IniFiles {
    const char* label;
    std::optional<QByteArray> user;
    std::optional<QByteArray> system;
    bool hasDrivers = true;
};

void PrintTo(const IniFiles& files, std::ostream* out)
{
    *out << files.label;
}

class BadIniFiles : public BadInput, public testing::WithParamInterface<IniFiles>
{
protected:
    static void put(const QString& path, const std::optional<QByteArray>& contents)
    {
        if (contents)
            write(path, *contents);
        else
            ASSERT_TRUE(QFile::remove(path));
    }

    QString userFile() const { return world.folder() + "/user.ini"; }
};

const QByteArray halfSections = "[\n[[]]\n[]\n]\n[Broken\nDriver=Tarnwick ODBC\nno key\n=\n= Tarnwick ODBC\n";
const QByteArray binary = QByteArray("\x7F"
                                     "ELF\0\1\2\xFF\xFE[\0]\n\r\r=\0=\n",
                                     20)
                              .repeated(500);
const QByteArray longLine = '[' + QByteArray(100'000, 'n') + "]\n" + QByteArray(100'000, 'k') + '=';

} // namespace

TEST_P(BadIniFiles, AtTheStartLeaveTheTreeEmptyWithTheWelcomePane)
{
    const QByteArray before = read(userFile());
    const QString drivers = world.systemFolder() + "/odbcinst.ini";
    put(userFile(), GetParam().user);
    put(world.systemFolder() + "/odbc.ini", GetParam().system);
    if (!GetParam().hasDrivers) {
        ASSERT_TRUE(QFile::remove(drivers));
    }

    start();

    EXPECT_EQ(rootTexts(), QStringList());
    EXPECT_EQ(window->nodes().Count(), 0);
    EXPECT_EQ(currentPane(), u"frmWelcome"_s);
    EXPECT_TRUE(window->currentPane()->isVisible());
    EXPECT_TRUE(boxes.shown().empty());
    EXPECT_TRUE(errors.shown().empty());
    // The installer library makes the user's file where there is none.
    EXPECT_EQ(QFile::exists(userFile()) ? read(userFile()) : QByteArray(), GetParam().user.value_or(QByteArray()));

    // Once the file is as it should be the datasource is back, without a new start.
    write(userFile(), before);
    chooseInBar(u"mnuFileRefresh"_s);
    EXPECT_EQ(rootTexts(), QStringList{datasource});
}

INSTANTIATE_TEST_SUITE_P(
    Of, BadIniFiles,
    testing::Values(IniFiles{"BothMissing", std::nullopt, std::nullopt},
                    IniFiles{"AllMissing", std::nullopt, std::nullopt, false}, IniFiles{"BothEmpty", "", ""},
                    IniFiles{"HalfSectionsOfTheUser", halfSections, ""},
                    IniFiles{"HalfSectionsOfTheSystem", "", halfSections}, IniFiles{"Binary", binary, binary},
                    IniFiles{"OverlongLines", longLine, longLine},
                    IniFiles{"KeysWithoutASection", "Driver=Tarnwick ODBC\nCatalog=/srv/a.db\n", std::nullopt},
                    IniFiles{"ASectionWithoutKeys", "[Empty]\n", "[Nothing]"},
                    IniFiles{"ADriverWithoutAName", "[Empty]\nDriver=\n", "[Nothing]\nDriver"}),
    [](const auto& info) { return std::string(info.param.label); });

// A connection that is lost -------------------------------------------------------------------------------------------

TEST_F(BadInput, ALostConnectionIsReportedAtEachExpansionUntilTheUserConnectsAnew)
{
    const QString description = u"\nError: &H1389\n[Test]08S01 The server went away\n"
                                "\nError: &H138A\n[Test]Broken pipe\n"_s;
    start();
    clickExpander(key());
    const CConnection* connection = CConnections::instance().find(datasource);
    ASSERT_TRUE(connection);
    for (const QString& collection : {u"FI"_s, u"US"_s}) {
        SCOPED_TRACE(collection.toStdString());
        statements.clear();
        statements.failAt(1, {{5001, "[Test]08S01 The server went away"}, {5002, "[Test]Broken pipe"}});
        errors.expect(Press::Ignore);

        clickExpander(key({collection}));

        EXPECT_EQ(statements.statements().size(), 1);
        EXPECT_TRUE(statements.failuresDone());
        EXPECT_EQ(errors.shown().back().title, u"Tarnwick Quorvane - Unexpected ODBC Error"_s);
        EXPECT_EQ(errors.shown().back().number, u"ODBC Error"_s);
        EXPECT_EQ(errors.shown().back().description, description);
        EXPECT_EQ(errors.shown().back().trappedIn, u"mdiMain.tvwExplorer_Expand"_s);
        EXPECT_EQ(node(key({collection})).Children(), 0);
        EXPECT_EQ(connections(), 1);
        EXPECT_EQ(CConnections::instance().find(datasource), connection);
        EXPECT_EQ(line(node(key())), u"DSN \"%1\" Datasource"_s.arg(datasource));
    }
    EXPECT_EQ(errors.shown().size(), 2U);

    choose(key(), u"mnu_DSNDisconnect"_s);
    EXPECT_EQ(connections(), 0);
    EXPECT_EQ(line(node(key())), u"DSN \"%1\" DSN Ghost"_s.arg(datasource));

    statements.clear();
    expandTo(key({u"FI"_s}));
    expectUsersOf(datasource, {u"ADMIN"_s, u"CLERK"_s});
    EXPECT_EQ(children(key({u"FI"_s})), (QStringList{u"EMPTY"_s, u"KEY"_s, u"PAYROLL"_s}));
    EXPECT_EQ(statements.statements().first(2),
              (QStringList{u"SELECT * FROM TW_SQLDT"_s, u"SELECT * FROM TW_LOCDT"_s}));
    EXPECT_EQ(connections(), 1);
    EXPECT_EQ(errors.shown().size(), 2U);
}

// What catalogs may hold ----------------------------------------------------------------------------------------------

TEST_F(BadInput, AHundredThousandFilesAreListedInOrderAndGoAgain)
{
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME IN ('EMPTY', 'KEY', 'PAYROLL')"_s);
    change(u"WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N WHERE I < 100000) "
           "INSERT INTO TW_FILE (FILE_NAME) SELECT printf('FILE_%06d', 100001 - I) FROM N"_s);
    const QString collection = key({u"FI"_s});
    start();
    expandTo(collection);

    const QStringList files = children(collection);
    ASSERT_EQ(files.size(), 100'000);
    EXPECT_EQ(node(collection).Children(), 100'000);
    EXPECT_EQ(files.first(), u"FILE_000001"_s);
    EXPECT_EQ(files.last(), u"FILE_100000"_s);
    EXPECT_TRUE(std::is_sorted(files.begin(), files.end()));
    // The datasource, its collections with a placeholder each but for the open one, and each file with its own.
    EXPECT_EQ(window->nodes().Count(), 1 + 3 + 2 + 2 * 100'000);

    // The last of them is a row as any other.
    const QString last = key({u"FI"_s, u"fi=FILE_100000"_s});
    clickExpander(last);
    EXPECT_EQ(lines(last), QStringList{u"FD \"Fields\" Fields data \"FILE_100000\" +"_s});

    clickExpander(collection);
    EXPECT_FALSE(node(collection).Expanded());
    EXPECT_EQ(lines(collection), QStringList{u" \"\" "_s});
    EXPECT_EQ(window->nodes().Count(), 1 + 3 + 3);
    EXPECT_EQ(window->tvwExplorer().Nodes().Count(), 1 + 3 + 3);
}

TEST_F(BadInput, NullNamesAreShownAsEmptyOnesAtEveryLevelAndOpen)
{
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME) VALUES ('EMPTY', 1, NULL)"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('SALES', NULL)"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, COLUMN_TYPE) "
           "VALUES ('SALES', 'ORDERS', 3, NULL, 0)"_s);
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES (NULL, 'SALES')"_s);
    change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', NULL)"_s);
    const QStringList database{u"DB"_s, u"db=SALES"_s};
    const QStringList table = database + QStringList{u"TA"_s, u"ta=ORDERS"_s};
    const QStringList nameless = database + QStringList{u"TA"_s, u"ta="_s};
    start();
    window->resize(1200, 900);
    for (const QStringList& level : {QStringList{u"FI"_s, u"fi=EMPTY"_s, u"FD"_s}, table + QStringList{u"CO"_s},
                                     table + QStringList{u"TBLPRV"_s}, database + QStringList{u"DBPRV"_s}})
        expandTo(key(level));

    EXPECT_EQ(lines(key({u"FI"_s, u"fi=EMPTY"_s, u"FD"_s})), QStringList{u"fd \"\" Field"_s});
    EXPECT_EQ(lines(key(database + QStringList{u"TA"_s})),
              (QStringList{u"ta \"\" Table +"_s, u"ta \"ORDERS\" Table"_s}));
    EXPECT_EQ(children(key(table + QStringList{u"CO"_s})), (QStringList{u"BUYER"_s, u"AMOUNT"_s, u""_s}));
    EXPECT_EQ(children(key(table + QStringList{u"TBLPRV"_s})), (QStringList{u""_s, u"CLERK"_s}));
    EXPECT_EQ(children(key(database + QStringList{u"DBPRV"_s})), (QStringList{u""_s, u"CLERK"_s}));

    statements.clear();
    expandTo(key(nameless + QStringList{u"CO"_s}));
    EXPECT_EQ(children(key(nameless)), (QStringList{u"Columns"_s, u"Special Columns"_s, u"Table Privileges"_s}));
    EXPECT_EQ(node(key(nameless + QStringList{u"CO"_s})).Children(), 0);
    EXPECT_EQ(
        statements.statements(),
        QStringList{
            u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = '' AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s});
    EXPECT_TRUE(errors.shown().empty());
}
