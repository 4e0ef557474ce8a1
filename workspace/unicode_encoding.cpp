#include "workspace/unicode_encoding.h"

#include "base/utf8.h"
#include "workspace/ascii_run.h"
#include "workspace/undefined_byte.h"

#include <bit>
#include <cstring>

namespace lintara::workspace {

namespace {

constexpr bool machineIsBigEndian = std::endian::native == std::endian::big;

constexpr unsigned Byte(char c) {
    return static_cast<unsigned char>(c);
}

}  // namespace

void Utf8Encoding::Decode(std::string_view bytes, Text& text) const {
    // UTF-16 never needs more units than UTF-8 has bytes.
    const std::size_t size = bytes.size();
    text.resize_and_overwrite(size, [&](char16_t* out, std::size_t) {
        std::size_t units = 0;
        std::size_t at = 0;
        while (at < size) {
            const std::size_t run = WidenAscii(bytes.data() + at, size - at, out + units);
            at += run;
            units += run;
            if (at == size) {
                break;
            }
            const std::size_t length = Utf8SequenceLength(bytes.substr(at));
            if (length == 0) {
                out[units++] = EscapeOfByte(Byte(bytes[at++]));
            } else {
                units += DecodeUtf8Sequence(bytes.data() + at, length, out + units);
                at += length;
            }
        }
        return units;
    });
}

bool Utf8Encoding::Encode(TextView text, std::string& bytes) const {
    const std::size_t before = bytes.size();
    bool hasEscapes = false;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = bytes.size();
        bytes.resize_and_overwrite(end + text.size() - at, [&](char* all, std::size_t) {
            const std::size_t run = NarrowAscii(text.data() + at, text.size() - at, all + end);
            at += run;
            return end + run;
        });
        while (at < text.size() && text[at] >= 0x80) {
            const char32_t character = TakeCharacter(text, at);
            if (!IsSurrogate(character)) {
                AppendUtf8(character, bytes);
            } else if (const auto byte = ByteOfEscape(static_cast<char16_t>(character))) {
                bytes += *byte;
                hasEscapes = true;
            } else {
                bytes.resize(before);
                return false;
            }
        }
    }
    if (hasEscapes && FirstMisread(text, Decoded(std::string_view(bytes).substr(before)))) {
        bytes.resize(before);
        return false;
    }
    return true;
}

std::optional<std::size_t> Utf8Encoding::FirstUnencodable(TextView text) const {
    std::string bytes;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t start = at;
        const char32_t character = TakeCharacter(text, at);
        const auto byte =
            IsSurrogate(character) ? ByteOfEscape(static_cast<char16_t>(character)) : std::optional<char>();
        if (byte) {
            bytes += *byte;
        } else if (IsSurrogate(character)) {
            return start;
        } else {
            AppendUtf8(character, bytes);
        }
    }
    return FirstMisread(text, Decoded(bytes));
}

Text Utf8Encoding::Decoded(std::string_view bytes) const {
    Text text;
    Decode(bytes, text);
    return text;
}

void Utf16Encoding::Decode(std::string_view bytes, Text& text) const {
    const std::size_t size = bytes.size() / 2;
    text.resize_and_overwrite(size, [&](char16_t* out, std::size_t) {
        std::memcpy(out, bytes.data(), size * 2);
        if (isBigEndian_ != machineIsBigEndian) {
            for (std::size_t i = 0; i < size; ++i) {
                out[i] = static_cast<char16_t>((out[i] << 8) | (out[i] >> 8));
            }
        }
        return size;
    });
}

bool Utf16Encoding::Encode(TextView text, std::string& bytes) const {
    const std::size_t before = bytes.size();
    const std::size_t after = before + text.size() * 2;
    bytes.resize_and_overwrite(after, [&](char* all, std::size_t) {
        const std::size_t high = isBigEndian_ ? 0 : 1;
        for (std::size_t i = 0; i < text.size(); ++i) {
            char* const unit = all + before + i * 2;
            unit[high] = static_cast<char>(text[i] >> 8);
            unit[1 - high] = static_cast<char>(text[i] & 0xFF);
        }
        return after;
    });
    return true;
}

std::optional<std::size_t> Utf16Encoding::FirstUnencodable(TextView /*text*/) const {
    return std::nullopt;
}

}  // namespace lintara::workspace
