#include "workspace/unicode_encoding.h"

#include "workspace/ascii_run.h"
#include "workspace/undefined_byte.h"

#include <bit>
#include <cstring>

namespace lintara::workspace {

namespace {

constexpr char16_t replacement = 0xFFFD;
constexpr bool machineIsBigEndian = std::endian::native == std::endian::big;

constexpr bool IsHighSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool IsLowSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}
constexpr bool IsSurrogate(char16_t unit) {
    return (unit & 0xF800) == 0xD800;
}

constexpr unsigned Byte(char c) {
    return static_cast<unsigned char>(c);
}

// Writes the character of a valid sequence of two to four bytes; the result is its code units.
std::size_t DecodeSequence(const char* bytes, std::size_t length, char16_t* out) {
    static constexpr unsigned leadMask[] = {0, 0, 0x1F, 0x0F, 0x07};
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

// UTF-16 never needs more units than UTF-8 has bytes.
template <class OnInvalid>
void DecodeUtf8(std::string_view bytes, Text& text, OnInvalid onInvalid) {
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
                out[units++] = onInvalid(bytes[at++]);
            } else {
                units += DecodeSequence(bytes.data() + at, length, out + units);
                at += length;
            }
        }
        return units;
    });
}

void AppendCharacter(unsigned character, std::string& bytes) {
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

// The character at `at`, whose code units are skipped; an unpaired surrogate is a character of its own.
unsigned TakeCharacter(TextView text, std::size_t& at) {
    const char16_t unit = text[at++];
    if (IsHighSurrogate(unit) && at < text.size() && IsLowSurrogate(text[at])) {
        return 0x10000U + ((unit & 0x3FFU) << 10) + (text[at++] & 0x3FFU);
    }
    return unit;
}

bool IsUnpaired(unsigned character) {
    return character < 0x10000 && IsSurrogate(static_cast<char16_t>(character));
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

void Utf8Encoding::Decode(std::string_view bytes, Text& text) const {
    DecodeUtf8(bytes, text, [](char byte) { return EscapeOfByte(Byte(byte)); });
}

bool Utf8Encoding::Encode(TextView text, std::string& bytes) const {
    const std::size_t before = bytes.size();
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = bytes.size();
        bytes.resize_and_overwrite(end + text.size() - at, [&](char* all, std::size_t) {
            const std::size_t run = NarrowAscii(text.data() + at, text.size() - at, all + end);
            at += run;
            return end + run;
        });
        while (at < text.size() && text[at] >= 0x80) {
            const unsigned character = TakeCharacter(text, at);
            if (!IsUnpaired(character)) {
                AppendCharacter(character, bytes);
            } else if (const auto byte = ByteOfEscape(static_cast<char16_t>(character))) {
                bytes += *byte;
            } else {
                bytes.resize(before);
                return false;
            }
        }
    }
    return true;
}

std::optional<std::size_t> Utf8Encoding::FirstUnencodable(TextView text) const {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t start = at;
        const unsigned character = TakeCharacter(text, at);
        if (IsUnpaired(character) && !ByteOfEscape(static_cast<char16_t>(character))) {
            return start;
        }
    }
    return std::nullopt;
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

Text FromUtf8(std::string_view bytes) {
    Text text;
    DecodeUtf8(bytes, text, [](char) { return replacement; });
    return text;
}

std::string ToUtf8(TextView text) {
    std::string bytes;
    bytes.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const unsigned character = TakeCharacter(text, at);
        AppendCharacter(IsUnpaired(character) ? replacement : character, bytes);
    }
    return bytes;
}

}  // namespace lintara::workspace
