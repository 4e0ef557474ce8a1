// Stands between a program and the system: counts its calls that change files below some folders, and lets
// one of them fail. Built as a library of its own, which LD_PRELOAD brings into the program. It is told by
// variables of the environment:
//   LINTARA_FAULT_BELOW    the folders, separated by colons
//   LINTARA_FAULT_AT       the call that is struck, from 1; none when it is missing
//   LINTARA_FAULT          what strikes it: "kill" (the program, before the call), "stop" (the same, until it
//                          is continued), "short" (half is written; then calls that write alone are counted),
//                          or the number of an error
//   LINTARA_FAULT_LASTING  set: so do all calls after it
//   LINTARA_FAULT_CALL     the name of the calls that alone are counted; "access" is counted only so
//   LINTARA_FAULT_LACKS    what the file system cannot do: "exchange", "link", or both
//   LINTARA_FAULT_LOG      a file that gets a line for each call that is counted: its name and the path,
//   behind
//                          "! " when it was struck
// To flush takes no time with it, as no test cuts the power.
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

#include <climits>

namespace {

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

enum class Strike { None, Kill, Stop, Short, Error };

struct Plan {
    std::vector<std::string> folders;
    Strike strike = Strike::None;
    int error = 0;
    long at = 0;
    bool lasting = false;
    bool lacksExchange = false;
    bool lacksLink = false;
    std::string onlyCall;
    int log = -1;
    std::atomic<long> counted = 0;

    Plan() {
        const std::string below = Variable("LINTARA_FAULT_BELOW");
        for (std::size_t begin = 0; begin < below.size();) {
            const std::size_t end = std::min(below.find(':', begin), below.size());
            folders.push_back(below.substr(begin, end - begin));
            begin = end + 1;
        }
        at = std::atol(Variable("LINTARA_FAULT_AT").c_str());
        const std::string kind = Variable("LINTARA_FAULT");
        error = std::atoi(kind.c_str());
        strike = at == 0           ? Strike::None
                 : kind == "kill"  ? Strike::Kill
                 : kind == "stop"  ? Strike::Stop
                 : kind == "short" ? Strike::Short
                                   : Strike::Error;
        onlyCall = Variable("LINTARA_FAULT_CALL");
        lasting = !Variable("LINTARA_FAULT_LASTING").empty();
        lacksExchange = Variable("LINTARA_FAULT_LACKS").find("exchange") != std::string::npos;
        lacksLink = Variable("LINTARA_FAULT_LACKS").find("link") != std::string::npos;
        if (const std::string file = Variable("LINTARA_FAULT_LOG"); !file.empty()) {
            log = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, file.c_str(),
                                             O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
        }
    }

    [[nodiscard]] bool Concerns(const std::string& path) const {
        return std::ranges::any_of(folders, [&](const std::string& folder) {
            return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
        });
    }

    void Tell(std::string_view call, const std::string& path, bool struck) const {
        if (log >= 0) {
            const std::string line = (struck ? "! " : "") + std::string(call) + " " + path + "\n";
            (void)!::syscall(SYS_write, log, line.data(), line.size());
        }
    }
};

// It is never destroyed: programs make calls until their last moment, as those do that count their lines.
Plan& ThePlan() {
    static Plan& plan = *new Plan;
    return plan;
}

// Whether a full disk refuses such a call.
enum class Needs { Nothing, Space };

struct Verdict {
    int error = 0;  // the call fails with it
    bool half = false;
};

Verdict Judge(std::string_view call, const std::string& path, Needs needs, bool writes = false) {
    Plan& plan = ThePlan();
    if (!plan.Concerns(path) || (plan.strike == Strike::Short && !writes) ||
        (plan.onlyCall.empty() ? call == "access" : call != plan.onlyCall)) {
        return {};
    }
    const long number = ++plan.counted;
    const bool later = plan.lasting && number > plan.at && plan.strike == Strike::Error &&
                       (plan.error != ENOSPC || needs == Needs::Space);
    const bool struck = plan.strike != Strike::None && (number == plan.at || later);
    plan.Tell(call, path, struck);
    if (!struck) {
        return {};
    }
    if (plan.strike == Strike::Kill) {
        ::kill(::getpid(), SIGKILL);
        ::pause();
    }
    if (plan.strike == Strike::Stop) {
        ::raise(SIGSTOP);
        return {};
    }
    return plan.strike == Strike::Short ? Verdict{0, true} : Verdict{plan.error, false};
}

std::string PathOf(int descriptor) {
    char path[PATH_MAX];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t size = ::readlink(link.c_str(), path, sizeof path);
    return size < 0 ? "" : std::string(path, static_cast<std::size_t>(size));
}

std::string PathOf(int folder, const char* path) {
    if (path == nullptr || path[0] == '/') {
        return path == nullptr ? "" : path;
    }
    char current[PATH_MAX];
    const std::string above = folder != AT_FDCWD                             ? PathOf(folder)
                              : ::getcwd(current, sizeof current) != nullptr ? current
                                                                             : "";
    return above + "/" + path;
}

std::string PathOf(const char* path) {
    return PathOf(AT_FDCWD, path);
}

template <class Function>
Function* Real(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

// Makes the call unless it is struck.
template <class Call>
auto Made(const Verdict& verdict, const Call& call) -> decltype(call()) {
    if (verdict.error != 0) {
        errno = verdict.error;
        return -1;
    }
    return call();
}

// Of a call that concerns two paths, the one that is below the folders.
std::string EitherOf(std::string one, std::string other) {
    return ThePlan().Concerns(one) ? one : other;
}

std::size_t Part(const Verdict& verdict, std::size_t size) {
    return verdict.half ? std::max<std::size_t>(size / 2, std::min<std::size_t>(size, 1)) : size;
}

template <class Open>
int OpenFile(const char* name, const std::string& path, int flags, const Open& open) {
    const bool changes = (flags & (O_CREAT | O_TRUNC)) != 0;
    return changes ? Made(Judge(name, path, Needs::Space), open) : open();
}

mode_t ModeOf(int flags, va_list arguments) {
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return makes ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

}  // namespace

extern "C" {

#define LINTARA_OPEN(name)                                                                           \
    int name(const char* path, int flags, ...) {                                                     \
        va_list arguments;                                                                           \
        va_start(arguments, flags);                                                                  \
        const mode_t mode = ModeOf(flags, arguments);                                                \
        va_end(arguments);                                                                           \
        return OpenFile(#name, PathOf(path), flags,                                                  \
                        [&] { return Real<int(const char*, int, ...)>(#name)(path, flags, mode); }); \
    }
LINTARA_OPEN(open)
LINTARA_OPEN(open64)

#define LINTARA_OPENAT(name)                                                                \
    int name(int folder, const char* path, int flags, ...) {                                \
        va_list arguments;                                                                  \
        va_start(arguments, flags);                                                         \
        const mode_t mode = ModeOf(flags, arguments);                                       \
        va_end(arguments);                                                                  \
        return OpenFile(#name, PathOf(folder, path), flags, [&] {                           \
            return Real<int(int, const char*, int, ...)>(#name)(folder, path, flags, mode); \
        });                                                                                 \
    }
LINTARA_OPENAT(openat)
LINTARA_OPENAT(openat64)

// The C library opens the file of these by itself.
int mkostemps(char* name, int suffix, int flags) {
    return Made(Judge("mkostemps", PathOf(name), Needs::Space),
                [&] { return Real<int(char*, int, int)>("mkostemps")(name, suffix, flags); });
}
int mkstemp(char* name) {
    return Made(Judge("mkstemp", PathOf(name), Needs::Space),
                [&] { return Real<int(char*)>("mkstemp")(name); });
}
#define LINTARA_FOPEN(name)                                                                             \
    FILE* name(const char* path, const char* mode) {                                                    \
        if (std::strpbrk(mode, "wa+") != nullptr) {                                                     \
            if (const Verdict verdict = Judge(#name, PathOf(path), Needs::Space); verdict.error != 0) { \
                errno = verdict.error;                                                                  \
                return nullptr;                                                                         \
            }                                                                                           \
        }                                                                                               \
        return Real<FILE*(const char*, const char*)>(#name)(path, mode);                                \
    }
LINTARA_FOPEN(fopen)
LINTARA_FOPEN(fopen64)

ssize_t write(int file, const void* bytes, size_t size) {
    const Verdict verdict = Judge("write", PathOf(file), Needs::Space, true);
    return Made(verdict, [&] {
        return Real<ssize_t(int, const void*, size_t)>("write")(file, bytes, Part(verdict, size));
    });
}

#define LINTARA_PWRITE(name, Offset)                                                                        \
    ssize_t name(int file, const void* bytes, size_t size, Offset at) {                                     \
        const Verdict verdict = Judge(#name, PathOf(file), Needs::Space, true);                             \
        return Made(verdict, [&] {                                                                          \
            return Real<ssize_t(int, const void*, size_t, Offset)>(#name)(file, bytes, Part(verdict, size), \
                                                                          at);                              \
        });                                                                                                 \
    }
LINTARA_PWRITE(pwrite, off_t)
LINTARA_PWRITE(pwrite64, off64_t)

ssize_t writev(int file, const iovec* parts, int count) {
    const Verdict verdict = Judge("writev", PathOf(file), Needs::Space, true);
    return Made(verdict, [&] {
        return Real<ssize_t(int, const iovec*, int)>("writev")(file, parts, verdict.half ? 1 : count);
    });
}

ssize_t copy_file_range(int from, off64_t* at, int to, off64_t* toAt, size_t size, unsigned flags) {
    const Verdict verdict = Judge("copy_file_range", PathOf(to), Needs::Space, true);
    return Made(verdict, [&] {
        return Real<ssize_t(int, off64_t*, int, off64_t*, size_t, unsigned)>("copy_file_range")(
            from, at, to, toAt, Part(verdict, size), flags);
    });
}

#define LINTARA_SENDFILE(name, Offset)                                                                 \
    ssize_t name(int to, int from, Offset* at, size_t size) {                                          \
        const Verdict verdict = Judge(#name, PathOf(to), Needs::Space, true);                          \
        return Made(verdict, [&] {                                                                     \
            return Real<ssize_t(int, int, Offset*, size_t)>(#name)(to, from, at, Part(verdict, size)); \
        });                                                                                            \
    }
LINTARA_SENDFILE(sendfile, off_t)
LINTARA_SENDFILE(sendfile64, off64_t)

int fsync(int file) {
    return Made(Judge("fsync", PathOf(file), Needs::Nothing), [] { return 0; });
}
int fdatasync(int file) {
    return Made(Judge("fdatasync", PathOf(file), Needs::Nothing), [] { return 0; });
}
int syncfs(int file) noexcept {
    return Made(Judge("syncfs", PathOf(file), Needs::Nothing), [] { return 0; });
}

#define LINTARA_FTRUNCATE(name, Offset)                                         \
    int name(int file, Offset size) noexcept {                                  \
        return Made(Judge(#name, PathOf(file), Needs::Space),                   \
                    [&] { return Real<int(int, Offset)>(#name)(file, size); }); \
    }
LINTARA_FTRUNCATE(ftruncate, off_t)
LINTARA_FTRUNCATE(ftruncate64, off64_t)

// Calls with one path, or a folder and a path in it.
#define LINTARA_ON_PATH(name, needs, parameters, arguments, place, quality)                             \
    int name parameters quality {                                                                       \
        return Made(Judge(#name, place, needs), [&] { return Real<int parameters>(#name) arguments; }); \
    }
LINTARA_ON_PATH(access, Needs::Nothing, (const char* path, int mode), (path, mode), PathOf(path), noexcept)
LINTARA_ON_PATH(unlink, Needs::Nothing, (const char* path), (path), PathOf(path), noexcept)
LINTARA_ON_PATH(unlinkat, Needs::Nothing, (int folder, const char* path, int flags), (folder, path, flags),
                PathOf(folder, path), noexcept)
LINTARA_ON_PATH(remove, Needs::Nothing, (const char* path), (path), PathOf(path), noexcept)
LINTARA_ON_PATH(rmdir, Needs::Nothing, (const char* path), (path), PathOf(path), noexcept)
LINTARA_ON_PATH(mkdir, Needs::Space, (const char* path, mode_t mode), (path, mode), PathOf(path), noexcept)
LINTARA_ON_PATH(mkdirat, Needs::Space, (int folder, const char* path, mode_t mode), (folder, path, mode),
                PathOf(folder, path), noexcept)
LINTARA_ON_PATH(chmod, Needs::Nothing, (const char* path, mode_t mode), (path, mode), PathOf(path), noexcept)
LINTARA_ON_PATH(fchmod, Needs::Nothing, (int file, mode_t mode), (file, mode), PathOf(file), noexcept)
LINTARA_ON_PATH(fchmodat, Needs::Nothing, (int folder, const char* path, mode_t mode, int flags),
                (folder, path, mode, flags), PathOf(folder, path), noexcept)
LINTARA_ON_PATH(fchown, Needs::Nothing, (int file, uid_t user, gid_t group), (file, user, group),
                PathOf(file), noexcept)
LINTARA_ON_PATH(fsetxattr, Needs::Space,
                (int file, const char* name, const void* value, size_t size, int flags),
                (file, name, value, size, flags), PathOf(file), noexcept)
LINTARA_ON_PATH(utimensat, Needs::Nothing, (int folder, const char* path, const timespec* times, int flags),
                (folder, path, times, flags), PathOf(folder, path), noexcept)
LINTARA_ON_PATH(futimens, Needs::Nothing, (int file, const timespec* times), (file, times), PathOf(file),
                noexcept)
LINTARA_ON_PATH(symlink, Needs::Space, (const char* target, const char* path), (target, path), PathOf(path),
                noexcept)
LINTARA_ON_PATH(rename, Needs::Nothing, (const char* from, const char* to), (from, to),
                EitherOf(PathOf(to), PathOf(from)), noexcept)
LINTARA_ON_PATH(renameat, Needs::Nothing, (int folder, const char* from, int other, const char* to),
                (folder, from, other, to), EitherOf(PathOf(other, to), PathOf(folder, from)), noexcept)

int renameat2(int folder, const char* from, int other, const char* to, unsigned flags) noexcept {
    if ((flags & RENAME_EXCHANGE) != 0 && ThePlan().lacksExchange) {
        errno = EINVAL;
        return -1;
    }
    return Made(Judge("renameat2", EitherOf(PathOf(other, to), PathOf(folder, from)), Needs::Nothing), [&] {
        return Real<int(int, const char*, int, const char*, unsigned)>("renameat2")(folder, from, other, to,
                                                                                    flags);
    });
}

int link(const char* from, const char* to) noexcept {
    if (ThePlan().lacksLink) {
        errno = EPERM;
        return -1;
    }
    return Made(Judge("link", PathOf(to), Needs::Space),
                [&] { return Real<int(const char*, const char*)>("link")(from, to); });
}

int linkat(int folder, const char* from, int other, const char* to, int flags) noexcept {
    return Made(Judge("linkat", PathOf(other, to), Needs::Space), [&] {
        return Real<int(int, const char*, int, const char*, int)>("linkat")(folder, from, other, to, flags);
    });
}

}  // extern "C"
