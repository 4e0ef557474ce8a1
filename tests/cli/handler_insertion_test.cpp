// What the insertion of error handlers does to procedures, and what keeps it from harming them.
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

constexpr const char* Marker = "' TWErrorHandler begin - please do not modify or remove this line\n";

// In the codes of the tables, "[Sub A]" stands for the block of Sub A.
std::string WithBlocks(std::string code) {
    for (const auto* kind : {"Sub", "Function", "Property"}) {
        for (const auto* name : {"A", "B"}) {
            code = Replaced(code, "[" + std::string(kind) + " " + name + "]\n", UsualBlock(kind, name));
        }
    }
    return Replaced(code, "[marker]\n", Marker);
}

struct InsertionCase {
    const char* name;
    const char* before;
    const char* after;
};

void PrintTo(const InsertionCase& c, std::ostream* out) {
    *out << c.name;
}

class HandlerInserted : public testing::TestWithParam<InsertionCase> {};

TEST_P(HandlerInserted, AndNothingTheSecondTime) {
    EditedModule module(WithBlocks(GetParam().before));
    EXPECT_THAT(SkippedIn(InsertHandlers(module)), IsEmpty());
    EXPECT_EQ(module.Code(), WithBlocks(GetParam().after));

    const ComponentReport again = InsertHandlers(module);
    EXPECT_THAT(EditedIn(again), IsEmpty());
    EXPECT_THAT(SkippedIn(again), IsEmpty());
    EXPECT_EQ(module.Code(), WithBlocks(GetParam().after));
}

const InsertionCase insertionCases[] = {
    {"Sub", "Sub A()\n    x\nEnd Sub\n", "Sub A()\n    On Error GoTo hErr\n    x\n[Sub A]\nEnd Sub\n"},
    {"Function", "Function A()\n    x\nEnd Function\n",
     "Function A()\n    On Error GoTo hErr\n    x\n[Function A]\nEnd Function\n"},
    {"PropertyWithTwoProcedures",
     "Property Get A()\n    A = 1\nEnd Property\nSub B()\n    y\nEnd Sub\n"
     "Property Let A(v)\n    x = v\nEnd Property\n",
     "Property Get A()\n    On Error GoTo hErr\n    A = 1\n[Property A]\nEnd Property\n"
     "Sub B()\n    On Error GoTo hErr\n    y\n[Sub B]\nEnd Sub\n"
     "Property Let A(v)\n    On Error GoTo hErr\n    x = v\n[Property A]\nEnd Property\n"},
    {"PropertyWithOneHandlerGetsTheOther",
     "Property Get A()\n    A = 1\n[Property A]\nEnd Property\nProperty Let A(v)\n    x = v\nEnd Property\n",
     "Property Get A()\n    A = 1\n[Property A]\nEnd Property\n"
     "Property Let A(v)\n    On Error GoTo hErr\n    x = v\n[Property A]\nEnd Property\n"},
    {"StatementThatIsThereAlready", "Sub A()\n    On Error GoTo hErr\n    x\nEnd Sub\n",
     "Sub A()\n    On Error GoTo hErr\n    x\n[Sub A]\nEnd Sub\n"},
    {"NumberedCode", "Sub A()\n10000: On Error GoTo hErr\n10005: x\nEnd Sub\n",
     "Sub A()\n10000: On Error GoTo hErr\n10005: x\n[Sub A]\nEnd Sub\n"},
    {"SwitchingOffLeadsToTheLabel", "Sub A()\n    x\n    on error goto 0: y\nEnd Sub\n",
     "Sub A()\n    On Error GoTo hErr\n    x\n    On Error GoTo hErr: y\n[Sub A]\nEnd Sub\n"},
    {"CommentsAndQuotesStay",
     "Sub A()\n    x ' On Error GoTo 0\n    s = \"On Error GoTo 0\"\n    ' a _\n    On Error GoTo 0\n"
     "    Rem On Error GoTo 0\n    On Error GoTo 0 ' on error goto 0\nEnd Sub\n",
     "Sub A()\n    On Error GoTo hErr\n    x ' On Error GoTo 0\n    s = \"On Error GoTo 0\"\n    ' a _\n"
     "    On Error GoTo 0\n    Rem On Error GoTo 0\n    On Error GoTo hErr ' on error goto 0\n"
     "[Sub A]\nEnd Sub\n"},
    {"LongHeader", "Sub A(a, _\n      b)\n    x\nEnd Sub\n",
     "Sub A(a, _\n      b)\n    On Error GoTo hErr\n    x\n[Sub A]\nEnd Sub\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, HandlerInserted, testing::ValuesIn(insertionCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(HandlerInsertion, IsNumberedAlong) {
    EditedModule module("Sub A()\n    x\nEnd Sub\n");
    const ComponentReport report = InsertHandlers(module, {.numbers = NumberOptions{}});
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_EQ(module.Code(),
              "Sub A()\n10000:     On Error GoTo hErr\n10005:     x\n10010: " + std::string(Marker) +
                  "10015: Exit Sub\nhErr:\n10025:     Debug.Print \"A\"\nEnd Sub\n");
}

TEST(HandlerInsertion, LeavesHiddenLinesWhereTheyAre) {
    EditedModule module =
        EditedModule::FromFile("Sub A()\r\nAttribute A.VB_Description = \"d\"\r\n    x\r\nEnd Sub\r\n");
    EXPECT_THAT(EditedIn(InsertHandlers(module)), ElementsAre("A"));
    EXPECT_EQ(module.Code(), "Sub A()\nAttribute A.VB_Description = \"d\"\n    On Error GoTo hErr\n    x\n" +
                                 UsualBlock("Sub", "A") + "End Sub\n");
}

class HandlerInsertionSkips : public testing::TestWithParam<SkipCase> {};

TEST_P(HandlerInsertionSkips, TheProcedureAndLeavesItAsItWas) {
    EditedModule module(WithBlocks(GetParam().code));
    const ComponentReport report = InsertHandlers(module);
    ExpectSkipped(GetParam(), report, module);
}

const SkipCase skipCases[] = {
    {"RangeMismatch", "Sub A()\n    x\nEnd Sub ' done\n", "range-mismatch A", 2},
    {"AnotherLabelInThePropertyAlready",
     "Property Get B()\n    B = 1\nEnd Property\nProperty Let B(v)\n    On Error GoTo Old\n    y = 1\n"
     "' TWErrorHandler begin - please do not modify or remove this line\nExit Property\nOld:\n    Log 1\n"
     "End Property\n",
     "label-mismatch B", 7},
    {"EmptyBody", "Sub A()\nEnd Sub\n", "empty-body A", 1},
    {"OneLine", "Sub A(): End Sub\n", "empty-body A", 1},
    {"OneEmptyBodyOfAProperty",
     "Property Get A()\n    A = 1\nEnd Property\nProperty Let A(v)\nEnd Property\n", "empty-body A", 4},
    {"ContinuedIntoTheClosingLine", "Sub A()\n    x\nlast: _\nEnd Sub\n", "range-mismatch A", 3},
    {"LabelExists", "Sub A()\n    x\nHERR:\n    y\nEnd Sub\n", "label-exists A", 3},
    {"LabelExistsBehindANumber", "Sub A()\n    x\n10 herr : y\nEnd Sub\n", "label-exists A", 3},
    {"LabelExistsInOneProcedureOfAProperty",
     "Property Get A()\n    A = 1\nEnd Property\nProperty Let A(v)\nhErr: x = v\nEnd Property\n",
     "label-exists A", 5},
    {"JumpToALabelThatIsNowhere", "Sub A()\n    On Error GoTo hErr\n    If x Then GoTo HERR\nEnd Sub\n",
     "jump-target A", 3},
    {"ResumeAtALabelThatIsNowhere", "Sub A()\n    x\n    Resume hErr\nEnd Sub\n", "jump-target A", 3},
    {"JumpInTheHeaderLine", "Sub A(): GoTo hErr\n    x\nEnd Sub\n", "jump-target A", 1},
    {"JumpInOneProcedureOfAProperty",
     "Property Get A()\n    A = 1\nEnd Property\nProperty Let A(v)\n    On x GoTo 1, hErr\nEnd Property\n",
     "jump-target A", 5},
    {"LabelBeginsAnother", "Sub A()\n    On Error GoTo hErr2\nhErr2:\nEnd Sub\n", "label-prefix A", 2},
    {"LongerNumber", "Sub A()\n    On Error GoTo 05\n05 x\nEnd Sub\n", "label-prefix A", 2},
    {"MarkerInQuotes",
     "Sub A()\n    s = \"' TWErrorHandler begin - please do not modify or remove this line\"\nEnd Sub\n",
     "marker-mismatch A", 2},
    {"MarkerThatContinuesAComment", "Sub A()\n    ' see _\n[marker]\n    x\nEnd Sub\n", "marker-mismatch A",
     3},
    {"NameInItsOwnVisibility", "Public Sub b()\n    x\nEnd Sub\n", "range-mismatch b", 1},
    {"NameBelowItsHeadersFirstLine", "Private Sub _\n  A()\n    x\nEnd Sub\n", "range-mismatch A", 3},
};

INSTANTIATE_TEST_SUITE_P(Cases, HandlerInsertionSkips, testing::ValuesIn(skipCases),
                         [](const auto& test) { return std::string(test.param.name); });

// What the guards keep from happening.
struct DamageCase {
    const char* name;
    const char* before;
    const char* after;
};

void PrintTo(const DamageCase& c, std::ostream* out) {
    *out << c.name;
}

class HandlerInsertionExactly : public testing::TestWithParam<DamageCase> {};

TEST_P(HandlerInsertionExactly, DoesTheDamage) {
    EditedModule module(WithBlocks(GetParam().before));
    InsertHandlers(module, {.exact = true});
    EXPECT_EQ(module.Code(), WithBlocks(GetParam().after));
}

const DamageCase damageCases[] = {
    {"EmptyBodyTakesALaterHandlerForItsOwn", "Sub A()\nEnd Sub\nSub B()\n    y\n[Sub B]\nEnd Sub\n",
     "Sub A()\nEnd Sub\nSub B()\n    y\n[Sub B]\nEnd Sub\n"},
    {"StatementIsSplit", "Sub A()\n    x\nlast: _\nEnd Sub\n",
     "Sub A()\n    On Error GoTo hErr\n    x\nlast: _\n[Sub A]\nEnd Sub\n"},
    {"LabelTwice", "Sub A()\nhErr:\n    x\nEnd Sub\n",
     "Sub A()\n    On Error GoTo hErr\nhErr:\n    x\n[Sub A]\nEnd Sub\n"},
    {"NumberIsTorn", "Sub A()\n    On Error GoTo 05\n05 x\nEnd Sub\n",
     "Sub A()\n    On Error GoTo hErr\n    On Error GoTo hErr5\n05 x\n[Sub A]\nEnd Sub\n"},
    {"CommentIsChanged", "Sub A()\n    x ' On Error GoTo 0\nEnd Sub\n",
     "Sub A()\n    On Error GoTo hErr\n    x ' On Error Goto hErr\n[Sub A]\nEnd Sub\n"},
    {"BlockGoesElsewhere", "Public Sub b()\n    x\nEnd Sub\n",
     "[marker]\n    On Error GoTo hErr\nExit Function\nhErr:\n    Debug.Print \"b\"\nPublic Sub b()\n    x\n"
     "End Sub\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, HandlerInsertionExactly, testing::ValuesIn(damageCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(HandlerInsertion, SkipsAProcedureThatTheExpandedTemplateWouldEnd) {
    EditedModule module("Sub A()\n    x\nEnd Sub\nFunction B()\n    y\nEnd Function\n");
    const ComponentReport report =
        InsertHandlers(module, {.handler = {u"hErr", u"    x = 1: End {MemberType}"}});
    EXPECT_THAT(SkippedIn(report), ElementsAre("breaks-procedure A", "breaks-procedure B"));
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

TEST(HandlerInsertion, SkipsAProcedureWithALabelOfTheTemplate) {
    EditedModule module("Sub A()\nagain:\n    x\nEnd Sub\nSub B()\n    y\nEnd Sub\n");
    const ComponentReport report =
        InsertHandlers(module, {.handler = {u"hErr", u"Again: Resume\r\n10 Resume Next"}});
    EXPECT_THAT(SkippedIn(report), ElementsAre("label-exists A"));
    EXPECT_THAT(EditedIn(report), ElementsAre("B"));
}

// A comment in the template that looks like another procedure of the property misleads the library's search.
TEST(HandlerInsertion, IsTakenBackWhenTheLibraryWouldNotFindTheProcedureAgain) {
    EditedModule module(
        "Property Get A()\n    A = 1 ' On Error GoTo 0\nEnd Property\n"
        "Property Let A(v)\n    On Error GoTo 0\n    x = v\nEnd Property\n");
    const ComponentReport report = InsertHandlers(module, {.handler = {u"hErr", u"' Property Let A"}});
    EXPECT_THAT(SkippedIn(report), ElementsAre("breaks-procedure A"));
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

TEST(HandlerInsertion, RemarksOnAnotherHandler) {
    EditedModule module(
        "Sub A()\n    On Error GoTo 0\n    On Error GoTo -1\n    On Error GoTo other\nother:\nEnd Sub\n"
        "Sub B()\n    On Error GoTo hErr\nEnd Sub\n");
    const ComponentReport report = InsertHandlers(module);
    EXPECT_THAT(EditedIn(report), ElementsAre("A", "B"));
    EXPECT_THAT(RemarksIn(report), ElementsAre("other-handler 4"));
}

TEST(HandlerInsertion, RemarksOnLinesThatAreTooLong) {
    EditedModule module("Sub A()\n    x\nEnd Sub\nSub B()\n    y\nEnd Sub\n");
    const Text code =
        u"    x = \"" + Text(1012, u'z') + u"{MemberName}\"\r\n    y = \"" + Text(1020, u'z') + u"\"";
    const ComponentReport report = InsertHandlers(module, {.handler = {u"hErr", code}});
    EXPECT_THAT(RemarksIn(report), ElementsAre("line-too-long 3", "line-too-long 6"));
    EXPECT_THAT(report.remarks[0].message, HasSubstr("line 2 of the template"));
}

TEST(HandlerInsertion, TellsOfProceduresThatCannotBeReached) {
    EditedModule module("Sub A()\n    x\nEnd Sub\nSub a()\n    x\nEnd Sub\nSub A()\nEnd Sub\n");
    const ComponentReport report = InsertHandlers(module);
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_THAT(SkippedIn(report), ElementsAre("duplicate-procedure a"));
}

TEST(HandlerInsertion, ReportsLinesOfTheInput) {
    EditedModule module("Sub A()\n    x\nEnd Sub\nSub B()\nhErr:\nEnd Sub\n");
    const ComponentReport report = InsertHandlers(module);
    ASSERT_EQ(report.skipped.size(), 1U);
    EXPECT_EQ(report.skipped[0].line, Line(4));
    EXPECT_EQ(report.skipped[0].at, Line(5));
    EXPECT_THAT(report.skipped[0].message, HasSubstr("line 5 (line 5 of the file)"));
}

TEST(HandlerInsertion, TellsOnceWhatKeepsHandlersAndNumbersOut) {
    EditedModule module("Sub A()\n    x\nEnd Sub ' done\n");
    const ComponentReport report = InsertHandlers(module, {.numbers = NumberOptions{}});
    EXPECT_THAT(SkippedIn(report), ElementsAre("range-mismatch A"));
    EXPECT_EQ(report.skipped[0].fate, "was skipped");
}

TEST(HandlerInsertion, TellsWhatIsMissingWhenOnlyOneKindGoesIn) {
    EditedModule module("Sub A()\nhErr:\n    x\nEnd Sub\n");
    const ComponentReport report = InsertHandlers(module, {.numbers = NumberOptions{}});
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_THAT(SkippedIn(report), ElementsAre("label-exists A"));
    EXPECT_EQ(report.skipped[0].fate, "gets no error handler");
}

}  // namespace
}  // namespace lintara::cli
