#include "frmDSNAdmin.h"

#include "BandBar.h"
#include "CConnections.h"
#include "FolderInPlace.h"
#include "Installer.h"
#include "MainWindowFixture.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

class DatasourceWindow : public MainWindowTest
{
protected:
    void open()
    {
        start();
        QTest::mouseClick(window->toolBar(u"tbrMain"_s).Button(u"DSN Admin"_s).widget(), Qt::LeftButton);
        ASSERT_TRUE(administrator());
        ASSERT_TRUE(administrator()->isVisible());
    }

    QWidget* administrator() const { return window->findChild<QWidget*>(u"frmDSNAdmin"_s); }
    /// The dialog of one datasource, or null.
    QWidget* editor() const
    {
        for (auto* dialog : administrator()->findChildren<QWidget*>(u"frmDSNEdit"_s)) {
            if (dialog->isVisible())
                return dialog;
        }
        return nullptr;
    }
    template <class Control>
    static Control& in(const QWidget* parent, const QString& name)
    {
        auto* found = parent ? parent->findChild<Control*>(name) : nullptr;
        if (!found)
            throw std::runtime_error("There is no control " + name.toStdString());
        return *found;
    }
    QTreeWidget& list() const { return in<QTreeWidget>(administrator(), u"lvw"_s); }
    QPushButton& button(const QString& name) const { return in<QPushButton>(administrator(), name); }
    void press(const QString& name) { QTest::mouseClick(&button(name), Qt::LeftButton); }
    void pressInEditor(const QString& name)
    {
        QTest::mouseClick(&in<QPushButton>(editor(), name), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    /// Types over what an entry of the dialog holds.
    void type(const QString& entry, const QString& text)
    {
        auto& field = in<QLineEdit>(editor(), entry);
        field.selectAll();
        QTest::keyClicks(&field, text);
    }
    QStringList names() const
    {
        QStringList names;
        for (int row = 0; row < list().topLevelItemCount(); ++row)
            names.append(list().topLevelItem(row)->text(0));
        return names;
    }
    QStringList row(int index) const
    {
        QStringList texts;
        for (int column = 0; column < list().columnCount(); ++column)
            texts.append(list().topLevelItem(index)->text(column));
        return texts;
    }

    QString userFile() const { return world.folder() + u"/user.ini"_s; }
    QString systemFile() const { return world.systemFolder() + u"/odbc.ini"_s; }
    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    static void append(const QString& path, const QByteArray& text)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(text);
    }
    /// The keys of a datasource as "Key=Value", the driver left out.
    static QStringList keysOf(const QString& name)
    {
        QStringList keys;
        for (const dao::Installer::Datasource& source : dao::Installer::datasources()) {
            if (source.Name != name)
                continue;
            for (const dao::Installer::Key& key : source.Keys)
                keys.append(key.Name + u'=' + key.Value);
        }
        return keys;
    }
};

TEST_F(DatasourceWindow, ListsTheDatasourcesOfTheFamilyAlone)
{
    world.addForeignDatasource(u"Elsewhere"_s, u"Another Driver"_s);
    world.addDatasource(u"Archive"_s, {u"Description=What was closed"_s});
    append(systemFile(), "[Shared]\nDriver=Tarnwick ODBC\nCatalog=/srv/shared.db\n");
    open();
    ASSERT_EQ(names(), (QStringList{datasource, u"Archive"_s, u"Shared"_s}));
    EXPECT_EQ(row(1),
              (QStringList{u"Archive"_s, u"This user"_s, world.catalogFile(u"Archive"_s), u"What was closed"_s}));
    EXPECT_EQ(row(2), (QStringList{u"Shared"_s, u"All users"_s, u"/srv/shared.db"_s, QString()}));
}

TEST_F(DatasourceWindow, ASystemFileThatCantBeReadIsReportedOnceAndTheUsersDatasourcesAreListed)
{
    world.addDatasource(u"Archive"_s);
    const FolderInPlace unreadable(systemFile());
    boxes.expect(unreadable.reason(), boxes::Icon::Exclamation);
    open();
    EXPECT_TRUE(boxes.done());
    EXPECT_EQ(names(), (QStringList{datasource, u"Archive"_s}));
    EXPECT_FALSE(in<QWidget>(administrator(), u"fraNoDriver"_s).isVisible());
    EXPECT_TRUE(errors.shown().empty());
}

TEST_F(DatasourceWindow, NamesTheFilesInUse)
{
    open();
    EXPECT_EQ(in<QLabel>(administrator(), u"lblUserFile"_s).text(), userFile());
    EXPECT_EQ(in<QLabel>(administrator(), u"lblSystemFile"_s).text(), systemFile());
    EXPECT_EQ(in<QLabel>(administrator(), u"lblDriversFile"_s).text(), world.systemFolder() + u"/odbcinst.ini"_s);
}

TEST_F(DatasourceWindow, LeavesTheMainWindowUsableAndOpensOnce)
{
    open();
    QWidget* first = administrator();
    EXPECT_FALSE(first->isModal());
    click(key());
    EXPECT_EQ(currentPane(), u"frmDSN"_s);
    QTest::mouseClick(window->toolBar(u"tbrMain"_s).Button(u"DSN Admin"_s).widget(), Qt::LeftButton);
    EXPECT_EQ(window->findChildren<QWidget*>(u"frmDSNAdmin"_s), QList<QWidget*>{first});
}

TEST_F(DatasourceWindow, WarnsWhereTheDriverIsNotRegistered)
{
    open();
    EXPECT_FALSE(in<QWidget>(administrator(), u"fraNoDriver"_s).isVisible());
    press(u"cmdClose"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    ASSERT_TRUE(QFile(world.systemFolder() + u"/odbcinst.ini"_s).resize(0));
    showDatasourceWindow(window.get());
    EXPECT_TRUE(in<QWidget>(administrator(), u"fraNoDriver"_s).isVisible());
}

TEST_F(DatasourceWindow, AddsADatasourceThatTheTreeShowsAfterARefresh)
{
    open();
    press(u"cmdAdd"_s);
    type(u"txtName"_s, u"Fresh"_s);
    type(u"txtDescription"_s, u"A new one"_s);
    type(u"txtCatalog"_s, world.catalogFile(u"Fresh"_s));
    QTest::keyClicks(&in<QPlainTextEdit>(editor(), u"txtOthers"_s), u"Region=North"_s);
    pressInEditor(u"cmdOK"_s);

    EXPECT_FALSE(editor());
    EXPECT_EQ(names(), (QStringList{datasource, u"Fresh"_s}));
    EXPECT_EQ(list().currentItem()->text(0), u"Fresh"_s);
    EXPECT_EQ(keysOf(u"Fresh"_s), (QStringList{u"Description=A new one"_s,
                                               u"Catalog="_s + world.catalogFile(u"Fresh"_s), u"Region=North"_s}));
    EXPECT_EQ(rootTexts(), QStringList{datasource});

    chooseInBar(u"mnuFileRefresh"_s);
    EXPECT_TRUE(rootTexts().contains(u"Fresh"_s));
    clickExpander(u"DSN=Fresh:"_s);
    EXPECT_EQ(node(u"DSN=Fresh:"_s).Image(), u"Datasource"_s);
}

TEST_F(DatasourceWindow, AddsADatasourceForAllUsers)
{
    open();
    press(u"cmdAdd"_s);
    type(u"txtName"_s, u"Fresh"_s);
    in<QRadioButton>(editor(), u"optScope_1"_s).click();
    pressInEditor(u"cmdOK"_s);
    EXPECT_TRUE(contents(systemFile()).contains("[Fresh]"));
    EXPECT_FALSE(contents(userFile()).contains("[Fresh]"));
    EXPECT_EQ(row(1).at(1), u"All users"_s);
}

TEST_F(DatasourceWindow, ANameIsNeeded)
{
    open();
    press(u"cmdAdd"_s);
    type(u"txtDescription"_s, u"Nameless"_s);
    boxes.expect(u"Please enter a name for the datasource."_s, boxes::Icon::Exclamation);
    pressInEditor(u"cmdOK"_s);
    ASSERT_TRUE(editor());
    EXPECT_EQ(in<QLineEdit>(editor(), u"txtDescription"_s).text(), u"Nameless"_s);
    EXPECT_EQ(names(), QStringList{datasource});
}

TEST_F(DatasourceWindow, ANameThatIsThereAlreadyLosesNothing)
{
    open();
    const QByteArray before = contents(userFile());
    press(u"cmdAdd"_s);
    type(u"txtName"_s, datasource);
    type(u"txtDescription"_s, u"Typed with care"_s);
    boxes.expect(u"The datasource '%1' is in the file '%2' already."_s.arg(datasource, userFile()),
                 boxes::Icon::Exclamation);
    pressInEditor(u"cmdOK"_s);
    ASSERT_TRUE(editor());
    EXPECT_EQ(in<QLineEdit>(editor(), u"txtDescription"_s).text(), u"Typed with care"_s);
    EXPECT_EQ(contents(userFile()), before);

    type(u"txtName"_s, u"Another"_s);
    pressInEditor(u"cmdOK"_s);
    EXPECT_EQ(keysOf(u"Another"_s), QStringList{u"Description=Typed with care"_s});
}

TEST_F(DatasourceWindow, ALineThatIsNoKeyIsPointedOut)
{
    open();
    press(u"cmdAdd"_s);
    type(u"txtName"_s, u"Fresh"_s);
    in<QPlainTextEdit>(editor(), u"txtOthers"_s).setPlainText(u"Region=North\nnonsense"_s);
    boxes.expect(u"Line 2 of the other keys, \"nonsense\", is not of the form Key=Value."_s, boxes::Icon::Exclamation);
    pressInEditor(u"cmdOK"_s);
    in<QPlainTextEdit>(editor(), u"txtOthers"_s).setPlainText(u"catalog=/elsewhere"_s);
    boxes.expect(u"The key \"catalog\" has an entry of its own above."_s, boxes::Icon::Exclamation);
    pressInEditor(u"cmdOK"_s);
    EXPECT_EQ(names(), QStringList{datasource});
}

TEST_F(DatasourceWindow, CancelAddsNothing)
{
    open();
    const QByteArray before = contents(userFile());
    press(u"cmdAdd"_s);
    type(u"txtName"_s, u"Fresh"_s);
    pressInEditor(u"cmdCancel"_s);
    EXPECT_FALSE(editor());
    EXPECT_EQ(contents(userFile()), before);
}

TEST_F(DatasourceWindow, AChangeKeepsUnknownKeysTheirOrderAndTheirSpelling)
{
    append(userFile(), "\n# kept by hand\n[Archive]\nDriver=Tarnwick ODBC\nRegion=North\nCATALOG=/srv/a.db\n"
                       "Shelf=4\nStatementLog=/srv/a.log\n");
    open();
    QTest::keyClick(&list(), Qt::Key_Down);
    press(u"cmdChange"_s);
    EXPECT_EQ(in<QLineEdit>(editor(), u"txtName"_s).text(), u"Archive"_s);
    EXPECT_EQ(in<QLineEdit>(editor(), u"txtCatalog"_s).text(), u"/srv/a.db"_s);
    EXPECT_EQ(in<QPlainTextEdit>(editor(), u"txtOthers"_s).toPlainText(), u"Region=North\nShelf=4"_s);
    EXPECT_FALSE(in<QRadioButton>(editor(), u"optScope_1"_s).isEnabled());

    type(u"txtCatalog"_s, u"/srv/b.db"_s);
    type(u"txtDescription"_s, u"Moved"_s);
    pressInEditor(u"cmdOK"_s);
    EXPECT_EQ(keysOf(u"Archive"_s), (QStringList{u"Region=North"_s, u"CATALOG=/srv/b.db"_s, u"Shelf=4"_s,
                                                 u"StatementLog=/srv/a.log"_s, u"Description=Moved"_s}));
    EXPECT_TRUE(contents(userFile()).contains("# kept by hand"));
    EXPECT_EQ(list().currentItem()->text(3), u"Moved"_s);
}

TEST_F(DatasourceWindow, RenamesADatasource)
{
    open();
    const QStringList keys = keysOf(datasource);
    press(u"cmdChange"_s);
    type(u"txtName"_s, u"Renamed"_s);
    pressInEditor(u"cmdOK"_s);
    EXPECT_EQ(names(), QStringList{u"Renamed"_s});
    EXPECT_EQ(keysOf(u"Renamed"_s), keys);
}

TEST_F(DatasourceWindow, ADoubleClickChangesTheDatasource)
{
    open();
    const QRect row = list().visualItemRect(list().topLevelItem(0));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, row.center());
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, row.center());
    ASSERT_TRUE(editor());
    EXPECT_EQ(in<QLineEdit>(editor(), u"txtName"_s).text(), datasource);
}

TEST_F(DatasourceWindow, RemovalAsksFirst)
{
    open();
    const QString question =
        u"Are you sure you want to remove the datasource '%1'?\nIts catalog stays where it is."_s.arg(datasource);
    boxes.expectAsk(question, boxes::Answer::No);
    press(u"cmdRemove"_s);
    EXPECT_EQ(names(), QStringList{datasource});

    boxes.expectAsk(question, boxes::Answer::Yes);
    press(u"cmdRemove"_s);
    EXPECT_EQ(names(), QStringList());
    EXPECT_TRUE(QFile::exists(world.catalogFile(datasource)));
    EXPECT_EQ(rootTexts(), QStringList{datasource});
}

TEST_F(DatasourceWindow, AFileThatCantBeReadIsReportedOnceAtARemoval)
{
    open();
    const QByteArray before = contents(userFile());
    {
        const FolderInPlace unreadable(userFile());
        boxes.expectAsk(
            u"Are you sure you want to remove the datasource '%1'?\nIts catalog stays where it is."_s.arg(datasource),
            boxes::Answer::Yes);
        boxes.expect(unreadable.reason(), boxes::Icon::Exclamation);
        press(u"cmdRemove"_s);
        EXPECT_TRUE(boxes.done());
        EXPECT_TRUE(administrator()->isVisible());
        EXPECT_TRUE(errors.shown().empty());
    }
    EXPECT_EQ(contents(userFile()), before);

    // The window goes on.
    press(u"cmdAdd"_s);
    type(u"txtName"_s, u"Fresh"_s);
    pressInEditor(u"cmdOK"_s);
    EXPECT_EQ(names(), (QStringList{datasource, u"Fresh"_s}));
}

TEST_F(DatasourceWindow, TheDeleteKeyRemoves)
{
    open();
    list().setFocus();
    boxes.expectAsk(
        u"Are you sure you want to remove the datasource '%1'?\nIts catalog stays where it is."_s.arg(datasource),
        boxes::Answer::No);
    QTest::keyClick(&list(), Qt::Key_Delete);
}

TEST_F(DatasourceWindow, WithoutADatasourceThereIsNothingToChange)
{
    ASSERT_TRUE(QFile(userFile()).resize(0));
    open();
    EXPECT_TRUE(button(u"cmdAdd"_s).isEnabled());
    for (const QString& name : {u"cmdChange"_s, u"cmdRemove"_s, u"cmdTest"_s})
        EXPECT_FALSE(button(name).isEnabled()) << name.toStdString();
}

TEST_F(DatasourceWindow, ATestThatConnectsSaysSoAndLeavesNoConnectionOpen)
{
    open();
    boxes.expectInform(u"The connection to '%1' was made and closed again."_s.arg(datasource));
    press(u"cmdTest"_s);
    EXPECT_EQ(CConnections::instance().Count(), 0);
    EXPECT_EQ(node(key()).Image(), u"DSN Ghost"_s);
}

TEST_F(DatasourceWindow, ATestThatFailsShowsTheDriversReason)
{
    world.addUnreachableDatasource(u"Unreachable"_s);
    open();
    const dao::Installer::Trial trial = dao::Installer::tryDatasource(u"Unreachable"_s);
    ASSERT_FALSE(trial.Connected);
    ASSERT_FALSE(trial.Text.isEmpty());
    QTest::keyClick(&list(), Qt::Key_Down);
    boxes.expect(u"Failed to connect for the following reason:\n"_s + trial.Text, boxes::Icon::Exclamation);
    press(u"cmdTest"_s);
}

TEST_F(DatasourceWindow, AFileIsChosenThroughTheFileDialog)
{
    open();
    press(u"cmdAdd"_s);
    fileDialogs.expectCancelled(filedialogs::Mode::Save, u"Select the catalog file"_s);
    pressInEditor(u"cmdBrowse_Catalog"_s);
    EXPECT_EQ(in<QLineEdit>(editor(), u"txtCatalog"_s).text(), QString());

    fileDialogs.expect(filedialogs::Mode::Save, u"Select the catalog file"_s, u"/srv/ledger.db"_s);
    pressInEditor(u"cmdBrowse_Catalog"_s);
    EXPECT_EQ(in<QLineEdit>(editor(), u"txtCatalog"_s).text(), u"/srv/ledger.db"_s);
}

TEST_F(DatasourceWindow, SurvivesARefreshOfTheDatasources)
{
    open();
    chooseInBar(u"mnuFileRefresh"_s);
    EXPECT_TRUE(administrator()->isVisible());
}
