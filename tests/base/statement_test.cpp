#include "base/statement.h"

#include "base/checked.h"
#include "base/position.h"
#include "base/text.h"

#include <limits>

#include <gtest/gtest.h>

namespace lintara {
namespace {

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

TEST(StatementTest, ASuccessfulCallIsAssigned) {
    Text target = u"before";
    EXPECT_TRUE(Assign(target, Result<Text>(u"after")));
    EXPECT_EQ(target, u"after");
}

TEST(StatementTest, AFailedCallLeavesItsTargetAtTheEarlierValue) {
    Text target = u"before";
    EXPECT_FALSE(Assign(target, Result<Text>(Failure(ErrorNumber::HostFailure, "no"))));
    EXPECT_EQ(target, u"before");
}

TEST(ResultTest, ThenGoesOnWithTheValue) {
    const auto next =
        Then(Result<int>(2), [](int value) -> Result<Text> { return Text(3, u'x').append(value, u'y'); });
    EXPECT_EQ(next, Text(u"xxxyy"));
}

TEST(ResultTest, ThenKeepsTheFirstError) {
    bool called = false;
    const Result<int> failed = Failure(ErrorNumber::Overflow, "too big");
    const auto next = Then(failed, [&](int) -> Result<Text> {
        called = true;
        return Text();
    });
    EXPECT_EQ(next.error(), failed.error());
    EXPECT_FALSE(called);
}

TEST(ResultTest, ThenGoesOnAfterACallWithoutAValue) {
    EXPECT_EQ(Then(Result<void>(), [] { return Result<int>(1); }), 1);
    const Result<void> failed = Failure(ErrorNumber::ObjectNotSet, "none");
    EXPECT_EQ(Then(failed, [] { return Result<void>(); }).error(), failed.error());
}

TEST(CheckedTest, ResultsInsideTheRangeAreExact) {
    EXPECT_EQ(CheckedAdd(Highest - 1, 1), Highest);
    EXPECT_EQ(CheckedSubtract(Lowest + 1, 1), Lowest);
    EXPECT_EQ(CheckedMultiply(-1, Highest), -Highest);
}

TEST(CheckedTest, ResultsOutsideTheRangeAreOverflows) {
    EXPECT_EQ(CheckedAdd(Highest, 1).error().number, ErrorNumber::Overflow);
    EXPECT_EQ(CheckedAdd(Lowest, -1).error().number, ErrorNumber::Overflow);
    EXPECT_EQ(CheckedSubtract(Lowest, 1).error().number, ErrorNumber::Overflow);
    EXPECT_EQ(CheckedMultiply(Lowest, -1).error().number, ErrorNumber::Overflow);
    EXPECT_EQ(CheckedMultiply(65536, 32768).error().number, ErrorNumber::Overflow);
}

TEST(PositionTest, ComparesByLineThenColumn) {
    const Position position{Line{2}, Column{5}};
    EXPECT_LT(position, (Position{Line{2}, Column{6}}));
    EXPECT_LT(position, (Position{Line{3}, Column{1}}));
    EXPECT_GT(position, (Position{Line{1}, Column{99}}));
}

TEST(PositionTest, ARangeOfLinesLeavesOutItsEnd) {
    const LineRange range{Line{3}, Line{5}};
    EXPECT_EQ(range.count(), 2);
    EXPECT_FALSE(range.Contains(Line{2}));
    EXPECT_TRUE(range.Contains(Line{3}));
    EXPECT_TRUE(range.Contains(Line{4}));
    EXPECT_FALSE(range.Contains(Line{5}));
}

}  // namespace
}  // namespace lintara
