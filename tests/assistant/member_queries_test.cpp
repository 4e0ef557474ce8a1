// What the facade tells about the member under the caret, and about a member by name.

#include "assistant/lintara.h"
#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/support/scripted_module.h"

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace lintara {
namespace {

using support::CodeFixture;

std::string Narrow(TextView text) {
    return {text.begin(), text.end()};
}

struct Answers {
    std::int32_t line = 0;
    std::string name;
    std::string type;

    friend bool operator==(const Answers&, const Answers&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Answers& answers) {
        return out << answers.line << " \"" << answers.name << "\" \"" << answers.type << '"';
    }
};

Answers Ask(CodeFixture& fixture) {
    Lintara assistant;
    assistant.oG = fixture.globals();
    Answers answers{assistant.GetLineNumber(), Narrow(assistant.GetMemberName()),
                    Narrow(assistant.GetMemberType())};
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
    EXPECT_FALSE(fixture.module().edited());
    return answers;
}

Answers At(std::string_view source) {
    CodeFixture fixture(source);
    return Ask(fixture);
}

std::string TypeEx(CodeFixture& fixture, TextView component, TextView member) {
    Lintara assistant;
    assistant.oG = fixture.globals();
    const Text type = assistant.GetMemberTypeEx(component, member);
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
    return Narrow(type);
}

std::string TypeEx(std::string_view source, TextView member) {
    CodeFixture fixture(source);
    return TypeEx(fixture, u"Module1", member);
}

TEST(MemberQueriesTest, TheCaretInABodyIsInItsMember) {
    EXPECT_EQ(At("Option Explicit\nSub A()\n    x^\nEnd Sub\nFunction B()\nEnd Function"),
              (Answers{3, "A", "Sub"}));
    EXPECT_EQ(At("Option Explicit\nSub A()\nEnd Sub\nFunction B()\n^End Function"),
              (Answers{5, "B", "Function"}));
}

TEST(MemberQueriesTest, LinesAboveAHeaderBelongToItsMember) {
    EXPECT_EQ(At("Option Explicit\nSub A()\nEnd Sub\n^\nSub B()\nEnd Sub").name, "B");
}

TEST(MemberQueriesTest, TheDeclarationsHoldNoMember) {
    EXPECT_EQ(At("Option Explicit^\nSub A()\nEnd Sub"), (Answers{1, "", "Property"}));
}

TEST(MemberQueriesTest, WithoutACodeWindowThereIsNoLineAndNoMember) {
    CodeFixture fixture("Sub A()\n^\nEnd Sub");
    fixture.CloseCodeWindow();
    EXPECT_EQ(Ask(fixture), (Answers{0, "", "Property"}));
}

TEST(MemberQueriesTest, TheLineIsTheLastOneOfASelection) {
    EXPECT_EQ(At("Option Explicit\n\n\n{{Sub A()\nEnd Sub\n\n\n\nSub B()}}\nEnd Sub"),
              (Answers{9, "B", "?"}));
}

TEST(MemberQueriesTest, AWordThatBeginsWithSubIsNoSub) {
    constexpr std::string_view Source =
        "Option Explicit\nPrivate Function SubTotal() As Long\n^\nEnd Function";
    EXPECT_EQ(At(Source).type, "Function");
    EXPECT_EQ(TypeEx(Source, u"SubTotal"), "Function");
}

TEST(MemberQueriesTest, ACommentAboveTheHeaderHidesTheKindOfTheMemberAtTheCaretOnly) {
    constexpr std::string_view Source = "Option Explicit\n' does something\nSub Alpha()\n    x^\nEnd Sub";
    EXPECT_EQ(At(Source).type, "?");
    EXPECT_EQ(TypeEx(Source, u"Alpha"), "Sub");
}

TEST(MemberQueriesTest, ABlankLineAboveTheHeaderHidesItToo) {
    EXPECT_EQ(At("Option Explicit\n\nSub Alpha()\n    x^\nEnd Sub").type, "?");
}

TEST(MemberQueriesTest, ACommentThatNamesTheMemberAfterSubMakesAFunctionASub) {
    constexpr std::string_view Source =
        "Option Explicit\n' no longer the sub Alpha\nFunction Alpha()\n    x^\nEnd Function";
    EXPECT_EQ(At(Source).type, "Sub");
    EXPECT_EQ(TypeEx(Source, u"Alpha"), "Function");
}

TEST(MemberQueriesTest, TheFirstPlaceOfTheNamesTextCounts) {
    // The S of Sub is where the name S is found, so the word Sub does not stand in front of it.
    EXPECT_EQ(TypeEx("Option Explicit\nPrivate Sub S()\nEnd Sub", u"S"), "Function");
    EXPECT_EQ(TypeEx("Option Explicit\nPrivate Sub b()\nEnd Sub", u"b"), "Sub");
}

// For a property there is no first line of a Sub or Function, and the caret's own line is read.
TEST(MemberQueriesTest, InAPropertyTheCaretsOwnLineIsLookedAt) {
    EXPECT_EQ(At("Option Explicit\nProperty Get Alpha()^\n    Alpha = 1\nEnd Property"),
              (Answers{2, "Alpha", "Function"}));
    EXPECT_EQ(At("Option Explicit\nProperty Get Alpha()\n    Alpha = 1^\nEnd Property").type, "Function");
    EXPECT_EQ(At("Option Explicit\nProperty Get Alpha()\n    y = GoSub1(Alpha)^\nEnd Property").type, "Sub");
    EXPECT_EQ(At("Option Explicit\nProperty Get Alpha()\n    y = 1^\nEnd Property").type, "?");
}

TEST(MemberQueriesTest, TheKindByNameIsReadOffTheHeader) {
    constexpr std::string_view Source = R"(
Option Explicit
PUBLIC SUB Loud()
End Sub
Private Static Function Quiet() As Long
End Function
Property Get Value()
End Property
)";
    EXPECT_EQ(TypeEx(Source, u"Loud"), "Sub");
    EXPECT_EQ(TypeEx(Source, u"Quiet"), "Function");
    EXPECT_EQ(TypeEx(Source, u"Value"), "Property");
}

TEST(MemberQueriesTest, TheKindOfAnUnknownNameIsProperty) {
    EXPECT_EQ(TypeEx("Sub A()\nEnd Sub", u"Nobody"), "Property");
    CodeFixture fixture("Sub A()\nEnd Sub");
    EXPECT_EQ(TypeEx(fixture, u"Nothing", u"A"), "Property");
}

TEST(MemberQueriesTest, TheKindOfAnEmptyNameIsEmpty) {
    CodeFixture fixture("Sub A()\nEnd Sub");
    EXPECT_EQ(TypeEx(fixture, u"Module1", u""), "");
    EXPECT_EQ(TypeEx(fixture, u"", u"A"), "");
}

TEST(MemberQueriesTest, ANameInOtherLetterCaseIsNotInItsHeader) {
    EXPECT_EQ(TypeEx("Sub Alpha()\nEnd Sub", u"alpha"), "?");
}

TEST(MemberQueriesTest, ANameOnAContinuationOfItsHeaderIsNotInItsFirstLine) {
    EXPECT_EQ(TypeEx("Option Explicit\nPrivate Sub _\n    Alpha()\nEnd Sub", u"Alpha"), "?");
}

TEST(MemberQueriesTest, TheKindByNameIsAskedInTheActiveProject) {
    CodeFixture fixture("Sub A()\nEnd Sub");
    fixture.AddComponent(u"Other", u"Module1", "Function A()\nEnd Function");
    fixture.AddComponent(u"Other", u"Module2", "Function A()\nEnd Function");
    EXPECT_EQ(TypeEx(fixture, u"Module1", u"A"), "Sub");
    EXPECT_EQ(TypeEx(fixture, u"Module2", u"A"), "Property");
    fixture.workspace().SetActiveProject(*fixture.workspace().Find(u"Other"));
    EXPECT_EQ(TypeEx(fixture, u"Module2", u"A"), "Function");
}

// The kinds with which ProcOfLine is asked when the first `silent` questions yield "".
std::vector<std::int32_t> KindsAsked(std::size_t silent) {
    const auto module = std::make_shared<support::ScriptedModule>();
    module->caret = {Line{3}, Column{1}};
    std::vector<std::int32_t> kinds;
    module->procOfLine = [&](Line line, hostmodel::MemberKind& kind) {
        EXPECT_EQ(line, Line{3});
        kinds.push_back(static_cast<std::int32_t>(kind));
        return kinds.size() <= silent ? Text() : Text(u"A");
    };
    Lintara assistant;
    assistant.oG = support::GlobalsOver(module);
    EXPECT_EQ(assistant.GetMemberName(), silent < 4 ? u"A" : u"");
    return kinds;
}

TEST(MemberQueriesTest, TheNameIsAskedForAsProcLetGetAndLastAsSet) {
    EXPECT_EQ(KindsAsked(4), (std::vector<std::int32_t>{0, 1, 3, 2}));
}

TEST(MemberQueriesTest, TheFirstNameThatIsFoundEndsTheQuestions) {
    EXPECT_EQ(KindsAsked(0), (std::vector<std::int32_t>{0}));
    EXPECT_EQ(KindsAsked(2), (std::vector<std::int32_t>{0, 1, 3}));
}

TEST(MemberQueriesTest, AFailureToFindTheNameByOneKindGoesOnWithTheNext) {
    CodeFixture fixture("Option Explicit\nSub A()\n^\nEnd Sub");
    const auto plan = std::make_shared<support::FaultPlan>();
    plan->fault = [&plan = *plan](std::size_t, std::string_view call) {
        return call == "CodeModule.ProcOfLine" && plan.CountOf(call) < 3 ? support::Fault::Fails
                                                                         : support::Fault::None;
    };
    Lintara assistant;
    assistant.oG = std::make_shared<support::FaultyGlobals>(fixture.globals(), plan);
    EXPECT_EQ(assistant.GetMemberName(), u"A");
    EXPECT_EQ(plan->CountOf("CodeModule.ProcOfLine"), 4U);
}

TEST(MemberQueriesTest, AWindowWhoseTopLineCannotBeReadCountsAsNone) {
    CodeFixture fixture("Option Explicit\nSub A()\n^\nEnd Sub");
    const auto plan = std::make_shared<support::FaultPlan>();
    plan->fault = [](std::size_t, std::string_view call) {
        return call == "CodePane.TopLine" ? support::Fault::Fails : support::Fault::None;
    };
    Lintara assistant;
    assistant.oG = std::make_shared<support::FaultyGlobals>(fixture.globals(), plan);
    EXPECT_EQ(assistant.GetLineNumber(), 0);
    EXPECT_EQ(plan->CountOf("CodePane.GetSelection"), 0U);
    EXPECT_EQ(assistant.GetMemberName(), u"");
}

TEST(MemberQueriesTest, ASelectionThatCannotBeReadIsLineZero) {
    CodeFixture fixture("Option Explicit\nSub A()\n^\nEnd Sub");
    const auto plan = std::make_shared<support::FaultPlan>();
    plan->fault = [](std::size_t, std::string_view call) {
        return call == "CodePane.GetSelection" ? support::Fault::Fails : support::Fault::None;
    };
    Lintara assistant;
    assistant.oG = std::make_shared<support::FaultyGlobals>(fixture.globals(), plan);
    EXPECT_EQ(assistant.GetLineNumber(), 0);
}

TEST(MemberQueriesTest, AnUnreadableHeaderIsAnUnknownKind) {
    CodeFixture fixture("Option Explicit\nSub A()\n^\nEnd Sub");
    const auto plan = std::make_shared<support::FaultPlan>();
    plan->fault = [](std::size_t, std::string_view call) {
        return call == "CodeModule.Lines" ? support::Fault::Fails : support::Fault::None;
    };
    Lintara assistant;
    assistant.oG = std::make_shared<support::FaultyGlobals>(fixture.globals(), plan);
    EXPECT_EQ(assistant.GetMemberType(), u"?");
    EXPECT_EQ(assistant.GetMemberTypeEx(u"Module1", u"A"), u"?");
}

}  // namespace
}  // namespace lintara
