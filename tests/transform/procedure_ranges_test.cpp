#include "transform/procedure_ranges.h"

#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/transform/ranges_text.h"

#include <memory>
#include <string>
#include <string_view>
#include <tuple>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using support::CodeFixture;
using support::ModuleName;
using support::ProjectName;

// The ranges of the procedure `name` in the module `source`: "first-closing" for each of the three.
std::string Ranges(std::string_view source, TextView name) {
    CodeFixture fixture(source);
    const ProcedureRanges ranges = GetProcedureRanges(*fixture.globals(), ProjectName, ModuleName, name);
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
    return support::ToString(ranges);
}

TEST(ProcedureRangesTest, ABodyReachesFromTheHeaderToTheClosingLine) {
    EXPECT_EQ(Ranges(R"(
Option Explicit

Sub First()
    x = 1
End Sub

' what Second does
Function Second() As Long
    x = 2
    x = 3
End Function
)",
                     u"Second"),
              "9-11; 0-0; 0-0");
}

TEST(ProcedureRangesTest, AnEmptyBodyBeginsAtItsEnd) {
    EXPECT_EQ(Ranges("Option Explicit\nSub A()\nEnd Sub", u"A"), "3-3; 0-0; 0-0");
}

TEST(ProcedureRangesTest, AProcedureMayBeginOnLineOne) {
    EXPECT_EQ(Ranges("Sub A()\n    x\nEnd Sub\nSub B()\nEnd Sub", u"A"), "2-3; 0-0; 0-0");
}

TEST(ProcedureRangesTest, AnEmptyNameIsNotFoundAndTheModuleIsNotTouched) {
    CodeFixture fixture("Sub A()\nEnd Sub");
    const auto plan = std::make_shared<support::FaultPlan>();
    support::FaultyGlobals globals(fixture.globals(), plan);
    EXPECT_EQ(GetProcedureRanges(globals, ProjectName, ModuleName, u""), ProcedureRanges{});
    EXPECT_EQ(GetProcedureRanges(globals, ProjectName, u"", u"A"), ProcedureRanges{});
    EXPECT_EQ(GetProcedureRanges(globals, u"", ModuleName, u"A"), ProcedureRanges{});
    EXPECT_TRUE(plan->calls.empty());
}

TEST(ProcedureRangesTest, UnknownNamesAreNotFound) {
    CodeFixture fixture("Sub A()\nEnd Sub");
    for (const auto& [project, component, procedure] :
         {std::tuple(u"Nowhere", u"Module1", u"A"), std::tuple(u"Project1", u"Nothing", u"A"),
          std::tuple(u"Project1", u"Module1", u"B")}) {
        EXPECT_EQ(GetProcedureRanges(*fixture.globals(), project, component, procedure), ProcedureRanges{});
    }
}

TEST(ProcedureRangesTest, AModuleLevelVariableIsNotFound) {
    EXPECT_EQ(Ranges("Option Explicit\nPrivate Total As Long\nDim Other\nSub A()\nEnd Sub", u"Total"),
              "not found");
}

TEST(ProcedureRangesTest, AVariableOnTheLastLineOfTheDeclarationsIsNotFoundEither) {
    EXPECT_EQ(Ranges("Option Explicit\nPrivate Total As Long\nSub A()\nEnd Sub", u"Total"), "not found");
}

// The line after it lies behind the declarations, and the member list calls it a method. No procedure of its
// name ends anywhere, so the range has no lines.
TEST(ProcedureRangesTest, ADeclareOnTheLastLineOfTheDeclarationsHasARangeWithoutLines) {
    EXPECT_EQ(Ranges("Option Explicit\nDeclare Sub Foo Lib \"k\" ()\nSub A()\nEnd Sub", u"Foo"),
              "3-1; 0-0; 0-0");
    EXPECT_EQ(Ranges("Declare Sub Foo Lib \"k\" ()\nOption Explicit\nSub A()\nEnd Sub", u"Foo"), "not found");
}

TEST(ProcedureRangesTest, AHeaderOverThreeLinesPutsTheBodyThreeLinesBelowIt) {
    EXPECT_EQ(Ranges(R"(
Option Explicit
Private Sub Wide(ByVal a As Long, _
                 ByVal b As Long, _
                 ByVal c As Long)
    x = 1
    x = 2
End Sub
)",
                     u"Wide"),
              "5-7; 0-0; 0-0");
}

TEST(ProcedureRangesTest, TheSearchForTheClosingLineBeginsBelowTheProcedureByItsHeadersLines) {
    EXPECT_EQ(Ranges(R"(
Option Explicit
Sub Wide(ByVal a As Long, _
         ByVal b As Long)
    x = 1
End Sub
Sub Short()
    y = 1
End Sub
)",
                     u"Wide"),
              "4-5; 0-0; 0-0");
    // The first probe is the closing line of the short procedure below: the range reaches over both.
    EXPECT_EQ(Ranges(R"(
Option Explicit
Sub Wide(ByVal a As Long, _
         ByVal b As Long)
    x = 1
End Sub
Sub Short()
End Sub
)",
                     u"Wide"),
              "4-7; 0-0; 0-0");
}

TEST(ProcedureRangesTest, BlankAndCommentLinesAboveAHeaderDoNotMoveTheSearch) {
    EXPECT_EQ(Ranges(R"(
Option Explicit
Sub A()
End Sub

' about B

' more about B
Sub B()
    x = 1
End Sub
Sub C()
End Sub
)",
                     u"B"),
              "9-10; 0-0; 0-0");
}

TEST(ProcedureRangesTest, BlankLinesBelowTheLastProcedureAreSearchedThrough) {
    EXPECT_EQ(Ranges("Option Explicit\nSub A()\n    x = 1\nEnd Sub\n\n' the end\n", u"A"), "3-4; 0-0; 0-0");
}

TEST(ProcedureRangesTest, AnIndentedClosingLineCloses) {
    EXPECT_EQ(Ranges("Option Explicit\nSub A()\n    x\n    End Sub   ", u"A"), "3-4; 0-0; 0-0");
}

TEST(ProcedureRangesTest, AClosingCommentThatIsCutRightCloses) {
    EXPECT_EQ(Ranges("Option Explicit\nSub A()\n    x\nEnd Sub  ' comment\nSub B()\nEnd Sub", u"A"),
              "3-4; 0-0; 0-0");
}

TEST(ProcedureRangesTest, BehindAnyOtherClosingCommentTheSearchRunsOnUpwards) {
    // To the closing line of the procedure above: a range without lines.
    EXPECT_EQ(
        Ranges("Option Explicit\nSub A()\nEnd Sub\nSub B()\n    x\nEnd Sub ' done\nSub C()\nEnd Sub", u"B"),
        "5-3; 0-0; 0-0");
    // To line 1, where there is none.
    EXPECT_EQ(Ranges("Option Explicit\nSub A()\n    x\nEnd Sub ' done\nSub B()\nEnd Sub", u"A"),
              "3-1; 0-0; 0-0");
}

TEST(ProcedureRangesTest, AClosingLineWithANumberOrSeveralBlanksIsRunOver) {
    EXPECT_EQ(Ranges("Option Explicit\nSub A()\n    x\n10 End Sub", u"A"), "3-1; 0-0; 0-0");
    EXPECT_EQ(Ranges("Option Explicit\nSub A()\n    x\nEnd  Sub", u"A"), "3-1; 0-0; 0-0");
}

TEST(ProcedureRangesTest, ANameInOtherLetterCaseIsFoundButItsClosingLineIsNot) {
    EXPECT_EQ(Ranges("Option Explicit\nSub Alpha()\n    x\nEnd Sub", u"alpha"), "3-1; 0-0; 0-0");
}

TEST(ProcedureRangesTest, AnUnclosedProcedureEndsAtLineOne) {
    EXPECT_EQ(Ranges("Option Explicit\nSub A()\n    x\n    y", u"A"), "3-1; 0-0; 0-0");
}

TEST(ProcedureRangesTest, AHeaderThatContinuesIntoTheEndOfTheModuleHasNoBody) {
    EXPECT_EQ(Ranges("Option Explicit\nSub A() _", u"A"), "4-1; 0-0; 0-0");
}

constexpr std::string_view GetAndLet = R"(
Option Explicit
Property Get X() As Long
    X = mX
End Property
Property Let X(ByVal value As Long)
    mX = value
    Changed
End Property
)";

TEST(ProcedureRangesTest, APropertyWithGetAndLetHasTheGetInRange1AndTheLetInRange2) {
    EXPECT_EQ(Ranges(GetAndLet, u"X"), "3-4; 6-8; 0-0");
}

TEST(ProcedureRangesTest, APropertyWithOnlyALetHasOnlyRange1) {
    EXPECT_EQ(Ranges("Option Explicit\nProperty Let X(ByVal value)\n    y = value\nEnd Property", u"X"),
              "3-4; 0-0; 0-0");
}

TEST(ProcedureRangesTest, APropertyWithOnlyAGetHasOnlyRange1) {
    EXPECT_EQ(Ranges("Option Explicit\nProperty Get X()\n    X = 1\nEnd Property", u"X"), "3-4; 0-0; 0-0");
}

TEST(ProcedureRangesTest, SetIsTriedBeforeGetAndLet) {
    EXPECT_EQ(Ranges(R"(
Option Explicit
Property Get X() As Object
    Set X = mX
End Property
Property Let X(ByVal value As Object)
    Set mX = value
End Property
Property Set X(ByVal value As Object)
    Set mX = value
End Property
)",
                     u"X"),
              "9-10; 6-7; 3-4");
    EXPECT_EQ(Ranges(R"(
Option Explicit
Property Get X() As Object
    Set X = mX
End Property
Property Set X(ByVal value As Object)
    Set mX = value
End Property
)",
                     u"X"),
              "6-7; 0-0; 3-4");
}

TEST(ProcedureRangesTest, ALetFoundFirstLooksForGetAndThenSet) {
    // Only the member list knows a property's procedures by their words, so a Get in a string will do.
    EXPECT_EQ(Ranges(R"(
Option Explicit
Property Let X(ByVal value)
    y = value
End Property
Sub A()
    s = "Property Set X"
    s = "Property Get X"
End Sub
)",
                     u"X"),
              "3-4; 8-0; 7-0");
}

TEST(ProcedureRangesTest, ACompanionsContinuedHeaderIsWalkedOver) {
    EXPECT_EQ(Ranges(R"(
Option Explicit
Property Get X() As Long
End Property
Public Property Let X( _
        ByVal value As Long _
        )
    y = value
End Property
)",
                     u"X"),
              "3-3; 7-8; 0-0");
}

TEST(ProcedureRangesTest, ACompanionIsTakenWhereItsWordsStandFirst) {
    EXPECT_EQ(Ranges(R"(
Option Explicit
' see property let x
Property Get X() As Long
    X = 1
End Property
Property Let X(ByVal value As Long)
End Property
)",
                     u"X"),
              "4-5; 3-5; 0-0");
}

TEST(ProcedureRangesTest, ACompanionsNameIsAWholeWord) {
    EXPECT_EQ(Ranges(R"(
Option Explicit
Property Get X()
End Property
Property Let XY(ByVal value)
End Property
Property Let X(ByVal value)
End Property
)",
                     u"X"),
              "3-3; 7-7; 0-0");
}

TEST(ProcedureRangesTest, ASubHasNoCompanions) {
    EXPECT_EQ(Ranges("Option Explicit\n' Property Let A\nSub A()\n    x\nEnd Sub", u"A"), "4-5; 0-0; 0-0");
}

TEST(ProcedureRangesTest, OneOnlyProcedureCountsWhenANameOccursTwice) {
    EXPECT_EQ(Ranges("Option Explicit\nSub A()\n    x\nEnd Sub\nSub A()\nEnd Sub", u"A"), "3-4; 0-0; 0-0");
}

constexpr std::string_view TwoSubs = "Option Explicit\nSub A()\n    x\nEnd Sub\nSub B()\n    y\nEnd Sub";

TEST(ProcedureRangesTest, TheProcedureIsThatOfTheNamedProject) {
    CodeFixture fixture("Sub B()\nEnd Sub");
    fixture.AddComponent(u"Other", ModuleName, TwoSubs);
    EXPECT_EQ(support::ToString(GetProcedureRanges(*fixture.globals(), u"Other", ModuleName, u"B")),
              "6-7; 0-0; 0-0");
}

// The closing words are those of the active project's component, where B may be something else, or nothing.
TEST(ProcedureRangesTest, TheKindWordIsThatOfTheActiveProject) {
    CodeFixture function("Function B()\nEnd Function");
    function.AddComponent(u"Other", ModuleName, TwoSubs);
    EXPECT_EQ(support::ToString(GetProcedureRanges(*function.globals(), u"Other", ModuleName, u"B")),
              "6-1; 0-0; 0-0");
    CodeFixture none("Sub B()\nEnd Sub");
    none.AddComponent(u"Other", u"Module2", TwoSubs);
    EXPECT_EQ(support::ToString(GetProcedureRanges(*none.globals(), u"Other", u"Module2", u"B")),
              "6-1; 0-0; 0-0");
}

TEST(ProcedureRangesTest, TheModuleIsReadAfreshByEveryCall) {
    CodeFixture fixture(GetAndLet);
    ASSERT_TRUE(fixture.module().InsertLines(Line{3}, u"    y\r\n    z"));
    EXPECT_EQ(support::ToString(GetProcedureRanges(*fixture.globals(), ProjectName, ModuleName, u"X")),
              "3-6; 8-10; 0-0");
}

TEST(ProcedureRangesTest, TheHostIsAskedInAFixedOrder) {
    CodeFixture fixture(GetAndLet);
    const auto plan = std::make_shared<support::FaultPlan>();
    support::FaultyGlobals globals(fixture.globals(), plan);
    EXPECT_TRUE(GetProcedureRanges(globals, ProjectName, ModuleName, u"X").Found);
    EXPECT_EQ(plan->CountOf("VBProjects.Item"), 1U);
    EXPECT_EQ(plan->CountOf("VBE.ActiveVBProject"), 1U);
    // Header: Proc, Set, Get; again for the lead; once for the kind word.
    EXPECT_EQ(plan->CountOf("CodeModule.ProcBodyLine"), 5U);
    EXPECT_EQ(plan->CountOf("CodeModule.ProcStartLine"), 1U);
    EXPECT_EQ(plan->CountOf("CodeModule.ProcCountLines"), 1U);
    // Let and its end; Set.
    EXPECT_EQ(plan->CountOf("CodeModule.Find"), 3U);
}

class FaultyRangesTest : public testing::TestWithParam<support::Fault> {};

// Whatever fails: the search ends, no range reaches beyond the module, nothing is kept or changed.
TEST_P(FaultyRangesTest, OneFaultAnywhereLeavesAnAnswerAndNoHandles) {
    ProcedureRanges ranges;
    support::WithEveryCallFaulty(
        GetParam(), [] { return std::make_unique<CodeFixture>(GetAndLet); },
        [&](const auto& globals) { ranges = GetProcedureRanges(*globals, ProjectName, ModuleName, u"X"); },
        [&](CodeFixture& fixture, const support::FaultPlan& plan, std::string_view faulty) {
            SCOPED_TRACE(faulty);
            EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
            EXPECT_EQ(plan.liveHandles, 1U);
            EXPECT_EQ(fixture.text(), support::Code(GetAndLet));
            if (!ranges.Found) {
                EXPECT_EQ(ranges, ProcedureRanges{});
            }
            for (const Line line : {ranges.End1, ranges.End2, ranges.End3}) {
                EXPECT_LE(line, Line{8});
            }
        });
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyRangesTest,
                         testing::Values(support::Fault::Fails, support::Fault::Empty));

}  // namespace
}  // namespace lintara::transform
