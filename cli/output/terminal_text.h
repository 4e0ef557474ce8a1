// Names and code on their way to people: UTF-8 in which nothing can steer a terminal.
#pragma once

#include "base/text.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace lintara::cli {

// Appends `utf8` with control characters (tabs excepted), and the marks that reverse the reading direction,
// written as escapes such as \x1b and \u202e.
void AppendPrintable(std::string_view utf8, std::string& out);

[[nodiscard]] std::string Printable(std::string_view utf8);
[[nodiscard]] std::string Printable(TextView text);
[[nodiscard]] std::string PrintablePath(const std::filesystem::path& path);

// A text of several lines: as it is for a program, and for a terminal with nothing in its lines that steers
// it.
[[nodiscard]] std::string ForReader(std::string_view utf8, bool isTerminal);

// JSON, in UTF-8, with escapes for what could steer a terminal. JSON itself demands them for the control
// characters of ASCII only; the others can stand in its texts alone, where an escape means the same.
[[nodiscard]] std::string PrintableJson(std::string json);

// The number of columns that `utf8` takes on a terminal, every character taken as one column wide.
[[nodiscard]] std::size_t ColumnsOf(std::string_view utf8);

}  // namespace lintara::cli
