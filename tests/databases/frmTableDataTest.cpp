#include "TableDataPane.h"

#include "CConnections.h"
#include "DBEngine.h"
#include "Database.h"
#include "Settings.h"
#include "frmTWErr.h"

#include <memory>
#include <ostream>
#include <utility>

using namespace tabledata;

namespace
{

/// Opens the real databases and writes down by what.
class RecordingWorkspace final : public dao::Workspace
{
public:
    explicit RecordingWorkspace(QStringList& connects) : m_connects(connects) {}

    std::unique_ptr<dao::Database> OpenDatabase(const QString& name, const QString& connect) override
    {
        m_connects.append(connect);
        return m_real->OpenDatabase(name, connect);
    }

private:
    std::unique_ptr<dao::Workspace> m_real = dao::DBEngine::CreateWorkspace({}, {}, {}, 1);
    QStringList& m_connects;
};

/// Writes down which routines run, the newest first, when an event first reaches an object.
class RoutinesAt final : public QObject
{
public:
    explicit RoutinesAt(QEvent::Type type) : m_type(type) {}

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == m_type && seen.isEmpty())
            seen = frmTWErr::CallStack();
        return false;
    }

    QStringList seen;

private:
    QEvent::Type m_type;
};

} // namespace

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(TableData, ShowsTheRecordsThatWereAskedFor)
{
    view([&](DialogForm& form) {
        EXPECT_EQ(currentPane(), pane);
        EXPECT_FALSE(grid().isVisible());
        EXPECT_FALSE(refresh().Enabled());
        EXPECT_EQ(description(), QString());
        choose(form, {u"ARTICLE"_s, u"PRICE"_s, u"NOTE"_s});
        fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u">"_s, u"5"_s);
        DialogScript::click(form, ok);
    });
    const QString statement = u"SELECT [ARTICLE], [NOTE], [PRICE] FROM [SALES_ITEMS] WHERE [PRICE] > 5"_s;
    EXPECT_EQ(statements.statements(), (QStringList{readColumns(u"ITEMS"_s), statement}));
    EXPECT_EQ(paneTitle(), u"SALES_ITEMS - Table Data"_s);
    EXPECT_EQ(description(), u"This is the results of a sample snapshot query:\n\n"
                             "\nSELECT\n    [ARTICLE],\n    [NOTE],\n    [PRICE]\nFROM\n    [SALES_ITEMS]\nWHERE\n    "
                             "[PRICE] > 5\n\n run against the Datasource '%1'"_s.arg(datasource));
    EXPECT_TRUE(grid().isVisible());
    EXPECT_EQ(headings(), (QStringList{u"ARTICLE"_s, u"NOTE"_s, u"PRICE"_s}));
    EXPECT_EQ(rows(), (QStringList{u"ink||12"_s, u"pad|A4|7"_s}));
    EXPECT_EQ(sides(), (QStringList{u"left"_s, u"left"_s, u"right"_s}));
    EXPECT_EQ(position(), u"Record 1 of 2"_s);
    EXPECT_TRUE(refresh().Enabled());
    EXPECT_EQ(explanation(), QString());
    EXPECT_FALSE(control(u"lblExplain"_s).isVisible());
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(TableData, DatesAndQuotedTextsReachTheDriver)
{
    view([&](DialogForm& form) {
        choose(form, {u"ARTICLE"_s});
        fillIn(form, 0, u"WHERE"_s, u"SOLD"_s, u"="_s, u"1998-03-09"_s);
        fillIn(form, 1, u"OR"_s, u"MAKER"_s, u"="_s, u"o'hara"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(rows(), (QStringList{u"pen"_s, u"pad"_s}));
}

TEST_F(TableData, ItIsReachedFromThePaneOfTheTable)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(table(u"ITEMS"_s));
    dialogs.expect(criteria, all);
    press(u"ViewData"_s);
    dialogs.verify();
    EXPECT_EQ(currentPane(), pane);
    EXPECT_EQ(rows().size(), 3);
}

TEST_F(TableData, ReadsOverAConnectionOfItsOwn)
{
    QStringList connects;
    begin(table(u"ITEMS"_s));
    CConnections::instance().setWorkspace(std::make_unique<RecordingWorkspace>(connects));
    const int before = CConnections::instance().Count();
    dialogs.expect(criteria, all);
    MainWindowTest::choose(key(table(u"ITEMS"_s)), u"mnu_TableViewData"_s);
    EXPECT_EQ(connects, QStringList{u"ODBC;DSN=%1;DATABASE=PUBSDATABASE=PUBS"_s.arg(datasource)});
    EXPECT_EQ(CConnections::instance().Count(), before);
    EXPECT_EQ(rows().size(), 3);
}

TEST_F(TableData, AQueryWithoutRecordsShowsAnEmptyGrid)
{
    view([&](DialogForm& form) {
        choose(form, {u"ARTICLE"_s, u"PRICE"_s});
        fillIn(form, 0, u"WHERE"_s, u"PRICE"_s, u">"_s, u"99"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_TRUE(grid().isVisible());
    EXPECT_EQ(headings(), (QStringList{u"ARTICLE"_s, u"PRICE"_s}));
    EXPECT_EQ(rows(), QStringList());
    EXPECT_EQ(position(), u"Record 0 of 0"_s);
    EXPECT_TRUE(refresh().Enabled());
    for (const char* button : {"cmdFirst", "cmdPrevious", "cmdNext", "cmdLast"})
        clickButton(QLatin1String(button));
    EXPECT_EQ(position(), u"Record 0 of 0"_s);
}

TEST_F(TableData, AStatementIsShownWithBlanksForTabs)
{
    view([&](DialogForm& form) {
        choose(form, {u"ARTICLE"_s});
        fillIn(form, 0, u"WHERE"_s, u"ARTICLE"_s, u"<>"_s, u"x"_s);
        QApplication::clipboard()->setText(u"a\tb"_s);
        dialog::hit(form, Qt::Key_A, Qt::ControlModifier);
        dialog::hit(form, Qt::Key_V, Qt::ControlModifier);
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(statements.statements().last(), u"SELECT [ARTICLE] FROM [SALES_ITEMS] WHERE [ARTICLE] <> 'a\tb'"_s);
    EXPECT_FALSE(description().contains(u'\t'));
    EXPECT_TRUE(description().contains(u"SELECT\n    [ARTICLE]\nFROM\n    [SALES_ITEMS]\nWHERE\n    [ARTICLE] <> "
                                       "'a b'"_s))
        << description().toStdString();
}

TEST_F(TableData, ABarInAColumnNameIsNoSecondColumn)
{
    change(u"CREATE TABLE SALES_NONE (\"A|B\" VARCHAR(9), \"<C\" INTEGER)"_s);
    change(u"INSERT INTO SALES_NONE VALUES ('one', 1), ('two', 2)"_s);
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) "
           "VALUES ('SALES', 'NONE', 'A|B'), ('SALES', 'NONE', '<C')"_s);
    view(all, u"NONE"_s);
    EXPECT_EQ(headings(), (QStringList{u"<C"_s, u"A|B"_s}));
    EXPECT_EQ(rows(), (QStringList{u"1|one"_s, u"2|two"_s}));
    EXPECT_EQ(position(), u"Record 1 of 2"_s);
}

TEST_F(TableData, MarkupInAStatementIsShownAsItIs)
{
    view([&](DialogForm& form) {
        choose(form, {u"ARTICLE"_s});
        fillIn(form, 0, u"WHERE"_s, u"ARTICLE"_s, u"<>"_s, u"<b>%1</b>"_s);
        DialogScript::click(form, ok);
    });
    EXPECT_TRUE(description().contains(u"<b>%1</b>"_s));
    const auto* label = window->currentPane()->findChild<QLabel*>(u"lblDescription"_s);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

// The records --------------------------------------------------------------------------------------------------------

TEST_F(TableData, TheButtonsMoveOverTheRecords)
{
    view(all);
    EXPECT_EQ(position(), u"Record 1 of 3"_s);
    const auto press = [&](const QString& button) {
        clickButton(button);
        return position();
    };
    EXPECT_EQ(press(u"cmdPrevious"_s), u"Record 1 of 3"_s);
    EXPECT_EQ(press(u"cmdNext"_s), u"Record 2 of 3"_s);
    EXPECT_EQ(press(u"cmdLast"_s), u"Record 3 of 3"_s);
    EXPECT_EQ(press(u"cmdNext"_s), u"Record 3 of 3"_s);
    EXPECT_EQ(press(u"cmdPrevious"_s), u"Record 2 of 3"_s);
    EXPECT_EQ(press(u"cmdFirst"_s), u"Record 1 of 3"_s);
    EXPECT_EQ(grid().Row(), 0);
}

TEST_F(TableData, TheCaptionFollowsTheGrid)
{
    view(all);
    const QModelIndex cell = grid().model()->index(2, 1);
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(cell).center());
    EXPECT_EQ(position(), u"Record 3 of 3"_s);
    QTest::keyClick(&grid(), Qt::Key_Up);
    EXPECT_EQ(position(), u"Record 2 of 3"_s);
    // It is for looking only.
    QTest::keyClicks(&grid(), u"x"_s);
    EXPECT_EQ(rows().at(1).section('|'_L1, 0, 0), u"ink"_s);
}

TEST_F(TableData, RefreshReadsTheRecordsAnew)
{
    view(all);
    clickButton(u"cmdLast"_s);
    change(u"INSERT INTO SALES_ITEMS (ARTICLE) VALUES ('cap')"_s);
    change(u"DELETE FROM SALES_ITEMS WHERE ARTICLE IN ('pen', 'pad')"_s);
    const QString before = description();
    statements.clear();
    pressRefresh();
    EXPECT_EQ(statements.statements(),
              QStringList{u"SELECT [ARTICLE], [MAKER], [NOTE], [PRICE], [SOLD] FROM [SALES_ITEMS] "_s});
    EXPECT_EQ(rows(), (QStringList{u"ink|smith||12|1998-03-08"_s, u"cap||||"_s}));
    EXPECT_EQ(position(), u"Record 1 of 2"_s);
    EXPECT_EQ(description(), before);
    EXPECT_TRUE(refresh().Enabled());
}

TEST_F(TableData, RefreshThatFailsKeepsWhatShows)
{
    view(all);
    const QStringList before = rows();
    change(u"DROP TABLE SALES_ITEMS"_s);
    errors.expect(Press::Ignore);
    pressRefresh();
    errors.verify();
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmTableData.tbr_ButtonClick"_s);
    EXPECT_EQ(rows(), before);
    EXPECT_TRUE(grid().isVisible());
    EXPECT_TRUE(refresh().Enabled());
}

TEST_F(TableData, AReportNamesTheRoutineThatResizesIt)
{
    view(all);
    RoutinesAt resizing(QEvent::Resize);
    auto& corner = control(u"imgCorner"_s);
    corner.installEventFilter(&resizing);
    window->resize(window->size() - QSize(400, 300));
    QApplication::processEvents();
    ASSERT_FALSE(resizing.seen.isEmpty());
    EXPECT_EQ(resizing.seen.first(2), (QStringList{u"modGUI.PaneFormResize"_s, u"frmTableData.Form_Resuze"_s}));
}

TEST_F(TableData, InTheClassicStyleTheGridHasThePlaceOfTheDescription)
{
    settings::save(u"Options"_s, u"Win98"_s, 0);
    view(all);
    EXPECT_FALSE(control(u"lblDescription"_s).isVisible());
    EXPECT_FALSE(control(u"imgCorner"_s).isVisible());
    EXPECT_TRUE(grid().isVisible());
    EXPECT_EQ(rows().size(), 3);
}

// Ending -------------------------------------------------------------------------------------------------------------

TEST_F(TableData, CancelGoesBackToTheTableAndRunsNoQuery)
{
    view([](DialogForm& form) {
        dialog::clickRow(form, columns, u"ARTICLE"_s);
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(statements.statements().first(), readColumns(u"ITEMS"_s));
    EXPECT_EQ(statements.statements().filter(u"SALES_ITEMS"_s), QStringList());
    EXPECT_EQ(currentPane(), u"frmTable"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS - Edit Table Properties"_s);
    EXPECT_FALSE(forms::loaded(pane));
    EXPECT_TRUE(window->toolBar(u"tbrTable"_s).isVisible());
    EXPECT_FALSE(window->toolBar(u"tbrViewData"_s).isVisible());
}

TEST_F(TableData, CancelGoesBackToTheTableAsTheOptionHasIt)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    view([](DialogForm& form) { DialogScript::click(form, cancel); });
    EXPECT_EQ(currentPane(), u"frmTable"_s);
    EXPECT_EQ(paneTitle(), u"ITEMS - Table Properties"_s);
}

TEST_F(TableData, WithoutAConnectionNothingIsAsked)
{
    world.addUnreachableDatasource(u"Nowhere"_s);
    start();
    expectUnreachable();
    window->PaneDisplay(pane, {u"Nowhere"_s, u"SALES"_s, u"ITEMS"_s});
    boxes.verify();
    EXPECT_EQ(currentPane(), pane);
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(QStringList({paneTitle(), description(), explanation()}).join(QString()), QString());
    EXPECT_FALSE(grid().isVisible());
    EXPECT_FALSE(refresh().Enabled());
}

TEST_F(TableData, AnotherNodeUnloadsTheView)
{
    view(all);
    EXPECT_TRUE(window->toolBar(u"tbrViewData"_s).isVisible());
    click(key(table(u"NONE"_s)));
    EXPECT_EQ(currentPane(), u"frmTable"_s);
    EXPECT_FALSE(forms::loaded(pane));
}

TEST_F(TableData, ASecondViewBeginsAnew)
{
    view(all);
    view([&](DialogForm& form) {
        EXPECT_FALSE(grid().isVisible());
        EXPECT_EQ(rows(), QStringList());
        EXPECT_EQ(description(), QString());
        EXPECT_EQ(paneTitle(), QString());
        EXPECT_FALSE(refresh().Enabled());
        choose(form, {u"PRICE"_s});
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(rows(), (QStringList{u"3"_s, u"12"_s, u"7"_s}));
}

TEST_F(TableData, ATableWithoutColumnsEndsInItsPane)
{
    view(
        [](DialogForm& form) {
            EXPECT_FALSE(dialog::isEnabled(form, ok));
            DialogScript::click(form, cancel);
        },
        u"NONE"_s);
    EXPECT_EQ(currentPane(), u"frmTable"_s);
    EXPECT_EQ(paneTitle(), u"NONE - Edit Table Properties"_s);
}

// What the driver refuses --------------------------------------------------------------------------------------------

TEST_F(TableData, AStatementThatTheDriverRefusesLeavesThePaneAsFarAsItGot)
{
    errors.expect(Press::Ignore);
    view([&](DialogForm& form) {
        choose(form, {u"ARTICLE"_s});
        fillIn(form, 0, u"WHERE"_s, {}, {}, u"3"_s);
        DialogScript::click(form, ok);
    });
    errors.verify();
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmTableData.Display"_s);
    EXPECT_TRUE(errors.shown().front().title.endsWith(u" - Unexpected ODBC Error"_s));
    EXPECT_EQ(currentPane(), pane);
    EXPECT_EQ(description(), u"This is the results of a sample snapshot query (SELECT [ARTICLE] FROM [SALES_ITEMS] "
                             "WHERE []  3) run against the Datasource '%1'"_s.arg(datasource));
    EXPECT_FALSE(grid().isVisible());
    EXPECT_FALSE(window->currentPane()->findChild<QWidget*>(u"datPrimary"_s)->isVisible());
    EXPECT_FALSE(refresh().Enabled());
    EXPECT_EQ(paneTitle(), QString());
    // The program goes on.
    view(all);
    EXPECT_EQ(rows().size(), 3);
}

TEST_F(TableData, ATableThatTheDriverDoesNotKnowIsAnError)
{
    change(u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NAME) VALUES ('SALES', 'NONE', 'A')"_s);
    errors.expect(Press::Ignore);
    view(all, u"NONE"_s);
    errors.verify();
    EXPECT_FALSE(grid().isVisible());
    EXPECT_NE(errors.shown().front().description.indexOf(u"SALES_NONE"_s), -1)
        << errors.shown().front().description.toStdString();
}

TEST_F(TableData, APrivilegesFailureShowsOneBox)
{
    begin(table(u"ITEMS"_s));
    dialogs.expect(criteria, [&](DialogForm& form) {
        choose(form, {u"ARTICLE"_s});
        statements.clear();
        statements.failAt(1, {{1, u"insufficient privileges"_s}, {3146, u"ODBC--call failed."_s}});
        DialogScript::click(form, ok);
    });
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    MainWindowTest::choose(key(table(u"ITEMS"_s)), u"mnu_TableViewData"_s);
    boxes.verify();
    EXPECT_EQ(currentPane(), pane);
    EXPECT_FALSE(grid().isVisible());
    EXPECT_FALSE(refresh().Enabled());
}

// Default databases --------------------------------------------------------------------------------------------------

TEST_F(TableDataOfOneDatabase, ItsOwnTablesAreReadWithoutThePrefix)
{
    addRecords(u"ITEMS"_s);
    view([&](DialogForm& form) {
        EXPECT_EQ(dialog::label(form, u"lblTable"_s), u"From ITEMS"_s);
        choose(form, {u"PRICE"_s});
        DialogScript::click(form, ok);
    });
    EXPECT_EQ(statements.statements(), (QStringList{readColumns(u"ITEMS"_s), u"SELECT [PRICE] FROM [ITEMS] "_s}));
    EXPECT_EQ(rows(), (QStringList{u"3"_s, u"12"_s, u"7"_s}));
    EXPECT_EQ(paneTitle(), u"SALES_ITEMS - Table Data"_s);
    EXPECT_EQ(explanation(), QString());
}

TEST_F(TableDataOfOneDatabase, TheCaseOfItsNameCounts)
{
    world.removeDatasource(datasource);
    world.addDatasource(datasource, {u"DefaultDatabase=sales"_s});
    begin(table(u"ITEMS"_s));
    MainWindowTest::choose(key(table(u"ITEMS"_s)), u"mnu_TableViewData"_s);
    EXPECT_EQ(explanation(), u"You cannot view data from any Table in this Database because\n"
                             "the datasource specifies the default Database as 'sales'"_s);
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(TableDataOfOneDatabase, AnyOtherDatabaseIsExplainedWithoutADialog)
{
    change(u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('STOCK')"_s);
    change(u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME) VALUES ('STOCK', 'SHELF')"_s);
    const QStringList shelf{u"DB"_s, u"db=STOCK"_s, u"TA"_s, u"ta=SHELF"_s};
    begin(shelf);
    MainWindowTest::choose(key(shelf), u"mnu_TableViewData"_s);
    EXPECT_EQ(currentPane(), pane);
    EXPECT_EQ(explanation(), u"You cannot view data from any Table in this Database because\n"
                             "the datasource specifies the default Database as 'SALES'"_s);
    EXPECT_TRUE(control(u"lblExplain"_s).isVisible());
    EXPECT_EQ(statements.statements(), QStringList());
    EXPECT_EQ(description(), QString());
    EXPECT_FALSE(grid().isVisible());
    EXPECT_FALSE(refresh().Enabled());
}
