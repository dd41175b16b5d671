#pragma once

#include "TreeNode.h"

/// All nodes of a tree, found by key.
class TreeNodes
{
public:
    TreeNodes(const TreeNodes&) = delete;
    TreeNodes& operator=(const TreeNodes&) = delete;

    /// Adds a node behind the last child of `parent`, or behind the last root without one. Raises 457 for a key that is
    /// already there.
    TreeNode& Add(TreeNode* parent, const QString& key, const QString& text, const QString& image = {},
                  const QString& selectedImage = {});
    /// The node of a key. Raises 5 for an unknown one.
    TreeNode& Item(const QString& key) const;
    /// The node of a key, or null.
    TreeNode* find(const QString& key) const;
    /// The first root node, or null; its siblings follow by Next.
    TreeNode* Root() const;
    /// Removes a node and its subtree. A selection inside moves to the parent; that of a root moves to its next
    /// sibling, or else the one before it.
    void Remove(TreeNode& node);
    /// Removes all children of a node, with their subtrees, in one change. A selection inside moves to the node.
    void RemoveChildren(TreeNode& node);
    void Clear();
    /// All nodes of the tree.
    int Count() const;

private:
    friend class TreeModel;
    explicit TreeNodes(TreeModel& model) : m_model(model) {}

    TreeModel& m_model;
};
