#include "cli/edits/edit_run.h"

#include "cli/edits/freed_memory.h"
#include "cli/edits/refusal.h"
#include "cli/edits/size_limit.h"
#include "cli/history/history_store.h"
#include "cli/invariants/edit_faults.h"
#include "cli/numbers/number_map.h"
#include "cli/output/line_changes.h"
#include "cli/output/messages.h"
#include "cli/output/summary.h"
#include "cli/output/terminal_text.h"
#include "cli/output/unified_diff.h"
#include "cli/project/open_project.h"
#include "cli/project/project_lock.h"
#include "cli/project/undo_store.h"
#include "cli/scope/exclusions.h"
#include "workspace/encoding.h"
#include "workspace/parallel.h"
#include "workspace/read_file.h"
#include "workspace/save.h"
#include "workspace/unencodable.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <unordered_set>

namespace lintara::cli {
namespace {

bool IsOneProject(const std::vector<ScopedComponent>& scope) {
    return std::ranges::adjacent_find(scope, std::ranges::not_equal_to(), &ScopedComponent::project) ==
               scope.end() &&
           !scope.empty();
}

// After so many components were edited the memory that was freed is handed back.
constexpr std::size_t componentsToTrim = 16;

class EditRun {
  public:
    EditRun(const EditCommandOptions& options, const EditJob& job, Environment& environment)
        : options_(options),
          job_(job),
          environment_(environment),
          streams_(environment.streams),
          messages_(streams_, options.output.quiet),
          progress_(streams_, !options.output.quiet),
          faults_(job.rules) {
        report_.command = job.command;
    }

    ExitStatus Run() {
        report_.status = Work();
        if (options_.output.json) {
            streams_.out.Write(ToJson(report_));
        }
        return report_.status;
    }

  private:
    ExitStatus Work() {
        if (const auto failed = Open()) {
            return *failed;
        }
        auto scope = ResolveScope(workspace_, options_.scope);
        if (!scope) {
            return Fail(ExitStatus::Usage, {{{}, 0, scope.error()}});
        }
        RememberCaret();
        for (const std::string& warning : UnmatchedExclusions(workspace_, options_.scope)) {
            report_.warnings.push_back({{}, 0, warning});
            messages_.Warning(report_.warnings.back());
        }
        try {
            Edit(*std::move(scope));
        } catch (const Refusal& refusal) {
            return Fail(ExitStatus::Usage, {{{}, 0, refusal.what()}});
        }
        if (faults_.Found(workspace_)) {
            return Fail(ExitStatus::InternalFault, faults_.Keep(environment_, job_.command));
        }
        if (auto errors = UnencodableLines(); !errors.empty()) {
            return Fail(ExitStatus::Failed, std::move(errors));
        }
        DropRepeatedRemarks();
        WarnOfFilesOutside();
        if (const auto failed = Deliver()) {
            return *failed;
        }
        for (const ComponentReport& component : report_.components) {
            messages_.WarnOf(component);
        }
        WriteSummary();
        return FinalStatus();
    }

    [[nodiscard]] bool isStandardInput() const { return options_.read.stdinFilename.has_value(); }
    [[nodiscard]] bool savesInPlace() const { return options_.edit.writesInPlace() && !isStandardInput(); }

    // Every error is part of the report, too.
    ExitStatus Fail(ExitStatus status, workspace::Diagnostics errors) {
        progress_.Clear();
        messages_.Errors(errors);
        std::ranges::move(errors, std::back_inserter(report_.errors));
        // What was edited in memory only is no result.
        report_.components.clear();
        return status;
    }

    std::optional<ExitStatus> Open() {
        if (savesInPlace()) {
            auto lock = LockProject(options_.read.path, options_.edit.waitSeconds, messages_);
            if (!lock) {
                return Fail(ExitStatus::Failed, {lock.error()});
            }
            lock_ = *std::move(lock);
        }
        auto opened = OpenProject(workspace_, options_.read, streams_.in, progress_);
        if (!opened) {
            return Fail(opened.error().status, std::move(opened.error().errors));
        }
        report_.warnings = std::move(opened->warnings);
        report_.errors = std::move(opened->unreadable);
        messages_.Errors(report_.errors);
        for (const workspace::Diagnostic& warning : report_.warnings) {
            messages_.Warning(warning);
        }
        return std::nullopt;
    }

    void RememberCaret() {
        const auto& at = options_.scope.at;
        if (at && !isStandardInput()) {
            const auto found = FindCaretComponent(workspace_, *at);
            RememberPlace(environment_, options_.read.path, *found->project, *found->component, at->line);
        }
    }

    void Edit(std::vector<ScopedComponent> scope) {
        faults_.Begin(scope);
        totalSize_.emplace(workspace_);
        diffs_.resize(options_.edit.diff ? scope.size() : 0);
        if (job_.independent && IsOneProject(scope)) {
            EditInParallel(std::move(scope));
            return;
        }
        const auto editor = MakeEditor();
        for (const ScopedComponent& component : scope) {
            progress_.Update(job_.stage, report_.components.size(), scope.size());
            report_.components.push_back(EditOne(*editor, component));
        }
        workspace::InParallel(scope.size(), [&](std::size_t i) { CompareComponent(i); });
    }

    // Which project is the active one is the only thing that editors of different components share.
    void EditInParallel(std::vector<ScopedComponent> scope) {
        workspace_.SetActiveProject(*scope.front().project);
        report_.components.resize(scope.size());
        std::vector<std::optional<Refusal>> refusals(scope.size());
        std::size_t trimmed = 0;
        workspace::InParallel(
            scope.size(),
            [&](std::size_t i) {
                try {
                    report_.components[i] = EditOne(*MakeEditor(), scope[i]);
                    CompareComponent(i);
                    // Braces alone would keep the room.
                    scope[i].groups = std::vector<ProcedureGroup>();
                } catch (const Refusal& refusal) {
                    refusals[i] = refusal;
                }
            },
            [&](std::size_t done) {
                progress_.Update(job_.stage, done, scope.size());
                // What the components that are done do not need any more lies between what they keep.
                if (done >= trimmed + componentsToTrim) {
                    ReturnFreedMemory();
                    trimmed = done;
                }
            });
        ReturnFreedMemory();
        // The one that editing in order would have met.
        if (const auto first = std::ranges::find_if(refusals, &std::optional<Refusal>::has_value);
            first != refusals.end()) {
            throw Refusal(**first);
        }
    }

    [[nodiscard]] std::unique_ptr<ComponentEditor> MakeEditor() {
        return job_.makeEditor(workspace_, MakeGlobals(workspace_, environment_));
    }

    [[nodiscard]] static ComponentReport EditOne(ComponentEditor& editor, const ScopedComponent& scope) {
        ComponentReport report = editor.Edit(scope);
        scope.component->module->ForgetSearches();
        ReleaseRoom(report);
        return report;
    }

    // A large project has thousands of procedures, and as many remarks.
    static void ReleaseRoom(ComponentReport& report) {
        report.edited.shrink_to_fit();
        report.remarks.shrink_to_fit();
        for (Remark& remark : report.remarks) {
            remark.message.shrink_to_fit();
        }
    }

    // Several editors know nothing of each other's remarks.
    void DropRepeatedRemarks() {
        std::unordered_set<const void*> seen;
        for (ComponentReport& component : report_.components) {
            std::erase_if(component.remarks, [&](const Remark& remark) {
                return remark.about != nullptr && !seen.insert(remark.about).second;
            });
        }
    }

    // Finds out what changed, from the bytes that a save would write, and makes the diff of it.
    void CompareComponent(std::size_t index) {
        ComponentReport& report = report_.components[index];
        workspace::Module& module = *report.component->module;
        const auto headLines = static_cast<std::size_t>(module.OriginalFileLine(Line(1))) - 1;
        // What belongs to a copy wants to know where its lines come from.
        if (!options_.edit.output) {
            module.KeepBytesOnly();
        }
        if (!module.edited()) {
            return;
        }
        std::string copy;
        const std::string_view bytes = module.CurrentBytes(copy);
        if (bytes == module.originalBytes()) {
            return;
        }
        totalSize_->ComponentEdited(*report.component, bytes);
        const FileLines before = SplitFile(module.originalBytes(), module.encoding());
        const FileLines after = SplitFile(bytes, module.encoding());
        // Nothing is written with a line that cannot be encoded.
        const bool isSound = !module.FirstUnencodable() && faults_.Check(index, before, after, headLines);
        const std::vector<LineChange> changes = CompareLines(before, after);
        report.changed = true;
        report.linesChanged = CountChangedLines(changes);
        if (options_.edit.diff) {
            const DiffStyle style{.color = streams_.outIsTerminal && streams_.wantsColor,
                                  .printable = streams_.outIsTerminal};
            AppendUnifiedDiff(DiffLabel(report.component->path), before, after, changes, module.encoding(),
                              style, diffs_[index]);
        }
        if (isSound && !options_.edit.output && !job_.asksForLoaded) {
            module.ForgetOriginal();
        }
    }

    // What nobody could write is not shown as if somebody could.
    [[nodiscard]] workspace::Diagnostics UnencodableLines() const {
        workspace::Diagnostics errors;
        for (const ComponentReport& report : report_.components) {
            if (auto error = workspace::UnencodableIn(*report.component)) {
                errors.push_back(*std::move(error));
            }
        }
        return errors;
    }

    // What a run that writes would refuse to write.
    void WarnOfFilesOutside() {
        const EditOptions& edit = options_.edit;
        if (isStandardInput() || !(edit.check || edit.diff || edit.list)) {
            return;
        }
        std::vector<workspace::ChangedFile> changed;
        for (const ComponentReport& component : report_.components) {
            if (component.changed) {
                changed.push_back({component.project, component.component});
            }
        }
        for (workspace::Diagnostic& outside : workspace::ChangesOutside(changed, edit.allowedOutside)) {
            messages_.Warning(outside, "outside");
            report_.warnings.push_back(std::move(outside));
        }
    }

    // Saves, or shows what a save would do. A status when that failed.
    std::optional<ExitStatus> Deliver() {
        for (std::string& diff : diffs_) {
            streams_.out.Write(diff);
            diff = {};
        }
        const EditOptions& edit = options_.edit;
        if (edit.list) {
            ListChangedFiles();
        }
        if (edit.check || edit.diff || edit.list) {
            return std::nullopt;
        }
        return isStandardInput() ? WriteComponent() : SaveFiles();
    }

    void ListChangedFiles() {
        std::string names;
        for (const ComponentReport& component : report_.components) {
            if (component.changed) {
                names += PrintablePath(component.component->path) + "\n";
            }
        }
        streams_.out.Write(names);
    }

    // The one component that standard input held.
    std::optional<ExitStatus> WriteComponent() {
        const workspace::Component& component = *workspace_.projects().front()->components().front();
        std::string bytes;
        component.module->AppendCurrentBytes(bytes);
        if (streams_.outIsTerminal) {
            Text text;
            component.module->encoding().Decode(bytes, text);
            bytes = ForReader(workspace::ToUtf8(text), true);
        }
        streams_.out.Write(bytes);
        return std::nullopt;
    }

    std::optional<ExitStatus> SaveFiles() {
        const EditOptions& edit = options_.edit;
        workspace::SaveOptions save;
        save.backupSuffix = edit.backupSuffix;
        save.allowedOutside = edit.allowedOutside;
        if (!edit.output) {
            save.replaced = [&](const auto& files) { RememberForUndo(files); };
        }
        save.progress = [&](std::size_t done, std::size_t total) { progress_.Update("saving", done, total); };
        if (edit.output && job_.addedToCopy) {
            save.added = job_.addedToCopy(workspace_);
        }
        auto saved = edit.output ? workspace::SaveCopy(workspace_, *edit.output, save)
                                 : workspace::Save(workspace_, save);
        progress_.Clear();
        if (!saved) {
            return Fail(ExitStatus::Failed, std::move(saved.error()));
        }
        report_.files = *std::move(saved);
        // A copy without numbers has no map of an earlier one beside it.
        if (edit.output && save.added.empty()) {
            if (auto removed = RemoveNumberMap(*edit.output); !removed) {
                return Fail(ExitStatus::Failed, {{*edit.output / numberMapName, 0, removed.error()}});
            }
        }
        report_.written = !report_.files.empty();
        return std::nullopt;
    }

    // That the command cannot be undone is no reason to fail it.
    void RememberForUndo(const std::vector<workspace::ReplacedFile>& files) {
        if (environment_.stateFolder.empty()) {
            return;
        }
        std::expected<void, std::string> written;
        try {
            written = UndoStore(environment_.stateFolder).Write(options_.read.path, job_.command, files);
        } catch (const std::bad_alloc&) {
            written = std::unexpected("out of memory");
        } catch (const std::filesystem::filesystem_error& error) {
            written = std::unexpected(workspace::SystemMessage(error.code().value()));
        }
        if (!written) {
            messages_.Warning({{}, 0, "\"lintara undo\" will not find this command: " + written.error()});
        }
    }

    void WriteSummary() {
        const bool outIsTaken = options_.output.json || options_.edit.diff || options_.edit.list ||
                                (isStandardInput() && !options_.edit.check);
        if (!options_.output.quiet && !outIsTaken) {
            const std::string& deed = options_.edit.check ? job_.wouldDo : job_.done;
            streams_.out.Write(Summary(report_, deed, options_.edit));
        }
    }

    [[nodiscard]] ExitStatus FinalStatus() const {
        if (!report_.errors.empty()) {
            return ExitStatus::Failed;
        }
        if (options_.edit.strict && report_.proceduresSkipped() > 0) {
            return ExitStatus::Skipped;
        }
        return options_.edit.check && report_.componentsChanged() > 0 ? ExitStatus::ChangesFound
                                                                      : ExitStatus::Done;
    }

    const EditCommandOptions& options_;
    const EditJob& job_;
    Environment& environment_;
    Streams& streams_;
    Messages messages_;
    Progress progress_;
    // Ahead of the workspace, so that it is given up last.
    std::optional<workspace::ProjectLock> lock_;
    workspace::Workspace workspace_;
    Report report_;
    EditFaults faults_;
    std::optional<TotalSize> totalSize_;
    std::vector<std::string> diffs_;  // of each component
};

}  // namespace

bool WroteWhatWasAsked(ExitStatus status, const EditOptions& edit) {
    const bool writes = !edit.check && !edit.diff && !edit.list;
    return writes && (status == ExitStatus::Done || status == ExitStatus::Skipped);
}

ExitStatus RunEdit(const EditCommandOptions& options, const EditJob& job, Environment& environment) {
    return EditRun(options, job, environment).Run();
}

}  // namespace lintara::cli
