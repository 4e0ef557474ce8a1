// A user made of messages: what the system sends when somebody presses keys and buttons.
#pragma once

#include "base/text.h"
#include "forms/text_box.h"
#include "tests/ui_win32/each_window.h"
#include "ui/win32/form_window.h"
#include "ui/win32/win32_toolkit.h"
#include "ui/win32/windows_headers.h"

#include <array>
#include <chrono>
#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <utility>

namespace lintara::ui::win32 {

// Runs functions when the thread serves its messages, in whatever loop that is.
class Later {
  public:
    Later()
        : window_(
              ::CreateWindowExW(0, WC_STATICW, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {
        ::SetWindowSubclass(window_, &Later::Procedure, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    ~Later() { ::DestroyWindow(window_); }
    Later(const Later&) = delete;
    Later& operator=(const Later&) = delete;

    void Post(std::function<void()> work) {
        work_.push_back(std::move(work));
        ::PostMessageW(window_, WM_APP, 0, 0);
    }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR self) {
        auto& later = *reinterpret_cast<Later*>(self);
        if (message == WM_APP && !later.work_.empty()) {
            const auto work = std::move(later.work_.front());
            later.work_.pop_front();
            work();
            return 0;
        }
        return ::DefSubclassProc(window, message, wParam, lParam);
    }

    HWND window_;
    std::deque<std::function<void()>> work_;
};

// The keys that are held while a key is pressed.
class Holding {
  public:
    Holding(std::initializer_list<int> keys) {
        ::GetKeyboardState(before_.data());
        std::array<BYTE, 256> state{};
        for (const int key : keys) {
            state.at(static_cast<std::size_t>(key)) = 0x80;
        }
        ::SetKeyboardState(state.data());
    }
    ~Holding() { ::SetKeyboardState(before_.data()); }
    Holding(const Holding&) = delete;
    Holding& operator=(const Holding&) = delete;

  private:
    std::array<BYTE, 256> before_{};
};

inline LPARAM KeyData(WPARAM key, bool withAlt = false) {
    const UINT scan = ::MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC);
    return static_cast<LPARAM>(1U | scan << 16U | (withAlt ? 1U << 29U : 0U));
}

// Presses a key in the window with the keyboard, by the way that keys take: the queue.
inline void Press(forms::Toolkit& toolkit, WPARAM key, std::initializer_list<int> held = {}) {
    const Holding holding(held);
    ::PostMessageW(::GetFocus(), WM_KEYDOWN, key, KeyData(key));
    toolkit.DoEvents();
}

// Alt and a character.
inline void PressAlt(forms::Toolkit& toolkit, char16_t character) {
    const Holding holding({VK_MENU});
    ::PostMessageW(::GetFocus(), WM_SYSCHAR, character, KeyData(character, true));
    toolkit.DoEvents();
}

// Types characters into the window with the keyboard.
inline void Type(forms::Toolkit& toolkit, TextView text) {
    for (const char16_t unit : text) {
        ::PostMessageW(::GetFocus(), WM_CHAR, unit, 1);
        toolkit.DoEvents();
    }
}

inline void Click(HWND window, POINT at = {3, 3}) {
    const LPARAM place = MAKELPARAM(at.x, at.y);
    ::SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, place);
    ::SendMessageW(window, WM_LBUTTONUP, 0, place);
}

inline Text TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return {text.begin(), text.end()};
}

inline std::pair<DWORD, DWORD> SelectionOf(HWND edit) {
    std::pair<DWORD, DWORD> selection;
    ::SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&selection.first),
                   reinterpret_cast<LPARAM>(&selection.second));
    return selection;
}

inline std::wstring ClassOf(HWND window) {
    std::array<wchar_t, 64> name{};
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

// The message box that is shown by this thread; null when there is none.
inline HWND MessageBoxShown() {
    HWND box = nullptr;
    EachWindow([&box](HWND window) {
        if (ClassOf(window) == L"#32770" && ::IsWindowVisible(window) != FALSE) {
            box = window;
        }
    });
    return box;
}

// Ends the next message box when it is there; `look` sees it before.
inline void AnswerNextMessage(Later& later, std::function<void(HWND)> look,
                              std::chrono::steady_clock::time_point until = std::chrono::steady_clock::now() +
                                                                            std::chrono::seconds(20)) {
    later.Post([&later, look = std::move(look), until] {
        const HWND box = MessageBoxShown();
        if (box != nullptr) {
            look(box);
            ::PostMessageW(box, WM_COMMAND, IDOK, 0);
        } else if (std::chrono::steady_clock::now() < until) {
            ::Sleep(1);
            AnswerNextMessage(later, look, until);
        }
    });
}

// What a message box says: its text is its last label.
inline Text MessageOf(HWND box) {
    Text text;
    EachWindowIn(box, [&text](HWND child) {
        if (ClassOf(child) == L"Static" && !TextOf(child).empty()) {
            text = TextOf(child);
        }
    });
    return text;
}

}  // namespace lintara::ui::win32
