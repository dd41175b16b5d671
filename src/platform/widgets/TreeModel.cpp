#include "TreeModel.h"

#include "Icons.h"
#include "RuntimeError.h"
#include "TreeView.h"

#include <QHash>

#include <utility>

namespace
{

/// The image keys that nodes name; a program has a few dozen.
struct ImageKeys {
    std::vector<std::unique_ptr<const QString>> keys;
    QHash<QString, std::uint16_t> numbers;
};

ImageKeys& imageKeys()
{
    static ImageKeys known;
    return known;
}

} // namespace

TreeModel::TreeModel(TreeView& view) : m_view(view), m_nodes(*this), m_root(*this)
{
    m_root.m_expanded = true;
}

TreeModel::~TreeModel()
{
    m_index.clear();
    destroy(std::move(m_root.m_first));
}

TreeModel& TreeModel::of(const TreeNode& node)
{
    const TreeNode* top = &node;
    while (top->m_parent)
        top = top->m_parent;
    return static_cast<const Root*>(top)->model;
}

std::uint16_t TreeModel::imageNumber(const QString& image)
{
    ImageKeys& known = imageKeys();
    const auto found = known.numbers.constFind(image);
    if (found != known.numbers.constEnd())
        return *found;
    if (known.keys.empty() && !image.isEmpty())
        imageNumber({});
    const auto number = static_cast<std::uint16_t>(known.keys.size());
    known.keys.push_back(std::make_unique<const QString>(image));
    known.numbers.insert(image, number);
    return number;
}

const QString& TreeModel::imageKey(std::uint16_t number)
{
    if (imageKeys().keys.empty())
        imageNumber({});
    return *imageKeys().keys[number];
}

QIcon TreeModel::icon(std::uint16_t image) const
{
    if (m_icons.size() <= image)
        m_icons.resize(image + 1U);
    if (!m_icons[image])
        m_icons[image] = std::make_unique<QIcon>(Icons::icon(imageKey(image)));
    return *m_icons[image];
}

/// Lets `change` give the view rows behind the children that a node shows.
template <typename Change>
void TreeModel::insertRowsBy(TreeNode& parent, int count, Change change)
{
    m_changingRows = true;
    const int first = rowCount(indexOf(parent));
    beginInsertRows(indexOf(parent), first, first + count - 1);
    change();
    endInsertRows();
    m_changingRows = false;
    m_view.childrenShown(parent, count == 1 ? parent.m_first->m_previous : parent.Child());
}

/// Lets `change` take rows from the view.
template <typename Change>
void TreeModel::removeRowsBy(TreeNode& parent, int first, int last, Change change)
{
    m_changingRows = true;
    beginRemoveRows(indexOf(parent), first, last);
    change();
    endRemoveRows();
    m_changingRows = false;
}

// Structure ----------------------------------------------------------------------------------------------------------

TreeNode& TreeModel::add(TreeNode& parent, const QString& key, const QString& text, const QString& image,
                         const QString& selectedImage, TreeNodes::FoundBy foundBy)
{
    std::unique_ptr<TreeNode> node(new TreeNode);
    TreeNode& added = *node;
    added.m_key = key;
    added.m_text = text;
    added.m_image = imageNumber(image);
    added.m_selectedImage = selectedImage == image ? added.m_image : imageNumber(selectedImage);
    added.m_indexed = !key.isEmpty() && foundBy == TreeNodes::FoundBy::index;
    if (added.m_indexed && !m_index.insert(added))
        throw RuntimeError(ErrorNumber::KeyAlreadyThere);
    ++m_count;

    if (takesPart(parent))
        insertRowsBy(parent, 1, [&] { append(parent, std::move(node)); });
    else
        append(parent, std::move(node));
    return added;
}

void TreeModel::remove(TreeNode& node)
{
    TreeNode& parent = *node.m_parent;
    TreeNode* heir = node.Parent();
    if (!heir)
        heir = node.Next() ? node.Next() : (parent.Child() != &node ? node.m_previous : nullptr);
    m_view.nodeLeaves(node, heir);

    std::unique_ptr<TreeNode> gone;
    if (takesPart(parent)) {
        const int row = indexOf(node).row();
        removeRowsBy(parent, row, row, [&] { gone = unlink(node); });
    } else {
        gone = unlink(node);
    }
    destroy(std::move(gone));
    m_view.syncSelection();
}

void TreeModel::removeChildren(TreeNode& parent)
{
    if (parent.m_count == 0)
        return;
    m_view.childrenLeave(parent, &parent == &m_root ? nullptr : &parent);

    std::unique_ptr<TreeNode> gone;
    const auto takeAll = [&] {
        gone = std::move(parent.m_first);
        parent.m_rows.reset();
        parent.m_count = 0;
    };
    if (takesPart(parent))
        removeRowsBy(parent, 0, parent.Children() - 1, takeAll);
    else
        takeAll();
    if (&parent == &m_root)
        m_index.clear();
    destroy(std::move(gone));
    m_view.syncSelection();
}

void TreeModel::rekey(TreeNode& node, const QString& key)
{
    if (key == node.m_key)
        return;
    if (find(key))
        throw RuntimeError(ErrorNumber::KeyAlreadyThere);
    if (node.m_indexed)
        m_index.remove(node);
    node.m_key = key;
    node.m_indexed = !key.isEmpty();
    if (node.m_indexed)
        m_index.insert(node);
}

void TreeModel::append(TreeNode& parent, std::unique_ptr<TreeNode> node)
{
    TreeNode* added = node.get();
    added->m_parent = &parent;
    if (!parent.m_first) {
        parent.m_first = std::move(node);
    } else {
        TreeNode* last = parent.m_first->m_previous;
        added->m_previous = last;
        last->m_next = std::move(node);
    }
    parent.m_first->m_previous = added;
    if (parent.m_rows) {
        added->m_row = parent.m_count;
        parent.m_rows->push_back(added);
    }
    ++parent.m_count;
}

std::unique_ptr<TreeNode> TreeModel::unlink(TreeNode& node)
{
    TreeNode& parent = *node.m_parent;
    if (parent.m_rows) {
        std::vector<TreeNode*>& rows = *parent.m_rows;
        rows.erase(rows.begin() + node.m_row);
        for (std::uint32_t row = node.m_row; row < rows.size(); ++row)
            rows[row]->m_row = row;
    }
    const bool isFirst = parent.m_first.get() == &node;
    TreeNode* previous = node.m_previous;
    std::unique_ptr<TreeNode>& owner = isFirst ? parent.m_first : previous->m_next;
    std::unique_ptr<TreeNode> taken = std::move(owner);
    owner = std::move(node.m_next);
    if (owner)
        owner->m_previous = previous;
    else if (parent.m_first)
        parent.m_first->m_previous = previous;
    --parent.m_count;
    return taken;
}

/// Ends a chain of siblings and all that hangs below them, without recursion, since a chain may be long.
void TreeModel::destroy(std::unique_ptr<TreeNode> chain)
{
    while (chain) {
        const std::unique_ptr<TreeNode> node = std::move(chain);
        chain = std::move(node->m_next);
        if (node->m_first) {
            node->m_first->m_previous->m_next = std::move(chain);
            chain = std::move(node->m_first);
        }
        if (node->m_indexed && !m_index.isEmpty())
            m_index.remove(*node);
        if (node->m_withheld)
            m_withheld.erase(node.get());
        if (node->m_referenced) {
            const auto found = m_slots.find(node.get());
            *found->second = nullptr;
            m_slots.erase(found);
        }
        m_view.nodeGoes(*node);
        --m_count;
    }
}

std::shared_ptr<TreeNode*> TreeModel::slotOf(TreeNode& node)
{
    std::shared_ptr<TreeNode*>& slot = m_slots[&node];
    if (!slot)
        slot = std::make_shared<TreeNode*>(&node);
    node.m_referenced = true;
    return slot;
}

// What the view knows ------------------------------------------------------------------------------------------------

bool TreeModel::isShown(const TreeNode& node) const
{
    for (const TreeNode* above = node.m_parent; above; above = above->m_parent) {
        if (above->m_withheld)
            return false;
    }
    return true;
}

/// Says whether a change among the children of a node is to be told to the view. While changes are withheld the first
/// one takes the level from the view and the rest are its own business.
bool TreeModel::takesPart(TreeNode& parent)
{
    if (!showsChildren(parent))
        return false;
    if (!m_withholding)
        return true;
    const auto take = [&] { parent.m_withheld = true; };
    if (parent.m_count > 0)
        removeRowsBy(parent, 0, parent.Children() - 1, take);
    else
        take();
    m_withheld.insert(&parent);
    parent.m_rows.reset();
    return false;
}

void TreeModel::release()
{
    m_withholding = false;
    std::vector<TreeNode*> outermost;
    for (TreeNode* parent : m_withheld) {
        if (isShown(*parent))
            outermost.push_back(parent);
    }
    // What lies below a withheld level comes back with it.
    for (TreeNode* parent : m_withheld)
        parent->m_withheld = false;
    for (TreeNode* parent : outermost)
        parent->m_withheld = true;
    m_withheld.clear();
    for (TreeNode* parent : outermost) {
        const auto give = [parent] { parent->m_withheld = false; };
        if (parent->m_count > 0)
            insertRowsBy(*parent, parent->Children(), give);
        else
            give();
    }
}

void TreeModel::touch(TreeNode& node)
{
    if (&node == &m_root || !isShown(node))
        return;
    const QModelIndex index = indexOf(node);
    emit dataChanged(index, index);
}

// The item model -----------------------------------------------------------------------------------------------------

const std::vector<TreeNode*>& TreeModel::rowsOf(TreeNode& parent) const
{
    if (!parent.m_rows) {
        auto rows = std::make_unique<std::vector<TreeNode*>>();
        rows->reserve(parent.m_count);
        for (TreeNode* child = parent.Child(); child; child = child->Next()) {
            child->m_row = static_cast<std::uint32_t>(rows->size());
            rows->push_back(child);
        }
        parent.m_rows = std::move(rows);
    }
    return *parent.m_rows;
}

QModelIndex TreeModel::indexOf(const TreeNode& node) const
{
    TreeNode* parent = node.m_parent;
    if (!parent)
        return {};
    // An only child needs no table to be found, and most levels of an unexpanded tree hold one placeholder.
    if (parent->m_count == 1)
        return createIndex(0, 0, &node);
    rowsOf(*parent);
    return createIndex(static_cast<int>(node.m_row), 0, &node);
}

TreeNode& TreeModel::levelOf(const QModelIndex& parent) const
{
    return parent.isValid() ? *nodeOf(parent) : m_root;
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const
{
    TreeNode& level = levelOf(parent);
    if (column != 0 || row < 0 || row >= rowCount(parent))
        return {};
    return createIndex(row, 0, level.m_count == 1 ? level.Child() : rowsOf(level)[static_cast<std::size_t>(row)]);
}

QModelIndex TreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOf(*nodeOf(child)->m_parent) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const
{
    const TreeNode& level = levelOf(parent);
    return level.m_withheld ? 0 : level.Children();
}

int TreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

bool TreeModel::hasChildren(const QModelIndex& parent) const
{
    return rowCount(parent) > 0;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const TreeNode& node = *nodeOf(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return node.m_text;
    case Qt::DecorationRole: {
        const std::uint16_t image =
            node.m_selectedImage != 0 && m_view.SelectedItem() == &node ? node.m_selectedImage : node.m_image;
        const QIcon picture = icon(image);
        return picture.isNull() ? QVariant() : QVariant(picture);
    }
    case Qt::ForegroundRole:
        return node.m_grey ? QVariant(m_view.palette().brush(QPalette::Disabled, QPalette::Text)) : QVariant();
    case Qt::FontRole:
        if (!node.m_bold)
            return {};
        if (!m_boldFont) {
            m_boldFont = std::make_unique<QFont>(m_view.font());
            m_boldFont->setBold(true);
        }
        return *m_boldFont;
    default:
        return {};
    }
}
