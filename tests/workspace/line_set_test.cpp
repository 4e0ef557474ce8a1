#include "workspace/line_set.h"

#include "tests/support/random.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using support::Random;

LineSet SetOf(std::int32_t lineCount, const std::vector<std::int32_t>& lines) {
    LineSet set(lineCount);
    for (const std::int32_t line : lines) {
        set.Insert(Line{line});
    }
    return set;
}

std::vector<std::int32_t> LinesOf(const LineSet& set) {
    std::vector<std::int32_t> lines;
    for (auto line = set.NextFrom(Line{1}); line; line = set.NextFrom(*line + 1)) {
        lines.push_back(line->value());
    }
    return lines;
}

using Lines = std::vector<std::int32_t>;

TEST(LineSet, HoldsEachLineOnceInOrder) {
    EXPECT_EQ(LinesOf(SetOf(9, {})), Lines{});
    EXPECT_EQ(LinesOf(SetOf(9, {5, 1, 9, 5, 3})), (Lines{1, 3, 5, 9}));
}

TEST(LineSet, TellsTheNextLine) {
    const LineSet set = SetOf(20, {5, 9, 7});
    EXPECT_EQ(set.NextFrom(Line{-1}), Line{5});
    EXPECT_EQ(set.NextFrom(Line{5}), Line{5});
    EXPECT_EQ(set.NextFrom(Line{6}), Line{7});
    EXPECT_EQ(set.NextFrom(Line{10}), std::nullopt);
    EXPECT_TRUE(set.Contains(Line{9}));
    EXPECT_FALSE(set.Contains(Line{8}));
}

TEST(LineSet, ErasesWhatIsThere) {
    LineSet set = SetOf(9, {1, 3, 5});
    set.Erase(Line{3});
    set.Erase(Line{4});
    set.Erase(Line{9});
    EXPECT_EQ(LinesOf(set), (Lines{1, 5}));
}

TEST(LineSet, MovesWhatStandsBehindAnEdit) {
    LineSet set = SetOf(9, {1, 3, 5, 9});
    set.LinesMoved(Line{3}, 0, 2);
    EXPECT_EQ(LinesOf(set), (Lines{1, 5, 7, 11}));
    set.LinesMoved(Line{12}, 0, 4);
    EXPECT_EQ(LinesOf(set), (Lines{1, 5, 7, 11}));
    set.LinesMoved(Line{1}, 0, 1);
    EXPECT_EQ(LinesOf(set), (Lines{2, 6, 8, 12}));
}

TEST(LineSet, LosesTheLinesThatAreRemoved) {
    LineSet set = SetOf(9, {1, 3, 5, 9});
    set.LinesMoved(Line{3}, 3, 1);
    EXPECT_EQ(LinesOf(set), (Lines{1, 7}));
    set.LinesMoved(Line{1}, 7, 0);
    EXPECT_EQ(LinesOf(set), Lines{});
}

TEST(LineSet, RandomEditsLeaveWhatAPlainListHolds) {
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        Random random(seed);
        std::vector<bool> module(random.Below(30));
        LineSet set(static_cast<std::int32_t>(module.size()));
        for (int step = 0; step < 100; ++step) {
            const std::size_t at = random.Below(module.size() + 1);
            const Line line{static_cast<std::int32_t>(at) + 1};
            if (at < module.size() && random.Chance(60)) {
                module[at] = random.Chance(60);
                module[at] ? set.Insert(line) : set.Erase(line);
            } else {
                const std::size_t removed = std::min(random.Below(4), module.size() - at);
                const std::size_t added = random.Below(4);
                const auto place = module.begin() + static_cast<std::ptrdiff_t>(at);
                module.erase(place, place + static_cast<std::ptrdiff_t>(removed));
                module.insert(module.begin() + static_cast<std::ptrdiff_t>(at), added, false);
                set.LinesMoved(line, static_cast<std::int32_t>(removed), static_cast<std::int32_t>(added));
            }
            Lines expected;
            for (std::size_t i = 0; i < module.size(); ++i) {
                if (module[i]) {
                    expected.push_back(static_cast<std::int32_t>(i) + 1);
                }
            }
            ASSERT_EQ(LinesOf(set), expected) << "seed " << seed << ", step " << step;
        }
    }
}

}  // namespace
}  // namespace lintara::workspace
