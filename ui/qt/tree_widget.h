// A tree view.
#pragma once

#include "forms/tree_view.h"
#include "ui/qt/control_view.h"

#include <QTreeWidget>
#include <unordered_map>

namespace lintara::ui {

class TreeViewWidget final : public QTreeWidget, public ControlView {
  public:
    TreeViewWidget(QWidget* parent, forms::TreeView& tree, MirrorGate& gate);

    [[nodiscard]] QWidget& Widget() override { return *this; }
    void Update(forms::Property property) override;
    void UpdateLook() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void ShowNodes();
    void ShowNode(const forms::TreeNode& node, QTreeWidgetItem& item);
    void ShowSelection();
    void ShowInView();
    void TakeSelection();
    void TakeExpansion(QTreeWidgetItem* item, bool expanded);
    [[nodiscard]] QTreeWidgetItem* ItemOf(const forms::TreeNode* node) const;
    [[nodiscard]] forms::TreeNode* NodeOf(const QTreeWidgetItem* item) const;

    forms::TreeView& tree_;
    MirrorGate& gate_;
    bool isTaking_ = false;
    std::unordered_map<const forms::TreeNode*, QTreeWidgetItem*> items_;
    std::unordered_map<const QTreeWidgetItem*, forms::TreeNode*> nodes_;
};

}  // namespace lintara::ui
