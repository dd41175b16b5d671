#pragma once

#include "CatalogFixture.h"
#include "QtPrinting.h"
#include "RecordingOutside.h"
#include "ScriptedBoxes.h"
#include "ScriptedErrorForm.h"
#include "ScriptedFileDialogs.h"
#include "StatementRecorder.h"
#include "TemporarySettings.h"
#include "TreeView.h"
#include "mdiMain.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

/// The real main window, off-screen, on the real driver manager: one datasource of the family with a small catalog,
/// `datasource`, and the script of boxes, error forms and file dialogs that stand in for the user.
///
/// The catalog: file PAYROLL with fields EMPLOYEE (offset 0), SALARY (8) and BONUS (4); file EMPTY without any;
/// database SALES with table ORDERS of file PAYROLL, columns AMOUNT (number 2) and BUYER (1) and the special column
/// RFA; user CLERK with rights on both.
class MainWindowTest : public testing::Test
{
protected:
    MainWindowTest();
    ~MainWindowTest() override;

    void SetUp() override;
    void TearDown() override;

    /// Starts the program's window; the words are those of the command line.
    void start(const QStringList& commandLine = {});
    /// Closes it as the user does, by the title bar.
    void quit();

    /// The key of the node at a path of its types and names behind the datasource: key({"FI", "fi=PAYROLL"}).
    QString key(const QStringList& steps = {}) const;
    /// The same below another datasource.
    static QString keyBelow(const QString& datasource, const QStringList& steps = {});
    TreeNode* find(const QString& key) const;
    /// The node of a key; fails the test and throws where there is none.
    TreeNode& node(const QString& key) const;
    /// The texts of a node's children in order.
    QStringList children(const QString& key) const;
    QStringList rootTexts() const;
    /// A node as one line: type, text, image, and what marks it: "data" where that is not the text, "selected image"
    /// where that is not the image, "+" for a placeholder alone below it, "grey", "bold". As: fi "PAYROLL" File +
    QString line(const TreeNode& node) const;
    /// The lines of a node's children in order.
    QStringList lines(const QString& key) const;
    /// The whole tree, each line indented by its depth; "-" marks what is open.
    QStringList wholeTree() const;
    QString selectedKey() const;

    /// The next box is what connecting to an unreachable datasource of `world` ends in.
    void expectUnreachable(const ScriptedBoxes::Meanwhile& meanwhile = {});
    /// Changes the catalog behind the program's back.
    void change(const QString& statement) const;
    void addFile(const QString& file, int recordSize) const;
    void addField(const QString& file, const QString& name, int number, int offset, int length) const;
    /// The fields of a file in the order of their numbers, each as "EMPLOYEE 1 0": name, number, offset.
    QStringList fieldsOf(const QString& file) const;
    /// The rows of a SELECT as lines, read past the driver.
    QStringList stored(const QString& select) const;
    /// What the program has sent since the statements were cleared, without what fills the tree.
    QStringList sent() const;
    /// Puts the catalog aside, and brings it back with nothing connected and the tree closed.
    void keepCatalog();
    void beginAnew();
    /// All rows of the eight tables that are edited, each behind the name of its table.
    QStringList wholeCatalog() const;

    /// Expands by a real click on the expander of the node's row.
    void clickExpander(const QString& key);
    /// A real click on the text of the node's row.
    void click(const QString& key, Qt::MouseButton button = Qt::LeftButton);
    /// Expands every node on the way to a node, and the node itself, by clicks on expanders.
    void expandTo(const QString& key);

    /// The first and the last half of a click, and what lies between.
    void press(const QString& key, Qt::MouseButton button = Qt::LeftButton);
    void move(QPoint position, Qt::MouseButtons buttons);
    void release(QPoint position, Qt::MouseButton button = Qt::LeftButton);
    /// A key, typed into the tree.
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Where a node's text, or its expander, is within the tree's viewport.
    QPoint textPosition(const QString& key) const;
    QPoint expanderPosition(const QString& key) const;

    /// Right-clicks the node. `meanwhile` runs while the menu is up; the menu is closed afterwards if it still is.
    /// Returns whether a menu came up.
    bool rightClick(const QString& key, const std::function<void(QMenu&)>& meanwhile = {});
    /// The same on empty space below the last row.
    bool rightClickEmptySpace();
    /// Right-clicks the node and clicks an entry of the menu.
    void choose(const QString& key, const QString& menuItem);
    /// The names of the entries that the node's menu shows, in order, separators included; empty without a menu.
    QStringList menuOf(const QString& key);

    /// Pulls down the entry's menu of the bar and clicks it.
    void chooseInBar(const QString& menuItem);

    QString currentPane() const;
    QString statusText() const;
    QString paneTitle() const;

    CatalogFixture world;
    TemporarySettings settingsFolder;
    ScriptedBoxes boxes;
    ScriptedFileDialogs fileDialogs;
    RecordingOutside outside;
    ScriptedErrorForm errors;
    StatementRecorder statements;
    QString datasource;
    std::unique_ptr<mdiMain> window;

private:
    QRect rowOf(const QString& key) const;
    bool rightClickAt(QPoint position, const std::function<void(QMenu&)>& meanwhile);
    void seed();
};
