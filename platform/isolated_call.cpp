#ifndef _WIN32

#include "platform/isolated_call.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace lintara::platform {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Stands in front of an answer, with its length, so that half an answer is not taken for one.
using Length = std::uint64_t;

#ifdef __SANITIZE_ADDRESS__
// The sanitizer reserves more than any machine has.
constexpr bool memoryIsLimited = false;
#else
constexpr bool memoryIsLimited = true;
#endif

std::size_t MemoryInUse() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

void Limit(decltype(RLIMIT_CORE) resource, std::size_t amount) {
    rlimit limit{};
    if (::getrlimit(resource, &limit) == 0) {
        limit.rlim_cur = std::min<rlim_t>(amount, limit.rlim_max);
        limit.rlim_max = limit.rlim_cur;
        (void)!::setrlimit(resource, &limit);
    }
}

void LimitThisProcess(const IsolationLimits& limits) {
    Limit(RLIMIT_CORE, 0);
    Limit(RLIMIT_FSIZE, 0);
    Limit(RLIMIT_CPU, static_cast<std::size_t>(limits.time / std::chrono::seconds(1)) + 1);
    if (memoryIsLimited) {
        Limit(RLIMIT_AS, MemoryInUse() + limits.memory);
    }
}

void Silence() {
    const int nowhere = ::open("/dev/null", O_RDWR);
    if (nowhere < 0) {
        ::_exit(1);
    }
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::dup2(nowhere, stream);
    }
}

void ResetSignals() {
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGXCPU, SIGXFSZ, SIGPIPE}) {
        std::signal(signal, SIG_DFL);
    }
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return true;
}

// The other process, from its birth on. It never comes back.
[[noreturn]] void Work(int answerEnd, const std::function<std::string()>& work,
                       const IsolationLimits& limits) {
    ResetSignals();
    Silence();
    LimitThisProcess(limits);
    try {
        const std::string answer = work();
        const Length length = answer.size();
        std::string head(sizeof length, '\0');
        std::memcpy(head.data(), &length, sizeof length);
        ::_exit(WriteAll(answerEnd, head) && WriteAll(answerEnd, answer) ? 0 : 1);
    } catch (...) {
        ::_exit(1);
    }
}

// All that comes until the other end is closed.
std::expected<std::string, IsolationFailure> ReadAnswer(int descriptor, const IsolationLimits& limits) {
    const auto deadline = steady_clock::now() + limits.time;
    std::string bytes;
    std::array<char, 64 * 1024> buffer{};
    while (true) {
        const auto left = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now());
        pollfd ready{.fd = descriptor, .events = POLLIN, .revents = 0};
        const int count = ::poll(&ready, 1, static_cast<int>(std::max<milliseconds::rep>(left.count(), 0)));
        if (count == 0) {
            return std::unexpected(IsolationFailure::TimedOut);
        }
        const ssize_t got = count < 0 ? -1 : ::read(descriptor, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return bytes;
        }
        bytes.append(buffer.data(), static_cast<std::size_t>(got));
        if (bytes.size() > limits.answer + sizeof(Length)) {
            return std::unexpected(IsolationFailure::AnswerTooBig);
        }
    }
}

std::expected<std::string, IsolationFailure> Unpack(std::string bytes) {
    Length length = 0;
    if (bytes.size() < sizeof length) {
        return std::unexpected(IsolationFailure::Died);
    }
    std::memcpy(&length, bytes.data(), sizeof length);
    bytes.erase(0, sizeof length);
    if (bytes.size() != length) {
        return std::unexpected(IsolationFailure::Died);
    }
    return bytes;
}

void End(pid_t process) {
    ::kill(process, SIGKILL);
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

}  // namespace

std::expected<std::string, IsolationFailure> CallIsolated(const std::function<std::string()>& work,
                                                          const IsolationLimits& limits) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::unexpected(IsolationFailure::NotStarted);
    }
    const pid_t process = ::fork();
    if (process == 0) {
        ::close(ends[0]);
        Work(ends[1], work, limits);
    }
    ::close(ends[1]);
    auto answer = process < 0 ? std::unexpected(IsolationFailure::NotStarted) : ReadAnswer(ends[0], limits);
    ::close(ends[0]);
    if (process > 0) {
        End(process);
    }
    return answer ? Unpack(*std::move(answer)) : answer;
}

}  // namespace lintara::platform

#endif
