// The search for a procedure's ranges against a host whose answers fail or make no sense.

#include "tests/support/faulty_host.h"
#include "tests/support/scripted_module.h"
#include "tests/transform/ranges_text.h"
#include "transform/procedure_ranges.h"

#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using hostmodel::MemberKind;
using hostmodel::MemberType;
using support::Fault;
using support::FaultPlan;
using support::FaultyGlobals;
using support::ScriptedModule;

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

constexpr std::string_view Source = R"(Option Explicit
Sub First()
End Sub
' about A
Sub A(x, _
      y)
    x = 1
End Sub
Sub B()
    y
End Sub
)";

// A host that answers rightly for A in `Source`.
std::shared_ptr<ScriptedModule> ModuleWithA() {
    auto module = std::make_shared<ScriptedModule>(Source);
    module->declarationLines = 1;
    const auto ifProc = [](auto value) {
        return [value](TextView, MemberKind kind) -> Result<decltype(value)> {
            if (kind != MemberKind::vbext_pk_Proc) {
                return Failure(ErrorNumber::InvalidArgument, "no such procedure");
            }
            return value;
        };
    };
    module->procBodyLine = ifProc(Line{5});
    module->procStartLine = ifProc(Line{4});
    module->procCountLines = ifProc(std::int32_t{5});
    module->memberLocation = Line{5};
    module->memberType = MemberType::Method;
    return module;
}

std::string Ranges(const std::shared_ptr<ScriptedModule>& module) {
    return support::ToString(GetProcedureRanges(*support::GlobalsOver(module), u"P", u"C", u"A"));
}

TEST(ScriptedRangesTest, TheRightAnswersGiveTheRightRange) {
    EXPECT_EQ(Ranges(ModuleWithA()), "7-8; 0-0; 0-0");
}

TEST(ScriptedRangesTest, AHeaderOnLineOneIsLookedUpInTheMemberList) {
    const auto module = ModuleWithA();
    module->procBodyLine = [](TextView, MemberKind) { return Line{1}; };
    EXPECT_EQ(Ranges(module).substr(0, 2), "7-");
    module->memberLocation.reset();
    module->declarationLines = 0;
    EXPECT_EQ(Ranges(module).substr(0, 2), "2-");
}

TEST(ScriptedRangesTest, WithoutAnyKindTheHeaderComesFromTheMemberListAndThereIsNoEnd) {
    const auto module = ModuleWithA();
    module->procBodyLine = nullptr;
    module->procStartLine = nullptr;
    module->procCountLines = nullptr;
    EXPECT_EQ(Ranges(module), "7-1; 0-0; 0-0");
}

TEST(ScriptedRangesTest, WithoutTheMemberListTheHeaderIsWhereItWas) {
    for (const Fault fault : {Fault::Fails, Fault::Empty}) {
        const auto plan = std::make_shared<FaultPlan>();
        plan->fault = [&](std::size_t, std::string_view call) {
            // Asked again, the list gives the member's type.
            return call == "CodeModule.Members" && plan->CountOf(call) == 0 ? fault : Fault::None;
        };
        const auto module = ModuleWithA();
        FaultyGlobals globals(support::GlobalsOver(module), plan);
        const auto ranges = [&] {
            plan->calls.clear();
            return support::ToString(GetProcedureRanges(globals, u"P", u"C", u"A"));
        };
        module->procBodyLine = nullptr;
        EXPECT_EQ(ranges(), "not found");
        module->declarationLines = 0;
        module->procBodyLine = [](TextView, MemberKind) { return Line{1}; };
        EXPECT_EQ(ranges().substr(0, 2), "2-");
    }
}

TEST(ScriptedRangesTest, WithoutAnyKindTheHostIsAskedWithKindMinusOne) {
    const auto module = ModuleWithA();
    std::vector<std::int32_t> kinds;
    module->procBodyLine = [&](TextView, MemberKind kind) -> Result<Line> {
        kinds.push_back(static_cast<std::int32_t>(kind));
        return Failure(ErrorNumber::InvalidArgument, "no such procedure");
    };
    EXPECT_EQ(Ranges(module).substr(0, 2), "7-");
    EXPECT_EQ(kinds, (std::vector<std::int32_t>{0, 2, 3, 1, -1, 0}));
}

TEST(ScriptedRangesTest, AKindWithoutCompanionsIsNeverSearchedFor) {
    const auto module = ModuleWithA();
    module->procBodyLine = nullptr;
    module->find = [](TextView, Position&, Position&, hostmodel::FindOptions) -> Result<bool> {
        ADD_FAILURE() << "searched";
        return false;
    };
    EXPECT_EQ(Ranges(module).substr(0, 2), "7-");
}

TEST(ScriptedRangesTest, WithoutDeclarationLinesEveryHeaderLiesBehindThem) {
    const auto module = ModuleWithA();
    module->declarationLines = 6;
    EXPECT_EQ(Ranges(module), "7-8; 0-0; 0-0");
    module->declarationLines = 7;
    EXPECT_EQ(Ranges(module), "not found");
}

TEST(ScriptedRangesTest, OnlyMethodsAndPropertiesAreFound) {
    for (const auto& [type, found] :
         {std::pair(MemberType::Method, true), std::pair(MemberType::Property, true),
          std::pair(MemberType::Variable, false), std::pair(MemberType::Event, false),
          std::pair(MemberType::Constant, false), std::pair(MemberType{}, false)}) {
        const auto module = ModuleWithA();
        module->memberType = type;
        EXPECT_EQ(Ranges(module), found ? "7-8; 0-0; 0-0" : "not found");
    }
}

TEST(ScriptedRangesTest, AMemberWithoutATypeIsNotFound) {
    const auto module = ModuleWithA();
    module->memberType.reset();
    EXPECT_EQ(Ranges(module), "not found");
}

TEST(ScriptedRangesTest, FailedLineCountsAreZero) {
    const auto module = ModuleWithA();
    module->procCountLines = nullptr;  // the search begins above the header
    EXPECT_EQ(Ranges(module), "7-3; 0-0; 0-0");
    const auto noStart = ModuleWithA();
    noStart->procStartLine = nullptr;  // the lead is the header's line
    EXPECT_EQ(Ranges(noStart), "7-3; 0-0; 0-0");
}

TEST(ScriptedRangesTest, AContinuationEndsWhereNoLineCanBeRead) {
    const auto module = ModuleWithA();
    module->lines.resize(6);
    module->lines[5] = u"  y _";
    EXPECT_EQ(Ranges(module).substr(0, 2), "8-");
}

TEST(ScriptedRangesTest, AnUnderscoreWithoutABlankContinuesNoHeader) {
    const auto module = ModuleWithA();
    module->lines[4] = u"Sub A(x As My_";
    EXPECT_EQ(Ranges(module), "6-8; 0-0; 0-0");
}

TEST(ScriptedRangesTest, AHeaderThatCannotBeReadIsOneLine) {
    const auto module = ModuleWithA();
    module->lineAt = [](Line) { return Failure(ErrorNumber::HostFailure, "unreadable"); };
    EXPECT_EQ(Ranges(module), "6-1; 0-0; 0-0");
}

TEST(ScriptedRangesTest, HeadersAtTheEdgesOfTheNumberRangeDoNotOverflow) {
    for (const std::int32_t line : {Highest, Lowest, 0, -1}) {
        const auto module = ModuleWithA();
        module->memberLocation.reset();
        module->procBodyLine = [line](TextView, MemberKind) { return Line{line}; };
        const std::string ranges = Ranges(module);
        EXPECT_TRUE(ranges == "not found" || ranges.starts_with("2147483647-")) << ranges;
    }
}

TEST(ScriptedRangesTest, CountsAtTheEdgesOfTheNumberRangeDoNotOverflow) {
    for (const std::int32_t count : {Highest, Lowest}) {
        const auto module = ModuleWithA();
        module->procCountLines = [count](TextView, MemberKind) { return count; };
        EXPECT_TRUE(Ranges(module).starts_with("7-"));
    }
    const auto module = ModuleWithA();
    module->procStartLine = [](TextView, MemberKind) { return Line{Lowest}; };
    EXPECT_EQ(Ranges(module), "7-11; 0-0; 0-0");  // the lead stays 0, one line too few
}

// A property whose Get is on line 2.
std::shared_ptr<ScriptedModule> ModuleWithProperty() {
    auto module = std::make_shared<ScriptedModule>("Option\nProperty Get A()\nx\nEnd Property\n");
    module->declarationLines = 1;
    module->procBodyLine = [](TextView, MemberKind kind) -> Result<Line> {
        if (kind != MemberKind::vbext_pk_Get) {
            return Failure(ErrorNumber::InvalidArgument, "no such procedure");
        }
        return Line{2};
    };
    module->procStartLine = [](TextView, MemberKind) { return Line{2}; };
    module->procCountLines = [](TextView, MemberKind) { return 3; };
    module->memberType = MemberType::Property;
    return module;
}

TEST(ScriptedRangesTest, CompanionsAreSearchedByWholeWordsInAnyCaseFromTheTop) {
    const auto module = ModuleWithProperty();
    std::vector<Text> sought;
    module->find = [&](TextView target, Position& start, Position& end, hostmodel::FindOptions options) {
        sought.emplace_back(target);
        EXPECT_EQ(end, Position{});
        EXPECT_EQ(options, (hostmodel::FindOptions{.wholeWord = true}));
        if (target == u"End Property") {
            EXPECT_EQ(start, (Position{Line{2}, Column{8}}));
            start = {Line{4}, Column{1}};
            end = {Line{4}, Column{13}};
        } else {
            EXPECT_EQ(start, (Position{Line{1}, Column{1}}));
            start = {Line{2}, Column{8}};
            end = {Line{2}, Column{22}};
        }
        return true;
    };
    EXPECT_EQ(Ranges(module), "3-4; 3-4; 3-4");
    EXPECT_EQ(sought,
              (std::vector<Text>{u"Property Let A", u"End Property", u"Property Set A", u"End Property"}));
}

TEST(ScriptedRangesTest, AFailedSearchLeavesItsRangeZero) {
    const auto module = ModuleWithProperty();
    EXPECT_EQ(Ranges(module), "3-4; 0-0; 0-0");
}

TEST(ScriptedRangesTest, EachCompanionIsSearchedByItself) {
    const auto module = ModuleWithProperty();
    module->find = [](TextView target, Position& start, Position&, hostmodel::FindOptions) -> Result<bool> {
        if (target == u"Property Let A") {
            return Failure(ErrorNumber::HostFailure, "broken");
        }
        start.line = Line{target == u"End Property" ? 9 : 3};
        return true;
    };
    EXPECT_EQ(Ranges(module), "3-4; 0-0; 4-9");
}

TEST(ScriptedRangesTest, ACompanionWithoutAnEndHasAStartAlone) {
    const auto module = ModuleWithProperty();
    module->find = [](TextView target, Position& start, Position&, hostmodel::FindOptions) {
        start.line = Line{3};
        return target == u"Property Let A";
    };
    EXPECT_EQ(Ranges(module), "3-4; 4-0; 0-0");
}

}  // namespace
}  // namespace lintara::transform
