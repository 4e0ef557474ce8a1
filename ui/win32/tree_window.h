// A tree view.
#pragma once

#include "forms/tree_view.h"
#include "ui/win32/control_view.h"

#include <unordered_map>
#include <vector>

namespace lintara::ui::win32 {

class TreeWindow final : public ControlView {
  public:
    TreeWindow(ViewContext& context, HWND parent, forms::TreeView& tree);

    void Update(forms::Property property) override;
    LRESULT Notify(NMHDR& header) override;

    // Scrolls to the node that the form wants to be seen. For when the tree has got its size.
    void ShowInView();

    // Null for a node that is not shown.
    [[nodiscard]] HTREEITEM ItemOf(const forms::TreeNode* node) const;

  protected:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    void ShowNodes();
    void Insert(const std::vector<forms::TreeNode*>& nodes, HTREEITEM parent);
    void ShowSelection();
    void TakeSelection(const TVITEMW& item);
    void TakeExpansion(const TVITEMW& item);
    [[nodiscard]] LRESULT Color(NMTVCUSTOMDRAW& drawing) const;

    forms::TreeView& tree_;
    bool isTaking_ = false;
    std::unordered_map<const forms::TreeNode*, HTREEITEM> items_;
};

}  // namespace lintara::ui::win32
