#include "Settings.h"

#include "TemporarySettings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <limits>

namespace
{

class Settings : public testing::Test
{
protected:
    static void write(const QByteArray& contents)
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(settings::fileName()).path()));
        QFile file(settings::fileName());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    static QByteArray contents(const QString& name = settings::fileName())
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    TemporarySettings temporary;
};

} // namespace

TEST_F(Settings, TheDefaultStandsAtTheReader)
{
    EXPECT_EQ(settings::get("mdiMain", "Left"), "");
    EXPECT_EQ(settings::get("mdiMain", "Left", "7"), "7");
    EXPECT_EQ(settings::getNumber("mdiMain", "Width", 9600), 9600);
    EXPECT_FALSE(QFile::exists(settings::fileName())) << "Reading makes no file";
}

TEST_F(Settings, TheyLieReadableInTheUsersConfigurationFolder)
{
    EXPECT_EQ(settings::fileName(), temporary.folder() + "/Tarnwick Quorvane.ini");
    settings::save("mdiMain", "Left", 150);
    settings::save("Options", "FieldOrder", 1);
    EXPECT_EQ(contents(), "[Options]\nFieldOrder=1\n\n[mdiMain]\nLeft=150\n");
}

TEST_F(Settings, WhatIsSavedIsReadBackWhateverItHolds)
{
    const QString values[] = {"",           "plain",     "a, b",       "  blanks  ",
                              "\"quoted\"", "@at",       "semi;colon", "back\\slash",
                              "two\nlines", "x=y",       "[section]",  QStringLiteral("äöü €"),
                              "100%",       "@Invalid()"};
    for (const QString& value : values) {
        settings::save("Section", "Key", value);
        EXPECT_EQ(settings::get("Section", "Key", "default"), value) << value.toStdString();
    }
}

TEST_F(Settings, SectionsAreKeptApart)
{
    settings::save("frmWizard", "Left", 1);
    settings::save("frmMoveCopy", "Left", 2);
    EXPECT_EQ(settings::getNumber("frmWizard", "Left", 0), 1);
    EXPECT_EQ(settings::getNumber("frmMoveCopy", "Left", 0), 2);
    EXPECT_EQ(settings::getNumber("frmColumnReorder", "Left", 3), 3);
}

TEST_F(Settings, EachSaveIsOnTheDiskAtOnce)
{
    settings::save("mdiMain", "Top", 15);
    EXPECT_TRUE(contents().contains("Top=15"));
    settings::save("mdiMain", "Top", 30);
    EXPECT_TRUE(contents().contains("Top=30"));
}

TEST_F(Settings, AnotherInstancesChangesAreSeenAndKept)
{
    settings::save("mdiMain", "Left", 15);
    EXPECT_EQ(settings::getNumber("Options", "Items", 1), 1);
    QByteArray other = contents();
    write("[Options]\nItems=0\n" + other);

    EXPECT_EQ(settings::getNumber("Options", "Items", 1), 0);
    settings::save("mdiMain", "Left", 30);
    EXPECT_EQ(settings::getNumber("Options", "Items", 1), 0);
    EXPECT_TRUE(contents().contains("Items=0"));
    EXPECT_TRUE(contents().contains("Left=30"));
}

TEST_F(Settings, ANumberIsTheLeadingOneOfItsText)
{
    const struct {
        const char* stored;
        int value;
    } rows[] = {{"12", 12},
                {"-7", -7},
                {" 5 twips", 5},
                {"1.5", 2},
                {"2.5", 2},
                {"1e2", 100},
                {"abc", 42},
                {"", 42},
                {"-", 42},
                {"&H10", 42},
                {"99999999999", std::numeric_limits<int>::max()},
                {"-1e400", std::numeric_limits<int>::min()}};
    for (const auto& row : rows) {
        settings::save("Section", "Key", QString(row.stored));
        EXPECT_EQ(settings::getNumber("Section", "Key", 42), row.value) << row.stored;
    }
}

TEST_F(Settings, AFileEditedByHandIsUnderstood)
{
    write("; a remark\n[mdiMain]\nLeft = 15\nTitle=one, two\n\n[Options]\nItems=0");
    EXPECT_EQ(settings::getNumber("mdiMain", "Left", 0), 15);
    EXPECT_EQ(settings::get("mdiMain", "Title"), "one, two");
    EXPECT_EQ(settings::getNumber("Options", "Items", 1), 0);
}

TEST_F(Settings, ADamagedFileIsReadAsFarAsItGoesAndKeptBesideTheNewOne)
{
    const QByteArray files[] = {
        "this is no setting\n[mdiMain]\nLeft=15\n\x01\xff garbage\n[[[\n",
        "[mdiMain]\nLeft=15\n[Options]\nItems\n",
        "[mdiMain]\nLeft=15\n[Options\nItems=0\n",
    };
    for (const bool readBefore : {false, true})
        for (const QByteArray& damaged : files) {
            const TemporarySettings own;
            write(damaged);
            if (readBefore) {
                EXPECT_EQ(settings::getNumber("mdiMain", "Left", 0), 15);
                EXPECT_EQ(settings::getNumber("mdiMain", "Top", 3), 3);
            }
            settings::save("mdiMain", "Top", 30);
            EXPECT_EQ(settings::getNumber("mdiMain", "Left", 0), 15);
            EXPECT_EQ(settings::getNumber("mdiMain", "Top", 0), 30);
            EXPECT_EQ(contents(settings::fileName() + ".damaged"), damaged);
        }
}

TEST_F(Settings, AGoodFileIsNotKept)
{
    write("; a remark\n[mdiMain]\nLeft=15\n");
    settings::save("mdiMain", "Top", 30);
    EXPECT_FALSE(QFile::exists(settings::fileName() + ".damaged"));
}

TEST_F(Settings, ABinaryFileStopsNothing)
{
    QByteArray noise;
    for (int i = 0; i < 4096; ++i)
        noise.append(static_cast<char>(i * 131 % 251));
    write(noise);
    EXPECT_EQ(settings::getNumber("Options", "Items", 1), 1);
    settings::save("Options", "Items", 0);
    EXPECT_EQ(settings::getNumber("Options", "Items", 1), 0);
}

TEST_F(Settings, WhatCannotBeWrittenHoldsForTheRestOfTheRun)
{
    // A file where the folder should be stops every user, the superuser too.
    qputenv("XDG_CONFIG_HOME", (temporary.folder() + "/file").toUtf8());
    QFile file(temporary.folder() + "/file");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    settings::save("Options", "SysTables", 1);
    EXPECT_EQ(settings::getNumber("Options", "SysTables", 0), 1);
    settings::save("Options", "SysTables", 2);
    EXPECT_EQ(settings::getNumber("Options", "SysTables", 0), 2);

    ASSERT_TRUE(file.remove());
    settings::save("Options", "SysTables", 3);
    EXPECT_EQ(settings::getNumber("Options", "SysTables", 0), 3);
    EXPECT_TRUE(contents().contains("SysTables=3"));
}

TEST_F(Settings, AFolderInPlaceOfTheFileStopsNothing)
{
    ASSERT_TRUE(QDir().mkpath(settings::fileName()));
    EXPECT_EQ(settings::get("Options", "Items", "1"), "1");
    settings::save("Options", "Items", 0);
    EXPECT_EQ(settings::get("Options", "Items", "1"), "0");
}

TEST_F(Settings, TheirFolderIsMadeWhenNeeded)
{
    qputenv("XDG_CONFIG_HOME", (temporary.folder() + "/not/there/yet").toUtf8());
    settings::save("Options", "Items", 0);
    EXPECT_EQ(contents(temporary.folder() + "/not/there/yet/Tarnwick Quorvane.ini"), "[Options]\nItems=0\n");
}

TEST_F(Settings, EachTemporaryFolderStartsEmpty)
{
    settings::save("Options", "Items", 0);
    {
        const TemporarySettings other;
        EXPECT_EQ(settings::getNumber("Options", "Items", 1), 1);
        settings::save("Options", "Items", 5);
    }
    EXPECT_EQ(settings::getNumber("Options", "Items", 1), 0);
}
