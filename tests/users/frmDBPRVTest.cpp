#include "DatabasePrivilegeFixture.h"

#include "Settings.h"

#include "ToolBar.h"
#include <QWheelEvent>

#include <QApplication>
#include <QPushButton>

#include <ostream>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using namespace databaseprivileges;

// Showing ------------------------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegePane, AClickOpensTheRightsForChange)
{
    open(clerk());
    EXPECT_EQ(statements.statements(), (QStringList{describePrivileges, readRow(u"CLERK"_s), readUsers}));
    EXPECT_EQ(shownPane(),
              (QStringList{u"frmDBPRV"_s, u"CLERK - Edit User Privileges"_s, u"User Edit: Up1 OK Cancel"_s, allOpen}));
    EXPECT_EQ(texts(columns), (QStringList{u"SALES"_s, u"CLERK"_s, u"SCOTT"_s, u"DATABASE"_s, u"1"_s, u"0"_s, u"1"_s,
                                           u"0"_s, u"sells"_s}));
    EXPECT_EQ(ticked(), (QStringList{u"ALLOW_SELECT"_s, u"ALLOW_UPDATE"_s}));
    EXPECT_EQ(passwords(secret), (QStringList{filler, filler}));
    EXPECT_EQ(list(u"USER_NAME"_s).currentText(), u"CLERK"_s);
    EXPECT_EQ(items(u"USER_NAME"_s), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s}));
    EXPECT_EQ(items(u"SECURITY_LEVEL"_s), (QStringList{u"DATABASE"_s, u"TABLE"_s}));
    EXPECT_FALSE(control(u"txtProperty_DATABASE_NAME"_s).isEnabled());
    EXPECT_TRUE(control(u"txtConfirm"_s).isEnabled());
    EXPECT_TRUE(control(u"chkProperty_ALLOW_INSERT"_s).isEnabled());
    EXPECT_EQ(focus(), u"USER_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Update"_s);
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DatabasePrivilegePane, WithTheOptionOffAClickOnlyShows)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(clerk());
    EXPECT_EQ(statements.statements(), (QStringList{describePrivileges, readRow(u"CLERK"_s)}));
    EXPECT_EQ(shownPane(), (QStringList{u"frmDBPRV"_s, u"CLERK - User Database Privileges"_s, displayState, {}}));
    EXPECT_EQ(list(u"USER_NAME"_s).currentText(), u"CLERK"_s);
    for (const char* name : {"chkProperty_ALLOW_SELECT", "chkProperty_ALLOW_DELETE", "txtConfirm"})
        EXPECT_FALSE(control(QLatin1String(name)).isEnabled()) << name;
    press(u"User Edit"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
    press(u"Cancel"_s);
    EXPECT_EQ(state(), displayState);
}

TEST_F(DatabasePrivilegePane, TellsWhatEachPropertyIs)
{
    open(clerk());
    const std::vector<std::tuple<const char*, const char*, const char*, const char*>> rows{
        {"txtProperty_DATABASE_NAME", "Database Name:", "Database Name", ""},
        {"cboDropdown_USER_NAME", "User &Name:", "User Name", ""},
        {"txtProperty_DATABASE_USERNAME", "Data&base Username", "Database Username", ""},
        {"txtProperty_DATABASE_PASSWORD", "Database &Password:", "Database Password", ""},
        {"txtConfirm", "&Confirm Password:", "Confirm Password", ""},
        {"cboDropdown_SECURITY_LEVEL", "Security &Level:", "Security Level", ""},
        {"chkProperty_ALLOW_SELECT", "S&ELECT", "SELECT", "Can the user view this Database?"},
        {"chkProperty_ALLOW_INSERT", "&INSERT", "INSERT", "Can the user add records to this Database?"},
        {"chkProperty_ALLOW_UPDATE", "UP&DATE", "UPDATE", "Can the user change existing data in this Database?"},
        {"chkProperty_ALLOW_DELETE", "DELE&TE", "DELETE", "Can the user remove records from this Database?"},
        {"txtProperty_REMARKS", "Re&marks", "Remarks",
         "Any notes you wish to make about this User's Database Privileges"},
    };
    for (const auto& [name, text, spoken, toolTip] : rows) {
        SCOPED_TRACE(name);
        const QWidget& found = control(QLatin1String(name));
        EXPECT_TRUE(found.isVisible());
        EXPECT_EQ(prompt(found), QLatin1String(text));
        EXPECT_EQ(found.accessibleName(), QLatin1String(spoken));
        EXPECT_EQ(found.toolTip(), QLatin1String(toolTip));
    }
    for (const char* name : {"txtProperty_DATABASE_PASSWORD", "txtConfirm"})
        EXPECT_EQ(box(QLatin1String(name)).echoMode(), QLineEdit::Password);
    for (const char* button : {"User Add", "User Edit", "User Delete"})
        EXPECT_TRUE(
            window->toolBar(u"tbrDBPRV"_s).Button(QLatin1String(button)).ToolTipText().endsWith(u"User Privileges"_s));
}

TEST_F(DatabasePrivilegePane, TheTabKeyWalksFromTopToBottom)
{
    open(clerk());
    EXPECT_EQ(walked(11), (QStringList{u"USER_NAME"_s, u"DATABASE_USERNAME"_s, secret, u"txtConfirm"_s,
                                       u"SECURITY_LEVEL"_s, u"ALLOW_SELECT"_s, u"ALLOW_INSERT"_s, u"ALLOW_UPDATE"_s,
                                       u"ALLOW_DELETE"_s, u"REMARKS"_s, u"cmdAction"_s, u"cmdCancel"_s}));
}

TEST_F(DatabasePrivilegePane, NothingMovesWhenTheRowIsOpenedForChange)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(clerk());
    const auto places = [&] {
        QCoreApplication::processEvents();
        QList<QRect> all;
        for (const char* name : {"txtConfirm", "chkProperty_ALLOW_SELECT", "txtProperty_REMARKS"}) {
            const QWidget& found = control(QLatin1String(name));
            all.append({found.mapTo(window.get(), QPoint()), found.size()});
        }
        return all;
    };
    const QList<QRect> shown = places();
    press(u"User Edit"_s);
    EXPECT_EQ(places(), shown);
}

TEST_F(DatabasePrivilegePane, BothBoxesOfThePasswordAreEquallyDarkWhileTheyAreLocked)
{
    settings::save(u"Options"_s, u"Items"_s, 0);
    open(clerk());
    const auto ink = [&](const QString& name) {
        return control(name).palette().color(QPalette::Disabled, QPalette::Text);
    };
    EXPECT_EQ(ink(u"txtConfirm"_s), ink(u"txtProperty_DATABASE_PASSWORD"_s));
}

TEST_F(DatabasePrivilegePane, TheWheelOverTheUserChangesNothing)
{
    open(clerk());
    for (const QString& column : {u"USER_NAME"_s, u"SECURITY_LEVEL"_s}) {
        SCOPED_TRACE(column.toStdString());
        const QString before = text(column);
        const QString focused = focus();
        for (const int turn : {-120, 120}) {
            const QPointF middle = list(column).rect().center();
            QWheelEvent wheel(middle, list(column).mapToGlobal(middle), {}, {0, turn}, Qt::NoButton, {},
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&list(column), &wheel);
            EXPECT_EQ(text(column), before) << turn;
        }
        EXPECT_EQ(focus(), focused);
    }
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel"_s);
}

TEST_F(DatabasePrivilegePane, TheWordOfAFlagIsAsGoodAsItsBox)
{
    open(clerk());
    for (const QLabel* word : window->currentPane()->findChildren<QLabel*>()) {
        auto* flag = qobject_cast<QCheckBox*>(word->buddy());
        if (!flag)
            continue;
        SCOPED_TRACE(word->text().toStdString());
        EXPECT_EQ(word->toolTip(), flag->toolTip());
        const bool was = flag->isChecked();
        QTest::mouseClick(const_cast<QLabel*>(word), Qt::LeftButton);
        EXPECT_EQ(flag->isChecked(), !was);
        EXPECT_TRUE(flag->hasFocus());
        QTest::mouseClick(const_cast<QLabel*>(word), Qt::RightButton);
        EXPECT_EQ(flag->isChecked(), !was);
        // Whoever lets go elsewhere has thought better of it.
        QTest::mousePress(const_cast<QLabel*>(word), Qt::LeftButton);
        QTest::mouseRelease(const_cast<QLabel*>(word), Qt::LeftButton, {}, {-50, 0});
        EXPECT_EQ(flag->isChecked(), !was);
    }
    EXPECT_EQ(ticked(), (QStringList{u"ALLOW_INSERT"_s, u"ALLOW_DELETE"_s}));
    press(u"OK"_s);
    // What is only shown is not changed.
    for (const QLabel* word : window->currentPane()->findChildren<QLabel*>()) {
        if (qobject_cast<QCheckBox*>(word->buddy()))
            QTest::mouseClick(const_cast<QLabel*>(word), Qt::LeftButton);
    }
    EXPECT_EQ(ticked(), (QStringList{u"ALLOW_INSERT"_s, u"ALLOW_DELETE"_s}));
}

TEST_F(DatabasePrivilegePane, NullsShowAsEmptyTextsAndUntickedFlags)
{
    change(u"UPDATE TW_DBPRV SET DATABASE_USERNAME = NULL, DATABASE_PASSWORD = NULL, ALLOW_SELECT = NULL, "
           "ALLOW_INSERT = NULL, ALLOW_UPDATE = NULL, ALLOW_DELETE = NULL, SECURITY_LEVEL = NULL, REMARKS = NULL "
           "WHERE DATABASE_NAME = 'SALES'"_s);
    begin(clerk());
    open(ofDatabase(u"DEPOT"_s, u"CLERK"_s));
    click(key(clerk()));
    EXPECT_EQ(texts(columns), (QStringList{u"SALES"_s, u"CLERK"_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s}));
    EXPECT_EQ(ticked(), QStringList());
    EXPECT_EQ(list(u"SECURITY_LEVEL"_s).currentIndex(), -1);
    expectRefused(noLevel, u"SECURITY_LEVEL"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    press(u"OK"_s);
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, u"SALES|CLERK||<null>|0|0|0|0|TABLE|"_s}));
}

TEST_F(DatabasePrivilegePane, AFlagBeyondZeroAndOneIsUntickedAndStays)
{
    change(u"UPDATE TW_DBPRV SET ALLOW_SELECT = 2 WHERE DATABASE_NAME = 'SALES'"_s);
    open(clerk());
    EXPECT_EQ(ticked(), QStringList{u"ALLOW_UPDATE"_s});
    press(u"OK"_s);
    EXPECT_EQ(stored(u"SELECT ALLOW_SELECT FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES'"_s), QStringList{u"2"_s});
}

TEST_F(DatabasePrivilegePane, AUserWhoIsGoneStaysInTheRow)
{
    change(u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s);
    open(clerk());
    EXPECT_EQ(list(u"USER_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(items(u"USER_NAME"_s), (QStringList{u"ADMIN"_s, u"BOSS"_s}));
    EXPECT_EQ(text(u"USER_NAME"_s), u"CLERK"_s);
    statements.clear();
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{updateRow(asItWas, u"CLERK"_s)});
    EXPECT_EQ(databasePrivileges(), (QStringList{clerkOnDepot, clerkOnSales}));
}

TEST_F(DatabasePrivilegePane, RightsThatAreGoneShowNoValues)
{
    open(ofDatabase(u"DEPOT"_s, u"CLERK"_s));
    begin(clerk());
    change(u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME = 'SALES'"_s);
    click(key(clerk()));
    EXPECT_EQ(texts(columns).join(QString()), QString());
    EXPECT_EQ(ticked(), QStringList());
    expectRefused(noUser, u"USER_NAME"_s);
}

TEST_F(DatabasePrivilegePane, UpShowsTheRightsAndSelectsTheirNode)
{
    record({{u"frmDBPRVs"_s, 2}});
    open(clerk());
    statements.clear();
    press(u"Up1"_s);
    EXPECT_EQ(takeShown(), QStringList{"frmDBPRVs "_L1 + datasource + u"/SALES"_s});
    EXPECT_EQ(selectedKey(), key(ofDatabase(u"SALES"_s)));
    EXPECT_TRUE(window->tvwExplorer().hasFocus());
    EXPECT_EQ(statements.statements(), QStringList());
}

// Adding -------------------------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegePane, AddBeginsWithTheDatabaseAndNothingElse)
{
    open(clerk());
    command(ofDatabase(u"SALES"_s), u"mnu_DBPRVAddNew"_s);
    EXPECT_EQ(statements.statements(), QStringList{readUsers});
    EXPECT_EQ(shownPane(), (QStringList{u"frmDBPRV"_s, u"Add New User Privileges to SALES"_s,
                                        u"User Add: Up1 OK Cancel"_s, allOpen}));
    EXPECT_EQ(texts(columns).join(QString()), u"SALES"_s);
    EXPECT_EQ(ticked(), QStringList());
    EXPECT_EQ(passwords(secret), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(list(u"USER_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(list(u"SECURITY_LEVEL"_s).currentIndex(), -1);
    EXPECT_FALSE(control(u"txtProperty_DATABASE_NAME"_s).isEnabled());
    EXPECT_EQ(focus(), u"USER_NAME"_s);
    EXPECT_EQ(dynamic_cast<QPushButton&>(control(u"cmdAction"_s)).text(), u"&Add"_s);
}

TEST_F(DatabasePrivilegePane, TwoUsersAreGivenRightsOneBehindTheOther)
{
    beginToAdd();
    statements.clear();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    write(u"DATABASE_USERNAME"_s, u"big one"_s);
    pastePassword(secret, u"it's %1 ключ 🚀"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    tick(u"ALLOW_INSERT"_s);
    tick(u"ALLOW_DELETE"_s);
    tick(u"ALLOW_UPDATE"_s);
    tick(u"ALLOW_UPDATE"_s);
    write(u"REMARKS"_s, u"O'Hara"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.statements().first(2),
              (QStringList{userIsTaken(u"BOSS"_s),
                           insertRow(u"'BOSS', 'BIG_ONE', 'it''s %1 ключ 🚀', 'TABLE', 0, 01, 00, 01, 'O''Hara'"_s)}));
    EXPECT_EQ(state().section(':'_L1, 0, 0), u"User Add"_s);
    EXPECT_EQ(texts(columns).join(QString()), u"SALES"_s);
    EXPECT_EQ(passwords(secret), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(ticked(), QStringList());
    EXPECT_EQ(focus(), u"USER_NAME"_s);
    EXPECT_EQ(selectedKey(), key(ofDatabase(u"SALES"_s, u"BOSS"_s)));

    pick(u"USER_NAME"_s, u"ADMIN"_s);
    pick(u"SECURITY_LEVEL"_s, u"DATABASE"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    clickButton(u"cmdAction"_s);
    EXPECT_EQ(databasePrivileges(),
              (QStringList{clerkOnDepot, u"SALES|ADMIN|||0|0|0|0|DATABASE|"_s,
                           u"SALES|BOSS|BIG_ONE|it's %1 ключ 🚀|0|1|0|1|TABLE|O'Hara"_s, clerkOnSales}));
    EXPECT_EQ(lines(key(ofDatabase(u"SALES"_s))),
              (QStringList{u"dbprv \"CLERK\" User"_s, u"dbprv \"BOSS\" User"_s, u"dbprv \"ADMIN\" User"_s}));
    press(u"Cancel"_s);
    EXPECT_EQ(currentPane(), u"frmDBPRVs"_s);
}

TEST_F(DatabasePrivilegePane, UndoOfAnAddKeepsTheDatabase)
{
    beginToAdd();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    writePassword(secret, u"x"_s);
    tick(u"ALLOW_SELECT"_s);
    press(u"Undo"_s);
    EXPECT_EQ(texts(columns).join(QString()), u"SALES"_s);
    EXPECT_EQ(passwords(secret), (QStringList{u""_s, u""_s}));
    EXPECT_EQ(list(u"USER_NAME"_s).currentIndex(), -1);
    EXPECT_EQ(ticked(), QStringList());
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel"_s);
    pick(u"USER_NAME"_s, u"BOSS"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(databasePrivileges().value(1), u"SALES|BOSS|||0|0|0|0|TABLE|"_s);
}

TEST_F(DatabasePrivilegePane, CancelOfAnAddShowsTheCollection)
{
    record({{u"frmDBPRVs"_s, 2}});
    beginToAdd();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    hit(Qt::Key_Escape);
    EXPECT_EQ(takeShown(), QStringList{"frmDBPRVs "_L1 + datasource + u"/SALES"_s});
    EXPECT_EQ(statements.writes(), QStringList());
}

// Validation ---------------------------------------------------------------------------------------------------------

TEST_F(DatabasePrivilegePane, RefusesWhatIsMissingOneAfterTheOther)
{
    beginToAdd();
    const QStringList tree = wholeTree();
    statements.clear();
    expectRefused(noUser, u"USER_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList());
    pick(u"USER_NAME"_s, u"BOSS"_s);
    // The question about the password comes before the level.
    boxes.expectAsk(wantsPassword, boxes::Answer::Yes);
    press(u"OK"_s);
    EXPECT_EQ(focus(), secret);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    expectRefused(noLevel, u"SECURITY_LEVEL"_s);
    write(secret, u"x"_s);
    expectRefused(noLevel, u"SECURITY_LEVEL"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    expectRefused(noMatch, secret);
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(wholeTree(), tree);
    confirm(u"x"_s);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{insertRow(u"'BOSS', '', 'X', 'TABLE', 0, 0, 0, 0, ''"_s)});
}

TEST_F(DatabasePrivilegePane, RightsThatAreThereAlreadyAreRefused)
{
    const QString isThere = u"User 'CLERK' already has Database Privileges set for this Database."_s;
    change(u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME, SECURITY_LEVEL) VALUES ('BOSS', 'SALES', 'TABLE')"_s);
    beginToAdd();
    statements.clear();
    pick(u"USER_NAME"_s, u"CLERK"_s);
    expectRefused(isThere, u"USER_NAME"_s);
    EXPECT_EQ(statements.statements(), QStringList{userIsTaken(u"CLERK"_s)});
    click(key(ofDatabase(u"SALES"_s, u"BOSS"_s)));
    pick(u"USER_NAME"_s, u"CLERK"_s);
    expectRefused(isThere, u"USER_NAME"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DatabasePrivilegePane, APasswordOfBlanksIsNone)
{
    beginToAdd();
    pick(u"USER_NAME"_s, u"BOSS"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    pastePassword(secret, u"    "_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    press(u"OK"_s);
    EXPECT_EQ(statements.writes(), QStringList{insertRow(u"'BOSS', '', '', 'TABLE', 0, 0, 0, 0, ''"_s)});
}
