#include "TreeNodes.h"

#include "RuntimeError.h"
#include "TreeModel.h"

TreeNode& TreeNodes::Add(TreeNode* parent, const QString& key, const QString& text, const QString& image,
                         const QString& selectedImage)
{
    return m_model.add(parent ? *parent : m_model.root(), key, text, image, selectedImage);
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
