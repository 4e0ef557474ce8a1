// What tells whether a file on disk is still the one that was read.
#pragma once

#include <cstdint>

namespace lintara::workspace {

struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modifiedSeconds = 0;
    std::int64_t modifiedNanoseconds = 0;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;

    // Whether both are the same file, whatever was written to it in between.
    [[nodiscard]] bool SameFile(const FileIdentity& other) const {
        return device == other.device && inode == other.inode;
    }
};

}  // namespace lintara::workspace
