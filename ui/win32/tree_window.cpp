#include "ui/win32/tree_window.h"

#include "platform/wide_text.h"
#include "ui/win32/system_colors.h"

namespace lintara::ui::win32 {
namespace {

constexpr DWORD treeStyle = TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS;

forms::TreeNode* NodeOf(const TVITEMW& item) {
    return reinterpret_cast<forms::TreeNode*>(item.lParam);
}

}  // namespace

// The name of the window is what assistive technology says of it.
TreeWindow::TreeWindow(ViewContext& context, HWND parent, forms::TreeView& tree)
    : ControlView(context, parent, tree, {.windowClass = WC_TREEVIEWW, .style = treeStyle},
                  platform::ToWide(tree.description)),
      tree_(tree) {
    ShowNodes();
    ShowSelection();
}

void TreeWindow::Update(forms::Property property) {
    if (isTaking_) {
        return;
    }
    switch (property) {
        case forms::Property::Nodes:
            ShowNodes();
            ShowSelection();
            break;
        case forms::Property::SelectedNode:
            ShowSelection();
            break;
        case forms::Property::NodeInView:
            ShowInView();
            break;
        default:
            break;
    }
}

LRESULT TreeWindow::Notify(NMHDR& header) {
    switch (header.code) {
        case TVN_SELCHANGEDW:
            TakeSelection(reinterpret_cast<const NMTREEVIEWW&>(header).itemNew);
            return 0;
        case TVN_ITEMEXPANDEDW:
            TakeExpansion(reinterpret_cast<const NMTREEVIEWW&>(header).itemNew);
            return 0;
        case NM_CUSTOMDRAW:
            return Color(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
        default:
            return 0;
    }
}

// Characters are what forms know of a key in a tree. Enter is all theirs; others search in the tree as well.
// A double click is told when the tree has opened or closed the node.
LRESULT TreeWindow::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CHAR) {
        tree_.Type(static_cast<char16_t>(wParam));
        return wParam == VK_RETURN ? 0 : Default(message, wParam, lParam);
    }
    if (message != WM_LBUTTONDBLCLK) {
        return Default(message, wParam, lParam);
    }
    TVHITTESTINFO hit{};
    hit.pt = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    Send(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    const LRESULT result = Default(message, wParam, lParam);
    if ((hit.flags & TVHT_ONITEM) != 0) {
        tree_.DoubleClick();
    }
    return result;
}

void TreeWindow::ShowNodes() {
    const MirrorGate::Mirroring mirroring(Context().gate);
    Send(WM_SETREDRAW, FALSE);
    items_.clear();
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    Insert(tree_.Roots(), TVI_ROOT);
    Send(WM_SETREDRAW, TRUE);
    ::InvalidateRect(Handle(), nullptr, TRUE);
}

// Parents are added before their children, without which they cannot be open.
void TreeWindow::Insert(const std::vector<forms::TreeNode*>& nodes, HTREEITEM parent) {
    for (forms::TreeNode* node : nodes) {
        std::wstring caption = platform::ToWide(node->Caption());
        TVINSERTSTRUCTW insertion{};
        insertion.hParent = parent;
        insertion.hInsertAfter = TVI_LAST;
        insertion.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_STATE;
        insertion.item.pszText = caption.data();
        insertion.item.lParam = reinterpret_cast<LPARAM>(node);
        insertion.item.state = node->Bold() ? TVIS_BOLD : 0U;
        insertion.item.stateMask = TVIS_BOLD;
        const auto item =
            reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insertion)));
        items_.emplace(node, item);
        Insert(node->Children(), item);
        if (node->Expanded()) {
            Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
        }
    }
}

void TreeWindow::ShowSelection() {
    const MirrorGate::Mirroring mirroring(Context().gate);
    HTREEITEM selected = ItemOf(tree_.SelectedItem());
    if (reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, TVGN_CARET)) != selected) {
        Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(selected));
    }
}

void TreeWindow::ShowInView() {
    const MirrorGate::Mirroring mirroring(Context().gate);
    if (HTREEITEM item = ItemOf(tree_.InView())) {
        Send(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    }
}

void TreeWindow::TakeSelection(const TVITEMW& item) {
    if (IsMirroring() || item.hItem == nullptr || NodeOf(item) == nullptr) {
        return;
    }
    isTaking_ = true;
    tree_.Pick(*NodeOf(item));
    isTaking_ = false;
    ShowSelection();
}

void TreeWindow::TakeExpansion(const TVITEMW& item) {
    if (IsMirroring() || NodeOf(item) == nullptr) {
        return;
    }
    isTaking_ = true;
    NodeOf(item)->SetExpanded((item.state & TVIS_EXPANDED) != 0);
    isTaking_ = false;
}

// A selected node has the colours of selections.
LRESULT TreeWindow::Color(NMTVCUSTOMDRAW& drawing) const {
    if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) {
        return CDRF_NOTIFYITEMDRAW;
    }
    const auto* node = reinterpret_cast<const forms::TreeNode*>(drawing.nmcd.lItemlParam);
    const bool isSelected = (drawing.nmcd.uItemState & CDIS_SELECTED) != 0;
    if (drawing.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && node != nullptr && !isSelected) {
        drawing.clrText = ResolvedColor(node->ForeColor());
    }
    return CDRF_DODEFAULT;
}

HTREEITEM TreeWindow::ItemOf(const forms::TreeNode* node) const {
    const auto found = items_.find(node);
    return found == items_.end() ? nullptr : found->second;
}

}  // namespace lintara::ui::win32
