#include "platform/toml_parser.h"

#include <algorithm>
#include <array>
#include <optional>

namespace lintara::platform {
namespace {

// The parser takes a call for each part of a dotted key, and again when the tables are released.
constexpr int mostDots = 2000;

constexpr std::array<std::string_view, 4> quotes = {"\"\"\"", "'''", "\"", "'"};

// The offset behind the text in quotes, or the comment, that begins at `at`; `at` when there is none.
std::size_t BehindText(std::string_view bytes, std::size_t at) {
    if (bytes[at] == '#') {
        return std::min(bytes.find('\n', at), bytes.size());
    }
    const auto quote = std::ranges::find_if(quotes, [&](auto q) { return bytes.substr(at).starts_with(q); });
    if (quote == quotes.end()) {
        return at;
    }
    for (at += quote->size(); at < bytes.size(); ++at) {
        if (bytes[at] == '\\' && quote->front() == '"') {
            ++at;
        } else if (bytes.substr(at).starts_with(*quote)) {
            return at + quote->size();
        } else if (bytes[at] == '\n' && quote->size() == 1) {
            return at;
        }
    }
    return bytes.size();
}

// The line from which on there are more dots outside texts than any file of settings needs.
std::optional<std::size_t> LineOfTooManyDots(std::string_view bytes) {
    int dots = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t behind = BehindText(bytes, at);
        if (behind == at) {
            dots += bytes[at] == '.' ? 1 : 0;
            ++at;
        }
        at = std::max(at, behind);
        if (dots > mostDots) {
            return 1 + static_cast<std::size_t>(std::ranges::count(bytes.substr(0, at), '\n'));
        }
    }
    return std::nullopt;
}

// The parser's message as people understand it.
std::string Sentence(std::string_view description) {
    return description.contains("TOML_MAX_") ? "lists and tables stand too deep in one another"
                                             : std::string(description);
}

}  // namespace

std::expected<toml::table, TomlError> ParseToml(std::string_view bytes) {
    if (const auto line = LineOfTooManyDots(bytes)) {
        return std::unexpected(TomlError{*line, "there are too many dots in keys and numbers"});
    }
    try {
        return toml::parse(bytes);
    } catch (const toml::parse_error& error) {
        return std::unexpected(TomlError{error.source().begin.line, Sentence(error.description())});
    }
}

}  // namespace lintara::platform
