#include "base/utf8.h"

#include <array>

namespace lintara {

namespace {

constexpr char16_t replacement = 0xFFFD;

constexpr unsigned Byte(char c) {
    return static_cast<unsigned char>(c);
}

constexpr bool IsHighSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool IsLowSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

}  // namespace

std::size_t Utf8SequenceLength(std::string_view bytes) {
    const unsigned lead = bytes.empty() ? 0x80 : Byte(bytes[0]);
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (bytes.size() < length) {
        return 0;
    }
    // The second byte keeps out forms that are longer than need be, surrogates and what lies past U+10FFFF.
    const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (Byte(bytes[1]) < low || Byte(bytes[1]) > high) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if ((Byte(bytes[i]) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

std::size_t DecodeUtf8Sequence(const char* bytes, std::size_t length, char16_t* out) {
    static constexpr unsigned leadMask[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    unsigned character = Byte(bytes[0]) & leadMask[length];
    for (std::size_t i = 1; i < length; ++i) {
        character = (character << 6) | (Byte(bytes[i]) & 0x3F);
    }
    if (character < 0x10000) {
        out[0] = static_cast<char16_t>(character);
        return 1;
    }
    out[0] = static_cast<char16_t>(0xD7C0 + (character >> 10));
    out[1] = static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    return 2;
}

void AppendUtf8(char32_t character, std::string& bytes) {
    const auto continuation = [&](unsigned shift) {
        return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    };
    if (character < 0x80) {
        bytes += static_cast<char>(character);
    } else if (character < 0x800) {
        bytes += {static_cast<char>(0xC0 | (character >> 6)), continuation(0)};
    } else if (character < 0x10000) {
        bytes += {static_cast<char>(0xE0 | (character >> 12)), continuation(6), continuation(0)};
    } else {
        bytes +=
            {static_cast<char>(0xF0 | (character >> 18)), continuation(12), continuation(6), continuation(0)};
    }
}

char32_t TakeCharacter(TextView text, std::size_t& at) {
    const char16_t unit = text[at++];
    if (IsHighSurrogate(unit) && at < text.size() && IsLowSurrogate(text[at])) {
        return 0x10000U + ((unit & 0x3FFU) << 10) + (text[at++] & 0x3FFU);
    }
    return unit;
}

Text FromUtf8(std::string_view bytes) {
    Text text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = Utf8SequenceLength(bytes);
        if (length == 0) {
            text += replacement;
            bytes.remove_prefix(1);
            continue;
        }
        std::array<char16_t, 2> units{};
        text.append(units.data(), DecodeUtf8Sequence(bytes.data(), length, units.data()));
        bytes.remove_prefix(length);
    }
    return text;
}

std::string ToUtf8(TextView text) {
    std::string bytes;
    bytes.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const char32_t character = TakeCharacter(text, at);
        AppendUtf8(IsSurrogate(character) ? replacement : character, bytes);
    }
    return bytes;
}

}  // namespace lintara
