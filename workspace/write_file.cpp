#include "workspace/write_file.h"

#include "base/uninterrupted.h"
#include "workspace/journal.h"
#include "workspace/read_file.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <set>
#include <sys/random.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

std::unexpected<std::string> Failed(const std::string& what) {
    return std::unexpected(what + ": " + SystemMessage(errno));
}

constexpr const char* cannotWrite = "cannot be written";

// Access lists and labels; what cannot be taken over is left out.
void CopyExtendedAttributes(const fs::path& from, int to) {
    const ssize_t size = ::listxattr(from.c_str(), nullptr, 0);
    if (size <= 0) {
        return;
    }
    std::string names(static_cast<std::size_t>(size), '\0');
    const ssize_t listed = ::listxattr(from.c_str(), names.data(), names.size());
    names.resize(listed < 0 ? 0 : static_cast<std::size_t>(listed));
    for (std::size_t at = 0; at < names.size();) {
        const std::string name = names.c_str() + at;
        at += name.size() + 1;
        std::string value(64 * 1024, '\0');
        const ssize_t length = ::getxattr(from.c_str(), name.c_str(), value.data(), value.size());
        if (length >= 0) {
            (void)::fsetxattr(to, name.c_str(), value.data(), static_cast<std::size_t>(length), 0);
        }
    }
}

WriteResult CopyContent(const fs::path& from, const fs::path& to) {
    auto content = ReadFile(from);
    if (!content) {
        return std::unexpected(std::move(content.error()));
    }
    auto file = CreateNew(to);
    if (!file) {
        return std::unexpected(NotCreatedMessage(file.error()));
    }
    struct stat status {};
    if (::stat(from.c_str(), &status) != 0) {
        return Failed(cannotWrite);
    }
    WriteResult result = WriteAll(file->get(), content->bytes);
    if (result) {
        result = TakeOverAttributes(file->get(), from, status);
    }
    return result ? FlushOpened(file->get()) : result;
}

}  // namespace

TemporaryNames::TemporaryNames() {
    std::uint64_t number = 0;
    if (::getrandom(&number, sizeof number, 0) != static_cast<ssize_t>(sizeof number)) {
        number =
            static_cast<std::uint64_t>(::time(nullptr)) * 0x10001U + static_cast<std::uint64_t>(::getpid());
    }
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(number));
    run_ = digits;
}

fs::path TemporaryNames::Beside(const fs::path& target, std::size_t index) const {
    return target.parent_path() /
           (std::string(temporaryPrefix) + run_ + "-" + std::to_string(index) + std::string(temporarySuffix));
}

std::expected<Descriptor, int> CreateNew(const fs::path& path) {
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    Descriptor file(Uninterrupted([&] { return ::open(path.c_str(), flags, 0600); }));
    if (!file.open()) {
        return std::unexpected(errno);
    }
    return file;
}

std::string NotCreatedMessage(int error) {
    return "no file can be made in its folder: " + SystemMessage(error);
}

WriteResult WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written =
            Uninterrupted([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
        if (written < 0) {
            return Failed(cannotWrite);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

WriteResult TakeOverAttributes(int descriptor, const fs::path& original, const struct stat& status) {
    struct stat own {};
    if (::fstat(descriptor, &own) != 0) {
        return Failed(cannotWrite);
    }
    if (own.st_uid != status.st_uid || own.st_gid != status.st_gid) {
        const auto change = [&](uid_t owner) {
            return Uninterrupted([&] { return ::fchown(descriptor, owner, status.st_gid); });
        };
        if (change(status.st_uid) != 0) {
            (void)change(static_cast<uid_t>(-1));
        }
    }
    CopyExtendedAttributes(original, descriptor);
    // Last, as a change of owner takes away some bits.
    if (Uninterrupted([&] { return ::fchmod(descriptor, status.st_mode & 07777); }) != 0) {
        return Failed("its mode cannot be kept");
    }
    return {};
}

WriteResult FlushFileSystems(const std::vector<fs::path>& folders) {
    std::set<dev_t> done;
    for (const fs::path& path : folders) {
        const Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        struct stat status {};
        if (!folder.open() || ::fstat(folder.get(), &status) != 0) {
            return Failed(cannotWrite);
        }
        if (done.insert(status.st_dev).second && Uninterrupted([&] { return ::syncfs(folder.get()); }) != 0) {
            return Failed(cannotWrite);
        }
    }
    return {};
}

WriteResult Flush(const fs::path& path) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    return file.open() ? FlushOpened(file.get()) : Failed(cannotWrite);
}

WriteResult FlushOpened(int descriptor) {
    // Some file systems have nothing to flush for a folder and say so.
    if (Uninterrupted([&] { return ::fsync(descriptor); }) != 0 && errno != EINVAL) {
        return Failed(cannotWrite);
    }
    return {};
}

bool Rename(const fs::path& from, const fs::path& to) {
    return Uninterrupted([&] { return ::rename(from.c_str(), to.c_str()); }) == 0;
}

bool Remove(const fs::path& path) {
    return Uninterrupted([&] { return ::unlink(path.c_str()); }) == 0 || errno == ENOENT || errno == ENOTDIR;
}

fs::path KeptName(const fs::path& temporary) {
    fs::path kept = temporary;
    return kept.replace_extension(".old" + std::string(temporarySuffix));
}

WriteResult Exchange(const fs::path& temporary, const fs::path& target) {
    const auto exchange = [&] {
        return ::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE);
    };
    if (Uninterrupted(exchange) == 0) {
        return {};
    }
    if (errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP) {
        return ExchangeInSteps(temporary, target);
    }
    return Failed("cannot be replaced");
}

WriteResult ExchangeInSteps(const fs::path& temporary, const fs::path& target) {
    const fs::path kept = KeptName(temporary);
    (void)Remove(kept);  // of an exchange that was interrupted; the target still holds it
    if (Uninterrupted([&] { return ::link(target.c_str(), kept.c_str()); }) != 0) {
        if (auto copied = CopyContent(target, kept); !copied) {
            (void)Remove(kept);
            return copied;
        }
    }
    if (!Rename(temporary, target)) {
        auto failed = Failed("cannot be replaced");
        (void)Remove(kept);
        return failed;
    }
    if (!Rename(kept, temporary)) {
        return Failed("cannot be kept");
    }
    return {};
}

namespace {

sigset_t FileSizeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGXFSZ);
    return signals;
}

}  // namespace

FileSizeSignalHeldBack::FileSizeSignalHeldBack() {
    const sigset_t signals = FileSizeSignal();
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &signals, &before);
    wasBlocked_ = sigismember(&before, SIGXFSZ) == 1;
}

FileSizeSignalHeldBack::~FileSizeSignalHeldBack() {
    if (wasBlocked_) {
        return;
    }
    const sigset_t signals = FileSizeSignal();
    const timespec atOnce{};
    while (sigtimedwait(&signals, nullptr, &atOnce) == SIGXFSZ) {
    }
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

}  // namespace lintara::workspace
