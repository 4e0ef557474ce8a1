#include "workspace/recovery.h"

#include "workspace/copy_mark.h"
#include "workspace/parallel.h"
#include "workspace/path_resolver.h"
#include "workspace/project_folders.h"
#include "workspace/project_lock.h"
#include "workspace/read_file.h"
#include "workspace/save.h"
#include "workspace/writable_area.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <set>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

constexpr double patience = 10;  // seconds to wait for a save that is under way

// How far the replacement of one file got.
enum class Progress : unsigned char {
    Pending,       // the old content is in place, the new one beside it
    Done,          // the new content is in place
    EditedBefore,  // somebody has changed the old content since
    EditedAfter,   // somebody has changed the new content since
    NoWayForward,  // the old content is in place and the new one is gone
};

bool Holds(const fs::path& path, const ContentMark& mark) {
    std::error_code error;
    if (path.empty() || fs::file_size(path, error) != mark.size || error) {
        return false;
    }
    const auto content = ReadFile(path);
    return content && MarkOf(content->bytes) == mark;
}

Progress ProgressOf(const Replacement& each) {
    const bool newIsBeside = Holds(each.temporary, *each.newContent);
    if (Holds(each.target, *each.newContent)) {
        return Progress::Done;
    }
    if (Holds(each.target, *each.oldContent)) {
        return newIsBeside ? Progress::Pending : Progress::NoWayForward;
    }
    return newIsBeside ? Progress::EditedBefore : Progress::EditedAfter;
}

// Where the old content of a replaced file is kept.
std::optional<fs::path> OldContentOf(const Replacement& each) {
    for (const fs::path& path : {each.temporary, KeptName(each.temporary), each.backup}) {
        if (Holds(path, *each.oldContent)) {
            return path;
        }
    }
    return std::nullopt;
}

struct Inspected {
    const Replacement* replacement;
    Progress progress;
};

class Recovery {
  public:
    explicit Recovery(const Journal& journal) : journal_(journal) {
        for (const Replacement& each : journal.replacements) {
            if (each.newContent) {
                files_.push_back({&each, ProgressOf(each)});
            }
        }
    }

    // The value is a line for people.
    std::expected<std::string, Diagnostics> Run() {
        if (!journal_.committed) {
            if (auto removed = RemoveTraces(journal_); !removed) {
                return std::unexpected(Diagnostics{removed.error()});
            }
            return "removed the leftovers of an interrupted save; no file had been changed";
        }
        if (!Any(Progress::EditedBefore) && !Any(Progress::NoWayForward)) {
            return Finish();
        }
        if (!Any(Progress::EditedAfter) && CanUndo()) {
            return Undo();
        }
        return std::unexpected(Conflict());
    }

  private:
    [[nodiscard]] bool Any(Progress progress) const {
        return std::ranges::find(files_, progress, &Inspected::progress) != files_.end();
    }
    [[nodiscard]] bool CanUndo() const {
        return std::ranges::all_of(files_, [](const Inspected& file) {
            return file.progress != Progress::Done || OldContentOf(*file.replacement);
        });
    }

    std::expected<std::string, Diagnostics> Finish() {
        std::set<fs::path> folders;
        for (const Inspected& file : files_) {
            folders.insert(file.replacement->target.parent_path());
            if (file.progress != Progress::Pending) {
                continue;
            }
            if (auto result = Exchange(file.replacement->temporary, file.replacement->target); !result) {
                return Failed(*file.replacement, result.error());
            }
        }
        for (const Inspected& file : files_) {
            if (auto result = KeepBackup(*file.replacement); !result) {
                return Failed(*file.replacement, result.error());
            }
        }
        return Conclude(folders, "finished an interrupted save of ");
    }

    static WriteResult KeepBackup(const Replacement& each) {
        const auto old = OldContentOf(each);
        if (each.backup.empty() || !old || *old == each.backup) {
            return {};
        }
        if (!Rename(*old, each.backup)) {
            return std::unexpected("no backup can be kept: " + SystemMessage(errno));
        }
        return {};
    }

    std::expected<std::string, Diagnostics> Undo() {
        std::set<fs::path> folders;
        for (const Inspected& file : files_) {
            folders.insert(file.replacement->target.parent_path());
            if (file.progress != Progress::Done) {
                continue;
            }
            if (auto result = UndoReplacement(*file.replacement); !result) {
                return Failed(*file.replacement, result.error());
            }
        }
        return Conclude(folders, "undid an interrupted save, as files were changed since; it was of ");
    }

    std::expected<std::string, Diagnostics> Conclude(const std::set<fs::path>& folders,
                                                     const std::string& what) {
        for (const fs::path& folder : folders) {
            if (auto result = Flush(folder); !result) {
                return std::unexpected(Diagnostics{{folder, 0, result.error()}});
            }
        }
        if (auto removed = RemoveTraces(journal_); !removed) {
            return std::unexpected(Diagnostics{removed.error()});
        }
        return what + std::to_string(files_.size()) + (files_.size() == 1 ? " file" : " files");
    }

    std::expected<std::string, Diagnostics> Failed(const Replacement& each, const std::string& why) const {
        return std::unexpected(
            Diagnostics{{each.target, 0, "an interrupted save could not be finished, it " + why},
                        {journal_.path, 0, "is kept; run again when the cause is removed"}});
    }

    [[nodiscard]] Diagnostics Conflict() const {
        Diagnostics diagnostics;
        for (const Inspected& file : files_) {
            switch (file.progress) {
                case Progress::EditedBefore:
                    diagnostics.push_back({file.replacement->target, 0,
                                           "was changed since an interrupted save was to replace it by " +
                                               file.replacement->temporary.string()});
                    break;
                case Progress::EditedAfter:
                    diagnostics.push_back({file.replacement->target, 0,
                                           "was changed since an interrupted save had replaced it"});
                    break;
                case Progress::NoWayForward:
                    diagnostics.push_back({file.replacement->target, 0,
                                           "was to be replaced by an interrupted save, but " +
                                               file.replacement->temporary.string() + " is gone"});
                    break;
                default:
                    break;
            }
        }
        diagnostics.push_back(
            {journal_.path, 0,
             "the interrupted save can neither be finished nor undone without losing changes; "
             "put the files above in order and delete this journal"});
        return diagnostics;
    }

    const Journal& journal_;
    std::vector<Inspected> files_;
};

// Where a link leads, if there still is a journal. What cannot be seen now is not gone: the files of a save
// must stay until its journal tells what to do with them.
std::expected<std::optional<fs::path>, Diagnostic> FollowLink(const fs::path& link) {
    if (auto squatter = SquatterMessage(link, "a mark of interrupted saves")) {
        return std::unexpected(Diagnostic{link, 0, *std::move(squatter)});
    }
    if (const auto content = ReadFile(link); !content) {
        return std::unexpected(Diagnostic{
            link, 0, "leads to an interrupted save, and " + content.error() + "; run as the user who saved"});
    }
    auto journal = ReadJournalLink(link);
    std::error_code error;
    if (!journal || fs::exists(*journal, error)) {
        return journal;
    }
    if (error || !fs::exists(FolderOf(*journal), error)) {
        return std::unexpected(Diagnostic{link, 0,
                                          "leads to the journal of an interrupted save, " +
                                              journal->string() +
                                              ", whose folder cannot be found; bring it back, or delete this "
                                              "link when it is gone for good"});
    }
    return std::nullopt;
}

// The journals of the folders themselves and those that lie elsewhere and have a link here. A link that leads
// nowhere is removed, but in folders where nothing may be written.
std::expected<std::set<fs::path>, Diagnostic> FindJournals(const std::vector<fs::path>& folders,
                                                           const WritableArea& area,
                                                           std::vector<std::string>& done) {
    std::set<fs::path> journals;
    std::error_code error;
    for (const fs::path& folder : folders) {
        const fs::path own = folder / journalName;
        if (auto squatter = SquatterMessage(own, "the journal of a save")) {
            return std::unexpected(Diagnostic{own, 0, *std::move(squatter)});
        }
        if (fs::exists(fs::symlink_status(own, error))) {
            journals.insert(own);
        }
        const fs::path link = folder / journalLinkName;
        if (!fs::exists(fs::symlink_status(link, error))) {
            continue;
        }
        const auto journal = FollowLink(link);
        if (!journal) {
            return std::unexpected(journal.error());
        }
        if (*journal) {
            journals.insert(**journal);
        } else if (area.Holds(fs::canonical(folder, error)) && Remove(link)) {
            done.push_back("removed a link to a journal that is no more: " + link.string());
        }
    }
    return journals;
}

// A journal may come with a folder from anywhere, and must not reach out of it. A save leaves a link to its
// journal in every other folder in which it works: only what lies below the journal's own folder, or in a
// folder with such a link, is the save's. Where the link was not yet made, or is removed again, there is
// nothing left to do. A link that leads elsewhere may be that of this save, whose folder was moved: then
// nothing is touched, and the error says so.
std::expected<void, Diagnostic> ForgetForeignFiles(Journal& journal) {
    std::error_code error;
    const fs::path file = fs::canonical(journal.path, error);
    const WritableArea own{TreeOf(journal.path), {}};
    const auto vouches = [&](const fs::path& link) {
        const auto leadsTo = ReadJournalLink(link);
        std::error_code ignored;
        return leadsTo && !file.empty() && fs::canonical(*leadsTo, ignored) == file;
    };
    const auto isForeign = [&](const fs::path& folder) {
        std::error_code missing;
        const fs::path real = fs::canonical(folder, missing);
        return missing || (!own.Holds(real) && !vouches(real / journalLinkName));
    };
    const auto hasOtherLink = [&](const Replacement& each) {
        std::error_code ignored;
        const fs::path folder = FolderOf(each.target);
        return isForeign(folder) && fs::exists(fs::symlink_status(folder / journalLinkName, ignored));
    };
    if (const auto other = std::ranges::find_if(journal.replacements, hasOtherLink);
        journal.committed && other != journal.replacements.end()) {
        return std::unexpected(
            Diagnostic{journal.path, 0,
                       "is of an interrupted save to " + FolderOf(other->target).string() +
                           ", too, where another place of this journal is known; move the project back to "
                           "where it was saved, or delete this journal when it is not yours"});
    }
    std::erase_if(journal.replacements,
                  [&](const Replacement& each) { return isForeign(FolderOf(each.target)); });
    std::erase_if(journal.links, [&](const fs::path& link) { return isForeign(FolderOf(link)); });
    return {};
}

// A run that ended before its journal came to the disk may leave temporary files that no journal names.
void RemoveStrayTemporaries(const fs::path& folder, std::vector<std::string>& done) {
    std::error_code error;
    std::size_t count = 0;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (IsTemporaryName(entry->path()) && fs::is_regular_file(entry->symlink_status(ignored)) &&
            Remove(entry->path())) {
            ++count;
        }
    }
    if (count > 0) {
        done.push_back("removed " + std::to_string(count) + " temporary files from " + folder.string());
    }
}

}  // namespace

bool HasJournal(const std::vector<fs::path>& folders) {
    return std::ranges::any_of(folders, [](const fs::path& folder) {
        return ::access((folder / journalName).c_str(), F_OK) == 0 ||
               ::access((folder / journalLinkName).c_str(), F_OK) == 0;
    });
}

WriteResult UndoReplacement(const Replacement& replacement) {
    const auto old = OldContentOf(replacement);
    if (!old) {
        return std::unexpected("cannot be put back: its old content is gone");
    }
    if (!Rename(*old, replacement.target)) {
        return std::unexpected("cannot be put back: " + SystemMessage(errno));
    }
    return {};
}

std::expected<void, Diagnostic> RemoveTraces(const Journal& journal) {
    std::vector<fs::path> traces = journal.links;
    for (const Replacement& each : journal.replacements) {
        traces.push_back(each.temporary);
        traces.push_back(KeptName(each.temporary));
    }
    std::vector<int> errors(traces.size());
    // Some disks are told of each freed block at once and take their time to answer.
    InParallel(
        traces.size(), [&](std::size_t i) { errors[i] = Remove(traces[i]) ? 0 : errno; }, {},
        BoundBy::Device);
    const auto notRemoved = [](const fs::path& path, int error) {
        return std::unexpected(
            Diagnostic{path, 0,
                       "is left from a save and cannot be removed: " + SystemMessage(error) +
                           "; run again when the cause is removed"});
    };
    for (std::size_t i = 0; i < traces.size(); ++i) {
        if (errors[i] != 0) {
            return notRemoved(traces[i], errors[i]);
        }
    }
    if (!Remove(journal.path)) {
        return notRemoved(journal.path, errno);
    }
    return {};
}

std::expected<std::vector<std::string>, Diagnostics> Recover(const fs::path& path) {
    const auto folders = ProjectFolders(path);
    if (!folders) {
        return std::unexpected(Diagnostics{folders.error()});
    }
    const auto lock = ProjectLock::AcquireFolders(*folders, patience);
    if (!lock) {
        return std::unexpected(Diagnostics{lock.error()});
    }
    std::vector<std::string> done;
    const WritableArea area{TreeOf(path), {}};
    const auto journals = FindJournals(*folders, area, done);
    if (!journals) {
        return std::unexpected(Diagnostics{journals.error()});
    }
    for (const fs::path& file : *journals) {
        // A journal elsewhere belongs to a project with a lock of its own.
        const auto itsLock = ProjectLock::AcquireFolders({file.parent_path()}, patience);
        if (!itsLock) {
            return std::unexpected(Diagnostics{itsLock.error()});
        }
        std::error_code error;
        if (!fs::exists(file, error)) {
            continue;
        }
        auto journal = ReadJournal(file);
        if (!journal) {
            return std::unexpected(Diagnostics{journal.error()});
        }
        if (auto forgotten = ForgetForeignFiles(*journal); !forgotten) {
            return std::unexpected(Diagnostics{forgotten.error()});
        }
        auto result = Recovery(*journal).Run();
        if (!result) {
            return std::unexpected(std::move(result.error()));
        }
        done.push_back(*std::move(result));
    }
    for (const fs::path& folder : *folders) {
        std::error_code error;
        if (area.Holds(fs::canonical(folder, error))) {
            RemoveStrayTemporaries(folder, done);
        }
    }
    if (auto incomplete = FindIncompleteCopy(*folders)) {
        return std::unexpected(Diagnostics{*std::move(incomplete)});
    }
    return done;
}

}  // namespace lintara::workspace
