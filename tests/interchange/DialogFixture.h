#pragma once

#include "InterchangeFixture.h"

#include <QTimer>

/// A user in front of the dialog that validates a file.
class CSVValidateTest : public InterchangeTest
{
protected:
    void SetUp() override
    {
        InterchangeTest::SetUp();
        open(QStringLiteral("frmCSVImport"));
    }

    static QString caption(DialogForm& dialog) { return button(dialog, "cmdAction").text(); }

    void expectQuestion(int warnings, boxes::Answer answer, const ScriptedBoxes::Meanwhile& meanwhile = {})
    {
        boxes.expectAsk(QStringLiteral("This CSV has no errors, but has %1 %2.\nDo you wish to import it?")
                            .arg(QString::number(warnings), warnings == 1 ? "warning" : "warnings"),
                        answer, meanwhile);
    }

    /// Does something at the first yield at which a condition holds.
    static void when(DialogForm& dialog, const std::function<bool()>& condition, const std::function<void()>& then)
    {
        auto* timer = new QTimer(&dialog);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, condition, then] {
            if (!condition())
                return;
            timer->stop();
            then();
        });
        timer->start(0);
    }
    /// At the first at which the status says so.
    static void when(DialogForm& dialog, const QString& beginning, const std::function<void()>& then)
    {
        when(
            dialog, [&dialog, beginning] { return status(dialog).startsWith(beginning); }, then);
    }

    /// Does all that may end a dialog or start a run, in a dialog that nothing ends.
    static void tryToEnd(DialogForm& dialog)
    {
        for (const char* name : {"cmdAction", "cmdCancel"})
            QTest::mouseClick(&button(dialog, name), Qt::LeftButton);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QTest::keyClick(&dialog, Qt::Key_Return);
        dialog.close();
        EXPECT_TRUE(dialog.isVisible());
    }

    static QStringList users(int count)
    {
        QStringList all;
        for (int i = 1; i <= count; ++i)
            all.append(QStringLiteral("USER,BOB%1,SECRET").arg(i));
        return all;
    }

    static void doubleClick(DialogForm& dialog, int row)
    {
        QAbstractItemView& view = list(dialog);
        const QPoint where = view.visualRect(view.model()->index(row, 3)).center();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, where);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, where);
    }

    const QString halted = QStringLiteral("Validation halted - Click Restart to try again");
};
