// What the views of one window share.
//
// Each view hands what the user does with its system control to the form's control, once, and takes from that
// what it shows. To tell the two directions apart, it asks the MirrorGate: what a system control says while
// the window carries a change of the form over to it, the user has not done.
#pragma once

#include "forms/mirror_gate.h"
#include "ui/win32/fonts.h"
#include "ui/win32/scale.h"

#include <exception>
#include <unordered_map>

namespace lintara::ui::win32 {

class ControlView;

using forms::MirrorGate;

struct ViewContext {
    ViewContext(HINSTANCE instance, int dpi) : module(instance), scale(dpi), fonts(dpi) {}

    HINSTANCE module;
    MirrorGate gate;
    Scale scale;
    FontSet fonts;
    // The views by their system controls.
    std::unordered_map<HWND, ControlView*> views;
    // What a handler of the form threw. Nothing may be thrown through the system's code: it waits here for
    // the window's end.
    std::exception_ptr failure;
};

}  // namespace lintara::ui::win32
