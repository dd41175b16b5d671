#pragma once

#include "TreeNode.h"

#include <QString>

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

class TreeView;

/// What a node of the tree stands for. It belongs to the tree node of its key; one whose tree node went with its parent
/// stays behind in CNodes.
class CNode : public TreePayload
{
public:
    QString Key;

    const QString& NodeType() const { return m_nodeType; }
    void setNodeType(const QString& type) { m_nodeType = type; }
    /// The name that the node stands for; for a collection the name of its owner.
    const QString& NodeData() const { return m_nodeData; }
    void setNodeData(const QString& data) { m_nodeData = data; }

private:
    friend class CNodes;
    TreeNode* m_treeNode = nullptr;
    QString m_nodeType;
    QString m_nodeData;
    std::uint32_t m_sequence = 0;
};

/// The payloads of the tree's nodes by key, kept in step with the tree control. A key is the chain of all ancestors,
/// each as type, "=", data, ":". Placeholders, which give an unread node its expander, have keys of "K" and a number.
class CNodes
{
public:
    CNodes();
    ~CNodes();
    CNodes(const CNodes&) = delete;
    CNodes& operator=(const CNodes&) = delete;

    TreeView* Treeview() const { return m_tree; }
    void setTreeview(TreeView* tree) { m_tree = tree; }

    /// Adds a node as the last child of `relative`, or as a root without one. A key that is already there is reported
    /// under "CNodes.Add"; the result is then null.
    CNode* add(TreeNode* relative, const QString& type, const QString& data, const QString& text,
               const QString& image = {}, const QString& selectedImage = {});
    CNode* add(const CNode& relative, const QString& type, const QString& data, const QString& text,
               const QString& image = {}, const QString& selectedImage = {});
    /// Adds a placeholder below a node.
    void addPlaceholder(TreeNode& node);

    /// The tree node of a payload, or null for one that was left behind.
    static TreeNode* treeNode(const CNode& node) { return node.m_treeNode; }

    /// The payload of a key, or of a tree node. Raises 5 for an unknown one.
    CNode& Item(const QString& key) const;
    CNode& Item(const TreeNode& node) const;
    /// The same, or null.
    CNode* find(const QString& key) const;
    int Count() const;
    /// All payloads in the order in which they were added.
    std::vector<CNode*> NewEnum() const;

    /// Removes a node and its subtree; never reports.
    void Remove(const CNode& node);
    /// The same by key, but for the last child: it leaves the tree with its parent, and its payload stays behind.
    void Remove(const QString& key);
    /// Removes all children of a node and their subtrees.
    void RemoveChildren(TreeNode& node);
    void Clear();

    /// The payload of the tree's selected node, or null.
    CNode* SelectedItem() const;
    void setSelectedItem(const CNode& node);

    /// Re-keys one node in place. Its children keep their keys until they are read anew.
    void ChangeKey(const QString& oldKey, const QString& newKey);

    /// Reads a node and everything below it anew, and shows it expanded.
    void ExpandChildren(const CNode& node);

private:
    class FrameByFrame;

    void expandSubtree(const CNode& node, FrameByFrame& redraw);
    TreeNode* shownNode(const QString& key) const;
    void leaveBehind(TreeNode& node);

    TreeView* m_tree = nullptr;
    /// The payloads whose tree nodes have gone without them.
    std::map<QString, std::unique_ptr<CNode>> m_leftBehind;
    quint64 m_placeholders = 0;
    std::uint32_t m_sequence = 0;
};
