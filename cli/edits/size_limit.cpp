#include "cli/edits/size_limit.h"

#include "cli/edits/refusal.h"
#include "cli/output/terminal_text.h"
#include "workspace/limits.h"

#include <algorithm>
#include <string>
#include <utility>

namespace lintara::cli {
namespace {

[[noreturn]] void Refuse(const workspace::Component& component, const std::string& what) {
    throw Refusal(PrintablePath(component.path) + ": " + what);
}

std::string MebibytesOf(std::int64_t bytes) {
    return std::to_string(bytes >> 20) + " MiB";
}

[[noreturn]] void RefuseLines(const workspace::Component& component) {
    Refuse(component,
           "would have more than " + std::to_string(workspace::mostLines) + " lines then, too many for code");
}

}  // namespace

void RequireReadable(const workspace::Component& component, std::size_t more) {
    const std::size_t size = component.module->CountBytes() + more;
    if (std::cmp_greater(size, workspace::largestComponent)) {
        Refuse(component, "would be larger than " + MebibytesOf(workspace::largestComponent) +
                              " then, too large for a component");
    }
    if (std::cmp_greater(component.module->CountOfLines(), workspace::mostLines)) {
        RefuseLines(component);
    }
}

TotalSize::TotalSize(const workspace::Workspace& workspace) {
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            size_ += static_cast<std::int64_t>(component->module->originalBytes().size());
        }
    }
    most_ = std::min(2 * size_ + workspace::mostGrowth, workspace::largestOpening);
}

void TotalSize::ComponentEdited(const workspace::Component& component, std::string_view bytes) {
    if (std::cmp_greater(bytes.size(), workspace::largestComponent)) {
        RequireReadable(component, bytes.size());
    }
    if (workspace::HasTooManyLines(bytes)) {
        RefuseLines(component);
    }
    const auto growth = static_cast<std::int64_t>(bytes.size()) -
                        static_cast<std::int64_t>(component.module->originalBytes().size());
    if (growth > 0 && (size_ += growth) > most_) {
        Refuse(component, "with it, what was edited would be larger than " + MebibytesOf(most_) +
                              ", too large for what it was; edit fewer components at once");
    }
}

}  // namespace lintara::cli
