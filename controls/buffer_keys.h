// The keys by which the text boxes for code exchange text with the copy-and-paste buffer: Ctrl+Shift+C and
// Ctrl+Shift+V.
#pragma once

#include "base/text.h"
#include "forms/text_box.h"
#include "forms/toolkit.h"

#include <cstdint>

namespace lintara::controls {

// Copies the selected text of `box` into `buffer`, an empty one too, and says so; or puts `buffer` in the
// place of the selection. Any other key, and these with other keys held, do nothing.
void ExchangeWithBuffer(std::int16_t keyCode, std::int16_t shiftState, forms::TextBox& box, Text& buffer,
                        forms::Toolkit& toolkit);

}  // namespace lintara::controls
