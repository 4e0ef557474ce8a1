// Error handlers put into and taken out of one module in memory, as the commands do it.
#pragma once

#include "cli/edits/handler_block.h"
#include "cli/options.h"
#include "tests/cli/edited_module.h"

#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

struct HandlerCommand {
    WantedHandler handler{u"hErr", u"    Debug.Print \"{MemberName}\""};
    bool refresh = false;
    std::optional<NumberOptions> numbers = std::nullopt;
    bool exact = false;
};

ComponentReport InsertHandlers(EditedModule& module, const HandlerCommand& command = {});
ComponentReport RemoveHandlers(EditedModule& module, const HandlerCommand& command = {});

// "code line" of each remark, in order.
[[nodiscard]] std::vector<std::string> RemarksIn(const ComponentReport& report);

// The block that HandlerCommand gives a procedure: "Sub", "A".
[[nodiscard]] std::string UsualBlock(const std::string& kind, const std::string& name);

}  // namespace lintara::cli
