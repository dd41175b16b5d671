#include "TreeNode.h"

#include "TreeModel.h"
#include "TreeView.h"

TreeNode::~TreeNode() = default;

TreeModel& TreeNode::model() const
{
    return TreeModel::of(*this);
}

void TreeNode::setKey(const QString& key)
{
    model().rekey(*this, key);
}

void TreeNode::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    model().touch(*this);
}

const QString& TreeNode::Image() const
{
    return TreeModel::imageKey(m_image);
}

void TreeNode::setImage(const QString& image)
{
    m_image = TreeModel::imageNumber(image);
    model().touch(*this);
}

const QString& TreeNode::SelectedImage() const
{
    return TreeModel::imageKey(m_selectedImage);
}

void TreeNode::setSelectedImage(const QString& image)
{
    m_selectedImage = TreeModel::imageNumber(image);
    model().touch(*this);
}

void TreeNode::setExpanded(bool expanded)
{
    model().view().setNodeExpanded(*this, expanded);
}

bool TreeNode::Selected() const
{
    return model().view().SelectedItem() == this;
}

void TreeNode::setSelected(bool selected)
{
    if (selected)
        model().view().setSelectedItem(this);
    else if (Selected())
        model().view().setSelectedItem(nullptr);
}

void TreeNode::setGrey(bool grey)
{
    if (m_grey == grey)
        return;
    m_grey = grey;
    model().touch(*this);
}

void TreeNode::setBold(bool bold)
{
    if (m_bold == bold)
        return;
    m_bold = bold;
    model().touch(*this);
}

void TreeNode::EnsureVisible()
{
    model().view().reveal(*this);
}

TreeNodeRef::TreeNodeRef(TreeNode* node)
{
    if (node)
        m_slot = node->model().slotOf(*node);
}
