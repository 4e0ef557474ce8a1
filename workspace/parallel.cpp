#include "workspace/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace lintara::workspace {

namespace {

// Starting a thread costs about as much as reading a few files.
constexpr std::size_t enoughForAThread = 4;

constexpr std::size_t threadsForDevice = 16;

class Crew {
  public:
    Crew(std::size_t count, const std::function<void(std::size_t)>& work) : count_(count), work_(work) {}

    void Run(const std::function<void(std::size_t)>& progress) {
        try {
            for (std::size_t i = next_++; i < count_; i = next_++) {
                work_(i);
                const std::size_t done = ++done_;
                if (progress) {
                    progress(done);
                }
            }
        } catch (...) {
            const std::scoped_lock lock(mutex_);
            thrown_ = std::current_exception();
            next_ = count_;
        }
    }

    void ThrowOn() const {
        if (thrown_) {
            std::rethrow_exception(thrown_);
        }
    }

  private:
    std::size_t count_;
    const std::function<void(std::size_t)>& work_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<std::size_t> done_ = 0;
    std::mutex mutex_;
    std::exception_ptr thrown_;
};

}  // namespace

void InParallel(std::size_t count, const std::function<void(std::size_t)>& work,
                const std::function<void(std::size_t)>& progress, BoundBy boundBy) {
    Crew crew(count, work);
    const std::size_t processors = std::max<std::size_t>(1, std::thread::hardware_concurrency());
    const std::size_t most = boundBy == BoundBy::Device ? std::max(processors, threadsForDevice) : processors;
    const std::size_t threadCount = std::clamp<std::size_t>(count / enoughForAThread, 1, most);
    {
        std::vector<std::jthread> others;
        for (std::size_t i = 1; i < threadCount; ++i) {
            others.emplace_back([&crew] { crew.Run({}); });
        }
        crew.Run(progress);
    }
    if (progress && count > 0) {
        progress(count);
    }
    crew.ThrowOn();
}

}  // namespace lintara::workspace
