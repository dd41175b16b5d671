#pragma once

#include "KeyIndex.h"
#include "TreeNodes.h"

#include <QAbstractItemModel>
#include <QFont>
#include <QIcon>

#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class TreeView;

/// The nodes of a TreeView as an item model: owns them, finds them by key, and tells the view of every change. Between
/// withhold() and release() it takes a level that changes away from the view, once, and gives it back whole at the end,
/// so that a level of any size costs the view one removal and one insertion.
class TreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit TreeModel(TreeView& view);
    ~TreeModel() override;

    TreeNodes& nodes() { return m_nodes; }
    TreeView& view() const { return m_view; }
    TreeNode& root() { return m_root; }
    /// The model that a node lives in.
    static TreeModel& of(const TreeNode& node);

    TreeNode& add(TreeNode& parent, const QString& key, const QString& text, const QString& image,
                  const QString& selectedImage, TreeNodes::FoundBy foundBy);
    TreeNode* find(const QString& key) const { return m_index.find(key); }
    int count() const { return m_count; }
    void remove(TreeNode& node);
    void removeChildren(TreeNode& parent);
    void rekey(TreeNode& node, const QString& key);

    /// Repaints a node's row.
    void touch(TreeNode& node);

    void withhold() { m_withholding = true; }
    /// Shows the view every level that was withheld.
    void release();
    bool isWithholding() const { return m_withholding; }
    /// Whether rows are being taken from or given to the view at this moment.
    bool isChangingRows() const { return m_changingRows; }
    /// Whether the view knows the node's row.
    bool isShown(const TreeNode& node) const;

    QModelIndex indexOf(const TreeNode& node) const;
    TreeNode* nodeOf(const QModelIndex& index) const { return static_cast<TreeNode*>(index.internalPointer()); }

    /// A slot that holds the node and is set to null when the node goes.
    std::shared_ptr<TreeNode*> slotOf(TreeNode& node);

    /// Drops the fonts, which are made anew from the view's.
    void forgetFonts() { m_boldFont.reset(); }

    /// The number of an image key; 0 is no image.
    static std::uint16_t imageNumber(const QString& image);
    static const QString& imageKey(std::uint16_t number);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    /// The parent of the root nodes, known to this room only.
    struct Root : TreeNode {
        explicit Root(TreeModel& owner) : model(owner) {}
        TreeModel& model;
    };

    TreeNode& levelOf(const QModelIndex& parent) const;
    const std::vector<TreeNode*>& rowsOf(TreeNode& parent) const;
    bool showsChildren(const TreeNode& parent) const { return !parent.m_withheld && isShown(parent); }
    bool takesPart(TreeNode& parent);
    template <typename Change>
    void insertRowsBy(TreeNode& parent, int count, Change change);
    template <typename Change>
    void removeRowsBy(TreeNode& parent, int first, int last, Change change);
    void append(TreeNode& parent, std::unique_ptr<TreeNode> node);
    std::unique_ptr<TreeNode> unlink(TreeNode& node);
    void destroy(std::unique_ptr<TreeNode> chain);
    QIcon icon(std::uint16_t image) const;

    TreeView& m_view;
    TreeNodes m_nodes;
    mutable Root m_root;
    KeyIndex m_index;
    std::unordered_set<TreeNode*> m_withheld;
    std::unordered_map<const TreeNode*, std::shared_ptr<TreeNode*>> m_slots;
    mutable std::vector<std::unique_ptr<QIcon>> m_icons;
    mutable std::unique_ptr<QFont> m_boldFont;
    int m_count = 0;
    bool m_withholding = false;
    bool m_changingRows = false;
};
