#pragma once

#include "DialogScript.h"
#include "MainWindowFixture.h"

#include "CConnections.h"
#include "FieldCommands.h"

#include <QFile>

/// The main window with the commands on the fields of a file, and a user in front of their dialogs.
class FieldTest : public MainWindowTest
{
protected:
    FieldTest() { registerFieldCommands(); }

    static QStringList collection(const QString& file)
    {
        return {QStringLiteral("FI"), QStringLiteral("fi=") + file, QStringLiteral("FD")};
    }

    /// One line a field, as "EMPLOYEE 1 0": name, number, offset.
    QStringList fields(const QString& file) const
    {
        QStringList lines;
        for (const QStringList& row :
             world.rows(datasource, "SELECT FIELD_NAME, FIELD_NUMBER, OFFSET FROM TW_FIELD WHERE FILE_NAME = '" +
                                        QString(file).replace("'", "''") + "' ORDER BY FIELD_NUMBER, FIELD_NAME"))
            lines.append(row.join(' '));
        return lines;
    }

    void addFile(const QString& file, int recordSize) const
    {
        change(QStringLiteral("INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('%1', %2)")
                   .arg(QString(file).replace("'", "''"))
                   .arg(recordSize));
    }

    void addField(const QString& file, const QString& name, int number, int offset, int length) const
    {
        change(QStringLiteral("INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME, FIELD_NUMBER, OFFSET, LENGTH) "
                              "VALUES ('%1', '%2', %3, %4, %5)")
                   .arg(QString(file).replace("'", "''"), QString(name).replace("'", "''"))
                   .arg(number)
                   .arg(offset)
                   .arg(length));
    }

    /// Puts the catalog aside, and brings it back with nothing connected and the tree closed.
    void keepCatalog()
    {
        while (CConnections::instance().Count() > 0)
            CConnections::instance().Remove(1);
        ASSERT_TRUE(QFile::copy(world.catalogFile(datasource), world.folder() + "/asItWas"));
    }
    void beginAnew()
    {
        if (window)
            window->FetchTreeviewRoot();
        else
            start();
        const QString file = world.catalogFile(datasource);
        for (const char* suffix : {"", "-wal", "-shm"})
            QFile::remove(file + QLatin1String(suffix));
        ASSERT_TRUE(QFile::copy(world.folder() + "/asItWas", file));
    }

    DialogScript dialogs;
};
