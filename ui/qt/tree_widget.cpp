#include "ui/qt/tree_widget.h"

#include "ui/qt/system_colors.h"
#include "ui/qt/text_conversion.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace lintara::ui {

TreeViewWidget::TreeViewWidget(QWidget* parent, forms::TreeView& tree, MirrorGate& gate)
    : QTreeWidget(parent), tree_(tree), gate_(gate) {
    setColumnCount(1);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    ShowNodes();
    ShowSelection();
    connect(this, &QTreeWidget::itemSelectionChanged, this, [this] { TakeSelection(); });
    connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* i) { TakeExpansion(i, true); });
    connect(this, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* i) { TakeExpansion(i, false); });
}

void TreeViewWidget::Update(forms::Property property) {
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

void TreeViewWidget::UpdateLook() {
    const MirrorGate::Mirroring mirroring(gate_);
    for (const auto& [node, item] : items_) {
        ShowNode(*node, *item);
    }
}

// Characters are what forms know of a key in a tree. Enter is all theirs; other keys move in the tree as
// well.
void TreeViewWidget::keyPressEvent(QKeyEvent* event) {
    if (!event->text().isEmpty()) {
        tree_.Type(event->text().front().unicode());
    }
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QTreeWidget::keyPressEvent(event);
    }
}

void TreeViewWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    const bool isOnNode = itemAt(event->pos()) != nullptr && event->button() == Qt::LeftButton;
    QTreeWidget::mouseDoubleClickEvent(event);
    if (isOnNode) {
        tree_.DoubleClick();
    }
}

void TreeViewWidget::showEvent(QShowEvent* event) {
    QTreeWidget::showEvent(event);
    ShowInView();
}

void TreeViewWidget::ShowNodes() {
    const MirrorGate::Mirroring mirroring(gate_);
    items_.clear();
    nodes_.clear();
    clear();
    // Parents are added before their children; the order among neighbours is the parent's.
    const auto addAll = [this](const auto& add, const std::vector<forms::TreeNode*>& nodes,
                               QTreeWidgetItem* parent) -> void {
        for (forms::TreeNode* node : nodes) {
            auto* item = parent == nullptr ? new QTreeWidgetItem(this) : new QTreeWidgetItem(parent);
            items_.emplace(node, item);
            nodes_.emplace(item, node);
            ShowNode(*node, *item);
            add(add, node->Children(), item);
            item->setExpanded(node->Expanded());
        }
    };
    addAll(addAll, tree_.Roots(), nullptr);
}

void TreeViewWidget::ShowNode(const forms::TreeNode& node, QTreeWidgetItem& item) {
    item.setText(0, ToQString(node.Caption()));
    QFont shown = font();
    shown.setBold(shown.bold() || node.Bold());
    item.setFont(0, shown);
    if (node.ForeColor() == forms::Color::WindowText) {
        item.setData(0, Qt::ForegroundRole, QVariant());
    } else {
        const QColor color = ResolvedColor(node.ForeColor(), palette());
        item.setForeground(0, ReadableColor(color, palette().color(QPalette::Base)));
    }
}

void TreeViewWidget::ShowSelection() {
    const MirrorGate::Mirroring mirroring(gate_);
    QTreeWidgetItem* selected = ItemOf(tree_.SelectedItem());
    if (selected == nullptr) {
        clearSelection();
    } else if (selected != currentItem() || !selected->isSelected()) {
        setCurrentItem(selected);
    }
}

void TreeViewWidget::ShowInView() {
    if (QTreeWidgetItem* item = ItemOf(tree_.InView())) {
        scrollToItem(item);
    }
}

void TreeViewWidget::TakeSelection() {
    const QList<QTreeWidgetItem*> selected = selectedItems();
    if (gate_.IsMirroring()) {
        return;
    }
    if (!selected.isEmpty()) {
        isTaking_ = true;
        tree_.Pick(*NodeOf(selected.front()));
        isTaking_ = false;
    }
    ShowSelection();
}

void TreeViewWidget::TakeExpansion(QTreeWidgetItem* item, bool expanded) {
    forms::TreeNode* node = NodeOf(item);
    if (gate_.IsMirroring() || node == nullptr) {
        return;
    }
    isTaking_ = true;
    node->SetExpanded(expanded);
    isTaking_ = false;
}

QTreeWidgetItem* TreeViewWidget::ItemOf(const forms::TreeNode* node) const {
    const auto found = items_.find(node);
    return found == items_.end() ? nullptr : found->second;
}

forms::TreeNode* TreeViewWidget::NodeOf(const QTreeWidgetItem* item) const {
    const auto found = nodes_.find(item);
    return found == nodes_.end() ? nullptr : found->second;
}

}  // namespace lintara::ui
