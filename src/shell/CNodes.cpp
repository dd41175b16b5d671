#include "CNodes.h"

#include "Events.h"
#include "NodeTypes.h"
#include "Routine.h"
#include "RuntimeError.h"
#include "TreeView.h"
#include "mdiMain.h"

#include <QElapsedTimer>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

QString keyOf(const QString& relativeKey, const QString& type, const QString& data)
{
    if (nodetypes::isDatasource(type))
        return nodetypes::datasourceKey(data);
    return relativeKey + type + '='_L1 + data + ':'_L1;
}

} // namespace

CNodes::CNodes() = default;

CNodes::~CNodes()
{
    qDeleteAll(m_nodes);
}

CNode* CNodes::add(TreeNode* relative, const QString& type, const QString& data, const QString& text,
                   const QString& image, const QString& selectedImage)
{
    Routine routine("CNodes.Add");
    CNode* added = nullptr;
    routine.run([&] {
        auto node = std::make_unique<CNode>();
        node->Key = type.isEmpty() ? 'K'_L1 + QString::number(++m_placeholders)
                                   : keyOf(relative ? relative->Key() : QString(), type, data);
        node->m_nodeType = type;
        node->m_nodeData = data;
        node->m_sequence = ++m_sequence;

        const auto sizeBefore = m_nodes.size();
        CNode*& entry = m_nodes[node->Key];
        if (m_nodes.size() == sizeBefore)
            throw RuntimeError(ErrorNumber::KeyAlreadyThere);
        CNode* stored = entry = node.release();

        m_tree->Nodes().Add(relative, stored->Key, text, image, selectedImage.isEmpty() ? image : selectedImage);
        added = stored;
    });
    return added;
}

CNode* CNodes::add(const CNode& relative, const QString& type, const QString& data, const QString& text,
                   const QString& image, const QString& selectedImage)
{
    return add(treeNode(relative), type, data, text, image, selectedImage);
}

void CNodes::addPlaceholder(TreeNode& node)
{
    add(&node, {}, {}, {});
}

CNode& CNodes::Item(const QString& key) const
{
    if (CNode* node = find(key))
        return *node;
    throw RuntimeError(ErrorNumber::FailedCall);
}

CNode& CNodes::Item(const TreeNode& node) const
{
    return Item(node.Key());
}

CNode* CNodes::find(const QString& key) const
{
    return m_nodes.value(key, nullptr);
}

std::vector<CNode*> CNodes::NewEnum() const
{
    std::vector<CNode*> all(m_nodes.cbegin(), m_nodes.cend());
    std::sort(all.begin(), all.end(), [](const CNode* a, const CNode* b) { return a->m_sequence < b->m_sequence; });
    return all;
}

void CNodes::Remove(const CNode& node)
{
    const QString key = node.Key;
    if (TreeNode* shown = m_tree->Nodes().find(key)) {
        RemoveChildren(*shown);
        drop(key);
        m_tree->Nodes().Remove(*shown);
    } else {
        drop(key);
    }
}

void CNodes::Remove(const QString& key)
{
    TreeNode* shown = m_tree->Nodes().find(key);
    if (!shown) {
        drop(key);
        return;
    }
    for (TreeNode* child = shown->Child(); child && child->Next(); child = child->Next())
        dropSubtree(*child);
    drop(key);
    m_tree->Nodes().Remove(*shown);
}

void CNodes::RemoveChildren(TreeNode& node)
{
    for (TreeNode* child = node.Child(); child; child = child->Next())
        dropSubtree(*child);
    m_tree->Nodes().RemoveChildren(node);
}

void CNodes::Clear()
{
    qDeleteAll(m_nodes);
    m_nodes.clear();
    if (m_tree)
        m_tree->Nodes().Clear();
}

CNode* CNodes::SelectedItem() const
{
    const TreeNode* selected = m_tree->SelectedItem();
    return selected ? find(selected->Key()) : nullptr;
}

void CNodes::setSelectedItem(const CNode& node)
{
    m_tree->setSelectedItem(treeNode(node));
}

void CNodes::ChangeKey(const QString& oldKey, const QString& newKey)
{
    Routine routine("CNodes.ChangeKey");
    routine.run([&] {
        const CNode& old = Item(oldKey);
        if (m_nodes.contains(newKey))
            throw RuntimeError(ErrorNumber::KeyAlreadyThere);

        auto renamed = std::make_unique<CNode>(old);
        renamed->Key = newKey;
        m_nodes.insert(newKey, renamed.release());
        m_tree->Nodes().Item(oldKey).setKey(newKey);
        drop(oldKey);
    });
}

/// Keeps the tree's redraw off during a long change but for a moment in each frame, so that its cost does not grow with
/// the number of steps.
class CNodes::FrameByFrame
{
public:
    explicit FrameByFrame(TreeView& tree) : m_tree(tree)
    {
        m_redrawOff.emplace(tree);
        m_sinceFrame.start();
    }

    void step()
    {
        if (m_sinceFrame.elapsed() < frameMilliseconds)
            return;
        m_redrawOff.reset();
        m_tree.viewport()->repaint();
        m_redrawOff.emplace(m_tree);
        m_sinceFrame.start();
    }

private:
    static constexpr qint64 frameMilliseconds = 33;

    TreeView& m_tree;
    QElapsedTimer m_sinceFrame;
    std::optional<TreeView::RedrawOff> m_redrawOff;
};

void CNodes::ExpandChildren(const CNode& node)
{
    const events::LongRoutine longRoutine;
    FrameByFrame redraw(*m_tree);
    expandSubtree(node, redraw);
}

void CNodes::expandSubtree(const CNode& node, FrameByFrame& redraw)
{
    Routine routine("CNodes.ExpandChildren");
    routine.run([&] {
        const TreeNodeRef shown = treeNode(node);
        if (!shown)
            throw RuntimeError(ErrorNumber::ItemNotFound);
        mdiMain::instance().Status(u"Expanding "_s + shown->Text());
        shown->setExpanded(false);
        shown->setExpanded(true);
        redraw.step();
        for (TreeNode* child = shown->Child(); child; child = child->Next()) {
            if (const CNode* payload = find(child->Key()))
                expandSubtree(*payload, redraw);
        }
        mdiMain::instance().Status(u"Ready"_s);
    });
}

TreeNode* CNodes::treeNode(const CNode& node) const
{
    return m_tree->Nodes().find(node.Key);
}

void CNodes::drop(const QString& key)
{
    const std::unique_ptr<CNode> dropped(m_nodes.take(key));
}

void CNodes::dropSubtree(const TreeNode& node)
{
    for (const TreeNode* child = node.Child(); child; child = child->Next())
        dropSubtree(*child);
    drop(node.Key());
}
