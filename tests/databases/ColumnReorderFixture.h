#pragma once

#include "DialogForm.h"
#include "DialogScript.h"
#include "RoomFixture.h"

#include <QListWidget>
#include <QTest>

/// What the dialog that orders a table's columns shows and sends.
namespace columnreorder
{

using namespace Qt::StringLiterals;

inline const QString dialogName = u"frmColumnReorder"_s;
inline const QString up = u"cmdUp"_s;
inline const QString down = u"cmdDown"_s;
inline const QString sort = u"chkSortAlpha"_s;
inline const QString ok = u"cmdOK"_s;
inline const QString cancel = u"cmdCancel"_s;
inline const QString complete = u"Column re-ordering complete"_s;

inline const QStringList columns{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ITEMS"_s, u"CO"_s};
inline const QString ofItems = u"DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ITEMS'"_s;
inline const QString byNumber =
    u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_s + ofItems + u" AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"_s;
inline const QString byName =
    u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_s + ofItems + u" AND COLUMN_TYPE = 0 ORDER BY COLUMN_NAME ASC"_s;
inline const QString readAll = u"SELECT COLUMN_NAME, COLUMN_NUMBER, COLUMN_TYPE, FIELD_NAME FROM TW_COLUMN WHERE "_s +
                               ofItems + u" ORDER BY COLUMN_NUMBER ASC"_s;

inline const QStringList asItWas{u"ARTICLE 3"_s, u"PRICE 7"_s, u"LEFT 20"_s};

class ColumnReorder : public ItemTest
{
protected:
    void SetUp() override
    {
        ItemTest::SetUp();
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, NUMBER_COLUMNS) "
               "VALUES ('SALES', 'ITEMS', 'TABLE', 'PAYROLL', 9), ('SALES', 'NONE', 'TABLE', 'PAYROLL', 0)"_s);
        change(u"INSERT INTO TW_COLUMN VALUES ('SALES', 'ITEMS', 3, 'ARTICLE', 'ITEM', 'VARCHAR', 10, 12, 1, 1, 0, 1, "
               "1, 0, 0, 1, 3, 0, 'no''ne', 'sold', 2, 0, 'Article')"_s);
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SCALE) "
               "VALUES ('SALES', 'ITEMS', 7, 'PRICE', 'PRICE', -2), ('SALES', 'ITEMS', 20, 'LEFT', 'LEFT', 0)"_s);
    }

    static QStringList nodeOf(const QString& table)
    {
        return {u"DB"_s, u"db=SALES"_s, u"TA"_s, "ta="_L1 + table, u"CO"_s};
    }

    static QListWidget& list(DialogForm& dialog) { return *dialog.findChild<QListWidget*>(u"lstColumn"_s); }

    static QStringList names(DialogForm& dialog)
    {
        QStringList all;
        for (int row = 0; row < list(dialog).count(); ++row)
            all.append(list(dialog).item(row)->text());
        return all;
    }

    static QString selected(DialogForm& dialog)
    {
        const auto items = list(dialog).selectedItems();
        return items.isEmpty() ? QString() : items.first()->text();
    }

    /// A real click on the row of a name.
    static void select(DialogForm& dialog, const QString& name)
    {
        const auto items = list(dialog).findItems(name, Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1);
        QTest::mouseClick(list(dialog).viewport(), Qt::LeftButton, {},
                          list(dialog).visualItemRect(items.first()).center());
    }

    /// Opens the dialog from the context menu of a table's columns.
    void reorder(const QStringList& node, DialogScript::Action action)
    {
        begin(node);
        dialogs.expect(dialogName, std::move(action));
        choose(key(node), u"mnu_ColumnReorder"_s);
        dialogs.verify();
        boxes.verify();
        EXPECT_FALSE(forms::loaded(dialogName));
    }

    void expectComplete() { boxes.expectInform(complete); }

    /// Each column of a table as "ARTICLE 3", by number.
    QStringList numbers(const QString& table = u"ITEMS"_s) const
    {
        QStringList lines;
        for (const QString& row : stored(u"SELECT COLUMN_NAME, COLUMN_NUMBER FROM TW_COLUMN WHERE TABLE_NAME = '%1' "
                                         "ORDER BY COLUMN_NUMBER, COLUMN_NAME"_s.arg(table)))
            lines.append(QString(row).replace('|'_L1, ' '_L1));
        return lines;
    }
};

} // namespace columnreorder
