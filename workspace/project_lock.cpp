#include "workspace/project_lock.h"

#include "workspace/descriptor.h"
#include "workspace/project_folders.h"
#include "workspace/read_file.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <iomanip>
#include <locale>
#include <map>
#include <mutex>
#include <optional>
#include <sstream>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <thread>
#include <utility>

namespace lintara::workspace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

class FolderLock {
  public:
    explicit FolderLock(Descriptor folder) : folder_(std::move(folder)) {}

  private:
    Descriptor folder_;  // closing it gives up the lock
};

namespace {

using FolderKey = std::pair<dev_t, ino_t>;

// The locks that this process holds. The system ties such a lock to one opening of the folder, so that a
// second opening by the same process would wait for the first.
struct HeldLocks {
    std::mutex mutex;
    std::map<FolderKey, std::weak_ptr<const FolderLock>> byFolder;
};

HeldLocks& Held() {
    static HeldLocks held;
    return held;
}

// A folder that is to be locked.
struct Candidate {
    fs::path path;
    Descriptor descriptor;
    FolderKey key;
};

std::expected<Candidate, Diagnostic> OpenFolder(const fs::path& path) {
    Candidate candidate{path, Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)), {}};
    struct stat status {};
    if (!candidate.descriptor.open() || ::fstat(candidate.descriptor.get(), &status) != 0) {
        return std::unexpected(Diagnostic{path, 0, "cannot be opened: " + SystemMessage(errno)});
    }
    candidate.key = {status.st_dev, status.st_ino};
    return candidate;
}

// The process that holds the lock, where the system tells.
std::optional<std::string> HolderOf(const FolderKey& key) {
    std::ostringstream place;
    place.imbue(std::locale::classic());
    place << std::hex << std::setfill('0') << std::setw(2) << major(key.first) << ':' << std::setw(2)
          << minor(key.first) << std::dec << ':' << key.second;
    std::ifstream locks("/proc/locks");
    std::string line;
    while (std::getline(locks, line)) {
        std::istringstream fields(line);
        std::string number;
        std::string kind;
        std::string advisory;
        std::string access;
        std::string process;
        std::string inode;
        fields >> number >> kind >> advisory >> access >> process >> inode;
        if (kind == "FLOCK" && inode == place.str()) {
            return process;
        }
    }
    return std::nullopt;
}

std::string BusyMessage(const FolderKey& key) {
    const auto holder = HolderOf(key);
    return "another run is at work on this project" + (holder ? " (process " + *holder + ")" : "") +
           "; try again when it is done";
}

// Null when another process holds the lock.
std::shared_ptr<const FolderLock> TryLock(Candidate& candidate) {
    HeldLocks& held = Held();
    const std::scoped_lock guard(held.mutex);
    std::weak_ptr<const FolderLock>& known = held.byFolder[candidate.key];
    if (auto lock = known.lock()) {
        return lock;
    }
    // Some file systems have no locks; there the journal alone keeps two saves apart.
    if (::flock(candidate.descriptor.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        return nullptr;
    }
    auto lock = std::make_shared<const FolderLock>(std::move(candidate.descriptor));
    known = lock;
    return lock;
}

}  // namespace

ProjectLock::ProjectLock(ProjectLock&&) noexcept = default;
ProjectLock& ProjectLock::operator=(ProjectLock&&) noexcept = default;
ProjectLock::~ProjectLock() = default;

std::expected<ProjectLock, Diagnostic> ProjectLock::Acquire(const fs::path& path, double seconds) {
    const auto folders = ProjectFolders(path);
    if (!folders) {
        return std::unexpected(folders.error());
    }
    return AcquireFolders(*folders, seconds);
}

std::expected<ProjectLock, Diagnostic> ProjectLock::AcquireFolders(const std::vector<fs::path>& folders,
                                                                   double seconds) {
    constexpr auto pause = std::chrono::milliseconds(20);
    const auto deadline = Clock::now() + std::chrono::duration<double>(seconds);
    std::vector<Candidate> candidates;
    for (const fs::path& folder : folders) {
        auto candidate = OpenFolder(folder);
        if (!candidate) {
            return std::unexpected(candidate.error());
        }
        candidates.push_back(*std::move(candidate));
    }
    // In one order for all runs, so that no two wait for each other.
    std::ranges::sort(candidates, {}, &Candidate::key);
    ProjectLock project;
    for (Candidate& candidate : candidates) {
        while (true) {
            if (auto lock = TryLock(candidate)) {
                project.folders_.push_back(std::move(lock));
                break;
            }
            if (Clock::now() >= deadline) {
                return std::unexpected(Diagnostic{candidate.path, 0, BusyMessage(candidate.key)});
            }
            std::this_thread::sleep_for(pause);
        }
    }
    return project;
}

}  // namespace lintara::workspace
