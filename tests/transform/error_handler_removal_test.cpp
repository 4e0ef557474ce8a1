#include "transform/error_handler_removal.h"

#include "platform/memory_settings.h"
#include "tests/support/code_fixture.h"
#include "tests/support/plain_comparison.h"
#include "tests/transform/plain_operations.h"
#include "transform/error_handler_statements.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
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

void Remove(CodeFixture& fixture, SettingsStore* settings = nullptr) {
    ErrorHandlerRemover(*fixture.globals(), settings, ProjectName, ModuleName, u"A");
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
}

platform::MemorySettings SettingsWithLabel(TextView label) {
    platform::MemorySettings settings;
    EXPECT_TRUE(
        settings.Save({.application = u"Tarnwick", .section = u"CodeAutomation", .key = u"EHLabel"}, label));
    return settings;
}

constexpr std::string_view WithHandler = R"(
Option Explicit
Sub A()
    On Error GoTo hErr
    x = 1
    If x Then On Error GoTo hErr
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    MsgBox "x"
    On Error GoTo hErr
    Resume Next
End Sub
Sub B()
    On Error GoTo hErr
' TWErrorHandler begin - please do not modify or remove this line
hErr:
End Sub
)";

TEST(ErrorHandlerRemovalTest, TheBlockGoesAndTheStatementsSwitchOff) {
    CodeFixture fixture(WithHandler);
    Remove(fixture);
    EXPECT_EQ(fixture.text(), Code(R"(
Option Explicit
Sub A()
    On Error GoTo 0
    x = 1
    If x Then On Error GoTo 0
End Sub
Sub B()
    On Error GoTo hErr
' TWErrorHandler begin - please do not modify or remove this line
hErr:
End Sub
)"));
}

TEST(ErrorHandlerRemovalTest, WithNoLineInFrontOfTheEndNoStatementIsRedirected) {
    CodeFixture fixture(WithHandler);
    const Line lowest{std::numeric_limits<std::int32_t>::min()};
    RedirectHandlerStatements(*fixture.globals(), ModuleName, u"hErr", u"0", Line{1}, lowest);
    EXPECT_EQ(fixture.text(), Code(WithHandler));
}

TEST(ErrorHandlerRemovalTest, AHandlerWithoutTheMarkerIsLeft) {
    CodeFixture fixture(R"(
Option Explicit
Sub A()
    On Error GoTo hErr
    Exit Sub
hErr:
    Resume Next
End Sub
)");
    Remove(fixture);
    EXPECT_FALSE(fixture.module().edited());
}

TEST(ErrorHandlerRemovalTest, AHandlerBelowIsNotThatOfAnEmptyBody) {
    CodeFixture fixture(R"(
Option Explicit
Sub A()
End Sub
Sub B()
    On Error GoTo hErr
' TWErrorHandler begin - please do not modify or remove this line
End Sub
)");
    Remove(fixture);
    EXPECT_FALSE(fixture.module().edited());
}

TEST(ErrorHandlerRemovalTest, LinesTypedBelowTheHandlerGoWithIt) {
    CodeFixture fixture(R"(
Option Explicit
Sub A()
    x = 1
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    Resume Next
other:
    y = 1
' the end
End Sub
)");
    Remove(fixture);
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    x = 1\nEnd Sub");
}

TEST(ErrorHandlerRemovalTest, TheLabelIsThatOfTheSettings) {
    CodeFixture fixture(R"(
Option Explicit
Sub A()
    On Error GoTo Oops
    On Error GoTo hErr
' TWErrorHandler begin - please do not modify or remove this line
End Sub
)");
    platform::MemorySettings settings = SettingsWithLabel(u"Oops");
    Remove(fixture, &settings);
    EXPECT_EQ(fixture.text(),
              "Option Explicit\nSub A()\n    On Error GoTo 0\n    On Error GoTo hErr\nEnd Sub");
}

TEST(ErrorHandlerRemovalTest, ALabelThatBeginsAsTheHandlersIsPartlySwitchedOffToo) {
    CodeFixture fixture(R"(
Option Explicit
Sub A()
    On Error GoTo hErr2
' TWErrorHandler begin - please do not modify or remove this line
End Sub
)");
    Remove(fixture);
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    On Error GoTo 02\nEnd Sub");
}

TEST(ErrorHandlerRemovalTest, TheClosingLineKeepsItsComment) {
    CodeFixture fixture(R"(
Option Explicit
Sub A()
    x = 1 ' On Error GoTo hErr
' TWErrorHandler begin - please do not modify or remove this line
End Sub            ' On Error GoTo hErr
)");
    Remove(fixture);
    EXPECT_EQ(fixture.text(),
              "Option Explicit\nSub A()\n    x = 1 ' On Error Goto 0\n"
              "End Sub            ' On Error GoTo hErr");
}

TEST(ErrorHandlerRemovalTest, AChangedLabelLeavesTheStatementsAndTheBlockStillGoes) {
    CodeFixture fixture(WithHandler);
    platform::MemorySettings settings = SettingsWithLabel(u"newErr");
    Remove(fixture, &settings);
    EXPECT_TRUE(
        fixture.text().starts_with("Option Explicit\nSub A()\n    On Error GoTo hErr\n    x = 1\n    If x "
                                   "Then On Error GoTo hErr\nEnd Sub\n"));
}

TEST(ErrorHandlerRemovalTest, SettingsWithoutTheLabelMeanTheDefault) {
    CodeFixture without(WithHandler);
    Remove(without);
    CodeFixture fixture(WithHandler);
    platform::MemorySettings settings;
    Remove(fixture, &settings);
    EXPECT_EQ(fixture.text(), without.text());
}

class BrokenSettings : public SettingsStore {
  public:
    Result<std::optional<Text>> Find(SettingName) override {
        return Failure(ErrorNumber::HostFailure, "the store cannot be read");
    }
    Result<void> Save(SettingName, TextView) override {
        return Failure(ErrorNumber::HostFailure, "the store cannot be written");
    }
};

TEST(ErrorHandlerRemovalTest, SettingsThatCannotBeReadMeanTheDefault) {
    CodeFixture without(WithHandler);
    Remove(without);
    CodeFixture fixture(WithHandler);
    BrokenSettings settings;
    Remove(fixture, &settings);
    EXPECT_EQ(fixture.text(), without.text());
}

constexpr std::string_view Property = R"(
Option Explicit
Property Get A() As Long
    On Error GoTo hErr
    A = mA
' TWErrorHandler begin - please do not modify or remove this line
Exit Property
hErr:
End Property
Property Let A(ByVal value As Long)
    On Error GoTo hErr
    mA = value
' TWErrorHandler begin - please do not modify or remove this line
Exit Property
hErr:
End Property
Property Set A(ByVal value As Object)
' TWErrorHandler begin - please do not modify or remove this line
End Property
)";

TEST(ErrorHandlerRemovalTest, EveryProcedureOfAPropertyLosesItsBlock) {
    CodeFixture fixture(Property);
    Remove(fixture);
    EXPECT_EQ(fixture.text(), Code(R"(
Option Explicit
Property Get A() As Long
    On Error GoTo 0
    A = mA
End Property
Property Let A(ByVal value As Long)
    On Error GoTo 0
    mA = value
End Property
Property Set A(ByVal value As Object)
End Property
)"));
}

TEST(FaultyErrorHandlerRemovalTest, EveryFailingStatementIsSkippedAndTheNextRuns) {
    for (const std::string_view source : {WithHandler, Property}) {
        support::ExpectAsPlainWithEveryCallFaulty(
            [&] { return std::make_unique<CodeFixture>(source); },
            [](const auto& globals) {
                support::PlainRemoveHandler(*globals, ProjectName, ModuleName, u"A", u"hErr");
            },
            [](const auto& globals) {
                ErrorHandlerRemover(*globals, nullptr, ProjectName, ModuleName, u"A");
            },
            41);
    }
}

}  // namespace
}  // namespace lintara::transform
