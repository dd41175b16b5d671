#include "TreeNodes.h"

#include "RuntimeError.h"
#include "TreeModel.h"

TreeNode& TreeNodes::Add(TreeNode* parent, const QString& key, const QString& text, const QString& image,
                         const QString& selectedImage, FoundBy foundBy)
{
    return m_model.add(parent ? *parent : m_model.root(), key, text, image, selectedImage, foundBy);
}

TreeNode& TreeNodes::Item(const QString& key) const
{
    if (TreeNode* node = find(key))
        return *node;
    throw RuntimeError(ErrorNumber::FailedCall);
}

TreeNode* TreeNodes::find(const QString& key) const
{
    return m_model.find(key);
}

TreeNode* TreeNodes::findByWalk(const QString& key) const
{
    std::vector<TreeNode*> chains{Root()};
    while (!chains.empty()) {
        TreeNode* node = chains.back();
        chains.pop_back();
        for (; node; node = node->Next()) {
            if (!node->m_indexed && node->m_key == key)
                return node;
            chains.push_back(node->Child());
        }
    }
    return nullptr;
}

TreeNode* TreeNodes::Root() const
{
    return m_model.root().Child();
}

void TreeNodes::Remove(TreeNode& node)
{
    m_model.remove(node);
}

void TreeNodes::RemoveChildren(TreeNode& node)
{
    m_model.removeChildren(node);
}

void TreeNodes::Clear()
{
    m_model.removeChildren(m_model.root());
}

int TreeNodes::Count() const
{
    return m_model.count();
}
