#include "platform/toml_string.h"

#include <cstddef>

namespace lintara::platform {

namespace {

constexpr std::string_view markBytes = "\xEF\xB7\x90";  // U+FDD0, which no editor shows

void AppendEscape(unsigned character, std::string& out) {
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) {
        out += "0123456789ABCDEF"[(character >> shift) & 0xF];
    }
}

void AppendCharacter(char c, std::string& out) {
    switch (c) {
        case '"':
        case '\\':
            out += {'\\', c};
            break;
        case '\t':
            out += "\\t";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\n':
            out += "\\n";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
                AppendEscape(static_cast<unsigned char>(c), out);
            } else {
                out += c;
            }
    }
}

// Whether `c` can stand in triple quotes as it is, `next` being what follows, or '\n' at the end.
bool IsPlainAmongLines(char c, char next) {
    switch (c) {
        case '\n':
            return true;
        case ' ':
        case '\t':
            return next != '\n';
        case '"':
            return next != '"' && next != '\n';
        default:
            return false;
    }
}

std::string Escaped(std::string_view utf8, bool amongLines) {
    std::string out;
    out.reserve(utf8.size() + 8);
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        const char c = utf8[at];
        const char next = at + 1 < utf8.size() ? utf8[at + 1] : '\n';
        if (utf8.substr(at).starts_with(markBytes)) {
            AppendEscape(0xFDD0, out);
            at += markBytes.size() - 1;
        } else if (amongLines && IsPlainAmongLines(c, next)) {
            out += c;
        } else if (amongLines && c == ' ') {
            AppendEscape(' ', out);
        } else {
            AppendCharacter(c, out);
        }
    }
    return out;
}

}  // namespace

std::string QuotedKey(std::string_view utf8) {
    return '"' + Escaped(utf8, false) + '"';
}

std::string QuotedValue(std::string_view utf8) {
    if (!utf8.contains('\n')) {
        return QuotedKey(utf8);
    }
    return "\"\"\"\n" + Escaped(utf8, true) + "\"\"\"";
}

}  // namespace lintara::platform
