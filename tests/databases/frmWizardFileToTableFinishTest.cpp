#include "WizardFixture.h"
#include "frmWizardFileToTable.h"

#include "CConnections.h"
#include "MousePointer.h"
#include "ToolBar.h"
#include "frmTWErr.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QTimer>

#include <ostream>
#include <tuple>
#include <vector>

using namespace wizard;

namespace
{

/// The columns that the wizard makes of the file STOCK.
const QString orderNo = insertColumn(u"'SALES', 'STOCK', 1, 'ORDER_NO', 'ORDER-NO', 'VARCHAR', 7, 9, 0, 'no''ne', "
                                     "'key', 'ORDER_NO', 1, 1, 0, 0, 0, 1, 3, 1, 0"_s);
const QString qty = insertColumn(u"'SALES', 'STOCK', 2, 'QTY', 'QTY', 'DOUBLE', 5, 31, 2, '', '', 'QTY', 1, 1, 0, 0, "
                                 "0, 0, 2, 1, 10"_s);
const QString count = insertColumn(u"'SALES', 'STOCK', 5, 'COUNT', 'COUNT', 'INTEGER', 4, 10, 0, '0', '', 'COUNT', 1, "
                                   "1, 0, 0, 0, 0, 2, 1, 10"_s);

class WizardFinish : public Wizard
{
protected:
    /// Leaves a file with one field of STRING.
    void keepOneField() const
    {
        change(u"DELETE FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NAME <> 'ORDER-NO'"_s);
    }
};

} // namespace

// Making -------------------------------------------------------------------------------------------------------------

TEST_F(WizardFinish, MakesATableWithAColumnForEachField)
{
    expectSkipped(u"UNKNOWN"_s, u"STOCK"_s, u"FLAG"_s);
    open([&](DialogForm& form) {
        fillIn(form);
        dialog::write(form, displayName, u"Stock"_s);
        dialog::write(form, remarks, u"what's there"_s);
        statements.clear();
        boxes.expectInform(created);
        DialogScript::click(form, finish);
        EXPECT_FALSE(form.isVisible());
    });
    const QStringList expected{
        countFields(u"STOCK"_s),
        findTable(u"STOCK"_s),
        insertTable(u"'SALES', 'STOCK', 'TABLE', 'STOCK', 'a.dat', 4, 'what''s there', 'Stock'"_s),
        readFields(u"STOCK"_s),
        readLocalType(u"STRING"_s),
        readSqlType(u"VARCHAR"_s),
        orderNo,
        readLocalType(u"ZONED"_s),
        readSqlType(u"NUMERIC"_s),
        qty,
        readLocalType(u"UNKNOWN"_s),
        readLocalType(u"INTEGER-4"_s),
        readSqlType(u"INTEGER"_s),
        count,
    };
    EXPECT_EQ(statements.statements().first(expected.size()), expected);
    EXPECT_EQ(tables().last(), u"SALES|STOCK|TABLE|STOCK|a.dat|4||what's there|Stock"_s);
    EXPECT_EQ(columns(),
              (QStringList{u"SALES|STOCK|1|ORDER_NO|ORDER-NO|VARCHAR|7|9|0|1|0|1|1|0|0|1|3|0|no'ne|key|0|0|ORDER_NO"_s,
                           u"SALES|STOCK|2|QTY|QTY|DOUBLE|5|31|2|1|0|1|1|0|0|0|2|10|||0|0|QTY"_s,
                           u"SALES|STOCK|5|COUNT|COUNT|INTEGER|4|10|0|1|0|1|1|0|0|0|2|10|0||0|0|COUNT"_s}));
}

TEST_F(WizardFinish, ShowsTheTablesOfTheDatabaseAfterwards)
{
    keepOneField();
    begin({u"FI"_s, u"fi=STOCK"_s});
    dialogs.expect(name, [&](DialogForm& form) {
        fillIn(form);
        boxes.expectInform(created);
        DialogScript::click(form, finish);
    });
    frmWizardFileToTable::Display(datasource, {}, {});
    dialogs.verify();
    boxes.verify();
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_EQ(paneTitle(), u"SALES - Tables"_s);
    EXPECT_EQ(gridNames(), (QStringList{u"ORDERS"_s, u"STOCK"_s}));
    EXPECT_EQ(children(key(level())), (QStringList{u"ORDERS"_s, u"STOCK"_s}));
    EXPECT_EQ(selectedKey(), key(level()));
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
    EXPECT_TRUE(window->toolBar(u"tbrTables"_s).isVisible());
    EXPECT_FALSE(forms::loaded(name));
}

TEST_F(WizardFinish, FromTheContextMenuTheSelectionStaysWhereItWas)
{
    keepOneField();
    begin({u"FI"_s, u"fi=STOCK"_s});
    click(key({u"FI"_s}));
    make();
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_EQ(children(key(level())), (QStringList{u"ORDERS"_s, u"STOCK"_s}));
}

TEST_F(WizardFinish, TheStatusTellsTheFieldAndThePointerIsBusy)
{
    keepOneField();
    QString status;
    int pointer = mousepointer::Default;
    open([&](DialogForm& form) {
        fillIn(form);
        meanwhile(u"INSERT INTO TW_COLUMN"_s, [&] {
            status = statusText();
            pointer = mousepointer::current();
        });
        boxes.expectInform(created);
        DialogScript::click(form, finish);
    });
    EXPECT_EQ(status, u"Processing File 'STOCK', Field 'ORDER-NO'"_s);
    EXPECT_EQ(pointer, mousepointer::Wait);
}

TEST_F(WizardFinish, TheStatusTellsTheFieldAlsoWhereItIsSkipped)
{
    QString status;
    open([&](DialogForm& form) {
        fillIn(form);
        expectSkipped(u"UNKNOWN"_s, u"STOCK"_s, u"FLAG"_s, [&] { status = statusText(); });
        boxes.expectInform(created);
        DialogScript::click(form, finish);
    });
    EXPECT_EQ(status, u"Processing File 'STOCK', Field 'FLAG'"_s);
}

TEST_F(WizardFinish, EndsAlsoWhenTheTablesCannotBeShown)
{
    keepOneField();
    begin({u"FI"_s, u"fi=STOCK"_s});
    const QString before = currentPane();
    dialogs.expect(name, [&](DialogForm& form) {
        fillIn(form);
        boxes.expect(created, boxes::Icon::Information, [] { panes::remove(u"frmTables"_s); });
        DialogScript::click(form, finish);
        EXPECT_FALSE(form.isVisible());
    });
    frmWizardFileToTable::Display(datasource, {}, {});
    dialogs.verify();
    boxes.verify();
    EXPECT_FALSE(forms::loaded(name));
    EXPECT_EQ(currentPane(), before);
    EXPECT_EQ(children(key(level())), (QStringList{u"ORDERS"_s, u"STOCK"_s}));
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(WizardFinish, WhatIsPressedWhileTheTablesAreReadStartsNothing)
{
    keepOneField();
    QStringList routines;
    statements.clear();
    open([&](DialogForm& form) {
        fillIn(form);
        meanwhile(u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' ORDER BY"_s, [&] {
            QTimer::singleShot(0, &form, [&] {
                routines = frmTWErr::CallStack();
                auto& button = dialog::get<QWidget>(form, finish);
                const QPointF middle = button.rect().center();
                for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
                    QMouseEvent click(type, middle, button.mapToGlobal(middle), Qt::LeftButton,
                                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {});
                    QCoreApplication::sendEvent(&button, &click);
                }
                QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, {});
                QCoreApplication::sendEvent(&form, &enter);
            });
        });
        boxes.expectInform(created);
        DialogScript::click(form, finish);
    });
    EXPECT_TRUE(routines.contains(u"frmWizardFileToTable.cmdFinish_Click"_s)) << routines.join(' '_L1).toStdString();
    EXPECT_EQ(statements.statements().count(countFields(u"STOCK"_s)), 1);
    EXPECT_EQ(currentPane(), u"frmTables"_s);
    EXPECT_EQ(children(key(level())), (QStringList{u"ORDERS"_s, u"STOCK"_s}));
}

TEST_F(WizardFinish, TheTableMayHaveAnotherNameThanTheFile)
{
    keepOneField();
    open([&](DialogForm& form) {
        fillIn(form);
        dialog::write(form, tableName, u"wares"_s);
        statements.clear();
        boxes.expectInform(created);
        DialogScript::click(form, finish);
    });
    EXPECT_EQ(statements.statements().at(1), findTable(u"WARES"_s));
    EXPECT_EQ(statements.writes().first(), insertTable(u"'SALES', 'WARES', 'TABLE', 'STOCK', 'a.dat', 1, '', ''"_s));
    EXPECT_EQ(columns(u"WARES"_s).size(), 1);
}

TEST_F(WizardFinish, AnEmptyNameIsNotTested)
{
    keepOneField();
    open([&](DialogForm& form) {
        fillIn(form);
        dialog::write(form, tableName, {});
        boxes.expectInform(created);
        DialogScript::click(form, finish);
    });
    EXPECT_EQ(tables().first(), u"SALES||TABLE|STOCK|a.dat|1|||"_s);
    EXPECT_EQ(columns({}).size(), 1);
}

TEST_F(WizardFinish, NamesWithApostrophesAreDoubledAndPercentSignsStay)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('o''%2file')"_s);
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME) "
           "VALUES ('o''%2file', 1, 'o''%1field', 'o''type'), ('o''%2file', 2, 'o''-%1two', 'l''type')"_s);
    change(u"INSERT INTO TW_LOCDT (LOCAL_TYPE_NAME, SQL_TYPE_NAME) VALUES ('l''type', 's''type')"_s);
    change(u"INSERT INTO TW_SQLDT (SQL_TYPE_NAME) VALUES ('s''type')"_s);
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('o''db')"_s);
    open([&](DialogForm& form) {
        DialogScript::click(form, next);
        dialog::clickRow(form, files, u"o'%2file"_s);
        DialogScript::click(form, next);
        dialog::clickRow(form, databases, u"o'db"_s);
        DialogScript::click(form, next);
        dialog::write(form, specification, u"o'spec"_s);
        statements.clear();
        expectSkipped(u"o'type"_s, u"o'%2file"_s, u"o'%1field"_s,
                      [&] { EXPECT_EQ(statusText(), u"Processing File 'o'%2file', Field 'o'%1field'"_s); });
        boxes.expectInform(created);
        DialogScript::click(form, finish);
    });
    const QStringList expected{
        countFields(u"o''%2file"_s),
        findTable(u"O''%2FILE"_s, u"o''db"_s),
        insertTable(u"'o''db', 'O''%2FILE', 'TABLE', 'o''%2file', 'o''spec', 2, '', ''"_s),
        readFields(u"o''%2file"_s),
        readLocalType(u"o''type"_s),
        readLocalType(u"l''type"_s),
        readSqlType(u"s''type"_s),
        insertColumn(
            u"'o''db', 'O''%2FILE', 2, 'o''_%1two', 'o''-%1two', 's''type', 0, 0, 0, '', '', 'o''_%1two', 1, 0, 0, 0, "
            "0, 0, 0, 1, 0"_s),
    };
    EXPECT_EQ(statements.statements().first(expected.size()), expected);
    EXPECT_EQ(paneTitle(), u"o'db - Tables"_s);
}

// The columns --------------------------------------------------------------------------------------------------------

TEST_F(WizardFinish, AScaledNumberBecomesADoubleWithTheFlagsOfItsOwnType)
{
    change(u"UPDATE TW_LOCDT SET SQL_TYPE_NAME = 'INTEGER' WHERE LOCAL_TYPE_NAME = 'ZONED'"_s);
    change(u"UPDATE TW_SQLDT SET NULLABLE = 2, UNSIGNED_ATTRIBUTE = 3, MONEY = 4, AUTO_INCREMENT = 5, "
           "CASE_SENSITIVE = 6, SEARCHABLE = 7, RADIX = 8, LENGTH = 9, PRECISION = 11 "
           "WHERE SQL_TYPE_NAME = 'INTEGER'"_s);
    change(u"DELETE FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NAME <> 'QTY'"_s);
    make();
    EXPECT_EQ(statements.statements().filter(u"INSERT INTO TW_COLUMN"_s),
              QStringList{insertColumn(u"'SALES', 'STOCK', 2, 'QTY', 'QTY', 'DOUBLE', 5, 11, 2, "
                                       "'', '', 'QTY', 1, 2, 3, 4, 5, 6, 7, 1, 8"_s)});
    EXPECT_EQ(statements.statements().filter(u"FROM TW_SQLDT"_s), QStringList{readSqlType(u"INTEGER"_s)});
}

TEST_F(WizardFinish, AFileOfUnknownTypesGivesATableWithoutColumns)
{
    change(u"UPDATE TW_FIELD SET LOCAL_TYPE_NAME = NULL WHERE FIELD_NAME = 'BONUS'"_s);
    expectSkipped(u"CHARACTER"_s, u"PAYROLL"_s, u"EMPLOYEE"_s);
    expectSkipped(u"CHARACTER"_s, u"PAYROLL"_s, u"SALARY"_s);
    expectSkipped({}, u"PAYROLL"_s, u"BONUS"_s);
    make(u"PAYROLL"_s);
    EXPECT_EQ(tables().last(), u"SALES|PAYROLL|TABLE|PAYROLL|a.dat|3|||"_s);
    EXPECT_EQ(columns(u"PAYROLL"_s), QStringList());
    EXPECT_EQ(currentPane(), u"frmTables"_s);
}

// Refusing -----------------------------------------------------------------------------------------------------------

TEST_F(WizardFinish, AFileWithoutFieldsMakesNoTable)
{
    open([&](DialogForm& form) {
        fillIn(form, u"EMPTY"_s);
        DialogScript::click(form, previous);
        statements.clear();
        boxes.expect(u"File 'EMPTY' does not contain any Fields!"_s, boxes::Icon::Exclamation);
        DialogScript::click(form, finish);
        boxes.verify();
        EXPECT_EQ(statements.statements(), QStringList{countFields(u"EMPTY"_s)});
        EXPECT_EQ(page(form), u"Page 3 of 4: Previous Next Finish Cancel"_s);
        EXPECT_EQ(statusText(), u"Ready"_s);
        EXPECT_EQ(mousepointer::current(), mousepointer::Default);
        DialogScript::click(form, cancel);
    });
}

TEST_F(WizardFinish, ATableThatIsThereIsNotMadeAgain)
{
    open([&](DialogForm& form) {
        fillIn(form);
        dialog::write(form, tableName, u"ORDERS"_s);
        DialogScript::click(form, previous);
        statements.clear();
        boxes.expect(u"Database 'SALES' already contains a Table called 'ORDERS'"_s, boxes::Icon::None,
                     [&] { EXPECT_EQ(page(form), u"Page 3 of 4: Previous Next Finish Cancel"_s); });
        DialogScript::click(form, finish);
        boxes.verify();
        EXPECT_EQ(statements.statements(), (QStringList{countFields(u"STOCK"_s), findTable(u"ORDERS"_s)}));
        EXPECT_EQ(page(form), u"Page 4 of 4: Previous Finish Cancel"_s);
        EXPECT_EQ(dialog::focus(form), tableName);
        EXPECT_EQ(statusText(), u"Ready"_s);

        // Under another name it is.
        dialog::write(form, tableName, u"WARES"_s);
        expectSkipped(u"UNKNOWN"_s, u"STOCK"_s, u"FLAG"_s);
        boxes.expectInform(created);
        DialogScript::click(form, finish);
    });
    EXPECT_EQ(columns(u"WARES"_s).size(), 3);
}

// What others do, and what the catalog refuses -----------------------------------------------------------------------

TEST_F(WizardFinish, ATableThatComesMeanwhileIsTheDriversToRefuse)
{
    open([&](DialogForm& form) {
        fillIn(form);
        meanwhile(u"INSERT INTO TW_TABLE"_s,
                  [&] { change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('SALES', 'STOCK')"_s); });
        errors.expect(Press::Ignore);
        DialogScript::click(form, finish);
        errors.verify();
        EXPECT_EQ(page(form), u"Page 4 of 4: Previous Finish Cancel"_s);
        EXPECT_EQ(statusText(), u"Ready"_s);
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmWizardFileToTable.cmdFinish_Click"_s);
    EXPECT_EQ(columns(), QStringList());
    EXPECT_EQ(tables().last(), u"SALES|STOCK||||0|||"_s);
}

TEST_F(WizardFinish, TwoFieldsThatMakeOneColumnLeaveAPartialTable)
{
    change(u"DELETE FROM TW_FIELD WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = 'FLAG'"_s);
    change(u"UPDATE TW_FIELD SET FIELD_NAME = 'ORDER_NO' WHERE FILE_NAME = 'STOCK' AND FIELD_NAME = 'QTY'"_s);
    open([&](DialogForm& form) {
        fillIn(form);
        errors.expect(Press::Ignore);
        DialogScript::click(form, finish);
        errors.verify();
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(page(form), u"Page 4 of 4: Previous Finish Cancel"_s);
        EXPECT_EQ(statusText(), u"Ready"_s);
        EXPECT_EQ(mousepointer::current(), mousepointer::Default);
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmWizardFileToTable.cmdFinish_Click"_s);
    EXPECT_EQ(tables().last(), u"SALES|STOCK|TABLE|STOCK|a.dat|3|||"_s);
    EXPECT_EQ(stored(u"SELECT COLUMN_NAME, FIELD_NAME FROM TW_COLUMN WHERE TABLE_NAME = 'STOCK'"_s),
              QStringList{u"ORDER_NO|ORDER-NO"_s});
}

TEST_F(WizardFinish, FieldsThatAreGoneMeanwhileAreCountedAllTheSame)
{
    open([&](DialogForm& form) {
        fillIn(form);
        meanwhile(u"INSERT INTO TW_TABLE"_s, [&] { change(u"DELETE FROM TW_FIELD WHERE FILE_NAME = 'STOCK'"_s); });
        boxes.expectInform(created);
        DialogScript::click(form, finish);
    });
    EXPECT_EQ(tables().last(), u"SALES|STOCK|TABLE|STOCK|a.dat|4|||"_s);
    EXPECT_EQ(columns(), QStringList());
}

TEST_F(WizardFinish, ASqlTypeThatTheCatalogLacksIsAnError)
{
    keepOneField();
    change(u"DELETE FROM TW_SQLDT WHERE SQL_TYPE_NAME = 'VARCHAR'"_s);
    open([&](DialogForm& form) {
        fillIn(form);
        errors.expect(Press::Ignore);
        DialogScript::click(form, finish);
        errors.verify();
        EXPECT_TRUE(form.isVisible());
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(errors.shown().front().number, u"3021"_s);
    EXPECT_EQ(tables().size(), 2);
    EXPECT_EQ(columns(), QStringList());
}

TEST_F(WizardFinish, ADatasourceThatIsDisconnectedMeanwhileEndsQuietly)
{
    open([&](DialogForm& form) {
        fillIn(form);
        CConnections::instance().Remove(datasource);
        statements.clear();
        DialogScript::click(form, finish);
        EXPECT_EQ(statements.statements(), QStringList());
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(statusText(), u"Ready"_s);
        DialogScript::click(form, cancel);
    });
}

TEST_F(WizardFinish, APrivilegesFailureShowsOneBoxAndKeepsTheWizard)
{
    open([&](DialogForm& form) {
        fillIn(form);
        statements.clear();
        statements.failAt(3, {{1, u"insufficient privileges"_s}, {3146, u"ODBC--call failed."_s}});
        boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
        DialogScript::click(form, finish);
        EXPECT_TRUE(form.isVisible());
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(tables().size(), 1);
}
