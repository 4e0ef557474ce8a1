#include "cli/output/edit_graph.h"

#include <algorithm>
#include <cstdlib>

namespace lintara::cli {

namespace {

constexpr std::int32_t mostEdits = 128;
constexpr std::size_t diagonals = std::size_t{2} * mostEdits + 1;
constexpr std::int32_t unreached = -1;

std::int32_t SizeOf(std::span<const std::uint32_t> lines) {
    constexpr std::size_t most = std::size_t{1} << 29U;
    return static_cast<std::int32_t>(std::min(lines.size(), most));
}

}  // namespace

EditGraph::Way EditGraph::Search(std::span<const std::uint32_t> before,
                                 std::span<const std::uint32_t> after) {
    before_ = before;
    after_ = after;
    beforeSize_ = SizeOf(before);
    afterSize_ = SizeOf(after);
    Place at = GoFar();
    Way way{{}, static_cast<std::size_t>(at.before), static_cast<std::size_t>(at.after())};
    while (true) {
        const Step step = at.edits > 0 ? LastStepTo(at.edits, at.diagonal) : Step{};
        const Place begin{at.edits, at.diagonal, step.before};
        if (begin.before < at.before) {
            way.stayed.push_back({static_cast<std::size_t>(begin.before),
                                  static_cast<std::size_t>(begin.after()),
                                  static_cast<std::size_t>(at.before - begin.before)});
        }
        if (at.edits == 0) {
            break;
        }
        at.diagonal += step.deletes ? -1 : 1;
        --at.edits;
        at.before = Furthest(at.edits, at.diagonal);
    }
    std::ranges::reverse(way.stayed);
    return way;
}

// The end, if the most edits lead to it. Otherwise the place that leaves the fewest lines; of several, the
// one nearest to a comparison line by line.
EditGraph::Place EditGraph::GoFar() {
    furthest_.resize(Slot(mostEdits + 1, -mostEdits));
    Place best;
    for (std::int32_t edits = 0; edits <= mostEdits; ++edits) {
        best = {edits, 0, unreached};
        for (std::int32_t diagonal = -edits; diagonal <= edits; diagonal += 2) {
            Place place{edits, diagonal, edits == 0 ? 0 : LastStepTo(edits, diagonal).before};
            if (place.before != unreached) {
                place.before = AlongEqualLines(place.before, diagonal);
                const bool isBetter =
                    best.before == unreached || place.passed() > best.passed() ||
                    (place.passed() == best.passed() && std::abs(diagonal) < std::abs(best.diagonal));
                best = isBetter ? place : best;
            }
            furthest_[Slot(edits, diagonal)] = place.before;
            if (place.before == beforeSize_ && place.after() == afterSize_) {
                return place;
            }
        }
    }
    return best;
}

// The step that leads furthest on the diagonal, within both sequences.
EditGraph::Step EditGraph::LastStepTo(std::int32_t edits, std::int32_t diagonal) const {
    const std::int32_t left = Furthest(edits - 1, diagonal - 1);
    const std::int32_t above = Furthest(edits - 1, diagonal + 1);
    const std::int32_t byDeletion = left != unreached && left < beforeSize_ ? left + 1 : unreached;
    const std::int32_t byInsertion = above != unreached && above - diagonal <= afterSize_ ? above : unreached;
    return byDeletion > byInsertion ? Step{byDeletion, true} : Step{byInsertion, false};
}

std::int32_t EditGraph::AlongEqualLines(std::int32_t before, std::int32_t diagonal) const {
    while (before < beforeSize_ && before - diagonal < afterSize_ &&
           before_[static_cast<std::size_t>(before)] == after_[static_cast<std::size_t>(before - diagonal)]) {
        ++before;
    }
    return before;
}

std::int32_t EditGraph::Furthest(std::int32_t edits, std::int32_t diagonal) const {
    return std::abs(diagonal) > edits ? unreached : furthest_[Slot(edits, diagonal)];
}

std::size_t EditGraph::Slot(std::int32_t edits, std::int32_t diagonal) {
    return static_cast<std::size_t>(edits) * diagonals + static_cast<std::size_t>(diagonal + mostEdits);
}

}  // namespace lintara::cli
