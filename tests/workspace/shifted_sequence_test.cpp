#include "workspace/shifted_sequence.h"

#include "tests/support/random.h"

#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using support::Random;

struct Mark {
    std::int32_t line = 0;
    void ShiftBy(std::int32_t lines) { line += lines; }
};

using Marks = ShiftedSequence<Mark>;

std::vector<std::int32_t> LinesOf(const Marks& marks) {
    std::vector<std::int32_t> lines;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        lines.push_back(marks.Stored(i).line + marks.PendingShift(i));
    }
    return lines;
}

using Lines = std::vector<std::int32_t>;

TEST(ShiftedSequence, WhatStandsBehindAPlaceMoves) {
    Marks marks({{1}, {5}, {9}});
    marks.MoveShiftTo(1);
    marks.Shift(10);
    EXPECT_EQ(LinesOf(marks), (Lines{1, 15, 19}));
    marks.MoveShiftTo(2);
    marks.Shift(-4);
    EXPECT_EQ(LinesOf(marks), (Lines{1, 15, 15}));
    marks.MoveShiftTo(0);
    marks.Shift(100);
    EXPECT_EQ(LinesOf(marks), (Lines{101, 115, 115}));
    marks.MoveShiftTo(3);
    marks.Shift(1000);
    EXPECT_EQ(LinesOf(marks), (Lines{101, 115, 115}));
}

TEST(ShiftedSequence, ElementsBelowThePlaceAreStoredAsTheyStand) {
    Marks marks({{1}, {5}, {9}});
    marks.MoveShiftTo(0);
    marks.Shift(10);
    marks.MoveShiftTo(2);
    EXPECT_EQ(marks.Stored(0).line, 11);
    marks.Settled(1).line = 12;
    EXPECT_EQ(LinesOf(marks), (Lines{11, 12, 19}));
}

TEST(ShiftedSequence, ReplacementsStandWhereTheySay) {
    Marks marks({{1}, {5}, {9}, {13}});
    marks.MoveShiftTo(1);
    marks.Shift(10);
    marks.MoveShiftTo(3);
    marks.Replace(1, 3, {{12}, {14}, {16}});
    EXPECT_EQ(LinesOf(marks), (Lines{1, 12, 14, 16, 23}));
    marks.Shift(1);
    EXPECT_EQ(LinesOf(marks), (Lines{1, 12, 14, 16, 24}));
    marks.MoveShiftTo(4);
    marks.Replace(0, 4, {});
    EXPECT_EQ(LinesOf(marks), (Lines{24}));
    marks.MoveShiftTo(1);
    marks.Replace(1, 1, {{30}});
    marks.Shift(5);
    EXPECT_EQ(LinesOf(marks), (Lines{24, 30}));
}

TEST(ShiftedSequence, CountsTheElementsBeforeTheFirstThatFails) {
    Marks marks({{1}, {5}, {9}});
    const auto below = [&](std::int32_t line) {
        return marks.CountWhile([&](std::size_t i) { return LinesOf(marks)[i] < line; });
    };
    EXPECT_EQ(below(1), 0U);
    EXPECT_EQ(below(2), 1U);
    EXPECT_EQ(below(9), 2U);
    EXPECT_EQ(below(10), 3U);
    EXPECT_EQ(Marks().CountWhile([](std::size_t) { return true; }), 0U);
}

TEST(ShiftedSequence, RandomEditsAreThoseOfAVector) {
    for (std::uint64_t seed = 1; seed <= 50; ++seed) {
        Random random(seed);
        Marks marks;
        Lines lines;
        for (int step = 0; step < 200; ++step) {
            const std::size_t end = random.Below(lines.size() + 1);
            const std::size_t begin = random.Below(end + 1);
            std::vector<Mark> added(random.Below(4));
            for (Mark& mark : added) {
                mark.line = static_cast<std::int32_t>(random.Below(1000));
            }
            const auto shift = static_cast<std::int32_t>(random.Below(20)) - 10;
            const auto place = [&](std::size_t i) { return lines.begin() + static_cast<std::ptrdiff_t>(i); };
            for (std::size_t i = end; i < lines.size(); ++i) {
                lines[i] += shift;
            }
            lines.erase(place(begin), place(end));
            for (std::size_t i = 0; i < added.size(); ++i) {
                lines.insert(place(begin + i), added[i].line);
            }
            marks.MoveShiftTo(end);
            marks.Replace(begin, end, added);
            marks.Shift(shift);
            ASSERT_EQ(LinesOf(marks), lines) << "seed " << seed << ", step " << step;
        }
    }
}

}  // namespace
}  // namespace lintara::workspace
