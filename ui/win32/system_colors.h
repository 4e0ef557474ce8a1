// Colours of forms on this desktop.
#pragma once

#include "forms/color.h"
#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

// Forms number the system's colours as the system does.
[[nodiscard]] inline COLORREF ResolvedColor(forms::Color color) {
    const auto bits = static_cast<std::uint32_t>(color);
    return forms::IsSystemColor(color) ? ::GetSysColor(static_cast<int>(bits & 0xFFU)) : bits & 0xFFFFFFU;
}

}  // namespace lintara::ui::win32
