#include "ui/win32/surface.h"

#include "ui/win32/control_view.h"
#include "ui/win32/drawings.h"
#include "ui/win32/system_colors.h"

namespace lintara::ui::win32 {
namespace {

// The colour behind the controls of a container: that of the nearest opaque user control around them, else
// that of the form.
forms::Color ColorBehind(const forms::Container& container) {
    for (const forms::Container* c = &container; c != nullptr; c = c->Parent()) {
        const auto* surface = dynamic_cast<const forms::UserControl*>(c);
        if (surface != nullptr && surface->BackStyle() == 1) {
            return surface->BackColor();
        }
    }
    return forms::Color::ButtonFace;
}

}  // namespace

std::optional<LRESULT> Surface::Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            if (ControlView* view = ViewOf(reinterpret_cast<HWND>(lParam))) {
                view->Command(HIWORD(wParam));
                return 0;
            }
            return std::nullopt;
        case WM_NOTIFY: {
            auto& header = *reinterpret_cast<NMHDR*>(lParam);
            ControlView* view = ViewOf(header.hwndFrom);
            return view == nullptr ? std::nullopt : std::optional(view->Notify(header));
        }
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            return BackgroundOf(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam));
        case WM_ERASEBKGND: {
            RECT inside{};
            ::GetClientRect(window, &inside);
            ::FillRect(reinterpret_cast<HDC>(wParam), &inside, Background());
            return TRUE;
        }
        case WM_PAINT: {
            PAINTSTRUCT paint{};
            if (HDC dc = ::BeginPaint(window, &paint)) {
                Paint(window, dc);
                ::EndPaint(window, &paint);
            }
            return 0;
        }
        case WM_PRINTCLIENT:
            Paint(window, reinterpret_cast<HDC>(wParam));
            return 0;
        default:
            return std::nullopt;
    }
}

ControlView* Surface::ViewOf(HWND child) const {
    const auto found = context_.views.find(child);
    return found == context_.views.end() ? nullptr : found->second;
}

HBRUSH Surface::Background() {
    if (background_ == nullptr) {
        background_.reset(::CreateSolidBrush(ResolvedColor(ColorBehind(container_))));
    }
    return background_.get();
}

// A box that cannot be used asks for its colours as labels do.
LRESULT Surface::BackgroundOf(HWND child, HDC dc) {
    const ControlView* view = ViewOf(child);
    if (view != nullptr && view->LiesOnShape()) {
        ::SetBkColor(dc, ::GetSysColor(COLOR_WINDOW));
        ::SetTextColor(dc, ::GetSysColor(COLOR_GRAYTEXT));
        return reinterpret_cast<LRESULT>(::GetSysColorBrush(COLOR_WINDOW));
    }
    ::SetBkColor(dc, ResolvedColor(ColorBehind(container_)));
    ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
    return reinterpret_cast<LRESULT>(Background());
}

void Surface::Paint(HWND window, HDC dc) const {
    RECT inside{};
    ::GetClientRect(window, &inside);
    PaintDrawings(dc, inside, container_, context_.scale);
}

}  // namespace lintara::ui::win32
