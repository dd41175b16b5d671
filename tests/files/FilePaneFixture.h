#pragma once

#include "ItemTest.h"

/// What the pane of a file sends and says.
namespace filepane
{

using namespace Qt::StringLiterals;

inline const QStringList fileColumns{u"FILE_NAME"_s,         u"OPEN_STRING"_s, u"RECORD_SIZE"_s,
                                     u"FILE_ORGANISATION"_s, u"RECORD_TYPE"_s, u"REMARKS"_s};
inline const QString describe = u"SELECT * FROM TW_FILE "_s;
inline const QString displayState = u": Up1 File Add File Edit File Delete"_s;
inline const QString noName = u"Please give this File a name."_s;

inline QString readFile(const QString& name)
{
    return u"SELECT * FROM TW_FILE WHERE FILE_NAME = '%1'"_s.arg(name);
}

inline QString insertFile(const QString& name, const QString& rest)
{
    return u"INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
           "VALUES ('%1', %2)"_s.arg(name, rest);
}

inline QString updateFile(const QString& name, const QString& openString, const QString& size,
                          const QString& organisation, const QString& type, const QString& remarks)
{
    return u"UPDATE TW_FILE SET OPEN_STRING = '%1', RECORD_SIZE = 0%2, FILE_ORGANISATION = '%3', RECORD_TYPE = '%4', "
           "REMARKS = '%5' WHERE FILE_NAME = '%6'"_s.arg(openString, size, organisation, type, remarks, name);
}

inline QString countFields(const QString& name)
{
    return u"SELECT COUNT(FIELD_NAME) AS RECORD_COUNT FROM TW_FIELD WHERE FILE_NAME = '%1'"_s.arg(name);
}

inline QString readTables(const QString& name)
{
    return u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = '%1'"_s.arg(name);
}

inline QString deleteFrom(const QString& table, const QString& name)
{
    return u"DELETE FROM %1 WHERE FILE_NAME = '%2'"_s.arg(table, name);
}

inline QString sum(const QString& name)
{
    return u"SELECT SUM(LENGTH) As RecordLength FROM TW_FIELD WHERE FILE_NAME = '%1'"_s.arg(name);
}

inline QString mayDelete()
{
    return u"Are you sure you want to delete this File?"_s;
}

inline QString takesAlong(const QString& name, const QString& fields)
{
    return u"Deleteing the File '%1' will also remove the %2 attached to it.\n\n"
           "Are you sure you wish to delete this File?"_s.arg(name, fields);
}

inline QString isReferenced(const QString& table)
{
    return u"Warning this file is referenced by Table '%1'\nAre you sure you want to remove it?"_s.arg(table);
}

/// The pane of a file, with a user in front of it.
class FilePane : public ItemTest
{
protected:
    static QStringList file(const QString& name) { return {u"FI"_s, "fi="_L1 + name}; }

    QStringList files() const
    {
        return stored(u"SELECT FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS "
                      "FROM TW_FILE WHERE FILE_NAME NOT IN ('CNTRL','COLUMN','DB','DBPRV','DRIVER','FIELD','FILE',"
                      "'KEY','LOCDT','SQLDT','TABLE','TBLPRV','USER') ORDER BY FILE_NAME"_s);
    }

    QString stored1(const QString& name, const QString& column) const
    {
        return world.value(datasource, u"SELECT %1 FROM TW_FILE WHERE FILE_NAME = '%2'"_s.arg(
                                           column, QString(name).replace('\''_L1, "''"_L1)));
    }

    /// Begins to add a file while the others show.
    void beginToAdd()
    {
        begin(file(u"EMPTY"_s));
        choose(key({u"FI"_s}), u"mnu_FileAdd"_s);
    }

    /// Fills a new file in as far as it must be.
    void fillIn(const QString& name)
    {
        write(u"FILE_NAME"_s, name);
        pick(u"FILE_ORGANISATION"_s, u"SEQUENTIAL"_s);
        pick(u"RECORD_TYPE"_s, u"VARIABLE"_s);
    }

    /// Presses "OK" and expects a message of validation.
    void expectRefused(const QString& message, const QString& column)
    {
        boxes.expectInform(message);
        press(u"OK"_s);
        boxes.verify();
        EXPECT_EQ(focus(), column);
    }
};

} // namespace filepane
