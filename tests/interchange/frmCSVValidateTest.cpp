#include "InterchangeFixture.h"

#include <QTimer>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace
{

class CSVValidateTest : public InterchangeTest
{
protected:
    void SetUp() override
    {
        InterchangeTest::SetUp();
        open(u"frmCSVImport"_s);
    }

    static QString caption(DialogForm& dialog) { return button(dialog, "cmdAction").text(); }

    void expectImported() { boxes.expectInform(u"CSV Successfully imported."_s); }

    /// Does something at the first yield at which the status says so.
    static void when(DialogForm& dialog, const QString& beginning, const std::function<void()>& then)
    {
        auto* timer = new QTimer(&dialog);
        connect(*timer, [&dialog, timer, beginning, then] {
            if (!status(dialog).startsWith(beginning))
                return;
            timer->stop();
            then();
        });
        timer->start(0);
    }

    static QStringList users(int count)
    {
        QStringList all;
        for (int i = 1; i <= count; ++i)
            all.append(u"USER,BOB%1,SECRET"_s.arg(i));
        return all;
    }

    const QStringList good{
        u"FILE,STOCK,INDEXED,FIXED,20"_s,
        u"FIELD,STOCK,PART,STRING,0,8,8,0,0,\"\",\"none\""_s,
        u"DB,DEPOT,\"/data\",DISAM,\"\",Depot"_s,
        u"TABLE,DEPOT,PARTS,TABLE,STOCK,\"parts.dat\",\"\",Parts"_s,
        u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,\"\",Part,0"_s,
        u"USER,BOB,secret"_s,
        u"DBPRV,BOB,DEPOT,BOBBY,Pass,1,0,1,0,TABLE"_s,
        u"TBLPRV,BOB,DEPOT,PARTS,0,1,0,1"_s,
    };

private:
    static void connect(QTimer& timer, std::function<void()> then)
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, std::move(then));
    }
};

} // namespace

TEST_F(CSVValidateTest, ThePaneNamesTheDatasource)
{
    EXPECT_EQ(currentPane(), u"frmCSVImport"_s);
    EXPECT_EQ(paneTitle(), "Import Datasource '"_L1 + datasource + "' Catalog from File."_L1);
    EXPECT_TRUE(window->currentPane()->findChild<QWidget*>(u"imgDatasource"_s)->isVisible());
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
    import(writeLines(u"in.csv"_s, good), [](DialogForm& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"\"/in.csv\" - Validating..."_s);
    EXPECT_EQ(status(dialog), u"Click Start to begin Validation Stage (Stage 1 of 2)"_s);
    EXPECT_EQ(progress(dialog).value(), 0);
    EXPECT_EQ(caption(dialog), u"&Start"_s);
    EXPECT_TRUE(button(dialog, "cmdCancel").isEnabled());
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
    clickExpander(key());
    open(u"frmCSVImport"_s);
    expectImported();
    import(writeLines(u"in.csv"_s, good), [](DialogForm& dialog) { action(dialog);
});
EXPECT_EQ(stored(u"SELECT * FROM TW_FILE WHERE FILE_NAME = 'STOCK'"_s), QStringList{"STOCK||20|INDEXED|FIXED|"});
EXPECT_EQ(stored(u"SELECT FIELD_NAME, FIELD_NUMBER, DEFAULT_VALUE FROM TW_FIELD WHERE FILE_NAME = 'STOCK'"_s),
          QStringList{"PART|1|none"});
EXPECT_EQ(stored(u"SELECT * FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s), QStringList{"DEPOT|/data|DISAM||||Depot"});
EXPECT_EQ(stored(u"SELECT TABLE_NAME, NUMBER_COLUMNS, DISPLAY_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'DEPOT'"_s),
          QStringList{"PARTS|0|Parts"});
EXPECT_EQ(stored(u"SELECT COLUMN_NAME, COLUMN_NUMBER, LENGTH FROM TW_COLUMN WHERE DATABASE_NAME = 'DEPOT'"_s),
          QStringList{"PART|1|8"});
EXPECT_EQ(stored(u"SELECT USER_PASSWORD FROM TW_USER WHERE USER_NAME = 'BOB'"_s), QStringList{"SECRET"});
EXPECT_EQ(stored(u"SELECT DATABASE_PASSWORD, SECURITY_LEVEL FROM TW_DBPRV WHERE USER_NAME = 'BOB'"_s),
          QStringList{"Pass|TABLE"});
EXPECT_EQ(stored(u"SELECT ALLOW_INSERT, ALLOW_DELETE FROM TW_TBLPRV WHERE USER_NAME = 'BOB'"_s), QStringList{"1|1"});
EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
EXPECT_EQ(selectedKey(), key());
EXPECT_TRUE(node(key()).Expanded());
}

TEST_F(CSVValidateTest, TheCatalogIsReadBeforeALineAndWrittenLineByLine)
{
    expectImported();
    import(writeLines(u"in.csv"_s, {good[0], good[5]}), [](DialogForm& dialog) { action(dialog);
});
QStringList tables;
for (const QString& statement : sent())
    tables.append(statement.section(' '_L1, 0, 0) + ' ' +
                  statement.mid(statement.indexOf(u"TW_"_s)).section(' '_L1, 0, 0));
EXPECT_EQ(tables,
          (QStringList{"SELECT TW_FILE", "SELECT TW_FIELD", "SELECT TW_DB", "SELECT TW_TABLE", "SELECT TW_COLUMN",
                       "SELECT TW_USER", "SELECT TW_DBPRV", "SELECT TW_TBLPRV", "INSERT TW_FILE", "INSERT TW_USER"}));
}

TEST_F(CSVValidateTest, ErrorsAndWarningsAreListedAndSummedUp)
{
    const QStringList former = wholeCatalog();
    const QString one = writeLines(u"in.csv"_s, {u"FILE,STOCK,HEAP,FIXED,20"_s, u""_s, good[5]});
    import(one, [&](DialogForm& dialog) {
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
    import(writeLines(u"in.csv"_s, {u"X"_s, u"USER,A,\"\""_s}), [&](DialogForm& dialog) {
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
    import(writeLines(u"in.csv"_s, {u"USER,A,\"\""_s}), [&](DialogForm& dialog) {
        boxes.expectAsk(u"This CSV has no errors, but has 1 warning.\nDo you wish to import it?"_s, boxes::Answer::No,
                        [&] { EXPECT_EQ(status(dialog), u"Validated with 1 warning"_s);
});
action(dialog);
EXPECT_EQ(caption(dialog), u"&Restart"_s);
EXPECT_TRUE(button(dialog, "cmdCancel").isEnabled());
cancel(dialog);
});
EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateTest, WarningsAskAndYesImports)
{
    boxes.expectAsk(u"This CSV has no errors, but has 2 warnings.\nDo you wish to import it?"_s, boxes::Answer::Yes);
    expectImported();
    import(writeLines(u"in.csv"_s, {u"USER,A,\"\""_s, u"USER,B,\"\""_s}), [](DialogForm& dialog) { action(dialog);
});
EXPECT_EQ(statements.writes().size(), 2);
}

TEST_F(CSVValidateTest, AnEmptyFileIsToldOf)
{
    boxes.expectInform(u"The CSV is empty"_s);
    import(write(u"in.csv"_s, ""), [](DialogForm& dialog) {
        action(dialog);
    EXPECT_EQ(caption(dialog), u"&Restart"_s);
    cancel(dialog);
});
}

TEST_F(CSVValidateTest, BlankLinesAlonePassAndWriteNothing)
{
    expectImported();
    import(write(u"in.csv"_s, "\r\n\n\r\r\n"), [](DialogForm& dialog) { action(dialog);
});
EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateTest, TheStagesShowTheLineThatTheyHaveComeTo)
{
    QStringList shown;
    import(writeLines(u"in.csv"_s, {good[0], good[5], u"USER,CLERK2,\"\""_s}), [&](DialogForm& dialog) {
        boxes.expectAsk(u"This CSV has no errors, but has 1 warning.\nDo you wish to import it?"_s, boxes::Answer::Yes,
                        [&] { EXPECT_EQ(progress(dialog).value(), 3);
});
boxes.expect(u"CSV Successfully imported."_s, boxes::Icon::Information, [&] {
    shown.append(status(dialog));
    EXPECT_EQ(progress(dialog).value(), 3);
    EXPECT_FALSE(button(dialog, "cmdAction").isEnabled());
    EXPECT_FALSE(button(dialog, "cmdCancel").isEnabled());
    dialog.close();
    EXPECT_TRUE(dialog.isVisible());
});
action(dialog);
});
EXPECT_EQ(shown, QStringList{"Importing Line 3 of 3"});
}

TEST_F(CSVValidateTest, AStopWhileCountingHalts)
{
    import(writeLines(u"in.csv"_s, users(2000)), [&](DialogForm& dialog) {
        QTimer::singleShot(0, &dialog, [&] {
            EXPECT_EQ(caption(dialog), u"&Stop"_s);
    action(dialog);
});
action(dialog);
EXPECT_EQ(caption(dialog), u"&Restart"_s);
EXPECT_EQ(status(dialog), u"Validation halted - Click Restart to try again"_s);
EXPECT_EQ(progress(dialog).value(), 0);
cancel(dialog);
});
EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateTest, AStopAmidTheLinesHaltsAndNothingIsImported)
{
    import(writeLines(u"in.csv"_s, users(100000)), [&](DialogForm& dialog) {
        QString stoppedAt;
    when(dialog, u"Validating Line"_s, [&] {
        stoppedAt = status(dialog);
        action(dialog);
    });
    action(dialog);
    EXPECT_TRUE(stoppedAt.endsWith(u" of 100000"_s)) << stoppedAt.toStdString();
    EXPECT_NE(stoppedAt, u"Validating Line 100000 of 100000"_s);
    EXPECT_EQ(caption(dialog), u"&Restart"_s);
    EXPECT_EQ(status(dialog), u"Validation halted - Click Restart to try again"_s);
    EXPECT_EQ(progress(dialog).value(), 0);

    writeLines(u"in.csv"_s, {good[5]});
    expectImported();
    action(dialog);
});
EXPECT_EQ(statements.writes().size(), 1);
}

TEST_F(CSVValidateTest, AStopBehindAnErrorSumsUpWhatWasFound)
{
    import(writeLines(u"in.csv"_s, QStringList{"X"} + users(100000)), [&](DialogForm& dialog) {
        when(dialog, u"Validating Line"_s, [&] { action(dialog);
});
action(dialog);
EXPECT_EQ(status(dialog), u"1 error found.  Correct the problem and click Restart to retry."_s);
EXPECT_EQ(caption(dialog), u"&Restart"_s);
cancel(dialog);
});
}

TEST_F(CSVValidateTest, AStopBehindAWarningAsksNothing)
{
    import(writeLines(u"in.csv"_s, QStringList{"USER,A,\"\""} + users(100000)), [&](DialogForm& dialog) {
        when(dialog, u"Validating Line"_s, [&] { action(dialog);
});
action(dialog);
EXPECT_EQ(status(dialog), u"Validation halted - Click Restart to try again"_s);
cancel(dialog);
});
}

TEST_F(CSVValidateTest, ACancelAmidTheLinesEndsTheDialog)
{
    import(writeLines(u"in.csv"_s, users(100000)), [&](DialogForm& dialog) {
        when(dialog, u"Validating Line"_s, [&] { cancel(dialog);
});
action(dialog);
});
EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateTest, TheTitleBarCancelsToo)
{
    import(writeLines(u"in.csv"_s, QStringList{"X"} + users(100000)), [&](DialogForm& dialog) {
        when(dialog, u"Validating Line"_s, [&] { dialog.close();
});
action(dialog);
});
EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateTest, The5001stErrorStopsTheRunAndARestartClearsTheList)
{
    import(writeLines(u"in.csv"_s, QStringList(6000, u"X"_s)), [&](DialogForm& dialog) {
        action(dialog);
    const QStringList all = findings(dialog);
    ASSERT_EQ(all.size(), 5002);
    EXPECT_EQ(all[5000], u"5001 ERR ?: Unknow line ID 'X'"_s);
    EXPECT_EQ(all[5001], u"5001 XXX ?: Stopped validating after 5001 errors"_s);
    EXPECT_EQ(caption(dialog), u"&Restart"_s);
    EXPECT_EQ(status(dialog), u"5001 errors found.  Correct the problems and click Restart to retry."_s);
    writeLines(u"in.csv"_s, {u"Y"_s});
    action(dialog);
    EXPECT_EQ(findings(dialog), QStringList{"1 ERR ?: Unknow line ID 'Y'"});
    cancel(dialog);
});
}

TEST_F(CSVValidateTest, ADoubleClickShowsTheLineWithoutItsPassword)
{
    import(writeLines(u"in.csv"_s, {good[0], u"FILE,OTHER,HEAP,FIXED,1"_s, u"USER,CLERK,TOP-SECRET"_s, u"A\tB\x01"_s}),
           [&](DialogForm& dialog) {
               action(dialog);
    auto* view = qobject_cast<QTreeView*>(&list(dialog));
    const auto doubleClick = [&](int row) {
        const QPoint where = view->visualRect(view->model()->index(row, 3)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, where);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, where);
    };
    boxes.expectInform(u"Line 2:\nFILE,OTHER,HEAP,FIXED,1"_s);
    doubleClick(0);
    boxes.expectInform(u"Line 3:\nUSER,CLERK,**********"_s);
    doubleClick(1);
    boxes.expectInform(u"Line 4:\nA\tB\uFFFD"_s);
    doubleClick(2);
    writeLines(u"in.csv"_s, {good[0]});
    boxes.expectInform(u"The file has no line 2 any more."_s);
    doubleClick(0);
    QFile::remove(path(u"in.csv"_s));
    errors.expect(Press::Ignore);
    doubleClick(0);
    EXPECT_EQ(errors.shown()[0].number, u"53"_s);
    cancel(dialog);
});
}

TEST_F(CSVValidateTest, AColumnOfATypeThatWasAssumedIsWarnedOfAgainInTheSecondStage)
{
    QStringList last;
    const QStringList lines = good.first(4) + QStringList{u"COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,\"\""_s};
    import(writeLines(u"in.csv"_s, lines), [&](DialogForm& dialog) {
        boxes.expectAsk(u"This CSV has no errors, but has 1 warning.\nDo you wish to import it?"_s, boxes::Answer::Yes);
    boxes.expect(u"CSV Successfully imported."_s, boxes::Icon::Information, [&] { last = findings(dialog); });
    action(dialog);
});
const QString warning = u"5 WRN Column : Missing Display Name & Column Type - Assuming Default"_s;
EXPECT_EQ(last, (QStringList{warning, warning}));
}

TEST_F(CSVValidateTest, EnterStartsAndEscapeCancels)
{
    import(writeLines(u"in.csv"_s, {u"X"_s}), [&](DialogForm& dialog) {
        list(dialog).setFocus();
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(caption(dialog), u"&Restart"_s);
    QTest::keyClick(&dialog, Qt::Key_Escape);
});
EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
}
