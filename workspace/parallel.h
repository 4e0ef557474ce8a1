// Work on many independent things, from as many threads as the machine runs at a time.
#pragma once

#include <cstddef>
#include <functional>

namespace lintara::workspace {

// What the work is bound by, which tells how many threads are worth their while.
enum class BoundBy : unsigned char {
    Processor,
    Device,  // each call waits for the disk rather than computes
};

// Calls work(0) to work(count - 1), each once, in no order; returns when all are done. `progress` may be
// empty; it is called from the calling thread now and then with how many are done. What a call throws is
// thrown on when all threads have stopped.
void InParallel(std::size_t count, const std::function<void(std::size_t)>& work,
                const std::function<void(std::size_t done)>& progress = {},
                BoundBy boundBy = BoundBy::Processor);

}  // namespace lintara::workspace
