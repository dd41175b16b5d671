#include "CopyDialogFixture.h"

#include "Commands.h"
#include "DropDown.h"
#include "modDatabase.h"

using namespace Qt::StringLiterals;

namespace
{

class CopyDialogFaults : public CopyDialogTest
{
protected:
    /// One of the commands: what it is for, what it makes, and how many statements its OK sends.
    struct Command {
        std::function<void(const DialogScript::Action&)> choose;
        QStringList tables;
        QString made;
        int statements;
        const char* routine;
    };

    std::vector<Command> commands()
    {
        return {{[this](const auto& action) { copyFile(action); },
                 {u"TW_FILE"_s, u"TW_FIELD"_s},
                 u"FILE_NAME = 'PAYROLL1'"_s,
                 7,
                 "frmFileCopy.cmdOk_Click"},
                {[this](const auto& action) { copyDatabase(action); },
                 {u"TW_DB"_s, u"TW_TABLE"_s, u"TW_COLUMN"_s, u"TW_DBPRV"_s, u"TW_TBLPRV"_s},
                 u"DATABASE_NAME = 'SALES1'"_s,
                 13,
                 "frmDBCopy.cmdOk_Click"},
                {[this](const auto& action) { copyTable(action); },
                 {u"TW_TABLE"_s, u"TW_COLUMN"_s, u"TW_TBLPRV"_s},
                 u"DATABASE_NAME = 'SALES' AND TABLE_NAME = 'ORDERS1'"_s,
                 9,
                 "frmTableCopy.cmdOk_Click"}};
    }
    void undo(const Command& command) const
    {
        for (const QString& name : command.tables)
            change(u"DELETE FROM %1 WHERE %2"_s.arg(name, command.made));
    }
};

} // namespace

TEST_F(CopyDialogFaults, LeaveTheRowsMadeSoFarAndARetryGoesOn)
{
    for (const Command& command : commands()) {
        SCOPED_TRACE(command.routine);
        QStringList whole;
        command.choose([&](DialogForm& dialog) {
            statements.clear();
            press(dialog, ok);
            whole = sent();
        });
        const QStringList outcome = bothCatalogs();
        ASSERT_EQ(whole.size(), command.statements);
        int written = 0;
        for (int k = 1; k <= whole.size(); ++k) {
            SCOPED_TRACE(whole.at(k - 1).toStdString());
            undo(command);
            command.choose([&](DialogForm& dialog) {
                statements.clear();
                statements.failAt(k);
                errors.expect(Press::Retry);
                press(dialog, ok);
                EXPECT_EQ(sent(), whole.first(k) + whole.sliced(k - 1));
            });
            EXPECT_EQ(bothCatalogs(), outcome);

            undo(command);
            command.choose([&](DialogForm& dialog) {
                statements.clear();
                statements.failAt(k);
                errors.expect(Press::Ignore);
                press(dialog, ok);
                EXPECT_TRUE(dialog.isVisible());
                EXPECT_EQ(sent(), whole.first(k));
                press(dialog, cancel);
            });
            EXPECT_EQ(errors.shown().back().trappedIn, QLatin1String(command.routine));
            EXPECT_EQ(errors.shown().back().additional, modDatabase::FormatSQL(whole.at(k - 1)));
            int rows = 0;
            for (const QString& name : command.tables)
                rows += static_cast<int>(rowsOf(datasource, name, command.made).size());
            EXPECT_EQ(rows, written);
            written += whole.at(k - 1).startsWith("INSERT "_L1) ? 1 : 0;
        }
        undo(command);
    }
}

TEST_F(CopyDialogFaults, ShowWhatTheStatusLineTellsOfEachRow)
{
    QStringList told;
    const auto tellOf = [&](const Command& command) {
        for (int k = 2; k <= command.statements; ++k) {
            undo(command);
            command.choose([&](DialogForm& dialog) {
                statements.clear();
                statements.failAt(k);
                errors.expect([&](QWidget& form) {
                    told.append(statusText());
                    ScriptedErrorForm::press(form, Press::Ignore);
                });
                press(dialog, ok);
                press(dialog, cancel);
            });
            EXPECT_EQ(statusText(), u"Ready"_s);
        }
        undo(command);
        told.removeDuplicates();
        return std::exchange(told, {});
    };
    const std::vector<Command> all = commands();
    EXPECT_EQ(tellOf(all[0]), (QStringList{u"Copying File..."_s, u"Copying Field 'BONUS..."_s,
                                           u"Copying Field 'EMPLOYEE..."_s, u"Copying Field 'SALARY..."_s}));
    EXPECT_EQ(tellOf(all[1]),
              (QStringList{u"Copying Database..."_s, u"Copying Table 'ORDERS' ..."_s, u"Copying Column 'AMOUNT..."_s,
                           u"Copying Column 'BUYER..."_s, u"Copying Column 'RFA..."_s,
                           u"Copying Database Privileges for User 'CLERK..."_s,
                           u"Copying Table Privileges for User 'CLERK..."_s}));
    EXPECT_EQ(tellOf(all[2]),
              (QStringList{u"Copying Table..."_s, u"Copying Column 'AMOUNT..."_s, u"Copying Column 'BUYER..."_s,
                           u"Copying Column 'RFA..."_s, u"Copying Table Privileges for User 'CLERK..."_s}));
}

TEST_F(CopyDialogFaults, OfASourceThatIsGoneAreReportedAndTheDialogStays)
{
    copyFile([&](DialogForm& dialog) {
        change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s);
        errors.expect(Press::Ignore);
        press(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, cancel);
    });
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().number, u"3021"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"frmFileCopy.cmdOk_Click"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CopyDialogFaults, OfWhatIsReadBeforeTheyShowLeaveTheirEntriesEmpty)
{
    const auto failing = [&](const QString& command, const QString& dialog, const DragItem& source,
                             const DialogScript::Action& action) {
        statements.clear();
        statements.failAt(1);
        errors.expect(Press::Ignore);
        dialogs.expect(dialog, action);
        commands::run(command, source);
        verify();
        EXPECT_EQ(statements.writes(), QStringList());
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
        return errors.shown().back().trappedIn;
    };
    const auto expectNoName = [this](const QString& entry) {
        return [=, this](DialogForm& dialog) {
            EXPECT_EQ(DialogScript::text(dialog, entry), QString());
            press(dialog, cancel);
        };
    };
    EXPECT_EQ(failing(u"mnu_FileCopy"_s, u"frmFileCopy"_s, item(u"fi"_s, {datasource, u"PAYROLL"_s}),
                      expectNoName(u"txtFilename"_s)),
              u"modDatabase.FindUniqueName"_s);
    EXPECT_EQ(
        failing(u"mnu_DBCopy"_s, u"frmDBCopy"_s, item(u"db"_s, {datasource, u"SALES"_s}), expectNoName(u"txtDB"_s)),
        u"modDatabase.FindUniqueName"_s);
    const auto expectNoDatabase = [&](DialogForm& dialog) {
        const auto* databases = dialog.findChild<DropDown*>(u"cboDB"_s);
        EXPECT_EQ(databases->count(), 0);
        EXPECT_EQ(databases->currentText(), QString());
        boxes.expectInform(u"Please select a Database for the new Table."_s);
        press(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, cancel);
    };
    EXPECT_EQ(failing(u"mnu_TableCopy"_s, u"frmTableCopy"_s, item(u"ta"_s, {datasource, u"SALES"_s, u"ORDERS"_s}),
                      expectNoDatabase),
              u"modBoundControls.PopulateList"_s);
}

TEST_F(CopyDialogFaults, AsideTheCopyEndsOnItsCollection)
{
    const auto run = [&](const QString& command, const QString& dialog, const DragItem& source) {
        click(key());
        dialogs.expect(dialog, [&](DialogForm& form) { press(form, ok); });
        commands::run(command, source);
        verify();
        return selectedKey();
    };
    EXPECT_EQ(run(u"mnu_FileCopy"_s, u"frmFileCopy"_s, item(u"fi"_s, {datasource, u"PAYROLL"_s})), key({u"FI"_s}));
    EXPECT_NE(find(key({u"FI"_s, u"fi=PAYROLL1"_s})), nullptr);
    EXPECT_EQ(run(u"mnu_DBCopy"_s, u"frmDBCopy"_s, item(u"db"_s, {datasource, u"SALES"_s})), key({u"DB"_s}));
    EXPECT_NE(find(key({u"DB"_s, u"db=SALES1"_s})), nullptr);
    const QStringList tables = database + QStringList{u"TA"_s};
    EXPECT_EQ(run(u"mnu_TableCopy"_s, u"frmTableCopy"_s, item(u"ta"_s, {datasource, u"SALES"_s, u"ORDERS"_s})),
              key(tables));
    EXPECT_NE(find(key(tables + QStringList{u"ta=ORDERS1"_s})), nullptr);
}
