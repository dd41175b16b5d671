#include "DialogFixture.h"
#include "FaultSweep.h"

#include <QDir>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

/// Puts a folder in the place of a file that this process has open, so that the next read of it fails.
void breakOpenFile(const QString& path)
{
    const QDir descriptors(u"/proc/self/fd"_s);
    int broken = 0;
    for (const QFileInfo& one : descriptors.entryInfoList(QDir::Files | QDir::System)) {
        if (one.symLinkTarget() != QFileInfo(path).canonicalFilePath())
            continue;
        const int folder = ::open("/", O_RDONLY | O_CLOEXEC);
        ASSERT_GE(::dup2(folder, one.fileName().toInt()), 0);
        ::close(folder);
        ++broken;
    }
    ASSERT_EQ(broken, 1);
}

class CSVValidateFaultTest : public CSVValidateTest
{
protected:
    /// Clicks Start for a file whose first line is imported and which can't be read to its end, ignores the report, and
    /// acts in the dialog.
    void importHalfWay(const QByteArray& line, const DialogScript::Action& then)
    {
        // The reader takes 64 KiB at a time: what follows them is read behind the first line.
        const QString file = write(u"in.csv"_s, line + '\n' + QByteArray(100000, '\n'));
        statements.clear();
        statements.failAt(9);
        errors.expect([file](QWidget& form) {
            breakOpenFile(file);
            ScriptedErrorForm::press(form, Press::Retry);
        });
        errors.expect(Press::Ignore);
        importFile(file, [&](DialogForm& dialog) {
            action(dialog);
            then(dialog);
        });
    }

    /// Clicks Start, which faults, ignores the report, and closes the dialog, which then offers a restart.
    void startAndFault(const QString& file)
    {
        errors.expect(Press::Ignore);
        importFile(file, [&](DialogForm& dialog) {
            action(dialog);
            EXPECT_EQ(caption(dialog), u"&Restart"_s);
            EXPECT_TRUE(button(dialog, "cmdAction").isEnabled());
            EXPECT_TRUE(button(dialog, "cmdCancel").isEnabled());
            EXPECT_EQ(status(dialog), halted);
            EXPECT_EQ(progress(dialog).value(), 0);
            cancel(dialog);
        });
    }
};

} // namespace

TEST_F(CSVValidateFaultTest, AFileLineOfFourColumnsIsReportedAndNothingIsWritten)
{
    const QStringList former = wholeCatalog();
    startAndFault(writeLines(u"in.csv"_s, {good[5], u"FILE,STOCK,INDEXED,FIXED"_s}));
    EXPECT_EQ(errors.shown()[0].number, u"9"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVValidate.cmdAction_Click"_s);
    EXPECT_EQ(errors.shown()[0].additional, u"Line 2"_s);
    EXPECT_EQ(wholeCatalog(), former);
}

TEST_F(CSVValidateFaultTest, ADriverNameWithAnApostropheIsReportedAndNothingIsWritten)
{
    const QStringList former = wholeCatalog();
    startAndFault(writeLines(u"in.csv"_s, {u"DB,DEPOT,,O'NEIL,,"_s}));
    EXPECT_EQ(errors.shown()[0].number, u"ODBC Error"_s);
    EXPECT_EQ(wholeCatalog(), former);
}

TEST_F(CSVValidateFaultTest, AFileThatHasVanishedIsReported)
{
    const QString file = writeLines(u"in.csv"_s, good);
    errors.expect(Press::Ignore);
    importFile(file, [&](DialogForm& dialog) {
        QFile::remove(file);
        action(dialog);
        EXPECT_EQ(errors.shown()[0].number, u"53"_s);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        writeLines(u"in.csv"_s, good);
        expectImported();
        action(dialog);
    });
    EXPECT_EQ(statements.writes().size(), 8);
}

TEST_F(CSVValidateFaultTest, AFolderIsNoFile)
{
    startAndFault(folder.path());
    EXPECT_EQ(errors.shown()[0].number, u"75"_s);
}

TEST_F(CSVValidateFaultTest, AFileThatVanishesBetweenTheStagesWritesNothing)
{
    const QString file = writeLines(u"in.csv"_s, {u"USER,A,\"\""_s});
    expectQuestion(1, boxes::Answer::Yes, [&] { QFile::remove(file); });
    startAndFault(file);
    EXPECT_EQ(errors.shown()[0].number, u"53"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateFaultTest, NumberingStartsAnewAtARestart)
{
    importHalfWay("FIELD,EMPTY,A,STRING,0,8,8,0,0,\"\",\"\"", [&](DialogForm& dialog) {
        writeLines(u"in.csv"_s, {u"FIELD,EMPTY,B,STRING,8,8,8,0,0,\"\",\"\""_s});
        expectImported();
        action(dialog);
    });
    EXPECT_EQ(stored(u"SELECT FIELD_NAME, FIELD_NUMBER FROM TW_FIELD WHERE FILE_NAME = 'EMPTY' ORDER BY FIELD_NAME"_s),
              (QStringList{"A|1", "B|1"}));
}

TEST_F(CSVValidateFaultTest, TheTreeShowsWhatAHaltedImportHasWritten)
{
    clickExpander(key());
    clickExpander(key({u"FI"_s}));
    open(u"frmCSVImport"_s);
    importHalfWay(good[0].toUtf8(), [&](DialogForm& dialog) {
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(selectedKey(), key());
        EXPECT_TRUE(node(key()).Expanded());
        cancel(dialog);
    });
    expandTo(key({u"FI"_s}));
    EXPECT_NE(find(key({u"FI"_s, u"fi=STOCK"_s})), nullptr);
}

TEST_F(CSVValidateFaultTest, AHaltedValidationLeavesTheTree)
{
    clickExpander(key());
    clickExpander(key({u"FI"_s}));
    click(key({u"FI"_s, u"fi=PAYROLL"_s}));
    open(u"frmCSVImport"_s);
    startAndFault(writeLines(u"in.csv"_s, {u"FILE,STOCK,INDEXED,FIXED"_s}));
    EXPECT_EQ(selectedKey(), key({u"FI"_s, u"fi=PAYROLL"_s}));
}

TEST_F(CSVValidateFaultTest, ADialogUnloadedAmidTheImportEndsItWithoutTheBox)
{
    statements.failAt(10);
    errors.expect([&](QWidget& form) {
        forms::unload(u"frmCSVValidate"_s);
        ScriptedErrorForm::press(form, Press::Retry);
    });
    importFile(writeLines(u"in.csv"_s, {u"USER,A,P"_s, u"USER,B,P"_s, u"USER,C,P"_s}),
               [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
    EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME"_s), (QStringList{"A", "ADMIN", "B", "CLERK"}));
    EXPECT_EQ(selectedKey(), key());
    EXPECT_TRUE(node(key()).Expanded());
}

TEST_F(CSVValidateFaultTest, AFileThatCantBeReadToItsEndTellsHowFarTheImportCame)
{
    importHalfWay("USER,BOB,SECRET", [&](DialogForm& dialog) {
        ASSERT_EQ(errors.shown().size(), 2U);
        EXPECT_EQ(errors.shown()[1].number, u"75"_s);
        EXPECT_EQ(errors.shown()[1].trappedIn, u"frmCSVValidate.cmdAction_Click"_s);
        EXPECT_EQ(errors.shown()[1].additional, u"Line 65522"_s);
        EXPECT_EQ(status(dialog),
                  u"Import halted at Line 65522 of 100001 - What was imported before stays in the catalog"_s);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        EXPECT_TRUE(button(dialog, "cmdAction").isEnabled());
        EXPECT_TRUE(button(dialog, "cmdCancel").isEnabled());
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList{"1 ERR USER: 'BOB' is already defined in Catalog (Col 2)"});
        cancel(dialog);
    });
    EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_USER WHERE USER_NAME = 'BOB'"_s), QStringList{"BOB"});
}

TEST_F(CSVValidateFaultTest, ACatalogThatCantBeReadIsReportedUnderTheNameThatItHasComeTo)
{
    QString shown;
    statements.failAt(2);
    errors.expect([&](QWidget& form) {
        shown = window->findChild<QLabel*>(u"lblStatus"_s)->text();
        ScriptedErrorForm::press(form, Press::Ignore);
    });
    importFile(writeLines(u"in.csv"_s, good), [&](DialogForm& dialog) {
        action(dialog);
        EXPECT_EQ(status(dialog), halted);
        cancel(dialog);
    });
    QStringList texts;
    for (const QString& name : stored(u"SELECT FILE_NAME FROM TW_FILE"_s))
        texts.append("Reading current catalog File '"_L1 + name + '\'');
    EXPECT_TRUE(texts.contains(shown)) << shown.toStdString();
    EXPECT_EQ(statements.statements().size(), 2);
}

TEST_F(CSVValidateFaultTest, AFileThatChangesBetweenTheStagesIsImportedAsItIsThen)
{
    const QString file = writeLines(u"in.csv"_s, {u"USER,A,\"\""_s});
    expectQuestion(1, boxes::Answer::Yes, [&] { writeLines(u"in.csv"_s, {u"USER,B,PASS"_s, u"USER,C,PASS"_s}); });
    expectImported();
    importFile(file, [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_USER ORDER BY USER_NAME"_s), (QStringList{"ADMIN", "B", "C", "CLERK"}));
}

TEST_F(CSVValidateFaultTest, EveryEndOfLineIsTaken)
{
    const QByteArray text = "USER,A1,P|USER,A2,P|USER,A3,P";
    for (const char* end : {"\r", "\n", "\r\n"}) {
        expectImported();
        importFile(write(u"in.csv"_s, QByteArray(text).replace("|", end)), [](DialogForm& dialog) { action(dialog); });
        EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_USER WHERE USER_NAME LIKE 'A_' ORDER BY USER_NAME"_s),
                  (QStringList{"A1", "A2", "A3"}));
        change(u"DELETE FROM TW_USER WHERE USER_NAME LIKE 'A_'"_s);
    }
}

TEST_F(CSVValidateFaultTest, BytesThatAreNoTextLoseNothing)
{
    expectImported();
    importFile(write(u"in.csv"_s, "USER,BOB,\"Z\xFCrich1\"\nUSER,B2,\"Z\xC3\xBCrich2\"\n"),
               [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(stored(u"SELECT USER_PASSWORD FROM TW_USER WHERE USER_NAME LIKE 'B%' ORDER BY USER_NAME DESC"_s),
              (QStringList{u"Z\u00DCRICH1"_s, u"Z\u00DCRICH2"_s}));
}

TEST_F(CSVValidateFaultTest, ANulInALineEndsInAFindingOrAReportAndTheCatalogStaysReadable)
{
    const QStringList former = wholeCatalog();
    importFile(write(u"in.csv"_s, QByteArray("\0,A,B\nFI\0LE,A,B\n\0", 17)), [](DialogForm& dialog) {
        action(dialog);
        EXPECT_EQ(findings(dialog).size(), 3);
        cancel(dialog);
    });
    EXPECT_EQ(wholeCatalog(), former);
}

TEST_F(CSVValidateFaultTest, ANulThatReachesAStatementIsReportedAndWritesNothing)
{
    const QStringList former = wholeCatalog();
    startAndFault(write(u"in.csv"_s, QByteArray("DB,DEPOT,,DI\0SAM,,\n", 19)));
    EXPECT_EQ(errors.shown()[0].number, u"ODBC Error"_s);
    EXPECT_EQ(wholeCatalog(), former);

    errors.expect(Press::Ignore);
    expectImported();
    importFile(write(u"in.csv"_s, QByteArray("USER,BOB,A\0B\n", 13)), [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmCSVImport.Import"_s);
    EXPECT_EQ(wholeCatalog(), former);
}

TEST_F(CSVValidateFaultTest, AFileWithoutAnEndOfLineIsReportedAsItIsCounted)
{
    const QString file = write(u"in.csv"_s, "USER,BOB,SECRET\n");
    ASSERT_TRUE(QFile::resize(file, 300 * 1024 * 1024));
    startAndFault(file);
    EXPECT_EQ(errors.shown()[0].number, u"75"_s);
    EXPECT_EQ(errors.shown()[0].description, u"Path/File access error: a line of the file has no end"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateFaultTest, ALineOfTenMegabytesIsOneFinding)
{
    const QByteArray huge(10 * 1024 * 1024, ',');
    importFile(write(u"in.csv"_s, "FILE" + huge + "\nUSER,A,B\n"), [&](DialogForm& dialog) {
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList{"1 ERR FILE: Invalid File Organisation '' (Col 3)"});
        boxes.expectInform("Line 1:\nFILE"_L1 + QString(1996, ',') + u'\u2026');
        doubleClick(dialog, 0);
        cancel(dialog);
    });
}

TEST_F(CSVValidateFaultTest, AColumnOfTenMegabytesShowsItsBeginning)
{
    const QByteArray huge(10 * 1024 * 1024, 'x');
    importFile(write(u"in.csv"_s, huge), [&](DialogForm& dialog) {
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList{"1 ERR ?: Unknow line ID '"_L1 + QString(1984, 'x') + u'\u2026'});
        boxes.expectInform("Line 1:\n"_L1 + QString(2000, 'x') + u'\u2026');
        doubleClick(dialog, 0);
        cancel(dialog);
    });
}

TEST_F(CSVValidateFaultTest, ACatalogThatRefusesRowsHalfWayKeepsThoseBeforeAndTheBoxStillComes)
{
    change(u"CREATE TRIGGER readonly BEFORE INSERT ON TW_TABLE BEGIN SELECT RAISE(ABORT, 'readonly'); END"_s);
    change(u"CREATE TRIGGER readonly2 BEFORE INSERT ON TW_COLUMN BEGIN SELECT RAISE(ABORT, 'readonly'); END"_s);
    errors.expect(Press::Ignore).expect(Press::Ignore);
    expectImported();
    importFile(writeLines(u"in.csv"_s, good.first(6)), [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVImport.Import"_s);
    EXPECT_EQ(stored(u"SELECT DATABASE_NAME FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s), QStringList{"DEPOT"});
    EXPECT_EQ(stored(u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'DEPOT'"_s), QStringList());
    EXPECT_EQ(stored(u"SELECT USER_NAME FROM TW_USER WHERE USER_NAME = 'BOB'"_s), QStringList{"BOB"});
}

TEST_F(CSVValidateFaultTest, RunningAFileTwiceFailsInTheFirstStage)
{
    const QString file = writeLines(u"in.csv"_s, good);
    expectImported();
    importFile(file, [](DialogForm& dialog) { action(dialog); });
    const QStringList imported = wholeCatalog();
    window->PaneDisplay(u"frmCSVImport"_s, {datasource});
    importFile(file, [](DialogForm& dialog) {
        action(dialog);
        EXPECT_EQ(findings(dialog)[0], u"1 ERR FILE: 'STOCK' already defined in Catalog (Col 2)"_s);
        EXPECT_EQ(findings(dialog)[2], u"3 ERR DB: 'DEPOT' is already defined in Catalog (Col 2)"_s);
        cancel(dialog);
    });
    EXPECT_EQ(wholeCatalog(), imported);
}

TEST_F(CSVValidateFaultTest, TwoLinesForOneColumnFailInTheSecondStage)
{
    errors.expect(Press::Ignore);
    expectImported();
    importFile(writeLines(u"in.csv"_s, good.first(5) + good.mid(4, 1)), [](DialogForm& dialog) { action(dialog); });
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVImport.Import"_s);
    EXPECT_TRUE(errors.shown()[0].additional.contains(u"DELETE"_s));
}

TEST_F(CSVValidateFaultTest, APrivilegeOfTheCatalogFailsInTheSecondStage)
{
    const QStringList former = wholeCatalog();
    errors.expect(Press::Ignore).expect(Press::Ignore);
    expectImported();
    importFile(
        writeLines(u"in.csv"_s, {u"DBPRV,CLERK,SALES,\"\",P,1,1,1,1,TABLE"_s, u"TBLPRV,CLERK,SALES,ORDERS,1,1,1,1"_s}),
        [](DialogForm& dialog) { action(dialog); });
    for (const ScriptedErrorForm::Shown& report : errors.shown()) {
        EXPECT_EQ(report.number, u"ODBC Error"_s);
        EXPECT_EQ(report.trappedIn, u"frmCSVImport.Import"_s);
    }
    EXPECT_EQ(statements.writes().size(), 2);
    EXPECT_EQ(wholeCatalog(), former);
}

TEST_F(CSVValidateFaultTest, EveryFaultOfAStatementIsAnsweredAndTheProgramGoesOn)
{
    keepCatalog();
    const QString file = writeLines(u"in.csv"_s, good);
    const auto importAgain = [&] {
        beginAnew();
        window->PaneDisplay(u"frmCSVImport"_s, {datasource});
        expectImported();
        importFile(file, [](DialogForm& dialog) { action(dialog); });
    };
    const int firstStage = 9;
    FaultSweep sweep(statements, errors);
    sweep.run({
        .prepare =
            [&] {
                beginAnew();
                window->PaneDisplay(u"frmCSVImport"_s, {datasource});
            },
        .act =
            [&](const std::optional<FaultSweep::Fault>& fault) {
                const bool halts = fault && fault->answer == Press::Ignore && fault->statement <= firstStage;
                if (!halts)
                    expectImported();
                importFile(file, [&](DialogForm& dialog) {
                    action(dialog);
                    if (halts)
                        cancel(dialog);
                });
            },
        .outcome = [&] { return wholeCatalog() + QStringList{currentPane()}; },
        .afterIgnore =
            [&](int statement, const QStringList& all) {
                if (statement <= firstStage)
                    return QStringList();
                // The type of a column is asked for before its INSERT, and both are lost.
                const bool asksForType = all[statement - 1].startsWith("SELECT PRECISION"_L1);
                return all.sliced(statement + (asksForType ? 1 : 0));
            },
        .goOn = importAgain,
    });
}
