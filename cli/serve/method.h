// The endpoint's methods as data: one entry each, which the checking of arguments, the dispatch and the test
// of the documentation read.
#pragma once

#include "assistant/dispatch_table.h"
#include "cli/output/json_text.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

class Arguments;
class Session;

enum class ArgumentType : unsigned char {
    Text,
    Integer,  // 16 bits
    Long,     // 32 bits
    Boolean,
    Controls,  // [{"name", "className"}]
};

struct MethodParameter {
    std::string name;
    ArgumentType type = ArgumentType::Text;
    // What is only written may be left out.
    assistant::Direction direction = assistant::Direction::In;
    bool optional = false;

    [[nodiscard]] bool mayBeLeftOut() const { return optional || direction == assistant::Direction::Out; }
    [[nodiscard]] bool isWritten() const { return direction != assistant::Direction::In; }
};

struct MethodInfo {
    std::string name;
    std::vector<MethodParameter> parameters;
    // Does the work; the value is the request's result. Throws RequestError, with nothing changed.
    Json (*run)(Session& session, const Arguments& arguments) = nullptr;
};

// All of them, in the order of the documentation.
[[nodiscard]] const std::vector<MethodInfo>& Methods();
// Null when there is none. Letter case counts.
[[nodiscard]] const MethodInfo* FindMethod(std::string_view name);

// {"value": ...}
[[nodiscard]] Json ValueResult(Json value);

// One family each.
[[nodiscard]] std::vector<MethodInfo> WorkspaceMethods();
[[nodiscard]] std::vector<MethodInfo> IdeMethods();
[[nodiscard]] std::vector<MethodInfo> SettingsMethods();
[[nodiscard]] std::vector<MethodInfo> CodeModuleMethods();
[[nodiscard]] std::vector<MethodInfo> InspectMethods();
[[nodiscard]] std::vector<MethodInfo> LintaraMethods();

}  // namespace lintara::cli
