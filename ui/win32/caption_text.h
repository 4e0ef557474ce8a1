// Captions in the system's own way of marking access keys, which is not quite that of forms/caption.h: there
// the last mark counts, and one at the end is not shown.
#pragma once

#include "base/text.h"

#include <string>

namespace lintara::ui::win32 {

// For controls that underline the access key.
[[nodiscard]] std::wstring MarkedCaption(TextView caption);
// For measuring.
[[nodiscard]] std::wstring PlainCaption(TextView caption);

}  // namespace lintara::ui::win32
