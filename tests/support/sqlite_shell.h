// SQLite's own program, as a second opinion on what a database file holds.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lintara::support {

// What the program prints for the statements, errors too.
[[nodiscard]] std::string AskSqlite(const std::filesystem::path& file, std::string_view sql);

}  // namespace lintara::support
