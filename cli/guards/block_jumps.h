// Jumps into a block of lines that is about to come or go: to labels and line numbers in it.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <optional>
#include <span>

namespace lintara::cli {

struct BlockJump {
    std::size_t line = 0;  // the index of the statement's first line
    Text target;           // as the statement writes it

    friend bool operator==(const BlockJump&, const BlockJump&) = default;
};

// The first jump from `lines`, a procedure, outside the lines from `begin` up to, not including, `end` to a
// label or number inside them; those that `others` have, too, do not count. GoTo, GoSub, Resume, On ... GoTo,
// and If ... Then with a number, jump.
[[nodiscard]] std::optional<BlockJump> FindJumpIntoBlock(std::span<const Text> lines, std::size_t begin,
                                                         std::size_t end, std::span<const Text> others = {});

// Whether any of `lines` holds the text of a label or number in `block`: a quick look, which nearly always
// tells that none of them jumps there.
[[nodiscard]] bool MayJumpIntoBlock(std::span<const Text> lines, std::span<const Text> block);

}  // namespace lintara::cli
