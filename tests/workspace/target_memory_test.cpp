#include "workspace/target_memory.h"

#include "workspace/encoding.h"

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using hostmodel::FindOptions;

constexpr FindOptions Plain{};
constexpr FindOptions Word{.wholeWord = true, .matchCase = false, .patternSearch = false};
constexpr FindOptions Case{.wholeWord = false, .matchCase = true, .patternSearch = false};
constexpr FindOptions Pattern{.wholeWord = false, .matchCase = false, .patternSearch = true};

using Lines = std::optional<std::vector<std::int32_t>>;

// A module of eight lines and the memory of its searches.
class TargetMemoryTest : public testing::Test {
  protected:
    Lines LinesOf(TextView target, FindOptions options = Plain) {
        const auto known = memory_.LinesOf(target, options);
        if (!known) {
            return std::nullopt;
        }
        std::vector<std::int32_t> lines;
        for (auto line = known->lines.NextFrom(Line{1}); line; line = known->lines.NextFrom(*line + 1)) {
            lines.push_back(line->value());
        }
        return lines;
    }

    Lines LearnedLinesOf(TextView target, FindOptions options = Plain) {
        memory_.SearchRead(target, options, lines_.count());
        return LinesOf(target, options);
    }

    void Replace(std::int32_t line, TextView text) {
        lines_.Replace(Line{line}, text);
        memory_.TextChanged(Line{line}, text);
    }

    LineBuffer lines_{"foo\nbar\nFoo food\nbar\nafoo\nbar\nfo\nbar\n", 0, DefaultEncoding()};
    TargetMemory memory_{lines_};
};

TEST_F(TargetMemoryTest, LearnsATargetOnceItsSearchesHaveReadAModule) {
    EXPECT_EQ(LinesOf(u"foo"), std::nullopt);
    memory_.SearchRead(u"foo", Plain, 5);
    EXPECT_EQ(LinesOf(u"foo"), std::nullopt);
    memory_.SearchRead(u"foo", Plain, 3);
    EXPECT_EQ(LinesOf(u"foo"), (Lines{{1, 3, 5}}));
    EXPECT_EQ(LinesOf(u"bar"), std::nullopt);
}

TEST_F(TargetMemoryTest, TellsTargetsApartByTheirOptions) {
    EXPECT_EQ(LearnedLinesOf(u"foo", Word), (Lines{{1, 3}}));
    EXPECT_EQ(LinesOf(u"foo", Case), std::nullopt);
    EXPECT_EQ(LearnedLinesOf(u"foo", Case), (Lines{{1, 3, 5}}));
    EXPECT_EQ(LearnedLinesOf(u"Foo", Case), (Lines{{3}}));
    EXPECT_EQ(LearnedLinesOf(u"f*d", Pattern), (Lines{{3}}));
    EXPECT_EQ(LearnedLinesOf(u"absent"), Lines(std::in_place));
    EXPECT_EQ(LinesOf(u"foo", Word), (Lines{{1, 3}}));
}

TEST_F(TargetMemoryTest, FollowsTheEdits) {
    EXPECT_EQ(LearnedLinesOf(u"foo"), (Lines{{1, 3, 5}}));
    Replace(2, u"FOO");
    Replace(3, u"none");
    Replace(5, u"foo still");
    EXPECT_EQ(LinesOf(u"foo"), (Lines{{1, 2, 5}}));

    const std::array<TextView, 2> inserted{u"new", u"new foo"};
    lines_.Insert(Line{2}, inserted);
    memory_.LinesMoved(Line{2}, 0, 2);
    memory_.TextChanged(Line{2}, inserted[0]);
    memory_.TextChanged(Line{3}, inserted[1]);
    EXPECT_EQ(LinesOf(u"foo"), (Lines{{1, 3, 4, 7}}));

    lines_.Delete(Line{4}, 2);
    memory_.LinesMoved(Line{4}, 2, 0);
    EXPECT_EQ(LinesOf(u"foo"), (Lines{{1, 3, 5}}));
}

TEST_F(TargetMemoryTest, ForgetsATargetThatIsNotSoughtForLong) {
    EXPECT_EQ(LearnedLinesOf(u"foo"), (Lines{{1, 3, 5}}));
    for (std::int32_t i = 0; i < lines_.count(); ++i) {
        Replace(2, u"x");
    }
    EXPECT_EQ(LinesOf(u"foo"), (Lines{{1, 3, 5}}));
    for (std::int32_t i = 0; i <= lines_.count(); ++i) {
        Replace(2, u"foo");
    }
    EXPECT_EQ(LinesOf(u"foo"), std::nullopt);
    EXPECT_EQ(LearnedLinesOf(u"foo"), (Lines{{1, 2, 3, 5}}));
}

TEST_F(TargetMemoryTest, KeepsTheTargetsThatWereLastUsed) {
    EXPECT_NE(LearnedLinesOf(u"bar"), std::nullopt);
    EXPECT_NE(LearnedLinesOf(u"foo"), std::nullopt);
    for (int i = 0; i < 20; ++i) {
        EXPECT_NE(LinesOf(u"foo"), std::nullopt) << i;
        EXPECT_NE(LearnedLinesOf(u"other" + FromUtf8(std::to_string(i))), std::nullopt);
    }
    EXPECT_EQ(LinesOf(u"bar"), std::nullopt);
    memory_.Forget();
    EXPECT_EQ(LinesOf(u"foo"), std::nullopt);
}

TEST_F(TargetMemoryTest, DoesNotKeepEndlessTargets) {
    EXPECT_EQ(LearnedLinesOf(Text(2000, u'a')), std::nullopt);
}

}  // namespace
}  // namespace lintara::workspace
