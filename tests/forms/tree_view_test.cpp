#include "forms/tree_view.h"

#include "tests/forms/form_fixture.h"

#include <gtest/gtest.h>

namespace lintara::forms {
namespace {

struct TreeViewTest : testing::Test {
    TreeNode* Add(TreeNode* parent, TextView key, TextView caption) {
        return tree.Add(parent, key, caption).value_or(nullptr);
    }
    std::vector<Text> Captions(const std::vector<TreeNode*>& nodes) {
        std::vector<Text> captions;
        for (const TreeNode* node : nodes) {
            captions.push_back(node->Caption());
        }
        return captions;
    }

    Form form{u"FTest", u"Test", {3000, 2000}};
    TreeView tree{form, u"Tree1", {}};
};

TEST_F(TreeViewTest, NodesAreFoundByTheirKeys) {
    TreeNode* top = Add(nullptr, u"Back", u"Back");
    TreeNode* child = Add(top, u"Back.M", u"M");
    EXPECT_EQ(tree.Find(u"Back.M"), child);
    EXPECT_EQ(tree.Find(u"back.m"), nullptr);
    EXPECT_EQ(child->Parent(), top);
    EXPECT_EQ(top->Children(), std::vector<TreeNode*>{child});
    EXPECT_EQ(tree.Roots(), std::vector<TreeNode*>{top});
}

TEST_F(TreeViewTest, AKeyIsGivenOnce) {
    Add(nullptr, u"k", u"one");
    EXPECT_FALSE(tree.Add(nullptr, u"k", u"two"));
    EXPECT_EQ(tree.Nodes().size(), 1U);
    EXPECT_TRUE(tree.Add(nullptr, u"", u"three"));
    EXPECT_TRUE(tree.Add(nullptr, u"", u"four"));
}

TEST_F(TreeViewTest, SortedChildrenStandInTheOrderOfTheirCaptions) {
    TreeNode* top = Add(nullptr, u"", u"top");
    Add(top, u"", u"b");
    Add(top, u"", u"C");
    top->SetSorted(true);
    Add(top, u"", u"a");
    EXPECT_EQ(Captions(top->Children()), (std::vector<Text>{u"a", u"b", u"C"}));
}

TEST_F(TreeViewTest, ScrollingToANodeExpandsThoseAboveIt) {
    TreeNode* top = Add(nullptr, u"", u"top");
    TreeNode* middle = Add(top, u"", u"middle");
    TreeNode* low = Add(middle, u"", u"low");
    low->EnsureVisible();
    EXPECT_TRUE(top->Expanded());
    EXPECT_TRUE(middle->Expanded());
    EXPECT_FALSE(low->Expanded());
    EXPECT_EQ(tree.InView(), low);
}

TEST_F(TreeViewTest, ClearingItForgetsTheSelection) {
    tree.SetSelectedItem(Add(nullptr, u"k", u"one"));
    tree.Clear();
    EXPECT_EQ(tree.SelectedItem(), nullptr);
    EXPECT_EQ(tree.Find(u"k"), nullptr);
    EXPECT_TRUE(tree.Roots().empty());
}

TEST_F(TreeViewTest, TellsTheMirrorOfEachChangeOnce) {
    RecordingMirror mirror;
    form.SetMirror(&mirror);
    TreeNode* node = Add(nullptr, u"k", u"one");
    for (int i = 0; i < 2; ++i) {
        node->SetBold(true);
        node->SetForeColor(Color::Highlight);
        tree.SetSelectedItem(node);
    }
    const std::vector<std::pair<Control*, Property>> expected = {{&tree, Property::Nodes},
                                                                 {&tree, Property::Nodes},
                                                                 {&tree, Property::Nodes},
                                                                 {&tree, Property::SelectedNode}};
    EXPECT_EQ(mirror.changes, expected);
}

TEST_F(TreeViewTest, TellsTheMirrorOfNothingThatStaysAsItIs) {
    RecordingMirror mirror;
    form.SetMirror(&mirror);
    tree.Clear();
    EXPECT_TRUE(mirror.changes.empty());
    TreeNode* top = Add(nullptr, u"", u"top");
    Add(top, u"", u"b");
    top->SetSorted(true);
    mirror.changes.clear();
    top->SetSorted(true);
    top->SetExpanded(top->Expanded());
    tree.SetSelectedItem(nullptr);
    EXPECT_TRUE(mirror.changes.empty());
    top->SetSorted(false);
    Add(top, u"", u"a");
    EXPECT_EQ(Captions(top->Children()), (std::vector<Text>{u"b", u"a"}));
}

TEST_F(TreeViewTest, TheUserPicksAndChooses) {
    TreeNode* node = Add(nullptr, u"k", u"one");
    Log log;
    tree.DblClick.Handle([&] { log.emplace_back("double click"); });
    tree.KeyPress.Handle([&](std::int16_t key) { log.push_back("key " + std::to_string(key)); });
    support::ScriptedToolkit toolkit;
    toolkit.user = [&](Form&) {
        tree.Pick(*node);
        tree.DoubleClick();
        tree.Type(u'\r');
        tree.SetEnabled(false);
        tree.DoubleClick();
    };
    form.ShowModal(toolkit);
    EXPECT_EQ(tree.SelectedItem(), node);
    EXPECT_EQ(log, (Log{"double click", "key 13"}));
}

}  // namespace
}  // namespace lintara::forms
