// Where a template or a piece of code comes from: a file, standard input, or a text that is known already.
#pragma once

#include "base/text.h"
#include "cli/streams.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace lintara::cli {

struct StandardInput {};

using TextSource = std::variant<Text, std::filesystem::path, StandardInput>;

// The text in `bytes`: UTF-8 or, with a byte order mark, UTF-16; windows-1252 when it is no UTF-8.
[[nodiscard]] Text DecodeText(std::string_view bytes);

// The text with each CR LF, LF and lone CR as a CR LF.
[[nodiscard]] Text WithLineBreaks(TextView text);

// The text of a file with these bytes: its lines joined by CR LF. The line ending at its very end ends the
// last line and begins no further one.
[[nodiscard]] Text TextOfFile(std::string_view bytes);

// What is wrong with the size of a template or a piece of code, wherever it comes from; each line break
// counts as two characters.
[[nodiscard]] std::optional<std::string> ProblemOfSize(TextView code);

// "-" is standard input, anything else a file.
[[nodiscard]] TextSource SourceFromArgument(std::string_view argument);

// The text. What is read has every line ending turned into CR LF, and loses the one at its very end, which
// ends its last line; it is UTF-8 or, with a byte order mark, UTF-16, and windows-1252 when it is no UTF-8.
// More than workspace::largestCode is refused. The error is a sentence that names the file.
[[nodiscard]] std::expected<Text, std::string> ReadText(const TextSource& source, Source& standardInput);

}  // namespace lintara::cli
