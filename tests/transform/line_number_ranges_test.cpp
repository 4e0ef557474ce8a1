// The numbering of a range of lines, on a module that is nothing but lines.

#include "tests/support/scripted_module.h"
#include "transform/line_numbers.h"

#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using support::ScriptedModule;

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

Line EndOf(const ScriptedModule& module) {
    return Line{static_cast<std::int32_t>(module.lines.size()) + 1};
}

// A raw string without the line break that it begins with.
std::string_view Raw(std::string_view source) {
    return source.substr(1);
}

void Insert(ScriptedModule& module, std::int32_t base = 10000, std::int32_t step = 5) {
    InsertLineNumbersInRange(module, Line{1}, EndOf(module), base, step);
}

void Remove(ScriptedModule& module) {
    RemoveLineNumbersInRange(module, Line{1}, EndOf(module));
}

void ExpectNumbered(std::string_view before, std::string_view after, std::int32_t base = 10000,
                    std::int32_t step = 5) {
    ScriptedModule module(Raw(before));
    Insert(module, base, step);
    EXPECT_EQ(module.text(), Raw(after));
}

void ExpectUnnumbered(std::string_view before, std::string_view after) {
    ScriptedModule module(Raw(before));
    Remove(module);
    EXPECT_EQ(module.text(), Raw(after));
}

TEST(InsertLineNumbersTest, ANumberIsTheBaseAndTheStepForEachLineOfTheBody) {
    ExpectNumbered(R"(
    Dim x As Long
    x = 1
    x = 2
    x = 3
)",
                   R"(
10000:     Dim x As Long
10005:     x = 1
10010:     x = 2
10015:     x = 3
)");
}

TEST(InsertLineNumbersTest, LinesOutsideTheRangeStay) {
    ScriptedModule module("Sub A()\n    x\nEnd Sub\n");
    InsertLineNumbersInRange(module, Line{2}, Line{3}, 10000, 1);
    EXPECT_EQ(module.text(), "Sub A()\n10000:     x\nEnd Sub\n");
}

TEST(InsertLineNumbersTest, BlankLinesTakeNoNumberButCount) {
    ExpectNumbered(R"(
x

    
y
)",
                   R"(
10000: x

    
10015: y
)");
}

TEST(InsertLineNumbersTest, ALineOfATabIsNotBlank) {
    ExpectNumbered("\n\t\n", "\n10000: \t\n");
}

TEST(InsertLineNumbersTest, CommentLinesAreNumberedLikeStatements) {
    ExpectNumbered(R"(
    ' what follows
    Rem and more
)",
                   R"(
10000:     ' what follows
10005:     Rem and more
)");
}

TEST(InsertLineNumbersTest, AnUncommonCommentWithAColonAndNoBlankKeepsItsLabelLook) {
    ExpectNumbered("\n'TODO:x\nx\n", "\n'TODO:x\n10005: x\n");
}

TEST(InsertLineNumbersTest, LabelLinesStayAndTheirNumberIsLeftOut) {
    ExpectNumbered(R"(
    x = 1
hErr:
hErr2: y = 2
x=1:y=2
: z
    Resume
)",
                   R"(
10000:     x = 1
hErr:
hErr2: y = 2
x=1:y=2
: z
10025:     Resume
)");
}

TEST(InsertLineNumbersTest, ContinuationLinesAreShiftedByTheNumberColumn) {
    ExpectNumbered(R"(
    Call Foo(1, _
             2, _
             3)
    y = 1
)",
                   R"(
10000:     Call Foo(1, _
                    2, _
                    3)
10015:     y = 1
)");
}

TEST(InsertLineNumbersTest, ABlankLineDoesNotEndAContinuation) {
    ExpectNumbered(R"(
    x = 1 + _

        2
    y = 1
)",
                   R"(
10000:     x = 1 + _

               2
10015:     y = 1
)");
}

TEST(InsertLineNumbersTest, AnyLineThatEndsInAnUnderscoreContinues) {
    ExpectNumbered(R"(
x_
y
z _ 
w
)",
                   R"(
10000: x_
       y
10010: z _ 
10015: w
)");
}

TEST(InsertLineNumbersTest, TheLineAfterSelectCaseIsShifted) {
    ExpectNumbered(R"(
    Select Case x
        Case 1
            y = 1
        Case Else
    End Select
)",
                   R"(
10000:     Select Case x
               Case 1
10010:             y = 1
10015:         Case Else
10020:     End Select
)");
}

TEST(InsertLineNumbersTest, ACommentAfterSelectCaseTakesTheShiftAndTheCaseTheNumber) {
    ExpectNumbered(R"(
    Select Case x
        ' the first
        Case 1
)",
                   R"(
10000:     Select Case x
               ' the first
10010:         Case 1
)");
}

TEST(InsertLineNumbersTest, ABlankLineAfterSelectCaseIsPassedOver) {
    ExpectNumbered(R"(
    Select Case x

        Case 1
)",
                   R"(
10000:     Select Case x

               Case 1
)");
}

TEST(InsertLineNumbersTest, AContinuedSelectCaseMarksTheLineAfterItsLastPart) {
    ExpectNumbered(R"(
    Select Case x + _
                y
        Case 1
        Case 2
)",
                   R"(
10000:     Select Case x + _
                       y
               Case 1
10015:         Case 2
)");
}

TEST(InsertLineNumbersTest, ASelectCaseInsideAContinuationMarksNothing) {
    ExpectNumbered(R"(
    x = 1 + _
    Select Case y
    z
)",
                   R"(
10000:     x = 1 + _
           Select Case y
10010:     z
)");
}

TEST(InsertLineNumbersTest, SelectCaseIsRecognisedByItsExactText) {
    ExpectNumbered(R"(
    select case x
        a
    Select  Case x
        b
    Select Case
        c
	Select Case x
        d
    x: Select Case y
        e
)",
                   R"(
10000:     select case x
10005:         a
10010:     Select  Case x
10015:         b
10020:     Select Case
10025:         c
10030: 	Select Case x
10035:         d
10040:     x: Select Case y
10045:         e
)");
}

TEST(InsertLineNumbersTest, ALabelledLineAfterSelectCaseIsShiftedToo) {
    ExpectNumbered("\nSelect Case x\nhere:\nCase 1\n",
                   "\n10000: Select Case x\n       here:\n10010: Case 1\n");
}

TEST(InsertLineNumbersTest, NestedSelectCaseShiftsEachFirstLine) {
    ExpectNumbered(R"(
Select Case x
Select Case y
Case 1
Case 2
)",
                   R"(
10000: Select Case x
       Select Case y
       Case 1
10015: Case 2
)");
}

TEST(InsertLineNumbersTest, InsertingTwiceKeepsTheNumbersAndShiftsContinuationsOnceMore) {
    ExpectNumbered(R"(
10000:     x = 1 + _
               2
10010:     y = 1
)",
                   R"(
10000:     x = 1 + _
                      2
10010:     y = 1
)");
}

TEST(InsertLineNumbersTest, InsertingTwiceShiftsTheLineAfterAnUnnumberedSelectCaseOnceMore) {
    ExpectNumbered(R"(
10000: Select Case x
       Select Case y
       Case 1
10015: Case 2
)",
                   R"(
10000: Select Case x
10005:        Select Case y
              Case 1
10015: Case 2
)");
}

// A number hides the words that it stands in front of: the line after a numbered Select Case is numbered when
// the procedure is numbered again.
TEST(InsertLineNumbersTest, InsertingTwiceNumbersTheLineAfterANumberedSelectCase) {
    ExpectNumbered(R"(
10000:     Select Case x
               Case 1
10010:         Case 2
)",
                   R"(
10000:     Select Case x
10005:                Case 1
10010:         Case 2
)");
}

TEST(InsertLineNumbersTest, NumbersHaveNoFixedWidth) {
    ExpectNumbered("\nx\ny\nz\n", "\n8: x\n9: y\n10: z\n", 8, 1);
    ExpectNumbered("\nx\ny\n", "\n999995: x\n1000000: y\n", 999995, 5);
    ExpectNumbered("\nx\ny\n", "\n-1: x\n0: y\n", -1, 1);
}

TEST(InsertLineNumbersTest, ANegativeStepCountsDownwards) {
    ExpectNumbered("\nx\n\ny\nz\n", "\n10000: x\n\n9980: y\n9970: z\n", 10000, -10);
}

TEST(InsertLineNumbersTest, AStepOfZeroIsRefused) {
    ScriptedModule module("x\ny\n");
    Insert(module, 10000, 0);
    EXPECT_EQ(module.text(), "x\ny\n");
    EXPECT_EQ(module.reads, 0U);
}

TEST(InsertLineNumbersTest, NumberingStopsAtOffset55535) {
    ScriptedModule module;
    module.lines.assign(60'000, u"x");
    Insert(module, 10000, 1);
    EXPECT_EQ(module.lines[55534], u"65534: x");
    EXPECT_EQ(module.lines[55535], u"x");
    EXPECT_EQ(module.replacements, 55535U);
}

TEST(InsertLineNumbersTest, TheLimitIsOnTheOffsetNotOnTheNumber) {
    ScriptedModule module;
    module.lines.assign(4, u"x");
    Insert(module, 1'000'000, 20'000);
    EXPECT_EQ(module.text(), "1000000: x\n1020000: x\n1040000: x\nx\n");
    ScriptedModule exact;
    exact.lines.assign(3, u"x");
    Insert(exact, 0, 55'535);
    EXPECT_EQ(exact.text(), "0: x\nx\nx\n");
}

TEST(InsertLineNumbersTest, PastTheLimitContinuationsAreNotShiftedEither) {
    ExpectNumbered("\nx _\ny\n", "\n0: x _\ny\n", 0, 60'000);
}

TEST(InsertLineNumbersTest, ANegativeStepKnowsNoLimit) {
    ExpectNumbered("\nx\ny\nz\n", "\n0: x\n-50000: y\n-100000: z\n", 0, -50'000);
}

TEST(InsertLineNumbersTest, AnOverflowOfTheNumberLeavesItsLineAlone) {
    ExpectNumbered("\nx\ny _\nz\nw\n", "\n2147483647: x\ny _\n       z\nw\n", Highest, 1);
    ExpectNumbered("\nx\ny\n", "\n-2147483648: x\ny\n", Lowest, -1);
}

TEST(InsertLineNumbersTest, ALastOffsetOutsideTheRangeLetsTheFirstLineBeNumbered) {
    ExpectNumbered("\nx\ny\nz\nw\n", "\n7: x\ny\nz\nw\n", 7, Highest);
    ExpectNumbered("\nx\ny\nz\nw\n", "\n7: x\ny\nz\nw\n", 7, Lowest);
}

TEST(InsertLineNumbersTest, AnOffsetThatReachesTheEndOfTheRangeExactlyEndsTheWalk) {
    ScriptedModule module("x\ny\n");
    InsertLineNumbersInRange(module, Line{1}, Line{3}, 0, Lowest);
    EXPECT_EQ(module.text(), "0: x\n-2147483648: y\n");
}

TEST(InsertLineNumbersTest, ARangeWithoutLinesIsLeftAlone) {
    for (const auto& [start, end] : {std::pair(2, 2), std::pair(2, 1), std::pair(3, 0)}) {
        for (const std::int32_t step : {5, -5}) {
            ScriptedModule module("x\ny\nz\n");
            InsertLineNumbersInRange(module, Line{start}, Line{end}, 10000, step);
            EXPECT_EQ(module.text(), "x\ny\nz\n");
        }
    }
}

TEST(InsertLineNumbersTest, ARangeOfAbsurdSizeStopsAtTheLimit) {
    ScriptedModule module("x\ny\n");
    InsertLineNumbersInRange(module, Line{1}, Line{Highest}, 10000, 1'000);
    EXPECT_EQ(module.text(), "10000: x\ny\n");  // its last offset leaves 32 bits
    InsertLineNumbersInRange(module, Line{Lowest}, Line{Highest}, 10000, 1);
    EXPECT_EQ(module.text(), "10000: x\ny\n");
}

TEST(InsertLineNumbersTest, AnUnreadableLineIsLeftAndTheWalkGoesOn) {
    ScriptedModule module("x _\nunread\ny\nz\n");
    module.lineAt = [&](Line line) -> Result<Text> {
        if (line == Line{2}) {
            return Failure(ErrorNumber::HostFailure, "unreadable");
        }
        return module.lines[static_cast<std::size_t>(line.value()) - 1];
    };
    Insert(module);
    EXPECT_EQ(module.text(), "10000: x _\nunread\n       y\n10015: z\n");
}

TEST(RemoveLineNumbersTest, TakesSevenCharactersOffNumberedLines) {
    ExpectUnnumbered(R"(
10000:     Dim x As Long
10005:     x = 1

10015: y
)",
                     R"(
    Dim x As Long
    x = 1

y
)");
}

TEST(RemoveLineNumbersTest, WithoutANumberNothingChanges) {
    constexpr std::string_view Unnumbered = R"(
       x = 1
hErr:       y = 2
           z
)";
    ExpectUnnumbered(Unnumbered, Unnumbered);
}

TEST(RemoveLineNumbersTest, OneNumberAnywhereMakesTheWholeRangeChange) {
    ExpectUnnumbered(R"(
       x = 1
hErr:       y = 2
10000: z
)",
                     R"(
x = 1
hErr:y = 2
z
)");
}

TEST(RemoveLineNumbersTest, OrdinaryLinesLoseSevenBlanksToo) {
    ExpectUnnumbered("\n10000: x\n            deep = 1\n      six = 1\n",
                     "\nx\n     deep = 1\n      six = 1\n");
}

TEST(RemoveLineNumbersTest, TheWidthIsFixedWhateverTheNumber) {
    ExpectUnnumbered("\n1: x = 10\n", "\n10\n");
    ExpectUnnumbered("\n1000000: x\n", "\n: x\n");
    ExpectUnnumbered("\n100000: x\n", "\n x\n");
}

TEST(RemoveLineNumbersTest, ANumberedLineOfSevenCharactersBecomesEmpty) {
    ExpectUnnumbered("\n10000: \n", "\n\n");
    ExpectUnnumbered("\n1: x = 1\n", "\n1\n");
}

TEST(RemoveLineNumbersTest, ANumberedLineShorterThanSevenCharactersStays) {
    ExpectUnnumbered("\n1: x\n10000:\n10005: y\n", "\n1: x\n10000:\ny\n");
}

TEST(RemoveLineNumbersTest, AnythingTheRuntimeTakesForANumberIsOne) {
    ExpectUnnumbered("\n1.5e3: xy\n&H10: xyz\n", "\nxy\nyz\n");
}

TEST(RemoveLineNumbersTest, LabelsLoseSevenBlanksBehindTheirColon) {
    ExpectUnnumbered(R"(
10000: x
hErr:       y = 2
here:      z
:       w
x=1:        y=2
)",
                     R"(
x
hErr:y = 2
here:      z
:w
x=1: y=2
)");
}

TEST(RemoveLineNumbersTest, OnlyBlanksAreTakenOff) {
    ExpectUnnumbered("\n10000: x\n\t\t\t\t\t\t\ty\n", "\nx\n\t\t\t\t\t\t\ty\n");
}

TEST(RemoveLineNumbersTest, UnchangedLinesAreNotWritten) {
    ScriptedModule module("10000: x\nhere:\ny\n\n");
    Remove(module);
    EXPECT_EQ(module.replacements, 1U);
}

TEST(RemoveLineNumbersTest, ARangeWithoutLinesIsLeftAlone) {
    ScriptedModule module("10000: x\n10005: y\n");
    RemoveLineNumbersInRange(module, Line{2}, Line{2});
    RemoveLineNumbersInRange(module, Line{2}, Line{0});
    EXPECT_EQ(module.text(), "10000: x\n10005: y\n");
    EXPECT_EQ(module.reads, 0U);
}

TEST(RemoveLineNumbersTest, AnUnreadableLineIsLeftAndTheWalkGoesOn) {
    ScriptedModule module("10000: x\n10005: unread\n10010: y\n");
    module.lineAt = [&](Line line) -> Result<Text> {
        if (line == Line{2}) {
            return Failure(ErrorNumber::HostFailure, "unreadable");
        }
        return module.lines[static_cast<std::size_t>(line.value()) - 1];
    };
    Remove(module);
    EXPECT_EQ(module.text(), "x\n10005: unread\ny\n");
}

TEST(RemoveLineNumbersTest, AfterInsertionFromBase10000EveryLineIsAsBefore) {
    constexpr std::string_view Original = R"(
    Dim x As Long, _
        y As Long

    ' a comment
    Select Case x
        Case 1
            Call Foo(1, _

                     2)
        Case Else
hErr:
    End Select
  	tab
)";
    for (const std::int32_t step : {1, 5, 100}) {
        ScriptedModule module(Raw(Original));
        Insert(module, 10000, step);
        ASSERT_NE(module.text(), Raw(Original));
        Remove(module);
        EXPECT_EQ(module.text(), Raw(Original));
    }
}

TEST(RemoveLineNumbersTest, AfterInsertionFromBase1EachLineLosesWhatItsNumberLacks) {
    ScriptedModule module("    first = 1\n    second = 2\n");
    Insert(module, 1, 9);
    ASSERT_EQ(module.text(), "1:     first = 1\n10:     second = 2\n");
    Remove(module);
    EXPECT_EQ(module.text(), "first = 1\n second = 2\n");
}

}  // namespace
}  // namespace lintara::transform
