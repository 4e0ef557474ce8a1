// Captions in Qt's own way of marking access keys, which is not quite that of forms/caption.h.
#pragma once

#include "base/text.h"

#include <QString>

namespace lintara::ui {

// For widgets that underline the access key.
[[nodiscard]] QString MarkedCaption(TextView caption);
// For those that show what they are given, and for assistive technology.
[[nodiscard]] QString PlainCaption(TextView caption);

}  // namespace lintara::ui
