// The frame that all members of the facade share: what they do without a services object, with the mouse
// pointer, and when something breaks.

#include "assistant/lintara.h"

#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/support/recorded_screen.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace lintara {
namespace {

using hostmodel::MousePointer;
using support::CodeFixture;
using support::RecordedScreen;

constexpr std::string_view Source = "Option Explicit\nSub A()\n    x = 1^\nEnd Sub";

// Calls every service on the procedure A of the fixture and checks nothing: for tests of the frame.
void CallEveryService(Lintara& assistant) {
    Text text = u"ab";
    std::int32_t line = 1;
    std::int32_t column = 1;
    bool found = true;
    static_cast<void>(assistant.ParsePseudoCode(u"{MemberName}"));
    static_cast<void>(assistant.ParsePseudoCodeEx(u"{MemberName}", u"Module1", u"A"));
    static_cast<void>(assistant.GeneratePseudoCode(u"A"));
    static_cast<void>(assistant.GetMemberName());
    static_cast<void>(assistant.GetMemberType());
    static_cast<void>(assistant.GetMemberTypeEx(u"Module1", u"A"));
    assistant.InitCodeAutomation();
    static_cast<void>(assistant.GetTextSelection(text, 1, 1, 1, 2));
    static_cast<void>(assistant.InsertTextInLine(u"ab", u"c", 1));
    assistant.TranslateCarret(line, column, u"");
    assistant.CloseCodeAutomation();
    assistant.LineNumbersInserter(u"Project1", u"Module1", u"A", 10000, 5);
    assistant.LineNumbersRemover(u"Project1", u"Module1", u"A");
    assistant.ErrorHandlerInserter(u"Project1", u"Module1", u"Nobody", u"hErr", u"");
    assistant.ErrorHandlerRemover(u"Project1", u"Module1", u"A");
    assistant.SearchAndReplace(u"Module1", u"nowhere", u"", 1, 9, false, false, found);
    assistant.CustomCodeInserter(u"Project1", u"Module1", u"Nobody", u"", false, 1, 1, 1);
    assistant.CustomCodeRemover(u"Project1", u"Module1", u"A", 1);
    static_cast<void>(assistant.GetLineNumber());
    assistant.ShowHistory();
}

TEST(LintaraTest, BeforeTheServicesObjectIsSetEveryQueryIsEmpty) {
    Lintara assistant;
    EXPECT_EQ(assistant.GetMemberName(), u"");
    EXPECT_EQ(assistant.GetMemberType(), u"");
    EXPECT_EQ(assistant.GetMemberTypeEx(u"Module1", u"A"), u"");
    EXPECT_EQ(assistant.GetLineNumber(), 0);
    EXPECT_EQ(assistant.ParsePseudoCode(u"{MemberName}"), u"");
    EXPECT_EQ(assistant.ParsePseudoCodeEx(u"{MemberName}", u"Module1", u"A"), u"");
    EXPECT_EQ(assistant.GeneratePseudoCode(u"A"), u"");
    EXPECT_EQ(assistant.TarnwickCPBuffer(), u"");
    EXPECT_EQ(assistant.AdditionalCPBuffer(0), u"");
}

TEST(LintaraTest, BeforeTheServicesObjectIsSetNothingChanges) {
    Lintara assistant;
    CallEveryService(assistant);
    EXPECT_EQ(assistant.oG, nullptr);
    for (std::int32_t index = 0; index <= 10; ++index) {
        EXPECT_EQ(assistant.AdditionalCPBuffer(index), u"");
    }
}

TEST(LintaraTest, TheServicesObjectIsSetAfterCreationAndMayBeReplaced) {
    CodeFixture first("Sub First()\n^\nEnd Sub");
    CodeFixture second("Sub Second()\n^\nEnd Sub");
    Lintara assistant;
    assistant.oG = first.globals();
    EXPECT_EQ(assistant.GetMemberName(), u"First");
    assistant.oG = second.globals();
    EXPECT_EQ(assistant.GetMemberName(), u"Second");
    assistant.oG = nullptr;
    EXPECT_EQ(assistant.GetMemberName(), u"");
}

TEST(LintaraTest, TheServicesObjectIsNeverSetByTheLibrary) {
    CodeFixture fixture(Source);
    Lintara assistant;
    assistant.oG = fixture.globals();
    CallEveryService(assistant);
    EXPECT_EQ(assistant.oG, fixture.globals());
}

TEST(LintaraTest, ObjectsOfTheHostAreReleasedBeforeAServiceReturns) {
    CodeFixture fixture(Source);
    Lintara assistant;
    assistant.oG = fixture.globals();
    CallEveryService(assistant);
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
    EXPECT_EQ(fixture.globals().use_count(), 2);
}

struct Service {
    std::string_view name;
    std::function<void(Lintara&)> call;
    bool showsHourglass;
};

std::vector<Service> Services() {
    return {
        {"ParsePseudoCode", [](Lintara& a) { (void)a.ParsePseudoCode(u"x"); }, true},
        {"ParsePseudoCodeEx", [](Lintara& a) { (void)a.ParsePseudoCodeEx(u"x", u"", u""); }, true},
        {"GeneratePseudoCode", [](Lintara& a) { (void)a.GeneratePseudoCode(u"x"); }, true},
        {"InitCodeAutomation", [](Lintara& a) { a.InitCodeAutomation(); }, true},
        {"GetTextSelection",
         [](Lintara& a) {
             Text lines = u"x";
             (void)a.GetTextSelection(lines, 1, 1, 1, 2);
         },
         true},
        {"InsertTextInLine", [](Lintara& a) { (void)a.InsertTextInLine(u"x", u"y", 1); }, true},
        {"TranslateCarret",
         [](Lintara& a) {
             std::int32_t line = 1;
             std::int32_t column = 1;
             a.TranslateCarret(line, column, u"x");
         },
         true},
        {"CloseCodeAutomation", [](Lintara& a) { a.CloseCodeAutomation(); }, true},
        {"GetMemberName", [](Lintara& a) { (void)a.GetMemberName(); }, false},
        {"GetMemberType", [](Lintara& a) { (void)a.GetMemberType(); }, false},
        {"GetMemberTypeEx", [](Lintara& a) { (void)a.GetMemberTypeEx(u"Module1", u"A"); }, false},
        {"GetLineNumber", [](Lintara& a) { (void)a.GetLineNumber(); }, false},
        {"TarnwickCPBuffer", [](Lintara& a) { a.SetTarnwickCPBuffer(a.TarnwickCPBuffer()); }, false},
        {"AdditionalCPBuffer", [](Lintara& a) { a.SetAdditionalCPBuffer(1, a.AdditionalCPBuffer(2)); },
         false},
        {"LineNumbersInserter",
         [](Lintara& a) { a.LineNumbersInserter(u"Project1", u"Module1", u"A", 1, 1); }, false},
        {"LineNumbersRemover", [](Lintara& a) { a.LineNumbersRemover(u"Project1", u"Module1", u"A"); },
         false},
        {"ErrorHandlerInserter", [](Lintara& a) { a.ErrorHandlerInserter(u"", u"", u"", u"", u""); }, false},
        {"ErrorHandlerRemover", [](Lintara& a) { a.ErrorHandlerRemover(u"", u"", u""); }, false},
        {"SearchAndReplace",
         [](Lintara& a) {
             bool found = false;
             a.SearchAndReplace(u"", u"", u"", 1, 1, false, false, found);
         },
         false},
        {"CustomCodeInserter", [](Lintara& a) { a.CustomCodeInserter(u"", u"", u"", u"", false, 1, 1, 1); },
         false},
        {"CustomCodeRemover", [](Lintara& a) { a.CustomCodeRemover(u"", u"", u"", 1); }, false},
        {"ShowHistory", [](Lintara& a) { a.ShowHistory(); }, false},
    };
}

const std::vector<MousePointer> OnAndOff = {MousePointer::Hourglass, MousePointer::Default};

TEST(HourglassTest, IsShownByTheLongOperationsAndByNoOther) {
    CodeFixture fixture(Source);
    for (const Service& service : Services()) {
        const auto screen = std::make_shared<RecordedScreen>();
        Lintara assistant({.screen = screen});
        assistant.oG = fixture.globals();
        service.call(assistant);
        EXPECT_EQ(screen->pointers, service.showsHourglass ? OnAndOff : std::vector<MousePointer>())
            << service.name;
    }
}

TEST(HourglassTest, IsShownWithoutAServicesObjectToo) {
    for (const Service& service : Services()) {
        const auto screen = std::make_shared<RecordedScreen>();
        Lintara assistant({.screen = screen});
        service.call(assistant);
        EXPECT_EQ(screen->pointers, service.showsHourglass ? OnAndOff : std::vector<MousePointer>())
            << service.name;
    }
}

TEST(HourglassTest, IsTakenBackAfterAnException) {
    CodeFixture fixture(Source);
    const auto plan = std::make_shared<support::FaultPlan>();
    plan->fault = [](std::size_t, std::string_view) { return support::Fault::Throws; };
    const auto screen = std::make_shared<RecordedScreen>();
    Lintara assistant({.screen = screen});
    assistant.oG = std::make_shared<support::FaultyGlobals>(fixture.globals(), plan);
    assistant.InitCodeAutomation();
    EXPECT_EQ(plan->calls, std::vector<std::string>{"Globals.CodeDb"});
    EXPECT_EQ(screen->pointers, OnAndOff);
}

TEST(HourglassTest, AScreenThatFailsDoesNotMatter) {
    for (const RecordedScreen::Mood mood : {RecordedScreen::Mood::Failing, RecordedScreen::Mood::Throwing}) {
        const auto screen = std::make_shared<RecordedScreen>();
        screen->mood = mood;
        Lintara assistant({.screen = screen});
        assistant.InitCodeAutomation();
        EXPECT_EQ(screen->pointers, OnAndOff);
    }
}

class FaultyServicesTest : public testing::TestWithParam<support::Fault> {};

TEST_P(FaultyServicesTest, OneFaultAnywhereReachesNobodyAndKeepsNothing) {
    support::WithEveryCallFaulty(
        GetParam(), [] { return std::make_unique<CodeFixture>(Source); },
        [](const auto& globals) {
            Lintara assistant;
            assistant.oG = globals;
            CallEveryService(assistant);
        },
        [](CodeFixture& fixture, const support::FaultPlan& plan, std::string_view faulty) {
            SCOPED_TRACE(faulty);
            EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
            EXPECT_EQ(plan.liveHandles, 1U);
            EXPECT_EQ(fixture.module().CountOfLines(), 4);
        });
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultyServicesTest,
                         testing::Values(support::Fault::Fails, support::Fault::Empty,
                                         support::Fault::Throws));

TEST(LintaraTest, ServicesThatFindNothingChangeNothing) {
    CodeFixture fixture(Source);
    Lintara assistant;
    assistant.oG = fixture.globals();
    bool found = true;
    assistant.ErrorHandlerRemover(u"Project1", u"Module1", u"A");
    assistant.CustomCodeRemover(u"Project1", u"Module1", u"A", 1);
    assistant.SearchAndReplace(u"Module1", u"nowhere", u"x", 1, 4, false, false, found);
    EXPECT_FALSE(found);
    EXPECT_FALSE(fixture.module().edited());
}

TEST(LintaraTest, LineNumbersGoInAndOutThroughTheFacade) {
    CodeFixture fixture(Source);
    Lintara assistant;
    assistant.oG = fixture.globals();
    assistant.LineNumbersInserter(u"Project1", u"Module1", u"A", 10000, 5);
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n10000:     x = 1\nEnd Sub");
    assistant.LineNumbersRemover(u"Project1", u"Module1", u"A");
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    x = 1\nEnd Sub");
}

}  // namespace
}  // namespace lintara
