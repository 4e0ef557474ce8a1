#include "cli/edits/rehearsal.h"

#include "cli/edits/handler_block.h"
#include "cli/guards/existing_numbers.h"
#include "cli/project/input_line.h"
#include "cli/project/procedure_text.h"
#include "workspace/component_file.h"

#include <algorithm>
#include <utility>

namespace lintara::cli {
namespace {

constexpr std::string_view Fate = "keeps its error handler and its numbers";

// A workspace that holds a copy of one component, and nothing else.
class Copy {
  public:
    explicit Copy(const ScopedComponent& original) {
        const workspace::Component& from = *original.component;
        auto component = std::make_unique<workspace::Component>();
        component->name = from.name;
        component->type = from.type;
        component->path = from.path;
        component->designer = from.designer;
        std::string bytes;
        from.module->AppendCurrentBytes(bytes);
        const workspace::EncodingPtr encoding(workspace::EncodingPtr(), &from.module->encoding());
        if (auto file = workspace::ParseComponentFile(from.path, from.type, bytes, encoding)) {
            component->module = std::make_unique<workspace::Module>(std::move(bytes), file->codeBegin,
                                                                    std::move(file->encoding));
        } else {  // that only a component in memory can be
            component->module = workspace::Module::FromText(from.module->AllText());
        }
        workspace::Project& project = workspace_.Add(
            std::make_unique<workspace::Project>(original.project->name(), original.project->path()));
        scope_ = {&project, &project.Add(std::move(component)), original.groups};
    }

    [[nodiscard]] workspace::Workspace& workspace() { return workspace_; }
    [[nodiscard]] const ScopedComponent& scope() const { return scope_; }
    [[nodiscard]] const workspace::Module& module() const { return *scope_.component->module; }

  private:
    workspace::Workspace workspace_;
    ScopedComponent scope_;
};

// Whether the procedure's own lines do: a template may bring numbers, too.
bool HasNumbers(const workspace::Module& module, ProcedureGroup group) {
    Refresh(group, module);
    ProcedureText text;
    text.Read(module, group);
    std::vector<NumberedLine> numbered;
    for (const ProcedureText::Part& part : text.parts()) {
        const auto body = text.body(part);
        const auto block = FindHandlerBlock(body);
        FindNumberedLines(body.first(block ? block->begin : body.size()), numbered);
    }
    return !numbered.empty();
}

// What the report says of the group, whose lines are those of the input.
SkippedProcedure ReasonFor(const ProcedureGroup& group, const ComponentReport& report) {
    const Line header = group.reached.front().header;
    const auto told = std::ranges::find(report.skipped, header, &SkippedProcedure::line);
    SkippedProcedure skipped{.name = group.name,
                             .kind = KindWord(group),
                             .line = header,
                             .reason = SkipReason::AlreadyNumbered,
                             .at = header,
                             .message = "no numbers would be written again",
                             .fate = {}};
    if (told != report.skipped.end()) {
        skipped = *told;
    }
    skipped.fate = Fate;
    return skipped;
}

}  // namespace

KeptProcedures FindNumbersAtRisk(const ScopedComponent& scope, const EditorFactory& makeEditor) {
    std::vector<const ProcedureGroup*> numbered;
    for (const ProcedureGroup& group : scope.groups) {
        if (HasNumbers(*scope.component->module, group)) {
            numbered.push_back(&group);
        }
    }
    KeptProcedures kept;
    bool isComplete = numbered.empty();
    while (!isComplete) {
        // What is kept may change the numbers of what stands below it, so that is tried, too.
        Copy copy(scope);
        const ComponentReport report = makeEditor(copy.workspace())->Edit(copy.scope(), kept);
        isComplete = true;
        for (const ProcedureGroup* group : numbered) {
            const std::size_t key = group->reached.front().number;
            if (!kept.contains(key) && !HasNumbers(copy.module(), *group)) {
                kept.emplace(key, ReasonFor(*group, report));
                isComplete = false;
            }
        }
    }
    return kept;
}

}  // namespace lintara::cli
