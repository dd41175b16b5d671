#include "CellGrid.h"
#include "DropDown.h"
#include "RoomFixture.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace
{

const QStringList files{u"FI"_s};
const QStringList fields{u"FI"_s, u"fi=CUSTOMER"_s, u"FD"_s};
const QStringList databases{u"DB"_s};
const QStringList tables{u"DB"_s, u"db=SHOP"_s, u"TA"_s};
const QStringList table = tables + QStringList{u"ta=CUSTOMERS"_s};
const QStringList columns = table + QStringList{u"CO"_s};

/// A user who describes a file and shows it as a table, in panes and in grids, by mouse and keys alone.
class FromEmptyCatalog : public ItemTest
{
protected:
    CellGrid& grid() const { return dynamic_cast<CellGrid&>(control(u"grd"_s)); }

    /// What keys go to. A desktop gives the window its focus back when a list has closed; off-screen nobody does.
    QWidget* focused() const
    {
        QWidget* widget = QApplication::focusWidget();
        return widget && window->isAncestorOf(widget) ? widget : window->focusWidget();
    }
    void key(Qt::Key which) { QTest::keyClick(focused(), which); }
    using ItemTest::key;

    /// Clicks the cell below a heading in the blank row.
    void clickCell(const QString& heading)
    {
        int column = 0;
        while (grid().Heading(column) != heading)
            ++column;
        const QModelIndex cell = grid().model()->index(grid().Rows() - 1, column);
        grid().scrollTo(cell);
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(cell).center());
    }

    /// Types into a cell of the blank row, over whatever it holds.
    void enter(const QString& heading, const QString& text)
    {
        clickCell(heading);
        key(Qt::Key_Delete);
        for (const QChar character : text)
            QTest::keyClicks(focused(), character);
        key(Qt::Key_Return);
    }

    /// Takes what the button beside a cell of the blank row proposes.
    void lookUp(const QString& heading)
    {
        clickCell(heading);
        key(Qt::Key_Return);
        auto* button = grid().findChild<QToolButton*>(u"cmd"_s);
        ASSERT_TRUE(button && button->isVisible());
        QTest::mouseClick(button, Qt::LeftButton);
        key(Qt::Key_Return);
    }

    /// Clicks beside the rows, which writes the one that was typed.
    void leaveRow()
    {
        const int before = grid().Rows();
        const QRect last = grid().visualRect(grid().model()->index(before - 1, grid().Col()));
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, last.center() + QPoint(0, 2 * last.height()));
        EXPECT_EQ(grid().Rows(), before + 1);
    }

    /// Pulls the list of a column down and chooses from it.
    void choose(const QString& column, const QString& item)
    {
        SCOPED_TRACE((column + ' '_L1 + item).toStdString());
        DropDown& found = list(column);
        ASSERT_TRUE(found.isVisible() && found.isEnabled());
        const int wanted = found.findText(item);
        ASSERT_GE(wanted, 0);
        QTest::mouseClick(&found, Qt::LeftButton);
        QAbstractItemView* view = found.view();
        ASSERT_TRUE(view->isVisible());
        QTest::keyClick(view, Qt::Key_Home);
        while (view->currentIndex().row() < wanted)
            QTest::keyClick(view, Qt::Key_Down);
        QTest::keyClick(view, Qt::Key_Return);
        ASSERT_EQ(found.currentText(), item);
    }

    /// A command of a node's menu.
    void run(const QStringList& node, const QString& menuItem)
    {
        expandTo(key(node.first(node.size() - 1)));
        ItemTest::choose(key(node), menuItem);
    }

    void show(const QStringList& node)
    {
        expandTo(key(node.first(node.size() - 1)));
        click(key(node));
    }

    void clearCatalog()
    {
        boxes.expectAsk(u"WARNING - You are about to remove ALL the catalog definitions for Datasource '%1'.\n"
                        "Are you sure you wish to completely clear the calaog?"_s.arg(datasource),
                        boxes::Answer::Yes);
        boxes.expectInform(u"The catalog has been cleared."_s);
        ItemTest::choose(key(), u"mnu_DSNClear"_s);
        boxes.verify();
    }

    void addFile()
    {
        run(files, u"mnu_FileAdd"_s);
        write(u"FILE_NAME"_s, u"customer"_s);
        choose(u"FILE_ORGANISATION"_s, u"INDEXED"_s);
        choose(u"RECORD_TYPE"_s, u"FIXED"_s);
        write(u"REMARKS"_s, u"Who buys, by number"_s);
        press(u"OK"_s);
        press(u"Cancel"_s);
    }

    /// A field in the pane, which proposes the number and the offset.
    void addField(const QString& name, const QString& type, const QString& length = {}, const QString& scale = {})
    {
        write(u"FIELD_NAME"_s, name);
        choose(u"LOCAL_TYPE_NAME"_s, type);
        if (!length.isEmpty())
            write(u"LENGTH"_s, length);
        // Packed digits follow the length by themselves.
        if (!length.isEmpty() && type == "STRING"_L1)
            write(u"PRECISION"_s, length);
        if (!scale.isEmpty())
            write(u"SCALE"_s, scale);
        press(u"OK"_s);
    }

    /// A field in the grid.
    void addFieldRow(const QString& name, const QString& type, const QString& length = {}, const QString& scale = {})
    {
        enter(u"Field Name"_s, name);
        lookUp(u"Field Number"_s);
        lookUp(u"Offset"_s);
        enter(u"Local Type Name"_s, type);
        if (!length.isEmpty()) {
            enter(u"Length"_s, length);
            enter(u"Precision"_s, length);
        }
        if (!scale.isEmpty())
            enter(u"Scale"_s, scale);
        leaveRow();
    }

    /// A column in the pane, which fills its number in by itself.
    void addColumn(const QString& field, const QString& name, const QString& type, const QString& length = {})
    {
        choose(u"FIELD_NAME"_s, field);
        write(u"COLUMN_NAME"_s, name);
        choose(u"SQL_TYPE_NAME"_s, type);
        if (!length.isEmpty()) {
            write(u"LENGTH"_s, length);
            write(u"PRECISION"_s, length);
            choose(u"SEARCHABLE"_s, u"Searchable"_s);
            clickButton(u"chkProperty_NULLABLE"_s);
        }
    }

    /// A column in the grid.
    void addColumnRow(const QString& field, const QString& name, const QString& type, const QString& length = {},
                      const QString& scale = {})
    {
        lookUp(u"Column Number"_s);
        enter(u"Column Name"_s, name);
        enter(u"Field Name"_s, field);
        enter(u"Sql Type Name"_s, type);
        if (!length.isEmpty()) {
            enter(u"Length"_s, length);
            enter(u"Precision"_s, length);
            enter(u"Radix"_s, u"0"_s);
        }
        if (!scale.isEmpty())
            enter(u"Scale"_s, scale);
        leaveRow();
    }
};

} // namespace

TEST_F(FromEmptyCatalog, AFileOfTenFieldsIsShownAsATableOfTenColumns)
{
    begin({u"FI"_s});
    clearCatalog();
    QStringList expected = wholeCatalog();
    EXPECT_EQ(stored(u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s), QStringList());

    addFile();
    run(fields, u"mnu_FieldAddNew"_s);
    addField(u"cust_no"_s, u"INTEGER-4"_s);
    addField(u"name"_s, u"STRING"_s, u"30"_s);
    addField(u"street"_s, u"STRING"_s, u"30"_s);
    addField(u"city"_s, u"STRING"_s, u"20"_s);
    addField(u"balance"_s, u"PACKED"_s, u"5"_s, u"2"_s);
    press(u"Cancel"_s);
    ASSERT_EQ(currentPane(), u"frmFields"_s);
    addFieldRow(u"credit"_s, u"packed"_s, {}, u"2"_s);
    addFieldRow(u"since"_s, u"date"_s);
    addFieldRow(u"region"_s, u"string"_s, u"6"_s);
    addFieldRow(u"orders"_s, u"integer-2"_s);
    addFieldRow(u"active"_s, u"boolean"_s);
    show({u"FI"_s, u"fi=CUSTOMER"_s});
    clickButton(u"cmdCalcRecordSize"_s);
    press(u"OK"_s);

    show(databases);
    enter(u"Database Name"_s, u"shop"_s);
    enter(u"Display Name"_s, u"Shop"_s);
    enter(u"Driver Name"_s, u"vax"_s);
    enter(u"Default Directory"_s, u"SYS$DATA:"_s);
    leaveRow();

    run(tables, u"mnu_TableAddNew"_s);
    write(u"TABLE_NAME"_s, u"customers"_s);
    write(u"DISPLAY_NAME"_s, u"Customers"_s);
    choose(u"TABLE_TYPE"_s, u"TABLE"_s);
    choose(u"FILE_NAME"_s, u"CUSTOMER"_s);
    write(u"FILE_SPECIFICATION"_s, u"customer.dat"_s);
    press(u"OK"_s);

    run(columns, u"mnu_ColumnAddNew"_s);
    addColumn(u"CUST_NO"_s, u"number"_s, u"INTEGER"_s);
    write(u"DISPLAY_NAME"_s, u"Number"_s);
    press(u"OK"_s);
    for (const auto& [field, length] : {std::pair("NAME", "30"), std::pair("STREET", "30"), std::pair("CITY", "20")}) {
        addColumn(QLatin1String(field), QLatin1String(field), u"VARCHAR"_s, QLatin1String(length));
        clickButton(u"chkProperty_CASE_SENSITIVE"_s);
        press(u"OK"_s);
    }
    addColumn(u"BALANCE"_s, u"balance"_s, u"DECIMAL"_s);
    write(u"SCALE"_s, u"2"_s);
    clickButton(u"chkProperty_UPDATABLE"_s);
    write(u"REMARKS"_s, u"Carried by the till"_s);
    press(u"OK"_s);
    press(u"Cancel"_s);
    ASSERT_EQ(currentPane(), u"frmColumns"_s);
    addColumnRow(u"credit"_s, u"credit"_s, u"decimal"_s, {}, u"2"_s);
    addColumnRow(u"since"_s, u"since"_s, u"date"_s);
    addColumnRow(u"region"_s, u"region"_s, u"char"_s, u"6"_s);
    addColumnRow(u"orders"_s, u"order count"_s, u"smallint"_s);
    addColumnRow(u"active"_s, u"active"_s, u"bit"_s);

    show(table);
    clickButton(u"cmdCalcColumns"_s);
    press(u"OK"_s);

    expected += QStringList{
        u"TW_FILE CUSTOMER||112|INDEXED|FIXED|Who buys, by number"_s,
        u"TW_FIELD CUSTOMER|1|CUST_NO|INTEGER-4|0|4|10|0|0|||"_s,
        u"TW_FIELD CUSTOMER|2|NAME|STRING|4|30|30|0|0|||"_s,
        u"TW_FIELD CUSTOMER|3|STREET|STRING|34|30|30|0|0|||"_s,
        u"TW_FIELD CUSTOMER|4|CITY|STRING|64|20|20|0|0|||"_s,
        u"TW_FIELD CUSTOMER|5|BALANCE|PACKED|84|5|10|2|0|||"_s,
        u"TW_FIELD CUSTOMER|6|CREDIT|PACKED|89|4|8|2|0|||"_s,
        u"TW_FIELD CUSTOMER|7|SINCE|DATE|93|10|10|0|0|YYYY-MM-DD||"_s,
        u"TW_FIELD CUSTOMER|8|REGION|STRING|103|6|6|0|0|||"_s,
        u"TW_FIELD CUSTOMER|9|ORDERS|INTEGER-2|109|2|5|0|0|||"_s,
        u"TW_FIELD CUSTOMER|10|ACTIVE|BOOLEAN|111|1|1|0|0|||"_s,
        u"TW_DB SHOP|SYS$DATA:|VAX-RMS||||Shop"_s,
        u"TW_TABLE SHOP|CUSTOMERS|TABLE|CUSTOMER|customer.dat|10|||Customers"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|1|NUMBER|CUST_NO|INTEGER|4|10|0|1|0|1|1|0|0|0|2|10|||0|0|Number"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|2|NAME|NAME|VARCHAR|30|30|0|1|0|1|1|0|0|1|3|0|||0|0|"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|3|STREET|STREET|VARCHAR|30|30|0|1|0|1|1|0|0|1|3|0|||0|0|"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|4|CITY|CITY|VARCHAR|20|20|0|1|0|1|1|0|0|1|3|0|||0|0|"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|5|BALANCE|BALANCE|DECIMAL|33|31|2|1|0|0|1|0|0|0|2|10||Carried by the till|0|0|"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|6|CREDIT|CREDIT|DECIMAL|33|31|2|1|0|1|1|0|0|0|2|10|||0|0|"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|7|SINCE|SINCE|DATE|6|10|0|1|0|1|1|0|0|0|2|0|||0|0|"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|8|REGION|REGION|CHAR|6|6|0|0|0|1|1|0|0|0|2|0|||0|0|"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|9|ORDER_COUNT|ORDERS|SMALLINT|2|5|0|1|0|1|1|0|0|0|2|10|||0|0|"_s,
        u"TW_COLUMN SHOP|CUSTOMERS|10|ACTIVE|ACTIVE|BIT|1|1|0|1|1|1|1|0|0|0|2|0|||0|0|"_s,
    };
    expected.sort();
    const QStringList catalog = wholeCatalog();
    for (const QString& row : expected)
        EXPECT_TRUE(catalog.contains(row)) << row.toStdString();
    for (const QString& row : catalog)
        EXPECT_TRUE(expected.contains(row)) << row.toStdString();
    EXPECT_EQ(catalog.size(), expected.size());

    expandTo(key(fields));
    expandTo(key(columns));
    EXPECT_EQ(children(key(files)), QStringList{u"CUSTOMER"_s});
    EXPECT_EQ(children(key(fields)), (QStringList{u"ACTIVE"_s, u"BALANCE"_s, u"CITY"_s, u"CREDIT"_s, u"CUST_NO"_s,
                                                  u"NAME"_s, u"ORDERS"_s, u"REGION"_s, u"SINCE"_s, u"STREET"_s}));
    EXPECT_EQ(children(key(databases)), QStringList{u"SHOP"_s});
    EXPECT_EQ(children(key(tables)), QStringList{u"CUSTOMERS"_s});
    EXPECT_EQ(children(key(columns)),
              (QStringList{u"NUMBER"_s, u"NAME"_s, u"STREET"_s, u"CITY"_s, u"BALANCE"_s, u"CREDIT"_s, u"SINCE"_s,
                           u"REGION"_s, u"ORDER_COUNT"_s, u"ACTIVE"_s}));
    EXPECT_TRUE(errors.shown().empty());
}
