// Error handlers, search and replace and custom code through the facade, with what it takes from the
// platform.

#include "assistant/lintara.h"
#include "platform/memory_settings.h"
#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace lintara {
namespace {

using support::Code;
using support::CodeFixture;

constexpr std::string_view Source = "Option Explicit\nSub A()\n    x = 1^\nEnd Sub";

class NoonClock : public Clock {
  public:
    Result<LocalTime> Now() override { return LocalTime{.year = 2003, .month = 4, .day = 5, .hour = 12}; }
};

class PlainTexts : public RegionalTexts {
  public:
    Result<Text> Date(const LocalTime&) override { return Text(u"5.4.2003"); }
    Result<Text> Time(const LocalTime&) override { return Text(u"12:00"); }
};

Platform WholePlatform() {
    return {.settings = std::make_shared<platform::MemorySettings>(),
            .clock = std::make_shared<NoonClock>(),
            .regional = std::make_shared<PlainTexts>()};
}

Lintara AssistantOver(CodeFixture& fixture, Platform platform = WholePlatform()) {
    Lintara assistant(std::move(platform));
    assistant.oG = fixture.globals();
    return assistant;
}

TEST(CodeEditsTest, AnErrorHandlerGoesInAndOut) {
    CodeFixture fixture(Source);
    const Platform platform = WholePlatform();
    Lintara assistant = AssistantOver(fixture, platform);
    assistant.ErrorHandlerInserter(u"Project1", u"Module1", u"A", u"Oops",
                                   u"' {MemberType} {MemberName}, {Date}");
    EXPECT_EQ(fixture.text(), Code(R"(
Option Explicit
Sub A()
    On Error GoTo Oops
    x = 1
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
Oops:
' Sub A, 5.4.2003
End Sub
)"));
    ASSERT_TRUE(platform.settings->Save(
        {.application = u"Tarnwick", .section = u"CodeAutomation", .key = u"EHLabel"}, u"Oops"));
    assistant.ErrorHandlerRemover(u"Project1", u"Module1", u"A");
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    On Error GoTo 0\n    x = 1\nEnd Sub");
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
}

TEST(CodeEditsTest, WithoutSettingsTheLabelIsTheDefault) {
    CodeFixture fixture(Source);
    Lintara assistant = AssistantOver(fixture, {});
    assistant.ErrorHandlerInserter(u"Project1", u"Module1", u"A", u"hErr", u"");
    assistant.ErrorHandlerRemover(u"Project1", u"Module1", u"A");
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    On Error GoTo 0\n    x = 1\nEnd Sub");
}

TEST(CodeEditsTest, CustomCodeGoesInAndOut) {
    CodeFixture fixture(Source);
    Lintara assistant = AssistantOver(fixture);
    assistant.CustomCodeInserter(u"Project1", u"Module1", u"A", u"' {Time}", false, 3, 2, 12);
    EXPECT_EQ(fixture.text(), Code(R"(
Option Explicit
Sub A()
    x = 1
' TWCustomCode begin - please do not modify or remove this line 12
' 12:00
' TWCustomCode end - please do not modify or remove this line 12
End Sub
)"));
    assistant.CustomCodeRemover(u"Project1", u"Module1", u"A", 12);
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    x = 1\nEnd Sub");
    assistant.CustomCodeInserter(u"Project1", u"Module1", u"A", u"    y = 2", true, 2, 0, 12);
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    x = 1\n    y = 2\nEnd Sub");
}

TEST(CodeEditsTest, SearchAndReplaceTellsWhetherItFound) {
    CodeFixture fixture(Source);
    Lintara assistant = AssistantOver(fixture);
    for (const bool before : {false, true}) {
        bool found = before;
        assistant.SearchAndReplace(u"Module1", u"X = ", u"y = ", 3, 3, false, true, found);
        EXPECT_EQ(found, !before);  // the second time there is none left
    }
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    y = 1\nEnd Sub");
    bool found = true;
    assistant.SearchAndReplace(u"Module1", u"y", u"z", 10, 5, false, false, found);
    EXPECT_FALSE(found);
    assistant.SearchAndReplace(u"Module1", u"xpl", u"", 1, 1, true, false, found);
    EXPECT_FALSE(found);
}

TEST(CodeEditsTest, WhatWasFoundBeforeTheHostThrewIsTold) {
    constexpr std::array<std::string_view, 4> Calls = {"CodeModule.Find", "CodeModule.Lines",
                                                       "CodeModule.ReplaceLine", "VBComponent.CodeModule"};
    for (const std::string_view throwing : Calls) {
        for (const std::size_t before : {0U, 1U}) {
            CodeFixture fixture("x\nx\nx");
            const auto plan = std::make_shared<support::FaultPlan>();
            plan->fault = [&](std::size_t, std::string_view call) {
                return call == throwing && plan->CountOf(call) == before ? support::Fault::Throws
                                                                         : support::Fault::None;
            };
            Lintara assistant(WholePlatform());
            assistant.oG = std::make_shared<support::FaultyGlobals>(fixture.globals(), plan);
            const bool hasMatched = before > 0 || throwing.ends_with("Line") || throwing.ends_with("Lines");
            bool found = !hasMatched;
            assistant.SearchAndReplace(u"Module1", u"x", u"y", 1, 3, false, false, found);
            EXPECT_EQ(found, hasMatched) << throwing << " after " << before;
        }
    }
}

TEST(CodeEditsTest, WithoutAServicesObjectNothingIsFound) {
    Lintara assistant(WholePlatform());
    bool found = true;
    assistant.SearchAndReplace(u"Module1", u"x", u"y", 1, 9, false, false, found);
    EXPECT_FALSE(found);
}

// The Get has something to take out, the Let takes a handler.
constexpr std::string_view Blocks = R"(
Option Explicit
Property Get A() As Object
    On Error GoTo hErr
' TWCustomCode begin - please do not modify or remove this line 3
' TWCustomCode end - please do not modify or remove this line 3
' TWErrorHandler begin - please do not modify or remove this line
hErr:
End Property
Property Let A(ByVal value As Object)
    Set mA = value
    On Error GoTo 0
End Property
)";

class FaultyCodeEditsTest : public testing::TestWithParam<support::Fault> {};

TEST_P(FaultyCodeEditsTest, OneFaultAnywhereReachesNobodyAndKeepsNothing) {
    using Edit = void (*)(Lintara&);
    const std::array<Edit, 5> edits = {
        [](Lintara& a) {
            a.ErrorHandlerInserter(u"Project1", u"Module1", u"A", u"hErr", u"' {ProjectName} {MemberType}");
        },
        [](Lintara& a) { a.ErrorHandlerRemover(u"Project1", u"Module1", u"A"); },
        [](Lintara& a) {
            bool found = true;
            a.SearchAndReplace(u"Module1", u"A", u"B", 1, 9, true, true, found);
        },
        [](Lintara& a) {
            a.CustomCodeInserter(u"Project1", u"Module1", u"A", u"' {UserName}", false, 2, 1, 3);
        },
        [](Lintara& a) { a.CustomCodeRemover(u"Project1", u"Module1", u"A", 3); },
    };
    for (const Edit edit : edits) {
        support::WithEveryCallFaulty(
            GetParam(), [] { return std::make_unique<CodeFixture>(Blocks); },
            [&](const auto& globals) {
                Lintara assistant(WholePlatform());
                assistant.oG = globals;
                edit(assistant);
            },
            [](CodeFixture& fixture, const support::FaultPlan& plan, std::string_view faulty) {
                SCOPED_TRACE(faulty);
                EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
                EXPECT_EQ(plan.liveHandles, 1U);
            });
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyCodeEditsTest,
                         testing::Values(support::Fault::Fails, support::Fault::Empty,
                                         support::Fault::Throws));

}  // namespace
}  // namespace lintara
