#include "cli/project/caret.h"

#include "cli/history/history_store.h"
#include "cli/options/option_values.h"
#include "cli/options/shared_options.h"
#include "cli/output/messages.h"
#include "cli/project/open_project.h"
#include "cli/scope/scope.h"

namespace lintara::cli {

OptionInfo CaretOption() {
    return {.name = "at",
            .kind = OptionKind::Text,
            .valueName = "COMPONENT:LINE[:COLUMN]",
            .description = "The caret",
            .required = true};
}

std::expected<workspace::ActivePane, ExitStatus> OpenAtCaret(workspace::Workspace& workspace,
                                                             const OptionReader& given,
                                                             Environment& environment) {
    const CaretPlace place = *given.Parsed("at", ParseCaretPlace);
    const ReadOptions read = ReadReading(given);
    Streams& streams = environment.streams;
    Messages messages(streams, false);
    Progress progress(streams, true);
    if (const auto opened = OpenOrComplain(workspace, read, streams.in, progress, messages); !opened) {
        return std::unexpected(opened.error());
    }
    const auto found = FindCaretComponent(workspace, place);
    if (!found) {
        messages.Error({{}, 0, found.error()});
        return std::unexpected(ExitStatus::Usage);
    }
    if (auto outside = CheckCaretLine(*found, place)) {
        messages.Error({{}, 0, *std::move(outside)});
        return std::unexpected(ExitStatus::Usage);
    }
    const Position caret{place.line, place.column};
    workspace.SetActivePane({.project = found->project,
                             .component = found->component,
                             .selection = {caret, caret},
                             .topLine = place.line});
    RememberPlace(environment, read.path, *found->project, *found->component, place.line);
    return *workspace.activePane();
}

}  // namespace lintara::cli
