#include "tests/ui_win32/sample_form.h"
#include "ui/win32/system_colors.h"

#include <algorithm>
#include <cstring>

namespace lintara::ui::win32 {
namespace {

struct TreeWindowTest : ShownFormTest {
    TreeWindowTest() {
        Assign(fruits, form.tree.Add(nullptr, u"", u"Fruits"));
        Assign(pear, form.tree.Add(fruits, u"p", u"pear"));
        Assign(apple, form.tree.Add(fruits, u"a", u"Apple"));
        Assign(nuts, form.tree.Add(nullptr, u"", u"Nuts"));
        Assign(hazel, form.tree.Add(nuts, u"h", u"hazel"));
        fruits->SetExpanded(true);
    }

    static LRESULT Ask(HWND tree, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendMessageW(tree, message, wParam, lParam);
    }
    static LPARAM Next(HWND tree, WPARAM which, LPARAM item) {
        return Ask(tree, TVM_GETNEXTITEM, which, item);
    }

    struct Item {
        Text caption;
        UINT state = 0;
    };
    static Item ItemAt(HWND tree, LPARAM handle) {
        std::array<wchar_t, 100> caption{};
        TVITEMW item{};
        item.mask = TVIF_TEXT | TVIF_STATE;
        item.stateMask = 0xFFFF;
        item.hItem = reinterpret_cast<HTREEITEM>(handle);
        item.pszText = caption.data();
        item.cchTextMax = static_cast<int>(caption.size());
        Ask(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        const std::wstring text = caption.data();
        return {.caption = Text(text.begin(), text.end()), .state = item.state};
    }
    // All items with their indentation, whether they are seen or not.
    static std::vector<Text> ItemsOf(HWND tree, LPARAM parent = reinterpret_cast<LPARAM>(TVI_ROOT),
                                     const Text& indentation = {}) {
        std::vector<Text> items;
        for (LPARAM item = Next(tree, TVGN_CHILD, parent); item != 0; item = Next(tree, TVGN_NEXT, item)) {
            items.push_back(indentation + ItemAt(tree, item).caption);
            const std::vector<Text> below = ItemsOf(tree, item, indentation + u"  ");
            items.insert(items.end(), below.begin(), below.end());
        }
        return items;
    }
    static LPARAM Find(HWND tree, TextView caption, LPARAM parent = reinterpret_cast<LPARAM>(TVI_ROOT)) {
        for (LPARAM item = Next(tree, TVGN_CHILD, parent); item != 0; item = Next(tree, TVGN_NEXT, item)) {
            if (ItemAt(tree, item).caption == caption) {
                return item;
            }
            if (const LPARAM inner = Find(tree, caption, item); inner != 0) {
                return inner;
            }
        }
        return 0;
    }
    static POINT MiddleOf(HWND tree, LPARAM item) {
        RECT place{};
        std::memcpy(&place, &item, sizeof item);
        Ask(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place));
        return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    }

    forms::TreeNode* fruits = nullptr;
    forms::TreeNode* pear = nullptr;
    forms::TreeNode* apple = nullptr;
    forms::TreeNode* nuts = nullptr;
    forms::TreeNode* hazel = nullptr;
};

TEST_F(TreeWindowTest, ShowsTheNodesAsTheFormHasThem) {
    pear->SetBold(true);
    Show([&](FormWindow& window) {
        const HWND tree = window.HandleOf(form.tree);
        EXPECT_EQ(ItemsOf(tree), (std::vector<Text>{u"Fruits", u"  pear", u"  Apple", u"Nuts", u"  hazel"}));
        EXPECT_NE(ItemAt(tree, Find(tree, u"Fruits")).state & TVIS_EXPANDED, 0U);
        EXPECT_EQ(ItemAt(tree, Find(tree, u"Nuts")).state & TVIS_EXPANDED, 0U);
        EXPECT_NE(ItemAt(tree, Find(tree, u"pear")).state & TVIS_BOLD, 0U);
        EXPECT_EQ(ItemAt(tree, Find(tree, u"Apple")).state & TVIS_BOLD, 0U);
        EXPECT_EQ(Next(tree, TVGN_CARET, 0), 0);
        EXPECT_EQ(TextOf(tree), u"Places");
    });
}

TEST_F(TreeWindowTest, ShowsWhatChangesWhileItIsShown) {
    Show([&](FormWindow& window) {
        const HWND tree = window.HandleOf(form.tree);
        fruits->SetSorted(true);
        forms::TreeNode* fig = nullptr;
        Assign(fig, form.tree.Add(fruits, u"f", u"fig"));
        EXPECT_EQ(ItemsOf(tree),
                  (std::vector<Text>{u"Fruits", u"  Apple", u"  fig", u"  pear", u"Nuts", u"  hazel"}));
        hazel->EnsureVisible();
        EXPECT_NE(ItemAt(tree, Find(tree, u"Nuts")).state & TVIS_EXPANDED, 0U);
        form.tree.SetSelectedItem(fig);
        EXPECT_EQ(Next(tree, TVGN_CARET, 0), Find(tree, u"fig"));
        form.tree.SetSelectedItem(nullptr);
        EXPECT_EQ(Next(tree, TVGN_CARET, 0), 0);
        form.tree.Clear();
        EXPECT_EQ(ItemsOf(tree), std::vector<Text>{});
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(TreeWindowTest, TheUserSelectsOpensAndCloses) {
    Show([&](FormWindow& window) {
        const HWND tree = window.HandleOf(form.tree);
        Ask(tree, TVM_SELECTITEM, TVGN_CARET, Find(tree, u"pear"));
        EXPECT_EQ(form.tree.SelectedItem(), pear);
        const POINT middle = MiddleOf(tree, Find(tree, u"Apple"));
        // The button goes up before the tree waits for a dragging mouse.
        ::PostMessageW(tree, WM_LBUTTONUP, 0, MAKELPARAM(middle.x, middle.y));
        ::SendMessageW(tree, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(middle.x, middle.y));
        toolkit.DoEvents();
        EXPECT_EQ(form.tree.SelectedItem(), apple);
        EXPECT_EQ(form.ActiveControl(), &form.tree);
        form.tree.SetSelectedItem(nuts);
        Press(VK_RIGHT);
        EXPECT_TRUE(nuts->Expanded());
        Press(VK_LEFT);
        EXPECT_FALSE(nuts->Expanded());
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(TreeWindowTest, ADoubleClickOnANodeIsTold) {
    Show([&](FormWindow& window) {
        const HWND tree = window.HandleOf(form.tree);
        Ask(tree, TVM_SELECTITEM, TVGN_CARET, Find(tree, u"pear"));
        const POINT node = MiddleOf(tree, Find(tree, u"pear"));
        ::SendMessageW(tree, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(node.x, node.y));
        EXPECT_EQ(form.log, Log{"tree_DblClick"});
        ::SendMessageW(tree, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(node.x, 220));
    });
    EXPECT_EQ(form.log, Log{"tree_DblClick"});
}

TEST_F(TreeWindowTest, KeysAreToldOnceAndEnterIsTheForms) {
    Show([&](FormWindow&) {
        form.tree.SetFocus();
        Press('H');
        Press(VK_RETURN);
    });
    EXPECT_EQ(form.log, (Log{"tree_KeyPress 104", "tree_KeyPress 13"}));
}

TEST_F(TreeWindowTest, NodesHaveTheirColors) {
    hazel->SetForeColor(forms::Color::Highlight);
    Show([&](FormWindow& window) {
        const HWND tree = window.HandleOf(form.tree);
        NMTVCUSTOMDRAW drawing{};
        drawing.nmcd.hdr = {.hwndFrom = tree, .idFrom = 0, .code = static_cast<UINT>(NM_CUSTOMDRAW)};
        const auto draw = [&](DWORD stage, const forms::TreeNode* node, UINT state) {
            drawing.nmcd.dwDrawStage = stage;
            drawing.nmcd.lItemlParam = reinterpret_cast<LPARAM>(node);
            drawing.nmcd.uItemState = state;
            drawing.clrText = 0x123456;
            return ::SendMessageW(window.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&drawing));
        };
        EXPECT_EQ(draw(CDDS_PREPAINT, nullptr, 0), CDRF_NOTIFYITEMDRAW);
        draw(CDDS_ITEMPREPAINT, hazel, 0);
        EXPECT_EQ(drawing.clrText, ::GetSysColor(COLOR_HIGHLIGHT));
        draw(CDDS_ITEMPREPAINT, pear, 0);
        EXPECT_EQ(drawing.clrText, ::GetSysColor(COLOR_WINDOWTEXT));
        draw(CDDS_ITEMPREPAINT, hazel, CDIS_SELECTED);
        EXPECT_EQ(drawing.clrText, 0x123456U);
    });
}

TEST_F(TreeWindowTest, TheNodeThatTheFormWantsIsInView) {
    forms::TreeNode* last = nullptr;
    for (int i = 0; i < 100; ++i) {
        Assign(last, form.tree.Add(nuts, u"", u"nut"));
    }
    last->EnsureVisible();
    Show([&](FormWindow& window) {
        const HWND tree = window.HandleOf(form.tree);
        EXPECT_NE(Next(tree, TVGN_FIRSTVISIBLE, 0), Find(tree, u"Fruits"));
    });
}

using ArrowsWindowTest = ShownFormTest;

TEST_F(ArrowsWindowTest, AStepCountsOnceAndStopsAtTheEnds) {
    Show([&](FormWindow& window) {
        const HWND arrows = window.HandleOf(form.udCount);
        RECT inside{};
        ::GetClientRect(arrows, &inside);
        const auto press = [&](LONG y) { Click(arrows, {inside.right / 2, y}); };
        press(2);
        EXPECT_EQ(form.txtCount.Contents(), u"6");
        EXPECT_EQ(TextOf(window.HandleOf(form.txtCount)), u"6");
        EXPECT_EQ(form.udCount.Value(), 6);
        press(inside.bottom - 2);
        EXPECT_EQ(form.udCount.Value(), 5);
        Attempt(form.udCount.SetValue(7));
        form.log.clear();
        press(2);
        EXPECT_EQ(form.udCount.Value(), 7);
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(ArrowsWindowTest, TheKeysAndTheWheelCountToo) {
    Show([&](FormWindow& window) {
        form.txtCount.SetFocus();
        Press(VK_UP);
        EXPECT_EQ(form.txtCount.Contents(), u"6");
        Press(VK_DOWN);
        EXPECT_EQ(form.txtCount.Contents(), u"5");
        const auto turn = [&](int by) {
            ::SendMessageW(window.HandleOf(form.txtCount), WM_MOUSEWHEEL, static_cast<WPARAM>(by) << 16U, 0);
        };
        turn(WHEEL_DELTA / 2);
        EXPECT_EQ(form.txtCount.Contents(), u"5");
        turn(WHEEL_DELTA / 2);
        EXPECT_EQ(form.txtCount.Contents(), u"6");
        turn(-2 * WHEEL_DELTA);
        EXPECT_EQ(form.txtCount.Contents(), u"4");
    });
}

}  // namespace
}  // namespace lintara::ui::win32
