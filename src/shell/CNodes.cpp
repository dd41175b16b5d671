#include "CNodes.h"

#include "Events.h"
#include "NodeTypes.h"
#include "Routine.h"
#include "RuntimeError.h"
#include "TreeView.h"
#include "mdiMain.h"

#include <QElapsedTimer>
#include <QStringBuilder>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

QString keyOf(const QString& relativeKey, const QString& type, const QString& data)
{
    if (nodetypes::isDatasource(type))
        return nodetypes::datasourceKey(data);
    return relativeKey % type % '='_L1 % data % ':'_L1;
}

constexpr char placeholderLetter = 'K';

/// Each placeholder has a key of its own that no row can have.
QString placeholderKey(quint64 number)
{
    std::array<char, 24> text{placeholderLetter};
    const auto end = std::to_chars(text.data() + 1, text.data() + text.size(), number).ptr;
    return QString::fromLatin1(text.data(), end - text.data());
}

/// The keys of all other nodes hold the sign.
bool isPlaceholderKey(const QString& key)
{
    return key.startsWith(placeholderLetter) && !key.contains('=');
}

} // namespace

CNodes::CNodes() = default;

CNodes::~CNodes() = default;

CNode* CNodes::add(TreeNode* relative, const QString& type, const QString& data, const QString& text,
                   const QString& image, const QString& selectedImage)
{
    Routine routine("CNodes.Add");
    CNode* added = nullptr;
    routine.run([&] {
        auto node = std::make_unique<CNode>();
        const bool isPlaceholder = type.isEmpty();
        node->Key = isPlaceholder ? placeholderKey(++m_placeholders)
                                  : keyOf(relative ? relative->Key() : QString(), type, data);
        node->m_nodeType = type;
        node->m_nodeData = data;
        node->m_sequence = ++m_sequence;
        if (m_leftBehind.contains(node->Key))
            throw RuntimeError(ErrorNumber::KeyAlreadyThere);

        TreeNode& treeNode =
            m_tree->Nodes().Add(relative, node->Key, text, image, selectedImage.isEmpty() ? image : selectedImage,
                                isPlaceholder ? TreeNodes::FoundBy::walk : TreeNodes::FoundBy::index);
        node->m_treeNode = &treeNode;
        added = node.get();
        treeNode.setPayload(std::move(node));
    });
    return added;
}

CNode* CNodes::add(const CNode& relative, const QString& type, const QString& data, const QString& text,
                   const QString& image, const QString& selectedImage)
{
    if (TreeNode* shown = treeNode(relative))
        return add(shown, type, data, text, image, selectedImage);
    Routine routine("CNodes.Add");
    routine.run([] { throw RuntimeError(ErrorNumber::ItemNotFound); });
    return nullptr;
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
    if (TreePayload* payload = node.Payload())
        return static_cast<CNode&>(*payload);
    throw RuntimeError(ErrorNumber::FailedCall);
}

TreeNode* CNodes::shownNode(const QString& key) const
{
    const TreeNodes& nodes = m_tree->Nodes();
    return isPlaceholderKey(key) ? nodes.findByWalk(key) : nodes.find(key);
}

CNode* CNodes::find(const QString& key) const
{
    if (const TreeNode* node = shownNode(key))
        return &Item(*node);
    const auto leftBehind = m_leftBehind.find(key);
    return leftBehind == m_leftBehind.end() ? nullptr : leftBehind->second.get();
}

int CNodes::Count() const
{
    return m_tree->Nodes().Count() + static_cast<int>(m_leftBehind.size());
}

std::vector<CNode*> CNodes::NewEnum() const
{
    std::vector<CNode*> all;
    std::vector<const TreeNode*> chains{m_tree->Nodes().Root()};
    while (!chains.empty()) {
        const TreeNode* node = chains.back();
        chains.pop_back();
        for (; node; node = node->Next()) {
            all.push_back(&Item(*node));
            chains.push_back(node->Child());
        }
    }
    for (const auto& [key, node] : m_leftBehind)
        all.push_back(node.get());
    std::sort(all.begin(), all.end(), [](const CNode* a, const CNode* b) { return a->m_sequence < b->m_sequence; });
    return all;
}

void CNodes::Remove(const CNode& node)
{
    if (TreeNode* shown = treeNode(node))
        m_tree->Nodes().Remove(*shown);
    else
        m_leftBehind.erase(QString(node.Key));
}

void CNodes::Remove(const QString& key)
{
    TreeNode* shown = shownNode(key);
    if (!shown) {
        m_leftBehind.erase(key);
        return;
    }
    TreeNode* last = shown->Child();
    while (last && last->Next())
        last = last->Next();
    if (last)
        leaveBehind(*last);
    m_tree->Nodes().Remove(*shown);
}

void CNodes::leaveBehind(TreeNode& node)
{
    for (TreeNode* child = node.Child(); child; child = child->Next())
        leaveBehind(*child);
    std::unique_ptr<CNode> payload(static_cast<CNode*>(node.takePayload().release()));
    payload->m_treeNode = nullptr;
    const QString key = payload->Key;
    m_leftBehind.insert_or_assign(key, std::move(payload));
}

void CNodes::RemoveChildren(TreeNode& node)
{
    m_tree->Nodes().RemoveChildren(node);
}

void CNodes::Clear()
{
    m_leftBehind.clear();
    if (m_tree)
        m_tree->Nodes().Clear();
}

CNode* CNodes::SelectedItem() const
{
    const TreeNode* selected = m_tree->SelectedItem();
    return selected ? &Item(*selected) : nullptr;
}

void CNodes::setSelectedItem(const CNode& node)
{
    m_tree->setSelectedItem(treeNode(node));
}

void CNodes::ChangeKey(const QString& oldKey, const QString& newKey)
{
    Routine routine("CNodes.ChangeKey");
    routine.run([&] {
        CNode& node = Item(oldKey);
        if (find(newKey))
            throw RuntimeError(ErrorNumber::KeyAlreadyThere);
        TreeNode* shown = treeNode(node);
        if (!shown)
            throw RuntimeError(ErrorNumber::ItemNotFound);
        shown->setKey(newKey);
        node.Key = newKey;
        node.m_sequence = ++m_sequence;
    });
}

/// Keeps the tree's redraw off behind the first step of a long change but for a moment ten times a second, so that its
/// cost does not grow with the number of steps. The first step shows as it goes: it may have to connect.
class CNodes::FrameByFrame
{
public:
    explicit FrameByFrame(TreeView& tree) : m_tree(tree) {}

    void step()
    {
        if (m_redrawOff && m_sinceFrame.elapsed() < frameMilliseconds)
            return;
        m_redrawOff.reset();
        m_tree.viewport()->repaint();
        m_redrawOff.emplace(m_tree);
        m_sinceFrame.start();
    }

private:
    static constexpr qint64 frameMilliseconds = 100;

    TreeView& m_tree;
    QElapsedTimer m_sinceFrame;
    std::optional<TreeView::RedrawOff> m_redrawOff;
};

void CNodes::ExpandChildren(const CNode& node)
{
    const events::LongRoutine longRoutine;
    FrameByFrame redraw(*m_tree);
    // A level that was empty has nothing to close and open, and may have rows by now.
    if (TreeNode* shown = treeNode(node); shown && !shown->Child() && !nodetypes::isItem(node.NodeType()))
        addPlaceholder(*shown);
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
        for (const TreeNode* child = shown->Child(); child; child = child->Next())
            expandSubtree(Item(*child), redraw);
        mdiMain::instance().Status(u"Ready"_s);
    });
}
