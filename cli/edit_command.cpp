// lintara insert and lintara remove: opens the project, edits the scope, then saves, shows or counts.
#include "cli/commands.h"
#include "cli/help_text.h"
#include "cli/line_changes.h"
#include "cli/line_number_editor.h"
#include "cli/messages.h"
#include "cli/open_project.h"
#include "cli/project_lock.h"
#include "cli/scope.h"
#include "cli/summary.h"
#include "cli/terminal_text.h"
#include "cli/unified_diff.h"
#include "workspace/object_model.h"
#include "workspace/parallel.h"
#include "workspace/save.h"

#include <algorithm>
#include <optional>

namespace lintara::cli {
namespace {

// The path as a diff names it: without a leading slash, relative where it can be.
std::string DiffLabel(const std::filesystem::path& path) {
    std::string label = path.lexically_normal().generic_string();
    label.erase(0, label.find_first_not_of('/'));
    return label;
}

class EditRun {
  public:
    EditRun(const Options& options, Streams& streams)
        : options_(options),
          streams_(streams),
          messages_(streams, options.quiet),
          progress_(streams, !options.quiet) {
        report_.command = VerbName(options.verb);
    }

    ExitStatus Run() {
        report_.status = Work();
        if (options_.json) {
            streams_.out.Write(ToJson(report_));
        }
        return report_.status;
    }

  private:
    ExitStatus Work() {
        if (const auto failed = Open()) {
            return *failed;
        }
        const auto scope = ResolveScope(workspace_, options_.scope);
        if (!scope) {
            return Fail(ExitStatus::Usage, {{{}, 0, scope.error()}});
        }
        try {
            Edit(*scope);
        } catch (const NumbersTooWide& refusal) {
            return Fail(ExitStatus::Usage, {{{}, 0, refusal.what()}});
        }
        Compare();
        if (const auto failed = Deliver()) {
            return *failed;
        }
        for (const ComponentReport& component : report_.components) {
            messages_.WarnOf(component);
        }
        WriteSummary();
        return FinalStatus();
    }

    // Every error is part of the report, too.
    ExitStatus Fail(ExitStatus status, workspace::Diagnostics errors) {
        progress_.Clear();
        messages_.Errors(errors);
        report_.errors = std::move(errors);
        // What was edited in memory only is no result.
        report_.components.clear();
        return status;
    }

    std::optional<ExitStatus> Open() {
        if (options_.edit.writesInPlace()) {
            auto lock = LockProject(options_, messages_);
            if (!lock) {
                return Fail(ExitStatus::Failed, {lock.error()});
            }
            lock_ = *std::move(lock);
        }
        auto opened = OpenProject(workspace_, options_, progress_);
        if (!opened) {
            return Fail(opened.error().status, std::move(opened.error().errors));
        }
        report_.warnings = *std::move(opened);
        for (const workspace::Diagnostic& warning : report_.warnings) {
            messages_.Warning(warning);
        }
        return std::nullopt;
    }

    void Edit(const std::vector<ScopedComponent>& scope) {
        LineNumberEditor editor(workspace_, std::make_shared<workspace::WorkspaceGlobals>(workspace_),
                                options_);
        for (const ScopedComponent& component : scope) {
            progress_.Update("numbering", report_.components.size(), scope.size());
            report_.components.push_back(editor.Edit(component));
        }
    }

    // Finds out what changed, from the bytes that a save would write, and makes the diffs of it.
    void Compare() {
        diffs_.resize(options_.edit.diff ? report_.components.size() : 0);
        workspace::InParallel(report_.components.size(), [&](std::size_t i) { CompareComponent(i); });
    }

    void CompareComponent(std::size_t index) {
        ComponentReport& report = report_.components[index];
        const workspace::Module& module = *report.component->module;
        if (!module.edited()) {
            return;
        }
        std::string bytes;
        module.AppendCurrentBytes(bytes);
        if (bytes == module.originalBytes()) {
            return;
        }
        const FileLines before = SplitFile(module.originalBytes(), module.encoding());
        const FileLines after = SplitFile(bytes, module.encoding());
        const std::vector<LineChange> changes = CompareLines(before, after);
        report.changed = true;
        report.linesChanged = CountChangedLines(changes);
        if (options_.edit.diff) {
            const DiffStyle style{.color = streams_.outIsTerminal && streams_.wantsColor,
                                  .printable = streams_.outIsTerminal};
            AppendUnifiedDiff(DiffLabel(report.component->path), before, after, changes, module.encoding(),
                              style, diffs_[index]);
        }
    }

    // Saves, or shows what a save would do. A status when that failed.
    std::optional<ExitStatus> Deliver() {
        for (std::string& diff : diffs_) {
            streams_.out.Write(diff);
            diff = {};
        }
        const EditOptions& edit = options_.edit;
        if (edit.check || edit.diff) {
            return std::nullopt;
        }
        workspace::SaveOptions save;
        save.backupSuffix = edit.backupSuffix;
        save.progress = [&](std::size_t done, std::size_t total) { progress_.Update("saving", done, total); };
        auto saved = edit.output ? workspace::SaveCopy(workspace_, *edit.output, save)
                                 : workspace::Save(workspace_, save);
        progress_.Clear();
        if (!saved) {
            return Fail(ExitStatus::Failed, std::move(saved.error()));
        }
        report_.files = *std::move(saved);
        report_.written = !report_.files.empty();
        return std::nullopt;
    }

    void WriteSummary() {
        if (!options_.quiet && !options_.json && !options_.edit.diff) {
            streams_.out.Write(Summary(report_, options_));
        }
    }

    [[nodiscard]] ExitStatus FinalStatus() const {
        if (options_.edit.strict && report_.proceduresSkipped() > 0) {
            return ExitStatus::Skipped;
        }
        return options_.edit.check && report_.componentsChanged() > 0 ? ExitStatus::ChangesFound
                                                                      : ExitStatus::Done;
    }

    const Options& options_;
    Streams& streams_;
    Messages messages_;
    Progress progress_;
    // Ahead of the workspace, so that it is given up last.
    std::optional<workspace::ProjectLock> lock_;
    workspace::Workspace workspace_;
    Report report_;
    std::vector<std::string> diffs_;  // of each component
};

}  // namespace

ExitStatus RunEditCommand(const Options& options, Streams& streams) {
    return EditRun(options, streams).Run();
}

}  // namespace lintara::cli
