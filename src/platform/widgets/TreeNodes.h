#pragma once

#include "TreeNode.h"

/// All nodes of a tree, found by key.
class TreeNodes
{
public:
    TreeNodes(const TreeNodes&) = delete;
    TreeNodes& operator=(const TreeNodes&) = delete;

    /// How a node is found by its key. An index costs time and memory that half of a large tree, nodes that stand in
    /// for what is not read yet, can do without: nobody asks for them.
    enum class FoundBy : bool { index, walk };

    /// Adds a node behind the last child of `parent`, or behind the last root without one. Raises 457 for a key that is
    /// in the index already.
    TreeNode& Add(TreeNode* parent, const QString& key, const QString& text, const QString& image = {},
                  const QString& selectedImage = {}, FoundBy foundBy = FoundBy::index);
    /// The node of a key in the index. Raises 5 for an unknown one.
    TreeNode& Item(const QString& key) const;
    /// The node of a key in the index, or null.
    TreeNode* find(const QString& key) const;
    /// The node of a key that is not in the index, or null, by a walk through the tree.
    TreeNode* findByWalk(const QString& key) const;
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
