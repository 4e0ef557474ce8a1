#include "transform/custom_code.h"

#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/support/plain_comparison.h"
#include "tests/transform/plain_operations.h"
#include "transform/procedure_ranges.h"

#include <array>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using support::Code;
using support::CodeFixture;
using support::ModuleName;
using support::ProjectName;

void Insert(CodeFixture& fixture, const CustomCode& block) {
    CustomCodeInserter({*fixture.globals()}, ProjectName, ModuleName, u"A", block);
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
}

void Remove(CodeFixture& fixture, std::int16_t id) {
    CustomCodeRemover(*fixture.globals(), ProjectName, ModuleName, u"A", id);
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
}

constexpr std::string_view Source = R"(
Option Explicit
Sub A(ByVal x As Long, _
      ByVal y As Long)
    x = 1
    y = 2
End Sub
Sub B()
    z = 3
End Sub
)";

struct Case {
    std::string_view what;
    CustomCode block;
    std::string_view after;
};

const std::vector<Case> Cases = {
    {"at the beginning", {.code = u"    Log", .place = CodePlace::AfterFirstLine, .id = 7}, R"(
Option Explicit
Sub A(ByVal x As Long, _
      ByVal y As Long)
' TWCustomCode begin - please do not modify or remove this line 7
    Log
' TWCustomCode end - please do not modify or remove this line 7
    x = 1
    y = 2
End Sub
Sub B()
    z = 3
End Sub
)"},
    {"at the end, with a negative number",
     {.code = u"    Log", .place = CodePlace::BeforeLastLine, .id = -3},
     R"(
Option Explicit
Sub A(ByVal x As Long, _
      ByVal y As Long)
    x = 1
    y = 2
' TWCustomCode begin - please do not modify or remove this line -3
    Log
' TWCustomCode end - please do not modify or remove this line -3
End Sub
Sub B()
    z = 3
End Sub
)"},
    {"at the second line, several lines with placeholders",
     {.code = u"    Log \"{ComponentName}\"\r\n    Log \"{MemberName}\"",
      .place = CodePlace::AtLine,
      .line = 2,
      .id = std::numeric_limits<std::int16_t>::min()},
     R"(
Option Explicit
Sub A(ByVal x As Long, _
      ByVal y As Long)
    x = 1
' TWCustomCode begin - please do not modify or remove this line -32768
    Log "Module1"
    Log "A"
' TWCustomCode end - please do not modify or remove this line -32768
    y = 2
End Sub
Sub B()
    z = 3
End Sub
)"},
    {"without markers", {.code = u"    Log", .noDelimiters = true, .id = 7}, R"(
Option Explicit
Sub A(ByVal x As Long, _
      ByVal y As Long)
    Log
    x = 1
    y = 2
End Sub
Sub B()
    z = 3
End Sub
)"},
    {"behind the end of the procedure, above its line in the module",
     {.code = u"' Log", .noDelimiters = true, .place = CodePlace::AtLine, .line = 6},
     R"(
Option Explicit
Sub A(ByVal x As Long, _
      ByVal y As Long)
    x = 1
    y = 2
End Sub
Sub B()
    z = 3
' Log
End Sub
)"},
    {"no code is an empty line", {.code = u"", .id = 5}, R"(
Option Explicit
Sub A(ByVal x As Long, _
      ByVal y As Long)
' TWCustomCode begin - please do not modify or remove this line 5

' TWCustomCode end - please do not modify or remove this line 5
    x = 1
    y = 2
End Sub
Sub B()
    z = 3
End Sub
)"},
};

TEST(CustomCodeTest, Inserts) {
    for (const Case& c : Cases) {
        SCOPED_TRACE(c.what);
        CodeFixture fixture(Source);
        Insert(fixture, c.block);
        EXPECT_EQ(fixture.text(), Code(c.after));
    }
}

TEST(CustomCodeTest, RemovalRestoresWhatHadMarkers) {
    for (const Case& c : Cases) {
        SCOPED_TRACE(c.what);
        CodeFixture fixture(c.after);
        Remove(fixture, c.block.id);
        EXPECT_EQ(fixture.text(), Code(c.block.noDelimiters ? c.after : Source));
    }
}

TEST(CustomCodeTest, TheFirstLineIsTheBeginning) {
    CodeFixture first(Source);
    Insert(first, {.code = u"x", .place = CodePlace::AfterFirstLine});
    CodeFixture line(Source);
    Insert(line, {.code = u"x", .place = CodePlace::AtLine, .line = 1});
    EXPECT_EQ(line.text(), first.text());
}

TEST(CustomCodeTest, InFrontOfAClosingLine20TheBlockBeginsOnLine20) {
    std::string source = "Option Explicit\nSub A()\n";
    for (int line = 3; line < 20; ++line) {
        source += "    x\n";
    }
    CodeFixture fixture(source + "End Sub");
    Insert(fixture, {.code = u"    Log", .place = CodePlace::BeforeLastLine, .id = 1});
    EXPECT_EQ(fixture.module().Lines(Line{20}, 4),
              Text(u"' TWCustomCode begin - please do not modify or remove this line 1\r\n    Log\r\n"
                   u"' TWCustomCode end - please do not modify or remove this line 1\r\nEnd Sub"));
}

TEST(CustomCodeTest, ALineAboveTheClosingLinesNumberInTheModuleInsertsNothing) {
    for (const std::int32_t line : {7, 1000, std::numeric_limits<std::int32_t>::max()}) {
        CodeFixture fixture(Source);
        Insert(fixture, {.code = u"x", .place = CodePlace::AtLine, .line = line});
        EXPECT_FALSE(fixture.module().edited()) << line;
    }
}

TEST(CustomCodeTest, ALineBelow1GoesAboveTheBody) {
    CodeFixture fixture(Source);
    Insert(fixture, {.code = u"' x", .noDelimiters = true, .place = CodePlace::AtLine, .line = -2});
    EXPECT_TRUE(fixture.text().starts_with("' x\nOption Explicit\n"));
    for (const std::int32_t line : {-3, -1000, std::numeric_limits<std::int32_t>::min()}) {
        CodeFixture untouched(Source);
        Insert(untouched, {.code = u"' x", .place = CodePlace::AtLine, .line = line});
        EXPECT_FALSE(untouched.module().edited()) << line;
    }
}

TEST(CustomCodeTest, OtherPlacesInsertNothing) {
    for (const std::int16_t place : std::array<std::int16_t, 5>{0, 4, -1, 32767, -32768}) {
        CodeFixture fixture(Source);
        Insert(fixture, {.code = u"x", .place = CodePlace{place}});
        EXPECT_FALSE(fixture.module().edited()) << place;
    }
}

constexpr std::string_view Property = R"(
Option Explicit
Property Get A() As Object
    Set A = mA
End Property
Property Let A(ByVal value As Object)
    Set mA = value
End Property
Property Set A(ByVal value As Object)
    Set mA = value
End Property
)";

constexpr std::string_view PropertyWithCode = R"(
Option Explicit
Property Get A() As Object
    Set A = mA
' TWCustomCode begin - please do not modify or remove this line 4
    Log
    Log
' TWCustomCode end - please do not modify or remove this line 4
End Property
Property Let A(ByVal value As Object)
    Set mA = value
' TWCustomCode begin - please do not modify or remove this line 4
    Log
    Log
' TWCustomCode end - please do not modify or remove this line 4
End Property
Property Set A(ByVal value As Object)
    Set mA = value
' TWCustomCode begin - please do not modify or remove this line 4
    Log
    Log
' TWCustomCode end - please do not modify or remove this line 4
End Property
)";

constexpr CustomCode InProperty{
    .code = u"    Log\r\n    Log", .place = CodePlace::BeforeLastLine, .line = 1, .id = 4};

TEST(CustomCodeTest, EveryProcedureOfAPropertyGetsABlockOfTheSameNumber) {
    CodeFixture fixture(Property);
    Insert(fixture, InProperty);
    EXPECT_EQ(fixture.text(), Code(PropertyWithCode));
}

TEST(CustomCodeTest, OneRemovalTakesTheBlockFromEveryProcedureOfAProperty) {
    CodeFixture fixture(PropertyWithCode);
    Remove(fixture, 4);
    EXPECT_EQ(fixture.text(), Code(Property));
}

// What is compared with the line is the closing line's number, so the procedures of one property differ.
TEST(CustomCodeTest, ALineMayBeTooFarForOneProcedureAndNotForTheNext) {
    CodeFixture fixture(
        "Option Explicit\nProperty Get A()\n    x\nEnd Property\nProperty Let A(v)\n    x\n    y\n"
        "    z\n    z\nEnd Property");
    Insert(fixture, {.code = u"' here", .noDelimiters = true, .place = CodePlace::AtLine, .line = 5});
    EXPECT_EQ(fixture.text(),
              "Option Explicit\nProperty Get A()\n    x\nEnd Property\nProperty Let A(v)\n    x\n"
              "    y\n    z\n    z\n' here\nEnd Property");
}

TEST(CustomCodeTest, TheNumberIsSoughtAsTheBeginningOfANumber) {
    CodeFixture fixture(R"(
Option Explicit
Sub A()
' TWCustomCode begin - please do not modify or remove this line 12
    first
' TWCustomCode end - please do not modify or remove this line 12
' TWCustomCode begin - please do not modify or remove this line 1
    second
' TWCustomCode end - please do not modify or remove this line 1
End Sub
)");
    Remove(fixture, 1);
    EXPECT_EQ(fixture.text(), Code(R"(
Option Explicit
Sub A()
' TWCustomCode begin - please do not modify or remove this line 1
    second
' TWCustomCode end - please do not modify or remove this line 1
End Sub
)"));
}

TEST(CustomCodeTest, TheEndMarkerIsSoughtFromTheBeginningOfTheBody) {
    constexpr std::string_view EndFirst = R"(
Option Explicit
Sub A()
' TWCustomCode end - please do not modify or remove this line 1
' TWCustomCode begin - please do not modify or remove this line 1
    x
' TWCustomCode end - please do not modify or remove this line 1
End Sub
)";
    CodeFixture fixture(EndFirst);
    Remove(fixture, 1);
    EXPECT_FALSE(fixture.module().edited());
}

TEST(CustomCodeTest, AMarkerWithoutItsOtherIsLeft) {
    for (const std::string_view word : {"begin", "end"}) {
        CodeFixture fixture("Option Explicit\nSub A()\n' TWCustomCode " + std::string(word) +
                            " - please do not modify or remove this line 1\n    x\nEnd Sub");
        Remove(fixture, 1);
        EXPECT_FALSE(fixture.module().edited());
    }
}

TEST(CustomCodeTest, OneBlockPerBodyGoesWithACall) {
    CodeFixture fixture(Source);
    Insert(fixture, {.code = u"    one", .id = 3});
    const std::string once = fixture.text();
    Insert(fixture, {.code = u"    two", .id = 3});
    Remove(fixture, 3);
    EXPECT_EQ(fixture.text(), once);
    Remove(fixture, 3);
    EXPECT_EQ(fixture.text(), Code(Source));
}

// The name of an external procedure that is declared on the last line of the declarations.
TEST(CustomCodeTest, AProcedureAtTheEdgeOfTheDeclarationsIsLeft) {
    constexpr std::string_view Declared =
        "Declare Sub A Lib \"a.dll\" ()\n' TWCustomCode begin - please do not modify or remove this line 1\n"
        "' TWCustomCode end - please do not modify or remove this line 1\nSub B()\nEnd Sub";
    CodeFixture fixture(Declared);
    ASSERT_TRUE(GetProcedureRanges(*fixture.globals(), ProjectName, ModuleName, u"A").Found);
    for (const CodePlace place : {CodePlace::AfterFirstLine, CodePlace::BeforeLastLine, CodePlace::AtLine}) {
        Insert(fixture, {.code = u"x", .place = place});
    }
    Remove(fixture, 1);
    EXPECT_FALSE(fixture.module().edited());
}

TEST(CustomCodeTest, UnknownNamesChangeNothing) {
    CodeFixture fixture(Source);
    for (const auto& [project, component, procedure] :
         {std::tuple(u"Nowhere", u"Module1", u"A"), std::tuple(u"Project1", u"Nothing", u"A"),
          std::tuple(u"Project1", u"Module1", u"Nobody"), std::tuple(u"Project1", u"Module1", u"")}) {
        CustomCodeInserter({*fixture.globals()}, project, component, procedure, {.code = u"x"});
        CustomCodeRemover(*fixture.globals(), project, component, procedure, 0);
    }
    EXPECT_FALSE(fixture.module().edited());
}

TEST(CustomCodeTest, EachRemovalSearchesTwicePerBody) {
    CodeFixture fixture(Source);
    const auto plan = std::make_shared<support::FaultPlan>();
    support::FaultyGlobals globals(fixture.globals(), plan);
    CustomCodeRemover(globals, ProjectName, ModuleName, u"A", 1);
    EXPECT_EQ(plan->CountOf("CodeModule.Find"), 2U);
    CustomCodeInserter({globals}, ProjectName, ModuleName, u"A", {.code = u"x"});
    EXPECT_EQ(plan->CountOf("CodeModule.Find"), 2U);
}

TEST(FaultyCustomCodeTest, EveryFailingStatementOfAnInsertionIsSkippedAndTheNextRuns) {
    for (const std::int16_t where : std::array<std::int16_t, 3>{1, 2, 3}) {
        support::ExpectAsPlainWithEveryCallFaulty(
            [] { return std::make_unique<CodeFixture>(Property); },
            [&](const auto& globals) {
                support::PlainInsertCode(*globals, ProjectName, ModuleName, u"A", u"{MemberName}", false,
                                         where, 2, 4);
            },
            [&](const auto& globals) {
                CustomCodeInserter({*globals}, ProjectName, ModuleName, u"A",
                                   {.code = u"{MemberName}", .place = CodePlace{where}, .line = 2, .id = 4});
            },
            41);
    }
}

TEST(FaultyCustomCodeTest, EveryFailingStatementOfARemovalIsSkippedAndTheNextRuns) {
    support::ExpectAsPlainWithEveryCallFaulty(
        [] { return std::make_unique<CodeFixture>(PropertyWithCode); },
        [](const auto& globals) { support::PlainRemoveCode(*globals, ProjectName, ModuleName, u"A", 4); },
        [](const auto& globals) { CustomCodeRemover(*globals, ProjectName, ModuleName, u"A", 4); }, 41);
}

TEST(FaultyCustomCodeTest, ARefusedMarkerLeavesTheRestOfTheBlock) {
    CodeFixture fixture("Option Explicit\nSub A()\nEnd Sub");
    const auto plan = support::PlanWithOneFailure("CodeModule.InsertLines", 0);
    support::FaultyGlobals globals(fixture.globals(), plan);
    CustomCodeInserter({globals}, ProjectName, ModuleName, u"A", {.code = u"x", .id = 2});
    EXPECT_EQ(fixture.text(),
              "Option Explicit\nSub A()\n"
              "' TWCustomCode begin - please do not modify or remove this line 2\nx\nEnd Sub");
}

}  // namespace
}  // namespace lintara::transform
