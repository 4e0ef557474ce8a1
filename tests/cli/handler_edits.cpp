#include "tests/cli/handler_edits.h"

#include "cli/edits/handler_insertion.h"
#include "cli/edits/number_insertion.h"
#include "cli/edits/number_removal.h"

namespace lintara::cli {
namespace {

Platform PlatformWith(std::shared_ptr<SettingsStore> settings) {
    Platform platform;
    platform.settings = std::move(settings);
    return platform;
}

}  // namespace

ComponentReport InsertHandlers(EditedModule& module, const HandlerCommand& command) {
    const auto settings = std::make_shared<LabelSettings>(nullptr, command.handler.label);
    EditPlan plan{.exact = command.exact};
    plan.edits.push_back(std::make_unique<HandlerInsertion>(
        command.handler, HandlerRefresh{.wanted = command.refresh, .numbersToo = command.numbers.has_value()},
        settings));
    if (command.numbers) {
        plan.edits.push_back(std::make_unique<NumberInsertion>(*command.numbers));
    }
    return module.Edit(std::move(plan), PlatformWith(settings));
}

ComponentReport RemoveHandlers(EditedModule& module, const HandlerCommand& command) {
    const auto settings = std::make_shared<LabelSettings>(nullptr, command.handler.label);
    EditPlan plan{.backwards = true, .exact = command.exact};
    if (command.numbers) {
        plan.edits.push_back(std::make_unique<NumberRemoval>());
    }
    plan.edits.push_back(std::make_unique<HandlerRemoval>(command.handler, settings));
    return module.Edit(std::move(plan), PlatformWith(settings));
}

std::vector<std::string> RemarksIn(const ComponentReport& report) {
    std::vector<std::string> remarks;
    for (const Remark& remark : report.remarks) {
        remarks.push_back(std::string(remark.code) + " " + std::to_string(remark.at.value()));
    }
    return remarks;
}

std::string UsualBlock(const std::string& kind, const std::string& name) {
    return "' TWErrorHandler begin - please do not modify or remove this line\n"
           "Exit " +
           kind + "\nhErr:\n    Debug.Print \"" + name + "\"\n";
}

}  // namespace lintara::cli
