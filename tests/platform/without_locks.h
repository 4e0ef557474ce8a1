// A file system without locks, as far as this program can tell: while it lives, locking a file fails.
#pragma once

namespace lintara::support {

class WithoutLocks {
  public:
    enum class Of { AllFiles, FilesOpenForReading };

    // The attempts fail with `error`, a value of errno. There may be one object at a time, and no other
    // thread.
    explicit WithoutLocks(int error, Of files = Of::AllFiles);
    ~WithoutLocks();
    WithoutLocks(const WithoutLocks&) = delete;
    WithoutLocks& operator=(const WithoutLocks&) = delete;
};

}  // namespace lintara::support
