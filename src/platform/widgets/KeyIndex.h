#pragma once

#include <QStringView>

#include <cstdint>
#include <vector>

class TreeNode;

/// Finds the nodes of a tree by their keys: an open-addressed table of hashes and bare pointers, since a tree holds
/// hundreds of thousands of nodes and each of them knows its key already. A search touches no node but the one it
/// finds.
class KeyIndex
{
public:
    TreeNode* find(QStringView key) const;
    /// Adds a node under its key. Returns false, and changes nothing, when another node has that key.
    bool insert(TreeNode& node);
    /// Takes a node out. Its key must be the one that it was added under.
    void remove(const TreeNode& node);
    void clear();
    bool isEmpty() const { return m_count == 0; }

private:
    static std::uint32_t hashOf(QStringView key);
    std::size_t homeOf(std::uint32_t hash) const;
    std::size_t next(std::size_t slot) const { return slot + 1 == m_hashes.size() ? 0 : slot + 1; }
    std::size_t distance(std::size_t from, std::size_t to) const;
    std::size_t slotOf(QStringView key, std::uint32_t hash) const;
    void place(std::size_t slot, std::uint32_t hash, TreeNode* node);
    void resize(std::size_t size);

    // Beside each other, and not as pairs, which would leave four bytes of each slot unused. The hash 0 marks a free
    // slot.
    std::vector<std::uint32_t> m_hashes;
    std::vector<TreeNode*> m_nodes;
    std::size_t m_count = 0;
};
