#include "frmWizardFileToTable.h"

#include "WizardFixture.h"

#include "CConnections.h"
#include "Commands.h"
#include "Settings.h"

#include <QClipboard>

#include <ostream>

using namespace wizard;

namespace
{

const QString first = u"Page 1 of 4: Next Finish Cancel"_s;
const QString second = u"Page 2 of 4: Previous Next Finish Cancel"_s;
const QString third = u"Page 3 of 4: Previous Next Finish Cancel"_s;
const QString fourth = u"Page 4 of 4: Previous Finish Cancel"_s;

/// The texts that a page shows, from the top.
QStringList textsOf(DialogForm& form, int page)
{
    QStringList all;
    for (const QLabel* label : dialog::get<QWidget>(form, u"picPage_%1"_s.arg(page)).findChildren<QLabel*>())
        all.append(label->text());
    return all;
}

/// The four texts of the last page.
QStringList properties(DialogForm& form)
{
    QStringList all;
    for (const QString& entry : {tableName, displayName, specification, remarks})
        all.append(DialogScript::text(form, entry));
    return all;
}

} // namespace

// The pages ----------------------------------------------------------------------------------------------------------

TEST_F(Wizard, BeginsWithTheDatasourceOfTheNode)
{
    open([&](DialogForm& form) {
        EXPECT_EQ(page(form), first);
        EXPECT_EQ(statements.statements(), (QStringList{userFiles, userDatabases}));
        EXPECT_EQ(dialog::get<DropDown>(form, datasources).currentText(), datasource);
        EXPECT_EQ(dialog::rows(form, files), (QStringList{u"EMPTY"_s, u"PAYROLL"_s, u"STOCK"_s}));
        EXPECT_EQ(dialog::selected(form, files), QStringList());
        EXPECT_EQ(dialog::rows(form, databases), QStringList{u"SALES"_s});
        EXPECT_EQ(dialog::selected(form, databases), QStringList());
        EXPECT_EQ(properties(form), (QStringList(4, QString(u""_s))));
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(Wizard, WalksForwardsAndBackwardsWithoutChecking)
{
    open([&](DialogForm& form) {
        QStringList walked{page(form)};
        for (const QString& button : {next, next, next, previous, previous, previous}) {
            DialogScript::click(form, button);
            walked.append(page(form));
        }
        EXPECT_EQ(walked, (QStringList{first, second, third, fourth, third, second, first}));
        DialogScript::click(form, cancel);
    });
}

TEST_F(Wizard, PagesBeyondTheFirstAndTheLastAreThose)
{
    open([&](DialogForm& form) {
        auto& asked = dynamic_cast<frmWizardFileToTable&>(form);
        asked.setCurrentPage(99);
        EXPECT_EQ(asked.CurrentPage(), 3);
        EXPECT_EQ(page(form), fourth);
        asked.setCurrentPage(-1);
        EXPECT_EQ(asked.CurrentPage(), 0);
        EXPECT_EQ(page(form), first);
        asked.setCurrentPage(2);
        EXPECT_EQ(asked.CurrentPage(), 2);
        EXPECT_EQ(page(form), third);
        DialogScript::click(form, cancel);
    });
}

TEST_F(Wizard, EnterGoesOnAndEscapeCancels)
{
    open([&](DialogForm& form) {
        const auto enter = [&] { QTest::keyClick(&form, Qt::Key_Return); };
        enter();
        enter();
        enter();
        EXPECT_EQ(page(form), fourth);
        boxes.expectInform(noFile);
        enter();
        boxes.verify();
        EXPECT_EQ(page(form), second);
        dialog::hit(form, Qt::Key_Escape);
    });
    EXPECT_EQ(tables().size(), 1);
}

TEST_F(Wizard, EnterInAListGoesOnAndOn)
{
    open([&](DialogForm& form) {
        DialogScript::click(form, next);
        EXPECT_EQ(dialog::focus(form), files);
        dialog::clickRow(form, files, u"PAYROLL"_s);
        dialog::hit(form, Qt::Key_Down);
        dialog::hit(form, Qt::Key_Return);
        EXPECT_EQ(page(form), third);
        EXPECT_EQ(dialog::focus(form), databases);
        dialog::hit(form, Qt::Key_Down);
        dialog::hit(form, Qt::Key_Space);
        dialog::hit(form, Qt::Key_Enter);
        EXPECT_EQ(page(form), fourth);
        EXPECT_EQ(dialog::focus(form), tableName);
        EXPECT_EQ(dialog::selected(form, files), QStringList{u"STOCK"_s});
        EXPECT_EQ(dialog::selected(form, databases), QStringList{u"SALES"_s});
        dialog::write(form, specification, u"a.dat"_s);
        expectSkipped(u"UNKNOWN"_s, u"STOCK"_s, u"FLAG"_s);
        boxes.expectInform(created);
        dialog::hit(form, Qt::Key_Return);
        EXPECT_FALSE(form.isVisible());
    });
    EXPECT_EQ(tables().size(), 2);
}

TEST_F(Wizard, TellsWhatEachPageIsFor)
{
    open([&](DialogForm& form) {
        EXPECT_EQ(textsOf(form, 0),
                  (QStringList{u"File to Table Wizard"_s,
                               u"This Wizard will guide you through the proccess of creating a new Table based upon an "
                               "Existing File Specification.  Use the Back and Next buttons below to progress.  Once "
                               "the wizard has collected all the information it requires, you can click on the Finish "
                               "button to create your Table."_s}));
        EXPECT_EQ(textsOf(form, 1), (QStringList{u"Step 1 - Selecting a File"_s,
                                                 u"Please select the file you wish to convert to a table"_s,
                                                 u"Data&source:"_s, u"Fil&e:"_s}));
        EXPECT_EQ(textsOf(form, 2),
                  (QStringList{u"Step 2 - Selecting the Database"_s,
                               u"Please select the Database to create the new Table in"_s, u"&Database:"_s}));
        EXPECT_EQ(textsOf(form, 3),
                  (QStringList{u"Step 3 - Properties of the new table"_s,
                               u"Please select the properties you require for your new table"_s, u"&Table Name:"_s,
                               u"D&isplay Name:"_s, u"Fi&le Specification:"_s, u"Remarks:"_s}));
        EXPECT_EQ(dialog::prompt(form, datasources), u"Data&source:"_s);
        EXPECT_EQ(dialog::prompt(form, files), u"Fil&e:"_s);
        EXPECT_EQ(dialog::prompt(form, databases), u"&Database:"_s);
        EXPECT_EQ(dialog::prompt(form, tableName), u"&Table Name:"_s);
        EXPECT_EQ(dialog::prompt(form, displayName), u"D&isplay Name:"_s);
        EXPECT_EQ(dialog::prompt(form, specification), u"Fi&le Specification:"_s);
        EXPECT_EQ(dialog::prompt(form, remarks), u"Remarks:"_s);
        EXPECT_EQ(dialog::caption(form, previous), u"< &Previous"_s);
        EXPECT_EQ(dialog::caption(form, next), u"&Next >"_s);
        EXPECT_EQ(dialog::caption(form, finish), u"&Finish"_s);
        EXPECT_EQ(dialog::caption(form, cancel), u"Cancel"_s);
        DialogScript::click(form, cancel);
    });
}

TEST_F(Wizard, WithoutAStoredPlaceItComesUpInTheMiddle)
{
    start();
    CConnections::instance().Item(datasource);
    window->setGeometry(20, 20, 600, 600);
    QPoint centre;
    dialogs.expect(name, [&](DialogForm& form) {
        centre = form.frameGeometry().center() - window->frameGeometry().center();
        DialogScript::click(form, cancel);
    });
    frmWizardFileToTable::Display(datasource, {}, {});
    dialogs.verify();
    EXPECT_LE(centre.manhattanLength(), 2);
}

TEST_F(Wizard, ItsPlaceIsKept)
{
    settings::save(u"frmWizard"_s, u"Left"_s, 1500);
    settings::save(u"frmWizard"_s, u"Top"_s, 900);
    open([](DialogForm& form) {
        EXPECT_EQ(form.pos(), QPoint(100, 60));
        form.move(120, 80);
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(settings::getNumber(u"frmWizard"_s, u"Left"_s, 0), 1800);
    EXPECT_EQ(settings::getNumber(u"frmWizard"_s, u"Top"_s, 0), 1200);
    open([](DialogForm& form) {
        EXPECT_EQ(form.pos(), QPoint(120, 80));
        form.move(90, 70);
        form.close();
    });
    EXPECT_EQ(settings::getNumber(u"frmWizard"_s, u"Left"_s, 0), 1350);
    EXPECT_EQ(settings::getNumber(u"frmWizard"_s, u"Top"_s, 0), 1050);
}

// The lists ----------------------------------------------------------------------------------------------------------

TEST_F(Wizard, ListsEveryDatasourceOfTheFamilyAndFillsTheListsOfConnectedOnes)
{
    world.addDatasource(u"Unopened"_s);
    world.addForeignDatasource(u"Foreign"_s, u"Tarnwick ODBC 2"_s);
    world.addForeignDatasource(u"Lower"_s, u"tarnwick odbc"_s);
    open([&](DialogForm& form) {
        QStringList all = dialog::items(form, datasources);
        all.sort();
        EXPECT_EQ(all, (QStringList{datasource, u"Unopened"_s}));
        DialogScript::click(form, next);
        dialog::clickRow(form, files, u"STOCK"_s);
        statements.clear();
        dialog::pick(form, datasources, u"Unopened"_s);
        EXPECT_EQ(statements.statements(), QStringList());
        EXPECT_EQ(dialog::rows(form, files), QStringList());
        EXPECT_EQ(dialog::rows(form, databases), QStringList());

        boxes.expectInform(noFile);
        DialogScript::click(form, finish);
        boxes.verify();
        EXPECT_EQ(page(form), second);
        EXPECT_EQ(dialog::focus(form), files);

        dialog::pick(form, datasources, datasource);
        EXPECT_EQ(statements.statements(), (QStringList{userFiles, userDatabases}));
        EXPECT_EQ(dialog::rows(form, files).size(), 3);
        DialogScript::click(form, cancel);
    });
    EXPECT_FALSE(CConnections::instance().find(u"Unopened"_s));
}

TEST_F(Wizard, TheCatalogsOwnFilesAndDatabaseComeWithTheOption)
{
    settings::save(u"Options"_s, u"SysTables"_s, 1);
    open([&](DialogForm& form) {
        EXPECT_EQ(statements.statements(), (QStringList{allFiles, allDatabases}));
        EXPECT_TRUE(dialog::rows(form, files).contains(u"LOCDT"_s));
        EXPECT_TRUE(dialog::rows(form, files).contains(u"STOCK"_s));
        EXPECT_EQ(dialog::rows(form, databases), (QStringList{u"SALES"_s, u"TW"_s}));
        DialogScript::click(form, cancel);
    });
}

TEST_F(Wizard, CanBeOpenedBlank)
{
    start();
    CConnections::instance().Item(datasource);
    statements.clear();
    dialogs.expect(name, [&](DialogForm& form) {
        EXPECT_EQ(page(form), first);
        EXPECT_EQ(dialog::get<DropDown>(form, datasources).currentIndex(), -1);
        EXPECT_EQ(dialog::rows(form, files), QStringList());
        EXPECT_EQ(statements.statements(), QStringList());
        DialogScript::click(form, next);
        dialog::pick(form, datasources, datasource);
        EXPECT_EQ(dialog::rows(form, files).size(), 3);
        DialogScript::click(form, cancel);
    });
    frmWizardFileToTable::Display({}, {}, {});
    dialogs.verify();
}

TEST_F(Wizard, ItsCommandOpensItBlankWithoutANode)
{
    start();
    dialogs.expect(name, [&](DialogForm& form) {
        EXPECT_EQ(page(form), first);
        EXPECT_EQ(dialog::get<DropDown>(form, datasources).currentIndex(), -1);
        DialogScript::click(form, cancel);
    });
    commands::run(u"mnu_FileFileToTableWizard"_s, {});
    dialogs.verify();
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(Wizard, NamesThatAreGivenAreSelected)
{
    start();
    CConnections::instance().Item(datasource);
    dialogs.expect(name, [&](DialogForm& form) {
        EXPECT_EQ(page(form), first);
        EXPECT_EQ(dialog::selected(form, files), QStringList{u"STOCK"_s});
        EXPECT_EQ(dialog::selected(form, databases), QStringList{u"SALES"_s});
        EXPECT_EQ(properties(form), (QStringList{u"STOCK"_s, u""_s, u""_s, u""_s}));
        DialogScript::click(form, cancel);
    });
    frmWizardFileToTable::Display(datasource, u"SALES"_s, u"STOCK"_s);
    dialogs.verify();

    dialogs.expect(name, [&](DialogForm& form) {
        EXPECT_EQ(dialog::get<DropDown>(form, datasources).currentIndex(), -1);
        EXPECT_EQ(dialog::selected(form, files), QStringList());
        DialogScript::click(form, cancel);
    });
    frmWizardFileToTable::Display(u"No such"_s, u"SALES"_s, u"STOCK"_s);
    dialogs.verify();
}

TEST_F(Wizard, AFileProposesItsNameForTheTableAndNothingElse)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('mixed-Case')"_s);
    open([&](DialogForm& form) {
        DialogScript::click(form, next);
        dialog::clickRow(form, files, u"mixed-Case"_s);
        EXPECT_EQ(properties(form), (QStringList{u"MIXED-CASE"_s, u""_s, u""_s, u""_s}));
        dialog::hit(form, Qt::Key_Up);
        EXPECT_EQ(dialog::selected(form, files), QStringList{u"STOCK"_s});
        EXPECT_EQ(properties(form).first(), u"STOCK"_s);
        DialogScript::click(form, cancel);
    });
}

TEST_F(Wizard, AClickOnTheSelectedFileProposesItsNameAgain)
{
    open([&](DialogForm& form) {
        fillIn(form);
        dialog::write(form, tableName, u"WARES"_s);
        DialogScript::click(form, previous);
        DialogScript::click(form, previous);
        EXPECT_EQ(properties(form).first(), u"WARES"_s);
        dialog::clickRow(form, files, u"STOCK"_s);
        EXPECT_EQ(properties(form).first(), u"STOCK"_s);
        DialogScript::click(form, cancel);
    });
}

// The properties -----------------------------------------------------------------------------------------------------

TEST_F(Wizard, NamesAreLimitedToTheirCharactersAsTheyAreTyped)
{
    open([&](DialogForm& form) {
        fillIn(form);
        dialog::write(form, tableName, u"my 2nd-table's"_s);
        dialog::write(form, displayName, u"My 2nd-table's"_s);
        dialog::write(form, specification, u"the table's.dat"_s);
        dialog::write(form, remarks, u"what's there"_s);
        EXPECT_EQ(properties(form),
                  (QStringList{u"MY_2ND-TABLES"_s, u"My_2nd-tables"_s, u"the table's.dat"_s, u"what's there"_s}));
        DialogScript::click(form, cancel);
    });
}

TEST_F(Wizard, EntriesKeepTextsOfAnyLength)
{
    open([&](DialogForm& form) {
        fillIn(form);
        QApplication::clipboard()->setText(QString(299, u'X'));
        for (const QString& entry : {tableName, displayName, specification, remarks}) {
            dialog::write(form, entry, {});
            dialog::hit(form, Qt::Key_V, Qt::ControlModifier);
            dialog::hit(form, Qt::Key_Y);
        }
        const QString pasted(299, u'X');
        const QString mixed = pasted + 'y'_L1;
        EXPECT_EQ(properties(form), (QStringList{pasted + 'Y'_L1, mixed, mixed, mixed}));
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(statements.statements(), (QStringList{userFiles, userDatabases}));
}

TEST_F(Wizard, AFileWithALongNameProposesAllOfIt)
{
    const QString longName(40, u'L');
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('%1')"_s.arg(longName));
    open([&](DialogForm& form) {
        DialogScript::click(form, next);
        dialog::clickRow(form, files, longName);
        EXPECT_EQ(properties(form).first(), longName);
        DialogScript::click(form, cancel);
    });
}

// Checking -----------------------------------------------------------------------------------------------------------

TEST_F(Wizard, WhatIsMissingIsAskedForOnItsPage)
{
    open([&](DialogForm& form) {
        const auto expectRefused = [&](const QString& message, const QString& shown, const QString& control) {
            SCOPED_TRACE(message.toStdString());
            boxes.expect(message, boxes::Icon::Information, [&] {
                EXPECT_EQ(page(form), shown);
                EXPECT_EQ(dialog::focus(form), control);
            });
            DialogScript::click(form, finish);
            boxes.verify();
            EXPECT_EQ(page(form), shown);
            EXPECT_EQ(dialog::focus(form), control);
        };
        statements.clear();
        expectRefused(noFile, second, files);
        dialog::clickRow(form, files, u"STOCK"_s);
        expectRefused(noDatabase, third, databases);
        dialog::clickRow(form, databases, u"SALES"_s);
        expectRefused(noSpecification, fourth, specification);
        dialog::write(form, displayName, u"stocks"_s);
        expectRefused(otherDisplayName, fourth, displayName);
        dialog::write(form, specification, u"a.dat"_s);
        expectRefused(otherDisplayName, fourth, displayName);
        dialog::write(form, displayName, u"sToCk"_s);
        dialog::write(form, specification, {});
        DialogScript::click(form, previous);
        DialogScript::click(form, previous);
        expectRefused(noSpecification, fourth, specification);
        EXPECT_EQ(statements.statements(), QStringList());
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(tables().size(), 1);
}

TEST_F(Wizard, CancelWritesNothing)
{
    const QStringList before = wholeCatalog();
    open([&](DialogForm& form) {
        fillIn(form);
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(wholeCatalog(), before);
    EXPECT_EQ(statements.writes(), QStringList());
}

// Unattended ---------------------------------------------------------------------------------------------------------

TEST_F(Wizard, UnattendedItStillAsksForWhatIsMissing)
{
    start();
    CConnections::instance().Item(datasource);
    statements.clear();
    boxes.expectInform(noSpecification);
    frmWizardFileToTable::Unattended(datasource, u"STOCK"_s, u"unused"_s, u"SALES"_s);
    boxes.verify();
    EXPECT_EQ(statements.statements(), (QStringList{userFiles, userDatabases}));
    EXPECT_FALSE(forms::loaded(name));

    boxes.expectInform(noDatabase);
    frmWizardFileToTable::Unattended(datasource, u"STOCK"_s, {}, u"No such"_s);
    boxes.expectInform(noFile);
    frmWizardFileToTable::Unattended(datasource, {}, {}, u"SALES"_s);
    boxes.expectInform(noFile);
    frmWizardFileToTable::Unattended({}, {}, {}, {});
    boxes.verify();
    EXPECT_EQ(tables().size(), 1);
    EXPECT_EQ(statusText(), u"Ready"_s);
}
