#include "TextWriter.h"

#include "FileSizeLimit.h"
#include "RuntimeError.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <sys/stat.h>

namespace
{

class TextWriterTest : public testing::Test
{
protected:
    QString path() const { return folder.filePath("out.txt"); }

    QByteArray written() const
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    static int failure(const std::function<void()>& action)
    {
        try {
            action();
        } catch (const RuntimeError& error) {
            return static_cast<int>(error.number());
        }
        return 0;
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(TextWriterTest, WritesWhatWasAppendedInTheCodePage)
{
    TextWriter writer(path());
    writer.append('"');
    writer.append(QLatin1StringView("FILE"));
    writer.append(QStringView(u"\",Z\u00FCrich \u20AC\r\n"));
    writer.close();
    EXPECT_EQ(written(), "\"FILE\",Z\xC3\xBCrich \xE2\x82\xAC\r\n");
}

TEST_F(TextWriterTest, NothingAppendedLeavesAnEmptyFile)
{
    QFile former(path());
    ASSERT_TRUE(former.open(QIODevice::WriteOnly));
    former.write("what stood there");
    former.close();
    TextWriter(path()).close();
    EXPECT_EQ(written(), "");
}

TEST_F(TextWriterTest, ManyBlocksComeInOrder)
{
    QByteArray expected;
    TextWriter writer(path());
    for (int i = 0; i < 50000; ++i) {
        const QString line = QString("line %1\r\n").arg(i);
        expected += line.toLatin1();
        writer.append(QStringView(line));
        writer.flushWhenFull();
    }
    writer.close();
    EXPECT_EQ(written(), expected);
}

TEST_F(TextWriterTest, ANewFileIsItsOwnersAlone)
{
    TextWriter(path()).close();
    struct stat found = {};
    ASSERT_EQ(::stat(QFile::encodeName(path()).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0600U);
}

TEST_F(TextWriterTest, WhatWasAppendedIsThereWithoutAClose)
{
    {
        TextWriter writer(path());
        writer.append(QLatin1StringView("half"));
    }
    EXPECT_EQ(written(), "half");
}

TEST_F(TextWriterTest, AFullDiskRaises61AtTheFlushAndAtTheClose)
{
    TextWriter writer("/dev/full");
    for (int i = 0; i < 70000; ++i)
        writer.append('x');
    EXPECT_EQ(failure([&] { writer.flushWhenFull(); }), 61);
    EXPECT_EQ(failure([&] { writer.close(); }), 61);
}

TEST_F(TextWriterTest, AWriteThatWentHalfWayGoesOnWhereItEnded)
{
    QByteArray bytes;
    for (char byte = 1; byte <= 100; ++byte)
        bytes += byte;
    TextWriter writer(path());
    writer.append(QLatin1StringView(bytes));
    {
        const FileSizeLimit limit(40);
        EXPECT_EQ(failure([&] { writer.close(); }), 75);
        EXPECT_EQ(written(), bytes.left(40));
    }
    writer.close();
    EXPECT_EQ(written(), bytes);
}

TEST_F(TextWriterTest, WhatCantBeOpenedRaisesTheErrorOfTheSystem)
{
    EXPECT_EQ(failure([&] { TextWriter writer(folder.path()); }), 75);
    EXPECT_EQ(failure([&] { TextWriter writer(folder.filePath("missing/out.txt")); }), 53);
    TextWriter(path()).close();
    EXPECT_EQ(failure([&] { TextWriter writer(path() + "/below"); }), 76);
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(failure([&] { TextWriter writer(pipe); }), 75);
}
