// The guards by themselves, where a whole procedure would say less.
#include "cli/guards/jump_targets.h"
#include "cli/guards/lines_to_keep.h"
#include "cli/guards/range_guard.h"
#include "cli/guards/unnumberable_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Text> Numbered(int count, int base, int step, int limit) {
    std::vector<Text> lines;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(base + i * step) + ": ";
        lines.push_back(i < limit ? Text(number.begin(), number.end()) + u"x" : Text(u"          x"));
    }
    return lines;
}

std::size_t LimitOf(const std::vector<Text>& lines) {
    std::vector<NumberedLine> numbered;
    FindNumberedLines(lines, numbered);
    return FirstLineBeyondLimit(lines, numbered);
}

TEST(FirstLineBeyondLimit, FollowsFromTheStepThatTheNumbersShow) {
    EXPECT_EQ(LimitOf(Numbered(10, 10000, 10000, 6)), 6U) << "6 times 10000 is beyond 55535";
    EXPECT_EQ(LimitOf(Numbered(10, 10000, 55534, 2)), 2U);
    EXPECT_EQ(LimitOf(Numbered(5, 10000, 5, 5)), 5U);
}

TEST(FirstLineBeyondLimit, IsNeverAboveTheLastNumber) {
    std::vector<Text> lines = Numbered(6, 10000, 20000, 3);
    lines.insert(lines.begin() + 2, 3, u"added");
    EXPECT_EQ(LimitOf(lines), 6U) << "the third number stands on line 5 now";
}

TEST(FirstLineBeyondLimit, IsUnknownWithoutTwoNumbersInOrder) {
    EXPECT_EQ(LimitOf({u"10000: x", u"          y"}), 2U);
    EXPECT_EQ(LimitOf({u"10005: x", u"10000: x", u"          y"}), 3U);
    EXPECT_EQ(LimitOf({u"10000: x", u"y", u"10005: x", u"          y"}), 4U);
    EXPECT_EQ(LimitOf({}), 0U);
}

std::vector<Jump> Jumps(std::vector<Text> lines) {
    return FindJumps(lines, 1, 99999);
}

TEST(FindJumps, NamesTheFirstLineOfTheStatement) {
    EXPECT_THAT(Jumps({u"x", u"GoTo _", u" 10", u"GoTo 20"}), ElementsAre(Jump{1, 10}, Jump{3, 20}));
}

TEST(FindJumps, ReadsEveryFormOfAJump) {
    EXPECT_THAT(Jumps({u"GoTo 1: GoSub 2: Go To 3: Go Sub 4: Resume 5"}),
                ElementsAre(Jump{0, 1}, Jump{0, 2}, Jump{0, 3}, Jump{0, 4}, Jump{0, 5}));
    EXPECT_THAT(Jumps({u"If a Then 1 Else 2", u"ElseIf b Then 3"}),
                ElementsAre(Jump{0, 1}, Jump{0, 2}, Jump{1, 3}));
    EXPECT_THAT(Jumps({u"On f(7) GoTo 1,lab , 2 ,3: x = 4"}),
                ElementsAre(Jump{0, 1}, Jump{0, 2}, Jump{0, 3}));
    EXPECT_THAT(Jumps({u"10: on error goto 0020"}), ElementsAre(Jump{0, 20}));
}

TEST(FindJumps, SeesNoneInOtherText) {
    EXPECT_THAT(Jumps({u"x = \"GoTo 1\" & \"\"\"GoTo 2\"", u"' GoTo 3", u"Rem GoTo 4", u"a.GoTo 5",
                       u"b!Resume 6", u"GoToX 7", u"MyGoTo 8", u"GoTo lab9", u"GoTo 9lab", u"GoTo -10",
                       u"Resume Next 11", u"For i = 1 To 12", u"x = 13", u"GoTo lab, 14x"}),
                IsEmpty());
}

TEST(FindJumps, LeavesOutWhatLiesOutsideTheBounds) {
    EXPECT_THAT(
        FindJumps(std::vector<Text>{u"GoTo 9: GoTo 10: GoTo 20: GoTo 21", u"GoTo 99999999999999999999"}, 10,
                  20),
        ElementsAre(Jump{0, 10}, Jump{0, 20}));
}

std::vector<std::size_t> Unnumberable(std::vector<Text> lines) {
    std::vector<std::size_t> indexes;
    FindUnnumberableLines(lines, indexes);
    return indexes;
}

TEST(FindUnnumberableLines, KnowsDirectivesFromDatesAndChannels) {
    EXPECT_THAT(Unnumberable({u"#If A Then", u"#1/2/2003# = x", u"# Const B = 1", u"Print #1, x",
                              u"#ElseIf C", u"\t#else ' x", u"#EndIf", u"#elsewhere"}),
                ElementsAre(0, 2, 4, 5, 6));
}

TEST(FindUnnumberableLines, FollowsNestedSelectsAndDirectives) {
    EXPECT_THAT(Unnumberable({u"Select Case a", u"Case 1", u"Select Case b", u"Case 2", u"Case 3",
                              u"End Select", u"Case 4", u"End Select"}),
                ElementsAre(1, 3));
    EXPECT_THAT(Unnumberable({u"Select Case a", u"#If X Then", u"Case 1", u"#End If", u"Case 2", u"Case 3"}),
                ElementsAre(1, 2, 3, 4))
        << "without X, Case 2 is the first";
    EXPECT_THAT(
        Unnumberable({u"#If X Then", u"Select Case a", u"#Else", u"Select Case b", u"#End If", u"Case 1"}),
        ElementsAre(0, 2, 4, 5));
    EXPECT_THAT(Unnumberable({u"#End If", u"#Else", u"Case 1"}), ElementsAre(0, 1));
}

TEST(FindUnnumberableLines, KnowsSelectsInOneLine) {
    EXPECT_THAT(Unnumberable({u"Select Case a: Case 1", u"Case 2"}), IsEmpty());
    EXPECT_THAT(Unnumberable({u"SelectCase a", u"Case 1", u"x.Select Case", u"Case 2"}), IsEmpty());
}

TEST(RangesToVisit, LeavesOutWhatHasNoLines) {
    const transform::ProcedureRanges ranges{.Start1 = Line(5),
                                            .End1 = Line(9),
                                            .Found = true,
                                            .Start2 = Line(12),
                                            .End2 = Line(12),
                                            .Start3 = Line(2),
                                            .End3 = Line(4)};
    EXPECT_THAT(RangesToVisit(ranges), ElementsAre(LineRange{Line(2), Line(4)}, LineRange{Line(5), Line(9)}));
    EXPECT_THAT(RangesToVisit({}), IsEmpty());
    EXPECT_THAT(RangesToVisit({.Start1 = Line(5),
                               .End1 = Line(1),
                               .Found = true,
                               .Start2 = {},
                               .End2 = Line(3),
                               .Start3 = {},
                               .End3 = {}}),
                IsEmpty());
}

}  // namespace
}  // namespace lintara::cli
