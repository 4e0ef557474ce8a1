#include "transform/line_numbers.h"

#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using support::Code;
using support::CodeFixture;
using support::ModuleName;
using support::ProjectName;

void Insert(CodeFixture& fixture, TextView procedure, std::int32_t base = 10000, std::int32_t step = 5) {
    LineNumbersInserter(*fixture.globals(), ProjectName, ModuleName, procedure, base, step);
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
}

void Remove(CodeFixture& fixture, TextView procedure) {
    LineNumbersRemover(*fixture.globals(), ProjectName, ModuleName, procedure);
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
}

constexpr std::string_view Subs = R"(
Option Explicit

Sub First()
    x = 1
End Sub

' about Second
Private Sub Second(ByVal a As Long, _
                   ByVal b As Long)
    Dim y As Long
    y = a + _
        b

    Select Case y
        Case 1
            First
        Case Else
            GoTo hErr
    End Select
    Exit Sub
hErr:
    y = 0
End Sub

Sub Third()
    x = 3
    x = 4
End Sub
)";

constexpr std::string_view SecondNumbered = R"(
Option Explicit

Sub First()
    x = 1
End Sub

' about Second
Private Sub Second(ByVal a As Long, _
                   ByVal b As Long)
10000:     Dim y As Long
10005:     y = a + _
               b

10020:     Select Case y
               Case 1
10030:             First
10035:         Case Else
10040:             GoTo hErr
10045:     End Select
10050:     Exit Sub
hErr:
10060:     y = 0
End Sub

Sub Third()
    x = 3
    x = 4
End Sub
)";

TEST(LineNumbersTest, OnlyTheBodyOfTheNamedProcedureIsNumbered) {
    CodeFixture fixture(Subs);
    Insert(fixture, u"Second");
    EXPECT_EQ(fixture.text(), Code(SecondNumbered));
}

TEST(LineNumbersTest, RemovalRestoresEveryLine) {
    CodeFixture fixture(SecondNumbered);
    Remove(fixture, u"Second");
    EXPECT_EQ(fixture.text(), Code(Subs));
}

TEST(LineNumbersTest, ANumberLeavesTheLetterCaseBehindItAlone) {
    CodeFixture fixture("Option Explicit\nSub A()\n    IF x then Y\nEnd Sub");
    Insert(fixture, u"A");
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n10000:     IF x then Y\nEnd Sub");
    Remove(fixture, u"A");
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    IF x then Y\nEnd Sub");
}

constexpr std::string_view Property = R"(
Option Explicit
Property Get X() As Object
    Set X = mX
End Property
Property Let X(ByVal value As Object)
    Set mX = value
    Changed
End Property
Property Set X(ByVal value As Object)
    Set mX = value
    Changed
    Changed
End Property
)";

constexpr std::string_view PropertyNumbered = R"(
Option Explicit
Property Get X() As Object
10000:     Set X = mX
End Property
Property Let X(ByVal value As Object)
10000:     Set mX = value
10005:     Changed
End Property
Property Set X(ByVal value As Object)
10000:     Set mX = value
10005:     Changed
10010:     Changed
End Property
)";

TEST(LineNumbersTest, NumbersRestartInEveryPropertyProcedure) {
    CodeFixture fixture(Property);
    Insert(fixture, u"X");
    EXPECT_EQ(fixture.text(), Code(PropertyNumbered));
}

TEST(LineNumbersTest, RemovalTreatsEveryPropertyProcedure) {
    CodeFixture fixture(PropertyNumbered);
    Remove(fixture, u"X");
    EXPECT_EQ(fixture.text(), Code(Property));
}

// Each body is looked at by itself: one without numbers keeps its seven-blank indents.
TEST(LineNumbersTest, RemovalJudgesEachPropertyProcedureByItself) {
    CodeFixture fixture(R"(
Option Explicit
Property Get X() As Long
10000: X = 1
End Property
Property Let X(ByVal value As Long)
       y = value
End Property
)");
    Remove(fixture, u"X");
    EXPECT_EQ(fixture.text(), Code(R"(
Option Explicit
Property Get X() As Long
X = 1
End Property
Property Let X(ByVal value As Long)
       y = value
End Property
)"));
}

TEST(LineNumbersTest, RemovalWithoutNumbersChangesNothingNotEvenSevenBlankIndents) {
    constexpr std::string_view Source = "Option Explicit\nSub A()\n       x\nhErr:       y\nEnd Sub";
    CodeFixture fixture(Source);
    Remove(fixture, u"A");
    EXPECT_EQ(fixture.text(), Source);
    EXPECT_FALSE(fixture.module().edited());
}

TEST(LineNumbersTest, UnknownNamesChangeNothing) {
    CodeFixture fixture(Subs);
    for (const auto& [project, component, procedure] :
         {std::tuple(u"Nowhere", u"Module1", u"First"), std::tuple(u"Project1", u"Nothing", u"First"),
          std::tuple(u"Project1", u"Module1", u"Nobody"), std::tuple(u"Project1", u"Module1", u"")}) {
        LineNumbersInserter(*fixture.globals(), project, component, procedure, 10000, 5);
        LineNumbersRemover(*fixture.globals(), project, component, procedure);
    }
    EXPECT_EQ(fixture.text(), Code(Subs));
    EXPECT_FALSE(fixture.module().edited());
}

TEST(LineNumbersTest, TheProcedureIsThatOfTheNamedProject) {
    CodeFixture fixture("Sub A()\n    x\nEnd Sub");
    fixture.AddComponent(u"Other", ModuleName, "Sub A()\n    y\nEnd Sub");
    LineNumbersInserter(*fixture.globals(), u"Other", ModuleName, u"A", 10000, 5);
    EXPECT_EQ(fixture.text(), "Sub A()\n    x\nEnd Sub");
    EXPECT_EQ(fixture.TextOf(u"Other", ModuleName), "Sub A()\n10000:     y\nEnd Sub");
}

TEST(LineNumbersTest, ACodeWindowIsNotNeeded) {
    CodeFixture fixture("Sub A()\n    x\nEnd Sub");
    fixture.CloseCodeWindow();
    Insert(fixture, u"A");
    EXPECT_EQ(fixture.text(), "Sub A()\n10000:     x\nEnd Sub");
}

TEST(LineNumbersTest, TheCaretStaysWhereItIs) {
    CodeFixture fixture("Sub A()\n    x{{ = }}1\nEnd Sub");
    const hostmodel::Selection before = fixture.workspace().activePane()->selection;
    Insert(fixture, u"A");
    EXPECT_EQ(fixture.workspace().activePane()->selection, before);
}

TEST(LineNumbersTest, TheModuleIsChangedByReplacingSingleLinesOnly) {
    CodeFixture fixture(Subs);
    const auto plan = std::make_shared<support::FaultPlan>();
    support::FaultyGlobals globals(fixture.globals(), plan);
    LineNumbersInserter(globals, ProjectName, ModuleName, u"Second", 10000, 5);
    LineNumbersRemover(globals, ProjectName, ModuleName, u"Second");
    EXPECT_EQ(plan->CountOf("CodeModule.ReplaceLine"), 2 * 11U);
    EXPECT_EQ(plan->CountOf("CodeModule.InsertLines"), 0U);
    EXPECT_EQ(plan->CountOf("CodeModule.DeleteLines"), 0U);
    EXPECT_EQ(fixture.text(), Code(Subs));
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char character : text) {
        if (character == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += character;
        }
    }
    return lines;
}

// Every line of `text` is as it was in `before`, or as it should be in `after`.
void ExpectPartOfTheWork(const std::string& text, const std::string& before, const std::string& after) {
    const auto lines = LinesOf(text);
    const auto linesBefore = LinesOf(before);
    const auto linesAfter = LinesOf(after);
    ASSERT_EQ(lines.size(), linesBefore.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_TRUE(lines[i] == linesBefore[i] || lines[i] == linesAfter[i]) << lines[i];
    }
}

void ExpectNothingKept(CodeFixture& fixture, const support::FaultPlan& plan) {
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
    EXPECT_EQ(plan.liveHandles, 1U);
}

// No line depends on another one in this code, so that whatever fails, each line is one or the other.
TEST(FaultyLineNumbersTest, AnInsertionWithOneFailureDoesAPartOfItsWork) {
    support::WithEveryCallFaulty(
        support::Fault::Fails, [] { return std::make_unique<CodeFixture>(Property); },
        [](const auto& globals) { LineNumbersInserter(*globals, ProjectName, ModuleName, u"X", 10000, 5); },
        [](CodeFixture& fixture, const support::FaultPlan& plan, std::string_view faulty) {
            SCOPED_TRACE(faulty);
            ExpectPartOfTheWork(fixture.text(), Code(Property), Code(PropertyNumbered));
            ExpectNothingKept(fixture, plan);
        });
}

TEST(FaultyLineNumbersTest, ARemovalWithOneFailureDoesAPartOfItsWork) {
    support::WithEveryCallFaulty(
        support::Fault::Fails, [] { return std::make_unique<CodeFixture>(PropertyNumbered); },
        [](const auto& globals) { LineNumbersRemover(*globals, ProjectName, ModuleName, u"X"); },
        [](CodeFixture& fixture, const support::FaultPlan& plan, std::string_view faulty) {
            SCOPED_TRACE(faulty);
            ExpectPartOfTheWork(fixture.text(), Code(PropertyNumbered), Code(Property));
            ExpectNothingKept(fixture, plan);
        });
}

TEST(FaultyLineNumbersTest, AnEmptyAnswerAnywhereIsSurvived) {
    support::WithEveryCallFaulty(
        support::Fault::Empty, [] { return std::make_unique<CodeFixture>(SecondNumbered); },
        [](const auto& globals) {
            LineNumbersRemover(*globals, ProjectName, ModuleName, u"Second");
            LineNumbersInserter(*globals, ProjectName, ModuleName, u"Second", 10000, 5);
        },
        [](CodeFixture& fixture, const support::FaultPlan& plan, std::string_view faulty) {
            SCOPED_TRACE(faulty);
            EXPECT_EQ(LinesOf(fixture.text()).size(), LinesOf(Code(Subs)).size());
            ExpectNothingKept(fixture, plan);
        });
}

TEST(FaultyLineNumbersTest, ARefusedLineIsLeftAndTheOthersAreNumbered) {
    CodeFixture fixture(Property);
    const auto plan = support::PlanWithOneFailure("CodeModule.ReplaceLine", 1);
    support::FaultyGlobals globals(fixture.globals(), plan);
    LineNumbersInserter(globals, ProjectName, ModuleName, u"X", 10000, 5);
    EXPECT_EQ(fixture.text(), Code(R"(
Option Explicit
Property Get X() As Object
10000:     Set X = mX
End Property
Property Let X(ByVal value As Object)
10000:     Set mX = value
10005:     Changed
End Property
Property Set X(ByVal value As Object)
10000:     Set mX = value
    Changed
10010:     Changed
End Property
)"));
}

}  // namespace
}  // namespace lintara::transform
