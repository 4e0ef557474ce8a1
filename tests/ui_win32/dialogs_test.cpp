// The four dialogs and the history from end to end: what a user does in their windows gives what the same
// does in the forms without a screen.
#include "dialogs/dialogs_lt.h"
#include "dialogs/fcc_insert.h"
#include "dialogs/fcc_remove.h"
#include "dialogs/feh_insert.h"
#include "dialogs/feh_remove.h"
#include "history/fhistory.h"
#include "history/show_history.h"
#include "tests/support/recording_settings.h"
#include "tests/support/scripted_toolkit.h"
#include "tests/ui_win32/history_globals.h"
#include "tests/ui_win32/resources.h"
#include "tests/ui_win32/sample_form.h"
#include "ui/win32/fonts.h"

#include <cstring>
#include <memory>

namespace lintara::ui::win32 {
namespace {

using dialogs::FCCInsert;
using dialogs::FCCRemove;
using dialogs::FEHInsert;
using dialogs::FEHRemove;

struct DialogWindowsTest : testing::Test {
    // What a user does, without a screen and with one.
    template <class Dialog>
    struct Steps {
        std::function<void(Dialog&)> inForm;
        std::function<void(Dialog&, FormWindow&)> inWindow;
    };
    // What came of it.
    template <class Parameters>
    struct Outcome {
        bool accepted = false;
        Parameters parameters = {};
        std::vector<std::string> saves = {};
    };
    template <class Parameters>
    using Operation = bool (DialogsLT::*)(Parameters&) const noexcept;

    template <class Dialog, class Parameters>
    Outcome<Parameters> Script(Operation<Parameters> operation, const Parameters& given,
                               const Steps<Dialog>& steps) {
        support::RecordingSettings settings;
        support::ScriptedToolkit scripted;
        scripted.user = [&](forms::Form& form) { steps.inForm(dynamic_cast<Dialog&>(form)); };
        const DialogsLT dialogs({.toolkit = scripted, .settings = settings});
        Outcome<Parameters> outcome{.parameters = given};
        outcome.accepted = (dialogs.*operation)(outcome.parameters);
        outcome.saves = settings.saves;
        return outcome;
    }

    template <class Dialog, class Parameters>
    Outcome<Parameters> Play(Operation<Parameters> operation, const Parameters& given,
                             const Steps<Dialog>& steps) {
        support::RecordingSettings settings;
        WatchingToolkit watching{toolkit};
        watching.onShow = [&](forms::Form& form) {
            later.Post([&] {
                steps.inWindow(dynamic_cast<Dialog&>(form), *toolkit.ActiveWindow());
                if (form.Visible()) {
                    ::SendMessageW(toolkit.ActiveWindow()->Handle(), WM_CLOSE, 0, 0);
                }
            });
        };
        const DialogsLT dialogs({.toolkit = watching, .settings = settings});
        Outcome<Parameters> outcome{.parameters = given};
        outcome.accepted = (dialogs.*operation)(outcome.parameters);
        outcome.saves = settings.saves;
        return outcome;
    }

    // The toolkit, telling which form it is about to show.
    struct WatchingToolkit final : forms::Toolkit {
        explicit WatchingToolkit(Win32Toolkit& theToolkit) : toolkit(theToolkit) {}
        void RunModal(forms::Form& form) override {
            onShow(form);
            toolkit.RunModal(form);
        }
        void ShowMessage(TextView text, forms::MessageStyle style, TextView title) override {
            toolkit.ShowMessage(text, style, title);
        }
        void ShowHelp(TextView file, std::int32_t context) override { helps.emplace_back(file, context); }
        void DoEvents() override { toolkit.DoEvents(); }
        void SetMousePointer(forms::MousePointer pointer) override { toolkit.SetMousePointer(pointer); }
        [[nodiscard]] forms::Color Resolve(forms::Color color) const override {
            return toolkit.Resolve(color);
        }

        Win32Toolkit& toolkit;
        std::function<void(forms::Form&)> onShow;
        std::vector<std::pair<Text, std::int32_t>> helps;
    };

    static void Press(FormWindow& window, const forms::Control& button) {
        ::SendMessageW(window.HandleOf(button), BM_CLICK, 0, 0);
    }
    // Replaces what stands in a box.
    void Write(forms::TextBox& box, TextView text) {
        box.SetFocus();
        ::SendMessageW(::GetFocus(), EM_SETSEL, 0, -1);
        ::SendMessageW(::GetFocus(), WM_CLEAR, 0, 0);
        Type(toolkit, text);
    }

    Later later;
    Win32Toolkit toolkit{::GetModuleHandleW(nullptr)};
};

TEST_F(DialogWindowsTest, InsertErrorHandlers) {
    const Steps<FEHInsert> steps{.inForm =
                                     [](FEHInsert& dialog) {
                                         dialog.optScope[1].Select();
                                         dialog.oEHInsert.txtEHLabel.Edit(u"hOops", 5, 0);
                                         dialog.oEHInsert.txtEHCode.Edit(u"Beep\r\nStop", 10, 0);
                                         dialog.txtEHBase.Edit(u"500", 3, 0);
                                         dialog.txtEHStep.Edit(u"10", 2, 0);
                                         dialog.cmdStart.Press();
                                     },
                                 .inWindow =
                                     [this](FEHInsert& dialog, FormWindow& window) {
                                         Click(window.HandleOf(dialog.optScope[1]));
                                         Write(dialog.oEHInsert.txtEHLabel, u"hOops");
                                         Write(dialog.oEHInsert.txtEHCode, u"Beep\rStop");
                                         Write(dialog.txtEHBase, u"");
                                         EXPECT_FALSE(::IsWindowEnabled(window.HandleOf(dialog.cmdStart)));
                                         Write(dialog.txtEHBase, u"500");
                                         EXPECT_TRUE(::IsWindowEnabled(window.HandleOf(dialog.cmdStart)));
                                         Write(dialog.txtEHStep, u"10");
                                         win32::Press(toolkit, VK_RETURN);
                                     }};
    const dialogs::InsertEHParameters given{.iLenGetMemberName = 3, .iGetLineNumber = 2, .sCCPBuffer = u"b"};
    const auto expected = Script(&DialogsLT::GetInsertEHParameters, given, steps);
    const auto actual = Play(&DialogsLT::GetInsertEHParameters, given, steps);
    EXPECT_TRUE(actual.accepted);
    EXPECT_EQ(actual.parameters.EHCode, u"Beep\r\nStop");
    EXPECT_EQ(actual.accepted, expected.accepted);
    EXPECT_EQ(actual.parameters.Scope, expected.parameters.Scope);
    EXPECT_EQ(actual.parameters.InsertEH, expected.parameters.InsertEH);
    EXPECT_EQ(actual.parameters.InsertLN, expected.parameters.InsertLN);
    EXPECT_EQ(actual.parameters.EHLabel, expected.parameters.EHLabel);
    EXPECT_EQ(actual.parameters.EHCode, expected.parameters.EHCode);
    EXPECT_EQ(actual.parameters.LNBase, expected.parameters.LNBase);
    EXPECT_EQ(actual.parameters.LNStep, expected.parameters.LNStep);
    EXPECT_EQ(actual.parameters.sCCPBuffer, expected.parameters.sCCPBuffer);
    EXPECT_EQ(actual.saves, expected.saves);
}

TEST_F(DialogWindowsTest, InsertErrorHandlersOutsideAProcedureWithLineNumbersAlone) {
    const Steps<FEHInsert> steps{
        .inForm =
            [](FEHInsert& dialog) {
                dialog.chkEH.Toggle();
                dialog.cmdStart.Press();
            },
        .inWindow =
            [this](FEHInsert& dialog, FormWindow& window) {
                EXPECT_FALSE(::IsWindowEnabled(window.HandleOf(dialog.optScope[0])));
                PressAlt(toolkit, u'e');
                EXPECT_FALSE(::IsWindowEnabled(window.HandleOf(dialog.oEHInsert.txtEHCode)));
                PressAlt(toolkit, u'b');
            }};
    const dialogs::InsertEHParameters given{
        .EHLabel = u"kept", .iLenGetMemberName = 0, .iGetLineNumber = 0, .sCCPBuffer = u"b"};
    const auto expected = Script(&DialogsLT::GetInsertEHParameters, given, steps);
    const auto actual = Play(&DialogsLT::GetInsertEHParameters, given, steps);
    EXPECT_TRUE(actual.accepted);
    EXPECT_FALSE(actual.parameters.InsertEH);
    EXPECT_EQ(actual.parameters.Scope, expected.parameters.Scope);
    EXPECT_EQ(actual.parameters.EHLabel, expected.parameters.EHLabel);
    EXPECT_EQ(actual.parameters.LNBase, expected.parameters.LNBase);
    EXPECT_EQ(actual.saves, expected.saves);
}

TEST_F(DialogWindowsTest, TheBufferOfTheHandlerEditor) {
    const Steps<FEHInsert> steps{.inForm =
                                     [](FEHInsert& dialog) {
                                         auto& box = dialog.oEHInsert.txtEHCode;
                                         box.SetFocus();
                                         box.Select(4, 6);
                                         box.KeyDown.Raise(67, 3);
                                         box.Select(0, 0);
                                         box.KeyDown.Raise(86, 3);
                                         dialog.cmdStart.Press();
                                     },
                                 .inWindow =
                                     [this](FEHInsert& dialog, FormWindow& window) {
                                         auto& box = dialog.oEHInsert.txtEHCode;
                                         const HWND edit = window.HandleOf(box);
                                         PressAlt(toolkit, u'h');
                                         EXPECT_EQ(::GetFocus(), edit);
                                         ::SendMessageW(edit, EM_SETSEL, 4, 10);
                                         Text message;
                                         AnswerNextMessage(later,
                                                           [&](HWND shown) { message = MessageOf(shown); });
                                         win32::Press(toolkit, 'C', {VK_CONTROL, VK_SHIFT});
                                         EXPECT_EQ(message,
                                                   u"The selected text was placed into the Tarnwick "
                                                   u"copy-and-paste buffer.");
                                         ::SendMessageW(edit, EM_SETSEL, 0, 0);
                                         win32::Press(toolkit, 'V', {VK_CONTROL, VK_SHIFT});
                                         Press(window, dialog.cmdStart);
                                     }};
    const dialogs::InsertEHParameters given{.iLenGetMemberName = 3, .iGetLineNumber = 2};
    const auto expected = Script(&DialogsLT::GetInsertEHParameters, given, steps);
    const auto actual = Play(&DialogsLT::GetInsertEHParameters, given, steps);
    EXPECT_TRUE(actual.accepted);
    EXPECT_EQ(actual.parameters.sCCPBuffer, u"Select");
    EXPECT_EQ(actual.parameters.sCCPBuffer, expected.parameters.sCCPBuffer);
    EXPECT_TRUE(actual.parameters.EHCode.starts_with(u"Select    Select Case"));
    EXPECT_EQ(actual.parameters.EHCode, expected.parameters.EHCode);
    EXPECT_EQ(actual.saves, expected.saves);
}

TEST_F(DialogWindowsTest, RemoveErrorHandlers) {
    const Steps<FEHRemove> steps{.inForm =
                                     [](FEHRemove& dialog) {
                                         dialog.chkEH.Toggle();
                                         dialog.optScope[2].Select();
                                         dialog.cmdStart.Press();
                                     },
                                 .inWindow =
                                     [this](FEHRemove& dialog, FormWindow& window) {
                                         Click(window.HandleOf(dialog.chkEH));
                                         PressAlt(toolkit, u'r');
                                         Press(window, dialog.cmdStart);
                                     }};
    const dialogs::RemoveEHParameters given{.iLenGetMemberName = 3, .iGetLineNumber = 2};
    const auto expected = Script(&DialogsLT::GetRemoveEHParameters, given, steps);
    const auto actual = Play(&DialogsLT::GetRemoveEHParameters, given, steps);
    EXPECT_TRUE(actual.accepted);
    EXPECT_EQ(actual.parameters.Scope, 3);
    EXPECT_EQ(actual.parameters.Scope, expected.parameters.Scope);
    EXPECT_EQ(actual.parameters.RemoveEH, expected.parameters.RemoveEH);
    EXPECT_EQ(actual.parameters.RemoveLN, expected.parameters.RemoveLN);
    EXPECT_EQ(actual.saves, expected.saves);
}

TEST_F(DialogWindowsTest, InsertCustomCode) {
    const Steps<FCCInsert> steps{.inForm =
                                     [](FCCInsert& dialog) {
                                         dialog.optWhere[2].Select();
                                         dialog.txtLine.Edit(u"12", 2, 0);
                                         dialog.udID.Step(1);
                                         dialog.udID.Step(1);
                                         dialog.txtCode.Edit(u"' one\r\n' two", 12, 0);
                                         dialog.optScope[0].Select();
                                         dialog.cmdStart.Press();
                                     },
                                 .inWindow =
                                     [this](FCCInsert& dialog, FormWindow& window) {
                                         EXPECT_FALSE(::IsWindowEnabled(window.HandleOf(dialog.udLine)));
                                         Click(window.HandleOf(dialog.optWhere[2]));
                                         EXPECT_TRUE(::IsWindowEnabled(window.HandleOf(dialog.udLine)));
                                         Write(dialog.txtLine, u"12");
                                         Click(window.HandleOf(dialog.udID), {5, 2});
                                         Click(window.HandleOf(dialog.udID), {5, 2});
                                         EXPECT_EQ(TextOf(window.HandleOf(dialog.txtID)), u"3");
                                         Write(dialog.txtCode, u"' one\r' two");
                                         Click(window.HandleOf(dialog.optScope[0]));
                                         Press(window, dialog.cmdStart);
                                     }};
    const dialogs::InsertCCParameters given{.ProcAvailable = true, .ComponentAvailable = 1};
    const auto expected = Script(&DialogsLT::GetInsertCCParameters, given, steps);
    const auto actual = Play(&DialogsLT::GetInsertCCParameters, given, steps);
    EXPECT_TRUE(actual.accepted);
    EXPECT_EQ(actual.parameters.Scope, expected.parameters.Scope);
    EXPECT_EQ(actual.parameters.TextToInsert, expected.parameters.TextToInsert);
    EXPECT_EQ(actual.parameters.NoDelimiters, expected.parameters.NoDelimiters);
    EXPECT_EQ(actual.parameters.WhereToInsert, expected.parameters.WhereToInsert);
    EXPECT_EQ(actual.parameters.LineToInsert, 12);
    EXPECT_EQ(actual.parameters.LineToInsert, expected.parameters.LineToInsert);
    EXPECT_EQ(actual.parameters.ID, 3);
    EXPECT_EQ(actual.parameters.ID, expected.parameters.ID);
    EXPECT_EQ(actual.parameters.sCCPBufferX, expected.parameters.sCCPBufferX);
    EXPECT_EQ(actual.saves, expected.saves);
}

TEST_F(DialogWindowsTest, RemoveCustomCode) {
    const Steps<FCCRemove> steps{.inForm =
                                     [](FCCRemove& dialog) {
                                         dialog.txtID.Edit(u"77", 2, 0);
                                         dialog.udID.Step(-1);
                                         dialog.cmdStart.Press();
                                     },
                                 .inWindow =
                                     [this](FCCRemove& dialog, FormWindow& window) {
                                         PressAlt(toolkit, u'm');
                                         Type(toolkit, u"77");
                                         win32::Press(toolkit, VK_DOWN);
                                         win32::Press(toolkit, VK_RETURN);
                                         EXPECT_FALSE(::IsWindowVisible(window.HandleOf(dialog.txtID)));
                                     }};
    const dialogs::RemoveCCParameters given{.ProcAvailable = false, .ComponentAvailable = 0};
    const auto expected = Script(&DialogsLT::GetRemoveCCParameters, given, steps);
    const auto actual = Play(&DialogsLT::GetRemoveCCParameters, given, steps);
    EXPECT_TRUE(actual.accepted);
    EXPECT_EQ(actual.parameters.ID, 76);
    EXPECT_EQ(actual.parameters.ID, expected.parameters.ID);
    EXPECT_EQ(actual.parameters.Scope, expected.parameters.Scope);
    EXPECT_EQ(actual.saves, expected.saves);
}

TEST_F(DialogWindowsTest, LeavingByEscOrTheCloseBoxChangesNothing) {
    for (const bool byKey : {true, false}) {
        const Steps<FEHInsert> steps{.inForm = nullptr, .inWindow = [&](FEHInsert& dialog, FormWindow&) {
                                         Write(dialog.txtEHBase, u"500");
                                         if (byKey) {
                                             win32::Press(toolkit, VK_ESCAPE);
                                         }
                                     }};
        const dialogs::InsertEHParameters given{
            .Scope = 9, .EHLabel = u"kept", .LNBase = u"1", .iLenGetMemberName = 3};
        const auto actual = Play(&DialogsLT::GetInsertEHParameters, given, steps);
        EXPECT_FALSE(actual.accepted);
        EXPECT_EQ(actual.parameters.Scope, 9);
        EXPECT_EQ(actual.parameters.EHLabel, u"kept");
        EXPECT_EQ(actual.parameters.LNBase, u"1");
        EXPECT_EQ(actual.saves, std::vector<std::string>{});
    }
}

TEST_F(DialogWindowsTest, HelpLeavesTheDialogOpen) {
    support::RecordingSettings settings;
    WatchingToolkit watching{toolkit};
    watching.onShow = [&](forms::Form& form) {
        later.Post([&] {
            PressAlt(toolkit, u'h');
            EXPECT_TRUE(form.Visible());
            form.Hide();
        });
    };
    const DialogsLT dialogs({.toolkit = watching, .settings = settings, .libraryFolder = u"C:\\Suite"});
    dialogs::RemoveEHParameters parameters;
    EXPECT_FALSE(dialogs.GetRemoveEHParameters(parameters));
    ASSERT_EQ(watching.helps.size(), 1U);
    EXPECT_EQ(watching.helps[0], std::pair(Text(u"C:\\Suite\\TARNWK30.HLP"), std::int32_t{60}));
}

// --- the history ---

struct HistoryWindowTest : DialogWindowsTest {
    HistoryWindowTest() { FillHistory(globals); }

    template <class User>
    void ShowHistory(User user) {
        later.Post([&, user] {
            FormWindow& window = *toolkit.ActiveWindow();
            user(window, ::GetFocus());
            if (toolkit.ActiveWindow() != nullptr && ::IsWindowVisible(window.Handle())) {
                ::SendMessageW(window.Handle(), WM_CLOSE, 0, 0);
            }
        });
        history::ShowHistoryWindow(globals, toolkit);
    }
    static LPARAM Next(HWND tree, WPARAM which, LPARAM item = 0) {
        return ::SendMessageW(tree, TVM_GETNEXTITEM, which, item);
    }

    HistoryGlobals globals;
};

TEST_F(HistoryWindowTest, EnterChoosesTheSelectedPlace) {
    ShowHistory([this](FormWindow&, HWND tree) {
        EXPECT_EQ(ClassOf(tree), L"SysTreeView32");
        // "Back|1" is selected; the place in front of it is chosen.
        ::SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, Next(tree, TVGN_PREVIOUS, Next(tree, TVGN_CARET)));
        win32::Press(toolkit, VK_RETURN);
        EXPECT_FALSE(::IsWindowVisible(tree));
    });
    EXPECT_EQ(globals.selKey, u"Back|0");
    EXPECT_EQ(globals.selObject, u"modTax.VatRate|LoadRates");
    EXPECT_EQ(globals.log, (std::vector<std::string>{"load FHistory", "save FHistory"}));
}

TEST_F(HistoryWindowTest, ADoubleClickChooses) {
    ShowHistory([](FormWindow&, HWND tree) {
        RECT place{};
        const auto item = Next(tree, TVGN_CARET);
        std::memcpy(&place, &item, sizeof item);
        ::SendMessageW(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&place));
        const LPARAM middle = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
        ::SendMessageW(tree, WM_LBUTTONDBLCLK, MK_LBUTTON, middle);
    });
    EXPECT_EQ(globals.selKey, u"Back|1");
    EXPECT_EQ(globals.selObject, u"modTax.GrossOf|GrossOf = RoundMoney(curNet)");
}

TEST_F(HistoryWindowTest, AGroupIsNoPlaceAndEscLeaves) {
    ShowHistory([this](FormWindow& window, HWND tree) {
        ::SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, Next(tree, TVGN_ROOT));
        win32::Press(toolkit, VK_RETURN);
        EXPECT_TRUE(::IsWindowVisible(window.Handle()));
        win32::Press(toolkit, VK_ESCAPE);
        EXPECT_FALSE(::IsWindowVisible(window.Handle()));
    });
    EXPECT_EQ(globals.selKey, u"");
}

// --- looks ---

// What a control of the system needs to show its text.
bool ShowsAllOf(HWND control) {
    const std::wstring kind = ClassOf(control);
    if (kind != L"Static" && kind != L"Button") {
        return true;
    }
    std::wstring shown;
    for (const char16_t unit : TextOf(control)) {
        if (unit != u'&') {
            shown += static_cast<wchar_t>(unit);
        }
    }
    const auto font = reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0));
    const SIZE needed = MeasureLine(font, shown);
    RECT inside{};
    ::GetClientRect(control, &inside);
    constexpr LONG mark = 13;
    const bool hasMark = kind == L"Button" && inside.bottom < 24;
    return inside.right >= needed.cx + (hasMark ? mark : 0) && inside.bottom >= needed.cy;
}

TEST_F(DialogWindowsTest, EverythingHasItsRoom) {
    support::RecordingSettings settings;
    HistoryGlobals globals;
    const dialogs::DialogHost host{.toolkit = toolkit, .settings = settings};
    std::vector<std::unique_ptr<forms::Form>> all;
    all.push_back(std::make_unique<FEHInsert>(host));
    all.push_back(std::make_unique<FEHRemove>(host));
    all.push_back(std::make_unique<FCCInsert>(host));
    all.push_back(std::make_unique<FCCRemove>(host));
    all.push_back(std::make_unique<history::FHistory>(globals, toolkit));
    const auto check = [&](forms::Form& form, FormWindow& window, const std::string& when) {
        int seen = 0;
        for (forms::Control* control : form.ControlsInOrder()) {
            const HWND handle = window.HandleOf(*control);
            if (handle == nullptr || ::IsWindowVisible(handle) == FALSE) {
                continue;
            }
            ++seen;
            const std::string name = ToUtf8(form.Name()) + "." + ToUtf8(control->Name()) + when;
            EXPECT_TRUE(ShowsAllOf(handle)) << name;
            RECT place{};
            RECT around{};
            RECT common{};
            ::GetWindowRect(handle, &place);
            ::GetClientRect(::GetParent(handle), &around);
            ::MapWindowPoints(::GetParent(handle), nullptr, reinterpret_cast<POINT*>(&around), 2);
            ::IntersectRect(&common, &place, &around);
            EXPECT_TRUE(::EqualRect(&common, &place)) << name;
            for (forms::Control* neighbour : control->Parent()->Controls()) {
                const HWND other = window.HandleOf(*neighbour);
                RECT otherPlace{};
                ::GetWindowRect(other, &otherPlace);
                EXPECT_FALSE(other != nullptr && other != handle && ::IsWindowVisible(other) &&
                             ::IntersectRect(&common, &place, &otherPlace))
                    << name << " and " << ToUtf8(neighbour->Name());
            }
        }
        EXPECT_GT(seen, 4);
    };
    for (const auto& form : all) {
        later.Post([&] {
            FormWindow& window = *toolkit.ActiveWindow();
            check(*form, window, "");
            if (form->resizable) {
                ::SetWindowPos(window.Handle(), nullptr, 0, 0, 1, 1, SWP_NOMOVE | SWP_NOZORDER);
                check(*form, window, ", as small as can be");
                ::SetWindowPos(window.Handle(), nullptr, 0, 0, 933, 677, SWP_NOMOVE | SWP_NOZORDER);
                check(*form, window, ", larger");
            }
            form->Hide();
        });
        form->ShowModal(toolkit);
    }
}

TEST_F(DialogWindowsTest, AHundredDialogsLeaveNothingBehind) {
    const auto open = [this](int times) {
        support::RecordingSettings settings;
        const DialogsLT dialogs({.toolkit = toolkit, .settings = settings});
        for (int time = 0; time < times; ++time) {
            later.Post([this] { toolkit.ActiveWindow()->Close(); });
            dialogs::InsertEHParameters parameters;
            EXPECT_FALSE(dialogs.GetInsertEHParameters(parameters));
        }
    };
    open(3);
    const int gdiObjects = GdiObjects();
    const int windows = Windows();
    ASSERT_GT(gdiObjects, 0);
    open(100);
    EXPECT_EQ(GdiObjects(), gdiObjects);
    EXPECT_EQ(Windows(), windows);
}

}  // namespace
}  // namespace lintara::ui::win32
