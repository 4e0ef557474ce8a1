// What stands in text for a byte that its encoding leaves undefined, so that no byte is lost.
#pragma once

#include "base/text.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace lintara::workspace {

// The C1 control of the same value; 0 when there is none.
constexpr char16_t ControlOfByte(std::size_t byte) {
    return byte >= 0x80 && byte <= 0x9F ? static_cast<char16_t>(byte) : u'\0';
}

// A lone low surrogate: no decoded text holds one for another reason.
constexpr char16_t EscapeOfByte(std::size_t byte) {
    return static_cast<char16_t>(0xDC00 + byte);
}

constexpr std::optional<char> ByteOfEscape(char16_t unit) {
    if (unit < 0xDC80 || unit > 0xDCFF) {
        return std::nullopt;
    }
    return static_cast<char>(unit - 0xDC00);
}

// An edit may bring undefined bytes together with others, so that they are a character then and no longer
// what `text` says. Where its bytes first read otherwise, `again` being how they read; none when they do not.
constexpr std::optional<std::size_t> FirstMisread(TextView text, TextView again) {
    if (text == again) {
        return std::nullopt;
    }
    const auto differs = std::ranges::mismatch(text, again).in1 - text.begin();
    return std::min(static_cast<std::size_t>(differs), text.size() - 1);
}

}  // namespace lintara::workspace
