#include "cli/output/terminal_text.h"

#include "workspace/encoding.h"

#include <algorithm>
#include <cstdint>

namespace lintara::cli {
namespace {

bool IsPlain(char c) {
    return (c >= ' ' && c < 0x7f) || c == '\t';
}

bool Continues(char c) {
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

// The length of the UTF-8 character that `bytes` begin with; 0 when they begin with none. Forms that are
// longer than need be count as none: they could hide a control character.
std::size_t CharacterLength(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes[0]);
    const std::size_t length = first < 0x80 ? 1 : first < 0xc2 ? 0 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    if (first > 0xf4 || length == 0 || bytes.size() < length ||
        !std::ranges::all_of(bytes.substr(1, length - 1), Continues)) {
        return 0;
    }
    const auto second = length > 2 ? static_cast<unsigned char>(bytes[1]) : 0x90;
    const bool tooLong = (first == 0xe0 && second < 0xa0) || (first == 0xf0 && second < 0x90);
    return tooLong ? 0 : length;
}

std::uint32_t CodePointOf(std::string_view character) {
    static constexpr unsigned char firstMask[] = {0, 0x7f, 0x1f, 0x0f, 0x07};
    std::uint32_t point = static_cast<unsigned char>(character[0]) & firstMask[character.size()];
    for (const char byte : character.substr(1)) {
        point = (point << 6) | (static_cast<unsigned char>(byte) & 0x3f);
    }
    return point;
}

bool Steers(std::uint32_t point) {
    return point < 0x20 || (point >= 0x7f && point <= 0x9f) || point == 0x061c || point == 0x200e ||
           point == 0x200f || (point >= 0x2028 && point <= 0x202e) || (point >= 0x2066 && point <= 0x2069);
}

void AppendHex(std::uint32_t value, int digits, std::string& out) {
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        out += "0123456789abcdef"[(value >> shift) & 0xf];
    }
}

void AppendEscape(std::uint32_t point, std::string& out) {
    out += point <= 0xff ? "\\x" : "\\u";
    AppendHex(point, point <= 0xff ? 2 : 4, out);
}

}  // namespace

void AppendPrintable(std::string_view utf8, std::string& out) {
    while (!utf8.empty()) {
        const auto plainEnd = std::ranges::find_if_not(utf8, IsPlain);
        const auto plain = static_cast<std::size_t>(plainEnd - utf8.begin());
        out += utf8.substr(0, plain);
        utf8.remove_prefix(plain);
        if (utf8.empty()) {
            return;
        }
        const std::size_t length = CharacterLength(utf8);
        if (length == 0) {
            AppendEscape(static_cast<unsigned char>(utf8[0]), out);
        } else if (const std::uint32_t point = CodePointOf(utf8.substr(0, length)); Steers(point)) {
            AppendEscape(point, out);
        } else {
            out += utf8.substr(0, length);
        }
        utf8.remove_prefix(std::max<std::size_t>(length, 1));
    }
}

std::string Printable(std::string_view utf8) {
    std::string out;
    AppendPrintable(utf8, out);
    return out;
}

std::string Printable(TextView text) {
    return Printable(std::string_view(workspace::ToUtf8(text)));
}

std::string PrintablePath(const std::filesystem::path& path) {
    return Printable(std::string_view(path.native()));
}

std::string ForReader(std::string_view utf8, bool isTerminal) {
    if (!isTerminal) {
        return std::string(utf8);
    }
    std::string out;
    while (!utf8.empty()) {
        const std::size_t end = std::min(utf8.find('\n'), utf8.size());
        std::string_view line = utf8.substr(0, end);
        utf8.remove_prefix(std::min(end + 1, utf8.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        AppendPrintable(line, out);
        out += '\n';
    }
    return out;
}

std::string PrintableJson(std::string json) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x7f; };
    if (std::ranges::all_of(json, isAscii)) {
        return json;
    }
    std::string out;
    for (std::string_view rest = json; !rest.empty();) {
        const auto plain = static_cast<std::size_t>(std::ranges::find_if_not(rest, isAscii) - rest.begin());
        out += rest.substr(0, plain);
        rest.remove_prefix(plain);
        const std::size_t length = rest.empty() ? 0 : std::max<std::size_t>(CharacterLength(rest), 1);
        const std::string_view character = rest.substr(0, length);
        if (const std::uint32_t point = length == 0 ? ' ' : CodePointOf(character); Steers(point)) {
            out += "\\u";
            AppendHex(point, 4, out);
        } else {
            out += character;
        }
        rest.remove_prefix(length);
    }
    return out;
}

std::size_t ColumnsOf(std::string_view utf8) {
    return static_cast<std::size_t>(std::ranges::count_if(
        utf8, [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0) != 0x80; }));
}

}  // namespace lintara::cli
