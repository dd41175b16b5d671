#pragma once

#include <QString>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

class TreeModel;
class TreeView;

/// What the owner of a tree keeps with a node; it goes with the node unless it is taken before.
class TreePayload
{
public:
    virtual ~TreePayload() = default;
};

/// A node of the tree control. The tree owns it; it lives until it is removed, so a pointer that is kept while other
/// code runs belongs in a TreeNodeRef.
class TreeNode
{
public:
    ~TreeNode();
    TreeNode(const TreeNode&) = delete;
    TreeNode& operator=(const TreeNode&) = delete;

    const QString& Key() const { return m_key; }
    /// Re-keys the node in place; its children keep their keys. Raises 457 when another node has that key. A node with
    /// an empty key is not found by key.
    void setKey(const QString& key);

    const QString& Text() const { return m_text; }
    void setText(const QString& text);

    /// Image keys (see Icons); empty for none. The selected image shows while the node is selected.
    const QString& Image() const;
    void setImage(const QString& image);
    const QString& SelectedImage() const;
    void setSelectedImage(const QString& image);

    /// Null for a root node.
    TreeNode* Parent() const { return m_parent->m_parent ? m_parent : nullptr; }
    /// The first child, or null.
    TreeNode* Child() const { return m_first.get(); }
    /// The next sibling, or null.
    TreeNode* Next() const { return m_next.get(); }
    int Children() const { return static_cast<int>(m_count); }

    bool Expanded() const { return m_expanded; }
    /// A change raises the tree's Expand or Collapse as a click does, after the state has changed and, on a collapse,
    /// after a selection inside has moved to this node. No effect, and no event, when the node is in that state
    /// already, or when it is to be expanded and has no children. The state outlives the children: a node whose
    /// children are all removed stays expanded, shows new ones at once, and is collapsed without an event while it has
    /// none.
    void setExpanded(bool expanded);

    bool Selected() const;
    /// Makes the node the tree's one selected node and brings it into view (see TreeView::setSelectedItem), or clears
    /// the selection if it was.
    void setSelected(bool selected);

    /// Text in the desktop's colour for disabled text.
    bool Grey() const { return m_grey; }
    void setGrey(bool grey);
    bool Bold() const { return m_bold; }
    void setBold(bool bold);

    TreePayload* Payload() const { return m_payload.get(); }
    void setPayload(std::unique_ptr<TreePayload> payload) { m_payload = std::move(payload); }
    std::unique_ptr<TreePayload> takePayload() { return std::move(m_payload); }

    /// Expands the collapsed ancestors from the outermost inwards (raising Expand for each) and scrolls to the node.
    /// Ends early when a handler of Expand removes the node or collapses the ancestor again.
    void EnsureVisible();

protected:
    TreeNode() = default;

private:
    friend class KeyIndex;
    friend class TreeModel;
    friend class TreeNodeRef;
    friend class TreeNodes;
    friend class TreeView;

    TreeModel& model() const;

    // Siblings are a list, so that taking any child out costs the same; m_rows finds one by number, and stands only
    // while the view has asked for rows. The previous sibling of the first child is the last one.
    TreeNode* m_parent = nullptr;
    std::unique_ptr<TreeNode> m_first;
    std::unique_ptr<TreeNode> m_next;
    TreeNode* m_previous = nullptr;
    std::unique_ptr<std::vector<TreeNode*>> m_rows;
    std::unique_ptr<TreePayload> m_payload;
    QString m_key;
    QString m_text;
    std::uint32_t m_count = 0;
    std::uint32_t m_row = 0;
    std::uint16_t m_image = 0;
    std::uint16_t m_selectedImage = 0;
    bool m_expanded : 1 = false;
    bool m_grey : 1 = false;
    bool m_bold : 1 = false;
    bool m_withheld : 1 = false;
    bool m_referenced : 1 = false;
    bool m_indexed : 1 = false;
};

/// A reference to a node that turns null when the node, or its tree, goes. Copies are cheap and refer to the same node.
class TreeNodeRef
{
public:
    TreeNodeRef() = default;
    TreeNodeRef(TreeNode* node);

    TreeNode* get() const { return m_slot ? *m_slot : nullptr; }
    TreeNode& operator*() const { return *get(); }
    TreeNode* operator->() const { return get(); }
    explicit operator bool() const { return get() != nullptr; }
    friend bool operator==(const TreeNodeRef& left, const TreeNode* right) { return left.get() == right; }

private:
    std::shared_ptr<TreeNode*> m_slot;
};
