// Strings as a settings file spells them.
#pragma once

#include <string>
#include <string_view>

namespace lintara::platform {

// In quotes, on one line: for keys.
[[nodiscard]] std::string QuotedKey(std::string_view utf8);

// In quotes; in triple quotes and on several lines when it has line feeds. Blanks that an editor might remove
// at the end of a line are written as escapes.
[[nodiscard]] std::string QuotedValue(std::string_view utf8);

}  // namespace lintara::platform
