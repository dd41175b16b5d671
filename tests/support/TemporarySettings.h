#pragma once

#include <QByteArray>
#include <QTemporaryDir>

/// A settings folder of its own, empty at first and gone with the object; the former one is in force again afterwards.
class TemporarySettings
{
public:
    TemporarySettings();
    ~TemporarySettings();
    TemporarySettings(const TemporarySettings&) = delete;
    TemporarySettings& operator=(const TemporarySettings&) = delete;

    QString folder() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
    bool m_hadFormer;
    QByteArray m_former;
};
