#include "cli/output/summary.h"

#include "cli/output/terminal_text.h"

#include <algorithm>

namespace lintara::cli {
namespace {

std::string Counted(std::size_t count, std::string_view thing) {
    return std::to_string(count) + " " + std::string(thing) + (count == 1 ? "" : "s");
}

// What a search and replace did.
std::string SearchOutcome(const Report& report, std::string_view deed) {
    if (report.componentsChanged() > 0) {
        return std::string(deed) + " " + Counted(report.linesChanged(), "line") + " in " +
               Counted(report.componentsChanged(), "file");
    }
    const bool found = std::ranges::any_of(report.components, [](const auto& c) { return *c.found; });
    return found ? "Found, but there is nothing to change" : "Nothing found";
}

bool IsSearch(const Report& report) {
    return !report.components.empty() &&
           std::ranges::all_of(report.components, [](const auto& c) { return c.found.has_value(); });
}

}  // namespace

std::string Summary(const Report& report, std::string_view deed, const EditOptions& edit) {
    std::string text;
    if (edit.check) {
        for (const ComponentReport& component : report.components) {
            if (component.changed) {
                text += PrintablePath(component.component->path) + ": " +
                        Counted(component.linesChanged, "line") + " would change\n";
            }
        }
    }
    if (IsSearch(report)) {
        text += SearchOutcome(report, deed);
    } else if (report.componentsChanged() == 0) {
        text += "Nothing to change";
    } else {
        text += std::string(deed) + " " + Counted(report.proceduresEdited(), "procedure") + " in " +
                Counted(report.componentsChanged(), "file") + ", " + Counted(report.linesChanged(), "line");
    }
    if (report.proceduresSkipped() > 0) {
        text += "; skipped " + Counted(report.proceduresSkipped(), "procedure");
    }
    if (edit.output) {
        text += "; wrote " + Counted(report.files.size(), "file") + " to " + PrintablePath(*edit.output);
    }
    return text + ".\n";
}

}  // namespace lintara::cli
