// Work that may crash, hang or eat memory, because it reads what others have made with code that trusts it:
// it is done in a process of its own.
#pragma once

#include <chrono>
#include <cstddef>
#include <expected>
#include <functional>
#include <string>

namespace lintara::platform {

struct IsolationLimits {
    std::chrono::milliseconds time = std::chrono::seconds(30);
    std::size_t memory = std::size_t{1} << 30;  // bytes on top of what this process has
    std::size_t answer = std::size_t{1} << 28;  // bytes
};

enum class IsolationFailure {
    Died,          // it crashed, or ran out of memory
    TimedOut,      // and was ended
    AnswerTooBig,  // and was ended
    NotStarted,
};

// What `work` answers. It runs in a copy of this process and can change nothing here; it writes no files, and
// what it prints is thrown away. Call it while no other thread is at work.
[[nodiscard]] std::expected<std::string, IsolationFailure> CallIsolated(
    const std::function<std::string()>& work, const IsolationLimits& limits = {});

}  // namespace lintara::platform
