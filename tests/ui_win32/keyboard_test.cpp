#include "tests/ui_win32/sample_form.h"

namespace lintara::ui::win32 {
namespace {

struct KeyboardWindowTest : ShownFormTest {
    // Where Tab leads from each control on, `count` times.
    std::vector<forms::Control*> TabStops(FormWindow& window, int count,
                                          std::initializer_list<int> held = {}) {
        std::vector<forms::Control*> stops;
        for (int i = 0; i < count; ++i) {
            Press(VK_TAB, held);
            stops.push_back(form.ActiveControl());
            EXPECT_EQ(::GetFocus(), window.HandleOf(*form.ActiveControl()));
        }
        return stops;
    }
};

TEST_F(KeyboardWindowTest, TabGoesRoundAndReachesTheSelectedOptionOnly) {
    const std::vector<forms::Control*> expected{&form.txtCount,  &form.chkOn,   &form.optOne,
                                                &form.txtPage,   &form.tree,    &form.cmdOk,
                                                &form.cmdCancel, &form.cmdMore, &form.txtName};
    Show([&](FormWindow& window) {
        EXPECT_EQ(form.ActiveControl(), &form.txtName);
        EXPECT_EQ(::GetFocus(), window.HandleOf(form.txtName));
        EXPECT_EQ(TabStops(window, 9), expected);
        const std::vector<forms::Control*> back = TabStops(window, 9, {VK_SHIFT});
        EXPECT_EQ(back.front(), &form.cmdMore);
        EXPECT_EQ(back.back(), &form.txtName);
    });
    EXPECT_EQ(form.log, (Log{"txtName_GotFocus", "txtName_GotFocus"}));
}

TEST_F(KeyboardWindowTest, AGroupWithoutASelectedOptionIsNotSelectedByTab) {
    form.optOne.SetValue(false);
    Show([&](FormWindow&) {
        form.chkOn.SetFocus();
        Press(VK_TAB);
        EXPECT_EQ(form.ActiveControl(), &form.optOne);
        EXPECT_FALSE(form.optOne.Value());
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(KeyboardWindowTest, ArrowsSelectTheNeighboursOfAnOption) {
    form.optTwo.SetEnabled(false);
    Show([&](FormWindow& window) {
        form.optOne.SetFocus();
        Press(VK_DOWN);
        EXPECT_TRUE(form.optThree.Value());
        EXPECT_EQ(::GetFocus(), window.HandleOf(form.optThree));
        EXPECT_EQ(::SendMessageW(window.HandleOf(form.optThree), BM_GETCHECK, 0, 0), BST_CHECKED);
        EXPECT_EQ(::SendMessageW(window.HandleOf(form.optOne), BM_GETCHECK, 0, 0), BST_UNCHECKED);
        Press(VK_RIGHT);
        EXPECT_TRUE(form.optOne.Value());
        Press(VK_UP);
        EXPECT_TRUE(form.optThree.Value());
    });
    EXPECT_EQ(form.log, (Log{"optThree_Click", "optOne_Click", "optThree_Click"}));
}

TEST_F(KeyboardWindowTest, AccessKeysPressToggleSelectAndLeadOn) {
    Show([&](FormWindow& window) {
        PressAlt(u'm');
        EXPECT_EQ(form.ActiveControl(), &form.cmdMore);
        PressAlt(u'o');
        PressAlt(u't');
        EXPECT_EQ(form.ActiveControl(), &form.optTwo);
        PressAlt(u'p');
        EXPECT_EQ(form.ActiveControl(), &form.txtPage);
        EXPECT_EQ(::GetFocus(), window.HandleOf(form.txtPage));
        PressAlt(u'B');
    });
    EXPECT_EQ(form.log, (Log{"cmdMore_Click", "chkOn_Click", "optTwo_Click", "cmdOk_Click"}));
    EXPECT_EQ(form.txtPage.Contents(), u"one\r\ntwo");
}

TEST_F(KeyboardWindowTest, AnAccessKeyOfSeveralControlsGoesRoundAmongThem) {
    Show([&](FormWindow&) {
        PressAlt(u'n');
        EXPECT_EQ(form.ActiveControl(), &form.optOne);
        PressAlt(u'n');
        EXPECT_EQ(form.ActiveControl(), &form.txtName);
    });
    EXPECT_EQ(form.log, Log{"txtName_GotFocus"});
}

TEST_F(KeyboardWindowTest, AltAndAKeyOfTheKeyboardIsAnAccessKey) {
    form.txtName.KeyDown.Handle({});
    Show([&](FormWindow&) {
        const Holding holding({VK_MENU});
        ::PostMessageW(::GetFocus(), WM_SYSKEYDOWN, 'M', KeyData('M', true));
        toolkit.DoEvents();
    });
    EXPECT_EQ(form.log, Log{"cmdMore_Click"});
}

TEST_F(KeyboardWindowTest, EnterPressesTheDefaultButtonOrTheOneWithTheFocus) {
    Show([&](FormWindow&) {
        Press(VK_RETURN);
        form.cmdMore.SetFocus();
        Press(VK_RETURN);
    });
    EXPECT_EQ(form.log, (Log{"cmdOk_Click", "cmdMore_Click"}));
}

TEST_F(KeyboardWindowTest, TheButtonThatEnterPressesIsDrawnSo) {
    const auto isDefault = [](HWND button) {
        return (::GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    };
    Show([&](FormWindow& window) {
        EXPECT_TRUE(isDefault(window.HandleOf(form.cmdOk)));
        form.cmdMore.SetFocus();
        EXPECT_FALSE(isDefault(window.HandleOf(form.cmdOk)));
        EXPECT_TRUE(isDefault(window.HandleOf(form.cmdMore)));
        form.txtName.SetFocus();
        EXPECT_TRUE(isDefault(window.HandleOf(form.cmdOk)));
        EXPECT_FALSE(isDefault(window.HandleOf(form.cmdMore)));
    });
}

TEST_F(KeyboardWindowTest, EscPressesTheCancelButton) {
    Show([&](FormWindow&) { Press(VK_ESCAPE); });
    EXPECT_EQ(form.log, Log{"cmdCancel_Click"});
}

TEST_F(KeyboardWindowTest, SpacePressesAndToggles) {
    Show([&](FormWindow& window) {
        form.chkOn.SetFocus();
        Press(VK_SPACE);
        ::SendMessageW(window.HandleOf(form.chkOn), WM_KEYUP, VK_SPACE, KeyData(VK_SPACE));
        EXPECT_EQ(form.chkOn.Value(), forms::CheckBox::Checked);
        form.cmdMore.SetFocus();
        Press(VK_SPACE);
        ::SendMessageW(window.HandleOf(form.cmdMore), WM_KEYUP, VK_SPACE, KeyData(VK_SPACE));
    });
    EXPECT_EQ(form.log, (Log{"chkOn_Click", "cmdMore_Click"}));
}

TEST_F(KeyboardWindowTest, AClickGivesTheFocus) {
    Show([&](FormWindow& window) {
        Click(window.HandleOf(form.txtCount));
        EXPECT_EQ(form.ActiveControl(), &form.txtCount);
        Click(window.HandleOf(form.txtName));
        EXPECT_EQ(form.ActiveControl(), &form.txtName);
    });
    EXPECT_EQ(form.log, Log{"txtName_GotFocus"});
}

TEST_F(KeyboardWindowTest, TheFormMovesTheFocusOfADisabledOrHiddenControl) {
    Show([&](FormWindow& window) {
        form.txtName.SetEnabled(false);
        EXPECT_EQ(form.ActiveControl(), &form.txtCount);
        EXPECT_EQ(::GetFocus(), window.HandleOf(form.txtCount));
        form.txtCount.SetVisible(false);
        EXPECT_EQ(form.ActiveControl(), &form.chkOn);
        EXPECT_EQ(::GetFocus(), window.HandleOf(form.chkOn));
    });
}

TEST_F(KeyboardWindowTest, TheFocusSurvivesAMessage) {
    form.txtName.KeyDown.Handle([&](std::int16_t, std::int16_t) {
        AnswerNextMessage(later, [](HWND) {});
        toolkit.ShowMessage(u"Hello", forms::MessageStyle::Information, u"");
    });
    Show([&](FormWindow& window) {
        form.txtName.Select(1, 1);
        Press(VK_F5);
        EXPECT_EQ(::GetFocus(), window.HandleOf(form.txtName));
        EXPECT_EQ(form.txtName.SelText(), u"b");
    });
    EXPECT_EQ(form.log, Log{});
}

}  // namespace
}  // namespace lintara::ui::win32
