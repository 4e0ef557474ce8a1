#include "tests/ui_qt/sample_form.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QTreeWidget>
#include <QWheelEvent>

namespace lintara::ui {
namespace {

struct TreeWindowTest : ShownFormTest {
    TreeWindowTest() {
        group = *form.tree.Add(nullptr, u"", u"Group");
        first = *form.tree.Add(group, u"k1", u"First");
        second = *form.tree.Add(group, u"k2", u"Second");
        group->SetExpanded(true);
        first->SetBold(true);
        first->SetForeColor(forms::Color::Highlight);
    }

    static QTreeWidgetItem* ItemNamed(QTreeWidget& tree, const char* caption) {
        const auto found =
            tree.findItems(QString::fromLatin1(caption), Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? nullptr : found.front();
    }
    static QPoint PlaceOf(QTreeWidget& tree, const char* caption) {
        return tree.visualItemRect(ItemNamed(tree, caption)).center();
    }

    forms::TreeNode* group = nullptr;
    forms::TreeNode* first = nullptr;
    forms::TreeNode* second = nullptr;
};

TEST_F(TreeWindowTest, NodesAreShownAsTheyAre) {
    Show([&](FormWindow& window) {
        auto& tree = WidgetOf<QTreeWidget>(window, form.tree);
        ASSERT_EQ(tree.topLevelItemCount(), 1);
        EXPECT_TRUE(tree.topLevelItem(0)->isExpanded());
        EXPECT_EQ(tree.topLevelItem(0)->child(1)->text(0), QStringLiteral("Second"));
        EXPECT_TRUE(ItemNamed(tree, "First")->font(0).bold());
        EXPECT_FALSE(ItemNamed(tree, "Second")->font(0).bold());
        EXPECT_NE(ItemNamed(tree, "First")->foreground(0).style(), Qt::NoBrush);
        EXPECT_EQ(ItemNamed(tree, "Second")->foreground(0).style(), Qt::NoBrush);
        EXPECT_TRUE(tree.selectedItems().isEmpty());
    });
}

TEST_F(TreeWindowTest, AClickSelectsANode) {
    Show([&](FormWindow& window) {
        auto& tree = WidgetOf<QTreeWidget>(window, form.tree);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, PlaceOf(tree, "Second"));
        EXPECT_EQ(form.tree.SelectedItem(), second);
        EXPECT_EQ(form.ActiveControl(), &form.tree);
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(TreeWindowTest, ADoubleClickOnANodeIsOneEvent) {
    Show([&](FormWindow& window) {
        auto& tree = WidgetOf<QTreeWidget>(window, form.tree);
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, PlaceOf(tree, "First"));
        EXPECT_EQ(form.tree.SelectedItem(), first);
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, tree.viewport()->rect().bottomRight());
    });
    EXPECT_EQ(form.log, Log{"tree_DblClick"});
}

TEST_F(TreeWindowTest, KeysMoveTheSelectionAndTellTheirCharacters) {
    Show([&](FormWindow& window) {
        form.tree.SetSelectedItem(first);
        form.tree.SetFocus();
        QTest::keyClick(window.focusWidget(), Qt::Key_Down);
        EXPECT_EQ(form.tree.SelectedItem(), second);
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(form.log, Log{"tree_KeyPress 13"});
}

TEST_F(TreeWindowTest, WhatTheUserOpensAndClosesTheFormKnows) {
    Show([&](FormWindow& window) {
        auto& tree = WidgetOf<QTreeWidget>(window, form.tree);
        form.tree.SetSelectedItem(group);
        QTest::keyClick(&tree, Qt::Key_Left);
        EXPECT_FALSE(group->Expanded());
        QTest::keyClick(&tree, Qt::Key_Right);
        EXPECT_TRUE(group->Expanded());
    });
}

TEST_F(TreeWindowTest, ChangesOfTheFormAreShown) {
    Show([&](FormWindow& window) {
        auto& tree = WidgetOf<QTreeWidget>(window, form.tree);
        forms::TreeNode* third = *form.tree.Add(group, u"k3", u"Third");
        form.tree.SetSelectedItem(third);
        group->SetExpanded(false);
        third->EnsureVisible();
        EXPECT_EQ(tree.currentItem(), ItemNamed(tree, "Third"));
        EXPECT_TRUE(tree.currentItem()->isSelected());
        EXPECT_TRUE(tree.topLevelItem(0)->isExpanded());
        form.tree.Clear();
        EXPECT_EQ(tree.topLevelItemCount(), 0);
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(TreeWindowTest, AFormMayEmptyTheTreeInItsOwnEvent) {
    form.tree.DblClick.Handle([&] { form.tree.Clear(); });
    form.tree.KeyPress.Handle([&](std::int16_t) { form.tree.Clear(); });
    Show([&](FormWindow& window) {
        auto& tree = WidgetOf<QTreeWidget>(window, form.tree);
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, PlaceOf(tree, "First"));
        EXPECT_EQ(tree.topLevelItemCount(), 0);
        ASSERT_TRUE(form.tree.Add(nullptr, u"", u"New"));
        QTest::keyClick(&tree, Qt::Key_A);
        EXPECT_EQ(tree.topLevelItemCount(), 0);
    });
}

TEST_F(TreeWindowTest, ANodeThatTheFormScrolledToIsInView) {
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(form.tree.Add(nullptr, u"", u"more"));
    }
    forms::TreeNode* last = *form.tree.Add(nullptr, u"last", u"Last");
    last->EnsureVisible();
    Show([&](FormWindow& window) {
        auto& tree = WidgetOf<QTreeWidget>(window, form.tree);
        EXPECT_TRUE(tree.viewport()->rect().contains(PlaceOf(tree, "Last")));
        first->EnsureVisible();
        EXPECT_TRUE(tree.viewport()->rect().contains(PlaceOf(tree, "First")));
    });
}

struct ArrowsWindowTest : ShownFormTest {
    static QPoint CenterOf(QAbstractSpinBox& arrows, QStyle::SubControl part) {
        QStyleOptionSpinBox option;
        option.initFrom(&arrows);
        option.subControls = QStyle::SC_All;
        return arrows.style()->subControlRect(QStyle::CC_SpinBox, &option, part, &arrows).center();
    }
    static void Turn(QWidget& widget, int angle) {
        QWheelEvent event(widget.rect().center(), widget.mapToGlobal(widget.rect().center()), {}, {0, angle},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&widget, &event);
    }
};

TEST_F(ArrowsWindowTest, AClickCountsOnce) {
    Show([&](FormWindow& window) {
        auto& arrows = WidgetOf<QAbstractSpinBox>(window, form.udCount);
        QTest::mouseClick(&arrows, Qt::LeftButton, {}, CenterOf(arrows, QStyle::SC_SpinBoxUp));
        EXPECT_EQ(form.txtCount.Contents(), u"6");
        EXPECT_EQ(WidgetOf<QLineEdit>(window, form.txtCount).text(), QStringLiteral("6"));
        QTest::mouseClick(&arrows, Qt::LeftButton, {}, CenterOf(arrows, QStyle::SC_SpinBoxDown));
        EXPECT_EQ(form.txtCount.Contents(), u"5");
    });
    EXPECT_EQ(form.log, (Log{"txtCount_Change", "udCount_Change", "txtCount_Change", "udCount_Change"}));
}

TEST_F(ArrowsWindowTest, KeysAndTheWheelCountInTheBox) {
    Show([&](FormWindow& window) {
        QWidget& box = *window.WidgetOf(form.txtCount);
        form.txtCount.SetFocus();
        QTest::keyClick(&box, Qt::Key_Up);
        EXPECT_EQ(form.txtCount.Contents(), u"6");
        Turn(box, -60);
        EXPECT_EQ(form.txtCount.Contents(), u"6");
        Turn(box, -60);
        EXPECT_EQ(form.txtCount.Contents(), u"5");
        QTest::keyClick(&box, Qt::Key_Down);
        EXPECT_EQ(form.txtCount.Contents(), u"4");
        EXPECT_EQ(form.udCount.Value(), 4);
    });
}

TEST_F(ArrowsWindowTest, StopsAtTheEndsAndCountsFromWhatIsTyped) {
    Show([&](FormWindow& window) {
        QWidget& box = *window.WidgetOf(form.txtCount);
        form.txtCount.SelectAll();
        QTest::keyClicks(&box, QStringLiteral("7"));
        QTest::keyClick(&box, Qt::Key_Up);
        EXPECT_EQ(form.txtCount.Contents(), u"7");
        form.txtCount.SelectAll();
        QTest::keyClicks(&box, QStringLiteral("2"));
        QTest::keyClick(&box, Qt::Key_Up);
        EXPECT_EQ(form.txtCount.Contents(), u"3");
    });
}

TEST_F(ArrowsWindowTest, DisabledArrowsDoNothing) {
    form.udCount.SetEnabled(false);
    Show([&](FormWindow& window) {
        auto& arrows = WidgetOf<QAbstractSpinBox>(window, form.udCount);
        QTest::mouseClick(&arrows, Qt::LeftButton, {}, CenterOf(arrows, QStyle::SC_SpinBoxUp));
        QTest::keyClick(window.WidgetOf(form.txtCount), Qt::Key_Up);
    });
    EXPECT_EQ(form.txtCount.Contents(), u"5");
    EXPECT_EQ(form.log, Log{});
}

}  // namespace
}  // namespace lintara::ui
