#include "cli/summary.h"

#include "cli/terminal_text.h"

namespace lintara::cli {
namespace {

std::string Counted(std::size_t count, std::string_view thing) {
    return std::to_string(count) + " " + std::string(thing) + (count == 1 ? "" : "s");
}

std::string_view Deed(const Options& options) {
    if (options.verb == Verb::Insert) {
        return options.edit.check ? "Would number" : "Numbered";
    }
    return options.edit.check ? "Would remove the numbers of" : "Removed the numbers of";
}

}  // namespace

std::string Summary(const Report& report, const Options& options) {
    std::string text;
    if (options.edit.check) {
        for (const ComponentReport& component : report.components) {
            if (component.changed) {
                text += PrintablePath(component.component->path) + ": " +
                        Counted(component.linesChanged, "line") + " would change\n";
            }
        }
    }
    if (report.componentsChanged() == 0) {
        text += "Nothing to change";
    } else {
        text += std::string(Deed(options)) + " " + Counted(report.proceduresEdited(), "procedure") + " in " +
                Counted(report.componentsChanged(), "file") + ", " + Counted(report.linesChanged(), "line");
    }
    if (report.proceduresSkipped() > 0) {
        text += "; skipped " + Counted(report.proceduresSkipped(), "procedure");
    }
    if (options.edit.output) {
        text +=
            "; wrote " + Counted(report.files.size(), "file") + " to " + PrintablePath(*options.edit.output);
    }
    return text + ".\n";
}

}  // namespace lintara::cli
