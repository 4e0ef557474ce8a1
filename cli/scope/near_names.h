// Suggestions for a name that was mistyped.
#pragma once

#include "base/text.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

// The names, three at most and best first, that few slips of the keyboard turn into `wanted`. `*` and `?` in
// it count as characters like any other.
[[nodiscard]] std::vector<Text> NearNames(TextView wanted, std::span<const Text> names);

// "Did you mean A, B or C?" with a blank ahead; "" when nothing is near.
[[nodiscard]] std::string Suggestion(TextView wanted, std::span<const Text> names);

// "--component: there is no component 'Mian'." and the suggestion.
[[nodiscard]] std::string UnknownName(std::string_view option, std::string_view kind,
                                      const std::string& wanted, std::span<const Text> names);

}  // namespace lintara::cli
