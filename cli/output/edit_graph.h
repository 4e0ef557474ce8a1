// The shortest way from one sequence of lines to another by deleted and inserted lines, found as Myers
// described it: a place is so many lines of both passed, a step to the right a deleted line, a step down an
// inserted one, and a diagonal step, which costs nothing, a line that stayed. Lines are compared by numbers
// that are equal when their texts are.
//
// The search is bounded: where too many lines changed it ends at the best place reached, and the caller
// begins anew from there. So the time grows with the number of lines alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lintara::cli {

class EditGraph {
  public:
    // So many lines stayed, from these two on.
    struct Run {
        std::size_t before = 0;
        std::size_t after = 0;
        std::size_t count = 0;
    };
    struct Way {
        std::vector<Run> stayed;
        std::size_t before = 0;  // where it ends
        std::size_t after = 0;
    };

    // From the beginning of both to their end, or as far as the search goes; at least one line further.
    // Neither may be empty.
    [[nodiscard]] Way Search(std::span<const std::uint32_t> before, std::span<const std::uint32_t> after);

  private:
    // On a diagonal, the lines passed of the one less those of the other are the same number.
    struct Place {
        std::int32_t edits = 0;
        std::int32_t diagonal = 0;
        std::int32_t before = 0;

        [[nodiscard]] std::int32_t after() const { return before - diagonal; }
        [[nodiscard]] std::int32_t passed() const { return before + after(); }
    };
    struct Step {
        std::int32_t before = 0;
        bool deletes = false;
    };

    [[nodiscard]] Place GoFar();
    [[nodiscard]] Step LastStepTo(std::int32_t edits, std::int32_t diagonal) const;
    [[nodiscard]] std::int32_t AlongEqualLines(std::int32_t before, std::int32_t diagonal) const;
    [[nodiscard]] std::int32_t Furthest(std::int32_t edits, std::int32_t diagonal) const;
    [[nodiscard]] static std::size_t Slot(std::int32_t edits, std::int32_t diagonal);

    std::span<const std::uint32_t> before_;
    std::span<const std::uint32_t> after_;
    std::int32_t beforeSize_ = 0;
    std::int32_t afterSize_ = 0;
    // For each count of edits and each diagonal the lines of the first sequence that can be passed.
    std::vector<std::int32_t> furthest_;
};

}  // namespace lintara::cli
