#include "CConnections.h"
#include "FaultSweep.h"
#include "WatchedWorkspace.h"
#include "WizardFixture.h"
#include "frmWizardFileToTable.h"

#include <memory>
#include <ostream>

using namespace wizard;

namespace
{

class WizardFaults : public Wizard
{
protected:
    void SetUp() override
    {
        Wizard::SetUp();
        keepCatalog();
    }

    /// Lets the user make the table. What a fault keeps from showing is not expected.
    void make(const std::function<void(DialogForm& form)>& work)
    {
        dialogs.expect(name, work);
        frmWizardFileToTable::Display(datasource, {}, {});
        dialogs.verify();
        boxes.verify();
        EXPECT_FALSE(forms::loaded(name));
    }

    void makeWithoutFault()
    {
        make([&](DialogForm& form) {
            fillIn(form);
            expectSkipped(u"UNKNOWN"_s, u"STOCK"_s, u"FLAG"_s);
            boxes.expectInform(created);
            DialogScript::click(form, finish);
        });
    }

    QStringList outcome() const
    {
        QStringList all = wholeCatalog() + children(key(level())) + QStringList{currentPane(), paneTitle()};
        if (currentPane() == u"frmTables"_s)
            all += gridNames();
        return all;
    }

    FaultSweep sweep{statements, errors};
};

/// The two lists come first; the fields are read by the sixth statement, and the last column is the sixteenth.
constexpr int lists = 2;
constexpr int lastColumn = 16;

} // namespace

TEST_F(WizardFaults, WithinTheMakingOfATable)
{
    const auto isSkippedBefore = [](int statement) { return statement > 13; };
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       begin(level());
                       click(key(level()));
                   },
               .act =
                   [&](const auto& fault) {
                       if (!fault || fault->answer == Press::Retry)
                           return makeWithoutFault();
                       const int statement = fault->statement;
                       make([&](DialogForm& form) {
                           if (statement == 1) {
                               EXPECT_EQ(dialog::rows(form, files), QStringList());
                               EXPECT_EQ(dialog::rows(form, databases), QStringList{u"SALES"_s});
                               return DialogScript::click(form, cancel);
                           }
                           if (statement == lists) {
                               EXPECT_EQ(dialog::rows(form, files).size(), 3);
                               EXPECT_EQ(dialog::rows(form, databases), QStringList());
                               return DialogScript::click(form, cancel);
                           }
                           fillIn(form);
                           if (isSkippedBefore(statement))
                               expectSkipped(u"UNKNOWN"_s, u"STOCK"_s, u"FLAG"_s);
                           if (statement > lastColumn)
                               boxes.expectInform(created);
                           DialogScript::click(form, finish);
                           EXPECT_EQ(statusText(), u"Ready"_s);
                           // Only what comes after the table is made ends the wizard all the same.
                           EXPECT_EQ(form.isVisible(), statement <= lastColumn);
                           if (form.isVisible())
                               DialogScript::click(form, cancel);
                       });
                   },
               .outcome = [&] { return outcome(); },
               .afterIgnore =
                   [&](int statement, const QStringList& withoutFault) {
                       if (statement == 1)
                           return QStringList{withoutFault.at(1)};
                       // The grid that can't list the files for its cells shows no tables either.
                       const bool isListOfCells = withoutFault.at(statement - 1).startsWith(u"SELECT FILE_NAME"_s);
                       return statement <= lastColumn || isListOfCells ? QStringList() : withoutFault.sliced(statement);
                   },
               .goOn =
                   [&] {
                       // The wizard removes nothing that it has made.
                       change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'STOCK'"_s);
                       change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'STOCK'"_s);
                       clickExpander(key());
                       expandTo(key(level()));
                       makeWithoutFault();
                   }});
}

TEST_F(WizardFaults, AReportNamesTheListThatFails)
{
    begin(level());
    for (const auto& [statement, routine] :
         {std::pair(1, u"frmWizardFileToTable.FetchFileList"_s), std::pair(2, u"frmWizardFileToTable.FetchDBList"_s)}) {
        statements.clear();
        statements.failAt(statement);
        errors.expect(Press::Ignore);
        make([](DialogForm& form) { DialogScript::click(form, cancel); });
        errors.verify();
        EXPECT_EQ(errors.shown().back().trappedIn, routine);
    }
}

TEST_F(WizardFaults, ListsThatCouldNotBeReadAreAskedForByChoosingTheSameDatasourceAgain)
{
    begin(level());
    dialogs.expect(name, [&](DialogForm& form) {
        EXPECT_EQ(dialog::rows(form, files), QStringList());
        EXPECT_EQ(dialog::items(form, datasources), QStringList{datasource});
        DialogScript::click(form, next);
        statements.clear();
        auto& list = dialog::get<DropDown>(form, datasources);
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_F4);
        ASSERT_TRUE(list.view()->isVisible());
        QTest::keyClick(list.view(), Qt::Key_Return);
        EXPECT_FALSE(list.view()->isVisible());
        EXPECT_EQ(statements.statements(), (QStringList{userFiles, userDatabases}));
        EXPECT_EQ(dialog::rows(form, files).size(), 3);
        EXPECT_EQ(dialog::rows(form, databases), QStringList{u"SALES"_s});
        DialogScript::click(form, cancel);
    });
    statements.failAt(1);
    errors.expect(Press::Ignore);
    frmWizardFileToTable::Display(datasource, {}, {});
    errors.verify();
    dialogs.verify();
}

TEST_F(WizardFaults, FieldsThatBreakOffLeaveWhatWasMade)
{
    begin(level());
    auto workspace = std::make_unique<WatchedWorkspace>();
    workspace->breakOffAfter(readFields(u"STOCK"_s), 2);
    CConnections::instance().Remove(datasource);
    CConnections::instance().setWorkspace(std::move(workspace));
    CConnections::instance().Item(datasource);
    make([&](DialogForm& form) {
        fillIn(form);
        errors.expect(Press::Ignore);
        DialogScript::click(form, finish);
        errors.verify();
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(statusText(), u"Ready"_s);
        DialogScript::click(form, cancel);
    });
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmWizardFileToTable.cmdFinish_Click"_s);
    EXPECT_EQ(tables().size(), 2);
    EXPECT_EQ(columns().size(), 2);

    change(u"DELETE FROM TW_TABLE WHERE TABLE_NAME = 'STOCK'"_s);
    change(u"DELETE FROM TW_COLUMN WHERE TABLE_NAME = 'STOCK'"_s);
    errors.expect(Press::Retry);
    makeWithoutFault();
    errors.verify();
    EXPECT_EQ(columns().size(), 3);
}
