#include "Installer.h"

#include "FileSizeLimit.h"
#include "OdbcFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using dao::Installer::Key;
using dao::Installer::Scope;

namespace
{

class Installer : public OdbcFixture
{
protected:
    void SetUp() override
    {
        OdbcFixture::SetUp();
        write(userIni(), original);
    }

    static QString iniOf(Scope scope) { return scope == Scope::User ? userIni() : systemIni(); }

    static QStringList listed(const QString& driver = QStringLiteral("Tarnwick ODBC"))
    {
        QStringList texts;
        for (const auto& source : dao::Installer::datasources(driver)) {
            QStringList keys;
            for (const Key& key : source.Keys)
                keys << key.Name + '=' + key.Value;
            texts << (source.Where == Scope::User ? "user " : "system ") + source.Name + ": " + keys.join(" | ");
        }
        return texts;
    }

    const QByteArray original = "# kept\n[Sales]\nDriver = Tarnwick ODBC\n; where\nCatalog=/a.db\nDescription=Shop\n\n"
                                "[else]\nDriver=SQLite\nDatabase=/x\n";
};

const QString ours = QStringLiteral("Tarnwick ODBC");

} // namespace

TEST_F(Installer, SaysWhichFilesAreInUse)
{
    const auto files = dao::Installer::iniFiles();
    EXPECT_EQ(files.Drivers, folder() + "/odbcinst.ini");
    EXPECT_EQ(files.SystemDatasources, folder() + "/odbc.ini");
    EXPECT_EQ(files.UserDatasources, userIni());
}

TEST_F(Installer, ListsDriversWithTheirLibraries)
{
    const QString name = QString::fromUtf8("\xD0\x94\xF0\x9F\x98\x80");
    write(folder() + "/odbcinst.ini", "[ODBC]\nTrace=No\n[One]\nDescription=First one\nDriver=/lib/one.so\n[" +
                                          name.toUtf8() + "]\nDriver=two.so\n");
    const auto drivers = dao::Installer::drivers();
    ASSERT_EQ(drivers.size(), 2U);
    EXPECT_EQ(drivers[0].Name, "One");
    EXPECT_EQ(drivers[0].Description, "First one");
    EXPECT_EQ(drivers[0].Library, "/lib/one.so");
    EXPECT_EQ(drivers[1].Name, name);
    EXPECT_EQ(drivers[1].Library, "two.so");
    QFile::remove(folder() + "/odbcinst.ini");
    EXPECT_TRUE(dao::Installer::drivers().empty());
}

TEST_F(Installer, ListsTheDatasourcesOfOneDriverWithTheirFilesAndKeys)
{
    write(systemIni(), "[Stock]\nDriver=Tarnwick ODBC\nCatalog=/s.db\n[Sales]\nDriver=Tarnwick "
                       "ODBC\n[near]\nDriver=Tarnwick ODBC 2\n");
    EXPECT_EQ(listed(), QStringList({"user Sales: Catalog=/a.db | Description=Shop", "system Stock: Catalog=/s.db",
                                     "system Sales: "}));
    EXPECT_EQ(listed("SQLite"), QStringList("user else: Database=/x"));
    EXPECT_EQ(dao::Installer::datasources().front().File, userIni());
    EXPECT_EQ(dao::Installer::datasources().back().File, systemIni());
    QFile::remove(userIni());
    QFile::remove(systemIni());
    EXPECT_EQ(listed(), QStringList());
}

TEST_F(Installer, AddsADatasourceAndLeavesTheRestOfTheFileAlone)
{
    for (const Scope scope : {Scope::User, Scope::System}) {
        const QByteArray before = read(iniOf(scope));
        const QString name = QString::fromUtf8("\xD0\x94\xD0\xB0 \xF0\x9F\x98\x80");
        dao::Installer::addDatasource(
            scope, name, ours, {{"Catalog", "/b c;#.db"}, {"Description", " " + name + " "}, {"StatementLog", ""}});
        const QByteArray added =
            "[" + name.toUtf8() + "]\nDriver=Tarnwick ODBC\nCatalog=/b c;#.db\nDescription=" + name.toUtf8() + "\n";
        EXPECT_EQ(read(iniOf(scope)), before.isEmpty() ? added : before + "\n" + added);
        EXPECT_TRUE(listed().contains((scope == Scope::User ? "user " : "system ") + name +
                                      ": Catalog=/b c;#.db | Description=" + name));
        dao::Installer::removeDatasource(scope, name);
        EXPECT_EQ(read(iniOf(scope)).trimmed(), before.trimmed());
    }
}

TEST_F(Installer, MakesAMissingFile)
{
    QFile::remove(userIni());
    dao::Installer::addDatasource(Scope::User, "New", ours, {{"Catalog", "/n.db"}});
    EXPECT_EQ(read(userIni()), "[New]\nDriver=Tarnwick ODBC\nCatalog=/n.db\n");
}

TEST_F(Installer, ChangesKeysAndNames)
{
    dao::Installer::changeDatasource(Scope::User, "Sales", {{"Catalog", "/new.db"}, {"StatementLog", "/log"}});
    EXPECT_EQ(read(userIni()), QByteArray(original).replace("Catalog=/a.db\nDescription=Shop\n",
                                                            "Catalog=/new.db\nStatementLog=/log\n"));
    EXPECT_EQ(dao::DBEngine::GetPrivateProfileString("Sales", "Catalog", ""), "/new.db");
    EXPECT_EQ(dao::DBEngine::GetPrivateProfileString("Sales", "Description", "gone"), "gone");

    write(userIni(), "[ODBC Data Sources]\nSales=Tarnwick ODBC\n\n" + original);
    dao::Installer::changeDatasource(Scope::User, "sales", {{"Catalog", "/new.db"}}, "Stock");
    EXPECT_EQ(listed(), QStringList("user Stock: Catalog=/new.db"));
    EXPECT_TRUE(read(userIni()).startsWith(
        "[ODBC Data Sources]\nStock=Tarnwick ODBC\n\n# kept\n[Stock]\nDriver = Tarnwick ODBC\n"));
    dao::Installer::removeDatasource(Scope::User, "Stock");
    EXPECT_TRUE(read(userIni()).startsWith("[ODBC Data Sources]\n\n# kept\n[else]"));
    dao::Installer::addDatasource(Scope::User, "Again", ours, {});
    EXPECT_TRUE(read(userIni()).startsWith("[ODBC Data Sources]\nAgain=Tarnwick ODBC\n"));
}

TEST_F(Installer, WhatWasWrittenIsSeenAtOnceByEveryReader)
{
    for (int round = 0; round < 5; ++round) {
        const QString value = QStringLiteral("/catalog%1.db").arg(round);
        dao::Installer::changeDatasource(Scope::User, "Sales", {{"Catalog", value}});
        EXPECT_EQ(dao::DBEngine::GetPrivateProfileString("Sales", "Catalog", ""), value);
        EXPECT_EQ(listed(), QStringList("user Sales: Catalog=" + value));
        const QString name = QStringLiteral("Round%1").arg(round);
        const auto isListed = [&] {
            const auto sources = dao::DBEngine::DataSources();
            return std::any_of(sources.begin(), sources.end(), [&](const auto& source) { return source.Name == name; });
        };
        EXPECT_FALSE(isListed());
        dao::Installer::addDatasource(Scope::User, name, ours, {});
        EXPECT_TRUE(isListed());
        dao::Installer::removeDatasource(Scope::User, name);
        EXPECT_FALSE(isListed());
    }
}

TEST_F(Installer, NamesThatCanNotStandAreRefused)
{
    const QString names[] = {"",
                             " ",
                             " a",
                             "a ",
                             "a[b",
                             "a]b",
                             "a;b",
                             "a=b",
                             "a\\b",
                             "a?b",
                             "a*b",
                             "a,b",
                             "a{b",
                             "a}b",
                             "a(b",
                             "a@b",
                             "a!b",
                             "a\nb",
                             QString(33, u'x'),
                             "ODBC",
                             "odbc data sources"};
    for (const QString& name : names)
        EXPECT_EQ(raised([&] { dao::Installer::addDatasource(Scope::User, name, ours, {}); }), ErrorNumber::FailedCall)
            << name.toStdString();
    EXPECT_EQ(raised([&] { dao::Installer::changeDatasource(Scope::User, "Sales", {}, "a[b"); }),
              ErrorNumber::FailedCall);
    EXPECT_EQ(raised([&] { dao::Installer::addDatasource(Scope::User, "sALES", ours, {}); }),
              ErrorNumber::KeyAlreadyThere);
    EXPECT_EQ(raised([&] { dao::Installer::changeDatasource(Scope::User, "Sales", {}, "else"); }),
              ErrorNumber::KeyAlreadyThere);
    EXPECT_EQ(raised([&] { dao::Installer::changeDatasource(Scope::User, "None", {}); }), ErrorNumber::ItemNotFound);
    EXPECT_EQ(raised([&] { dao::Installer::removeDatasource(Scope::User, "None"); }), ErrorNumber::ItemNotFound);
    EXPECT_EQ(raised([&] { dao::Installer::removeDatasource(Scope::System, "Sales"); }), ErrorNumber::ItemNotFound);
    EXPECT_EQ(read(userIni()), original);
}

TEST_F(Installer, KeysThatCanNotStandAreRefused)
{
    const std::vector<std::vector<Key>> keys = {{{"", "v"}},
                                                {{"a=b", "v"}},
                                                {{"[a", "v"}},
                                                {{"#a", "v"}},
                                                {{";a", "v"}},
                                                {{"a", "v\n[inj]\nDriver=x"}},
                                                {{"a\nb", "v"}},
                                                {{"a", "1"}, {"A", "2"}},
                                                {{"a", QString(5000, u'x')}},
                                                {{"a", "x" + QString(QChar(0)) + "y"}}};
    for (const auto& one : keys) {
        EXPECT_EQ(raised([&] { dao::Installer::addDatasource(Scope::User, "New", ours, one); }),
                  ErrorNumber::FailedCall)
            << one.front().Name.toStdString();
        EXPECT_EQ(raised([&] { dao::Installer::changeDatasource(Scope::User, "Sales", one); }),
                  ErrorNumber::FailedCall);
    }
    EXPECT_EQ(raised([&] { dao::Installer::addDatasource(Scope::User, "New", " ", {}); }), ErrorNumber::FailedCall);
    EXPECT_EQ(read(userIni()), original);
}

TEST_F(Installer, ALongValueIsKeptWholeUpToTheLimit)
{
    const QString value = QString(900, u'v') + "end";
    dao::Installer::addDatasource(Scope::User, "New", ours, {{"Catalog", value}});
    EXPECT_TRUE(listed().contains("user New: Catalog=" + value));
}

TEST_F(Installer, AFolderInPlaceOfTheFileIsRefused)
{
    QFile::remove(userIni());
    QDir(folder()).mkdir("user.ini");
    EXPECT_EQ(raised([&] { dao::Installer::addDatasource(Scope::User, "New", ours, {}); }),
              ErrorNumber::PathFileAccess);
    QStringList complaints;
    EXPECT_TRUE(dao::Installer::datasources(QStringLiteral("Tarnwick ODBC"), &complaints).empty());
    EXPECT_EQ(complaints, QStringList{QStringLiteral("The file '%1' can't be read: it is no file.").arg(userIni())});
    EXPECT_TRUE(QFileInfo(userIni()).isDir());
}

TEST_F(Installer, AMissingFolderIsRefused)
{
    qputenv("ODBCINI", (folder() + "/none/user.ini").toUtf8());
    EXPECT_EQ(raised([&] { dao::Installer::addDatasource(Scope::User, "New", ours, {}); }), ErrorNumber::PathNotFound);
}

TEST_F(Installer, AFileThatCanNotBeWrittenWholeStaysAsItWas)
{
    // The installer library's rehearsal is small; only the file with its long comment meets the limit.
    const QByteArray big = QByteArray("# a comment\n").repeated(2000) + original;
    write(userIni(), big);
    const QStringList before = QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden);
    {
        const FileSizeLimit limit(10000);
        EXPECT_EQ(raised([&] {
                      dao::Installer::addDatasource(Scope::User, "New", ours, {{"Catalog", "/n.db"}});
                  }),
                  ErrorNumber::PathFileAccess);
        EXPECT_EQ(raised([&] {
                      dao::Installer::changeDatasource(Scope::User, "Sales", {{"Catalog", "/n.db"}});
                  }),
                  ErrorNumber::PathFileAccess);
        EXPECT_EQ(raised([&] { dao::Installer::removeDatasource(Scope::User, "Sales"); }), ErrorNumber::PathFileAccess);
    }
    EXPECT_EQ(read(userIni()), big);
    EXPECT_EQ(QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden), before);
}

TEST_F(Installer, AFileThatTheDriverManagerCanNotReadAnyMoreIsBroughtBack)
{
    // A line of this length ends the driver manager's reading.
    const QByteArray broken = "#" + QByteArray(20000, 'c') + "\n" + original;
    write(userIni(), broken);
    EXPECT_EQ(raised([&] { dao::Installer::addDatasource(Scope::User, "New", ours, {}); }),
              ErrorNumber::PathFileAccess);
    EXPECT_EQ(read(userIni()), broken);
}

TEST_F(Installer, ADatasourceIsTried)
{
    write(userIni(), "[good]\nDriver=Scripted\n[unloadable]\nDriver=/nowhere/lib.so\n");
    auto trial = dao::Installer::tryDatasource("good");
    EXPECT_TRUE(trial.Connected);
    EXPECT_TRUE(trial.Text.contains("good"));
    trial = dao::Installer::tryDatasource("unloadable");
    EXPECT_FALSE(trial.Connected);
    EXPECT_TRUE(trial.Text.contains("Can't open lib '/nowhere/lib.so'")) << trial.Text.toStdString();
    EXPECT_TRUE(trial.Text.contains("cannot open shared object file")) << trial.Text.toStdString();
    EXPECT_FALSE(trial.Text.contains("ODBC--call failed."));
    EXPECT_EQ(chain(), QStringList());
    AnsweringTrap trap({});
    trial = dao::Installer::tryDatasource("missing");
    EXPECT_FALSE(trial.Connected);
    EXPECT_TRUE(trial.Text.contains("Data source name not found"));
    dao::Installer::addDatasource(Scope::User, "missing", "Scripted", {});
    const DriverManagersOwnLeak known;
    EXPECT_TRUE(dao::Installer::tryDatasource("missing").Connected);
}
