#include "MainWindowFixture.h"
#include "XUser.h"

#include "CConnections.h"
#include "CellGrid.h"
#include "DragHandlers.h"
#include "FilesRoom.h"
#include "Form.h"
#include "MoveCopyRoom.h"
#include "PaneRegistry.h"
#include "Settings.h"
#include "modDragAndDrop.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace
{

constexpr int patience = 10'000;

bool until(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, patience);
}

QMenu* menuUp()
{
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

QMessageBox* boxUp()
{
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

/// Clicks the entry of the menu that is up.
void clickEntry(const QString& name)
{
    QMenu* menu = menuUp();
    xuser::click(*menu, menu->actionGeometry(menu->findChild<QAction*>(name)).center());
}

void answerNextBox(const QString& promptStart, QMessageBox::StandardButton button)
{
    xuser::when([=] { return boxUp() && boxUp()->isVisible() && boxUp()->text().startsWith(promptStart); },
                [=] { xuser::click(*boxUp()->button(button)); });
}

/// The question of a drop, once it can be clicked.
Form* questionUp()
{
    auto* form = dynamic_cast<Form*>(QApplication::activeModalWidget());
    const bool isThere =
        form && form->name() == u"frmMoveCopy"_s && form->windowHandle() && form->windowHandle()->isExposed();
    return isThere ? form : nullptr;
}

} // namespace

class EndToEnd : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        m_formerBoxes = ::boxes::setPresenter(nullptr);
    }

    void TearDown() override
    {
        ::boxes::setPresenter(m_formerBoxes);
        MainWindowTest::TearDown();
    }

    QWidget& viewport() { return *window->tvwExplorer().viewport(); }

    void expandWithTheMouse(const QString& key)
    {
        xuser::click(viewport(), expanderPosition(key));
        ASSERT_TRUE(until([&] { return node(key).Expanded(); })) << key.toStdString();
    }

private:
    ::boxes::Presenter* m_formerBoxes = nullptr;
};

/// Two datasources side by side: the second one has somewhere to drop upon.
class EndToEndDrag : public EndToEnd
{
protected:
    void SetUp() override
    {
        EndToEnd::SetUp();
        registerFilesRoom();
        registerMoveCopyRoom();
        other = datasource + u"Other"_s;
        world.addDatasource(other);
        start();
        window->setGeometry(0, 0, 1000, 980);
        for (const QString& side : {datasource, other})
            open(keyBelow(side, {u"FI"_s}));
        ASSERT_EQ(CConnections::instance().Count(), 2);
        // A special column has no field, which is warned of.
        world.run(datasource, u"DELETE FROM TW_COLUMN WHERE COLUMN_NAME = 'RFA'"_s);
        for (const QString& statement :
             {u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s,
              u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('DEPOT', 'PARTS', 'PAYROLL')"_s,
              u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('LEDGER')"_s})
            world.run(other, statement);
    }

    void TearDown() override
    {
        EndToEnd::TearDown();
        drags::setHandlers({});
        for (const char* pane : {"frmFile", "frmFiles", "frmField", "frmFields"})
            panes::remove(QLatin1String(pane));
    }

    QString there(const QStringList& steps) const { return keyBelow(other, steps); }

    /// Opens every node on the way to a node, and the node itself.
    void open(const QString& nodeKey)
    {
        for (qsizetype end = nodeKey.indexOf(':'_L1); end >= 0; end = nodeKey.indexOf(':'_L1, end + 1))
            node(nodeKey.left(end + 1)).setExpanded(true);
    }
    /// Opens the tree down to two nodes, and nothing else.
    void bringIntoView(const QString& from, const QString& to)
    {
        for (const QString& side : {datasource, other})
            node(keyBelow(side)).setExpanded(false);
        for (const QString& nodeKey : {from, to})
            open(nodeKey.left(nodeKey.lastIndexOf(':'_L1, -2) + 1));
    }
    /// Takes hold of a node and carries it over another one.
    void carry(const QString& from, const QString& to)
    {
        bringIntoView(from, to);
        TreeView& tree = window->tvwExplorer();
        const QPoint place = textPosition(from);
        xuser::press(viewport(), place);
        ASSERT_TRUE(until([&] { return selectedKey() == from && window->currentItem().Node == from; }));
        xuser::moveTo(viewport(), place + QPoint(3 * QApplication::startDragDistance(), 0));
        ASSERT_TRUE(until([&] { return tree.IsDragging(); })) << from.toStdString();
        xuser::moveTo(viewport(), textPosition(to));
        ASSERT_TRUE(until([&] { return tree.DropHighlight() == find(to); })) << to.toStdString();
        EXPECT_TRUE(modDragAndDrop::dropAllowed());
    }
    /// Drops one node on another and clicks an answer to the question.
    void drop(const QString& from, const QString& to, const QString& answer)
    {
        SCOPED_TRACE(from.toStdString());
        ASSERT_NO_FATAL_FAILURE(carry(from, to));
        bool isAnswered = false;
        xuser::when([] { return questionUp() != nullptr; },
                    [&isAnswered, answer] {
                        isAnswered = true;
                        xuser::click(*questionUp()->findChild<QPushButton*>(answer));
                    });
        xuser::release();
        ASSERT_TRUE(until([&] { return isAnswered && !window->isDragging() && statusText() == u"Ready"_s; }));
        EXPECT_FALSE(window->tvwExplorer().IsDragging());
        EXPECT_EQ(window->tvwExplorer().DropHighlight(), nullptr);
    }
    void copy(const QString& from, const QString& to) { drop(from, to, u"cmdCopy"_s); }
    void move(const QString& from, const QString& to) { drop(from, to, u"cmdMove"_s); }

    /// The rows of the tables that are edited, without what every catalog has, as "TW_USER CLERK||".
    QStringList rowsOf(const QString& side) const
    {
        QStringList all;
        for (const auto& [table, ofCatalog] : std::initializer_list<std::pair<const char*, const char*>>{
                 {"TW_FILE", "FILE_NAME NOT IN ('PAYROLL', 'EMPTY', 'LEDGER')"},
                 {"TW_FIELD", "FILE_NAME NOT IN ('PAYROLL', 'EMPTY', 'LEDGER')"},
                 {"TW_DB", "DATABASE_NAME = 'TW'"},
                 {"TW_TABLE", "DATABASE_NAME = 'TW'"},
                 {"TW_COLUMN", "DATABASE_NAME = 'TW'"},
                 {"TW_USER", "USER_NAME = 'ADMIN'"},
                 {"TW_DBPRV", "DATABASE_NAME = 'TW'"},
                 {"TW_TBLPRV", "DATABASE_NAME = 'TW'"}}) {
            const QString name = QLatin1String(table);
            for (const QStringList& row :
                 world.rows(side, u"SELECT * FROM %1 WHERE NOT (%2)"_s.arg(name, QLatin1String(ofCatalog))))
                all.append(name + ' '_L1 + row.join('|'_L1));
        }
        all.sort();
        return all;
    }
    QStringList fileNamesOnView() const
    {
        const auto* grid = window->currentPane()->findChild<CellGrid*>(u"grd"_s);
        QStringList all;
        for (int row = 0; row < grid->Rows(); ++row)
            all.append(grid->TextMatrix(row, 0));
        return all;
    }

    QString other;
};

TEST_F(EndToEnd, AnAdministratorBrowsesChangesOptionsClearsQuitsAndComesBack)
{
    start();
    ASSERT_TRUE(until([&] { return currentPane() == u"frmWelcome"_s; }));

    // Down to a column, level by level.
    const QString column = key({u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s, u"co=BUYER"_s});
    for (const QStringList& steps :
         {QStringList{}, QStringList{u"DB"_s}, QStringList{u"DB"_s, u"db=SALES"_s},
          QStringList{u"DB"_s, u"db=SALES"_s, u"TA"_s}, QStringList{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s},
          QStringList{u"DB"_s, u"db=SALES"_s, u"TA"_s, u"ta=ORDERS"_s, u"CO"_s}})
        expandWithTheMouse(key(steps));
    xuser::click(viewport(), textPosition(column));
    ASSERT_TRUE(until([&] { return node(column).Selected(); }));

    // A right click shows the menu of its node and leaves the selection.
    bool menuCame = false;
    xuser::when([] { return menuUp() != nullptr; },
                [&] {
                    menuCame = menuUp()->objectName() == u"mnu_User"_s;
                    xuser::type(*menuUp(), {u"Escape"_s});
                });
    xuser::click(viewport(), textPosition(key({u"US"_s})), Qt::RightButton);
    ASSERT_TRUE(until([&] { return menuCame && !menuUp(); }));
    EXPECT_TRUE(node(column).Selected());

    // The splitter gives the tree more room.
    QWidget& splitter = *window->findChild<QWidget*>(u"picSplitter"_s);
    const int formerWidth = window->tvwExplorer().width();
    const QPoint middle(splitter.width() / 2, splitter.height() / 2);
    xuser::drag(splitter, middle, middle + QPoint(60, 0));
    ASSERT_TRUE(until([&] { return window->tvwExplorer().width() == formerWidth + 60; }));

    // The options by keyboard; the system rows on by mouse.
    xuser::type(*window, {u"alt+v"_s, u"o"_s});
    ASSERT_TRUE(until([&] { return currentPane() == u"frmOptions"_s && !menuUp(); }));
    xuser::click(*window->findChild<QCheckBox*>(u"chkSysTable"_s), {8, 8});
    auto* ok = window->findChild<QPushButton*>(u"cmdOK"_s);
    ASSERT_TRUE(until([&] { return ok->isEnabled(); }));
    xuser::click(*ok);
    ASSERT_TRUE(until([&] { return CConnections::instance().Count() == 0; }));
    EXPECT_EQ(settings::getNumber(u"Options"_s, u"SysTables"_s, 0), 1);
    ASSERT_TRUE(until([&] { return currentPane() == u"frmWelcome"_s; }));

    expandWithTheMouse(key());
    expandWithTheMouse(key({u"FI"_s}));
    EXPECT_TRUE(node(key({u"FI"_s, u"fi=FIELD"_s})).Grey());

    // Clear Catalog from the context menu, through its question and its closing box.
    answerNextBox(u"WARNING"_s, QMessageBox::Yes);
    xuser::when([] { return menuUp() != nullptr; }, [] { clickEntry(u"mnu_DSNClear"_s); });
    bool closingBoxCame = false;
    xuser::when([] { return boxUp() && boxUp()->text() == u"The catalog has been cleared."_s; },
                [&] {
                    closingBoxCame = true;
                    xuser::click(*boxUp()->button(QMessageBox::Ok));
                });
    xuser::click(viewport(), textPosition(key()), Qt::RightButton);
    ASSERT_TRUE(until([&] { return closingBoxCame && !boxUp() && !menuUp(); }));
    EXPECT_EQ(world.value(datasource, u"SELECT COUNT(*) FROM TW_FILE WHERE FILE_NAME IN ('PAYROLL', 'EMPTY', 'KEY')"_s),
              u"0"_s);
    EXPECT_EQ(world.value(datasource, u"SELECT COUNT(*) FROM TW_DB"_s), u"1"_s);

    // Out by the keyboard, and back where it was.
    window->setGeometry(80, 60, 800, 640);
    ASSERT_TRUE(until([&] { return window->pos() == QPoint(80, 60) && window->size() == QSize(800, 640); }));
    const int treeWidth = window->tvwExplorer().width();
    xuser::type(*window, {u"alt+f"_s, u"x"_s});
    ASSERT_TRUE(until([&] { return !window->isVisible(); }));
    window.reset();

    start();
    EXPECT_EQ(window->pos(), QPoint(80, 60));
    EXPECT_EQ(window->size(), QSize(800, 640));
    EXPECT_EQ(window->tvwExplorer().width(), treeWidth);
    EXPECT_EQ(rootTexts(), QStringList{datasource});
}

TEST_F(EndToEndDrag, AnAdministratorCarriesOneThingOfEachKindToAnotherDatasource)
{
    const QStringList here = rowsOf(datasource);
    const QStringList there0 = rowsOf(other);
    const QStringList sales{u"DB"_s, u"db=SALES"_s};
    const QStringList orders = sales + QStringList{u"TA"_s, u"ta=ORDERS"_s};
    const QStringList depot{u"DB"_s, u"db=DEPOT"_s};
    const QStringList parts = depot + QStringList{u"TA"_s, u"ta=PARTS"_s};
    const auto rowsOfBoth = [&] { return rowsOf(datasource) + rowsOf(other); };

    // The files of the other datasource are on view.
    xuser::click(viewport(), textPosition(there({u"FI"_s})));
    ASSERT_TRUE(until([&] { return currentPane() == u"frmFiles"_s; }));
    EXPECT_FALSE(fileNamesOnView().contains(u"PAYROLL"_s));

    // A drag that the user thinks better of, with the button still down.
    ASSERT_NO_FATAL_FAILURE(carry(key({u"US"_s}), there({u"US"_s})));
    xuser::type(*window, {u"Escape"_s});
    ASSERT_TRUE(until([&] { return !window->isDragging() && !window->tvwExplorer().IsDragging(); }));
    EXPECT_EQ(window->tvwExplorer().DropHighlight(), nullptr);
    const TreeNode& users = node(key({u"US"_s}));
    xuser::release();
    ASSERT_TRUE(until([] { return QApplication::mouseButtons() == Qt::NoButton; }));
    EXPECT_EQ(rowsOfBoth(), here + there0);
    EXPECT_EQ(currentPane(), u"frmFiles"_s);
    EXPECT_TRUE(users.Selected());

    copy(key({u"FI"_s, u"fi=PAYROLL"_s}), there({u"FI"_s}));
    ASSERT_FALSE(HasFatalFailure());
    EXPECT_TRUE(fileNamesOnView().contains(u"PAYROLL"_s));
    copy(key({u"US"_s, u"us=CLERK"_s}), there({u"US"_s}));
    ASSERT_FALSE(HasFatalFailure());
    move(key({u"FI"_s, u"fi=PAYROLL"_s, u"FD"_s, u"fd=BONUS"_s}), there({u"FI"_s, u"fi=LEDGER"_s}));
    ASSERT_FALSE(HasFatalFailure());
    move(key(orders + QStringList{u"CO"_s, u"co=BUYER"_s}), there(parts));
    ASSERT_FALSE(HasFatalFailure());
    copy(key(orders + QStringList{u"TBLPRV"_s, u"tblprv=CLERK"_s}), there(parts));
    ASSERT_FALSE(HasFatalFailure());
    move(key(sales + QStringList{u"DBPRV"_s, u"dbprv=CLERK"_s}), there(depot));
    ASSERT_FALSE(HasFatalFailure());
    copy(key(orders), there(depot));
    ASSERT_FALSE(HasFatalFailure());
    move(key(sales), there({u"DB"_s}));
    ASSERT_FALSE(HasFatalFailure());

    const QString zeros = u"|0|0|0|0|0|0|0|0|0|0|0|0|||0|0|"_s;
    EXPECT_EQ(rowsOf(datasource),
              (QStringList{u"TW_FIELD PAYROLL|1|EMPLOYEE|CHARACTER|0|4|0|0|0|||"_s,
                           u"TW_FIELD PAYROLL|2|SALARY|CHARACTER|8|4|0|0|0|||"_s, u"TW_FILE EMPTY||0|RELATIVE|FIXED|"_s,
                           u"TW_FILE PAYROLL||12|INDEXED|FIXED|"_s, u"TW_USER CLERK||"_s}));
    EXPECT_EQ(rowsOf(other),
              (QStringList{u"TW_COLUMN DEPOT|ORDERS|2|AMOUNT|SALARY|"_s + zeros,
                           u"TW_COLUMN DEPOT|PARTS|1|BUYER|EMPLOYEE|"_s + zeros,
                           u"TW_COLUMN SALES|ORDERS|2|AMOUNT|SALARY|"_s + zeros, u"TW_DB DEPOT||||||"_s,
                           u"TW_DB SALES||DISAM||||"_s, u"TW_DBPRV CLERK|DEPOT|||0|0|0|0||"_s,
                           u"TW_FIELD LEDGER|3|BONUS|CHARACTER|4|4|0|0|0|||"_s,
                           u"TW_FIELD PAYROLL|1|EMPLOYEE|CHARACTER|0|4|0|0|0|||"_s,
                           u"TW_FIELD PAYROLL|2|SALARY|CHARACTER|8|4|0|0|0|||"_s,
                           u"TW_FIELD PAYROLL|3|BONUS|CHARACTER|4|4|0|0|0|||"_s, u"TW_FILE LEDGER||0|||"_s,
                           u"TW_FILE PAYROLL||12|INDEXED|FIXED|"_s, u"TW_TABLE DEPOT|ORDERS|TABLE|PAYROLL||0|||"_s,
                           u"TW_TABLE DEPOT|PARTS||PAYROLL||0|||"_s, u"TW_TABLE SALES|ORDERS|TABLE|PAYROLL||0|||"_s,
                           u"TW_TBLPRV DEPOT|ORDERS|CLERK|0|0|0|0|"_s, u"TW_TBLPRV DEPOT|PARTS|CLERK|0|0|0|0|"_s,
                           u"TW_TBLPRV SALES|ORDERS|CLERK|0|0|0|0|"_s, u"TW_USER CLERK||"_s}));
}
