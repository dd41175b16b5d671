#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// A folder stands where a file is expected, so that nobody can read the file, the superuser included. The former file,
/// if there was one, is back at the end.
class FolderInPlace
{
public:
    explicit FolderInPlace(const QString& path);
    ~FolderInPlace();
    FolderInPlace(const FolderInPlace&) = delete;
    FolderInPlace& operator=(const FolderInPlace&) = delete;

    /// What a reader of the file is told.
    QString reason() const;

private:
    QString m_path;
    std::optional<QByteArray> m_former;
};
