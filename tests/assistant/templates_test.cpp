// Templates, and the arithmetic of selection and caret, through the facade: what the platform gives, what
// works without a services object, and what an exception leaves behind.

#include "assistant/lintara.h"
#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/recorded_screen.h"

#include <memory>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace lintara {
namespace {

using support::CodeFixture;

constexpr std::string_view Source = "Option Explicit\nPrivate Sub cmdOK_Click()\n    x^\nEnd Sub";

class FacadeTemplatesTest : public testing::Test {
  protected:
    FacadeTemplatesTest() {
        fixture_.SetDesigner({{u"cmdOK", u"CommandButton"}});
        fixture_.globals()->SetComputerName(u"BOX7");
        fixture_.globals()->SetUserName(u"ann");
        assistant_.oG = fixture_.globals();
    }

    CodeFixture fixture_{Source};
    std::shared_ptr<support::RecordedScreen> screen_ = std::make_shared<support::RecordedScreen>();
    Lintara assistant_{{.screen = screen_,
                        .clock = std::make_shared<support::FixedClock>(),
                        .regional = std::make_shared<support::FixedRegionalTexts>()}};
};

constexpr TextView AllPlaceholders =
    u"{ProjectName}|{ComponentName}|{MemberName}|{ControlName}|{ComputerName}|{UserName}|{Date}|{Time}|"
    u"{MemberType}";
constexpr TextView AllValues = u"Project1|Module1|cmdOK_Click|cmdOK|BOX7|ann|5/11/2026|17:4:9|Sub";

TEST_F(FacadeTemplatesTest, ATemplateIsExpandedForTheMemberAtTheCaret) {
    EXPECT_EQ(assistant_.ParsePseudoCode(AllPlaceholders), AllValues);
    EXPECT_EQ(fixture_.globals()->liveHandles(), 0U);
}

TEST_F(FacadeTemplatesTest, ATemplateIsExpandedForAMemberByName) {
    fixture_.CloseCodeWindow();
    EXPECT_EQ(assistant_.ParsePseudoCodeEx(AllPlaceholders, u"Module1", u"cmdOK_Click"), AllValues);
    EXPECT_EQ(fixture_.globals()->liveHandles(), 0U);
}

TEST_F(FacadeTemplatesTest, CodeBecomesATemplate) {
    EXPECT_EQ(assistant_.GeneratePseudoCode(u"Exit Sub ' ann, cmdOK"),
              u"Exit {MemberType} ' {UserName}, {ControlName}");
    EXPECT_EQ(fixture_.globals()->liveHandles(), 0U);
}

TEST_F(FacadeTemplatesTest, WithoutACodeWindowTheTextComesBack) {
    fixture_.CloseCodeWindow();
    EXPECT_EQ(assistant_.ParsePseudoCode(u"{ProjectName}"), u"{ProjectName}");
    EXPECT_EQ(assistant_.GeneratePseudoCode(u"Project1"), u"Project1");
}

TEST_F(FacadeTemplatesTest, WithoutAServicesObjectTheResultIsEmpty) {
    assistant_.oG = nullptr;
    EXPECT_EQ(assistant_.ParsePseudoCode(u"text"), u"");
    EXPECT_EQ(assistant_.ParsePseudoCodeEx(u"text", u"Module1", u"cmdOK_Click"), u"");
    EXPECT_EQ(assistant_.GeneratePseudoCode(u"text"), u"");
}

TEST(FacadeWithoutAClockTest, DateAndTimeStayInTheTemplate) {
    CodeFixture fixture(Source);
    Lintara assistant;
    assistant.oG = fixture.globals();
    EXPECT_EQ(assistant.ParsePseudoCode(u"{Date} {Time} {MemberName}"), u"{Date} {Time} cmdOK_Click");
}

TEST_F(FacadeTemplatesTest, AnExceptionOfTheHostLeavesAnEmptyResultAndTheDefaultPointer) {
    const auto plan = std::make_shared<support::FaultPlan>();
    plan->fault = [](std::size_t, std::string_view) { return support::Fault::Throws; };
    assistant_.oG = std::make_shared<support::FaultyGlobals>(fixture_.globals(), plan);
    EXPECT_EQ(assistant_.ParsePseudoCode(AllPlaceholders), u"");
    EXPECT_EQ(assistant_.ParsePseudoCodeEx(AllPlaceholders, u"Module1", u"cmdOK_Click"), u"");
    EXPECT_EQ(assistant_.GeneratePseudoCode(AllValues), u"");
    EXPECT_EQ(plan->calls.size(), 3U);
    EXPECT_EQ(screen_->pointers.size(), 6U);
    EXPECT_EQ(screen_->pointers.back(), hostmodel::MousePointer::Default);
}

// Every call of the host in turn misbehaves: nothing gets out, and no object of the host is kept.
class FaultyFacadeTemplatesTest : public testing::TestWithParam<support::Fault> {};

TEST_P(FaultyFacadeTemplatesTest, OneFaultAnywhereKeepsNothing) {
    support::WithEveryCallFaulty(
        GetParam(),
        [] {
            auto fixture = std::make_unique<CodeFixture>(Source);
            fixture->SetDesigner({{u"cmdOK", u"CommandButton"}});
            return fixture;
        },
        [](const auto& globals) {
            Lintara assistant;
            assistant.oG = globals;
            static_cast<void>(assistant.ParsePseudoCode(AllPlaceholders));
            static_cast<void>(assistant.ParsePseudoCodeEx(AllPlaceholders, u"Module1", u"Form_Load"));
            static_cast<void>(assistant.GeneratePseudoCode(AllValues));
        },
        [](CodeFixture& fixture, const support::FaultPlan& plan, std::string_view faulty) {
            SCOPED_TRACE(faulty);
            EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
            EXPECT_EQ(plan.liveHandles, 1U);
            EXPECT_FALSE(fixture.module().edited());
        });
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyFacadeTemplatesTest,
                         testing::Values(support::Fault::Fails, support::Fault::Empty,
                                         support::Fault::Throws));

TEST(FacadeSelectionTest, TheArithmeticWorksBeforeTheServicesObjectIsSet) {
    Lintara assistant;
    Text lines = u"abc\r\ndef";
    EXPECT_EQ(assistant.GetTextSelection(lines, 1, 2, 2, 3), u"bc\r\nde");
    EXPECT_EQ(assistant.InsertTextInLine(u"abc", u"-", 2), u"a-bc");
    std::int32_t line = 10;
    std::int32_t column = 5;
    assistant.TranslateCarret(line, column, u"abcde\r\nfghij");
    EXPECT_EQ(line, 11);
    EXPECT_EQ(column, 6);
}

TEST(FacadeSelectionTest, TheCallersLinesGetTheLineBreakOfTheSelection) {
    Lintara assistant;
    Text lines = u"a\r\nb";
    EXPECT_EQ(assistant.GetTextSelection(lines, 3, 5, 1, 1), u"a\r\nb\r\n");
    EXPECT_EQ(lines, u"a\r\nb\r\n");
}

TEST(FacadeSelectionTest, RefusedArgumentsGiveNothing) {
    Lintara assistant;
    Text lines = u"abc";
    EXPECT_EQ(assistant.GetTextSelection(lines, 1, 1, 3, 1), u"");
    EXPECT_EQ(assistant.InsertTextInLine(u"abc", u"-", 0), u"");
    std::int32_t line = 2147483647;
    std::int32_t column = 2147483647;
    assistant.TranslateCarret(line, column, u"x");
    EXPECT_EQ(column, 2147483647);
    assistant.TranslateCarret(line, column, u"x\r\n");
    EXPECT_EQ(line, 2147483647);
    EXPECT_EQ(column, 1);
}

}  // namespace
}  // namespace lintara
