#include "tests/ui_win32/sample_form.h"

namespace lintara::ui::win32 {
namespace {

using ButtonsWindowTest = ShownFormTest;

LRESULT StateOf(HWND button) {
    return ::SendMessageW(button, BM_GETCHECK, 0, 0);
}

TEST_F(ButtonsWindowTest, AClickPressesOnce) {
    Show([&](FormWindow& window) { ::SendMessageW(window.HandleOf(form.cmdMore), BM_CLICK, 0, 0); });
    EXPECT_EQ(form.log, Log{"cmdMore_Click"});
}

TEST_F(ButtonsWindowTest, ABoxIsToggledOnceByEachClick) {
    Show([&](FormWindow& window) {
        const HWND box = window.HandleOf(form.chkOn);
        ::SendMessageW(box, BM_CLICK, 0, 0);
        EXPECT_EQ(form.chkOn.Value(), forms::CheckBox::Checked);
        EXPECT_EQ(StateOf(box), BST_CHECKED);
        Click(box);
        EXPECT_EQ(form.chkOn.Value(), forms::CheckBox::Unchecked);
        EXPECT_EQ(StateOf(box), BST_UNCHECKED);
    });
    EXPECT_EQ(form.log, (Log{"chkOn_Click", "chkOn_Click"}));
}

TEST_F(ButtonsWindowTest, TheFormSetsABoxAndItsThirdState) {
    Show([&](FormWindow& window) {
        for (const std::int16_t value : {forms::CheckBox::Grayed, forms::CheckBox::Checked}) {
            Attempt(form.chkOn.SetValue(value));
            EXPECT_EQ(StateOf(window.HandleOf(form.chkOn)), value);
            Attempt(form.chkOn.SetValue(value));
        }
    });
    EXPECT_EQ(form.log, (Log{"chkOn_Click", "chkOn_Click"}));
}

TEST_F(ButtonsWindowTest, ABoxThatTheFormSetsBackIsShownSo) {
    form.chkOn.Click.Handle([&] { Attempt(form.chkOn.SetValue(forms::CheckBox::Unchecked)); });
    Show([&](FormWindow& window) {
        ::SendMessageW(window.HandleOf(form.chkOn), BM_CLICK, 0, 0);
        EXPECT_EQ(StateOf(window.HandleOf(form.chkOn)), BST_UNCHECKED);
    });
}

TEST_F(ButtonsWindowTest, ClickingAnOptionSelectsItAlone) {
    Show([&](FormWindow& window) {
        Click(window.HandleOf(form.optTwo));
        EXPECT_TRUE(form.optTwo.Value());
        EXPECT_FALSE(form.optOne.Value());
        EXPECT_EQ(StateOf(window.HandleOf(form.optTwo)), BST_CHECKED);
        EXPECT_EQ(StateOf(window.HandleOf(form.optOne)), BST_UNCHECKED);
        // The one that is selected is clicked again.
        Click(window.HandleOf(form.optTwo));
        form.optThree.SetValue(true);
        EXPECT_EQ(StateOf(window.HandleOf(form.optThree)), BST_CHECKED);
        EXPECT_EQ(StateOf(window.HandleOf(form.optTwo)), BST_UNCHECKED);
    });
    EXPECT_EQ(form.log, (Log{"optTwo_Click", "optThree_Click"}));
}

TEST_F(ButtonsWindowTest, TheFormCanHaveNoOptionSelected) {
    Show([&](FormWindow& window) {
        form.optOne.SetValue(false);
        EXPECT_EQ(StateOf(window.HandleOf(form.optOne)), BST_UNCHECKED);
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(ButtonsWindowTest, DisabledAndHiddenOnesAreSo) {
    form.cmdMore.SetEnabled(false);
    Show([&](FormWindow& window) {
        const HWND button = window.HandleOf(form.cmdMore);
        EXPECT_FALSE(::IsWindowEnabled(button));
        ::SendMessageW(button, BM_CLICK, 0, 0);
        form.cmdMore.SetEnabled(true);
        EXPECT_TRUE(::IsWindowEnabled(button));
        form.cmdMore.SetVisible(false);
        EXPECT_FALSE(::IsWindowVisible(button));
    });
    EXPECT_EQ(form.log, Log{});
}

}  // namespace
}  // namespace lintara::ui::win32
