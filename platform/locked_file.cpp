#ifndef _WIN32

#include "platform/locked_file.h"

#include "base/uninterrupted.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace lintara::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view leftoverSuffix = ".tmp";

std::unexpected<std::string> Failed(std::string_view what, int error = errno) {
    return std::unexpected(std::string(what) + ": " + std::generic_category().message(error));
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }

    [[nodiscard]] int get() const { return number_; }
    [[nodiscard]] int Release() { return std::exchange(number_, -1); }

  private:
    int number_;
};

FileResult<void> CheckIsFile(const struct stat& status) {
    if (S_ISREG(status.st_mode)) {
        return {};
    }
    return std::unexpected(S_ISDIR(status.st_mode) ? "is a folder, not a file"
                                                   : "is a pipe or a device, not a file");
}

FileResult<std::string> ReadUpTo(int descriptor, std::size_t limit) {
    constexpr std::size_t piece = 64 * 1024;
    std::string bytes;
    while (bytes.size() < limit) {
        const std::size_t done = bytes.size();
        bytes.resize(std::min(done + piece, limit));
        const ssize_t got =
            ::pread(descriptor, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
        const int error = errno;
        bytes.resize(done + (got > 0 ? static_cast<std::size_t>(got) : 0));
        if (got == 0) {
            break;
        }
        if (got < 0 && error != EINTR) {
            return Failed("cannot be read", error);
        }
    }
    return bytes;
}

FileResult<void> WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written =
            Uninterrupted([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
        if (written < 0) {
            return Failed("cannot be written");
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

bool MakeFolder(const fs::path& folder) {
    return Uninterrupted([&] { return ::mkdir(folder.c_str(), 0700); }) == 0 || errno == EEXIST;
}

// Makes the folder and those above it that are missing; for the user alone, as settings are.
FileResult<void> MakeFolders(const fs::path& folder) {
    if (folder.empty() || MakeFolder(folder)) {
        return {};
    }
    if (errno != ENOENT || !folder.has_relative_path()) {
        return Failed("its folder cannot be made");
    }
    if (auto above = MakeFolders(folder.parent_path()); !above) {
        return above;
    }
    if (!MakeFolder(folder)) {
        return Failed("its folder cannot be made");
    }
    return {};
}

// The descriptor; -1, with errno, when the file cannot be opened. Opening a pipe or a device can wait or have
// effects: O_NONBLOCK, and a look before.
FileResult<int> OpenFile(const fs::path& path, int flags) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) {
        if (const auto isFile = CheckIsFile(status); !isFile) {
            return std::unexpected(isFile.error());
        }
    }
    constexpr int always = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    return Uninterrupted([&] { return ::open(path.c_str(), flags | always, 0600); });
}

// Some network file systems lock only what is open for writing. A file that we may not write is opened all
// the same, as it can still be read.
FileResult<int> OpenToLock(const fs::path& path) {
    auto opened = OpenFile(path, O_RDWR | O_CREAT);
    if (opened && *opened < 0 && (errno == EACCES || errno == EPERM || errno == EROFS)) {
        opened = OpenFile(path, O_RDONLY | O_CREAT);
    }
    return opened;
}

enum class Lock { Held, Busy, Impossible };

Lock TryToLock(int descriptor) {
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        return Lock::Held;
    }
    return errno == EWOULDBLOCK || errno == EINTR ? Lock::Busy : Lock::Impossible;
}

bool AreOneFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool IsStillAt(int descriptor, const fs::path& path) {
    struct stat opened {};
    struct stat there {};
    return ::fstat(descriptor, &opened) == 0 && ::stat(path.c_str(), &there) == 0 &&
           AreOneFile(opened, there);
}

// Whether `path` itself is a name of the file, not a symbolic link to it.
bool IsNameOf(int descriptor, const fs::path& path) {
    struct stat opened {};
    struct stat there {};
    return ::fstat(descriptor, &opened) == 0 && ::lstat(path.c_str(), &there) == 0 &&
           AreOneFile(opened, there);
}

// Flushes the names in the folder; some file systems have nothing to flush and say so.
void FlushFolder(const fs::path& folder) {
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.get() >= 0) {
        (void)Uninterrupted([&] { return ::fsync(opened.get()); });
    }
}

std::string LeftoverPrefix(const fs::path& target) {
    return "." + target.filename().string() + ".";
}

// A new file beside `target` with the mode and, as far as we may, the owner of the old one.
FileResult<void> WriteNew(int descriptor, int old, std::string_view bytes) {
    struct stat status {};
    if (::fstat(old, &status) != 0) {
        return Failed("cannot be written");
    }
    if (auto written = WriteAll(descriptor, bytes); !written) {
        return written;
    }
    (void)!::fchown(descriptor, status.st_uid, status.st_gid);
    if (Uninterrupted([&] { return ::fchmod(descriptor, status.st_mode & 07777); }) != 0 ||
        Uninterrupted([&] { return ::fsync(descriptor); }) != 0) {
        return Failed("cannot be written");
    }
    return {};
}

}  // namespace

FileResult<std::optional<std::string>> ReadSmallFile(const fs::path& path, std::size_t limit) {
    const auto opened = OpenFile(path, O_RDONLY);
    if (!opened) {
        return std::unexpected(opened.error());
    }
    if (*opened < 0) {
        return errno == ENOENT ? FileResult<std::optional<std::string>>() : Failed("cannot be read");
    }
    const Descriptor file(*opened);
    return ReadUpTo(file.get(), limit);
}

FileResult<LockedFile> LockedFile::Open(const fs::path& path, std::chrono::milliseconds patience) {
    constexpr auto pause = std::chrono::milliseconds(1);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    if (const auto made = MakeFolders(path.parent_path()); !made) {
        return std::unexpected(made.error());
    }
    while (true) {
        const auto opened = OpenToLock(path);
        if (!opened) {
            return std::unexpected(opened.error());
        }
        if (*opened < 0) {
            return Failed("cannot be opened");
        }
        Descriptor file(*opened);
        const Lock lock = TryToLock(file.get());
        // The holder before us has put another file in place of the one that we opened.
        if (lock != Lock::Busy && IsStillAt(file.get(), path)) {
            std::error_code error;
            fs::path target = fs::canonical(path, error);
            if (error) {
                return Failed("cannot be opened", error.value());
            }
            return LockedFile(file.Release(), std::move(target), lock == Lock::Held);
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return std::unexpected("is being written by another program; try again when it is done");
        }
        if (lock == Lock::Busy) {
            std::this_thread::sleep_for(pause);
        }
    }
}

LockedFile::LockedFile(LockedFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)),
      target_(std::move(other.target_)),
      isLocked_(other.isLocked_) {}

LockedFile::~LockedFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

FileResult<std::string> LockedFile::Read(std::size_t limit) const {
    return ReadUpTo(descriptor_, limit);
}

FileResult<void> LockedFile::Replace(std::string_view bytes) const {
    if (::faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0) {
        return Failed("cannot be written");
    }
    RemoveLeftovers();
    std::string name;
    const Descriptor file(Uninterrupted([&] {
        name = target_.parent_path() / (LeftoverPrefix(target_) + "XXXXXX");
        name += leftoverSuffix;
        return ::mkostemps(name.data(), static_cast<int>(leftoverSuffix.size()), O_CLOEXEC);
    }));
    if (file.get() < 0) {
        return Failed("no file can be made in its folder");
    }
    FileResult<void> written = WriteNew(file.get(), descriptor_, bytes);
    if (written && Uninterrupted([&] { return ::rename(name.c_str(), target_.c_str()); }) != 0) {
        written = Failed("cannot be replaced");
    }
    if (!written) {
        (void)Uninterrupted([&] { return ::unlink(name.c_str()); });
        return written;
    }
    FlushFolder(target_.parent_path());
    return {};
}

FileResult<fs::path> LockedFile::CopyAside() const {
    constexpr int manyCopies = 10'000;
    for (int number = 0; number < manyCopies; ++number) {
        fs::path copy = target_;
        copy += number == 0 ? ".bad" : ".bad." + std::to_string(number);
        // A second name for it, as nothing is ever written into the file itself.
        if (Uninterrupted([&] { return ::link(target_.c_str(), copy.c_str()); }) == 0) {
            return copy;
        }
        if (errno == EEXIST) {
            // Of a run that did not live to replace the file.
            if (IsNameOf(descriptor_, copy)) {
                return copy;
            }
            continue;
        }
        std::error_code error;  // no links on this file system
        if (fs::copy_file(target_, copy, fs::copy_options::none, error)) {
            return copy;
        }
        if (error != std::errc::file_exists) {
            return Failed("cannot be set aside", error.value());
        }
    }
    return std::unexpected("cannot be set aside: too many copies with the ending .bad are there");
}

void LockedFile::RemoveLeftovers() const {
    const std::string prefix = LeftoverPrefix(target_);
    std::error_code ignored;
    std::vector<fs::path> leftovers;
    for (fs::directory_iterator entry(target_.parent_path(), ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        const std::string name = entry->path().filename();
        if (name.starts_with(prefix) && name.ends_with(leftoverSuffix) &&
            name.size() == prefix.size() + 6 + leftoverSuffix.size()) {
            leftovers.push_back(entry->path());
        }
    }
    for (const fs::path& leftover : leftovers) {
        fs::remove(leftover, ignored);
    }
}

}  // namespace lintara::platform

#endif
