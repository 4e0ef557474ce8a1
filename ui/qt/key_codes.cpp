#include "ui/qt/key_codes.h"

#include "forms/text_box.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>

namespace lintara::ui {
namespace {

struct NamedKey {
    int key;
    std::int16_t code;
};

constexpr std::array namedKeys{
    NamedKey{Qt::Key_Backspace, 8},
    NamedKey{Qt::Key_Tab, 9},
    NamedKey{Qt::Key_Backtab, 9},
    NamedKey{Qt::Key_Clear, 12},
    NamedKey{Qt::Key_Return, 13},
    NamedKey{Qt::Key_Enter, 13},
    NamedKey{Qt::Key_Shift, 16},
    NamedKey{Qt::Key_Control, 17},
    NamedKey{Qt::Key_Alt, 18},
    NamedKey{Qt::Key_Pause, 19},
    NamedKey{Qt::Key_CapsLock, 20},
    NamedKey{Qt::Key_Escape, 27},
    NamedKey{Qt::Key_Space, 32},
    NamedKey{Qt::Key_PageUp, 33},
    NamedKey{Qt::Key_PageDown, 34},
    NamedKey{Qt::Key_End, 35},
    NamedKey{Qt::Key_Home, 36},
    NamedKey{Qt::Key_Left, 37},
    NamedKey{Qt::Key_Up, 38},
    NamedKey{Qt::Key_Right, 39},
    NamedKey{Qt::Key_Down, 40},
    NamedKey{Qt::Key_Print, 44},
    NamedKey{Qt::Key_Insert, 45},
    NamedKey{Qt::Key_Delete, 46},
    NamedKey{Qt::Key_Help, 47},
    NamedKey{Qt::Key_Meta, 91},
    NamedKey{Qt::Key_Menu, 93},
    NamedKey{Qt::Key_NumLock, 144},
    NamedKey{Qt::Key_ScrollLock, 145},
    NamedKey{Qt::Key_Semicolon, 186},
    NamedKey{Qt::Key_Equal, 187},
    NamedKey{Qt::Key_Comma, 188},
    NamedKey{Qt::Key_Minus, 189},
    NamedKey{Qt::Key_Period, 190},
    NamedKey{Qt::Key_Slash, 191},
    NamedKey{Qt::Key_QuoteLeft, 192},
    NamedKey{Qt::Key_BracketLeft, 219},
    NamedKey{Qt::Key_Backslash, 220},
    NamedKey{Qt::Key_BracketRight, 221},
    NamedKey{Qt::Key_Apostrophe, 222},
};

// The keys of the number pad are keys of their own there.
std::int16_t KeypadCodeOf(int key) {
    constexpr int firstDigit = 96;
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return static_cast<std::int16_t>(firstDigit + key - Qt::Key_0);
    }
    switch (key) {
        case Qt::Key_Asterisk:
            return 106;
        case Qt::Key_Plus:
            return 107;
        case Qt::Key_Minus:
            return 109;
        case Qt::Key_Period:
        case Qt::Key_Comma:
            return 110;
        case Qt::Key_Slash:
            return 111;
        default:
            return 0;
    }
}

}  // namespace

std::int16_t KeyCodeOf(const QKeyEvent& event) {
    const int key = event.key();
    if (event.modifiers().testFlag(Qt::KeypadModifier)) {
        if (const std::int16_t code = KeypadCodeOf(key); code != 0) {
            return code;
        }
    }
    const bool isLetter = key >= Qt::Key_A && key <= Qt::Key_Z;
    const bool isDigit = key >= Qt::Key_0 && key <= Qt::Key_9;
    if (isLetter || isDigit) {
        return static_cast<std::int16_t>(key);
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        constexpr int firstFunctionKey = 112;
        return static_cast<std::int16_t>(firstFunctionKey + key - Qt::Key_F1);
    }
    const auto* const found = std::ranges::find(namedKeys, key, &NamedKey::key);
    return found == namedKeys.end() ? std::int16_t{0} : found->code;
}

std::int16_t HeldKeysOf(const QKeyEvent& event) {
    int held = 0;
    held += event.modifiers().testFlag(Qt::ShiftModifier) ? forms::shift::Shift : 0;
    held += event.modifiers().testFlag(Qt::ControlModifier) ? forms::shift::Ctrl : 0;
    held += event.modifiers().testFlag(Qt::AltModifier) ? forms::shift::Alt : 0;
    return static_cast<std::int16_t>(held);
}

}  // namespace lintara::ui
