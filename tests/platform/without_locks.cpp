#include "tests/platform/without_locks.h"

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace lintara::support {
namespace {

struct Refusal {
    int error = 0;
    WithoutLocks::Of files = WithoutLocks::Of::AllFiles;
};

// The function below is the whole program's, and so is what it is to do.
std::optional<Refusal> refusal;

bool IsRefused(int descriptor) {
    if (!refusal) {
        return false;
    }
    return refusal->files == WithoutLocks::Of::AllFiles ||
           (::fcntl(descriptor, F_GETFL) & O_ACCMODE) == O_RDONLY;
}

}  // namespace

WithoutLocks::WithoutLocks(int error, Of files) {
    refusal = Refusal{error, files};
}

WithoutLocks::~WithoutLocks() {
    refusal.reset();
}

}  // namespace lintara::support

// Takes the place of the C library's in this program.
extern "C" int flock(int descriptor, int operation) noexcept {
    if (lintara::support::IsRefused(descriptor)) {
        errno = lintara::support::refusal->error;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_flock, descriptor, operation));
}
