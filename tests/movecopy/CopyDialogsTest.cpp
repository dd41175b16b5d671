#include "CopyDialogFixture.h"

#include "DropDown.h"
#include "Settings.h"

#include <QInputMethodEvent>

using namespace Qt::StringLiterals;

namespace
{

class CopyDialogs : public CopyDialogTest
{
protected:
    static QString columnInsert(const QString& toDatabase, const QString& toTable, const QString& values)
    {
        return u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, "
               "SQL_TYPE_NAME, LENGTH, PRECISION, SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, "
               "AUTO_INCREMENT, CASE_SENSITIVE, SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, "
               "COLUMN_TYPE, DISPLAY_NAME) VALUES ('%1', '%2', %3)"_s.arg(toDatabase, toTable, values);
    }
    static QStringList columnInserts(const QString& toDatabase, const QString& toTable)
    {
        const QString zeros = u"'', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, '', '', 0, "_s;
        return {columnInsert(toDatabase, toTable, u"2, 'AMOUNT', 'SALARY', "_s + zeros + u"0, ''"_s),
                columnInsert(toDatabase, toTable, u"1, 'BUYER', 'EMPLOYEE', "_s + zeros + u"0, ''"_s),
                columnInsert(toDatabase, toTable, u"1, 'RFA', 'RFA', "_s + zeros + u"1, ''"_s)};
    }
    static QString tableInsert(const QString& toDatabase, const QString& name)
    {
        return u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
               "NUMBER_COLUMNS, CRITERIA, REMARKS, DISPLAY_NAME) "
               "VALUES ('%1', '%2', 'TABLE', 'PAYROLL', '', 0, '', '', '')"_s.arg(toDatabase, name);
    }
    static QString privilegeInsert(const QString& toDatabase, const QString& toTable)
    {
        return u"INSERT INTO TW_TBLPRV(DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, "
               "ALLOW_UPDATE, ALLOW_DELETE, REMARKS) VALUES ( '%1', '%2', 'CLERK', 0, 0, 0, 0, '')"_s.arg(toDatabase,
                                                                                                          toTable);
    }
    static QStringList fieldInserts(const QString& to)
    {
        const QString insert =
            u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, "
            "SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) VALUES ('%1', %2, '%3', 'CHARACTER', %4, 4, 0, 0, 0, "
            "'', '', '')"_s;
        return {insert.arg(to, u"3"_s, u"BONUS"_s, u"4"_s), insert.arg(to, u"1"_s, u"EMPLOYEE"_s, u"0"_s),
                insert.arg(to, u"2"_s, u"SALARY"_s, u"8"_s)};
    }

    const QString noFilename =
        u"You have not entered a filename.\nDo you want me to find a unique name for this new File?"_s;
};

} // namespace

TEST_F(CopyDialogs, AFileIsCopiedWithItsFieldsUnderTheProposedName)
{
    copyFile([&](DialogForm& dialog) {
        EXPECT_EQ(label(dialog, u"lblFilename"_s), u"PAYROLL"_s);
        EXPECT_EQ(DialogScript::text(dialog, u"txtFilename"_s), u"PAYROLL1"_s);
        press(dialog, ok);
    });
    EXPECT_EQ(sent().first(2), (QStringList{u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s,
                                            u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME = 'PAYROLL1'"_s}));
    EXPECT_EQ(sent().sliced(2),
              (QStringList{u"SELECT * FROM TW_FILE WHERE FILE_NAME = 'PAYROLL1'"_s,
                           u"SELECT * FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s,
                           u"INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, "
                           "REMARKS) VALUES ('PAYROLL1', '', 12, 'INDEXED', 'FIXED', '')"_s,
                           u"SELECT * FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL'"_s} +
               fieldInserts(u"PAYROLL1"_s)));
    EXPECT_EQ(fieldsOf(u"PAYROLL1"_s), fieldsOf(u"PAYROLL"_s));
    EXPECT_EQ(selectedKey(), key({u"FI"_s}));
    EXPECT_NE(find(key({u"FI"_s, u"fi=PAYROLL1"_s})), nullptr);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(CopyDialogs, DigitsAtTheEndOfTheNameGiveWayToTheNextFreeOnes)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('DATA12')"_s);
    for (const QString& name : {u"DATA"_s, u"DATA1"_s, u"DATA2"_s}) {
        copy({u"FI"_s, u"fi=DATA12"_s}, u"mnu_FileCopy"_s, u"frmFileCopy"_s, [&](DialogForm& dialog) {
            EXPECT_EQ(DialogScript::text(dialog, u"txtFilename"_s), name);
            press(dialog, ok);
        });
    }
}

TEST_F(CopyDialogs, CancelCopiesNothing)
{
    copyFile([&](DialogForm& dialog) { press(dialog, cancel); });
    copyDatabase([&](DialogForm& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    copyTable([&](DialogForm& dialog) { dialog.close(); });
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CopyDialogs, NamesTakeLettersDigitsUnderscoresAndHyphensAlone)
{
    copyFile([&](DialogForm& dialog) {
        enter(dialog, u"txtFilename"_s, u"a b_c-1'.%Z0"_s);
        auto* entry = dialog.findChild<QLineEdit*>(u"txtFilename"_s);
        // The last two have capitals among the plain letters.
        for (const QString& letter : {u"ü"_s, u"ı"_s, u"ſ"_s})
            QTest::sendKeyEvent(QTest::Click, entry, Qt::Key_unknown, letter, Qt::NoModifier);
        EXPECT_EQ(DialogScript::text(dialog, u"txtFilename"_s), u"AB_C-1Z0"_s);
        QTest::keyClick(entry, Qt::Key_Backspace);
        EXPECT_EQ(DialogScript::text(dialog, u"txtFilename"_s), u"AB_C-1Z"_s);
        press(dialog, ok);
    });
    EXPECT_EQ(fieldsOf(u"AB_C-1Z"_s).size(), 3);
}

TEST_F(CopyDialogs, WhatAnInputMethodComposesPassesTheSameFilter)
{
    copyFile([&](DialogForm& dialog) {
        auto* entry = dialog.findChild<QLineEdit*>(u"txtFilename"_s);
        entry->clear();
        QInputMethodEvent composed;
        composed.setCommitString(u"a é_ı9"_s);
        QApplication::sendEvent(entry, &composed);
        EXPECT_EQ(entry->text(), u"A_9"_s);
        press(dialog, cancel);
    });
}

TEST_F(CopyDialogs, TellWhatTheyAreForAndWhatTheirEntriesMean)
{
    const auto named = [](DialogForm& dialog, const QString& control, const QString& prompt) {
        auto* widget = dialog.findChild<QWidget*>(control);
        EXPECT_EQ(widget->accessibleName() + u':', prompt);
        bool isPrompted = false;
        for (const auto* label : dialog.findChildren<QLabel*>())
            isPrompted = isPrompted || (label->text() == prompt && label->buddy() == widget);
        // A text that is only read takes no shortcut from its prompt.
        EXPECT_TRUE(isPrompted || qobject_cast<QLabel*>(widget)) << prompt.toStdString();
    };
    const auto proposed = [](DialogForm& dialog, const QString& entry, const QString& proposal) {
        auto* edit = dialog.findChild<QLineEdit*>(entry);
        EXPECT_EQ(dialog.focusWidget(), edit);
        EXPECT_EQ(edit->selectedText(), proposal);
    };
    copyFile([&](DialogForm& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Copy File"_s);
        named(dialog, u"lblFilename"_s, u"Source File:"_s);
        named(dialog, u"txtFilename"_s, u"New Filename:"_s);
        proposed(dialog, u"txtFilename"_s, u"PAYROLL1"_s);
        press(dialog, cancel);
    });
    copyDatabase([&](DialogForm& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Copy Database"_s);
        named(dialog, u"lblDB"_s, u"Original Database:"_s);
        named(dialog, u"txtDB"_s, u"New Database:"_s);
        proposed(dialog, u"txtDB"_s, u"SALES1"_s);
        press(dialog, cancel);
    });
    copyTable([&](DialogForm& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Copy Table"_s);
        named(dialog, u"lblDB"_s, u"Original Database:"_s);
        named(dialog, u"lblTable"_s, u"Original Table:"_s);
        named(dialog, u"cboDB"_s, u"New Database:"_s);
        named(dialog, u"txtTable"_s, u"New Table:"_s);
        proposed(dialog, u"txtTable"_s, u"ORDERS1"_s);
        press(dialog, cancel);
    });
}

TEST_F(CopyDialogs, StandOnTheCallStackWhileTheyAreUp)
{
    const auto cancelUnder = [this](const QString& routine) {
        return [=, this](DialogForm& dialog) {
            EXPECT_TRUE(frmTWErr::CallStack().contains(routine)) << routine.toStdString();
            press(dialog, cancel);
        };
    };
    copyFile(cancelUnder(u"frmFileCopy.Display"_s));
    copyDatabase(cancelUnder(u"frmDBCopy.Display"_s));
    copyTable(cancelUnder(u"frmTableCopy.Display"_s));
}

TEST_F(CopyDialogs, EnterInTheNameCopies)
{
    const auto enterIn = [](const QString& entry) {
        return [=](DialogForm& dialog) {
            QTest::keyClick(dialog.findChild<QLineEdit*>(entry), Qt::Key_Return);
            EXPECT_FALSE(dialog.isVisible());
        };
    };
    copyFile(enterIn(u"txtFilename"_s));
    EXPECT_EQ(rowsOf(datasource, u"TW_FILE"_s, u"FILE_NAME = 'PAYROLL1'"_s).size(), 1);
    copyDatabase(enterIn(u"txtDB"_s));
    EXPECT_EQ(rowsOf(datasource, u"TW_DB"_s, u"DATABASE_NAME = 'SALES1'"_s).size(), 1);
    copyTable(enterIn(u"txtTable"_s));
    EXPECT_EQ(rowsOf(datasource, u"TW_TABLE"_s, u"DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS1'"_s).size(), 1);
}

TEST_F(CopyDialogs, ANameOfDigitsAloneLeavesNothingToMakeOneFrom)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('2024')"_s);
    const QString none = u"A unique name could not be made from '2024'.\nPlease enter a name."_s;
    copy({u"FI"_s, u"fi=2024"_s}, u"mnu_FileCopy"_s, u"frmFileCopy"_s, [&](DialogForm& dialog) {
        auto* entry = dialog.findChild<QLineEdit*>(u"txtFilename"_s);
        EXPECT_EQ(entry->text(), QString());
        boxes.expectAsk(noFilename, boxes::Answer::Yes);
        boxes.expectInform(none);
        press(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(dialog.focusWidget(), entry);
        enter(dialog, u"txtFilename"_s, u"2024"_s);
        boxes.expectAsk(u"There is already a file called '2024' in this datasource.\n"
                        "Would you like me to generate a unique name for this new File?"_s,
                        boxes::Answer::Yes);
        boxes.expectInform(none);
        press(dialog, ok);
        EXPECT_EQ(statements.writes(), QStringList());
        enter(dialog, u"txtFilename"_s, u"2025"_s);
        press(dialog, ok);
    });
    EXPECT_EQ(rowsOf(datasource, u"TW_FILE"_s, u"FILE_NAME = '2025'"_s).size(), 1);
}

TEST_F(CopyDialogs, WithoutANameOneIsFoundIfTheUserWants)
{
    copyFile([&](DialogForm& dialog) {
        enter(dialog, u"txtFilename"_s, {});
        boxes.expectAsk(noFilename, boxes::Answer::No);
        press(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(statements.writes(), QStringList());
        boxes.expectAsk(noFilename, boxes::Answer::Yes);
        press(dialog, ok);
    });
    EXPECT_EQ(fieldsOf(u"PAYROLL1"_s).size(), 3);
    copyDatabase([&](DialogForm& dialog) {
        enter(dialog, u"txtDB"_s, {});
        boxes.expectAsk(u"You have not entered a Database name.\n"
                        "Do you want me to find a unique name for this Database?"_s,
                        boxes::Answer::Yes);
        press(dialog, ok);
    });
    EXPECT_EQ(rowsOf(datasource, u"TW_DB"_s, u"DATABASE_NAME = 'SALES1'"_s).size(), 1);
    copyTable([&](DialogForm& dialog) {
        enter(dialog, u"txtTable"_s, {});
        boxes.expectAsk(u"You have not entered a Table name.\n"
                        "Do you want me to find a unique name for this new Table?"_s,
                        boxes::Answer::Yes);
        press(dialog, ok);
    });
    EXPECT_EQ(rowsOf(datasource, u"TW_TABLE"_s, u"DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS1'"_s).size(), 1);
}

TEST_F(CopyDialogs, ATakenNameIsNotTakenAgain)
{
    copyFile([&](DialogForm& dialog) {
        enter(dialog, u"txtFilename"_s, u"empty"_s);
        const QString taken = u"There is already a file called 'EMPTY' in this datasource.\n"
                              "Would you like me to generate a unique name for this new File?"_s;
        boxes.expectAsk(taken, boxes::Answer::No);
        press(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        boxes.expectAsk(taken, boxes::Answer::Yes);
        press(dialog, ok);
    });
    EXPECT_EQ(fieldsOf(u"PAYROLL1"_s).size(), 3);
    copyDatabase([&](DialogForm& dialog) {
        enter(dialog, u"txtDB"_s, u"TW"_s);
        boxes.expectAsk(u"A Database called 'TW' already exists in this datasource.\n"
                        "Do you want me to find a unique name for this database?"_s,
                        boxes::Answer::Yes);
        press(dialog, ok);
    });
    EXPECT_EQ(rowsOf(datasource, u"TW_DB"_s, u"DATABASE_NAME = 'SALES1'"_s).size(), 1);
    copyTable([&](DialogForm& dialog) {
        enter(dialog, u"txtTable"_s, u"ORDERS"_s);
        boxes.expectAsk(u"Database 'SALES' already contains a Table called 'ORDERS\n"
                        "Do you want me to find a unique name for the new table?"_s,
                        boxes::Answer::Yes);
        press(dialog, ok);
    });
    EXPECT_EQ(rowsOf(datasource, u"TW_TABLE"_s, u"DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS1'"_s).size(), 1);
}

TEST_F(CopyDialogs, ANameThatIsTooLongIsRefused)
{
    copyDatabase([&](DialogForm& dialog) {
        enter(dialog, u"txtDB"_s, u"ELEVENCHARS"_s);
        boxes.expectInform(u"The name is too long.\nPlease enter 10 characters at the most."_s);
        press(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(statements.writes(), QStringList());
        press(dialog, cancel);
    });
}

TEST_F(CopyDialogs, ADatabaseIsCopiedWithAllThatHangsUnderIt)
{
    change(u"UPDATE TW_DBPRV SET DATABASE_USERNAME = 'DBA', DATABASE_PASSWORD = 'hush', SECURITY_LEVEL = 'HIGH', "
           "ALLOW_SELECT = NULL WHERE DATABASE_NAME = 'SALES'"_s);
    change(u"UPDATE TW_DB SET REMARKS = 'it''s %1' WHERE DATABASE_NAME = 'SALES'"_s);
    copyDatabase([&](DialogForm& dialog) {
        EXPECT_EQ(label(dialog, u"lblDB"_s), u"SALES"_s);
        EXPECT_EQ(DialogScript::text(dialog, u"txtDB"_s), u"SALES1"_s);
        enter(dialog, u"txtDB"_s, u"SHOP"_s);
        press(dialog, ok);
    });
    EXPECT_EQ(sent().first(2), (QStringList{u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME='SALES'"_s,
                                            u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME='SALES1'"_s}));
    EXPECT_EQ(
        sent().sliced(2),
        (QStringList{u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME = 'SHOP'"_s,
                     u"SELECT * FROM TW_DB WHERE DATABASE_NAME = 'SALES'"_s,
                     u"INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, "
                     "CONNECT_STRING, REMARKS, DISPLAY_NAME) VALUES ('SHOP', '', 'DISAM', '', '', 'it''s %1', '')"_s,
                     u"SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'SALES'"_s, tableInsert(u"SHOP"_s, u"ORDERS"_s),
                     u"SELECT * FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES'"_s} +
         columnInserts(u"SHOP"_s, u"ORDERS"_s) +
         QStringList{u"SELECT * FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES'"_s,
                     u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
                     "ALLOW_DELETE, SECURITY_LEVEL, REMARKS) VALUES ( 'CLERK', 'SHOP', NULL, 0, 0, 0, 'HIGH', '')"_s,
                     u"SELECT * FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES'"_s,
                     privilegeInsert(u"SHOP"_s, u"ORDERS"_s)}));
    EXPECT_EQ(rowsOf(datasource, u"TW_DBPRV"_s, u"DATABASE_NAME = 'SHOP'"_s),
              QStringList{u"CLERK|SHOP|||<null>|0|0|0|HIGH|"_s});
    EXPECT_EQ(selectedKey(), key({u"DB"_s}));
    EXPECT_NE(find(key({u"DB"_s, u"db=SHOP"_s})), nullptr);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(CopyDialogs, ATableIsCopiedIntoTheDatabaseThatIsChosen)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s);
    copyTable([&](DialogForm& dialog) {
        EXPECT_EQ(label(dialog, u"lblDB"_s), u"SALES"_s);
        EXPECT_EQ(label(dialog, u"lblTable"_s), u"ORDERS"_s);
        EXPECT_EQ(DialogScript::text(dialog, u"txtTable"_s), u"ORDERS1"_s);
        auto* databases = dialog.findChild<DropDown*>(u"cboDB"_s);
        EXPECT_EQ(databases->currentText(), u"SALES"_s);
        EXPECT_EQ(databases->count(), 2);
        databases->select(u"DEPOT"_s);
        enter(dialog, u"txtTable"_s, u"ORDERS"_s);
        press(dialog, ok);
    });
    const QString ofOrders = u"WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS'"_s;
    EXPECT_EQ(
        sent().first(2),
        (QStringList{u"SELECT TABLE_NAME FROM TW_TABLE "_s + ofOrders,
                     u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS1'"_s}));
    EXPECT_EQ(sent().sliced(2),
              (QStringList{u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'ORDERS'"_s,
                           u"SELECT * FROM TW_TABLE "_s + ofOrders, tableInsert(u"DEPOT"_s, u"ORDERS"_s),
                           u"SELECT * FROM TW_COLUMN "_s + ofOrders} +
               columnInserts(u"DEPOT"_s, u"ORDERS"_s) +
               QStringList{u"SELECT * FROM TW_TBLPRV WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME='ORDERS'"_s,
                           privilegeInsert(u"DEPOT"_s, u"ORDERS"_s)}));
    EXPECT_NE(find(key({u"DB"_s, u"db=DEPOT"_s, u"TA"_s, u"ta=ORDERS"_s})), nullptr);
}

TEST_F(CopyDialogs, ANameForATableIsSoughtInTheDatabaseThatIsChosen)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('DEPOT', 'ORDERS'), ('DEPOT', 'ORDERS1')"_s);
    copyTable([&](DialogForm& dialog) {
        dialog.findChild<DropDown*>(u"cboDB"_s)->select(u"DEPOT"_s);
        enter(dialog, u"txtTable"_s, u"ORDERS"_s);
        boxes.expectAsk(u"Database 'DEPOT' already contains a Table called 'ORDERS\n"
                        "Do you want me to find a unique name for the new table?"_s,
                        ::boxes::Answer::Yes);
        press(dialog, ok);
    });
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME, TABLE_NAME FROM TW_TABLE WHERE TABLE_NAME IN ('ORDERS1', 'ORDERS2')"_s),
              (QStringList{u"DEPOT|ORDERS1"_s, u"DEPOT|ORDERS2"_s}));
}

TEST_F(CopyDialogs, ATableNeedsADatabase)
{
    copyTable([&](DialogForm& dialog) {
        auto* databases = dialog.findChild<DropDown*>(u"cboDB"_s);
        databases->setCurrentIndex(-1);
        boxes.expectInform(u"Please select a Database for the new Table."_s);
        press(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(dialog.focusWidget(), databases);
        press(dialog, cancel);
    });
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CopyDialogs, ATableOfTheCatalogIsCopiedOnceADatabaseIsChosen)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('TW', 'LOG', 'KEY')"_s);
    copy({u"DB"_s, u"db=TW"_s, u"TA"_s, u"ta=LOG"_s}, u"mnu_TableCopy"_s, u"frmTableCopy"_s, [&](DialogForm& dialog) {
        auto* databases = dialog.findChild<DropDown*>(u"cboDB"_s);
        EXPECT_EQ(databases->currentText(), QString());
        EXPECT_EQ(databases->count(), 1);
        boxes.expectInform(u"Please select a Database for the new Table."_s);
        press(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(statements.writes(), QStringList());
        databases->select(u"SALES"_s);
        press(dialog, ok);
    });
    EXPECT_EQ(rowsOf(datasource, u"TW_TABLE"_s, u"DATABASE_NAME = 'SALES' AND FILE_NAME = 'KEY'"_s).size(), 1);
}

TEST_F(CopyDialogs, MissingNumbersStayMissing)
{
    change(u"UPDATE TW_COLUMN SET PRECISION = NULL WHERE COLUMN_NAME = 'AMOUNT'"_s);
    change(u"UPDATE TW_FIELD SET SCALE = NULL WHERE FIELD_NAME = 'SALARY'"_s);
    change(u"UPDATE TW_FILE SET RECORD_SIZE = NULL WHERE FILE_NAME = 'PAYROLL'"_s);
    change(u"UPDATE TW_TABLE SET NUMBER_COLUMNS = NULL WHERE TABLE_NAME = 'ORDERS'"_s);
    for (const char* privileges : {"TW_DBPRV", "TW_TBLPRV"})
        change(u"UPDATE %1 SET ALLOW_SELECT = NULL, ALLOW_INSERT = NULL, ALLOW_UPDATE = NULL, ALLOW_DELETE = NULL "
               "WHERE DATABASE_NAME = 'SALES'"_s.arg(QLatin1String(privileges)));
    copyDatabase([&](DialogForm& dialog) { press(dialog, ok); });
    copyTable([&](DialogForm& dialog) { press(dialog, ok); });
    copyFile([&](DialogForm& dialog) { press(dialog, ok); });
    EXPECT_EQ(world.value(datasource, u"SELECT PRECISION FROM TW_COLUMN WHERE TABLE_NAME = 'ORDERS1' "
                                      "AND COLUMN_NAME = 'AMOUNT'"_s),
              u"<null>"_s);
    for (const char* copied : {"TABLE_NAME = 'ORDERS1'", "DATABASE_NAME = 'SALES1'"})
        EXPECT_EQ(world.value(datasource, u"SELECT NUMBER_COLUMNS FROM TW_TABLE WHERE "_s + QLatin1String(copied)),
                  u"<null>"_s)
            << copied;
    const QString none = u"<null>|<null>|<null>|<null>|"_s;
    EXPECT_EQ(rowsOf(datasource, u"TW_DBPRV"_s, u"DATABASE_NAME = 'SALES1'"_s),
              QStringList{u"CLERK|SALES1|||"_s + none + u'|'});
    EXPECT_EQ(rowsOf(datasource, u"TW_TBLPRV"_s, u"DATABASE_NAME = 'SALES1' OR TABLE_NAME = 'ORDERS1'"_s),
              (QStringList{u"SALES1|ORDERS|CLERK|"_s + none, u"SALES|ORDERS1|CLERK|"_s + none}));
    EXPECT_EQ(world.value(datasource, u"SELECT SCALE FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL1' "
                                      "AND FIELD_NAME = 'SALARY'"_s),
              u"<null>"_s);
    EXPECT_EQ(world.value(datasource, u"SELECT RECORD_SIZE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL1'"_s), u"<null>"_s);
}
