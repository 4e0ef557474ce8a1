#include "workspace/unencodable.h"

#include "workspace/encoding.h"

#include <cstdio>
#include <string>

namespace lintara::workspace {

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
    return Diagnostic{component.path, component.module->FileLine(found->line),
                      std::string("the character ") + number + " (" + ToUtf8(text) + ") in column " +
                          std::to_string(found->column.value()) +
                          " cannot be written in the file's code page " +
                          std::string(component.module->encoding().name()) + "; nothing was saved"};
}

}  // namespace lintara::workspace
