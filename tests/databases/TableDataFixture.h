#pragma once

#include "DialogHands.h"
#include "RoomFixture.h"

/// A table with records, and the two windows that show them.
namespace tabledata
{

using namespace Qt::StringLiterals;

inline const QString criteria = u"frmTableCriteria"_s;
inline const QString columns = u"lstColumns"_s;
inline const QString ok = u"cmdOK"_s;
inline const QString cancel = u"cmdCancel"_s;

/// The statement that reads the columns which can be chosen.
inline QString readColumns(const QString& table, const QString& database = u"SALES"_s)
{
    return u"SELECT COLUMN_NAME, SQL_TYPE_NAME FROM TW_COLUMN WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2' "
           "ORDER BY COLUMN_NAME"_s.arg(database, table);
}

/// Besides the usual catalog: the table ITEMS of SALES with a column of each kind of literal, and three records behind
/// it.
class WithRecords : public ItemTest
{
protected:
    void SetUp() override
    {
        ItemTest::SetUp();
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME) "
               "VALUES ('SALES', 'ITEMS', 'TABLE', 'PAYROLL'), ('SALES', 'NONE', 'TABLE', 'PAYROLL')"_s);
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, SQL_TYPE_NAME) VALUES "
               "('SALES', 'ITEMS', 1, 'SOLD', 'DATE'), ('SALES', 'ITEMS', 2, 'PRICE', 'INTEGER'), "
               "('SALES', 'ITEMS', 3, 'NOTE', 'LONGVARCHAR'), ('SALES', 'ITEMS', 4, 'MAKER', 'CHAR'), "
               "('SALES', 'ITEMS', 5, 'ARTICLE', 'VARCHAR')"_s);
        addRecords(u"SALES_ITEMS"_s);
    }

    void TearDown() override
    {
        ItemTest::TearDown();
        panes::remove(u"frmTableData"_s);
    }

    void addRecords(const QString& name) const
    {
        change(
            u"CREATE TABLE %1 (ARTICLE VARCHAR(20), PRICE INTEGER, SOLD DATE, MAKER CHAR(10), NOTE VARCHAR(99))"_s.arg(
                name));
        change(u"INSERT INTO %1 VALUES ('pen', 3, '1998-03-07', 'o''hara', 'red'), "
               "('ink', 12, '1998-03-08', 'smith', NULL), ('pad', 7, '1998-03-09', 'smith', 'A4')"_s.arg(name));
    }
};

/// One condition, as the user fills it in. What is empty is left alone.
inline void fillIn(DialogForm& form, int line, const QString& joint, const QString& column, const QString& comparison,
                   const QString& value)
{
    const auto control = [line](const QString& name) { return u"%1_%2"_s.arg(name).arg(line); };
    dialog::pick(form, control(u"cboAndOr"_s), joint);
    if (!column.isEmpty())
        dialog::pick(form, control(u"cboColumn"_s), column);
    if (!comparison.isEmpty())
        dialog::pick(form, control(u"cboCriteria"_s), comparison);
    if (!value.isEmpty())
        dialog::write(form, control(u"txtCriteria"_s), value);
}

} // namespace tabledata
