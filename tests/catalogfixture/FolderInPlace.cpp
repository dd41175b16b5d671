#include "FolderInPlace.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

FolderInPlace::FolderInPlace(const QString& path) : m_path(path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        m_former = file.readAll();
        file.close();
        EXPECT_TRUE(file.remove()) << path.toStdString();
    }
    EXPECT_TRUE(QDir().mkdir(path)) << path.toStdString();
}

FolderInPlace::~FolderInPlace()
{
    EXPECT_TRUE(QDir().rmdir(m_path)) << m_path.toStdString();
    QFile file(m_path);
    if (m_former && (!file.open(QIODevice::WriteOnly) || file.write(*m_former) != m_former->size()))
        ADD_FAILURE() << m_path.toStdString() << " is not back: " << file.errorString().toStdString();
}

QString FolderInPlace::reason() const
{
    return QStringLiteral("The file '%1' can't be read: it is no file.").arg(m_path);
}
