#pragma once

#include "DialogForm.h"
#include "DialogScript.h"
#include "InterchangeRoom.h"
#include "MainWindowFixture.h"
#include "PaneRegistry.h"

#include <QAbstractItemView>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

/// A user in front of the panes of Export Catalog and Import Catalog.
class InterchangeTest : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        registerInterchangeRoom();
    }
    void TearDown() override
    {
        MainWindowTest::TearDown();
        dialogs.verify();
        for (const char* pane : {"frmCSVExport", "frmCSVImport"})
            panes::remove(QLatin1String(pane));
    }

    QString path(const QString& name) const { return folder.filePath(name); }

    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
        file.write(bytes);
        return path(name);
    }

    /// The lines, each ended as the export ends them.
    QString writeLines(const QString& name, const QStringList& lines) const
    {
        QByteArray bytes;
        for (const QString& line : lines)
            bytes += line.toUtf8() + "\r\n";
        return write(name, bytes);
    }

    static QByteArray read(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }

    /// Starts the program, connects and shows a pane for the datasource.
    void open(const QString& pane)
    {
        if (!window)
            start();
        window->PaneDisplay(pane, {datasource});
        statements.clear();
    }

    void clickAction()
    {
        auto* button = window->currentPane()->findChild<QPushButton*>(QStringLiteral("cmdAction"));
        ASSERT_TRUE(button && button->isVisible() && button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
    }

    /// Exports to a file that the user chooses.
    void exportTo(const QString& file)
    {
        fileDialogs.expect(filedialogs::Mode::Save, exportTitle, file);
        clickAction();
    }

    /// Chooses a file to import, and acts in the dialog that comes up.
    void importFile(const QString& file, DialogScript::Action action)
    {
        fileDialogs.expect(filedialogs::Mode::Open, importTitle, file);
        dialogs.expect(QStringLiteral("frmCSVValidate"), std::move(action));
        clickAction();
        dialogs.verify();
    }

    static QPushButton& button(DialogForm& dialog, const char* name)
    {
        return *dialog.findChild<QPushButton*>(QLatin1String(name));
    }
    static QString status(DialogForm& dialog) { return dialog.findChild<QLabel*>(QStringLiteral("lblStatus"))->text(); }
    static QProgressBar& progress(DialogForm& dialog)
    {
        return *dialog.findChild<QProgressBar*>(QStringLiteral("pbrProgress"));
    }
    static QAbstractItemView& list(DialogForm& dialog)
    {
        return *dialog.findChild<QAbstractItemView*>(QStringLiteral("lvwErr"));
    }
    static void action(DialogForm& dialog) { DialogScript::click(dialog, QStringLiteral("cmdAction")); }
    static void cancel(DialogForm& dialog) { DialogScript::click(dialog, QStringLiteral("cmdCancel")); }

    /// The rows of the list: "3 ERR FILE: text".
    static QStringList findings(DialogForm& dialog)
    {
        const QAbstractItemModel& model = *list(dialog).model();
        const auto text = [&](int row, int column) { return model.index(row, column).data().toString(); };
        QStringList all;
        for (int row = 0; row < model.rowCount(); ++row)
            all.append(text(row, 0) + ' ' + text(row, 1) + ' ' + text(row, 2) + ": " + text(row, 3));
        return all;
    }

    void expectImported() { boxes.expectInform(QStringLiteral("CSV Successfully imported.")); }

    /// Lines that pass, one of each kind.
    const QStringList good{
        QStringLiteral("FILE,STOCK,INDEXED,FIXED,20"),
        QStringLiteral("FIELD,STOCK,PART,STRING,0,8,8,0,0,\"\",\"none\""),
        QStringLiteral("DB,DEPOT,\"/data\",DISAM,\"\",Depot"),
        QStringLiteral("TABLE,DEPOT,PARTS,TABLE,STOCK,\"parts.dat\",\"\",Parts"),
        QStringLiteral("COLUMN,DEPOT,PARTS,PART,PART,CHAR,8,1,1,\"\",Part,0"),
        QStringLiteral("USER,BOB,secret"),
        QStringLiteral("DBPRV,BOB,DEPOT,BOBBY,Pass,1,0,1,0,TABLE"),
        QStringLiteral("TBLPRV,BOB,DEPOT,PARTS,0,1,0,1"),
    };

    const QString exportTitle = QStringLiteral("Please select a filename to export the catalog to...");
    const QString importTitle = QStringLiteral("Select the CSV file to import...");
    QTemporaryDir folder;
    DialogScript dialogs;
};
