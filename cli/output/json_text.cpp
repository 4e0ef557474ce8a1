#include "cli/output/json_text.h"

#include "cli/output/terminal_text.h"
#include "workspace/encoding.h"

namespace lintara::cli {

std::string JsonText(TextView text) {
    return workspace::ToUtf8(text);
}

std::string JsonPath(const std::filesystem::path& path) {
    return path.string();
}

Json DiagnosticObject(const workspace::Diagnostic& diagnostic, std::string_view code) {
    Json object = {{"file", JsonPath(diagnostic.path)}, {"line", diagnostic.line}};
    if (!code.empty()) {
        object["code"] = code;
    }
    object["message"] = diagnostic.message;
    return object;
}

std::string Dump(const Json& value) {
    return PrintableJson(value.dump(2, ' ', false, Json::error_handler_t::replace) + '\n');
}

}  // namespace lintara::cli
