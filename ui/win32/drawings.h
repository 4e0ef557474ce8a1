// Lines and shapes have no windows: the container that they are in paints them, behind its controls.
#pragma once

#include "forms/container.h"
#include "ui/win32/scale.h"
#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

// Paints the visible lines and shapes of `container`, whose inside `inside` is. A line is of the same number
// of pixels wherever it stands, and so is its distance from an edge of the container that is near: the two
// rings of a frame touch.
void PaintDrawings(HDC dc, const RECT& inside, const forms::Container& container, const Scale& scale);

}  // namespace lintara::ui::win32
