#include "TreeFixture.h"

#include <functional>
#include <memory>
#include <vector>

namespace
{

/// What handlers of the tree's events may do to the tree that raised them.
class TreeHandlersTest : public TreeFixture
{
protected:
    TreeHandlersTest()
    {
        addSmallTree();
        add(&nodes().Item("b"), "b1");
    }

    void onExpand(std::function<void(TreeNode*)> handler)
    {
        QObject::connect(&tree, &TreeView::Expand, &tree, std::move(handler));
    }
    void onCollapse(std::function<void(TreeNode*)> handler)
    {
        QObject::connect(&tree, &TreeView::Collapse, &tree, std::move(handler));
    }

    /// Every way in which a user or code expands "a".
    void expandInEveryWay(const std::function<void()>& check)
    {
        const std::vector<std::function<void()>> ways{
            [&] { nodes().Item("a").setExpanded(true); },
            [&] { click(expanderOf(nodes().Item("a"))); },
            [&] { QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, nameOf(nodes().Item("a"))); },
            [&] {
                tree.setSelectedItem(nodes().find("a"));
                type(Qt::Key_Right);
            },
            [&] {
                tree.setSelectedItem(nodes().find("a"));
                type(Qt::Key_Plus);
            },
            [&] { nodes().Item("a2").EnsureVisible(); },
            [&] { tree.setSelectedItem(nodes().find("a2")); },
            [&] { tree.expand(tree.model()->index(0, 0)); },
        };
        for (std::size_t way = 0; way < ways.size(); ++way) {
            SCOPED_TRACE(way);
            nodes().Clear();
            addSmallTree();
            add(&nodes().Item("b"), "b1");
            log.clear();
            ways[way]();
            check();
            QApplication::processEvents();
        }
    }
};

TEST_F(TreeHandlersTest, ExpandingIsUndoneWithinItsOwnEvent)
{
    show();
    onExpand([&](TreeNode* node) { node->setExpanded(false); });
    expandInEveryWay([&] {
        EXPECT_FALSE(nodes().Item("a").Expanded());
        EXPECT_EQ(log, QStringList({"expand a", "collapse a"}));
        EXPECT_EQ(rows(), QStringList({"a", "b"}));
    });
}

TEST_F(TreeHandlersTest, AFailedExpansionIsUndoneAndAPlaceholderPutBack)
{
    show();
    onExpand([&](TreeNode* node) {
        TreeView::RedrawOff off(tree);
        nodes().RemoveChildren(*node);
        off.end();
        node->setSelected(true);
        TreeView::RedrawOff again(tree);
        node->setExpanded(false);
        addPlaceholder(*node);
    });
    expandInEveryWay([&] {
        EXPECT_FALSE(nodes().Item("a").Expanded());
        EXPECT_EQ(nodes().Item("a").Children(), 1);
        EXPECT_EQ(log, QStringList({"expand a"}));
        EXPECT_EQ(rows(), QStringList({"a", "b"}));
    });
}

TEST_F(TreeHandlersTest, TheLevelIsReadAnew)
{
    show();
    onExpand([&](TreeNode* node) {
        TreeView::RedrawOff off(tree);
        nodes().RemoveChildren(*node);
        for (const char* key : {"n1", "n2"})
            add(node, key);
    });
    expandInEveryWay([&] {
        EXPECT_TRUE(nodes().Item("a").Expanded());
        EXPECT_EQ(rows(), QStringList({"a", "n1", "n2", "b"}));
    });
}

TEST_F(TreeHandlersTest, TheExpandedNodeIsRemoved)
{
    show();
    onExpand([&](TreeNode* node) { nodes().Remove(*node); });
    expandInEveryWay([&] {
        EXPECT_EQ(log, QStringList({"expand a"}));
        EXPECT_EQ(rows(), QStringList({"b"}));
    });
}

TEST_F(TreeHandlersTest, TheTreeIsCleared)
{
    show();
    onExpand([&](TreeNode*) { nodes().Clear(); });
    expandInEveryWay([&] {
        EXPECT_EQ(nodes().Count(), 0);
        EXPECT_EQ(tree.SelectedItem(), nullptr);
        EXPECT_EQ(rows(), QStringList());
    });
}

TEST_F(TreeHandlersTest, OtherNodesAreRemovedWithRedrawOff)
{
    show();
    onExpand([&](TreeNode*) {
        TreeView::RedrawOff off(tree);
        nodes().Remove(nodes().Item("b"));
        nodes().Remove(nodes().Item("a1"));
    });
    expandInEveryWay([&] { EXPECT_EQ(rows(), QStringList({"a", "a2", "a3"})); });
}

TEST_F(TreeHandlersTest, EventsRunAndTheUserClicksAway)
{
    show();
    onExpand([&](TreeNode* node) {
        if (node->Key() != "a")
            return;
        {
            TreeView::RedrawOff off(tree);
            nodes().RemoveChildren(*node);
            QApplication::processEvents();
            click(QPoint(60, 36));
            add(node, "n1");
        }
        QApplication::processEvents();
        click(expanderOf(nodes().Item("b")));
        click(nameOf(nodes().Item("b1")));
    });
    expandInEveryWay([&] {
        EXPECT_EQ(rows(), QStringList({"a", "n1", "b", "b1"}));
        EXPECT_EQ(tree.SelectedItem()->Key(), "b1");
        EXPECT_EQ(log, QStringList({"expand a", "expand b"}));
    });
}

TEST_F(TreeHandlersTest, TheCollapsedNodeIsRemovedOrTheTreeCleared)
{
    show();
    for (const bool clear : {false, true}) {
        nodes().Clear();
        addSmallTree();
        nodes().Item("a").setExpanded(true);
        tree.setSelectedItem(nodes().find("a2"));
        QMetaObject::Connection handler = QObject::connect(&tree, &TreeView::Collapse, &tree, [&](TreeNode* node) {
            if (clear)
                nodes().Clear();
            else
                nodes().Remove(*node);
        });
        click(expanderOf(nodes().Item("a")));
        EXPECT_EQ(rows(), clear ? QStringList() : QStringList({"b"}));
        QObject::disconnect(handler);
    }
}

TEST_F(TreeHandlersTest, CollapsingIsUndoneWithinItsOwnEvent)
{
    show();
    nodes().Item("a").setExpanded(true);
    log.clear();
    onCollapse([&](TreeNode* node) { node->setExpanded(true); });
    click(expanderOf(nodes().Item("a")));
    EXPECT_EQ(log, QStringList({"collapse a", "expand a"}));
    EXPECT_EQ(rows(), QStringList({"a", "a1", "a2", "a3", "b"}));
}

TEST_F(TreeHandlersTest, TheTreeIsClearedByTheMouseEvents)
{
    show();
    QObject::connect(&tree, &TreeView::MouseDown, &tree, [&] { nodes().Clear(); });
    click(expanderOf(nodes().Item("a")));
    EXPECT_EQ(nodes().Count(), 0);
    EXPECT_EQ(tree.SelectedItem(), nullptr);
    EXPECT_EQ(log, QStringList());
}

TEST_F(TreeHandlersTest, RowsAndNodesAgreeAtEveryEvent)
{
    show();
    int events = 0;
    const auto check = [&](TreeNode*) {
        ++events;
        const auto& model = *tree.model();
        int row = 0;
        for (TreeNode* node = nodes().Root(); node; node = node->Next(), ++row) {
            EXPECT_EQ(model.index(row, 0).data().toString(), node->Text());
            EXPECT_EQ(model.rowCount(model.index(row, 0)), node->Children());
        }
        EXPECT_EQ(model.rowCount(), row);
    };
    onExpand(check);
    onCollapse(check);
    nodes().Item("a").setExpanded(true);
    nodes().Item("b").setExpanded(true);
    nodes().Item("a").setExpanded(false);
    EXPECT_EQ(events, 3);
}

TEST(TreeHandlers, TheTreeItselfIsDestroyed)
{
    auto tree = std::make_unique<TreeView>();
    TreeNode& node = tree->Nodes().Add(nullptr, "a", "a");
    tree->Nodes().Add(&node, "a1", "a1");
    const TreeNodeRef reference(&node);
    QObject::connect(tree.get(), &TreeView::Expand, [&tree] { tree.reset(); });
    {
        const TreeView::RedrawOff off(*tree);
        node.setExpanded(true);
    }
    EXPECT_FALSE(tree);
    EXPECT_FALSE(reference);
}

} // namespace
