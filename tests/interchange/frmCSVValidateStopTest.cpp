#include "DialogFixture.h"
#include "Events.h"

#include <QApplication>
#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace
{

/// Counts how often a widget is painted.
class PaintCounter final : public QObject
{
public:
    explicit PaintCounter(QWidget& watched) { watched.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

/// Each line shows and yields, so that the user acts amid the lines of a short file too.
class CSVValidateStopTest : public CSVValidateTest
{
protected:
    ~CSVValidateStopTest() override { events::setFrame(m_former); }

private:
    const int m_former = events::setFrame(0);
};

} // namespace

TEST_F(CSVValidateTest, AStopWhileCountingHalts)
{
    importFile(writeLines(u"in.csv"_s, users(2000)), [&](DialogForm& dialog) {
        QTimer::singleShot(0, &dialog, [&] {
            EXPECT_EQ(caption(dialog), u"&Stop"_s);
            action(dialog);
        });
        action(dialog);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        EXPECT_EQ(status(dialog), halted);
        EXPECT_EQ(progress(dialog).value(), 0);
        cancel(dialog);
    });
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateTest, ACancelWhileCountingEndsTheDialog)
{
    importFile(writeLines(u"in.csv"_s, users(5)), [&](DialogForm& dialog) {
        QTimer::singleShot(0, &dialog, [&] {
            EXPECT_TRUE(status(dialog).startsWith(u"Reading current catalog"_s)) << status(dialog).toStdString();
            EXPECT_EQ(progress(dialog).value(), 0);
            cancel(dialog);
            EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
        });
        action(dialog);
        EXPECT_TRUE(status(dialog).startsWith(u"Reading current catalog"_s)) << status(dialog).toStdString();
    });
    EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateStopTest, AStopAmidTheLinesHaltsAndNothingIsImported)
{
    importFile(writeLines(u"in.csv"_s, users(5)), [&](DialogForm& dialog) {
        QString stoppedAt;
        when(dialog, u"Validating Line"_s, [&] {
            stoppedAt = status(dialog);
            EXPECT_EQ(caption(dialog), u"&Stop"_s);
            EXPECT_TRUE(button(dialog, "cmdAction").isEnabled());
            EXPECT_TRUE(button(dialog, "cmdCancel").isEnabled());
            action(dialog);
        });
        action(dialog);
        EXPECT_EQ(stoppedAt, u"Validating Line 1 of 5"_s);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        EXPECT_EQ(status(dialog), halted);
        EXPECT_EQ(progress(dialog).value(), 0);

        writeLines(u"in.csv"_s, {good[5]});
        expectImported();
        action(dialog);
    });
    EXPECT_EQ(statements.writes().size(), 1);
}

TEST_F(CSVValidateStopTest, AStopBehindAnErrorSumsUpWhatWasFound)
{
    importFile(writeLines(u"in.csv"_s, QStringList{"X"} + users(5)), [&](DialogForm& dialog) {
        when(dialog, u"Validating Line"_s, [&] { action(dialog); });
        action(dialog);
        EXPECT_EQ(status(dialog), u"1 error found.  Correct the problem and click Restart to retry."_s);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        cancel(dialog);
    });
}

TEST_F(CSVValidateStopTest, AStopBehindAWarningAsksNothing)
{
    importFile(writeLines(u"in.csv"_s, QStringList{"USER,A,\"\""} + users(5)), [&](DialogForm& dialog) {
        when(dialog, u"Validating Line"_s, [&] { action(dialog); });
        action(dialog);
        EXPECT_EQ(status(dialog), halted);
        cancel(dialog);
    });
}

TEST_F(CSVValidateStopTest, ACancelAmidTheLinesEndsTheDialog)
{
    importFile(writeLines(u"in.csv"_s, users(5)), [&](DialogForm& dialog) {
        when(dialog, u"Validating Line"_s, [&] { cancel(dialog); });
        action(dialog);
    });
    EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateStopTest, TheTitleBarCancelsToo)
{
    importFile(writeLines(u"in.csv"_s, QStringList{"X"} + users(5)), [&](DialogForm& dialog) {
        when(dialog, u"Validating Line"_s, [&] { dialog.close(); });
        action(dialog);
    });
    EXPECT_EQ(forms::loaded(u"frmCSVValidate"_s), nullptr);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateStopTest, NothingEndsTheSecondStage)
{
    QString triedAt;
    expectImported();
    importFile(writeLines(u"in.csv"_s, users(5)), [&](DialogForm& dialog) {
        when(dialog, u"Importing Line"_s, [&] {
            triedAt = status(dialog);
            tryToEnd(dialog);
        });
        action(dialog);
    });
    EXPECT_EQ(triedAt, u"Importing Line 1 of 5"_s);
    EXPECT_EQ(statements.writes().size(), 5);
}

TEST_F(CSVValidateTest, The5001stErrorStopsTheRunAndARestartClearsTheList)
{
    importFile(writeLines(u"in.csv"_s, QStringList(6000, u"X"_s)), [&](DialogForm& dialog) {
        action(dialog);
        const QStringList all = findings(dialog);
        ASSERT_EQ(all.size(), 5002);
        EXPECT_EQ(all[5000], u"5001 ERR ?: Unknow line ID 'X'"_s);
        EXPECT_EQ(all[5001], u"5001 XXX ?: Stopped validating after 5001 errors"_s);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        EXPECT_EQ(status(dialog), u"5001 errors found.  Correct the problems and click Restart to retry."_s);
        writeLines(u"in.csv"_s, {u"Y"_s});
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList{"1 ERR ?: Unknow line ID 'Y'"});
        cancel(dialog);
    });
}

TEST_F(CSVValidateTest, TheLineWhoseFirstErrorPassesTheLimitAddsNoMore)
{
    const QString known = u"TABLE,SALES,ORDERS,TABLE,PAYROLL,,,"_s;
    const QString twice = u"COLUMN,SALES,ORDERS,AMOUNT,SALARY,CHAR,4,1,1,,,0"_s;
    importFile(writeLines(u"in.csv"_s, QStringList{known} + QStringList(4999, u"X"_s) + QStringList{twice, u"X"_s}),
               [&](DialogForm& dialog) {
                   action(dialog);
                   const QStringList all = findings(dialog);
                   ASSERT_EQ(all.size(), 5002);
                   EXPECT_EQ(all[0], u"1 ERR TABLE: 'SALES_ORDERS' is already defined in Catalog (Col 3)"_s);
                   EXPECT_EQ(all[5000], u"5001 ERR COLUMN: 'SALES' is already defined in Catalog (Col 2)"_s);
                   EXPECT_EQ(all[5001], u"5001 XXX ?: Stopped validating after 5001 errors"_s);
                   EXPECT_EQ(status(dialog), u"5001 errors found.  Correct the problems and click Restart to retry."_s);
                   writeLines(u"in.csv"_s, {known, twice});
                   action(dialog);
                   EXPECT_EQ(findings(dialog).size(), 3) << "The line has two errors";
                   cancel(dialog);
               });
}

TEST_F(CSVValidateTest, AClickBehindAStopStartsNoRunInsideTheRun)
{
    importFile(writeLines(u"in.csv"_s, {u"X"_s}), [&](DialogForm& dialog) {
        QTimer::singleShot(0, &dialog, [&] {
            action(dialog);
            action(dialog);
        });
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList());
        EXPECT_EQ(status(dialog), halted);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList{"1 ERR ?: Unknow line ID 'X'"});
        cancel(dialog);
    });
}

TEST_F(CSVValidateStopTest, AClickBehindAStopAmidTheLinesStartsNoRunInsideTheRun)
{
    importFile(writeLines(u"in.csv"_s, users(5)), [&](DialogForm& dialog) {
        when(dialog, u"Validating Line"_s, [&] {
            action(dialog);
            statements.clear();
            action(dialog);
            action(dialog);
            EXPECT_EQ(statements.statements(), QStringList());
        });
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList());
        EXPECT_EQ(status(dialog), halted);
        EXPECT_EQ(caption(dialog), u"&Restart"_s);
        writeLines(u"in.csv"_s, {u"X"_s});
        action(dialog);
        EXPECT_EQ(findings(dialog), QStringList{"1 ERR ?: Unknow line ID 'X'"});
        cancel(dialog);
    });
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(CSVValidateStopTest, TheWaitPointerShowsDuringARunAlone)
{
    importFile(writeLines(u"in.csv"_s, QStringList{"X"} + users(5)), [&](DialogForm& dialog) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        bool isWaiting = false;
        when(dialog, u"Validating Line"_s, [&] {
            isWaiting = QApplication::overrideCursor() && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
        });
        action(dialog);
        EXPECT_TRUE(isWaiting);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        cancel(dialog);
    });
}

TEST_F(CSVValidateStopTest, ADoubleClickDuringARunShowsTheLineAndTheRunGoesOn)
{
    importFile(writeLines(u"in.csv"_s, QStringList{"X"} + users(5)), [&](DialogForm& dialog) {
        boxes.expectInform(u"Line 1:\nX"_s);
        int line = 0;
        when(
            dialog, [&] { return !findings(dialog).isEmpty(); },
            [&] {
                doubleClick(dialog, 0);
                line = progress(dialog).value();
            });
        action(dialog);
        EXPECT_EQ(line, 2);
        EXPECT_EQ(progress(dialog).value(), 6);
        EXPECT_EQ(status(dialog), u"1 error found.  Correct the problem and click Restart to retry."_s);
        cancel(dialog);
    });
}

TEST_F(CSVValidateTest, AHundredThousandLinesArePaintedAtTheEyesPace)
{
    QStringList lines(100000, u"TABLE,SALES,A,\"\",PAYROLL,,,"_s);
    importFile(writeLines(u"in.csv"_s, lines), [&](DialogForm& dialog) {
        const PaintCounter texts(*dialog.findChild<QLabel*>(u"lblStatus"_s));
        const PaintCounter rows(*list(dialog).viewport());
        const PaintCounter bars(progress(dialog));
        expectQuestion(100000, boxes::Answer::No);
        QElapsedTimer clock;
        clock.start();
        action(dialog);
        const int frames = static_cast<int>(clock.elapsed() / 33) + 10;
        for (const PaintCounter* counter : {&texts, &rows, &bars}) {
            EXPECT_GT(counter->count, 0);
            EXPECT_LT(counter->count, 2 * frames);
        }
        EXPECT_EQ(findings(dialog).size(), 100000);
        cancel(dialog);
    });
}
