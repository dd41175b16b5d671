#pragma once

#include "TreeView.h"

#include <QApplication>
#include <QStringList>
#include <QTest>

#include <gtest/gtest.h>

/// A tree on screen, the events that it raised as text, and the hands of a user.
class TreeFixture : public testing::Test
{
protected:
    TreeFixture()
    {
        tree.resize(320, 480);
        QObject::connect(&tree, &TreeView::Expand, &tree, [this](TreeNode* node) { log << "expand " + node->Key(); });
        QObject::connect(&tree, &TreeView::Collapse, &tree,
                         [this](TreeNode* node) { log << "collapse " + node->Key(); });
    }

    void show()
    {
        tree.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&tree));
        tree.activateWindow();
        tree.setFocus();
        tree.setSelectedItem(nullptr);
        log.clear();
    }

    TreeNodes& nodes() { return tree.Nodes(); }
    TreeNode& add(TreeNode* parent, const QString& key) { return nodes().Add(parent, key, key); }

    /// "a" with the children "a1" to "a3", and "b".
    void addSmallTree()
    {
        TreeNode& a = add(nullptr, "a");
        for (const char* key : {"a1", "a2", "a3"})
            add(&a, key);
        add(nullptr, "b");
    }

    /// Answers expansion as the explorer does: the level goes and is read anew; a collapsed node keeps a placeholder.
    void fillOnExpand(int count)
    {
        QObject::connect(&tree, &TreeView::Expand, &tree, [this, count](TreeNode* node) {
            TreeView::RedrawOff off(tree);
            nodes().RemoveChildren(*node);
            for (int i = 0; i < count; ++i)
                add(node, node->Key() + "." + QString::number(i));
        });
        QObject::connect(&tree, &TreeView::Collapse, &tree, [this](TreeNode* node) {
            TreeView::RedrawOff off(tree);
            nodes().RemoveChildren(*node);
            addPlaceholder(*node);
        });
    }
    void addPlaceholder(TreeNode& node) { nodes().Add(&node, QString("K%1").arg(++placeholders), {}); }

    /// The texts of all rows, in sight or not.
    QStringList rows() const
    {
        QStringList texts;
        for (QModelIndex index = tree.model()->index(0, 0); index.isValid(); index = tree.indexBelow(index))
            texts << index.data().toString();
        return texts;
    }

    /// A node's row, from where its name begins; empty when a closed node hides it.
    QRect rowOf(const TreeNode& node) const
    {
        for (QModelIndex index = tree.model()->index(0, 0); index.isValid(); index = tree.indexBelow(index)) {
            if (index.data().toString() == node.Text())
                return tree.visualRect(index);
        }
        return {};
    }
    bool isInSight(const TreeNode& node) const
    {
        const QRect row = rowOf(node);
        return row.isValid() && row.top() >= 0 && row.bottom() < tree.viewport()->height();
    }
    QPoint nameOf(const TreeNode& node) const
    {
        const QRect row = rowOf(node);
        EXPECT_TRUE(row.isValid()) << qPrintable(node.Key()) << " is not in sight";
        return QPoint(row.left() + 10, row.center().y());
    }
    QPoint expanderOf(const TreeNode& node) const
    {
        const QRect row = rowOf(node);
        EXPECT_TRUE(row.isValid()) << qPrintable(node.Key()) << " is not in sight";
        return QPoint(row.left() - tree.indentation() / 2, row.center().y());
    }
    void click(QPoint place, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(tree.viewport(), button, {}, place);
    }
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&tree, key, modifiers); }

    TreeView tree;
    QStringList log;
    int placeholders = 0;
};
