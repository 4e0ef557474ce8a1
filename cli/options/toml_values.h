// Values in the notation of project files as the texts that options take.
#pragma once

#include "cli/options/command_info.h"
#include "platform/toml_parser.h"

#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

using platform::TomlError;

// The option's texts, when the value is of a kind that the option takes: a flag takes true and false, others
// texts and numbers, and options that may be given several times lists of texts.
[[nodiscard]] std::expected<std::vector<std::string>, TomlError> TomlTexts(const OptionInfo& option,
                                                                           const toml::node& value);

}  // namespace lintara::cli
