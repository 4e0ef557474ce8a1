// JSON on its way out: texts as UTF-8, bytes that are none replaced.
#pragma once

#include "base/text.h"
#include "workspace/diagnostic.h"

#include <filesystem>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace lintara::cli {

// Objects keep the order in which their members are added.
using Json = nlohmann::ordered_json;

[[nodiscard]] std::string JsonText(TextView text);
[[nodiscard]] std::string JsonPath(const std::filesystem::path& path);

// {"file": ..., "line": ..., "code": ..., "message": ...}; without a code when it is empty.
[[nodiscard]] Json DiagnosticObject(const workspace::Diagnostic& diagnostic, std::string_view code = {});

// The value, indented, with a line break at its end. Whatever could steer a terminal is written as an escape.
[[nodiscard]] std::string Dump(const Json& value);

}  // namespace lintara::cli
