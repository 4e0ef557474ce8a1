#include "cli/dialog/shell_words.h"

namespace lintara::cli {
namespace {

constexpr std::string_view harmless =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=:,./@%";

std::string Quoted(const std::string& word) {
    if (!word.empty() && word.find_first_not_of(harmless) == std::string::npos) {
        return word;
    }
    std::string quoted = "'";
    for (const char character : word) {
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return quoted + "'";
}

}  // namespace

std::string ShellLine(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += (line.empty() ? "" : " ") + Quoted(word);
    }
    return line;
}

}  // namespace lintara::cli
