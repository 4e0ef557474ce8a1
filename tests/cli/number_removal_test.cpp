// What removal takes out of procedures, and what it leaves alone.
#include "tests/cli/command_run.h"
#include "tests/cli/edited_module.h"
#include "tests/cli/handler_edits.h"
#include "tests/cli/skip_case.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct RemovalCase {
    const char* name;
    const char* before;
    const char* after;
};

void PrintTo(const RemovalCase& c, std::ostream* out) {
    *out << c.name;
}

class Removal : public testing::TestWithParam<RemovalCase> {};

TEST_P(Removal, TakesNumbersOutAndKeepsTheRest) {
    EditedModule module(GetParam().before);
    EXPECT_THAT(SkippedIn(module.Remove()), IsEmpty());
    EXPECT_EQ(module.Code(), GetParam().after);
}

const RemovalCase removalCases[] = {
    {"NumbersAndShiftedLines", "Sub A()\n12345:   x = 1 + _\n           2\n12355: y\nEnd Sub\n",
     "Sub A()\n  x = 1 + _\n    2\ny\nEnd Sub\n"},
    {"BlankLinesStay", "Sub A()\n12345: x\n          \nEnd Sub\n", "Sub A()\nx\n          \nEnd Sub\n"},
    {"DeepCodeBehindALabelStays", "Sub A()\n12345: x\nhere:         y\nEnd Sub\n",
     "Sub A()\nx\nhere:         y\nEnd Sub\n"},
    {"ProcedureWithoutNumbersStays", "Sub A()\n          x\nEnd Sub\n", "Sub A()\n          x\nEnd Sub\n"},
    {"TextThatLooksLikeANumberStays", "Sub A()\n' see _\n12345: there\n          x\nEnd Sub\n",
     "Sub A()\n' see _\n12345: there\n          x\nEnd Sub\n"},
    {"TextThatLooksLikeANumberStaysAmongNumbers",
     "Sub A()\n12340: ' see _\n12345: there\n12350: x\nEnd Sub\n",
     "Sub A()\n' see _\n12345: there\nx\nEnd Sub\n"},
    {"LinesAddedSinceAreShiftedBack",
     "Sub A()\n12345:   x\n         added _\n           on\n12355:   y\nEnd Sub\n",
     "Sub A()\n  x\n  added _\n    on\n  y\nEnd Sub\n"},
    {"LinesThatInsertionOnlyShiftsGoWithTheirStatement",
     "Sub A()\n    a\n    b\n    c\n12345: Select Case x\n       ' two\n           Case 1 _\n"
     "           , 2\n    d\nEnd Sub\n",
     "Sub A()\n    a\n    b\n    c\nSelect Case x\n' two\n    Case 1 _\n    , 2\n    d\nEnd Sub\n"},
    {"DirectivesAreShiftedBackAnywhere",
     "Sub A()\n    a\n    b\n       #If X Then\n12345: c\n       #End If\nEnd Sub\n",
     "Sub A()\n    a\n    b\n#If X Then\nc\n#End If\nEnd Sub\n"},
    {"OneProcedureOfAPropertyHasNumbers",
     "Property Get A()\n12345: A = 1\nEnd Property\nProperty Let A(v)\n          x = v\nEnd Property\n",
     "Property Get A()\nA = 1\nEnd Property\nProperty Let A(v)\n          x = v\nEnd Property\n"},
    {"JumpsElsewhereDoNoHarm",
     "Sub A()\n12345: GoTo here\n12350: On Error GoTo 0\n12355: x = 12345\n12360: 'GoTo 12345\nEnd Sub\n"
     "Sub B()\n    GoTo 12345\nEnd Sub\n",
     "Sub A()\nGoTo here\nOn Error GoTo 0\nx = 12345\n'GoTo 12345\nEnd Sub\n"
     "Sub B()\n    GoTo 12345\nEnd Sub\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, Removal, testing::ValuesIn(removalCases),
                         [](const auto& test) { return std::string(test.param.name); });

constexpr const char* fewNumbers =
    "Sub A()\n"
    "    a\n"
    "12345:     b\n"
    "            deep _\n"
    "                on\n"
    "            Select Case c\n"
    "                Case 1\n"
    "    d\n"
    "            deep\n"
    "End Sub\n";

// Where most lines have no number, nothing says that the others were shifted.
TEST(RemovalOfFewNumbers, KeepsTheBlanksOfOtherLines) {
    EditedModule module(fewNumbers);
    const ComponentReport report = module.Remove();
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_EQ(module.Code(), Replaced(fewNumbers, "12345: ", ""));
    ASSERT_THAT(RemarksIn(report), ElementsAre("kept-blanks 4"));
    EXPECT_EQ(report.remarks[0].message,
              "Sub A has too few numbers to tell that lines 4 to 7, 9, which have none, were shifted; they "
              "keep their blanks");
}

TEST(RemovalOfFewNumbers, KeepsTheBlanksOfLinesThatAreNumberedAnew) {
    EditedModule module(fewNumbers);
    EXPECT_THAT(RemarksIn(module.Insert()), IsEmpty()) << "skipped without --renumber";
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
    EXPECT_THAT(RemarksIn(module.Insert({.renumber = true})), ElementsAre("kept-blanks 4"));
    EXPECT_THAT(RemarksIn(module.Remove()), IsEmpty());
    EXPECT_EQ(module.Code(), Replaced(fewNumbers, "12345: ", ""));
}

TEST(RemovalOfFewNumbers, IsToldOfTheProcedureOfAPropertyThatItIsAbout) {
    EditedModule module(
        "Property Get A()\n10000: x\nEnd Property\n"
        "Property Let A(v)\n10000: x\n        deep\nEnd Property\n");
    const ComponentReport report = module.Remove();
    ASSERT_THAT(RemarksIn(report), ElementsAre("kept-blanks 6"));
    EXPECT_EQ(report.remarks[0].message,
              "Property Let A has too few numbers to tell that line 6, which has none, was shifted; it keeps "
              "its blanks");
}

class RemovalSkips : public testing::TestWithParam<SkipCase> {};

TEST_P(RemovalSkips, TheProcedureAndLeavesItAsItWas) {
    EditedModule module(GetParam().code);
    const ComponentReport report = module.Remove();
    ExpectSkipped(GetParam(), report, module);
}

const SkipCase skipCases[] = {
    {"RangeMismatch", "Sub A()\n12345: x\nEnd Sub ' done\n", "range-mismatch A", 2},
    {"FourDigits", "Sub A()\n12345: y\n1234: x\nEnd Sub\n", "number-width A", 3},
    {"SixDigits", "Sub A()\n123456: x\nEnd Sub\n", "number-width A", 2},
    {"NoBlank", "Sub A()\n12345:x\nEnd Sub\n", "number-width A", 2},
    {"NothingBehindTheColon", "Sub A()\n12345:\nEnd Sub\n", "number-width A", 2},
    {"NumericButNoDigits", "Sub A()\n&HABC: x\nEnd Sub\n", "number-width A", 2},
    {"GoTo", "Sub A()\n12345: x\n12350: goto 12345\nEnd Sub\n", "jump-target A", 3},
    {"GoSub", "Sub A()\n12345: GoSub 12345\nEnd Sub\n", "jump-target A", 2},
    {"GoToInTwoWords", "Sub A()\n12345: Go To 12345\nEnd Sub\n", "jump-target A", 2},
    {"Resume", "Sub A()\n12345: x\n12350: Resume 12345\nEnd Sub\n", "jump-target A", 3},
    {"OnErrorGoTo", "Sub A()\n12345: On Error GoTo 12350\n12350: y\nEnd Sub\n", "jump-target A", 2},
    {"OnGoTo", "Sub A()\n12345: On x GoTo 1, here ,12350\n12350: y\nEnd Sub\n", "jump-target A", 2},
    {"OnGoSub", "Sub A()\n12345: On f(\"a\", 2) GoSub 12350, 2\n12350: y\nEnd Sub\n", "jump-target A", 2},
    {"Then", "Sub A()\n12345: If x Then 12350\n12350: y\nEnd Sub\n", "jump-target A", 2},
    {"Else", "Sub A()\n12345: If x Then y Else 12350\n12350: y\nEnd Sub\n", "jump-target A", 2},
    {"BehindAColon", "Sub A()\n12345: x = \"'\": GoTo 12345\nEnd Sub\n", "jump-target A", 2},
    {"ContinuedList", "Sub A()\n12345: On x GoTo 1, _\n       12350\n12355: z\n12350: y\nEnd Sub\n",
     "jump-target A", 2},
    {"LeadingZeros", "Sub A()\n00010: x\n00020: GoTo 10\nEnd Sub\n", "jump-target A", 3},
    {"InTheHeaderLine", "Sub A(): GoTo 12345\n12345: x\nEnd Sub\n", "jump-target A", 1},
    {"OneProcedureOfAProperty",
     "Property Get A()\n12345: A = 1\nEnd Property\nProperty Let A(v)\n12345: GoTo 12345\nEnd Property\n",
     "jump-target A", 5},
};

INSTANTIATE_TEST_SUITE_P(Cases, RemovalSkips, testing::ValuesIn(skipCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(RemovalGuards, AreOffWhenExact) {
    EditedModule module("Sub A()\n1234: abcde\n          \n12350: GoTo 12350\nEnd Sub\n");
    EXPECT_THAT(EditedIn(module.Remove(true)), ElementsAre("A"));
    EXPECT_EQ(module.Code(), "Sub A()\nbcde\n   \nGoTo 12350\nEnd Sub\n");
}

TEST(RemovalGuards, TellOfNumbersThatCannotBeReached) {
    EditedModule module("Sub A()\n12345: x\nEnd Sub\nSub a()\n12345: x\nEnd Sub\nSub A()\n    x\nEnd Sub\n");
    const ComponentReport report = module.Remove();
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_THAT(SkippedIn(report), ElementsAre("duplicate-procedure a"));
}

TEST(RemovalGuards, ReportProceduresInTheOrderOfTheModule) {
    EditedModule module("Sub A()\n12345: x\nEnd Sub\nSub B()\n12345: x\nEnd Sub\n");
    EXPECT_THAT(EditedIn(module.Remove()), ElementsAre("A", "B"));
}

}  // namespace
}  // namespace lintara::cli
