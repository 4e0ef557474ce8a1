// Conditional compilation around and inside procedures: what is not edited, and what must not be torn apart.
#include "cli/edits/custom_code_insertion.h"
#include "cli/edits/custom_code_removal.h"
#include "tests/cli/command_run.h"
#include "tests/cli/handler_edits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* SharedBody =
    "#If Win64 Then\nFunction Hook(ByVal h As LongPtr) As LongPtr\n#Else\n"
    "Function Hook(ByVal h As Long) As Long\n#End If\n    Hook = h\nEnd Function\n";

struct BodyCase {
    const char* name;
    const char* code;
    int line;
    const char* message;
};

void PrintTo(const BodyCase& c, std::ostream* out) {
    *out << c.name;
}

class ForeignLine : public testing::TestWithParam<BodyCase> {};

TEST_P(ForeignLine, KeepsAllEditsAway) {
    EditedModule module(GetParam().code);
    const auto expectSkip = [&](const ComponentReport& report) {
        ASSERT_EQ(report.skipped.size(), 1U);
        EXPECT_EQ(report.skipped[0].reason, SkipReason::RangeMismatch);
        EXPECT_EQ(report.skipped[0].at, Line(GetParam().line));
        EXPECT_THAT(report.skipped[0].message, HasSubstr(GetParam().message));
        EXPECT_EQ(module.Bytes(), module.OriginalBytes());
    };
    expectSkip(module.Insert());
    expectSkip(InsertHandlers(module));
    expectSkip(
        module.Edit(std::make_unique<CustomCodeInsertion>(CustomCodeOptions{.code = u"    Trace", .id = 5}),
                    false, false));
}

const BodyCase bodyCases[] = {
    {"HeadersThatShareABody", SharedBody, 4, "line 4 (line 4 of the file) in its body is the header"},
    {"HeaderOfSeveralLines", "#If A Then\nSub H(a)\n#Else\nPrivate _\n  Sub H(b)\n#End If\n    x\nEnd Sub\n",
     4, "is the header"},
    {"BodyThatEndsInABranch", "Sub H()\n    x\n#If A Then\n    y\nEnd Sub\n#End If\n", 3,
     "the #If at line 3 (line 3 of the file) has no #End If in its body"},
    {"BranchThatTheBodyReachesOutOf", "#If A Then\nSub H()\n    x\n# else\n    y\n#End If\nEnd Sub\n", 4,
     "the #Else at line 4"},
};

INSTANTIATE_TEST_SUITE_P(Cases, ForeignLine, testing::ValuesIn(bodyCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(ForeignLine, IsNoDirectiveThatIsClosedAndNoWordLikeAHeaders) {
    EditedModule module(
        "#If A Then\nSub H()\n    Static n\n    Subtotal = n\n#If B Then\n    y\n#ElseIf C Then\n#Else\n#End "
        "If\n"
        "    d = _\n#1/2/2003#\nEnd Sub\n#End If\n");
    EXPECT_THAT(EditedIn(module.Insert()), ElementsAre("H"));
}

TEST(ForeignLine, IsANoteOfTheCheck) {
    CommandTest test;
    test.Write("a.bas", Replaced(SharedBody, "\n", "\r\n"));
    for (const std::string work : {"--error-handlers", "--line-numbers"}) {
        const Outcome outcome = test.Run("check @a.bas " + work);
        EXPECT_EQ(outcome.status, 0) << outcome.out;
        EXPECT_EQ(outcome.out.find("no-"), std::string::npos) << outcome.out;
        EXPECT_THAT(outcome.out + outcome.err, HasSubstr("would be skipped"));
    }
}

TEST(RangeGuard, TellsOfANameThatOccursEarlierInItsHeader) {
    for (const char* code : {"Sub S()\n    x\nEnd Sub\n", "Private Sub a()\n    x\nEnd Sub\n"}) {
        EditedModule module(code);
        const ComponentReport report = module.Insert();
        ASSERT_EQ(report.skipped.size(), 1U);
        EXPECT_EQ(report.skipped[0].reason, SkipReason::RangeMismatch);
        EXPECT_THAT(report.skipped[0].message, HasSubstr("its name occurs earlier in its header, at line 1"));
    }
}

TEST(HandlerRemoval, LeavesAHandlerThatHoldsOneOfTwoDirectives) {
    EditedModule module("Sub A()\n    x\n#If B Then\n" + UsualBlock("Sub", "A") + "#End If\nEnd Sub\n");
    const auto expectSkip = [&](const ComponentReport& report) {
        EXPECT_THAT(SkippedIn(report), ElementsAre("marker-mismatch A"));
        ASSERT_FALSE(report.skipped.empty());
        EXPECT_THAT(report.skipped[0].message,
                    HasSubstr("the #End If at line 8 (line 8 of the file) would go with the handler"));
        EXPECT_EQ(module.Bytes(), module.OriginalBytes());
    };
    expectSkip(RemoveHandlers(module));
    expectSkip(InsertHandlers(module, {.handler = {u"hErr", u"    y"}, .refresh = true}));
}

TEST(HandlerRemoval, TakesWholeDirectivesAlong) {
    EditedModule module("Sub A()\n    x\n" + UsualBlock("Sub", "A") +
                        "#If B Then\n    y\n#End If\nEnd Sub\n");
    EXPECT_THAT(SkippedIn(RemoveHandlers(module)), IsEmpty());
    EXPECT_EQ(module.Code(), "Sub A()\n    x\nEnd Sub\n");
}

TEST(CustomCodeRemoval, LeavesABlockThatHoldsOneOfTwoDirectives) {
    EditedModule module(
        "Sub A()\n' TWCustomCode begin - please do not modify or remove this line 5\n#If B Then\n"
        "' TWCustomCode end - please do not modify or remove this line 5\n    x\n#End If\nEnd Sub\n");
    const ComponentReport report = module.Edit(std::make_unique<CustomCodeRemoval>(5), true, false);
    EXPECT_THAT(SkippedIn(report), ElementsAre("marker-mismatch A"));
    ASSERT_FALSE(report.skipped.empty());
    EXPECT_THAT(report.skipped[0].message, HasSubstr("the #If at line 3"));
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

}  // namespace
}  // namespace lintara::cli
