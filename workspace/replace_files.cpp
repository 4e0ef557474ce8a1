#include "workspace/replace_files.h"

#include "workspace/journal.h"
#include "workspace/parallel.h"
#include "workspace/project_lock.h"
#include "workspace/read_file.h"
#include "workspace/recovery.h"
#include "workspace/write_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <map>
#include <set>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

constexpr double patience = 10;  // seconds to wait for another run

// Up to so many files are flushed one by one; for more it takes less time to flush the whole file system.
constexpr std::size_t fewFiles = 32;

constexpr const char* changedMeanwhile = "changed on disk while it was being saved";

// A file on its way to its new content.
struct Candidate {
    FileChange change;
    struct stat status {};
    Replacement replacement;
    bool sameAsAnother = false;  // the same file is there twice, with the same new content
    Diagnostics errors;
};

// The file itself where `path` is a symbolic link to it.
fs::path RealFile(const fs::path& path) {
    std::error_code error;
    fs::path real = fs::canonical(path, error);
    return error ? path : real;
}

// One save, step by step. Until the journal is committed every step is undone by deleting what it made.
class Saver {
  public:
    Saver(const std::vector<fs::path>& folders, const SaveOptions& options)
        : folders_(folders), options_(options) {}

    std::expected<std::vector<fs::path>, Diagnostics> Run(std::vector<FileChange> changes);

  private:
    // Each of these reports what is wrong to `errors_`; the save goes on only while there is nothing.
    void Inspect();
    void InspectOne(Candidate& candidate) const;
    void CheckDisk(Candidate& candidate) const;
    [[nodiscard]] bool MayBeWritten(const Candidate& candidate) const;
    [[nodiscard]] WritableArea AreaOf(const Candidate& candidate) const;
    void CheckBackup(Candidate& candidate) const;
    void FindSharedFiles();
    void BeginJournal();
    Descriptor MakeForSave(const fs::path& path, std::string_view content);
    void RemoveStaleLink(const fs::path& link) const;
    void WriteNewContents();
    void WriteOne(Candidate& candidate) const;
    void Commit();
    void Replace();
    void KeepBackups();

    void Undo();
    void TellReplaced() const;
    std::vector<fs::path> Conclude();
    [[nodiscard]] static bool HoldsWhatWasRead(const fs::path& path, const Candidate& candidate);
    [[nodiscard]] static bool KeepsWhatWasRead(const Candidate& candidate);
    static WriteResult PutBack(const Candidate& candidate);

    void Step() const {
        if (options_.beforeStep) {
            options_.beforeStep();
        }
    }
    void Fail(const fs::path& path, const std::string& message) { errors_.push_back({path, 0, message}); }
    [[nodiscard]] bool ok() const { return errors_.empty(); }
    [[nodiscard]] std::set<fs::path> TargetFolders() const;
    [[nodiscard]] bool isFew() const { return candidates_.size() <= fewFiles; }

    const std::vector<fs::path>& folders_;
    const SaveOptions& options_;
    std::vector<Candidate> candidates_;
    Diagnostics errors_;
    Journal journal_;
    std::string journalHead_;
    Descriptor journalFile_;
    std::vector<const Candidate*> replaced_;
};

std::expected<std::vector<fs::path>, Diagnostics> Saver::Run(std::vector<FileChange> changes) {
    for (FileChange& change : changes) {
        candidates_.push_back({std::move(change), {}, {}, false, {}});
    }
    if (candidates_.empty()) {
        return std::vector<fs::path>();
    }
    const auto lock = ProjectLock::AcquireFolders(folders_, patience);
    if (!lock) {
        return std::unexpected(Diagnostics{lock.error()});
    }
    const FileSizeSignalHeldBack noSignal;
    using Stage = void (Saver::*)();
    constexpr std::array<Stage, 2> checks = {&Saver::Inspect, &Saver::FindSharedFiles};
    constexpr std::array<Stage, 5> steps = {&Saver::BeginJournal, &Saver::WriteNewContents, &Saver::Commit,
                                            &Saver::Replace, &Saver::KeepBackups};
    for (const Stage check : checks) {
        (this->*check)();
        if (!ok()) {
            return std::unexpected(std::move(errors_));
        }
    }
    for (const Stage step : steps) {
        try {
            (this->*step)();
        } catch (...) {  // memory is at an end
            if (journalFile_.open()) {
                Undo();
            }
            throw;
        }
        if (!ok()) {
            Undo();
            return std::unexpected(std::move(errors_));
        }
    }
    return Conclude();
}

void Saver::Inspect() {
    InParallel(candidates_.size(), [&](std::size_t i) { InspectOne(candidates_[i]); });
    for (Candidate& candidate : candidates_) {
        std::ranges::move(candidate.errors, std::back_inserter(errors_));
    }
}

void Saver::InspectOne(Candidate& candidate) const {
    CheckDisk(candidate);
    if (!options_.backupSuffix.empty()) {
        CheckBackup(candidate);
    }
}

void Saver::CheckDisk(Candidate& candidate) const {
    const FileChange& change = candidate.change;
    const auto refuse = [&](const std::string& message) {
        candidate.errors.push_back({change.path, 0, message});
    };
    fs::path& target = candidate.replacement.target;
    target = RealFile(change.path);
    if (::stat(target.c_str(), &candidate.status) != 0) {
        return refuse(errno == ENOENT ? "was deleted since it was read"
                                      : "cannot be written: " + SystemMessage(errno));
    }
    if (!S_ISREG(candidate.status.st_mode)) {
        return refuse(KindMessage(candidate.status));
    }
    if (!MayBeWritten(candidate)) {
        candidate.errors.push_back(OutsideOf(AreaOf(candidate), change.path, target, change.origin));
        return;
    }
    // The superuser may write it all the same, but whoever took the right away meant something by it.
    constexpr mode_t anybodyWrites = S_IWUSR | S_IWGRP | S_IWOTH;
    if ((candidate.status.st_mode & anybodyWrites) == 0 || ::access(target.c_str(), W_OK) != 0) {
        return refuse("is read-only; make it writable or write to another folder with --output");
    }
    if (IdentityOf(candidate.status) != change.identity) {
        const auto content = ReadFile(target);
        if (!content || MarkOf(content->bytes) != change.original) {
            return refuse("changed on disk since it was read; run again to work on what it holds now");
        }
    }
}

WritableArea Saver::AreaOf(const Candidate& candidate) const {
    return {candidate.change.tree, options_.allowedOutside};
}

// A file outside may stand among the changes when its content stays as it is.
bool Saver::MayBeWritten(const Candidate& candidate) const {
    if (AreaOf(candidate).Holds(candidate.replacement.target)) {
        return true;
    }
    std::string bytes;
    candidate.change.appendNew(bytes);
    return MarkOf(bytes) == candidate.change.original;
}

void Saver::CheckBackup(Candidate& candidate) const {
    const fs::path& target = candidate.replacement.target;
    const fs::path backup = target.string() + options_.backupSuffix;
    struct stat status {};
    if (backup.parent_path() != target.parent_path()) {
        candidate.errors.push_back({target, 0, "the suffix of its backup may not lead to another folder"});
    } else if (::lstat(backup.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        candidate.errors.push_back({backup, 0, "is no regular file, so it is not replaced by a backup"});
    }
    candidate.replacement.backup = backup;
}

// A file that several projects share is written once, when all of them want the same content. Two names of
// one file (hard links) are two files from then on.
void Saver::FindSharedFiles() {
    std::map<fs::path, const Candidate*> byTarget;
    for (Candidate& candidate : candidates_) {
        const auto [known, isNew] = byTarget.try_emplace(candidate.replacement.target, &candidate);
        if (isNew) {
            continue;
        }
        std::string here;
        std::string there;
        candidate.change.appendNew(here);
        known->second->change.appendNew(there);
        if (here != there) {
            Fail(candidate.change.path, "belongs to the projects " + known->second->change.projectName +
                                            " and " + candidate.change.projectName +
                                            ", which edited it differently");
        }
        candidate.sameAsAnother = true;
    }
    std::erase_if(candidates_, [](const Candidate& candidate) { return candidate.sameAsAnother; });
}

std::set<fs::path> Saver::TargetFolders() const {
    std::set<fs::path> folders;
    for (const Candidate& candidate : candidates_) {
        folders.insert(candidate.replacement.target.parent_path());
    }
    return folders;
}

// Makes the journal and the links to it. That the journal must be new keeps two saves apart even where the
// file system has no locks.
void Saver::BeginJournal() {
    journal_.path = RealFile(candidates_.front().change.projectFolder) / journalName;
    std::set<fs::path> folders = TargetFolders();
    const WritableArea area = AreaOf(candidates_.front());
    for (const fs::path& folder : folders_) {
        if (const fs::path real = RealFile(folder); area.Holds(real)) {
            folders.insert(real);
        }
    }
    folders.erase(journal_.path.parent_path());
    for (const fs::path& folder : folders) {
        journal_.links.push_back(folder / journalLinkName);
    }
    const TemporaryNames names;
    for (std::size_t i = 0; i < candidates_.size(); ++i) {
        Replacement& replacement = candidates_[i].replacement;
        replacement.temporary = names.Beside(replacement.target, i);
        journal_.replacements.push_back(replacement);
    }
    journalHead_ = JournalHead(journal_);
    journalFile_ = MakeForSave(journal_.path, journalHead_);
    if (!journalFile_.open()) {
        // What is there belongs to somebody else.
        journal_ = {};
        return;
    }
    for (std::size_t i = 0; i < journal_.links.size() && ok(); ++i) {
        const fs::path& link = journal_.links[i];
        RemoveStaleLink(link);
        if (!MakeForSave(link, JournalLink(link, journal_.path)).open()) {
            journal_.links.resize(i);
        }
    }
}

// A new file that nobody else may have made. Not open: it could not be made.
Descriptor Saver::MakeForSave(const fs::path& path, std::string_view content) {
    Step();
    auto file = CreateNew(path);
    if (!file) {
        const bool isThere = file.error() == EEXIST;
        Fail(isThere ? path : path.parent_path(),
             isThere ? "is there from another save; run \"lintara recover\" first"
                     : "cannot be written: " + SystemMessage(file.error()));
        return Descriptor();
    }
    if (auto written = WriteAll(file->get(), content); !written) {
        Fail(path, written.error());
    }
    return *std::move(file);
}

// After a power cut a link may be there whose journal was lost. One that leads to our own, which is new, is
// stale as well.
void Saver::RemoveStaleLink(const fs::path& link) const {
    const auto journal = ReadJournalLink(link);
    std::error_code error;
    if (journal && (!fs::exists(*journal, error) || fs::equivalent(*journal, journal_.path, error))) {
        (void)Remove(link);
    }
}

void Saver::WriteNewContents() {
    InParallel(
        candidates_.size(), [&](std::size_t i) { WriteOne(candidates_[i]); },
        [&](std::size_t done) {
            if (options_.progress) {
                options_.progress(done, candidates_.size());
            }
        });
    for (std::size_t i = 0; i < candidates_.size(); ++i) {
        std::ranges::move(candidates_[i].errors, std::back_inserter(errors_));
        journal_.replacements[i] = candidates_[i].replacement;
    }
}

void Saver::WriteOne(Candidate& candidate) const {
    const FileChange& change = candidate.change;
    Replacement& replacement = candidate.replacement;
    const auto check = [&](const WriteResult& result) {
        if (!result) {
            candidate.errors.push_back({replacement.target, 0, result.error()});
        }
        return result.has_value();
    };
    std::string bytes;
    bytes.reserve(change.original.size + change.original.size / 4);
    change.appendNew(bytes);
    const ContentMark mark = MarkOf(bytes);
    if (mark == change.original) {
        return;
    }
    Step();
    const auto file = CreateNew(replacement.temporary);
    if (!file) {
        candidate.errors.push_back({replacement.target, 0, NotCreatedMessage(file.error())});
        return;
    }
    if (check(WriteAll(file->get(), bytes)) &&
        check(TakeOverAttributes(file->get(), replacement.target, candidate.status)) &&
        (!isFew() || check(Flush(replacement.temporary)))) {
        replacement.oldContent = change.original;
        replacement.newContent = mark;
    }
}

void Saver::Commit() {
    const std::set<fs::path> folders = TargetFolders();
    Step();
    if (isFew()) {
        for (const fs::path& folder : folders) {
            if (auto flushed = Flush(folder); !flushed) {
                Fail(folder, flushed.error());
            }
        }
    } else if (auto flushed = FlushFileSystems({folders.begin(), folders.end()}); !flushed) {
        Fail(*folders.begin(), flushed.error());
    }
    if (!ok()) {
        return;
    }
    Step();
    WriteResult written = WriteAll(journalFile_.get(), JournalCommit(journal_, journalHead_));
    Step();
    if (written) {
        written = FlushOpened(journalFile_.get());
    }
    if (written) {
        written = Flush(journal_.path.parent_path());
    }
    if (!written) {
        Fail(journal_.path, written.error());
    }
}

// Puts the new contents in place. The old content of each file takes over its temporary name, so that all of
// this can be taken back as long as the journal is there.
void Saver::Replace() {
    for (const Candidate& candidate : candidates_) {
        const Replacement& replacement = candidate.replacement;
        if (!replacement.newContent) {
            continue;
        }
        Step();
        if (!HoldsWhatWasRead(replacement.target, candidate)) {
            Fail(candidate.change.path, changedMeanwhile);
            return;
        }
        replaced_.push_back(&candidate);
        if (auto exchanged = Exchange(replacement.temporary, replacement.target); !exchanged) {
            Fail(candidate.change.path, exchanged.error());
            return;
        }
    }
    for (const fs::path& folder : TargetFolders()) {
        Step();
        if (auto flushed = Flush(folder); !flushed) {
            Fail(folder, flushed.error());
        }
    }
    // What somebody wrote just before or since, into the file that he had open, is in the old content now.
    for (const Candidate* candidate : replaced_) {
        if (!KeepsWhatWasRead(*candidate)) {
            Fail(candidate->change.path, changedMeanwhile);
        }
    }
}

bool Saver::HoldsWhatWasRead(const fs::path& path, const Candidate& candidate) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && IdentityOf(status) == IdentityOf(candidate.status);
}

// Whether the old content of a file that was replaced is what the new one was made of.
bool Saver::KeepsWhatWasRead(const Candidate& candidate) {
    const fs::path& kept = candidate.replacement.temporary;
    if (HoldsWhatWasRead(kept, candidate)) {
        return true;
    }
    // Where a file cannot have two names it is a copy.
    const auto content = ReadFile(kept);
    return content && MarkOf(content->bytes) == candidate.change.original;
}

void Saver::KeepBackups() {
    for (const Candidate* candidate : replaced_) {
        const Replacement& replacement = candidate->replacement;
        if (replacement.backup.empty()) {
            continue;
        }
        Step();
        if (!Rename(replacement.temporary, replacement.backup)) {
            Fail(replacement.backup, "no backup can be kept: " + SystemMessage(errno));
            return;
        }
    }
}

// After an error: puts back what was replaced, then deletes what was made. When even that fails the journal
// stays, so that the next run can finish what this one could not.
void Saver::Undo() {
    bool undone = true;
    for (const Candidate* candidate : replaced_) {
        const Replacement& replacement = candidate->replacement;
        // The last of them may not have been replaced yet.
        const auto current = ReadFile(replacement.target);
        if (std::error_code error; !current && fs::exists(replacement.target, error)) {
            Fail(replacement.target, current.error());
            undone = false;
        }
        if (!current || MarkOf(current->bytes) != *replacement.newContent) {
            continue;
        }
        if (auto result = PutBack(*candidate); !result) {
            Fail(replacement.target, result.error());
            undone = false;
        }
    }
    if (!undone || !RemoveTraces(journal_)) {
        Fail(journal_.path, "is kept; run \"lintara recover\" when the cause is removed");
    }
}

// The old content may have been written to since it was read; it is put back as it is.
WriteResult Saver::PutBack(const Candidate& candidate) {
    const Replacement& replacement = candidate.replacement;
    if (Rename(replacement.temporary, replacement.target)) {
        return {};
    }
    return UndoReplacement(replacement);
}

void Saver::TellReplaced() const {
    if (!options_.replaced || replaced_.empty()) {
        return;
    }
    std::vector<ReplacedFile> files;
    for (const Candidate* candidate : replaced_) {
        const Replacement& replacement = candidate->replacement;
        files.push_back({candidate->change.path,
                         replacement.backup.empty() ? replacement.temporary : replacement.backup,
                         *replacement.oldContent, *replacement.newContent});
    }
    options_.replaced(files);
}

std::vector<fs::path> Saver::Conclude() {
    TellReplaced();
    Step();
    // The files are as they should be; what cannot be removed is left to the next run.
    [[maybe_unused]] const auto removed = RemoveTraces(journal_);
    std::vector<fs::path> written;
    for (const Candidate* candidate : replaced_) {
        written.push_back(candidate->change.path);
    }
    return written;
}

}  // namespace

std::expected<std::vector<fs::path>, Diagnostics> ReplaceFiles(std::vector<FileChange> changes,
                                                               const std::vector<fs::path>& folders,
                                                               const SaveOptions& options) {
    return Saver(folders, options).Run(std::move(changes));
}

}  // namespace lintara::workspace
