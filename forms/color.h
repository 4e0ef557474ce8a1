// Colours as the platform numbers them: red, green and blue from the lowest byte up, or, with the highest bit
// set, the index of a system colour, which the desktop's settings decide.
#pragma once

#include <cstdint>

namespace lintara::forms {

enum class Color : std::uint32_t {
    Black = 0x00000000,
    WindowBackground = 0x80000005,
    WindowText = 0x80000008,
    Highlight = 0x8000000D,
    ButtonFace = 0x8000000F,
    ButtonShadow = 0x80000010,
    GrayText = 0x80000011,
    ButtonText = 0x80000012,
    ButtonHighlight = 0x80000014,
};

// Whether the colour is one of the desktop's.
[[nodiscard]] constexpr bool IsSystemColor(Color color) {
    return (static_cast<std::uint32_t>(color) & 0x80000000U) != 0;
}

}  // namespace lintara::forms
