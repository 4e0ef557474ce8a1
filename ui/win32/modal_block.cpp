#include "ui/win32/modal_block.h"

namespace lintara::ui::win32 {
namespace {

BOOL CALLBACK Collect(HWND window, LPARAM windows) {
    if (::IsWindowVisible(window) != FALSE && ::IsWindowEnabled(window) != FALSE) {
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    }
    return TRUE;
}

}  // namespace

ModalBlock::ModalBlock(HWND window) {
    ::EnumThreadWindows(::GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&windows_));
    std::erase(windows_, window);
    for (HWND other : windows_) {
        ::EnableWindow(other, FALSE);
    }
}

// The last one, which lies below the others, first: an owner is there before what it owns.
void ModalBlock::Release() {
    while (!windows_.empty()) {
        const HWND window = windows_.back();
        windows_.pop_back();
        if (::IsWindow(window) != FALSE) {
            ::EnableWindow(window, TRUE);
        }
    }
}

}  // namespace lintara::ui::win32
