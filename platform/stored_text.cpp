#include "platform/stored_text.h"

#include "base/utf8.h"

namespace lintara::platform {

namespace {

bool IsPlain(TextView text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const char32_t character = TakeCharacter(text, at);
        if (character == 0 || IsSurrogate(character)) {
            return false;
        }
    }
    return true;
}

std::string ToBlob(TextView text) {
    std::string bytes;
    bytes.reserve(2 * text.size());
    for (const char16_t unit : text) {
        bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    }
    return bytes;
}

}  // namespace

StoredText ToStoredText(TextView text) {
    if (IsPlain(text)) {
        return {ToUtf8(text), false};
    }
    return {ToBlob(text), true};
}

std::optional<Text> FromBlob(std::string_view bytes) {
    if (bytes.size() % 2 != 0) {
        return std::nullopt;
    }
    Text text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        const unsigned low = static_cast<unsigned char>(bytes[i]);
        const unsigned high = static_cast<unsigned char>(bytes[i + 1]);
        text += static_cast<char16_t>(high << 8 | low);
    }
    return text;
}

}  // namespace lintara::platform
