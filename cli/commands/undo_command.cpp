// lintara undo: puts back what the last editing command on a project replaced.
#include "cli/commands/commands.h"
#include "cli/environment.h"
#include "cli/help_text.h"
#include "cli/options/shared_options.h"
#include "cli/output/terminal_text.h"
#include "cli/project/locked_run.h"
#include "cli/project/undo_store.h"
#include "workspace/project_folders.h"
#include "workspace/read_file.h"
#include "workspace/recovery.h"
#include "workspace/replace_files.h"
#include "workspace/save.h"
#include "workspace/writable_area.h"

#include <algorithm>

namespace lintara::cli {
namespace {

constexpr std::string_view UndoFooter =
    "\nExample:\n"
    "  lintara insert Invoicing.vbp --line-numbers\n"
    "  lintara undo Invoicing.vbp\n"
    "      Bring back every file that the insertion changed, byte for byte.\n"
    "\nOnly the last command that edited the project in place is remembered, under the PATH that was\n"
    "given to it, and only for the 20 projects that were edited last. When any of its files was changed\n"
    "or deleted since, nothing is restored. What was edited with --allow-outside DIR is restored with it\n"
    "only. A run that was killed is not remembered; 'lintara recover' finishes or undoes what it left\n"
    "half done.\n"
    "\nExit status:\n"
    "  0  done, or there was nothing to undo\n"
    "  2  wrong usage\n"
    "  3  the files are not as the command left them, or could not be written; nothing was changed\n";

// Whether the command was undone already, by a run that was killed before it could forget the record.
bool IsUndone(const UndoRecord& record) {
    return std::ranges::all_of(record.files, [](const UndoFile& file) {
        const auto content = workspace::ReadFile(file.path);
        return content && content->bytes == file.content;
    });
}

// The files that the record names, as they are now.
struct CurrentFile {
    const UndoFile* record;
    workspace::FileContent content;
};

std::expected<std::vector<CurrentFile>, workspace::Diagnostics> ReadCurrent(const UndoRecord& record) {
    std::vector<CurrentFile> files;
    workspace::Diagnostics errors;
    for (const UndoFile& file : record.files) {
        auto content = workspace::ReadFile(file.path);
        if (!content) {
            errors.push_back({file.path, 0, std::move(content.error())});
        } else if (workspace::MarkOf(content->bytes) != file.after) {
            errors.push_back({file.path, 0,
                              "was changed since \"lintara " + record.command +
                                  "\" edited it; nothing is undone, so that the change is not lost"});
        } else {
            files.push_back({&file, *std::move(content)});
        }
    }
    if (!errors.empty()) {
        return std::unexpected(std::move(errors));
    }
    return files;
}

std::vector<workspace::FileChange> ChangesOf(const std::vector<CurrentFile>& files,
                                             const std::filesystem::path& path,
                                             const std::filesystem::path& folder) {
    const std::filesystem::path tree = workspace::TreeOf(path);
    std::vector<workspace::FileChange> changes;
    for (const CurrentFile& file : files) {
        changes.push_back({.path = file.record->path,
                           .identity = file.content.identity,
                           .original = workspace::MarkOf(file.content.bytes),
                           .appendNew = [&file](std::string& bytes) { bytes += file.record->content; },
                           .projectFolder = folder,
                           .projectName = {},
                           .tree = tree,
                           .origin = {}});
    }
    return changes;
}

// What was undone, as a line for people.
std::expected<std::string, workspace::Diagnostics> Undo(const std::filesystem::path& path,
                                                        const UndoStore& store,
                                                        const workspace::SaveOptions& save) {
    const auto folders = workspace::ProjectFolders(path);
    if (!folders) {
        return std::unexpected(workspace::Diagnostics{folders.error()});
    }
    if (workspace::HasJournal(*folders)) {
        if (auto recovered = workspace::Recover(path); !recovered) {
            return std::unexpected(std::move(recovered.error()));
        }
    }
    const auto record = store.Read(path);
    if (!record) {
        return std::unexpected(workspace::Diagnostics{{{}, 0, record.error()}});
    }
    if (!*record || IsUndone(**record)) {
        store.Forget(path);
        return "Nothing to undo: no command has edited " + PrintablePath(path) + " in place.\n";
    }
    const auto files = ReadCurrent(**record);
    if (!files) {
        return std::unexpected(files.error());
    }
    const auto written = workspace::ReplaceFiles(ChangesOf(*files, path, folders->front()), *folders, save);
    if (!written) {
        return std::unexpected(written.error());
    }
    store.Forget(path);
    return "Undid \"lintara " + (*record)->command + "\": restored " + std::to_string(written->size()) +
           (written->size() == 1 ? " file" : " files") + ".\n";
}

ExitStatus Run(const OptionReader& given, Environment& environment) {
    const std::filesystem::path path = ReadReading(given).path;
    workspace::SaveOptions save;
    save.allowedOutside = ReadAllowedOutside(given);
    return RunLocked(path, ReadWait(given), environment,
                     [&] { return Undo(path, UndoStore(environment.stateFolder), save); });
}

}  // namespace

CommandInfo UndoCommand() {
    return {.name = "undo",
            .description = "Restore what the last editing command changed",
            .footer = UndoFooter,
            .arguments = {PathArgument()},
            .options = Joined({{AllowOutsideOption(), WaitOption()}, ProjectFileOptions()}),
            .run = Run};
}

}  // namespace lintara::cli
