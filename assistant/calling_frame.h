// The frame in which every public operation of `Lintara` runs: no error reaches the host. Failed host calls
// are dealt with statement by statement inside; what the frame itself stops is an exception, which means that
// memory ran out or that there is a bug. The operation then returns what it had computed by then.
#pragma once

#include "base/statement.h"
#include "hostmodel/screen.h"

#include <memory>
#include <utility>

namespace lintara::assistant {

// Shows the hourglass while it lives. `screen` may be null.
class Hourglass {
  public:
    explicit Hourglass(hostmodel::Screen* screen) : screen_(screen) {
        Show(hostmodel::MousePointer::Hourglass);
    }
    ~Hourglass() { Show(hostmodel::MousePointer::Default); }

    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

  private:
    void Show(hostmodel::MousePointer pointer) noexcept {
        try {
            if (screen_ != nullptr) {
                Attempt(screen_->SetMousePointer(pointer));
            }
        } catch (...) {
            // The pointer's shape is not worth more than the work.
        }
    }

    hostmodel::Screen* screen_;
};

// Runs `body`, which computes its result in the reference that it is given: empty at first.
template <class T, class Body>
[[nodiscard]] T Compute(Body&& body) noexcept {
    T result{};
    try {
        std::forward<Body>(body)(result);
    } catch (...) {
        // `result` is what it was by then.
    }
    return result;
}

// Runs `body` for its effect.
template <class Body>
void Perform(Body&& body) noexcept {
    try {
        std::forward<Body>(body)();
    } catch (...) {
        // What was done by then stays done.
    }
}

}  // namespace lintara::assistant
