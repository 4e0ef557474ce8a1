// What the removal of error handlers takes out of procedures, and what keeps it from harming them.
#include "tests/cli/command_run.h"
#include "tests/cli/handler_edits.h"
#include "tests/cli/skip_case.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// In the codes of the tables, "[A]" stands for the block of Sub A.
std::string WithBlocks(std::string code) {
    code = Replaced(code, "[A]\n", UsualBlock("Sub", "A"));
    code = Replaced(code, "[B]\n", UsualBlock("Sub", "B"));
    code = Replaced(code, "[P]\n", UsualBlock("Property", "P"));
    return Replaced(code, "[marker]", "' TWErrorHandler begin - please do not modify or remove this line");
}

struct RemovalCase {
    const char* name;
    const char* before;
    const char* after;
};

void PrintTo(const RemovalCase& c, std::ostream* out) {
    *out << c.name;
}

class HandlerRemoved : public testing::TestWithParam<RemovalCase> {};

TEST_P(HandlerRemoved, AndTheRestStays) {
    EditedModule module(WithBlocks(GetParam().before));
    const ComponentReport report = RemoveHandlers(module);
    EXPECT_THAT(SkippedIn(report), IsEmpty());
    EXPECT_THAT(RemarksIn(report), IsEmpty());
    EXPECT_EQ(module.Code(), WithBlocks(GetParam().after));
}

const RemovalCase removalCases[] = {
    {"Block", "Sub A()\n    On Error GoTo hErr\n    x\n[A]\nEnd Sub\n",
     "Sub A()\n    On Error GoTo 0\n    x\nEnd Sub\n"},
    {"HandWrittenHandlerStays", "Sub A()\n    On Error GoTo hErr\n    Exit Sub\nhErr:\n    y\nEnd Sub\n",
     "Sub A()\n    On Error GoTo hErr\n    Exit Sub\nhErr:\n    y\nEnd Sub\n"},
    {"ProceduresWithoutLinesStay", "Sub A()\nEnd Sub\nSub B()\n    y\n[B]\nEnd Sub\n",
     "Sub A()\nEnd Sub\nSub B()\n    y\nEnd Sub\n"},
    {"Property",
     "Property Get P()\n    P = 1\n[P]\nEnd Property\nProperty Let P(v)\n    x = v\n[P]\nEnd Property\n",
     "Property Get P()\n    P = 1\nEnd Property\nProperty Let P(v)\n    x = v\nEnd Property\n"},
    {"OneProcedureOfAProperty",
     "Property Get P()\n    On Error GoTo hErr\n    P = 1\n[P]\nEnd Property\n"
     "Property Let P(v)\n    On Error GoTo hErr\nhErr:\nEnd Property\n",
     "Property Get P()\n    On Error GoTo 0\n    P = 1\nEnd Property\n"
     "Property Let P(v)\n    On Error GoTo hErr\nhErr:\nEnd Property\n"},
    {"CommentsAndQuotesStay",
     "Sub A()\n    x ' On Error GoTo hErr\n    s = \"On Error GoTo hErr\"\n    on error goto herr ' On Error "
     "GoTo "
     "hErr2\n[A]\nEnd Sub\n",
     "Sub A()\n    x ' On Error GoTo hErr\n    s = \"On Error GoTo hErr\"\n    On Error GoTo 0 ' On Error "
     "GoTo "
     "hErr2\nEnd Sub\n"},
    {"StatementsCloseTogether", "Sub A()\n    On Error GoTo hErr: On Error GoTo hErr\n[A]\nEnd Sub\n",
     "Sub A()\n    On Error GoTo 0: On Error GoTo 0\nEnd Sub\n"},
    {"NumberedCode",
     "Sub A()\n10000: On Error GoTo hErr\n10005: x\n10010: [marker]\n10015: Exit Sub\nhErr:\n"
     "10025:     Debug.Print \"A\"\nEnd Sub\n",
     "Sub A()\n10000: On Error GoTo 0\n10005: x\nEnd Sub\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, HandlerRemoved, testing::ValuesIn(removalCases),
                         [](const auto& test) { return std::string(test.param.name); });

class HandlerRemovalSkips : public testing::TestWithParam<SkipCase> {};

TEST_P(HandlerRemovalSkips, TheProcedureAndLeavesItAsItWas) {
    EditedModule module = EditedModule::FromFile(Replaced(WithBlocks(GetParam().code), "\n", "\r\n"));
    const ComponentReport report = RemoveHandlers(module);
    ExpectSkipped(GetParam(), report, module);
}

const SkipCase skipCases[] = {
    {"RangeMismatch", "Sub A()\n    x\n[A]\nEnd Sub ' done\n", "range-mismatch A", 2},
    {"EmptyBodyInAProperty",
     "Property Get P()\n    P = 1\n[P]\nEnd Property\nProperty Let P(v)\nEnd Property\n", "empty-body P", 8},
    {"ContinuedIntoTheClosingLine", "Sub A()\n    x\n[A]\nlast: _\nEnd Sub\n", "range-mismatch A", 7},
    {"CodeInFrontOfTheMarker", "Sub A()\n    x [marker]\n    y\nEnd Sub\n", "marker-mismatch A", 2},
    {"MarkerInAContinuedComment", "Sub A()\n    x ' see _\n[A]\nEnd Sub\n", "marker-mismatch A", 3},
    {"OtherLabel", "Sub A()\n    On Error GoTo old\n[marker]\nExit Sub\nold:\n    y\nEnd Sub\n",
     "label-mismatch A", 3},
    {"OtherLabelNumbered",
     "Sub A()\n10000: On Error GoTo old\n10005: [marker]\n10010: Exit Sub\n10015: old:\n10020: y\nEnd Sub\n",
     "label-mismatch A", 3},
    {"LabelBeginsAnother", "Sub A()\n    On Error GoTo hErr2\nhErr2:\n[A]\nEnd Sub\n", "label-prefix A", 2},
    {"GoTo", "Sub A()\n    If x Then GoTo hErr\n[A]\nEnd Sub\n", "jump-target A", 2},
    {"Resume", "Sub A()\n    Resume herr\n[A]\nEnd Sub\n", "jump-target A", 2},
    {"OnErrorWithTwoBlanks", "Sub A()\n    On Error  GoTo hErr\n[A]\nEnd Sub\n", "jump-target A", 2},
    {"OnErrorOnTwoLines", "Sub A()\n    On Error _\n    GoTo hErr\n[A]\nEnd Sub\n", "jump-target A", 2},
    {"LabelTypedIntoTheBlock", "Sub A()\n    GoSub more\n[A]\nmore:\n    Return\nEnd Sub\n", "jump-target A",
     2},
    {"NumberInTheBlock",
     "Sub A()\n10000: If x Then 10015\n10005: [marker]\n10010: Exit Sub\nhErr:\n10015: y\nEnd Sub\n",
     "jump-target A", 2},
    {"HiddenLines",
     "Sub A()\n    x\n[marker]\nExit Sub\nAttribute A.VB_Description = \"d\"\nhErr:\n    y\nEnd Sub\n",
     "hidden-lines A", 3},
};

INSTANTIATE_TEST_SUITE_P(Cases, HandlerRemovalSkips, testing::ValuesIn(skipCases),
                         [](const auto& test) { return std::string(test.param.name); });

class HandlerRemovalExactly : public testing::TestWithParam<RemovalCase> {};

TEST_P(HandlerRemovalExactly, DoesTheDamage) {
    EditedModule module(WithBlocks(GetParam().before));
    RemoveHandlers(module, {.exact = true});
    EXPECT_EQ(module.Code(), WithBlocks(GetParam().after));
}

const RemovalCase damageCases[] = {
    {"CodeInFrontOfTheMarkerGoes", "Sub A()\n    w\n    x [marker]\nEnd Sub\n", "Sub A()\n    w\nEnd Sub\n"},
    {"CommentSwallowsTheClosingLine", "Sub A()\n    x ' see _\n[A]\nEnd Sub\n",
     "Sub A()\n    x ' see _\nEnd Sub\n"},
    {"LabelIsLeftDangling", "Sub A()\n    On Error GoTo old\n[marker]\nExit Sub\nold:\n    y\nEnd Sub\n",
     "Sub A()\n    On Error GoTo old\nEnd Sub\n"},
    {"LongerLabelIsTorn", "Sub A()\n    On Error GoTo hErr2\nhErr2:\n[A]\nEnd Sub\n",
     "Sub A()\n    On Error GoTo 02\nhErr2:\nEnd Sub\n"},
    {"JumpIsLeftDangling", "Sub A()\n    GoTo hErr\n[A]\nEnd Sub\n", "Sub A()\n    GoTo hErr\nEnd Sub\n"},
    {"CommentIsChanged", "Sub A()\n    x ' On Error GoTo hErr\n[A]\nEnd Sub\n",
     "Sub A()\n    x ' On Error Goto 0\nEnd Sub\n"},
    {"SecondStatementIsPassedOver", "Sub A()\n    On Error GoTo hErr: On Error GoTo hErr\n[A]\nEnd Sub\n",
     "Sub A()\n    On Error GoTo 0: On Error GoTo hErr\nEnd Sub\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, HandlerRemovalExactly, testing::ValuesIn(damageCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(HandlerRemoval, NamesTheLabelToGive) {
    EditedModule module(WithBlocks("Sub A()\n[A]\nEnd Sub\n"));
    const ComponentReport report = RemoveHandlers(module, {.handler = {u"Failed", u"    y"}});
    ASSERT_EQ(report.skipped.size(), 1U);
    EXPECT_THAT(report.skipped[0].message, HasSubstr("has the label hErr, not Failed; give --label hErr"));
}

TEST(HandlerRemoval, RemarksOnLinesThatWereTypedIn) {
    EditedModule module(
        WithBlocks("Sub A()\n    x\n[A]\n    typed\nEnd Sub\nSub B()\n    y\n[B]\n\nEnd Sub\n"));
    const ComponentReport report = RemoveHandlers(module);
    EXPECT_THAT(EditedIn(report), ElementsAre("A", "B"));
    EXPECT_THAT(RemarksIn(report), ElementsAre("handler-edited 7"));
}

TEST(HandlerRemoval, TellsOfHandlersThatCannotBeReached) {
    EditedModule module(
        WithBlocks("Sub A()\n    x\n[A]\nEnd Sub\nSub A()\n    x\n[A]\nEnd Sub\nSub A()\n    x\nEnd Sub\n"));
    const ComponentReport report = RemoveHandlers(module);
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_THAT(SkippedIn(report), ElementsAre("duplicate-procedure A"));
}

TEST(HandlerRemoval, TakesNumbersOutFirst) {
    EditedModule module("Sub A()\n    x\nEnd Sub\n");
    const HandlerCommand both{.numbers = NumberOptions{}};
    EXPECT_THAT(EditedIn(InsertHandlers(module, both)), ElementsAre("A"));
    const ComponentReport removed = RemoveHandlers(module, both);
    EXPECT_THAT(EditedIn(removed), ElementsAre("A"));
    EXPECT_THAT(RemarksIn(removed), IsEmpty());
    EXPECT_EQ(module.Code(), "Sub A()\n    On Error GoTo 0\n    x\nEnd Sub\n");
}

}  // namespace
}  // namespace lintara::cli
