#include "transform/error_handler_insertion.h"

#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/support/plain_comparison.h"
#include "tests/transform/plain_operations.h"

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

constexpr TextView HandlerCode = u"    MsgBox \"in {ComponentName}.{MemberName}\"\r\n    Resume Next";

void Insert(CodeFixture& fixture, TextView procedure = u"A", TextView label = u"hErr",
            TextView code = u"    Resume Next") {
    ErrorHandlerInserter({*fixture.globals()}, ProjectName, ModuleName, procedure, label, code);
    EXPECT_EQ(fixture.globals()->liveHandles(), 0U);
}

TEST(ErrorHandlerInsertionTest, TheBlockGoesInFrontOfTheClosingLineAndTheStatementFirst) {
    CodeFixture fixture(R"(
Option Explicit

Sub Other()
    x = 1
End Sub

' about A
Public Sub A(ByVal x As Long, _
             ByVal y As Long)
    Dim z As Long
    z = x
End Sub

Sub Last()
End Sub
)");
    Insert(fixture, u"A", u"hErr", HandlerCode);
    EXPECT_EQ(fixture.text(), Code(R"(
Option Explicit

Sub Other()
    x = 1
End Sub

' about A
Public Sub A(ByVal x As Long, _
             ByVal y As Long)
    On Error GoTo hErr
    Dim z As Long
    z = x
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    MsgBox "in Module1.A"
    Resume Next
End Sub

Sub Last()
End Sub
)"));
}

struct Case {
    std::string_view what;
    std::string_view before;
    std::string_view after;
    TextView label = u"hErr";
    TextView code = u"    Resume Next";
};

const std::vector<Case> Cases = {
    {"a function is left as one", R"(
Option Explicit
Function A() As Long
    A = 1
End Function
)",
     R"(
Option Explicit
Function A() As Long
    On Error GoTo hErr
    A = 1
' TWErrorHandler begin - please do not modify or remove this line
Exit Function
hErr:
    Resume Next
End Function
)"},
    {"an empty body", R"(
Option Explicit
Sub A()
End Sub
)",
     R"(
Option Explicit
Sub A()
    On Error GoTo hErr
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    Resume Next
End Sub
)"},
    {"the label is written as it is, and empty code is one empty line", R"(
Option Explicit
Sub A()
    x = 1
End Sub
)",
     R"(
Option Explicit
Sub A()
    On Error GoTo {MemberName}
    x = 1
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
{MemberName}:

End Sub
)",
     u"{MemberName}", u""},
    {"the statement stands there already", R"(
Option Explicit
Sub A()
    On Error GoTo hErr
    x = 1
End Sub
)",
     R"(
Option Explicit
Sub A()
    On Error GoTo hErr
    x = 1
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    Resume Next
End Sub
)"},
    {"the statement stands there with a line number", R"(
Option Explicit
Sub A()
10000:     On Error GoTo hErr
10005:     x = 1
End Sub
)",
     R"(
Option Explicit
Sub A()
10000:     On Error GoTo hErr
10005:     x = 1
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    Resume Next
End Sub
)"},
    {"part of a longer word is redirected too", R"(
Option Explicit
Sub A()
    x = 1
    On Error GoTo 01
    MyOn Error GoTo 0
End Sub
)",
     R"(
Option Explicit
Sub A()
    On Error GoTo hErr
    x = 1
    On Error GoTo hErr1
    MyOn Error GoTo hErr
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    Resume Next
End Sub
)"},
    {"the closing line keeps its comment", R"(
Option Explicit
Sub A()
    x = 1 ' On Error GoTo 0
End Sub         ' On Error GoTo 0
)",
     R"(
Option Explicit
Sub A()
    On Error GoTo hErr
    x = 1 ' On Error Goto hErr
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    Resume Next
End Sub         ' On Error GoTo 0
)"},
    {"the statement with another label is not that statement", R"(
Option Explicit
Sub A()
    On Error GoTo hErr2
End Sub
)",
     R"(
Option Explicit
Sub A()
    On Error GoTo hErr
    On Error GoTo hErr2
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    Resume Next
End Sub
)"},
    {"error handling switched off leads to the label instead", R"(
Option Explicit
Sub A()
    x = 1
    On Error GoTo 0
    If x Then on error goto 0
    s = "On Error GoTo 0"
End Sub
Sub B()
    On Error GoTo 0
End Sub
)",
     R"(
Option Explicit
Sub A()
    On Error GoTo hErr
    x = 1
    On Error GoTo hErr
    If x Then On Error GoTo hErr
    s = "On Error Goto hErr"
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    Resume Next
End Sub
Sub B()
    On Error GoTo 0
End Sub
)"},
    {"a statement that switched it off in the first line is enough", R"(
Option Explicit
Sub A()
    On Error GoTo 0
End Sub
)",
     R"(
Option Explicit
Sub A()
    On Error GoTo hErr
' TWErrorHandler begin - please do not modify or remove this line
Exit Sub
hErr:
    Resume Next
End Sub
)"},
    {"every procedure of a property", R"(
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
)",
     R"(
Option Explicit
Property Get A() As Object
    On Error GoTo hErr
    Set A = mA
' TWErrorHandler begin - please do not modify or remove this line
Exit Property
hErr:
    Resume Next
End Property
Property Let A(ByVal value As Object)
    On Error GoTo hErr
    Set mA = value
' TWErrorHandler begin - please do not modify or remove this line
Exit Property
hErr:
    Resume Next
End Property
Property Set A(ByVal value As Object)
    On Error GoTo hErr
    Set mA = value
' TWErrorHandler begin - please do not modify or remove this line
Exit Property
hErr:
    Resume Next
End Property
)"},
    {"only the procedure of the property that has none yet", R"(
Option Explicit
Property Let A(ByVal value As Long)
    mA = value
End Property
Property Get A() As Long
    ' TWERRORHANDLER BEGIN - please do not modify or remove this line, thank you
    A = mA
End Property
)",
     R"(
Option Explicit
Property Let A(ByVal value As Long)
    On Error GoTo hErr
    mA = value
' TWErrorHandler begin - please do not modify or remove this line
Exit Property
hErr:
    Resume Next
End Property
Property Get A() As Long
    ' TWERRORHANDLER BEGIN - please do not modify or remove this line, thank you
    A = mA
End Property
)"},
};

TEST(ErrorHandlerInsertionTest, Inserts) {
    for (const Case& c : Cases) {
        SCOPED_TRACE(c.what);
        CodeFixture fixture(c.before);
        Insert(fixture, u"A", c.label, c.code);
        EXPECT_EQ(fixture.text(), Code(c.after));
    }
}

TEST(ErrorHandlerInsertionTest, ASecondTimeChangesNothing) {
    for (const Case& c : Cases) {
        SCOPED_TRACE(c.what);
        CodeFixture fixture(c.after);
        Insert(fixture, u"A", c.label, c.code);
        Insert(fixture, u"A", u"other", u"other");
        EXPECT_FALSE(fixture.module().edited());
    }
}

// The host's search goes on to the end of the module when it is given no lines.
TEST(ErrorHandlerInsertionTest, AnEmptyBodyAboveAHandlerIsTakenToHaveIt) {
    CodeFixture fixture(std::string("Option Explicit\nSub First()\nEnd Sub") + std::string(Cases[0].after));
    Insert(fixture, u"First");
    EXPECT_FALSE(fixture.module().edited());
}

TEST(ErrorHandlerInsertionTest, UnknownNamesChangeNothing) {
    CodeFixture fixture("Option Explicit\nSub A()\n    On Error GoTo 0\nEnd Sub");
    for (const auto& [project, component, procedure] :
         {std::tuple(u"Nowhere", u"Module1", u"A"), std::tuple(u"Project1", u"Nothing", u"A"),
          std::tuple(u"Project1", u"Module1", u"Nobody"), std::tuple(u"Project1", u"Module1", u"")}) {
        ErrorHandlerInserter({*fixture.globals()}, project, component, procedure, u"hErr", u"x");
    }
    EXPECT_FALSE(fixture.module().edited());
}

TEST(ErrorHandlerInsertionTest, TheBlockGoesToTheNamedProjectTheRedirectionToTheActiveOne) {
    CodeFixture fixture("Option Explicit\nFunction A()\n    On Error GoTo 0\nEnd Function");
    fixture.AddComponent(u"Other", ModuleName, "Option Explicit\nFunction A()\n    y\nEnd Function");
    ErrorHandlerInserter({*fixture.globals()}, u"Other", ModuleName, u"A", u"hErr", u"z");
    EXPECT_EQ(fixture.text(), "Option Explicit\nFunction A()\n    On Error GoTo hErr\nEnd Function");
    EXPECT_EQ(fixture.TextOf(u"Other", ModuleName), Code(R"(
Option Explicit
Function A()
    On Error GoTo hErr
    y
' TWErrorHandler begin - please do not modify or remove this line
Exit Function
hErr:
z
End Function
)"));
}

TEST(ErrorHandlerInsertionTest, TheHostIsAskedToSearchTwicePerBody) {
    CodeFixture fixture("Option Explicit\nSub A()\n    x = 1\nEnd Sub");
    const auto plan = std::make_shared<support::FaultPlan>();
    support::FaultyGlobals globals(fixture.globals(), plan);
    ErrorHandlerInserter({globals}, ProjectName, ModuleName, u"A", u"hErr", u"x");
    EXPECT_EQ(plan->CountOf("CodeModule.Find"), 2U);
    EXPECT_EQ(plan->CountOf("CodeModule.InsertLines"), 2U);
}

TEST(FaultyErrorHandlerInsertionTest, EveryFailingStatementIsSkippedAndTheNextRuns) {
    for (const std::string_view source : {Cases[6].before, Cases[8].before}) {
        support::ExpectAsPlainWithEveryCallFaulty(
            [&] { return std::make_unique<CodeFixture>(source); },
            [](const auto& globals) {
                support::PlainInsertHandler(*globals, ProjectName, ModuleName, u"A", u"hErr", HandlerCode);
            },
            [](const auto& globals) {
                ErrorHandlerInserter({*globals}, ProjectName, ModuleName, u"A", u"hErr", HandlerCode);
            },
            41);
    }
}

TEST(FaultyErrorHandlerInsertionTest, ARefusedBlockStillGetsItsStatement) {
    CodeFixture fixture("Option Explicit\nSub A()\n    x = 1\nEnd Sub");
    const auto plan = support::PlanWithOneFailure("CodeModule.InsertLines", 0);
    support::FaultyGlobals globals(fixture.globals(), plan);
    ErrorHandlerInserter({globals}, ProjectName, ModuleName, u"A", u"hErr", u"x");
    EXPECT_EQ(fixture.text(), "Option Explicit\nSub A()\n    On Error GoTo hErr\n    x = 1\nEnd Sub");
}

}  // namespace
}  // namespace lintara::transform
