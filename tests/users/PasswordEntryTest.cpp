#include "PasswordsFixture.h"

#include <QFocusEvent>
#include <QRegularExpression>

#include <array>
#include <ostream>

using namespace Qt::StringLiterals;
using namespace passwordsearch;

namespace
{

/// The two boxes of a password, in both panes that have them.
class PasswordEntry : public Passwords
{
protected:
    static QString boxOf(const Place& place) { return u"txtProperty_"_s + place.column; }
    static void expectSelected(const QLineEdit& box)
    {
        QCoreApplication::processEvents();
        EXPECT_FALSE(box.text().isEmpty());
        EXPECT_EQ(box.selectedText().size(), box.text().size()) << box.objectName().toStdString();
    }
    /// Keys go to whatever has the focus.
    void type(const QString& text) { QTest::keyClicks(window->focusWidget(), text); }

    /// Makes the driver report another size of both passwords.
    void declare(const QString& type) const
    {
        for (const auto& [table, column] : {std::pair("TW_USER", "USER_PASSWORD"), {"TW_DBPRV", "DATABASE_PASSWORD"}}) {
            const QString former =
                stored(u"SELECT sql FROM sqlite_master WHERE name = '%1'"_s.arg(QLatin1String(table))).join('\n'_L1);
            QString changed = former;
            static const QRegularExpression width(u"(_PASSWORD +)VARCHAR\\(\\d+\\)"_s);
            changed.replace(width, "\\1"_L1 + type);
            ASSERT_NE(changed, former);
            const QString name = QLatin1String(table);
            change(u"ALTER TABLE %1 RENAME TO FORMER"_s.arg(name));
            change(changed);
            change(u"INSERT INTO %1 SELECT * FROM FORMER"_s.arg(name));
            change(u"DROP TABLE FORMER"_s);
        }
    }
};

} // namespace

// Selections ---------------------------------------------------------------------------------------------------------

TEST_F(PasswordEntry, ARefusedPasswordIsSelected)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(place.node);
        confirm(u"other"_s);
        write(place.column, u"one"_s);
        // The focus is where it belongs, and stays there under the message.
        boxes.expectInform(noMatch);
        hit(Qt::Key_Return);
        boxes.verify();
        EXPECT_EQ(focus(), place.column);
        expectSelected(box(boxOf(place)));
        type(u"two"_s);
        EXPECT_EQ(passwords(place.column).front(), u"TWO"_s);

        confirm(u"other"_s);
        expectRefused(noMatch, place.column);
        type(u"other"_s);
        press(u"OK"_s);
        EXPECT_EQ(state(), displayState);
    }
}

TEST_F(PasswordEntry, AfterTheQuestionTypingReplacesTheFiller)
{
    open(user(u"CLERK"_s));
    write(u"USER_NAME"_s, u"teller"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::Yes);
    press(u"OK"_s);
    expectSelected(box(u"txtProperty_USER_PASSWORD"_s));
    // The same when the box had the focus before.
    hit(Qt::Key_End);
    boxes.expectAsk(wantsPassword, boxes::Answer::Yes);
    hit(Qt::Key_Return);
    type(u"new"_s);
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s).front(), u"NEW"_s);
    press(u"Cancel"_s);

    open(ofDatabase(u"SALES"_s, u"CLERK"_s));
    pick(u"USER_NAME"_s, u"BOSS"_s);
    QTest::mouseClick(&box(u"txtProperty_DATABASE_PASSWORD"_s), Qt::LeftButton);
    QCoreApplication::processEvents();
    hit(Qt::Key_End);
    boxes.expectAsk(wantsPassword, boxes::Answer::Yes);
    hit(Qt::Key_Return);
    type(u"new"_s);
    EXPECT_EQ(passwords(u"DATABASE_PASSWORD"_s).front(), u"NEW"_s);
}

TEST_F(PasswordEntry, AClickIntoEitherBoxSelectsTheFiller)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(place.node);
        for (const QString& name : {boxOf(place), u"txtConfirm"_s}) {
            QTest::mouseClick(&box(name), Qt::LeftButton);
            expectSelected(box(name));
            type(u"abc"_s);
        }
        EXPECT_EQ(passwords(place.column), (QStringList{u"ABC"_s, u"ABC"_s}));
    }
}

TEST_F(PasswordEntry, ComingBackFromAnotherWindowOrAMenuKeepsThePlaceInThePassword)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(place.node);
        for (const QString& name : {boxOf(place), u"txtConfirm"_s}) {
            QLineEdit& entered = box(name);
            QTest::mouseClick(&entered, Qt::LeftButton);
            QCoreApplication::processEvents();
            type(u"abcd"_s);
            for (const Qt::FocusReason reason :
                 {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason}) {
                QFocusEvent away(QEvent::FocusOut, reason);
                QCoreApplication::sendEvent(&entered, &away);
                QFocusEvent back(QEvent::FocusIn, reason);
                QCoreApplication::sendEvent(&entered, &back);
                QCoreApplication::processEvents();
                EXPECT_FALSE(entered.hasSelectedText()) << name.toStdString() << ' ' << reason;
            }
            type(u"e"_s);
            EXPECT_EQ(entered.text(), u"ABCDE"_s);
        }
    }
}

// What the driver says of the column ---------------------------------------------------------------------------------

TEST_F(PasswordEntry, TheFillerIsOneShorterThanTheColumn)
{
    declare(u"VARCHAR(9)"_s);
    for (const Place& place : places()) {
        open(place.node);
        EXPECT_EQ(passwords(place.column), (QStringList{QString(8, ' '_L1), QString(8, ' '_L1)}));
        writePassword(place.column, QString(12, 'p'_L1));
        EXPECT_EQ(passwords(place.column), (QStringList{QString(9, 'P'_L1), QString(9, 'P'_L1)}));
    }
}

TEST_F(PasswordEntry, ColumnsOfAnySizeHaveAFillerThatTheEntryHolds)
{
    declare(u"VARCHAR(2000000000)"_s);
    for (const Place& place : places()) {
        open(place.node);
        const QString shown = passwords(place.column).front();
        EXPECT_EQ(shown, QString(shown.size(), ' '_L1));
        EXPECT_LE(shown.size(), box(boxOf(place)).maxLength());
        EXPECT_FALSE(shown.isEmpty());
        EXPECT_EQ(passwords(place.column).back(), shown);
        press(u"OK"_s);
        EXPECT_EQ(state(), displayState);
    }
    EXPECT_EQ(password(u"CLERK"_s), storedOfUser);
}

TEST_F(PasswordEntry, AColumnWithoutASizeHasNoFiller)
{
    declare(u"VARCHAR(0)"_s);
    open(user(u"CLERK"_s));
    EXPECT_EQ(passwords(u"USER_PASSWORD"_s), (QStringList{QString(), QString()}));
    press(u"OK"_s);
    EXPECT_EQ(password(u"CLERK"_s), storedOfUser);
}

// A typed password ends with its entry -------------------------------------------------------------------------------

TEST_F(PasswordEntry, ATypedPasswordIsGoneWhenTheRowCannotBeReadBehindTheUpdate)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(place.node);
        writePassword(place.column, u"qzx7-typed"_s);
        statements.clear();
        statements.failAt(2);
        errors.expect(Press::Ignore);
        press(u"OK"_s);
        errors.verify();
        EXPECT_EQ(statements.writes().size(), 1);
        EXPECT_EQ(passwords(place.column), (QStringList{QString(), QString()}));
        EXPECT_EQ(leaks(), QStringList());
    }
}

TEST_F(PasswordEntry, ATypedPasswordIsGoneBehindAnotherPane)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(place.node);
        writePassword(place.column, u"qzx7-typed"_s);
        click(key({u"US"_s}));
        EXPECT_EQ(leaks(), QStringList()) << "another node";
        choose(key(gridOf(place)), place.addItem);
        writePassword(place.column, u"qzx7-typed"_s);
        press(u"Up1"_s);
        EXPECT_EQ(leaks(), QStringList()) << "Up";
        choose(key(gridOf(place)), place.addItem);
        writePassword(place.column, u"qzx7-typed"_s);
        press(u"Cancel"_s);
        EXPECT_EQ(leaks(), QStringList()) << "Cancel of an add";
        EXPECT_EQ(statements.writes(), QStringList());
    }
}

TEST_F(PasswordEntry, UndoInTheBoxBringsNoPasswordBack)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(place.node);
        writePassword(place.column, u"qzx7-typed"_s);
        const std::array entered{&box(boxOf(place)), &box(u"txtConfirm"_s)};
        click(key({u"US"_s}));
        for (QLineEdit* hidden : entered) {
            hidden->undo();
            EXPECT_EQ(hidden->text(), QString()) << hidden->objectName().toStdString();
        }
    }
}

TEST_F(PasswordEntry, APasswordTypedIntoAGridIsForgottenWhereNobodySeesIt)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        open(gridOf(place));
        clickCell(clerksRow(), place.heading);
        typeIntoCell(u"qzx7-typed"_s);
        QTest::keyClick(&cellEditor(), Qt::Key_Return);
        window->currentPane()->hide();
        window->currentPane()->show();
        clickCell(clerksRow(), place.heading);
        QTest::keyClick(&grid(), Qt::Key_Return);
        ASSERT_TRUE(cellEditor().isVisible());
        EXPECT_EQ(cellEditor().text(), QString());
        leaveRow();
        EXPECT_EQ(statements.writes().filter(sign, Qt::CaseInsensitive), QStringList());
    }
}

TEST_F(PasswordEntry, APasswordTypedIntoAGridIsNotTheNextRowsBehindAnotherPane)
{
    for (const Place& place : places()) {
        SCOPED_TRACE(place.column.toStdString());
        begin(place.node);
        open(gridOf(place));
        clickCell(clerksRow(), place.heading);
        typeIntoCell(u"qzx7-typed"_s);
        QTest::keyClick(&cellEditor(), Qt::Key_Return);
        click(key(place.node));
        EXPECT_EQ(leaks(), QStringList());
        click(key(gridOf(place)));
        clickCell(clerksRow(), u"Remarks"_s);
        typeIntoCell(u"x"_s);
        leaveRow();
        EXPECT_EQ(statements.writes().filter(sign, Qt::CaseInsensitive), QStringList());
        statements.clear();
    }
}
