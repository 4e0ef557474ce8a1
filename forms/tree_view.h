// A tree of nodes, of which one at most is selected.
#pragma once

#include "forms/color.h"
#include "forms/control.h"
#include "forms/event.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace lintara::forms {

class TreeView;

// A node. Handles are plain pointers, valid until the tree is cleared.
class TreeNode {
  public:
    [[nodiscard]] const Text& Key() const { return key_; }
    [[nodiscard]] const Text& Caption() const { return caption_; }
    // Null for a node at the top.
    [[nodiscard]] TreeNode* Parent() const { return parent_; }
    // In the order in which they are shown.
    [[nodiscard]] const std::vector<TreeNode*>& Children() const { return children_; }

    // What the program remembers with the node.
    Text tag;

    [[nodiscard]] bool Bold() const { return bold_; }
    void SetBold(bool bold);
    [[nodiscard]] Color ForeColor() const { return foreColor_; }
    void SetForeColor(Color color);
    [[nodiscard]] bool Expanded() const { return expanded_; }
    void SetExpanded(bool expanded);
    // Puts its children in the order of their captions, without regard to letter case, now and whenever one
    // is added.
    [[nodiscard]] bool Sorted() const { return sorted_; }
    void SetSorted(bool sorted);

    // Expands the nodes above it and scrolls the tree to it.
    void EnsureVisible();

  private:
    friend class TreeView;

    TreeNode(TreeView& tree, TreeNode* parent, TextView key, TextView caption)
        : tree_(tree), parent_(parent), key_(key), caption_(caption) {}

    void Adopt(TreeNode& child);

    TreeView& tree_;
    TreeNode* parent_;
    Text key_;
    Text caption_;
    std::vector<TreeNode*> children_;
    bool bold_ = false;
    Color foreColor_ = Color::WindowText;
    bool expanded_ = false;
    bool sorted_ = false;
};

class TreeView final : public Control {
  public:
    using Control::Control;

    void Accept(ControlVisitor& visitor) override;
    [[nodiscard]] bool TakesFocus() const override { return true; }

    // All nodes, in the order in which they were added.
    [[nodiscard]] const std::vector<std::unique_ptr<TreeNode>>& Nodes() const { return nodes_; }
    // Those at the top.
    [[nodiscard]] const std::vector<TreeNode*>& Roots() const { return roots_; }
    // Null when there is none.
    [[nodiscard]] TreeNode* Find(TextView key) const;

    // Adds a node as the last one below `parent`, at the top when that is null. A key that another node has
    // is an error, which changes nothing; an empty key is none, and any number of nodes may have it.
    Result<TreeNode*> Add(TreeNode* parent, TextView key, TextView caption);
    void Clear();

    [[nodiscard]] TreeNode* SelectedItem() const { return selected_; }
    void SetSelectedItem(TreeNode* node);
    // The node that was last scrolled to; null when none was.
    [[nodiscard]] TreeNode* InView() const { return inView_; }

    Event<> DblClick;
    // The character of a key that was pressed in the tree.
    Event<std::int16_t> KeyPress;

    // The user selects a node, opens or closes it, clicks twice on the selected one, types a character.
    // Ignored when the tree is not usable.
    void Pick(TreeNode& node);
    void DoubleClick();
    void Type(char16_t character);

  private:
    friend class TreeNode;

    void Scroll(TreeNode& node);

    std::vector<std::unique_ptr<TreeNode>> nodes_;
    std::map<Text, TreeNode*, std::less<>> byKey_;
    std::vector<TreeNode*> roots_;
    TreeNode* selected_ = nullptr;
    TreeNode* inView_ = nullptr;
};

}  // namespace lintara::forms
