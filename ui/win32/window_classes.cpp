#include "ui/win32/window_classes.h"

namespace lintara::ui::win32 {
namespace {

// One that is there already is left as it is.
void Register(HINSTANCE module, const wchar_t* name) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = ::DefWindowProcW;
    windowClass.hInstance = module;
    windowClass.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = name;
    ::RegisterClassExW(&windowClass);
}

}  // namespace

WindowClasses::WindowClasses(HINSTANCE module) : module_(module) {
    Register(module, Form);
    Register(module, Surface);
}

WindowClasses::~WindowClasses() {
    ::UnregisterClassW(Form, module_);
    ::UnregisterClassW(Surface, module_);
}

}  // namespace lintara::ui::win32
