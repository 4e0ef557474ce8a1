#include "ui/win32/controls_context.h"

namespace lintara::ui::win32 {
namespace {

void LoadControls() {
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_STANDARD_CLASSES | ICC_BAR_CLASSES | ICC_TREEVIEW_CLASSES | ICC_UPDOWN_CLASS;
    ::InitCommonControlsEx(&controls);
}

}  // namespace

ControlsContext::ControlsContext(HINSTANCE module) {
    // The number of a manifest that is for the library itself and not for the process.
    constexpr WORD manifest = 2;
    ACTCTXW wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    wanted.hModule = module;
    wanted.lpResourceName = MAKEINTRESOURCEW(manifest);
    context_ = ::CreateActCtxW(&wanted);
    const Activation activation(*this);
    LoadControls();
}

ControlsContext::~ControlsContext() {
    if (IsPresent()) {
        ::ReleaseActCtx(context_);
    }
}

ControlsContext::Activation::Activation(const ControlsContext& context)
    : isActive_(context.IsPresent() && ::ActivateActCtx(context.context_, &cookie_) != FALSE) {}

ControlsContext::Activation::~Activation() {
    if (isActive_) {
        ::DeactivateActCtx(0, cookie_);
    }
}

}  // namespace lintara::ui::win32
