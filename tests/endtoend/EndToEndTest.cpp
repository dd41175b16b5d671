#include "MainWindowFixture.h"
#include "XUser.h"

#include "CConnections.h"
#include "Settings.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

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
