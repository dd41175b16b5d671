#include "CConnections.h"
#include "CellGrid.h"
#include "Database.h"
#include "DatabasesRoom.h"
#include "FilesRoom.h"
#include "GridPane.h"
#include "InterchangeRoom.h"
#include "MoveCopyRoom.h"
#include "Recordset.h"
#include "Routine.h"
#include "Settings.h"
#include "ShellPanes.h"
#include "ToolBar.h"
#include "TreeModel.h"
#include "UsersRoom.h"
#include "WorkbenchStyle.h"
#include "frmCSVValidate.h"
#include "frmColumnReorder.h"
#include "frmCriteriaBuilder.h"
#include "frmDBCopy.h"
#include "frmDSNAdmin.h"
#include "frmDateFormat.h"
#include "frmFieldReorder.h"
#include "frmFileCopy.h"
#include "frmMoveCopy.h"
#include "frmTableCopy.h"
#include "frmTableCriteria.h"
#include "frmTimeFormat.h"
#include "frmWizardFileToTable.h"
#include "frmYesToAll.h"
#include "mdiMain.h"
#include "modGUI.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

namespace
{

QPalette darkPalette()
{
    QPalette palette(QColor(0x2b, 0x2e, 0x33));
    const QColor window(0x2b, 0x2e, 0x33);
    const QColor base(0x1f, 0x22, 0x26);
    const QColor text(0xe4, 0xe6, 0xea);
    const QColor dim(0x8a, 0x8f, 0x98);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::Button, QColor(0x36, 0x3a, 0x40));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, dim);
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7e, 0xc4));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

/// Takes the pictures of one palette and one scale, named after what they show.
class Photographer
{
public:
    Photographer(QDir folder, QString suffix) : m_folder(std::move(folder)), m_suffix(std::move(suffix)) {}

    void take(QWidget& widget, const QString& name)
    {
        QApplication::processEvents();
        save(widget.grab(), name);
    }

    /// The same with the pointer of one of its children over a place of that child.
    void take(QWidget& widget, const QString& name, const QWidget& under, QPoint place)
    {
        QApplication::processEvents();
        QPixmap picture = widget.grab();
        const QCursor pointer = under.cursor();
        QPainter(&picture).drawPixmap(under.mapTo(&widget, place) - pointer.hotSpot(), pointer.pixmap());
        save(picture, name);
    }

private:
    void save(const QPixmap& picture, const QString& name) const
    {
        const QString path = m_folder.filePath(name + m_suffix + u".png"_s);
        if (!picture.save(path))
            std::fprintf(stderr, "%s can't be written\n", qPrintable(path));
    }

    QDir m_folder;
    QString m_suffix;
};

TreeNode& node(mdiMain& window, const QString& key)
{
    return window.tvwExplorer().Nodes().Item(key);
}

void showNode(mdiMain& window, const QString& key)
{
    modGUI::ExpandToNode(key);
    window.setCurrentItem(window.NodeToDragItem(&node(window, key)));
    window.DisplayNode();
}

void takePanes(mdiMain& window, Photographer& camera)
{
    camera.take(window, u"welcome"_s);
    showNode(window, u"DSN=Ledger:"_s);
    camera.take(window, u"datasource"_s);
    window.PaneDisplay(u"frmOptions"_s);
    camera.take(window, u"options"_s);
    window.PaneDisplay(u"frmAbout"_s);
    camera.take(window, u"about"_s);
}

void takeTree(mdiMain& window, Photographer& camera)
{
    window.PaneDisplay(u"frmWelcome"_s);
    node(window, u"DSN=Ledger:FI=Ledger:"_s).setExpanded(true);
    node(window, u"DSN=Ledger:DB=Ledger:"_s).setExpanded(true);
    TreeNode* database = node(window, u"DSN=Ledger:DB=Ledger:"_s).Child();
    database->setExpanded(true);
    database->Child()->setExpanded(true);
    camera.take(window, u"tree"_s);
}

void takeMenus(mdiMain& window, Photographer& camera)
{
    for (QMenu* menu : window.findChildren<QMenu*>()) {
        if (menu->objectName().isEmpty())
            continue;
        menu->popup({0, 0});
        camera.take(*menu, u"menu-"_s + menu->objectName());
        menu->hide();
    }
}

/// Takes the modal window that `show` opens, and closes it.
void takeModal(Photographer& camera, const QString& name, const std::function<void()>& show)
{
    QTimer::singleShot(0, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        camera.take(*dialog, name);
        dialog->close();
    });
    show();
}

void takeFiles(mdiMain& window, Photographer& camera)
{
    const QStringList file{u"Ledger"_s, u"EMPLOYEE"_s};
    const QStringList field = file + QStringList{u"SALARY"_s};
    settings::save(u"Options"_s, u"Items"_s, 0);
    window.PaneDisplay(u"frmFile"_s, file);
    camera.take(window, u"file"_s);
    window.PaneEdit(u"frmFile"_s, file);
    camera.take(window, u"file-edit"_s);
    window.PaneAddNew(u"frmFile"_s, {u"Ledger"_s});
    camera.take(window, u"file-add"_s);
    takeModal(camera, u"file-delete-question"_s, [&] { window.PaneDelete(u"frmFile"_s, file); });
    camera.take(window, u"file-delete"_s);
    window.PaneDisplay(u"frmFiles"_s, {u"Ledger"_s});
    camera.take(window, u"files"_s);

    window.PaneDisplay(u"frmField"_s, field);
    camera.take(window, u"field"_s);
    window.PaneEdit(u"frmField"_s, field);
    camera.take(window, u"field-edit"_s);
    window.PaneAddNew(u"frmField"_s, file);
    camera.take(window, u"field-add"_s);
    window.PaneDisplay(u"frmFields"_s, file);
    camera.take(window, u"fields"_s);

    takeModal(camera, u"date-format"_s, [] { frmDateFormat::GetFormat(u"DD/MM/YYYY"_s); });
    takeModal(camera, u"time-format"_s, [] { frmTimeFormat::GetFormat(u"hh:mm:ss"_s); });
    takeModal(camera, u"field-order"_s,
              [] { frmFieldReorder::Display(*CConnections::instance().Item(u"Ledger"_s)->db(), u"EMPLOYEE"_s); });
    takeModal(camera, u"yes-to-all"_s, [] { frmYesToAll::GetAnswer(u"Replace the file 'EMPLOYEE'?"_s); });
}

void takeItemPane(mdiMain& window, Photographer& camera, const QString& pane, const QString& name,
                  const QStringList& keys)
{
    window.PaneDisplay(pane, keys);
    camera.take(window, name);
    window.PaneEdit(pane, keys);
    camera.take(window, name + u"-edit"_s);
    window.PaneAddNew(pane, keys.first(keys.size() - 1));
    camera.take(window, name + u"-add"_s);
    takeModal(camera, name + u"-delete-question"_s, [&] { window.PaneDelete(pane, keys); });
    camera.take(window, name + u"-delete"_s);
}

/// The records of a table, all columns of them.
void takeRecords(mdiMain& window, Photographer& camera, const QStringList& table)
{
    QTimer::singleShot(0, [] {
        QWidget* dialog = QApplication::activeModalWidget();
        for (const QString& button : {u"cmdSelectAll"_s, u"cmdOK"_s})
            dialog->findChild<QPushButton*>(button)->click();
    });
    window.PaneDisplay(u"frmTableData"_s, table);
    camera.take(window, u"table-data"_s);
}

/// A grid with the editor open over a cell of its current row.
void takeEditor(mdiMain& window, Photographer& camera, int column, const QString& name)
{
    auto* pane = static_cast<GridPane*>(window.currentPane());
    pane->findChild<CellGrid*>(u"grd"_s)->select(1, column);
    pane->EnterCell();
    camera.take(window, name);
}

void takeDatabases(mdiMain& window, Photographer& camera)
{
    const QStringList table{u"Ledger"_s, u"PAYROLL"_s, u"EMPLOYEE"_s};
    takeItemPane(window, camera, u"frmDatabase"_s, u"database"_s, table.first(2));
    takeItemPane(window, camera, u"frmTable"_s, u"table"_s, table);
    takeItemPane(window, camera, u"frmColumn"_s, u"column"_s, table + QStringList{u"SALARY"_s});
    window.PaneDisplay(u"frmDatabases"_s, table.first(1));
    camera.take(window, u"databases"_s);
    window.PaneDisplay(u"frmTables"_s, table.first(2));
    camera.take(window, u"tables"_s);
    window.PaneDisplay(u"frmColumns"_s, table);
    camera.take(window, u"columns"_s);
    takeEditor(window, camera, 0, u"columns-look-up"_s);
    takeEditor(window, camera, 1, u"columns-text"_s);
    takeEditor(window, camera, 3, u"columns-list"_s);
    window.PaneEdit(u"frmDatabase"_s, {u"Ledger"_s, u"TW"_s});
    camera.take(window, u"database-read-only"_s);
    window.PaneEdit(u"frmTable"_s, {u"Ledger"_s, u"TW"_s, u"FILE"_s});
    camera.take(window, u"table-read-only"_s);
    window.PaneEdit(u"frmColumn"_s, {u"Ledger"_s, u"TW"_s, u"FILE"_s, u"FILE_NAME"_s});
    camera.take(window, u"column-read-only"_s);
    window.PaneDisplay(u"frmSpecialCols"_s, table);
    camera.take(window, u"special-columns"_s);
    window.toolBar(u"tbrSpecialCols"_s).Button(u"Special Column Edit"_s).press();
    camera.take(window, u"special-columns-edit"_s);
    window.PaneDisplay(u"frmCSVExport"_s, {u"Ledger"_s});
    camera.take(window, u"export"_s);
    window.PaneDisplay(u"frmCSVImport"_s, {u"Ledger"_s});
    camera.take(window, u"import"_s);
    takeModal(camera, u"column-order"_s, [&] { frmColumnReorder::Display(table); });
    takeModal(camera, u"criteria-builder"_s, [&] {
        frmCriteriaBuilder::GetCriteria(table.at(0), table.at(1), table.at(2), u"PAYROLL_EMPLOYEE.SALARY > 2000"_s);
    });
    takeModal(camera, u"table-criteria"_s,
              [&] { frmTableCriteria::GetCriteria(table.at(0), table.at(1), table.at(2)); });
    takeRecords(window, camera, table);
    takeModal(camera, u"file-to-table-wizard"_s,
              [&] { frmWizardFileToTable::Display(table.at(0), table.at(1), table.at(2)); });
}

void takeUsers(mdiMain& window, Photographer& camera)
{
    const QString ledger = u"Ledger"_s;
    takeItemPane(window, camera, u"frmUser"_s, u"user"_s, {ledger, u"PAYMASTER"_s});
    takeItemPane(window, camera, u"frmDBPRV"_s, u"database-privilege"_s, {ledger, u"PAYROLL"_s, u"PAYMASTER"_s});
    takeItemPane(window, camera, u"frmTBLPRV"_s, u"table-privilege"_s,
                 {ledger, u"PAYROLL"_s, u"EMPLOYEE"_s, u"PAYMASTER"_s});
    window.PaneDisplay(u"frmUsers"_s, {ledger});
    camera.take(window, u"users"_s);
    takeEditor(window, camera, 1, u"users-password"_s);
    window.PaneDisplay(u"frmDBPRVs"_s, {ledger, u"PAYROLL"_s});
    camera.take(window, u"database-privileges"_s);
    takeEditor(window, camera, 0, u"database-privileges-list"_s);
    takeEditor(window, camera, 4, u"database-privileges-flag"_s);
    window.PaneDisplay(u"frmTBLPRVs"_s, {ledger, u"PAYROLL"_s, u"EMPLOYEE"_s});
    camera.take(window, u"table-privileges"_s);
    takeEditor(window, camera, 0, u"table-privileges-list"_s);
}

/// Drags a file to where it may go and to where it may not.
void takeDrag(mdiMain& window, Photographer& camera)
{
    window.PaneDisplay(u"frmWelcome"_s);
    TreeView& tree = window.tvwExplorer();
    const QString files = u"DSN=Warehouse:FI=Warehouse:"_s;
    const QString databases = u"DSN=Warehouse:DB=Warehouse:"_s;
    const QString file = u"DSN=Ledger:FI=Ledger:fi=EMPLOYEE:"_s;
    node(window, u"DSN=Ledger:"_s).setExpanded(false);
    for (const QString& key : {u"DSN=Ledger:"_s, u"DSN=Ledger:FI=Ledger:"_s, u"DSN=Warehouse:"_s, databases})
        node(window, key).setExpanded(true);
    const QString database = node(window, databases).Child()->Key();

    const auto placeOf = [&](const QString& key) {
        const QRect row = tree.visualRect(static_cast<TreeModel*>(tree.model())->indexOf(node(window, key)));
        return QPoint(row.left() + 40, row.center().y());
    };
    const auto send = [&](QEvent::Type type, QPoint place) {
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(type, place, tree.viewport()->mapToGlobal(place), isMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QApplication::sendEvent(tree.viewport(), &event);
    };
    send(QEvent::MouseButtonPress, placeOf(file));
    send(QEvent::MouseMove, placeOf(file) + QPoint(2 * QApplication::startDragDistance(), 0));
    send(QEvent::MouseMove, placeOf(files));
    camera.take(window, u"drag"_s, *tree.viewport(), placeOf(files));
    send(QEvent::MouseMove, placeOf(database));
    camera.take(window, u"drag-refused"_s, *tree.viewport(), placeOf(database));
    tree.CancelDrag();
    send(QEvent::MouseButtonRelease, placeOf(database));
}

void takeMoveCopy(mdiMain& window, Photographer& camera)
{
    takeModal(camera, u"move-or-copy"_s, [] {
        frmMoveCopy::Query(u"Do you want to Move or Copy the File 'EMPLOYEE' from Datasource 'Ledger' "
                           "to Datasource 'Warehouse'?"_s);
    });
    takeModal(camera, u"move-or-copy-note"_s, [] {
        frmMoveCopy::Query(
            u"Do you want to Move or Copy the Database User Privileges for User 'PAYMASTER' "
            "from Datasource 'Ledger', Database 'PAYROLL' to Datasource 'Warehouse', Database 'STOCK'?"
            "\n\nNOTE: For security reasons, the password field will be set to blank in the new entry."_s);
    });
    dao::Database& ledger = *CConnections::instance().Item(u"Ledger"_s)->db();
    takeModal(camera, u"file-copy"_s, [&] { frmFileCopy::Display(ledger, u"EMPLOYEE"_s); });
    takeModal(camera, u"database-copy"_s, [&] { frmDBCopy::Display(ledger, u"PAYROLL"_s); });
    takeModal(camera, u"table-copy"_s, [&] { frmTableCopy::Display(ledger, u"PAYROLL"_s, u"EMPLOYEE"_s); });
    takeDrag(window, camera);
}

QString writeLines(const QTemporaryDir& folder, const QString& name, const QStringList& lines)
{
    QFile file(folder.filePath(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(lines.join(u"\r\n"_s).toUtf8());
    return file.fileName();
}

/// Shows the dialog that validates a file, and acts in it.
void validate(const QString& file, const std::function<void(QWidget& dialog)>& act)
{
    QTimer::singleShot(0, [&] {
        if (QWidget* dialog = QApplication::activeModalWidget())
            act(*dialog);
    });
    frmCSVValidate::Validate(u"Warehouse"_s, file);
}

/// Presses the action button of that dialog, and watches its run until there has been enough to see.
void pressAction(QWidget& dialog, const std::function<bool()>& watch)
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        timer.stop();
        if (!watch())
            timer.start();
    });
    timer.start(0);
    dialog.findChild<QPushButton*>(u"cmdAction"_s)->click();
}

/// The same, until a box comes up over the dialog: takes both and closes the box.
void pressActionUntilBox(QWidget& dialog, Photographer& camera, const QString& name)
{
    pressAction(dialog, [&] {
        QWidget* box = QApplication::activeModalWidget();
        if (!box || box == &dialog)
            return false;
        camera.take(dialog, name);
        camera.take(*box, name + u"-box"_s);
        box->close();
        return true;
    });
}

/// The same, until a stage has come so far.
void pressActionUntil(QWidget& dialog, const QString& stage, int percent, const std::function<void()>& then)
{
    const auto* status = dialog.findChild<QLabel*>(u"lblStatus"_s);
    const auto* progress = dialog.findChild<QProgressBar*>(u"pbrProgress"_s);
    pressAction(dialog, [=] {
        if (!status->text().startsWith(stage) || 100 * progress->value() < percent * progress->maximum())
            return false;
        then();
        return true;
    });
}

/// Closes the box that will come up over the dialog.
void closeBox(const QWidget& dialog)
{
    QWidget* box = QApplication::activeModalWidget();
    if (box && box != &dialog)
        box->close();
    else
        QTimer::singleShot(0, [&dialog] { closeBox(dialog); });
}

void takeValidation(Photographer& camera)
{
    const QTemporaryDir folder;
    const QStringList faulty{
        u"FILE,STOCKROOM,HEAP,FIXED,20"_s,
        u"FIELD,BUYER,EMAIL,STRING,40,60"_s,
        u"FIELD,BUYER,FAX,TEXT,100,20,20,0,0,,"_s,
        u"DB,SHOP,/data,DISAM,,Corner Shop"_s,
        u"USER,GUEST,"_s,
        u"DBPRV,GUEST,STOCK,guest,secret,1,0,2,0,TABLE"_s,
        u"Accounts of the year 1998"_s,
    };
    QStringList guests;
    for (int i = 1; i <= 600; ++i)
        guests.append(u"USER,GUEST-%1,SECRET"_s.arg(i));
    QStringList many = faulty;
    for (int i = 1; i <= 200000; ++i)
        many.append(u"USER,GUEST-%1,SECRET"_s.arg(i));

    validate(writeLines(folder, u"warehouse.csv"_s, guests), [&](QWidget& dialog) {
        camera.take(dialog, u"validate-start"_s);
        dialog.close();
    });
    validate(writeLines(folder, u"warehouse.csv"_s, many), [&](QWidget& dialog) {
        pressActionUntil(dialog, u"Validating"_s, 40, [&] {
            camera.take(dialog, u"validate-stage-1"_s);
            dialog.findChild<QPushButton*>(u"cmdAction"_s)->click();
        });
        dialog.close();
    });
    validate(writeLines(folder, u"warehouse.csv"_s, many.mid(faulty.size())), [&](QWidget& dialog) {
        pressActionUntil(dialog, u"Validating"_s, 1, [&] { dialog.findChild<QPushButton*>(u"cmdAction"_s)->click(); });
        camera.take(dialog, u"validate-stopped"_s);
        dialog.close();
    });
    validate(writeLines(folder, u"warehouse.csv"_s, faulty), [&](QWidget& dialog) {
        pressAction(dialog, [] { return true; });
        camera.take(dialog, u"validate-findings"_s);
        auto* list = dialog.findChild<QAbstractItemView*>(u"lvwErr"_s);
        list->setCurrentIndex(list->model()->index(5, 0));
        takeModal(camera, u"validate-line"_s, [&] { emit list->doubleClicked(list->currentIndex()); });
        camera.take(dialog, u"validate-findings-current"_s);
        dialog.close();
    });
    validate(writeLines(folder, u"warehouse.csv"_s, {faulty[1], faulty[4]}), [&](QWidget& dialog) {
        pressActionUntilBox(dialog, camera, u"validate-warnings"_s);
        dialog.close();
    });
    validate(writeLines(folder, u"warehouse.csv"_s, guests), [&](QWidget& dialog) {
        pressActionUntil(dialog, u"Importing"_s, 40, [&] {
            camera.take(dialog, u"validate-stage-2"_s);
            QTimer::singleShot(0, [&dialog] { closeBox(dialog); });
        });
    });
    CConnections::instance()
        .Item(u"Warehouse"_s)
        ->db()
        ->Execute(u"DELETE FROM TW_USER WHERE USER_NAME LIKE 'GUEST-%'"_s);
}

/// Lets a statement fail and takes the form that reports it.
void takeErrorForm(Photographer& camera)
{
    QTimer::singleShot(0, [&] {
        QWidget* form = QApplication::activeModalWidget();
        if (!form)
            return;
        camera.take(*form, u"error"_s);
        for (auto* button : form->findChildren<QPushButton*>()) {
            if (button->text() == u"&Ignore"_s)
                button->click();
        }
    });
    const QString statement = u"SELECT FILE_NAME, RECORD_LENGTH FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s;
    Routine routine("frmFile.Display");
    routine.additional([&] { return statement; });
    routine.run([&] { CConnections::instance().Item(u"Ledger"_s)->db()->OpenRecordset(statement); });
}

void takeDatasourceWindow(mdiMain& window, Photographer& camera)
{
    QTimer::singleShot(0, [&] {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top != &window && top->isVisible() && top->isWindow()) {
                camera.take(*top, u"datasource-administrator"_s);
                top->close();
            }
        }
    });
    showDatasourceWindow(&window);
    QApplication::processEvents();
}

int takeAll(const QString& folder, bool dark, const QString& suffix)
{
    if (dark)
        QApplication::setPalette(darkPalette());
    registerShellPanes();
    registerFilesRoom();
    registerDatabasesRoom();
    registerUsersRoom();
    registerInterchangeRoom();
    registerMoveCopyRoom();
    Photographer camera(QDir(folder), suffix);
    mdiMain window({});
    window.MDIForm_Load();
    window.resize(900, 640);
    window.show();
    takePanes(window, camera);
    takeTree(window, camera);
    takeFiles(window, camera);
    takeDatabases(window, camera);
    takeUsers(window, camera);
    takeMoveCopy(window, camera);
    takeValidation(camera);
    takeMenus(window, camera);
    takeErrorForm(camera);
    takeDatasourceWindow(window, camera);
    window.close();
    return 0;
}

/// Runs this program again for each palette and scale, over sample catalogs of its own.
int takeEverything(const QString& program, const QString& folder)
{
    const QTemporaryDir samples;
    if (QProcess::execute(QStringLiteral(TARNWICK_SAMPLES), {samples.path()}) != 0)
        return 1;
    qputenv("ODBCSYSINI", samples.path().toUtf8());
    qputenv("ODBCINI", samples.filePath(u"odbc.ini"_s).toUtf8());
    qputenv("XDG_CONFIG_HOME", samples.path().toUtf8());
    for (const char* scale : {"1", "2"}) {
        qputenv("QT_SCALE_FACTOR", scale);
        for (const QString& palette : {u"light"_s, u"dark"_s}) {
            if (QProcess::execute(program, {folder, palette, u"-%1-%2x"_s.arg(palette, QLatin1String(scale))}) != 0)
                return 1;
        }
    }
    return 0;
}

} // namespace

/// quorvane-screenshots FOLDER
int main(int argc, char** argv)
{
    if (argc == 2) {
        QCoreApplication application(argc, argv);
        return takeEverything(QCoreApplication::applicationFilePath(), QString::fromLocal8Bit(argv[1]));
    }
    if (argc != 4) {
        std::fprintf(stderr, "usage: quorvane-screenshots FOLDER\n");
        return 2;
    }
    QApplication application(argc, argv);
    QApplication::setStyle(new WorkbenchStyle);
    return takeAll(QString::fromLocal8Bit(argv[1]), qstrcmp(argv[2], "dark") == 0, QString::fromLocal8Bit(argv[3]));
}
