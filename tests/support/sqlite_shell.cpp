#include "tests/support/sqlite_shell.h"

#include <array>
#include <cstdio>

namespace lintara::support {

namespace {

std::string Quoted(std::string_view word) {
    std::string quoted = "'";
    for (const char c : word) {
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return quoted + "'";
}

}  // namespace

std::string AskSqlite(const std::filesystem::path& file, std::string_view sql) {
    const std::string command =
        "sqlite3 -init /dev/null " + Quoted(file.string()) + " " + Quoted(sql) + " 2>&1";
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return "sqlite3 could not be started";
    }
    std::string printed;
    std::array<char, 4096> buffer{};
    for (std::size_t got = 0; (got = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        printed.append(buffer.data(), got);
    }
    ::pclose(pipe);
    return printed;
}

}  // namespace lintara::support
