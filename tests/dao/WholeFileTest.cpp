#include "WholeFile.h"

#include "FileSizeLimit.h"
#include "OdbcFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{

class WholeFile : public OdbcFixture
{
protected:
    static QStringList entries() { return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
};

/// A name so long that no copy beside the file can have a longer one, which leaves writing it in place.
QString longName()
{
    return QString(250, u'n');
}

} // namespace

TEST_F(WholeFile, WritesAndReadsBytes)
{
    const QString path = folder() + "/a.ini";
    EXPECT_EQ(dao::wholeFile::read(path), std::nullopt);
    const QStringList before = entries();
    dao::wholeFile::write(path, "one\n");
    dao::wholeFile::write(path, QByteArray("two\0\n", 5));
    EXPECT_EQ(dao::wholeFile::read(path), QByteArray("two\0\n", 5));
    EXPECT_EQ(entries().size(), before.size() + 1);
    dao::wholeFile::restore(path, QByteArray("three"));
    EXPECT_EQ(read(path), "three");
    dao::wholeFile::restore(path, std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST_F(WholeFile, KeepsPermissionsAndFollowsLinks)
{
    const QString path = folder() + "/real.ini";
    write(path, "old");
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    ASSERT_TRUE(QFile::link("real.ini", folder() + "/link.ini"));
    dao::wholeFile::write(folder() + "/link.ini", "new");
    EXPECT_EQ(read(path), "new");
    EXPECT_TRUE(QFileInfo(folder() + "/link.ini").isSymLink());
    EXPECT_FALSE(QFileInfo(path).permissions() & QFile::ReadOther);
}

TEST_F(WholeFile, RefusesFoldersDevicesAndMissingFolders)
{
    QDir(folder()).mkdir("dir.ini");
    EXPECT_EQ(raised([] { dao::wholeFile::write(folder() + "/dir.ini", "x"); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(raised([] { dao::wholeFile::read(folder() + "/dir.ini"); }), ErrorNumber::PathFileAccess);
    EXPECT_TRUE(QFileInfo(folder() + "/dir.ini").isDir());
    EXPECT_EQ(raised([] { dao::wholeFile::write("/dev/full", "x"); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(raised([] { dao::wholeFile::read("/dev/full"); }), ErrorNumber::PathFileAccess);
    EXPECT_EQ(raised([] { dao::wholeFile::write(folder() + "/none/a.ini", "x"); }), ErrorNumber::PathNotFound);
    write(folder() + "/file", "");
    EXPECT_EQ(raised([] { dao::wholeFile::write(folder() + "/file/a.ini", "x"); }), ErrorNumber::PathNotFound);
}

TEST_F(WholeFile, AFileThatCanNotGrowStaysAsItWas)
{
    const QString path = folder() + "/a.ini";
    write(path, "old");
    const QStringList before = entries();
    {
        const FileSizeLimit limit(1000);
        EXPECT_EQ(raised([&] { dao::wholeFile::write(path, QByteArray(5000, 'x')); }), ErrorNumber::PathFileAccess);
        dao::wholeFile::write(path, "fits");
    }
    EXPECT_EQ(read(path), "fits");
    EXPECT_EQ(entries(), before);
}

TEST_F(WholeFile, WithoutRoomForACopyBesideItAFileIsWrittenInPlace)
{
    const QString path = folder() + '/' + longName();
    write(path, QByteArray(3000, 'o'));
    dao::wholeFile::write(path, "short");
    EXPECT_EQ(read(path), "short");
    dao::wholeFile::write(path, QByteArray(5000, 'l'));
    EXPECT_EQ(read(path), QByteArray(5000, 'l'));
    dao::wholeFile::write(path, "");
    EXPECT_EQ(read(path), "");
}

TEST_F(WholeFile, AFailedWriteInPlaceLeavesTheFormerBytes)
{
    const QString path = folder() + '/' + longName();
    write(path, QByteArray(3000, 'o'));
    {
        const FileSizeLimit limit(4000);
        EXPECT_EQ(raised([&] { dao::wholeFile::write(path, QByteArray(5000, 'x')); }), ErrorNumber::PathFileAccess);
    }
    EXPECT_EQ(read(path), QByteArray(3000, 'o'));
}
