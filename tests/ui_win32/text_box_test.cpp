#include "tests/ui_win32/sample_form.h"

namespace lintara::ui::win32 {
namespace {

struct TextBoxWindowTest : ShownFormTest {
    // Puts a text into the clipboard.
    static void Copy(TextView text) {
        const std::size_t size = (text.size() + 1) * sizeof(char16_t);
        HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
        std::copy(text.begin(), text.end(), static_cast<char16_t*>(::GlobalLock(memory)));
        ::GlobalUnlock(memory);
        ASSERT_TRUE(::OpenClipboard(nullptr));
        ::EmptyClipboard();
        ::SetClipboardData(CF_UNICODETEXT, memory);
        ::CloseClipboard();
    }
};

TEST_F(TextBoxWindowTest, EachTypedCharacterIsOneChange) {
    Show([&](FormWindow& window) {
        form.txtCount.SetFocus();
        Type(u"12");
        EXPECT_EQ(form.txtCount.Contents(), u"125");
        EXPECT_EQ(form.txtCount.SelStart(), 2);
        EXPECT_EQ(TextOf(window.HandleOf(form.txtCount)), u"125");
    });
    EXPECT_EQ(form.log, (Log{"txtCount_Change", "txtCount_Change"}));
}

TEST_F(TextBoxWindowTest, TypingOverASelectionIsOneChange) {
    Show([&](FormWindow&) {
        form.txtCount.SetFocus();
        form.txtCount.SelectAll();
        Type(u"7");
        EXPECT_EQ(form.txtCount.Contents(), u"7");
        form.txtPage.SetFocus();
        form.txtPage.Select(1, 5);
        Type(u"X");
        EXPECT_EQ(form.txtPage.Contents(), u"oXwo");
        EXPECT_EQ(form.txtPage.SelStart(), 2);
    });
    EXPECT_EQ(form.log, (Log{"txtCount_Change", "txtPage_Change"}));
}

TEST_F(TextBoxWindowTest, PastingIsOneChange) {
    Copy(u"x\r\ny");
    Show([&](FormWindow&) {
        form.txtPage.SetFocus();
        form.txtPage.Select(0, 3);
        Press('V', {VK_CONTROL});
        EXPECT_EQ(form.txtPage.Contents(), u"x\r\ny\r\ntwo");
        EXPECT_EQ(form.txtPage.SelStart(), 4);
    });
    EXPECT_EQ(form.log, Log{"txtPage_Change"});
}

TEST_F(TextBoxWindowTest, UndoIsOneChangeAlsoOfWhatTheFormWrote) {
    Show([&](FormWindow& window) {
        form.txtPage.SetSelText(u"1\r\n2");
        EXPECT_EQ(form.txtPage.Contents(), u"1\r\n2one\r\ntwo");
        form.log.clear();
        ::SendMessageW(window.HandleOf(form.txtPage), WM_UNDO, 0, 0);
        EXPECT_EQ(form.txtPage.Contents(), u"one\r\ntwo");
    });
    EXPECT_EQ(form.log, Log{"txtPage_Change"});
}

TEST_F(TextBoxWindowTest, SelectionsOfTheUserReachTheForm) {
    Show([&](FormWindow& window) {
        for (forms::TextBox* box : {&form.txtName, &form.txtPage}) {
            box->SetFocus();
            box->Select(3, 0);
            Press(VK_LEFT, {VK_SHIFT});
            Press(VK_LEFT, {VK_SHIFT});
            EXPECT_EQ(box->SelStart(), 1);
            EXPECT_EQ(box->SelLength(), 2);
            // The end that moves is still the first one.
            Press(VK_RIGHT, {VK_SHIFT});
            EXPECT_EQ(box->SelStart(), 2);
            EXPECT_EQ(box->SelLength(), 1);
            EXPECT_EQ(SelectionOf(window.HandleOf(*box)), std::pair(DWORD{2}, DWORD{3}));
        }
    });
}

TEST_F(TextBoxWindowTest, SelectionsAcrossLinesCountABreakAsTwo) {
    Show([&](FormWindow& window) {
        form.txtPage.Select(2, 4);
        EXPECT_EQ(SelectionOf(window.HandleOf(form.txtPage)), std::pair(DWORD{2}, DWORD{6}));
        form.txtPage.SetFocus();
        Press('A', {VK_CONTROL});
        EXPECT_EQ(form.txtPage.SelLength(), 8);
        EXPECT_EQ(form.txtPage.SelText(), u"one\r\ntwo");
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(TextBoxWindowTest, EnterInABoxOfManyLinesIsABreak) {
    Show([&](FormWindow& window) {
        form.txtPage.SetFocus();
        form.txtPage.Select(3, 0);
        Press(VK_RETURN);
        EXPECT_EQ(form.txtPage.Contents(), u"one\r\n\r\ntwo");
        EXPECT_EQ(TextOf(window.HandleOf(form.txtPage)), u"one\r\n\r\ntwo");
        EXPECT_EQ(form.txtPage.SelStart(), 5);
    });
    EXPECT_EQ(form.log, Log{"txtPage_Change"});
}

TEST_F(TextBoxWindowTest, CtrlTabInABoxOfManyLinesIsATab) {
    Show([&](FormWindow&) {
        form.txtPage.SetFocus();
        Press(VK_TAB, {VK_CONTROL});
        EXPECT_EQ(form.txtPage.Contents(), u"\tone\r\ntwo");
        EXPECT_EQ(form.ActiveControl(), &form.txtPage);
    });
    EXPECT_EQ(form.log, Log{"txtPage_Change"});
}

TEST_F(TextBoxWindowTest, WhatTheFormWritesIsShownAndIsOneChange) {
    Show([&](FormWindow& window) {
        form.txtCount.SetContents(u"77");
        form.txtCount.SetContents(u"77");
        form.txtPage.SetContents(u"x\r\ny");
        EXPECT_EQ(TextOf(window.HandleOf(form.txtCount)), u"77");
        EXPECT_EQ(TextOf(window.HandleOf(form.txtPage)), u"x\r\ny");
        EXPECT_EQ(form.txtPage.SelStart(), 0);
    });
    EXPECT_EQ(form.log, (Log{"txtCount_Change", "txtPage_Change"}));
}

TEST_F(TextBoxWindowTest, WhatAnotherProgramWritesIsOneChange) {
    Show([&](FormWindow& window) {
        ::SendMessageW(window.HandleOf(form.txtCount), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"6"));
        ::SendMessageW(window.HandleOf(form.txtPage), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"six"));
        EXPECT_EQ(form.txtCount.Contents(), u"6");
        EXPECT_EQ(form.txtPage.Contents(), u"six");
    });
    EXPECT_EQ(form.log, (Log{"txtCount_Change", "txtPage_Change"}));
}

TEST_F(TextBoxWindowTest, AFormThatRefusesAChangeIsShown) {
    form.txtCount.Change.Handle([&] { form.txtCount.SetContents(u"5"); });
    Show([&](FormWindow& window) {
        form.txtCount.SetFocus();
        Type(u"1");
        EXPECT_EQ(TextOf(window.HandleOf(form.txtCount)), u"5");
        EXPECT_EQ(form.txtCount.Contents(), u"5");
    });
}

TEST_F(TextBoxWindowTest, KeyDownComesBeforeTheKeyAndTellsWhatIsHeld) {
    Show([&](FormWindow&) {
        form.txtName.Select(0, 0);
        Press('X');
        Press('C', {VK_CONTROL, VK_SHIFT});
        Press(VK_DELETE);
        Press(VK_F5);
    });
    EXPECT_EQ(form.log, (Log{"txtName_KeyDown 88 0", "txtName_Change", "txtName_KeyDown 67 3",
                             "txtName_KeyDown 46 0", "txtName_Change", "txtName_KeyDown 116 0"}));
}

TEST_F(TextBoxWindowTest, AltIsTold) {
    Show([&](FormWindow&) {
        const Holding holding({VK_MENU, VK_CONTROL, VK_SHIFT});
        ::SendMessageW(::GetFocus(), WM_SYSKEYDOWN, 'C', KeyData('C', true));
    });
    EXPECT_EQ(form.log, Log{"txtName_KeyDown 67 7"});
}

TEST_F(TextBoxWindowTest, AKeyThatTheFormUsesPastesNothingElse) {
    Copy(u"clipboard");
    form.txtPage.KeyDown.Handle([&](std::int16_t key, std::int16_t held) {
        if (key == 86 && held == 3) {
            form.txtPage.SetSelText(u"[\r\n]");
        }
    });
    Show([&](FormWindow& window) {
        form.txtPage.SetFocus();
        form.txtPage.Select(0, 3);
        Press('V', {VK_CONTROL, VK_SHIFT});
        EXPECT_EQ(form.txtPage.Contents(), u"[\r\n]\r\ntwo");
        EXPECT_EQ(TextOf(window.HandleOf(form.txtPage)), u"[\r\n]\r\ntwo");
    });
    EXPECT_EQ(form.log, Log{"txtPage_Change"});
}

TEST_F(TextBoxWindowTest, GettingTheFocusSelectsWhatTheFormSelects) {
    Show([&](FormWindow& window) {
        form.txtCount.SetFocus();
        Press(VK_TAB, {VK_SHIFT});
        EXPECT_EQ(SelectionOf(window.HandleOf(form.txtName)), std::pair(DWORD{0}, DWORD{3}));
        EXPECT_EQ(::GetFocus(), window.HandleOf(form.txtName));
    });
    EXPECT_EQ(form.log, Log{"txtName_GotFocus"});
}

TEST_F(TextBoxWindowTest, ALongTextIsNotCutOffAndGrowsOn) {
    const Text text(100000, u'x');
    form.txtName.SetContents(text);
    form.txtPage.SetContents(text);
    Show([&](FormWindow& window) {
        for (forms::TextBox* box : {&form.txtName, &form.txtPage}) {
            EXPECT_EQ(TextOf(window.HandleOf(*box)), text);
            box->SetFocus();
            box->Select(0, 0);
            Type(u"y");
            EXPECT_EQ(box->Contents(), u"y" + text);
        }
    });
}

TEST_F(TextBoxWindowTest, ScrollBarsAreThereWhileTheTextDoesNotFit) {
    Show([&](FormWindow& window) {
        const HWND page = window.HandleOf(form.txtPage);
        const auto bars = [&] {
            const LONG_PTR style = ::GetWindowLongPtrW(page, GWL_STYLE);
            return std::string((style & WS_HSCROLL) != 0 ? "-" : "") + ((style & WS_VSCROLL) != 0 ? "|" : "");
        };
        EXPECT_EQ(bars(), "");
        form.txtPage.SetContents(Text(100, u'x'));
        EXPECT_EQ(bars(), "-");
        form.txtPage.SetContents(u"1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10");
        EXPECT_EQ(bars(), "|");
        Attempt(form.txtPage.SetHeight(6000));
        EXPECT_EQ(bars(), "");
        form.txtPage.SetFocus();
        form.txtPage.SetContents(u"");
        Type(Text(100, u'x'));
        EXPECT_EQ(bars(), "-");
        form.txtPage.SetContents(Text(50000, u'x'));
        EXPECT_EQ(bars(), "-|");
    });
}

TEST_F(TextBoxWindowTest, ADisabledBoxTakesNothing) {
    form.txtCount.SetEnabled(false);
    Show([&](FormWindow& window) {
        EXPECT_FALSE(::IsWindowEnabled(window.HandleOf(form.txtCount)));
        ::SendMessageW(window.HandleOf(form.txtCount), WM_CHAR, 'x', 1);
        EXPECT_EQ(form.txtCount.Contents(), u"5");
        EXPECT_EQ(TextOf(window.HandleOf(form.txtCount)), u"5");
    });
    EXPECT_EQ(form.log, Log{});
}

}  // namespace
}  // namespace lintara::ui::win32
