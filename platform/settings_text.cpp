#include "platform/settings_text.h"

#include "base/utf8.h"

#include <cstddef>
#include <optional>

namespace lintara::platform {

namespace {

constexpr char32_t mark = 0xFDD0;
constexpr std::size_t markDigits = 4;

void AppendMarked(char32_t unit, std::string& stored) {
    AppendUtf8(mark, stored);
    for (int shift = 12; shift >= 0; shift -= 4) {
        stored += "0123456789ABCDEF"[(unit >> shift) & 0xF];
    }
}

std::optional<char16_t> HexDigit(char16_t c) {
    if (c >= u'0' && c <= u'9') {
        return static_cast<char16_t>(c - u'0');
    }
    const auto letter = static_cast<char16_t>(c | 0x20);
    if (letter >= u'a' && letter <= u'f') {
        return static_cast<char16_t>(letter - u'a' + 10);
    }
    return std::nullopt;
}

// The code unit that `text`, which stands behind a mark, begins with.
std::optional<char16_t> MarkedUnit(TextView text) {
    if (text.size() < markDigits) {
        return std::nullopt;
    }
    unsigned unit = 0;
    for (const char16_t c : text.substr(0, markDigits)) {
        const auto digit = HexDigit(c);
        if (!digit) {
            return std::nullopt;
        }
        unit = unit * 16 + *digit;
    }
    return static_cast<char16_t>(unit);
}

bool IsLineBreak(TextView text, std::size_t at) {
    return text.substr(at).starts_with(u"\r\n");
}

}  // namespace

std::string ToSettingsText(TextView text) {
    std::string stored;
    stored.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        if (IsLineBreak(text, at)) {
            // Behind another CR the line feed alone would be taken for that one's.
            stored += at > 0 && text[at - 1] == u'\r' ? "\r\n" : "\n";
            at += 2;
            continue;
        }
        const char32_t character = TakeCharacter(text, at);
        if (IsSurrogate(character) || character == U'\n' || character == mark) {
            AppendMarked(character, stored);
        } else {
            AppendUtf8(character, stored);
        }
    }
    return stored;
}

Text FromSettingsText(std::string_view stored) {
    const Text units = FromUtf8(stored);
    Text text;
    text.reserve(units.size());
    std::size_t at = 0;
    while (at < units.size()) {
        const char16_t unit = units[at++];
        if (unit == u'\n' && (at < 2 || units[at - 2] != u'\r')) {
            text += u"\r\n";
        } else if (const auto marked = MarkedUnit(TextView(units).substr(at)); unit == mark && marked) {
            text += *marked;
            at += markDigits;
        } else {
            text += unit;
        }
    }
    return text;
}

}  // namespace lintara::platform
