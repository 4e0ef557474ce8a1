// --buffer: a numbered copy-and-paste buffer as the source of a template or of code.
#pragma once

#include "base/text.h"
#include "cli/environment.h"
#include "cli/options/command_info.h"
#include "cli/options/option_reader.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace lintara::cli {

// The number of a stored buffer, 0 to 9. The error is a sentence that begins with `name`.
[[nodiscard]] std::expected<std::int32_t, std::string> ParseBufferNumber(std::string_view name,
                                                                         std::string_view text);

[[nodiscard]] OptionInfo BufferOption(std::string_view group);

// The text of the buffer that --buffer names, with CR LF between its lines; none when it was not given.
// Throws UsageError when the command line also gives the option `other`, and std::runtime_error when the
// buffers cannot be read.
[[nodiscard]] std::optional<Text> ReadBufferSource(const OptionReader& given, std::string_view other,
                                                   Environment& environment);

}  // namespace lintara::cli
