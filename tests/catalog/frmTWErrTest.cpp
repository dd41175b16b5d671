#include "frmTWErr.h"

#include "Application.h"
#include "DBEngine.h"
#include "Form.h"
#include "RecordingOutside.h"
#include "Routine.h"
#include "ScriptedBoxes.h"
#include "ScriptedErrorForm.h"
#include "ScriptedFileDialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

namespace
{

class ErrorFormTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QLocale::setDefault(QLocale::c());
        dao::DBEngine::Errors().Clear();
        // A fresh form with an empty stack.
        frmTWErr::Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void TearDown() override { dao::DBEngine::Errors().Clear(); }

    static frmTWErr::Response raise(ErrorNumber number = ErrorNumber::TypeMismatch)
    {
        return frmTWErr::OnError("frmFile.Display", "None", RuntimeError(number));
    }

    /// Shows the form for an ordinary error, does something with it and ignores the error.
    void withForm(const std::function<void(QWidget&)>& look)
    {
        form.expect([look](QWidget& shown) {
            look(shown);
            ScriptedErrorForm::press(shown, Press::Ignore);
        });
        EXPECT_EQ(raise(), frmTWErr::Ignore);
    }

    ScriptedErrorForm form;
    ScriptedBoxes boxes;
    ScriptedFileDialogs dialogs;
    RecordingOutside outside;
};

const QString saveTitle = "Select file to save error to...";

TEST_F(ErrorFormTest, ShowsAnOrdinaryErrorAsItStands)
{
    form.expect(Press::Ignore);
    const Routine caller("mdiMain.PaneDisplay");
    const Routine routine("frmFile.Display");
    EXPECT_EQ(frmTWErr::OnError("frmFile.Display", "SELECT a, b", RuntimeError(ErrorNumber::Overflow, "Overflow")),
              frmTWErr::Ignore);
    ASSERT_EQ(form.shown().size(), 1U);
    const auto& shown = form.shown().front();
    EXPECT_EQ(shown.title, application::title() + " - Unexpected Error");
    EXPECT_EQ(shown.application, application::title());
    EXPECT_EQ(shown.version, application::version());
    EXPECT_TRUE(shown.sysInfo.contains(" v")) << shown.sysInfo.toStdString();
    EXPECT_EQ(shown.number, "6");
    EXPECT_EQ(shown.description, "Overflow");
    EXPECT_EQ(shown.additional, "SELECT a, b");
    EXPECT_EQ(shown.trappedIn, "frmFile.Display");
    EXPECT_EQ(shown.callStack, QStringList({"frmFile.Display", "mdiMain.PaneDisplay"}));
}

TEST_F(ErrorFormTest, ShowsTheChainOfAFailedOdbcCallAndTheStatementLaidOut)
{
    form.expect(Press::Retry);
    dao::DBEngine::Errors().Append({1, "no such table: TW_FILE"});
    dao::DBEngine::Errors().Append({2, "isam error 107."});
    dao::DBEngine::Errors().Append({3146, "ODBC--call failed."});
    EXPECT_EQ(frmTWErr::OnError("frmFile.Display", "SELECT a, b FROM TW_FILE", RuntimeError(ErrorNumber::OdbcFailed)),
              frmTWErr::Retry);
    const auto& shown = form.shown().front();
    EXPECT_EQ(shown.title, application::title() + " - Unexpected ODBC Error");
    EXPECT_EQ(shown.number, "ODBC Error");
    EXPECT_EQ(shown.description,
              "\nError: &H1\nno such table: TW_FILE\n"
              "\nD-ISAM Error: 107 - Another process has a read-only lock on the requested record.\n");
    EXPECT_EQ(shown.additional, "\nSELECT\n\ta,\n\tb\nFROM\n\tTW_FILE");
}

TEST_F(ErrorFormTest, AChainWithOnlyTheGenericEntryGivesAnEmptyDescription)
{
    form.expect(Press::Ignore);
    dao::DBEngine::Errors().Append({3146, "ODBC--call failed."});
    raise(ErrorNumber::OdbcFailed);
    EXPECT_EQ(form.shown().front().description, "");
}

TEST_F(ErrorFormTest, AnOdbcErrorDoesNotKeepTheDescriptionOfAFormerError)
{
    form.expect(Press::Ignore).expect(Press::Ignore);
    raise(ErrorNumber::Overflow);
    dao::DBEngine::Errors().Append({1, "x"});
    raise(ErrorNumber::OdbcFailed);
    EXPECT_EQ(form.shown().back().description, "\nError: &H1\nx\n");
}

TEST_F(ErrorFormTest, ODBCErrAppendsToTheDescriptionThatStands)
{
    form.expect(Press::Ignore).expect(Press::Ignore);
    raise(ErrorNumber::Overflow);
    dao::DBEngine::Errors().Append({1, "x"});
    frmTWErr::ODBCErr("a.b", "None", RuntimeError(ErrorNumber::OdbcFailed));
    EXPECT_EQ(form.shown().back().description, form.shown().front().description + "\nError: &H1\nx\n");
}

TEST_F(ErrorFormTest, AFailureOfPrivilegesShowsOnePlainBoxAndIsAnIgnore)
{
    boxes.expect("The current user has insufficient privileges to complete this action.", boxes::Icon::None);
    dao::DBEngine::Errors().Append({1, "The user has no privileges."});
    EXPECT_EQ(raise(ErrorNumber::OdbcFailed), frmTWErr::Ignore);
    EXPECT_TRUE(form.shown().empty());
}

TEST_F(ErrorFormTest, PrivilegesCountInTheFirstEntryAndInLowerCaseOnly)
{
    form.expect(Press::Ignore).expect(Press::Ignore);
    dao::DBEngine::Errors().Append({1, "PRIVILEGES are missing"});
    raise(ErrorNumber::OdbcFailed);
    dao::DBEngine::Errors().Clear();
    dao::DBEngine::Errors().Append({1, "failed"});
    dao::DBEngine::Errors().Append({2, "no privileges"});
    raise(ErrorNumber::OdbcFailed);
    EXPECT_EQ(form.shown().size(), 2U);
}

TEST_F(ErrorFormTest, AMessageOfTheFileManagerWithoutACodeRaisesATypeMismatchAndShowsNothing)
{
    dao::DBEngine::Errors().Append({1, "isam without a code"});
    try {
        raise(ErrorNumber::OdbcFailed);
        FAIL() << "nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::TypeMismatch);
    }
}

TEST_F(ErrorFormTest, EachAnswerHasItsNumber)
{
    form.expect(Press::Abort).expect(Press::Retry).expect(Press::Ignore);
    EXPECT_EQ(raise(), 3);
    EXPECT_EQ(raise(), 4);
    EXPECT_EQ(raise(), 5);
}

TEST_F(ErrorFormTest, ClosingByTheTitleBarIsAnAbort)
{
    form.expect([](QWidget& shown) { shown.close(); });
    EXPECT_EQ(raise(), frmTWErr::Abort);
    EXPECT_TRUE(forms::loaded("frmTWErr")) << "the form hides and stays loaded";
    EXPECT_FALSE(forms::loaded("frmTWErr")->isVisible());
}

TEST_F(ErrorFormTest, EscapeDoesNothing)
{
    withForm([](QWidget& shown) {
        QTest::keyClick(&shown, Qt::Key_Escape);
        EXPECT_TRUE(shown.isVisible());
        QTest::keyClick(shown.focusWidget(), Qt::Key_Escape);
        EXPECT_TRUE(shown.isVisible());
    });
}

TEST_F(ErrorFormTest, EnterRetriesUnlessAnotherButtonHasTheFocus)
{
    form.expect([](QWidget& shown) { QTest::keyClick(shown.focusWidget(), Qt::Key_Return); });
    EXPECT_EQ(raise(), frmTWErr::Retry);
    form.expect([](QWidget& shown) {
        auto* description = shown.findChild<QPlainTextEdit*>("txtDescription");
        description->setFocus();
        QTest::keyClick(description, Qt::Key_Enter);
    });
    EXPECT_EQ(raise(), frmTWErr::Retry);
    form.expect([](QWidget& shown) {
        auto* ignore = shown.findChild<QPushButton*>("cmdResponce_2");
        ignore->setFocus();
        QTest::keyClick(ignore, Qt::Key_Return);
    });
    EXPECT_EQ(raise(), frmTWErr::Ignore);
}

TEST_F(ErrorFormTest, IsModalToTheWholeProgramAndComesUpWithTheFocusOnRetry)
{
    withForm([](QWidget& shown) {
        EXPECT_TRUE(shown.isWindow());
        EXPECT_EQ(shown.windowModality(), Qt::ApplicationModal);
        EXPECT_EQ(QApplication::activeModalWidget(), &shown);
        ASSERT_TRUE(shown.focusWidget());
        EXPECT_EQ(shown.focusWidget()->objectName(), "cmdResponce_1");
    });
}

TEST_F(ErrorFormTest, EveryPromptStandsBesideItsControlAndNamesItForScreenReaders)
{
    struct Prompt {
        const char* text;
        const char* control;
    };
    const Prompt prompts[] = {{"App&lication:", "lblApp_0"},       {"&Version:", "lblApp_1"},
                              {"System Info:", "lblSysInfo"},      {"Err&or Number:", "lblErrNo"},
                              {"Descriptio&n:", "txtDescription"}, {"A&dditional Info:", "txtAdditionalInfo"},
                              {"&Trapped In:", "lblTrappedIn"},    {"&Call Stack:", "cboCallStack"}};
    withForm([&](QWidget& shown) {
        QMap<QString, const QLabel*> labels;
        for (const QLabel* label : shown.findChildren<QLabel*>())
            labels.insert(label->text(), label);
        for (const Prompt& prompt : prompts) {
            auto* control = shown.findChild<QWidget*>(prompt.control);
            ASSERT_TRUE(control) << prompt.control;
            ASSERT_TRUE(labels.contains(prompt.text)) << prompt.text;
            EXPECT_EQ(labels[prompt.text]->buddy(), control) << prompt.text;
            EXPECT_EQ(control->accessibleName(), QString(prompt.text).remove('&').remove(':'));
        }
        EXPECT_TRUE(labels.contains("Report:"));
    });
}

TEST_F(ErrorFormTest, ButtonsHaveTheirCaptionsAndToolTips)
{
    withForm([](QWidget& shown) {
        const QStringList responses{"&Abort", "&Retry", "&Ignore"};
        for (int i = 0; i < responses.size(); ++i) {
            auto* button = shown.findChild<QPushButton*>(QStringLiteral("cmdResponce_%1").arg(i));
            ASSERT_TRUE(button);
            EXPECT_EQ(button->text(), responses[i]);
        }
        const QStringList reports{"&Print", "&Save", "&Email", "&WWW"};
        const QStringList toolTips{"Print this error to the default printer", "Save this error to a text file",
                                   "EMail this error to " + application::supportMail(),
                                   "Visit " + application::supportWeb()};
        for (int i = 0; i < reports.size(); ++i) {
            auto* button = shown.findChild<QPushButton*>(QStringLiteral("cmdReport_%1").arg(i));
            ASSERT_TRUE(button);
            EXPECT_EQ(button->text(), reports[i]);
            EXPECT_EQ(button->toolTip(), toolTips[i]);
        }
    });
}

TEST_F(ErrorFormTest, NoTwoPromptsOrButtonsShareAMnemonic)
{
    withForm([](QWidget& shown) {
        QStringList texts;
        for (const QLabel* label : shown.findChildren<QLabel*>())
            texts.append(label->buddy() ? label->text() : QString());
        for (const QPushButton* button : shown.findChildren<QPushButton*>())
            texts.append(button->text());
        QSet<QChar> seen;
        for (const QString& text : texts) {
            const qsizetype ampersand = text.indexOf('&');
            if (ampersand < 0)
                continue;
            const QChar mnemonic = text[ampersand + 1].toLower();
            EXPECT_FALSE(seen.contains(mnemonic)) << text.toStdString();
            seen.insert(mnemonic);
        }
        EXPECT_EQ(seen.size(), 14);
    });
}

TEST_F(ErrorFormTest, WhatItShowsCanBeSelectedAndNotChanged)
{
    form.expect([](QWidget& shown) {
        for (const char* name : {"txtDescription", "txtAdditionalInfo"}) {
            auto* text = shown.findChild<QPlainTextEdit*>(name);
            const QString before = text->toPlainText();
            QTest::keyClicks(text, "x");
            EXPECT_EQ(text->toPlainText(), before);
            EXPECT_TRUE(text->textInteractionFlags() & Qt::TextSelectableByKeyboard);
        }
        for (const char* name : {"lblApp_0", "lblApp_1", "lblSysInfo", "lblErrNo", "lblTrappedIn"}) {
            const auto* label = shown.findChild<QLabel*>(name);
            EXPECT_TRUE(label->textInteractionFlags() & Qt::TextSelectableByMouse) << name;
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << name;
        }
        ScriptedErrorForm::press(shown, Press::Ignore);
    });
    frmTWErr::OnError("<b>a.b</b>", "&amp;", RuntimeError(ErrorNumber::Overflow, "<i>x</i>"));
    EXPECT_EQ(form.shown().front().trappedIn, "<b>a.b</b>");
    EXPECT_EQ(form.shown().front().additional, "&amp;");
}

TEST_F(ErrorFormTest, HiddenItIsACallStackWithoutControls)
{
    frmTWErr::Push("a.b");
    ASSERT_TRUE(forms::loaded("frmTWErr"));
    EXPECT_TRUE(forms::loaded("frmTWErr")->findChildren<QWidget*>().isEmpty());
    EXPECT_FALSE(forms::loaded("frmTWErr")->isVisible());
    frmTWErr::Pop();
}

TEST_F(ErrorFormTest, TheListOfTheComboIsTheCallStackWhateverHappensWhileItIsHidden)
{
    withForm([](QWidget& shown) { EXPECT_EQ(shown.findChild<QComboBox*>("cboCallStack")->count(), 0); });
    auto* stack = forms::loaded("frmTWErr")->findChild<QComboBox*>("cboCallStack");
    frmTWErr::Push("a.a");
    frmTWErr::Push("b.b");
    EXPECT_EQ(stack->count(), 2);
    EXPECT_EQ(stack->itemText(0), "b.b");
    EXPECT_EQ(stack->itemText(1), "a.a");
    withForm([](QWidget& shown) { EXPECT_EQ(shown.findChild<QComboBox*>("cboCallStack")->currentText(), "b.b"); });
    frmTWErr::Pop();
    withForm([](QWidget& shown) { EXPECT_EQ(shown.findChild<QComboBox*>("cboCallStack")->currentText(), "a.a"); });
    frmTWErr::Pop();
    withForm([](QWidget& shown) { EXPECT_EQ(shown.findChild<QComboBox*>("cboCallStack")->currentText(), ""); });
}

TEST_F(ErrorFormTest, TheNewestRoutineShowsWhileOthersComeAndGo)
{
    frmTWErr::Push("a.a");
    withForm([](QWidget& shown) {
        auto* stack = shown.findChild<QComboBox*>("cboCallStack");
        frmTWErr::Push("b.b");
        EXPECT_EQ(stack->currentText(), "b.b");
        frmTWErr::Pop();
        EXPECT_EQ(stack->currentText(), "a.a");
        frmTWErr::Pop();
        EXPECT_EQ(stack->currentText(), "");
        EXPECT_EQ(stack->currentIndex(), -1);
    });
}

TEST_F(ErrorFormTest, PopOfAnEmptyStackDoesNothing)
{
    frmTWErr::Pop();
    frmTWErr::Load();
    frmTWErr::Pop();
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(ErrorFormTest, AnUnloadThrowsTheStackAwayAndTheNextPushLoadsTheFormAnew)
{
    frmTWErr::Push("a.a");
    frmTWErr::Push("b.b");
    forms::unload("frmTWErr");
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    EXPECT_FALSE(forms::loaded("frmTWErr"));
    frmTWErr::Pop();
    EXPECT_FALSE(forms::loaded("frmTWErr"));
    frmTWErr::Push("c.c");
    EXPECT_TRUE(forms::loaded("frmTWErr"));
    EXPECT_EQ(frmTWErr::CallStack(), QStringList({"c.c"}));
    form.expect(Press::Ignore);
    raise();
    EXPECT_EQ(form.shown().front().callStack, QStringList({"c.c"}));
    frmTWErr::Pop();
}

TEST_F(ErrorFormTest, PrintSendsTheReportUnderItsTitleAndTheFormStays)
{
    outside.clock.setTimeSpec(Qt::UTC);
    frmTWErr::Push("frmFile.Display");
    withForm([&](QWidget& shown) {
        ScriptedErrorForm::pressReport(shown, 0);
        QTest::qWait(0);
        EXPECT_TRUE(shown.isVisible());
    });
    frmTWErr::Pop();
    ASSERT_EQ(outside.printed.size(), 1U);
    EXPECT_EQ(outside.printed.front().title, application::title() + " - Unexpected Error Report\n");
    const QString body = outside.printed.front().body;
    EXPECT_TRUE(body.startsWith("Application:  \t" + application::title() + "\nVersion:      \t" +
                                application::version() + "\n\nSys Info:     \t" + form.shown().front().sysInfo +
                                "\n\nError No:     \t13\nDescription:  \t"))
        << body.toStdString();
    EXPECT_TRUE(body.endsWith("\nAdditional:   \tNone\n\nTrapped In:   \tfrmFile.Display\n"
                              "Call Stack:   \tfrmFile.Display\n\n\n"
                              "Date:         \tFriday, 14 March 2003 15:09:26 UTC\n\nComments:\n"))
        << body.toStdString();
}

TEST_F(ErrorFormTest, SaveWritesTheReportInThePlaceOfTheFileAndOffersItForComments)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("report.txt");
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write(QByteArray(10'000, 'x'));
    old.close();

    dialogs.expect(filedialogs::Mode::Save, saveTitle, path);
    boxes.expectAsk("Error report written to\n" + path + "\n\nDo you wish to add any comments?", boxes::Answer::Yes);
    withForm([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 1); });

    ASSERT_EQ(dialogs.requests().size(), 1U);
    const filedialogs::Request& request = dialogs.requests().front();
    EXPECT_EQ(request.suggestedName, application::title() + " Error Report.txt");
    EXPECT_EQ(request.filter, "Text Files (*.txt)|*.txt|All Files (*.*)|*.*");
    EXPECT_EQ(request.defaultExtension, "*.txt");
    EXPECT_TRUE(request.promptBeforeOverwriting);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString written = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(written.startsWith("Application:  \t")) << written.toStdString();
    EXPECT_TRUE(written.endsWith("Comments:\n")) << written.toStdString();
    EXPECT_EQ(outside.opened, QStringList({path}));
}

TEST_F(ErrorFormTest, SaveOpensNothingWithoutAWishForComments)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("report.txt");
    dialogs.expect(filedialogs::Mode::Save, saveTitle, path);
    boxes.expectAsk("Error report written to\n" + path + "\n\nDo you wish to add any comments?", boxes::Answer::No);
    withForm([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 1); });
    EXPECT_TRUE(outside.opened.isEmpty());
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(ErrorFormTest, ACancelledSaveLeavesTheFormAsItWas)
{
    dialogs.expectCancelled(filedialogs::Mode::Save, saveTitle);
    withForm([](QWidget& shown) {
        ScriptedErrorForm::pressReport(shown, 1);
        QTest::qWait(0);
        EXPECT_TRUE(shown.isVisible());
    });
    EXPECT_EQ(form.shown().size(), 1U);
}

TEST_F(ErrorFormTest, AFailedSaveIsReportedOverTheFirstErrorAndItsAnswerEndsBoth)
{
    const QTemporaryDir folder;
    dialogs.expect(filedialogs::Mode::Save, saveTitle, folder.filePath("missing/report.txt"));
    form.expect([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 1); }).expect(Press::Ignore);
    const Routine routine("frmFile.Display");
    EXPECT_EQ(raise(ErrorNumber::Overflow), frmTWErr::Ignore);
    ASSERT_EQ(form.shown().size(), 2U);
    EXPECT_EQ(form.shown()[1].trappedIn, "frmTWErr.cmdReport_Click");
    EXPECT_EQ(form.shown()[1].callStack, QStringList({"frmTWErr.cmdReport_Click", "frmFile.Display"}));
    EXPECT_EQ(form.shown()[1].number, "53");
    EXPECT_FALSE(forms::loaded("frmTWErr")->isVisible());
}

TEST_F(ErrorFormTest, RetryOfAFailedSaveWritesTheReportOfTheFirstError)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("missing/report.txt");
    dialogs.expect(filedialogs::Mode::Save, saveTitle, path);
    boxes.expectAsk("Error report written to\n" + path + "\n\nDo you wish to add any comments?", boxes::Answer::No);
    form.expect([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 1); });
    form.expect([&](QWidget& shown) {
        EXPECT_TRUE(QDir(folder.path()).mkdir("missing"));
        ScriptedErrorForm::press(shown, Press::Retry);
    });
    EXPECT_EQ(raise(ErrorNumber::Overflow), frmTWErr::Retry);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("Error No:     \t6\n"));
}

TEST_F(ErrorFormTest, AbortOfAFailedReportEndsTheProcess)
{
    outside.printFailure = RuntimeError(ErrorNumber::PathFileAccess, "No printer");
    form.expect([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 0); }).expect(Press::Abort);
    EXPECT_THROW(raise(), ProcessEnded);
    EXPECT_EQ(form.shown().back().description, "No printer");
    EXPECT_FALSE(forms::loaded("frmTWErr")->isVisible());
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(ErrorFormTest, AFailedPrintThatFailsAgainIsAskedAgain)
{
    outside.printFailure = RuntimeError(ErrorNumber::PathFileAccess, "No printer");
    form.expect([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 0); });
    form.expect(Press::Retry);
    form.expect([&](QWidget& shown) {
        outside.printFailure.reset();
        ScriptedErrorForm::press(shown, Press::Retry);
    });
    EXPECT_EQ(raise(), frmTWErr::Retry);
    ASSERT_EQ(form.shown().size(), 3U);
    EXPECT_EQ(outside.printed.size(), 1U);
}

TEST_F(ErrorFormTest, EmailPutsTheReportOnTheClipboardAndOpensAMessage)
{
    withForm([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 2); });
    EXPECT_TRUE(outside.clipboard.startsWith("Application:  \t"));
    EXPECT_TRUE(outside.clipboard.endsWith("Comments:\n"));
    EXPECT_EQ(outside.opened, QStringList({"mailto:" + application::supportMail() +
                                           "?subject=Quorvane Error Report"
                                           "?body=Paste Error text here and comments after"}));
}

TEST_F(ErrorFormTest, WwwOpensTheSupportPage)
{
    withForm([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 3); });
    EXPECT_EQ(outside.opened, QStringList({application::supportWeb()}));
}

TEST_F(ErrorFormTest, ADesktopThatOpensNothingIsTold)
{
    outside.opens = false;
    boxes.expect("No program is registered to open\n" + application::supportWeb(), boxes::Icon::Exclamation);
    withForm([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 3); });
}

TEST_F(ErrorFormTest, AReportFromAnEmptyStackSaysSo)
{
    withForm([](QWidget& shown) { ScriptedErrorForm::pressReport(shown, 2); });
    EXPECT_TRUE(outside.clipboard.contains("\nCall Stack:   \tEmpty\n\nDate:"));
}

TEST_F(ErrorFormTest, AnOpenDropDownListDoesNotKeepTheUserFromIt)
{
    QComboBox other;
    other.addItems({"a", "b"});
    other.show();
    other.showPopup();
    ASSERT_TRUE(QApplication::activePopupWidget());
    withForm([](QWidget&) { EXPECT_FALSE(QApplication::activePopupWidget()); });
}

TEST_F(ErrorFormTest, BelongsToTheMainWindow)
{
    QWidget window;
    window.setObjectName("mdiMain");
    window.show();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    withForm([&](QWidget& shown) {
        EXPECT_EQ(shown.windowHandle()->transientParent(), window.windowHandle());
        EXPECT_FALSE(shown.parentWidget()) << "it outlives the window";
    });
}

TEST_F(ErrorFormTest, BelongsToTheDialogInFrontOfTheMainWindow)
{
    QWidget window;
    window.setObjectName("mdiMain");
    window.show();
    QDialog dialog(&window);
    dialog.setModal(true);
    dialog.show();
    withForm([&](QWidget& shown) { EXPECT_EQ(shown.windowHandle()->transientParent(), dialog.windowHandle()); });
}

} // namespace
