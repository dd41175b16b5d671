#include "DatabasePaneFixture.h"

#include "DBEngine.h"
#include "ToolBar.h"

#include <QPlainTextEdit>
#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace databasepane;

namespace
{

/// Notes what the status line shows when statements are sent that change something.
class StatusNotes final : public dao::StatementObserver
{
public:
    explicit StatusNotes(std::function<QString()> status)
        : m_status(std::move(status)), m_former(dao::DBEngine::setObserver(this))
    {
    }
    ~StatusNotes() override { dao::DBEngine::setObserver(m_former); }
    StatusNotes(const StatusNotes&) = delete;
    StatusNotes& operator=(const StatusNotes&) = delete;

    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override
    {
        if (statement.startsWith("DELETE "_L1))
            m_notes.append(m_status() + ": "_L1 + statement.section(' '_L1, 2, 2));
        return m_former->beforeStatement(datasource, statement);
    }

    const QStringList& notes() const { return m_notes; }

private:
    std::function<QString()> m_status;
    dao::StatementObserver* m_former;
    QStringList m_notes;
};

} // namespace

// Changing -----------------------------------------------------------------------------------------------------------

TEST_F(DatabasePane, AChangeIsOneStatement)
{
    open(database(u"DEPOT"_s));
    statements.clear();
    write(u"DISPLAY_NAME"_s, u"dEPOt"_s);
    write(u"DEFAULT_DIRECTORY"_s, u"SYS$disk:"_s);
    pick(u"DRIVER_NAME"_s, u"VAX-RMS"_s);
    write(u"SETUP_PROCEDURE"_s, u"two"_s);
    paste(u"CONNECT_STRING"_s, u"UID=it's;%2"_s);
    write(u"REMARKS"_s, u"Don't; \"100%\""_s);
    press(u"OK"_s);
    EXPECT_EQ(sent(), (QStringList{updateDatabase(u"DEPOT"_s, u"dEPOt"_s, u"SYS$disk:"_s, u"VAX-RMS"_s, u"TWO"_s,
                                                  u"UID=it''s;%2"_s, u"Don''t; \"100%\""_s),
                                   readDatabase(u"DEPOT"_s)}));
    EXPECT_EQ(paneTitle(), u"DEPOT - Database Properties"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(open(), QStringList());
    EXPECT_EQ(selectedKey(), key(database(u"DEPOT"_s)));
    EXPECT_EQ(databases().first(), u"DEPOT|dEPOt|VAX-RMS|SYS$disk:|UID=it's;%2|TWO|Don't; \"100%\""_s);
    EXPECT_EQ(texts(databaseColumns), databases().first().split('|'_L1));
}

TEST_F(DatabasePane, ARenameIsCarriedToWhatTheDatabaseHolds)
{
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL) VALUES ('CLERK', 'DEPOT', 'NONE')"_s);
    begin(database(u"DEPOT"_s) + QStringList{u"TA"_s, u"ta=SHELF"_s});
    click(key(database(u"DEPOT"_s)));
    statements.clear();
    write(u"DATABASE_NAME"_s, u"store"_s);
    write(u"DISPLAY_NAME"_s, u"sTore"_s);
    press(u"OK"_s);
    EXPECT_EQ(
        sent(),
        (QStringList{
            nameIsTaken(u"STORE"_s), readDatabase(u"DEPOT"_s) + ' '_L1, deleteDatabase(u"DEPOT"_s).first() + ' '_L1,
            insertDatabase(u"STORE"_s, u"'stock:[here]', 'FLAT', 'SETUP', 'UID_ME', 'old one', 'STORE'"_s),
            u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = 'DEPOT'"_s,
            u"SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'SHELF'"_s,
            u"DELETE FROM TW_TABLE WHERE DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'SHELF'"_s,
            u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
            "NUMBER_COLUMNS, CRITERIA, REMARKS, DISPLAY_NAME) VALUES ('STORE', 'SHELF', 'TABLE', 'EMPTY', "
            "'shelf.dat', 00, '', '', 'SHELF')"_s,
            u"SELECT COLUMN_TYPE, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME FROM TW_COLUMN WHERE DATABASE_NAME = 'DEPOT' "
            "AND TABLE_NAME = 'SHELF'"_s,
            u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'DEPOT' AND TABLE_NAME = 'SHELF'"_s,
            u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = 'DEPOT' "_s,
            u"SELECT * FROM TW_DBPRV WHERE DATABASE_NAME = 'DEPOT' AND USER_NAME = 'CLERK' "_s,
            u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME = 'DEPOT' AND USER_NAME = 'CLERK' "_s,
            u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, "
            "ALLOW_INSERT, ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS) VALUES ('CLERK', 'STORE', '', '', 00, "
            "00, 00, 00, 'NONE', '')"_s,
            u"SELECT TABLE_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = 'DEPOT'"_s,
            updateDatabase(u"STORE"_s, u"sTore"_s, u"stock:[here]"_s, u"FLAT"_s, u"SETUP"_s, u"UID_ME"_s, u"old one"_s),
            readDatabase(u"STORE"_s)}));
    EXPECT_EQ(databases(),
              (QStringList{u"SALES||DISAM||||"_s, u"STORE|sTore|FLAT|stock:[here]|UID_ME|SETUP|old one"_s}));
    EXPECT_EQ(wholeCatalog().filter(u"DEPOT"_s), QStringList());
    EXPECT_EQ(paneTitle(), u"STORE - Database Properties"_s);
    EXPECT_EQ(state(), displayState);
    // In its place among the others.
    EXPECT_EQ(nodes(), (QStringList{u"SALES"_s, u"STORE"_s}));
    EXPECT_EQ(selectedKey(), key(database(u"STORE"_s)));
    // The level below speaks of the new name.
    expandTo(key(database(u"STORE"_s) + QStringList{u"TA"_s}));
    EXPECT_EQ(children(key(database(u"STORE"_s) + QStringList{u"TA"_s})), QStringList{u"SHELF"_s});
}

TEST_F(DatabasePane, ARenameTakesColumnsAndPrivilegesAlong)
{
    const QStringList before = wholeCatalog();
    open(database(u"SALES"_s));
    write(u"DATABASE_NAME"_s, u"trade"_s);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
    // A table that has been carried bears its name as its display name.
    QStringList expected = before;
    expected.replaceInStrings(u"|TABLE|PAYROLL||0|||"_s, u"|TABLE|PAYROLL||0|||ORDERS"_s)
        .replaceInStrings(u"SALES"_s, u"TRADE"_s);
    expected.sort();
    EXPECT_EQ(wholeCatalog(), expected);
}

TEST_F(DatabasePane, ANameInAnotherCaseIsLookedForInTheCatalog)
{
    open(database(u"DEPOT"_s));
    statements.clear();
    paste(u"DATABASE_NAME"_s, u"Depot"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().front(), nameIsTaken(u"Depot"_s));
    EXPECT_EQ(databases(),
              (QStringList{u"Depot|Depot|FLAT|stock:[here]|UID_ME|SETUP|old one"_s, u"SALES||DISAM||||"_s}));
    EXPECT_EQ(selectedKey(), key(database(u"Depot"_s)));
    EXPECT_EQ(nodes(), (QStringList{u"Depot"_s, u"SALES"_s}));
}

TEST_F(DatabasePane, ANameTypedAsItWasIsNotLookedForButCarried)
{
    open(database(u"DEPOT"_s));
    const QStringList before = databases();
    statements.clear();
    write(u"DATABASE_NAME"_s, u"depot"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().front(), readDatabase(u"DEPOT"_s) + ' '_L1);
    EXPECT_EQ(databases(), before);
    EXPECT_EQ(nodes(), (QStringList{u"DEPOT"_s, u"SALES"_s}));
}

TEST_F(DatabasePane, AnApostropheIsDoubledInStatementsAndSingleInTheKey)
{
    open(database(u"DEPOT"_s));
    statements.clear();
    clear(u"DISPLAY_NAME"_s);
    paste(u"DATABASE_NAME"_s, u"O'HARA"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes().back(),
              updateDatabase(u"O''HARA"_s, {}, u"stock:[here]"_s, u"FLAT"_s, u"SETUP"_s, u"UID_ME"_s, u"old one"_s));
    EXPECT_EQ(selectedKey(), key(database(u"O'HARA"_s)));
    EXPECT_EQ(paneTitle(), u"O'HARA - Database Properties"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    statements.clear();
    press(u"DB Delete"_s);
    EXPECT_EQ(statements.writes(), deleteDatabase(u"O''HARA"_s));
    EXPECT_EQ(nodes(), QStringList{u"SALES"_s});
    EXPECT_EQ(wholeCatalog().filter(u"O'HARA"_s), QStringList());
}

TEST_F(DatabasePane, TextsEndAtTheWidthOfTheirColumn)
{
    open(database(u"DEPOT"_s));
    write(u"DATABASE_NAME"_s, u"abcdefghijklm"_s);
    EXPECT_EQ(text(u"DATABASE_NAME"_s), u"ABCDEFGHIJ"_s);
    for (const auto& [column, width] :
         {std::pair("DATABASE_NAME", 10), std::pair("DISPLAY_NAME", 10), std::pair("DEFAULT_DIRECTORY", 254),
          std::pair("SETUP_PROCEDURE", 254), std::pair("CONNECT_STRING", 254), std::pair("REMARKS", 254)}) {
        SCOPED_TRACE(column);
        paste(QLatin1String(column), QString(width + 1, 'p'_L1));
        EXPECT_EQ(text(QLatin1String(column)), QString(width, 'p'_L1));
        paste(QLatin1String(column), QString(width, 'q'_L1));
        EXPECT_EQ(text(QLatin1String(column)), QString(width, 'q'_L1));
        paste(QLatin1String(column), QString(width - 1, 'r'_L1) + u"🚀"_s);
        EXPECT_EQ(text(QLatin1String(column)), QString(width - 1, 'r'_L1));
    }
}

TEST_F(DatabasePane, TheKeysOfANameAreLettersDigitsAndTwoSigns)
{
    open(database(u"DEPOT"_s));
    write(u"DATABASE_NAME"_s, u"a b'c.d;e-ß"_s);
    EXPECT_EQ(text(u"DATABASE_NAME"_s), u"A_BCDE-"_s);
    write(u"DISPLAY_NAME"_s, u"a B'c.d"_s);
    EXPECT_EQ(text(u"DISPLAY_NAME"_s), u"a_Bcd"_s);
    write(u"DEFAULT_DIRECTORY"_s, u"C:\\it's here; ß"_s);
    EXPECT_EQ(text(u"DEFAULT_DIRECTORY"_s), u"C:\\it's here; ß"_s);
}

TEST_F(DatabasePane, LineEndsInTheConnectStringStayUnlessItIsEdited)
{
    change(u"UPDATE TW_DB SET CONNECT_STRING = 'one' || char(13) || char(10) || 'two' WHERE DATABASE_NAME = 'DEPOT'"_s);
    open(database(u"DEPOT"_s));
    write(u"DEFAULT_DIRECTORY"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(databases().first(), u"DEPOT|Depot|FLAT|x|one\r\ntwo|SETUP|old one"_s);
    press(u"DB Edit"_s);
    static_cast<QPlainTextEdit&>(entry(u"CONNECT_STRING"_s)).setFocus();
    hit(Qt::Key_End, Qt::ControlModifier);
    hit(Qt::Key_Return);
    QTest::keyClicks(&entry(u"CONNECT_STRING"_s), u"3"_s);
    press(u"OK"_s);
    EXPECT_EQ(databases().first(), u"DEPOT|Depot|FLAT|x|one\ntwo\n3|SETUP|old one"_s);
}

TEST_F(DatabasePane, UndoBeginsTheEditAnew)
{
    open(database(u"DEPOT"_s));
    change(u"UPDATE TW_DB SET REMARKS = 'newer' WHERE DATABASE_NAME = 'DEPOT'"_s);
    write(u"DATABASE_NAME"_s, u"x"_s);
    pick(u"DRIVER_NAME"_s, u"VAX-RMS"_s);
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel Undo"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(statements.statements(), (QStringList{readDatabase(u"DEPOT"_s), readDrivers}));
    QStringList expected = shownDepot;
    expected.back() = u"newer"_s;
    EXPECT_EQ(texts(databaseColumns), expected);
    EXPECT_EQ(list(u"DRIVER_NAME"_s).currentText(), u"FLAT"_s);
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel"_s);
    EXPECT_EQ(paneTitle(), u"DEPOT - Edit Database Properties"_s);
    // What was undone is no change of the name.
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateDatabase(u"DEPOT"_s, u"Depot"_s, u"stock:[here]"_s, u"FLAT"_s,
                                                              u"SETUP"_s, u"UID_ME"_s, u"newer"_s)});
}

TEST_F(DatabasePane, CancelShowsTheDatabaseAsItIs)
{
    open(database(u"DEPOT"_s));
    write(u"DATABASE_NAME"_s, u"x"_s);
    hit(Qt::Key_Escape);
    EXPECT_EQ(paneTitle(), u"DEPOT - Database Properties"_s);
    EXPECT_EQ(texts(databaseColumns), shownDepot);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DatabasePane, ASecondClickWhileTheTreeFollowsChangesNothing)
{
    open(database(u"DEPOT"_s));
    write(u"DATABASE_NAME"_s, u"once"_s);
    clear(u"DISPLAY_NAME"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmDatabase.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes().filter(u"INSERT INTO TW_DB "_s).size(), 1);
    EXPECT_EQ(statements.writes().filter(u"UPDATE TW_DB "_s).size(), 1);
    EXPECT_EQ(nodes(), (QStringList{u"ONCE"_s, u"SALES"_s}));
    EXPECT_EQ(state(), displayState);

    press(u"DB Add"_s);
    fillIn(u"twice"_s);
    statements.clear();
    EXPECT_TRUE(pressOkTwice().contains(u"frmDatabase.tbr_ButtonClick"_s));
    EXPECT_EQ(statements.writes().size(), 1);
    EXPECT_EQ(nodes(), (QStringList{u"ONCE"_s, u"SALES"_s, u"TWICE"_s}));
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel"_s);
}

// Deleting -----------------------------------------------------------------------------------------------------------

TEST_F(DatabasePane, DeletingADatabaseTakesAllThatItHoldsAndNoFile)
{
    const QStringList before = wholeCatalog();
    begin(database(u"SALES"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::Yes, [&] {
        EXPECT_EQ(paneTitle(), u"SALES - Delete Database"_s);
        EXPECT_EQ(state(), u"DB Delete: Up1 OK Cancel"_s);
        EXPECT_EQ(open(), QStringList());
        EXPECT_EQ(statements.writes(), QStringList());
    });
    const StatusNotes status([&] { return statusText(); });
    choose(key(database(u"SALES"_s)), u"mnu_DBDelete"_s);
    EXPECT_EQ(statements.statements().first(7),
              (QStringList{describe, readDatabase(u"SALES"_s)} + deleteDatabase(u"SALES"_s)));
    EXPECT_EQ(
        status.notes(),
        (QStringList{u"Deleting Database: TW_DB"_s, u"Deleting Tables: TW_TABLE"_s, u"Deleting Columns: TW_COLUMN"_s,
                     u"Deleting Database Privileges: TW_DBPRV"_s, u"Deleting Table Privileges: TW_TBLPRV"_s}));
    QStringList expected = before;
    expected.removeIf([](const QString& row) { return row.contains(u"SALES"_s); });
    EXPECT_EQ(wholeCatalog(), expected);
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s).size(), 3);
    EXPECT_EQ(currentPane(), u"frmDatabases"_s);
    EXPECT_EQ(gridNames(), QStringList{u"DEPOT"_s});
    EXPECT_EQ(nodes(), QStringList{u"DEPOT"_s});
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DatabasePane, ADeleteThatIsNotWantedWaitsForCancelOrOk)
{
    open(database(u"DEPOT"_s));
    press(u"Cancel"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    press(u"DB Delete"_s);
    EXPECT_EQ(state(), u"DB Delete: Up1 OK Cancel"_s);
    EXPECT_EQ(paneTitle(), u"DEPOT - Delete Database"_s);
    EXPECT_EQ(open(), QStringList());
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(paneTitle(), u"DEPOT - Database Properties"_s);
    EXPECT_EQ(statements.writes(), QStringList());

    boxes.expectAsk(mayDelete, boxes::Answer::No);
    press(u"DB Delete"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), deleteDatabase(u"DEPOT"_s));
    EXPECT_EQ(nodes(), QStringList{u"SALES"_s});
}

TEST_F(DatabasePane, UndoOfADeleteOnlyDisablesItself)
{
    begin(database(u"DEPOT"_s));
    boxes.expectAsk(mayDelete, boxes::Answer::No);
    choose(key(database(u"DEPOT"_s)), u"mnu_DBDelete"_s);
    window->toolBar(u"tbrDatabase"_s).Button(u"Undo"_s).setEnabled(true);
    EXPECT_EQ(state(), u"DB Delete: Up1 OK Cancel Undo"_s);
    statements.clear();
    press(u"Undo"_s);
    EXPECT_EQ(state(), u"DB Delete: Up1 OK Cancel"_s);
    EXPECT_EQ(paneTitle(), u"DEPOT - Delete Database"_s);
    EXPECT_EQ(texts(databaseColumns), shownDepot);
    EXPECT_EQ(statements.statements(), QStringList());
}

// What others do meanwhile -------------------------------------------------------------------------------------------

TEST_F(DatabasePane, ADatabaseThatSomeoneHasDeletedIsNotMadeAnew)
{
    open(database(u"DEPOT"_s));
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s);
    write(u"REMARKS"_s, u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(texts(databaseColumns), nothing);
    EXPECT_EQ(state(), displayState);
    EXPECT_EQ(databases(), QStringList{u"SALES||DISAM||||"_s});
    EXPECT_EQ(nodes(), QStringList{u"SALES"_s});
    EXPECT_EQ(errors.shown().size(), 0u);
}

TEST_F(DatabasePane, ARenameOfADatabaseThatSomeoneHasDeletedIsReported)
{
    open(database(u"DEPOT"_s));
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s);
    clear(u"DISPLAY_NAME"_s);
    write(u"DATABASE_NAME"_s, u"x"_s);
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"3021"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modUpdate.UpdateDatabase"_s);
    EXPECT_EQ(databases(), QStringList{u"SALES||DISAM||||"_s});
}

TEST_F(DatabasePane, ANameThatSomeoneHasTakenMeanwhileIsTheDriversToRefuse)
{
    beginToAdd();
    fillIn(u"late"_s);
    meanwhile(u"INSERT INTO TW_DB"_s,
              [&] { change(u"INSERT INTO TW_DB (DATABASE_NAME, REMARKS) VALUES ('LATE', 'theirs')"_s); });
    errors.expect(Press::Ignore);
    press(u"OK"_s);
    EXPECT_EQ(errors.shown().back().number, u"ODBC Error"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"frmDatabase.tbr_ButtonClick"_s);
    EXPECT_EQ(state(), u"DB Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"DATABASE_NAME"_s), u"LATE"_s);
    EXPECT_EQ(databases().filter(u"LATE"_s), QStringList{u"LATE||||||theirs"_s});
    expectRefused(u"This Datasource already contains a Database called 'LATE'"_s, u"DATABASE_NAME"_s);
}

TEST_F(DatabasePane, ADatabaseThatIsGoneIsDeletedWithoutAWord)
{
    begin(database(u"DEPOT"_s));
    change(u"DELETE FROM TW_DB WHERE DATABASE_NAME = 'DEPOT'"_s);
    boxes.expectAsk(mayDelete, boxes::Answer::Yes);
    choose(key(database(u"DEPOT"_s)), u"mnu_DBDelete"_s);
    EXPECT_EQ(statements.writes(), deleteDatabase(u"DEPOT"_s));
    EXPECT_EQ(nodes(), QStringList{u"SALES"_s});
    EXPECT_EQ(wholeCatalog().filter(u"DEPOT"_s), QStringList());
}

TEST_F(DatabasePane, MissingPrivilegesAreOneBoxAndLeaveThePaneInItsState)
{
    open(database(u"DEPOT"_s));
    write(u"REMARKS"_s, u"9"_s);
    statements.clear();
    statements.failAt(1, {{-1, "[Test] You have no privileges for this"}});
    boxes.expect(u"The current user has insufficient privileges to complete this action."_s, boxes::Icon::None);
    press(u"OK"_s);
    EXPECT_EQ(state(), u"DB Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"REMARKS"_s), u"9"_s);
    EXPECT_EQ(errors.shown().size(), 0u);
}
