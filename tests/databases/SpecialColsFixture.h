#pragma once

#include "DropDown.h"
#include "RoomFixture.h"

#include <QCheckBox>
#include <QTest>

/// What the pane of a table's special columns shows and sends.
namespace specialcols
{

using namespace Qt::StringLiterals;

inline const QStringList table{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ITEMS"_s};
inline const QStringList special = table + QStringList{u"SCO"_s};
inline const QString ofItems = u"DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ITEMS'"_s;

inline const QString describe = u"SELECT * FROM TW_COLUMN "_s;
inline const QString readNames =
    u"SELECT COLUMN_NAME FROM TW_COLUMN WHERE "_s + ofItems + u" ORDER BY COLUMN_NAME ASC"_s;
inline const QString readRows = u"SELECT * FROM TW_COLUMN WHERE "_s + ofItems +
                                u" AND COLUMN_NUMBER = 1 AND COLUMN_TYPE > 0 ORDER BY COLUMN_TYPE"_s;
inline const QString readDriver = u"SELECT DRIVER_NAME FROM TW_DB WHERE DATABASE_NAME = 'SALES'"_s;
inline const QString readFile = u"SELECT FILE_NAME FROM TW_TABLE WHERE "_s + ofItems;
inline const QString readOrganisation = u"SELECT FILE_ORGANISATION FROM TW_FILE WHERE FILE_NAME = 'STOCK'"_s;

inline const QString atRest = u": Up1 Special Column Edit"_s;
inline const QString inEdit = u": Up1 OK Cancel"_s;

inline QString insertion(const QString& tail)
{
    return u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, LENGTH, PRECISION, "
           "DEFAULT_VALUE, UPDATABLE, COLUMN_NUMBER, COLUMN_TYPE, SQL_TYPE_NAME, VISIBLE, REMARKS) VALUES ('SALES', "
           "'ITEMS', "_s +
           tail;
}

inline QString deletion(int code)
{
    return u"DELETE FROM TW_COLUMN WHERE "_s + ofItems + u" AND COLUMN_NUMBER = 1 AND COLUMN_TYPE = %1"_s.arg(code);
}

inline QString updateIndex(const QString& column)
{
    return u"UPDATE TW_COLUMN SET REMARKS = '%1' WHERE "_s.arg(column) + ofItems +
           u" AND COLUMN_NUMBER = 1 AND COLUMN_TYPE = 8"_s;
}

/// The special columns of the table ITEMS, with a user in front of their pane.
class SpecialCols : public ItemTest
{
protected:
    void SetUp() override
    {
        ItemTest::SetUp();
        change(u"INSERT INTO TW_FILE (FILE_NAME, FILE_ORGANISATION) VALUES ('STOCK', 'INDEXED')"_s);
        change(u"UPDATE TW_DB SET DRIVER_NAME = 'VAX-RMS' WHERE DATABASE_NAME = 'SALES'"_s);
        change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION) "
               "VALUES ('SALES', 'ITEMS', 'TABLE', 'STOCK', 'stock.dat')"_s);
        addColumn(u"PRICE"_s, 1, 0);
        addColumn(u"ARTICLE"_s, 2, 0);
    }

    void addColumn(const QString& name, int number, int type, const QString& remarks = {}) const
    {
        change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
               "COLUMN_TYPE, REMARKS) VALUES ('SALES', 'ITEMS', %1, '%2', '%2', %3, '%4')"_s.arg(number)
                   .arg(name)
                   .arg(type)
                   .arg(remarks));
    }

    void openSpecial() { open(special); }
    void openToEdit()
    {
        openSpecial();
        press(u"Special Column Edit"_s);
        statements.clear();
    }

    QCheckBox& box(int code) const { return dynamic_cast<QCheckBox&>(control(u"chkActive_%1"_s.arg(code))); }
    void toggle(int code) { clickButton(u"chkActive_%1"_s.arg(code)); }
    /// The codes of the boxes that are ticked, as "1 8".
    QString ticked() const
    {
        return codesThat([this](int code) { return box(code).isChecked(); });
    }
    QString enabled() const
    {
        return codesThat([this](int code) { return box(code).isEnabled(); });
    }

    DropDown& indexed() const { return dynamic_cast<DropDown&>(control(u"cboRIColumn"_s)); }
    QStringList offered() const
    {
        QStringList names;
        for (int i = 0; i < indexed().count(); ++i)
            names.append(indexed().itemText(i));
        return names;
    }
    /// Chooses from the list of columns with the keys.
    void choose(const QString& column)
    {
        ASSERT_TRUE(indexed().isVisible() && indexed().isEnabled());
        indexed().setFocus();
        const int wanted = indexed().findText(column);
        ASSERT_GE(wanted, 0) << column.toStdString();
        while (indexed().currentIndex() != wanted)
            QTest::keyClick(&indexed(), indexed().currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
    }
    using ItemTest::choose;

    /// The table's rows in the order of their types.
    QStringList storedColumns() const
    {
        return stored(u"SELECT COLUMN_TYPE, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, PRECISION, "
                      "UPDATABLE, VISIBLE, DEFAULT_VALUE, REMARKS FROM TW_COLUMN WHERE "_s +
                      ofItems + u" ORDER BY COLUMN_TYPE, COLUMN_NUMBER"_s);
    }

    /// The types of the table's special columns.
    QString storedCodes() const
    {
        return stored(u"SELECT COLUMN_TYPE FROM TW_COLUMN WHERE "_s + ofItems +
                      u" AND COLUMN_TYPE > 0 ORDER BY COLUMN_TYPE"_s)
            .join(' '_L1);
    }

private:
    template <typename Condition>
    static QString codesThat(Condition holds)
    {
        QStringList all;
        for (int code = 1; code <= 8; ++code) {
            if (holds(code))
                all.append(QString::number(code));
        }
        return all.join(' '_L1);
    }
};

} // namespace specialcols
