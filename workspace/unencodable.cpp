#include "workspace/unencodable.h"

#include "workspace/encoding.h"

#include <cstdint>
#include <cstdio>
#include <string>

namespace lintara::workspace {

namespace {

struct Origin {
    std::int64_t fileLine = 0;
    std::string line;  // "the line", or where it would be inserted
};

// The line of the file that people have: an unsaved line has none of its own.
Origin OriginIn(const Module& module, Line line) {
    const Line last(module.CountOfLines());
    for (Line below = line; below <= last; ++below) {
        if (const Line origin = module.OriginOf(below); origin > Line(0)) {
            const std::int64_t fileLine = module.OriginalFileLine(origin);
            return {fileLine, below == line ? "the line"
                                            : "a line that would be inserted ahead of line " +
                                                  std::to_string(fileLine)};
        }
    }
    for (Line above = line; above > Line(1); --above) {
        if (const Line origin = module.OriginOf(above - 1); origin > Line(0)) {
            const std::int64_t fileLine = module.OriginalFileLine(origin);
            return {fileLine, "a line that would be inserted after line " + std::to_string(fileLine)};
        }
    }
    return {0, "a line that would be inserted"};
}

}  // namespace

std::optional<Diagnostic> UnencodableIn(const Component& component) {
    const auto found = component.module->FirstUnencodable();
    if (!found) {
        return std::nullopt;
    }
    const auto code = static_cast<unsigned>(found->character);
    Text text;
    if (code < 0x10000) {
        text = static_cast<char16_t>(code);
    } else {
        text = {static_cast<char16_t>(0xD7C0 + (code >> 10)), static_cast<char16_t>(0xDC00 + (code & 0x3FF))};
    }
    char number[16];
    std::snprintf(number, sizeof number, "U+%04X", code);
    const Origin origin = OriginIn(*component.module, found->line);
    return Diagnostic{component.path, origin.fileLine,
                      std::string("the character ") + number + " (" + ToUtf8(text) + ") in column " +
                          std::to_string(found->column.value()) + " of " + origin.line +
                          " cannot be written in the file's code page " +
                          std::string(component.module->encoding().name()) + "; nothing was saved"};
}

}  // namespace lintara::workspace
