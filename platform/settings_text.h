// How a text of UTF-16 is held in a settings file, which knows whole characters only, and back.
//
// A line break of the language, CR LF, is a line break of the file, so that a person can read and edit texts
// of several lines, whatever the editor makes of line ends. What the file cannot hold, or would give back
// changed, stands as the mark U+FDD0 and the code unit in four hexadecimal digits: an unpaired surrogate, a
// line feed without its carriage return, and the mark itself. Every text comes back exactly.
#pragma once

#include "base/text.h"

#include <string>
#include <string_view>

namespace lintara::platform {

[[nodiscard]] std::string ToSettingsText(TextView text);

// Takes what people write, too: CR LF stays, and a mark without four digits behind it stands for itself.
[[nodiscard]] Text FromSettingsText(std::string_view stored);

}  // namespace lintara::platform
