#pragma once

#include "DropDown.h"
#include "RoomFixture.h"

/// What the pane of a database sends and says.
namespace databasepane
{

using namespace Qt::StringLiterals;

inline const QStringList databaseColumns{
    u"DATABASE_NAME"_s,  u"DISPLAY_NAME"_s,    u"DRIVER_NAME"_s, u"DEFAULT_DIRECTORY"_s,
    u"CONNECT_STRING"_s, u"SETUP_PROCEDURE"_s, u"REMARKS"_s};
inline const QStringList nothing(7, QString(u""_s));
inline const QString describe = u"SELECT * FROM TW_DB "_s;
inline const QString readDrivers = u"SELECT DRIVER_NAME FROM TW_DRIVER WHERE DRIVER_NAME <> '' "
                                   "AND DRIVER_NAME <> 'SYSTEM' ORDER BY DRIVER_NAME ASC"_s;
inline const QString displayState = u": Up1 DB Add DB Edit DB Delete"_s;
inline const QString noName = u"Please give this Database a name."_s;
inline const QString otherDisplayName =
    u"The Display Name (if used) MUST match the Database Name (exclusive of case)."_s;
inline const QString noDriver = u"Please select a Driver from the drop down list."_s;
inline const QString mayDelete = u"Are you sure you want to delete this database?"_s;

inline QString readDatabase(const QString& name)
{
    return u"SELECT * FROM TW_DB WHERE DATABASE_NAME = '%1'"_s.arg(name);
}

inline QString nameIsTaken(const QString& name)
{
    return u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME = '%1'"_s.arg(name);
}

inline QString insertDatabase(const QString& name, const QString& rest)
{
    return u"INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, CONNECT_STRING, "
           "REMARKS, DISPLAY_NAME) VALUES ('%1', %2)"_s.arg(name, rest);
}

inline QString updateDatabase(const QString& name, const QString& displayName, const QString& directory,
                              const QString& driver, const QString& setup, const QString& connect,
                              const QString& remarks)
{
    return u"UPDATE TW_DB SET DISPLAY_NAME = '%1', DEFAULT_DIRECTORY = '%2', DRIVER_NAME = '%3', "
           "SETUP_PROCEDURE = '%4', CONNECT_STRING = '%5', REMARKS = '%6' WHERE DATABASE_NAME = '%7'"_s.arg(
               displayName, directory, driver, setup, connect, remarks, name);
}

inline QStringList deleteDatabase(const QString& name)
{
    return {u"DELETE FROM TW_DB WHERE DATABASE_NAME = '%1'"_s.arg(name),
            u"DELETE FROM TW_TABLE WHERE DATABASE_NAME ='%1'"_s.arg(name),
            u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME ='%1'"_s.arg(name),
            u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME = '%1'"_s.arg(name),
            u"DELETE FROM TW_TBLPRV WHERE DATABASE_NAME = '%1'"_s.arg(name)};
}

inline const QStringList shownDepot{u"DEPOT"_s,  u"Depot"_s, u"FLAT"_s,   u"stock:[here]"_s,
                                    u"UID_ME"_s, u"SETUP"_s, u"old one"_s};

/// Besides the usual catalog: database DEPOT, in which every property is set, with the table SHELF of no columns.
template <class Fixture>
class WithDepot : public Fixture
{
protected:
    void SetUp() override
    {
        Fixture::SetUp();
        this->change(u"INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, "
                     "CONNECT_STRING, REMARKS, DISPLAY_NAME) "
                     "VALUES ('DEPOT', 'stock:[here]', 'FLAT', 'SETUP', 'UID_ME', 'old one', 'Depot')"_s);
        this->change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION) "
                     "VALUES ('DEPOT', 'SHELF', 'TABLE', 'EMPTY', 'shelf.dat')"_s);
    }

    /// All databases but the catalog's own.
    QStringList databases() const
    {
        return this->stored(u"SELECT DATABASE_NAME, DISPLAY_NAME, DRIVER_NAME, DEFAULT_DIRECTORY, CONNECT_STRING, "
                            "SETUP_PROCEDURE, REMARKS FROM TW_DB WHERE DATABASE_NAME <> 'TW' "
                            "ORDER BY DATABASE_NAME"_s);
    }
    QStringList nodes() const { return this->children(this->key({u"DB"_s})); }
};

/// The pane of a database, with a user in front of it.
class DatabasePane : public WithDepot<ItemTest>
{
protected:
    static QStringList database(const QString& name) { return {u"DB"_s, "db="_L1 + name}; }

    /// Begins to add a database while the others show.
    void beginToAdd()
    {
        begin(database(u"SALES"_s));
        choose(key({u"DB"_s}), u"mnu_DBAdd"_s);
    }

    /// Fills a new database in as far as it must be.
    void fillIn(const QString& name)
    {
        write(u"DATABASE_NAME"_s, name);
        pick(u"DRIVER_NAME"_s, u"FLAT"_s);
    }

    /// Presses "OK" and expects a message of validation.
    void expectRefused(const QString& message, const QString& column)
    {
        boxes.expectInform(message);
        press(u"OK"_s);
        boxes.verify();
        EXPECT_EQ(focus(), column);
    }

    QStringList items(const QString& column) const
    {
        QStringList all;
        for (int i = 0; i < list(column).count(); ++i)
            all.append(list(column).itemText(i));
        return all;
    }
};

} // namespace databasepane
