#include "PasswordsFixture.h"

#include <ostream>

using namespace Qt::StringLiterals;
using namespace passwordsearch;

// The search itself --------------------------------------------------------------------------------------------------

TEST_F(Passwords, TheSearchFindsWhatShowsSomewhere)
{
    change(u"UPDATE TW_USER SET REMARKS = '%1' WHERE USER_NAME = 'CLERK'"_s.arg(sign));
    open(user(u"CLERK"_s));
    const QStringList found = leaks();
    for (const char* place : {"txtProperty_REMARKS text", "txtProperty_REMARKS spoken", "txtProperty_REMARKS read out"})
        EXPECT_FALSE(found.filter(QLatin1String(place)).isEmpty()) << place;
    box(u"txtProperty_USER_NAME"_s).setText(sign + u"-"_s + sign);
    for (const char* piece : {"walked before", "walked at", "walked after"})
        EXPECT_FALSE(leaks().filter(u"txtProperty_USER_NAME "_s + QLatin1String(piece)).isEmpty()) << piece;
    box(u"txtConfirm"_s).setText(sign);
    EXPECT_FALSE(leaks().filter(u"txtConfirm text"_s).isEmpty());
    EXPECT_TRUE(leaks(true).filter(u"txtConfirm"_s).isEmpty());
    click(key({u"US"_s}));
    EXPECT_FALSE(leaks().filter(u"grd cell"_s).isEmpty());
    EXPECT_FALSE(leaks().filter(u"grd spoken cell"_s).isEmpty());
    settings::save(u"Options"_s, u"Items"_s, sign);
    EXPECT_FALSE(leaks().filter(u"settings"_s).isEmpty());
}

// Stored passwords ---------------------------------------------------------------------------------------------------

TEST_F(Passwords, NoStoredPasswordShowsInAnyStateOfAnItemPane)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        const auto look = [&](const char* state) {
            EXPECT_EQ(leaks(), QStringList()) << state;
            for (const QString& name : {u"txtProperty_"_s + place.column, u"txtConfirm"_s})
                tryToCopy(box(name));
        };
        settings::save(u"Options"_s, u"Items"_s, 0);
        open(place.node);
        look("display");
        press(u"User Edit"_s);
        look("edit");
        write(u"REMARKS"_s, u"x"_s);
        press(u"Undo"_s);
        look("undone");
        press(u"OK"_s);
        look("updated");
        boxes.expectAsk(place.question, boxes::Answer::No);
        choose(key(place.node), place.deleteItem);
        look("delete");
        press(u"Cancel"_s);
        choose(key(gridOf(place)), place.addItem);
        look("add");
        press(u"Cancel"_s);
        EXPECT_EQ(leaks(), QStringList());
    }
    EXPECT_EQ(password(u"CLERK"_s), storedOfUser);
}

TEST_F(Passwords, NoStoredPasswordShowsInAGrid)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(gridOf(place));
        EXPECT_EQ(leaks(), QStringList());
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F2, Qt::Key_Delete}) {
            clickCell(clerksRow(), place.heading);
            // What a cell shows may be copied.
            QTest::keyClick(&grid(), Qt::Key_C, Qt::ControlModifier);
            EXPECT_EQ(QApplication::clipboard()->text(), u"**********"_s);
            QApplication::clipboard()->setText(copied);
            QTest::keyClick(&grid(), key);
            ASSERT_TRUE(cellEditor().isVisible());
            EXPECT_EQ(leaks(), QStringList()) << key;
            tryToCopy(cellEditor());
            QTest::keyClick(&cellEditor(), Qt::Key_Escape);
        }
        clickCell(clerksRow(), u"Remarks"_s);
        QTest::keyClick(&grid(), Qt::Key_Return);
        typeIntoCell(u"x"_s);
        leaveRow();
        EXPECT_EQ(leaks(), QStringList());
        EXPECT_EQ(QApplication::clipboard()->text(), copied);
    }
}

TEST_F(Passwords, NoStoredPasswordShowsInThePanesOfTables)
{
    open(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s));
    EXPECT_EQ(leaks(), QStringList());
    click(key(ofTable(u"SALES"_s, u"ORDERS"_s)));
    EXPECT_EQ(leaks(), QStringList());
}

TEST_F(Passwords, NoStoredPasswordShowsWhenAUserIsRenamed)
{
    open(user(u"CLERK"_s));
    write(u"USER_NAME"_s, u"teller"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No, [&] { EXPECT_EQ(leaks(), QStringList()); });
    press(u"OK"_s);
    EXPECT_EQ(leaks(), QStringList());
    for (const boxes::Box& shown : boxes.shown())
        EXPECT_FALSE(shown.prompt.contains(sign));
}

// Typed passwords ----------------------------------------------------------------------------------------------------

TEST_F(Passwords, ATypedPasswordShowsNowhereAndIsGoneOnceItIsWritten)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(place.node);
        writePassword(place.column, u"qzx7-typed"_s);
        EXPECT_EQ(passwords(place.column), (QStringList{u"QZX7-TYPED"_s, u"QZX7-TYPED"_s}));
        EXPECT_EQ(leaks(true), QStringList());
        for (const QString& name : {u"txtProperty_"_s + place.column, u"txtConfirm"_s})
            tryToCopy(box(name));
        press(u"OK"_s);
        EXPECT_EQ(stored(u"SELECT %1 FROM TW_%2 WHERE USER_NAME = 'CLERK' ORDER BY 1 DESC"_s.arg(
                             place.column, place.column == u"USER_PASSWORD"_s ? u"USER"_s : u"DBPRV"_s))
                      .front(),
                  u"QZX7-TYPED"_s);
        EXPECT_EQ(leaks(), QStringList());
    }
}

TEST_F(Passwords, ATypedPasswordIsGoneOnceItIsCancelledOrUndone)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        for (const char* button : {"Undo", "Cancel"}) {
            open(place.node);
            writePassword(place.column, u"qzx7-typed"_s);
            press(QLatin1String(button));
            EXPECT_EQ(leaks(), QStringList()) << button;
        }
        choose(key(gridOf(place)), place.addItem);
        writePassword(place.column, u"qzx7-typed"_s);
        EXPECT_EQ(leaks(true), QStringList());
        press(u"Undo"_s);
        EXPECT_EQ(leaks(), QStringList());
    }
}

TEST_F(Passwords, APasswordOfANewUserIsGoneOnceItIsAdded)
{
    command({u"US"_s}, u"mnu_UserAddNew"_s);
    write(u"USER_NAME"_s, u"new"_s);
    writePassword(u"USER_PASSWORD"_s, u"qzx7-typed"_s);
    press(u"OK"_s);
    EXPECT_EQ(password(u"NEW"_s), u"QZX7-TYPED"_s);
    EXPECT_EQ(leaks(), QStringList());
}

TEST_F(Passwords, APasswordTypedIntoACellShowsNowhereAndIsGoneOnceTheRowIsWritten)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(gridOf(place));
        clickCell(clerksRow(), place.heading);
        typeIntoCell(u"qzx7-typed"_s);
        EXPECT_EQ(cellEditor().text(), u"QZX7-TYPED"_s);
        EXPECT_EQ(leaks(true), QStringList());
        tryToCopy(cellEditor());
        QTest::keyClick(&cellEditor(), Qt::Key_End);
        QTest::keyClick(&cellEditor(), Qt::Key_Tab);
        EXPECT_EQ(leaks(), QStringList()) << "taken into the cell";

        // The next cell of the row does not bring it back.
        clickCell(clerksRow(), u"Remarks"_s);
        QTest::keyClick(&grid(), Qt::Key_Return);
        QTest::keyClick(&cellEditor(), Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(leaks(), QStringList()) << "undone in another cell";

        leaveRow();
        EXPECT_FALSE(statements.writes().filter(u"QZX7-TYPED"_s).isEmpty());
        EXPECT_EQ(leaks(), QStringList()) << "written";
        clickCell(clerksRow(), place.heading);
        QTest::keyClick(&grid(), Qt::Key_Return);
        EXPECT_EQ(cellEditor().text(), QString());
        QTest::keyClick(&cellEditor(), Qt::Key_Escape);
        EXPECT_EQ(QApplication::clipboard()->text(), copied);
    }
}

TEST_F(Passwords, APasswordTypedIntoACellIsGoneOnceTheRowIsLeftWithoutIt)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        const auto typeAnew = [&] {
            clickCell(clerksRow(), place.heading);
            typeIntoCell(u"qzx7-typed"_s);
            ASSERT_EQ(cellEditor().text(), u"QZX7-TYPED"_s);
        };
        const auto expectEmpty = [&] {
            clickCell(clerksRow(), place.heading);
            QTest::keyClick(&grid(), Qt::Key_Return);
            EXPECT_EQ(cellEditor().text(), QString());
            QTest::keyClick(&cellEditor(), Qt::Key_Escape);
        };
        begin(place.node);
        open(gridOf(place));
        typeAnew();
        QTest::keyClick(&cellEditor(), Qt::Key_Escape);
        EXPECT_EQ(leaks(), QStringList()) << "dropped";
        expectEmpty();
        typeAnew();
        click(key(gridOf(place)));
        EXPECT_EQ(leaks(), QStringList()) << "read anew while the cell is open";
        expectEmpty();
        typeAnew();
        QTest::keyClick(&cellEditor(), Qt::Key_Return);
        click(key(gridOf(place)));
        EXPECT_EQ(leaks(), QStringList()) << "read anew";
        expectEmpty();
        typeAnew();
        click(key(place.node));
        EXPECT_EQ(leaks(), QStringList()) << "behind another pane";
        EXPECT_EQ(statements.writes(), QStringList());
    }
}

TEST_F(Passwords, NoPasswordStandsInTheSettingsOfAProgramThatHasEnded)
{
    for (const Place& place : places()) {
        open(place.node);
        writePassword(place.column, u"qzx7-typed"_s);
        press(u"OK"_s);
    }
    quit();
    EXPECT_FALSE(settingsFiles().isEmpty());
    EXPECT_EQ(settingsFiles().filter(sign, Qt::CaseInsensitive), QStringList());
}
