#pragma once

#include "MoveCopyFixture.h"

#include "frmTWErr.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

/// A user who chooses the Copy commands of the file PAYROLL, the database SALES and its table ORDERS.
class CopyDialogTest : public MoveCopyTest
{
protected:
    /// Chooses Copy from the menu of a node; the dialog gets the action.
    void copy(const QStringList& node, const QString& menuItem, const QString& dialog,
              const DialogScript::Action& action)
    {
        expandTo(key(node.first(node.size() - 1)));
        statements.clear();
        dialogs.expect(dialog, action);
        choose(key(node), menuItem);
        verify();
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
    }
    void copyFile(const DialogScript::Action& action)
    {
        copy(file, QStringLiteral("mnu_FileCopy"), QStringLiteral("frmFileCopy"), action);
    }
    void copyDatabase(const DialogScript::Action& action)
    {
        copy(database, QStringLiteral("mnu_DBCopy"), QStringLiteral("frmDBCopy"), action);
    }
    void copyTable(const DialogScript::Action& action)
    {
        copy(table, QStringLiteral("mnu_TableCopy"), QStringLiteral("frmTableCopy"), action);
    }

    static QString label(DialogForm& dialog, const QString& name) { return dialog.findChild<QLabel*>(name)->text(); }
    static void enter(DialogForm& dialog, const QString& entry, const QString& text)
    {
        auto* edit = dialog.findChild<QLineEdit*>(entry);
        edit->clear();
        QTest::keyClicks(edit, text);
    }
    static void press(DialogForm& dialog, const QString& button) { DialogScript::click(dialog, button); }

    const QString ok = QStringLiteral("cmdOk");
    const QString cancel = QStringLiteral("cmdCancel");
    const QStringList file{QStringLiteral("FI"), QStringLiteral("fi=PAYROLL")};
    const QStringList database{QStringLiteral("DB"), QStringLiteral("db=SALES")};
    const QStringList table = database + QStringList{QStringLiteral("TA"), QStringLiteral("ta=ORDERS")};
};
