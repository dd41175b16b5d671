#pragma once

#include <QString>
#include <QTreeView>

#include <cstdint>
#include <memory>
#include <vector>

class TreeModel;
class TreeNodes;
class TreeView;

/// A node of the tree control. The tree owns it; it lives until it is removed.
class TreeNode
{
public:
    ~TreeNode();
    TreeNode(const TreeNode&) = delete;
    TreeNode& operator=(const TreeNode&) = delete;

    const QString& Key() const { return m_key; }
    /// Re-keys the node in place. Raises 457 when another node has that key.
    void setKey(const QString& key);

    const QString& Text() const { return m_text; }
    void setText(const QString& text);

    /// Image keys (see Icons); empty for none. The selected image shows while the node is selected.
    const QString& Image() const;
    void setImage(const QString& image);
    const QString& SelectedImage() const;
    void setSelectedImage(const QString& image);

    TreeNode* Parent() const { return m_parent; }
    /// The first child, or null.
    TreeNode* Child() const;
    /// The next sibling, or null.
    TreeNode* Next() const;
    int Children() const;

    bool Expanded() const { return m_expanded; }
    /// A change raises the tree's Expand or Collapse as a click does. No effect, and no event, on a node without
    /// children or on one that is in that state.
    void setExpanded(bool expanded);

    bool Selected() const;
    /// Makes the node the tree's one selected node, or clears the selection if it was.
    void setSelected(bool selected);

    /// Text in the desktop's colour for disabled text.
    bool Grey() const { return m_grey; }
    void setGrey(bool grey);
    bool Bold() const { return m_bold; }
    void setBold(bool bold);

    /// Expands the ancestors (raising Expand for each) and scrolls to the node.
    void EnsureVisible();

private:
    friend class TreeModel;
    friend class TreeNodes;
    friend class TreeView;
    TreeNode() = default;

    TreeView* m_view = nullptr;
    TreeNode* m_parent = nullptr;
    std::vector<std::unique_ptr<TreeNode>> m_children;
    QString m_key;
    QString m_text;
    std::uint32_t m_row = 0;
    std::uint16_t m_image = 0;
    std::uint16_t m_selectedImage = 0;
    bool m_expanded = false;
    bool m_grey = false;
    bool m_bold = false;
};

/// All nodes of a tree, found by key.
class TreeNodes
{
public:
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
    /// Removes a node and its subtree. A selection inside moves to the parent.
    void Remove(TreeNode& node);
    /// Removes all children of a node, with their subtrees, in one change.
    void RemoveChildren(TreeNode& node);
    void Clear();
    /// All nodes of the tree.
    int Count() const;
};

/// The explorer's tree: keyed nodes over a compact model, filled a level at a time in one insertion.
class TreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit TreeView(QWidget* parent = nullptr);
    ~TreeView() override;

    TreeNodes& Nodes();

    TreeNode* SelectedItem() const;
    /// Null clears the selection.
    void setSelectedItem(TreeNode* node);

    /// The node whose row, expander included, lies at a position of the viewport; null on empty space.
    TreeNode* HitTest(QPoint position) const;

    /// While one lives the tree shows its former state; at the end of the outermost one it shows all changes at once.
    class RedrawOff
    {
    public:
        explicit RedrawOff(TreeView& tree);
        ~RedrawOff();
        RedrawOff(const RedrawOff&) = delete;
        RedrawOff& operator=(const RedrawOff&) = delete;

        /// Shows the changes now; the end of the scope then does nothing.
        void end();

    private:
        TreeView* m_tree;
    };

signals:
    /// The node has been expanded (by mouse, keyboard or code) and may fill itself.
    void Expand(TreeNode* node);
    void Collapse(TreeNode* node);

    /// Raised before the tree reacts to a press; the position is the viewport's.
    void MouseDown(Qt::MouseButton button, QPoint position);
    void MouseMove(Qt::MouseButtons buttons, QPoint position);
    /// Raised after the tree has reacted to the release.
    void MouseUp(Qt::MouseButton button, QPoint position);
    /// A context menu was asked for by the keyboard (the menu key), for the selected node.
    void ContextKey(TreeNode* node, QPoint globalPosition);
};
