// Code pages by the tables of ICU.
#pragma once

#include "workspace/encoding.h"

#include <expected>
#include <string>
#include <string_view>

namespace lintara::workspace {

// The encoding that ICU knows as `converterName`; null when it knows none. Code pages that are no extension
// of ASCII, or whose bytes mean different things after a switch, are refused with a sentence for people.
[[nodiscard]] std::expected<EncodingPtr, std::string> OpenCodePage(const std::string& converterName);

}  // namespace lintara::workspace
