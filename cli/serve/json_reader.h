// Reads one line of a client, whoever wrote it: invalid UTF-8, half a surrogate pair, a name that stands
// twice in one object are malformed, as are more values or a deeper nesting than any request needs. What is
// refused has not been copied.
#pragma once

#include "cli/serve/json_value.h"

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>

namespace lintara::cli {

inline constexpr std::size_t deepestNesting = 32;
inline constexpr std::size_t mostValues = 4'000'000;

// The error is a sentence for people.
[[nodiscard]] std::expected<JsonValue, std::string> ReadJson(std::string_view line);

}  // namespace lintara::cli
