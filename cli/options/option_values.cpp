#include "cli/options/option_values.h"

#include "cli/output/terminal_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>

namespace lintara::cli {
namespace {

bool IsAllDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::unexpected<std::string> Complaint(std::string_view option, std::string_view text,
                                       std::string_view what) {
    return std::unexpected(std::string(option) + ": '" + Printable(text) + "' " + std::string(what));
}

template <class Value>
std::expected<Value, std::string> ParseWord(std::string_view option, std::string_view text,
                                            std::span<const std::string_view> words) {
    const auto found = std::ranges::find(words, text);
    if (found != words.end()) {
        return static_cast<Value>(found - words.begin());
    }
    if (words.size() == 2) {
        return Complaint(option, text,
                         "is neither " + std::string(words[0]) + " nor " + std::string(words[1]));
    }
    std::string all(words[0]);
    for (const std::string_view word : words.subspan(1)) {
        all += ", " + std::string(word);
    }
    return Complaint(option, text, "is none of " + all);
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

std::expected<Scope, std::string> ParseScope(std::string_view option, std::string_view text) {
    return ParseWord<Scope>(option, text, scopeWords);
}

std::expected<Numbering, std::string> ParseNumbering(std::string_view option, std::string_view text) {
    return ParseWord<Numbering>(option, text, numberingWords);
}

std::expected<CaretPlace, std::string> ParseCaretPlace(std::string_view option, std::string_view text) {
    std::string_view rest = text;
    const auto last = TakeLastNumber(rest);
    const auto first = last ? TakeLastNumber(rest) : std::nullopt;
    if (!last || rest.empty()) {
        return Complaint(option, text, "is not of the form Component:LINE or Component:LINE:COLUMN");
    }
    CaretPlace place{.component = std::string(rest), .line = Line(first.value_or(*last))};
    if (first) {
        place.column = Column(*last);
    }
    if (place.line < Line(1) || place.column < Column(1)) {
        return Complaint(option, text, "names line or column 0; both count from 1");
    }
    return place;
}

std::expected<std::string, std::string> ParseBackupSuffix(std::string_view option, std::string_view text) {
    if (text.empty() || text.contains('/') || text.contains('\0')) {
        return Complaint(option, text, "is no suffix for a file name; give one such as .bak");
    }
    return std::string(text);
}

}  // namespace lintara::cli
