#include "tests/ui_win32/resources.h"
#include "tests/ui_win32/sample_form.h"
#include "ui/win32/handles.h"
#include "ui/win32/help.h"
#include "ui/win32/system_colors.h"

#include <fstream>
#include <stdexcept>

namespace lintara::ui::win32 {
namespace {

RECT InsideOf(HWND window) {
    RECT inside{};
    ::GetClientRect(window, &inside);
    return inside;
}

RECT PlaceOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

// The place of a control in its parent window.
RECT PlaceInParent(HWND control) {
    RECT place = PlaceOf(control);
    ::MapWindowPoints(nullptr, ::GetParent(control), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

struct WindowTest : ShownFormTest {
    void Resize(HWND window, int byWidth, int byHeight) {
        const RECT place = PlaceOf(window);
        ::SetWindowPos(window, nullptr, 0, 0, place.right - place.left + byWidth,
                       place.bottom - place.top + byHeight, SWP_NOMOVE | SWP_NOZORDER);
        toolkit.DoEvents();
    }
    COLORREF PixelOf(HWND window, int x, int y) {
        ::RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW);
        return ::GetPixel(WindowDc(window).get(), x, y);
    }
};

// --- sizes and places ---

TEST_F(WindowTest, OneThatWasShownHasAPlace) {
    EXPECT_FALSE(form.placed);
    Show([&](FormWindow& window) {
        EXPECT_TRUE(form.placed);
        const RECT place = PlaceOf(window.Handle());
        EXPECT_EQ(window.scale().X(form.Left()), place.left);
        EXPECT_EQ(window.scale().Y(form.Top()), place.top);
        EXPECT_GT(place.left, 0);
    });
}

TEST_F(WindowTest, ResizingRaisesResizeOnceAndMovesControls) {
    form.Resize.Handle([&] {
        form.log.emplace_back("Resize");
        Attempt(form.frame.SetTop(form.ScaleHeight() - 870));
    });
    Show([&](FormWindow& window) {
        const LONG before = PlaceInParent(window.HandleOf(form.frame)).top;
        Resize(window.Handle(), 150, 60);
        EXPECT_EQ(PlaceInParent(window.HandleOf(form.frame)).top, before + 60);
        EXPECT_EQ(window.scale().X(form.Width()), InsideOf(window.Handle()).right);
        EXPECT_EQ(window.scale().Y(form.Height()), InsideOf(window.Handle()).bottom);
        // The bar stays at the lower edge.
        EXPECT_EQ(PlaceInParent(window.HandleOf(form.status)).bottom, InsideOf(window.Handle()).bottom);
    });
    EXPECT_EQ(form.log, Log{"Resize"});
}

TEST_F(WindowTest, TheFormCanResizeItsWindow) {
    Show([&](FormWindow& window) {
        ASSERT_TRUE(form.Move({form.Left(), form.Top(), 7500, 6000}));
        EXPECT_EQ(InsideOf(window.Handle()).right, window.scale().X(7500));
        EXPECT_EQ(InsideOf(window.Handle()).bottom, window.scale().Y(6000));
        EXPECT_EQ(form.Width(), 7500);
    });
    EXPECT_EQ(form.log, Log{"Resize"});
}

TEST_F(WindowTest, ShowingAndClosingKeepsTheFormsSizeToTheTwip) {
    Attempt(form.Move({0, 0, 6487, 4931}));
    Show([](FormWindow&) {});
    EXPECT_EQ(form.Width(), 6487);
    EXPECT_EQ(form.Height(), 4931);
}

TEST_F(WindowTest, CannotBecomeSmallerThanTheMinimum) {
    form.minimum = {3000, 2000};
    Show([&](FormWindow& window) {
        Resize(window.Handle(), -2000, -2000);
        EXPECT_EQ(InsideOf(window.Handle()).right, window.scale().X(3000));
        EXPECT_EQ(InsideOf(window.Handle()).bottom, window.scale().Y(2000));
    });
}

TEST_F(WindowTest, OnlyOneThatIsResizableHasAFrameToPull) {
    for (const bool resizable : {true, false}) {
        form.resizable = resizable;
        Show([&](FormWindow& window) {
            EXPECT_EQ((::GetWindowLongPtrW(window.Handle(), GWL_STYLE) & WS_THICKFRAME) != 0, resizable);
            EXPECT_EQ(InsideOf(window.Handle()).right, window.scale().X(form.Width()));
            const LONG_PTR bar = ::GetWindowLongPtrW(window.HandleOf(form.status), GWL_STYLE);
            EXPECT_EQ((bar & SBARS_SIZEGRIP) != 0, resizable);
        });
    }
}

TEST_F(WindowTest, StandsInTheMiddleUnlessItHasAPlace) {
    RECT screen{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
    Show([&](FormWindow& window) {
        const RECT place = PlaceOf(window.Handle());
        EXPECT_NEAR(place.left + place.right, screen.left + screen.right, 2);
        EXPECT_NEAR(place.top + place.bottom, screen.top + screen.bottom, 2);
    });
    form.placed = true;
    Attempt(form.Move({900, 600, form.Width(), form.Height()}));
    Show([&](FormWindow& window) {
        EXPECT_EQ(PlaceOf(window.Handle()).left, 60);
        EXPECT_EQ(PlaceOf(window.Handle()).top, 40);
        ::SetWindowPos(window.Handle(), nullptr, 50, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        EXPECT_EQ(form.Left(), 750);
        EXPECT_EQ(form.Top(), 450);
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(WindowTest, NeverStandsOffTheScreen) {
    RECT screen{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &screen, 0);
    form.placed = true;
    for (const forms::Rect& wanted :
         {forms::Rect{-900000, -900000, 6480, 4920}, forms::Rect{900000, 900000, 6480, 4920},
          forms::Rect{0, 0, 90000, 90000}}) {
        Attempt(form.Move(wanted));
        Show([&](FormWindow& window) {
            const RECT place = PlaceOf(window.Handle());
            RECT common{};
            ::IntersectRect(&common, &place, &screen);
            EXPECT_TRUE(::EqualRect(&common, &place)) << wanted.left << " " << wanted.width;
            EXPECT_EQ(window.scale().X(form.Width()), InsideOf(window.Handle()).right);
        });
    }
}

// What fills its container is not cut off by it, wherever that stands.
TEST_F(WindowTest, WhatIsInsideItsContainerInTwipsIsInPixels) {
    Show([&](FormWindow& window) {
        for (forms::Twips top = 4000; top < 4060; ++top) {
            Attempt(form.frame.SetTop(top));
            Attempt(form.cmdOk.Move({0, 0, 1200, form.frame.Height()}));
            EXPECT_EQ(PlaceInParent(window.HandleOf(form.cmdOk)).bottom,
                      InsideOf(window.HandleOf(form.frame)).bottom)
                << top;
        }
    });
}

TEST_F(WindowTest, AWindowOnADenserScreenIsLarger) {
    Show([&](FormWindow& window) {
        const HWND handle = window.Handle();
        const LONG before = InsideOf(handle).right;
        RECT suggested = PlaceOf(handle);
        ::SendMessageW(handle, 0x02E0, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&suggested));
        // Letters twice as high are not twice as wide to the pixel.
        EXPECT_NEAR(InsideOf(handle).right, 2 * before, 20);
        // The system has not made the frame larger: only the message says that the screen is another one.
        EXPECT_NEAR(InsideOf(handle).right, window.scale().X(6480), 8);
        EXPECT_EQ(form.Width(), 6480);
        EXPECT_EQ(PlaceInParent(window.HandleOf(form.txtName)).left, window.scale().X(1440));
        LOGFONTW font{};
        ::GetObjectW(reinterpret_cast<HGDIOBJ>(::SendMessageW(window.HandleOf(form.cmdOk), WM_GETFONT, 0, 0)),
                     sizeof font, &font);
        EXPECT_EQ(font.lfHeight, -22);
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(WindowTest, ACaptionThatIsTooLongForItsLabelMakesAllLarger) {
    Show([&](FormWindow& window) {
        const LONG before = InsideOf(window.Handle()).right;
        form.lblName.SetCaption(u"The &name of the thing that is asked for:");
        EXPECT_EQ(TextOf(window.HandleOf(form.lblName)), u"The &name of the thing that is asked for:");
        EXPECT_GT(InsideOf(window.Handle()).right, before);
    });
}

// --- what is painted ---

TEST_F(WindowTest, LinesAndShapesArePaintedAndFollowTheForm) {
    Show([&](FormWindow& window) {
        const int y = window.scale().Y(form.line.Ends().y1);
        EXPECT_EQ(PixelOf(window.Handle(), 100, y), ::GetSysColor(COLOR_BTNSHADOW));
        EXPECT_EQ(PixelOf(window.Handle(), 100, y + 1), ::GetSysColor(COLOR_BTNFACE));
        form.line.SetBorderColor(static_cast<forms::Color>(0x0000FF));
        EXPECT_EQ(PixelOf(window.Handle(), 100, y), RGB(255, 0, 0));
        form.line.SetVisible(false);
        EXPECT_EQ(PixelOf(window.Handle(), 100, y), ::GetSysColor(COLOR_BTNFACE));
        const RECT shape{window.scale().X(3900), window.scale().Y(30), window.scale().X(6420),
                         window.scale().Y(3900)};
        EXPECT_EQ(PixelOf(window.Handle(), shape.left, shape.top), ::GetSysColor(COLOR_BTNSHADOW));
        EXPECT_EQ(PixelOf(window.Handle(), shape.left + 1, shape.top + 1), ::GetSysColor(COLOR_WINDOW));
        EXPECT_EQ(PixelOf(window.Handle(), shape.right - 1, shape.bottom - 1),
                  ::GetSysColor(COLOR_BTNSHADOW));
    });
}

TEST_F(WindowTest, TheFrameOfAPanelIsAtItsEdges) {
    form.panel.SetBorderType(3);
    Show([&](FormWindow& window) {
        const HWND panel = window.HandleOf(form.panel);
        const RECT inside = InsideOf(panel);
        const COLORREF dark = ::GetSysColor(COLOR_BTNSHADOW);
        const COLORREF light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
        const auto across = [&](int x) { return PixelOf(panel, x, inside.bottom / 2); };
        EXPECT_EQ(across(0), dark);
        EXPECT_EQ(across(1), light);
        EXPECT_EQ(across(inside.right - 2), dark);
        EXPECT_EQ(across(inside.right - 1), light);
        EXPECT_EQ(PixelOf(panel, inside.right / 2, 0), dark);
        EXPECT_EQ(PixelOf(panel, inside.right / 2, inside.bottom - 1), light);
    });
}

TEST_F(WindowTest, AnOpaqueUserControlHasItsColor) {
    Show([&](FormWindow& window) {
        form.panel.SetBackColor(static_cast<forms::Color>(0x00FF00));
        form.panel.SetBackStyle(1);
        const HWND panel = window.HandleOf(form.panel);
        EXPECT_EQ(PixelOf(panel, InsideOf(panel).right - 5, 30), RGB(0, 255, 0));
        EXPECT_EQ(form.panel.hWnd(), reinterpret_cast<std::uintptr_t>(panel));
    });
    EXPECT_EQ(form.panel.hWnd(), 0U);
}

TEST_F(WindowTest, TheBarShowsItsText) {
    Show([&](FormWindow& window) {
        form.status.SetSimpleText(u"Enter a name.");
        std::array<wchar_t, 64> text{};
        ::SendMessageW(window.HandleOf(form.status), SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text.data()));
        EXPECT_STREQ(text.data(), L"Enter a name.");
    });
}

// --- the life of the window ---

TEST_F(WindowTest, TheCloseBoxUnloadsTheForm) {
    Show([&](FormWindow& window) {
        ::SendMessageW(window.Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
        EXPECT_TRUE(form.IsUnloaded());
        EXPECT_FALSE(::IsWindowVisible(window.Handle()));
    });
    EXPECT_EQ(form.log, Log{"Unload"});
}

TEST_F(WindowTest, AFormHiddenByItsOwnButtonIsShownAgainAsItWas) {
    form.cmdOk.Click.Handle([&] { form.Hide(); });
    for (int time = 0; time < 2; ++time) {
        Show([&](FormWindow& window) {
            form.txtCount.SetFocus();
            form.txtCount.Select(0, 0);
            Type(u"1");
            ::SendMessageW(window.HandleOf(form.cmdOk), BM_CLICK, 0, 0);
            EXPECT_FALSE(form.Visible());
            EXPECT_FALSE(::IsWindowVisible(window.Handle()));
        });
    }
    EXPECT_EQ(form.txtCount.Contents(), u"115");
}

// A window of the program in which the library is loaded, with a box that has the keyboard.
class HostWindow {
  public:
    explicit HostWindow(int left = 0)
        : window_(::CreateWindowExW(0, WC_STATICW, L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, left, 0, 300,
                                    200, nullptr, nullptr, nullptr, nullptr)),
          box_(::CreateWindowExW(0, WC_EDITW, L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 30, window_, nullptr,
                                 nullptr, nullptr)) {}
    ~HostWindow() { Destroy(); }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    void Destroy() {
        if (::IsWindow(window_)) {
            ::DestroyWindow(window_);
        }
    }
    void Activate() const {
        ::SetActiveWindow(window_);
        ::SetFocus(box_);
    }
    [[nodiscard]] HWND window() const { return window_; }
    [[nodiscard]] HWND box() const { return box_; }

  private:
    HWND window_;
    HWND box_;
};

TEST_F(WindowTest, TheHostsWindowsComeBackEnabledAndActive) {
    const HostWindow other;
    const HostWindow disabled;
    const HostWindow host(400);
    ::EnableWindow(disabled.window(), FALSE);
    host.Activate();
    Show([&](FormWindow& window) {
        EXPECT_EQ(::GetWindow(window.Handle(), GW_OWNER), host.window());
        EXPECT_EQ(::GetActiveWindow(), window.Handle());
        EXPECT_FALSE(::IsWindowEnabled(host.window()));
        EXPECT_FALSE(::IsWindowEnabled(other.window()));
        EXPECT_TRUE(::IsWindowEnabled(window.Handle()));
    });
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    EXPECT_TRUE(::IsWindowEnabled(other.window()));
    EXPECT_FALSE(::IsWindowEnabled(disabled.window()));
    EXPECT_EQ(::GetActiveWindow(), host.window());
    EXPECT_EQ(::GetFocus(), host.box());
}

TEST_F(WindowTest, TheHostIsBackAlreadyWhileTheFormsHandlerGoesOn) {
    const HostWindow host;
    host.Activate();
    bool hasReturned = false;
    form.cmdOk.Click.Handle([&] {
        form.Hide();
        EXPECT_TRUE(::IsWindowEnabled(host.window()));
        EXPECT_EQ(::GetActiveWindow(), host.window());
        hasReturned = true;
    });
    Show([&](FormWindow& window) { ::SendMessageW(window.HandleOf(form.cmdOk), BM_CLICK, 0, 0); });
    EXPECT_TRUE(hasReturned);
}

TEST_F(WindowTest, TheOwnerThatIsGivenIsUsed) {
    const HostWindow other;
    const HostWindow host(400);
    other.Activate();
    Win32Toolkit owned(::GetModuleHandleW(nullptr), host.box());
    later.Post([&] {
        EXPECT_EQ(::GetWindow(owned.ActiveWindow()->Handle(), GW_OWNER), host.window());
        form.Hide();
    });
    form.ShowModal(owned);
    EXPECT_EQ(::GetActiveWindow(), other.window());
}

TEST_F(WindowTest, AFormCanBeShownOverAnother) {
    SampleForm other;
    form.cmdMore.Click.Handle([&] {
        later.Post([&] {
            FormWindow& inner = *toolkit.ActiveWindow();
            const HWND outer = ::GetWindow(inner.Handle(), GW_OWNER);
            EXPECT_EQ(TextOf(outer), u"Sample");
            EXPECT_FALSE(::IsWindowEnabled(outer));
            other.Hide();
        });
        other.ShowModal(toolkit);
    });
    Show([&](FormWindow& window) {
        ::SendMessageW(window.HandleOf(form.cmdMore), BM_CLICK, 0, 0);
        EXPECT_EQ(toolkit.ActiveWindow(), &window);
        EXPECT_TRUE(::IsWindowEnabled(window.Handle()));
        EXPECT_EQ(::GetActiveWindow(), window.Handle());
        EXPECT_TRUE(form.Visible());
    });
}

TEST_F(WindowTest, AnOwnerThatGoesTakesTheFormWithIt) {
    HostWindow host;
    host.Activate();
    later.Post([&] { host.Destroy(); });
    form.ShowModal(toolkit);
    EXPECT_TRUE(form.IsUnloaded());
    EXPECT_EQ(toolkit.ActiveWindow(), nullptr);
}

TEST_F(WindowTest, AMessageToEndTheThreadClosesTheFormAndStays) {
    later.Post([&] { ::PostQuitMessage(7); });
    form.ShowModal(toolkit);
    EXPECT_TRUE(form.IsUnloaded());
    MSG message{};
    EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), 0);
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(WindowTest, WhatAHandlerThrowsReachesWhoShowsTheForm) {
    const HostWindow host;
    host.Activate();
    form.cmdOk.Click.Handle([] { throw std::runtime_error("the test wants it"); });
    later.Post([&] { ::SendMessageW(toolkit.ActiveWindow()->HandleOf(form.cmdOk), BM_CLICK, 0, 0); });
    EXPECT_THROW(form.ShowModal(toolkit), std::runtime_error);
    EXPECT_FALSE(form.Visible());
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    EXPECT_EQ(toolkit.ActiveWindow(), nullptr);
}

TEST_F(WindowTest, OpeningAHundredTimesLeavesNothingBehind) {
    const auto open = [&](int times) {
        for (int time = 0; time < times; ++time) {
            SampleForm another;
            Show(another, [](FormWindow&) {});
        }
    };
    open(3);
    const int gdiObjects = GdiObjects();
    const int windows = Windows();
    {
        const UniqueBrush brush(::CreateSolidBrush(0x123456));
        ASSERT_EQ(GdiObjects(), gdiObjects + 1);
        const HostWindow host;
        ASSERT_GE(Windows(), windows + 2);
    }
    open(3);
    const int gdiObjectsBefore = GdiObjects();
    const int windowsBefore = Windows();
    open(100);
    EXPECT_EQ(GdiObjects(), gdiObjectsBefore);
    EXPECT_EQ(Windows(), windowsBefore);
}

TEST_F(WindowTest, TheClassesOfItsWindowsGoWithTheToolkit) {
    WNDCLASSEXW found{};
    found.cbSize = sizeof found;
    HINSTANCE other = ::GetModuleHandleW(L"kernel32.dll");
    {
        const Win32Toolkit one(other);
        const Win32Toolkit two(other);
        EXPECT_TRUE(::GetClassInfoExW(other, WindowClasses::Form, &found));
    }
    EXPECT_FALSE(::GetClassInfoExW(other, WindowClasses::Form, &found));
}

// A library without a manifest has the controls of the old version.
TEST_F(WindowTest, TheControlsOfTheOldVersionServeAsWell) {
    Win32Toolkit old(::GetModuleHandleW(L"kernel32.dll"));
    EXPECT_TRUE(ControlsContext(::GetModuleHandleW(nullptr)).IsPresent());
    EXPECT_FALSE(ControlsContext(::GetModuleHandleW(L"kernel32.dll")).IsPresent());
    later.Post([&] {
        FormWindow& window = *old.ActiveWindow();
        form.log.clear();
        ::SendMessageW(window.HandleOf(form.chkOn), BM_CLICK, 0, 0);
        Click(window.HandleOf(form.optTwo));
        form.txtCount.SetFocus();
        win32::Type(old, u"1");
        form.Hide();
    });
    form.ShowModal(old);
    EXPECT_EQ(form.log, (Log{"chkOn_Click", "optTwo_Click", "txtCount_Change"}));
}

// --- messages, help, and the rest of a toolkit ---

TEST_F(WindowTest, AMessageHasItsTextAndTitle) {
    Show([&](FormWindow& window) {
        AnswerNextMessage(later, [&](HWND box) {
            EXPECT_EQ(MessageOf(box), u"one\r\ntwo");
            EXPECT_EQ(TextOf(box), u"Tarnwick Lintara");
            EXPECT_EQ(::GetWindow(box, GW_OWNER), window.Handle());
            EXPECT_FALSE(::IsWindowEnabled(window.Handle()));
        });
        toolkit.ShowMessage(u"one\r\ntwo", forms::MessageStyle::Information, u"");
        AnswerNextMessage(later, [&](HWND box) { EXPECT_EQ(TextOf(box), u"Title"); });
        toolkit.ShowMessage(u"x", forms::MessageStyle::Critical, u"Title");
        EXPECT_TRUE(::IsWindowEnabled(window.Handle()));
        EXPECT_EQ(::GetActiveWindow(), window.Handle());
    });
}

TEST_F(WindowTest, AMessageHasItsIcon) {
    using forms::MessageStyle;
    for (const auto& [style, icon] :
         {std::pair(MessageStyle::OkOnly, LPWSTR{}), std::pair(MessageStyle::Critical, IDI_ERROR),
          std::pair(MessageStyle::Exclamation, IDI_WARNING),
          std::pair(MessageStyle::Information, IDI_INFORMATION)}) {
        AnswerNextMessage(later, [&, wanted = icon](HWND box) {
            HICON shown = nullptr;
            EachWindowIn(box, [&shown](HWND child) {
                if ((::GetWindowLongPtrW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
                    shown = reinterpret_cast<HICON>(::SendMessageW(child, STM_GETICON, 0, 0));
                }
            });
            EXPECT_EQ(shown, wanted == nullptr ? nullptr : ::LoadIconW(nullptr, wanted));
        });
        toolkit.ShowMessage(u"x", style, u"");
    }
}

TEST_F(WindowTest, AHelpFileThatIsNotThereIsTold) {
    for (const TextView file : {u"C:\\nowhere\\help.chm", u"C:\\nowhere\\TARNWK30.HLP"}) {
        AnswerNextMessage(later, [&](HWND box) {
            EXPECT_EQ(MessageOf(box), Text(u"The help file ") + Text(file) + u" cannot be shown.");
        });
        toolkit.ShowHelp(file, 60);
    }
}

TEST_F(WindowTest, TheHourglassIsShownUntilTheDefaultPointerIs) {
    const HCURSOR wait = ::LoadCursorW(nullptr, IDC_WAIT);
    const HCURSOR arrow = ::LoadCursorW(nullptr, IDC_ARROW);
    ::SetCursor(arrow);
    toolkit.SetMousePointer(forms::MousePointer::Hourglass);
    toolkit.SetMousePointer(forms::MousePointer::Hourglass);
    EXPECT_EQ(::GetCursor(), wait);
    Show([&](FormWindow& window) {
        const auto move = [&] {
            ::SendMessageW(window.HandleOf(form.txtName), WM_SETCURSOR,
                           reinterpret_cast<WPARAM>(window.HandleOf(form.txtName)),
                           MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        };
        move();
        EXPECT_EQ(::GetCursor(), wait);
        toolkit.SetMousePointer(forms::MousePointer::Default);
        EXPECT_EQ(::GetCursor(), arrow);
        move();
        EXPECT_NE(::GetCursor(), wait);
    });
}

TEST_F(WindowTest, DoEventsServesWhatIsWaiting) {
    int served = 0;
    later.Post([&] { ++served; });
    later.Post([&] { ++served; });
    toolkit.DoEvents();
    EXPECT_EQ(served, 2);
}

TEST_F(WindowTest, ColorsAreTheDesktops) {
    EXPECT_EQ(static_cast<COLORREF>(toolkit.Resolve(forms::Color::Highlight)),
              ::GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_EQ(static_cast<COLORREF>(toolkit.Resolve(forms::Color::ButtonFace)), ::GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(toolkit.Resolve(static_cast<forms::Color>(0x123456)), static_cast<forms::Color>(0x123456));
}

}  // namespace
}  // namespace lintara::ui::win32
