#include "ui/win32/keys.h"

#include "forms/text_box.h"
#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {
namespace {

bool IsHeld(int key) {
    return ::GetKeyState(key) < 0;
}

}  // namespace

std::int16_t HeldKeys() {
    int held = 0;
    held += IsHeld(VK_SHIFT) ? forms::shift::Shift : 0;
    held += IsHeld(VK_CONTROL) ? forms::shift::Ctrl : 0;
    held += IsHeld(VK_MENU) ? forms::shift::Alt : 0;
    return static_cast<std::int16_t>(held);
}

}  // namespace lintara::ui::win32
