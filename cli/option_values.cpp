#include "cli/option_values.h"

#include "cli/terminal_text.h"

#include <charconv>
#include <cmath>

namespace lintara::cli {
namespace {

bool IsAllDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::unexpected<std::string> Complaint(std::string_view option, std::string_view text,
                                       std::string_view what) {
    return std::unexpected(std::string(option) + ": '" + Printable(text) + "' " + std::string(what));
}

// The part of `text` behind its last colon is cut off and returned, when it is a number.
std::optional<std::int32_t> TakeLastNumber(std::string_view& text) {
    const auto colon = text.rfind(':');
    if (colon == std::string_view::npos || !IsAllDigits(text.substr(colon + 1))) {
        return std::nullopt;
    }
    std::int32_t value = 0;
    const std::string_view digits = text.substr(colon + 1);
    if (std::from_chars(digits.data(), digits.data() + digits.size(), value).ec != std::errc()) {
        return std::nullopt;
    }
    text = text.substr(0, colon);
    return value;
}

}  // namespace

std::expected<std::int32_t, std::string> ParseWholeNumber(std::string_view option, std::string_view text) {
    std::string_view digits = text;
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) {
        digits.remove_prefix(1);
    }
    if (!IsAllDigits(digits)) {
        return Complaint(option, text, "is not a whole number");
    }
    const std::string plain = (negative ? "-" : "") + std::string(digits);
    std::int32_t value = 0;
    if (std::from_chars(plain.data(), plain.data() + plain.size(), value).ec != std::errc()) {
        return Complaint(option, text, "lies outside -2147483648 to 2147483647");
    }
    return value;
}

std::expected<double, std::string> ParseSeconds(std::string_view option, std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value) || value < 0) {
        return Complaint(option, text, "is not a number of seconds");
    }
    return value;
}

std::expected<Scope, std::string> ParseScope(std::string_view text) {
    if (text == "project") {
        return Scope::Project;
    }
    if (text == "component") {
        return Scope::Component;
    }
    if (text == "procedure") {
        return Scope::Procedure;
    }
    return Complaint("--scope", text, "is none of project, component, procedure");
}

std::expected<CaretPlace, std::string> ParseCaretPlace(std::string_view text) {
    std::string_view rest = text;
    const auto last = TakeLastNumber(rest);
    const auto first = last ? TakeLastNumber(rest) : std::nullopt;
    if (!last || rest.empty()) {
        return Complaint("--at", text, "is not of the form Component:LINE or Component:LINE:COLUMN");
    }
    CaretPlace place{.component = std::string(rest), .line = Line(first.value_or(*last))};
    if (first) {
        place.column = Column(*last);
    }
    if (place.line < Line(1) || place.column < Column(1)) {
        return Complaint("--at", text, "names line or column 0; both count from 1");
    }
    return place;
}

std::expected<std::string, std::string> ParseBackupSuffix(std::string_view text) {
    if (text.empty() || text.contains('/') || text.contains('\0')) {
        return Complaint("--backup", text, "is no suffix for a file name; give one such as .bak");
    }
    return std::string(text);
}

}  // namespace lintara::cli
