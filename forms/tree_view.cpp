#include "forms/tree_view.h"

#include "forms/control_visitor.h"

#include <algorithm>

namespace lintara::forms {
namespace {

Text Folded(TextView text) {
    Text folded(text);
    for (char16_t& unit : folded) {
        if (unit >= u'A' && unit <= u'Z') {
            unit = static_cast<char16_t>(unit - u'A' + u'a');
        }
    }
    return folded;
}

bool ComesBefore(const TreeNode* left, const TreeNode* right) {
    return Folded(left->Caption()) < Folded(right->Caption());
}

}  // namespace

void TreeNode::SetBold(bool bold) {
    if (bold != bold_) {
        bold_ = bold;
        tree_.Tell(Property::Nodes);
    }
}

void TreeNode::SetForeColor(Color color) {
    if (color != foreColor_) {
        foreColor_ = color;
        tree_.Tell(Property::Nodes);
    }
}

void TreeNode::SetExpanded(bool expanded) {
    if (expanded != expanded_) {
        expanded_ = expanded;
        tree_.Tell(Property::Nodes);
    }
}

void TreeNode::SetSorted(bool sorted) {
    if (sorted == sorted_) {
        return;
    }
    sorted_ = sorted;
    if (sorted) {
        std::ranges::stable_sort(children_, ComesBefore);
        tree_.Tell(Property::Nodes);
    }
}

void TreeNode::EnsureVisible() {
    for (TreeNode* above = parent_; above != nullptr; above = above->parent_) {
        above->SetExpanded(true);
    }
    tree_.Scroll(*this);
}

void TreeNode::Adopt(TreeNode& child) {
    const auto place = sorted_ ? std::ranges::upper_bound(children_, &child, ComesBefore) : children_.end();
    children_.insert(place, &child);
}

void TreeView::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

TreeNode* TreeView::Find(TextView key) const {
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? nullptr : found->second;
}

Result<TreeNode*> TreeView::Add(TreeNode* parent, TextView key, TextView caption) {
    if (!key.empty() && Find(key) != nullptr) {
        return Failure(ErrorNumber::InvalidArgument, "another node has this key");
    }
    nodes_.push_back(std::unique_ptr<TreeNode>(new TreeNode(*this, parent, key, caption)));
    TreeNode* node = nodes_.back().get();
    if (!key.empty()) {
        byKey_.emplace(key, node);
    }
    if (parent == nullptr) {
        roots_.push_back(node);
    } else {
        parent->Adopt(*node);
    }
    Tell(Property::Nodes);
    return node;
}

void TreeView::Clear() {
    if (nodes_.empty()) {
        return;
    }
    selected_ = nullptr;
    inView_ = nullptr;
    roots_.clear();
    byKey_.clear();
    nodes_.clear();
    Tell(Property::Nodes);
}

void TreeView::SetSelectedItem(TreeNode* node) {
    if (node != selected_) {
        selected_ = node;
        Tell(Property::SelectedNode);
    }
}

void TreeView::Pick(TreeNode& node) {
    if (Usable()) {
        SetSelectedItem(&node);
    }
}

void TreeView::DoubleClick() {
    if (Usable()) {
        DblClick.Raise();
    }
}

void TreeView::Type(char16_t character) {
    if (Usable()) {
        KeyPress.Raise(static_cast<std::int16_t>(character));
    }
}

void TreeView::Scroll(TreeNode& node) {
    inView_ = &node;
    Tell(Property::NodeInView);
}

}  // namespace lintara::forms
