#include "workspace/single_byte_encoding.h"

#include "workspace/ascii_run.h"
#include "workspace/undefined_byte.h"

#include <utility>

namespace lintara::workspace {

SingleByteEncoding::SingleByteEncoding(std::string name, const CodePageTable& table)
    : name_(std::move(name)), table_(table), pages_(1) {
    for (std::size_t byte = 0x80; byte < table_.size(); ++byte) {
        // Of bytes that stand for the same character only the first can be written back.
        if (table_[byte] < 0x80 || ByteOf(table_[byte]) != 0) {
            table_[byte] = 0;
        } else {
            SetByte(table_[byte], byte);
        }
    }
    for (std::size_t byte = 0x80; byte < table_.size(); ++byte) {
        if (table_[byte] == 0) {
            const char16_t control = ControlOfByte(byte);
            table_[byte] = control != 0 && ByteOf(control) == 0 ? control : EscapeOfByte(byte);
            SetByte(table_[byte], byte);
        }
    }
}

void SingleByteEncoding::SetByte(char16_t character, std::size_t byte) {
    std::uint8_t& page = pageOf_[character >> 8];
    if (page == 0) {
        page = static_cast<std::uint8_t>(pages_.size());
        pages_.emplace_back();
    }
    pages_[page][character & 0xFF] = static_cast<std::uint8_t>(byte);
}

void SingleByteEncoding::Decode(std::string_view bytes, Text& text) const {
    const std::size_t size = bytes.size();
    text.resize_and_overwrite(size, [&](char16_t* out, std::size_t) {
        std::size_t at = 0;
        while (at < size) {
            at += WidenAscii(bytes.data() + at, size - at, out + at);
            for (; at < size && static_cast<unsigned char>(bytes[at]) >= 0x80; ++at) {
                out[at] = table_[static_cast<unsigned char>(bytes[at])];
            }
        }
        return size;
    });
}

bool SingleByteEncoding::Encode(TextView text, std::string& bytes) const {
    const std::size_t before = bytes.size();
    bytes.resize_and_overwrite(before + text.size(), [&](char* all, std::size_t) {
        char* const out = all + before;
        std::size_t at = 0;
        while (at < text.size()) {
            at += NarrowAscii(text.data() + at, text.size() - at, out + at);
            for (; at < text.size() && text[at] >= 0x80; ++at) {
                const std::uint8_t byte = ByteOf(text[at]);
                if (byte == 0) {
                    return before;
                }
                out[at] = static_cast<char>(byte);
            }
        }
        return before + text.size();
    });
    return bytes.size() == before + text.size();
}

std::optional<std::size_t> SingleByteEncoding::FirstUnencodable(TextView text) const {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] >= 0x80 && ByteOf(text[at]) == 0) {
            return at;
        }
    }
    return std::nullopt;
}

}  // namespace lintara::workspace
