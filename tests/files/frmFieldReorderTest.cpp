#include "FieldFixture.h"

#include "DBEngine.h"
#include "DialogForm.h"
#include "FaultSweep.h"
#include "OrderDialog.h"
#include "PaneRegistry.h"
#include "Settings.h"
#include "frmTWErr.h"
#include "modDatabase.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QTest>

#include <ostream>

using namespace Qt::StringLiterals;

namespace
{

const QString dialogName = u"frmFieldReorder"_s;
const QString up = u"cmdUp"_s;
const QString down = u"cmdDown"_s;
const QString sort = u"chkSortAlpha"_s;
const QString ok = u"cmdOK"_s;
const QString cancel = u"cmdCancel"_s;

const QString byNumber = u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' ORDER BY FIELD_NUMBER ASC"_s;
const QString byName = u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' ORDER BY FIELD_NAME ASC"_s;

QString renumber(int number, const QString& field)
{
    return u"UPDATE TW_FIELD SET FIELD_NUMBER = 0%1 WHERE FILE_NAME = 'PAYROLL' AND FIELD_NAME = '%2'"_s.arg(number)
        .arg(field);
}

/// Sees the status line at each statement.
class StatusWatcher final : public dao::StatementObserver
{
public:
    explicit StatusWatcher(const mdiMain& window)
        : m_status(*window.findChild<QLabel*>(u"Status"_s)), m_former(dao::DBEngine::setObserver(this))
    {
    }
    ~StatusWatcher() override { dao::DBEngine::setObserver(m_former); }
    StatusWatcher(const StatusWatcher&) = delete;
    StatusWatcher& operator=(const StatusWatcher&) = delete;

    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override
    {
        seen.append(m_status.text());
        return m_former->beforeStatement(datasource, statement);
    }

    QStringList seen;

private:
    const QLabel& m_status;
    dao::StatementObserver* m_former;
};

class FieldReorder : public FieldTest
{
protected:
    FieldReorder()
    {
        // The statements are those of the dialog, without what panes read anew behind it.
        for (const QString& pane : {u"frmFields"_s, u"frmField"_s})
            panes::remove(pane);
    }

    static QListWidget& list(DialogForm& dialog) { return *dialog.findChild<QListWidget*>(u"lstField"_s); }

    static QStringList names(DialogForm& dialog)
    {
        QStringList all;
        for (int row = 0; row < list(dialog).count(); ++row)
            all.append(list(dialog).item(row)->text());
        return all;
    }

    static QString selected(DialogForm& dialog)
    {
        const auto items = list(dialog).selectedItems();
        return items.isEmpty() ? QString() : items.first()->text();
    }

    /// A real click on the row of a name.
    static void select(DialogForm& dialog, const QString& name)
    {
        const auto items = list(dialog).findItems(name, Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1);
        QTest::mouseClick(list(dialog).viewport(), Qt::LeftButton, {},
                          list(dialog).visualItemRect(items.first()).center());
    }

    /// Opens the dialog from the context menu of a file's fields.
    void open(const QString& file, DialogScript::Action action)
    {
        expandTo(key(collection(file)));
        statements.clear();
        dialogs.expect(dialogName, std::move(action));
        choose(key(collection(file)), u"mnu_FieldReorder"_s);
        dialogs.verify();
        EXPECT_FALSE(forms::loaded(dialogName));
    }

    void expectComplete() { boxes.expectInform(u"Field re-ordering complete"_s); }
};

} // namespace

TEST_F(FieldReorder, NumbersTheFieldsInTheOrderThatTheUserArranged)
{
    start();
    expectComplete();
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), (QStringList{u"EMPLOYEE"_s, u"SALARY"_s, u"BONUS"_s}));
        select(dialog, u"BONUS"_s);
        DialogScript::click(dialog, up);
        EXPECT_EQ(names(dialog), (QStringList{u"EMPLOYEE"_s, u"BONUS"_s, u"SALARY"_s}));
        EXPECT_EQ(selected(dialog), u"BONUS"_s);
        DialogScript::click(dialog, up);
        select(dialog, u"EMPLOYEE"_s);
        DialogScript::click(dialog, down);
        EXPECT_EQ(selected(dialog), u"EMPLOYEE"_s);
        EXPECT_EQ(names(dialog), (QStringList{u"BONUS"_s, u"SALARY"_s, u"EMPLOYEE"_s}));
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(statements.statements(),
              (QStringList{byNumber, renumber(1, u"BONUS"_s), renumber(2, u"SALARY"_s), renumber(3, u"EMPLOYEE"_s)}));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"BONUS 1 4"_s, u"SALARY 2 8"_s, u"EMPLOYEE 3 0"_s}));
}

TEST_F(FieldReorder, NumbersTheFieldsAlphabeticallyWithTheBoxTicked)
{
    start();
    expectComplete();
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        DialogScript::click(dialog, sort);
        EXPECT_EQ(names(dialog), (QStringList{u"BONUS"_s, u"EMPLOYEE"_s, u"SALARY"_s}));
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(statements.statements(), (QStringList{byNumber, byName, renumber(1, u"BONUS"_s),
                                                    renumber(2, u"EMPLOYEE"_s), renumber(3, u"SALARY"_s)}));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"BONUS 1 4"_s, u"EMPLOYEE 2 0"_s, u"SALARY 3 8"_s}));
}

TEST_F(FieldReorder, TickingTheBoxReadsAnewAndDropsMoves)
{
    start();
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        select(dialog, u"BONUS"_s);
        DialogScript::click(dialog, up);
        DialogScript::click(dialog, sort);
        DialogScript::click(dialog, sort);
        EXPECT_EQ(names(dialog), (QStringList{u"EMPLOYEE"_s, u"SALARY"_s, u"BONUS"_s}));
        DialogScript::click(dialog, cancel);
    });
    EXPECT_EQ(statements.statements(), (QStringList{byNumber, byName, byNumber}));
}

TEST_F(FieldReorder, ClosesTheGapsBetweenNumbers)
{
    change(u"UPDATE TW_FIELD SET FIELD_NUMBER = FIELD_NUMBER * 7 WHERE FILE_NAME = 'PAYROLL'"_s);
    start();
    expectComplete();
    open(u"PAYROLL"_s, [](DialogForm& dialog) { DialogScript::click(dialog, ok); });
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 2 8"_s, u"BONUS 3 4"_s}));
}

TEST_F(FieldReorder, EachFieldIsNumberedUnderItsStatusText)
{
    start();
    expandTo(key(collection(u"PAYROLL"_s)));
    StatusWatcher watcher(*window);
    expectComplete();
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        watcher.seen.clear();
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(watcher.seen,
              (QStringList{u"Reording Field 'EMPLOYEE'"_s, u"Reording Field 'SALARY'"_s, u"Reording Field 'BONUS'"_s}));
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(FieldReorder, TheBoxComesWhileTheDialogStillShows)
{
    start();
    boxes.expect(u"Field re-ordering complete"_s, boxes::Icon::Information, [] {
        ASSERT_TRUE(forms::loaded(dialogName));
        EXPECT_TRUE(forms::loaded(dialogName)->isVisible());
    });
    open(u"PAYROLL"_s, [](DialogForm& dialog) { DialogScript::click(dialog, ok); });
}

TEST_F(FieldReorder, TheEndsOfTheListStayWhereTheyAre)
{
    start();
    const QStringList asItWas{u"EMPLOYEE"_s, u"SALARY"_s, u"BONUS"_s};
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        // Nothing is selected yet.
        EXPECT_EQ(selected(dialog), QString());
        DialogScript::click(dialog, up);
        DialogScript::click(dialog, down);
        EXPECT_EQ(names(dialog), asItWas);
        select(dialog, u"EMPLOYEE"_s);
        DialogScript::click(dialog, up);
        EXPECT_EQ(names(dialog), asItWas);
        EXPECT_EQ(selected(dialog), u"EMPLOYEE"_s);
        select(dialog, u"BONUS"_s);
        DialogScript::click(dialog, down);
        EXPECT_EQ(names(dialog), asItWas);
        EXPECT_EQ(selected(dialog), u"BONUS"_s);
        DialogScript::click(dialog, cancel);
    });
}

TEST_F(FieldReorder, CancelEscapeAndTheTitleBarChangeNothing)
{
    start();
    const QStringList catalog = wholeCatalog();
    const std::vector<DialogScript::Action> ends{
        [](DialogForm& dialog) { DialogScript::click(dialog, cancel); },
        [](DialogForm& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape); },
        [](DialogForm& dialog) { dialog.close(); },
    };
    for (const DialogScript::Action& end : ends) {
        open(u"PAYROLL"_s, [&](DialogForm& dialog) {
            select(dialog, u"BONUS"_s);
            DialogScript::click(dialog, up);
            end(dialog);
        });
        EXPECT_EQ(statements.statements(), QStringList{byNumber});
    }
    EXPECT_EQ(wholeCatalog(), catalog);
}

TEST_F(FieldReorder, AFileWithoutFieldsIsCompleteAtOnce)
{
    start();
    expectComplete();
    open(u"EMPTY"_s, [](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), QStringList());
        DialogScript::click(dialog, up);
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(FieldReorder, ApostrophesAreDoubledAndOtherScriptsKept)
{
    const QString file = u"O'HARA🚀"_s;
    addFile(file, 10);
    addField(file, u"IT'S"_s, 5, 0, 2);
    addField(file, u"🚀\"Ü"_s, 9, 2, 2);
    start();
    expectComplete();
    open(file, [&](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), (QStringList{u"IT'S"_s, u"🚀\"Ü"_s}));
        select(dialog, u"IT'S"_s);
        DialogScript::click(dialog, down);
        DialogScript::click(dialog, ok);
    });
    EXPECT_EQ(statements.statements(),
              (QStringList{
                  u"SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'O''HARA🚀' ORDER BY FIELD_NUMBER ASC"_s,
                  u"UPDATE TW_FIELD SET FIELD_NUMBER = 01 WHERE FILE_NAME = 'O''HARA🚀' AND FIELD_NAME = '🚀\"Ü'"_s,
                  u"UPDATE TW_FIELD SET FIELD_NUMBER = 02 WHERE FILE_NAME = 'O''HARA🚀' AND FIELD_NAME = 'IT''S'"_s,
              }));
    EXPECT_EQ(fieldsOf(file), (QStringList{u"🚀\"Ü 1 2"_s, u"IT'S 2 0"_s}));
}

TEST_F(FieldReorder, AFieldNodeLeadsToTheFieldsOfItsFile)
{
    start();
    const QString field = key(collection(u"PAYROLL"_s) + QStringList{u"fd=SALARY"_s});
    expandTo(key(collection(u"PAYROLL"_s)));
    dialogs.expect(dialogName, [](DialogForm& dialog) {
        EXPECT_EQ(names(dialog).size(), 3);
        DialogScript::click(dialog, cancel);
    });
    choose(field, u"mnu_FieldReorder"_s);
}

TEST_F(FieldReorder, AnythingButFieldsDoesNothing)
{
    start();
    expandTo(key({u"FI"_s}));
    statements.clear();
    window->setCurrentItem(window->NodeToDragItem(&node(key({u"FI"_s, u"fi=PAYROLL"_s}))));
    window->mnu_FieldReorder_Click();
    window->setCurrentItem({});
    window->mnu_FieldReorder_Click();
    EXPECT_EQ(statements.statements(), QStringList());
}

TEST_F(FieldReorder, ComesUpInTheMiddleOfTheWindowUntilAPlaceIsStored)
{
    start();
    window->setGeometry(20, 20, 600, 600);
    QPoint centre;
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        centre = dialog.frameGeometry().center() - window->frameGeometry().center();
        DialogScript::click(dialog, cancel);
    });
    EXPECT_LE(centre.manhattanLength(), 2);
    settings::save(u"frmColumnReorder"_s, u"Left"_s, 1500);
    settings::save(u"frmColumnReorder"_s, u"Top"_s, 750);
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        EXPECT_EQ(dialog.pos(), QPoint(100, 50));
        dialog.move(200, 90);
        DialogScript::click(dialog, cancel);
    });
    // This dialog reads the place and never writes it.
    EXPECT_EQ(settings::getNumber(u"frmColumnReorder"_s, u"Left"_s, 0), 1500);
    EXPECT_EQ(settings::getNumber(u"frmColumnReorder"_s, u"Top"_s, 0), 750);
}

TEST_F(FieldReorder, APlaceOutOfSightIsBroughtBack)
{
    settings::save(u"frmColumnReorder"_s, u"Left"_s, 900000);
    settings::save(u"frmColumnReorder"_s, u"Top"_s, -900000);
    start();
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        EXPECT_TRUE(dialog.screen()->availableGeometry().contains(dialog.frameGeometry()));
        DialogScript::click(dialog, cancel);
    });
}

TEST_F(FieldReorder, ThePromptAndTheButtonsServeTheKeyboard)
{
    start();
    expectComplete();
    // A button that a key has pressed shows itself pressed for a moment first.
    const auto comesTo = [](DialogForm& dialog, const QStringList& order) {
        return QTest::qWaitFor([&] { return names(dialog) == order; });
    };
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        dialog.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.isActiveWindow(); }));
        auto* box = dialog.findChild<QCheckBox*>(sort);
        box->setFocus();
        ASSERT_TRUE(box->hasFocus());
        QTest::keyClick(box, Qt::Key_F, Qt::AltModifier);
        EXPECT_TRUE(list(dialog).hasFocus());
        EXPECT_EQ(list(dialog).accessibleName(), u"Fields"_s);
        QTest::keyClick(&list(dialog), Qt::Key_End);
        EXPECT_EQ(selected(dialog), u"BONUS"_s);
        QTest::keyClick(&list(dialog), Qt::Key_U, Qt::AltModifier);
        EXPECT_TRUE(comesTo(dialog, (QStringList{u"EMPLOYEE"_s, u"BONUS"_s, u"SALARY"_s})));
        QTest::keyClick(&list(dialog), Qt::Key_D, Qt::AltModifier);
        EXPECT_TRUE(comesTo(dialog, (QStringList{u"EMPLOYEE"_s, u"SALARY"_s, u"BONUS"_s})));
        QTest::keyClick(&list(dialog), Qt::Key_S, Qt::AltModifier);
        EXPECT_TRUE(comesTo(dialog, (QStringList{u"BONUS"_s, u"EMPLOYEE"_s, u"SALARY"_s})));
        list(dialog).setFocus();
        QTest::keyClick(&list(dialog), Qt::Key_Return);
    });
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"BONUS 1 4"_s, u"EMPLOYEE 2 0"_s, u"SALARY 3 8"_s}));
}

TEST_F(FieldReorder, AFailureNamesTheRoutineAndTheStatementAndLeavesWhatWasWritten)
{
    change(u"UPDATE TW_FIELD SET FIELD_NUMBER = FIELD_NUMBER * 7 WHERE FILE_NAME = 'PAYROLL'"_s);
    start();
    errors.expect(Press::Ignore);
    open(u"PAYROLL"_s, [&](DialogForm& dialog) {
        statements.failAt(2);
        DialogScript::click(dialog, ok);
        EXPECT_TRUE(dialog.isVisible());
        DialogScript::click(dialog, cancel);
    });
    ASSERT_EQ(errors.shown().size(), 1u);
    const ScriptedErrorForm::Shown& shown = errors.shown().front();
    EXPECT_EQ(shown.number, u"ODBC Error"_s);
    EXPECT_EQ(shown.trappedIn, u"frmFieldReorder.cmdOK_Click"_s);
    EXPECT_EQ(shown.additional, modDatabase::FormatSQL(renumber(2, u"SALARY"_s)));
    EXPECT_EQ(shown.callStack.first(3), (QStringList{u"frmFieldReorder.cmdOK_Click"_s, u"frmFieldReorder.Display"_s,
                                                     u"mdiMain.mnu_FieldReorder_Click"_s}));
    EXPECT_EQ(statements.statements(), (QStringList{byNumber, renumber(1, u"EMPLOYEE"_s), renumber(2, u"SALARY"_s)}));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 14 8"_s, u"BONUS 21 4"_s}));
}

TEST_F(FieldReorder, AListThatCannotBeReadIsReportedWithItsStatementAndStaysEmpty)
{
    start();
    const QString routine = u"frmFieldReorder.chkSortAlpha_Click"_s;
    errors.expect(Press::Ignore).expect(Press::Ignore);
    expandTo(key(collection(u"PAYROLL"_s)));
    statements.clear();
    statements.failAt(1);
    dialogs.expect(dialogName, [&](DialogForm& dialog) {
        EXPECT_EQ(names(dialog), QStringList());
        statements.failAt(1);
        DialogScript::click(dialog, sort);
        EXPECT_EQ(names(dialog), QStringList());
        EXPECT_TRUE(dialog.isVisible());
        DialogScript::click(dialog, cancel);
    });
    choose(key(collection(u"PAYROLL"_s)), u"mnu_FieldReorder"_s);
    dialogs.verify();
    ASSERT_EQ(errors.shown().size(), 2u);
    const QStringList asked{byNumber, byName};
    for (qsizetype k = 0; k < asked.size(); ++k) {
        const ScriptedErrorForm::Shown& shown = errors.shown()[static_cast<std::size_t>(k)];
        EXPECT_EQ(shown.number, u"ODBC Error"_s);
        EXPECT_EQ(shown.trappedIn, routine);
        EXPECT_EQ(shown.additional, modDatabase::FormatSQL(asked.at(k)));
        EXPECT_EQ(shown.callStack.first(3),
                  (QStringList{routine, u"frmFieldReorder.Display"_s, u"mdiMain.mnu_FieldReorder_Click"_s}));
    }
    EXPECT_EQ(statements.statements(), asked);
}

TEST_F(FieldReorder, ADialogThatStoresItsPlaceLeavesItToTheNextOne)
{
    /// Stores its place whichever way it goes.
    class KeepingDialog final : public OrderDialog
    {
    public:
        KeepingDialog() : OrderDialog(u"frmKeeping"_s, {u"Names"_s, u"lstName"_s, u"&Names:"_s, {}, {}, {}}) {}

    private:
        void chkSortAlpha_Click() override {}
        void cmdOK_Click() override { forms::unload(name()); }
        void unloading() override { savePosition(); }
    };
    start();
    const auto show = [&](const DialogScript::Action& action) {
        dialogs.expect(u"frmKeeping"_s, action);
        DialogForm::get<KeepingDialog>(u"frmKeeping"_s).ask();
        dialogs.verify();
        EXPECT_FALSE(forms::loaded(u"frmKeeping"_s));
    };
    const std::vector<std::pair<QPoint, DialogScript::Action>> ends{
        {{210, 93}, [](DialogForm& dialog) { DialogScript::click(dialog, ok); }},
        {{37, 64}, [](DialogForm& dialog) { DialogScript::click(dialog, cancel); }},
        {{151, 22}, [](DialogForm& dialog) { dialog.close(); }},
    };
    for (const auto& [place, end] : ends) {
        show([&, place = place, end = end](DialogForm& dialog) {
            EXPECT_NE(dialog.pos(), place);
            dialog.move(place);
            end(dialog);
        });
        EXPECT_EQ(settings::getNumber(u"frmColumnReorder"_s, u"Left"_s, 0), place.x() * 15);
        EXPECT_EQ(settings::getNumber(u"frmColumnReorder"_s, u"Top"_s, 0), place.y() * 15);
        show([&, place = place](DialogForm& dialog) {
            EXPECT_EQ(dialog.pos(), place);
            DialogScript::click(dialog, cancel);
        });
        open(u"PAYROLL"_s, [&, place = place](DialogForm& dialog) {
            EXPECT_EQ(dialog.pos(), place);
            DialogScript::click(dialog, cancel);
        });
    }
}

TEST_F(FieldReorder, AFaultStopsItWhereItIsAndTheNextOkDoesItAll)
{
    keepCatalog();
    FaultSweep sweep{statements, errors};
    const auto reorder = [&](const std::optional<FaultSweep::Fault>& fault) {
        const bool isIgnored = fault && fault->answer == Press::Ignore;
        // Without its first reading the list is filled by the tick; without the second one there is nothing to number.
        const bool isComplete = !isIgnored || fault->statement == 1;
        if (isComplete)
            expectComplete();
        dialogs.expect(dialogName, [&](DialogForm& dialog) {
            EXPECT_EQ(names(dialog).isEmpty(), isIgnored && fault->statement == 1);
            DialogScript::click(dialog, sort);
            const bool isFilled = !names(dialog).isEmpty();
            EXPECT_EQ(isFilled, !(isIgnored && fault->statement == 2));
            if (isFilled)
                DialogScript::click(dialog, ok);
            EXPECT_EQ(dialog.isVisible(), !isComplete);
            if (dialog.isVisible())
                DialogScript::click(dialog, cancel);
        });
        choose(key(collection(u"PAYROLL"_s)), u"mnu_FieldReorder"_s);
        dialogs.verify();
        boxes.verify();
    };
    sweep.run({.prepare =
                   [&] {
                       beginAnew();
                       expandTo(key(collection(u"PAYROLL"_s)));
                   },
               .act = reorder,
               .outcome =
                   [&] {
                       EXPECT_FALSE(forms::loaded(dialogName));
                       return wholeCatalog() + wholeTree() + QStringList{statusText()};
                   },
               .afterIgnore =
                   [](int statement, const QStringList& withoutFault) {
                       return statement == 1 ? withoutFault.sliced(1) : QStringList();
                   },
               .goOn = [&] { reorder({}); }});
}
