#include "frmCSVValidate.h"

#include "DialogFixture.h"

using namespace Qt::StringLiterals;

TEST_F(CSVValidateTest, ThePaneNamesTheDatasource)
{
    EXPECT_EQ(currentPane(), u"frmCSVImport"_s);
    EXPECT_EQ(paneTitle(), "Import Datasource '"_L1 + datasource + "' Catalog from File."_L1);
    EXPECT_TRUE(window->currentPane()->findChild<QWidget*>(u"imgDatasource"_s)->isVisible());
}

TEST_F(CSVValidateTest, ThePaneOfADatasourceThatDoesNotConnectHasNoPictureAndAsksForNoFile)
{
    const QString unreachable = datasource + "Far"_L1;
    world.addUnreachableDatasource(unreachable);
    window->FetchTreeviewRoot();
    expectUnreachable();
    window->PaneDisplay(u"frmCSVImport"_s, {unreachable});
    EXPECT_EQ(paneTitle(), "Import Datasource '"_L1 + unreachable + "' Catalog from File."_L1);
    EXPECT_FALSE(window->currentPane()->findChild<QWidget*>(u"imgDatasource"_s)->isVisible());
    expectUnreachable();
    clickAction();
    EXPECT_TRUE(fileDialogs.requests().empty());
}

TEST_F(CSVValidateTest, TheCaptionIsTheNameFromItsLastSeparatorOn)
{
    importFile(writeLines(u"a\\b.csv"_s, good), [](DialogForm& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"\"\\b.csv\" - Validating..."_s);
        cancel(dialog);
    });
}

TEST_F(CSVValidateTest, TheFileIsChosenFirstAndACancelSaysNothing)
{
    fileDialogs.expectCancelled(filedialogs::Mode::Open, importTitle);
    clickAction();
    const filedialogs::Request& request = fileDialogs.requests()[0];
    EXPECT_EQ(request.suggestedName, QString());
    EXPECT_EQ(request.defaultExtension, u"*.txt"_s);
    EXPECT_EQ(request.filter, u"CSV File (*.csv)|*.csv|Text File (*.txt)|*.txt|All Files (*.*)|*.*"_s);
    EXPECT_TRUE(request.fileMustExist);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(CSVValidateTest, TheDialogWaitsForStart)
{
    importFile(writeLines(u"in.csv"_s, good), [](DialogForm& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"\"/in.csv\" - Validating..."_s);
        EXPECT_EQ(status(dialog), u"Click Start to begin Validation Stage (Stage 1 of 2)"_s);
        EXPECT_EQ(progress(dialog).value(), 0);
        EXPECT_EQ(caption(dialog), u"&Start"_s);
        EXPECT_TRUE(button(dialog, "cmdAction").isEnabled());
        EXPECT_TRUE(button(dialog, "cmdCancel").isEnabled());
        EXPECT_EQ(dialog.focusWidget(), &button(dialog, "cmdAction"));
        const QAbstractItemModel& model = *list(dialog).model();
        QStringList headings;
        for (int column = 0; column < model.columnCount(); ++column)
            headings.append(model.headerData(column, Qt::Horizontal).toString());
        EXPECT_EQ(headings, (QStringList{"Line", "Severity", "Type", "Description"}));
        cancel(dialog);
    });
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(CSVValidateTest, AFileWithoutFindingsIsImportedInOneClick)
{
    expectImported();
    importFile(writeLines(u"in.csv"_s, good), [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(stored(u"SELECT * FROM TW_FILE WHERE FILE_NAME = 'STOCK'"_s), QStringList{"STOCK||20|INDEXED|FIXED|"});
    EXPECT_EQ(stored(u"SELECT FIELD_NAME, FIELD_NUMBER, DEFAULT_VALUE FROM TW_FIELD WHERE FILE_NAME = 'STOCK'"_s),
              QStringList{"PART|1|none"});
    EXPECT_EQ(stored(u"SELECT * FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s),
              QStringList{"DEPOT|/data|DISAM||||Depot"});
    EXPECT_EQ(stored(u"SELECT TABLE_NAME, NUMBER_COLUMNS, DISPLAY_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'DEPOT'"_s),
              QStringList{"PARTS|0|Parts"});
    EXPECT_EQ(stored(u"SELECT COLUMN_NAME, COLUMN_NUMBER, LENGTH FROM TW_COLUMN WHERE DATABASE_NAME = 'DEPOT'"_s),
              QStringList{"PART|1|8"});
    EXPECT_EQ(stored(u"SELECT USER_PASSWORD FROM TW_USER WHERE USER_NAME = 'BOB'"_s), QStringList{"SECRET"});
    EXPECT_EQ(stored(u"SELECT DATABASE_PASSWORD, SECURITY_LEVEL FROM TW_DBPRV WHERE USER_NAME = 'BOB'"_s),
              QStringList{"Pass|TABLE"});
    EXPECT_EQ(stored(u"SELECT ALLOW_INSERT, ALLOW_DELETE FROM TW_TBLPRV WHERE USER_NAME = 'BOB'"_s),
              QStringList{"1|1"});
}

TEST_F(CSVValidateTest, TheDatasourceIsShownAnewOnceTheDialogHasGone)
{
    clickExpander(key());
    clickExpander(key({u"FI"_s}));
    EXPECT_EQ(find(key({u"FI"_s, u"fi=STOCK"_s})), nullptr);
    click(key({u"FI"_s, u"fi=PAYROLL"_s}));
    clickExpander(key());
    ASSERT_FALSE(node(key()).Expanded());
    open(u"frmCSVImport"_s);
    bool isGone = false;
    int reads = 0;
    expectImported();
    importFile(writeLines(u"in.csv"_s, good), [&](DialogForm& dialog) {
        QObject::connect(window->tvwExplorer().model(), &QAbstractItemModel::rowsInserted, window.get(), [&] {
            isGone = forms::loaded(u"frmCSVValidate"_s) == nullptr && !dialog.isVisible();
            ++reads;
        });
        action(dialog);
        EXPECT_GT(reads, 0);
        EXPECT_TRUE(isGone);
    });
    EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
    EXPECT_EQ(selectedKey(), key());
    EXPECT_TRUE(node(key()).Expanded());
    clickExpander(key({u"FI"_s}));
    EXPECT_NE(find(key({u"FI"_s, u"fi=STOCK"_s})), nullptr);
}

TEST_F(CSVValidateTest, TheCatalogIsReadBeforeALineAndWrittenLineByLine)
{
    expectImported();
    importFile(writeLines(u"in.csv"_s, {good[0], good[5]}), [](DialogForm& dialog) { action(dialog); });
    QStringList tables;
    for (const QString& statement : sent())
        tables.append(statement.section(' '_L1, 0, 0) + ' ' +
                      statement.mid(statement.indexOf(u"TW_"_s)).section(' '_L1, 0, 0));
    EXPECT_EQ(tables, (QStringList{"SELECT TW_FILE", "SELECT TW_FIELD", "SELECT TW_DB", "SELECT TW_TABLE",
                                   "SELECT TW_COLUMN", "SELECT TW_USER", "SELECT TW_DBPRV", "SELECT TW_TBLPRV",
                                   "INSERT TW_FILE", "INSERT TW_USER"}));
}

TEST_F(CSVValidateTest, ErrorsAndWarningsAreListedAndSummedUp)
{
    const QStringList former = wholeCatalog();
    const QString one = writeLines(u"in.csv"_s, {u"FILE,STOCK,HEAP,FIXED,20"_s, u""_s, good[5]});
    importFile(one, [&](DialogForm& dialog) {
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList{"1 ERR FILE: Invalid File Organisation 'HEAP' (Col 3)"});
        EXPECT_EQ(status(dialog), u"1 error found.  Correct the problem and click Restart to retry."_s);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        EXPECT_EQ(progress(dialog).value(), 3);
        EXPECT_EQ(progress(dialog).maximum(), 3);

        writeLines(u"in.csv"_s, {u"FILE,STOCK,HEAP,FIXED,20"_s, u"USER,A,\"\""_s, u"X"_s});
        action(dialog);
        EXPECT_EQ(findings(dialog), (QStringList{"1 ERR FILE: Invalid File Organisation 'HEAP' (Col 3)",
                                                 "2 WRN USER: Password is blank", "3 ERR ?: Unknow line ID 'X'"}));
        EXPECT_EQ(status(dialog), u"2 errors and 1 warning found.  Correct the problems and click Restart to retry."_s);

        writeLines(u"in.csv"_s, {u"USER,A,\"\""_s, u"USER,B,\"\""_s, u"X"_s});
        action(dialog);
        EXPECT_EQ(status(dialog), u"1 error and 2 warnings found.  Correct the problem and click Restart to retry."_s);
        cancel(dialog);
    });
    EXPECT_EQ(wholeCatalog(), former);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateTest, RowsCarryThePictureOfTheirSeverity)
{
    importFile(writeLines(u"in.csv"_s, {u"X"_s, u"USER,A,\"\""_s}), [&](DialogForm& dialog) {
        action(dialog);
        const QAbstractItemModel& model = *list(dialog).model();
        const auto picture = [&](int row) {
            return qvariant_cast<QIcon>(model.index(row, 0).data(Qt::DecorationRole)).pixmap(16).toImage();
        };
        EXPECT_FALSE(picture(0).isNull());
        EXPECT_FALSE(picture(1).isNull());
        EXPECT_NE(picture(0), picture(1));
        cancel(dialog);
    });
}

TEST_F(CSVValidateTest, WarningsAskAndNoLeavesTheCatalog)
{
    importFile(writeLines(u"in.csv"_s, {u"USER,A,\"\""_s}), [&](DialogForm& dialog) {
        expectQuestion(1, boxes::Answer::No, [&] { EXPECT_EQ(status(dialog), u"Validated with 1 warning"_s); });
        action(dialog);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        EXPECT_TRUE(button(dialog, "cmdCancel").isEnabled());
        cancel(dialog);
    });
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateTest, WarningsAskAndYesImports)
{
    expectQuestion(2, boxes::Answer::Yes);
    expectImported();
    importFile(writeLines(u"in.csv"_s, {u"USER,A,\"\""_s, u"USER,B,\"\""_s}),
               [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(statements.writes().size(), 2);
}

TEST_F(CSVValidateTest, AnEmptyFileIsToldOf)
{
    boxes.expectInform(u"The CSV is empty"_s);
    importFile(write(u"in.csv"_s, ""), [](DialogForm& dialog) {
        action(dialog);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        cancel(dialog);
    });
}

TEST_F(CSVValidateTest, BlankLinesAlonePassAndWriteNothing)
{
    expectImported();
    importFile(write(u"in.csv"_s, "\r\n\n\r\r\n"), [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateTest, TheStagesShowTheLineThatTheyHaveComeTo)
{
    QStringList shown;
    importFile(writeLines(u"in.csv"_s, {good[0], good[5], u"USER,CLERK2,\"\""_s}), [&](DialogForm& dialog) {
        expectQuestion(1, boxes::Answer::Yes, [&] { EXPECT_EQ(progress(dialog).value(), 3); });
        boxes.expect(u"CSV Successfully imported."_s, boxes::Icon::Information, [&] {
            shown.append(status(dialog));
            EXPECT_EQ(progress(dialog).value(), 3);
            EXPECT_FALSE(button(dialog, "cmdAction").isEnabled());
            EXPECT_FALSE(button(dialog, "cmdCancel").isEnabled());
            tryToEnd(dialog);
        });
        action(dialog);
    });
    EXPECT_EQ(shown, QStringList{"Importing Line 3 of 3"});
    EXPECT_EQ(statements.writes().size(), 3);
}

TEST_F(CSVValidateTest, ADoubleClickShowsTheLineWithoutItsPassword)
{
    importFile(
        writeLines(u"in.csv"_s, {good[0], u"FILE,OTHER,HEAP,FIXED,1"_s, u"USER,CLERK,TOP-SECRET"_s, u"A\tB\x01"_s}),
        [&](DialogForm& dialog) {
            action(dialog);
            boxes.expectInform(u"Line 2:\nFILE,OTHER,HEAP,FIXED,1"_s);
            doubleClick(dialog, 0);
            boxes.expectInform(u"Line 3:\nUSER,CLERK,**********"_s);
            doubleClick(dialog, 1);
            boxes.expectInform(u"Line 4:\nA\tB\uFFFD"_s);
            doubleClick(dialog, 2);
            writeLines(u"in.csv"_s, {good[0]});
            boxes.expectInform(u"The file has no line 2 any more."_s);
            doubleClick(dialog, 0);
            QFile::remove(path(u"in.csv"_s));
            errors.expect(Press::Ignore);
            doubleClick(dialog, 0);
            EXPECT_EQ(errors.shown()[0].number, u"53"_s);
            cancel(dialog);
        });
}

TEST_F(CSVValidateTest, TheSecondStageBeginsWithNoProgressAndBothButtonsOff)
{
    std::vector<int> values;
    bool isOff = false;
    importFile(writeLines(u"in.csv"_s, {good[0], good[5], u"USER,CLERK2,\"\""_s}), [&](DialogForm& dialog) {
        expectQuestion(1, boxes::Answer::Yes, [&] { values.clear(); });
        expectImported();
        QObject::connect(&progress(dialog), &QProgressBar::valueChanged, &dialog, [&](int value) {
            values.push_back(value);
            if (value == 0)
                isOff = !button(dialog, "cmdAction").isEnabled() && !button(dialog, "cmdCancel").isEnabled();
        });
        action(dialog);
    });
    ASSERT_GE(values.size(), 2U);
    EXPECT_EQ(values.front(), 0);
    EXPECT_EQ(values.back(), 3);
    EXPECT_TRUE(isOff);
}

TEST_F(CSVValidateTest, WarningsAreUnlimited)
{
    importFile(writeLines(u"in.csv"_s, QStringList(6000, u"TABLE,SALES,A,\"\",PAYROLL,,,"_s)), [&](DialogForm& dialog) {
        expectQuestion(6000, boxes::Answer::No);
        action(dialog);
        const QStringList all = findings(dialog);
        ASSERT_EQ(all.size(), 6000);
        EXPECT_EQ(all.back(), u"6000 WRN TABLE: Table Type not set (Col 4)"_s);
        cancel(dialog);
    });
}

TEST_F(CSVValidateTest, ALineThatLosesAColumnIsLostAloneAndReportedByItsNumber)
{
    const QStringList former = wholeCatalog();
    expectQuestion(1, boxes::Answer::Yes);
    errors.expect(Press::Ignore);
    expectImported();
    importFile(writeLines(u"in.csv"_s, {u"USER,BOB,"_s}), [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(errors.shown()[0].number, u"9"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVImport.Import"_s);
    EXPECT_EQ(errors.shown()[0].additional, u"Line 1"_s);
    EXPECT_EQ(wholeCatalog(), former);
}

TEST_F(CSVValidateTest, AColumnOfATypeThatWasAssumedIsWarnedOfAgainInTheSecondStage)
{
    QStringList last;
    const QStringList lines = good.first(4) + QStringList{u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,\"\""_s};
    importFile(writeLines(u"in.csv"_s, lines), [&](DialogForm& dialog) {
        expectQuestion(1, boxes::Answer::Yes);
        boxes.expect(u"CSV Successfully imported."_s, boxes::Icon::Information, [&] { last = findings(dialog); });
        action(dialog);
    });
    const QString warning = u"5 WRN Column : Missing Display Name & Column Type - Assuming Default"_s;
    EXPECT_EQ(last, (QStringList{warning, warning}));
}

TEST_F(CSVValidateTest, EnterStartsAndEscapeCancels)
{
    importFile(writeLines(u"in.csv"_s, {u"X"_s}), [&](DialogForm& dialog) {
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        QTest::mouseClick(list(dialog).viewport(), Qt::LeftButton, {},
                          list(dialog).visualRect(list(dialog).model()->index(0, 3)).center());
        EXPECT_EQ(dialog.focusWidget(), &list(dialog));
        writeLines(u"in.csv"_s, {u"Y"_s});
        QTest::keyClick(&list(dialog), Qt::Key_Return);
        EXPECT_EQ(findings(dialog), QStringList{"1 ERR ?: Unknow line ID 'Y'"});
        list(dialog).setFocus();
        QTest::keyClick(&list(dialog), Qt::Key_Escape);
    });
    EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
}

TEST_F(CSVValidateTest, ARestartBeginsWithNoProgress)
{
    const auto act = [&](DialogForm& dialog) {
        action(dialog);
        EXPECT_EQ(progress(dialog).value(), 2);
        write(u"in.csv"_s, "");
        boxes.expect(u"The CSV is empty"_s, boxes::Icon::Information, [&] { EXPECT_EQ(progress(dialog).value(), 0); });
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList());
        cancel(dialog);
    };
    importFile(writeLines(u"in.csv"_s, {u"X"_s, u"Y"_s}), act);
}

TEST_F(CSVValidateTest, TheAnswerIsNoEvenAfterAnImport)
{
    dialogs.expect(u"frmCSVValidate"_s, [](DialogForm& dialog) { cancel(dialog); });
    EXPECT_FALSE(frmCSVValidate::Validate(datasource, writeLines(u"in.csv"_s, good)));
    expectImported();
    dialogs.expect(u"frmCSVValidate"_s, [](DialogForm& dialog) { action(dialog); });
    EXPECT_FALSE(frmCSVValidate::Validate(datasource, path(u"in.csv"_s)));
}

/// The routine that no button calls.
class CSVRemoveAllTest : public CSVValidateTest
{
protected:
    static void removeAll(DialogForm& dialog) { static_cast<frmCSVValidate&>(dialog).RemoveAll(); }

    const QStringList removal{
        u"Removing Files: DELETE FROM TW_FILE WHERE FILE_NAME NOT IN ('CNTRL','COLUMN','DB','DBPRV','DRIVER','FIELD',"
        "'FILE','KEY','LOCDT','SQLDT','TABLE','TBLPRV','USER')"_s,
        u"Removing Fields: DELETE FROM TW_FIELD WHERE FILE_NAME NOT IN ('CNTRL','COLUMN','DB','DBPRV','DRIVER',"
        "'FIELD','FILE','KEY','LOCDT','SQLDT','TABLE','TBLPRV','USER')"_s,
        u"Removing Databases: DELETE FROM TW_DB WHERE DATABASE_NAME <>'TW'"_s,
        u"Removing Tables: DELETE FROM TW_TABLE WHERE DATABASE_NAME <>'TW'"_s,
        u"Removing Columns: DELETE FROM TW_COLUMN WHERE DATABASE_NAME <>'TW'"_s,
        u"Removing Database Privileges: DELETE FROM TW_DBPRV WHERE DATABASE_NAME <>'TW' "_s,
        u"Removing Table Privileges: DELETE FROM TW_TBLPRV WHERE DATABASE_NAME <>'TW' "_s,
        u"Removing Users: DELETE FROM TW_USER WHERE USER_NAME <> 'ADMIN'"_s,
    };
};

TEST_F(CSVRemoveAllTest, EachStatementRunsUnderItsStatus)
{
    QStringList seen;
    importFile(writeLines(u"in.csv"_s, good), [&](DialogForm& dialog) {
        // Each fails once, and its error form shows the status.
        for (int i = 0; i < removal.size(); ++i) {
            statements.failAt(2 * i + 1);
            errors.expect([&](QWidget& form) {
                seen.append(status(dialog) + ": "_L1 + statements.statements().last());
                ScriptedErrorForm::press(form, Press::Retry);
            });
        }
        removeAll(dialog);
        cancel(dialog);
    });
    EXPECT_EQ(seen, removal);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVValidate.RemoveAll"_s);
    EXPECT_TRUE(errors.shown()[0].additional.contains(u"TW_FILE"_s));
    EXPECT_EQ(stored(u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME IN ('PAYROLL', 'KEY')"_s), QStringList{"KEY"});
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME FROM TW_TABLE WHERE DATABASE_NAME <> 'TW'"_s), QStringList());
    EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_USER"_s), QStringList{"ADMIN"});
}

TEST_F(CSVRemoveAllTest, AnIgnoredFailureEndsIt)
{
    importFile(writeLines(u"in.csv"_s, good), [&](DialogForm& dialog) {
        statements.failAt(3);
        errors.expect(Press::Ignore);
        removeAll(dialog);
        cancel(dialog);
    });
    EXPECT_EQ(statements.writes().size(), 3);
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME <> 'TW'"_s), QStringList{"SALES"});
}
