#include "KeyIndex.h"

#include "TreeNode.h"

#include <QHashFunctions>

#include <algorithm>
#include <utility>

namespace
{

constexpr std::size_t fewestSlots = 64;

} // namespace

std::uint32_t KeyIndex::hashOf(QStringView key)
{
    const auto hash = static_cast<std::uint64_t>(qHash(key, QHashSeed::globalSeed()));
    return std::max(static_cast<std::uint32_t>(hash ^ (hash >> 32)), std::uint32_t{1});
}

/// The slot where the search for a hash begins: the hash as a fraction of the table, so that the table may have any
/// size.
std::size_t KeyIndex::homeOf(std::uint32_t hash) const
{
    return static_cast<std::size_t>((std::uint64_t{hash} * m_hashes.size()) >> 32);
}

std::size_t KeyIndex::distance(std::size_t from, std::size_t to) const
{
    return to >= from ? to - from : to + m_hashes.size() - from;
}

/// The slot of a key, or the free one where it would go. The table is never full.
std::size_t KeyIndex::slotOf(QStringView key, std::uint32_t hash) const
{
    std::size_t slot = homeOf(hash);
    while (m_hashes[slot] != 0 && (m_hashes[slot] != hash || m_nodes[slot]->m_key != key))
        slot = next(slot);
    return slot;
}

void KeyIndex::place(std::size_t slot, std::uint32_t hash, TreeNode* node)
{
    m_hashes[slot] = hash;
    m_nodes[slot] = node;
}

TreeNode* KeyIndex::find(QStringView key) const
{
    // A free slot holds no node.
    return m_count == 0 ? nullptr : m_nodes[slotOf(key, hashOf(key))];
}

bool KeyIndex::insert(TreeNode& node)
{
    if (4 * (m_count + 1) > 3 * m_hashes.size())
        resize(std::max(fewestSlots, 2 * m_hashes.size()));
    const std::uint32_t hash = hashOf(node.m_key);
    const std::size_t slot = slotOf(node.m_key, hash);
    if (m_nodes[slot])
        return false;
    place(slot, hash, &node);
    ++m_count;
    return true;
}

void KeyIndex::remove(const TreeNode& node)
{
    std::size_t hole = homeOf(hashOf(node.m_key));
    while (m_nodes[hole] != &node)
        hole = next(hole);
    // What was pushed past the hole moves up into it, so that every search still ends at a free slot.
    for (std::size_t slot = next(hole); m_hashes[slot] != 0; slot = next(slot)) {
        if (distance(homeOf(m_hashes[slot]), slot) >= distance(hole, slot)) {
            place(hole, m_hashes[slot], m_nodes[slot]);
            hole = slot;
        }
    }
    place(hole, 0, nullptr);
    --m_count;
    if (m_hashes.size() > fewestSlots && 8 * m_count < m_hashes.size())
        resize(std::max(fewestSlots, 2 * m_count));
}

void KeyIndex::clear()
{
    m_hashes = {};
    m_nodes = {};
    m_count = 0;
}

void KeyIndex::resize(std::size_t size)
{
    const auto hashes = std::exchange(m_hashes, std::vector<std::uint32_t>(size));
    const auto nodes = std::exchange(m_nodes, std::vector<TreeNode*>(size));
    for (std::size_t former = 0; former < hashes.size(); ++former) {
        if (hashes[former] == 0)
            continue;
        std::size_t slot = homeOf(hashes[former]);
        while (m_hashes[slot] != 0)
            slot = next(slot);
        place(slot, hashes[former], nodes[former]);
    }
}
