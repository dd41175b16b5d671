#pragma once

#include "DialogForm.h"
#include "DropDown.h"
#include "RoomFixture.h"

#include <QPlainTextEdit>
#include <QTest>

/// What the pane of a table sends and says.
namespace tablepane
{

using namespace Qt::StringLiterals;

inline const QStringList tableColumns{u"DATABASE_NAME"_s,  u"TABLE_NAME"_s, u"DISPLAY_NAME"_s,
                                      u"TABLE_TYPE"_s,     u"FILE_NAME"_s,  u"FILE_SPECIFICATION"_s,
                                      u"NUMBER_COLUMNS"_s, u"CRITERIA"_s,   u"REMARKS"_s};
/// The columns that are open to entry while a table is added or changed.
inline const QStringList openColumns{u"TABLE_NAME"_s,         u"DISPLAY_NAME"_s,   u"TABLE_TYPE"_s, u"FILE_NAME"_s,
                                     u"FILE_SPECIFICATION"_s, u"NUMBER_COLUMNS"_s, u"REMARKS"_s};
inline const QStringList nothing(9, QString(u""_s));
inline const QString describe = u"SELECT * FROM TW_TABLE "_s;
inline const QString systemFiles = u"('CNTRL','COLUMN','DB','DBPRV','DRIVER','FIELD','FILE','KEY','LOCDT','SQLDT',"
                                   "'TABLE','TBLPRV','USER')"_s;
inline const QString readFiles = u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME <> '' ORDER BY FILE_NAME ASC"_s;
inline const QString displayState = u": Up1 Table Add Table Edit Table Delete ViewData"_s;
inline const QString noName = u"Please give this Table a name."_s;
inline const QString otherDisplayName = u"The Display Name MUST match the Table Name (exclusive of case) or be Null."_s;
inline const QString noType = u"Please select a Table Type from the dropdown list"_s;
inline const QString noSpecification = u"Please enter a file specification for this Table."_s;
inline const QString noFile = u"Please select a file name from the drop down list."_s;
inline const QString outOfRange = u"Number of Columns is out of range.\nPlease enter a value between 0 and 32767."_s;
inline const QString mayDelete = u"Are you sure you want to delete this Table?"_s;

/// The condition that selects a table of SALES.
inline QString ofTable(const QString& name)
{
    return u"DATABASE_NAME = 'SALES' AND TABLE_NAME = '%1'"_s.arg(name);
}

inline QString readTable(const QString& name)
{
    return u"SELECT * FROM TW_TABLE WHERE "_s + ofTable(name) + ' '_L1;
}

inline QString nameIsTaken(const QString& name)
{
    return u"SELECT TABLE_NAME FROM TW_TABLE WHERE "_s + ofTable(name);
}

inline QString countColumns(const QString& name)
{
    return u"SELECT COUNT(*) AS COLUMN_COUNT FROM TW_COLUMN WHERE "_s + ofTable(name);
}

inline QString insertTable(const QString& name, const QString& rest)
{
    return u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
           "NUMBER_COLUMNS, CRITERIA, REMARKS, DISPLAY_NAME) VALUES ('SALES', '%1', %2)"_s.arg(name, rest);
}

inline QString updateTable(const QString& name, const QString& displayName, const QString& type, const QString& file,
                           const QString& specification, const QString& columns, const QString& criteria,
                           const QString& remarks)
{
    return u"UPDATE TW_TABLE SET DISPLAY_NAME = '%1', TABLE_TYPE = '%2', FILE_NAME = '%3', FILE_SPECIFICATION = '%4', "
           "NUMBER_COLUMNS = 0%5, CRITERIA = '%6', REMARKS = '%7' WHERE DATABASE_NAME = 'SALES' AND "
           "TABLE_NAME = '%8'"_s.arg(displayName, type, file, specification, columns, criteria, remarks, name);
}

inline QStringList deleteTable(const QString& name)
{
    return {u"DELETE FROM TW_TABLE WHERE DATABASE_NAME = 'SALES'  AND TABLE_NAME = '%1'"_s.arg(name),
            u"DELETE FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = '%1'"_s.arg(name),
            u"DELETE FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = '%1'"_s.arg(name)};
}

inline const QStringList shownItems{u"SALES"_s,     u"ITEMS"_s, u"Items"_s,       u"TABLE"_s,  u"EMPTY"_s,
                                    u"items.dat"_s, u"2"_s,     u"CODE <> 'x'"_s, u"old one"_s};
/// What an UPDATE or an INSERT says of the table ITEMS as it is.
inline const QString storedItems = u"ITEMS|Items|TABLE|EMPTY|items.dat|2|CODE <> 'x'|old one"_s;
inline const QString storedOrders = u"ORDERS||TABLE|PAYROLL||0||"_s;

/// Types another text into the builder of criteria, which must show the former one.
inline void typeCriteria(DialogForm& dialog, const QString& former, const QString& criteria)
{
    auto* text = dialog.findChild<QPlainTextEdit*>(u"txtCriteria"_s);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->toPlainText(), former);
    text->selectAll();
    QTest::keyClick(text, Qt::Key_Delete);
    for (const QChar character : criteria)
        character == '\n'_L1 ? QTest::keyClick(text, Qt::Key_Return) : QTest::keyClicks(text, character);
}

/// Besides the usual catalog: the table ITEMS of SALES, in which every property is set, with the column ARTICLE and
/// rights for CLERK.
template <class Fixture>
class WithItems : public Fixture
{
protected:
    void SetUp() override
    {
        Fixture::SetUp();
        this->change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
                     "NUMBER_COLUMNS, CRITERIA, REMARKS, DISPLAY_NAME) VALUES ('SALES', 'ITEMS', 'TABLE', 'EMPTY', "
                     "'items.dat', 2, 'CODE <> ''x''', 'old one', 'Items')"_s);
        this->change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
                     "VALUES ('SALES', 'ITEMS', 1, 'ARTICLE', 'CODE')"_s);
        this->change(u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT) "
                     "VALUES ('SALES', 'ITEMS', 'CLERK', 1)"_s);
    }

    static QStringList level() { return {u"DB"_s, u"db=SALES"_s, u"TA"_s}; }
    static QStringList table(const QString& name) { return level() + QStringList{"ta="_L1 + name}; }

    /// All tables of SALES.
    QStringList tables() const
    {
        return this->stored(u"SELECT TABLE_NAME, DISPLAY_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
                            "NUMBER_COLUMNS, CRITERIA, REMARKS FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' "
                            "ORDER BY TABLE_NAME"_s);
    }
    QStringList nodes() const { return this->children(this->key(level())); }
};

/// The pane of a table, with a user in front of it.
class TablePane : public WithItems<ItemTest>
{
protected:
    /// Begins to add a table while the others show.
    void beginToAdd()
    {
        begin(table(u"ORDERS"_s));
        choose(key(level()), u"mnu_TableAddNew"_s);
    }

    /// Fills a new table in as far as it must be.
    void fillIn(const QString& name)
    {
        write(u"TABLE_NAME"_s, name);
        pick(u"TABLE_TYPE"_s, u"TABLE"_s);
        pick(u"FILE_NAME"_s, u"EMPTY"_s);
        write(u"FILE_SPECIFICATION"_s, u"a.dat"_s);
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

} // namespace tablepane
