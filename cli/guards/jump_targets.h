// Line numbers that statements jump to: GoTo, GoSub, Resume, On ... GoTo, If ... Then N Else N.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lintara::cli {

struct Jump {
    std::size_t line = 0;  // the index of the first physical line of the statement's logical line
    std::int64_t number = 0;

    friend bool operator==(const Jump&, const Jump&) = default;
};

// The jumps among `lines`, a procedure from its header to its closing line, to numbers from `lowest` to
// `highest`. Text in quotes and comments jumps nowhere.
[[nodiscard]] std::vector<Jump> FindJumps(std::span<const Text> lines, std::int64_t lowest,
                                          std::int64_t highest);

}  // namespace lintara::cli
