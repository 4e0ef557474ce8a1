// The texts of single options as values. Errors are sentences for people that begin with `option`, the name
// under which they know it.
#pragma once

#include "cli/options.h"

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

namespace lintara::cli {

// A whole number that fits 32 bits: an optional sign and decimal digits, nothing else.
[[nodiscard]] std::expected<std::int32_t, std::string> ParseWholeNumber(std::string_view option,
                                                                        std::string_view text);

[[nodiscard]] std::expected<double, std::string> ParseSeconds(std::string_view option, std::string_view text);

// The words that stand for the values of an enumeration, in their order.
inline constexpr std::string_view scopeWords[] = {"project", "component", "procedure"};
inline constexpr std::string_view numberingWords[] = {"procedure", "module"};

[[nodiscard]] std::expected<Scope, std::string> ParseScope(std::string_view option, std::string_view text);

[[nodiscard]] std::expected<Numbering, std::string> ParseNumbering(std::string_view option,
                                                                   std::string_view text);

[[nodiscard]] std::expected<CaretPlace, std::string> ParseCaretPlace(std::string_view option,
                                                                     std::string_view text);

// A suffix for the names of backup files: a part of a file name.
[[nodiscard]] std::expected<std::string, std::string> ParseBackupSuffix(std::string_view option,
                                                                        std::string_view text);

}  // namespace lintara::cli
