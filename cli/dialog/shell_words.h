// Command lines for people to copy into a shell.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

// The words with blanks between them, each quoted where a shell would read it as something else.
[[nodiscard]] std::string ShellLine(const std::vector<std::string>& words);

}  // namespace lintara::cli
