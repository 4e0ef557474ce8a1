#include "transform/error_handler_removal.h"

#include "base/checked.h"
#include "base/constants.h"
#include "base/settings_table.h"
#include "base/statement.h"
#include "transform/error_handler_statements.h"
#include "transform/markers.h"
#include "transform/range_walk.h"
#include "transform/walks.h"

#include <cstdint>

namespace lintara::transform {
namespace {

Text LabelOfHandlers(SettingsStore* settings) {
    const SettingInfo& label = *FindSetting(constants::ErrorHandlerLabelKey);
    return settings == nullptr ? Text(label.absent) : ReadSetting(*settings, label);
}

void RemoveErrorHandlerInRange(hostmodel::Globals& globals, SettingsStore* settings,
                               const Result<CodeModulePtr>& codeModule, TextView componentName, Line start,
                               Line end) {
    const auto marker = FindMarker(codeModule, constants::ErrorHandlerBegin, start, end);
    if (!marker) {
        return;
    }
    // What the insertion did to the statements of the body, the other way round.
    RedirectHandlerStatements(globals, componentName, LabelOfHandlers(settings), constants::NoErrorHandler,
                              start, end);
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
