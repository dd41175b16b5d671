#include "LineReader.h"

#include "RuntimeError.h"

#include <QFile>
#include <QRandomGenerator>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace
{

class LineReaderTest : public testing::Test
{
protected:
    QString write(const QByteArray& bytes)
    {
        const QString path = folder.filePath("lines.csv");
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    QStringList read(const QByteArray& bytes)
    {
        LineReader reader(write(bytes));
        QStringList lines;
        while (reader.next())
            lines.append(reader.text().toString());
        EXPECT_FALSE(reader.next());
        return lines;
    }

    int failure(const QString& path, int lines = 0)
    {
        try {
            LineReader reader(path);
            for (int line = 0; line < lines; ++line)
                reader.next();
        } catch (const RuntimeError& error) {
            return static_cast<int>(error.number());
        }
        return 0;
    }

    /// The lines of a text, one character at a time.
    static QStringList split(QByteArray bytes)
    {
        if (bytes.startsWith("\xEF\xBB\xBF"))
            bytes.remove(0, 3);
        QStringList lines;
        qsizetype begin = 0;
        for (qsizetype i = 0; i < bytes.size(); ++i) {
            if (bytes[i] != '\r' && bytes[i] != '\n')
                continue;
            lines.append(QString::fromLatin1(bytes.mid(begin, i - begin)));
            if (bytes.mid(i, 2) == "\r\n")
                ++i;
            begin = i + 1;
        }
        if (begin < bytes.size())
            lines.append(QString::fromLatin1(bytes.mid(begin)));
        return lines;
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(LineReaderTest, AnEmptyFileHasNoLines)
{
    EXPECT_EQ(read(""), QStringList());
}

TEST_F(LineReaderTest, AnyEndEndsALineAndTheLastLineNeedsNone)
{
    const QStringList three{"one", "two", "three"};
    for (const char* text : {"one\r\ntwo\r\nthree\r\n", "one\ntwo\nthree\n", "one\rtwo\rthree\r", "one\r\ntwo\rthree",
                             "one\ntwo\nthree", "one\rtwo\r\nthree"})
        EXPECT_EQ(read(text), three) << text;
}

TEST_F(LineReaderTest, EmptyLinesAreLines)
{
    EXPECT_EQ(read("\r\n\n\rx\r\r\n"), (QStringList{"", "", "", "x", ""}));
    EXPECT_EQ(read("\n"), QStringList{""});
}

TEST_F(LineReaderTest, AnEndOfTwoCharactersMayStandAcrossTwoBlocks)
{
    for (const int size : {65534, 65535, 65536, 65537}) {
        const QByteArray first(size, 'a');
        EXPECT_EQ(read(first + "\r\nb"), (QStringList{QString::fromLatin1(first), "b"})) << size;
        EXPECT_EQ(read(first + "\rb\r\n\r\n"), (QStringList{QString::fromLatin1(first), "b", ""})) << size;
    }
}

TEST_F(LineReaderTest, ManyLinesOfEachEndComeInOrder)
{
    for (const char* end : {"\r\n", "\n", "\r"}) {
        QByteArray bytes;
        QStringList expected;
        for (int i = 0; i < 20000; ++i) {
            expected.append(QString("line %1").arg(i));
            bytes += expected.last().toLatin1() + end;
        }
        EXPECT_EQ(read(bytes), expected);
    }
}

TEST_F(LineReaderTest, ALineOfTenMegabytesIsOneLine)
{
    const QByteArray line(10 * 1024 * 1024, 'x');
    const QStringList lines = read(line + "\r\nend");
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].size(), line.size());
    EXPECT_EQ(lines[1], "end");
}

TEST_F(LineReaderTest, ALineWithoutAnEndIsRefused)
{
    const QString path = write("first\n");
    ASSERT_TRUE(QFile::resize(path, 300 * 1024 * 1024));
    EXPECT_EQ(failure(path, 1), 0);
    EXPECT_EQ(failure(path, 2), 75);
}

TEST_F(LineReaderTest, LinesOfAnyLengthAndEndAreThoseOfAPlainSplit)
{
    QRandomGenerator random(65536);
    for (int round = 0; round < 100; ++round) {
        QByteArray bytes = random.bounded(3) == 0 ? "\xEF\xBB\xBF" : "";
        const int count = random.bounded(6);
        for (int line = 0; line < count; ++line) {
            // About as long as a block of the reader, or next to nothing.
            const int size = random.bounded(2) == 0 ? random.bounded(4) : random.bounded(65530, 65541);
            bytes += QByteArray(size, static_cast<char>(random.bounded('a', 'z' + 1)));
            static constexpr std::array ends{"\r", "\n", "\r\n"};
            if (line + 1 < count || random.bounded(2) == 0)
                bytes += ends[static_cast<std::size_t>(random.bounded(3))];
        }
        ASSERT_TRUE(read(bytes) == split(bytes)) << "round " << round;
    }
}

TEST_F(LineReaderTest, CharactersBeyondAsciiAreReadInTheCodePage)
{
    EXPECT_EQ(read("Z\xC3\xBCrich\r\n\xE2\x82\xAC"), (QStringList{u"Z\u00FCrich"_s, u"\u20AC"_s}));
}

TEST_F(LineReaderTest, ALineOutsideOfTheCodePageKeepsACharacterForEachByte)
{
    EXPECT_EQ(read("Z\xFCrich\nZ\xC3\xBCrich\n\xC3"), (QStringList{u"Z\u00FCrich"_s, u"Z\u00FCrich"_s, u"\u00C3"_s}));
}

TEST_F(LineReaderTest, AMarkOfUtf8IsNoPartOfTheFirstLine)
{
    EXPECT_EQ(read("\xEF\xBB\xBF"
                   "FILE\nx"),
              (QStringList{"FILE", "x"}));
    EXPECT_EQ(read("\xEF\xBB\xBF"), QStringList());
    EXPECT_EQ(read("ab"), QStringList{"ab"});
}

TEST_F(LineReaderTest, ANulIsACharacter)
{
    EXPECT_EQ(read(QByteArray("a\0b\nc", 5)), (QStringList{QString("a%1b").arg(QChar(u'\0')), "c"}));
}

TEST_F(LineReaderTest, WhatCantBeReadRaisesTheErrorOfTheSystem)
{
    EXPECT_EQ(failure(folder.filePath("missing.csv")), 53);
    EXPECT_EQ(failure(folder.path()), 75);
    EXPECT_EQ(failure(write("x") + "/below"), 76);
    EXPECT_EQ(failure("/dev/zero"), 75);
    const QString pipe = folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(failure(pipe), 75);
}
