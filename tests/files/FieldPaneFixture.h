#pragma once

#include "ItemTest.h"

/// What the pane of a field sends and says.
namespace fieldpane
{

using namespace Qt::StringLiterals;

inline const QStringList fieldColumns{u"FILE_NAME"_s, u"FIELD_NUMBER"_s, u"FIELD_NAME"_s,    u"LOCAL_TYPE_NAME"_s,
                                      u"OFFSET"_s,    u"LENGTH"_s,       u"PRECISION"_s,     u"SCALE"_s,
                                      u"ENCRYPTED"_s, u"FORMAT"_s,       u"DEFAULT_VALUE"_s, u"REMARKS"_s};
inline const QString describe = u"SELECT * FROM TW_FIELD "_s;
inline const QString displayState = u": Up1 Field Add Field Edit Field Delete"_s;
inline const QString noName = u"Please give this Field a name."_s;
inline const QString noType = u"Please select a Local Data Type for this field from the drop down list."_s;
inline const QString columnsToo = u"You have changed the length of this Field.\n"
                                  "Do you want to update the length of any columns\n"
                                  "that refer to this Field to match?"_s;
inline const QString mayDelete = u"Are you sure you want to delete this field?"_s;
inline const QString isUsed = u"This Field is used by Column 'ARTICLE' in Database 'SALES', Table 'ITEMS'\n"
                              "Are you sure you want to delete it?"_s;
inline const QString nextNumber =
    u"SELECT FIELD_NUMBER FROM TW_FIELD WHERE FILE_NAME = 'STOCK' ORDER BY FIELD_NUMBER DESC"_s;
inline const QString tablesOfStock = u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = 'STOCK'"_s;

inline QString nextOffset(const QString& number)
{
    return u"SELECT SUM(LENGTH) AS NextOffset FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NUMBER < 0"_s + number;
}

inline QString readField(const QString& name)
{
    return u"SELECT * FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = '%1' "_s.arg(name);
}

inline QString nameIsTaken(const QString& name)
{
    return u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = '%1'"_s.arg(name);
}

inline QString numberIsTaken(const QString& number)
{
    return u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NUMBER = "_s + number;
}

inline QString insertField(const QString& values)
{
    return u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
           "SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) VALUES ('STOCK', %1)"_s.arg(values);
}

inline QString updateField(const QString& name, const QString& assignments)
{
    return u"UPDATE TW_FIELD SET %1 WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = '%2'"_s.arg(assignments, name);
}

inline QString deleteField(const QString& name)
{
    return u"DELETE FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = '%1'"_s.arg(name);
}

inline const QString unchangedCode =
    u"FIELD_NUMBER = 01, LOCAL_TYPE_NAME = 'STRING', LENGTH = 010, PRECISION = 010, SCALE = 00, ENCRYPTED = 00, "
    "FORMAT = '', DEFAULT_VALUE = '', REMARKS = ''"_s;

/// The pane of a field, with a user in front of it.
class FieldPane : public ItemTest
{
protected:
    static QStringList field(const QString& name) { return {u"FI"_s, u"fi=STOCK"_s, u"FD"_s, "fd="_L1 + name}; }
    static QStringList stock() { return {u"FI"_s, u"fi=STOCK"_s, u"FD"_s}; }

    QStringList storedField(const QString& name) const
    {
        return stored(u"SELECT * FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = '%1'"_s.arg(
            QString(name).replace('\''_L1, "''"_L1)));
    }

    /// Begins to add a field while those of the file show.
    void beginToAdd()
    {
        begin(field(u"CODE"_s));
        choose(key(stock()), u"mnu_FieldAddNew"_s);
    }

    void fillIn(const QString& name, const QString& type)
    {
        write(u"FIELD_NAME"_s, name);
        pick(u"LOCAL_TYPE_NAME"_s, type);
    }

    void expectRefused(const QString& message, const QString& column)
    {
        boxes.expectInform(message);
        press(u"OK"_s);
        boxes.verify();
        EXPECT_EQ(focus(), column);
    }

    QStringList sizes() const { return texts({u"LENGTH"_s, u"PRECISION"_s, u"SCALE"_s}); }
    QStringList allLimits() const { return {limits(0), limits(1), limits(2)}; }
    QString shown() const { return "frmFields "_L1 + datasource + "/STOCK"_L1; }
};

} // namespace fieldpane
