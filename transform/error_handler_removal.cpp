#include "transform/error_handler_removal.h"

#include "base/checked.h"
#include "base/constants.h"
#include "base/statement.h"
#include "transform/markers.h"
#include "transform/range_walk.h"
#include "transform/search_and_replace.h"
#include "transform/walks.h"

#include <cstdint>

namespace lintara::transform {
namespace {

Text LabelOfHandlers(SettingsStore* settings) {
    if (settings == nullptr) {
        return Text(constants::DefaultErrorHandlerLabel);
    }
    return settings->Get({.application = constants::SettingsApplication,
                          .section = constants::CodeAutomationSection,
                          .key = constants::ErrorHandlerLabelKey},
                         constants::DefaultErrorHandlerLabel);
}

// What the insertion did to the statements of the body, the other way round.
void SwitchOff(hostmodel::Globals& globals, TextView componentName, TextView label, Line start, Line end) {
    const Text on = Text(constants::OnErrorGoto).append(label);
    const Text off = Text(constants::OnErrorGoto).append(constants::NoErrorHandler);
    if (const auto last = CheckedSubtract(end.value(), 1)) {
        static_cast<void>(SearchAndReplace(globals, componentName, on, off, start, Line{*last}, {}));
    }
}

void RemoveErrorHandlerInRange(hostmodel::Globals& globals, SettingsStore* settings,
                               const Result<CodeModulePtr>& codeModule, TextView componentName, Line start,
                               Line end) {
    const auto marker = FindMarker(codeModule, constants::ErrorHandlerBegin, start, end);
    if (!marker) {
        return;
    }
    SwitchOff(globals, componentName, LabelOfHandlers(settings), start, end);
    Attempt(Then(CheckedSubtract(end.value(), marker->value()),
                 [&](std::int32_t count) { return (*codeModule)->DeleteLines(*marker, count); }));
}

}  // namespace

void ErrorHandlerRemover(hostmodel::Globals& globals, SettingsStore* settings, TextView projectName,
                         TextView componentName, TextView procedureName) {
    const ProcedurePath path{projectName, componentName, procedureName};
    const ProcedureRanges ranges = RangesOf(globals, path);
    const Result<CodeModulePtr> codeModule = CodeModuleByNames(globals, projectName, componentName);
    if (!ranges.Found) {
        return;
    }
    TreatEachRange(globals, path, ranges, [&](Line start, Line end) {
        RemoveErrorHandlerInRange(globals, settings, codeModule, componentName, start, end);
    });
}

}  // namespace lintara::transform
