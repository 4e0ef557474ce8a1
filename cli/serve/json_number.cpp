#include "cli/serve/json_number.h"

#include <algorithm>
#include <cstddef>

namespace lintara::cli {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view TakeDigits(std::string_view& text) {
    const auto* const end = std::ranges::find_if_not(text, IsDigit);
    const std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

bool Take(std::string_view& text, std::string_view choices) {
    const bool found = !text.empty() && choices.contains(text.front());
    text.remove_prefix(found ? 1 : 0);
    return found;
}

// A number in its parts.
struct Parts {
    bool valid = false;
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
    bool hasExponent = false;
    bool negativeExponent = false;
    std::string_view exponent;
};

Parts PartsOf(std::string_view text) {
    Parts parts;
    parts.negative = Take(text, "-");
    parts.whole = TakeDigits(text);
    bool valid = !parts.whole.empty() && (parts.whole.size() == 1 || parts.whole.front() != '0');
    if (Take(text, ".")) {
        parts.fraction = TakeDigits(text);
        valid = valid && !parts.fraction.empty();
    }
    parts.hasExponent = Take(text, "eE");
    if (parts.hasExponent) {
        parts.negativeExponent = text.starts_with('-');
        Take(text, "+-");
        parts.exponent = TakeDigits(text);
        valid = valid && !parts.exponent.empty();
    }
    parts.valid = valid && text.empty();
    return parts;
}

// Any exponent beyond this one decides alone: no line holds as many digits.
constexpr std::int64_t mostExponent = 1'000'000'000'000;

std::int64_t ExponentOf(const Parts& parts) {
    std::int64_t value = 0;
    for (const char c : parts.exponent) {
        value = std::min(value * 10 + (c - '0'), mostExponent);
    }
    return parts.negativeExponent ? -value : value;
}

// Long enough to be beyond `double`.
constexpr std::size_t longNumber = 300;

}  // namespace

std::expected<std::int64_t, NotWhole> WholeValue(std::string_view number) {
    constexpr std::int64_t mostDigits = 18;
    const Parts parts = PartsOf(number);
    std::string digits(parts.whole);
    digits += parts.fraction;
    const std::size_t last = digits.find_last_not_of('0');
    if (last == std::string::npos) {
        return 0;
    }
    std::int64_t exponent = ExponentOf(parts) - static_cast<std::int64_t>(parts.fraction.size());
    exponent += static_cast<std::int64_t>(digits.size() - last - 1);
    digits.resize(last + 1);
    digits.erase(0, digits.find_first_not_of('0'));
    if (exponent < 0) {
        return std::unexpected(NotWhole::Fraction);
    }
    if (static_cast<std::int64_t>(digits.size()) + exponent > mostDigits) {
        return std::unexpected(NotWhole::TooLarge);
    }
    digits.append(static_cast<std::size_t>(exponent), '0');
    std::int64_t value = 0;
    for (const char c : digits) {
        value = value * 10 + (c - '0');
    }
    return parts.negative ? -value : value;
}

TamedNumbers TameNumbers(std::string_view json) {
    TamedNumbers tamed;
    bool inText = false;
    for (std::size_t at = 0; at < json.size();) {
        const char c = json[at];
        if (inText || (c != '-' && !IsDigit(c))) {
            const std::size_t count = inText && c == '\\' && at + 1 < json.size() ? 2 : 1;
            inText = inText != (c == '"');
            tamed.text += json.substr(at, count);
            at += count;
            continue;
        }
        const std::size_t end = std::min(json.find_first_not_of("0123456789+-.eE", at), json.size());
        const std::string_view number = json.substr(at, end - at);
        const Parts parts = PartsOf(number);
        if (parts.valid && (parts.hasExponent || number.size() >= longNumber)) {
            tamed.replaced.emplace_back(number);
            tamed.text += numberStandIn;
        } else {
            tamed.text += number;
        }
        at = end;
    }
    return tamed;
}

}  // namespace lintara::cli
