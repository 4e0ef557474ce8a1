#include "base/numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <variant>

namespace lintara {
namespace {

constexpr char16_t DecimalPoint = u'.';
constexpr char16_t ThousandsSeparator = u',';
constexpr char16_t CurrencySign = u'$';

// The bits that &H or &O wrote.
struct Bits {
    std::uint64_t value = 0;
};
using Number = std::variant<double, Bits>;

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}
bool IsWhite(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

TextView WithoutWhiteSpace(TextView text) {
    while (!text.empty() && IsWhite(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsWhite(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// The value of a digit of up to base 16; 16 for any other character.
unsigned DigitValue(char16_t c) {
    if (IsDigit(c)) {
        return c - u'0';
    }
    const char16_t lower = c | 0x20;
    return c < 0x80 && lower >= u'a' && lower <= u'f' ? lower - u'a' + 10U : 16U;
}

// "&H1F", "&o17"; `text` has no white space around it.
std::optional<Number> ParseRadix(TextView text) {
    if (text.size() < 3) {
        return std::nullopt;
    }
    const bool octal = text[1] == u'O' || text[1] == u'o';
    if (!octal && text[1] != u'H' && text[1] != u'h') {
        return std::nullopt;
    }
    const unsigned base = octal ? 8 : 16;
    Bits bits;
    for (const char16_t c : text.substr(2)) {
        const unsigned digit = DigitValue(c);
        if (digit >= base || bits.value > (std::numeric_limits<std::uint64_t>::max() - digit) / base) {
            return std::nullopt;
        }
        bits.value = bits.value * base + digit;
    }
    return bits;
}

// What stands around the digits of a decimal number.
struct Dress {
    bool negative = false;
    bool signedInFront = false;
    bool parentheses = false;
};

// Takes sign, currency sign and opening parenthesis off the front, each at most once, in any order.
std::optional<Dress> TakeFront(TextView& text) {
    Dress dress;
    bool currency = false;
    for (; !text.empty(); text.remove_prefix(1)) {
        const char16_t c = text.front();
        bool* seen = nullptr;
        if (c == u'+' || c == u'-') {
            seen = &dress.signedInFront;
            dress.negative = c == u'-';
        } else if (c == CurrencySign) {
            seen = &currency;
        } else if (c == u'(') {
            seen = &dress.parentheses;
        } else {
            break;
        }
        if (*seen) {
            return std::nullopt;
        }
        *seen = true;
    }
    if (dress.parentheses && dress.signedInFront) {
        return std::nullopt;
    }
    return dress;
}

// Takes what must or may stand behind the digits.
bool TakeBack(TextView& text, Dress& dress) {
    if (text.empty()) {
        return false;
    }
    const char16_t last = text.back();
    if (dress.parentheses) {
        dress.negative = true;
        text.remove_suffix(1);
        return last == u')';
    }
    if (!dress.signedInFront && (last == u'+' || last == u'-')) {
        dress.negative = last == u'-';
        text.remove_suffix(1);
    }
    return true;
}

// The digits of the whole part and of the decimals, in the form that std::from_chars reads.
struct Digits {
    std::string characters;
    bool any = false;            // a digit stood there
    bool significant = false;    // one that is not 0
    std::int64_t magnitude = 0;  // the power of ten of the first digit that is not 0
};

Digits TakeDigits(TextView& text) {
    Digits digits;
    std::size_t i = 0;
    std::int64_t wholeDigits = 0;
    std::int64_t place = 0;  // 0 in front of the decimal point, then -1, -2 ...
    std::int64_t firstIndex = 0;
    bool decimals = false;
    for (; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == DecimalPoint && !decimals) {
            decimals = true;
            digits.characters += '.';
        } else if (IsDigit(c)) {
            digits.characters += static_cast<char>(c);
            digits.any = true;
            wholeDigits += decimals ? 0 : 1;
            place -= decimals ? 1 : 0;
            if (c != u'0' && !digits.significant) {
                digits.significant = true;
                firstIndex = decimals ? place : wholeDigits;
            }
        } else if (c != ThousandsSeparator || decimals || !digits.any) {
            break;
        }
    }
    digits.magnitude = firstIndex > 0 ? wholeDigits - firstIndex : firstIndex;
    text.remove_prefix(i);
    return digits;
}

// "e+5" and the like; the whole rest must be the exponent. No exponent is 0. One of absurd size is held at a
// bound that no number of digits in memory makes up for.
std::optional<std::int64_t> ParseExponent(TextView text) {
    if (text.empty()) {
        return 0;
    }
    const char16_t letter = text.front() | 0x20;
    if (letter != u'e' && letter != u'd') {
        return std::nullopt;
    }
    text.remove_prefix(1);
    const bool negative = !text.empty() && text.front() == u'-';
    if (negative || (!text.empty() && text.front() == u'+')) {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    constexpr std::int64_t Bound = std::int64_t{1} << 40;
    std::int64_t exponent = 0;
    for (const char16_t c : text) {
        if (!IsDigit(c)) {
            return std::nullopt;
        }
        exponent = std::min(Bound, exponent * 10 + (c - u'0'));
    }
    return negative ? -exponent : exponent;
}

std::optional<double> ToDouble(Digits& digits, std::int64_t exponent) {
    if (!digits.significant || digits.magnitude + exponent < -400) {
        return 0.0;
    }
    if (digits.magnitude + exponent > 400) {
        return std::nullopt;
    }
    digits.characters += 'e';
    digits.characters += std::to_string(exponent);
    const char* begin = digits.characters.data();
    double value = 0;
    const auto [end, error] = std::from_chars(begin, begin + digits.characters.size(), value);
    if (error == std::errc::result_out_of_range) {
        return digits.magnitude + exponent < 0 ? std::optional(0.0) : std::nullopt;
    }
    return value;
}

std::optional<Number> ParseDecimal(TextView text) {
    std::optional<Dress> dress = TakeFront(text);
    if (!dress || !TakeBack(text, *dress)) {
        return std::nullopt;
    }
    Digits digits = TakeDigits(text);
    const std::optional<std::int64_t> exponent = ParseExponent(text);
    if (!digits.any || !exponent) {
        return std::nullopt;
    }
    const std::optional<double> value = ToDouble(digits, *exponent);
    if (!value) {
        return std::nullopt;
    }
    return dress->negative ? -*value : *value;
}

std::optional<Number> ParseNumber(TextView text) {
    text = WithoutWhiteSpace(text);
    return text.starts_with(u'&') ? ParseRadix(text) : ParseDecimal(text);
}

// A line number, which is what is asked about nearly always.
bool IsPlainDigits(TextView text) {
    constexpr std::size_t SurelyInRange = 300;
    if (text.empty() || text.size() > SurelyInRange) {
        return false;
    }
    for (const char16_t c : text) {
        if (!IsDigit(c)) {
            return false;
        }
    }
    return true;
}

// To the nearest whole number, halves to the even one, whatever rounding mode the process has set.
double RoundHalfToEven(double number) {
    const double below = std::floor(number);
    const double fraction = number - below;
    if (fraction != 0.5) {
        return fraction < 0.5 ? below : below + 1;
    }
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <class Integer>
Result<Integer> Convert(double number) {
    const double rounded = RoundHalfToEven(number);
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
        return Failure(ErrorNumber::Overflow, "the number is outside the range of its type");
    }
    return static_cast<Integer>(rounded);
}

template <class Integer>
Result<Integer> Convert(TextView text) {
    using Unsigned = std::make_unsigned_t<Integer>;
    const std::optional<Number> number = ParseNumber(text);
    if (!number) {
        return Failure(ErrorNumber::TypeMismatch, "the text is not a number");
    }
    if (const double* decimal = std::get_if<double>(&*number)) {
        return Convert<Integer>(*decimal);
    }
    const std::uint64_t bits = std::get<Bits>(*number).value;
    if (bits > std::numeric_limits<Unsigned>::max()) {
        return Failure(ErrorNumber::Overflow, "the number has more bits than its type");
    }
    return static_cast<Integer>(static_cast<Unsigned>(bits));
}

}  // namespace

bool IsNumeric(TextView text) {
    return IsPlainDigits(text) || ParseNumber(text).has_value();
}

Result<std::int16_t> CInt(double number) {
    return Convert<std::int16_t>(number);
}
Result<std::int16_t> CInt(TextView text) {
    return Convert<std::int16_t>(text);
}
Result<std::int32_t> CLng(double number) {
    return Convert<std::int32_t>(number);
}
Result<std::int32_t> CLng(TextView text) {
    return Convert<std::int32_t>(text);
}

Text CStr(std::int32_t number) {
    Text text;
    AppendDecimal(text, number);
    return text;
}

void AppendDecimal(Text& text, std::int32_t number) {
    std::array<char, 11> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), end);
}

}  // namespace lintara
