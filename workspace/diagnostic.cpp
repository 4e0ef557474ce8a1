#include "workspace/diagnostic.h"

namespace lintara::workspace {

std::string Diagnostic::ToString() const {
    std::string text;
    if (!path.empty()) {
        text = path.string() + ":";
        if (line > 0) {
            text += std::to_string(line) + ":";
        }
        text += " ";
    }
    return text + message;
}

}  // namespace lintara::workspace
