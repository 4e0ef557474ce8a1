#include "base/uninterrupted.h"
#include "workspace/characters.h"
#include "workspace/copy_mark.h"
#include "workspace/journal.h"
#include "workspace/parallel.h"
#include "workspace/path_resolver.h"
#include "workspace/project_lock.h"
#include "workspace/read_file.h"
#include "workspace/save.h"
#include "workspace/unencodable.h"
#include "workspace/write_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <map>
#include <optional>
#include <ranges>
#include <set>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

// What the IDE keeps beside a component under the same stem: binary properties, toolbox pictures, designers.
constexpr std::array<std::string_view, 7> companionExtensions = {".frx", ".ctx", ".pgx", ".dox",
                                                                 ".dsx", ".dca", ".oca"};

// A file of the copy.
struct CopiedFile {
    fs::path source;                       // from the root
    const Component* component = nullptr;  // whose present text it gets; null: it is copied as it is
    const AddedFile* added = nullptr;      // what it is instead of a copy
    fs::path target;                       // below the output folder
    fs::path temporary;
    std::optional<Diagnostic> error;
};

fs::path CommonFolder(const fs::path& a, const fs::path& b) {
    fs::path common;
    auto other = b.begin();
    for (const fs::path& name : a) {
        if (other == b.end() || name != *other) {
            break;
        }
        common /= name;
        ++other;
    }
    return common;
}

WriteResult WriteNew(const fs::path& path, mode_t mode, std::string_view bytes) {
    auto made = CreateNew(path);
    if (!made) {
        return std::unexpected(NotCreatedMessage(made.error()));
    }
    if (Uninterrupted([&] { return ::fchmod(made->get(), mode); }) != 0) {
        return std::unexpected("its mode cannot be kept: " + SystemMessage(errno));
    }
    return WriteAll(made->get(), bytes);
}

// Up to so many files are flushed one by one; for more it takes less time to flush the whole file system.
constexpr std::size_t fewFiles = 32;

constexpr double patience = 10;  // seconds to wait for another run

// Makes the copy, in two passes: all files are written under temporary names first, then they take their
// places. Until then nothing in the output folder has changed. While a mark lies in it the copy counts as
// incomplete.
class Copier {
  public:
    Copier(const Workspace& workspace, fs::path output, const SaveOptions& options)
        : workspace_(workspace), output_(std::move(output)), options_(options), mask_(::umask(0)) {
        ::umask(mask_);
    }

    std::expected<std::vector<fs::path>, Diagnostics> Run();

  private:
    void Collect();
    void AddFile(const fs::path& path, const Component* component);
    void AddCompanions(const fs::path& component);
    void PlaceFiles();
    void PlaceAddedFiles();
    void CheckTargets();
    void MakeFolders();
    bool MakeFolder(const fs::path& folder);
    void Lock();
    void Mark();
    void ClearLeftovers(const fs::path& folder);
    void WriteAllFiles();
    [[nodiscard]] std::optional<Diagnostic> WriteFile(const CopiedFile& file) const;
    void FlushAllFiles();
    void PutInPlace();
    void RemoveMarks();
    void TakeBack();

    void Step() const {
        if (options_.beforeStep) {
            options_.beforeStep();
        }
    }
    void Fail(const fs::path& path, const std::string& message) { errors_.push_back({path, 0, message}); }

    const Workspace& workspace_;
    fs::path output_;
    const SaveOptions& options_;
    PathResolver resolver_;
    std::vector<CopiedFile> files_;
    std::set<fs::path> known_;    // sources
    std::set<fs::path> folders_;  // those of the targets
    std::vector<fs::path> madeFolders_;
    std::optional<ProjectLock> lock_;
    std::vector<fs::path> madeMarks_;
    mode_t mask_;           // which rights the user gives to nobody by himself
    bool changed_ = false;  // some file of the copy is another than before
    Diagnostics errors_;
};

std::expected<std::vector<fs::path>, Diagnostics> Copier::Run() {
    const FileSizeSignalHeldBack noSignal;
    using Stage = void (Copier::*)();
    constexpr std::array<Stage, 10> stages = {
        &Copier::Collect,    &Copier::PlaceFiles, &Copier::CheckTargets,  &Copier::MakeFolders,
        &Copier::Lock,       &Copier::Mark,       &Copier::WriteAllFiles, &Copier::FlushAllFiles,
        &Copier::PutInPlace, &Copier::RemoveMarks};
    for (const Stage stage : stages) {
        try {
            (this->*stage)();
        } catch (...) {  // memory is at an end
            TakeBack();
            throw;
        }
        if (!errors_.empty()) {
            TakeBack();
            return std::unexpected(std::move(errors_));
        }
    }
    std::vector<fs::path> written;
    for (const CopiedFile& file : files_) {
        written.push_back(file.target);
    }
    return written;
}

void Copier::AddFile(const fs::path& path, const Component* component) {
    fs::path source = AbsolutePath(path);
    if (known_.insert(source).second) {
        files_.push_back({std::move(source), component, nullptr, {}, {}, std::nullopt});
        return;
    }
    // Two projects may share a component; the copy holds what either did to it, unless both did.
    for (CopiedFile& file : files_) {
        if (component == nullptr || file.source != source || !component->module->edited()) {
            continue;
        }
        if (file.component->module->edited()) {
            std::string one;
            std::string two;
            file.component->module->AppendCurrentBytes(one);
            component->module->AppendCurrentBytes(two);
            if (one != two) {
                Fail(path, "belongs to several projects, which edited it differently");
            }
        }
        file.component = component;
    }
}

void Copier::AddCompanions(const fs::path& component) {
    for (const std::string_view extension : companionExtensions) {
        const std::string name = component.stem().string() + std::string(extension);
        for (const std::string& candidate : resolver_.Candidates(FolderOf(component), name)) {
            AddFile(FolderOf(component) / candidate, nullptr);
        }
    }
}

void Copier::Collect() {
    for (const auto& project : workspace_.projects()) {
        std::error_code error;
        if (!project->path().empty() && fs::is_regular_file(project->path(), error) &&
            (project->components().size() != 1 || project->components().front()->path != project->path())) {
            AddFile(project->path(), nullptr);
        }
        for (const auto& component : project->components()) {
            if (component->path.empty()) {
                continue;
            }
            if (auto unencodable = UnencodableIn(*component)) {
                errors_.push_back(*std::move(unencodable));
            }
            AddFile(component->path, component.get());
            AddCompanions(component->path);
        }
        for (const fs::path& file : project->otherFiles()) {
            if (fs::is_regular_file(file, error)) {
                AddFile(file, nullptr);
            }
        }
    }
}

// Keeps the layout: the folder that all files have in common becomes the output folder.
void Copier::PlaceFiles() {
    std::optional<fs::path> root;
    for (const CopiedFile& file : files_) {
        root = root ? CommonFolder(*root, file.source.parent_path()) : file.source.parent_path();
    }
    output_ = AbsolutePath(output_);
    const TemporaryNames names;
    for (std::size_t i = 0; i < files_.size(); ++i) {
        files_[i].target = output_ / files_[i].source.lexically_relative(*root);
    }
    PlaceAddedFiles();
    for (std::size_t i = 0; i < files_.size(); ++i) {
        files_[i].temporary = names.Beside(files_[i].target, i);
    }
}

void Copier::PlaceAddedFiles() {
    for (const AddedFile& added : options_.added) {
        for (const CopiedFile& file : files_) {
            if (file.target.parent_path() == output_ &&
                SameName(FromUtf8(file.target.filename().string()), FromUtf8(added.name))) {
                Fail(file.source, "has the name of a file that the copy gets on top; rename it");
            }
        }
        files_.push_back({{}, nullptr, &added, output_ / added.name, {}, std::nullopt});
    }
}

void Copier::CheckTargets() {
    std::map<std::pair<dev_t, ino_t>, const CopiedFile*> sources;
    for (const CopiedFile& file : files_) {
        struct stat status {};
        if (::stat(file.source.c_str(), &status) == 0) {
            sources.try_emplace({status.st_dev, status.st_ino}, &file);
        }
    }
    for (const CopiedFile& file : files_) {
        struct stat status {};
        if (::lstat(file.target.c_str(), &status) != 0) {
            continue;
        }
        if (!S_ISREG(status.st_mode)) {
            Fail(file.target, "is there and is no regular file, so it is not replaced");
        } else if (const auto source = sources.find({status.st_dev, status.st_ino});
                   source != sources.end()) {
            Fail(output_, "as output folder would replace the source " + source->second->source.string() +
                              "; choose another folder");
            return;
        }
    }
}

// A folder below the output folder must be one there: a link could lead anywhere.
bool Copier::MakeFolder(const fs::path& folder) {
    struct stat status {};
    const bool isTop = folder == output_;
    if ((isTop ? ::stat(folder.c_str(), &status) : ::lstat(folder.c_str(), &status)) == 0) {
        if (!S_ISDIR(status.st_mode)) {
            Fail(folder, S_ISLNK(status.st_mode) ? "is a link, which may lead out of the output folder"
                                                 : "is a file where a folder is needed");
        }
        return errors_.empty();
    }
    Step();
    if (Uninterrupted([&] { return ::mkdir(folder.c_str(), 0777); }) != 0) {
        Fail(folder, "this folder cannot be made: " + SystemMessage(errno));
        return false;
    }
    madeFolders_.push_back(folder);
    return true;
}

void Copier::MakeFolders() {
    std::vector<fs::path> above;
    std::error_code error;
    for (fs::path folder = output_; !fs::exists(folder, error) && folder.has_relative_path();
         folder = folder.parent_path()) {
        above.push_back(folder);
    }
    std::set<fs::path> below = {output_};
    for (const CopiedFile& file : files_) {
        for (fs::path folder = file.target.parent_path(); folder != output_; folder = folder.parent_path()) {
            below.insert(folder);
        }
    }
    const auto make = [&](const fs::path& folder) { return MakeFolder(folder); };
    if (std::ranges::all_of(above.rbegin(), above.rend(), make)) {
        (void)std::ranges::all_of(below, make);
    }
}

// Two runs that make the same copy follow each other.
void Copier::Lock() {
    auto lock = ProjectLock::AcquireFolders({output_}, patience);
    if (!lock) {
        errors_.push_back(lock.error());
        return;
    }
    lock_ = *std::move(lock);
}

void Copier::Mark() {
    folders_.insert(output_);
    for (const CopiedFile& file : files_) {
        folders_.insert(file.target.parent_path());
    }
    for (const fs::path& folder : folders_) {
        Step();
        const fs::path mark = folder / copyMarkName;
        if (auto squatter = SquatterMessage(mark, copyMarkUse)) {
            return Fail(mark, *squatter);
        }
        const auto made = CreateNew(mark);
        if (made) {
            madeMarks_.push_back(mark);
        } else if (made.error() == EEXIST) {
            ClearLeftovers(folder);
        } else {
            return Fail(folder, "cannot be written: " + SystemMessage(made.error()));
        }
        if (auto flushed = Flush(folder); !flushed) {
            return Fail(folder, flushed.error());
        }
    }
}

// Temporary files of a run that was interrupted.
void Copier::ClearLeftovers(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (IsTemporaryName(entry->path()) && fs::is_regular_file(entry->symlink_status(ignored))) {
            (void)Remove(entry->path());
        }
    }
}

// What is wrong with the file, or with the one that it is a copy of.
std::optional<Diagnostic> Copier::WriteFile(const CopiedFile& file) const {
    Step();
    const auto write = [&](mode_t mode, std::string_view bytes) {
        auto written = WriteNew(file.temporary, mode, bytes);
        return written ? std::nullopt : std::optional(Diagnostic{file.target, 0, std::move(written.error())});
    };
    if (file.added != nullptr) {
        return write(0666 & ~mask_, file.added->bytes);
    }
    struct stat status {};
    if (::stat(file.source.c_str(), &status) != 0) {
        return Diagnostic{file.source, 0, "cannot be read: " + SystemMessage(errno)};
    }
    std::string bytes;
    if (file.component != nullptr) {
        file.component->module->AppendCurrentBytes(bytes);
    } else {
        auto content = ReadFile(file.source);
        if (!content) {
            return Diagnostic{file.source, 0, std::move(content.error())};
        }
        bytes = std::move(content->bytes);
    }
    // A copy is for working with, also where the source is read-only.
    return write(((status.st_mode & 0777) | S_IWUSR) & ~mask_, bytes);
}

void Copier::WriteAllFiles() {
    const auto write = [&](std::size_t i) { files_[i].error = WriteFile(files_[i]); };
    InParallel(files_.size(), write, [&](std::size_t done) {
        if (options_.progress) {
            options_.progress(done, files_.size());
        }
    });
    for (const CopiedFile& file : files_) {
        if (file.error) {
            errors_.push_back(*file.error);
        }
    }
}

void Copier::FlushAllFiles() {
    if (files_.size() > fewFiles) {
        if (auto flushed = FlushFileSystems({folders_.begin(), folders_.end()}); !flushed) {
            Fail(output_, flushed.error());
        }
        return;
    }
    for (const CopiedFile& file : files_) {
        if (auto flushed = Flush(file.temporary); !flushed) {
            return Fail(file.target, flushed.error());
        }
    }
}

void Copier::PutInPlace() {
    for (const CopiedFile& file : files_) {
        if (file.added != nullptr) {
            Step();
            if (!Remove(file.target)) {
                return Fail(file.target, "cannot be replaced: " + SystemMessage(errno));
            }
            changed_ = true;
        }
    }
    for (const CopiedFile& file : files_) {
        Step();
        if (!Rename(file.temporary, file.target)) {
            return Fail(file.target, "cannot be replaced: " + SystemMessage(errno));
        }
        changed_ = true;
    }
    for (const fs::path& folder : folders_) {
        if (auto flushed = Flush(folder); !flushed) {
            return Fail(folder, flushed.error());
        }
    }
}

void Copier::RemoveMarks() {
    for (const fs::path& folder : folders_ | std::views::reverse) {
        Step();
        if (const fs::path mark = folder / copyMarkName; !Remove(mark)) {
            return Fail(mark, "cannot be removed: " + SystemMessage(errno));
        }
    }
}

// After an error. A copy that has begun to change stays marked.
void Copier::TakeBack() {
    for (const CopiedFile& file : files_) {
        if (!file.temporary.empty()) {
            (void)Remove(file.temporary);
        }
    }
    if (changed_) {
        return Fail(output_, "holds a copy that is not complete; make it again when the cause is removed");
    }
    for (const fs::path& mark : madeMarks_) {
        (void)Remove(mark);
    }
    for (const fs::path& folder : madeFolders_ | std::views::reverse) {
        ::rmdir(folder.c_str());
    }
}

}  // namespace

std::expected<std::vector<fs::path>, Diagnostics> SaveCopy(const Workspace& workspace, const fs::path& output,
                                                           const SaveOptions& options) {
    return Copier(workspace, output, options).Run();
}

}  // namespace lintara::workspace
