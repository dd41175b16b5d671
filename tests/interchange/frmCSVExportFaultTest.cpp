#include "CConnections.h"
#include "Database.h"
#include "ExportFixture.h"
#include "FaultSweep.h"
#include "FileSizeLimit.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// Exports a catalog of a driver that keeps no log of its statements, which could not grow under a limit either.
class CSVExportLimitTest : public CSVExportTest
{
protected:
    void SetUp() override
    {
        CSVExportTest::SetUp();
        world.addSystemDatasource(unlogged);
        start();
        window->PaneDisplay(u"frmCSVExport"_s, {unlogged});
    }

    void run(const QString& statement) const { CConnections::instance().Item(unlogged)->db()->Execute(statement); }

private:
    const QString unlogged = datasource + "Unlogged"_L1;
};

} // namespace

TEST_F(CSVExportTest, AFileThatCantBeWrittenGivesTheAccessBoxAlone)
{
    openPane();
    boxes.expect("There was an access problem writing to the file '"_L1 + folder.path() +
                     ".\nThis may be a read-only device?"_L1,
                 boxes::Icon::Information, [this] { EXPECT_EQ(statusText(), u"Ready"_s); });
    exportTo(folder.path());
    EXPECT_EQ(statusText(), u"Ready"_s);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(CSVExportTest, AMissingFolderIsReportedAndRetryTriesAgain)
{
    openPane();
    errors.expect([&](QWidget& form) {
        EXPECT_EQ(statusText(), u"Ready"_s);
        EXPECT_TRUE(QDir(folder.path()).mkdir(u"later"_s));
        ScriptedErrorForm::press(form, Press::Retry);
    });
    expectDone();
    exportTo(path(u"later/catalog.txt"_s));
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"53"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVExport.Export"_s);
    EXPECT_EQ(read(path(u"later/catalog.txt"_s)), wholeFile);
}

TEST_F(CSVExportTest, AMissingFolderIgnoredEndsTheExport)
{
    openPane();
    errors.expect(Press::Ignore);
    exportTo(path(u"nowhere/catalog.txt"_s));
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(CSVExportTest, AFullDiskIsReportedAndNothingClaimsThatTheCatalogWasExported)
{
    openPane();
    errors.expect(Press::Retry).expect(Press::Ignore);
    exportTo(u"/dev/full"_s);
    ASSERT_EQ(errors.shown().size(), 2U);
    EXPECT_EQ(errors.shown()[0].number, u"61"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVExport.Export"_s);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(CSVExportTest, AFullDiskAmidTheRowsIsReportedByTheBlock)
{
    openPane();
    for (int i = 0; i < 40; ++i)
        change(u"INSERT INTO TW_DB (DATABASE_NAME, CONNECT_STRING) VALUES ('D%1', '%2')"_s.arg(i).arg(
            QString(4000, 'x'_L1)));
    errors.expect(Press::Ignore).expect(Press::Ignore).expect(Press::Ignore).expect(Press::Ignore);
    errors.expect(Press::Ignore).expect(Press::Ignore).expect(Press::Ignore);
    exportTo(u"/dev/full"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVExport.WriteBlock"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmCSVExport.Export"_s);
}

TEST_F(CSVExportLimitTest, AFailureAmidTheFileLeavesWhatWasWritten)
{
    run(u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD) VALUES ('BOB', 'longer than the file may be')"_s);
    const FileSizeLimit limit(40);
    boxes.expect("There was an access problem writing to the file '"_L1 + path(u"catalog.txt"_s) +
                     ".\nThis may be a read-only device?"_L1,
                 boxes::Icon::Information, [this] { EXPECT_EQ(statusText(), u"Ready"_s); });
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(read(path(u"catalog.txt"_s)),
              QByteArray("\"USER\",\"BOB\",\"longer than the file may be\"\r\n").left(40));
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(CSVExportLimitTest, RetryAmidTheRowsWritesNoRowTwice)
{
    for (int i = 0; i < 40; ++i)
        run(u"INSERT INTO TW_DB (DATABASE_NAME, CONNECT_STRING) VALUES ('D%1', '%2')"_s.arg(i).arg(
            QString(4000, 'x'_L1)));
    expectDone();
    exportTo(path(u"whole.txt"_s));
    const QByteArray whole = read(path(u"whole.txt"_s));
    ASSERT_EQ(whole.count("\r\n"), 40);

    std::optional<FileSizeLimit> limit(std::in_place, 1000U);
    QByteArray written;
    errors.expect([&](QWidget& form) {
        limit.reset();
        written = read(path(u"catalog.txt"_s));
        ScriptedErrorForm::press(form, Press::Retry);
    });
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(written, whole.left(1000));
    ASSERT_EQ(errors.shown().size(), 1U);
    EXPECT_EQ(errors.shown()[0].number, u"75"_s);
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVExport.WriteBlock"_s);
    EXPECT_EQ(read(path(u"catalog.txt"_s)), whole);
}

TEST_F(CSVExportTest, ABlockThatFailsIsReportedWithItsStatementAndLeftOnIgnore)
{
    openPane();
    statements.failAt(1);
    errors.expect(Press::Ignore);
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(errors.shown()[0].trappedIn, u"frmCSVExport.WriteBlock"_s);
    EXPECT_TRUE(errors.shown()[0].additional.contains(u"TW_FILE"_s));
    EXPECT_EQ(read(path(u"catalog.txt"_s)), wholeFile.mid(wholeFile.indexOf("\"FIELD\"")));
}

TEST_F(CSVExportTest, EveryFaultOfAStatementIsAnsweredAndTheProgramGoesOn)
{
    openPane();
    FaultSweep sweep(statements, errors);
    const QString file = path(u"catalog.txt"_s);
    const auto exportCatalog = [&] {
        expectDone();
        exportTo(file);
    };
    sweep.run({
        .prepare = [&] { QFile::remove(file); },
        .act = [&](const std::optional<FaultSweep::Fault>&) { exportCatalog(); },
        .outcome = [&] { return QString::fromUtf8(read(file)).split("\r\n"_L1); },
        .afterIgnore = [](int statement, const QStringList& all) { return all.sliced(statement); },
        .goOn = exportCatalog,
    });
}
