#include "MainWindowFixture.h"

#include "CConnections.h"
#include "DBEngine.h"
#include "Database.h"
#include "PaneForm.h"
#include "Resources.h"
#include "ShellPanes.h"
#include "TreeModel.h"
#include "frmTWErr.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <stdexcept>

using namespace Qt::StringLiterals;

MainWindowTest::MainWindowTest()
{
    static int number = 0;
    datasource = u"Ledger%1"_s.arg(++number);
    initQuorvaneResources();
    registerShellPanes();
    outside.runs = false;
    world.addDatasource(datasource);
}

MainWindowTest::~MainWindowTest() = default;

void MainWindowTest::SetUp()
{
    seed();
    statements.clear();
}

void MainWindowTest::TearDown()
{
    window.reset();
    while (CConnections::instance().Count() > 0)
        CConnections::instance().Remove(1);
    EXPECT_TRUE(frmTWErr::CallStack().isEmpty()) << frmTWErr::CallStack().join('\n').toStdString();
    frmTWErr::Unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    errors.verify();
    boxes.verify();
    fileDialogs.verify();
}

void MainWindowTest::seed()
{
    const auto workspace = dao::DBEngine::CreateWorkspace({}, {}, {}, 1);
    const auto db = workspace->OpenDatabase({}, u"ODBC;DSN=%1;DATABASE=PUBS"_s.arg(datasource));
    for (const QString& statement : {
             u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE) "
             "VALUES ('PAYROLL', 12, 'INDEXED', 'FIXED')"_s,
             u"INSERT INTO TW_FILE (FILE_NAME, FILE_ORGANISATION, RECORD_TYPE) VALUES ('EMPTY', 'RELATIVE', 'FIXED')"_s,
             u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH) "
             "VALUES ('PAYROLL', 1, 'EMPLOYEE', 'CHARACTER', 0, 4)"_s,
             u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH) "
             "VALUES ('PAYROLL', 2, 'SALARY', 'CHARACTER', 8, 4)"_s,
             u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH) "
             "VALUES ('PAYROLL', 3, 'BONUS', 'CHARACTER', 4, 4)"_s,
             u"INSERT INTO TW_DB (DATABASE_NAME, DRIVER_NAME) VALUES ('SALES', 'DISAM')"_s,
             u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME) "
             "VALUES ('SALES', 'ORDERS', 'TABLE', 'PAYROLL')"_s,
             u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, COLUMN_TYPE) "
             "VALUES ('SALES', 'ORDERS', 2, 'AMOUNT', 'SALARY', 0)"_s,
             u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, COLUMN_TYPE) "
             "VALUES ('SALES', 'ORDERS', 1, 'BUYER', 'EMPLOYEE', 0)"_s,
             u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, COLUMN_TYPE) "
             "VALUES ('SALES', 'ORDERS', 1, 'RFA', 'RFA', 1)"_s,
             u"INSERT INTO TW_USER (USER_NAME) VALUES ('CLERK')"_s,
             u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('CLERK', 'SALES')"_s,
             u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('SALES', 'ORDERS', 'CLERK')"_s,
         })
        db->Execute(statement);
}

void MainWindowTest::start(const QStringList& commandLine)
{
    window = std::make_unique<mdiMain>(commandLine);
    window->MDIForm_Load();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
}

void MainWindowTest::quit()
{
    window->close();
    window.reset();
}

QString MainWindowTest::key(const QStringList& steps) const
{
    return keyBelow(datasource, steps);
}

QString MainWindowTest::keyBelow(const QString& datasource, const QStringList& steps)
{
    QString key = "DSN="_L1 + datasource + ':'_L1;
    QString owner = datasource;
    for (const QString& step : steps) {
        if (step.contains('='_L1))
            owner = step.section('='_L1, 1);
        key += (step.contains('='_L1) ? step : step + '='_L1 + owner) + ':'_L1;
    }
    return key;
}

TreeNode* MainWindowTest::find(const QString& key) const
{
    return window->tvwExplorer().Nodes().find(key);
}

TreeNode& MainWindowTest::node(const QString& key) const
{
    if (TreeNode* found = find(key))
        return *found;
    throw std::runtime_error("There is no node " + key.toStdString());
}

QStringList MainWindowTest::children(const QString& key) const
{
    QStringList texts;
    for (const TreeNode* child = node(key).Child(); child; child = child->Next())
        texts.append(child->Text());
    return texts;
}

QStringList MainWindowTest::rootTexts() const
{
    QStringList texts;
    for (const TreeNode* root = window->tvwExplorer().Nodes().Root(); root; root = root->Next())
        texts.append(root->Text());
    return texts;
}

QString MainWindowTest::line(const TreeNode& node) const
{
    const CNode& payload = window->nodes().Item(node);
    QString line = u"%1 \"%2\" %3"_s.arg(payload.NodeType(), node.Text(), node.Image());
    if (node.SelectedImage() != node.Image())
        line += " selected image "_L1 + node.SelectedImage();
    if (payload.NodeData() != node.Text())
        line += u" data \"%1\""_s.arg(payload.NodeData());
    const TreeNode* child = node.Child();
    if (child && !child->Next() && window->nodes().Item(*child).NodeType().isEmpty())
        line += " +"_L1;
    if (node.Grey())
        line += " grey"_L1;
    if (node.Bold())
        line += " bold"_L1;
    return line;
}

QStringList MainWindowTest::lines(const QString& key) const
{
    QStringList all;
    for (const TreeNode* child = node(key).Child(); child; child = child->Next())
        all.append(line(*child));
    return all;
}

QStringList MainWindowTest::wholeTree() const
{
    QStringList all;
    const std::function<void(const TreeNode*, int)> walk = [&](const TreeNode* node, int depth) {
        for (; node; node = node->Next()) {
            if (window->nodes().Item(*node).NodeType().isEmpty())
                continue;
            all.append(QString(2 * depth, ' '_L1) + line(*node) + (node->Expanded() ? " -"_L1 : ""_L1));
            walk(node->Child(), depth + 1);
        }
    };
    walk(window->tvwExplorer().Nodes().Root(), 0);
    return all;
}

QString MainWindowTest::selectedKey() const
{
    const TreeNode* selected = window->tvwExplorer().SelectedItem();
    return selected ? selected->Key() : QString();
}

void MainWindowTest::expectUnreachable(const ScriptedBoxes::Meanwhile& meanwhile)
{
    boxes.expect(u"Failed to connect for the following reason:\n"
                 "\n"
                 "Error: &H0\n"
                 "[Tarnwick][ODBC]Cannot create the catalog '%1/nowhere/catalog.db': No such file or directory\n"_s.arg(
                     world.folder()),
                 boxes::Icon::Exclamation, meanwhile);
}

void MainWindowTest::change(const QString& statement) const
{
    world.run(datasource, statement);
}

void MainWindowTest::addFile(const QString& file, int recordSize) const
{
    change(
        u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('%1', %2)"_s.arg(QString(file).replace('\''_L1, "''"_L1))
            .arg(recordSize));
}

void MainWindowTest::addField(const QString& file, const QString& name, int number, int offset, int length) const
{
    change(
        u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME, FIELD_NUMBER, OFFSET, LENGTH) VALUES ('%1', '%2', %3, %4, %5)"_s
            .arg(QString(file).replace('\''_L1, "''"_L1), QString(name).replace('\''_L1, "''"_L1))
            .arg(number)
            .arg(offset)
            .arg(length));
}

QStringList MainWindowTest::fieldsOf(const QString& file) const
{
    QStringList lines;
    for (const QStringList& row :
         world.rows(datasource, "SELECT FIELD_NAME, FIELD_NUMBER, OFFSET FROM TW_FIELD WHERE FILE_NAME = '"_L1 +
                                    QString(file).replace('\''_L1, "''"_L1) + "' ORDER BY FIELD_NUMBER, FIELD_NAME"_L1))
        lines.append(row.join(' '_L1));
    return lines;
}

QStringList MainWindowTest::stored(const QString& select) const
{
    QStringList lines;
    for (const QStringList& row : world.rows(datasource, select))
        lines.append(row.join('|'_L1));
    return lines;
}

QStringList MainWindowTest::sent() const
{
    // The statements of the levels: a name, and the order that the names come in.
    static const QRegularExpression level(
        u"^SELECT (FILE_NAME FROM TW_FILE (WHERE FILE_NAME NOT IN \\('CNTRL', .*)?ORDER BY FILE_NAME ASC"
        "|FIELD_NAME FROM TW_FIELD WHERE .* ORDER BY (FIELD_NAME|OFFSET) ASC"
        "|DATABASE_NAME FROM TW_DB (WHERE DATABASE_NAME <> 'TW' )?ORDER BY DATABASE_NAME ASC"
        "|TABLE_NAME FROM TW_TABLE WHERE .* ORDER BY TABLE_NAME ASC"
        "|COLUMN_NAME FROM TW_COLUMN WHERE .* AND COLUMN_TYPE = 0 ORDER BY COLUMN_NUMBER ASC"
        "|USER_NAME FROM TW_(USER|DBPRV|TBLPRV) .*ORDER BY USER_NAME( ASC| ))$"_s);
    QStringList own = statements.statements();
    own.removeIf([](const QString& statement) { return level.match(statement).hasMatch(); });
    return own;
}

void MainWindowTest::keepCatalog()
{
    while (CConnections::instance().Count() > 0)
        CConnections::instance().Remove(1);
    ASSERT_TRUE(QFile::copy(world.catalogFile(datasource), world.folder() + "/asItWas"_L1));
}

void MainWindowTest::beginAnew()
{
    if (window)
        window->FetchTreeviewRoot();
    else
        start();
    const QString file = world.catalogFile(datasource);
    for (const char* suffix : {"", "-wal", "-shm"})
        QFile::remove(file + QLatin1String(suffix));
    ASSERT_TRUE(QFile::copy(world.folder() + "/asItWas"_L1, file));
}

QStringList MainWindowTest::wholeCatalog() const
{
    QStringList all;
    for (const char* table :
         {"TW_FILE", "TW_FIELD", "TW_DB", "TW_TABLE", "TW_COLUMN", "TW_USER", "TW_DBPRV", "TW_TBLPRV"}) {
        const QString name = QLatin1String(table);
        for (const QStringList& row : world.rows(datasource, u"SELECT * FROM %1"_s.arg(name)))
            all.append(name + ' '_L1 + row.join('|'_L1));
    }
    all.sort();
    return all;
}

QRect MainWindowTest::rowOf(const QString& key) const
{
    TreeView& tree = window->tvwExplorer();
    const QModelIndex index = static_cast<TreeModel*>(tree.model())->indexOf(node(key));
    tree.scrollTo(index);
    // The expander left of the row is to be in sight too.
    if (const int left = tree.visualRect(index).left() - tree.indentation(); left < 0)
        tree.horizontalScrollBar()->setValue(tree.horizontalScrollBar()->value() + left);
    return tree.visualRect(index);
}

QPoint MainWindowTest::textPosition(const QString& key) const
{
    const QRect row = rowOf(key);
    return {row.left() + 24, row.center().y()};
}

QPoint MainWindowTest::expanderPosition(const QString& key) const
{
    const QRect row = rowOf(key);
    return {row.left() - window->tvwExplorer().indentation() / 2, row.center().y()};
}

void MainWindowTest::clickExpander(const QString& key)
{
    QTest::mouseClick(window->tvwExplorer().viewport(), Qt::LeftButton, {}, expanderPosition(key));
}

void MainWindowTest::click(const QString& key, Qt::MouseButton button)
{
    QTest::mouseClick(window->tvwExplorer().viewport(), button, {}, textPosition(key));
}

void MainWindowTest::press(const QString& key, Qt::MouseButton button)
{
    QTest::mousePress(window->tvwExplorer().viewport(), button, {}, textPosition(key));
}

void MainWindowTest::move(QPoint position, Qt::MouseButtons buttons)
{
    QWidget* viewport = window->tvwExplorer().viewport();
    QMouseEvent event(QEvent::MouseMove, position, viewport->mapToGlobal(position), Qt::NoButton, buttons, {});
    QCoreApplication::sendEvent(viewport, &event);
}

void MainWindowTest::release(QPoint position, Qt::MouseButton button)
{
    QTest::mouseRelease(window->tvwExplorer().viewport(), button, {}, position);
}

void MainWindowTest::type(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(&window->tvwExplorer(), key, modifiers);
}

void MainWindowTest::expandTo(const QString& key)
{
    for (qsizetype end = key.indexOf(':'_L1); end >= 0; end = key.indexOf(':'_L1, end + 1)) {
        const QString prefix = key.left(end + 1);
        if (node(prefix).Child() && !node(prefix).Expanded())
            clickExpander(prefix);
    }
}

bool MainWindowTest::rightClickAt(QPoint position, const std::function<void(QMenu&)>& meanwhile)
{
    bool came = false;
    QTimer::singleShot(0, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        came = true;
        if (meanwhile)
            meanwhile(*menu);
        menu->close();
    });
    QTest::mouseClick(window->tvwExplorer().viewport(), Qt::RightButton, {}, position);
    QCoreApplication::processEvents();
    return came;
}

bool MainWindowTest::rightClick(const QString& key, const std::function<void(QMenu&)>& meanwhile)
{
    return rightClickAt(textPosition(key), meanwhile);
}

bool MainWindowTest::rightClickEmptySpace()
{
    const QRect area = window->tvwExplorer().viewport()->rect();
    return rightClickAt({area.width() / 2, area.bottom() - 2}, {});
}

void MainWindowTest::choose(const QString& key, const QString& menuItem)
{
    const bool came = rightClick(key, [&](QMenu& menu) {
        auto* action = menu.findChild<QAction*>(menuItem);
        ASSERT_TRUE(action && action->isVisible()) << menuItem.toStdString();
        QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
    });
    EXPECT_TRUE(came) << "no menu for " << key.toStdString();
}

QStringList MainWindowTest::menuOf(const QString& key)
{
    QStringList shown;
    rightClick(key, [&](QMenu& menu) {
        for (const QAction* action : menu.actions()) {
            if (action->isVisible())
                shown.append(action->objectName());
        }
    });
    return shown;
}

void MainWindowTest::chooseInBar(const QString& menuItem)
{
    auto* action = window->findChild<QAction*>(menuItem);
    ASSERT_TRUE(action) << menuItem.toStdString();
    QMenu* menu = nullptr;
    for (const QAction* title : window->menuBar()->actions()) {
        if (title->menu()->actions().contains(action))
            menu = title->menu();
    }
    ASSERT_TRUE(menu) << menuItem.toStdString() << " is in no menu of the bar";
    menu->popup(window->mapToGlobal(QPoint(0, 0)));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
}

QString MainWindowTest::currentPane() const
{
    const Form* pane = window->currentPane();
    return pane ? pane->name() : QString();
}

QString MainWindowTest::statusText() const
{
    return window->findChild<QLabel*>(u"Status"_s)->text();
}

QString MainWindowTest::paneTitle() const
{
    const auto* pane = dynamic_cast<const PaneForm*>(window->currentPane());
    return pane ? pane->lblTitle()->text() : QString();
}
