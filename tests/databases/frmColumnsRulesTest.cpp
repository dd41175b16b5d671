#include "frmColumns.h"

#include "CellGrid.h"
#include "ColumnGridFixture.h"

#include <QTest>

using namespace columngrid;

namespace
{

class ColumnRules : public ColumnGrid
{
protected:
    /// Leaves the row and expects a message that gives a cell back with what has been typed.
    void expectRefused(const QString& message, int row, const QString& heading)
    {
        SCOPED_TRACE(message.toStdString());
        boxes.expectInform(message);
        leave();
        boxes.verify();
        EXPECT_EQ(current(), QString::number(row) + ' '_L1 + heading);
        ASSERT_NE(editor(), nullptr);
        EXPECT_EQ(editorText(), cell(row, heading));
    }

    /// Replaces what stands in the editor.
    void retype(const QString& text)
    {
        hit(Qt::Key_A, Qt::ControlModifier);
        hit(Qt::Key_Delete);
        write(text);
    }

    void expectUntouched()
    {
        EXPECT_EQ(statements.writes(), QStringList());
        EXPECT_EQ(storedColumns(), (QStringList{articleStored, priceStored}));
    }
};

QString outOfRange(const QString& what, int minimum, int maximum)
{
    return u"%1 is out of range.\nPlease enter a value between %2 and %3."_s.arg(what).arg(minimum).arg(maximum);
}

} // namespace

TEST_F(ColumnRules, AColumnNumberGoesFromOneTo32767)
{
    openColumns();
    for (const char* number : {"", "0", "-1", "32768", "99999999999"}) {
        SCOPED_TRACE(number);
        change(1, u"Column Number"_s, QLatin1String(number));
        expectRefused(outOfRange(u"Column Number"_s, 1, 32767), 1, u"Column Number"_s);
        EXPECT_EQ(sent(), QStringList());
    }
    expectUntouched();
    retype(u"32767"_s);
    leave();
    EXPECT_EQ(storedColumns().last().section('|'_L1, 0, 1), u"32767|PRICE"_s);
}

TEST_F(ColumnRules, APastedNumberMustBeANumber)
{
    openColumns();
    click(1, u"Column Number"_s);
    hit(Qt::Key_Delete);
    paste(u"3 --"_s);
    expectRefused(outOfRange(u"Column Number"_s, 1, 32767), 1, u"Column Number"_s);
    expectUntouched();
}

TEST_F(ColumnRules, AColumnNumberThatIsTakenIsRefused)
{
    openColumns();
    change(1, u"Column Number"_s, u"1"_s);
    expectRefused(u"This Table already contains a column with a \nColumn Number of 1"_s, 1, u"Column Number"_s);
    EXPECT_EQ(sent(), QStringList{numberIsTaken(u"1"_s)});
    expectUntouched();
    // The row's own number, written otherwise, is not taken.
    retype(u"02"_s);
    leave();
    EXPECT_EQ(storedColumns().last().section('|'_L1, 0, 1), u"2|PRICE"_s);
}

TEST_F(ColumnRules, AColumnNameIsNeeded)
{
    openColumns();
    change(1, u"Column Name"_s, {});
    expectRefused(u"Column Name cannot be blank"_s, 1, u"Column Name"_s);
    EXPECT_EQ(sent(), QStringList());
    expectUntouched();
}

TEST_F(ColumnRules, AColumnNameThatIsTakenIsRefused)
{
    addSpecialColumn();
    openColumns();
    change(1, u"Column Name"_s, u"article"_s);
    expectRefused(u"This Table already contains a Column called 'ARTICLE'"_s, 1, u"Column Name"_s);
    EXPECT_EQ(sent(), QStringList{nameIsTaken(u"ARTICLE"_s)});
    // That of a special column is, too.
    retype(u"rfa"_s);
    expectRefused(u"This Table already contains a Column called 'RFA'"_s, 1, u"Column Name"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(ColumnRules, TheNamesOfSpecialColumnsAreReserved)
{
    openColumns();
    change(1, u"Column Name"_s, u"x"_s);
    hit(Qt::Key_Return);
    for (const char* name : {"RFA", "INDEX_NUMBER", "INDEX_NAME", "INDEX_COLUMNS", "TABLE_ORDER", "ROWID",
                             "RELATIVE_NUMBER", "RELATIVE_INDEX"}) {
        SCOPED_TRACE(name);
        change(1, u"Column Name"_s, QLatin1String(name));
        expectRefused(u"That is a reserved Column Name"_s, 1, u"Column Name"_s);
    }
    expectUntouched();
    // A part of one is not, nor is one in small letters.
    retype(u"INDEX"_s);
    leave();
    EXPECT_EQ(storedColumns().last().section('|'_L1, 0, 1), u"2|INDEX"_s);
    click(1, u"Column Name"_s);
    hit(Qt::Key_Delete);
    paste(u"rfa"_s);
    leave();
    EXPECT_EQ(storedColumns().last().section('|'_L1, 0, 1), u"2|rfa"_s);
}

TEST_F(ColumnRules, ADisplayNameIsTheNameInAnyCase)
{
    openColumns();
    change(1, u"Display Name"_s, u"Prize"_s);
    expectRefused(u"The Display Name (if used) MUST exactly match the Column Name (exclusive of case)."_s, 1,
                  u"Display Name"_s);
    expectUntouched();
    retype(u"pRiCe"_s);
    leave();
    EXPECT_EQ(storedColumns().last().section('|'_L1, 0, 2), u"2|PRICE|pRiCe"_s);
}

TEST_F(ColumnRules, AFieldIsNeeded)
{
    openColumns();
    change(1, u"Field Name"_s, {});
    expectRefused(u"Please select a Field Name from the dropdown list."_s, 1, u"Field Name"_s);
    EXPECT_EQ(sent(), QStringList());
    expectUntouched();
}

TEST_F(ColumnRules, AFieldThatAnotherColumnMapsToIsRefused)
{
    openColumns();
    change(1, u"Field Name"_s, u"ARTICLE"_s);
    expectRefused(u"The Field 'ARTICLE' is already used\nby Column 'ARTICLE' in this Table."_s, 1, u"Field Name"_s);
    EXPECT_EQ(sent(), QStringList{fieldIsTaken(u"ARTICLE"_s)});
    expectUntouched();
    // One of another table may.
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
           "VALUES ('SALES', 'ORDERS', 3, 'LEFT', 'LEFT')"_s);
    retype(u"LEFT"_s);
    leave();
    EXPECT_EQ(storedColumns().last().section('|'_L1, 0, 3), u"2|PRICE||LEFT"_s);
}

TEST_F(ColumnRules, AFieldThatIsGoneIsKept)
{
    change(u"DELETE FROM TW_FIELD WHERE FIELD_NAME = 'PRICE'"_s);
    openColumns();
    click(1, u"Field Name"_s);
    hit(Qt::Key_Return);
    EXPECT_EQ(editorText(), u"PRICE"_s);
    change(1, u"Remarks"_s, u"x"_s);
    leave();
    EXPECT_EQ(storedColumns().last(), u"2|PRICE||PRICE|INTEGER|4|10|2|0|1|0|1|1|1|0|0|10|1|0|x|0"_s);
}

TEST_F(ColumnRules, ATypeThatTheConnectionKnowsIsNeeded)
{
    openColumns();
    for (const char* type : {"", "GONE", "integer"}) {
        SCOPED_TRACE(type);
        change(u"UPDATE TW_COLUMN SET SQL_TYPE_NAME = '%1' WHERE COLUMN_NAME = 'PRICE'"_s.arg(QLatin1String(type)));
        reopen(level);
        change(1, u"Remarks"_s, u"x"_s);
        expectRefused(u"Please select an SQL Type Name from the dropdown list."_s, 1, u"Sql Type Name"_s);
        EXPECT_EQ(sent(), QStringList());
    }
    retype(u"DATE"_s);
    leave();
    EXPECT_EQ(storedColumns().last(), u"2|PRICE||PRICE|DATE|6|10|2|1|0|0|1|0|0|0|2|0|1|0|x|0"_s);
}

TEST_F(ColumnRules, TheTypeLimitsLengthAndPrecision)
{
    change(u"UPDATE TW_SQLDT SET LENGTH = 40, PRECISION = 50 WHERE SQL_TYPE_NAME = 'VARCHAR'"_s);
    openColumns();
    for (const char* length : {"", "-1", "41"}) {
        SCOPED_TRACE(length);
        click(0, u"Length"_s);
        hit(Qt::Key_Delete);
        paste(QLatin1String(length));
        expectRefused(outOfRange(u"Length"_s, 0, 40), 0, u"Length"_s);
    }
    retype(u"40"_s);
    for (const char* precision : {"", "-1", "51"}) {
        SCOPED_TRACE(precision);
        click(0, u"Precision"_s);
        hit(Qt::Key_Delete);
        paste(QLatin1String(precision));
        expectRefused(outOfRange(u"Precision"_s, 0, 50), 0, u"Precision"_s);
    }
    expectUntouched();
    retype(u"50"_s);
    leave();
    EXPECT_EQ(storedColumns().first().section('|'_L1, 4, 6), u"VARCHAR|40|50"_s);
    change(0, u"Length"_s, u"0"_s);
    change(0, u"Precision"_s, u"0"_s);
    leave();
    EXPECT_EQ(storedColumns().first().section('|'_L1, 4, 6), u"VARCHAR|0|0"_s);
}

TEST_F(ColumnRules, NoLengthGoesBeyond32767)
{
    change(u"UPDATE TW_SQLDT SET LENGTH = 65535, PRECISION = 65535 WHERE SQL_TYPE_NAME = 'VARCHAR'"_s);
    openColumns();
    change(0, u"Length"_s, u"32768"_s);
    expectRefused(outOfRange(u"Length"_s, 0, 65535), 0, u"Length"_s);
    retype(u"32767"_s);
    change(0, u"Precision"_s, u"32768"_s);
    expectRefused(outOfRange(u"Precision"_s, 0, 65535), 0, u"Precision"_s);
    expectUntouched();
    retype(u"32767"_s);
    leave();
    EXPECT_EQ(storedColumns().first().section('|'_L1, 4, 6), u"VARCHAR|32767|32767"_s);
}

TEST_F(ColumnRules, ScaleRadixAndFileParameterGoFrom0To65535)
{
    openColumns();
    for (const auto& [heading, what] : {std::pair("Scale", "Scale"), std::pair("Radix", "Radix"),
                                        std::pair("Setfileparameter", "SetFileParameter")}) {
        SCOPED_TRACE(heading);
        const QString column = QLatin1String(heading);
        for (const char* text : {"", "-1", "65536"}) {
            change(0, column, QLatin1String(text));
            expectRefused(outOfRange(QLatin1String(what), 0, 65535), 0, column);
        }
        EXPECT_EQ(sent(), QStringList());
        retype(u"65535"_s);
        leave();
        EXPECT_EQ(cell(0, column), u"65535"_s);
        EXPECT_EQ(
            world.value(datasource, u"SELECT %1 FROM TW_COLUMN WHERE COLUMN_NAME = 'ARTICLE'"_s.arg(column.toUpper())),
            u"65535"_s);
        statements.clear();
    }
}

TEST_F(ColumnRules, ANegativeScaleOfThePaneIsRefused)
{
    change(u"UPDATE TW_COLUMN SET SCALE = -2 WHERE COLUMN_NAME = 'PRICE'"_s);
    openColumns();
    EXPECT_EQ(cell(1, u"Scale"_s), u"-2"_s);
    change(1, u"Remarks"_s, u"x"_s);
    expectRefused(outOfRange(u"Scale"_s, 0, 65535), 1, u"Scale"_s);
}

TEST_F(ColumnRules, ACellThatItsTypeContradictsCanBeMended)
{
    const struct {
        const char* column;
        const char* heading;
        QString message;
        const char* mended;
    } cases[] = {
        {"LENGTH", "Length", outOfRange(u"Length"_s, 0, 4), "4"},
        {"PRECISION", "Precision", outOfRange(u"Precision"_s, 0, 10), "10"},
        {"RADIX", "Radix", outOfRange(u"Radix"_s, 0, 65535), "10"},
    };
    openColumns();
    for (const auto& [column, heading, message, mended] : cases) {
        for (const char* value : {"NULL", "70000"}) {
            SCOPED_TRACE(message.toStdString());
            change(u"UPDATE TW_COLUMN SET %1 = %2, REMARKS = '' WHERE COLUMN_NAME = 'PRICE'"_s.arg(
                QLatin1String(column), QLatin1String(value)));
            reopen(level);
            change(1, u"Remarks"_s, u"x"_s);
            expectRefused(message, 1, QLatin1String(heading));
            retype(QLatin1String(mended));
            leave();
            EXPECT_EQ(storedColumns().last(), u"2|PRICE||PRICE|INTEGER|4|10|2|0|1|0|1|1|1|0|0|10|1|0|x|0"_s);
            // And then its type decides again.
            click(1, QLatin1String(heading));
            hit(Qt::Key_Return);
            EXPECT_EQ(editor(), nullptr);
        }
    }
}

TEST_F(ColumnRules, AllFaultsOfARowAreNamedOneAfterTheOther)
{
    change(u"UPDATE TW_SQLDT SET LENGTH = 40, PRECISION = 50 WHERE SQL_TYPE_NAME = 'VARCHAR'"_s);
    openColumns();
    for (const auto& [heading, fault] :
         {std::pair("Remarks", "x"), std::pair("Setfileparameter", "-1"), std::pair("Radix", "-1"),
          std::pair("Scale", "-1"), std::pair("Precision", "51"), std::pair("Length", "41"),
          std::pair("Sql Type Name", ""), std::pair("Field Name", ""), std::pair("Display Name", "y"),
          std::pair("Column Name", ""), std::pair("Column Number", "")})
        change(0, QLatin1String(heading), QLatin1String(fault));
    const struct {
        QString message;
        const char* heading;
        const char* next;
    } steps[] = {
        {outOfRange(u"Column Number"_s, 1, 32767), "Column Number", "2"},
        {u"This Table already contains a column with a \nColumn Number of 2"_s, "Column Number", "5"},
        {u"Column Name cannot be blank"_s, "Column Name", "price"},
        {u"This Table already contains a Column called 'PRICE'"_s, "Column Name", "rowid"},
        {u"That is a reserved Column Name"_s, "Column Name", "item"},
        {u"The Display Name (if used) MUST exactly match the Column Name (exclusive of case)."_s, "Display Name",
         "Item"},
        {u"Please select a Field Name from the dropdown list."_s, "Field Name", "PRICE"},
        {u"The Field 'PRICE' is already used\nby Column 'PRICE' in this Table."_s, "Field Name", "LEFT"},
        {u"Please select an SQL Type Name from the dropdown list."_s, "Sql Type Name", "VARCHAR"},
        {outOfRange(u"Length"_s, 0, 40), "Length", "40"},
        {outOfRange(u"Precision"_s, 0, 50), "Precision", "50"},
        {outOfRange(u"Scale"_s, 0, 65535), "Scale", "3"},
        {outOfRange(u"Radix"_s, 0, 65535), "Radix", "2"},
        {outOfRange(u"SetFileParameter"_s, 0, 65535), "Setfileparameter", "1"},
    };
    for (const auto& [message, heading, next] : steps) {
        expectRefused(message, 0, QLatin1String(heading));
        expectUntouched();
        retype(QLatin1String(next));
    }
    leave();
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(storedColumns(),
              (QStringList{priceStored, u"5|ITEM|Item|LEFT|VARCHAR|40|50|3|1|0|1|1|0|0|1|0|2|1|none|x|0"_s}));
}

TEST_F(ColumnRules, ANewRowNeedsItsNumberFirst)
{
    openColumns();
    change(blankRow(), u"Remarks"_s, u"x"_s);
    expectRefused(outOfRange(u"Column Number"_s, 1, 32767), 2, u"Column Number"_s);
    pressLookUp();
    EXPECT_EQ(editorText(), u"3"_s);
    expectRefused(u"Column Name cannot be blank"_s, 2, u"Column Name"_s);
    EXPECT_EQ(rows().size(), 3);
    expectUntouched();
}
