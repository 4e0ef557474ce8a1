#include "workspace/read_file.h"

#include "workspace/descriptor.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <utility>

namespace lintara::workspace {

namespace {

std::unexpected<std::string> CannotRead(int error) {
    return std::unexpected("cannot be read: " + SystemMessage(error));
}

bool IsOfTheSystem(int descriptor) {
    struct statfs system {};
    return ::fstatfs(descriptor, &system) == 0 &&
           (system.f_type == PROC_SUPER_MAGIC || system.f_type == SYSFS_MAGIC ||
            system.f_type == DEBUGFS_MAGIC || system.f_type == TRACEFS_MAGIC);
}

// Reads to the end of the file; it may have grown since its size was asked for. False with errno on failure.
bool ReadAll(int descriptor, std::size_t expectedSize, std::int64_t largest, std::string& bytes) {
    constexpr std::size_t spare = 1;  // so that the end shows without another round
    std::size_t done = 0;
    while (true) {
        const std::size_t room = done <= expectedSize ? expectedSize - done + spare : 64 * 1024;
        ssize_t got = 0;
        bytes.resize_and_overwrite(done + room, [&](char* all, std::size_t) {
            got = ::read(descriptor, all + done, room);
            return got > 0 ? done + static_cast<std::size_t>(got) : done;
        });
        if (got == 0) {
            return true;
        }
        if (got < 0 && errno != EINTR) {
            return false;
        }
        done = bytes.size();
        if (std::cmp_greater(done, largest)) {
            errno = EFBIG;
            return false;
        }
    }
}

}  // namespace

std::string SystemMessage(int error) {
    const char* description = ::strerrordesc_np(error);
    return description != nullptr ? description : "error " + std::to_string(error);
}

std::string KindMessage(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        return "is a folder, not a file";
    }
    if (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode)) {
        return "is a pipe, not a file";
    }
    return "is a device, not a file";
}

std::optional<std::string> SquatterMessage(const std::filesystem::path& path, std::string_view use) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return KindMessage(status) + "; lintara keeps " + std::string(use) +
           " under that name, so rename or delete what is there";
}

FileIdentity IdentityOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

std::expected<FileContent, std::string> ReadFile(const std::filesystem::path& path, std::int64_t largest) {
    struct stat status {};
    // Opening a device can have effects, so it is looked at first; O_NONBLOCK is for one that appears since.
    if (::stat(path.c_str(), &status) != 0) {
        return CannotRead(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return std::unexpected(KindMessage(status));
    }
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (!file.open() || ::fstat(file.get(), &status) != 0) {
        return CannotRead(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return std::unexpected(KindMessage(status));
    }
    if (IsOfTheSystem(file.get())) {
        return std::unexpected("is made up by the running system, and no file on a disk");
    }
    if (status.st_size > largest) {
        return std::unexpected("is larger than " + std::to_string(largest >> 20) +
                               " MiB, too large for what it should be");
    }
    FileContent content;
    content.identity = IdentityOf(status);
    if (!ReadAll(file.get(), static_cast<std::size_t>(status.st_size), largest, content.bytes)) {
        return CannotRead(errno);
    }
    return content;
}

std::expected<std::string, std::string> ReadFileOrPipe(const std::filesystem::path& path,
                                                       std::int64_t largest) {
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode)) {
        const Descriptor pipe(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        std::string bytes;
        if (!pipe.open() || !ReadAll(pipe.get(), 0, largest, bytes)) {
            return CannotRead(errno);
        }
        return bytes;
    }
    auto content = ReadFile(path, largest);
    if (!content) {
        return std::unexpected(std::move(content.error()));
    }
    return std::move(content->bytes);
}

}  // namespace lintara::workspace
