// Reads TOML that anybody may have written.
#pragma once

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>

#include <toml++/toml.h>

namespace lintara::platform {

struct TomlError {
    std::size_t line = 0;  // from 1
    std::string what;      // a sentence
};

// Any bytes may be handed in. What is no TOML, or nests deeper than settings ever need, is an error.
[[nodiscard]] std::expected<toml::table, TomlError> ParseToml(std::string_view bytes);

}  // namespace lintara::platform
