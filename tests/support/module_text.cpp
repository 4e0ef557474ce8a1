#include "tests/support/module_text.h"

#include "workspace/encoding.h"

namespace lintara::support {

std::unique_ptr<workspace::Module> ModuleOf(std::string_view source) {
    return workspace::Module::FromText(workspace::FromUtf8(Code(source)));
}

std::string TextOf(const workspace::Module& module) {
    Text text = module.AllText();
    for (std::size_t at = text.find(u"\r\n"); at != Text::npos; at = text.find(u"\r\n", at)) {
        text.erase(at, 1);
    }
    return workspace::ToUtf8(text);
}

std::string BytesOf(const workspace::Module& module) {
    std::string bytes;
    module.AppendCurrentBytes(bytes);
    return bytes;
}

}  // namespace lintara::support
