#include "DatasourceFamily.h"
#include "OdbcFixture.h"

#include <QFile>

namespace
{

class DataSources : public OdbcFixture
{
protected:
    static QStringList listed()
    {
        QStringList texts;
        for (const dao::DataSource& source : dao::DBEngine::DataSources())
            texts << source.Name + " | " + source.Description;
        return texts;
    }
};

} // namespace

TEST_F(DataSources, UserAndSystemEntriesAreListedWithTheirDrivers)
{
    write(userIni(),
          "[One]\nDriver=Tarnwick ODBC\n\n[Two]\nDriver = Tarnwick ODBC  \n[Three]\nDriver=Tarnwick ODBC 2\n");
    write(systemIni(), "[Four]\nDriver=SQLite\nDescription=text\n");
    QStringList all = listed();
    all.sort();
    EXPECT_EQ(all,
              QStringList({"Four | SQLite", "One | Tarnwick ODBC", "Three | Tarnwick ODBC 2", "Two | Tarnwick ODBC"}));
}

TEST_F(DataSources, TheFamilyIsKnownByExactlyItsDriver)
{
    write(userIni(), "[Ledger]\nDriver=Tarnwick ODBC\n[Lower]\nDriver=tarnwick odbc\n[Longer]\nDriver=Tarnwick ODBC 2\n"
                     "[Blanks]\nDriver = Tarnwick ODBC  \n");
    write(systemIni(), "[Other]\nDriver=SQLite\n[Shared]\nDriver=Tarnwick ODBC\n");
    QStringList all;
    for (const dao::DataSource& source : dao::familyDataSources())
        all << source.Name;
    all.sort();
    EXPECT_EQ(all, QStringList({"Blanks", "Ledger", "Shared"}));
}

TEST_F(DataSources, NamesOfAnyScriptSurvive)
{
    const QByteArray names[] = {"\xD0\x94\xD0\xB0\xD0\xBD\xD0\xBD\xD1\x8B\xD0\xB5", "caf\xC3\xA9", "\xE6\xBC\xA2",
                                "\xF0\x9F\x98\x80", "a b"};
    QByteArray ini;
    QStringList expected;
    for (const QByteArray& name : names) {
        ini += '[' + name + "]\nDriver=Tarnwick ODBC\n";
        expected << QString::fromUtf8(name) + " | Tarnwick ODBC";
    }
    write(userIni(), ini);
    QStringList all = listed();
    all.sort();
    expected.sort();
    EXPECT_EQ(all, expected);
}

TEST_F(DataSources, BytesOfAnOldEncodingAreShownAndHarmNothing)
{
    write(userIni(), "[caf\xE9]\nDriver=Tarnwick ODBC\n[plain]\nDriver=Tarnwick ODBC\n");
    QStringList all = listed();
    all.sort();
    EXPECT_EQ(all, QStringList({QStringLiteral("caf\u00e9 | Tarnwick ODBC"), "plain | Tarnwick ODBC"}));
}

TEST_F(DataSources, MissingEmptyAndMalformedFilesAreEmptyLists)
{
    QFile::remove(userIni());
    QFile::remove(systemIni());
    EXPECT_EQ(listed(), QStringList());
    write(userIni(), "");
    EXPECT_EQ(listed(), QStringList());
    write(userIni(), QByteArray("no section\n=\n]]]\n[\n[]\n") + '\0' + "\xFF\xFE garbage\n");
    static_cast<void>(listed());
    write(userIni(), QByteArray(100000, '['));
    static_cast<void>(listed());
    write(userIni(), "[cut off\nDriver=Tarnwick ODBC\n[good]\nDriver=Tarnwick ODBC\n");
    EXPECT_TRUE(listed().contains("good | Tarnwick ODBC"));
}

TEST_F(DataSources, KeysOfAnEntryAreReadOrTheDefaultIsGiven)
{
    const QString text = QString::fromUtf8("\xD0\x96\xF0\x9F\x98\x80");
    write(userIni(), "[Sales]\nDriver=Tarnwick ODBC\nDefaultDatabase=STOCK\nOther=" + text.toUtf8() + "\n");
    using dao::DBEngine::GetPrivateProfileString;
    EXPECT_EQ(GetPrivateProfileString("Sales", "DefaultDatabase", ""), "STOCK");
    EXPECT_EQ(GetPrivateProfileString("Sales", "defaultdatabase", ""), "STOCK");
    EXPECT_EQ(GetPrivateProfileString("Sales", "Other", ""), text);
    EXPECT_EQ(GetPrivateProfileString("Sales", "Missing", "fallback"), "fallback");
    EXPECT_EQ(GetPrivateProfileString("Nowhere", "DefaultDatabase", text), text);
    EXPECT_EQ(GetPrivateProfileString("", "DefaultDatabase", "x"), "x");
    EXPECT_EQ(GetPrivateProfileString("Sales", "", "x"), "x");
}

TEST_F(DataSources, AValueIsCutAt255Characters)
{
    const QString long255 = QString::fromUtf8("\xD0\x96").repeated(300);
    write(userIni(), "[Sales]\nDefaultDatabase=" + long255.toUtf8() + "\n");
    EXPECT_EQ(dao::DBEngine::GetPrivateProfileString("Sales", "DefaultDatabase", ""), long255.left(255));
}
