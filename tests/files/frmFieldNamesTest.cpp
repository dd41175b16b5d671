#include "FieldPaneFixture.h"

#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace fieldpane;

namespace
{

/// The fields of a file whose name holds an apostrophe.
class FieldsOfOHara : public FieldPane
{
protected:
    void SetUp() override
    {
        FieldPane::SetUp();
        addFile(u"O'HARA"_s, 12);
        for (const char* values : {"1, 'KEPT', 'STRING', 0, 8", "2, 'GONE', 'STRING', 8, 4"})
            change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, "
                   "PRECISION, SCALE, ENCRYPTED) VALUES ('O''HARA', %1, 4, 0, 0)"_s.arg(QLatin1String(values)));
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('SALES', 'IRISH', 'O''HARA')"_s);
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, LENGTH) "
               "VALUES ('SALES', 'IRISH', 1, 'NAME', 'KEPT', 8)"_s);
    }

    static QStringList of(const QString& name) { return collection(u"O'HARA"_s) + QStringList{"fd="_L1 + name}; }
    static QString row(const QString& name)
    {
        return u"FROM TW_FIELD WHERE FILE_NAME = 'O''HARA' AND FIELD_NAME = '%1'"_s.arg(name);
    }
    static QString update(const QString& name, const QString& number, const QString& length)
    {
        return u"UPDATE TW_FIELD SET FIELD_NUMBER = 0%1, LOCAL_TYPE_NAME = 'STRING', LENGTH = 0%2, PRECISION = 04, "
               "SCALE = 00, ENCRYPTED = 00, FORMAT = '', DEFAULT_VALUE = '', REMARKS = '' WHERE FILE_NAME = 'O''HARA' "
               "AND FIELD_NAME = '%3'"_s.arg(number, length, name);
    }
};

/// Three tables map the file STOCK: in the order in which they are read, the second of them has a column for FLAGS, and
/// so has the third.
class FieldInThreeTables : public FieldPane
{
protected:
    void SetUp() override
    {
        FieldPane::SetUp();
        for (const char* table : {"BEFORE", "LATER"})
            change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('SALES', '%1', 'STOCK')"_s.arg(
                QLatin1String(table)));
        for (const QString& table : distinct().sliced(1))
            change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, LENGTH) "
                   "VALUES ('SALES', '%1', 7, 'OF_%1', 'FLAGS', 4)"_s.arg(table));
    }

    QStringList distinct() const
    {
        return stored(u"SELECT DISTINCT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = 'STOCK'"_s);
    }
    static QString look(const QString& table)
    {
        return u"SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME FROM TW_COLUMN WHERE TABLE_NAME = '%1' "
               "AND FIELD_NAME = 'FLAGS'"_s.arg(table);
    }
};

} // namespace

// A file with an apostrophe ------------------------------------------------------------------------------------------

TEST_F(FieldsOfOHara, TheNextNumberAndOffsetAreThoseOfTheFile)
{
    begin(of(u"KEPT"_s));
    choose(key(collection(u"O'HARA"_s)), u"mnu_FieldAddNew"_s);
    EXPECT_EQ(
        statements.statements(),
        (QStringList{describe,
                     u"SELECT FIELD_NUMBER FROM TW_FIELD WHERE FILE_NAME = 'O''HARA' ORDER BY FIELD_NUMBER DESC"_s,
                     u"SELECT SUM(LENGTH) AS NextOffset FROM TW_FIELD WHERE FILE_NAME = 'O''HARA' "
                     "AND FIELD_NUMBER < 03"_s}));
    EXPECT_EQ(paneTitle(), u"Add New Field to O'HARA"_s);
    EXPECT_EQ(texts({u"FILE_NAME"_s, u"FIELD_NUMBER"_s, u"OFFSET"_s}), (QStringList{u"O'HARA"_s, u"3"_s, u"12"_s}));
}

TEST_F(FieldsOfOHara, AnotherNumberIsTheDriversToRefuse)
{
    begin(of(u"KEPT"_s));
    choose(key(collection(u"O'HARA"_s)), u"mnu_FieldAddNew"_s);
    fillIn(u"new"_s, u"STRING"_s);
    const QStringList before = wholeCatalog();
    statements.clear();
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{u"SELECT FIELD_NAME "_s + row(u"NEW"_s),
                           u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'O'HARA' AND FIELD_NUMBER = 3"_s}));
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmField.ValidateFields"_s);
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(state(), u"Field Add: Up1 OK Cancel Undo"_s);
}

TEST_F(FieldsOfOHara, ARenameIsCarriedToTheColumns)
{
    open(of(u"KEPT"_s));
    EXPECT_EQ(statements.statements(), (QStringList{describe, u"SELECT * "_s + row(u"KEPT"_s) + ' '_L1}));
    EXPECT_EQ(paneTitle(), u"O'HARA.KEPT - Edit Field Properties"_s);
    statements.clear();
    write(u"FIELD_NAME"_s, u"held"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{u"SELECT FIELD_NAME "_s + row(u"HELD"_s), u"SELECT * "_s + row(u"KEPT"_s),
                           u"DELETE "_s + row(u"KEPT"_s),
                           u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, "
                           "LENGTH, PRECISION, SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) VALUES ('O''HARA', "
                           "01, 'HELD', 'STRING', 00, 08, 04, 00, 00, '', '', '')"_s,
                           u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME='O''HARA'"_s,
                           u"UPDATE TW_COLUMN SET FIELD_NAME = 'HELD' WHERE FIELD_NAME = 'KEPT' "
                           "AND TABLE_NAME = 'IRISH'"_s,
                           update(u"HELD"_s, u"1"_s, u"8"_s), u"SELECT * "_s + row(u"HELD"_s) + ' '_L1}));
    EXPECT_EQ(selectedKey(), key(of(u"HELD"_s)));
    EXPECT_EQ(children(key(collection(u"O'HARA"_s))), (QStringList{u"GONE"_s, u"HELD"_s}));
    EXPECT_EQ(fieldsOf(u"O'HARA"_s), (QStringList{u"HELD 1 0"_s, u"GONE 2 8"_s}));
}

TEST_F(FieldsOfOHara, TheColumnsDontFollowAChangedLength)
{
    open(of(u"KEPT"_s));
    statements.clear();
    write(u"LENGTH"_s, u"6"_s);
    boxes.expectAsk(columnsToo, boxes::Answer::Yes);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements(), (QStringList{update(u"KEPT"_s, u"1"_s, u"6"_s),
                                                    u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = 'O'HARA'"_s}));
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmField.tbr_ButtonClick"_s);
    EXPECT_EQ(stored(u"SELECT LENGTH "_s + row(u"KEPT"_s)), QStringList{u"6"_s});
    EXPECT_EQ(stored(u"SELECT LENGTH FROM TW_COLUMN WHERE TABLE_NAME = 'IRISH'"_s), QStringList{u"8"_s});
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel Undo"_s);
}

TEST_F(FieldsOfOHara, ADeleteLooksForItsColumnsAndRemovesItsNode)
{
    begin(of(u"GONE"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    choose(key(of(u"GONE"_s)), u"mnu_FieldDelete"_s);
    EXPECT_EQ(statements.statements(),
              (QStringList{describe, u"SELECT * "_s + row(u"GONE"_s) + ' '_L1,
                           u"SELECT DISTINCT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME = 'O''HARA'"_s,
                           u"SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'IRISH' "
                           "AND FIELD_NAME = 'GONE'"_s,
                           u"DELETE "_s + row(u"GONE"_s)}));
    EXPECT_EQ(fieldsOf(u"O'HARA"_s), QStringList{u"KEPT 1 0"_s});
    EXPECT_EQ(children(key(collection(u"O'HARA"_s))), QStringList{u"KEPT"_s});
    EXPECT_EQ(takeShown(), QStringList{"frmFields "_L1 + datasource + "/O'HARA"_L1});
}

TEST_F(FieldsOfOHara, UndoOfAChangeIsTheDriversToRefuse)
{
    open(of(u"KEPT"_s));
    write(u"REMARKS"_s, u"x"_s);
    statements.clear();
    errors.expect(Press::Ignore);
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(),
              QStringList{u"SELECT * FROM TW_FIELD WHERE FILENAME = 'O''HARA' AND FIELD_NAME = 'KEPT'"_s});
    EXPECT_EQ(text(u"REMARKS"_s), u"x"_s);
}

// A file that several tables map -------------------------------------------------------------------------------------

TEST_F(FieldInThreeTables, ADeleteStopsLookingAtTheFirstTableThatUsesTheField)
{
    const QStringList tables = distinct();
    ASSERT_EQ(tables.size(), 3);
    const QString isUsedThere = u"This Field is used by Column 'OF_%1' in Database 'SALES', Table '%1'\n"
                                "Are you sure you want to delete it?"_s.arg(tables.at(1));
    begin(field(u"FLAGS"_s));
    const QStringList before = wholeCatalog();
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    boxes.expectAsk(isUsedThere, boxes::Answer::No);
    choose(key(field(u"FLAGS"_s)), u"mnu_FieldDelete"_s);
    boxes.verify();
    EXPECT_EQ(statements.statements().sliced(3), (QStringList{look(tables.at(0)), look(tables.at(1))}));
    EXPECT_EQ(wholeCatalog(), before);

    statements.clear();
    boxes.expectAsk(isUsedThere, boxes::Answer::Yes);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().sliced(1),
              (QStringList{look(tables.at(0)), look(tables.at(1)), deleteField(u"FLAGS"_s)}));
    EXPECT_EQ(wholeCatalog().filter(u"TW_COLUMN"_s), before.filter(u"TW_COLUMN"_s));
}

TEST_F(FieldInThreeTables, AChangedLengthGoesToEachOfThem)
{
    const QStringList tables = stored(tablesOfStock);
    ASSERT_EQ(tables.size(), 3);
    open(field(u"FLAGS"_s));
    statements.clear();
    write(u"LENGTH"_s, u"6"_s);
    boxes.expectAsk(columnsToo, boxes::Answer::Yes);
    boxes.expectInform(u"Columns lengths updated"_s);
    press(u"OK"_s);
    QStringList updates;
    for (const QString& table : tables)
        updates.append(
            u"UPDATE TW_COLUMN SET LENGTH = 6 WHERE TABLE_NAME = '%1' AND FIELD_NAME = 'FLAGS'"_s.arg(table));
    EXPECT_EQ(statements.writes().sliced(1), updates);
    EXPECT_EQ(stored(u"SELECT LENGTH FROM TW_COLUMN WHERE FIELD_NAME = 'FLAGS'"_s), (QStringList{u"6"_s, u"6"_s}));
}

TEST_F(FieldInThreeTables, ATableWithAnApostropheKeepsTheLengthsOfItsColumns)
{
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('SALES', 'IT''S', 'STOCK')"_s);
    open(field(u"FLAGS"_s));
    statements.clear();
    write(u"LENGTH"_s, u"6"_s);
    boxes.expectAsk(columnsToo, boxes::Answer::Yes);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().back(),
              u"UPDATE TW_COLUMN SET LENGTH = 6 WHERE TABLE_NAME = 'IT'S' AND FIELD_NAME = 'FLAGS'"_s);
    EXPECT_EQ(stored(u"SELECT LENGTH "
                     "FROM TW_FIELD WHERE FIELD_NAME = 'FLAGS'"_s),
              QStringList{u"6"_s});
    EXPECT_EQ(state(), u"Field Edit: Up1 OK Cancel Undo"_s);
}
