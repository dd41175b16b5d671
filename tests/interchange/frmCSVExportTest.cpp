#include "CConnections.h"
#include "CsvBlocks.h"
#include "Database.h"
#include "ExportFixture.h"
#include "MousePointer.h"
#include "Recordset.h"
#include "TextWriter.h"
#include "ToolBar.h"
#include "ToolbarPane.h"

using namespace Qt::StringLiterals;

namespace
{

/// The pointer that shows when a file dialog comes up.
class PointerOfDialogs final : public filedialogs::Presenter
{
public:
    PointerOfDialogs() : m_former(filedialogs::setPresenter(this)) {}
    ~PointerOfDialogs() override { filedialogs::setPresenter(m_former); }
    PointerOfDialogs(const PointerOfDialogs&) = delete;
    PointerOfDialogs& operator=(const PointerOfDialogs&) = delete;

    QString choose(const filedialogs::Request& request) override
    {
        pointers.push_back(mousepointer::current());
        return m_former->choose(request);
    }

    std::vector<int> pointers;

private:
    filedialogs::Presenter* m_former;
};

/// The pointer that shows when a statement is sent.
class PointerOfStatements final : public dao::StatementObserver
{
public:
    PointerOfStatements() : m_former(dao::DBEngine::setObserver(this)) {}
    ~PointerOfStatements() override { dao::DBEngine::setObserver(m_former); }
    PointerOfStatements(const PointerOfStatements&) = delete;
    PointerOfStatements& operator=(const PointerOfStatements&) = delete;

    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override
    {
        pointers.push_back(mousepointer::current());
        return m_former->beforeStatement(datasource, statement);
    }

    std::vector<int> pointers;

private:
    dao::StatementObserver* m_former;
};

} // namespace

TEST_F(CSVExportTest, ThePaneNamesTheDatasourceAndShowsItsPicture)
{
    openPane();
    EXPECT_EQ(currentPane(), u"frmCSVExport"_s);
    EXPECT_EQ(paneTitle(), "Export Datasource '"_L1 + datasource + "' Catalog to File."_L1);
    EXPECT_TRUE(window->currentPane()->findChild<QWidget*>(u"imgDatasource"_s)->isVisible());
}

TEST_F(CSVExportTest, ADatasourceThatDoesNotConnectHasNoPictureAndExportsNothing)
{
    const QString unreachable = datasource + "Far"_L1;
    world.addUnreachableDatasource(unreachable);
    start();
    expectUnreachable();
    window->PaneDisplay(u"frmCSVExport"_s, {unreachable});
    EXPECT_EQ(paneTitle(), "Export Datasource '"_L1 + unreachable + "' Catalog to File."_L1);
    EXPECT_FALSE(window->currentPane()->findChild<QWidget*>(u"imgDatasource"_s)->isVisible());
    expectUnreachable();
    clickAction();
    EXPECT_TRUE(fileDialogs.requests().empty());
}

TEST_F(CSVExportTest, TheMenuShowsThePaneForADatasource)
{
    start();
    clickExpander(key());
    choose(key(), u"mnu_DSNExport"_s);
    EXPECT_EQ(paneTitle(), "Export Datasource '"_L1 + datasource + "' Catalog to File."_L1);
}

TEST_F(CSVExportTest, TheCatalogIsWrittenBlockByBlock)
{
    openPane();
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(read(path(u"catalog.txt"_s)), wholeFile);
    EXPECT_EQ(statusText(), u"Ready"_s);

    const QString own = u"WHERE FILE_NAME NOT IN ('CNTRL','COLUMN','DB','DBPRV','DRIVER','FIELD','FILE','KEY','LOCDT',"
                        "'SQLDT','TABLE','TBLPRV','USER')"_s;
    EXPECT_EQ(statements.statements(),
              (QStringList{
                  u"SELECT FILE_NAME, FILE_ORGANISATION, RECORD_TYPE, RECORD_SIZE FROM TW_FILE "_s + own,
                  u"SELECT FILE_NAME, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE, ENCRYPTED, "
                  "FORMAT, DEFAULT_VALUE FROM TW_FIELD "_s +
                      own + ' '_L1,
                  u"SELECT DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, DISPLAY_NAME FROM TW_DB "
                  "WHERE DATABASE_NAME <>'TW'"_s,
                  u"SELECT DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, CRITERIA, "
                  "DISPLAY_NAME FROM TW_TABLE WHERE DATABASE_NAME <>'TW'"_s,
                  u"SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, UPDATABLE, "
                  "VISIBLE, DEFAULT_VALUE, DISPLAY_NAME, COLUMN_TYPE FROM TW_COLUMN WHERE DATABASE_NAME <>'TW' "_s,
                  u"SELECT USER_NAME, USER_PASSWORD FROM TW_USER WHERE USER_NAME <>'ADMIN'"_s,
                  u"SELECT USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
                  "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL FROM TW_DBPRV "
                  "WHERE DATABASE_NAME <>'TW'"_s,
                  u"SELECT USER_NAME, DATABASE_NAME, TABLE_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
                  "ALLOW_DELETE FROM TW_TBLPRV WHERE DATABASE_NAME <>'TW'"_s,
              }));
}

TEST_F(CSVExportTest, EachBlockHasItsStatusText)
{
    QStringList texts;
    for (const CsvBlock& block : csvBlocks())
        texts.append(QLatin1String(block.id) + ": "_L1 + QLatin1String(block.status));
    EXPECT_EQ(texts, (QStringList{
                         "FILE: Writing File Definitions",
                         "FIELD: Writing Field Definitions",
                         "DB: Writing Database Definitions",
                         "TABLE: Writing Table Definitions",
                         "COLUMN: Writing Column Definitions",
                         "USER: Writing User Definitions",
                         "DBPRV: Writing Database Privileges Definitions",
                         "TBLPRV: Writing Table Privileges Definitions",
                     }));
    openPane();
    statements.failAt(4);
    QString shown;
    errors.expect([&](QWidget& form) {
        shown = statusText();
        ScriptedErrorForm::press(form, Press::Retry);
    });
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(shown, u"Writing Table Definitions"_s);
    EXPECT_EQ(read(path(u"catalog.txt"_s)), wholeFile);
}

TEST_F(CSVExportTest, AnEmptyCatalogWritesNoLine)
{
    openPane();
    emptyCatalog();
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(read(path(u"catalog.txt"_s)), "");
}

TEST_F(CSVExportTest, NullsAndEmptyTextsAreWrittenByTheTypeOfTheirColumn)
{
    openPane();
    emptyCatalog();
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE, FORMAT, "
           "DEFAULT_VALUE) VALUES ('F', 'A', NULL, 1, 2, NULL, -3, '', NULL)"_s);
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(read(path(u"catalog.txt"_s)), "\"FIELD\",\"F\",\"A\",\"\",1,2,,-3,0,\"\",\"\"\r\n");
}

TEST_F(CSVExportTest, ValuesAreWrittenAsTheyStand)
{
    openPane();
    emptyCatalog();
    change(u"INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, DISPLAY_NAME) "
           "VALUES ('A', 'say \"x\", y', 'line' || char(10) || 'break', 'Z\u00FCrich \u20AC', 'a,b')"_s);
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(read(path(u"catalog.txt"_s)),
              "\"DB\",\"A\",\"say \"x\", y\",\"line\nbreak\",\"Z\xC3\xBCrich \xE2\x82\xAC\",\"a,b\"\r\n");
}

TEST_F(CSVExportTest, PasswordsAndTheAdministratorsRightsElsewhereAreWrittenAndTheAdministratorIsNot)
{
    openPane();
    emptyCatalog();
    change(u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD) VALUES ('BOB', 'Secret')"_s);
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_PASSWORD, ALLOW_SELECT, SECURITY_LEVEL) "
           "VALUES ('ADMIN', 'SALES', 'Pass', 1, 'TABLE')"_s);
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('BOB', 'TW')"_s);
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(read(path(u"catalog.txt"_s)), "\"USER\",\"BOB\",\"Secret\"\r\n"
                                            "\"DBPRV\",\"ADMIN\",\"SALES\",\"\",\"Pass\",1,0,0,0,\"TABLE\"\r\n");
}

TEST_F(CSVExportTest, ThePathThroughBothPanesGivesTheSameFile)
{
    const auto clear = [&] {
        boxes.expectAsk(u"WARNING - You are about to remove ALL the catalog definitions for Datasource '%1'.\n"
                        "Are you sure you wish to completely clear the calaog?"_s.arg(datasource),
                        boxes::Answer::Yes);
        boxes.expectInform(u"The catalog has been cleared."_s);
        choose(key(), u"mnu_DSNClear"_s);
    };
    const auto importFrom = [&](const QString& file) {
        open(u"frmCSVImport"_s);
        expectImported();
        importFile(file, [](DialogForm& dialog) { action(dialog); });
    };
    const auto exportAs = [&](const QString& file) {
        openPane();
        expectDone();
        exportTo(path(file));
        return read(path(file));
    };
    start();
    clickExpander(key());
    clear();
    importFrom(writeLines(u"in.csv"_s, good));
    const QByteArray first = exportAs(u"first.csv"_s);
    EXPECT_EQ(first.count("\r\n"), good.size());
    EXPECT_TRUE(first.contains("\"COLUMN\",\"DEPOT\",\"PARTS\",\"PART\",\"PART\",\"CHAR\",8,1,1,\"\",\"Part\",0\r\n"));
    clear();
    EXPECT_EQ(exportAs(u"none.csv"_s), "");
    importFrom(path(u"first.csv"_s));
    EXPECT_EQ(exportAs(u"second.csv"_s), first);
}

TEST_F(CSVExportTest, LongTextStandsBareAsNumbersDo)
{
    openPane();
    change(u"CREATE TABLE NOTES (ID INTEGER, WORDS LONGVARCHAR, NAME VARCHAR(20))"_s);
    change(u"INSERT INTO NOTES VALUES (1, 'long, \"quoted\"', 'short'), (2, NULL, NULL), (3, '', '')"_s);
    {
        TextWriter file(path(u"notes.csv"_s));
        const auto rows =
            CConnections::instance().Item(datasource)->db()->OpenRecordset(u"SELECT ID, WORDS, NAME FROM NOTES"_s);
        ASSERT_EQ(rows->Fields().Item(1).Type, dao::dbMemo);
        for (; !rows->Eof(); rows->MoveNext())
            appendCsvLine(file, "NOTE", *rows);
        file.close();
    }
    EXPECT_EQ(read(path(u"notes.csv"_s)), "\"NOTE\",1,long, \"quoted\",\"short\"\r\n"
                                          "\"NOTE\",2,,\"\"\r\n"
                                          "\"NOTE\",3,,\"\"\r\n");
}

TEST_F(CSVExportTest, TheFileIsReplaced)
{
    openPane();
    write(u"catalog.txt"_s, QByteArray(100000, 'x'));
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(read(path(u"catalog.txt"_s)), wholeFile);
}

TEST_F(CSVExportTest, TheDialogOffersTheLastNameAndACancelLeavesIt)
{
    openPane();
    expectDone();
    exportTo(path(u"first.csv"_s));
    fileDialogs.expectCancelled(filedialogs::Mode::Save, exportTitle);
    clickAction();
    forms::unload(u"frmCSVExport"_s);
    openPane();
    expectDone();
    exportTo(path(u"second.csv"_s));

    ASSERT_EQ(fileDialogs.requests().size(), 3U);
    const filedialogs::Request& request = fileDialogs.requests()[1];
    EXPECT_EQ(request.suggestedName, path(u"first.csv"_s));
    EXPECT_EQ(request.defaultExtension, u"*.txt"_s);
    EXPECT_EQ(request.filter, u"Text File(*.TXT)|*.txt|Comma Seperated Values (*.CSV)|*.csv|All Files (*.*)|*.*"_s);
    EXPECT_TRUE(request.promptBeforeOverwriting);
    EXPECT_TRUE(request.promptBeforeCreating);
    EXPECT_FALSE(request.fileMustExist);
    EXPECT_EQ(fileDialogs.requests()[2].suggestedName, path(u"first.csv"_s));
}

TEST_F(CSVExportTest, TheWaitPointerShowsWhileTheCatalogIsWrittenAlone)
{
    openPane();
    const PointerOfDialogs ofDialogs;
    const PointerOfStatements ofStatements;
    expectDone();
    exportTo(path(u"catalog.txt"_s));
    EXPECT_EQ(ofDialogs.pointers, std::vector{mousepointer::Default});
    EXPECT_EQ(ofStatements.pointers, std::vector(8, mousepointer::Wait));
    EXPECT_EQ(mousepointer::current(), mousepointer::Default);
}

TEST_F(CSVExportTest, ACancelSendsAndSaysNothing)
{
    openPane();
    fileDialogs.expectCancelled(filedialogs::Mode::Save, exportTitle);
    clickAction();
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(CSVExportTest, TheToolBarsExportRunsTheSameRouteAndOtherButtonsNone)
{
    openPane();
    auto* pane = dynamic_cast<ToolbarPane*>(window->currentPane());
    ASSERT_NE(pane, nullptr);
    expectDone();
    fileDialogs.expect(filedialogs::Mode::Save, exportTitle, path(u"catalog.txt"_s));
    pane->tbr_ButtonClick(window->toolBar(u"tbrMain"_s).Button(u"Export"_s));
    EXPECT_EQ(read(path(u"catalog.txt"_s)), wholeFile);
    pane->tbr_ButtonClick(window->toolBar(u"tbrMain"_s).Button(u"Import"_s));
}
