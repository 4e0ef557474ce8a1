// What "lintara insert" puts into procedures: as options, and as an editor that does it. Commands that look
// up or compare what an insertion writes do the same in memory.
#pragma once

#include "cli/edits/edit_run.h"
#include "cli/edits/handler_block.h"
#include "cli/edits/procedure_editor.h"
#include "cli/environment.h"
#include "cli/options.h"
#include "cli/options/command_info.h"
#include "cli/options/option_reader.h"

#include <memory>
#include <string_view>
#include <vector>

namespace lintara::cli {

struct InsertionOptions {
    WorkOptions work;
    NumberOptions numbers;  // read when there are numbers to insert
    WantedHandler handler;  // read when there are handlers to insert
    bool refresh = false;   // handlers that are out of date are replaced
    bool exact = false;
};

// --error-handlers, --line-numbers and all that says how they are inserted.
[[nodiscard]] std::vector<OptionInfo> InsertionOptionInfos(std::string_view group);
// Throws UsageError, also when nothing is to be inserted. Reads the template's file, or standard input.
[[nodiscard]] InsertionOptions ReadInsertion(const OptionReader& given, Environment& environment);

// What such an insertion may do to a component.
[[nodiscard]] EditRules RulesOf(const InsertionOptions& options);

// Whether the insertion into one component has nothing to do with that into another; see EditJob.
[[nodiscard]] bool IsIndependent(const InsertionOptions& options);

// The editor keeps `environment`, which must outlive it.
[[nodiscard]] std::unique_ptr<ComponentEditor> MakeInsertionEditor(
    const InsertionOptions& options, workspace::Workspace& workspace,
    std::shared_ptr<hostmodel::Globals> globals, const Environment& environment);

// The procedures that such an insertion leaves as they are, because their numbers would be taken out to bring
// the handler up to date, and no new ones could be written.
[[nodiscard]] KeptProcedures NumbersAtRisk(const InsertionOptions& options, const ScopedComponent& scope,
                                           const Environment& environment);

}  // namespace lintara::cli
