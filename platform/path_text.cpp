#ifndef _WIN32

#include "platform/path_text.h"

#include "base/utf8.h"

#include <array>
#include <string>
#include <string_view>

namespace lintara::platform {

namespace fs = std::filesystem;

namespace {

constexpr char16_t byteMark = 0xDC00;

bool IsMarkedByte(char32_t character) {
    return character >= byteMark + 0x80U && character <= byteMark + 0xFFU;
}

}  // namespace

Text PathToText(const fs::path& path) {
    std::string_view bytes = path.native();
    Text text;
    while (!bytes.empty()) {
        const std::size_t length = Utf8SequenceLength(bytes);
        if (length == 0) {
            text += static_cast<char16_t>(byteMark + static_cast<unsigned char>(bytes[0]));
            bytes.remove_prefix(1);
            continue;
        }
        std::array<char16_t, 2> units{};
        text.append(units.data(), DecodeUtf8Sequence(bytes.data(), length, units.data()));
        bytes.remove_prefix(length);
    }
    return text;
}

std::optional<fs::path> PathFromText(TextView text) {
    std::string bytes;
    std::size_t at = 0;
    while (at < text.size()) {
        const char32_t character = TakeCharacter(text, at);
        if (IsMarkedByte(character)) {
            bytes += static_cast<char>(character - byteMark);
        } else if (character == 0 || IsSurrogate(character)) {
            return std::nullopt;
        } else {
            AppendUtf8(character, bytes);
        }
    }
    return bytes;
}

Text FolderToText(const fs::path& folder) {
    std::string bytes = fs::absolute(folder).lexically_normal().native();
    while (bytes.size() > 1 && bytes.ends_with('/')) {
        bytes.pop_back();
    }
    return PathToText(bytes);
}

std::optional<fs::path> FilePathFromText(TextView text) {
    Text path(text);
    if (const std::size_t separator = path.rfind(u'\\'); separator != Text::npos) {
        path[separator] = u'/';
    }
    return PathFromText(path);
}

}  // namespace lintara::platform

#endif
